#include "Unit.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "Const.h"
#include "File.h"
#include "FileTool.h"
#include "StrLib.h"
#include "String.h"
#include "Zqv.h"

namespace ZQV {

namespace {

/** Same letters, ignoring case, with "_" read as a blank. */
bool isSame(const char* a, const char* b) {
  const auto fold = [](char c) {
    return c == '_' ? ' ' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  };
  while (*a != '\0' && fold(*a) == fold(*b)) {
    a++;
    b++;
  }
  return fold(*a) == fold(*b);
}

/** A plain decimal number at s: no "inf", "nan" or hexadecimal, which begin units. @return where it
 * ends, s if there is none */
const char* takeNumber(const char* s, double& v) {
  const auto digit = [](char c) { return c >= '0' && c <= '9'; };
  const char* p = *s == '-' || *s == '+' ? s + 1 : s;
  if (!digit(*p) && !(*p == '.' && digit(p[1]))) {
    return s;
  }
  while (digit(*p)) {
    p++;
  }
  if (*p == '.') {
    p++;
  }
  while (digit(*p)) {
    p++;
  }
  if (*p == 'e' || *p == 'E') {
    const char* exponent = p[1] == '-' || p[1] == '+' ? p + 2 : p + 1;
    if (digit(*exponent)) {
      for (p = exponent; digit(*p);) {
        p++;
      }
    }
  }
  v = std::strtod(std::string(s, p).c_str(), nullptr);
  return p;
}

/** Takes the factor off a unit text: "10^-5 /s", "100ft", "-m". @return the unit, where it begins
 */
const char* takeFactor(const char* text, float& factor) {
  factor = 1;
  double v = 1;
  while (*text == ' ') {
    text++;
  }
  const char* p = takeNumber(text, v);
  if (p == text) {
    if (*p != '-') {
      return p;
    }
    v = -1;
    p++;
  } else if (*p == '^') {
    double power = 1;
    const char* end = takeNumber(p + 1, power);
    if (end != p + 1) {
      v = std::pow(v, power);
      p = end;
    }
  }
  factor = static_cast<float>(v);
  while (*p == ' ') {
    p++;
  }
  return p;
}

/** Takes a sign and the number behind it, if they are there. */
const char* takePart(const char* p, char sign, double& v) {
  if (*p != sign) {
    return p;
  }
  const char* end = takeNumber(p + 1, v);
  return end == p + 1 ? p : end;
}

/** Reads "*multiplier+offset" or "*multiplier-offset", each part optional. */
void readConversion(UnitData& data) {
  double mult = data.mult;
  double offset = data.offset;
  double minus = 0;
  const char* p = takePart(data.cvt.c_str(), '*', mult);
  p = takePart(p, '+', offset);
  takePart(p, '-', minus);
  data.mult = static_cast<float>(mult);
  data.offset = static_cast<float>(offset - minus);
}

/** The unit as the file writes it. */
std::string fileName(const char* unit) {
  std::string name = unit;
  std::replace(name.begin(), name.end(), ' ', '_');
  return name;
}

bool isUsable(float factor) {
  return std::isfinite(factor) && factor != 0;
}

}  // namespace

bool Unit::equal(const char* a, const char* b) {
  return StrLib::iequal(a, b);
}

float Unit::convert(float value, const char* from, const char* to) {
  from = StrLib::valid(from, "");
  to = StrLib::valid(to, "");
  if (value == Const::FMISS || isSame(from, to)) {
    return value;
  }
  const UnitData& cvt = find(from, to);
  if (cvt.valid == 0) {
    return Const::FMISS;
  }
  const double scaled = static_cast<double>(value) * cvt.ifac * cvt.mult + cvt.offset;
  return static_cast<float>(scaled / cvt.ofac);
}

bool Unit::valid(const char* from, const char* to) {
  from = StrLib::valid(from, "");
  to = StrLib::valid(to, "");
  return isSame(from, to) || find(from, to).valid != 0;
}

UnitData& Unit::takeSlot() {
  if (ncvs < static_cast<int>(cvs.size())) {
    return cvs[static_cast<size_t>(ncvs++)];
  }
  return *std::min_element(cvs.begin(), cvs.end(),
                           [](const UnitData& a, const UnitData& b) { return a.flag < b.flag; });
}

const UnitData& Unit::find(const char* from, const char* to) {
  int newest = 0;
  for (int i = 0; i < ncvs; i++) {
    const UnitData& cvt = cvs[static_cast<size_t>(i)];
    if (cvt.in == from && cvt.out == to) {
      return cvt;
    }
    newest = std::max(newest, cvt.flag);
  }
  UnitData& slot = takeSlot();
  slot = UnitData();
  slot.in = from;
  slot.out = to;
  slot.flag = newest + 1;
  const std::string in = fileName(takeFactor(from, slot.ifac));
  const std::string out = fileName(takeFactor(to, slot.ofac));
  if (isSame(in.c_str(), out.c_str())) {
    slot.valid = 1;
  } else {
    readFile(in.c_str(), out.c_str(), slot);
  }
  if (!isUsable(slot.ifac) || !isUsable(slot.ofac)) {
    slot.valid = 0;
  }
  Zqv::outDebug(5, "UNIT: %s %s - %d %d - %d %d\n", from, to, static_cast<int>(&slot - cvs.data()),
                ncvs, slot.valid, slot.flag);
  for (int i = 0; i < ncvs; i++) {
    const UnitData& cvt = cvs[static_cast<size_t>(i)];
    Zqv::outDebug(5, "%d %s %s %s %g %g %g %g %d %d\n", i, cvt.in.c_str(), cvt.out.c_str(),
                  cvt.cvt.c_str(), static_cast<double>(cvt.mult), static_cast<double>(cvt.offset),
                  static_cast<double>(cvt.ifac), static_cast<double>(cvt.ofac), cvt.valid,
                  cvt.flag);
  }
  return slot;
}

int Unit::readFile(const char* from, const char* to, UnitData& data) const {
  data.valid = 0;
  String path;
  FileTool::addPath(Zqv::getDatabasePath(), "units.lup", path);
  File file;
  if (file.openPlain(path.get()) == 0) {
    return 0;
  }
  char in[15] = "";
  while (file.scanf("%14s", in) == 1) {
    if (in[0] == '#') {
      file.skipLine();
      continue;
    }
    char out[15] = "";
    char cvt[40] = "";
    if (file.scanf("%14s %39s", out, cvt) != 2) {
      return 0;
    }
    if (StrLib::iequal(in, from) && StrLib::iequal(out, to)) {
      data.cvt = cvt;
      readConversion(data);
      data.valid = std::isfinite(data.mult) && std::isfinite(data.offset) ? 1 : 0;
      return data.valid;
    }
  }
  return 0;
}

int Unit::scale(const char* unit, float factor, const char* name, String& out) {
  float own = 1;
  const char* rest = takeFactor(StrLib::valid(unit, ""), own);
  const double total = static_cast<double>(own) * factor;
  const double power = std::log10(total);
  const std::string words = std::string(rest) + StrLib::acopy(name);
  char number[64];
  // The factor is a float, and so is the power of ten that it is compared with.
  if (total > 0 && static_cast<float>(power) == std::round(static_cast<float>(power))) {
    std::snprintf(number, sizeof(number), "10^%.0f ", power);
  } else {
    std::snprintf(number, sizeof(number), "%.0e ", total);
  }
  return out.copy((number + words).c_str());
}

int Unit::parse(const char* text, String& name, String& unit) {
  const std::string whole = StrLib::acopy(text);
  name.copy(whole.c_str());
  unit.clear();
  for (const char* brackets : {"[]", "()"}) {
    const size_t open = whole.find(brackets[0]);
    const size_t close = open == std::string::npos ? open : whole.find(brackets[1], open);
    if (close != std::string::npos) {
      name.copy(whole.substr(0, open).c_str());
      name.trimWS();
      unit.copy(whole.substr(open + 1, close - open - 1).c_str());
      return 1;
    }
  }
  name.trimWS();
  return 0;
}

int Unit::change(String& text, const char* unit) {
  String name;
  String old;
  parse(text.get(), name, old);
  text.copy(name.get());
  text.append(" [");
  text.append(StrLib::valid(unit, ""));
  text.append("]");
  return 1;
}

int Unit::simplify(String& text) {
  std::string s = text.get();
  for (const char* same : {"kg/kg", "g/g"}) {
    const size_t at = s.find(same);
    if (at != std::string::npos) {
      s.erase(at, std::strlen(same));
      break;
    }
  }
  const size_t at = s.find("/s/s");
  if (at != std::string::npos) {
    s.replace(at, 4, "/s^2");
  }
  return text.copy(s.c_str());
}

}  // namespace ZQV
