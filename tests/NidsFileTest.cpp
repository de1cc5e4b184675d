#include "NidsFile.h"

#include <cmath>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Const.h"
#include "NidsInfo.h"
#include "NidsMaker.h"

namespace ZQV {
namespace {

/** What a renderer would see of the file's bytes. */
std::string walkOf(const std::string& data, NidsInfo* info = nullptr) {
  const TempFile file(data);
  NidsFile nids;
  NidsInfo own;
  if (nids.open(file.name()) == 0 || nids.readHeader(info == nullptr ? own : *info) == 0) {
    return "no header";
  }
  return NidsWalk(nids).text;
}

NidsInfo headerOf(const NidsMaker& maker) {
  NidsInfo info;
  walkOf(maker.build(), &info);
  return info;
}

/** A radar of three radials, with text and lines over it and two pages behind. */
NidsMaker smallProduct() {
  NidsMaker m;
  m.param = {1, 2, 5, 49, 6, 7, 8, 9, 10, 11};
  m.layers = {
      NidsMaker::radials(
          {{359, 1, {0, 1, 1, 5, 5, 5, 0}}, {0, 1, std::vector<int>(40, 7)}, {1, 1.5, {15, 0}}}) +
      NidsMaker::text(3, -20, 30, "HAIL") + NidsMaker::vectors({{1, 2, 3, 4}}) +
      NidsMaker::winds({{2, 10, 20, 270, 35}})};
  m.pages = {NidsMaker::text(0, 0, 1, " STM ID  AZ/RAN") + NidsMaker::vectors(3, {{0, 0, 511, 0}}),
             NidsMaker::text(0, 0, 11, "    L7   31/ 15")};
  return m;
}

/** The same as a digital product, one byte a bin. */
NidsMaker digitalProduct() {
  NidsMaker m = smallProduct();
  m.code = 94;
  m.level_words = {0xFEC0, 5, 254};
  m.layers = {NidsMaker::digital({{10, 1, {0, 1, 2, 3, 200}}, {11, 1, {4, 4, 4, 4, 4}}})};
  return m;
}

TEST(NidsFileTest, EveryEnvelopeAndCompressionGivesTheSameProduct) {
  NidsMaker m = smallProduct();
  const std::string expected = walkOf(m.build());
  EXPECT_EQ(expected,
            "radial 359 1\nrun 1 0 -90\nrun 2 1 5\nrun 3 5 25\nrun 1 0 -90\n"
            "radial 0 1\nrun 15 7 35\nrun 15 7 35\nrun 10 7 35\nrun 0 0 -90\n"
            "radial 1 1.5\nrun 1 15 75\nrun 1 0 -90\n"
            "text \"HAIL\" 15 -20 30\nvector 0 1 2 3 4\nwind 10 10 20 270 35\n"
            "page 1\ntext \" STM ID  AZ/RAN\" -90 0 1\nvector 3 0 0 511 0\n"
            "page 2\ntext \"    L7   31/ 15\" -90 0 11\n");
  for (const auto envelope : {NidsMaker::BARE, NidsMaker::START_LINE, NidsMaker::STARS,
                              NidsMaker::HEADING, NidsMaker::CONTROL}) {
    for (const auto packing : {NidsMaker::PLAIN, NidsMaker::ZLIB, NidsMaker::BZIP2}) {
      if (envelope == NidsMaker::BARE && packing != NidsMaker::PLAIN) {
        continue;  // the first two bytes are then no message code
      }
      for (const size_t member_size : {0, 100, 33}) {
        for (const bool trailer : {false, true}) {
          SCOPED_TRACE(::testing::Message()
                       << envelope << " " << packing << " " << member_size << " " << trailer);
          m.envelope = envelope;
          m.packing = packing;
          m.member_size = member_size;
          m.trailer = trailer;
          NidsInfo info;
          EXPECT_EQ(walkOf(m.build(), &info), expected);
          EXPECT_EQ(info.getMessDate(), 1620086400 + 60000);
        }
      }
    }
  }
}

TEST(NidsFileTest, DigitalProductsMayBeCompressedBehindTheirHeader) {
  NidsMaker m = digitalProduct();
  const std::string expected = walkOf(m.build());
  EXPECT_EQ(expected.substr(0, expected.find("page")),
            "radial 10 1\nrun 1 0 -9999\nrun 1 1 -9999\nrun 1 2 -31\nrun 1 3 -30.5\nrun 1 200 68\n"
            "radial 11 1\nrun 1 4 -30\nrun 1 4 -30\nrun 1 4 -30\nrun 1 4 -30\nrun 1 4 -30\n");
  m.packing = NidsMaker::BZIP2_BEHIND;
  for (const int code : {32, 94, 99, 134, 135, 138, 182, 186}) {
    m.code = code;
    m.packing = NidsMaker::PLAIN;
    const std::string plain = walkOf(m.build());
    m.packing = NidsMaker::BZIP2_BEHIND;
    EXPECT_EQ(walkOf(m.build()), plain) << code;
    m.envelope = m.envelope == NidsMaker::BARE ? NidsMaker::START_LINE : NidsMaker::BARE;
    m.trailer = !m.trailer;
  }
  // Any other code isn't looked at: its bytes are no symbology.
  m.code = 180;
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(walkOf(m.build()), "");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "No divider in symbology block\n");
}

// A plain product whose bytes 2 and 3 look like a signature is taken for compressed: deliberate,
// without an envelope that is where the test is made. 0x425A is "BZ", 0x789C a zlib head.
TEST(NidsFileTest, BareProductOfACertainDayIsTakenForCompressed) {
  for (const int days : {0x425A, 0x789C}) {
    NidsMaker m = smallProduct();
    m.mess_days = days;
    EXPECT_NE(walkOf(m.build()), "no header") << days;
    m.envelope = NidsMaker::BARE;
    EXPECT_EQ(walkOf(m.build()), "no header") << days;
  }
}

// What the feed puts behind a product is no part of it, wherever a fill of the file brings it.
TEST(NidsFileTest, TrailerIsCutOff) {
  for (const size_t bins : {10, 60000, 110000}) {
    for (const auto packing : {NidsMaker::PLAIN, NidsMaker::ZLIB, NidsMaker::BZIP2}) {
      NidsMaker m = digitalProduct();
      m.pages.clear();
      m.layers = {NidsMaker::other(18, std::string(bins / 2, 'x')) +
                  NidsMaker::other(18, std::string(bins / 2, 'y'))};
      m.packing = packing;
      m.zlib_level = 0;
      m.trailer = true;
      Opened o(m);
      EXPECT_EQ(o.nids.readPacket(), 18);
      EXPECT_EQ(o.nids.readPacket(), -1) << bins << " " << packing;  // not the code 0D0D
    }
  }
}

// The symbology of a digital product is tested for a signature. While a stream goes on, the bytes
// at the next fill of the file can look like one, here whichever of the two orders meets the fill.
TEST(NidsFileTest, SignatureInsideAStreamIsPassedOver) {
  for (const int first : {0, 1}) {
    NidsMaker::Radial ray{0, 1, {}};
    for (int b = 0; b < 60000; ++b) {
      ray.levels.push_back((b + first) % 2 == 0 ? 'B' : 'Z');
    }
    NidsMaker m = digitalProduct();
    m.layers = {NidsMaker::digital({ray, ray, ray})};
    const std::string plain = walkOf(m.build());
    m.zlib_level = 0;
    for (const auto packing : {NidsMaker::ZLIB, NidsMaker::BZIP2, NidsMaker::BZIP2_BEHIND}) {
      m.packing = packing;
      EXPECT_TRUE(walkOf(m.build()) == plain) << first;
    }
  }
}

// Where a fill of the file ends behind a member's data and ahead of its check sum, a step eats
// bytes and gives none; that isn't the end.
TEST(NidsFileTest, MemberMayEndWhereAFillEnds) {
  std::mt19937 random(11);
  std::string noise;
  for (int i = 0; i < 120000; ++i) {
    noise.push_back(static_cast<char>(random() & 0xFFU));
  }
  NidsMaker m;
  m.packing = NidsMaker::ZLIB;
  m.layers = {NidsMaker::other(18, noise.substr(0, 60000)) +
              NidsMaker::other(18, noise.substr(60000)) + NidsMaker::text(0, 1, 2, "END")};
  for (size_t member_size = 99950; member_size < 99990; ++member_size) {
    m.member_size = member_size;
    ASSERT_EQ(walkOf(m.build()), "text \"END\" -90 1 2\n") << member_size;
  }
}

// Within a text the bytes so far are given, elsewhere nothing but whole items.
void expectPrefix(const std::string& whole, const std::string& part, size_t cut) {
  std::istringstream a(whole);
  std::istringstream b(part);
  std::string full;
  std::string line;
  while (std::getline(b, line)) {
    ASSERT_TRUE(std::getline(a, full)) << "cut at " << cut << ": more than there is: " << line;
    if (line != full) {
      const std::string begun = line.substr(0, line.rfind('"'));
      ASSERT_EQ(line.substr(0, 5), "text ") << "cut at " << cut << ": " << full;
      ASSERT_EQ(full.substr(0, begun.size()), begun) << "cut at " << cut;
      ASSERT_FALSE(std::getline(b, line)) << "cut at " << cut << ": goes on behind its end";
    }
  }
}

TEST(NidsFileTest, CutAnywhereItGivesWhatStandsAheadOfTheCut) {
  NidsMaker arrays;
  arrays.code = 81;
  arrays.envelope = NidsMaker::START_LINE;
  arrays.layers = {NidsMaker::array({{1, 1, 255}, {9, 0, 0}})};
  NidsMaker rasters;
  rasters.code = 37;
  rasters.envelope = NidsMaker::CONTROL;
  rasters.layers = {NidsMaker::raster({{0, 3, 3, 3}, {1, 2, 3, 4}}, 0xBA07) +
                    NidsMaker::raster8({{0x34, 0x34, 0x12, 0}})};
  NidsMaker streams = smallProduct();
  streams.packing = NidsMaker::ZLIB;
  streams.member_size = 90;
  NidsMaker behind = digitalProduct();
  behind.packing = NidsMaker::BZIP2_BEHIND;
  behind.trailer = true;
  ::testing::internal::CaptureStderr();  // a cut head of the symbology has no divider
  for (const NidsMaker& m : {smallProduct(), digitalProduct(), arrays, rasters, streams, behind}) {
    const std::string data = m.build();
    const std::string whole = walkOf(data);
    ASSERT_FALSE(whole.empty());
    const TempFile file("");
    for (size_t cut = 0; cut < data.size(); ++cut) {
      file.write(data.substr(0, cut));
      NidsFile nids;
      NidsInfo info;
      ASSERT_EQ(nids.open(file.name()), 1);
      if (nids.readHeader(info) == 0) {
        ASSERT_EQ(info.getCode(), Const::MISS) << cut;
        continue;
      }
      expectPrefix(whole, NidsWalk(nids).text, cut);
      if (::testing::Test::HasFatalFailure()) {
        ::testing::internal::GetCapturedStderr();
        return;
      }
    }
  }
  ::testing::internal::GetCapturedStderr();
}

// A stream that has met an error must not be asked again, whoever reads on.
TEST(NidsFileTest, BrokenStreamEndsTheDataAndKeepsTheHeader) {
  NidsMaker m = digitalProduct();
  m.envelope = NidsMaker::BARE;
  m.packing = NidsMaker::BZIP2_BEHIND;
  const std::string data = m.build();
  const std::string whole = walkOf(data);
  ::testing::internal::CaptureStderr();  // what is left of a stream may have no divider
  const TempFile file("");
  for (size_t at = 120; at < data.size(); ++at) {
    for (const int bit : {1, 128}) {
      std::string broken = data;
      broken[at] = static_cast<char>(broken[at] ^ bit);
      file.write(broken);
      NidsFile nids;
      NidsInfo info;
      ASSERT_EQ(nids.open(file.name()), 1);
      ASSERT_EQ(nids.readHeader(info), 1);
      EXPECT_EQ(info.getCode(), 94);
      EXPECT_FLOAT_EQ(info.getLat(), 35.333F);
      const NidsWalk walk(nids);
      EXPECT_LE(walk.text.size(), whole.size()) << at;
      for (int i = 0; i < 3; ++i) {
        EXPECT_LE(nids.readPacket(), 0) << at;
      }
    }
  }
  ::testing::internal::GetCapturedStderr();
}

// zlib tells a wrong check sum at the very end: what came before it has the header, and counts.
TEST(NidsFileTest, WrongCheckSumAtTheEndLosesNothing) {
  NidsMaker m = smallProduct();
  m.packing = NidsMaker::ZLIB;
  std::string data = m.build();
  const std::string whole = walkOf(data);
  data.back() = static_cast<char>(data.back() ^ 1);
  EXPECT_EQ(walkOf(data), whole);
}

TEST(NidsFileTest, CutDescriptionKeepsThePlaceOfTheRadar) {
  NidsMaker m;
  m.envelope = NidsMaker::BARE;
  Opened o(m.build().substr(0, 18 + 40));
  EXPECT_FLOAT_EQ(o.info.getLat(), 35.333F);
  EXPECT_EQ(o.info.getMode(), 2);
}

TEST(NidsFileTest, CutBehindABlockOfBzip2LosesNothingOfTheBlock) {
  NidsMaker m;
  m.code = 94;
  m.packing = NidsMaker::BZIP2_BEHIND;
  std::vector<NidsMaker::Radial> list;
  list.reserve(360);
  for (int i = 0; i < 360; i++) {
    list.push_back({static_cast<double>(i), 1, std::vector<int>(460, 2 + i * 7 % 250)});
  }
  m.layers = {NidsMaker::digital(list)};
  const std::string whole = m.build();
  constexpr size_t end_of_stream = 10;  // marker and check sum behind the only block
  const TempFile file(whole.substr(0, whole.size() - end_of_stream));
  NidsFile nids;
  NidsInfo info;
  ASSERT_EQ(nids.open(file.name()), 1);
  nids.readHeader(info);
  const NidsWalk walk(nids, false);
  EXPECT_EQ(walk.cells.size(), 360U * 460U);
}

TEST(NidsFileTest, HeaderReachesTheSummary) {
  NidsMaker m = smallProduct();
  m.scan_num = 3;
  Opened o(m);
  EXPECT_FLOAT_EQ(o.info.getLon(), -97.278F);
  EXPECT_FLOAT_EQ(o.info.getAlt(), 389.2296F);  // 1277 ft
  EXPECT_EQ(o.info.getVcp(), 212);
  EXPECT_EQ(o.info.getSeq(), 7);
  EXPECT_EQ(o.info.getDate().getSeconds(), 1620146370);
  EXPECT_EQ(o.info.getProdDate(), 1620146395);
  EXPECT_FLOAT_EQ(o.info.getElev(), 0.5F);
  EXPECT_FLOAT_EQ(o.info.getMax(), 49);
  EXPECT_EQ(o.nids.getScanNum(), 3);
  EXPECT_EQ(o.nids.getVolScan(), 33);
  EXPECT_EQ(o.nids.getOffSymb(), 60);
  EXPECT_EQ(o.nids.getParam(9), 11);
  ::testing::internal::CaptureStdout();
  o.info.print();
  const std::string out = ::testing::internal::GetCapturedStdout();
  for (const char* lines : {"Info: Base reflectivity [dBZ]\nMisc: Md=pr Rng=230(1.0) El=0.5 "
                            "Mx=49\nSrc: 302\nLat: 35.33",
                            "\nThres: 3 15.000000\nThres: 4 20.000000\n", "\nEnd Time: -9999\n"}) {
    EXPECT_NE(out.find(lines), std::string::npos) << out;
  }
}

TEST(NidsFileTest, DatesBeyondTheClockStandAtItsEnd) {
  NidsMaker m = smallProduct();
  m.mess_days = m.vol_days = 0xFFFF;
  m.prod_days = 0;
  m.prod_secs = 0;
  const NidsInfo info = headerOf(m);
  EXPECT_EQ(info.getMessDate(), 2147483647);
  EXPECT_EQ(info.getVolDate(), 2147483647);
  EXPECT_EQ(info.getProdDate(), -86400);
}

TEST(NidsFileTest, FlaggedLevelWords) {
  // Whichever of the low two bits stand, a marker ends at -90 and never at -95; -100 isn't scaled,
  // the other marker is: deliberate.
  const struct {
    int word;
    float value;
  } rows[] = {{0x0000, 0},     {0x00FF, 255},  {0x8000, -100}, {0x8001, -90},    {0x8002, -90},
              {0x8003, -90},   {0x80FC, -100}, {0xB100, -100}, {0xA002, -4.5F},  {0x9002, -9},
              {0x2019, 1.25F}, {0x1005, 0.5F}, {0x3064, 0.5F}, {0x2800, 0.01F},  {0x0405, 4.99F},
              {0x0C05, 5},     {0x0205, 5},    {0x0137, -55},  {0x1937, -5.51F}, {0x4007, 7}};
  for (const auto& row : rows) {
    NidsMaker m;
    m.level_words.fill(row.word);
    const NidsInfo info = headerOf(m);
    EXPECT_FLOAT_EQ(info.getThres(0), row.value) << std::hex << row.word;
    EXPECT_FLOAT_EQ(info.getThres(15), row.value) << std::hex << row.word;
  }
}

TEST(NidsFileTest, Float16IsAMagnitude) {
  const struct {
    int word;
    float value;
  } rows[] = {
      {0x59AB, 90.6875F}, {0x4400, 2}, {0x54DC, 38.875F},      {0x593E, 83.875F},
      {0x0000, 0},        {0x0200, 1}, {0x03FF, 1.998046875F}, {0x0400, 3.0517578125e-05F},
      {0x7FFF, 65504},    {0xC400, 2},  // bit 15 is passed over: deliberate
  };
  for (const auto& row : rows) {
    EXPECT_EQ(NidsFile::float16(row.word), row.value) << std::hex << row.word;
    EXPECT_EQ(NidsFile::float16(static_cast<int16_t>(row.word)), row.value) << "sign-extended";
  }
}

TEST(NidsFileTest, ScaledLevelsByProduct) {
  const struct {
    int code;
    std::array<int, 16> words;
    std::array<float, 6> thres;
  } rows[] = {
      {32, {0xFEC0, 5, 256}, {-32, 0.5F, 256}},
      {99, {0xFD85, 5, 254}, {-123.434128F, 0.971922219F, 254}},
      // In metres per second, unlike 99: deliberate.
      {182, {0xFD85, 5, 254}, {-63.5F, 0.5F, 254}},
      {81, {0xFFC4, 125, 256}, {-0.06F, 0.125F, 256}},
      {138, {5, 2, 256}, {0.05F, 0.02F, 256}},
      {186, {1, 2, 3, 4}, {-32, 0.5F, 256, 4}},  // the first three whatever the file says
  };
  for (const auto& row : rows) {
    NidsMaker m;
    m.code = row.code;
    m.level_words = row.words;
    const NidsInfo info = headerOf(m);
    for (size_t i = 0; i < row.thres.size(); ++i) {
      EXPECT_FLOAT_EQ(info.getThres(static_cast<int>(i)), row.thres[i]) << row.code << " #" << i;
    }
  }
}

TEST(NidsFileTest, SiteProducts) {
  const struct {
    int code;
    const char* title;
    float res;
    float range;
    const char* misc;
  } rows[] = {
      {19, "Base reflectivity [dBZ]", 1, 230, "Md=cl Rng=230(1.0) El=0.3 Mx=40"},
      {22, "Base velocity [knt]", 0.25F, 57, "Md=cl Rng= 57(0.2) El=0.3 Mn,Mx=40,50"},
      {36, "Comp reflectivity [dBZ]", 4, 460, "Md=cl Rng=460(4.0) Mx=40"},
      {41, "Echo tops [1000 ft]", 4, 230, "Md=cl Rng=230(4.0) Mx=40"},
      {48, "VAD wind profile [knt]", 1, 1, "Md=cl Mx=40"},
      {55, "Stm rel mn rad velocity [knt]", 0.5F, 50, "Md=cl El=0.3 Stm=9-8 Mn,Mx=40,50"},
      {56, "Stm rel mn rad velocity [knt]", 1, 230, "Md=cl El=0.3 Stm=9-8 Mn,Mx=40,50"},
      {65, "Layer 1 comp refl [max dBZ]", 4, 230, "Md=cl Rng=230(4.0) Lyr=50-60 Mx=40"},
      {78, "Sfc 1 hr rainfall acc. [in]", 2, 230, "Md=cl Rng=230(2.0) Mx=4.0"},
      // Day 50 counts from 1 January as day 0, and param 5 as seconds: deliberate.
      {80, "Sfc storm total rainfall acc. [in]", 2, 230, "Md=cl Rng=230(2.0) B=20/00:01 Mx=4.0"},
      {81, "Digital precip array [in]", 0.047596F, 230, "Md=cl Rng=230(0.0) Mx=4.0"},
      {90, "Layer 3 comp refl [max dBZ]", 4, 230, "Md=cl Rng=230(4.0) Lyr=50-60 Mx=40"},
      {99, "Base velocity [knt]", 0.25F, 230, "Md=cl Rng=230(0.2) El=0.3 Mn,Mx=40,50"},
      {135, "Enh Echo tops [1000 ft]", 1, 345, "Md=cl Rng=345(1.0) Mx=40"},
      {138, "Digital storm precip [in]", 2, 230, "Md=cl Rng=230(2.0) B=20/00:01 Mx=0.40"},
      {141, "Mesocyclone detection [??]", 1, 230, "Md=cl Rng=230(1.0) Mx=40"},
      {181, "Base reflectivity [dBZ]", 0.15F, 90, "Md=cl Rng= 90(0.2) El=0.3 Mx=40"},
      {186, "Base reflectivity [dBZ]", 0.3F, 420, "Md=cl Rng=420(0.3) Mx=40"},
      {62, "Not supported - 62", 0, 0, "Md=cl Rng=  0(0.0) Mx=40"},
      {180, "Not supported - 180", 0, 0, "Md=cl Rng=  0(0.0) Mx=40"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.code);
    NidsMaker m;
    m.code = row.code;
    m.mode = 1;
    m.src = 9999;  // the last that is no mosaic
    m.param = {0, 10, 3, 40, 50, 60, 70, 80, 90, 0};
    m.layers = {NidsMaker::radials({{0, 1, {1, 2}}})};
    Opened o(m);
    EXPECT_STREQ(o.info.getInfo(), row.title);
    EXPECT_STREQ(o.info.getMisc(), row.misc);
    EXPECT_FLOAT_EQ(o.info.getRes(), row.res);
    EXPECT_FLOAT_EQ(o.nids.getRange(), row.range);
  }
}

TEST(NidsFileTest, MosaicProducts) {
  const struct {
    int code;
    const char* title;
    float res;
  } rows[] = {
      {6, "WARP Comp reflectivity [dBZ]", 8},
      {30, "Base spectrum width [knt]", 4},  // the radars' own titles come first: deliberate
      {50, "Composite reflectivity [dBZ]", 0},
      {90, "Layer 3 comp refl [max dBZ]", 4},
      {91, "Sfc 1 hr precipitation [in]", 8},
      {108, "Sfc 24 hr precipitation [in]", 8},
      {141, "Mesocyclone detection [??]", 4},
      {180, "Base reflectivity [dBZ]", 4},
      {199, "Winter reflectivity [dBZ]", 1},
      {201, "Not supported - 201", 8},
      {210, "Echo tops-18dBZ [ft]", 1},
      {250, "Not supported - 250", 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.code);
    NidsMaker m;
    m.code = row.code;
    m.src = 10000;
    m.lat = 38;
    m.lon = -98;
    m.param[9] = 7;
    m.layers = {NidsMaker::raster({{1, 2, 3, 4, 5, 6, 7}, {7, 6, 5, 4, 3, 2, 1}})};
    Opened o(m);
    EXPECT_STREQ(o.info.getInfo(), row.title);
    EXPECT_FLOAT_EQ(o.info.getRes(), row.res);
    char label[32];
    std::snprintf(label, sizeof label, " Res=%3.1f", static_cast<double>(row.res));
    EXPECT_NE(std::string(o.info.getMisc()).find(label), std::string::npos) << o.info.getMisc();
    EXPECT_EQ(o.nids.getRange(), 0);
    const DomainVal dom = o.nids.getDomainVal();
    EXPECT_EQ(dom.proj, DomainVal::LAMB);
    EXPECT_EQ(dom.nx, 7);  // wider than it is tall
    EXPECT_EQ(dom.ny, 2);
    EXPECT_EQ(dom.plon, -98);
    EXPECT_EQ(dom.param[1], 45);
    if (row.res > 0) {
      EXPECT_FLOAT_EQ(dom.dx, row.res * 1.00137F / 100);
      EXPECT_FLOAT_EQ(dom.dy, dom.dx);
      EXPECT_FLOAT_EQ(o.info.getCres(), dom.dx);
    }
  }
}

TEST(NidsFileTest, ProductsWithAPlaneOfTheirOwn) {
  NidsMaker m = smallProduct();
  m.code = 81;
  m.layers = {NidsMaker::array({{1, 2}, {3, 4}, {5, 6}})};
  Opened o(m);
  const DomainVal dom = o.nids.getDomainVal();
  EXPECT_EQ(dom.proj, DomainVal::PSTEREO);
  EXPECT_EQ(dom.plat, 90);
  EXPECT_EQ(dom.plon, -105);
  EXPECT_FLOAT_EQ(dom.clat, 35.333F);
  EXPECT_FLOAT_EQ(dom.dx, 0.047596F);
  EXPECT_FLOAT_EQ(dom.dy, 0.047596F);
  EXPECT_EQ(dom.nx, 3);  // the rows, not the 130 of the table
}

TEST(NidsFileTest, SizesOutOfTheFileAreLimited) {
  NidsMaker m = smallProduct();
  m.code = 94;
  m.layers = {NidsMaker::digital({{0, 1, {1}}}, 0xFFFF)};
  EXPECT_EQ(headerOf(m).getNx(), 16384);
  m.src = 12000;
  m.param[9] = 32767;
  EXPECT_EQ(headerOf(m).getNx(), 8192);
  m.param[9] = -5;
  EXPECT_EQ(headerOf(m).getNx(), 0);
  m.layers = {NidsMaker::raster(NidsMaker::Rows(9000, {1}))};
  EXPECT_EQ(headerOf(m).getNy(), 8192);
}

TEST(NidsFileTest, PlaceOffTheEarthKeepsNumbersUsable) {
  NidsMaker m = smallProduct();
  for (const double lat : {-90.0, 90.0, 1000.0, -2000000.0}) {
    m.lat = lat;
    const NidsInfo info = headerOf(m);
    EXPECT_TRUE(std::isfinite(info.getCres())) << lat;
    EXPECT_GT(info.getCres(), 0) << lat;
  }
}

TEST(NidsFileTest, LabelTailEndsAt49Characters) {
  NidsMaker m;
  m.code = 27;
  m.mode = 0;
  m.param = {0, 0, -32768, -32768, -32768, 0, 0, 0, 0, 0};
  EXPECT_STREQ(headerOf(m).getMisc(), "Md=mt Rng=230(1.0) El=-3276.8 Mn,Mx=-32768,-32768");
  m.code = 138;
  m.param = {0, 0, 0, -32768, 32767, 32767, 0, 0, 0, 0};
  EXPECT_STREQ(headerOf(m).getMisc(), "Md=mt Rng=230(2.0) B=18/09:06 Mx=-327.68");
  m.code = 56;
  m.param = {0, 0, -32768, -32768, -32768, 0, 0, -32768, -32768, 0};
  EXPECT_STREQ(headerOf(m).getMisc(), "Md=mt El=-3276.8 Stm=-3277--3277 Mn,Mx=-32768,-32");
  m.mode = 3;
  m.param = {};
  EXPECT_STREQ(headerOf(m).getMisc(), " El=0.0 Stm=0-0 Mn,Mx=0,0");
}

TEST(NidsFileTest, BrokenHeadersAreTakenCalmly) {
  NidsFile nids;
  NidsInfo info;
  EXPECT_EQ(nids.open("/no/such/file"), 0);
  EXPECT_EQ(nids.open(nullptr), 0);
  EXPECT_EQ(nids.readHeader(info), 0);
  EXPECT_EQ(nids.readPacket(), 0);
  EXPECT_EQ(nids.close(), 0);
  if (nids.open("/") == 1) {  // a directory opens and can't be read
    EXPECT_EQ(nids.readHeader(info), 0);
  }
  EXPECT_EQ(walkOf(""), "no header");
  // Envelopes whose lines never end.
  EXPECT_EQ(walkOf("SDUS53"), "no header");
  EXPECT_EQ(walkOf("\x01\r\n\n"), "no header");
  EXPECT_EQ(walkOf("**\n"), "no header");

  NidsMaker m = smallProduct();
  m.desc_divider = 0;
  NidsInfo bare;
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(walkOf(m.build(), &bare), "");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "No divider in symbology block\n");
  EXPECT_EQ(bare.getCode(), 19);
  EXPECT_EQ(bare.getSrc(), 302);
  EXPECT_EQ(bare.getLat(), 0);
  EXPECT_EQ(bare.getThres(1), 0);

