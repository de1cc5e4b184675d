#include "Graph.h"

#include <limits>
#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RecordingDevice.h"
#include "ScratchDir.h"

namespace ZQV {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();

/** A page of 1000 by 500 screen units, so 2 by 1 in normalised coordinates, y turned over. "A" is a
 * slanted stroke of width 40 from the baseline up, "B" two of width 20. */
class GraphTest : public testing::Test {
 protected:
  GraphTest() {
    dir.write("modern.fnt", "0 A 128 35 40 140 255 B 128 35 0 140 148 35 20 140 254");
    dir.write("other.fnt", "0 A 128 35 10 35 254");
    dir.write("wx.smb", "tee L 0,1 1,1 L 0.5,1 0.5,0 $ one 0,0 1,1 $");
    dir.write("zqv.fnl", "mono other.fnt\ncourier #-courier-{36}-*\nfixed #fixed\nbad none.fnt\n");
    graph.setDevice(std::make_unique<RecordingDevice>(lines), "x,y");
    EXPECT_EQ(graph.open(), 1);
    lines.clear();
  }
  /** What the device was told since the last call. */
  RecordingDevice::Lines told() {
    RecordingDevice::Lines result;
    result.swap(lines);
    return result;
  }

  /** The same in one line, without the names of drawings. */
  std::string places() {
    std::string text;
    for (const std::string& line : told()) {
      text += (text.empty() ? "" : " | ") + line.substr(line.find(' ', line.find(' ') + 1) + 1);
    }
    return text;
  }

