// Coded reports on the whole road: bulletins and summaries in, pictures and drawing records out.
// The places are worked out here on their own, from the national grids and a round earth.

#include <algorithm>
#include <cmath>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Domain.h"
#include "Image.h"
#include "MdrPlot.h"
#include "Picture.h"
#include "Road.h"
#include "ScratchDir.h"

namespace ZQV {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr double earth = 63.7122;  // 100 km
constexpr double tlx_lat = 35.3334;
constexpr double tlx_lon = -97.2778;
const double stereo = earth * (1 + std::sin(60 * rad));

using Place = Record::Place;

/** The plane of the national grids: true at 60 north, upright at 105 west. */
Place planeOf(double lat, double lon) {
  const double r = stereo * std::tan((90 - lat) / 2 * rad);
  return {r * std::sin((lon + 105) * rad), -r * std::cos((lon + 105) * rad)};
}

Place earthOf(const Place& p) {
  return {-105 + std::atan2(p.x, -p.y) / rad,
          90 - 2 * std::atan(std::hypot(p.x, p.y) / stereo) / rad};
}

/** The place in a direction and distance from the site, longitude first. Nearby, meridians are
 * taken as parallel. */
Place offsetOf(double dir, double miles) {
  const double degrees = miles * 1.852 / (earth * 100) / rad;
  return {tlx_lon + degrees * std::sin(dir * rad) / std::cos(tlx_lat * rad),
          tlx_lat + degrees * std::cos(dir * rad)};
}

/** A national grid, and the cell that the site is put on. */
struct NationalGrid {
  NationalGrid(int nx, int ny, double cell, int step)
      : spacing(cell),
        centre(planeOf(39.579372, -97.421463)),
        mx((nx - 1) / 2.0),
        my((ny - 1) / 2.0) {
    const Place p = planeOf(tlx_lat, tlx_lon);
    exact = {mx + (p.x - centre.x) / cell, my - (p.y - centre.y) / cell};
    site = {std::floor((exact.x + 0.5) / step) * step, std::floor((exact.y + 0.5) / step) * step};
  }
  [[nodiscard]] Place plane(double gx, double gy) const {
    return {centre.x + (gx - mx) * spacing, centre.y - (gy - my) * spacing};
  }

  double spacing;
  Place centre;
  double mx;
  double my;
  Place exact{};
  Place site{};
};

const NationalGrid mdr_grid(113, 89, 0.47624, 1);
const NationalGrid rcm_grid(452, 356, 0.11906, 4);

/** A square page around the place of a grid, cells wide. */
struct Page {
  Page(const NationalGrid& g, double gx, double gy, int cells)
      : grid(g), middle(g.plane(gx, gy)), width(cells * g.spacing) {
    const Place e = earthOf(middle);
    std::ostringstream text;
    text.precision(9);
    text << " -mf none -pd ps:90:-105," << e.y << "," << e.x << "," << cells + 1 << "," << cells + 1
         << "," << g.spacing << "," << g.spacing << " ";
    view = text.str();
  }
  [[nodiscard]] std::string args(const std::string& params = "") const {
    return view + "-pa full,nobord," + params + " ";
  }
  /** From the plane to shares of the page, from the lower left. */
  [[nodiscard]] Place at(const Place& p) const {
    return {0.5 + (p.x - middle.x) / width, 0.5 + (p.y - middle.y) / width};
  }
  [[nodiscard]] Place ofEarth(double lat, double lon) const { return at(planeOf(lat, lon)); }

