// Maps, read back from the metafile: what the list language chooses, and where lines land.

#include "MapPlot.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "EarthPoint.h"
#include "MapFile.h"
#include "MapFileHeader.h"
#include "MetaTest.h"
#include "Point.h"

using namespace ZQV;

namespace {

/** Views of a metafile page of 1 by 1. On LATLON a degree is a unit. */
constexpr const char* degrees = "latlon,40,-100,41,41,1,1";  // 20 to 60 N, 120 to 80 W
constexpr const char* stereo = "ps:90:-100,40,-100,41,41,.5,.5";

class MapPlotTest : public MetaTest {
 protected:
  /** The records of what draw() draws on a view. */
  template <typename Draw>
  std::vector<Record> drawn(const char* view, Draw draw) {
    return MetaTest::drawn([&](Plot& plot) {
      Domain domain;
      domain.set(view);
      plot.setDomain(domain);
      draw(plot);
    });
  }
  std::vector<Record> drawnMap(const char* view, const std::string& params) {
    return drawn(view, [&](Plot& plot) {
      MapPlot map(params.c_str());
      map.draw(plot);
    });
  }
  /** A text map of one line; its box is that of the points. */
  void writeLine(const std::string& name, const std::vector<EarthPoint>& points) const {
    MapFile map;
    map.open(dir.at(name).c_str(), 1, MapFile::TEXT);
    MapFileHeader h;
    h.num = static_cast<int>(points.size());
    h.index = 1;
    h.minlat = h.maxlat = points[0].lat;
    h.minlon = h.maxlon = points[0].lon;
    for (const EarthPoint& e : points) {
      h.minlat = std::min(h.minlat, e.lat);
      h.maxlat = std::max(h.maxlat, e.lat);
      h.minlon = std::min(h.minlon, e.lon);
      h.maxlon = std::max(h.maxlon, e.lon);
    }
    map.writeHeader(h);
    for (const EarthPoint& e : points) {
      map.writeData(e);
    }
  }
  /** How many of the lines across the view "a.map" are drawn, one for each time it is chosen. */
  size_t times(const char* view, const std::string& params) {
    writeLine("a.map", {EarthPoint(40, -110), EarthPoint(40, -90)});
    writeLine("b.map", {EarthPoint(39, -110), EarthPoint(39, -100), EarthPoint(39, -90)});
    const std::vector<Record> records = drawnMap(view, params);
    num_other = static_cast<size_t>(std::count_if(
        records.begin(), records.end(), [](const Record& r) { return r.points.size() == 3; }));
    return records.size() - num_other;
  }

  size_t num_other = 0;  ///< lines of "b.map"
};

void expectPlace(const Record::Place& place, double x, double y) {
  EXPECT_NEAR(place.x, x, 2e-3);
  EXPECT_NEAR(place.y, y, 2e-3);
}

}  // namespace

TEST_F(MapPlotTest, LinesLandWhereTheProjectionPutsThem) {
  writeLine("a.map", {EarthPoint(50, -110), EarthPoint(30, -90)});
  std::vector<Record> records = drawnMap(degrees, "mf=a.map:#010203");
  ASSERT_EQ(records.size(), 1U);
  // The view is 0.92 of the page, in its middle.
  expectPlace(records[0].points[0], 0.5 - 0.23, 0.5 + 0.23);
  expectPlace(records[0].points[1], 0.5 + 0.23, 0.5 - 0.23);

  records = drawnMap(stereo, "mf=a.map:red");
  ASSERT_EQ(records.size(), 1U);
  const double rad = 3.14159265358979 / 180;
  const auto radius = [&](double lat) {
    return 63.7122 * (1 + std::sin(60 * rad)) * std::tan((90 - lat) / 2 * rad);
  };
  const double scale = 0.92 / 20;
  expectPlace(records[0].points[0], 0.5 - radius(50) * std::sin(10 * rad) * scale,
              0.5 + (radius(40) - radius(50) * std::cos(10 * rad)) * scale);
}