  ScratchDir dir;
  RecordingDevice::Lines lines;
  Graph graph;
};

std::string text(const Rect& r) {
  char buffer[100];
  std::snprintf(buffer, sizeof(buffer), "%.4g %.4g %.4g %.4g", static_cast<double>(r.xmin),
                static_cast<double>(r.ymin), static_cast<double>(r.xmax),
                static_cast<double>(r.ymax));
  return buffer;
}

TEST_F(GraphTest, TurnsWindowsIntoDeviceCoordinates) {
  EXPECT_EQ(text(graph.getMaxViewport()), "0 0 2 1");
  graph.setViewport(1, Rect(0.5F, 0.25F, 1.5F, 0.75F));
  graph.setWindow(1, Rect(-10.0F, 100.0F, 10.0F, 200.0F));
  EXPECT_EQ(graph.activateTran(1), 1);
  graph.drawLine(-10.0F, 100.0F, 10.0F, 200.0F);
  graph.drawLine(0.0F, 150.0F, 1e9F, -1e9F);
  graph.drawLine(NOT_A_NUMBER, 150.0F, 0.0F, 200.0F);
  EXPECT_THAT(told(), ElementsAre("clip 250,125 750,375", "line 1 250,375 750,125",
                                  "line 1 500,250 30000,30000", "line 1 -30000,250 500,125"));
  float x = 0.0F;
  float y = 0.0F;
  graph.tranPlotWindow(250.0F, 375.0F, x, y);
  EXPECT_FLOAT_EQ(x, -10.0F);
  EXPECT_FLOAT_EQ(y, 100.0F);
  graph.tranPlotView(500.0F, 125.0F, x, y);
  EXPECT_FLOAT_EQ(x, 1.0F);
  EXPECT_FLOAT_EQ(y, 0.75F);
  EXPECT_EQ(graph.tranWindow(1, 0.0F, 150.0F, 0, x, y), 1);
  EXPECT_FLOAT_EQ(x, 1.0F);
  EXPECT_FLOAT_EQ(y, 0.5F);
  EXPECT_EQ(graph.tranWindow(1, 0.0F, 150.0F, 4, x, y), 0);
}

TEST_F(GraphTest, WindowsWithoutExtentMapToOnePlace) {
  graph.setWindow(Rect(3.0F, 0.0F, 3.0F, 0.0F));
  graph.drawLine(3.0F, 0.0F, 9.0F, 9.0F);
  EXPECT_THAT(told(), ElementsAre("line 1 0,500 0,500"));
  float x = 0.0F;
  float y = 0.0F;
  graph.tranPlotWindow(500.0F, 250.0F, x, y);
  EXPECT_EQ(x, 3.0F);
  GTran tran;
  tran.set(Rect(5.0F, 5.0F, 5.0F, 5.0F));
  EXPECT_EQ(text(tran.getMaxViewport()), "0 0 1 1") << "device without extent";
}

TEST_F(GraphTest, ViewportsKeepTheirShape) {
  struct Row {
    const char* fault;
    Rect rect;
    float aspect;
    int halign;
    int valign;
    const char* view;
  };
  Rect margins;
  margins.xmin = margins.ymin = margins.xmax = margins.ymax = -0.05F;
  const float inf = std::numeric_limits<float>::infinity();
  const Row rows[] = {{"Margins", margins, 0.0F, 2, 2, "0.05 0.05 1.95 0.95"},
                      {"WideCentred", Rect(0, 0, 2, 1), 4.0F, 2, 2, "0 0.25 2 0.75"},
                      {"WideBottom", Rect(0, 0, 2, 1), 4.0F, 1, 1, "0 0 2 0.5"},
                      {"WideTop", Rect(0, 0, 2, 1), 4.0F, 3, 3, "0 0.5 2 1"},
                      {"TallLeft", Rect(0, 0, 2, 1), 0.5F, 1, 2, "0 0 0.5 1"},
                      {"TallRight", Rect(0, 0, 2, 1), 0.5F, 3, 2, "1.5 0 2 1"},
                      {"TallCentred", Rect(0, 0, 2, 1), 0.5F, 0, 0, "0.75 0 1.25 1"},
                      {"AspectOfOneRow", Rect(0, 0, 2, 1), inf, 2, 2, "0 0 2 1"},
                      {"NoAspect", Rect(0, 0, 2, 1), NOT_A_NUMBER, 2, 2, "0 0 2 1"},
                      {"NoExtent", Rect(1, 0.5F, 1, 0.5F), 1.0F, 2, 2, "1 0.5 1 0.5"}};
  for (const Row& row : rows) {
    graph.setViewportAspect(row.rect, row.aspect, row.halign, row.valign);
    EXPECT_EQ(text(graph.getViewport()), row.view) << row.fault;
  }
}

TEST_F(GraphTest, RedrawGoesBackToTheWholeDevice) {
  graph.setViewport(1, Rect(0.5F, 0.25F, 1.5F, 0.75F));
  graph.setWindow(1, Rect(-10.0F, 100.0F, 10.0F, 200.0F));
  graph.setTran(1);
  graph.callback("Expose", "", nullptr);
  EXPECT_THAT(told(), IsEmpty());
  graph.setSize(600.0F, 600.0F);
  graph.callback("Redraw", "600:600", nullptr);
  EXPECT_THAT(told(), ElementsAre("clip 0,0 600,600"));
  EXPECT_EQ(text(graph.getWindow()), "0 0 1 1");
  EXPECT_EQ(text(graph.getViewport()), "0 0 1 1");
}

TEST_F(GraphTest, DrawsShapes) {
  graph.drawRect(Rect(0.2F, 0.4F, 1.0F, 0.8F));
  graph.drawFill(Rect(0.2F, 0.4F, 1.0F, 0.8F));
  EXPECT_THAT(told(), ElementsAre("polyline 1 100,300 500,300 500,100 100,100 100,300",
                                  "fill 3 100,300 100,100 500,100 500,300 100,300"));
  graph.drawCircle(1.0F, 0.5F, 0.2F);
  const std::string circle = told()[0];
  EXPECT_THAT(circle, testing::StartsWith("polyline 1 500,150 508.72,150.38 "));
  EXPECT_THAT(circle, HasSubstr(" 600,250 ")) << "clockwise from the top";
  EXPECT_EQ(std::count(circle.begin(), circle.end(), ','), 73);
}

TEST_F(GraphTest, ShadowsOfLinesLieBelowThem) {
  Points p;
  p.add(0.0F, 0.5F);
  p.add(1.0F, 0.5F);
  graph.setLineColor(7);
  graph.setLineWidth(2.0F);
  graph.setDropColor(3);
  graph.setDropWidth(4.0F);
  graph.setDropShadow(2);
  told();
  graph.drawLine(p);
  EXPECT_THAT(told(), ElementsAre("color 1 3", "width 1 4", "polyline 1 1,251 501,251",
                                  "polyline 1 2,252 502,252", "width 1 2", "color 1 7",
                                  "polyline 1 0,250 500,250"));
  graph.setDropShadow(1000000);
  EXPECT_EQ(graph.getDropShadow(), Graph::MAX_SHADOW);
  graph.setDropShadow(-3);
  EXPECT_EQ(graph.getDropShadow(), 0);
}

TEST_F(GraphTest, PlacesTextByAlignment) {
  // A text height of 0.21 is 105 device units, so that a font unit is a device unit. "A" is 40
  // wide.
  constexpr struct {
    const char* fault;
    int halign;
    int valign;
    const char* line;
  } rows[] = {{"Default", 0, 0, "polyline 4 500,250 540,145"},
              {"TopLeft", 1, 1, "polyline 4 500,375 540,270"},
              {"CapCentre", 2, 2, "polyline 4 480,355 520,250"},
              {"HalfRight", 3, 3, "polyline 4 460,300 500,195"},
              {"Base", 1, 4, "polyline 4 500,250 540,145"},
              {"Bottom", 1, 5, "polyline 4 500,215 540,110"}};
  graph.setTextHeight(0.21F);
  for (const auto& row : rows) {
    graph.setTextAlign(row.halign, row.valign);
    graph.drawText(1.0F, 0.5F, "A");
    EXPECT_THAT(told(), ElementsAre(row.line)) << row.fault;
  }
}

TEST_F(GraphTest, AdvancesFromCharacterToCharacter) {
  constexpr struct {
    const char* fault;
    const char* text;
    float char_width;
    float expan;
    const char* places;
  } rows[] = {{"GapOf25", "AA", 0.0F, 1.0F, "0,250 40,145 | 65,250 105,145"},
              {"Blank", "A A", 0.0F, 1.0F, "0,250 40,145 | 130,250 170,145"},
              {"Unknown", "A\xffZA", 0, 1.0F, "0,250 40,145 | 65,250 105,145"},
              {"Expanded", "AA", 0.0F, 2.0F, "0,250 80,145 | 130,250 210,145"},
              {"Fixed", "A A", 1.0F, 1.0F, "30,250 70,145 | 280,250 320,145"},
              {"Nothing", "", 0.0F, 1.0F, ""}};
  graph.setTextHeight(0.21F);
  for (const auto& row : rows) {
    graph.setTextCharWidth(row.char_width);
    graph.setTextExpansion(row.expan);
    graph.drawText(0.0F, 0.5F, row.text);
    EXPECT_EQ(places(), row.places) << row.fault;
  }
  graph.setTextCharWidth(0.0F);
  graph.setTextExpansion(1.0F);
  graph.setTextAlign(Graph::HALIGN_RIGHT, Graph::VALIGN_BASE);
  graph.drawText(1.0F, 0.5F, "A A");
  EXPECT_EQ(told()[1], "polyline 4 460,250 500,145") << "the last character has no gap";
}

TEST_F(GraphTest, TurnsTextAndItsRows) {
  graph.setTextHeight(0.21F);
  graph.drawText(1.0F, 0.5F, "A\nA");
  EXPECT_THAT(told(), ElementsAre("polyline 4 500,250 540,145", "polyline 4 500,386.5 540,281.5"));
  EXPECT_EQ(graph.setTextDirection(-3.0F, 0.0F), 1);
  graph.drawText(1.0F, 0.5F, "A\n\nA");
  EXPECT_THAT(told(), ElementsAre("polyline 4 500,250 395,210", "polyline 4 773,250 668,210"));
  EXPECT_EQ(graph.setTextDirection(0.0F, 0.0F), 0) << "no direction";
}

TEST_F(GraphTest, ShadowsOfTextBeginBelowIt) {
  graph.setTextHeight(0.21F);
  graph.setTextColor(9);
  graph.setDropColor(3);
  graph.setDropShadow(2);
  told();
  graph.drawText(0.0F, 0.5F, "A");
  EXPECT_THAT(told(), ElementsAre("color 4 3", "polyline 4 0,250 40,145", "polyline 4 1,251 41,146",
                                  "color 4 9", "polyline 4 0,250 40,145"));
}

TEST_F(GraphTest, DrawsTextInTheDevicesFont) {
  EXPECT_EQ(graph.setFont("fixed"), 1);
  EXPECT_EQ(graph.setFont("fixed"), 0);
  graph.setTextAlign(3, 2);
  graph.drawFormText(1.0F, 0.5F, "%d%%\nof all", 12);
  EXPECT_THAT(told(),
              ElementsAre("font fixed", "align 3 1", "text 500,250 12%", "text 500,256.5 of all"));
  graph.setTextHeight(0.05F);
  EXPECT_EQ(graph.setFont("courier"), 1);
  graph.setTextHeight(0.02F);
  EXPECT_THAT(told(), ElementsAre("font -courier-65-*", "font -courier-26-*"))
      << "the size follows the height";
  EXPECT_EQ(graph.setFont("#direct"), 1);
  EXPECT_THAT(told(), ElementsAre("font direct"));
  EXPECT_EQ(graph.setFont("mono"), 1);
  graph.setTextHeight(0.21F);
  graph.setTextAlign(1, 4);
  graph.drawText(0.0F, 0.5F, "A");
  EXPECT_THAT(told(), ElementsAre("polyline 4 0,250 10,250"));
  for (const char* name : {"nowhere", "bad", "", "|touch x"}) {
    EXPECT_EQ(graph.setFont(name), 0) << name;
  }
  EXPECT_EQ(graph.setFont(nullptr), 0);
  graph.drawText(0.0F, 0.5F, "A");
  EXPECT_THAT(told(), ElementsAre("polyline 4 0,250 10,250")) << "the font stays";
  EXPECT_EQ(graph.setFont("modern.fnt"), 1) << "a font file that isn't in the list";
}

TEST_F(GraphTest, DrawsMarks) {
  const char* marks[] = {
      "500,250 510,250 510,240 500,240 500,250",
      "450,250 550,250 | 500,300 500,200",
      "450,250 550,250 | 450,300 550,200 | 500,300 500,200 | 450,200 550,300",
      ("450,250 456.7,225 475,206.7 500,200 525,206.7 543.3,225 550,250 543.3,275 525,293.3 "
       "500,300 475,293.3 456.7,275 450,250"),
      "450,300 550,200 | 450,200 550,300",
      "450,200 550,200 550,300 450,300 450,200",
      "450,300 550,300 500,200 450,300",
      "500,250 505,245",
      "450,200 550,200 500,300 450,200",
      "500,200 525,250 475,250 500,300",
      ""};
  graph.setMarkSize(0.2F);
  for (int i = 0; i < 11; i++) {
    graph.setMarkType(i + 1);
    EXPECT_EQ(graph.drawMark(1.0F, 0.5F), i < 10 ? 1 : 0);
    EXPECT_EQ(places(), marks[i]) << i + 1;
  }
  graph.setMarkType(8);
  graph.setDropShadow(2);
  graph.setMarkColor(5);
  told();
  graph.drawMark(1.0F, 0.5F);
  EXPECT_THAT(told(), ElementsAre("color 2 1", "line 2 500,250 505,245", "line 2 501,251 506,246",
                                  "color 2 5", "line 2 500,250 505,245"));
}

TEST_F(GraphTest, DrawsSymbolsWithShadows) {
  EXPECT_EQ(graph.drawSymbol(1.0F, 0.5F, "tee", 0.2F), 1);
  EXPECT_THAT(told(), ElementsAre("polyline 1 500,150 600,150", "polyline 1 550,150 550,250"));
  graph.setTextAlign(3, 1);
  graph.drawSymbol(1.0F, 0.5F, "one", 0.2F);
  graph.setTextAlign(2, 3);
  graph.drawSymbol(1.0F, 0.5F, "one", 0.2F);
  EXPECT_THAT(told(), ElementsAre("polyline 1 400,350 500,250", "polyline 1 450,300 550,200"));
  graph.setDropShadow(1);
  graph.drawSymbol(1.0F, 0.5F, "one", 0.2F);
  EXPECT_EQ(told().size(), 6U);
  EXPECT_EQ(graph.drawSymbol(1.0F, 0.5F, "none", 0.2F), 0);
}

TEST_F(GraphTest, PassesOnTheRest) {
  graph.newFrame();
  graph.message("%s %d", "Logo:", 3);
  EXPECT_THAT(told(), ElementsAre("display -1", "new -1", "frame -1", "message Logo: 3"));
  graph.manage();
  EXPECT_THAT(told(), ElementsAre("update", "manage"));
  EXPECT_EQ(graph.addCallback("AnyEvent", nullptr, nullptr), 0) << "once it is managed";
  EXPECT_EQ(graph.close(), 1);
  EXPECT_EQ(graph.close(), 0);
  EXPECT_EQ(graph.drawMark(1.0F, 1.0F) + graph.drawText(0.0F, 0.0F, "A") + graph.setLineColor(3),
            0);
}

}  // namespace
}  // namespace ZQV
