// The whole road: a generated product in, the metafile out, places and colours checked against the
// geometry of the radar worked out here on its own.

#include "Road.h"

#include <algorithm>
#include <cmath>
#include <map>

#include <gtest/gtest.h>

#include "Image.h"
#include "ImageFile.h"
#include "NidsMaker.h"
#include "RGB.h"
#include "Run.h"
#include "TempDir.h"

using namespace ZQV;

namespace {

constexpr double earth = 63.7122;  // 100 km
constexpr double lat = 35.333;
constexpr double lon = -97.278;
// A product's plane: polar stereographic, true at 60 degrees north, its y axis along the radar's
// meridian.
const double stereo = earth * (1 + std::sin(60 * rad));
const double map_factor = 1.866 / (1 + std::sin(lat * rad));
const double radar_y = -stereo * std::tan((90 - lat) / 2 * rad);

using Place = Record::Place;

/** The picture of a product of cells by cells, each cell_km wide, widened to 3:2, on the square
 * page of a metafile. */
struct OwnPage {
  explicit OwnPage(int cells, double cell_km, bool widened = true)
      : cell(map_factor * cell_km / 100), ny(cells), nx(widened ? cells * 3 / 2 + 1 : cells) {
    const double aspect = (nx - 1.0) / (ny - 1.0);
    const double high = 0.92;  // the strips for labels take four percent each
    height = aspect * high >= 1 ? 1 / aspect : high;
  }
  /** Place on the page of a place on the product's plane, from the radar. */
  [[nodiscard]] Place at(double x, double y) const {
    const double scale = height / ((ny - 1) * cell);
    return {0.5 + x * scale, 0.5 + y * scale};
  }
  /** Corner of a bin: azimuth in degrees, distance in bins. */
  [[nodiscard]] Place bin(double azimuth, double bins) const {
    return at(bins * cell * std::sin(azimuth * rad), bins * cell * std::cos(azimuth * rad));
  }

  double cell;
  int ny;
  int nx;
  double height = 0;
};

/** Earth position of a place on the product's plane, from the radar. */
Place earthOf(double x, double y) {
  const double py = radar_y + y;
  const double r = std::hypot(x, py);
  return {lon + std::atan2(x, -py) / rad, 90 - 2 * std::atan(r / stereo) / rad};
}

/** Runs products through the program. */
class RoadTest : public testing::Test {
 protected:
  /** @return the drawing records */
  std::vector<Record> draw(const NidsMaker& maker, const std::string& args = "") {
    dir.write("a.nids", maker.build());
    run = runScopeview(dir, "-in nids a.nids -de meta,a.meta " + args);
    EXPECT_EQ(run.status, 0);
    return readMeta(dir.read("a.meta"));
  }
  static std::vector<Record> bins(const std::vector<Record>& records, double bottom) {
    return dataFills(records, bottom);
  }
  static double bottomOf(const OwnPage& page) { return 0.5 - page.height / 2; }

  TempDir dir;
  ProgramRun run;
  std::map<std::string, int> color = radarColors();
};

NidsMaker radialProduct() {
  NidsMaker maker;
  std::vector<int> levels(230, 0);
  levels[0] = 1;
  levels[10] = levels[11] = 9;
  levels[229] = 15;
  std::vector<int> other(230, 0);
  other[100] = 4;
  maker.layers = {NidsMaker::radials({{0, 1, levels}, {90, 1, other}, {211.5, 1.1, levels}})};
  return maker;
}

constexpr double close_radial = 0.01;  // degrees added to a radial's width

}  // namespace

TEST_F(RoadTest, RadialBinsLieWhereAzimuthAndRangePutThem) {
  const OwnPage page(461, 1);
  const std::vector<Record> drawn = bins(draw(radialProduct()), bottomOf(page));
  ASSERT_EQ(drawn.size(), 9U);
  const struct {
    double az;
    double width;
    int bin;
    const char* color;
  } expected[] = {{0, 1, 0, "blue"},       {0, 1, 10, "red"},       {0, 1, 11, "red"},
                  {0, 1, 229, "white"},    {90, 1, 100, "lcyan"},   {211.5, 1.1, 0, "blue"},
                  {211.5, 1.1, 10, "red"}, {211.5, 1.1, 11, "red"}, {211.5, 1.1, 229, "white"}};
  for (size_t i = 0; i < drawn.size(); i++) {
    const auto& e = expected[i];
    const double az1 = e.az + e.width + close_radial;
    expectPlaces(drawn[i],
                 {page.bin(e.az, e.bin), page.bin(e.az, e.bin + 1), page.bin(az1, e.bin + 1),
                  page.bin(az1, e.bin), page.bin(e.az, e.bin)},
                 2e-6, "bin " + std::to_string(i));
    EXPECT_EQ(drawn[i].fill_color, color[e.color]) << i;
  }
}

