#include "StormAttr.h"

#include <cmath>
#include <cstdio>
#include <cstring>

#include "StrLib.h"
#include "Tools.h"

namespace ZQV {

namespace {

/** A word of a line, far longer than any field; a text packet holds 99 characters. */
using Word = char[128];

/** What follows a column, counted from 0; the empty text on a shorter line. */
const char* fromColumn(const char* line, size_t column) {
  return std::strlen(line) > column ? line + column : "";
}

bool isWord(const char* word, const char* a, const char* b) {
  return StrLib::equal(word, a) || StrLib::equal(word, b);
}

bool isAngle(float v) {
  return std::isfinite(v) && v != Const::FMISS;
}

/** A number that was read takes the place of a field; "inf" and "nan" aren't numbers of a table. */
void take(float v, float& field) {
  field = std::isfinite(v) ? v : field;
}

}  // namespace

void StormAttr::init() {
  const int form = type;
  *this = StormAttr();
  type = form;
}

int StormAttr::checkType(const char* line) {
  if (StrLib::contains(line, "VLOW")) {
    type = 1;
  } else if (StrLib::contains(line, "VIL")) {
    type = 2;
  } else if (StrLib::contains(line, "NO STORM")) {
    type = 0;
  }
  return 1;
}

int StormAttr::decode(const char* line) {
  init();
  checkType(line);
  if (line == nullptr) {
    return 0;
  }
  switch (type) {
    case 1: return decodeLow(line);
    case 2: return decodeVil(line);
    default: return 0;
  }
}

int StormAttr::decodeLow(const char* line) {
  Word name = "";
  Word words[3] = {};
  float v[8] = {NAN, NAN, NAN, NAN, NAN, NAN, NAN, NAN};
  const int n =
      std::sscanf(line, "%127s %f %f %127s %127s %127s %f %f %f%*[ >]%f %f %f", name, &v[0], &v[1],
                  words[0], words[1], words[2], &v[2], &v[3], &v[4], &v[5], &v[6], &v[7]);
  if (n < 2 || !isAngle(v[0])) {
    return 0;
  }
  StrLib::copy(id, sizeof id, name);
  take(v[0], ang);
  take(v[1], rad);
  take(v[2], max_dbz);
  take(v[3], max_dbz_z);
  take(v[4], vlow);
  take(v[5], tops);
  take(v[6], dir);
  take(v[7], spd);
  tvs = StrLib::equal(words[0], "YES") ? 1 : 0;
  meso = StrLib::equal(words[1], "YES") ? 1 : 0;
  if (StrLib::equal(words[2], "POS")) {
    shail = 100;
  } else if (StrLib::equal(words[2], "PRO")) {
    shail = 50;
  }
  return 1;
}

int StormAttr::decodeVil(const char* line) {
  constexpr int vortex = 10;
  Word name = "";
  Word words[2] = {};
  float azimuth = NAN;
  float range = NAN;
  if (std::sscanf(line, "%127s %f/%f %127s %127s", name, &azimuth, &range, words[0], words[1]) <
          4 ||
      !isAngle(azimuth)) {
    return 0;
  }
  StrLib::copy(id, sizeof id, name);
  take(azimuth, ang);
  take(range, rad);
  if (isWord(words[0], "YES", "TVS")) {
    tvs = vortex;
  } else if (Tools::isInt(words[0])) {
    tvs = StrLib::toInt(words[0]);
  }
  if (isWord(words[1], "YES", "MESO")) {
    meso = 1;
  } else if (Tools::isInt(words[1])) {
    meso = StrLib::toInt(words[1]);
  }
  std::sscanf(fromColumn(line, 26), "%9d/%9d", &shail, &hail);
  float v[6] = {NAN, NAN, NAN, NAN, NAN, NAN};
  std::sscanf(fromColumn(line, 35), "%f", &v[0]);
  std::sscanf(fromColumn(line, 42), "%f %f %f %f", &v[1], &v[2], &v[3], &v[4]);
  take(v[0], hsize);
  if (*fromColumn(line, 34) == '<') {
    hsize = 0.25F;
  }
  take(v[1], vil);
  take(v[2], max_dbz);
  take(v[3], max_dbz_z);
  take(v[4], tops);
  float speed = NAN;
  std::sscanf(fromColumn(line, 62), "%f/%f", &v[5], &speed);
  take(v[5], dir);
  take(speed, spd);
  return 1;
}

void StormAttr::print() const {
  const auto real = [](float v) { return static_cast<double>(v); };
  std::printf("Type: %d\nID: %s\nAng: %f\nRad: %f\n", type, id, real(ang), real(rad));
  std::printf("TVS: %d\nMeso: %d\nHail: %d\nSHail: %d\nHSize: %f\n", tvs, meso, hail, shail,
              real(hsize));
  std::printf("VIL: %f\nMax dBZ: %f\nMax dBZ Hgt: %f\nVLow: %f\nTops: %f\n", real(vil),
              real(max_dbz), real(max_dbz_z), real(vlow), real(tops));
  std::printf("Dir: %f\nSpd: %f\nMass Vol: %f\n", real(dir), real(spd), real(mw_vol));
}

}  // namespace ZQV
