#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

#include "Const.h"
#include "Point.h"

namespace ZQV {

/** The corners of cells along one straight edge of the data's plane, on the plot's plane. Taking a
 * place over the earth from plane to plane costs a dozen transcendental functions, and the corners
 * of a radial or a row are many and close: they are taken over exactly at every KNOT-th cell, and
 * between these a cubic is followed. Its error is below what the 32-bit latitudes and longitudes of
 * the exact way leave, some metres; where it isn't, as at the seam of a map or its limb, which a
 * look at the middle between two knots tells, each corner is taken over exactly. */
class EdgeCurve {
 public:
  /** Cells from one exact place to the next. */
  static constexpr int KNOT = 16;

  /** Begins another edge. */
  void forget() {
    blocks.clear();
    knots.clear();
  }

  /** Corner i of the edge, from 0 on; missing where the plot can't show it.
   *  @param exact  takes over corner i; i may be as low as -KNOT and KNOT beyond what is asked for
   */
  template <typename Exact>
  Point at(int i, Exact&& exact) {
    if (i < 0) return exact(i);
    const auto n = static_cast<size_t>(i / KNOT);
    if (n >= blocks.size()) {
      blocks.resize(n + 1);
      knots.resize(n + 4);
    }
    Block& b = blocks[n];
    if (b.state == UNKNOWN) fit(b, n, exact);
    const int step = i % KNOT;
    if (step == 0) return knots[n + 1].place;
    if (b.state == ROUGH) return exact(i);
    return follow(b, static_cast<double>(step) / KNOT);
  }

 private:
  enum State : uint8_t { UNKNOWN, SMOOTH, ROUGH };
  /** The cells between two knots, and the cubic there. */
  struct Block {
    State state = UNKNOWN;
    std::array<double, 4> x{};
    std::array<double, 4> y{};
  };
  struct Knot {
    bool known = false;
    Point place;
  };

  static Point follow(const Block& b, double t) {
    return {static_cast<float>(((b.x[3] * t + b.x[2]) * t + b.x[1]) * t + b.x[0]),
            static_cast<float>(((b.y[3] * t + b.y[2]) * t + b.y[1]) * t + b.y[0])};
  }
  /** Coefficients of the cubic with these values at -1, 0, 1 and 2. */
  static std::array<double, 4> cubic(double a, double b, double c, double d) {
    const double second = (a - 2.0 * b + c) / 2.0;
    const double third = (d - 3.0 * c + 3.0 * b - a) / 6.0;
    return {b, c - b - second - third, second, third};
  }
  template <typename Exact>
  const Point& knot(size_t n, Exact& exact) {
    Knot& k = knots[n];
    if (!k.known) {
      k.known = true;
      k.place = exact((static_cast<int>(n) - 1) * KNOT);
    }
    return k.place;
  }
  template <typename Exact>
  void fit(Block& b, size_t n, Exact& exact) {
    b.state = ROUGH;
    const Point& p1 = knot(n + 1, exact);
    const Point& p0 = knot(n, exact);
    const Point& p2 = knot(n + 2, exact);
    const Point& p3 = knot(n + 3, exact);
    for (const Point* p : {&p0, &p1, &p2, &p3}) {
      if (p->x == Const::FMISS) return;
    }
    b.x = cubic(p0.x, p1.x, p2.x, p3.x);
    b.y = cubic(p0.y, p1.y, p2.y, p3.y);
    const Point middle = exact(static_cast<int>(n) * KNOT + KNOT / 2);
    const Point guess = follow(b, 0.5);
    if (middle.x != Const::FMISS && near(middle.x, guess.x) && near(middle.y, guess.y)) {
      b.state = SMOOTH;
    }
  }
  /** Within what 32-bit degrees leave of a place, in units of the plane: 100 km, or degrees. */
  static bool near(float a, float b) {
    constexpr float rounding = 2.5e-5F;
    constexpr float relative = 1e-6F;
    return std::fabs(a - b) <= rounding + relative * std::fabs(a);
  }

  std::vector<Block> blocks;
  std::vector<Knot> knots;  ///< one before the first cell, and two behind the last block
};

}  // namespace ZQV