TEST_F(RoadTest, DigitalBinsTakeTheColourOfTheirValue) {
  NidsMaker maker;
  maker.code = 94;
  maker.level_words = {-320, 5, 254};  // value = level / 2 - 32
  std::vector<int> levels(460, 0);
  levels[5] = 1;     // range folded
  levels[6] = 73;    // 4.5 dBZ
  levels[7] = 74;    // 5
  levels[8] = 133;   // 34.5
  levels[9] = 134;   // 35
  levels[10] = 255;  // 95.5
  maker.layers = {NidsMaker::digital({{45, 1, levels}})};
  const OwnPage page(921, 1);
  const std::vector<Record> drawn = bins(draw(maker), bottomOf(page));
  ASSERT_EQ(drawn.size(), 4U);
  const char* expected[] = {"blue", "lgreen", "brown", "white"};
  for (int i = 0; i < 4; i++) {
    const Record& r = drawn[static_cast<size_t>(i)];
    EXPECT_EQ(r.fill_color, color[expected[i]]) << i;
    const Place near = page.bin(45, 7 + i);
    EXPECT_NEAR(r.points[0].x, near.x, 2e-6);
    EXPECT_NEAR(r.points[0].y, near.y, 2e-6);
  }
}

TEST_F(RoadTest, RasterCellsCountFromTheUpperLeftCorner) {
  NidsMaker maker;
  maker.code = 41;
  NidsMaker::Rows rows(116, std::vector<int>(116, 0));
  rows[0][0] = 3;
  rows[57][58] = 5;
  rows[115][115] = 7;
  maker.layers = {NidsMaker::raster(rows)};
  const OwnPage page(117, 4);
  const std::vector<Record> drawn = bins(draw(maker), bottomOf(page));
  ASSERT_EQ(drawn.size(), 3U);
  const int cells[][3] = {{0, 0, 3}, {57, 58, 5}, {115, 115, 7}};
  const char* names[] = {"cyan", "green", "brown"};
  for (size_t i = 0; i < 3; i++) {
    // The image has 116 cells on 115 spacings: its corner lies 57.5 cells from the radar.
    const double x = (cells[i][1] - 57.5) * page.cell;
    const double y = (57.5 - cells[i][0]) * page.cell;
    expectPlaces(drawn[i],
                 {page.at(x, y), page.at(x + page.cell, y), page.at(x + page.cell, y - page.cell),
                  page.at(x, y - page.cell), page.at(x, y)},
                 3e-6, "cell " + std::to_string(i));
    EXPECT_EQ(drawn[i].fill_color, color[names[i]]) << i;
  }
}

TEST_F(RoadTest, PrecipitationArrayIsLogarithmic) {
  NidsMaker maker;
  maker.code = 81;
  maker.level_words = {-6000, 125, 254};  // dBA from -6 in steps of an eighth
  NidsMaker::Rows rows(131, std::vector<int>(131, 255));
  rows[65][65] = 0;    // 10^-0.6 / 100 in: below the first class
  rows[65][66] = 128;  // 10 dBA = 0.1 in, on the boundary of "lblue"
  rows[65][67] = 240;  // 24 dBA = 2.51 in
  maker.layers = {NidsMaker::array(rows)};
  const std::vector<Record> records = draw(maker);
  std::vector<int> fills;
  for (const Record& r : records) {
    if (r.kind == 'F' && r.points[0].y > 0.2) {
      fills.push_back(r.fill_color);
    }
  }
  ASSERT_EQ(fills.size(), 2U);
  EXPECT_TRUE(fills[0] == color["lblue"] || fills[0] == color["blue"]);
  EXPECT_EQ(fills[1], color["magenta"]);
}

TEST_F(RoadTest, ReprojectedCornersGoThroughTheEarth) {
  const struct {
    const char* domain;
    Place (*expected)(const Place&);
    double tolerance;
  } rows[] = {// A square of 8 degrees by 6 on the page, 0.92 high: 8 degrees take 1, 6 take 0.75.
              {"ll,35,-97,81,61,.1,.1",
               [](const Place& e) {
                 return Place{0.5 + (e.x + 97) / 8, 0.5 + (e.y - 35) / 8};
               },
               4e-6},
              {"or:35:-97,35,-97,81,61,.1,.1",
               [](const Place& e) {
                 const double d = (e.x + 97) * rad;
                 const double x = earth * std::cos(e.y * rad) * std::sin(d);
                 const double y = earth * (std::cos(35 * rad) * std::sin(e.y * rad) -
                                           std::sin(35 * rad) * std::cos(e.y * rad) * std::cos(d));
                 return Place{0.5 + x / 8, 0.5 + y / 8};
               },
               4e-6}};
  const double cell = map_factor / 100;
  for (const auto& row : rows) {
    const std::vector<Record> records = draw(radialProduct(), std::string("-pd ") + row.domain);
    const std::vector<Record> drawn = bins(records, 0.126);
    ASSERT_EQ(drawn.size(), 9U) << row.domain;
    const auto corner = [&](double az, double bins) {
      return row.expected(
          earthOf(bins * cell * std::sin(az * rad), bins * cell * std::cos(az * rad)));
    };
    const double az1 = 91 + close_radial;
    expectPlaces(
        drawn[4],
        {corner(90, 100), corner(90, 101), corner(az1, 101), corner(az1, 100), corner(90, 100)},
        row.tolerance, row.domain);
    const double az2 = 211.5 + 1.1 + close_radial;
    expectPlaces(drawn[8],
                 {corner(211.5, 229), corner(211.5, 230), corner(az2, 230), corner(az2, 229),
                  corner(211.5, 229)},
                 row.tolerance, row.domain);
  }
}

