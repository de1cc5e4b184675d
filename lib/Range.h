#pragma once

#include <cstdio>

#include "Const.h"

namespace ZQV {

/** Smallest and largest of some values; missing (Const::FMISS) where there were none. */
class Range {
 public:
  Range() = default;
  Range(float lo, float hi) : min(lo), max(hi) {}

  void init() { *this = Range(); }
  void set(float lo, float hi) { *this = Range(lo, hi); }
  /** max - min, or Const::FMISS when either is missing. */
  [[nodiscard]] float getRange() const {
    return min == Const::FMISS || max == Const::FMISS ? Const::FMISS : max - min;
  }
  /** Writes "Min: %f Max: %f\n". */
  void print() const {
    std::printf("Min: %f Max: %f\n", static_cast<double>(min), static_cast<double>(max));
  }

  float min = Const::FMISS;
  float max = Const::FMISS;
};

}  // namespace ZQV
