#include "NidsInfo.h"

#include <cstdio>

namespace ZQV {

namespace {

constexpr size_t max_text = 49;

int append(std::string& to, const char* text) {
  if (text == nullptr) {
    return 0;
  }
  to += text;
  if (to.size() > max_text) {
    to.resize(max_text);
  }
  return 1;
}

}  // namespace

void NidsInfo::init() {
  src = mode = code = type = vcp = seq = Const::MISS;
  vol_date = prod_date = mess_date = nx = ny = Const::MISS;
  beg_date = beg_time = end_date = end_time = Const::MISS;
  lat = lon = res = cres = alt = elev = elevt = range = max = nmax = Const::FMISS;
  thres.fill(Const::FMISS);
  date.init();
  info.clear();
  misc.clear();
}

int NidsInfo::setInfo(const char* text) {
  info.clear();
  return append(info, text);
}

int NidsInfo::setMisc(const char* text) {
  misc.clear();
  return append(misc, text);
}

int NidsInfo::addMisc(const char* text) {
  return append(misc, text);
}

float NidsInfo::getThres(int i) const {
  return i < 0 || i >= num_thres ? Const::FMISS : thres[static_cast<size_t>(i)];
}

void NidsInfo::print() const {
  const auto number = [](const char* name, int v) { std::printf("%s: %d\n", name, v); };
  const auto real = [](const char* name, float v) {
    std::printf("%s: %f\n", name, static_cast<double>(v));
  };
  std::printf("Info: %s\n", info.c_str());
  std::printf("Misc: %s\n", misc.c_str());
  number("Src", src);
  real("Lat", lat);
  real("Lon", lon);
  number("Mode", mode);
  number("Code", code);
  number("Type", type);
  number("Vcp", vcp);
  number("Seq", seq);
  std::printf("Date: ");
  date.print();
  number("Nx", nx);
  number("Ny", ny);
  real("Res", res);
  real("Cres", cres);
  real("Alt", alt);
  for (int i = 0; i < num_thres; ++i) {
    std::printf("Thres: %d %f\n", i, static_cast<double>(getThres(i)));
  }
  real("Elev", elev);
  real("Elevt", elevt);
  real("Range", range);
  real("Max", max);
  real("Nmax", nmax);
  number("Beg Date", beg_date);
  number("Beg Time", beg_time);
  number("End Date", end_date);
  number("End Time", end_time);
}

}  // namespace ZQV
