#include "Grid.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "GridPoint.h"
#include "Point.h"
#include "Range.h"
#include "ScratchDir.h"
#include "String.h"
#include "Timezone.h"
#include "VarList.h"

namespace ZQV {
namespace {

constexpr float M = Const::FMISS;

/** 3 by 2, row after row: 1 2 3, 11 12 13. */
Grid makeGrid() {
  Grid grid(3, 2);
  for (int y = 0; y < 2; y++) {
    for (int x = 0; x < 3; x++) {
      grid.setValue(x, y, static_cast<float>(10 * y + x + 1));
    }
  }
  return grid;
}

TEST(Grid, ReadsBetweenPoints) {
  const Grid grid = makeGrid();
  struct Row {
    float gx, gy, value;
  };
  for (const Row& row :
       {Row{0, 0, 1}, Row{1, 1, 12}, Row{0.25F, 0.5F, 6.25F}, Row{2, 0.5F, 8}, Row{2, 1, 13},
        Row{0.5F, 1, 11.5F}, Row{2.01F, 0, M}, Row{0, 1.01F, M}, Row{-0.01F, 0, M}, Row{M, M, M}}) {
    EXPECT_FLOAT_EQ(grid.getValue(GridPoint(row.gx, row.gy)), row.value) << row.gx << " " << row.gy;
  }
  EXPECT_EQ(grid.getValue(GridPoint(std::numeric_limits<float>::quiet_NaN(), 0)), M);
  EXPECT_EQ(Grid().getValue(GridPoint(0, 0)), M);
}

TEST(Grid, SingleValueIsEverywhere) {
  Grid grid(1, 1);
  grid.setValue(0, 0, 5);
  EXPECT_EQ(grid.getValue(-7, 100), 5);
  EXPECT_EQ(grid.getValue1(-7, 100), M);
  EXPECT_EQ(grid.allocLocate(), 1);
  EXPECT_EQ(grid.setLocate(0, 0, Point(4, 5)), 1);
  EXPECT_EQ(grid.getLocate(0, 0).y, 5);
  EXPECT_FALSE(grid.getLocate(1, 0).isSet());
}

// A missing neighbour spoils the value even where it would count nothing.
TEST(Grid, MissingCornerSpoilsTheCell) {
  Grid grid = makeGrid();
  grid.setValue(1, 1, M);
  EXPECT_EQ(grid.getValue(GridPoint(0, 0)), M);
  EXPECT_EQ(grid.getValue(GridPoint(0.5F, 1)), M);
  EXPECT_EQ(grid.getValue(GridPoint(2, 0.5F)), 8);  // the last column asks for two only
  EXPECT_EQ(grid.getValue(GridPoint(2, 1)), 13);
  grid.setValue(2, 1, M);
  EXPECT_EQ(grid.getValue(GridPoint(2, 1)), M);
}

TEST(Grid, RefusesSizesAndIndexes) {
  for (const auto& [nx, ny] :
       {std::pair(0, 5), std::pair(5, -1), std::pair(2000000000, 2000000000)}) {
    Grid grid(nx, ny);
    EXPECT_FALSE(grid.isData());
    EXPECT_EQ(grid.allocData(), 0);
    EXPECT_EQ(grid.setValue(0, 0, 1), 0);
    EXPECT_EQ(grid.getValue(0, 0), M);
    EXPECT_EQ(grid.scale(2), 0);
  }
  Grid grid = makeGrid();
  EXPECT_EQ(grid.setValue(3, 0, 1), 0);
  EXPECT_EQ(grid.setValue(0, 2, 1), 0);
  EXPECT_EQ(grid.setValue(-1, 0, 1), 0);
  EXPECT_EQ(grid.getValue(3, 0), M);
  // Another size leaves no values that the indexes of the new one could miss.
  grid.setSize(30, 20);
  EXPECT_FALSE(grid.isData());
  EXPECT_EQ(grid.getValue(29, 19), M);
}

TEST(Grid, Statistics) {
  Grid grid = makeGrid();
  grid.setValue(0, 0, M);
  float min = 0;
  float max = 0;
  EXPECT_EQ(grid.getRange(min, max), 1);
  EXPECT_EQ(min, 2);
  EXPECT_EQ(max, 13);
  EXPECT_FLOAT_EQ(grid.getAverage(), 41.0F / 5);
  grid.scale(2);
  grid.offset(1);
  EXPECT_EQ(grid.getValue(0, 0), M);
  EXPECT_EQ(grid.getValue(1, 0), 5);
  testing::internal::CaptureStdout();
  grid.printStats();
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "Size: 3 2\nMax: 27.000000 Min: 5.000000 Ave: 17.400000\nMiss: 1\n");
  Grid none(2, 2);
  Range range(1, 1);
  EXPECT_EQ(none.getRange(range), 1);
  EXPECT_EQ(range.min, M);
  EXPECT_EQ(none.getAverage(), M);
  EXPECT_EQ(Grid().getRange(range), 0);
}

TEST(Grid, CopiesApart) {
  Grid grid = makeGrid();
  grid.setInfo(std::string(200, 'x').c_str());
  EXPECT_EQ(std::string(grid.getInfo()).size(), 89U);
  Grid info;
  info.copyInfo(grid);
  EXPECT_EQ(info.getNx(), 3);
  EXPECT_FALSE(info.isData());
  info.copyData(grid);
  info.setValue(0, 0, 99);
  EXPECT_EQ(grid.getValue(0, 0), 1);
  grid.copyInfo(grid);
  EXPECT_TRUE(grid.isData());
  Date date;
  date.set("#202401012300");
  grid.setDate(date);
  grid.setForeTime(ForeTime(2));
  EXPECT_EQ(grid.getValidDate().getDay(), 2);
  EXPECT_EQ(grid.getValidDate().getHour(), 1);
}

TEST(VarList, DecodesAgainstTheFile) {
  const ScratchDir files;
  files.write("my.var",
              "# name units format layer label\n"
              "cid - text,ul 0 Storm ID\n"
              "vil kg/m^2 value,fm=%.0f 2 Liquid\n"
              "broken line\n"
              "last m -");
  VarList vars;
  EXPECT_EQ(vars.readFile("none.var"), 0);
  EXPECT_EQ(vars.readFile("my.var"), 1);
  EXPECT_EQ(vars.decode("cid,VIL:un=in:la=1:lb=Water,\"new:fm=ur,%.1f\",map,,vil:la=x"), 1);
  const struct {
    const char *name, *units, *format;
    int layer;
    const char* label;
  } rows[] = {{"cid", "", "text,ul", 0, "Storm ID"},
              {"VIL", "in", "value,fm=%.0f", 1, "Water [in]"},
              {"new", "", "ur,%.1f", 0, "new"},
              {"map", "", "", 0, "map"},
              {"vil", "kg/m^2", "value,fm=%.0f", 2, "Liquid [kg/m^2]"},
              {"", "", "", 0, ""}};
  ASSERT_EQ(vars.getNum(), 5);
  for (int i = 0; i <= 5; i++) {
    String label;
    EXPECT_STREQ(vars.getName(i), rows[i].name);
    EXPECT_STREQ(vars.getUnits(i), rows[i].units);
    EXPECT_STREQ(vars.getFormat(i), rows[i].format);
    EXPECT_EQ(vars.getLayer(i), rows[i].layer) << i;
    EXPECT_EQ(vars.getSpec(i).toInfoLabel(label), i < 5 ? 1 : 0);
    EXPECT_STREQ(label.get(), rows[i].label);
    EXPECT_EQ(vars.isMap(i), i == 3);
  }
  EXPECT_EQ(vars.decode(""), 0);
  EXPECT_EQ(vars.decode(nullptr), 0);
  EXPECT_EQ(vars.getNum(), 0);
  EXPECT_STREQ(vars.getName(-1), "");
}

TEST(VarSpec, Labels) {
  VarSpec spec(Variable("hgt", "m", "Height"));
  spec.setLevel(Level("500mb"));
  String out;
  EXPECT_EQ(spec.toInfoLabel(out), 1);
  EXPECT_STREQ(out.get(), "500 mb Height [m]");
  Date date;
  date.set("#202401020300");
  spec.toDateLabel(date, Timezone(), "Radar", out);
  EXPECT_STREQ(out.get(), "Radar 0300Z  2 JAN 24");
  spec.setForeTime(ForeTime(6));
  spec.toDateLabel(date, Timezone(), "", out);
  EXPECT_TRUE(out.contains("6 hour forecast for 0900Z")) << out.get();
  EXPECT_EQ(spec.toDateLabel(Date(), Timezone(), "", out), 0);

  for (const auto& [text, label] :
       {std::pair("sfc", "sfc"), std::pair("1000-500mb", "1000-500 mb"), std::pair("2", "2"),
        std::pair("inf", "inf"), std::pair("", "")}) {
    Level level(text);
    level.toString(out);
    EXPECT_STREQ(out.get(), label);
  }
}

}  // namespace
}  // namespace ZQV
