#pragma once

#include "Domain.h"
#include "Rect.h"

namespace ZQV {

/** One part of the page with a domain of its own. */
class Panel {
 public:
  /** The part of the page that the panel may use, normalised. */
  void setLimits(const Rect& rect) { limits = rect; }
  /** Inside the limits, edges included. */
  [[nodiscard]] bool withinLimits(float x, float y) const {
    return x >= limits.xmin && x <= limits.xmax && y >= limits.ymin && y <= limits.ymax;
  }
  /** From a normalised position to the plane of the domain. @return 1; 0 for a panel without extent
   */
  int getWindow(float x, float y, float& wx, float& wy) const;
  /** Writes "Panel\n" and its parts. */
  void print() const;

  Rect limits{0.0F, 0.0F, 1.0F, 1.0F};
  Rect offset;  ///< the rectangle that the caller gave
  Rect view;    ///< the viewport, normalised
  Domain domain;
};

}  // namespace ZQV
