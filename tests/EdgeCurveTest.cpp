// Corners between knots: where the exact way puts them, also where the map ends or has a seam.

#include "EdgeCurve.h"

#include <cstdio>

#include <gtest/gtest.h>

#include "Domain.h"
#include "EarthPoint.h"

using namespace ZQV;

namespace {

/** From a radar's plane to a map's, and how often that was asked. */
class Exact {
 public:
  Exact(const char* to, float lat, float lon, double azimuth, float cell)
      : step(cell / 100.0F), direction(azimuth * M_PI / 180.0) {
    EXPECT_EQ(map.set(to), 1) << to;
    char text[100];
    std::snprintf(text, sizeof(text), "pstereo:%f:%f,%f,%f,100,100,.01,.01",
                  static_cast<double>(lat), static_cast<double>(lon), static_cast<double>(lat),
                  static_cast<double>(lon));
    EXPECT_EQ(radar.set(text), 1) << text;
    EarthPoint site(lat, lon);
    radar.tran(site, centre);
  }
  Point operator()(int i) {
    calls++;
    const double r = i * static_cast<double>(step);
    EarthPoint e;
    Point p;
    radar.tran(Point(centre.x + static_cast<float>(r * std::sin(direction)),
                     centre.y + static_cast<float>(r * std::cos(direction))),
               e);
    return e.lat == Const::FMISS || map.tran(e, p) == 0 ? Point() : p;
  }
  int calls = 0;

 private:
  Domain radar;
  Domain map;
  Point centre;
  float step;
  double direction;
};

}  // namespace

TEST(EdgeCurveTest, CornersLieWhereTheExactWayPutsThem) {
  constexpr int cells = 460;
  const char* maps[] = {"lc:40:-97:33:45,35,-97,91,61,.1,.1",
                        "latlon,35,-97,91,61,.1,.1",
                        "merc,35,-97,91,61,.1,.1",
                        "ps:90:-100,35,-97,91,61,.1,.1",
                        "ortho:35:-97,35,-97,91,61,.1,.1",
                        "moll:0:-97,35,-97,91,61,.1,.1"};
  for (const char* map : maps) {
    for (const double azimuth : {0.0, 33.0, 90.0, 181.5, 271.0}) {
      for (const float km : {0.25F, 1.0F}) {
        Exact exact(map, 35.3F, -97.3F, azimuth, km);
        Exact counted(map, 35.3F, -97.3F, azimuth, km);
        EdgeCurve edge;
        for (int i = 0; i <= cells; i++) {
          const Point p = edge.at(i, counted);
          const Point q = exact(i);
          ASSERT_NEAR(p.x, q.x, 3e-5 + 1e-6 * std::fabs(q.x)) << map << " " << azimuth << " " << i;
          ASSERT_NEAR(p.y, q.y, 3e-5 + 1e-6 * std::fabs(q.y)) << map << " " << azimuth << " " << i;
        }
        EXPECT_LT(counted.calls, cells / 4) << map << " " << azimuth;
      }
    }
  }
}

TEST(EdgeCurveTest, SeamsAndLimbsAreExact) {
  // Across the date line, over a pole, and beyond the limb of an orthographic map.
  const struct {
    const char* map;
    float lat, lon;
    double azimuth;
  } cases[] = {{"latlon,0,0,361,181,1,1", 10.0F, 177.0F, 85.0},
               {"merc,0,0,361,181,1,1", -15.0F, -178.0F, 275.0},
               {"latlon,0,0,361,181,1,1", 88.0F, 20.0F, 1.0},
               {"ortho:0:0,0,0,91,61,1,1", 0.0F, 88.0F, 90.0}};
  for (const auto& c : cases) {
    Exact exact(c.map, c.lat, c.lon, c.azimuth, 2.0F);
    Exact counted(c.map, c.lat, c.lon, c.azimuth, 2.0F);
    EdgeCurve edge;
    for (int i = 0; i <= 300; i++) {
      const Point p = edge.at(i, counted);
      const Point q = exact(i);
      ASSERT_NEAR(p.x, q.x, 5e-5 + 2e-6 * std::fabs(q.x)) << c.map << " " << i;
      ASSERT_NEAR(p.y, q.y, 5e-5 + 2e-6 * std::fabs(q.y)) << c.map << " " << i;
    }
  }
}

TEST(EdgeCurveTest, CornersInAnyOrderAndAnotherEdge) {
  const auto square = [](int i) { return Point(static_cast<float>(i * i) / 100.0F, 1.0F); };
  EdgeCurve edge;
  for (const int i : {300, 5, 40, 6, 0, -3, 301})
    EXPECT_FLOAT_EQ(edge.at(i, square).x, square(i).x);
  edge.forget();
  const auto other = [](int i) { return Point(static_cast<float>(i), 2.0F); };
  EXPECT_FLOAT_EQ(edge.at(40, other).x, 40.0F);
}