  const NationalGrid& grid;
  Place middle;
  double width;
  std::string view;
};

struct Block {
  int x;  ///< middle of three cells by three
  int y;
  int level;
  int half = 1;  ///< cells beside the middle one; 0 for a single cell
};

class ReportPlotTest : public testing::Test {
 protected:
  std::vector<Record> draw(const std::string& args, const std::string& env = "") {
    run = runScopeview(dir, "-de meta,a.meta -cod white:fo=#dev " + args, env);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "") << args;
    texts = readTexts(dir.read("a.meta"));
    return readMeta(dir.read("a.meta"));
  }
  std::vector<std::string> words() const {
    std::vector<std::string> list;
    for (const MetaText& t : texts) list.push_back(t.text);
    return list;
  }
  void expectText(const std::string& text, const Place& p, double tolerance = 1e-4) {
    EXPECT_TRUE(std::any_of(texts.begin(), texts.end(),
                            [&](const MetaText& t) {
                              return t.text == text &&
                                     std::hypot(t.at.x - p.x, t.at.y - p.y) < tolerance;
                            }))
        << text << " at " << p.x << "," << p.y << " of " << testing::PrintToString(words());
  }
  /** Marks of a colour about a place: triangles and circles are closed. */
  int marks(const std::vector<Record>& records, const char* name, const Place& p) {
    return static_cast<int>(std::count_if(records.begin(), records.end(), [&](const Record& r) {
      return r.kind == 'L' && r.points.size() > 2 && r.line_color == color[name] &&
             std::all_of(r.points.begin(), r.points.end(),
                         [&](const Place& q) { return std::hypot(q.x - p.x, q.y - p.y) < 0.013; });
    }));
  }
  /** The site's mark and the rings around it, by their radii in km. */
  static void expectSiteAndRings(const std::vector<Record>& records, const Page& page,
                                 const std::vector<double>& km) {
    EXPECT_EQ(countStrokes(records, page.ofEarth(tlx_lat, tlx_lon), 0.03), 2) << "a cross";
    std::vector<Record> rings;
    std::copy_if(records.begin(), records.end(), std::back_inserter(rings),
                 [](const Record& r) { return r.points.size() > 20; });
    ASSERT_EQ(rings.size(), km.size());
    for (size_t i = 0; i < km.size(); i++) {
      const Place north = page.ofEarth(tlx_lat + km[i] / (earth * 100) / rad, tlx_lon);
      EXPECT_NEAR(rings[i].points[0].x, north.x, 1e-4);
      EXPECT_NEAR(rings[i].points[0].y, north.y, 1e-4);
    }
  }
  /** Strokes that begin at a place. */
  static int strokes(const std::vector<Record>& records, const Place& p) {
    return static_cast<int>(std::count_if(records.begin(), records.end(), [&](const Record& r) {
      return r.kind == 'L' && std::hypot(r.points[0].x - p.x, r.points[0].y - p.y) < 1e-4;
    }));
  }
  /** The colours of blocks in a picture of 800 by 800 pixels of a box of cells.
   *  @param cx, cy  the cell in the middle of the page */
  std::vector<std::string> blocks(const std::string& args, const Page& page,
                                  const std::string& params, const std::vector<Block>& list,
                                  double cx, double cy) {
    const Image image = drawPicture(dir, args + page.args(params), 800, 800);
    const double cell = 800 * page.grid.spacing / page.width;
    std::vector<std::string> names;
    for (const Block& b : list) {
      std::set<std::string> found;
      for (int i = 0; i < 9; i++) {  // from corner to corner
        const int right = i % 3 - 1;
        const int down = i / 3 - 1;
        const int seen = colorAt(image, 400 + (b.x + right * 0.9 * b.half - cx) * cell,
                                 400 + (b.y + down * 0.9 * b.half - cy) * cell);
        const auto name = std::find_if(color.begin(), color.end(),
                                       [&](const auto& c) { return c.second == seen; });
        found.insert(seen == 0 ? "-" : name != color.end() ? name->first : "?");
      }
      names.push_back(found.size() == 1 ? *found.begin() : "mixed");
    }
    return names;
  }

  TempDir dir;
  ProgramRun run;
  std::vector<MetaText> texts;
  std::map<std::string, int> color = radarColors();
};

// Blocks by their distance from the site: 22, 66 and 110 nautical miles for MDR.

const std::vector<Block> mdr_blocks = {{14, 12, 2}, {14, 16, 3}, {18, 12, 1},
                                       {22, 12, 1}, {6, 12, 6},  {12, 5, 5}};

std::string mdrEchoes() {
  std::string s = "^";
  for (const Block& b : mdr_blocks) {
    for (int y = b.y - 1; y <= b.y + 1; y++) {
      s += std::string(1, static_cast<char>('A' + y)) + static_cast<char>('A' + b.x - 1) +
           std::string(3, static_cast<char>('0' + b.level)) + " ";
    }
  }
  return s + "\n\n";
}

