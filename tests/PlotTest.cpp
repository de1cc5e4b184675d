// Panels, labels, the colour bar and lines that wrap, read back from the metafile.

#include "Plot.h"

#include <gtest/gtest.h>

#include "EarthPoint.h"
#include "EarthPoints.h"
#include "GeomBox.h"
#include "MetaTest.h"
#include "PlotAttr.h"
#include "Point.h"

using namespace ZQV;

namespace {

class PlotTest : public MetaTest {
 protected:
  PlotTest() : MetaTest(",sz=1.5x1") {}
  static Domain domain(const char* text) {
    Domain d;
    d.set(text);
    return d;
  }
  /** The boxes of a bar that draw(plot) draws below a picture of 30 by 20. */
  template <typename Draw>
  std::vector<Record> fillsOf(Draw draw) {
    std::vector<Record> fills = drawn([&](Plot& plot) {
      plot.setPanel(domain("latlon,40,-100,31,21,1,1"));
      draw(plot);
    });
    std::erase_if(fills, [](const Record& r) { return r.kind != 'F'; });
    return fills;
  }
};

}  // namespace

TEST_F(PlotTest, PanelsShareThePage) {
  drawn([](Plot& plot) {
    plot.setPanel(domain("latlon,40,-100,31,21,1,1"));
    const struct {
      const char* text;
      float x, y, width, height;
    } rows[] = {{"2x2+0+0", 0, 0.5F, 0.75F, 0.5F},
                {"2x2+1+1", 0.75F, 0, 0.75F, 0.5F},
                {"9x9+7+7", 1.3125F, 0, 0.1875F, 0.125F},
                {"0.5x0.5", 0, 0, 0.75F, 0.5F}};
    for (const auto& row : rows) {
      EXPECT_EQ(plot.newPanel(row.text), 1) << row.text;
      Rect view;
      plot.getViewport(view);
      EXPECT_GE(view.xmin, row.x - 1e-5F) << row.text;
      EXPECT_LE(view.xmax, row.x + row.width + 1e-5F) << row.text;
      EXPECT_GE(view.ymin, row.y + row.height * 0.04F - 1e-5F) << row.text;
      EXPECT_LE(view.ymax, row.y + row.height * 0.96F + 1e-5F) << row.text;
    }
    EXPECT_EQ(plot.newPanel("nonsense"), 0);
    for (int i = 0; i < 40; i++) {
      plot.newPanel("2x2+0+0");  // the last panel is used again
    }
    EXPECT_EQ(plot.setPanel(16), 0);
  });
}

TEST_F(PlotTest, GeometryTexts) {
  GeomBox box;
  EXPECT_EQ(Plot::decodeGeometryStr("x", box), 0);
  EXPECT_EQ(Plot::decodeGeometryStr("640x480+10-20", box), 2);
  EXPECT_EQ(box.y, -20);
  EXPECT_EQ(Plot::decodeGeometryStr("-5+6", box), 3);
  EXPECT_EQ(box.width, Const::FMISS);
  EXPECT_EQ(box.x, -5);
}

TEST_F(PlotTest, SwitchesOfElements) {
  Plot plot;
  const struct {
    const char* text;
    const char* on;  // of the switches 0 to 9
  } rows[] = {
      {"", "1111111111"},         {"plot", "1000000000"},       {"-data,-text", "1010000000"},
      {"+map,sum", "1010000000"}, {"none", "0000000000"},       {"all,-bord", "1111111110"},
      {"text_lr", "0000000010"},  {"data,-data", "0000000000"}, {"Plot", "0000000000"}};
  for (const auto& row : rows) {
    plot.setDrawing(row.text);
    for (int i = 0; i <= 9; i++) {
      EXPECT_EQ(plot.isDrawing(i), row.on[i] == '1') << row.text << " " << i;
    }
  }
  EXPECT_FALSE(plot.isDrawing(10));
}