TEST_F(MapPlotTest, BoxesBeyondOneSide) {
  const struct {
    const char* what;
    std::vector<EarthPoint> line;
    bool drawn;
  } rows[] = {{"north", {EarthPoint(61, -110), EarthPoint(65, -90)}, false},
              {"north, over both corners", {EarthPoint(61, -130), EarthPoint(65, -70)}, false},
              {"west", {EarthPoint(30, -121), EarthPoint(50, -130)}, false},
              {"around", {EarthPoint(10, -130), EarthPoint(70, -70)}, true},
              {"across", {EarthPoint(40, -130), EarthPoint(41, -70)}, true}};
  for (const auto& row : rows) {
    writeLine("a.map", row.line);
    EXPECT_EQ(drawnMap(degrees, "mf=a.map:red").size(), row.drawn ? 1U : 0U) << row.what;
  }
  // A box that isn't stated is taken for near, and points beyond it don't stop the next segment.
  dir.write("a.map",
            "2 0 0 0 0 1\n35 -110 45 -90\n2 65 61 -90 -110 2\n61 -110 65 -90\n"
            "2 45 35 -90 -110 3\n35 -110 45 -90\n");
  EXPECT_EQ(drawnMap(degrees, "mf=a.map:red").size(), 2U);
}

TEST_F(MapPlotTest, PassesAndScales) {
  const struct {
    const char* params;  // ahead of the list
    const char* view;
    const char* item;
    size_t times;
  } rows[] = {{"", degrees, "a.map", 1},
              {"under", degrees, "a.map", 0},
              {"under", degrees, "-a.map", 1},
              {"over", degrees, "+a.map:red", 1},
              {"", degrees, "-a.map", 0},
              {"default", degrees, "a.map", 1},
              {"default,over", degrees, "a.map", 1},
              {"under,nodefault", degrees, "a.map", 0},
              // the view is 40 high
              {"", degrees, "s-40:a.map", 1},
              {"", degrees, "s-39:a.map", 0},
              {"", degrees, "s+40:a.map", 1},
              {"", degrees, "s+41:a.map", 0},
              {"", degrees, ">5<20:a.map", 0},
              {"", degrees, ">5<50:a.map", 1},
              {"", degrees, "<50>5:a.map", 1},
              {"", degrees, "s-50:s+30:a.map", 1},
              {"", degrees, "s-50:>45:a.map", 0},
              {"", degrees, "s-50:>5<20:a.map", 1},  // a number alone, here
              {"", degrees, "s-infinite.map:red", 1},
              {"", degrees, "s-50:", 0},
              {"over", degrees, "+s-50:a.map", 1},
              {"", degrees, "a.map:off", 0},
              {"", degrees, "a.map[red]", 1},
              {"", degrees, "none.map", 0},
              {"", degrees, "|touch_pipe", 0},
              {"", "xy,0,0,41,41,1,1", "a.map", 0}};
  writeLine("s-infinite.map", {EarthPoint(40, -110), EarthPoint(40, -90)});
  for (const auto& row : rows) {
    const std::string params = *row.params != '\0' ? std::string(row.params) + "," : "";
    EXPECT_EQ(times(row.view, params + "mf=" + row.item), row.times)
        << row.params << ' ' << row.item;
    // The same word in a list file.
    dir.write("my.mpl", std::string(row.item) + "\n");
    EXPECT_EQ(times(row.view, params + "mf=my.mpl"), row.times) << row.params << ' ' << row.item;
    EXPECT_EQ(err, "");
  }
  Zqv::putResrc("draw", "-map");
  EXPECT_EQ(times(degrees, "mf=a.map,lalo=5"), 0U);
}

