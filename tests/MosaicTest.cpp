#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Image.h"
#include "KavradFile.h"
#include "MosaicMaker.h"
#include "NowradFile.h"
#include "TempDir.h"

namespace ZQV {
namespace {

using testing::Each;
using testing::ElementsAre;

std::vector<int> rowOf(const Image& image, int y, int n) {
  std::vector<int> row(static_cast<size_t>(n));
  for (int x = 0; x < n; x++) row[static_cast<size_t>(x)] = image.getVal(x, y);
  return row;
}

Image readNowrad(const TempDir& dir, const std::string& text, NowradFile& file) {
  dir.write("mosaic", text);
  Image image;
  EXPECT_EQ(file.open(dir.at("mosaic").c_str()), 1);
  EXPECT_EQ(file.read(image), 1);
  return image;
}

TEST(NowradFileTest, RunsFillTheRows) {
  const TempDir dir;
  NowradFile file;
  const Image image = readNowrad(
      dir,
      Nowrad().head() +
          // 513 of 3, 6 of 5, 2 of 1, and the rest stays
          line(9, bytes({0xd3, 0, 2, 0xe5, 5, 0x11})) +
          // a pixel of 0 ahead of other bytes, a mask, one ahead of an escaped mask, 13 of 15
          line(1, bytes({0x02, 0x00, 0x03, 0xf7, 0x04, 0x00, 0xf0, 0x00, 0xcf})) +
          // a run past the end, and another
          line(2, bytes({0xda, 255, 255, 0x17})) + line(3, bytes({0x01})),
      file);
  EXPECT_EQ(image.getWidth(), 700);
  EXPECT_EQ(image.getHeight(), 4);
  const std::vector<int> first = rowOf(image, 0, 700);
  EXPECT_THAT(std::vector<int>(first.begin(), first.begin() + 513), Each(3));
  EXPECT_THAT(std::vector<int>(first.begin() + 513, first.begin() + 519), Each(5));
  EXPECT_THAT(std::vector<int>(first.begin() + 519, first.begin() + 523), ElementsAre(1, 1, 0, 0));
  EXPECT_THAT(rowOf(image, 1, 7), ElementsAre(2, 0, 3, 4, 0, 15, 15));
  EXPECT_EQ(image.getVal(17, 1), 15);
  EXPECT_EQ(image.getVal(18, 1), 0);
  EXPECT_THAT(rowOf(image, 2, 700), Each(10));
  EXPECT_THAT(rowOf(image, 3, 3), ElementsAre(1, 0, 0));
  EXPECT_EQ(image.getColorType(), static_cast<int>(Image::DATA));
  EXPECT_EQ(image.getValue(0), -100.0F);
  EXPECT_EQ(image.getValue(16), 80.0F);
  EXPECT_EQ(image.getValue(17), -9999.0F);
}

TEST(NowradFileTest, HeaderGivesLabelDateAndDomain) {
  const TempDir dir;
  NowradFile file;
  Nowrad n;
  Image image = readNowrad(dir, n.head() + line(0, ""), file);
  EXPECT_STREQ(image.getInfo(), "NOWRad Radar Master Composite [dBZ]");
  EXPECT_EQ(image.getDate().getYear(), 1997);
  EXPECT_EQ(image.getDate().getMonth(), 6);
  EXPECT_EQ(image.getDate().getMinute(), 45);
  EXPECT_STREQ(image.getDatim(), "1845Z  3 JUN 97");
  DomainVal val = image.getDomainVal();
  EXPECT_EQ(val.proj, DomainVal::LATLON);
  EXPECT_NEAR(val.clon, -100.0F, 0.001F);
  EXPECT_NEAR(val.dy, 0.1F, 0.00001F);
  EXPECT_NEAR(val.dx, 0.05F, 0.00001F);
  EXPECT_NEAR(val.clat, 50.0F - 0.15F, 0.001F);  // 4 rows below the upper edge

  n.label = "USRAD High Res         00:05 31-Aug-2005";
  n.projection = "L0.5 0.75 0.68 -1.7 -1.6 38.5 0.02 0.03";
  image = readNowrad(dir, n.head() + line(0, ""), file);
  EXPECT_STREQ(image.getInfo(), "NOWRad Radar US Composite [dBZ]");
  EXPECT_EQ(image.getDate().getMonth(), 8);
  EXPECT_EQ(image.getDate().getYear(), 2005);
  val = image.getDomainVal();
  EXPECT_EQ(val.proj, DomainVal::LAMB);
  EXPECT_NEAR(val.param[1], 28.6479F, 0.001F);
  EXPECT_NEAR(val.param[0], 42.9718F, 0.001F);
  EXPECT_NEAR(val.plat, 38.9611F, 0.001F);
  EXPECT_EQ(val.clon, -96.03F);
  EXPECT_EQ(val.clat, 38.5F);
  EXPECT_EQ(val.dy, 0.02F);
  EXPECT_EQ(val.dx, 0.03F);
}

TEST(NowradFileTest, BadFilesGiveEmptyImages) {
  const TempDir dir;
  NowradFile file;
  Image image;
  EXPECT_EQ(file.read(image), 0);
  EXPECT_EQ(file.open(dir.at("none").c_str()), 0);
  const std::string head = Nowrad().head();
  for (size_t i = 0; i + 10 < head.size(); i += 3) {
    EXPECT_FALSE(readNowrad(dir, head.substr(0, i), file).validData()) << i;
  }
  for (const char* size : {"-4 700", "4 0", "x 3"}) {
    Nowrad n;
    n.size = size;
    EXPECT_FALSE(readNowrad(dir, n.head() + line(0, "\x11"), file).validData()) << size;
  }
  Nowrad large;
  large.size = "99999 99999";
  dir.write("mosaic", large.head());
  EXPECT_EQ(file.open(dir.at("mosaic").c_str()), 1);
  EXPECT_EQ(file.read(image), 0);
  // More pixels in one line than a number holds.
  std::string runs;
  for (int i = 0; i < 33000; i++) runs += "\xd1\xff\xff";
  EXPECT_EQ(readNowrad(dir, head + line(0, runs), file).getVal(2, 0), 1);
}

Image readKavouras(const TempDir& dir, const std::string& text) {
  dir.write("mosaic", text);
  KavradFile file;
  Image image;
  EXPECT_EQ(file.open(dir.at("mosaic").c_str()), 1);
  EXPECT_EQ(file.read(image), 1);
  return image;
}

TEST(KavradFileTest, RunsFillTheRows) {
  const TempDir dir;
  // Level 5 (stored 6) twice and then 3 more, level 16 (stored 0) once, 40 of level 20, the rest 33
  const std::string runs =
      bytes({0x85, 0x03, 0x50, 0x54, '$', 39, 0x61, '#'}) +
      // one of 34, the same again, the rest of this row and all of the next, a run past its end
      bytes({0x62, '"', '#', '"'}) + bytes({0x4f, '$', 255}) + "!" + bytes({0x41});
  const Image image = readKavouras(dir, kavouras(' ', 10, runs));
  EXPECT_EQ(image.getWidth(), 2560);
  EXPECT_EQ(image.getHeight(), 2880);
  EXPECT_THAT(rowOf(image, 0, 8), ElementsAre(6, 6, 6, 6, 6, 0, 20, 20));
  EXPECT_EQ(image.getVal(45, 0), 20);
  EXPECT_EQ(image.getVal(46, 0), 33);
  EXPECT_EQ(image.getVal(2559, 0), 33);
  EXPECT_THAT(rowOf(image, 1, 2560), Each(34));
  EXPECT_THAT(rowOf(image, 2, 2560), Each(34));
  EXPECT_EQ(image.getVal(255, 3), 16);
  EXPECT_EQ(image.getVal(256, 3), 0);
  EXPECT_EQ(image.getVal(0, 4), 0);
}

TEST(KavradFileTest, HeaderGivesKindDateAndDomain) {
  const TempDir dir;
  const Image high = readKavouras(dir, kavouras('C', 5, bytes({0x45, '#', 0x46, '#'})));
  EXPECT_EQ(high.getWidth(), 5120);
  EXPECT_EQ(high.getHeight(), 5760);
  EXPECT_EQ(high.getVal(5119, 0), 5) << "no levels are moved";
  EXPECT_EQ(high.getVal(0, 1), 6);
  EXPECT_EQ(high.getDomainVal().dx, 0.0128906F);
  EXPECT_EQ(high.getDomainVal().clat, 39.0F);
  EXPECT_STREQ(high.getInfo(), "KAV Radar Master [dBZ]");
  EXPECT_EQ(high.getDate().getYear(), 1999);
  EXPECT_EQ(high.getDate().getMonth(), 5);
  EXPECT_EQ(high.getDate().getDay(), 7);
  EXPECT_EQ(high.getDate().getSecond(), 30.0F);
  const float colors[] = {-150, 20, 30, 40, 45, 50, 55, Const::FMISS};
  for (int i = 0; i < 8; i++) EXPECT_EQ(high.getValue(i), colors[i]) << i;

  const Image low = readKavouras(dir, kavouras('c', 10, "", "010203040505"));
  EXPECT_EQ(low.getDomainVal().dy, 0.0171874F);
  EXPECT_EQ(low.getDate().getYear(), 2005);
  const float bands[][2] = {{0, -150}, {1, 0},    {16, 75},  {17, 105}, {31, 175},
                            {32, 100}, {33, 205}, {47, 275}, {48, 200}, {49, Const::FMISS}};
  for (const auto& [code, value] : bands) EXPECT_EQ(low.getValue(static_cast<int>(code)), value);
}

TEST(KavradFileTest, ShortFilesGiveEmptyImages) {
  const TempDir dir;
  EXPECT_FALSE(readKavouras(dir, "").validData());
  EXPECT_FALSE(readKavouras(dir, kavouras(' ', 10, "").substr(0, 2047)).validData());
  EXPECT_EQ(readKavouras(dir, kavouras(' ', 10, "$", "no time here")).getVal(0, 0), 0);
  KavradFile file;
  Image image;
  EXPECT_EQ(file.read(image), 0);
  EXPECT_EQ(file.readHeader(), 0);
}

}  // namespace
}  // namespace ZQV