TEST_F(ReportPlotTest, MdrBoxOfASite) {
  dir.write("b", "SDUS40 KOUN 201235\n\nBMX 1235 PPINE\n\nTLX 1235 AREA 4R+\n" + mdrEchoes());
  // The box has an even number of cells, and its middle is put on the site's own: it lies half a
  // cell up and to the left of the report's numbers. Deliberate.
  const Page page(mdr_grid, mdr_grid.site.x, mdr_grid.site.y, 25);
  const auto colors = [&](const std::string& params, const std::string& more = "") {
    return blocks("-in mdrsite b -id TLX " + more, page, params, mdr_blocks, 12.5, 12.5);
  };
  EXPECT_THAT(colors(""), ElementsAre("cyan", "green", "blue", "blue", "magenta", "red"));
  // What falls to 0: from 42 to 36 dBZ within the first block, then to 28, 24 and, behind 99 miles,
  // below 20.
  EXPECT_THAT(colors("ramp=45:170"), ElementsAre("-", "green", "-", "blue", "magenta", "red"));
  EXPECT_THAT(colors("ramp=39"), ElementsAre("-", "green", "-", "blue", "magenta", "red"))
      << "200 miles long";
  EXPECT_THAT(colors("ramp=99:200"), Each("-"));
  EXPECT_THAT(colors("cof=0:off"), Each("-"));
  EXPECT_THAT(colors("", "-cof 0:off,30:red,50:white"),
              ElementsAre("red", "red", "-", "-", "white", "white"));
  EXPECT_THAT(colors("data"), Each("-"));
  EXPECT_THAT(blocks("-in mdrsite b", page, "", mdr_blocks, 12.5, 12.5), Each("-"))
      << "the first report is another one";

  // Cells of 11 miles: with 40 dBZ falling to nothing at 88 miles, 20 are left at the fourth.
  dir.write("r", "TLX 1235 AREA 4R+\n^MN1111111\n\n");
  std::vector<Block> east;
  for (int x = 14; x < 20; x++) east.push_back({x, 12, 1, 0});
  EXPECT_THAT(blocks("-in mdrsite r", page, "ramp=40:88", east, 12.5, 12.5),
              ElementsAre("-", "-", "-", "blue", "blue", "blue"));

  // The site and its rings, and every cell's level as a number.
  const std::vector<Record> drawn =
      draw("-in mdrsite b -id TLX" + page.args("echo,site,dist=100:0:200"));
  expectSiteAndRings(drawn, page, {100, 200});
  ASSERT_EQ(texts.size(), 26U * 26U);
  for (const Block& b : mdr_blocks) {
    expectText(std::to_string(b.level), {0.5 + (b.x - 12) / 25.0, 0.5 - (b.y - 12) / 25.0});
  }
}

// Three regions: two points, one with a diameter, none. Their places are averages on the earth.
constexpr char mdr_report[] =
    "TLX 1235 AREA 4TRW+2S/NC 20/100 90/60 A2425 C2235 MT 310 AT 160/50 "
    "CELL 5R- 45/30 D10 C1820 LINE 8R/NEW\n\nBMX 1240 PPINE\n\n";