TEST_F(MapPlotTest, ListFilesAndTheirRegions) {
  const struct {
    const char* view;
    const char* list;
    size_t a, b;
  } rows[] = {{degrees, "[20,60,-130,-60,50 a.map [ b.map", 1, 0},
              {"latlon,15,-100,61,61,1,1", "[20,60,-130,-60 a.map [ b.map", 0, 1},
              {degrees, "[20,60,-130,-60,30 a.map [ b.map", 0, 1},
              {degrees, "a.map [0,1,0,1 b.map a.map", 1, 0},
              {degrees, "[0,1,0,1 b.map [20,60,-130,-60 a.map", 1, 0},
              {degrees, "[ a.map [20,60,-130,-60 b.map [ a.map", 2, 0}};
  for (const auto& row : rows) {
    dir.write("l.mpl", row.list);
    EXPECT_EQ(times(row.view, "mf=fi:l.mpl"), row.a) << row.list;
    EXPECT_EQ(num_other, row.b) << row.list;
  }
  dir.write("l.mpl", "a.map");
  EXPECT_EQ(times(degrees, "under,mf=-l.mpl"), 0U) << "its items have signs of their own";
  EXPECT_EQ(times(degrees, "under,default,mf=-fi:l.mpl"), 1U);
  EXPECT_EQ(times(degrees, "under,default,mf=+l.mpl"), 0U);
  drawn(degrees, [](Plot& plot) {
    MapPlot map;
    map.setMapFiles("none.mpl,fi:none.mpl,fi:other");
    map.draw(plot);
    map.draw(plot);
  });
  const std::string warning = "MapPlot_draw: Unable to open map list file: ";
  EXPECT_EQ(err.find(warning), 0U);
  EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 2) << "one a name: " << err;
  Zqv::setDatabasePath(dir.path.c_str());
  EXPECT_TRUE(drawnMap(degrees, "").empty());
  EXPECT_EQ(err.find(warning), std::string::npos) << "nobody asked for zqv.map";
  Zqv::setDatabasePath((dir.path + ":" ZQV_DATA_DIR).c_str());

  // By default the list depends on where the view lies.
  dir.write("zqv.map", "a.map");
  writeLine("cont.map", {EarthPoint(40, -110), EarthPoint(40, -90)});
  writeLine("country.map", {EarthPoint(20, 100), EarthPoint(20, 110), EarthPoint(25, 115)});
  EXPECT_EQ(times(degrees, ""), 1U);
  EXPECT_EQ(times("latlon,20,100,41,41,1,1", ""), 0U);
  EXPECT_EQ(num_other, 1U);
  Zqv::putResrc("map_file", "b.map");
  EXPECT_EQ(times(degrees, ""), 0U);
  EXPECT_EQ(num_other, 1U);
}

TEST_F(MapPlotTest, NorthAmericaHasAListOfItsOwn) {
  dir.write("zqv.map", "bg:green");
  dir.write("cont.map", "");
  dir.write("country.map", "");
  const struct {
    const char* view;
    size_t lists;
  } rows[] = {{"latlon,25,-100,41,41,1,1", 0},  {"latlon,25.1,-100,41,41,1,1", 1},
              {"latlon,79.9,-100,41,9,1,1", 1}, {"latlon,80,-100,41,9,1,1", 0},
              {"latlon,40,-160,41,41,1,1", 0},  {"latlon,40,-159.9,41,41,1,1", 1},
              {"latlon,40,-65.1,41,41,1,1", 1}, {"latlon,40,-65,41,41,1,1", 0},
              {"latlon,40,-100,41,75,1,1", 1},  {"latlon,40,-100,41,76,1,1", 0}};
  for (const auto& row : rows) {
    EXPECT_EQ(drawnMap(row.view, "").size(), row.lists) << row.view;
  }
}

TEST_F(MapPlotTest, SegmentsThatAreCutOrLong) {
  dir.write("a.map", "2 0 0 0 0 1\n40 -110 40 -90\n3 0 0 0 0 2\n41 -110 42 -90\n");
  EXPECT_EQ(drawnMap(degrees, "mf=a.map:red").size(), 1U) << "two points of three";
  // Drawn in pieces that follow each other; an outline ends at the first.
  constexpr int num = 70000;
  std::string text = std::to_string(num) + " 0 0 0 0 1\n";
  for (int i = 0; i < num; i++) {
    text += i % 2 == 0 ? "40 -101 " : "41 -99 ";
  }
  dir.write("a.map", text);
  std::vector<Record> records = drawnMap(degrees, "mf=a.map:red");
  size_t lines = 0;
  for (const Record& r : records) {
    lines += r.points.size() - 1;
  }
  EXPECT_EQ(lines, num - 1U);
  EXPECT_GT(records.size(), 1U);
  records = drawnMap(degrees, "fill,mf=a.map:red");
  ASSERT_EQ(records.size(), 1U);
  EXPECT_LE(records[0].points.size(), 65537U);
}

