#pragma once

#include <cstdio>

#include "Const.h"

namespace ZQV {

/** A coordinate rectangle with its extents. Unlike Rect it keeps the order of its corners, so an
 * axis may run downward; the extents are then negative. */
class Coords {
 public:
  Coords() = default;
  Coords(float x1, float y1, float x2, float y2) { set(x1, y1, x2, y2); }

  void init() { *this = Coords(); }
  void set(float x1, float y1, float x2, float y2) {
    xmin = x1;
    ymin = y1;
    xmax = x2;
    ymax = y2;
    xext = xmax - xmin;
    yext = ymax - ymin;
  }
  /** Writes "%f,%f - %f,%f = %f,%f\n": both corners, then the extents. */
  void print() const {
    std::printf("%f,%f - %f,%f = %f,%f\n", static_cast<double>(xmin), static_cast<double>(ymin),
                static_cast<double>(xmax), static_cast<double>(ymax), static_cast<double>(xext),
                static_cast<double>(yext));
  }

  float xmin = Const::FMISS;
  float ymin = Const::FMISS;
  float xmax = Const::FMISS;
  float ymax = Const::FMISS;
  float xext = Const::FMISS;
  float yext = Const::FMISS;
};

}  // namespace ZQV