TEST_F(ReportPlotTest, MdrItemsOfASite) {
  dir.write("b", mdr_report);
  const Page page(mdr_grid, mdr_grid.site.x, mdr_grid.site.y, 12);
  const std::string args = "-in mdrsite b" + page.args();
  const auto at = [&](const Place& e) { return page.ofEarth(e.y, e.x); };
  const Place a = offsetOf(20, 100);
  const Place b = offsetOf(90, 60);
  const Place first = at({(a.x + b.x) / 2, (a.y + b.y) / 2});
  const Place second = at(offsetOf(45, 30));
  const Place site = page.ofEarth(tlx_lat, tlx_lon);
  draw(args + "-va city,stat,etop,echotop");
  // A valid report has no word of its own: the one before stands again.
  EXPECT_THAT(words(), ElementsAre("TLX", "TLX", "310", "310"));
  expectText("TLX", site);
  expectText("310", at(offsetOf(160, 50)));
  draw(args + "-va stat");
  EXPECT_THAT(words(), IsEmpty());
  draw(args + "-va pr_typ");
  EXPECT_THAT(words(), ElementsAre("TRW+", "R-", "R"));
  expectText("TRW+", first);
  expectText("R-", second);
  expectText("R", site);
  draw(args + "-va pr_tnd");
  EXPECT_THAT(words(), ElementsAre("NC", "", "NEW"));
  // Regions and variables share a counter: behind three regions comes entry 4, and none is served
  // twice.
  draw(args + "-va city,pr_typ,etop,etop,city");
  EXPECT_THAT(words(), ElementsAre("TLX", "TRW+", "R-", "R", "TLX"));
  draw(args + "-va city,city,city,city,city,pr_tnd,city");
  EXPECT_THAT(words(), ElementsAre("TLX", "TLX", "TLX", "TLX", "TLX", "NC", "", "NEW"));

  const std::vector<Record> area = draw(args + "-va area");
  EXPECT_TRUE(std::any_of(area.begin(), area.end(), [&](const Record& r) {
    return r.points.size() == 2 &&
           std::hypot(r.points[0].x - at(a).x, r.points[0].y - at(a).y) < 1e-4 &&
           std::hypot(r.points[1].x - at(b).x, r.points[1].y - at(b).y) < 1e-4;
  }));
  // Ten miles around the point of the second.
  const double r10 =
      10 * 18.52 / 1000 * (1 + std::sin(60 * rad)) / (1 + std::sin(tlx_lat * rad)) / page.width;
  EXPECT_EQ(
      std::count_if(area.begin(), area.end(),
                    [&](const Record& r) {
                      return r.points.size() > 20 &&
                             std::all_of(r.points.begin(), r.points.end(), [&](const Place& q) {
                               return std::fabs(std::hypot(q.x - second.x, q.y - second.y) - r10) <
                                      1e-3;
                             });
                    }),
      1);

  // Area movement as a vector, cells as a barb: only of what moves so first. Both are told, too.
  EXPECT_EQ(strokes(draw(args + "-va pr_amv"), first), 1);
  EXPECT_THAT(run.out, HasSubstr("Datum  10 -9999 []  240.000000 25.000000 "));
  EXPECT_EQ(strokes(draw(args + "-va pr_cmv"), second), 1);
  EXPECT_THAT(run.out, HasSubstr("Datum  7 -9999 []  180.000000 20.000000 "));
  const std::vector<Record> all = draw(args + "-va comp");
  EXPECT_EQ(strokes(all, first) + strokes(all, second), 2);
  EXPECT_THAT(words(), ElementsAre("310", "TRW+", "NC", "R-", "", "R", "NEW"));
  // Types stand where the entry's format puts them, tops have a format of their own.
  draw(args + "-va '\"comp:fm=ul\"'");
  expectText("TRW+", {first.x - 0.012, first.y + 0.02});
  expectText("310", at(offsetOf(160, 50)));
  draw(args + "-id BMX -va stat,comp");
  EXPECT_THAT(words(), ElementsAre("NE", "NE"));
}

/** A cell of the RCM box as three letters. */
std::string cellCode(int x, int y) {
  return {static_cast<char>('A' + y / 4), static_cast<char>('A' + x / 4),
          static_cast<char>('A' + x % 4 * 4 + y % 4)};
}

const std::vector<Block> rcm_blocks = {{54, 48, 1}, {54, 52, 2}, {50, 51, 3}, {40, 48, 3},
                                       {65, 48, 1}, {48, 30, 6}, {80, 80, 5}};

std::string rcmMessage(const std::string& mode) {
  std::string s =
      "RCMTLX\n1234 ROBUU 0001 /NEXRAA 0001 2005202017 UNEDITED /MD" + mode + " /SC21 /NI0063: ";
  for (const Block& b : rcm_blocks) {
    for (int y = b.y - 1; y <= b.y + 1; y++) {
      s += cellCode(b.x - 1, y) + std::string(3, static_cast<char>('0' + b.level)) + ",";
    }
  }
  return s + " /MT620:" + cellCode(41, 60) +
         "  /NCEN03: CM0MMC 226016,CD0OLL NEW,CY1QKG 249019 /ENDAA /NEXRCC 0001 2005202017 "
         "/NTVS02: TVS01" +
         cellCode(47, 52) + ",TVS02" + cellCode(47, 53) + " /NMES01: M13" + cellCode(60, 60) +
         " /NCEN04: CM0MMC S193HP,CD0OLL S386HH,CQ0LMH S254HN,CY1QKG S457HU \n";
}

