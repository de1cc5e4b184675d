// Contours, read back from the metafile in cells of the grid: where lines run, what bands cover.

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <map>

#include <gtest/gtest.h>

#include "ContPlot.h"
#include "EarthPoint.h"
#include "Grid.h"
#include "GridCont.h"
#include "GridPiece.h"
#include "MapFile.h"
#include "MapFileHeader.h"
#include "MetaTest.h"
#include "Plot.h"
#include "Zqv.h"

using namespace ZQV;

namespace {

constexpr float M = Const::FMISS;
constexpr float nan_value = std::numeric_limits<float>::quiet_NaN();
constexpr const char* own_domain = "ll:0:0,0,0,41,31,1,1";
/** A list whose class k, from 1 on, holds the values from 2 (k - 1) on and has the colour 10 + k.
 */
constexpr const char* even_fill = "0:#00000b,2:#00000c,4:#00000d,6:#00000e,8:#00000f,10:#000010";

using Polygon = std::vector<Record::Place>;
using Field = std::function<float(int, int)>;

Grid makeGrid(const Field& field, const char* domain_text = own_domain) {
  Domain domain;
  domain.set(domain_text);
  Grid grid(domain.getNx(), domain.getNy());
  grid.setDomain(domain);
  for (int j = 0; j < grid.getNy(); j++) {
    for (int i = 0; i < grid.getNx(); i++) grid.setValue(i, j, field(i, j));
  }
  return grid;
}

double area(const Polygon& p) {
  double sum = 0;
  for (size_t i = 1; i < p.size(); i++) sum += p[i - 1].x * p[i].y - p[i].x * p[i - 1].y;
  return std::abs(sum) / 2;
}

bool holds(const Polygon& p, double x, double y) {
  bool in = false;
  for (size_t i = 1; i < p.size(); i++) {
    const auto& a = p[i - 1];
    const auto& b = p[i];
    if ((a.y > y) != (b.y > y) && x < (b.x - a.x) * (y - a.y) / (b.y - a.y) + a.x) in = !in;
  }
  return in;
}

class ContTest : public MetaTest {
 protected:
  ContTest() : MetaTest(",sz=1x1,hfont") { Zqv::setMessageLevel(6); }
  /** Draws on a view with room for a field of the same size, and reads back. */
  int drawn(const char* view, const std::function<int(Plot&)>& draw) {
    Domain domain;
    domain.set(view);
    int result = 0;
    const std::vector<Record> records = MetaTest::drawn([&](Plot& plot) {
      plot.setDomain(domain);
      plot.drawRect(domain.getLimits());
      result = draw(plot);
      plot.drawLabels();
    });
    readBack(domain, records);
    return result;
  }
  int contour(const Grid& grid, const std::string& params, const char* view = own_domain) {
    Grid field = grid;
    cont.setParam(params.c_str());
    return drawn(view, [&](Plot& plot) { return cont.draw(plot, field); });
  }
  void readBack(const Domain& domain, std::vector<Record> records) {
    ASSERT_FALSE(records.empty());
    Record::Place ul = records[0].points[0];
    Record::Place lr = ul;
    for (const Record::Place& p : records[0].points) {
      ul = {std::min(ul.x, p.x), std::max(ul.y, p.y)};
      lr = {std::max(lr.x, p.x), std::min(lr.y, p.y)};
    }
    const auto cells = [&](Record::Place& p) {
      p.x = (p.x - ul.x) / (lr.x - ul.x) * (domain.getNx() - 1);
      p.y = (p.y - ul.y) / (lr.y - ul.y) * (domain.getNy() - 1);
    };
    fills.clear();
    lines.clear();
    for (size_t i = 1; i < records.size(); i++) {
      for (Record::Place& p : records[i].points) cells(p);
      if (records[i].kind == 'F') fills[records[i].fill_color].push_back(records[i].points);
      if (records[i].kind == 'L') lines.push_back(records[i]);
    }
    texts = readTexts(dir.read("m"));
    for (MetaText& t : texts) cells(t.at);
  }
  /** The text at a place, empty if there is none. */
  [[nodiscard]] std::string textAt(double x, double y) const {
    for (const MetaText& t : texts) {
      if (std::hypot(t.at.x - x, t.at.y - y) < 0.02) return t.text;
    }
    return "";
  }
  [[nodiscard]] double areaOf(int color) const {
    double sum = 0;
    if (const auto it = fills.find(color); it != fills.end()) {
      for (const Polygon& p : it->second) sum += area(p);
    }
    return sum;
  }
  [[nodiscard]] int coverage(double x, double y) const {
    int n = 0;
    for (const auto& [color, polygons] : fills) {
      for (const Polygon& p : polygons) n += holds(p, x, y) ? 1 : 0;
    }
    return n;
  }