TEST_F(MapPlotTest, ResourcesAndFlags) {
  writeLine("a.map", {EarthPoint(61, -110), EarthPoint(65, -90)});
  EXPECT_EQ(drawnMap(degrees, "map_in,mf=a.map:red").size(), 0U);
  Zqv::setMessageLevel("debug");
  drawnMap(degrees, "mf=a.map:red");
  EXPECT_NE(out.find("a.map 0 1\n"), std::string::npos) << out;
  drawnMap(degrees, "map_in,mf=a.map:red");
  EXPECT_NE(out.find("a.map 1 1\n"), std::string::npos) << out;
  Zqv::setMessageLevel("none");
}

TEST_F(MapPlotTest, ColoursAndFills) {
  writeLine("a.map", {EarthPoint(40, -110), EarthPoint(45, -90), EarthPoint(35, -90)});
  const struct {
    const char* params;
    const char* color;
    char kind;
  } rows[] = {{"mf=a.map", "red", 'L'},
              {"co=blue,mf=a.map", "blue", 'L'},
              {"co=blue,mf=a.map:green", "green", 'L'},
              {"fc,mf=a.map", "black", 'L'},
              {"mf=a.map[green:wi=2]", "green", 'L'},
              {"fill,mf=a.map:green", "green", 'F'},
              {"mf=a.map:green:fill", "green", 'F'},
              {"mf=a.map:green:fi=sol", "green", 'F'}};
  for (const auto& row : rows) {
    int color = -1;
    const std::vector<Record> records = drawn(degrees, [&](Plot& plot) {
      color = plot.getColorValue(row.color);
      MapPlot map(row.params);
      map.draw(plot);
    });
    ASSERT_EQ(records.size(), 1U) << row.params;
    EXPECT_EQ(records[0].kind, row.kind) << row.params;
    EXPECT_EQ(row.kind == 'F' ? records[0].fill_color : records[0].line_color, color) << row.params;
  }
  EXPECT_EQ(drawnMap(degrees, "mf=bg:").size(), 0U);
}

TEST_F(MapPlotTest, LinesBreakAtTheLimb) {
  dir.write("a.map", "5 0 0 0 0 1\n0 0 10 0 0 120 20 0 30 0\n");
  const std::vector<Record> records = drawnMap("or:0:0,0,0,61,61,3,3", "mf=a.map:red");
  ASSERT_EQ(records.size(), 2U);
  EXPECT_EQ(records[0].points.size(), 2U);
  EXPECT_EQ(records[1].points.size(), 2U);
}

TEST_F(MapPlotTest, SinglePointsAreLabels) {
  dir.write("a.kml",
            "<?xml version=\"1.0\"?><kml>\n<Placemark>\n<name>I</name>\n<Point>\n<coordinates>"
            "-110,50,0</coordinates>\n</Point>\n</Placemark>\n</kml>");
  const std::vector<Record> records = drawnMap(degrees, "mf=a.kml:red");
  ASSERT_FALSE(records.empty()) << "strokes of a letter";
  for (const Record& record : records) {
    for (const Record::Place& p : record.points) {
      EXPECT_NEAR(p.x, 0.5 - 0.23, 0.01);
      EXPECT_NEAR(p.y, 0.5 + 0.23, 0.01);
    }
  }
}

TEST_F(MapPlotTest, IndexShowsTheNumbers) {
  dir.write("a.map", "2 0 0 0 0 7\n40 -110 40 -90\n2 0 0 0 0 8\n10 -110 40 -90\n");
  drawnMap(degrees, "index,mf=a.map:red");
  EXPECT_NE(out.find("Mapfile: " + dir.at("a.map") + "\n7 lblue 2 40.0000 -110.0000\n"),
            std::string::npos)
      << out;
  EXPECT_EQ(out.find("8 lgreen"), std::string::npos) << "begins outside";
}