TEST_F(ReportPlotTest, RcmBoxOfASite) {
  const Page page(rcm_grid, rcm_grid.site.x + 1.5, rcm_grid.site.y + 1.5, 100);
  dir.write("p", rcmMessage("PCPN"));
  dir.write("c", rcmMessage("CLAR"));
  const auto colors = [&](const std::string& file, const std::string& params) {
    return blocks("-in rcmsite " + file, page, params, rcm_blocks, 49.5, 49.5);
  };
  EXPECT_THAT(colors("p", ""),
              ElementsAre("blue", "cyan", "green", "green", "blue", "magenta", "red"));
  // Down to 20 dBZ at 150 km: the first block is 55 to 87 km away, the second 49 to 77, the third 2
  // to 28, the fourth 96 to 126, all others more than 150.
  EXPECT_THAT(colors("p", "ramp"),
              ElementsAre("-", "cyan", "green", "green", "blue", "magenta", "red"));
  EXPECT_THAT(colors("c", "ramp"), ElementsAre("-", "-", "-", "green", "blue", "magenta", "red"));
  EXPECT_THAT(colors("p", "ramp=45"),
              ElementsAre("blue", "cyan", "green", "green", "blue", "magenta", "red"));
  EXPECT_THAT(colors("p", "ramp=20:1:45:150"),
              ElementsAre("-", "-", "-", "green", "blue", "magenta", "red"));
  EXPECT_THAT(colors("c", "ramp=45"),
              ElementsAre("-", "-", "-", "green", "blue", "magenta", "red"));
  EXPECT_THAT(colors("p", "clutter=90"),
              ElementsAre("-", "-", "-", "green", "blue", "magenta", "red"));
  EXPECT_THAT(colors("p", "Clutter=30"),
              ElementsAre("blue", "cyan", "-", "green", "blue", "magenta", "red"));
  // The distance is that of the radar itself, which stands nearly one cell east and three south of
  // the site's own: 40 dBZ fall to 30 at 75 km, 6.3 cells.
  std::string row = "RCMTLX\n1234 ROBUU 1 /NEXRAA 1 2005202017 /MDPCPN /SC21 /NI1: ";
  for (int y = 50; y < 53; y++) row += cellCode(50, y) + std::string(8, '2') + ",";
  dir.write("r", row + " /ENDAA \n");
  std::vector<Block> east;
  for (int x = 53; x < 59; x++) east.push_back({x, 51, 2, 0});
  EXPECT_THAT(blocks("-in rcmsite r", page, "ramp=45:150:40:150", east, 49.5, 49.5),
              ElementsAre("-", "-", "-", "cyan", "cyan", "-"));
  // Colours of the data path's own, and rings in nautical miles.
  dir.write("rcm.cfl", "0:off\n20:red\n45:white\n");
  EXPECT_THAT(colors("p -fp '.:" ZQV_DATA_DIR "'", ""),
              ElementsAre("red", "red", "red", "red", "red", "white", "white"));
  expectSiteAndRings(draw("-in rcmsite p" + page.args("site,distm=60")), page, {111.12});
  // Alone it is 25 km, less than where the first two begin and than where the third ends.
  EXPECT_THAT(colors("p", "clutter"),
              ElementsAre("blue", "cyan", testing::_, "green", "blue", "magenta", "red"));
}