  ContPlot cont;
  std::map<int, std::vector<Polygon>> fills;
  std::vector<Record> lines;
  std::vector<MetaText> texts;
};

float radius(int i, int j, float cx = 0) {
  return std::hypot(static_cast<float>(i - 20) / 15 - cx, static_cast<float>(j - 15) / 15);
}
float plane(int i, int j) {
  return 3 + 1.7F * static_cast<float>(i - 20) / 15 - 2.3F * static_cast<float>(j - 15) / 15;
}
float cone(int i, int j) {
  return 9.3F - 6.1F * radius(i, j);
}
float ring(int i, int j) {
  const float d = (radius(i, j) - 0.6F) / 0.3F;
  return 9.7F * std::exp(-d * d) + 0.35F * static_cast<float>(i - 20) / 15;
}
float holed(int i, int j) {
  return radius(i, j, 0.5F) < 0.2F || (i == 3 && j == 4) ? M : cone(i, j);
}

}  // namespace

// What another contourer makes of the same fields: tools/contour_reference.py.
TEST_F(ContTest, AreasAndLengthsAsAnotherContourerHasThem) {
  struct Row {
    Field field;
    double areas[5];
    double lengths[6];
  };
  const Row rows[] = {{plane,
                       {295.396, 467.967, 295.396, 70.620, 0.000},
                       {17.190, 39.134, 39.134, 17.190, 0.000, 0.000}},
                      {cone,
                       {247.139, 399.984, 326.724, 174.778, 31.450},
                       {19.141, 71.032, 81.858, 50.939, 19.963, 0.000}},
                      {ring,
                       {399.904, 162.856, 127.874, 131.514, 221.240},
                       {34.822, 113.062, 112.992, 113.010, 113.008, 0.000}},
                      {holed,
                       {243.139, 399.984, 310.211, 153.291, 31.450},
                       {19.141, 71.032, 81.858, 44.796, 19.963, 0.000}}};
  for (const Row& row : rows) {
    SCOPED_TRACE(&row - rows);
    cont.setColorFill(even_fill);
    ASSERT_EQ(contour(makeGrid(row.field), "lcf,coco=miss,lab=0:0"), 1);
    double lengths[6] = {};
    for (const Record& r : lines) {
      ASSERT_GE(r.line_color, 11);
      lengths[r.line_color - 11] +=
          std::hypot(r.points[1].x - r.points[0].x, r.points[1].y - r.points[0].y);
    }
    for (int k = 0; k < 6; k++) {
      // The tweak moves a line off a corner that lies on it, by less than a hundredth of a cell.
      EXPECT_NEAR(areaOf(k + 11), k < 5 ? row.areas[k] : 0, 0.05) << k;
      EXPECT_NEAR(lengths[k], row.lengths[k], 0.05) << k;
    }
  }
}