TEST_F(RoadTest, ProfileOfVectorsBarbsAndText) {
  NidsMaker maker;
  maker.code = 48;
  maker.level_words = {0, 4, 8, 12, 16};
  maker.layers = {NidsMaker::vectors(0, {{10, 20, 110, 20}}) +
                  NidsMaker::winds({{1, 100, 200, 90, 50}, {9, 100, 300, 0, 10}}) +
                  NidsMaker::text(0, 50, 400, "ND")};
  const std::vector<Record> records = draw(maker);
  // 512 pixels in the square of 0.92, x from the left and y down from the top, about pixel 255,
  // which is half a pixel off the middle: deliberate.
  const auto place = [](double x, double y) {
    const double scale = 0.92 / 511;
    return Place{0.04 + (x + 0.5) * scale, 0.96 - (y + 0.5) * scale};
  };
  EXPECT_EQ(countLines(records, place(10, 20), place(110, 20), color["red"]), 1) << "the grid line";
  // A wind from the east has its staff to the right, 20 pixels long; level 1 is 4 kt, the second
  // class.
  EXPECT_EQ(countLines(records, place(100, 200), place(120, 200), color["lcyan"]), 1)
      << "the staff";
  const auto pennant = std::find_if(records.begin(), records.end(), [](const Record& r) {
    return r.kind == 'F' && r.points.size() == 4;
  });
  ASSERT_NE(pennant, records.end());
  EXPECT_NEAR(pennant->points[0].x, place(120, 200).x, 1e-5);
  EXPECT_NEAR(pennant->points[1].y, place(120, 210).y, 1e-5)
      << "pennants point to the right of the flow";
  EXPECT_EQ(countLines(records, place(100, 300), place(100, 280), color["lblue"]), 1)
      << "a level out of range counts as 0";
}

TEST_F(RoadTest, BlankingAroundTheRadar) {
  NidsMaker maker;
  std::vector<int> ones(230, 5);  // 20 dBZ, one run of 15 after the other
  maker.layers = {NidsMaker::radials({{0, 1, ones}})};
  const double bottom = bottomOf(OwnPage(461, 1));
  const auto count = [&](const std::string& args) {
    return bins(draw(maker, args), bottom).size();
  };
  EXPECT_EQ(count(""), 230U);
  // Runs of 15: the run that the radius cuts stays blank to its end, deliberately.
  EXPECT_EQ(count("-pa clutter"), 200U);
  EXPECT_EQ(count("-pa clutter=31"), 185U);
  EXPECT_EQ(count("-pa clutter=30,noclutter"), 230U);
  // 40 - bin * 40 / 80 falls below 20 behind bin 40, at the end of whose run the rest begins.
  EXPECT_EQ(count("-pa ramp=40:80"), 185U);
  EXPECT_EQ(count("-pa data"), 0U);
  EXPECT_EQ(count("-dr=-plot"), 0U);
}

TEST_F(RoadTest, UserFillsTakeOverTheColours) {
  NidsMaker maker;
  maker.layers = {NidsMaker::radials({{0, 1, {2, 2, 9, 9, 9}}})};
  const double bottom = bottomOf(OwnPage(11, 1));
  const auto fills = [&](const std::string& args) {
    std::vector<int> list;
    for (const Record& r : bins(draw(maker, args), bottom)) {
      list.push_back(r.fill_color);
    }
    return list;
  };
  using Fills = std::vector<int>;
  const int red = color["red"];
  const int green = color["green"];
  EXPECT_EQ(fills("-cof 30:red"), (Fills{red, red, red})) << "values of its own";
  EXPECT_EQ(fills("-pa cof=0:green"), Fills(5, green));
  EXPECT_EQ(fills("-cof off,off,green,red"), (Fills{green, green, red, red, red}))
      << "the product's levels where it has none";
  // The renderer tells the key by two characters, so that any "co..." is a fill: deliberate.
  EXPECT_EQ(fills("-pa cola=0:red"), Fills(5, red));
}

TEST_F(RoadTest, RasterBlankingCountsKilometres) {
  NidsMaker maker;
  maker.code = 41;
  maker.layers = {NidsMaker::raster(NidsMaker::Rows(116, std::vector<int>(116, 5)))};
  const OwnPage page(117, 4);
  const size_t all = bins(draw(maker), bottomOf(page)).size();
  EXPECT_EQ(all, 116U * 116U);
  const size_t left = bins(draw(maker, "-pa clutter=50"), bottomOf(page)).size();
  // A disc of 50 km of the plane in cells of 4 km: some 490 / map factor squared, and the rest of
  // each run.
  EXPECT_LT(left, all - 200);
  EXPECT_GT(left, all - 1200);
}