TEST_F(ReportPlotTest, RcmItemsOfASite) {
  dir.write("b", rcmMessage("PCPN"));
  dir.write("c", rcmMessage("CLAR"));
  const Page page(rcm_grid, rcm_grid.site.x, rcm_grid.site.y, 60);
  const auto at = [&](int x, int y) {
    return page.at(rcm_grid.plane(rcm_grid.site.x + x - 48, rcm_grid.site.y + y - 48));
  };
  const auto items = [&](const std::string& vars, const std::string& params = "") {
    draw("-in rcmsite b -va " + vars + page.args(params));
    return words();
  };
  EXPECT_THAT(items("city,stat,mode"), ElementsAre("TLX", "P"));
  expectText("TLX", page.ofEarth(tlx_lat, tlx_lon));
  EXPECT_THAT(items("etop,echotop:un=km"), ElementsAre("620", "19"));
  expectText("620", at(41, 60));
  EXPECT_THAT(items("etop,ctop", "min_hgt=620"), ElementsAre("620"));
  EXPECT_THAT(items("etop", "min_hgt=621"), IsEmpty());
  EXPECT_THAT(items("cid"), ElementsAre("M0", "D0", "Y1", "Q0"));
  EXPECT_THAT(items("cid", "min_hgt=300"), ElementsAre("D0", "Y1"));
  EXPECT_THAT(items("cid", "num_plt=2"), ElementsAre("M0", "D0"));
  EXPECT_THAT(items("ctop:un=kft", "num_plt=3"), ElementsAre("19", "39", "46"));
  expectText("46", at(41, 66));
  EXPECT_THAT(items("cdir,cspd:un=km/h"), ElementsAre("226", "249", "30", "35"));
  EXPECT_THAT(items("'\"cdir:fm=ul,fm=%.1f\"'"), ElementsAre("226.0", "249.0"));
  expectText("226.0", {at(48, 50).x - 0.012, at(48, 50).y + 0.02});
  EXPECT_THAT(items("CID,nothing"), IsEmpty());

  // Symbols: triangles of two colours for hail, crosses without.
  for (const char* var : {"cstat", "hail", "storm"}) {
    const std::vector<Record> drawn = draw(std::string("-in rcmsite b -va ") + var + page.args());
    EXPECT_EQ(marks(drawn, "green", at(48, 50)), 1) << var;
    EXPECT_EQ(marks(drawn, "lgreen", at(46, 59)), 1) << var;
    EXPECT_EQ(countStrokes(drawn, at(49, 47), 0.018), var[0] == 'h' ? 0 : 2) << var;
  }
  EXPECT_THAT(words(), ElementsAre("M0", "193", "D0", "386", "Y1", "457", "Q0", "254"));
  expectText("M0", {at(48, 50).x - 0.012, at(48, 50).y + 0.02});
  expectText("193", {at(48, 50).x + 0.012, at(48, 50).y + 0.02});
  const std::vector<Record> barbs = draw("-in rcmsite b -va cmvmt" + page.args());
  EXPECT_EQ(strokes(barbs, at(48, 50)) + strokes(barbs, at(41, 66)), 2);
  EXPECT_EQ(strokes(barbs, at(46, 59)) + strokes(barbs, at(49, 47)), 0) << "new, or not told";

  // Three cells from the nearest storm, and four from the nearest ones.
  const std::vector<Record> vortices = draw("-in rcmsite b -va tvs,meso" + page.args());
  EXPECT_EQ(marks(vortices, "red", at(47, 52)) + marks(vortices, "red", at(47, 53)), 2);
  EXPECT_EQ(marks(vortices, "yellow", at(60, 60)), 1);
  const std::vector<Record> filtered =
      draw("-me debug2 -in rcmsite b -va tvs,meso" + page.args("filter"));
  EXPECT_THAT(run.out, HasSubstr("RcmPlot: TVS filtered: 47 53\nRcmPlot: Meso filtered: 60 60\n"));
  EXPECT_EQ(marks(filtered, "red", at(47, 52)), 1);
  EXPECT_EQ(marks(filtered, "red", at(47, 53)), 0);
  EXPECT_EQ(marks(filtered, "yellow", at(60, 60)), 0);

  // A site without precipitation has nothing but its image then, not even labels.
  draw("-in rcmsite c -va city,mode -cot white:fo=#dev" + page.args("tz=EST:-5"));
  EXPECT_THAT(words(),
              testing::IsSupersetOf({"C", "TLX", "Station", "Radar mode", "1517 EST 20 MAY 20"}));
  EXPECT_THAT(words(), Each(testing::Not(HasSubstr("Z 20 MAY")))) << "neither of the variables";
  draw("-in rcmsite c -va city,mode -cot white:fo=#dev" + page.args("noclar"));
  EXPECT_THAT(words(), ElementsAre("Site: TLX RCM reflectvity [dBZ]", "2017Z 20 MAY 20"));
}

TEST_F(ReportPlotTest, OwnDomainIsAroundTheSite) {
  dir.write("b", rcmMessage("PCPN"));
  dir.write("m", mdr_report);
  for (const char* args : {"-in rcmsite b", "-in rcmsite - < b", "-in mdrsite m",
                           "-in mdrsite - < m", "-in rcmsite -id tlx b"}) {
    draw(std::string("-mf none -va city ") + args);
    expectText("TLX", {0.5, 0.5});
  }
  const PackageData data;
  MdrPlot plot("in=site,id=XXX");
  Domain domain;
  EXPECT_EQ(plot.getDomain(domain), 1);
  String text;
  domain.toString(text);
  EXPECT_THAT(text.get(), HasSubstr("40.000000,-90.000000,90,60,0.118991,0.118991"));
}