// One cell, its corners from the upper left: a saddle joins the crossings of TOP and RIGHT, and
// those of BOTTOM and LEFT, from the middle on; below it TOP and LEFT, RIGHT and BOTTOM.
TEST_F(ContTest, CellsAreDividedByTheRules) {
  struct Row {
    const char* what;
    std::array<float, 4> values;
    const char* fill;
    std::vector<std::string> polygons;  ///< colour and corners, in tenths
  };
  const Row rows[] = {
      {"WholeCell", {4, 4, 4, 4}, "0:#00000b,9:#00000c", {"11: 10,0 10,10 0,10 0,0 10,0"}},
      {"AboveALevel", {0, 10, 0, 10}, "4:#00000b", {"11: 4,10 4,0 10,0 10,10 4,10"}},
      {"BetweenTwo",
       {0, 10, 0, 10},
       "2:#00000b,6:#00000c",
       {"11: 6,0 6,10 2,10 2,0 6,0", "12: 6,10 6,0 10,0 10,10 6,10"}},
      {"SaddleInTheMiddle",
       {10, 0, 0, 10},
       "-5:#00000b,5:#00000c",
       {"11: 5,0 10,5 10,0 5,0", "11: 5,10 0,5 0,10 5,10", "12: 0,5 5,10 10,10 10,5 5,0 0,0 0,5"}},
      {"SaddleBelowTheMiddle",
       {10, 0, 0, 10},
       "-5:#00000b,4:#00000c",
       {"11: 6,0 0,6 0,10 4,10 10,4 10,0 6,0", "12: 0,6 6,0 0,0 0,6", "12: 4,10 10,4 10,10 4,10"}}};
  const char* cell = "ll:0:0,0,0,2,2,1,1";
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    cont.setColorFill(row.fill);
    const Grid grid = makeGrid(
        [&](int i, int j) { return row.values.at(j == 0 ? (i == 0 ? 0 : 1) : (i == 0 ? 2 : 3)); },
        cell);
    ASSERT_EQ(contour(grid, "lcf,lab=0:0", cell), 1);
    std::vector<std::string> found;
    for (const auto& [color, polygons] : fills) {
      for (const Polygon& p : polygons) {
        std::string text = std::to_string(color) + ":";
        for (const Record::Place& at : p) {
          text += " " + std::to_string(std::lround(10 * at.x)) + "," +
                  std::to_string(std::lround(10 * at.y));
        }
        found.push_back(text);
      }
    }
    EXPECT_EQ(found, row.polygons);
    if (row.values[1] == 0) {  // the saddles' lines go where their bands end
      ASSERT_EQ(lines.size(), 2U);
      const bool is_middle = row.what == rows[3].what;
      EXPECT_NEAR(lines[0].points[1].x, is_middle ? 1 : 0, 1e-5);
      EXPECT_NEAR(lines[1].points[0].y, is_middle ? 1 : .4, 1e-5);
    }
  }
}

