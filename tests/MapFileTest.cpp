// The four kinds of map files: what is written reads back, and what is broken ends there.

#include "MapFile.h"

#include <bit>
#include <cstdint>

#include <gtest/gtest.h>
#include <zlib.h>

#include "EarthPoint.h"
#include "KmlFile.h"
#include "MapFileHeader.h"
#include "TempDir.h"

using namespace ZQV;

namespace {

/** Bytes of a file, in either order. */
class Bytes {
 public:
  template <typename T>
  Bytes& big(T v) {
    return put(v, true);
  }
  template <typename T>
  Bytes& little(T v) {
    return put(v, false);
  }
  Bytes& fill(size_t n) {
    text.append(n, '\0');
    return *this;
  }
  std::string text;

 private:
  template <typename T>
  Bytes& put(T v, bool is_big) {
    std::string bytes(reinterpret_cast<const char*>(&v), sizeof(v));
    text += is_big ? std::string(bytes.rbegin(), bytes.rend()) : bytes;
    return *this;
  }
};

/** The segments of a map file, each as "index label: lat,lon lat,lon". */
std::vector<std::string> segments(const std::string& path, int type = MapFile::DETECT) {
  std::vector<std::string> found;
  MapFile map;
  if (map.open(path.c_str(), 0, type) == 0) {
    return {"not opened"};
  }
  MapFileHeader header;
  while (map.readHeader(header) != 0) {
    std::string text = std::to_string(header.index) + " " + header.getLabel() + ":";
    EarthPoint e;
    char place[60];
    while (map.readData(e) != 0) {
      std::snprintf(place, sizeof(place), " %g,%g", static_cast<double>(e.lat),
                    static_cast<double>(e.lon));
      text += place;
    }
    found.push_back(text);
  }
  return found;
}

using Lines = std::vector<std::string>;

MapFileHeader headerOf(int num, int index) {
  MapFileHeader h;
  h.num = num;
  h.minlat = 30;
  h.maxlat = 40;
  h.minlon = -100;
  h.maxlon = -90;
  h.index = index;
  return h;
}

/** A polyline record of parts that begin at the points given, of n points (10 + i, 20 + i). */
Bytes& addRecord(Bytes& b, int number, int shape, const std::vector<int>& parts, int n) {
  b.big(number).big(0).little(shape).fill(32).little(static_cast<int>(parts.size())).little(n);
  for (const int part : parts) {
    b.little(part);
  }
  for (int i = 0; i < n; i++) {
    b.little(20.0 + i).little(10.0 + i);
  }
  return b;
}

Bytes shapeFile() {
  Bytes b;
  b.big(9994).fill(96);
  return b;
}

std::string kml(const std::string& inside) {
  return "<?xml version=\"1.0\"?>\n<kml xmlns=\"http://www.opengis.net/kml/2.2\">\n<Document>\n" +
         inside + "\n</Document>\n</kml>\n";
}

std::string placemark(const std::string& name, const std::string& coordinates) {
  return "<Placemark>\n<name>" + name + "</name>\n<Point>\n<coordinates>" + coordinates +
         "</coordinates>\n</Point>\n</Placemark>\n";
}

}  // namespace

TEST(MapFile, WritesWhatItReads) {
  const TempDir dir;
  for (const int type : {MapFile::BINARY, MapFile::TEXT}) {
    const std::string path = dir.at("a.map");
    MapFile map;
    ASSERT_EQ(map.open(path.c_str(), 1, type), 1);
    EXPECT_EQ(map.writeHeader(headerOf(5, 7)), 1);
    for (int i = 0; i < 6; i++) {  // one too many
      EXPECT_EQ(map.writeData(EarthPoint(-80.0F + static_cast<float>(i), -100.5F)), i < 5 ? 1 : 0);
    }
    EXPECT_EQ(map.writeHeader(headerOf(1, -8)), 1);
    map.writeData(EarthPoint(1, 2));
    map.close();
    EXPECT_EQ(MapFile::checkType(path.c_str()), type);
    EXPECT_EQ(segments(path),
              (Lines{"7 : -80,-100.5 -79,-100.5 -78,-100.5 -77,-100.5 -76,-100.5", "-8 : 1,2"}));
  }
  EXPECT_EQ(dir.read("a.map"),
            "   5   40.0000   30.0000  -90.0000 -100.0000     7\n"
            "-80.0000 -100.5000-79.0000 -100.5000-78.0000 -100.5000-77.0000 -100.5000\n"
            "-76.0000 -100.5000\n"
            "   1   40.0000   30.0000  -90.0000 -100.0000    -8\n"
            "  1.0000    2.0000\n");
}

