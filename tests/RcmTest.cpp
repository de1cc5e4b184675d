#include <algorithm>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Filename.h"
#include "Grid.h"
#include "Image.h"
#include "RcmData.h"
#include "RcmDomain.h"
#include "RcmFile.h"
#include "TempDir.h"

namespace ZQV {
namespace {

using testing::ElementsAre;

constexpr char first_part[] =
    "1234 ROBUU 0321    \n  /NEXRAA 0321 2005202017 UNEDITED   \r\n /MDPCPN /SC21 /NI0020: "
    "AAA12,MMA3B4 5,\n MND88, ZZP99Z,QAQ7 /MT620:QKH  /NCEN03: CM0MMC 226016,CD0OLL NEW,"
    "  CY1QKG 249019   /ENDAA ";
constexpr char second_part[] = "/NEXRBB 0321 2005202017 020B158018,030G178026, 040Z191028  /ENDBB ";
constexpr char third_part[] =
    "/NEXRCC 0321 2005202017 /NTVS02: TVS01MLP,TVS02OLD  /NMES01: M13MMH "
    "/NCEN04: CM0MMC S193HP,CD0OLL S386HH, CQ0LMH S254HN,CY1QKG S457HU ";

RcmRawData message(const std::string& text) {
  RcmRawData raw;
  raw.id[0] = 'T';
  raw.len = static_cast<int>(text.copy(raw.data, sizeof(raw.data) - 1));
  return raw;
}

RcmData decode(const std::string& text, int want = 1) {
  RcmData data;
  EXPECT_EQ(RcmFile::decode(message(text), data), want) << text;
  return data;
}

/** The cells of a row that hold something, from the first on. */
std::string row(const RcmData& d, int y) {
  std::string s;
  for (int x = 0; x < RcmData::size; x++) {
    if (d.echo[x][y] != RcmData::no_echo) {
      s += (s.empty() ? std::to_string(x) + ":" : "") + std::to_string(d.echo[x][y]);
    }
  }
  return s;
}

std::vector<std::string> storms(const RcmData& d) {
  std::vector<std::string> list;
  for (int i = 0; i < d.getNumStorm(); i++) {
    char text[80];
    std::snprintf(text, sizeof(text), "%s %.0f,%.0f %d/%d %d %d", d.getStormId(i),
                  static_cast<double>(d.getStormX(i)), static_cast<double>(d.getStormY(i)),
                  d.getStormDir(i), d.getStormSpd(i), d.getStormHgt(i), d.getStormHail(i));
    list.emplace_back(text);
  }
  return list;
}

TEST(RcmFileTest, AllPartsOfAMessage) {
  const RcmData d = decode(std::string(first_part) + second_part + third_part);
  EXPECT_EQ(d.num, 321);
  String time;
  d.getDate().toText("%Y%m%d%H%M", time);
  EXPECT_STREQ(time.get(), "202005202017");
  EXPECT_EQ(d.getMode(), static_cast<int>(RcmData::PRECIP));
  EXPECT_EQ(d.getStatus(), static_cast<int>(RcmData::VALID));
  EXPECT_EQ(d.getLocType(), static_cast<int>(RcmData::CELL));
  // A letter behind a digit repeats it, a blank doesn't end the group, which goes on along x.
  EXPECT_EQ(row(d, 0), "0:12");
  EXPECT_EQ(row(d, 48), "48:33345");
  EXPECT_EQ(row(d, 51), "52:88");   // "MND": cell 3 of block (13, 12)
  EXPECT_EQ(row(d, 103), "103:9");  // and what leaves the box is dropped
  EXPECT_EQ(row(d, 64), "4:7");     // "QAQ": the cell counts on behind its block
  EXPECT_EQ(std::count(&d.echo[0][0], &d.echo[0][0] + sizeof(d.echo), RcmData::no_echo),
            104 * 104 - 11);
  // "QKH": block row 16 and column 10, cell 7.
  EXPECT_EQ(d.getMaxTop(), 620);
  EXPECT_EQ(d.getMaxTopX(), 41.0F);
  EXPECT_EQ(d.getMaxTopY(), 67.0F);
  EXPECT_THAT(storms(d), ElementsAre("M0 48,50 226/16 193 1", "D0 46,59 -9999/-9999 386 2",
                                     "Y1 41,66 249/19 457 -1", "Q0 49,47 -9999/-9999 254 0"));
  ASSERT_EQ(d.num_vad, 3);
  EXPECT_EQ(d.vad[0].hgt, 20);
  EXPECT_EQ(d.vad[0].spd, 18);
  EXPECT_EQ(d.vad[1].rms, 15);
  EXPECT_EQ(d.vad[2].rms, Const::MISS);
  ASSERT_EQ(d.getNumTvs(), 2);
  EXPECT_STREQ(d.tvs[1].id, "02");
  EXPECT_EQ(d.getTvsX(1), 44.0F);
  EXPECT_EQ(d.getTvsY(1), 59.0F);
  ASSERT_EQ(d.getNumMeso(), 1);
  EXPECT_EQ(d.getMesoY(0), 51.0F);
  EXPECT_EQ(d.getMesoX(1), Const::FMISS);
  EXPECT_EQ(d.getStormId(4), nullptr);
}

TEST(RcmFileTest, HeadsAndAbsentParts) {
  const struct {
    const char* text;
    int result;
    int status;
    int mode;
    const char* row0;
  } rows[] = {
      {"1234 ROBUU 0321 /NEXRAA 0321 2005202017 EDITED RADNE /MDCLAR /SC", 1, 1, 2, ""},
      {"x 1234 ROBUU 1 /NEXRAA 1 2005202017 RADOM /MDPCPN /SC5 /NI1: AAA4", 1, 2, 1, "0:4"},
      {"/NEXRAA 1 2005202017 /MDXXXX /NI1: AAA4 /ENDAA", 1, 3, 0, "0:4"},
      {"1234 ROBUU 1 /NEXRAA", 1, 3, 0, ""},
      {"1234 ROBUU 1 /NEXRBB 0321 2005202017 020B158018", 0, 0, 0, ""},
      {"", 0, 0, 0, ""},
      {"/NEXRAA 1 2005202017 /NI1: AAAC4", 1, 3, 0, "3:4"},  // repeats nothing, but moves on
      {"/NEXRAA 1 2005202017 /NI1: aAA4,A@A44445,AA@4,AA", 1, 3, 0, "0:5"},
  };
  for (const auto& r : rows) {
    const RcmData d = decode(r.text, r.result);
    EXPECT_EQ(d.getStatus(), r.status) << r.text;
    EXPECT_EQ(d.getMode(), r.mode) << r.text;
    EXPECT_EQ(row(d, 0), r.row0) << r.text;
    EXPECT_STREQ(d.getId(), "T");
  }
  // A top without a place costs none of what follows, nor does a part that is cut.
  const RcmData top = decode(std::string("/NEXRAA 1 2005202017 /MT000:   /NCEN01: CM0MMC 226016 ") +
                             second_part + third_part);
  EXPECT_EQ(top.getNumStorm(), 4);
  EXPECT_EQ(top.getStormDir(0), 226);
  EXPECT_EQ(top.num_vad, 3);
  // The third part alone brings its storms.
  const RcmData third = decode(std::string("/NEXRAA 1 2005202017 ") + third_part);
  EXPECT_EQ(storms(third)[0], "M0 48,50 -9999/-9999 193 1");
  EXPECT_EQ(third.getNumTvs(), 2);
}

TEST(RcmFileTest, ListsAndDigitsHaveAnEnd) {
  const auto list = [](const char* head, const char* entry, const char* behind, int n) {
    std::string s = head;
    for (int i = 0; i < n; i++) {
      char id[16];
      std::snprintf(id, sizeof(id), "%s%2.2d%s", entry, i, behind);
      s += id;
    }
    return s;
  };
  const RcmData d =
      decode("/NEXRAA 1 2005202017 " + list("/NCEN99: ", "C", "MMC 226016,", 45) + "/ENDAA " +
             list("/NEXRBB 1 2 ", "1", "A100050,", 25) + "/ENDBB " +
             list("/NEXRCC 1 2 /NTVS99: ", "TVS", "MMC,", 12) + list("/NMES99: ", "M", "MMC,", 25) +
             list("/NCEN99: ", "C", "MMC S100HH,", 45));
  EXPECT_EQ(d.getNumStorm(), 40);
  EXPECT_EQ(d.getStormHgt(39), 100);
  EXPECT_EQ(d.num_vad, 20);
  EXPECT_EQ(d.getNumTvs(), 10);
  EXPECT_EQ(d.getNumMeso(), 20);

  // Of 2001 digits the last has no cell, and what stands behind them is read.
  std::string digits = "/NEXRAA 1 2005202017 /NI1: ";
  for (int i = 0; i < 19; i++) {
    digits += "A" + std::string(1, static_cast<char>('A' + i)) + "A" + std::string(103, '1') + ",";
  }
  digits += "BAA" + std::string(43, '2') + "3 /MT000:   /NCEN01: CM0MMC 226016, /ENDAA ";
  const RcmData long_one = decode(digits + second_part);
  EXPECT_EQ(row(long_one, 4), "0:" + std::string(43, '2'));
  EXPECT_EQ(long_one.getNumStorm(), 1);
  EXPECT_EQ(long_one.num_vad, 3);
}

/** A block of the binary framing. */
std::string block(int a, int b, std::string text) {
  text += text.size() % 2 != 0 ? " " : "";
  const size_t words = text.size() / 2 + 2;
  std::string s = {static_cast<char>(0x40 | words >> 8), static_cast<char>(words & 0xFF),
                   static_cast<char>(a), static_cast<char>(b)};
  return s + text;
}

TEST(RcmFileTest, BinaryFraming) {
  const std::string head =
      block(1, 1, "321") + block(1, 16, "16  33.172    -86.77125020200520 217");
  const std::string skipped = block(4, 16, std::string(600, '\0')) + block(1, 4, "1234 /NEXRAA");
  const RcmData d = decode(head + skipped + block(5, 4, first_part));
  EXPECT_EQ(d.getNumStorm(), 3);
  EXPECT_NEAR(d.getLat(), 33.172F, 1e-5F);
  EXPECT_NEAR(d.getLon(), -86.77F, 1e-5F);
  EXPECT_NEAR(d.elev, 381.0F, 0.01F);  // 1250 feet
  // The blocks alone, an unknown one, and one without a length.
  for (const std::string& end : {std::string(), block(7, 7, "") + block(5, 4, first_part),
                                 std::string("\0\0\1\4", 4) + block(5, 4, first_part)}) {
    const RcmData alone = decode(head + end);
    EXPECT_EQ(alone.num, 321);
    EXPECT_EQ(alone.getDate().getHour(), 2);
    EXPECT_EQ(alone.getDate().getMinute(), 17);
    EXPECT_EQ(alone.getNumStorm(), 0);
  }
}

TEST(RcmFileTest, MessagesOfABulletinAreFound) {
  const TempDir dir;
  const std::string text(first_part);
  std::string one_line = text;
  std::replace(one_line.begin(), one_line.end(), '\n', ' ');
  std::string short_lines = text;
  std::replace(short_lines.begin(), short_lines.end(), ' ', '\n');
  const std::string nul("\0\1\2\0", 4);
  const std::string name = dir.write("bulletin", "SDUS44 KOUN 202016\r\r\nRCMTLX\r\r\n" + one_line +
                                                     "\r\r\n\r\n" + "rcmBMX\n" + nul + one_line +
                                                     "\nRCMFFC\n" + short_lines + "\nRCMEND");
  RcmFile file;
  EXPECT_EQ(file.open(name.c_str(), 1, RcmFile::BULLETIN), 0);
  Filename filename;
  filename.set(name.c_str());
  ASSERT_EQ(file.open(filename), 1);
  RcmData d;
  EXPECT_EQ(file.read(d), 1);
  EXPECT_STREQ(d.getId(), "TLX");
  EXPECT_EQ(d.getNumStorm(), 3);
  RcmRawData raw;
  EXPECT_EQ(file.read(raw), 1);
  EXPECT_STREQ(raw.id, "BMX");
  EXPECT_EQ(raw.len, static_cast<int>(one_line.size()) + 3) << "NUL characters count";
  EXPECT_EQ(RcmFile::decode(raw, d), 1);
  EXPECT_EQ(d.getNumStorm(), 3);
  // Short lines are joined until they are 100 characters, and the rest is lost.
  EXPECT_EQ(file.read(raw), 1);
  EXPECT_NE(std::string(raw.data).find("UNEDITED\n"), std::string::npos);
  EXPECT_EQ(RcmFile::decode(raw, d), 1);
  EXPECT_EQ(row(d, 0), "0:12");
  EXPECT_EQ(d.getNumStorm(), 0);
  EXPECT_EQ(file.read(raw), 0);
  EXPECT_EQ(file.read(d), 0);

  RcmFile longer(
      dir.write("long", "RCMX\n" + std::string(60, '1') + "\n" + std::string(9000, '2') + "\n")
          .c_str());
  EXPECT_EQ(longer.read(raw), 1);
  EXPECT_EQ(raw.len, 4999);
}

TEST(RcmZqvFileTest, SummariesAreWrittenAndReadBack) {
  const TempDir dir;
  const std::string name = dir.at("summary");
  RcmDomain domain;
  Image image;
  image.set(domain.get(), 8);
  image.allocData();
  for (int i = 1; i <= 18; i++) image.setPixel(70 + i, 7, i);
  image.setPixel(451, 355, 1);
  image.setPixel(0, 9, 19);  // takes a row without a cell
  image.setPixel(0, 10, 20);
  RcmFile out;
  Date date;
  date.set("#202005202015");
  out.setDate(date);
  ASSERT_EQ(out.open(name.c_str(), 1, RcmFile::SUMMARY), 1);
  EXPECT_EQ(out.write(image), 1);
  EXPECT_EQ(out.write(decode(std::string(first_part) + second_part + third_part)), 1);
  RcmData other = decode("1234 X 7 /NEXRAA 7 2005202017 RADNE");
  const char* const ids[] = {"OMA", "NAX", "NEX"};  // sites with the letters of a status
  for (int i = 0; i < 3; i++) {
    std::snprintf(other.id, sizeof(other.id), "%s", ids[i]);
    other.status = 2 - i;
    EXPECT_EQ(out.write(other), 1);
  }
  other.mode = RcmData::CLEAR_AIR;
  EXPECT_EQ(out.write(other), 1);
  out.close();

  const std::string text = dir.read("summary");
  EXPECT_EQ(text.substr(0, text.find('+')), "ZQVRAD\n2015Z 20 MAY 20\nRCM SUMMARY\n");
  const std::string blank(78, ' ');
  EXPECT_NE(text.find("+  7\n" + std::string(71, ' ') + "1234567\n89:;<=>?@AB"), std::string::npos);
  EXPECT_NE(text.find("+  9\n" + blank + "\n"), std::string::npos);
  EXPECT_EQ(text.find("+ 10\n"), std::string::npos);
  EXPECT_EQ(text.substr(text.find('*')),
            "** T 321 PCPN\n"
            "Z 620   41.000   67.000\n"
            "T  01   47.000   51.000\n"
            "T  02   44.000   59.000\n"
            "M  13   49.000   51.000\n"
            "S  M0   48.000   50.000 226 016 193 1\n"
            "S  D0   46.000   59.000 -9999 -9999 386 2\n"
            "S  Y1   41.000   66.000 249 019 457 -1\n"
            "S  Q0   49.000   47.000 -9999 -9999 254 0\n"
            "** OMA 007 OM\n** NAX 007 NE\n** NEX 007 NA\n** NEX 007 CLAR\n");

  RcmFile in;
  ASSERT_EQ(in.open(name.c_str(), 0, RcmFile::SUMMARY), 1);
  EXPECT_EQ(in.getDate().getMinute(), 15);
  Image back;
  ASSERT_EQ(in.read(back), 1);
  EXPECT_STREQ(back.getInfo(), "RCM Reflectivity mosaic [dBZ]");
  for (int i = 0; i <= 18; i++) EXPECT_EQ(back.getVal(70 + i, 7), i);
  EXPECT_EQ(back.getVal(451, 355), 1);
  EXPECT_EQ(back.getVal(0, 9), 0);
  EXPECT_EQ(back.getValue(70 + 12, 7), 155.0F);
  EXPECT_EQ(back.getValue(70 + 13, 7), 220.0F);
  RcmData d;
  ASSERT_EQ(in.read(d), 1);
  EXPECT_EQ(d.num, 321);
  EXPECT_EQ(d.getMode(), static_cast<int>(RcmData::PRECIP));
  EXPECT_EQ(d.getLocType(), static_cast<int>(RcmData::EARTH));
  EXPECT_EQ(d.getMaxTop(), 620);
  EXPECT_EQ(d.getMaxTopY(), 67.0F);
  EXPECT_EQ(d.getDate().getDay(), 20);
  EXPECT_THAT(storms(d), ElementsAre("M0 48,50 226/16 193 1", "D0 46,59 -9999/-9999 386 2",
                                     "Y1 41,66 249/19 457 -1", "Q0 49,47 -9999/-9999 254 0"));
  EXPECT_EQ(d.getTvsX(1), 44.0F);
  EXPECT_EQ(d.getNumMeso(), 1);
  for (int i = 0; i < 3; i++) {
    ASSERT_EQ(in.read(d), 1);
    EXPECT_STREQ(d.getId(), ids[i]);
    EXPECT_EQ(d.getStatus(), 2 - i) << ids[i];
  }
  EXPECT_EQ(in.read(d), 1);
  EXPECT_EQ(d.getMode(), static_cast<int>(RcmData::CLEAR_AIR));
  EXPECT_EQ(in.read(d), 0);

  RcmZqvFile zqv;
  ASSERT_EQ(zqv.open(name.c_str(), 0), 1);
  Grid grid;
  ASSERT_EQ(zqv.read(grid), 1);
  const float values[] = {0,   22,  32,  42,  47,  52,  57,  100, 122, 132,
                          142, 147, 152, 200, 232, 222, 242, 247, 252};
  for (int i = 0; i <= 18; i++) EXPECT_EQ(grid.getValue(70 + i, 7), values[i]) << i;
  EXPECT_EQ(zqv.skipMosaic(), 1);
  EXPECT_EQ(zqv.skipMosaic(), 1);
  EXPECT_EQ(zqv.read(d), 1);
  EXPECT_STREQ(d.getId(), "T");
}

TEST(RcmZqvFileTest, WrongLines) {
  const TempDir dir;
  RcmZqvFile file;
  EXPECT_EQ(file.open(dir.write("f", "ZQVRAD\n\nSDUS SUMMARY\n").c_str(), 0), 0);
  std::string text = "ZQVRAD\n\nRCM SUMMARY\n1\n+\n2\n+ 99999999999\n3\n+-1\n4\n+355\n";
  text += std::string(451, ' ') + "56\n7" + std::string(2000, '8') + "\n";
  text += "*\nZ x\nZ 1 nan\nS\nT 1 1\nM 1 2 inf\nX\n\n** LONGNAME\n";
  for (int i = 0; i < 50; i++) text += "T 01 1 2\nM 02 3 4\nS LONG 5 6\n";
  ASSERT_EQ(file.open(dir.write("f", text).c_str(), 0), 1);
  Image image;
  ASSERT_EQ(file.read(image), 1);
  EXPECT_EQ(image.getVal(0, 0), 2) << "a place without a number leaves the row";
  EXPECT_EQ(image.getVal(451, 355), 5);
  EXPECT_EQ(image.getVal(0, 355), 0);
  RcmData d;
  EXPECT_EQ(file.read(d), 1);
  EXPECT_STREQ(d.getId(), "");
  EXPECT_EQ(d.getNumStorm() + d.getNumTvs() + d.getNumMeso(), 0);
  EXPECT_EQ(file.read(d), 1);
  EXPECT_STREQ(d.getId(), "LONG");
  EXPECT_EQ(d.getNumStorm(), 40);
  EXPECT_STREQ(d.getStormId(39), "LON");
  EXPECT_EQ(d.getNumTvs(), 10);
  EXPECT_EQ(d.getNumMeso(), 20);
  EXPECT_EQ(file.read(d), 0);
}

}  // namespace
}  // namespace ZQV