TEST(GridBox, FindsCrossings) {
  struct Row {
    const char* what;
    std::array<float, 4> values;
    float tweak, level;
    int numside, equal;
    std::array<float, 4> side;
  };
  const Row rows[] = {
      {"Plain", {0, 1, 0, 1}, .01F, .25F, 2, 0, {.25F, -5, .25F, -5}},
      {"Saddle", {1, 0, 0, 1}, .01F, .5F, 4, 0, {.5F, .5F, .5F, .5F}},
      {"Above", {1, 0, 0, 1}, .01F, 2, 0, 1, {-2, -2, -2, -2}},
      {"Below", {1, 0, 0, 1}, .01F, -1, 0, -1, {-2, -2, -2, -2}},
      {"NotANumber", {1, 0, 0, 1}, .01F, nan_value, 0, -1, {-2, -2, -2, -2}},
      {"MissingCorner", {1, M, 0, 1}, .01F, .5F, 0, 0, {-2, -2, -2, -2}},
      {"InfiniteCorner", {1, HUGE_VALF, 0, 1}, .01F, .5F, 0, 0, {-2, -2, -2, -2}},
      {"CornerAtTheLevelIsBelow", {1, 2, 3, 4}, .5F, 2, 2, 0, {-3, .8F, -2, .5F}},
      {"ZerosAreMovedToo", {0, 0, 1, 1}, .25F, 0, 2, 0, {-5, .8F, -5, .8F}},
      {"TweakTooSmallToShow", {1, 2, 0, 2}, 1e-20F, 2, 0, 0, {-3, -5, -3, -3}},
      {"AllAtTheLevel", {0, 0, 0, 0}, 0, 0, 0, 0, {-4, -4, -4, -4}},
      {"OneSideOnTheLevel", {0, 0, 1, 1}, 0, 0, 2, 0, {-4, 1, -5, 1}},
      // The first side whose start is at the level, with the end that goes with the side.
      {"OneCornerOnTheLevel", {0, 1, 1, 1}, 0, 0, 2, 0, {0, -5, -5, 1}},
      {"TwoCornersOnTheLevel", {1, 0, 0, 2}, 0, 0, 2, 0, {1, 1, -1, -1}},
  };
  std::array<Point, 4> square{Point(0, 1), Point(1, 1), Point(0, 0), Point(1, 0)};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    GridBox box;
    box.setTweak(row.tweak);
    box.set(row.values, square, DomainVal::XY);
    EXPECT_EQ(box.setLevel(row.level), row.numside);
    EXPECT_EQ(box.getEqual(), row.equal);
    for (int s = 0; s < 4; s++)
      EXPECT_NEAR(box.getSide(s), row.side[static_cast<size_t>(s)], 1e-6) << s;
  }
  GridBox box;
  box.setTweak(.01F);
  box.set({1, 0, 0, 1}, square, DomainVal::XY);
  EXPECT_EQ(box.getVal(4), -1);
  EXPECT_EQ(box.getSide(-1), -1);
  EXPECT_EQ(box.getPoint(7).y, 1);
  // 5e-05 of the value, where no tweak is set.
  box.init();
  box.set({1, 2, 1, 2}, square, DomainVal::XY);
  EXPECT_EQ(box.setLevel(1), 2);
  EXPECT_NEAR(box.getVal(GridBox::UL), 1 - 5e-5, 1e-7);
  EXPECT_EQ(box.getMin(), 1);
}

TEST(GridBox, RaisesCellsAcrossTheSeam) {
  for (const auto& [view, period] :
       {std::pair("ll:0:0,0,0,361,181,1,1", 360.0F),
        std::pair("merc:0:0,0,0,401,201,1,1", 400.31558F),
        // 2 sqrt(R^2 - y^2), y = R sin T: half of what it repeats after
        std::pair("mo:0:0,0,0,401,201,1,1", 127.3765F),
        std::pair("ps:90:0,0,0,401,201,1,1", 0.0F)}) {
    Domain plane;
    plane.set(view);
    // Columns at 177 E, 179 E and 179 W.
    Grid grid = makeGrid([](int i, int) { return static_cast<float>(i); }, "ll,0,179,3,3,2,2");
    GridBox box;
    EXPECT_EQ(box.set(grid, plane, 0, 0, .5F), 2);
    EXPECT_FALSE(box.isSpan());
    EXPECT_EQ(box.set(grid, plane, 1, 0, 1.5F), 2);
    EXPECT_EQ(box.isSpan(), period != 0.0F) << view;
    EarthPoint e(2, -179);
    Point p;
    plane.tran(e, p);
    EXPECT_NEAR(box.getPoint(GridBox::UR).x, p.x + period, 1e-3);
    EXPECT_GE(box.getCrossPoint1(0).x, std::min(box.getPoint(0).x, box.getPoint(1).x));
  }
}

// Both halves of what crosses the date line are on the map.
TEST_F(ContTest, DrawsOnBothSidesOfTheDateLine) {
  const Grid grid = makeGrid([](int, int j) { return static_cast<float>(j); }, "ll,0,180,4,3,2,2");
  ASSERT_EQ(contour(grid, "lcf,int=10,lab=0:0", "ll:0:0,0,0,361,181,1,1"), 1);
  for (const double x : {0.2, 2.8, 357.2, 359.8}) EXPECT_EQ(coverage(x, 89.5), 1) << x;
  EXPECT_EQ(coverage(3.2, 89.5), 0);
  cont.init();
  ASSERT_EQ(contour(grid, "ln,int=10,base=.5,lab=0:0", "ll:0:0,0,0,361,181,1,1"), 1);
  double length = 0;
  for (const Record& r : lines) {
    length += std::abs(r.points[1].x - r.points[0].x);
    EXPECT_GE(std::min(r.points[0].x, r.points[1].x), -1e-3);
    EXPECT_LE(std::max(r.points[0].x, r.points[1].x), 360 + 1e-3);
  }
  EXPECT_NEAR(length, 6, 1e-2);
}

