#pragma once

#include <cstdio>

#include "Const.h"

namespace ZQV {

/** An upright rectangle. set() and the constructor sort the corners; one that must keep its sense
 * (the limits of a grid with negative spacing) is filled field by field. Missing is Const::FMISS.
 */
class Rect {
 public:
  Rect() = default;
  Rect(float x1, float y1, float x2, float y2) { set(x1, y1, x2, y2); }

  void init() { *this = Rect(); }
  /** The smaller of x1 and x2 becomes xmin, and so on. */
  void set(float x1, float y1, float x2, float y2) {
    xmin = x1 < x2 ? x1 : x2;
    xmax = x1 < x2 ? x2 : x1;
    ymin = y1 < y2 ? y1 : y2;
    ymax = y1 < y2 ? y2 : y1;
  }
  [[nodiscard]] bool isSet() const { return xmin != Const::FMISS; }
  [[nodiscard]] float getWidth() const { return xmax - xmin; }
  [[nodiscard]] float getHeight() const { return ymax - ymin; }
  /** Writes "X: %f %f Y: %f %f\n". */
  void print() const {
    std::printf("X: %f %f Y: %f %f\n", static_cast<double>(xmin), static_cast<double>(xmax),
                static_cast<double>(ymin), static_cast<double>(ymax));
  }

  float xmin = Const::FMISS;
  float ymin = Const::FMISS;
  float xmax = Const::FMISS;
  float ymax = Const::FMISS;
};

}  // namespace ZQV