TEST_F(RoadTest, SiteMarkAndRings) {
  const OwnPage page(461, 1);
  const std::vector<Record> records = draw(radialProduct(), "-pa site,dist=100:0:200 -cod yellow");
  std::vector<Record> circles;
  std::copy_if(records.begin(), records.end(), std::back_inserter(circles),
               [](const Record& r) { return r.kind == 'L' && r.points.size() == 73; });
  ASSERT_EQ(circles.size(), 2U);
  const double deg = 100 / 111.195;  // 100 km north of the radar
  const double y = -stereo * std::tan((90 - lat - deg) / 2 * rad) - radar_y;
  const Place north = page.at(0, y);
  EXPECT_NEAR(circles[0].points[0].x, north.x, 3e-6);
  EXPECT_NEAR(circles[0].points[0].y, north.y, 3e-6);
  EXPECT_EQ(circles[0].line_color, color["yellow"]);
  EXPECT_EQ(countStrokes(records, {0.5, 0.5}, 0.03 * page.height), 2) << "the site's cross";
}

TEST_F(RoadTest, MapsLieUnderAndOverTheData) {
  // A line of three points along the radar's parallel, for each of the three places of a map.
  dir.write("a.map", "3 0 0 0 0 1\n35.333 -98.0 35.333 -97.278 35.333 -97.0\n");
  const OwnPage page(460, 1);
  const auto sequence = [&](const std::string& args) {
    std::string kinds;
    for (const Record& r : draw(radialProduct(), args)) {
      const bool is_bin = !bins({r}, bottomOf(page)).empty();
      if (is_bin && (kinds.empty() || kinds.back() != 'b')) {
        kinds += 'b';
      } else if (r.kind == 'L' && r.points.size() == 3 && std::fabs(r.points[1].x - 0.5) < 2e-3 &&
                 std::fabs(r.points[1].y - 0.5) < 2e-3) {
        kinds += 'm';
      }
    }
    return kinds;
  };
  EXPECT_EQ(sequence("-mf ./a.map"), "bm");
  EXPECT_EQ(sequence("-mf +./a.map,-./a.map"), "mbm");
  EXPECT_EQ(sequence("-mf ./a.map,./a.map,-./a.map,+./a.map"), "mbmmm");
  EXPECT_EQ(sequence("-mf ./a.map -va map"), "b") << "the map is one of the variables";
  EXPECT_EQ(sequence("-mf ./a.map -dr plot"), "b");
}

TEST_F(RoadTest, StandardInputAndPipesGiveTheSamePicture) {
  const size_t drawn = draw(radialProduct()).size();
  runScopeview(dir, "-in nids -de meta,b.meta - < a.nids");
  EXPECT_EQ(readMeta(dir.read("b.meta")).size(), drawn);
  runScopeview(dir, "-in nids -de meta,c.meta '|cat a.nids'");
  EXPECT_EQ(readMeta(dir.read("c.meta")).size(), drawn);
  run = runScopeview(dir, "-in nids none.nids -de meta,none.meta");
  EXPECT_EQ(run.err, "NidsPlot: Unable to open file: none.nids\n");
}

TEST_F(RoadTest, ImageFilesNeedNoDisplay) {
  const std::string file = dir.write("a.nids", radialProduct().build());
  const std::string none = "DISPLAY=:9999";
  const char* off_screen =
      "XWindow: unable to connect to display\nPlot: no display, drawing off screen\n";
  run = runScopeview(dir, "-in nids a.nids -ou png:a.png -ge 300x200", none);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, off_screen);
  EXPECT_NE(run.out.find("Created PNG file: a.png\n"), std::string::npos);
  run = runScopeview(dir, "-in nids a.nids -ou b.png -ge 300x200 -de raster", none);
  EXPECT_EQ(run.err, "") << "nobody looks for a display";
  // Behind the chunks with the time.
  const std::string png = dir.read("a.png");
  EXPECT_EQ(dir.read("b.png").substr(png.find("IDAT")), png.substr(png.find("IDAT")));
  EXPECT_GT(png.size(), 1000U);
  EXPECT_EQ(png.substr(16, 8), std::string("\0\0\x01\x2c\0\0\0\xc8", 8));
  run = runScopeview(dir, "-in nids a.nids -ou c.gif -de raster -pa full", none);
  EXPECT_NE(dir.read("c.gif").find("pd="), std::string::npos) << "a full picture says where it is";
  // A window stays a window, and a file device one that writes its file.
  run = runScopeview(dir, "-in nids a.nids", none);
  EXPECT_EQ(run.err, "XWindow: unable to connect to display\n");
  EXPECT_EQ(run.status, 0);
  run = runScopeview(dir, "-in nids a.nids -ou d.png -de rasterx", none);
  EXPECT_EQ(run.err, "XWindow: unable to connect to display\n") << "another word is the display";
  EXPECT_EQ(dir.read("d.png"), "");
}