TEST_F(ContTest, LabelsAndMarksStandWhereTheyBelong) {
  // Level 4 runs down between columns 8 and 9, level 2 along between rows in the second field.
  const Grid east = makeGrid([](int i, int) { return (static_cast<float>(i) + .5F) / 2; });
  ASSERT_EQ(contour(east, "ln,int=2,lab=2:0:0:10,fm=%.1f"), 1);
  EXPECT_EQ(textAt(7.5, 10.5), "4.0");
  EXPECT_EQ(textAt(7.5, 20.5), "4.0");
  EXPECT_EQ(textAt(7.5, 15.5), "");
  EXPECT_EQ(textAt(3.5, 10.5), "") << "every second level";
  const Grid south = makeGrid([](int, int j) { return (static_cast<float>(j) + .5F) / 2; });
  ASSERT_EQ(contour(south, "fm="), 1);
  EXPECT_EQ(textAt(0, 7.5), "") << "no columns asked for";
  cont.setLabelSpace(Const::MISS, 0);  // a fifth of the grid: each 8th column
  ASSERT_EQ(contour(south, ""), 1);
  EXPECT_EQ(textAt(8.5, 7.5), "4");
  EXPECT_EQ(textAt(10.5, 7.5), "");

  // A peak, its twin of the same height too near, a pit beside one missing point and one beside
  // two.
  Grid hills = makeGrid([](int i, int j) { return static_cast<float>(i + 2 * j) / 100; });
  hills.setValue(10, 10, 9);
  hills.setValue(20, 10, 8);
  hills.setValue(22, 11, 8);
  hills.setValue(10, 20, -9);
  hills.setValue(11, 20, M);
  hills.setValue(30, 20, -8);
  hills.setValue(31, 20, M);
  hills.setValue(31, 21, nan_value);
  ASSERT_EQ(contour(hills, "ln,int=20,base=100,lab=0:2"), 1);
  EXPECT_EQ(textAt(10, 10), "H");
  EXPECT_EQ(textAt(20, 10), "");
  EXPECT_EQ(textAt(22, 11), "");
  EXPECT_EQ(textAt(10, 20), "L");
  EXPECT_EQ(textAt(30, 20), "");
  EXPECT_EQ(textAt(0, 0), "L") << "outside the grid there is nothing to compare with";
  constexpr double height = 30;
  EXPECT_EQ(textAt(10, 10 + height * (.02 / 2 + .015 * .75)), "9") << "under its mark";
  ASSERT_EQ(contour(hills, "lab=1"), 1);  // by digits: no labels, marks within 1
  EXPECT_EQ(textAt(20, 10), "H");
  ASSERT_EQ(contour(hills, "lab=0:0"), 1);
  EXPECT_TRUE(texts.empty());

  ASSERT_EQ(contour(hills, "value,lab=10:1"), 1);
  EXPECT_EQ(texts.size(), 5U * 4U);
  EXPECT_EQ(textAt(10, 10), "9");
  EXPECT_EQ(textAt(30, 20), "-8");
}