  m = smallProduct();
  m.symb_divider = 0xFFFE;
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(walkOf(m.build(), &bare).find("radial"), std::string::npos);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "No divider in symbology block\n");
  EXPECT_FLOAT_EQ(bare.getLat(), 35.333F);

  m = smallProduct();
  m.symb_id = 3;
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(walkOf(m.build()).find("radial"), std::string::npos);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

TEST(NidsFileTest, NothingOfAnEarlierProductIsLeft) {
  const TempFile first(smallProduct().build());
  NidsMaker wrong = smallProduct();
  wrong.desc_divider = 0;
  wrong.mode = 9;
  const TempFile second(wrong.build());
  NidsFile nids;
  NidsInfo info;
  ASSERT_EQ(nids.open(first.name()), 1);
  ASSERT_EQ(nids.readHeader(info), 1);
  ::testing::internal::CaptureStderr();
  ASSERT_EQ(nids.open(second.name()), 1);
  ASSERT_EQ(nids.readHeader(info), 1);
  ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(info.getLat(), 0);
  EXPECT_EQ(info.getMax(), 0);
  EXPECT_EQ(nids.getNbin(), 0);
}

TEST(NidsFileTest, StreamWithoutEndIsStopped) {
  NidsMaker m = digitalProduct();
  m.packing = NidsMaker::ZLIB;
  m.tail = std::string(40 << 20, '\0');
  Opened o(m);
  EXPECT_EQ(o.nids.readBytes(nullptr, 30 << 20), 1);
  EXPECT_EQ(o.nids.readBytes(nullptr, 5 << 20), 0);
}

}  // namespace
}  // namespace ZQV
