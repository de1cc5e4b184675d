// Formats of data, and what each kind of datum draws where, read back from the metafile.

#include "Datum.h"

#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CloudPlot.h"
#include "DatumAttr.h"
#include "DatumPlot.h"
#include "Domain.h"
#include "MetaTest.h"
#include "PlotAttr.h"
#include "Point.h"
#include "Wind.h"
#include "WindPlot.h"

using namespace ZQV;

namespace {

/** The fields that are set, as text. */
std::string describe(const DatumAttr& a) {
  std::ostringstream out;
  const auto real = [&](const char* name, float v) {
    if (v != Const::FMISS) out << name << v << ' ';
  };
  const auto whole = [&](const char* name, int v) {
    if (v != Const::MISS) out << name << v << ' ';
  };
  const auto text = [&](const char* name, const char* v) {
    if (*v != '\0') out << name << v << ' ';
  };
  whole("ty", a.type);
  real("sc", a.scale);
  real("dx", a.dx);
  real("dy", a.dy);
  whole("ha", a.halign);
  whole("va", a.valign);
  real("hi", a.height);
  real("wi", a.width);
  real("ex", a.expan);
  whole("sh", a.shadow);
  whole("mk", a.marker);
  real("mn", a.min);
  real("mx", a.max);
  whole("sk", a.skip);
  text("fm", a.form);
  text("co", a.color);
  text("fo", a.font);
  text("sf", a.symbol);
  text("rs", a.resrc);
  std::string all = out.str();
  if (!all.empty()) all.pop_back();
  return all;
}

/** Draws on a plane of 100 by 100 about (0, 0), which fills the square between the strips for
 * labels: one unit is 0.0092 of the page. */
class DatumTest : public MetaTest {
 protected:
  template <typename Draw>
  std::vector<Record> drawn(Draw draw) {
    return MetaTest::drawn([&](Plot& plot) {
      Domain plane;
      plane.set("xy,0,0,101,101,1,1");
      plot.setPanel(plane);
      plot.setFont("#device");
      plot.setLine("white");
      plot.setFill("white");
      draw(plot);
    });
  }
  /** Texts as "align x,y text", places in units of the plane. */
  std::vector<std::string> texts() const {
    std::vector<std::string> list;
    std::istringstream lines(dir.read("m"));
    std::string align;
    for (std::string row; std::getline(lines, row);) {
      if (row.starts_with("TALIGN ")) {
        align = row.substr(7);
      } else if (row.starts_with("T ")) {
        double x = 0;
        double y = 0;
        int used = 0;
        std::sscanf(row.c_str(), "T %lf,%lf %n", &x, &y, &used);
        char place[60];
        std::snprintf(place, sizeof place, " %.2f,%.2f ", toPlane(x), toPlane(y));
        list.push_back(align + place + row.substr(static_cast<size_t>(used)));
      }
    }
    return list;
  }
  static double toPlane(double v) { return (v - 0.5) / 0.0092 + 0.0; }
  /** The strokes and shapes as places in units of the plane. */
  static std::string shape(const std::vector<Record>& records) {
    std::string all;
    for (const Record& r : records) {
      all += all.empty() ? "" : " | ";
      all += r.kind;
      for (const Record::Place& p : r.points) {
        char text[60];
        std::snprintf(text, sizeof text, " %.2f,%.2f", std::round(toPlane(p.x) * 100) / 100 + 0.0,
                      std::round(toPlane(p.y) * 100) / 100 + 0.0);
        all += text;
      }
    }
    return all;
  }
};

using Texts = std::vector<std::string>;

}  // namespace

