#include "PngFile.h"

#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zlib.h>

#include "Domain.h"
#include "Image.h"
#include "NidsMaker.h"
#include "TempDir.h"

namespace ZQV {
namespace {

using testing::ElementsAre;

// A PNG writer and reader of the test's own, of unfiltered rows.

std::string big4(uint32_t v) {
  return {static_cast<char>(v >> 24), static_cast<char>(v >> 16), static_cast<char>(v >> 8),
          static_cast<char>(v)};
}

uint32_t get4(const std::string& s, size_t at) {
  uint32_t v = 0;
  for (size_t i = 0; i < 4; i++) v = v << 8 | static_cast<unsigned char>(s.at(at + i));
  return v;
}

std::string chunk(const std::string& body) {  // type and data
  const uLong crc =
      ::crc32(0, reinterpret_cast<const Bytef*>(body.data()), static_cast<uInt>(body.size()));
  return big4(static_cast<uint32_t>(body.size() - 4)) + body + big4(static_cast<uint32_t>(crc));
}

/** @param rows  all rows with a filter byte ahead of each */
std::string png(int w, int h, int depth, int color, const std::string& chunks,
                const std::string& rows, int inter = 0) {
  return "\x89PNG\r\n\x1a\n" +
         chunk("IHDR" + big4(static_cast<uint32_t>(w)) + big4(static_cast<uint32_t>(h)) +
               std::string{static_cast<char>(depth), static_cast<char>(color), 0, 0,
                           static_cast<char>(inter)}) +
         chunks + chunk("IDAT" + NidsMaker::zlib(rows)) + chunk("IEND");
}

std::string text(const std::string& key, const std::string& value) {
  return chunk("tEXt" + key + std::string(1, '\0') + value);
}

struct Parsed {
  std::vector<std::string> order;           ///< types of the chunks, IDAT once
  std::map<std::string, std::string> data;  ///< of each type; IDAT unpacked
  std::map<std::string, std::string> texts;
};

Parsed parse(const std::string& bytes) {
  Parsed p;
  for (size_t at = 8; at + 12 <= bytes.size(); at += 12 + get4(bytes, at)) {
    const std::string type = bytes.substr(at + 4, 4);
    const std::string body = bytes.substr(at + 8, get4(bytes, at));
    if (type != "IDAT" || p.order.back() != type) p.order.push_back(type);
    p.data[type] += body;
    const size_t end = body.find('\0');
    if (type == "tEXt") p.texts[body.substr(0, end)] = body.substr(end + 1);
  }
  std::string rows(1 << 20, '\0');
  uLongf n = rows.size();
  ::uncompress(reinterpret_cast<Bytef*>(rows.data()), &n,
               reinterpret_cast<const Bytef*>(p.data["IDAT"].data()), p.data["IDAT"].size());
  rows.resize(n);
  p.data["IDAT"] = rows;
  return p;
}

Image make(int w, int h, int bits, int color_type) {
  Image image;
  image.set(w, h, bits);
  image.setColorType(color_type);
  image.allocData();
  return image;
}

std::string pixels(const Image& image) {
  return {reinterpret_cast<const char*>(image.getData()), static_cast<size_t>(image.getDataSize())};
}

std::string write(const TempDir& dir, const Image& image, int index = 0) {
  PngFile file(dir.at("a.png").c_str(), 1);
  file.setIndex(index);
  EXPECT_EQ(file.write(image), 1);
  EXPECT_FALSE(file.isOpen());
  const std::string check =
      "pngcheck -q '" + dir.at("a.png") + "' > '" + dir.at("check") + "' 2>&1";
  EXPECT_EQ(std::system(check.c_str()), 0) << dir.read("check");
  return dir.read("a.png");
}

Image read(const TempDir& dir, const std::string& bytes, int result = 1) {
  dir.write("in.png", bytes);
  Image image;
  PngFile file;
  EXPECT_EQ(file.read(dir.at("in.png").c_str(), image), result);
  EXPECT_FALSE(file.isOpen());
  return image;
}

TEST(PngFileTest, IndexedImageComesBack) {
  const TempDir dir;
  Image image = make(4, 2, 8, Image::INDEXED);
  image.allocColors(3);
  image.setColor(1, 1.0F, 0.5F, 0.25F);
  image.setColor(2, -1.0F, -1.0F, -1.0F);
  for (int i = 0; i < 8; i++) image.setPixel(i % 4, i / 4, i % 3);
  const Parsed p = parse(write(dir, image));
  EXPECT_EQ(p.data.at("PLTE").substr(0, 12), std::string("\0\0\0\xff\x7f\x3f\0\0\0\0\0\0", 12));
  EXPECT_EQ(p.data.at("PLTE").size(), 768);
  EXPECT_EQ(p.data.at("tRNS").substr(0, 4), "\xff\xff" + std::string(1, '\0') + "\xff");
  EXPECT_EQ(p.data.at("IDAT"), std::string("\0\0\1\2\0\0\1\2\0\1", 10));
  const Image back = read(dir, dir.read("a.png"));
  EXPECT_EQ(pixels(back), pixels(image));
  EXPECT_EQ(back.getNumColors(), 256);
  EXPECT_FLOAT_EQ(back.getGrn(1), 127.0F / 255.0F);
  EXPECT_EQ(back.getTransColor(), 0) << "whatever entry the file names";
  EXPECT_EQ(back.getRed(0), -1.0F);

  // Without a table of its own the entries are gray. The depth bounds the table.
  image.freeColors();
  EXPECT_EQ(parse(write(dir, image)).data.at("PLTE").substr(600, 3), "\xc8\xc8\xc8");
  Image narrow = make(8, 1, 4, Image::INDEXED);
  narrow.allocColors(40);
  narrow.setColor(15, 1.0F, 1.0F, 1.0F);
  narrow.getData()[1] = 0x7f;
  const Parsed n = parse(write(dir, narrow));
  EXPECT_EQ(n.data.at("PLTE").size(), 48);
  EXPECT_EQ(n.data.count("tRNS"), 0U);
  EXPECT_EQ(n.data.at("IDAT"), std::string("\0\0\x7f\0\0", 5));
}

TEST(PngFileTest, TrueColourComesBackFromEachStore) {
  const TempDir dir;
  const struct {
    int bits, order, extra;
  } rows[] = {{24, 1, 0}, {24, 0, 0}, {32, 0, 0}, {32, 1, 0}, {24, 1, 5}, {16, 1, 0}};
  for (const auto& row : rows) {
    Image image;
    image.set(5, 3, row.bits);
    image.setColorType(Image::TRUE_COLOR);
    image.setMask(0xff0000, 0xff00, 0xff);
    image.setByteOrder(row.order);
    image.setBytesLine(image.getBytesLine() + row.extra);  // rows of a device are padded
    image.allocData();
    std::string want;
    for (int y = 0; y < 3; y++) {
      want += '\0';
      for (int x = 0; x < 5; x++) {
        const int v = row.bits == 16 ? 0x1234 + x : (0x123456 + 0x010203 * x) ^ y << 20;
        image.setPixel(x, y, v);
        want += big4(static_cast<uint32_t>(v)).substr(1);
      }
    }
    image.setTransColor(0x123456);
    const Parsed p = parse(write(dir, image));
    EXPECT_EQ(p.data.at("IDAT"), want) << row.bits << " " << row.order;
    EXPECT_EQ(p.data.at("tRNS"), std::string("\0\x12\0\x34\0\x56", 6));
    const Image back = read(dir, dir.read("a.png"));
    EXPECT_EQ(back.getColorType(), static_cast<int>(Image::TRUE_COLOR));
    EXPECT_EQ(back.getPixel(4, 2), image.getPixel(4, 2));
    EXPECT_EQ(back.getGrnMask(), 0xff00U);
    EXPECT_EQ(parse(write(dir, image, 1)).data.at("IHDR")[9], 3) << "with a table, if asked";
  }
}

// Deliberate: the table of a data image loses its transparent code, and the pixels don't move.
TEST(PngFileTest, DataImageIsGray) {
  const TempDir dir;
  Image image = make(3, 1, 8, Image::DATA);
  for (int x = 0; x < 3; x++) image.setPixel(x, 0, 99 + x);
  EXPECT_EQ(parse(write(dir, image)).data.at("PLTE").substr(300, 3), "ddd");
  image.setTransColor(100);
  const Parsed p = parse(write(dir, image));
  EXPECT_EQ(p.data.at("PLTE").size(), 765);
  EXPECT_EQ(p.data.at("PLTE").substr(297, 6), "ccceee");
  EXPECT_EQ(p.data.at("tRNS"), std::string(1, '\0'));
  EXPECT_EQ(p.data.at("IDAT"), std::string("\0cde", 4));
}

TEST(PngFileTest, TextsAreWrittenAndRead) {
  const TempDir dir;
  Image image = make(30, 20, 8, Image::DATA);
  DomainVal val;
  val.proj = DomainVal::PSTEREO;
  val.clat = 38.75F;
  val.clon = -90.5F;
  val.nx = 30;
  val.ny = 20;
  val.dx = val.dy = 0.125F;
  image.setDomain(val);
  image.setInfo("Reflectivity");
  image.setDatim("12:30:00Z 03 MAY 2021");
  PngFile file(dir.at("t.png").c_str(), 1);
  file.setTitle("A title of more than thirty-nine characters");
  file.setComment("one\ntwo");
  EXPECT_EQ(file.write(image), 1);
  const Parsed p = parse(dir.read("t.png"));
  EXPECT_THAT(p.order, ElementsAre("IHDR", "PLTE", "tEXt", "tEXt", "tEXt", "tEXt", "tEXt", "tEXt",
                                   "tEXt", "IDAT", "IEND"));
  EXPECT_EQ(p.texts.at("Title"), "A title of more than thirty-nine charac");
  EXPECT_EQ(p.texts.at("Software"), "ZQV - Sky Watcher v6.0");
  EXPECT_THAT(p.texts.at("Creation Time"), testing::MatchesRegex(".*20.. ..:..:.. .*"));
  EXPECT_EQ(p.texts.at("Comment"), "one\ntwo");
  const Image back = read(dir, dir.read("t.png"));
  EXPECT_TRUE(DomainVal::compare(back.getDomainVal(), image.getDomainVal()));
  EXPECT_STREQ(back.getInfo(), "Reflectivity");
  EXPECT_STREQ(back.getDatim(), "12:30:00Z 03 MAY 2021");
  EXPECT_EQ(back.getDate().getMonth(), 5);

  const std::string lines =
      "x\nti=Rain\ndt=12:30:00Z 04 JUN 2020\nproj=latlon,40,-90,99,98,0.5,0.5";
  const std::string gray = "PLTE" + std::string(6, '\0');
  const Image other =
      read(dir, png(2, 1, 8, 3, chunk(gray) + text("Comment", lines), std::string("\0\1\0", 3)));
  EXPECT_STREQ(other.getInfo(), "Rain");
  EXPECT_EQ(other.getDate().getYear(), 2020);
  EXPECT_EQ(other.getDomainVal().nx, 99);
  EXPECT_EQ(other.getWidth(), 2) << "the size is the picture's, not the domain's";
  EXPECT_EQ(other.getVal(0, 0), 1);
}

TEST(PngFileTest, ReadsEachKindOfPicture) {
  const TempDir dir;
  const std::string plte = chunk("PLTE" + std::string("\1\2\3\4\5\6\7\x08\x09\x33\x66\xff", 12));
  struct Row {
    int depth, color;
    std::string chunks, rows, want;
    int image_depth, bits, color_type, trans;
  };
  const std::string zeros(64, '\0');
  const Row rows[] = {
      {8, 3, plte, std::string("\0\1\2\3\0\3\0\1", 8), std::string("\1\2\3\3\0\1", 6), 8, 8, 1, -1},
      {8, 3, plte + chunk("tRNS\xff\xff" + std::string(1, '\0')),
       std::string("\0\1\2\3\0\3\0\1", 8), std::string("\1\2\3\3\0\1", 6), 8, 8, 1, 0},
      // Filters: the first row by its left neighbours, the second by the row above.
      {8, 3, plte, std::string("\1\1\1\1\2\2\xfe\xfe", 8), std::string("\1\2\3\3\0\1", 6), 8, 8, 1,
       -1},
      {2, 3, plte, std::string("\0\x6c\0\xc4", 4), std::string("\1\2\3\3\0\1", 6), 8, 8, 1, -1},
      {8, 2, "", std::string("\0ABCDEFGHI\0abcdefghi", 20), "ABCDEFGHIabcdefghi", 24, 24, 0, -1},
      {8, 0, "", std::string("\0abc\0def", 8), zeros.substr(0, 6), 8, 8, 1, -1},
      {16, 0, "", std::string(1, '\0') + "aabbcc" + zeros.substr(0, 7), zeros.substr(0, 12), 16, 16,
       1, -1},
      {8, 6, "", zeros.substr(0, 26), zeros.substr(0, 24), 24, 32, 0, -1},
      {16, 2, "", zeros.substr(0, 38), zeros.substr(0, 36), 48, 48, 0, -1},
      {8, 4, "", zeros.substr(0, 14), zeros.substr(0, 12), 24, 16, 1, -1},
      {1, 0, "", zeros.substr(0, 4), "", 1, 1, 1, -1}};
  for (const Row& row : rows) {
    SCOPED_TRACE(std::to_string(row.depth) + " " + std::to_string(row.color));
    const Image image = read(dir, png(3, 2, row.depth, row.color, row.chunks, row.rows));
    EXPECT_EQ(pixels(image), row.want);
    EXPECT_EQ(image.getDepth(), row.image_depth);
    EXPECT_EQ(image.getBitsPixel(), row.bits);
    EXPECT_EQ(image.getColorType(), row.color_type);
    EXPECT_EQ(image.getTransColor(), row.trans);
    if (row.color == 3) {
      EXPECT_EQ(image.getNumColors(), 4);
      EXPECT_EQ(image.getRed(0), row.trans == 0 ? -1.0F : 1.0F / 255.0F);
      EXPECT_EQ(image.getBlu(3), 1.0F);
    }
  }

  // Adam7: each pass takes every so many rows and columns from a start.
  const int passes[][4] = {{0, 0, 8, 8}, {0, 4, 8, 8}, {4, 0, 8, 4}, {0, 2, 4, 4},
                           {2, 0, 4, 2}, {0, 1, 2, 2}, {1, 0, 2, 1}};
  std::string data;
  for (const auto& [y0, x0, dy, dx] : passes) {
    for (int y = y0; y < 11; y += dy) {
      data += '\0';
      for (int x = x0; x < 13; x += dx) data += static_cast<char>((3 * x + 5 * y) & 3);
    }
  }
  const Image image = read(dir, png(13, 11, 8, 3, plte, data, 1));
  for (int y = 0; y < 11; y++) {
    for (int x = 0; x < 13; x++) EXPECT_EQ(image.getVal(x, y), (3 * x + 5 * y) & 3);
  }
}

TEST(PngFileTest, DamagedFilesFail) {
  const TempDir dir;
  Image image = make(60, 40, 8, Image::INDEXED);
  image.allocColors(256);
  for (int y = 0; y < 40; y++) {
    for (int x = 0; x < 60; x++) image.setPixel(x, y, x * x * 31 + y * 7);
  }
  const std::string whole = write(dir, image);
  testing::internal::CaptureStderr();
  EXPECT_EQ(read(dir, "\x89PNX", 0).getWidth(), 0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Not a PNG file\n");
  testing::internal::CaptureStderr();
  for (size_t n = 8; n < whole.size(); n += n < 100 ? 1 : 41) read(dir, whole.substr(0, n), 0);
  const std::string plte = chunk("PLTE" + std::string(6, '\0'));
  read(dir, png(20000, 20000, 8, 3, plte, "x"), 0);         // 400 MB
  read(dir, png(2, 2, 8, 3, "", std::string(6, '\0')), 0);  // no palette
  EXPECT_EQ(read(dir, png(2, 2, 8, 3, plte, std::string("\0\0\1", 3)), 0).getVal(1, 0), 1)
      << "the row ahead of the damage";
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  // A chunk that states more than there is takes no room for it.
  const std::string rows(6, '\0');
  const std::string long_text = text("Comment", "ti=x").replace(0, 4, "\x7f\xff\xff\xf0");
  read(dir, png(2, 2, 8, 3, plte + long_text, rows), 0);
  const Image beyond = read(dir, png(2, 1, 8, 3, plte, std::string("\0\1\x09", 3)));
  EXPECT_EQ(beyond.getVal(1, 0), 9);

  PngFile out(dir.at("none.png").c_str(), 1);
  EXPECT_EQ(out.write(Image()), 0);
  EXPECT_FALSE(out.isOpen());
  EXPECT_EQ(out.write(image), 0) << "closed";
  EXPECT_EQ(PngFile().write("/dev/full", image), 0) << "no room on the disk";
  PngFile sixteen(dir.at("16.png").c_str(), 1);
  EXPECT_EQ(sixteen.write(make(2, 2, 16, Image::INDEXED)), 0) << "no table has 16 bits";
}

}  // namespace
}  // namespace ZQV
