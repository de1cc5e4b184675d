#include "ImgZqvFile.h"

#include <string>

#include <gtest/gtest.h>

#include "Const.h"
#include "Domain.h"
#include "FileTool.h"
#include "Image.h"
#include "ImageFile.h"
#include "NidsMaker.h"
#include "TempDir.h"

namespace ZQV {
namespace {

std::string pixels(const Image& image) {
  return {reinterpret_cast<const char*>(image.getData()), static_cast<size_t>(image.getDataSize())};
}

Image read(const TempDir& dir, const std::string& bytes, int result = 1) {
  dir.write("in.img", bytes);
  Image image;
  ImgZqvFile file;
  EXPECT_EQ(file.read(dir.at("in.img").c_str(), image), result);
  file.close();
  return image;
}

Image sample(int w, int h) {
  Image image;
  image.set(w, h, 8);
  image.setColorType(Image::DATA);
  image.allocData();
  for (int y = 0; y < h; y++) {
    for (int x = 0; x < w; x++) image.setPixel(x, y, x * y + (x ^ y) * 3);
  }
  return image;
}

TEST(ImgZqvFileTest, ReadsHandMadeFiles) {
  const TempDir dir;
  const std::string head = "\n12:30:00Z 03 MAY 2021  \nRain, all \n";
  const std::string domain = "NONE\n3 2\n";
  const struct {
    std::string bytes;
    int version;
    std::string want;
  } rows[] = {{"ZQVIMG" + head + domain + "abcdef", 3, "abcdef"},
              {"ZQVIMG4" + head + domain + "abcdefgh", 4, "abcdef"},
              {"ZQVIMG" + head + "3 2\nabc", 3, std::string("abc\0\0\0", 6)},
              {"ZQVIMG4Z" + head + domain + NidsMaker::zlib("ab") + NidsMaker::zlib("") +
                   NidsMaker::zlib("cdef"),
               4, "abcdef"},
              // What inflates beyond the image is dropped.
              {"ZQVIMGZ" + head + domain + NidsMaker::zlib("ab") + NidsMaker::zlib("cdefghijkl"), 3,
               "abcdef"},
              {"ZQVIMGZ" + head + domain + NidsMaker::zlib("abc"), 3, std::string("abc\0\0\0", 6)},
              {"ZQVIMG*" + head + domain + "sub/pix", 3, "ABCDEF"},
              {"ZQVIMG*" + head + domain + dir.at("sub/pix") + " x", 3, "ABCDEF"}};
  dir.write("sub/pix", "ABCDEFG");
  for (const auto& row : rows) {
    const Image image = read(dir, row.bytes);
    EXPECT_EQ(pixels(image), row.want) << row.bytes;
    EXPECT_EQ(image.getVersion(), row.version);
    EXPECT_STREQ(image.getInfo(), "Rain, all");
    EXPECT_STREQ(image.getDatim(), "12:30:00Z 03 MAY 2021");
    EXPECT_EQ(image.getDate().getDay(), 3);
    EXPECT_EQ(image.getColorType(), 1);
    EXPECT_EQ(image.getSource(), 1);
    EXPECT_FALSE(image.getDomain().isSet());
  }
}

TEST(ImgZqvFileTest, ReadsTablesInBigEndianOrder) {
  const TempDir dir;
  std::string table;
  for (int i = 0; i < 256; i++) table += std::string("\x41\x20\0", 3) + static_cast<char>(i);
  const std::string cuts("\xff\xff\0\2\0\7\0\x0d", 8);
  const Image image = read(dir, "ZQVIMG4VC\n\n\n1 1\n" + table + cuts + "p");
  EXPECT_EQ(image.getColorType(), static_cast<int>(Image::DATA));
  EXPECT_EQ(image.getValue(0), 10.0F);
  EXPECT_EQ(image.getValue(255), 10.0F + 255.0F / 1048576.0F);
  EXPECT_EQ(image.getCutBase(), -1);
  EXPECT_EQ(image.getNumCut(), 2);
  EXPECT_EQ(image.getCutoff(1), 7);
  EXPECT_EQ(image.getCutoff(2), 13);
  EXPECT_EQ(image.getCutoff(3), 256);
  EXPECT_EQ(pixels(image), "p");
}

TEST(ImgZqvFileTest, ReadsEachFormOfTheDomain) {
  const TempDir dir;
  constexpr float M = Const::FMISS;
  // A domain takes missing origins from its centre, 40 north and 100 west.
  const struct {
    const char* line;
    int proj;
    float plat, plon, p0, p1;
  } rows[] = {{"LL 40 -100 0.5 0.25 4 3", 2, 40, -100, M, M},
              {"me 40 -100 0.5 0.25 4 3", 3, 40, -100, M, M},
              {"PS 40 -100 0.5 0.25 4 3", 1, 40, -100, M, M},
              {"PS:-105.5 40 -100 0.5 0.25 4 3", 1, 40, -105.5F, M, M},
              {"LC 40 -100 0.5 0.25 4 3", 4, 40, -100, M, M},
              {"LC:-95 40 -100 0.5 0.25 4 3", 4, 40, -95, 30, 60},
              {"LC:25:-95:33:45:-9999 40 -100 0.5 0.25 4 3", 4, 25, -95, 33, 45},
              {"SAT:-75 40 -100 0.5 0.25 4 3", 9, 40, -75, M, M},
              {"merc,40,-100,4,3,0.5,0.25", 3, 40, -100, M, M}};
  for (const auto& row : rows) {
    const Image image = read(dir, std::string("ZQVIMG4\n\n\n") + row.line + "\nabcdefghijkl");
    const DomainVal val = image.getDomainVal();
    EXPECT_EQ(val.proj, row.proj) << row.line;
    EXPECT_EQ(val.plat, row.plat) << row.line;
    EXPECT_EQ(val.plon, row.plon) << row.line;
    EXPECT_EQ(val.param[0], row.p0) << row.line;
    EXPECT_EQ(val.param[1], row.p1) << row.line;
    EXPECT_EQ(val.clat, 40.0F);
    EXPECT_EQ(val.dy, 0.25F);
    EXPECT_EQ(image.getWidth(), 4);
    EXPECT_EQ(pixels(image), "abcdefghijkl");
  }
}

TEST(ImgZqvFileTest, WrittenFilesComeBackBitForBit) {
  const TempDir dir;
  // Projection 9 swaps its origin in the old form, and an old Lambert domain without parameters
  // comes back with those of the form.
  constexpr float M = Const::FMISS;
  const struct {
    int proj;
    float plon, p0;
    bool old_form;
  } rows[] = {{Const::MISS, M, M, true}, {1, M, M, true},       {1, -105.5F, M, true},
              {2, M, M, true},           {3, M, M, true},       {4, -95.0F, 33.0F, true},
              {4, -95.0F, M, false},     {9, -75.0F, M, false}, {6, M, M, false}};
  for (const auto& row : rows) {
    for (const int version : {3, 4}) {
      for (const int form : {1, 2}) {
        SCOPED_TRACE(std::to_string(row.proj) + " " + std::to_string(version));
        Image image = sample(150, 200);
        image.setInfo("Two\nlines");
        image.setDatim("12:30:00Z 03 MAY 2021");
        if (row.proj != Const::MISS) {
          DomainVal val;
          val.proj = row.proj;
          val.plon = row.plon;
          val.param[0] = row.p0;
          val.param[1] = row.p0 == M ? M : 45.0F;
          val.clat = 40.0F;
          val.clon = -100.0F;
          val.nx = 150;
          val.ny = 200;
          val.dx = 0.5F;
          val.dy = 0.25F;
          image.setDomain(val);
        }
        image.allocValues();
        for (int i = 0; i < 200; i++) image.setValue(i, 0.1F * static_cast<float>(i * i));
        image.setCutoff("3:40:90:200");
        ImgZqvFile file;
        file.setVer(version);
        EXPECT_EQ(file.write(dir.at("a.img").c_str(), form, image), 1);
        const std::string flags = std::string(version == 4 ? "4" : "") + (form == 2 ? "Z" : "") +
                                  (version == 4 ? "VC" : "");
        EXPECT_EQ(dir.read("a.img").substr(0, 7 + flags.size()), "ZQVIMG" + flags + "\n");
        Image back;
        EXPECT_EQ(ImageFile().read(dir.at("a.img").c_str(), back), 1);
        EXPECT_TRUE(pixels(back) == pixels(image));
        EXPECT_STREQ(back.getInfo(), "Two lines");
        EXPECT_EQ(back.getVersion(), version);
        if (version == 4 || row.old_form) {
          EXPECT_TRUE(DomainVal::compare(back.getDomainVal(), image.getDomainVal()));
        }
        if (version == 3) continue;
        for (int i = 0; i < 256; i++) EXPECT_EQ(back.getValue(i), image.getValue(i));
        EXPECT_EQ(back.getCutBase(), 3);
        EXPECT_EQ(back.getNumCut(), 3);
        for (int i = 0; i < 5; i++) EXPECT_EQ(back.getCutoff(i), image.getCutoff(i)) << i;
      }
    }
  }
}

TEST(ImgZqvFileTest, PixelsAreWrittenOfPlainImagesOnly) {
  const TempDir dir;
  Image image = sample(4, 2);
  image.allocColors(3);
  ImgZqvFile file;
  EXPECT_EQ(file.write(dir.at("a.img").c_str(), 1, image), 1);
  EXPECT_EQ(dir.read("a.img"), "ZQVIMG4\n\n\n4 2\n");
  image.freeColors();  // the count stays, as in an image that was cut out
  image.setCutoff("5");
  EXPECT_EQ(file.write(dir.at("a.img").c_str(), 1, image), 1);
  EXPECT_EQ(dir.read("a.img").substr(0, 20),
            std::string("ZQVIMG4C\n\n\n4 2\n\0\5\0\0", 19) + pixels(image)[0]);
  Image back;
  EXPECT_EQ(file.read(dir.at("a.img").c_str(), back), 1);
  EXPECT_TRUE(back.hasCutoff());
  EXPECT_EQ(back.getNumCut(), 0);
  EXPECT_EQ(file.write("/dev/full", 1, image), 0);
  EXPECT_EQ(file.write(image), 0) << "not open";
}

TEST(ImgZqvFileTest, BadFilesAreHarmless) {
  const TempDir dir;
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  dir.write("pix", "ABCDEF");
  ImgZqvFile file;
  Image image;
  EXPECT_EQ(file.open(dir.write("x", "ZQVIM").c_str()), 0);
  EXPECT_EQ(file.open(dir.at("missing").c_str()), 0);
  EXPECT_EQ(file.readHeader(image), 0);
  EXPECT_EQ(file.readData(image), 0);
  const struct {
    std::string bytes;
    int result;
    size_t size;
  } rows[] = {{"ZQVIMG", 1, 0},
              {"ZQVIMG4VC\n\n\n2 2\nab", 1, 4},
              {"ZQVIMG\n\n\n-3 5\nab", 1, 0},
              {"ZQVIMG\n\n\n100000 100000\nab", 0, 0},
              {"ZQVIMG\n\n\nLL 40 nan 1e39 -inf 3 -2\nab", 1, 0},
              {"ZQVIMG\n\n\nLL 40\nab", 1, 0},
              {"ZQVIMG4C\n\n\n2 1\n" + std::string("\0\1\x7f\xff", 4) + "ab", 1, 2},
              {"ZQVIMG*\n\n\n3 2\nnone", -1, 6},
              {"ZQVIMG*\n\n\n3 2\n", -1, 6},
              {"ZQVIMG*\n\n\n3 2\n|touch${IFS}" + dir.at("made"), -1, 6},
              {"ZQVIMG*\n\n\n3 2\n-", -1, 6},
              {"ZQVIMG*\n\n\n3 2\n/dev/zero", -1, 6},
              {"ZQVIMG*\n\n\n3 2\n.", -1, 6},
              {"ZQVIMGZ\n\n\n3 2\n" + NidsMaker::zlib("abcdef").substr(0, 9), 1, 6},
              {"ZQVIMG" + std::string(300, 'Z') + "\n" + std::string(300, 'd') + "\n" +
                   std::string(300, 'i') + "\n2 1\n" + NidsMaker::zlib("yz"),
               1, 2}};
  for (const auto& row : rows) {
    EXPECT_EQ(pixels(read(dir, row.bytes, row.result)).size(), row.size) << row.bytes;
  }
  EXPECT_FALSE(FileTool::exist(dir.at("made").c_str()));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  testing::internal::CaptureStdout();
  read(dir, "ZQVIMGZ\n\n\n3 2\nnot compressed", -1);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Decomp DATA ERR\n");
  // A first line that isn't right comes to light at once where there is nothing to look at ahead.
  dir.write("in.img", "ZQVIMG\n\n\n2 1\nab");
  EXPECT_EQ(file.open(("|cat " + dir.at("in.img")).c_str()), 1);
  EXPECT_EQ(file.read(image), 1);
  EXPECT_EQ(pixels(image), "ab");
}

}  // namespace
}  // namespace ZQV
