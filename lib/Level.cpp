#include "Level.h"

#include <cstdio>

#include "StrLib.h"
#include "String.h"
#include "Tools.h"

namespace ZQV {

int Level::set(const char* text) {
  init();
  if (!StrLib::valid(text)) {
    return 0;
  }
  char units[20] = "";
  float bottom = 0;
  float top = 0;
  if (!Tools::isFloat(text)) {
    name = text;
  } else if (std::sscanf(text, "%f-%f%19s", &bottom, &top, units) >= 2) {
    set(bottom, top, units);
  } else {
    std::sscanf(text, "%f%19s", &bottom, units);
    set(bottom, units);
  }
  return 1;
}

void Level::set(float v, const char* units) {
  set(v, Const::FMISS, units);
}

void Level::set(float bottom, float top, const char* units) {
  val = bottom;
  val2 = top;
  name = StrLib::acopy(units);
}

int Level::toString(String& out) const {
  out.clear();
  if (!isSet()) {
    return 0;
  }
  if (val != Const::FMISS) {
    char text[80];
    if (isLayer()) {
      std::snprintf(text, sizeof(text), "%g-%g", static_cast<double>(val),
                    static_cast<double>(val2));
    } else {
      std::snprintf(text, sizeof(text), "%g", static_cast<double>(val));
    }
    out.copy(text);
    if (!name.empty()) {
      out.append(' ');
    }
  }
  out.append(name.c_str());
  return 1;
}

void Level::print() const {
  String text;
  toString(text);
  std::printf("%s\n", text.get());
}

}  // namespace ZQV