TEST_F(RoadTest, APictureLiesOnTheMapWhereItWasTaken) {
  NidsMaker maker;
  std::vector<NidsMaker::Radial> list(360, {0.0, 1.0, std::vector<int>(40, 6)});
  for (size_t i = 0; i < list.size(); i++) list[i].ang0 = static_cast<double>(i);
  maker.layers = {NidsMaker::radials(list)};
  dir.write("a.nids", maker.build());
  const auto picture = [&](const std::string& args, const char* name) {
    run = runScopeview(
        dir, "-in nids a.nids -de raster -pa full,nobord -ge 300x200 " + args + " -ou gif:" + name);
    Image image;
    EXPECT_GT(ImageFile().read(dir.at(name).c_str(), image), 0) << run.err;
    return image;
  };
  const Image taken = picture("-dr plot", "a.gif");
  const Image laid = picture("-dr grid -mf a.gif", "b.gif");
  const Image elsewhere = picture("-dr grid -mf a.gif -pd latlon,35.333,-99,61,41,.1,.1", "c.gif");
  int echo = 0;
  int same = 0;
  int west = 0;
  int east = 0;
  RGB a;
  RGB b;
  // The colour bar of a full page is a line along its lower edge.
  for (int y = 0; y < taken.getHeight() - 3; y++) {
    for (int x = 0; x < taken.getWidth(); x++) {
      taken.getRGB(x, y, a);
      laid.getRGB(x, y, b);
      echo += a.isBlack() ? 0 : 1;
      same += !a.isBlack() && a.red == b.red && a.grn == b.grn && a.blu == b.blu ? 1 : 0;
      elsewhere.getRGB(x, y, b);
      (x < taken.getWidth() / 2 ? west : east) += b.isBlack() ? 0 : 1;
    }
  }
  EXPECT_GT(echo, 50);
  EXPECT_GE(same, echo - 5);
  EXPECT_EQ(west, 0) << "the radar stands east of this map's middle";
  EXPECT_GT(east, 500);
  run = runScopeview(dir, "-in nids a.nids -de raster -ou gif:d.gif -mf none.gif,if:none.gif");
  EXPECT_EQ(run.err, "Map image not found: none.gif\n") << "once, and not for one of the page";
}

TEST_F(RoadTest, HelpListsEveryOptionAndEnds) {
  const ProgramRun help = runScopeview(dir, "-h");
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.out.substr(0, help.out.find("Keyed")),
            "scopeview: This program displays NIDS radar data\n"
            "scopeview syntax (version:6.65-LINUX-X11)\n   scopeview [options...]\n");
  EXPECT_NE(help.out.find("\n -h           Print help\n -it          Run in interactive mode\n"),
            std::string::npos);
  EXPECT_NE(help.out.find("Positional options...\n filenames... Filenames\n"), std::string::npos);
  EXPECT_EQ(runScopeview(dir, "-h -me none").out, "");
  EXPECT_EQ(runScopeview(dir, "-it", "").status, 0);
}

