#include "Panel.h"

#include <algorithm>
#include <cstdio>

namespace ZQV {

int Panel::getWindow(float x, float y, float& wx, float& wy) const {
  const float longer = std::max(limits.getWidth(), limits.getHeight());
  const Rect& window = domain.getLimits();
  if (!(longer > 0) || !(view.getWidth() > 0) || !(view.getHeight() > 0)) {
    return 0;
  }
  const float px = (x - limits.xmin) / longer;
  const float py = (y - limits.ymin) / longer;
  wx = (px - view.xmin) / view.getWidth() * window.getWidth() + window.xmin;
  wy = (py - view.ymin) / view.getHeight() * window.getHeight() + window.ymin;
  return 1;
}

void Panel::print() const {
  std::printf("Panel\nLimits: ");
  limits.print();
  std::printf("Offset: ");
  offset.print();
  std::printf("View: ");
  view.print();
  std::printf("Domain: ");
  domain.print();
}

}  // namespace ZQV
