#include <cmath>
#include <limits>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ColorFile.h"
#include "ColorFill.h"
#include "ColorMap.h"
#include "Const.h"
#include "PlotAttr.h"
#include "RGB.h"
#include "ScratchDir.h"
#include "Zqv.h"

namespace ZQV {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/** black, Red, blue. */
ColorMap smallMap() {
  ColorMap map(8);
  map.add("black", 0.0F, 0.0F, 0.0F);
  map.add("Red", 1.0F, 0.0F, 0.0F);
  map.add("blue", 0.0F, 0.0F, 1.0F);
  map.setNumFill(2);
  return map;
}

std::string channels(const ColorMap& map, int i) {
  RGB rgb;
  map.get(i, rgb);
  char text[60];
  std::snprintf(text, sizeof(text), "%.3f,%.3f,%.3f", static_cast<double>(rgb.red),
                static_cast<double>(rgb.grn), static_cast<double>(rgb.blu));
  return text;
}

TEST(ColorMapTest, TranslatesColourTexts) {
  constexpr struct {
    const char* fault;
    const char* text;
    int ind;
  } rows[] = {{"AbsentText", nullptr, -1},
              {"EndOfTheList", "END", -2},
              {"NoColour", "none", -1},
              {"Back", "back", -1},
              {"FixedPenFirst", "PBLK", 500},
              {"FixedPenLast", "ptgry", 508},
              {"CaseOfNames", "RED", 1},
              {"NumberUnchecked", "12", 12},
              {"NumberThenText", "2nd", 2},
              {"NumberBeyondInt", "99999999999", std::numeric_limits<int>::max()},
              {"HexTooShort", "#ff00", -1},
              {"HexOfOtherLetters", "#ff00gg", -1},
              {"DecimalOfOtherLetters", "#25500000a", -1}};
  for (const auto& row : rows) {
    ColorMap map = smallMap();
    EXPECT_EQ(map.getInd(row.text), row.ind) << row.fault;
    EXPECT_EQ(map.getNum(), 3) << row.fault << ": an entry was added";
  }
}

TEST(ColorMapTest, IndicesPastTheEndMeanTheLastEntry) {
  ColorMap map = smallMap();
  EXPECT_EQ(channels(map, 500), "0.000,0.000,1.000");
  EXPECT_STREQ(map.getName(12), "blue");
  EXPECT_EQ(channels(map, -1), "-1.000,-1.000,-1.000");
  EXPECT_EQ(channels(ColorMap(), 0), "-1.000,-1.000,-1.000") << "empty table";
  EXPECT_EQ(map.setValue(3, 7), 0);
  EXPECT_EQ(map.setValue(2, 7), 1);
  EXPECT_EQ(map.getValue(500), 7);
  const ColorMap none(0);
  EXPECT_EQ(std::as_const(none).getValue(0), -1) << "no room at all";
  EXPECT_FALSE(map.isColorNear(-1, RGB(-1.0F, -1.0F, -1.0F)));
  EXPECT_TRUE(map.isColorNear(2, RGB(0.004F, 0.0F, 0.995F)));
  int r = 0;
  int g = 0;
  int b = 0;
  map.add("x", 0.999F, std::nanf(""), 1e30F);
  map.getIRGB(3, r, g, b);
  EXPECT_THAT(std::make_tuple(r, g, b), std::make_tuple(254, 0, std::numeric_limits<int>::max()));
  EXPECT_EQ(map.setNumFill(5), 0);
}

// Deliberate: the room is tested ahead of the name, and the names of a reset table are still known.
TEST(ColorMapTest, FullTableRefusesEvenKnownNamesAndResetRemembers) {
  ColorMap map(2);
  map.add("a", 0.0F, 0.0F, 0.0F);
  map.add("b", 0.0F, 0.0F, 0.0F);
  testing::internal::CaptureStderr();
  EXPECT_EQ(map.add("b", 1.0F, 1.0F, 1.0F), -1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Color map size exceeded 2 > 2\n");
  map.init();
  EXPECT_EQ(map.add("b", 1.0F, 1.0F, 1.0F), 1);
  EXPECT_EQ(map.getNum(), 0);
}

TEST(ColorFileTest, ReadsBothFormsAndTheEndOfTheFills) {
  const ScratchDir dir;
  dir.write("a.clr",
            "  # comment with END\n"
            "1 one 0.5 0.25 1\n"
            "two #FF0080\n"
            "3 three #336699 behind\n"
            "end\n"
            "four 0 0 0\n"
            "2x 1 1 1\n"
            "END\n"
            "too few 1\n"
            "short #ff\n"
            "\n" +
                std::string(300, 'x') + " 1 1 1\n");
  ColorMap map(0);
  EXPECT_EQ(ColorFile::readFile("a.clr", map), 1);
  EXPECT_EQ(map.getMax(), 256);
  EXPECT_EQ(map.getNum(), 5);
  EXPECT_EQ(map.getNumFill(), 3);
  EXPECT_EQ(channels(map, 0), "0.500,0.250,1.000");
  EXPECT_EQ(channels(map, map.getInd("two")), "1.000,0.000,0.502");
  EXPECT_EQ(channels(map, map.getInd("three")), "0.200,0.400,0.600");
  EXPECT_STREQ(map.getName(4), "x") << "a number ahead of the name is passed over";
}

TEST(ColorFileTest, ShippedTablesHaveTheNamesOfTheBuiltinFills) {
  const ScratchDir dir;
  Zqv::setDatabasePath(ZQV_DATA_DIR);
  for (const char* name : {"zqv.clr", "rad.clr"}) {
    ColorMap map;
    ASSERT_EQ(ColorFile::read(name, map), 1);
    ColorFill fill;
    fill.set(map, nullptr);
    std::string fills;
    for (int i = 0; i < fill.getNum(); i++) fills += std::string(fill.getColorName(i)) + ",";
    EXPECT_EQ(fills,
              "blue,lblue,cyan,lcyan,green,lgreen,brown,yellow,red,lred,magenta,lmagenta,dgray,"
              "lgray,white,");
    for (const char* other : {"black", "orange"}) EXPECT_GE(map.getInd(other), 15) << other;
  }
}

/** All that is set, in a fixed order. */
std::string describe(const PlotAttr& a) {
  std::string text = a.getColor();
  const auto add = [&](const char* key, double v, bool valid) {
    char part[40];
    std::snprintf(part, sizeof(part), " %s=%g", key, v);
    if (valid) text += part;
  };
  add("i", a.getColorInd(), a.validColorInd());
  add("w", static_cast<double>(a.getWidth()), a.validWidth());
  add("h", static_cast<double>(a.getHeight()), a.validHeight());
  add("e", static_cast<double>(a.getExpan()), a.validExpan());
  add("s", a.getStyle(), a.validStyle());
  add("sh", a.getShadow(), a.validShadow());
  add("f", a.getFillPat(), a.validFillPat());
  if (a.validFont()) text += std::string(" ") + a.getFont();
  return text;
}

TEST(PlotAttrTest, ReadsLongAndShortFields) {
  constexpr struct {
    const char* text;
    const char* set;
  } rows[] = {
      {nullptr, ""},
      {"", ""},
      {"red:wi=2:st=dsh", "red w=2 s=2"},
      {"red,w2,s2", "red w=2 s=2"},
      {"co=red:fi=hat", "red f=9"},
      {"RED:WI=2:ST=LLSDSH", "RED w=2 s=4"},
      {"x:sh=3:st=7:fo=modern.fnt:fp=5%:sc=.5:te=2", "x h=0.5 e=2 s=7 sh=3 f=15 modern.fnt"},
      {"x:hi=-1.5:h3:e0.5:f4", "x h=3 e=0.5 f=4"},
      {"x:fM", "x"},
      {"x:t..simplex.fnt", "x simplex.fnt"},
      {"x:to", "x"},
      {",w2", " w=2"},
      {"a,b:w2", "a,b w=2"},                        // a ":" anywhere makes it the separator
      {"x:wi=abc:w:s1e9:hi=1e99:zz=1:3", "x s=1"},  // not numbers, and unknown
      {"w2", "w2"},                                 // the first field is a name
      {"a_name_of_more_than_19_characters", "a_name_of_more_than"}};
  for (const auto& row : rows) {
    EXPECT_EQ(describe(PlotAttr(row.text)), row.set) << (row.text != nullptr ? row.text : "null");
  }
  PlotAttr attr("red:w2");
  attr.set("", "blue:w1");
  EXPECT_EQ(describe(attr), "blue w=1");
}

TEST(PlotAttrTest, UpdateTakesWhatIsSetExceptTheShadow) {
  PlotAttr attr("red:wi=1:sh=2:st=3");
  attr.setColorInd(7);
  attr.update(PlotAttr("co=:wi=4:sh=9:fi=hat:fo=f:te=2:hi=3"));
  EXPECT_EQ(describe(attr), "red i=7 w=4 h=3 e=2 s=3 sh=2 f=9 f");
  attr.update(PlotAttr("blue"));
  EXPECT_EQ(describe(attr), "blue w=4 h=3 e=2 s=3 sh=2 f=9 f") << "an index of the old colour";
  for (const char* none : {"", "OFF"}) EXPECT_FALSE(PlotAttr(none).validColor()) << none;
  attr.setColorInd(-1);
  EXPECT_FALSE(attr.validColor());
}

TEST(PlotAttrTest, KeywordsOfFillsAndMarks) {
  constexpr struct {
    const char* text;
    int fill;
    int marker;
  } rows[] = {{"sol", 0, 2}, {"ST", 1, 2}, {"lst", 4, 2},   {"||", 5, 2},  {"\\\\", 6, 2},
              {"//", 7, 2},  {"--", 8, 2}, {"xx", 9, 2},    {"0%", 10, 2}, {"9%", 19, 2},
              {"12", 12, 2}, {"?", 0, 2},  {nullptr, 0, 2}, {"pnt", 0, 1}, {"*", 0, 3},
              {"O", 0, 4},   {"X", 0, 5},  {"#", 0, 6},     {"tri", 0, 7}, {"dot", 0, 8},
              {"v", 0, 9},   {"z", 0, 10}, {"circle", 0, 4}};
  for (const auto& row : rows) {
    EXPECT_EQ(PlotAttr::parseFillStyle(row.text), row.fill) << row.text;
    EXPECT_EQ(PlotAttr::parseMarker(row.text), row.marker) << row.text;
  }
}

TEST(ColorFillTest, ValuesFallIntoClasses) {
  constexpr float nan = std::numeric_limits<float>::quiet_NaN();
  constexpr struct {
    const char* fault;
    const char* spec;
    float value;
    int ind;
    int color;
  } rows[] = {{"BelowTheFirst", "-100:off,0:Red,5:blue", -101.0F, -1, -1},
              {"OffHasNoColour", "-100:off,0:Red,5:blue", -50.0F, 0, -1},
              {"OnABound", "-100:off,0:Red,5:blue", 0.0F, 1, 1},
              {"OpenUpward", "-100:off,0:Red,5:blue", 1e9F, 2, 2},
              {"Missing", "0:Red,5:blue", Const::FMISS, Const::MISS, -1},
              {"NotANumber", "0:Red,5:blue", nan, -1, -1},
              {"NoClasses", "", 5.0F, Const::MISS, Const::MISS},
              {"SkipsUnsetBounds", "0:Red,black,10:blue", 5.0F, 1, 0},
              {"ValueWithAttributes", "0:blue:w2,5:Red", 1.0F, 0, 2}};
  for (const auto& row : rows) {
    ColorMap map = smallMap();
    ColorFill fill;
    fill.set(map, row.spec);
    EXPECT_EQ(fill.getInd(row.value), row.ind) << row.fault;
    EXPECT_EQ(fill.getColor(row.value), row.color) << row.fault;
  }
}

TEST(ColorFillTest, CyclesFromTheBaseEachInterval) {
  ColorMap map = smallMap();
  ColorFill fill;
  fill.set(map, "black,Red,blue");
  fill.setBase(10.0F);
  fill.setInterval(0.1F);
  EXPECT_EQ(fill.getInd(10.1F), 1);
  EXPECT_EQ(fill.getInd(10.7F), 1) << "a value on a boundary, lost to rounding";
  EXPECT_EQ(fill.getInd(9.95F), 2) << "below the base";
  EXPECT_EQ(fill.getColor(10.15F), 1);
  EXPECT_EQ(fill.getInd(3e38F), fill.getInd(2e38F)) << "beyond an int";
  fill.setInterval(0.0F);
  EXPECT_EQ(fill.getColor(55.0F), 0);
  EXPECT_EQ(fill.getInd(55.0F), 0);
}

std::string indices(const ColorFill& fill) {
  std::string text;
  for (int i = 0; i < fill.getNum(); i++) text += std::to_string(fill.getColor(i)) + " ";
  return text;
}

TEST(ColorFillTest, RangesWalkEitherWayUpToTheCapacity) {
  constexpr struct {
    const char* spec;
    const char* indices;
  } rows[] = {{"16-18", "16 17 18 "}, {"18-16,2", "18 17 16 2 "},
              {"5-5", "5 "},          {"Red:w2-blue", "1 2 "},
              {"12", "12 "},          {"Red,", "1 -1 "}};
  for (const auto& row : rows) {
    ColorMap map = smallMap();
    ColorFill fill;
    fill.set(map, row.spec);
    EXPECT_EQ(indices(fill), row.indices) << row.spec;
  }
  ColorMap map = smallMap();
  ColorFill fill;
  fill.set(map, "Red:w2-blue");
  EXPECT_EQ(describe(fill.get(1)), "2 i=2 w=2");
  fill.set(map, "0-2147483647");
  EXPECT_EQ(fill.getNum(), 256);
  EXPECT_EQ(fill.decode(map, "Red"), 0);
  fill.set(map, "2000000000-0");
  EXPECT_EQ(fill.getNum(), 256);
}

TEST(ColorFillTest, BadIndicesGiveBlanks) {
  ColorMap map = smallMap();
  ColorFill fill;
  fill.set(map, "0:Red,5:blue");
  EXPECT_EQ(describe(fill.get(-1)) + describe(fill.get(2)), "");
  EXPECT_EQ(describe(fill.get(-3.0F)), "") << "a value below the first bound";
  EXPECT_EQ(describe(fill.get(Const::FMISS)), "");
  EXPECT_EQ(fill.getValue(9), Const::FMISS);
  fill.set(map, "0:Red:w2,blue");
  testing::internal::CaptureStdout();
  fill.print();
  EXPECT_THAT(testing::internal::GetCapturedStdout(),
              HasSubstr("Intrvl: -9999.00 Base: -9999.00\nval: 0.00\nPlotAttr co: Red 1 st: -9999 "
                        "he: -9999.00 wi:  2.00 ex: -9999.00 fi: -9999 sh: -9999 fo: \n"));
}

TEST(ColorFillTest, FillFilesGiveOnlySomeBounds) {
  const ScratchDir dir;
  dir.write("a.fil",
            "# comment\n@label  Rain rate in inches per hour\n@other\n\n0:Red\nblue\nblack\n"
            "6:blue\nblack\n");
  ColorMap map = smallMap();
  ColorFill fill;
  ASSERT_EQ(fill.set(map, "a.fil"), 1) << "a single word is a file";
  EXPECT_STREQ(fill.getLabel(), " Rain rate in inche");
  EXPECT_EQ(indices(fill), "1 2 0 2 0 ");
  EXPECT_THAT(
      (std::vector<float>{fill.getValue(0), fill.getValue(1), fill.getValue(2), fill.getValue(3)}),
      ElementsAre(0.0F, 2.0F, 4.0F, 6.0F));
  // Deliberate: behind the last bound the unset entry past the end counts as the far one.
  EXPECT_FLOAT_EQ(fill.getValue(4), (-9999.0F - 6.0F) / 2.0F + 6.0F);
  EXPECT_EQ(fill.getColor(100.0F), 0);
  EXPECT_EQ(fill.set(map, "Red"), 0) << "a single colour isn't a fill";
  EXPECT_EQ(fill.getNum(), 0);
  dir.write("long.fil", "Red" + std::string(80, ' ') + "blue\n@name dBZ\nblue\n");
  fill.set(map, "long.fil");
  EXPECT_EQ(indices(fill), "1 2 ") << "the rest of a long line is no item";
  EXPECT_STREQ(fill.getLabel(), "dBZ");
}

}  // namespace
}  // namespace ZQV
