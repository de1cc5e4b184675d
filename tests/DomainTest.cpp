#include "Domain.h"

#include <cmath>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "DomainTool.h"
#include "EarthPoint.h"
#include "GridPoint.h"
#include "Point.h"
#include "Points.h"
#include "String.h"

namespace ZQV {
namespace {

constexpr float MISSING = Const::FMISS;
constexpr double DEG = 3.14159265358979 / 180;

/** A domain of 25 by 17 points, 100 km apart, in a projection given as in a domain text. */
Domain make(const std::string& field, float clat = 40, float clon = -100) {
  DomainVal val;
  const std::string text = field + ",0,0,25,17,1,1";
  EXPECT_EQ(DomainTool::decode(val, text.c_str()), 1) << text;
  val.clat = clat;
  val.clon = clon;
  return Domain(val);
}

/** A diagram of 11 by 11 points about a centre. */
Domain diagram(int proj, float clat, float clon, float dy = 0.02F) {
  DomainVal val;
  val.proj = proj;
  val.clat = clat;
  val.clon = clon;
  val.plat = -20;
  val.plon = 1000;
  val.nx = val.ny = 11;
  val.dx = 1;
  val.dy = dy;
  return Domain(val);
}

double distKm(const EarthPoint& a, const EarthPoint& b) {
  return Domain::calcEarthDist(a, b) * 100.0;
}

struct TableRow {
  std::string field;
  std::string way;
  EarthPoint e;
  Point p;
};

std::vector<TableRow> readTable() {
  std::vector<TableRow> rows;
  std::ifstream in(ZQV_SOURCE_DIR "/tests/data/proj_points.tsv");
  for (std::string line; std::getline(in, line);) {
    TableRow row;
    std::istringstream words(line);
    if (line[0] != '#' &&
        words >> row.field >> row.way >> row.e.lat >> row.e.lon >> row.p.x >> row.p.y) {
      rows.push_back(row);
    }
  }
  return rows;
}

// Positions worked out by another program. 20 m forward is what 32-bit coordinates hold; the
// inverse may lose more where the projection crowds places together; the picture of the sphere from
// a satellite has constants in 32 bits that are worth up to 100 m.
TEST(Domain, ProjectsToWhereOthersDo) {
  const std::vector<TableRow> rows = readTable();
  ASSERT_GT(rows.size(), 1000U);
  for (const TableRow& row : rows) {
    Domain domain = make(row.field);
    SCOPED_TRACE(row.field + " " + std::to_string(row.e.lat) + " " + std::to_string(row.e.lon));
    if (row.way != "inverse") {
      EarthPoint e = row.e;
      Point p;
      ASSERT_EQ(domain.tran(e, p), 1);
      EXPECT_LT(100 * std::hypot(p.x - row.p.x, p.y - row.p.y), 0.02);
    }
    if (row.way != "forward") {
      EarthPoint e;
      domain.tran(row.p, e);
      EXPECT_LT(distKm(e, row.e), row.way == "inverse" ? 0.1 : 0.05);
    }
  }
}

TEST(Domain, DiagramFormulas) {
  const struct {
    int proj;
    EarthPoint e;
    double x, y;
  } rows[] = {
      {Domain::PIXEL, {3, 4}, 3, -4},
      {Domain::XY, {3, 4}, 3, 4},
      {Domain::XLOGP, {3, 500}, 3, -6.214608},
      {Domain::POLAR, {90, 10}, 10, 0},
      {Domain::STUVE, {3, 1000}, 3, -7.196857},
      // ln of the potential temperature of 20 C at 500 mb: 293.15 * 2^0.286 = 357.43
      {Domain::RTEPH, {20, 500}, 20, 5.878942},
      // The scale at the centre is -ln(1000); x moves by dx / dy = 50 for each unit of ln p.
      {Domain::SKEWT, {0, 500}, 50 * 0.693147, -6.214608}};
  for (const auto& row : rows) {
    Domain domain = diagram(row.proj, 0, 1000);
    EarthPoint e = row.e;
    Point p;
    EXPECT_EQ(domain.tran(e, p), 1);
    EXPECT_NEAR(p.x, row.x, 2e-4) << row.proj;
    EXPECT_NEAR(p.y, row.y, 2e-4) << row.proj;
    EXPECT_EQ(domain.tran(p, e), 1);
    EXPECT_NEAR(e.lat, row.e.lat, 0.002) << row.proj;
    // On RTEPH the exponent is 0.286 one way and 1/3.5 the other.
    EXPECT_NEAR(e.lon, row.e.lon, row.proj == Domain::RTEPH ? 0.5 : 0.02) << row.proj;
  }
  for (const int proj : {Domain::XZ, Domain::CAT, Domain::EMA, Domain::TEPH, Domain::ZOOM}) {
    Domain domain = diagram(proj, 10, 600);
    EarthPoint e(35, 300);
    Point p;
    ASSERT_EQ(domain.tran(e, p), 1);
    ASSERT_EQ(domain.tran(p, e), 1);
    EXPECT_NEAR(e.lat, 35, 0.002) << proj;
    EXPECT_NEAR(e.lon, 300, proj == Domain::TEPH ? 0.6 : 0.02) << proj;
  }
  Domain none;  // is the identity
  EarthPoint e(3, 400);
  Point p;
  EXPECT_EQ(none.tran(e, p), 1);
  EXPECT_EQ(p.y, 400);
  EXPECT_EQ(none.tran(Point(5, 6), e), 1);
  EXPECT_EQ(e.lat, 5);
}

// Both axes of TEPH are scaled by nx, and the diagram is turned in the viewport: one grid width of
// temperature moves a point half a width to the right and half a width down.
TEST(Domain, TephIsTurnedInTheView) {
  DomainVal val;
  val.proj = Domain::TEPH;
  val.clat = 0;
  val.clon = 1000;
  val.nx = 11;
  val.ny = 31;
  val.dx = 10;
  val.dy = 0.1F;
  Domain domain(val);
  EarthPoint e(100, 1000);
  Point p;
  domain.tran(e, p);
  // Dry: ln theta of 100 C over that of 0 C, both at 1000 mb, is ln(373.15 / 273.15) = 0.311979.
  const double y1 = 0.311979;  // of the view, whose height is (nx - 1) dy = 1
  EXPECT_NEAR(p.x, 100 * (y1 + 1) / 2, 0.01);
  EXPECT_NEAR(p.y, std::log(273.15) + y1 - (y1 + 1) / 2, 0.001);
}

TEST(Domain, RefusesWhatCannotBeShown) {
  const struct {
    const char* fault;
    const char* field;
    EarthPoint e;
  } rows[] = {{"antipode of the equator", "la:0:0", {0, 180}},
              {"antipode where cosines round", "la:40:-100", {-40, 80}},
              {"antipode of a pole", "la:90:0", {-90, 0}},
              {"just behind the rim", "or:0:0", {0, 90.1F}},
              {"other side", "or:35:-90", {-35, 90}},
              {"behind the limb", "sat:0:-75", {0, 10}},
              {"pole from space", "sat:e:0:-75", {90, -75}}};
  for (const auto& row : rows) {
    Domain domain = make(row.field);
    EarthPoint e = row.e;
    Point p(1, 1);
    EXPECT_EQ(domain.tran(e, p), 0) << row.fault;
    EXPECT_EQ(p.x, MISSING) << row.fault;
    EXPECT_EQ(p.y, MISSING) << row.fault;
  }
}

TEST(Domain, RefusesPlacesOffTheDisc) {
  const struct {
    const char* field;
    Point p;
  } rows[] = {{"la:40:-100", {100, 80}}, {"or:35:-90", {50, 45}},
              {"mo:0:0", {0, 63.8F}},    {"mo:0:0", {100, 40}},
              {"sat:0:-75", {0, 75}},    {"sat:0:-75:421.64:1", {75, 0}},
              {"sat:e:0:-75", {60, 60}}, {"sat:e:0:-75:421.64:1", {0, -75}}};
  for (const auto& row : rows) {
    Domain domain = make(row.field);
    EarthPoint e(1, 1);
    EXPECT_EQ(domain.tran(row.p, e), 0) << row.field;
    EXPECT_EQ(e.lat, MISSING);
    EXPECT_EQ(e.lon, MISSING);
  }
}

// What the projection limits is written back to the caller's point, except on MERC.
TEST(Domain, LimitsLatitude) {
  const struct {
    const char* field;
    float lat, left, drawn;
  } rows[] = {{"ps:90:0", -80, -75, -75},       {"ps:-90:0", 89, 75, 75},
              {"ps:90:0", -75, -75, -75},       {"lc:40:0", -90, -89.99F, -89.99F},
              {"lc:-40:0", 90, 89.99F, 89.99F}, {"me:0:0", 90, 90, 89.9F},
              {"me:e:0:0", -90, -90, -89.9F}};
  for (const auto& row : rows) {
    Domain domain = make(row.field);
    EarthPoint e(row.lat, 20);
    EarthPoint limit(row.drawn, 20);
    Point p;
    Point expected;
    domain.tran(e, p);
    domain.tran(limit, expected);
    EXPECT_FLOAT_EQ(e.lat, row.left) << row.field;
    EXPECT_FLOAT_EQ(p.x, expected.x) << row.field;
    EXPECT_FLOAT_EQ(p.y, expected.y) << row.field;
  }
}

// Longitudes are brought into -180 to 180 in the caller's point on every map, as by steps of 360.
TEST(Domain, BringsLongitudeIntoRange) {
  for (const char* field : {"ps:90:0", "ll:0:0", "me:0:0", "me:e:0:0", "lc:40:0", "or:40:0",
                            "gn:0:0", "mo:0:0", "la:40:0", "sat:0:0"}) {
    Domain domain = make(field);
    for (const auto& [lon, expected] :
         {std::pair(721.0F, 1.0F), std::pair(180.0F, 180.0F), std::pair(-180.0F, -180.0F),
          std::pair(540.0F, 180.0F), std::pair(-540.0F, -180.0F), std::pair(-7000.25F, -160.25F)}) {
      EarthPoint e(10, lon);
      Point p;
      domain.tran(e, p);
      EXPECT_EQ(e.lon, expected) << field << " " << lon;
    }
  }
  Domain plane = make("xy");
  EarthPoint e(10, 721);
  Point p;
  plane.tran(e, p);
  EXPECT_EQ(e.lon, 721.0F);
}

TEST(Domain, NotFiniteIsMissing) {
  constexpr float inf = std::numeric_limits<float>::infinity();
  constexpr float nan = std::numeric_limits<float>::quiet_NaN();
  Domain domain = make("ps:90:-100");
  for (const EarthPoint& bad :
       {EarthPoint(40, inf), EarthPoint(40, -inf), EarthPoint(40, nan), EarthPoint(nan, 40),
        EarthPoint(inf, 40), EarthPoint(MISSING, 40), EarthPoint(40, MISSING)}) {
    EarthPoint e = bad;
    Point p(1, 1);
    EXPECT_EQ(domain.tran(e, p), 1);
    EXPECT_FALSE(p.isSet());
  }
  EarthPoint huge(40, 3e38F);
  Point p;
  EXPECT_EQ(domain.tran(huge, p), 1);
  EXPECT_TRUE(huge.lon >= -180 && huge.lon <= 180);
  // A pressure of nothing has no logarithm.
  p.set(1, 1);
  Domain diagram = make("skewt", 0, 1000);
  EarthPoint none(0, -1);
  EXPECT_EQ(diagram.tran(none, p), 0);
  EXPECT_FALSE(p.isSet());
}

// Deliberate: a missing point comes back from a map with a wrapped longitude, and callers test the
// latitude.
TEST(Domain, MissingPointComesBackWrapped) {
  Domain map = make("ps:90:-100");
  EarthPoint e;
  EXPECT_EQ(map.tran(Point(), e), 1);
  EXPECT_EQ(e.lat, -9999.0F);
  EXPECT_EQ(e.lon, -9639.0F);
  Domain plane = make("xy");
  EXPECT_EQ(plane.tran(Point(), e), 1);
  EXPECT_EQ(e.lon, -9999.0F);
}

// Deliberate: the centre of LAMBAZ is a valid place with the result 0.
TEST(Domain, LambazCentreGivesZero) {
  Domain domain = make("la:45:-100");
  EarthPoint e;
  EXPECT_EQ(domain.tran(Point(0, 0), e), 0);
  EXPECT_EQ(e.lat, 45);
  EXPECT_EQ(e.lon, -100);
}

TEST(Domain, NamesOfProjections) {
  const struct {
    int code;
    std::vector<const char*> names;
  } rows[] = {
      // "polar" is a polar stereographic map, though POLAR is written so: deliberate.
      {1, {"ps", "pstereo", "ps:60:-100", "POLAR"}},
      {2, {"ll", "latlon", "latitude"}},
      {3, {"merc", "mercator"}},
      {4, {"LAMB", "lc:40"}},
      {8, {"lambaz", "laea", "az"}},
      {23, {"xp", "XP"}},
      {24, {"xlogp", "xlogy", "vert"}},
      {40, {"skewt", "therm"}},
      {-9999, {"miss"}},
      // "xp" must stand alone, "miss" whole, and a beginning alone doesn't do. XZ can't be asked
      // for.
      {-1, {"xp1", "xp:1", "miss1", "l", "xz", "40", "", nullptr}}};
  for (const auto& row : rows) {
    for (const char* name : row.names) {
      EXPECT_EQ(Domain::getProj(name), row.code) << (name == nullptr ? "null" : name);
    }
  }
  const char* others[] = {"ortho:5", "gnom:6",   "moll:7",  "Sat:9",    "pixel:20",
                          "xy:21",   "hodo:25",  "cat:26",  "stuve:41", "ema:42",
                          "teph:43", "rteph:44", "zoom:50", "size:51"};
  for (const std::string text : others) {
    EXPECT_EQ(std::to_string(Domain::getProj(text.c_str())), text.substr(text.find(':') + 1))
        << text;
  }
}

TEST(Domain, GridStartsAtTheUpperLeft) {
  Domain domain = make("ps:90:-100");
  const Rect box = domain.getLimits();
  Point p;
  GridPoint g;
  EXPECT_EQ(domain.tran(GridPoint(0, 0), p), 1);
  EXPECT_FLOAT_EQ(p.x, box.xmin);
  EXPECT_FLOAT_EQ(p.y, box.ymax);
  EXPECT_EQ(domain.tran(GridPoint(24, 16), p), 1);
  EXPECT_FLOAT_EQ(p.x, box.xmax);
  EXPECT_FLOAT_EQ(p.y, box.ymin);
  EXPECT_EQ(domain.tran(GridPoint(), p), 0);
  EXPECT_FALSE(p.isSet());
  EXPECT_EQ(domain.tran(Point(), g), 0);
  EXPECT_FALSE(g.isSet());

  for (int corner = 0; corner < 4; corner++) {
    EXPECT_EQ(domain.tran(corner, p), 1);
    EXPECT_EQ(p.x, corner % 2 == 0 ? box.xmin : box.xmax);
    EXPECT_EQ(p.y, corner < 2 ? box.ymax : box.ymin);
  }
  EXPECT_EQ(domain.tran(5, p), 0);

  // A full turn to the left of the grid is the same column; only LATLON knows that.
  Domain globe = make("ll:0:0", 0, 0);
  globe.tran(Point(-375, 0), g);
  EXPECT_FLOAT_EQ(g.gx, -3);
}

TEST(Domain, SetsFromCorners) {
  for (const char* field : {"ps:90:-100", "ll:0:-100", "me:0:-100", "lc:40:-100"}) {
    Domain domain = make(field);
    EXPECT_EQ(domain.set(EarthPoint(50, -120), EarthPoint(30, -80), 41, 31), 1);
    EarthPoint ul;
    EarthPoint lr;
    domain.tran(0, ul);
    domain.tran(3, lr);
    EXPECT_LT(distKm(ul, EarthPoint(50, -120)), 0.1) << field;
    EXPECT_LT(distKm(lr, EarthPoint(30, -80)), 0.1) << field;
    EXPECT_EQ(domain.getNx(), 41);
  }
  Domain domain = make("ps:90:-100");
  EXPECT_EQ(domain.set(EarthPoint(50, -120), EarthPoint(30, -80), 1, 31), 0);
}

TEST(Domain, TranslatesThroughTheEarth) {
  Domain from = make("ps:90:-100");
  Domain to = make("lc:40:-95", 35, -90);
  Domain same = make("ps:90:-100", 30, -80);
  Point out;
  EXPECT_EQ(Domain::translate(from, same, Point(3, -50, 7), out), 1);
  EXPECT_EQ(out.x, 3);
  EXPECT_EQ(out.z, 7);
  EXPECT_EQ(Domain::translate(from, to, Point(), out), 1);
  EXPECT_FALSE(out.isSet());
  Domain disc = make("or:40:-100");
  EXPECT_EQ(Domain::translate(disc, from, Point(60, 60), out), 0);
  EXPECT_FALSE(out.isSet());
  // A valid centre, though its transformation gives 0.
  Domain round = make("la:40:-100");
  EXPECT_EQ(Domain::translate(round, from, Point(0, 0), out), 1);
  EXPECT_TRUE(out.isSet());
}

/** Bearing in the plot of a step of 100 m from e along dir. */
double stepBearing(Domain& domain, const EarthPoint& e, double dir) {
  const double step = 0.001;
  Point p;
  Point q;
  EarthPoint start = e;
  const double lat =
      std::asin(std::sin(e.lat * DEG) * std::cos(step * 10 * DEG) +
                std::cos(e.lat * DEG) * std::sin(step * 10 * DEG) * std::cos(dir * DEG));
  const double lon =
      std::atan2(std::sin(dir * DEG) * std::sin(step * 10 * DEG) * std::cos(e.lat * DEG),
                 std::cos(step * 10 * DEG) - std::sin(e.lat * DEG) * std::sin(lat));
  EarthPoint end(static_cast<float>(lat / DEG), static_cast<float>(e.lon + lon / DEG));
  domain.tran(start, p);
  domain.tran(end, q);
  return std::atan2(q.x - p.x, q.y - p.y) / DEG;
}

// Faults: a batch that ends in the wrong place, that keeps a place its map can't show, or limits,
// wraps or rounds otherwise than one place at a time.
TEST(Domain, ManyPlacesAtOnceLieWhereEachDoes) {
  const char* maps[] = {"lc:40:-97:33:45,35,-97,91,61,.1,.1",
                        "lc:-30:20,-30,20,91,61,1,1",
                        "ps:90:-100,60,-100,91,61,1,1",
                        "ps:-90:170,-60,170,91,61,1,1",
                        "latlon,0,0,361,181,1,1",
                        "merc,35,177,91,61,.1,.1",
                        "ortho:35:-97,35,-97,91,61,1,1"};
  const EarthPoint sites[] = {{35.3F, -97.3F}, {-14.3F, -170.7F}, {64.5F, 179.5F}, {89.9F, 10.0F}};
  for (const char* from_text : {"radar", "lc:40:-97:33:45,35,-97,91,61,.1,.1"}) {
    for (const EarthPoint& site : sites) {
      Domain from;
      char text[100];
      std::snprintf(text, sizeof(text), "pstereo:%f:%f,%f,%f,100,100,.01,.01",
                    static_cast<double>(site.lat), static_cast<double>(site.lon),
                    static_cast<double>(site.lat), static_cast<double>(site.lon));
      ASSERT_EQ(from.set(*from_text == 'r' ? text : from_text), 1);
      Point c;
      from.tranCenter(c);
      std::vector<float> x = {Const::FMISS, 0.0F, c.x};
      std::vector<float> y = {0.0F, 0.0F, c.y};
      for (int i = 0; i < 300; i++) {
        const auto k = static_cast<float>(i);
        x.push_back(c.x + k * k / 300.0F * std::sin(k));
        y.push_back(c.y + k * k / 300.0F * std::cos(k));
      }
      for (const char* map : maps) {
        Domain to;
        ASSERT_EQ(to.set(map), 1) << map;
        std::vector<float> px = x;
        std::vector<float> py = y;
        Domain::translate(from, to, px.data(), py.data(), static_cast<int>(px.size()));
        for (size_t i = 0; i < x.size(); i++) {
          EarthPoint e;
          Point p;
          from.tran(Point(x[i], y[i]), e);
          if (e.lat == Const::FMISS || to.tran(e, p) == 0) p = Point();
          const float unit = 1e-6F * (1.0F + std::fabs(p.x) + std::fabs(p.y));
          ASSERT_NEAR(px[i], p.x, unit) << text << " " << map << " " << i;
          ASSERT_NEAR(p.isSet() ? py[i] : p.y, p.y, unit) << text << " " << map << " " << i;
        }
      }
    }
  }
}

// The bearing of the plot is checked against a short step on the earth: a wrong sign shows as twice
// the convergence of the meridians.
TEST(Domain, TurnsBearings) {
  for (const char* field : {"ps:90:-100", "ps:-90:30", "lc:40:-95", "lc:45:10:35:65", "sat:e:0:-75",
                            "sat:e:0:-75:421.64:1", "me:0:0"}) {
    Domain domain = make(field);
    const bool south = field[3] == '-';
    const bool space = field[0] == 's';
    for (const float dir : {0.0F, 45.0F, 135.0F, 300.0F}) {
      EarthPoint e(south ? -35.0F : 38.0F, space ? -95.0F : domain.getPLon() + 25);
      Point p;
      domain.tran(e, p);
      const float turned = domain.adjustDir(dir, p);
      EXPECT_NEAR(std::remainder(turned - stepBearing(domain, e, dir), 360), 0, space ? 0.6 : 0.15)
          << field << " " << dir;
      EXPECT_TRUE(turned >= 0 && turned <= 360);
      if (!space) {
        EXPECT_NEAR(std::remainder(domain.unadjustDir(turned, p) - dir, 360), 0, 1e-3) << field;
      }
    }
    EXPECT_EQ(domain.adjustDir(MISSING, Point(1, 1)), MISSING);
  }
  // Deliberate: the southern cone turns bearings like the northern one, to the other side of the
  // meridian.
  Domain south = make("lc:-40:150:30:60");
  EarthPoint e(-35, 175);
  Point p;
  south.tran(e, p);
  EXPECT_NEAR(std::remainder(south.adjustDir(0, p) + stepBearing(south, e, 0), 360), 0, 0.15);
  // At the pole up is the meridian of the projection.
  EXPECT_EQ(make("ps:90:-100").adjustDir(10, Point(0, 0)), 110);
  EXPECT_EQ(make("ps:-90:30").adjustDir(10, Point(0, 0)), 40);
  EXPECT_EQ(make("sat:0:-75").adjustDir(10, Point(80, 80)), MISSING);
  // Between two points on the meridian of 80 west.
  EXPECT_NEAR(make("ps:90:-100").direct(Point(68.4040F, -187.9386F), Point(34.2020F, -93.9693F)), 0,
              1e-3);
}

// Deliberate: asked for a direction before any point was projected, LAMB computes its constant in a
// form of its own, and keeps it. That is so only for a domain without centre.
TEST(Domain, LambertDirectionsFirst) {
  DomainVal val;
  val.proj = Domain::LAMB;
  val.plat = 40;
  val.plon = -100;
  Domain domain(val);
  EXPECT_NEAR(domain.adjustDir(0, Point(-10, -80)), std::atan2(10.0, 80.0) / DEG, 1e-3);
  const double n =
      std::log(std::cos(30 * DEG)) -
      std::log(std::cos(60 * DEG)) / (std::log(std::tan(30 * DEG)) - std::log(std::tan(15 * DEG)));
  EarthPoint e(50, -90);
  Point p;
  domain.tran(e, p);
  const double r = -9999 * 63.7122 * std::pow(std::tan(20 * DEG), n);
  EXPECT_NEAR(p.x / (r * std::sin(10 * DEG * n)), 1, 1e-4);
  EXPECT_NEAR(p.y / (-r * std::cos(10 * DEG * n)), 1, 1e-4);
}

TEST(Domain, ScalesToAPicture) {
  // The domain is 24 by 16. A wider picture is filled from top to bottom, a taller one from side to
  // side.
  const struct {
    int cols, rows;
    float dx;
  } rows[] = {{25, 17, 1}, {640, 480, 24.0F / 639}, {201, 101, 0.16F}, {101, 201, 0.24F}};
  for (const auto& row : rows) {
    Domain domain = make("ps:90:-100");
    EXPECT_EQ(domain.scaleSize(row.cols, row.rows), 1);
    EXPECT_EQ(domain.getNx(), row.cols);
    EXPECT_EQ(domain.getNy(), row.rows);
    EXPECT_FLOAT_EQ(domain.getDx(), row.dx) << row.cols;
    EXPECT_NEAR(domain.getDy(), row.dx, row.cols < row.rows || row.cols == 640 ? 1 : 1e-6);
  }
  Domain domain = make("ps:90:-100");
  EXPECT_EQ(domain.scaleSize(0, 100), 0);
  EXPECT_EQ(domain.getNx(), 25);
  EXPECT_EQ(domain.scaleGrid(0), 0);
  EXPECT_EQ(domain.scaleGrid(std::nanf("")), 0);
  EXPECT_EQ(domain.scaleGrid(0.001F), 1);
  EXPECT_EQ(domain.getNx(), 2);
  EXPECT_FLOAT_EQ(domain.getDx(), 24);
  EXPECT_EQ(domain.scaleGrid(1e30F), 1);
}

TEST(Domain, ZoomKeepsTheProjection) {
  Domain domain = make("ps:90:-100");
  EarthPoint e(45, -110);
  Point p;
  domain.tran(e, p);
  EXPECT_EQ(domain.zoom(p, 2), 1);
  EXPECT_NEAR(domain.getCLat(), 45, 1e-4);
  EXPECT_NEAR(domain.getCLon(), -110, 1e-4);
  EXPECT_EQ(domain.getPLon(), -100);
  EXPECT_FLOAT_EQ(domain.getDx(), 0.5F);
  Point middle;
  domain.tran(4, middle);
  EXPECT_NEAR(middle.x, p.x, 1e-4);
  // Nothing is there, and nothing changes.
  Domain disc = make("or:40:-100");
  EXPECT_EQ(disc.zoom(Point(70, 0), 2), 0);
  EXPECT_EQ(disc.zoom(Point(0, 0), 0), 0);
  EXPECT_EQ(disc.getDx(), 1);
}

TEST(Domain, OffsetsInKilometres) {
  EarthPoint e;
  Domain::offsetLatLon(EarthPoint(60, 10), 90, 111.195F, e);
  EXPECT_NEAR(e.lat, 60, 1e-4);
  EXPECT_NEAR(e.lon, 12, 1e-4);
  Domain::offsetLatLon(EarthPoint(60, 10), 180, 111.195F, e);
  EXPECT_NEAR(e.lat, 59, 1e-4);
  Domain::offsetLatLon(EarthPoint(), 180, 100, e);
  EXPECT_FALSE(e.isSet());
  Domain domain = make("ps:90:-100");
  Point p;
  EarthPoint start(60, -100);
  domain.tran(start, p);
  Point q;
  // True at 60 north: 100 km are one unit.
  domain.offset(p, 0, 100, q);
  EXPECT_NEAR(q.y - p.y, 1, 0.01);
  EXPECT_FLOAT_EQ(make("ps:-90:0").getMapFactor(EarthPoint(-90, 0)), 0.933F);
  EXPECT_FLOAT_EQ(make("lc:40:0").getMapFactor(EarthPoint(-90, 0)), 1);
}

TEST(Domain, WrapsLinesAtTheSeam) {
  struct Row {
    const char* field;
    float x1, x2, y;
    int sign;
    double moved;
  };
  const double lamb = 2 * 80 * std::sin(3.14159265 * std::sin(25 * DEG)) /
                      std::cos(3.14159265 * std::sin(25 * DEG));
  const Row rows[] = {{"ll:0:0", 175, -175, 0, 1, 360},
                      {"ll:0:0", -175, 175, 0, -1, -360},
                      {"ll:0:0", 10, -70, 0, 0, 0},
                      {"ll:0:0", 10, -81, 0, 1, 360},
                      {"me:0:0", 195, -195, 0, 1, 400.31558},
                      {"ps:90:0", 195, -195, 0, 0, 0},
                      {"mo:0:0", 120, -120, 0, 1, 4 * 63.7122},
                      {"mo:0:0", 120, -120, 70, 0, 0},
                      {"lc:40:0:25:25", 100, -100, -80, 1, lamb},
                      {"lc:40:0:60:60", 100, -100, -80, 0, 0}};
  for (const Row& row : rows) {
    const Domain domain = make(row.field);
    Point p1(row.x1, row.y);
    Point p2(row.x2, row.y);
    EXPECT_EQ(domain.wrapLine(p1, p2), row.sign) << row.field;
    EXPECT_NEAR(p2.x - row.x2, row.moved, 0.01) << row.field;
    EXPECT_EQ(p1.x, row.x1);
    // The second drawing of the line puts the moved end back.
    EXPECT_EQ(domain.offsetLine(p1, p2, row.sign), row.sign == 0 ? 0 : 1);
    EXPECT_NEAR(p2.x, row.x2, 0.01);
    EXPECT_NEAR(p1.x - row.x1, -row.moved, 0.01);
  }
}

// A gap in a line stays a gap, and the line goes on behind it where it was.
TEST(Domain, WrapKeepsGaps) {
  const Domain domain = make("ll:0:0");
  Points pts;
  pts.add(170, 0);
  pts.add(-175, 0);
  pts.add(MISSING, MISSING);
  pts.add(-170, 0);
  EXPECT_EQ(domain.wrapLine(pts), 1);
  EXPECT_FLOAT_EQ(pts.getX(1), 185);
  EXPECT_FLOAT_EQ(pts.getX(2), MISSING);
  EXPECT_FLOAT_EQ(pts.getX(3), 190);
  EXPECT_EQ(domain.offsetLine(pts, 1), 1);
  EXPECT_FLOAT_EQ(pts.getX(0), -190);
  EXPECT_FLOAT_EQ(pts.getX(2), MISSING);
  EXPECT_FLOAT_EQ(pts.getX(3), -170);
  EXPECT_EQ(domain.offsetLine(pts, 0), 0);
  Points repaired;
  repaired.add(190, 0);
  EXPECT_EQ(domain.adjust(repaired), -1);
  EXPECT_FLOAT_EQ(repaired.getX(0), -170);
}

TEST(Domain, TextRoundTrips) {
  for (const char* text :
       {"ps,40,-95", "lc:40:-100:30:60,40,-100,60,40,1,1", "me:e:0:-100,40,-100,60,40,1,1",
        "sat:0:-75:421.64:1,0,-75,100,100,1,1", "ll,0,0,73,37,5,5", "xlogp,1,2,3,4,5,6"}) {
    Domain domain;
    ASSERT_EQ(DomainTool::decode(domain, text), 1);
    String written;
    EXPECT_EQ(domain.toString(written), 1);
    Domain strict;
    EXPECT_EQ(strict.set(written.get()), 1) << written.get();
    EXPECT_TRUE(Domain::compare(domain, strict)) << written.get();
    Domain full;
    EXPECT_EQ(DomainTool::decode(full, written.get()), 1) << written.get();
    EXPECT_TRUE(Domain::compare(domain, full)) << written.get();
  }
  Domain domain;
  DomainTool::decode(domain, "ps:60:-100,40,-95,25,17,1.2,1.2");
  String written(4);  // whatever the capacity is
  domain.toString(written);
  EXPECT_STREQ(written.get(),
               "pstereo:60.000000:-100.000000:::,40.000000,-95.000000,25,17,1.200000,1.200000");
}

TEST(Domain, StrictText) {
  const struct {
    const char* text;
    int result;
    int proj;
  } rows[] = {{"pstereo:60:-100,40,-95,25,17,1.2,1.2", 1, 1},
              {"merc:e:0:-100:::,40,-95,25,17,1,1", 1, 3},
              {"latlon", 1, 2},
              {"nothing", 1, -1},
              {"pstereo,40,-95", 0, Const::MISS},
              {"pstereo,40,-95,25,17,1.2", 0, Const::MISS},
              {",40,-95,25,17,1,1", 0, Const::MISS},
              {"", 0, Const::MISS},
              {nullptr, 0, Const::MISS}};
  for (const auto& row : rows) {
    Domain domain = make("ps:90:-100");
    EXPECT_EQ(domain.set(row.text), row.result) << (row.text == nullptr ? "null" : row.text);
    EXPECT_EQ(domain.getProj(), row.proj);
  }
}

}  // namespace
}  // namespace ZQV
