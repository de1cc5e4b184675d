#include "Timezone.h"

#include <cstdio>

#include "StrLib.h"
#include "Tools.h"

namespace ZQV {

int Timezone::set(const char* text) {
  init();
  if (!StrLib::valid(text)) {
    return 0;
  }
  constexpr size_t max_name = 4;
  constexpr double seconds_an_hour = 3600;
  if (*text == '+' || *text == '-') {
    pm = *text == '+' ? 1 : -1;
    text++;
  }
  const std::string form = text;
  const size_t colon = form.find(':');
  name = form.substr(0, colon).substr(0, max_name);
  const char* number = colon == std::string::npos ? nullptr : form.c_str() + colon + 1;
  float hours = 0;
  if (number == nullptr || std::sscanf(number, "%f", &hours) != 1) {
    return 0;  // a name without hours would put UTC times under it
  }
  offset = Tools::cut(static_cast<double>(hours) * seconds_an_hour);
  return 1;
}

void Timezone::print() const {
  std::printf("%s %d %d\n", name.c_str(), pm, offset);
}

}  // namespace ZQV
