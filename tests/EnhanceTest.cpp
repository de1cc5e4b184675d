#include "Enhance.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ColorMap.h"
#include "Const.h"
#include "ScratchDir.h"

namespace ZQV {
namespace {

/** Colours c0 to c299, of which the first 4 are fill colours. */
ColorMap numbered() {
  ColorMap map(300);
  for (int i = 0; i < 300; i++) map.add(("c" + std::to_string(i)).c_str(), 0.0F, 0.0F, 0.0F);
  map.setNumFill(4);
  return map;
}

/** "value=colour" of each entry. */
std::string entries(const Enhance& table) {
  std::string text;
  for (int i = 0; i < table.getNum(); i++) {
    char entry[40];
    std::snprintf(entry, sizeof(entry), "%g=%d ", static_cast<double>(table.getValue(i)),
                  table.getIndex(i));
    text += entry;
  }
  return text;
}

TEST(EnhanceTest, ReadsItemsInOrder) {
  struct Row {
    const char* what;
    const char* spec;
    const char* entries;
    bool is_value;
  };
  const Row rows[] = {
      {"the map's fill colours", "", "0=0 63.75=1 127.5=2 191.25=3 ", false},
      {"absent", nullptr, "0=0 63.75=1 127.5=2 191.25=3 ", false},
      {"codes", "10:c7,50:c8:w2", "10=7 50=8 ", false},
      {"values below zero", "c-10:c7,c5.5:red", "-10=7 5.5=-1 ", true},
      {"a value below zero without c", "-10:c7,5:c9", "-10=7 5=9 ", false},
      {"attributes alone keep the number of the entry", "10:c7,c8,c9", "10=7 1=8 2=9 ", false},
      {"a range up, over 0 to (4 * 255 - 255) / 4", "10-13", "0=10 63.6667=11 127.333=12 191=13 ",
       false},
      {"a range down between thresholds", "20:c1,9-8,50:c2", "20=1 30=9 40=8 50=2 ", false},
      {"a range in an unset value table", "9-8,c50:c2", "-9999=9 -9999=8 50=2 ", true},
      // What follows the last one is drawn to the entry behind the end, which has its number.
      {"a range behind a value", "c20:c1,9-7", "20=1 16=9 12=8 8=7 ", true},
      {"a colour that begins with c isn't the start of a range", "c1-c3,7:c2", "0=-1 7=2 ", false},
      {"no number", "7:c2,x:c3", "7=2 1=3 ", false},
  };
  for (const Row& row : rows) {
    ColorMap map = numbered();
    Enhance table;
    EXPECT_EQ(table.set(map, row.spec), 1) << row.what;
    EXPECT_EQ(entries(table), row.entries) << row.what;
    EXPECT_EQ(table.isValue(), row.is_value) << row.what;
    EXPECT_EQ(table.isIndex(), !row.is_value) << row.what;
  }
}

TEST(EnhanceTest, HoldsNoMoreThan256) {
  ColorMap map = numbered();
  Enhance table;
  EXPECT_EQ(table.set(map, "c0:c1,0-299,4-2"), 1);
  EXPECT_EQ(table.getNum(), 256);
  EXPECT_EQ(table.decode(map, "7:c3"), 0);
  EXPECT_EQ(table.getIndex(255), 254);
  EXPECT_EQ(table.getIndex(256), 0);
  EXPECT_EQ(table.getValue(256), Const::FMISS);
  EXPECT_EQ(table.setIndex(3, 77), 1);
  EXPECT_EQ(table.getIndex(3), 77);
  EXPECT_EQ(table.setIndex(256, 1), 0);
  EXPECT_EQ(table.setIndex(-1, 1), 0);
}

TEST(EnhanceTest, FindsTheClassEitherWay) {
  struct Row {
    const char* spec;
    std::vector<std::pair<float, int>> classes;
  };
  const Row rows[] = {
      {"c0:c5,c10:c6,c20:c7", {{-1, -1}, {0, 0}, {9.9F, 0}, {10, 1}, {20, 2}, {1e9F, 2}}},
      {"c20:c5,c10:c6,c0:c7", {{21, -1}, {20, 0}, {10.1F, 0}, {10, 1}, {0.1F, 1}, {0, 2}, {-5, 2}}},
      {"c-5:c5", {{-6, -1}, {-5, 0}, {70, 0}}},
  };
  for (const Row& row : rows) {
    ColorMap map = numbered();
    Enhance table;
    table.set(map, row.spec);
    for (const auto& [v, expected] : row.classes) {
      EXPECT_EQ(table.getIndex(v), expected) << row.spec << " at " << v;
      EXPECT_EQ(table.getColor(v), expected < 0 ? -1 : table.getIndex(expected)) << row.spec;
    }
  }
  EXPECT_EQ(Enhance().getColor(5.0F), -1) << "without entries";
}

TEST(EnhanceTest, ReadsAFile) {
  const ScratchDir dir;
  dir.write("rain.enh",
            "# comment\n@value\n@name Rain\n  0:c5 \n\n@other\nc6\n@label Rain rate in mm an hour\n"
            "20:c7:this goes far beyond the eighty characters of a line, and what is there is "
            "cut,9:c8\n");
  ColorMap map = numbered();
  Enhance table;
  EXPECT_EQ(table.set(map, "rain.enh"), 1);
  EXPECT_EQ(entries(table), "0=5 1=6 20=7 ");
  EXPECT_TRUE(table.isValue());
  EXPECT_STREQ(table.getName(), "Rain rate in mm an ");
  testing::internal::CaptureStdout();
  table.print();
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "Enhance\nName: Rain rate in mm an \nVal: 0.00 Color: 5\nVal: 1.00 Color: 6\n"
            "Val: 20.00 Color: 7\n");
  dir.write("code.enh", "@value\n@index\n5:c5\n");
  EXPECT_EQ(table.set(map, "code.enh"), 1);
  EXPECT_TRUE(table.isIndex());
  testing::internal::CaptureStderr();
  EXPECT_EQ(table.set(map, "none.enh"), 0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Enhance: Unable to read color fill file: none.enh\n");
  EXPECT_EQ(table.getNum(), 0);
}

}  // namespace
}  // namespace ZQV
