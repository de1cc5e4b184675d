#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "GFont.h"
#include "Point.h"
#include "ScratchDir.h"
#include "Symbol.h"
#include "TextFile.h"

namespace ZQV {
namespace {

/** The pen moves of a glyph: "m" to move, "d" to draw. */
std::string walk(GFont& font, char c) {
  if (font.setChar(c) == 0) return "none";
  std::string text;
  Point p;
  int code = 0;
  while ((code = font.get(p)) != 0) {
    char part[40];
    std::snprintf(part, sizeof(part), "%c%g,%g ", code == 1 ? 'd' : 'm', static_cast<double>(p.x),
                  static_cast<double>(p.y));
    text += part;
  }
  return text;
}

/** The points of a symbol, "/" at a break. */
std::string walk(Symbol& symbol, const char* name) {
  if (symbol.setSymb(name) == 0) return "none";
  std::string text;
  Point p;
  int code = 0;
  while ((code = symbol.get(p)) != 0) {
    char part[40];
    std::snprintf(part, sizeof(part), "%g,%g ", static_cast<double>(p.x), static_cast<double>(p.y));
    text += code == 1 ? part : "/ ";
  }
  return text;
}

TEST(GFontTest, ReadsGlyphsWhereverTheyBreakOff) {
  constexpr struct {
    const char* fault;
    const char* text;
    char c;
    const char* moves;
    int width;
  } rows[] = {{"FirstGlyph", "0 A 128 0 40 7 255 B 1 2 254", 'A', "m0,0 d40,7 ", 40},
              {"LastGlyphEndsWithTheFile", "0 A 128 0 40 7 255 B 1 2 254", 'B', "d1,2 ", 1},
              {"NoGlyph", "0 A 1 2 254", 'Z', "none", 0},
              {"DigitAsCharacter", "0\n5 10 20\n255\n7 30 4 254", '7', "d30,4 ", 30},
              {"FirstNumber255HasNoName", "255 9 9 255 A 1 2 254", 'A', "d1,2 ", 1},
              {"PenUpLimits", "0 A 253 5 127 6 254", 'A', "m125,5 d127,6 ", 127},
              {"WidthOfAPenUpMove", "0 A 10 0 178 0 254", 'A', "d10,0 m50,0 ", 50},
              {"ValueAbove255EndsTheWalk", "0 A 1 2 300 3 4 5 254", 'A', "d1,2 ", 300},
              {"CutBehindX", "0 A 1 2 3", 'A', "d1,2 ", 1},
              {"CutBehindEndOfGlyph", "0 A 1 2 255", 'A', "d1,2 ", 1},
              {"CutBehindName", "0 A", 'A', "", 0},
              {"NothingAtAll", "", 'A', "none", 0},
              {"TextInsteadOfNumbers", "0 A 1 2 x 3 4 254", 'A', "d1,2 ", 1},
              {"CharacterAbove127", "0 \xe9 1 2 254", '\xe9', "d1,2 ", 1},
              {"NegativeCoordinate", "0 A -5 -6 254", 'A', "d-5,-6 ", 0}};
  const ScratchDir dir;
  for (const auto& row : rows) {
    GFont font(dir.write("a.fnt", row.text).c_str());
    EXPECT_TRUE(font.isOpen()) << row.fault;
    EXPECT_EQ(walk(font, row.c), row.moves) << row.fault;
    EXPECT_EQ(font.getWidth(row.c), row.width) << row.fault;
    EXPECT_EQ(font.getWidth(' '), 40) << row.fault;
  }
}

TEST(GFontTest, DeviceFontsAreDescribedByTheirName) {
  const ScratchDir dir;
  GFont font(dir.write("a.fnt", "0 A 1 2 254").c_str());
  EXPECT_EQ(font.read("#Courier_Bold:14"), 1);
  EXPECT_STREQ(font.getName(), "Courier Bold");
  EXPECT_EQ(font.getHeight(), 14);
  EXPECT_EQ(font.getType(), GFont::DEVICE);
  EXPECT_EQ(font.setChar('A'), 0) << "the strokes of the font before";
  font.read("#fixed");
  EXPECT_EQ(font.getHeight(), 12);
  for (const char* name : {"none.fnt", "|echo 0 A 1 2 254", "/dev/zero", "/tmp"}) {
    EXPECT_EQ(font.read(name), 0) << name;
  }
  EXPECT_EQ(font.read(nullptr), 0);
}

TEST(SymbolTest, FindsTheFirstNameThatBeginsTheRequest) {
  const ScratchDir dir;
  const std::string path = dir.write("a.smb",
                                     "rain L 0.25,0.5 0.29,1 F 0,0 bad $\n"
                                     "rainshower 0.1,0.1 $ s,now .3 $ a_name_longer_than_14 1,1 $\n"
                                     "unended 0.5,0.5 0.6,0.6");
  constexpr struct {
    const char* fault;
    const char* name;
    const char* points;
  } rows[] = {{"Itself", "rain", "/ 0.25,0.5 0.29,1 / 0,0 0,0 "},
              {"LongerRequest", "rain2", "/ 0.25,0.5 0.29,1 / 0,0 0,0 "},
              {"HiddenByItsBeginning", "rainshower", "/ 0.25,0.5 0.29,1 / 0,0 0,0 "},
              {"ShorterRequest", "rai", "none"},
              {"HalfAPair", "s,now", "0.3,0 "},
              {"CutName", "a_name_longer_", "1,1 "},
              {"WithoutEnd", "unended", "none"},
              {"Absent", nullptr, "none"},
              {"Empty", "", "none"}};
  Symbol symbol(path.c_str());
  EXPECT_EQ(symbol.getNum(), 4);
  for (const auto& row : rows) EXPECT_EQ(walk(symbol, row.name), row.points) << row.fault;
}

TEST(SymbolTest, StaysWithinItsTables) {
  const ScratchDir dir;
  std::string many;
  for (int i = 0; i < 150; i++) many += "s" + std::to_string(1000 + i) + " 0,1 $ ";
  Symbol symbol(dir.write("a.smb", many).c_str());
  EXPECT_EQ(symbol.getNum(), 100);
  EXPECT_EQ(walk(symbol, "s1099"), "0,1 ");
  EXPECT_EQ(walk(symbol, "s1100"), "none");
  std::string points = "first 1,1 $ long ";
  for (int i = 0; i < 5000; i++) points += "1e38,nan ";
  symbol.read(dir.write("b.smb", points + "$").c_str());
  EXPECT_EQ(symbol.getNum(), 1) << "a symbol past the room has no end";
  EXPECT_EQ(walk(symbol, "first"), "1,1 ");
  testing::internal::CaptureStderr();
  EXPECT_EQ(symbol.read("/none.smb"), 0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Symbol_read: unable to load symbol file: /none.smb\n");
  EXPECT_EQ(walk(symbol, "first"), "none");
  EXPECT_EQ(Symbol().setSymb("rain"), 0);
}

TEST(SymbolTest, ShippedSymbolsAreReachedByTheirNames) {
  const ScratchDir dir;
  Zqv::setDatabasePath(ZQV_DATA_DIR);
  TextFile file;
  ASSERT_EQ(file.open("wx.smb"), 1);
  std::string line;
  std::string name;
  Symbol symbol(ZQV_DATA_DIR "/wx.smb");
  std::vector<std::string> names;
  while (file.next(line) != 0) {
    if (name.empty()) {
      name = line;
      for (const std::string& other : names) {
        EXPECT_FALSE(name.starts_with(other)) << other << " hides " << name;
      }
      names.push_back(name);
      EXPECT_EQ(symbol.setSymb(name.c_str()), 1) << name;
    }
    if (line == "$") name.clear();
  }
  EXPECT_GT(names.size(), 50U);
  EXPECT_EQ(static_cast<size_t>(symbol.getNum()), names.size());
}

}  // namespace
}  // namespace ZQV