/** A line for each row of blocks on the national grid. */
std::string rcmMosaic(const std::vector<Block>& list) {
  std::string s = "ZQVRAD\n2015Z 20 MAY 20\nRCM SUMMARY\n";
  for (const Block& b : list) {
    for (int y = b.y - 1; y <= b.y + 1; y++) {
      s += "+" + std::to_string(y) + "\n" + std::string(static_cast<size_t>(b.x - 1), ' ') +
           std::string(3, static_cast<char>('0' + b.level)) + "\n";
    }
  }
  return s;
}

TEST_F(ReportPlotTest, WithoutOptionsTheNewestRcmMosaicIsDrawn) {
  const std::vector<Block> list = {{230, 200, 2}, {240, 210, 5}, {220, 230, 7}};
  const std::string text =
      rcmMosaic(list) +
      "** TLX 001 PCPN\nZ 300 36 -98\nS A1 35.5 -97 90 20 200 2\nS A2 35.4 -97.2 90 20 149 "
      "0\nS A3 35.4 -97.1 90 20 150 0\nT 01 35.6 -97\n"
      "M 02 35.5 -98\n** ZZZ 999 NE\n** BMX 002 NE\n** FDR 003 CLAR\n";
  dir.write("tree/rcm/202005202000.rcm", text);
  dir.write("tree/rcm/202005201930.rcm", text);
  const std::string tree = "-cp '" + dir.at("tree") + "' ";
  const Page page(rcm_grid, 231, 215, 80);
  const std::string now = "zqvcurtime='#202005202055'";
  const std::vector<Record> drawn = draw(
      tree + "-va stat,mode,storm,etop,tvs,meso -cot white:fo=#dev" + page.args("filter"), now);
  EXPECT_THAT(run.out, HasSubstr("Plotting for: 20:15Z 20 MAY 2020\n"));
  EXPECT_THAT(run.out, HasSubstr("opening RCM file: " + dir.at("tree/rcm/202005202000.rcm")));
  EXPECT_THAT(words(), testing::IsSupersetOf({"P", "NE", "C", "A1", "200", "300",
                                              "RCM Reflectivity mosaic [dBZ]", "2015Z 20 MAY 20",
                                              "Radar status", "Echo top [100ft]"}));
  EXPECT_EQ(
      std::count_if(texts.begin(), texts.end(), [](const MetaText& t) { return t.text == "NE"; }),
      1)
      << "nobody knows where the other station is";
  expectText("P", page.ofEarth(tlx_lat, tlx_lon));
  expectText("300", page.ofEarth(36, -98));
  EXPECT_EQ(marks(drawn, "lgreen", page.ofEarth(35.5, -97)), 1);
  // A tenth of a degree is one cell, and a degree of longitude more than four.
  EXPECT_EQ(marks(drawn, "red", page.ofEarth(35.6, -97)), 1);
  EXPECT_EQ(marks(drawn, "yellow", page.ofEarth(35.5, -98)), 0);
  EXPECT_EQ(strokes(drawn, page.ofEarth(35.5, -97)), 1) << "its movement";
  draw(tree + "-va cid" + page.args("min_hgt"), now);
  EXPECT_THAT(words(), ElementsAre("A1", "A3")) << "15000 feet, if nothing is said";
  draw(tree + "-va mode" + page.args("noclar"), now);
  EXPECT_THAT(words(), ElementsAre("P"));
  EXPECT_THAT(blocks(tree + "-cu '#202005201930'", page, "", list, 231, 215),
              ElementsAre("cyan", "red", "magenta"));
  draw(tree + page.args(), "zqvcurtime='#202005201955'");
  EXPECT_THAT(run.out, HasSubstr("Plotting for: 19:45Z 20 MAY 2020\n")) << "from half past on";
  // A loop: labels of the variables in every frame.
  draw(tree + "-va mode -cot white:fo=#dev" + page.args("nf=2,linc=30"), now);
  EXPECT_THAT(run.out, HasSubstr("Plotting for: 19:45Z 20 MAY 2020\n"));
  EXPECT_EQ(std::count_if(texts.begin(), texts.end(),
                          [](const MetaText& t) { return t.text == "Radar mode"; }),
            2);
  // A colour bar, here on a page that has no pixels for the image.
  std::vector<int> boxes;
  for (const Record& r : draw(tree + "-mf none -pa bar", now)) {
    if (r.kind == 'F') boxes.push_back(r.fill_color);
  }
  EXPECT_THAT(boxes, ElementsAre(color["blue"], color["cyan"], color["green"], color["yellow"],
                                 color["red"], color["magenta"]));
  // The same as a field, in contours.
  EXPECT_THAT(blocks("-in rcmg tree/rcm/202005202000.rcm", page, "", {list[1]}, 231, 215),
              ElementsAre("red"));
  draw("-in rcmg tree/rcm/202005202000.rcm -va mode" + page.args());
  EXPECT_THAT(words(), ElementsAre("P", "C"));
}