TEST(MapFile, TellsTheKindByTheBeginning) {
  const TempDir dir;
  const struct {
    std::string text;
    int type;
  } rows[] = {{"5 40 30 -90 -100 7", MapFile::TEXT},
              {"5 40 30 -90 -100 x", MapFile::BINARY},
              {shapeFile().text, MapFile::SHAPE},
              {"<?xml ", MapFile::KML},
              {"<kml>", MapFile::BINARY},
              {"\x1F\x8B\x08rest", MapFile::KML},
              {"\x1F\x8B\x42rest", MapFile::BINARY},
              {"", MapFile::BINARY}};
  for (const auto& row : rows) {
    EXPECT_EQ(MapFile::checkType(dir.write("f", row.text).c_str()), row.type) << row.text;
  }
  EXPECT_EQ(MapFile::checkType(dir.at("none").c_str()), -1);
  EXPECT_EQ(MapFile::checkType("|echo 5 40 30 -90 -100 7"), -1) << "names are never commands";
}

TEST(MapFile, LongBinarySegments) {
  const TempDir dir;
  Bytes b;
  b.big(uint16_t{65535}).big(uint16_t{10}).big(1.0F).big(0.0F).big(1.0F).big(0.0F).big(3);
  b.fill(size_t{65535} * 8).big(uint16_t{0}).fill(16).big(9);
  const std::string path = dir.write("long.map", b.text);
  MapFile map(path.c_str());
  MapFileHeader h;
  for (const bool passes : {false, true}) {
    ASSERT_EQ(map.readHeader(h), 1);
    EXPECT_EQ(h.num, 65545);
    EarthPoint e;
    int n = 0;
    while (!passes && map.readData(e) != 0) n++;
    EXPECT_EQ(n, passes ? 0 : 65535);
    map.passData();
    ASSERT_EQ(map.readHeader(h), 1);
    EXPECT_EQ(h.index, 9) << "the header behind the 65535th point";
    map.rewind();
  }
  map.readHeader(h);
  EXPECT_EQ(map.tell(), 24);
  map.skipData();
  EXPECT_EQ(map.tell(), 24 + 4L * 65535) << "four bytes a point";
}

TEST(MapFile, ShapefilePartsAreSegments) {
  const TempDir dir;
  Bytes b = shapeFile();
  addRecord(b, 1, 3, {0, 2}, 5);
  addRecord(b, 2, 5, {0, 0, 1}, 2);  // an empty part ahead
  addRecord(b, 3, 3, {0}, 0);
  addRecord(b, 4, 3, {0}, 1);
  const Lines whole = {
      "1 : 10,20 11,21", "1 : 12,22 13,23 14,24", "2 :", "2 : 10,20", "2 : 11,21", "3 :",
      "4 : 10,20"};
  EXPECT_EQ(segments(dir.write("a.shp", b.text)), whole);
  MapFile map(dir.at("a.shp").c_str());
  MapFileHeader h;
  size_t passed = 0;
  for (; map.readHeader(h) != 0; passed++) {
    EXPECT_FALSE(h.hasBox());
    map.passData();
  }
  EXPECT_EQ(passed, whole.size());

  // A fault ends the file; the records ahead of it stay.
  const auto after_good = [&](int shape, const std::vector<int>& parts, int n) {
    Bytes bad = shapeFile();
    addRecord(bad, 1, 3, {0}, 1);
    addRecord(bad, 2, shape, parts, n);
    addRecord(bad, 3, 3, {0}, 1);
    return segments(dir.write("b.shp", bad.text));
  };
  const Lines first = {"1 : 10,20"};
  EXPECT_EQ(after_good(8, {0}, 1), first) << "another shape";
  EXPECT_EQ(after_good(3, {0, 2, 1}, 3), first) << "parts that go back";
  EXPECT_EQ(after_good(3, {-1}, 1), first);
  EXPECT_EQ(after_good(3, {0, 4}, 3), first) << "a part beyond the points";
  EXPECT_EQ(after_good(3, {}, 1), first);
  EXPECT_EQ(after_good(3, std::vector<int>(5001), 1), first);
  EXPECT_EQ(after_good(3, std::vector<int>(5000), 1).size(), 5002U);
  Bytes cut = shapeFile();
  addRecord(cut, 1, 3, {0, 2, 3}, 4);
  cut.text.resize(cut.text.size() - 17);
  EXPECT_EQ(segments(dir.write("c.shp", cut.text)), (Lines{"1 : 10,20 11,21", "1 :"}));
}

TEST(MapFile, CountsThatLie) {
  const TempDir dir;
  const struct {
    std::string text;
    Lines found;
  } rows[] = {
      {"2 1 0 1 0 5\n1 2 3", {"5 : 1,2"}},
      {"-1 1 0 1 0 5\n1 2", {}},
      {"2000000000 1 0 1 0 5\n1 2 3 4", {"5 : 1,2 3,4"}},
      {"1 1 0 1 0 5\n1 2\nnonsense", {"5 : 1,2"}},
      {Bytes().big(uint16_t{2}).fill(16).big(5).big(1.0F).big(2.0F).big(3.0F).text, {"5 : 1,2"}},
      {Bytes().big(uint16_t{2}).fill(5).text, {}},
      {Bytes().big(uint16_t{65535}).text, {}}};
  for (const auto& row : rows) {
    EXPECT_EQ(segments(dir.write("f", row.text)), row.found) << row.text;
  }
}

