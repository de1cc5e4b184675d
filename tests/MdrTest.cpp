#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "EarthPoint.h"
#include "Filename.h"
#include "Grid.h"
#include "Image.h"
#include "MdrData.h"
#include "MdrDomain.h"
#include "MdrFile.h"
#include "StrLib.h"
#include "TempDir.h"

namespace ZQV {
namespace {

using testing::ElementsAre;

MdrData decode(const std::string& report) {
  MdrRawData raw;
  StrLib::copy(raw.data, sizeof(raw.data), report.c_str());
  MdrData data;
  EXPECT_EQ(MdrFile().decode(raw, data), 1);
  return data;
}

std::string number(int v) {
  return v == Const::MISS ? "-" : std::to_string(v);
}

/** The regions in short: shape, precipitation, trend, points, movements, tops. */
std::string regions(const MdrData& d) {
  std::string s;
  for (int r = 0; r < d.getNumReg(); r++) {
    s += std::string(r > 0 ? " | " : "") + d.reg[r].config;
    for (int i = 0; i < d.getNumPrecip(r); i++) {
      s += " " + number(d.getPrecipCover(r, i)) + d.getPrecipType(r, i) + "=" +
           number(d.getPrecipIntensity(r, i));
    }
    s += *d.reg[r].trend != '\0' ? std::string(" t") + d.reg[r].trend : "";
    for (int i = 0; i < d.getNumLoc(r); i++) {
      s += " " + number(d.getLocDir(r, i)) + "/" + number(d.getLocRad(r, i));
    }
    for (int i = 0; i < d.getNumMove(r); i++) {
      s += std::string(" ") + d.getMoveType(r, i) + number(d.getMoveDir(r, i)) + "/" +
           number(d.getMoveSpd(r, i));
    }
    if (d.validTops(r)) {
      s += " MT" + number(d.getTopsHgt(r)) + "@" + number(d.getTopsDir(r)) + "/" +
           number(d.getTopsRad(r));
    }
  }
  return s;
}

TEST(MdrFileTest, StatusIsTheWordBehindTheTime) {
  const struct {
    const char* report;
    const char* id;
    int status;
  } rows[] = {
      {"OKC 1235 PPINE", "OKC", MdrData::NO_ECHO},
      {"OKC RTD 1235 PPINA", "OKC", MdrData::NOT_AVAILABLE},
      {" OKC 1235 SPL DLAD ", "OKC", MdrData::NOT_AVAILABLE},
      {"KOKC COR 1235 COR PPIOM AREA 4R", "KOKC", MdrData::MAINTENANCE},
      {"OKC 1235 CLEAR AREA 4R", "OKC", MdrData::VALID},  // no shape: no regions
      {"OKC 1235 ^MM12", "OKC", MdrData::VALID},
      {"OKC", "OKC", MdrData::VALID},
      {"", "", MdrData::VALID},
  };
  for (const auto& row : rows) {
    const MdrData data = decode(row.report);
    EXPECT_STREQ(data.getId(), row.id) << row.report;
    EXPECT_EQ(data.getStatus(), row.status) << row.report;
    EXPECT_EQ(data.getNumReg(), 0) << row.report;
    EXPECT_EQ(data.getDate().getHour() == 12 && data.getDate().getMinute() == 35,
              std::string(row.report).find("1235") != std::string::npos)
        << row.report;
  }
}

TEST(MdrFileTest, Regions) {
  const struct {
    const char* report;
    const char* want;
  } rows[] = {
      {"AREA 4TRW+/NC 22/100 88/170 196/180 A2425 C2235 MT 310 AT 162/110",
       "AREA 4TRW=3 tNC 22/100 88/170 196/180 A240/25 C220/35 MT310@162/110"},
      {"LINE 8TRWXX2R- /NEWER 300/50 200/60 15W L2740 MT 450 210/55 C2530",
       "LINE 8TRW=6 2R=1 tNEW 300/50 200/60 -/15 L270/40 C250/30 MT450@210/55"},
      {"CELL TRWX 045/30 D10 C2425 MT U250", "CELL 10TRW=5 45/30 -/10 C240/25 MT250@-/-"},
      {"AREA 3S-- 1L+-2ZL++ 1R", "AREA 3S=0 1L=0 2ZL=4"},  // marks nobody knows; no fourth type
      {"AREA 4R 2S", "AREA 4R=2"},                         // an entry without a mark is the last
      {"EYE RWU 1/1 2/2 3/3 4/4 5/5 6/6", "EYE 10RW=9 1/1 2/2 3/3 4/4 5/5"},
      {"LN 1R A0101 C0202 L0303 A0404 LYR", "LN 1R=2 A10/1 C20/2 L30/3 | LYR"},
      {"LN 1R+ 9/9 A0101 C0202 L0303 MT U9 A0404 C0505 LYR 2S+ 8/8",
       "LN 1R=3 9/9 A10/1 C20/2 L30/3 MT9@-/- | LYR 2S=3 8/8"},
      {"SPRL 5RW- 10/20 MT 310 AREA", "SPRL 5RW=1 10/20"},  // a top needs a place or "U"
      {"AREA 4TRW+/ 33/40 MT 310 AT 162/110 CELL 2R+ 1/2",  // a trend that isn't there
       "AREA 4TRW=3 33/40 MT310@162/110 | CELL 2R=3 1/2"},
      {"AREA 1234567890R- BOX 1R-", "AREA 1234567890R=1"},
      {"AREA TRWSZLPAI+ 99999999999/5", "AREA 10TRWSZLP=3 2147483647/5"},
  };
  for (const auto& row : rows) {
    const MdrData data = decode(std::string("OKC 1235 ") + row.report + " ^MM1");
    EXPECT_EQ(regions(data), row.want) << row.report;
    EXPECT_EQ(data.getStatus(), static_cast<int>(MdrData::VALID));
    EXPECT_EQ(data.echo[12][12], 1) << row.report;
  }
  std::string many = "OKC 1235";
  for (int i = 0; i < 12; i++) many += " CELL 1R+ " + std::to_string(i) + "/5";
  EXPECT_EQ(decode(many).getNumReg(), 10);
  const MdrData none = decode("OKC 1235 PPINE");
  EXPECT_EQ(none.getPrecipType(0, 0), nullptr);
  EXPECT_EQ(none.getTopsHgt(-1), Const::MISS);
}

TEST(MdrFileTest, EchoGroupsRunAlongX) {
  const MdrData data =
      decode("OKC 1235 AREA 4R+\n#AA99\n^MM12345 MK6 QZ234 \nm1:5 AZ-8 BA1a3=\nZA7 M");
  const struct {
    int x;
    int y;
    int level;
  } cells[] = {{12, 12, 1}, {16, 12, 5}, {17, 12, 0}, {10, 12, 6}, {25, 16, 2}, {0, 17, 0},
               {25, 0, 0},  {0, 1, 1},   {1, 1, 0},   {2, 1, 3},   {0, 25, 7},  {0, 0, 0}};
  for (const auto& c : cells) EXPECT_EQ(data.echo[c.x][c.y], c.level) << c.x << "," << c.y;
  EXPECT_EQ(decode("OKC 1235 PPINE #CB4").echo[1][2], 4);
}

constexpr char bulletin[] =
    "ZCZC\r\r\n"
    "SDUS40 KOUN 201235\r\r\n"
    "RADAR SUMMARY\r\r\n"
    "OKC 1235 AREA 4TRW+/NC 22/100 88/170\r\r\n"
    "  C2425 MT 310 AT 162/110\r\r\n"
    "^MM123 NK4\r\r\n"
    "\r\r\n"
    "LITTLE 1235 PPINE\r\n"  // no site has six letters
    "LR 1235 PPINE\n"        // nor two
    "LIT 123 PPINE\n"
    "ICT 2345 PPINE\n\n"
    "** SDUS41 KWBC 010005\n"
    "GLD 2350 PPIOM\n\n"
    "AMA 0005 PPINA";

TEST(MdrFileTest, ReportsOfABulletinAreFoundAndDated) {
  const TempDir dir;
  const std::string name = dir.write("bulletin", bulletin);
  MdrFile file;
  EXPECT_EQ(file.open(name.c_str(), 1, MdrFile::BULLETIN), 0) << "nobody writes bulletins";
  Date date;
  date.set("#202004202000");
  file.setDate(date);
  ASSERT_EQ(file.open(name.c_str()), 1);
  MdrRawData raw;
  MdrData data;
  std::vector<std::string> found;
  while (file.read(raw) != 0) {
    EXPECT_EQ(file.decode(raw, data), 1);
    String text;
    data.getDate().toText("%Y%m%d%H%M", text);
    found.push_back(std::string(raw.id) + " " + std::to_string(data.getStatus()) + " " +
                    text.get());
  }
  // A heading's day is near the file's date, and a report's hour near the heading that stands ahead
  // of it, or else near the file's.
  EXPECT_THAT(found, ElementsAre("OKC 3 202004201235", "ICT 1 202004202345", "GLD 2 202004302350",
                                 "AMA 0 202004210005"));
  EXPECT_EQ(file.read(data), 0);

  Filename filename;
  filename.set(name.c_str());
  MdrFile first(filename);
  ASSERT_EQ(first.read(data), 1);
  EXPECT_EQ(regions(data), "AREA 4TRW=3 tNC 22/100 88/170 C240/25 MT310@162/110");
  EXPECT_EQ(data.echo[14][12], 3);
  EXPECT_EQ(data.echo[10][13], 4);
}

TEST(MdrFileTest, LongReportsAreCut) {
  const TempDir dir;
  std::string text = "OKC 1235 AREA 4R+\n^";
  for (int i = 0; i < 400; i++) text += i % 20 == 19 ? "MM12345\n" : "MM1234567890 ";
  MdrFile file(dir.write("bulletin", text).c_str());
  MdrRawData raw;
  EXPECT_EQ(file.read(raw), 1);
  EXPECT_EQ(raw.len, 999);
  EXPECT_EQ(raw.data[raw.len], '\0');
  // A line comes in pieces of 200 characters. A piece that is empty is no empty line.
  for (const int length : {150, 199, 200, 201, 400}) {
    const std::string line = "OKC 1235 AREA 4R+ ";
    text = line + std::string(static_cast<size_t>(length) - line.size(), 'x') + "\n^ MM12\n\nXX";
    ASSERT_EQ(file.open(dir.write("bulletin", text).c_str()), 1);
    EXPECT_EQ(file.read(raw), 1);
    MdrData data;
    file.decode(raw, data);
    EXPECT_EQ(data.echo[12][12], 1) << length;
  }
  // Two words, not one of nine characters, and four digits.
  for (const char* none :
       {"ABCDE1235 PPINE\n", "OKC 12355 PPINE\n", "OK 1235\n", "OKLAHO 1235\n"}) {
    ASSERT_EQ(file.open(dir.write("bulletin", none).c_str()), 1);
    EXPECT_EQ(file.read(raw), 0) << none;
  }
}

// A degree is 111.2 km: 60 miles north, and 120 east at 35 degrees.
TEST(MdrDataTest, PlacesLieAroundTheSite) {
  MdrData data = decode("OKC 1235 LINE 4R+ 0/60 90/120 20W MT 310 AT 180/30");
  data.lat = 35;
  data.lon = -97;
  EarthPoint point;
  ASSERT_EQ(data.getRegLoc(0, point), 1);
  EXPECT_NEAR(point.lat, 35.5F, 0.002F);
  EXPECT_NEAR(point.lon, -97 + 1 / 0.81915F, 0.005F);
}

TEST(MdrZqvFileTest, SummariesAreWrittenAndReadBack) {
  const TempDir dir;
  const std::string name = dir.at("summary");
  MdrDomain domain;
  Image image;
  image.set(domain.get(), 8);
  image.allocData();
  // The corners of the panels, a level too many, and the row that no panel has.
  const int cells[][3] = {{0, 0, 1},    {39, 41, 2}, {40, 42, 3}, {79, 51, 4}, {80, 52, 5},
                          {112, 87, 6}, {5, 43, 7},  {3, 88, 4},  {0, 42, 5}};
  for (const auto& c : cells) image.setPixel(c[0], c[1], c[2]);
  MdrFile out;
  Date date;
  date.set("#202004201235");
  out.setDate(date);
  ASSERT_EQ(out.open(name.c_str(), 1, MdrFile::SUMMARY), 1);
  EXPECT_EQ(out.write(image), 1);
  for (const char* report : {"OKC 1235 PPINE", "ICT 1235 PPINA", "GLD 1235 PPIOM", "DDC 1235 ^MM1",
                             "AMA 1235 AREA 4TRWXX/NC 22/100 A2405 C2210 L1799 MT 310 AT 62/110",
                             "LIT 1235 LINE R- C3699 MT U95", "TUL 1235 CELL 2S+- D5"}) {
    EXPECT_EQ(out.write(decode(report)), 1);
  }
  out.close();
  const std::string text = dir.read("summary");
  EXPECT_EQ(text.substr(0, text.find("+ 01")), "ZQVRAD\n1235Z 20 APR 20\nSDUS SUMMARY\n");
  EXPECT_NE(text.find("6        \n+ 90 081\nSDUS\n+ 01 041\n"), std::string::npos);
  EXPECT_EQ(text.substr(text.find("SDXX")),
            "SDXX STATIONS\n"
            "OKC NE * * * * * *\n"
            "ICT NA * * * * * *\n"
            "GLD OM * * * * * *\n"
            "DDC * * * * * * *\n"
            "AMA AREA TRWxx NC 310,062110 A2405 C2210 L1799\n"
            "LIT LINE R- * 95,000000 C3699 * *\n"
            "TUL CELL * * * * * *\n");

  MdrFile in;
  ASSERT_EQ(in.open(name.c_str(), 0, MdrFile::SUMMARY), 1);
  EXPECT_EQ(in.getDate().getDay(), 20);
  Image back;
  ASSERT_EQ(in.read(back), 1);
  EXPECT_STREQ(back.getInfo(), "MDR Reflectivity mosaic [dBZ]");
  EXPECT_EQ(back.getValue(79, 51), 45.0F);
  image.setPixel(5, 43, 0);
  image.setPixel(3, 88, 0);
  for (int y = 0; y < 89; y++) {
    for (int x = 0; x < 113; x++) ASSERT_EQ(back.getVal(x, y), image.getVal(x, y)) << x << "," << y;
  }
  EXPECT_EQ(in.read(back), 0) << "there is one mosaic";
  std::vector<std::string> found;
  MdrData data;
  while (in.read(data) != 0) {
    found.push_back(std::string(data.getId()) + " " + std::to_string(data.getStatus()) + " " +
                    regions(data));
  }
  EXPECT_THAT(found, ElementsAre("OKC 1 ", "ICT 0 ", "GLD 2 ", "DDC 3 ",
                                 "AMA 3 AREA 0TRWxx=0 A240/5 MT310@62/110",
                                 "LIT 3 LINE 0R-=0 C360/99 MT95@0/0", "TUL 3 CELL"));

  // The field lies a column further left.
  MdrZqvFile zqv;
  ASSERT_EQ(zqv.open(name.c_str(), 0), 1);
  Grid grid;
  ASSERT_EQ(zqv.read(grid), 1);
  EXPECT_EQ(grid.getValue(38, 41), 32.0F);
  EXPECT_EQ(grid.getValue(78, 51), 47.0F);
  EXPECT_EQ(grid.getValue(111, 87), 57.0F);
  EXPECT_EQ(grid.getValue(112, 87), 0.0F);
  ASSERT_EQ(zqv.open(name.c_str(), 0), 1);
  EXPECT_EQ(zqv.read(data), 1) << "the mosaic need not be read";
  EXPECT_STREQ(data.getId(), "OKC");
  EXPECT_EQ(zqv.write(image), 0);
}

TEST(MdrZqvFileTest, WrongFilesAndPlaces) {
  const TempDir dir;
  MdrZqvFile file;
  for (const char* text : {"", "ZQVRAD", "ZQVRAD\n1235Z 20 APR 20\n", "ZQV\n\nSDUS SUMMARY\n",
                           "ZQVRAD\n\nRCM SUMMARY\n"}) {
    EXPECT_EQ(file.open(dir.write("f", text).c_str(), 0), 0) << text;
  }
  EXPECT_EQ(file.open(dir.at("f").c_str(), 7), 0);
  // Cells off the grid are dropped, digits up to 9 are kept, bad places stay.
  const std::string name = dir.write(
      "f",
      "ZQVRAD\n\nSDUS SUMMA\r\n9\n+ 0 0\nx1\n4\n+\n+ 88 113\n12\n34\n5\n6\n"
      "+ 2147483647 -2147483648\n3\n+ -5 3\n1\nSDXX\n\nA\nTOOLONGNAME TOOLONGSHAPE\nB NE * * 7x *");
  ASSERT_EQ(file.open(name.c_str(), 0), 1);
  Image image;
  ASSERT_EQ(file.read(image), 1);
  EXPECT_EQ(image.getVal(0, 0), 9);
  EXPECT_EQ(image.getVal(112, 87), 1);
  EXPECT_EQ(image.getVal(112, 88), 3);
  MdrData data;
  EXPECT_EQ(file.read(data), 1);
  EXPECT_STREQ(data.getId(), "A");
  EXPECT_EQ(file.read(data), 1);
  EXPECT_STREQ(data.getId(), "TOOL");
  EXPECT_STREQ(data.reg[0].config, "TOOLONGSH");
  EXPECT_EQ(file.read(data), 1);
  EXPECT_EQ(data.getNumReg(), 0);
  EXPECT_EQ(file.read(data), 0);
}

}  // namespace
}  // namespace ZQV
