#pragma once

#include "Domain.h"

namespace ZQV {

/** Arithmetic and comparison of grids. Static operations only. */
class GridMath {
 public:
  /** Both are the same grid of points: in the same plane, of the same size, at the same place. */
  static bool isDomainEqual(const Domain& a, const Domain& b) { return DomainVal::compare(a, b); }
};

}  // namespace ZQV
