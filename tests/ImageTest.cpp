#include "Image.h"

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ColorMap.h"
#include "EarthPoint.h"
#include "FloatArray.h"
#include "GeomBox.h"
#include "Grid.h"
#include "GridPoint.h"
#include "ImageMath.h"
#include "Point.h"
#include "RGB.h"

namespace ZQV {
namespace {

constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();

using Rows = std::vector<std::vector<int>>;

Image make(const Rows& rows, int bits = 8, int color_type = Image::DATA) {
  Image image;
  image.set(static_cast<int>(rows[0].size()), static_cast<int>(rows.size()), bits);
  image.setColorType(color_type);
  image.allocData();
  for (size_t y = 0; y < rows.size(); y++) {
    for (size_t x = 0; x < rows[y].size(); x++) {
      image.setPixel(static_cast<int>(x), static_cast<int>(y), rows[y][x]);
    }
  }
  return image;
}

Rows pixels(const Image& image) {
  Rows rows(static_cast<size_t>(image.getHeight()));
  for (int y = 0; y < image.getHeight(); y++) {
    for (int x = 0; x < image.getWidth(); x++) {
      rows[static_cast<size_t>(y)].push_back(image.getVal(x, y));
    }
  }
  return rows;
}

/** Degrees of latitude and longitude, nx by ny points of a spacing around a centre. */
Domain latLon(float clat, float clon, int nx, int ny, float spacing) {
  DomainVal val;
  val.proj = DomainVal::LATLON;
  val.clat = clat;
  val.clon = clon;
  val.nx = nx;
  val.ny = ny;
  val.dx = val.dy = spacing;
  return Domain(val);
}

Image trueColor(const Rows& rows) {
  Image image = make(rows, 24, Image::TRUE_COLOR);
  image.setMask(0xff0000, 0x00ff00, 0x0000ff);
  return image;
}

std::string text(const RGB& rgb) {
  char buffer[60];
  std::snprintf(buffer, sizeof(buffer), "%.3f %.3f %.3f", static_cast<double>(rgb.red),
                static_cast<double>(rgb.grn), static_cast<double>(rgb.blu));
  return buffer;
}

TEST(ImageTest, StoresPixelsOfEachWidthAndOrder) {
  const struct {
    int bits;
    int order;
    int value;
    int got;
    std::vector<int> bytes;
  } rows[] = {{8, 1, 0x1ff, 0xff, {0xff}},
              {16, 1, 0x12345, 0x2345, {0x23, 0x45}},
              {16, 0, 0x12345, 0x2345, {0x45, 0x23}},
              {24, 1, 0x123456, 0x123456, {0x12, 0x34, 0x56}},
              {24, 0, 0x123456, 0x123456, {0x56, 0x34, 0x12}},
              {32, 1, -2, -2, {0xff, 0xff, 0xff, 0xfe}},
              {32, 0, -2, -2, {0xfe, 0xff, 0xff, 0xff}}};
  for (const auto& row : rows) {
    Image image = make({{0, 0, 0}, {0, 0, 0}}, row.bits);
    image.setByteOrder(row.order);
    EXPECT_EQ(image.setPixel(1, 1, row.value), 1);
    EXPECT_EQ(image.getVal(1, 1), row.got) << row.bits << " " << row.order;
    EXPECT_EQ(image.getVal(0, 1), 0);
    EXPECT_EQ(image.getVal(2, 1), 0);
    for (size_t i = 0; i < row.bytes.size(); i++) {
      EXPECT_EQ(image.getData()[image.getBytesLine() + row.bits / 8 + static_cast<int>(i)],
                row.bytes[i]);
    }
    for (const auto& [x, y] : {std::pair(-1, 0), {3, 0}, {0, -1}, {0, 2}}) {
      EXPECT_EQ(image.setPixel(x, y, 1), 0);
      EXPECT_EQ(image.getVal(x, y), 0);
      EXPECT_EQ(image.getPixel(x, y), 0);
    }
  }
}

// Deliberate: a pixel of 16 bits for a device has its most significant byte first in any case.
TEST(ImageTest, SixteenBitPixelsIgnoreTheByteOrder) {
  Image image = make({{0, 0x1234}}, 16);
  image.setByteOrder(0);
  EXPECT_EQ(image.getPixel(1, 0), 0x1234);
  EXPECT_EQ(image.getVal(1, 0), 0x3412);
}

TEST(ImageTest, SizesBeyondReasonHaveNoStore) {
  constexpr struct {
    int w, h, bits;
    int result;
    bool valid;
  } rows[] = {{2, 2, 8, 1, true},          {0, 5, 8, 1, false},
              {-5, 5, 8, 1, false},        {5, -5, 8, 1, false},
              {60000, 60000, 8, 0, false}, {2000000000, 2000000000, 32, 0, false},
              {3, 3, 1, 1, false}};
  for (const auto& row : rows) {
    Image image;
    image.set(row.w, row.h, row.bits);
    EXPECT_EQ(image.allocData(), row.result) << row.w;
    EXPECT_EQ(image.validData(), row.valid) << row.w;
    EXPECT_EQ(image.setPixel(0, 0, 7), row.valid ? 1 : 0) << row.w;
    EXPECT_EQ(image.getPixel(0.0F, 0.0F), row.valid ? 7 : 0) << row.w;
    EXPECT_EQ(image.setPixel(9), row.valid ? 1 : 0) << row.w;
  }
  Image image = make({{1, 2}, {3, 4}});
  image.setWidth(50);
  image.setHeight(50);
  EXPECT_EQ(image.getVal(49, 49), 0) << "a header larger than the store";
  EXPECT_EQ(image.getPixel(30.0F, 1.0F), 0);
}

TEST(ImageTest, DevicePixelsGoThroughTheTable) {
  Image image = make({{0, 1, 2, 200}}, 8, Image::INDEXED);
  EXPECT_EQ(image.getPixel(3, 0), 200) << "no table";
  EXPECT_EQ(image.allocColors(0), 0);
  EXPECT_EQ(image.allocColors(3), 1);
  for (int i = 0; i < 3; i++) image.setColorVal(i, 1000 + i);
  EXPECT_EQ(image.getPixel(1, 0), 1001);
  EXPECT_EQ(image.getPixel(3, 0), 1002) << "beyond the table its last entry";
  EXPECT_EQ(image.getPixel(9, 0), 0);
  EXPECT_EQ(image.setColorVal(3, 1) + image.setRed(-1, 1.0F) + image.setColor(3, RGB()), 0);
  RGB rgb;
  EXPECT_EQ(image.getRGB(3, 0, rgb), 200);
  EXPECT_EQ(text(rgb), "0.000 0.000 0.000") << "a code beyond the table";
  image.freeColors();
  EXPECT_EQ(image.getPixel(3, 0), 200) << "a count without a table";
}

TEST(ImageTest, ReadsColours) {
  RGB rgb(1.0F, 1.0F, 1.0F);
  Image image = trueColor({{0xff8000, 0x0000ff}});
  EXPECT_EQ(image.getRGB(0, 0, rgb), 0xff8000);
  EXPECT_EQ(text(rgb), "1.000 0.502 0.000");
  image.setMask(0, 0xf800, 0x80000000);
  image.getRGB(0, 0, rgb);
  EXPECT_EQ(text(rgb), "0.000 0.516 0.000") << "absent and odd masks";

  Image indexed = make({{0, 1, 2}}, 8, Image::INDEXED);
  indexed.allocColors(2);
  indexed.setRed(1, -1.0F);
  EXPECT_FALSE(indexed.isPixelTrans(0, 0));
  EXPECT_TRUE(indexed.isPixelTrans(1, 0));
  EXPECT_FALSE(indexed.isPixelTrans(2, 0));
  indexed.setTransColor(2);
  EXPECT_TRUE(indexed.isPixelTrans(2, 0));
}

TEST(ImageTest, SamplesWithinALevelClass) {
  const struct {
    const char* fault;
    const char* cutoff;
    Rows rows;
    float x, y;
    int value;
  } rows[] = {{"AllEqual", "", {{5, 5}, {5, 5}}, 0.3F, 0.7F, 5},
              {"Interpolates", "", {{0, 10}, {20, 30}}, 0.25F, 0.5F, 13},
              {"Rounds", "", {{0, 1}, {0, 1}}, 0.5F, 0.0F, 1},
              // Deliberate: the last column and row are off the image.
              {"LastColumn", "", {{7, 7}, {7, 7}}, 1.0F, 0.0F, 0},
              {"LastRow", "", {{7, 7}, {7, 7}}, 0.0F, 1.0F, 0},
              {"Left", "", {{7, 7}, {7, 7}}, -0.01F, 0.0F, 0},
              {"NotANumber", "", {{7, 7}, {7, 7}}, NOT_A_NUMBER, 0.0F, 0},
              {"NoDataStandsForItsClass", "0:7:13", {{0, 11}, {0, 11}}, 0.5F, 0.0F, 9},
              {"NoDataStaysNoData", "0:7:13", {{0, 8}, {0, 8}}, 0.25F, 0.0F, 0},
              {"TwoClassesNearest", "0:7:13", {{5, 11}, {5, 11}}, 0.6F, 0.0F, 11},
              {"TwoClassesNearestBelow", "0:7:13", {{5, 5}, {11, 11}}, 0.0F, 0.5F, 5},
              {"LowestClass", "0:7:13", {{0, 6}, {0, 6}}, 0.5F, 0.0F, 3},
              {"HighestClass", "0:7:13", {{20, 30}, {20, 30}}, 0.5F, 0.0F, 25},
              {"BaseAlone", "255", {{255, 10}, {255, 10}}, 0.5F, 0.0F, 133}};
  for (const auto& row : rows) {
    Image image = make(row.rows);
    image.setCutoff(row.cutoff);
    EXPECT_EQ(image.getPixel(row.x, row.y), row.value) << row.fault;
  }
  Image image = make({{0, 10}, {20, 30}});
  EXPECT_EQ(image.getPixel(1, 1), 30) << "by integers the last row counts";
  image.setPixAve(false);
  EXPECT_EQ(image.getPixel(0.6F, 0.5F), 10);
  EXPECT_EQ(image.setPixel(99), 1);
  EXPECT_EQ(image.getVal(0, 0), 99) << "the pixel read last is that of the upper left";
}

TEST(ImageTest, TranslatesPhysicalValues) {
  constexpr struct {
    float value;
    int without;
    int with;
  } rows[] = {{-5.0F, 0, 0},    {0.0F, 0, 0},       {9.9F, 9, 0},          {10.0F, 10, 1},
              {25.0F, 25, 255}, {500.0F, 255, 255}, {NOT_A_NUMBER, 0, 255}};
  Image image = make({{0, 1}, {2, 3}});
  Image table = image;
  EXPECT_EQ(image.setValue(0, 1.0F), 0) << "no table";
  EXPECT_EQ(table.allocValues(), 1);
  FloatArray values;
  for (const float v : {0.0F, 10.0F, 20.0F}) values.add(v);
  table.setValues(values);
  for (const auto& row : rows) {
    EXPECT_EQ(image.getIndex(row.value), row.without) << row.value;
    EXPECT_EQ(table.getIndex(row.value), row.with) << row.value;
  }
  EXPECT_EQ(image.getValue(1, 1), 3.0F);
  EXPECT_EQ(table.getValue(0.9F, 1.9F), 20.0F) << "truncated";
  EXPECT_EQ(table.getValue(1, 1), Const::FMISS);
  EXPECT_EQ(table.setValue(256, 1.0F), 0);
  EXPECT_EQ(table.setValue(0, 0, 10.0F), 1);
  EXPECT_EQ(table.getVal(0, 0), 1);
  EXPECT_EQ(make({{1}}, 16).allocValues(), 0);
}

TEST(ImageTest, FindsPlacesOnTheEarth) {
  // 5 by 5 points of 10 degrees around 40 N 100 W: the upper left is 60 N 120 W.
  Image image = make({{1, 2, 3, 4, 5},
                      {6, 7, 8, 9, 10},
                      {11, 12, 13, 14, 15},
                      {0, 0, 0, 0, 0},
                      {21, 22, 23, 24, 25}});
  image.setDomain(latLon(40.0F, -100.0F, 5, 5, 10.0F));
  EXPECT_EQ(image.getPixel(EarthPoint(50.0F, -110.0F)), 7);
  EXPECT_EQ(image.getPixel(EarthPoint(60.0F, -105.0F)), 3) << "between 2 and 3, rounded up";
  EXPECT_EQ(image.getVal(EarthPoint(56.0F, -96.0F)), 3) << "nearest";
  EXPECT_EQ(image.getValue(EarthPoint(56.0F, -96.0F)), 3.0F);
  EXPECT_EQ(image.getVal(EarthPoint(20.0F, -80.0F)), 25);
  EXPECT_EQ(image.getPixel(EarthPoint(20.0F, -80.0F)), 0) << "last row";
  EXPECT_EQ(image.getPixel(EarthPoint()), 0);
  EXPECT_EQ(image.setPixel(GridPoint(0.6F, 1.4F), 99), 1);
  EXPECT_EQ(image.getVal(1, 1), 99);
  testing::internal::CaptureStdout();
  image.printData(EarthPoint(20.0F, -80.0F));
  make({{3, 3, 200}}).printHist();
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "Ind: 25 Value: 25.000000\n  3      2\n200      1\n");
}

TEST(ImageMathTest, RemapsOntoAnotherDomain) {
  Image image = make({{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 16}});
  image.setDomain(latLon(45.0F, -100.0F, 4, 4, 10.0F));  // from 60 N 115 W
  Image result;
  // One column to the west and one row to the north of the image.
  EXPECT_EQ(ImageMath::remap(image, latLon(55.0F, -110.0F, 4, 4, 10.0F), result), 1);
  EXPECT_EQ(pixels(result), (Rows{{0, 0, 0, 0}, {0, 1, 2, 3}, {0, 5, 6, 7}, {0, 9, 10, 11}}));
  EXPECT_EQ(result.getSource(), 1);
  EXPECT_EQ(ImageMath::remap(image, image.getDomain(), image), 1) << "onto itself";
  EXPECT_EQ(pixels(image), (Rows{{1, 2, 3, 0}, {5, 6, 7, 0}, {9, 10, 11, 0}, {0, 0, 0, 0}}));
  EXPECT_EQ(ImageMath::remap(image, Domain(), result), 0);
  EXPECT_EQ(ImageMath::remap(image, latLon(0.0F, 0.0F, 50000, 50000, 0.001F), result), 0);
}

/** The walk over the earth, pixel by pixel. */
Image remapSlowly(const Image& source, const Domain& domain) {
  Image result;
  result.copyInfo(source);
  result.setDomain(domain);
  result.setBytesLine();
  result.allocData();
  Domain to = domain;
  Domain from = source.getDomain();
  float y = to.getLimits().ymax;
  for (int j = 0; j < to.getNy(); j++, y -= to.getDy()) {
    float x = to.getLimits().xmin;
    for (int i = 0; i < to.getNx(); i++, x += to.getDx()) {
      EarthPoint e;
      GridPoint g;
      to.tran(Point(x, y), e);
      if (e.lat != Const::FMISS) from.tran(e, g);
      result.setPixel(i, j, source.getPixel(g));
    }
  }
  return result;
}

// A way within the plane must give what the one over the earth does, to the pixel: at poles, across
// the gap of a cone, past the edge of a map, on cells as small as the rounding of latitudes.
TEST(ImageMathTest, RemapWithinOnePlaneIsThatOverTheEarth) {
  const struct {
    const char* source;
    const char* target;
  } rows[] = {
      {"lamb:40:-97:33:45,38,-96,200,150,0.2,0.2", "lamb:40:-97:33:45,39,-95,333,201,0.1,0.11"},
      {"lamb:40:-97:33:45,38,-96,200,150,0.2,0.2", "lamb:40:-97:33:45,38,-96,200,150,0.2,0.2"},
      {"lamb:40:10:33:45,90,10,300,300,1,1", "lamb:40:10:33:45,90,10,310,290,0.9,0.9"},
      {"lamb:85:10:88:89,89.9,10,300,300,0.01,0.01", "lamb:85:10:88:89,89.9,10,310,290,0.01,0.01"},
      {"lamb:40:-97:33:45,38,-96,200,150,0.0001,0.0001",
       "lamb:40:-97:33:45,38,-96,210,140,0.0001,0.0001"},
      {"pstereo:90:-98,80,0,200,200,1.5,1.5", "pstereo:90:-98,85,170,250,250,1.1,1.3"},
      {"pstereo:90:-98,90,0,300,300,9,9", "pstereo:90:-98,90,0,250,250,10.3,11"},
      {"merc:0:170,0,175,400,200,1.1,1.1", "merc:0:170,5,165,600,180,0.9,1.3"},
      {"lambaz:40:-97,40,-97,300,300,0.9,0.9", "lambaz:40:-97,30,-97,310,310,0.95,0.8"},
      {"ortho:40:-97,40,-97,300,300,0.5,0.5", "ortho:40:-97,40,-90,310,310,0.45,0.5"},
      {"sat:0:-96:421,30,-96,300,300,0.1,0.1", "sat:0:-96:421,30,-96,310,280,0.1,0.11"},
      {"moll:0:-97,0,-97,300,150,0.9,0.9", "moll:0:-97,5,-90,310,140,0.85,0.95"},
  };
  enum Kind { FLAT, BLOCKS, NOISE, CLASSES, COLORS, KINDS };
  int seen = 0;
  for (const auto& row : rows) {
    Domain from;
    Domain to;
    from.set(row.source);
    to.set(row.target);
    for (int kind = FLAT; kind < KINDS; kind++) {
      Image image;
      image.set(from, 8);
      image.setColorType(Image::DATA);
      image.allocData();
      if (kind == COLORS) image.allocColors(256);
      if (kind == CLASSES) image.setCutoff("7:40:120");
      const int block = kind == BLOCKS ? 8 : 1;
      for (int y = 0; y < image.getHeight(); y++) {
        for (int x = 0; x < image.getWidth(); x++) {
          const unsigned random = static_cast<unsigned>(x / block + y / block * 977) * 2654435761U;
          image.setPixel(x, y, kind == FLAT ? 9 : static_cast<int>(random >> 24));
        }
      }
      Image result;
      EXPECT_EQ(ImageMath::remap(image, to, result), 1);
      const Image slow = remapSlowly(image, to);
      EXPECT_EQ(pixels(result), pixels(slow)) << row.target << " kind " << kind;
      seen += slow.getVal(100, 70) != 0 ? 1 : 0;
    }
  }
  EXPECT_GT(seen, 30) << "of 60";
}

TEST(ImageMathTest, ClipsABox) {
  Image image =
      make({{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 16}}, 8, Image::INDEXED);
  image.allocColors(20);
  image.setDomain(latLon(45.0F, -100.0F, 4, 4, 10.0F));
  Image result;
  EXPECT_EQ(ImageMath::clip(image, GeomBox(1.0F, 1.0F, 2.9F, 2.0F), result), 1);
  EXPECT_EQ(pixels(result), (Rows{{6, 7}, {10, 11}}));
  EXPECT_FALSE(result.hasColors());
  EXPECT_EQ(result.getNumColors(), 20);
  EXPECT_EQ(result.getPixel(0, 0), 6);
  EXPECT_FLOAT_EQ(result.getDomainVal().clat, 40.0F);
  EXPECT_FLOAT_EQ(result.getDomainVal().clon, -90.5F);
  ImageMath::clip(image, GeomBox(-1.0F, 2.0F, 2.0F, 2.0F), result);
  EXPECT_EQ(pixels(result), (Rows{{0, 9}, {0, 0}}));
  for (const GeomBox& box :
       {GeomBox(), GeomBox(0.0F, 0.0F, NOT_A_NUMBER, 5.0F), GeomBox(0.0F, 0.0F, 1e9F, 1e9F)}) {
    EXPECT_EQ(ImageMath::clip(image, box, result), 0);
  }
}

TEST(ImageMathTest, IndexesExactColours) {
  Image image = trueColor({{0xff0000, 0x00ff00}, {0xff0000, 0x0000ff}});
  image.setTransColor(0x00ff00);
  Image result;
  EXPECT_EQ(ImageMath::toIndex(image, result), 1);
  EXPECT_EQ(pixels(result), (Rows{{0, 1}, {0, 2}}));
  EXPECT_EQ(result.getNumColors(), 3);
  EXPECT_EQ(result.getTransColor(), 1);
  EXPECT_EQ(result.getBlu(2), 1.0F);
  EXPECT_EQ(ImageMath::toIndex(result, image), 1) << "indexed already";
  EXPECT_EQ(pixels(image), pixels(result));
  Rows rows(2, std::vector<int>(150));
  for (int i = 0; i < 300; i++)
    rows[static_cast<size_t>(i) / 150][static_cast<size_t>(i) % 150] = i;
  ImageMath::toIndex(trueColor(rows), result);
  EXPECT_EQ(result.getNumColors(), 256);
  EXPECT_EQ(result.getVal(105, 1), 255);
  EXPECT_EQ(result.getVal(106, 1), 0) << "no room for colour 257";
}

TEST(ImageMathTest, IndexesTheNearestColours) {
  ColorMap map;
  map.add("black", 0.0F, 0.0F, 0.0F);
  map.add("red", 1.0F, 0.0F, 0.0F);
  map.add("red again", 1.0F, 0.0F, 0.0F);
  map.add("white", 1.0F, 1.0F, 1.0F);
  Image image = trueColor({{0xe01010, 0x202020, 0xf0f0f0}});
  image.setTransColor(0xf0f0f0);
  Image result;
  EXPECT_EQ(ImageMath::toIndex(image, map, result), 1);
  EXPECT_EQ(pixels(result), (Rows{{1, 0, 3}})) << "a tie goes to the lower index";
  EXPECT_EQ(result.getTransColor(), 3);
  EXPECT_EQ(result.getNumColors(), 4);
  EXPECT_EQ(ImageMath::toIndex(image, ColorMap(), result), 1);
  EXPECT_EQ(pixels(result), (Rows{{0, 0, 0}}));
}

TEST(ImageMathTest, TurnsColoursToGrayAndBack) {
  Image image = trueColor({{0xff0000, 0xffffff, 0x0a0b0c}});
  Image gray;
  EXPECT_EQ(ImageMath::toGray(image, gray), 1);
  EXPECT_EQ(pixels(gray), (Rows{{85, 255, 11}}));
  EXPECT_EQ(gray.getPixel(0, 0), 85) << "no count, so the level itself";
  Image result;
  EXPECT_EQ(ImageMath::toTrueColor(gray, result), 1);
  EXPECT_EQ(pixels(result), (Rows{{0x555555, 0xffffff, 0x0b0b0b}}));
  Image indexed = make({{0, 1, 2}}, 8, Image::INDEXED);
  indexed.allocColors(2);
  indexed.setColor(0, 1.0F, 0.5F, 2.0F);
  indexed.setColor(1, -1.0F, 1.0F, 1.0F);
  ImageMath::toTrueColor(indexed, 32, result);
  EXPECT_EQ(pixels(result), (Rows{{0xff7fff, 0, 0}})) << "transparent, and beyond the table";
  RGB rgb;
  result.getRGB(0, 0, rgb);
  EXPECT_EQ(text(rgb), "1.000 0.498 1.000") << "the masks of the result";
  ImageMath::toTrueColor(make({{3, 4}}), indexed);
  EXPECT_EQ(pixels(indexed), (Rows{{0x030303, 0x040404}}));
}

TEST(ImageMathTest, MergesEqualTableEntries) {
  Image image = make({{0, 1, 2, 3, 200}}, 8, Image::INDEXED);
  image.allocColors(4);
  image.setRed(1, 1.0F);
  image.setRed(3, 1.0F);
  image.setGrn(3, 1.0F);
  image.setTransColor(3);
  EXPECT_EQ(ImageMath::compressColor(image), 1);
  EXPECT_EQ(pixels(image), (Rows{{0, 1, 0, 2, 200}}));
  EXPECT_EQ(image.getGrn(2), 1.0F);
  EXPECT_EQ(image.getNumColors(), 4);
  EXPECT_EQ(image.getTransColor(), 2);
}

TEST(ImageMathTest, StampsOneImageOntoAnother) {
  Image image = make({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
  image.setDomain(latLon(40.0F, -100.0F, 3, 3, 10.0F));
  Image overlay = make({{0, 60, 99}, {70, 80, 99}, {99, 99, 99}});
  overlay.setDomain(latLon(30.0F, -90.0F, 3, 3, 10.0F));  // its upper left is the centre
  EXPECT_EQ(ImageMath::merge(image, overlay), 1);
  EXPECT_EQ(pixels(image), (Rows{{1, 2, 3}, {4, 5, 60}, {7, 70, 80}}));
}

TEST(ImageMathTest, BlanksOutsideABox) {
  // 5 by 3 points of 5 degrees.
  const struct {
    const char* fault;
    float clon;
    EarthPoint p1, p2;
    Rows rows;
  } rows[] = {{"Plain",
               -100.0F,
               EarthPoint(46.0F, -106.0F),
               EarthPoint(39.0F, -94.0F),
               {{0, 1, 1, 1, 0}, {0, 1, 1, 1, 0}, {0, 0, 0, 0, 0}}},
              {"AcrossTheDateLine",
               170.0F,
               EarthPoint(90.0F, 170.0F),
               EarthPoint(0.0F, -170.0F),
               {{0, 0, 1, 1, 1}, {0, 0, 1, 1, 1}, {0, 0, 1, 1, 1}}},
              {"BeyondTheDateLine",
               -165.0F,
               EarthPoint(90.0F, 170.0F),
               EarthPoint(0.0F, -170.0F),
               {{1, 1, 0, 0, 0}, {1, 1, 0, 0, 0}, {1, 1, 0, 0, 0}}}};
  for (const auto& row : rows) {
    Image image = make({{1, 1, 1, 1, 1}, {1, 1, 1, 1, 1}, {1, 1, 1, 1, 1}});
    image.setDomain(latLon(40.0F, row.clon, 5, 3, 5.0F));
    EXPECT_EQ(ImageMath::blank(image, row.p1, row.p2), 1);
    EXPECT_EQ(pixels(image), row.rows) << row.fault;
  }
  Image image = make({{1, 1, 1}, {1, 1, 1}, {1, 1, 1}});
  image.setDomain(latLon(0.0F, 0.0F, 3, 3, 10.0F));
  EXPECT_EQ(ImageMath::blank(image, 12.0F), 1);
  EXPECT_EQ(pixels(image), (Rows{{0, 1, 0}, {1, 1, 1}, {0, 1, 0}}))
      << "corners are 14.1 degrees off";
}

TEST(ImageMathTest, MasksAgainstAGrid) {
  Image image = make({{10, 20, 30}, {40, 50, 60}, {70, 80, 90}});
  image.setDomain(latLon(40.0F, -100.0F, 3, 3, 10.0F));
  Grid grid;
  grid.setDomain(image.getDomain());
  grid.setSize(3, 3);
  grid.allocData();
  for (int i = 0; i < 9; i++) grid.setValue(i % 3, i / 3, 50.0F);
  Image lesser;
  EXPECT_EQ(ImageMath::maskLesser(lesser, image, grid), 1);
  EXPECT_EQ(pixels(lesser), (Rows{{0, 0, 0}, {0, 0, 60}, {70, 80, 90}}));
  EXPECT_EQ(ImageMath::maskGreater(image, image, grid), 1);
  EXPECT_EQ(pixels(image), (Rows{{10, 20, 30}, {40, 0, 0}, {0, 0, 0}}));
}

}  // namespace
}  // namespace ZQV
