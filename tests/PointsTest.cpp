#include "Points.h"

#include <gtest/gtest.h>

#include "EarthPoints.h"
#include "EarthRange.h"
#include "Point.h"

namespace ZQV {
namespace {

Points makePoints(std::initializer_list<Point> list) {
  Points pts;
  for (const Point& p : list) {
    pts.add(p);
  }
  return pts;
}

TEST(Points, RefusesIndexesOutOfRange) {
  Points pts = makePoints({{1, 2}, {3, 4}, {5, 6}});
  Point p(7, 7);
  EXPECT_EQ(pts.get(-1, p), 1);
  EXPECT_EQ(p.x, 5);
  EXPECT_EQ(pts.get(-3, p), 1);
  EXPECT_EQ(p.x, 1);
  for (const int bad : {3, 100, -4}) {
    EXPECT_EQ(pts.get(bad, p), 0);
    EXPECT_EQ(pts.set(bad, 0, 0), 0);
    EXPECT_EQ(pts.offset(bad, 1, 1), 0);
    EXPECT_EQ(pts.remove(bad), 0);
    EXPECT_EQ(pts.add(bad), 0);
    EXPECT_EQ(pts.trunc(bad + 1), 0);
  }
  // Only get() counts from the end.
  EXPECT_EQ(pts.set(-1, 0, 0), 0);
  EXPECT_EQ(pts.getNum(), 3);
}

TEST(Points, InsertsRemovesAndCopies) {
  Points pts = makePoints({{1, 0}, {2, 0}});
  pts.insert(-5, 0, 0);
  pts.insert(99, 3, 0);
  pts.insert(1, 0.5F, 0);
  pts.add(0);
  const float expected[] = {0, 0.5F, 1, 2, 3, 0};
  ASSERT_EQ(pts.getNum(), 6);
  for (int i = 0; i < 6; i++) {
    EXPECT_EQ(pts.getX(i), expected[i]) << i;
  }
  EXPECT_EQ(pts.remove(1), 1);
  Points part;
  EXPECT_EQ(part.copy(pts, 1, 3), 1);
  EXPECT_EQ(part.getNum(), 3);
  EXPECT_EQ(part.getMax(), 3);
  EXPECT_EQ(part.getX(0), 1);
  EXPECT_EQ(part.copy(pts, 3, 3), 0);
  EXPECT_EQ(part.copy(pts, -1, 1), 0);
  EXPECT_EQ(part.copy(part, 1, 2), 1);
  EXPECT_EQ(part.getX(0), 2);
  Point p;
  part.rewind();
  EXPECT_EQ(part.next(p) + part.next(p) + part.next(p), 2);
}

// The last point isn't joined to the first. On the edges a segment's start doesn't count and its
// end does, and a crossing at the point itself lies to its right.
TEST(Points, WithinNeedsAClosedOutline) {
  const Points open = makePoints({{0, 0}, {4, 0}, {4, 4}, {0, 4}});
  Points closed;
  closed.copy(open);
  closed.add(0);
  const struct {
    Point p;
    bool inside;
  } rows[] = {{{2, 2}, true},  {{5, 2}, false}, {{-1, 2}, false}, {{2, 5}, false},
              {{2, 4}, false}, {{2, 0}, false}, {{4, 2}, true},   {{0, 2}, false}};
  for (const auto& row : rows) {
    EXPECT_EQ(closed.within(row.p), row.inside) << row.p.x << " " << row.p.y;
  }
  EXPECT_FALSE(open.within(Point(2, 2)));
}

TEST(Points, CenterLiesInside) {
  const struct {
    const char* fault;
    Points pts;
    int result;
    Point p;
  } rows[] = {
      {"two points", makePoints({{0, 0}, {1, 1}}), 0, Point()},
      {"no extent", makePoints({{1, 1}, {1, 1}, {1, 1}}), 0, Point()},
      {"wide box is cut upright",
       makePoints({{0, 0}, {10, 0}, {10, 4}, {0, 4}, {0, 0}}),
       1,
       {5, 2}},
      {"tall box is cut level", makePoints({{0, 0}, {4, 0}, {4, 10}, {0, 10}, {0, 0}}), 1, {2, 5}},
      {"open outline is closed", makePoints({{0, 0}, {4, 0}, {4, 10}, {0, 10}}), 1, {2, 5}},
      // As wide as high it is cut level, and the first two crossings are those of one arm.
      {"hollow of a U",
       makePoints({{0, 0}, {10, 0}, {10, 10}, {8, 10}, {8, 2}, {2, 2}, {2, 10}, {0, 10}, {0, 0}}),
       1,
       {9, 5}}};
  for (const auto& row : rows) {
    Point p(1, 1);
    EXPECT_EQ(row.pts.getCenter(p), row.result) << row.fault;
    EXPECT_FLOAT_EQ(p.x, row.p.x) << row.fault;
    EXPECT_FLOAT_EQ(p.y, row.p.y) << row.fault;
  }
}

}  // namespace
}  // namespace ZQV
