#include "GifFile.h"

#include <cstdlib>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Domain.h"
#include "Image.h"
#include "ImageFile.h"
#include "TempDir.h"

namespace ZQV {
namespace {

using testing::HasSubstr;
using testing::Not;

/** Indexed picture of num colours, entry i of (i, 255 - i, 7 * i) / 255, with pixels by a rule. */
template <typename Rule>
Image picture(int width, int height, int num, Rule rule) {
  Image image;
  image.set(width, height, 8);
  image.setColorType(Image::INDEXED);
  image.allocColors(num);
  for (int i = 0; i < num; i++) {
    image.setColor(i, static_cast<float>(i) / 255.0F, static_cast<float>(255 - i) / 255.0F,
                   static_cast<float>(7 * i % 256) / 255.0F);
  }
  image.allocData();
  for (int y = 0; y < height; y++) {
    for (int x = 0; x < width; x++) image.setPixel(x, y, rule(x, y));
  }
  return image;
}

int noise(int x, int y) {
  return static_cast<int>(
      (static_cast<unsigned>(x * 7919 + y * 104729 + x * y * 31) * 2654435761U) >> 13);
}

std::string pixels(const Image& image) {
  return {reinterpret_cast<const char*>(image.getData()), static_cast<size_t>(image.getDataSize())};
}

std::string write(const TempDir& dir, const Image& image, int inter = 0) {
  GifFile gif(dir.at("a.gif").c_str(), 1);
  gif.setInterlace(inter);
  EXPECT_EQ(gif.write(image), 1);
  gif.close();
  return dir.read("a.gif");
}

Image read(const TempDir& dir, const std::string& bytes, int result = 1) {
  dir.write("in.gif", bytes);
  Image image;
  GifFile gif(dir.at("in.gif").c_str(), 0);
  EXPECT_EQ(gif.read(image), result);
  return image;
}

/** Output of a command, its errors included. */
std::string shell(const TempDir& dir, const std::string& command) {
  const int status = std::system((command + " > '" + dir.at("out") + "' 2>&1").c_str());
  return (status == 0 ? "" : "failed: ") + dir.read("out");
}

/** The pixels, three bytes each, that giflib's own tool finds in a file. */
std::string giflib(const TempDir& dir, const std::string& name) {
  return shell(dir, "gif2rgb -1 -o /dev/stdout '" + dir.at(name) + "'");
}

std::string colors(const Image& image) {
  std::string rgb;
  for (const char c : pixels(image)) {
    const int i = static_cast<unsigned char>(c);
    rgb += {static_cast<char>(i), static_cast<char>(255 - i), static_cast<char>(7 * i)};
  }
  return rgb;
}

/** Codes of a fixed width, low bits first, in sub-blocks of at most 255 bytes. */
std::string codes(const std::vector<int>& list, int bits) {
  std::string bytes;
  unsigned acc = 0;
  int have = 0;
  for (const int code : list) {
    acc |= static_cast<unsigned>(code) << have;
    for (have += bits; have >= 8; have -= 8, acc >>= 8) bytes += static_cast<char>(acc);
  }
  bytes += static_cast<char>(acc);
  std::string out;
  for (size_t i = 0; i < bytes.size(); i += 255) {
    const std::string part = bytes.substr(i, 255);
    out += static_cast<char>(part.size()) + part;
  }
  return out + '\0';
}

std::string size2(int w, int h) {
  return {static_cast<char>(w), static_cast<char>(w >> 8), static_cast<char>(h),
          static_cast<char>(h >> 8)};
}

/** A file with four global colours, blocks ahead of the picture, and the picture's data. */
std::string file(int w, int h, const std::string& blocks, const std::string& data, int flags = 0,
                 const std::string& local = "") {
  return "GIF87a" + size2(w, h) + std::string("\x91\0\0", 3) +
         std::string("\0\0\0\xff\0\0\0\xff\0\0\0\xff", 12) + blocks + "," + std::string(4, '\0') +
         size2(w, h) + static_cast<char>(flags) + local + data + ";";
}

std::string comment(const std::string& text) {
  return "!\xfe" + std::string(1, static_cast<char>(text.size())) + text + std::string(1, '\0');
}

TEST(GifFileTest, WrittenPicturesAreReadByUsAndByGiflib) {
  const TempDir dir;
  // Table full and code widths growing in the noisy ones, strings as long as rows in the flat ones.
  const struct {
    int width, height, num;
    bool noisy;
  } rows[] = {{1, 1, 1, false},       {5, 3, 2, true},      {4, 9, 3, true},
              {640, 200, 16, false},  {100, 100, 17, true}, {333, 77, 256, true},
              {600, 500, 256, false}, {2000, 3, 4, true},   {9, 2, 200, true}};
  for (const auto& row : rows) {
    for (const int inter : {0, 1}) {
      SCOPED_TRACE(std::to_string(row.width) + " " + std::to_string(row.num) + " " +
                   std::to_string(inter));
      const Image image = picture(row.width, row.height, row.num, [&](int x, int y) {
        return (row.noisy ? noise(x, y) & 0xffff : x / 40 + y / 40) % row.num;
      });
      const std::string bytes = write(dir, image, inter);
      const Image back = read(dir, bytes);
      EXPECT_EQ(back.getWidth(), row.width);
      EXPECT_TRUE(pixels(back) == pixels(image));
      EXPECT_TRUE(giflib(dir, "a.gif") == colors(image));
      EXPECT_EQ(back.getColorType(), static_cast<int>(Image::INDEXED));
      EXPECT_FLOAT_EQ(back.getBlu(row.num - 1), image.getBlu(row.num - 1));
    }
  }
}

TEST(GifFileTest, HeaderIsWrittenToTheByte) {
  const TempDir dir;
  Image image = picture(3, 2, 3, [](int x, int y) { return (x + y) % 3; });
  image.setInfo("Base, 0.5");
  image.setTransColor(2);
  const std::string bytes = write(dir, image);
  const std::string want = std::string("GIF89a\x03\0\x02\0\x91\0\0", 13) +
                           std::string("\0\xff\0\x01\xfe\x07\x02\xfd\x0e\0\0\0", 12) +
                           std::string("!\xfe\x0cti=Base, 0.5\0", 16) +
                           std::string("!\xf9\x04\x01\x0a\0\x02\0", 8) +
                           std::string(",\0\0\0\0\x03\0\x02\0\0\x02", 11);
  EXPECT_EQ(bytes.substr(0, want.size()), want);
  // Clear 4, 0, 1, 2 in 3 bits; the string of 1 and 2 as 7, 0, and the end 5 in 4 bits.
  EXPECT_EQ(bytes.substr(want.size()), std::string("\x03\x44\x74\x50\0;", 6));
  EXPECT_EQ(read(dir, bytes).getTransColor(), 2);
  // A pixel past the table makes it larger; without a table of its own all of an image is black.
  image.setPixel(1, 1, 9);
  image.freeColors();
  const Image back = read(dir, write(dir, image));
  EXPECT_EQ(back.getNumColors(), 16);
  EXPECT_EQ(back.getVal(1, 1), 9);
  EXPECT_EQ(back.getGrn(0), 0.0F);
}

TEST(GifFileTest, ReadsWhatOthersWrite) {
  const TempDir dir;
  // A clear code after every two pixels keeps the width at 3 bits.
  const std::string data = "\x02" + codes({4, 1, 2, 4, 3, 0, 4, 1, 2, 5}, 3);
  const std::string want("\1\2\3\0\1\2", 6);
  const struct {
    std::string blocks;
    int trans;
    std::string info;
    float clat;
  } rows[] = {{"", -1, "GIF", Const::FMISS},
              {std::string("!\xf9\x04\0\x05\0\0\0", 8), 0, "GIF", Const::FMISS},  // flag not set
              {std::string("!\xff\x0bNETSCAPE2.0\x03\x01\0\0\0", 19), -1, "GIF", Const::FMISS},
              {comment("a,ti=One,ti=Two"), -1, "Two", Const::FMISS},
              {comment("ti=T,pd=latlon,40,-90,3,2,0.5,0.5"), -1, "T", 40.0F},
              {comment("proj=latlon,41,-90,9,9,0.5,0.5"), -1, "GIF", 41.0F},
              {comment("") + "!\x01" + comment("ti=Z"), -1, "Z", Const::FMISS}};
  for (const auto& row : rows) {
    const Image image = read(dir, file(3, 2, row.blocks, data));
    EXPECT_EQ(pixels(image), want) << row.blocks;
    EXPECT_EQ(image.getTransColor(), row.trans) << row.blocks;
    EXPECT_EQ(image.getInfo(), row.info);
    EXPECT_EQ(image.getDomainVal().clat, row.clat);
    EXPECT_EQ(image.getWidth(), 3) << "the size is the picture's, not the domain's";
  }
  const Image local = read(dir, file(3, 2, "", data, 0x80, "\xff\xff\xff\xff\xff\xff"));
  EXPECT_EQ(pixels(local), want);
  EXPECT_EQ(local.getRed(1), 1.0F);
  EXPECT_EQ(local.getGrn(1), 0.0F) << "the colours of the global table";
}

TEST(GifFileTest, DamagedFilesGiveWhatIsThere) {
  const TempDir dir;
  const Image image = picture(40, 30, 200, [](int x, int y) { return noise(x, y) & 127; });
  const std::string whole = write(dir, image);
  testing::internal::CaptureStderr();
  int full = 0;
  for (size_t n = 0; n < whole.size(); n++) {
    dir.write("in.gif", whole.substr(0, n));
    Image cut;
    GifFile gif(dir.at("in.gif").c_str(), 0);
    const int result = gif.read(cut);
    EXPECT_EQ(result, n < 13 ? 0 : 1) << n;
    if (result == 1 && pixels(cut) == pixels(image)) full++;
  }
  EXPECT_GE(full, 1);
  EXPECT_LE(full, 5) << "only the end of the data and the trailer aren't needed";
  EXPECT_EQ(read(dir, "GIX89a", 0).getWidth(), 0);
  EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("GIF_read: Not a GIF file\n"));
  // Prefixes in a circle: 400 ahead of its time becomes the prefix of 259, and 259 that of 400.
  std::vector<int> circle{256, 1, 400, 1};
  circle.insert(circle.end(), 139, 1);
  circle.insert(circle.end(), {259, 1, 259, 2, 2});
  const Image round = read(dir, file(16, 16, "", "\x08" + codes(circle, 9)));
  EXPECT_EQ(round.getVal(145 % 16, 145 / 16), 1);
  EXPECT_EQ(round.getVal(146 % 16, 146 / 16), 0) << "the end";