TEST(DatumAttrTest, FirstRowThatFitsActs) {
  const struct {
    const char* text;
    const char* expected;
  } rows[] = {{"value,ur,fm=%.1f,co=red", "ty2 dx0.012 dy0.02 ha1 va3 fm%.1f cored"},
              {"tc", "dx0 dy0.012 ha2 va3"},
              {"br,wx", "ty13 dx0.012 dy-0.012 ha1 va3"},
              {"lc,cloud", "ty6 dx0 dy-0.02 ha2 va3"},
              {"values,urx,xl", "coxl"},
              {"xy=2 -1", "dx0.024 dy-0.02 ha1 va3"},
              {"\"xy=-2,3\"", "dx-0.024 dy0.06 ha3 va3"},
              {"xy=0", "dx0 dy0.02 ha2 va3"},
              {"xy=nan inf", "dx0.012 dy0.02 ha1 va3"},
              {"sc=5000", "sc1"},
              {"sc=0.009", "sc1"},
              {"sc=1000,hi=2,wi=3,te=1.5,sh=4", "sc1000 hi2 wi3 ex1.5 sh4"},
              {"exp=.5,mn=-1,mx=3,sk=2,rs=a,sf=b,fo=c", "ex0.5 mn-1 mx3 sk2 foc sfb rsa"},
              {"hi=nan,wi=x,sh=", ""},
              {"ta=rt,red", "ha3 va1 cored"},
              {"ta=xs", "ha2 va4"},
              {"ta=LB", "ha1 va5"},
              {"bold,ta=lc", "ha2 va3 cobold"},
              {"mk=Circle", "mk4"},
              {"mk=itri", "mk9"},
              {"mk=17", "mk17"},
              {"mk=none", ""},
              {"fm=%.12345678f", "fm%.1234567"},
              {"co=a.name.that.goes.on.and.on", "coa.name.that.goes.on"},
              {nullptr, ""}};
  for (const auto& row : rows) {
    EXPECT_EQ(describe(DatumAttr(row.text)), row.expected) << (row.text != nullptr ? row.text : "");
  }
}

TEST(DatumAttrTest, ValuesOfADatum) {
  Datum datum(EarthPoint(1, 2));
  EXPECT_EQ(datum.setValue(5, 1) + datum.setValue(-1, 1), 0);
  for (const float v : {Const::FMISS, 2.0F}) {
    datum.setValue(0, v);
    datum.offsetValue(0, 3);
    datum.scaleValue(0, 2);
    EXPECT_EQ(datum.getValue(0), v == 2.0F ? 10.0F : Const::FMISS);
  }
  datum.setFormat("ul");
  datum.addFormat("co=red");
  EXPECT_STREQ(datum.getFormat(), "ul,co=red");
}

TEST_F(DatumTest, TextsStandWhereTheFormatPutsThem) {
  // S is 100 at scale 1: the position ur is 1.2 to the right and 2 up.
  const auto draw = [&](int type, float value, const char* data, const char* format) {
    drawn([&](Plot& plot) {
      DatumPlot dplot;
      Datum datum(EarthPoint(10, -20));
      datum.setType(type);
      datum.setValue(0, value);
      datum.setData(data);
      datum.setFormat((std::string("fo=#device,") + format).c_str());
      EXPECT_EQ(dplot.draw(plot, datum), 1);
    });
    return texts();
  };
  constexpr float none = Const::FMISS;
  EXPECT_EQ(draw(Datum::TEXT, none, "B4", "ul"), (Texts{"3 2 8.80,-18.00 B4"}));
  EXPECT_EQ(draw(Datum::VALUE, 12.26F, "B4", "fm=%.1f,lr"), (Texts{"1 2 11.20,-22.00 12.3"}));
  EXPECT_EQ(draw(Datum::VALUE, 12.5F, "", "sc=2,tr"), (Texts{"1 2 12.40,-17.60 12"}));
  EXPECT_EQ(draw(Datum::VALUE, none, "B4", ""), Texts());
  EXPECT_EQ(draw(Datum::DATA, none, "B4", ""), (Texts{"2 2 10.00,-20.00 B4"}));
  EXPECT_EQ(draw(Datum::DATA, 3, "B4", ""), (Texts{"2 2 10.00,-20.00 3"}));
  EXPECT_EQ(draw(Datum::DATA, none, "B4", "%.0f"), Texts()) << "a format asks for the value";
  EXPECT_EQ(draw(Const::MISS, 3, "B4", "text"), (Texts{"2 2 10.00,-20.00 B4"}));
  EXPECT_EQ(draw(Datum::VALUE, 3, "", "%s%n"), (Texts{"2 2 10.00,-20.00 3"}))
      << "what is no number format counts as none";
  EXPECT_EQ(draw(5, 3, "B4", ""), Texts()) << "no such kind";
  EXPECT_EQ(draw(Datum::TEXT, none, std::string(60, 'x').c_str(), ""),
            (Texts{"2 2 10.00,-20.00 " + std::string(39, 'x')}));
}