TEST_F(RoadTest, StormsStandAtTheirAzimuthAndRange) {
  struct Storm {
    const char* id;
    int az, nm;
    const char* tvs;
    const char* meso;
    int posh, poh;
    int dir, spd;  // no movement if the speed is 0
  };
  const std::vector<Storm> storms = {
      {"A0", 0, 10, "NONE", "NONE", 0, 0, 0, 0},    {"B1", 30, 40, "NONE", "NONE", 0, 0, 0, 0},
      {"C2", 60, 70, "NONE", "NONE", 0, 40, 0, 0},  {"D3", 90, 100, "NONE", "NONE", 0, 0, 0, 0},
      {"E4", 120, 5, "NONE", "NONE", 40, 49, 0, 0}, {"F5", 145, 55, "NONE", "NONE", 0, 0, 0, 0},
      {"G6", 181, 62, "NONE", "NONE", 0, 0, 0, 0},  {"H7", 200, 33, "NONE", "NONE", 0, 0, 0, 0},
      {"I8", 240, 81, "NONE", "NONE", 0, 0, 0, 0},  {"J9", 270, 110, "NONE", "NONE", 0, 0, 0, 0},
      {"K1", 300, 20, "NONE", "4", 0, 74, 225, 40}, {"L2", 330, 90, "TVS", "5", 80, 75, 180, 20},
      {"M3", 359, 1, "NONE", "NONE", 0, 0, 90, 30}};
  NidsMaker maker;
  maker.code = 58;
  // Packets of a kind that nobody knows, so that only the offset leads to the pages.
  maker.layers = {NidsMaker::u2(2) + NidsMaker::u2(6) + NidsMaker::u2(10) + NidsMaker::u2(20) +
                  "\"#"};
  for (size_t i = 0; i < storms.size();) {
    std::string page = NidsMaker::text(
        0, 0, 1, " STM ID  AZ/RAN TVS  MDA  POSH/POH/MX SIZE VIL DBZM  HT  TOP  FCST MVMT ");
    for (int row = 0; row < 4 && i < storms.size(); row++, i++) {
      const Storm& s = storms[i];
      char line[100];
      std::snprintf(line, sizeof line,
                    "    %s  %3d/%3d %-4s %4s  %3d/%3d/ 1.00    %2d  50 10.0  20.0  ", s.id, s.az,
                    s.nm, s.tvs, s.meso, s.posh, s.poh, 10 + row);
      std::string text = line;
      std::snprintf(line, sizeof line, s.spd > 0 ? "%3d/%3d  " : "  NEW    ", s.dir, s.spd);
      page += NidsMaker::text(0, 0, 11 + 10 * row, text + line);
    }
    maker.pages.push_back(page);
  }
  const OwnPage page(461, 1);
  const auto plane_of = [&](const Storm& s) {  // from the radar
    const double north = s.nm * 1.852 * std::cos(s.az * rad) / 111.195;
    const double east = s.nm * 1.852 * std::sin(s.az * rad) / 111.195 / std::cos(lat * rad);
    const double r = stereo * std::tan((90 - lat - north) / 2 * rad);
    return Place{r * std::sin(east * rad), -r * std::cos(east * rad) - radar_y};
  };
  const auto place_of = [&](const Storm& s) { return page.at(plane_of(s).x, plane_of(s).y); };
  const auto inside = [&](const Place& p) {
    return p.y > bottomOf(page) + 1e-4 && p.y < 1 - bottomOf(page) - 1e-4;
  };

  // A cross for a quiet storm: two strokes each, 0.018 of the picture's height.
  size_t crosses = 0;
  const std::vector<Record> records = draw(maker, "-va cstat");
  for (const Storm& s : storms) {
    const Place p = place_of(s);
    const bool quiet = s.posh < 50 && s.poh < 50 && s.meso[0] == 'N' && s.tvs[0] == 'N';
    EXPECT_EQ(countStrokes(records, p, 0.018 * page.height), quiet ? 2 : 0) << s.id;
    crosses += quiet ? 1 : 0;
    // Triangle, circle and triangle on its head, each closed.
    const auto shapes = [&](const char* name) {
      return std::count_if(records.begin(), records.end(), [&](const Record& r) {
        return r.kind == 'L' && (r.points.size() == 4 || r.points.size() == 13) &&
               r.fill_color == color[name] &&
               std::all_of(r.points.begin(), r.points.end(), [&](const Place& q) {
                 return std::hypot(q.x - p.x, q.y - p.y) < 0.013 * page.height;
               });
      });
    };
    EXPECT_EQ(shapes("lgreen"), s.posh >= 50 ? 1 : 0) << s.id;
    EXPECT_EQ(shapes("green"), s.posh < 50 && s.poh >= 50 ? 1 : 0) << s.id;
    EXPECT_EQ(shapes("yellow"), s.meso[0] != 'N' ? 1 : 0) << s.id;
    EXPECT_EQ(shapes("red"), s.tvs[0] != 'N' ? 1 : 0) << s.id;
  }
  EXPECT_EQ(crosses, 11U);

  // Tracks: two hours of movement along the turned meridian of the storm, drawn with the map's
  // factor at the radar. Three strokes across and a head of two.
  std::vector<Record> lines;
  for (const Record& r : draw(maker, "-va track -mf none")) {
    if (r.kind == 'L' && r.points.size() == 2 && inside(r.points[0])) {
      lines.push_back(r);
    }
  }
  ASSERT_EQ(lines.size(), 3U * 6U) << "only of storms that move";
  size_t at = 0;
  for (const Storm& s : storms) {
    if (s.spd == 0) {
      continue;
    }
    const Place p = plane_of(s);
    const double turned = std::atan2(p.x, -(p.y + radar_y)) / rad;
    const double length = s.spd * 1.852 * map_factor * 2 / 100;
    const double bearing = (s.dir - turned + 180) * rad;
    const Place end = page.at(p.x + length * std::sin(bearing), p.y + length * std::cos(bearing));
    EXPECT_NEAR(lines[at].points[0].x, place_of(s).x, 3e-6) << s.id;
    EXPECT_NEAR(lines[at].points[0].y, place_of(s).y, 3e-6) << s.id;
    EXPECT_NEAR(lines[at].points[1].x, end.x, 5e-6) << s.id;
    EXPECT_NEAR(lines[at].points[1].y, end.y, 5e-6) << s.id;
    at += 6;
  }

  // Values as the device's text, with units that are known and units that aren't.
  const auto texts = [&](const std::string& args) {
    draw(maker, args);
    std::vector<std::string> list;
    for (const MetaText& t : readTexts(dir.read("a.meta"))) list.push_back(t.text);
    return list;
  };
  using Texts = std::vector<std::string>;
  const auto first = [&](const std::string& variable) {
    const Texts all = texts("-va '\"" + variable + ":fm=fo=#dev,fm=%.1f\"'");
    return all.empty() ? std::to_string(0) : all[0] + " of " + std::to_string(all.size());
  };
  EXPECT_EQ(texts("-va '\"cid:fm=fo=#dev\"'")[12], "M3");
  EXPECT_EQ(first("hsize:un=cm"), "2.5 of 13");
  EXPECT_EQ(first("hsize:un=stone"), "1.0 of 13") << "no such unit: the value stays";
  EXPECT_EQ(first("ctop:un=km"), "0.6 of 13") << "20 hundreds of feet";
  EXPECT_EQ(first("cspd:un=km/h"), "74.1 of 3");
  EXPECT_EQ(first("cdir"), "225.0 of 3");
  EXPECT_EQ(first("meso5"), "5.0 of 1");
  EXPECT_EQ(first("tvs"), "1.0 of 1");
  EXPECT_EQ(first("poh"), "40.0 of 4") << "only where it is above 0";
  EXPECT_EQ(first("nothing"), "0");
  EXPECT_EQ(texts("-va '\"poh:fm=text,fo=#dev\"'"), (Texts{"", "", "X", "*"}));
  EXPECT_EQ(first("vil"), "10.0 of 13");
  EXPECT_TRUE(texts("-va '\"cid:fm=fo=#dev\"' -pa plot").empty());
}