TEST_F(ContTest, ChoosesLevels) {
  const auto up = [](int i, int) { return static_cast<float>(i); };  // 0 to 40
  struct Row {
    const char* what;
    Field field;
    const char* params;
    int num;
    float first, last;
    bool warns;
  };
  const Row rows[] = {
      {"Interval", up, "int=15", 4, 0, 45, false},
      {"EndOnALevel", up, "int=10", 6, 0, 50, false},
      {"Base", up, "ci=15,cb=5", 5, -10, 50, false},
      // A top level that equals the highest value less the base gets one more: deliberate.
      {"EndLessTheBase", up, "int=10,base=-5", 7, -5, 55, false},
      {"EndOnALevelOfABase", up, "int=10,base=10", 5, 0, 40, false},
      {"FromTheColours", up, "cof=3-9", 7, 0, 42, false},  // 7 of them: (40 - 0) / 6, up to 7
      {"TooFine", up, "int=.001,cof=3-9", 7, 0, 42, true},
      {"Backward", up, "int=-15", 4, 0, 45, false},
      {"Constant", [](int, int) { return 5.0F; }, "int=1", 2, 5, 6, false},
      {"HalfInfinite", [](int i, int) { return i < 4   ? HUGE_VALF
                                               : i < 9 ? nan_value
                                                       : 1.0F; },
       "int=1", 2, 1, 2, false},
      {"WidestRange", [](int i, int) { return i < 9 ? -3e38F : 3e38F; }, "int=1", 0, 0, 0, true},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    cont.init();
    contour(makeGrid(row.field), std::string("ln,lab=0:0,") + row.params);
    EXPECT_EQ(err, row.warns ? "Contour interval too small, recomputing...\n" : "");
    EXPECT_LE(cont.getNumLevels(), ContPlot::most_levels);
    if (row.num == 0) continue;
    ASSERT_EQ(cont.getNumLevels(), row.num);
    EXPECT_EQ(cont.getLevel(0), row.first);
    EXPECT_EQ(cont.getLevel(row.num - 1), row.last);
  }
  cont.init();
  cont.setRange(12, 29);
  contour(makeGrid(up), "cf,int=5,lab=0:0");
  EXPECT_EQ(cont.getNumLevels(), 5);
  EXPECT_EQ(cont.getLevel(0), 10);
  EXPECT_EQ(coverage(9.9, 10.5), 0);
  EXPECT_EQ(coverage(10.1, 10.5), 1);
  EXPECT_EQ(contour(makeGrid([](int, int) { return M; }), "lcf"), 0);
  EXPECT_EQ(contour(makeGrid([](int, int) { return nan_value; }), "lcf"), 0);
  EXPECT_EQ(contour(Grid(), "lcf"), 0);
  EXPECT_TRUE(lines.empty() && fills.empty());
  EXPECT_EQ(contour(Grid(1, 1), "lcf"), 0);
}

TEST_F(ContTest, LinesTakeTheirAttributes) {
  const Grid grid = makeGrid([](int i, int) { return static_cast<float>(i) - 19.5F; });
  const auto styles = [&](const char* params) {
    cont.init();
    contour(grid, std::string("int=10,lab=0:0,") + params);
    std::string found;
    for (const Record& r : lines) {
      const std::string one =
          std::to_string(r.line_color) + "/" + std::to_string(r.line_style) + " ";
      if (found.find(one) == std::string::npos) found += one;
    }
    return found;
  };
  // White is what a page starts with, and isn't recorded.
  EXPECT_EQ(styles("ln"), "-1/1 ");
  EXPECT_EQ(styles("dln"), "-1/2 ");
  EXPECT_EQ(styles("ndln,co=#000009"), "9/2 9/1 ");
  EXPECT_EQ(styles("lcf"), "0/1 ");
  EXPECT_EQ(styles("ln,co=#000009:st=4"), "9/4 ");
  EXPECT_EQ(styles("ln,co=none"), "");
  EXPECT_EQ(styles("lcf,co=st=4"), "0/4 ");
  cont.init();
  cont.setColorFill("#000001:st=5,#000002,off,#000003,#000004");
  contour(grid, "ln,int=10,lab=0:0,co=off");
  ASSERT_EQ(lines.size(), 3U * 30U);
  EXPECT_EQ(lines[0].line_color, 2) << "-10, one level up from -20";
  EXPECT_EQ(lines[1].line_color, 3) << "0 is off";
  // Labels over fill have a colour of their own.
  Zqv::putResrc("color_clabel", "#000007");
  for (const bool filled : {true, false}) {
    cont.init();
    contour(grid, filled ? "lcf,int=10" : "ln,int=10");
    EXPECT_EQ(dir.read("m").find("TCLR 7\n") != std::string::npos, filled);
  }
}