TEST_F(DatumTest, WindsAndLines) {
  const auto draw = [&](int type, float a, float b, const char* data, const char* format = "") {
    return shape(drawn([&](Plot& plot) {
      DatumPlot dplot;
      Datum datum(EarthPoint(10, 20));
      datum.setType(type);
      datum.setValue(0, a);
      datum.setValue(1, b);
      datum.setData(data);
      datum.setFormat(format);
      dplot.draw(plot, datum);
    }));
  };
  // A staff of 5 units from the west, 10 knots: one barb at its end.
  const std::string staff10 = " | L 9.00,20.00 5.00,20.00";
  EXPECT_EQ(draw(Datum::CBARB, 270, 10, ""), "L 5.00,20.00 4.40,22.50" + staff10)
      << "the staff begins at the circle's edge";
  EXPECT_EQ(draw(Datum::CBARB, -1, 10, ""), "");
  EXPECT_EQ(draw(Datum::WBARB, 270, Const::FMISS, ""), "");
  EXPECT_EQ(draw(Datum::WBARB, 270, -1e12F, ""), "");
  const std::string calm = draw(Datum::CBARB, -1, 0, "");
  EXPECT_EQ(calm.substr(0, 26), "L 10.00,21.30 10.65,21.13 ") << "a circle of chords, no staff";
  // 54 knots is 1 unit of 100 km an hour; a head of 0.2 of the vector.
  EXPECT_EQ(draw(Datum::VECT, 270, 53.9957F, ""),
            "L 10.00,20.00 15.00,20.00 | L 15.00,20.00 14.00,19.00 | L 15.00,20.00 14.00,21.00");
  // 100 km an hour for 3 hours, with strokes every hour and half hour.
  EXPECT_EQ(draw(Datum::TRACK, 270, 53.9957F, "", "track,mx=3,exp=0"),
            "L 10.00,20.00 13.00,20.00 | L 11.00,22.00 11.00,18.00 | L 12.00,22.00 12.00,18.00 | "
            "L 10.50,21.00 10.50,19.00 | L 11.50,21.00 11.50,19.00 | L 12.50,21.00 12.50,19.00");
  EXPECT_EQ(draw(Datum::TRACK, 270, Const::FMISS, ""), "");
  EXPECT_EQ(draw(Datum::LINE, -5, 7, ""), "L 10.00,20.00 -5.00,7.00");
  EXPECT_EQ(draw(Datum::LINE, Const::FMISS, 7, "post"), "");
  EXPECT_EQ(draw(Datum::DATA, 7, 0, "", "mk=x"),
            "L 9.10,19.10 10.90,20.90 | L 9.10,20.90 10.90,19.10");
  // A scale that would leave any page is put right; strokes by the million aren't drawn.
  EXPECT_LT(draw(Datum::TRACK, 270, 10, "", "mx=1e9").size(), 100000U);

  EXPECT_EQ(shape(drawn([](Plot& plot) {
              DatumPlot dplot;
              dplot.draw(plot, 0, 0, Datum::LINE, "post", "");
              dplot.draw(plot, 0, 9, Datum::DATA, "", "");
              dplot.draw(plot, 3, 9, Datum::LINE, "pre", "");
            })),
            "L 0.00,0.00 0.00,9.00 | L 0.00,9.00 3.00,9.00");
}

