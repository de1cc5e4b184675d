#include "ForeTime.h"

#include <cstdio>

#include "StrLib.h"
#include "String.h"
#include "Tools.h"

namespace ZQV {

int ForeTime::set(float h) {
  hours = h;
  return 1;
}

int ForeTime::set(const char* text) {
  init();
  if (StrLib::iequal(text, "an", 2)) {
    return set(0.0F);
  }
  return Tools::isFloat(text) ? set(StrLib::toFloat(text)) : 0;
}

int ForeTime::toTimeLabel(String& out) const {
  out.clear();
  if (!isSet()) {
    return 0;
  }
  if (hours == 0) {
    return out.copy("Analysis");
  }
  char text[64];
  std::snprintf(text, sizeof(text), "%g hour forecast", static_cast<double>(hours));
  return out.copy(text);
}

void ForeTime::print() const {
  std::printf("%f\n", static_cast<double>(hours));
}

}  // namespace ZQV