TEST_F(ReportPlotTest, MdrMosaicAndItsStations) {
  std::string text = "ZQVRAD\n1235Z 20 APR 20\nSDUS SUMMARY\n+ 50 050\n";
  for (int y = 49; y < 52; y++) text += "444   222\n";
  text +=
      "SDXX STATIONS\nBMX NE * * * * * *\nZZZ OM * * * * * *\n"
      "TLX AREA TRWxx NC 310,090060 A2405 * *\n";
  dir.write("tree/mdr/2020042012.mdr", text);
  const std::string tree = "-in mdr -cp '" + dir.at("tree") + "' ";
  const std::string now = "zqvcurtime='#202004201300'";
  const Page page(mdr_grid, 55, 55, 20);
  draw(tree + "-va stat,etop,pr_typ -cot white:fo=#dev" + page.args(), now);
  EXPECT_THAT(words(),
              testing::IsSupersetOf({"NE", "310", "TRWxx", "MDR Reflectivity mosaic [dBZ]",
                                     "1235Z 20 APR 20", "Radar status", "Echo top [100ft]"}));
  expectText("310", page.at(planeOf(offsetOf(90, 60).y, offsetOf(90, 60).x)));
  expectText("TRWxx", page.ofEarth(tlx_lat, tlx_lon));
  // Only the first frame of a run has labels of the variables: deliberate.
  dir.write("tree/mdr/2020042011.mdr", text);
  draw(tree + "-va stat -cot white:fo=#dev" + page.args("nf=2,linc=60"), now);
  EXPECT_EQ(
      std::count_if(texts.begin(), texts.end(), [](const MetaText& t) { return t.text == "NE"; }),
      2);
  EXPECT_EQ(std::count_if(texts.begin(), texts.end(),
                          [](const MetaText& t) { return t.text == "Radar status"; }),
            1);
  // The rows on page 50 begin at column 49, both from 0.
  const std::vector<Block> list = {{50, 50, 4}, {56, 50, 2}};
  const std::string file = "tree/mdr/2020042012.mdr";
  EXPECT_THAT(blocks("-in mdr " + file, page, "", list, 55, 55), ElementsAre("yellow", "cyan"));
  draw("-in mdr " + file + page.args("echo"));
  EXPECT_EQ(texts.size(), 113U * 89U);
  expectText("4", page.at(mdr_grid.plane(50, 50)));
  // The field lies one column to the left and has no stations.
  EXPECT_THAT(blocks("-in mdr " + file, page, "in=mosg", {{49, 50, 4}}, 55, 55),
              ElementsAre("yellow"));
  draw("-in mdr " + file + " -va stat" + page.args("in=mosg"));
  EXPECT_THAT(words(), testing::Not(testing::Contains("NE")));
}

TEST_F(ReportPlotTest, FilesThatCannotBeDrawn) {
  const struct {
    const char* args;
    const char* warning;
  } rows[] = {{"-in rcm absent", "RcmPlot: Unable to open RCM file: absent\n"},
              {"-in rcmg absent", "RcmPlot: Unable to open RCM file: absent\n"},
              {"-in rcmsite absent", "RcmPlot: Unable to open RCM site file: absent\n"},
              {"-in mdr absent", "MdrPlot: Unable to open MDR file: absent\n"},
              {"-in mdrsite absent", "MdrPlot: Unable to open MDR site file: absent\n"},
              {"-in mdrsite -id XXX m", ""},
              {"-in rcmsite m", ""}};
  dir.write("m", mdr_report);
  for (const auto& row : rows) {
    run = runScopeview(dir, std::string("-de meta,a.meta -mf none ") + row.args);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, row.warning) << row.args;
    EXPECT_EQ(runScopeview(dir, std::string("-strict -de meta,a.meta -mf none ") + row.args).status,
              *row.warning != '\0' ? 6 : 10)
        << row.args;
  }
}

}  // namespace
}  // namespace ZQV