TEST(KmlFile, ListsOfCoordinates) {
  const TempDir dir;
  const std::string two = kml(placemark("A", "1,2,3") + placemark("B", "4,5,6 7,8,9"));
  const std::string deep = "<a>\n<a>\n<a>\n<a>\n<a>\n";
  const std::string deeper = "<a>\n<a>\n<a>\n<a>\n<a>\n<a>\n";
  const struct {
    const char* what;
    std::string text;
    Lines found;
  } rows[] = {
      {"longitude first", kml(placemark("A", "-100,40,0 -101.5,41,0")), {"0 A: 40,-100 41,-101.5"}},
      {"white space", kml(placemark("A", "\n -100, 40, 0\t1,2,3\n")), {"0 A: 40,-100 2,1"}},
      {"names belong to placemarks",
       kml(placemark("A", "1,2,3") + "<Placemark>\n<coordinates>4,5,6</coordinates>\n</Placemark>"),
       {"0 A: 2,1", "0 : 5,4"}},
      {"a pair without a height", kml(placemark("A", "1,2,3 4,5 6,7,8")), {"0 A: 2,1"}},
      {"no pair at all", kml(placemark("A", "here")), {"0 A:"}},
      {"label of 49 characters",
       kml(placemark(std::string(60, 'x'), "1,2,3")),
       {"0 " + std::string(49, 'x') + ": 2,1"}},
      {"first children",
       "<?xml version=\"1.0\"?><kml><a>\n<coordinates>1,2,3</coordinates></a></kml>",
       {}},
      {"first child without white space",
       "<?xml version=\"1.0\"?><kml>\n<a><coordinates>1,2,3</coordinates>\n</a>\n</kml>",
       {}},
      {"ten levels", kml(deep + placemark("A", "1,2,3") + "</a></a></a></a></a>"), {"0 A: 2,1"}},
      {"more", kml(deeper + placemark("A", "1,2,3") + "</a></a></a></a></a></a>"), {}},
      {"another root", "<?xml version=\"1.0\"?><gpx>\n</gpx>", {"not opened"}},
      {"nothing", "<?xml version=\"1.0\"?>", {"not opened"}},
      {"a fault", kml(placemark("A", "1,2,3") + "<b></c>" + placemark("B", "4,5,6")), {"0 A: 2,1"}},
      {"cut short", two.substr(0, two.find("7,8,9") + 3), {"0 A: 2,1", "0 B: 5,4"}},
      {"entities",
       "<?xml version=\"1.0\"?><!DOCTYPE kml [<!ENTITY a \"x\">]><kml>\n" +
           placemark("&a;", "1,2,3") + "</kml>",
       {"not opened"}}};
  for (const auto& row : rows) {
    EXPECT_EQ(segments(dir.write("a.kml", row.text)), row.found) << row.what;
    // The same compressed.
    gzFile zipped = ::gzopen(dir.at("a.kml.gz").c_str(), "wb");
    ::gzwrite(zipped, row.text.data(), static_cast<unsigned>(row.text.size()));
    ::gzclose(zipped);
    EXPECT_EQ(segments(dir.at("a.kml.gz")), row.found) << row.what;
  }
  EXPECT_FALSE(KmlFile::checkType(dir.write("b", "<kml>").c_str()));
  EXPECT_EQ(segments(dir.write("b", "2 1 0 1 0 5\n"), MapFile::KML), Lines{"not opened"});
}

TEST(KmlFile, GrowsToALimitOnly) {
  const TempDir dir;
  // A few kilobytes that unpack to 64 MB of points, and as many elements as a map never has.
  const std::string list(1 << 20, ' ');
  gzFile zipped = ::gzopen(dir.at("a.kml").c_str(), "wb");
  const std::string head = "<?xml version=\"1.0\"?><kml>\n";
  ::gzwrite(zipped, head.data(), static_cast<unsigned>(head.size()));
  for (int i = 0; i < 64; i++) {
    const std::string one = "<coordinates>1,2,3" + list + "</coordinates>\n";
    ::gzwrite(zipped, one.data(), static_cast<unsigned>(one.size()));
  }
  ::gzclose(zipped);
  EXPECT_EQ(segments(dir.at("a.kml")).size(), 32U);

  std::string many = head;
  for (int i = 0; i < 300000; i++) {
    many += "<coordinates/> ";
  }
  const size_t found = segments(dir.write("b.kml", many)).size();
  EXPECT_GT(found, 100000U);
  EXPECT_LE(found, 200000U) << "two nodes each";

  // Attributes are compared with each other; so many of them end the document, however they look.
  for (const std::string name : {"a", "xmlns:a"}) {
    std::string crowded = head + "<coordinates>1,2,3</coordinates>\n<b ";
    for (int i = 0; i < 50000; i++) {
      crowded += name + std::to_string(i) + "='>' ";
    }
    crowded += "/>\n<coordinates>4,5,6</coordinates>\n</kml>";
    EXPECT_EQ(segments(dir.write("c.kml", crowded)), Lines{"0 : 2,1"});
  }
}