TEST_F(MapPlotTest, LatLonLinesAndLabels) {
  // The view is 0.92 of the page and 40 degrees wide; a parallel comes in pieces of one degree.
  const auto pieces = [&](const std::string& params) {
    const std::vector<Record> records = drawnMap(degrees, "mf=none.map," + params);
    return std::count_if(records.begin(), records.end(), [](const Record& r) {
      const auto& p = r.points;
      return p.size() == 2 && p[0].y == p[1].y && p[0].x > 0.039 && p[1].x < 0.961 &&
             std::fabs(p[1].x - p[0].x - 0.023) < 1e-4;
    });
  };
  EXPECT_EQ(pieces("lalo"), 9 * 40) << "20 N to 60 N";
  EXPECT_EQ(pieces("lalo=10:20"), 5 * 40);
  for (const char* nothing : {"lalo=0:5", "lalo=-5:5", "lalo=5:0", "lalo=0.05:5", "lalo=nan:nan"}) {
    EXPECT_TRUE(drawnMap(degrees, std::string("mf=none.map,") + nothing).empty()) << nothing;
  }
  EXPECT_TRUE(drawnMap("xy,0,0,41,41,1,1", "mf=none.map,lalo=5").empty());

  // A meridian begins and ends one spacing short of the poles, here at 80 S.
  double lowest = 1;
  for (const Record& r : drawnMap("latlon,-70,0,41,41,1,1", "mf=none.map,lalo=10")) {
    const auto& p = r.points;
    if (p.size() == 2 && p[0].x == p[1].x && std::fabs(p[1].y - p[0].y - 2.5 * 0.023) < 1e-4) {
      lowest = std::min(lowest, p[0].y);
    }
  }
  EXPECT_NEAR(lowest, 0.5 - 10 * 0.023, 1e-4);

  // Labels stand one percent inside the window's left and lower edge.
  Zqv::putResrc("device", ("meta," + dir.at("m") + ",hfont").c_str());
  constexpr double edge = 0.04 + 0.0092;
  const struct {
    const char* view;
    const char* text;
    double x, y;
  } labels[] = {{"latlon,0,0,41,41,1,1", "10W", 0.27, edge},
                {"latlon,0,0,41,41,1,1", "PM", 0.5, edge},
                {"latlon,0,0,41,41,1,1", "EQ", edge, 0.5},
                {"latlon,0,0,41,41,1,1", "10S", edge, 0.27},
                {"latlon,0,180,41,41,1,1", "DL", 0.5, edge}};
  for (const auto& row : labels) {
    drawnMap(row.view, "mf=lalo:10:green");
    const std::vector<MetaText> texts = readTexts(dir.read("m"));
    EXPECT_TRUE(std::any_of(texts.begin(), texts.end(), [&](const MetaText& t) {
      return t.text == row.text && std::hypot(t.at.x - row.x, t.at.y - row.y) < 1e-4;
    })) << row.text;
  }
}

TEST_F(MapPlotTest, MarksAndGrids) {
  std::vector<Record> records = drawnMap(degrees, "mf=mk:50:-110:red");
  ASSERT_FALSE(records.empty());
  expectPlace({(records[0].points[0].x + records[0].points[1].x) / 2, 0.73}, 0.27, 0.73);
  double wide = 0;
  for (const Record& r : records) {
    wide = std::max(wide, std::fabs(r.points[0].x - r.points[1].x));
  }
  EXPECT_NEAR(wide, 0.018 * 0.92, 1e-4) << "of the window";
  EXPECT_EQ(drawnMap(degrees, "mf=mk:50").size(), 0U);
  EXPECT_EQ(drawnMap(degrees, "mf=grid").size(), 82U) << "a line a column, a line a row";
  dir.write("l.mpl", "grid:ll,40,-100,11,6,2,2:blue");
  EXPECT_EQ(drawnMap(degrees, "mf=l.mpl").size(), 17U);
  EXPECT_EQ(drawnMap("latlon,40,-100,4001,2,.01,40", "mf=grid").size(), 1335U) << "every third";
}

TEST_F(MapPlotTest, ItemsWithoutLinesWarn) {
  EXPECT_EQ(drawnMap(degrees, "mf=im:none.gif").size(), 0U);
  EXPECT_NE(err, "");
  drawnMap(degrees, "mf=if:none.gif");
  EXPECT_EQ(err, "");
  dir.write("l.mpl", "rf:a a.raw");
  drawnMap(degrees, "mf=l.mpl");
  EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << "once: " << err;
}