  for (int size = 0; size < 256; size++) {  // code sizes without sense
    const std::string data = static_cast<char>(size) + codes({256, 1, 2, 257}, 9);
    EXPECT_EQ(read(dir, file(2, 2, "", data)).getWidth(), 2) << size;
  }
  EXPECT_FALSE(read(dir, file(65535, 65535, "", "\x02"), 0).validData());
  // A picture larger than the screen: what is off the screen is dropped.
  std::string large = file(2, 2, "", "\x02" + codes({4, 1, 2, 4, 3, 3, 4, 1, 1, 5}, 3));
  large[large.find(',') + 5] = 3;
  EXPECT_EQ(pixels(read(dir, large)), std::string("\1\2\3\1", 4));
}

TEST(GifFileTest, AnimationTakesFramesOfOtherFiles) {
  const TempDir dir;
  for (const int i : {0, 1, 2}) {
    Image frame = picture(20, 10, 8, [i](int x, int) { return (x + i) & 7; });
    if (i == 1) frame.setTransColor(5);
    EXPECT_EQ(ImageFile().write(dir.at("f" + std::to_string(i) + ".gif").c_str(), frame), 1);
  }
  GifFile gif(dir.at("loop.gif").c_str(), 1);
  gif.setLoopDelay(20, 150);
  EXPECT_EQ(gif.write(dir.at("f0.gif").c_str()), 1);
  EXPECT_EQ(gif.write(dir.at("f1.gif").c_str()), 1);
  testing::internal::CaptureStderr();
  EXPECT_EQ(gif.write(dir.at("none.gif").c_str()), 0);
  EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("Unable to open GIF file: "));
  EXPECT_EQ(gif.write(dir.at("f2.gif").c_str(), true), 1);
  EXPECT_EQ(gif.write(dir.at("f2.gif").c_str()), 0) << "behind the last one";
  gif.close();
  const std::string text = shell(dir, "giftext '" + dir.at("loop.gif") + "'");
  EXPECT_THAT(text, HasSubstr("Image #3"));
  EXPECT_THAT(text, Not(HasSubstr("Image #4")));
  EXPECT_THAT(text, HasSubstr("DelayTime: 150"));
  EXPECT_THAT(text, HasSubstr("Transparency on: yes"));
  EXPECT_THAT(dir.read("loop.gif"), HasSubstr("NETSCAPE2.0"));
  Image first;
  EXPECT_EQ(ImageFile().read(dir.at("loop.gif").c_str(), first), 1);
  EXPECT_EQ(first.getVal(3, 0), 3);
}