TEST_F(PlotTest, NothingIsDrawnInOff) {
  const std::vector<Record> records = drawn([](Plot& plot) {
    plot.setPanel(domain("latlon,40,-100,31,21,1,1"));
    plot.setLineColor("off");
    EXPECT_EQ(plot.drawLine(Point(0, 35), Point(3, 40)), 0);
    plot.setFill(PlotAttr("red"));
    plot.setFill(PlotAttr());  // no colour at all is none
    EXPECT_EQ(plot.drawFill(Rect(0, 35, 3, 40)), 0);
    plot.setTextColor("nosuchcolor");
    EXPECT_EQ(plot.drawText(0, 40, "x"), 0);
    plot.setLineColor("#ff8000");
    EXPECT_EQ(plot.drawLine(Point(0, 35), Point(3, 40)), 1);
  });
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0].line_color, 0xFF8000);
}

TEST_F(PlotTest, LinesAcrossTheDateLineAreDrawnTwiceAndCropped) {
  const std::vector<Record> records = drawn([](Plot& plot) {
    plot.setPanel(domain("latlon,0,0,361,181,1,1"));
    plot.setLineColor("red");
    plot.drawLine(EarthPoint(0, 170), EarthPoint(10, -170));
    EarthPoints line;
    line.add(0, 170);
    line.add(0, -170);
    line.add(0, -160);
    EXPECT_EQ(plot.drawLine(line), 1);
    Points fill(4);
    fill.add(175, 0);
    fill.add(-175, 0);
    fill.add(-175, 10);
    fill.add(175, 0);
    plot.setFillColor("red");
    const float before = fill.getX(1);
    plot.drawFill(fill);
    EXPECT_EQ(fill.getX(1), before) << "the caller's points stay";
  });
  // Two halves each; longitude x lies at (x + 180) / 360 of the page's 1.5.
  ASSERT_EQ(records.size(), 6U);
  EXPECT_NEAR(records[0].points[0].x, 350 / 360.0 * 1.5, 1e-4);
  EXPECT_NEAR(records[0].points[1].x, 1.5, 1e-4) << "cropped at 180 degrees east";
  EXPECT_NEAR(records[0].points[1].y - records[0].points[0].y, 5 / 180.0 * 0.75, 1e-4);
  EXPECT_NEAR(records[1].points[0].x, 0, 1e-4) << "and goes on at 180 degrees west";
  EXPECT_NEAR(records[1].points[1].x, 10 / 360.0 * 1.5, 1e-4);
  EXPECT_NEAR(records[2].points.back().x, 1.5, 1e-4);
  EXPECT_NEAR(records[3].points.front().x, 0, 1e-4);
  EXPECT_NEAR(records[3].points.back().x, 20 / 360.0 * 1.5, 1e-4);
  EXPECT_EQ(records[4].kind, 'F');
  EXPECT_NEAR(records[4].points[1].x, 365 / 360.0 * 1.5, 1e-4);
  EXPECT_NEAR(records[5].points[0].x, -5 / 360.0 * 1.5, 1e-4);
}

TEST_F(PlotTest, CropsLinesThatComeAndGo) {
  Plot plot;
  plot.setPanel(domain("latlon,0,0,361,181,1,1"));
  const struct {
    const char* fault;
    std::vector<float> x;
    std::vector<float> expected;
  } rows[] = {{"InsideStays", {0, 100, 170}, {0, 100, 170}},
              {"LeavesAndStaysOut", {170, 190, 200}, {170, 180}},
              {"ComesIn", {200, 190, 170}, {180, 170}},
              {"OutAndBack", {170, 190, 200, 190, 170}, {170, 180, Const::FMISS, 180, 170}},
              {"BackAtOnce", {170, 190, 170}, {170, 180, 170}},
              {"NeverIn", {190, 200, 210}, {}}};
  for (const auto& row : rows) {
    Points line;
    for (const float x : row.x) {
      line.add(x, x);
    }
    plot.cropLine(line);
    std::vector<float> got;
    for (int i = 0; i < line.getNum(); i++) {
      got.push_back(line.getX(i));
      if (line.getX(i) != Const::FMISS) {
        EXPECT_FLOAT_EQ(line.getY(i), line.getX(i)) << row.fault << ": moved along the line";
      }
    }
    EXPECT_EQ(got, row.expected) << row.fault;
  }
}

