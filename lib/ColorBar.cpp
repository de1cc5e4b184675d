#include "ColorBar.h"

#include <cstdio>

#include "StrLib.h"
#include "Strings.h"

namespace ZQV {

int ColorBar::setParam(const char* text) {
  const Strings items(text, ',');
  for (int i = 0; i < items.getNum(); i++) {
    if (items.equal(i, "lo", 2)) {
      setLocate(items.getStringAfter(i, '='));
    } else if (items.equal(i, "ra", 2)) {
      items.scanf(i, 3, "%f:%f", &range.min, &range.max);
    }
  }
  return 1;
}

int ColorBar::setLocate(const char* text) {
  constexpr size_t max_loc = 9;
  loc = StrLib::acopy(text).substr(0, max_loc);
  return 1;
}

int ColorBar::setFill(const ColorFill& colors) {
  fill = colors;
  type = FILL;
  return 1;
}

int ColorBar::setEnhance(const Enhance& table) {
  enh = table;
  type = ENHANCE;
  return 1;
}

int ColorBar::setRange(const Range& values) {
  range = values;
  return 1;
}

void ColorBar::print() const {
  std::printf("ColorBar\nLocate: %s\n", loc.c_str());
  range.print();
  if (type == ENHANCE) {
    enh.print();
  } else {
    fill.print();
  }
}

}  // namespace ZQV
