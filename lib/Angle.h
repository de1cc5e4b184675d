#pragma once

#include <cmath>

namespace ZQV {

/** An angle with its sine and cosine at hand. */
class Angle {
 public:
  Angle() = default;
  explicit Angle(double a) { set(a); }

  /** @param a  radians */
  void set(double a) {
    ang = a;
    sin = std::sin(a);
    cos = std::cos(a);
  }

  double ang = 0;  ///< radians
  double sin = 0;
  double cos = 1;
};

}  // namespace ZQV