TEST_F(PlotTest, LabelsHoldTheirPlaces) {
  Zqv::putResrc("label", "lc:fixed %y,plain");
  Zqv::putResrc("color_text", "white");
  const std::vector<Record> records = drawn([](Plot& plot) {
    plot.setPanel(domain("latlon,40,-100,31,21,1,1"));
    Date date;
    date.set("20040305");
    plot.setDate(date);
    plot.addLabel("ul", "hidden by the fixed one");
    plot.addLabel("ur", "I");
    plot.done();
    plot.addLabel("ur", "I");
    plot.done();
    plot.drawLabels();
  });
  // The letter I is one upright stroke: two of them at the right, one above the other.
  std::vector<Record> strokes;
  for (const Record& r : records) {
    if (r.points[0].x > 1.4) {
      strokes.push_back(r);
    }
  }
  ASSERT_EQ(strokes.size(), 2U);
  const double top = 0.96;
  EXPECT_GT(strokes[0].points[0].y, top);
  EXPECT_LT(strokes[0].points[0].x, 1.485 + 1e-3) << "one percent in from the edge";
  EXPECT_GT(std::min(strokes[1].points[0].y, strokes[1].points[1].y),
            std::max(strokes[0].points[0].y, strokes[0].points[1].y));
  bool below = false;
  for (const Record& r : records) {
    below = below || r.points[0].y < 0.04;
    EXPECT_FALSE(r.points[0].x < 0.3 && r.points[0].y > 0.5 && r.points[0].x > 0.25)
        << "the layer's label gives way to a fixed one";
  }
  EXPECT_TRUE(below) << "the fixed label below the picture";
}

TEST_F(PlotTest, LabelCodes) {
  Plot plot;
  Date date;
  date.set("200403050915");
  plot.setDate(date);
  plot.setDataSource("KTLX");
  const struct {
    const char* format;
    const char* expected;
  } rows[] = {{"a_b%%", "a b%"},         {"%Y %y %m %b %d %h %n", "2004 04 03 MAR 05 09 15"},
              {"%D", "0915Z  5 MAR 04"}, {"%f%F.", "."},
              {"%q %", "%q %"},          {"%s%n%n", "%s1515"}};
  for (const auto& row : rows) {
    String made;
    plot.formatLabel(row.format, made);
    EXPECT_STREQ(made.get(), row.expected);
  }
  String made;
  plot.formatLabel(std::string(300, 'x').c_str(), made);
  EXPECT_EQ(made.getLength(), 99);
  int stored = 0;
  for (int i = 0; i < 40; i++) {
    stored += plot.addLabel("ul", "x");
  }
  EXPECT_EQ(stored, 30);
}

TEST_F(PlotTest, SplinesAreSampledAlongTheirLength) {
  const auto curve = [&](std::initializer_list<Point> list, const char* color, int expected) {
    Points points;
    for (const Point& p : list) {
      points.add(p);
    }
    return drawn([&](Plot& plot) {
      plot.setPanel(domain("latlon,0,0,361,181,1,1"));  // 2:1 on the page of 1.5 by 1
      plot.setLine(color);
      EXPECT_EQ(plot.drawSpline(points), expected);
    });
  };
  std::vector<Record> records = curve({{-80, 0}, {-70, 10}, {-60, 0}}, "white", 1);
  ASSERT_EQ(records.size(), 1U);
  ASSERT_EQ(records[0].points.size(), 13U);
  const double degree = 1.5 / 360;
  EXPECT_NEAR(records[0].points[6].x, 110 * degree, 1e-5);
  EXPECT_NEAR(records[0].points[6].y, 0.5 + 10 * degree, 1e-5);
  EXPECT_NEAR(records[0].points[3].y, 0.5 + 6.875 * degree, 1e-5) << "rounder than the chord";
  EXPECT_EQ(curve({{-80, 0}, {-70, 10}, {-60, 0}}, "off", 0).size(), 0U);
  EXPECT_EQ(curve({{100, 0}, {100, 0}}, "white", 0).size(), 0U) << "no length";
}