TEST_F(RoadTest, AStormAmongTheLinesOfItsTable) {
  const auto storm = [](int row, const std::string& place, const std::string& movement) {
    return NidsMaker::text(
        0, 0, row,
        "    A0  " + place + " NONE NONE    0/  0/ 1.00    10  50 10.0  20.0  " + movement);
  };
  NidsMaker maker;
  maker.code = 58;
  maker.layers = {NidsMaker::text(0, 0, 0, " ")};
  maker.pages = {NidsMaker::text(0, 0, 1, " STM ID  AZ/RAN TVS  MDA  POSH/POH/MX SIZE VIL") +
                 NidsMaker::vectors(2, {{10, 5, 90, 5}}) + storm(11, "  0/  0", "  0/ 40") +
                 NidsMaker::winds({{0, 20, 30, 90, 10}}) +
                 NidsMaker::vectors(2, {{10, 45, 90, 45}}) + storm(21, " 90/ 50", "  NEW  ")};
  const OwnPage page(461, 1);
  const double high = page.height;  // the storm at no distance stands in the middle
  const auto strokes = [&](const std::string& args) { return draw(maker, "-mf none " + args); };
  const auto staff = [&](double length) { return Place{0.5, 0.5 + length * high}; };
  /** Full barbs of a wind from the north, every 0.12 of the staff of 0.05. */
  const auto barbs = [&](const std::vector<Record>& list) {
    int n = 0;
    while (countLines(list, staff(0.05 - 0.006 * n),
                      {0.5 + 0.025 * high, 0.5 + (0.056 - 0.006 * n) * high}) == 1) {
      n++;
    }
    return n;
  };

  // The composite: barb without a circle, identifier and top above it, in the data's colour.
  const std::vector<Record> comp = strokes("-va comp -cod yellow:fo=#dev");
  EXPECT_EQ(countLines(comp, {0.5, 0.5}, staff(0.05)), 1);
  EXPECT_EQ(barbs(comp), 4);
  std::string around;  // texts at the upper left and right
  for (const MetaText& t : readTexts(dir.read("a.meta"))) {
    if (std::fabs(std::fabs(t.at.x - 0.5) - 0.012 * high) < 1e-5 &&
        std::fabs(t.at.y - 0.5 - 0.02 * high) < 1e-5) {
      around += (t.at.x < 0.5 ? "<" : ">") + t.text;
    }
  }
  EXPECT_EQ(around, "<A0>20");
  EXPECT_EQ(barbs(strokes("-va cmvmt:un=m/s")), 2) << "40 knots are 20.6 m/s";

  // Storms and table in one picture: neither takes over the other's lines, plane or shadows.
  const auto at = [&](double x, double y) {
    return Place{0.5 + x / (std::round(512 / high) - 1), 0.5 - y * high / 511};
  };
  const std::vector<Record> all =
      strokes("-va 'cstat,\"cmvmt:fm=wbarb,sh=2\"' -pa table -cog red:st=dsh");
  EXPECT_EQ(countLines(all, {0.5, 0.5}, staff(0.05)), 2) << "over its shadow, and not dashed";
  EXPECT_EQ(countLines(all, at(10, 5), at(90, 5), -1, 2), 1);
  EXPECT_EQ(countLines(all, at(10, 45), at(90, 45), -1, 2), 1) << "behind the first storm";
  EXPECT_EQ(countLines(all, at(20, 30), at(40, 30)), 1);

  // Labels: the table's unit where none is asked for, and none for a variable of a layer.
  strokes("-va ctop:un=,vil:la=1 -cot white:fo=#dev");
  EXPECT_NE(dir.read("a.meta").find(" Cell top [100ft]\n"), std::string::npos);
  EXPECT_EQ(dir.read("a.meta").find("integrated"), std::string::npos);
}