TEST_F(DatumTest, BarbsCountTheKnots) {
  // A staff of 25 units: pennants, full and half barbs by the height where they begin, 3 apart.
  const struct {
    float speed;
    const char* strokes;
  } rows[] = {{3, "H22"},
              {7, "H22"},
              {10, "B25"},
              {15, "B25 H22"},
              {25, "B25 B22 H19"},
              {47, "B25 B22 B19 B16 H13"},
              {48, "P25"},
              {50, "P25"},
              {65, "P25 B19 H16"},
              {115, "P25 P22 B16 H13"},
              {300, "P25 P22 P19 P16 P13 P10"},
              {400, "P25 P22 P19 P16 P13 P10"}};
  for (const auto& row : rows) {
    std::string expected;
    std::istringstream words(row.strokes);
    char kind = 0;
    for (double y = 0; words >> kind >> y;) {
      const bool half = kind == 'H';
      const double rise = kind == 'B' ? 3 : 0;
      char text[90];
      std::snprintf(text, sizeof text, "%c 0.00,%.2f %.2f,%.2f", kind == 'P' ? 'F' : 'L', y,
                    half ? 6.25 : 12.5, y + (half ? 1.5 : rise));
      expected += text;
      std::snprintf(text, sizeof text, " 0.00,%.2f 0.00,%.2f", y - 3, y);
      expected += kind == 'P' ? text : "";
      expected += " | ";
    }
    expected += "L 0.00,2.00 0.00,25.00";
    const std::string twice = shape(drawn([&](Plot& plot) {
      plot.setDropShadow(2);
      EXPECT_EQ(WindPlot::drawBarb(plot, Point(0, 0), Wind(0, row.speed), 25, 2), 1);
      EXPECT_EQ(plot.getDropShadow(), 2);
    }));
    EXPECT_TRUE(twice.starts_with(expected + " | ")) << row.speed << ": " << twice;
    EXPECT_EQ(twice.substr(twice.size() / 2 + 2), expected) << "again, over its shadow";
  }
}

TEST_F(DatumTest, SizesAndSettingsOfShapes) {
  const auto draw = [&](int type, float a, float b, const char* data, const char* format,
                        const char* param = "", const char* attr = "",
                        const char* plane = nullptr) {
    return shape(drawn([&](Plot& plot) {
      if (plane != nullptr) {
        Domain other;
        other.set(plane);
        plot.setPanel(other);
      }
      DatumPlot dplot;
      dplot.setParam(param);
      dplot.setAttr(attr);
      Datum datum(plane != nullptr ? EarthPoint(80, 30) : EarthPoint(0, 0));
      datum.setType(type);
      datum.setValue(0, a);
      datum.setValue(1, b);
      datum.setData(data);
      datum.setFormat(format);
      dplot.draw(plot, datum);
    }));
  };
  // Circles begin at their top.
  EXPECT_TRUE(draw(Datum::CLOUD, 0, 0, "0", "").starts_with("L 0.00,1.00 "));
  EXPECT_TRUE(draw(Datum::WBARB, 0, 0, "", "").starts_with("L 0.00,0.30 "));
  EXPECT_TRUE(draw(Datum::AVECT, 0, 0, "", "").starts_with("L 0.00,0.60 "));
  const std::string both = draw(Datum::DBARB, 0, 0, "", "");
  EXPECT_NE(both.find("| L 0.00,0.60 "), std::string::npos) << both;
  // A symbol of 3 units about its place.
  EXPECT_EQ(draw(Datum::SYMB, 0, 0, "cross", ""),
            "L -1.05,-1.05 1.05,1.05 | L -1.05,1.05 1.05,-1.05");
  // One length whatever the speed: 1.852 x 5 units. The head goes back by a fifth of the vector, to
  // its sides by the expansion of that.
  EXPECT_EQ(draw(Datum::AVECT, 180, 40, "", "exp=.5"),
            "L 0.00,0.00 0.00,9.26 | L 0.00,9.26 -0.93,7.41 | L 0.00,9.26 0.93,7.41");
  EXPECT_EQ(draw(Datum::TRACK, 270, 53.9957F, "", "track,mx=1,exp=.5"),
            "L 0.00,0.00 1.00,0.00 | L 0.50,1.00 0.50,-1.00 | L 1.00,0.00 -1.00,-1.00 | "
            "L 1.00,0.00 -1.00,1.00");
  // Marks of 1.8 units, times the height and the scale, whoever sets them.
  const std::string twice = "L -1.80,0.00 1.80,0.00 | L 0.00,-1.80 0.00,1.80";
  EXPECT_EQ(draw(Datum::MARK, 0, 0, "plus", "hi=2"), twice);
  EXPECT_EQ(draw(Datum::MARK, 0, 0, "plus", "", "sc=2"), twice);
  EXPECT_EQ(draw(Datum::TEXT, 0, 0, "I", ""), "L 0.00,0.94 0.00,-0.86") << "50 of 105 below";
  EXPECT_EQ(draw(Datum::MARK, 0, 0, "plus", "hi=2,sh=1"), twice + " | " + twice);
  draw(Datum::TEXT, 0, 0, "I", "wi=3");
  EXPECT_NE(dir.read("m").find("TWID 3.00\n"), std::string::npos);
  // On a polar map a bearing turns with the meridian, here by 30 degrees, and a way takes the
  // factor 1.866 / (1 + sin 80) = 0.94.
  const char* polar = "ps,90,0,101,101,1,1";
  EXPECT_EQ(draw(Datum::TRACK, 30, 53.9957F, "", "track,mx=1,exp=0", "", "", polar),
            "L 5.20,-9.01 5.20,-9.95 | L 6.20,-9.48 4.20,-9.48");

  Zqv::putResrc("plot_scale", "2");
  EXPECT_EQ(draw(Datum::MARK, 0, 0, "plus", ""), twice);
  Zqv::putResrc("plot_scale", "1");
  Zqv::putResrc("format", "%.1f");
  draw(Datum::VALUE, 3, 0, "", "fm=%.3f,fo=#device");
  EXPECT_THAT(texts(), testing::ElementsAre("2 2 0.00,0.00 3.0")) << "ahead of the datum's";
  dir.write("own.clr", "red #010203\nEND\n");
  draw(Datum::MARK, 0, 0, "plus", "", ("co=red,ct=" + dir.at("own.clr")).c_str());
  EXPECT_NE(dir.read("m").find("CLR 66051\n"), std::string::npos) << "red of the own table";
}