TEST(ImageFileTest, FindsTheTypeOfAFile) {
  const TempDir dir;
  const struct {
    const char* name;
    const char* bytes;
    int by_content;
    int by_name;
  } rows[] = {{"a.GIF", "GIF89a", 3, 3}, {"b", "\x89PNG\r\n", 4, 0}, {"c.imgz", "ZQVIMG4Z\n", 1, 2},
              {"d.png", "", 0, 4},       {"e.img", "xx", 0, 1},      {"f.txt", "GI", 0, 0}};
  for (const auto& row : rows) {
    const std::string path = dir.write(row.name, row.bytes);
    EXPECT_EQ(ImageFile::checkType(path.c_str()), row.by_content) << row.name;
    EXPECT_EQ(ImageFile::checkFilename(row.name), row.by_name) << row.name;
  }
  EXPECT_EQ(ImageFile::checkType(dir.at("missing").c_str()), 0);
  EXPECT_EQ(ImageFile::getType("GIF"), 0) << "the words are exact";
  EXPECT_EQ(ImageFile::checkFilename(nullptr), 0);
  EXPECT_EQ(ImageFile::getType(nullptr), 0);

  Image image = picture(6, 4, 4, [](int x, int y) { return (x + y) & 3; });
  for (const auto& [name, kind] : {std::pair("x.gif", "gif"), {"x.png", "png"}, {"gif", "png"}}) {
    ImageFile out;
    EXPECT_EQ(out.write(image), 0) << "not open";
    EXPECT_EQ(out.open(dir.at(name).c_str(), 1, kind), 1);
    EXPECT_EQ(out.write(image), 1);
    EXPECT_EQ(out.read(image), 0) << "open for writing";
    out.close();
    Image back;
    EXPECT_EQ(ImageFile().read(dir.at(name).c_str(), back), 1) << "by content";
    EXPECT_EQ(pixels(back), pixels(image)) << name;
  }
  EXPECT_EQ(ImageFile().write(dir.at("x.txt").c_str(), image), 0);
  EXPECT_EQ(ImageFile().open(dir.at("f.txt").c_str()), 0);
}

}  // namespace
}  // namespace ZQV