TEST_F(PlotTest, ColourBarShowsItsClasses) {
  const auto bar_of = [&](const char* fill_text, const Range& range, const char* param) {
    return fillsOf([&](Plot& plot) {
      plot.setParam(param);
      ColorFill fill;
      fill.set(plot.getColorMap(), fill_text);
      if (!fill.areValuesSet()) {
        fill.setBase(0);
        fill.setInterval(10);
      }
      plot.setBar(fill, range);
      plot.drawBar();
    });
  };
  std::vector<Record> boxes = bar_of("-100:off,0:blue,10:red", Range(), nullptr);
  ASSERT_EQ(boxes.size(), 2U) << "the class that is off has no box";
  // A picture of 1.38 by 0.92 on the page of 1.5 by 1: the bar from 3 % to the middle, in the strip
  // below.
  const double left = 0.06 + 1.38 * 0.03;
  const double width = (0.06 + 0.69 - left) / 3;
  EXPECT_NEAR(boxes[0].points[0].x, left + width, 1e-4);
  EXPECT_NEAR(boxes[1].points[2].x, left + 3 * width, 1e-4);
  EXPECT_NEAR(boxes[0].points[1].y, 0.04 - 0.15 * 0.04, 1e-4);
  EXPECT_NEAR(boxes[0].points[0].y, 0.04 - (0.15 + 0.85 / 2) * 0.04, 1e-4);
  EXPECT_EQ(bar_of("-100:off,0:blue,10:red,20:green", Range(0, 12), nullptr).size(), 2U);
  EXPECT_EQ(bar_of("blue,red", Range(0, 50), nullptr).size(), 5U) << "a cycle over the range";
  boxes = bar_of("blue,red", Range(), "bar=lo=ur");
  ASSERT_EQ(boxes.size(), 2U);
  EXPECT_EQ(boxes[1].points[2].x, 0) << "another corner has no layout";
}

TEST_F(PlotTest, EnhancementBarShowsClassesOrAllCodes) {
  const auto bar_of = [&](const char* text) {
    return fillsOf([&](Plot& plot) {
      Enhance table;
      table.set(plot.getColorMap(), text);
      plot.setBar(table);
      EXPECT_EQ(plot.drawBar(), table.getNum() > 0 ? 1 : 0);
    });
  };
  const double left = 0.06 + 1.38 * 0.03;  // as above
  const double right = 0.06 + 0.69;
  const double top = 0.04 - 0.15 * 0.04;
  std::vector<Record> boxes = bar_of("c0:blue,c10:off,c20:red,c30:green");
  ASSERT_EQ(boxes.size(), 3U) << "the class that is off has no box";
  EXPECT_NEAR(boxes[1].points[0].x, left + (right - left) / 2, 1e-4);
  EXPECT_NEAR(boxes[1].points[0].y, 0.04 - (0.15 + 0.85 / 2) * 0.04, 1e-4) << "the upper half";
  EXPECT_NEAR(boxes[2].points[2].x, right, 1e-4);
  boxes = bar_of("64:blue,128:red");
  ASSERT_EQ(boxes.size(), 192U) << "of 256 codes, 64 below the first threshold";
  EXPECT_NEAR(boxes[0].points[0].x, left + (right - left) / 4, 1e-4);
  EXPECT_NEAR(boxes[0].points[0].y, 0.0, 1e-4) << "the whole height";
  EXPECT_NEAR(boxes[0].points[1].y, top, 1e-4);
  EXPECT_NE(boxes[63].fill_color, boxes[64].fill_color);
  EXPECT_EQ(boxes[64].fill_color, boxes[191].fill_color);
  EXPECT_TRUE(bar_of("none.enh").empty());
}