TEST_F(DatumTest, ValuesTakeTheColourOfTheirClass) {
  Zqv::putResrc("color_fill", "0:off,10:red");
  Zqv::putResrc("color_data", "blue");
  int red = 0;
  const auto colors = [&](float value, const char* format) {
    std::vector<int> list;
    for (const Record& r : drawn([&](Plot& plot) {
           red = plot.getColorValue("red");
           DatumPlot dplot;
           dplot.draw(plot, EarthPoint(0, 0), Datum::DATA, value, format);
         })) {
      list.push_back(r.line_color);
    }
    return list;
  };
  const std::vector<int> drawn_in = colors(12, "mk=x");
  EXPECT_THAT(drawn_in, testing::ElementsAre(red, red));
  EXPECT_TRUE(colors(5, "mk=x").empty()) << "its class is off";
  EXPECT_EQ(colors(Const::FMISS, "mk=x").size(), 2U) << "no value, no class";
}

TEST_F(DatumTest, SkyCoverFillsTheCircle) {
  // Filled area in units of the circle of twelve chords, and strokes besides the circle.
  const struct {
    char code;
    double cover;
    size_t strokes;
  } rows[] = {{'0', 0, 0},   {'1', 0, 1},   {'2', 0.25, 0}, {'3', 0.25, 1},
              {'4', 0.5, 0}, {'5', 0.5, 1}, {'6', 0.75, 0}, {'7', 0.6778, 0},
              {'8', 1, 0},   {'9', 0, 2},   {'/', 0, 1}};
  for (const auto& row : rows) {
    const std::vector<Record> records =
        drawn([&](Plot& plot) { EXPECT_EQ(CloudPlot::draw(plot, Point(0, 0), 10, row.code), 1); });
    double area = 0;
    size_t lines = 0;
    for (const Record& r : records) {
      double twice = 0;
      for (size_t i = 0; r.kind == 'F' && i + 1 < r.points.size(); i++) {
        const Record::Place& p = r.points[i];
        const Record::Place& q = r.points[i + 1];
        twice += toPlane(q.x) * toPlane(p.y) - toPlane(p.x) * toPlane(q.y);
      }
      area += std::fabs(twice) / 2;
      lines += r.kind == 'L' ? 1 : 0;
    }
    EXPECT_NEAR(area / 300, row.cover, 1e-3) << row.code;  // 12 triangles of 10 x 10 x sin 30 / 2
    EXPECT_EQ(lines, row.strokes + 1) << row.code;
  }
  EXPECT_EQ(
      drawn([](Plot& plot) { EXPECT_EQ(CloudPlot::draw(plot, Point(0, 0), 1, 'Q'), 0); }).size(),
      0U);
}
