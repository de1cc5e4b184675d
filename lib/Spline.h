#pragma once

#include <vector>

namespace ZQV {

class Point;
class Points;

/** A smooth curve through the points of a polyline: each coordinate is a cubic spline over the
 * distance along the line, with no curvature at open ends. The place on the curve is told by that
 * distance, from 0 at the first point on, in the unit of the points. */
class Spline {
 public:
  Spline() = default;
  explicit Spline(const Points& points) { set(points, 0); }

  /** Takes the points. A point in the place of the one before, and one that is missing or isn't
   * finite, is passed over. A line whose ends meet becomes a smooth loop.
   *  @param kind  kept for the caller
   *  @return 1; 0 with fewer than two points in different places, and the curve is then none */
  int set(const Points& points, int kind);
  [[nodiscard]] int getType() const { return type; }
  /** The line is closed. */
  [[nodiscard]] bool isPoly() const { return poly != 0; }
  /** Points that the curve was made of. */
  [[nodiscard]] int getNum() const { return num - 2 * poly; }
  /** Length of the polyline, 0 without a curve. */
  [[nodiscard]] float getDist() const { return getDist(getNum() - 1); }
  /** Distance of point i along the polyline; 0 out of range. */
  [[nodiscard]] float getDist(int i) const;
  /** The place at a distance; the end pieces go on beyond the ends. @return 1; 0 without a curve,
   * and p is then missing */
  int getPoint(float t, Point& p) const;
  /** y at a distance, Const::FMISS without a curve. */
  [[nodiscard]] float getValue(float t) const;

 private:
  using Values = std::vector<float>;
  static Values createCoeffs(const Values& d, const Values& v);
  [[nodiscard]] float interp(float t, const Values& c, const Values& v) const;

  int num = 0;  ///< points, those that lead into and out of a loop included
  int type = 0;
  Values x;
  Values y;
  Values d;       ///< distance along the line; that of its first point is 0
  Values coeffx;  ///< second derivatives
  Values coeffy;
  int poly = 0;
};

}  // namespace ZQV
