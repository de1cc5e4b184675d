#pragma once

#include "Const.h"

namespace ZQV {

/** A position in the cells of a grid: real numbers from 0 at the upper left point, gx to the right,
 * gy down. Missing is Const::FMISS. */
class GridPoint {
 public:
  GridPoint() = default;
  GridPoint(float x, float y) : gx(x), gy(y) {}

  void init() { *this = GridPoint(); }
  void set(float x, float y) {
    gx = x;
    gy = y;
  }
  [[nodiscard]] bool isSet() const { return gx != Const::FMISS && gy != Const::FMISS; }
  void offset(float dx, float dy) {
    gx += dx;
    gy += dy;
  }

  float gx = Const::FMISS;
  float gy = Const::FMISS;
};

}  // namespace ZQV