TEST_F(RoadTest, PagesOfTablesGoDownFromTheMiddle) {
  NidsMaker maker;
  maker.code = 37;
  maker.layers = {NidsMaker::raster({{0, 0}, {0, 0}})};
  maker.pages = {NidsMaker::text(0, 0, 1, "FIRST \x1b[2J") + NidsMaker::text(0, 200, 100, "II") +
                     NidsMaker::vectors(2, {{10, 5, 90, 5}}),
                 NidsMaker::winds({{0, 20, 30, 90, 50}}) + NidsMaker::vectors({{10, 5, 10, 45}})};
  // The picture of 5 by 3 points is 2:1, the page of tables 1024 by 512 pixels about its middle.
  const auto at = [&](double x, double y) { return Place{0.5 + x / 1023, 0.5 - y * 0.5 / 511}; };
  const auto has_line = [&](const std::vector<Record>& records, const Place& a, const Place& b) {
    return countLines(records, a, b, color["red"]) > 0;
  };
  const std::vector<Record> with = draw(maker, "-pa table");
  EXPECT_TRUE(has_line(with, at(10, 5), at(90, 5)));
  EXPECT_TRUE(has_line(with, at(10, 55), at(10, 95))) << "the second page 50 further down";
  EXPECT_TRUE(has_line(with, at(20, 30), at(40, 30))) << "a staff of 20 pixels";
  // Strokes of the text: 7 pixels high, and as far apart as fixed characters under the expansion.
  std::vector<Record> bars;
  std::copy_if(with.begin(), with.end(), std::back_inserter(bars), [&](const Record& r) {
    return r.kind == 'L' && r.points.size() == 2 && r.points[0].x > at(199, 0).x &&
           std::fabs(r.points[0].x - r.points[1].x) < 1e-6 &&
           std::fabs(std::fabs(r.points[0].y - r.points[1].y) - 7 / 1022.0) < 1e-5;
  });
  ASSERT_EQ(bars.size(), 2U);
  EXPECT_NEAR(std::max(bars[0].points[0].y, bars[0].points[1].y), at(200, 100).y, 1e-5);
  EXPECT_NEAR(bars[1].points[0].x - bars[0].points[0].x, 7 * 0.85 * 1.25 / 1.05 / 1023, 1e-5);
  // A picture of half the width has a page of 512 by 1024 pixels.
  const double tall = 0.5 - 5 * 0.92 / 1023;
  EXPECT_TRUE(has_line(draw(maker, "-pa table -pd xy,0,0,51,101,1,1"),
                       {0.5 + 10 * 0.46 / 511, tall}, {0.5 + 90 * 0.46 / 511, tall}));
  EXPECT_NE(run.out.find("FIRST  [2J\n"), std::string::npos)
      << "lines go to the log, made harmless";
  const std::vector<Record> without = draw(maker);
  EXPECT_FALSE(has_line(without, at(10, 5), at(90, 5)));
  EXPECT_NE(run.out.find("FIRST"), std::string::npos);
  EXPECT_LT(without.size(), with.size());

  // Nothing of a product without tables, or with offsets that lead nowhere, but its labels.
  for (const int offset : {0, 60, 0x7FFFFFFF}) {
    NidsMaker null;
    null.code = 141;
    null.tail = offset == 0 ? "" : NidsMaker::text(0, 0, 0, "NO STORMS");
    std::string data = null.build();
    const size_t graph = data.size() - null.tail.size() - 8;
    data.replace(graph - 4, 8, NidsMaker::u4(offset == 0 ? 0 : 60) + NidsMaker::u4(offset));
    dir.write("a.nids", data);
    run = runScopeview(dir, "-in nids a.nids -de meta,a.meta -va comp,track -pa table");
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(offset != 0 || run.err.empty()) << run.err;
    EXPECT_FALSE(readMeta(dir.read("a.meta")).empty());
  }
}

TEST_F(RoadTest, LoopsOverFilesOfADataTree) {
  NidsMaker maker = radialProduct();
  const std::string tree = dir.at("data/nids/TLX/N0R/TLX_N0R_20210505_");
  for (const char* time : {"1600", "1620", "1640", "1700"}) {
    dir.write(std::string("data/nids/TLX/N0R/TLX_N0R_20210505_") + time + ".nids", maker.build());
  }
  const std::string args = "-in nids -dp '" + dir.at("data") + "' -id TLX -ty N0R -de meta,a.meta ";
  const auto files = [&](const std::string& more) {
    const ProgramRun loop = runScopeview(dir, args + more, "zqvcurtime='#202105051705'");
    EXPECT_EQ(loop.status, 0);
    std::vector<std::string> names;
    std::istringstream lines(loop.out);
    std::string line;
    while (std::getline(lines, line)) {
      const size_t at = line.find("TLX_N0R_20210505_");
      if (at != std::string::npos) {
        names.push_back(line.substr(at + 17, 4));
      }
    }
    return names;
  };
  using Names = std::vector<std::string>;
  EXPECT_EQ(files(""), (Names{"1700"}));
  EXPECT_EQ(files("-pa nf=4,linc=20"), (Names{"1600", "1620", "1640", "1700"}));
  // Frames every ten minutes look back up to twelve hours, so every other one finds the file drawn
  // before.
  EXPECT_EQ(files("-pa nf=7,linc=10"), (Names{"1600", "1620", "1640", "1700"}));
  EXPECT_EQ(files("-cu '#202105051640'"), (Names{"1640"}));
  EXPECT_EQ(files("-pa fi=@" + tree + "1620.nids"), (Names{"1620"}));
}

TEST_F(RoadTest, MapItemsLeaveTheProductAlone) {
  const auto page = [&](const char* device, const std::string& item) {
    draw(radialProduct(), std::string("-de ") + device + ",a.page -pa site,dist=100 -mf " + item);
    return dir.read("a.page");
  };
  for (const char* item : {"-./none.map:red:fi=hat", "-./none.map:red:st=4:wi=4"}) {
    std::istringstream lines(page("meta", item));
    std::string fill = "FSTY 0";
    std::string style = "LSTY 1";
    int drawn = 0;
    for (std::string line; std::getline(lines, line);) {
      const std::string code = line.substr(0, line.find(' '));
      fill = code == "FSTY" ? line : fill;
      style = code == "LSTY" ? line : style;
      if (code == "F" || code == "L") {
        drawn++;
        EXPECT_EQ(code == "F" ? fill : style, code == "F" ? "FSTY 0" : "LSTY 1") << line;
      }
    }
    EXPECT_GT(drawn, 100) << "bins, a ring, the bar";
  }
  EXPECT_EQ(page("ps", "-./none.map:red:st=4:wi=4").find("4.0 dot lw"), std::string::npos);
}
