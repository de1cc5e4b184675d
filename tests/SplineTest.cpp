// Curves, against coefficients worked out by hand and against what a curve has to keep.

#include "Spline.h"

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "Const.h"
#include "Point.h"
#include "Points.h"

using namespace ZQV;

namespace {

Points line(const std::vector<Point>& list) {
  Points points;
  for (const Point& p : list) {
    points.add(p);
  }
  return points;
}

Point at(const Spline& spline, double t) {
  Point p;
  EXPECT_EQ(spline.getPoint(static_cast<float>(t), p), 1);
  return p;
}

}  // namespace

TEST(SplineTest, BendsByTheDampedSweep) {
  // Unit steps along x but for y: second derivatives by hand, with the factor of the sweep back
  // over the number of points. Three points: c1 = 3 bend / (d2 - d0) = -1.5.
  const Spline three(line({{0, 0}, {1, 1}, {2, 0}}));
  const double root = std::sqrt(2.0);
  EXPECT_NEAR(at(three, root / 2).y, 0.6875, 1e-6);
  EXPECT_NEAR(at(three, root / 2).x, 0.5, 1e-6);
  EXPECT_NEAR(three.getValue(static_cast<float>(1.5 * root)), 0.6875F, 1e-6F);
  // Four points on a bend: d = 0 1 2 3, y bends by 0 at 1 and x by -1, y by 1 at 2 ...
  //   s = 1/2; x: r1 = 0, f1 = -1/8; bend2 = -1: r2 = (-6/2 - 0) / (2 - 1/16) = -48/31;
  //   c2 = -48/31, c1 = -1/8 c2 = 6/31. Without the damping c1 would be 24/31.
  const Spline four(line({{0, 0}, {1, 0}, {2, 0}, {2, 1}}));
  const double c1 = 6.0 / 31;
  EXPECT_NEAR(at(four, 0.5).x, 0.5 - c1 / 16, 1e-6);  // u = 1/2: c1 (u^3 - u) / 6
  EXPECT_NEAR(at(four, 1.5).x, 1.5 - (c1 - 48.0 / 31) / 16, 1e-6);
}

TEST(SplineTest, NoCurveThroughOnePlace) {
  for (const auto& points : {std::vector<Point>{}, {{1, 2}}, {{1, 2}, {1, 2}, {1, 2}}}) {
    Spline spline(line({{0, 0}, {1, 1}}));
    EXPECT_EQ(spline.set(line(points), 0), 0);
    EXPECT_EQ(spline.getDist(), 0);
    Point p(1, 1);
    EXPECT_EQ(spline.getPoint(0.5F, p), 0);
    EXPECT_FALSE(p.isSet());
    EXPECT_EQ(spline.getValue(0), Const::FMISS);
  }
}