TEST_F(ContTest, GridContDrawsBetweenMaps) {
  MapFile map;
  map.open(dir.at("a.map").c_str(), 1, MapFile::TEXT);
  MapFileHeader h;
  h.num = 3;
  h.minlat = h.maxlat = h.minlon = h.maxlon = 0;
  map.writeHeader(h);
  for (const float x : {-1.0F, 0.0F, 1.0F}) {
    EarthPoint e(0, x);
    map.writeData(e);
  }
  map.close();
  Zqv::putResrc("map_file", "a.map:#000007,+a.map:#000008,-a.map:#000009");
  Grid grid = makeGrid([](int i, int) { return static_cast<float>(i); });
  grid.setInfo("Field");
  const auto maps = [&](int flag, const char* params) {
    GridCont gcont;
    gcont.setMap(flag);
    gcont.setParam(params);
    EXPECT_EQ(drawn(own_domain, [&](Plot& plot) { return gcont.draw(plot, grid); }), 1);
    std::string found;
    for (const Record& r : lines) {
      found += r.points.size() == 3 ? std::to_string(r.line_color) : "-";
    }
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
  };
  EXPECT_EQ(maps(1, "cf,lab=0:0"), "7978");
  EXPECT_EQ(maps(1, "ln,lab=0:0"), "7-8");
  EXPECT_EQ(maps(1, "ln,map_fill,lab=0:0"), "79-78");
  EXPECT_EQ(maps(1, "lcf,map_line,lab=0:0"), "7-8");
  EXPECT_EQ(maps(0, "ln,lab=0:0,int=15"), "-8");
  std::vector<std::string> labels;
  for (const MetaText& t : texts) labels.push_back(t.text);
  EXPECT_EQ(labels, (std::vector<std::string>{"Field", "Int: 15 Lo: 0 Hi: 40"}));
  maps(0, "ln,lab=0:0,nolabel");
  EXPECT_TRUE(texts.empty());

  GridCont gcont;
  drawn(own_domain, [&](Plot& plot) { return gcont.draw(plot, grid); });
  testing::internal::CaptureStdout();
  gcont.callback("QueryLoc", "3.5,-10.25", nullptr);
  gcont.callback("KeyPress", "3.5,-10.25", nullptr);
  gcont.callback("QueryLoc", nullptr, nullptr);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "GridCont value [3.50,-10.25]: 9.750000");

  EXPECT_EQ(drawn(own_domain,
                  [&](Plot& plot) {
                    gcont.setFilename(dir.at("none.grb").c_str());
                    return gcont.draw(plot);
                  }),
            0);
  EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << err;
}

TEST(GridPiece, PutsTilesTogether) {
  Domain domain;
  domain.set("ll:0:0,40,-100,3,3,1,2");
  Grid tile(3, 3);
  tile.setDomain(domain);
  GridPiece piece;
  Grid whole;
  ASSERT_EQ(piece.set(whole, 3, 2, tile), 1);
  EXPECT_EQ(whole.getNx(), 7);
  EXPECT_EQ(whole.getNy(), 5);
  // The lower right corner stays.
  EXPECT_EQ(whole.getDomain().getLimits().xmax, domain.getLimits().xmax);
  EXPECT_EQ(whole.getDomain().getLimits().ymin, domain.getLimits().ymin);
  tile.setValue(0, 0, 1);
  tile.setValue(2, 2, 9);
  EXPECT_EQ(piece.add(whole, 2, 1, tile), 1);
  EXPECT_EQ(whole.getValue1(4, 2), 1);
  EXPECT_EQ(whole.getValue1(6, 4), 9);
  EXPECT_EQ(piece.add(whole, 3, 1, tile), 0);
  EXPECT_EQ(piece.add(whole, 0, -1, tile), 0);
  EXPECT_EQ(piece.add(whole, 0, 0, Grid(4, 3)), 0);
  EXPECT_EQ(piece.set(whole, 2000000000, 2000000000, tile), 0);
  domain.set("ps:90:-100,40,-100,3,3,1,1");
  tile.setDomain(domain);
  EXPECT_EQ(piece.set(whole, 1, 1, tile), 0);
}
