#include "NidsPacket.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Const.h"
#include "NidsMaker.h"

namespace ZQV {
namespace {

NidsMaker product(int code, const std::string& layer) {
  NidsMaker m;
  m.code = code;
  m.layers = {layer};
  return m;
}

std::string walkOf(const NidsMaker& maker) {
  Opened opened(maker);
  return NidsWalk(opened.nids).text;
}

std::vector<NidsRun> runsOf(NidsFile& nids) {
  std::vector<NidsRun> runs;
  for (NidsRun run; nids.readRun(run) > 0;) {
    runs.push_back(run);
  }
  return runs;
}

TEST(NidsPacketTest, RunsOfNoneAreDeliveredAndTheWalkEndsByBytes) {
  // Two halfwords: a run of none in the middle and one as padding.
  const std::string layer = NidsMaker::u2(44831) + NidsMaker::u2(4) + NidsMaker::u2(230) +
                            std::string(6, '\0') + NidsMaker::u2(1) + NidsMaker::u2(2) +
                            NidsMaker::u2(-5) + NidsMaker::u2(10) + NidsMaker::u2(0xF305) +
                            NidsMaker::u2(0x2100);
  Opened o(product(19, layer));
  EXPECT_EQ(o.info.getType(), NidsFile::RADIAL);
  EXPECT_EQ(o.nids.getBin0(), 4);
  EXPECT_EQ(o.info.getNx(), 460);
  NidsRadial radial;
  ASSERT_EQ(o.nids.readRadial(radial), 1);
  EXPECT_FLOAT_EQ(radial.ang0, -0.5F);
  EXPECT_FLOAT_EQ(radial.ang1, 1);
  EXPECT_EQ(o.nids.getLen(), 4);  // halfwords in the file
  const auto runs = runsOf(o.nids);
  ASSERT_EQ(runs.size(), 4U);
  EXPECT_EQ(runs[0].run, 15);
  EXPECT_EQ(runs[0].ival, 3);
  EXPECT_FLOAT_EQ(runs[0].val, 15);
  EXPECT_EQ(runs[1].run, 0);
  EXPECT_EQ(runs[2].run, 2);
  EXPECT_EQ(runs[3].run, 0);
  EXPECT_FLOAT_EQ(runs[3].val, -90);  // a marker stays a value, it isn't missing
  EXPECT_EQ(o.nids.readRadial(radial), 0);
}

TEST(NidsPacketTest, DigitalLevels) {
  const struct {
    const char* fault;
    int code;
    std::array<int, 16> words;
    int level;
    float value;
  } rows[] = {
      {"BelowThreshold", 94, {0xFEC0, 5, 254}, 0, Const::FMISS},
      {"RangeFolded", 94, {0xFEC0, 5, 254}, 1, Const::FMISS},
      {"LastLevel", 94, {0xFEC0, 5, 254}, 255, 95.5F},
      {"Precipitation", 138, {0, 2, 256}, 236, 4.72F},
      // Exactly 0, which is where a class of colours begins: a hair less would be another colour.
      {"ZeroVelocity", 99, {0xFD85, 5, 254}, 127, 0},
      {"VelocityBelowZero", 99, {0xFD85, 5, 254}, 126, -0.971923828F},
      {"LiquidLinear", 134, {0x59AB, 0x4400, 20, 0x54DC, 0x593E}, 19, 0.187456926F},
      {"LiquidLogarithmic", 134, {0x59AB, 0x4400, 20, 0x54DC, 0x593E}, 20, 0.193382185F},
      {"LiquidLargest", 134, {0x59AB, 0x4400, 20, 0x54DC, 0x593E}, 254, 79.5356849F},
      {"TopsMasked", 135, {127, 1, 2, 128}, 148, 18},
      {"TopsScaled", 135, {127, 2, 3, 128}, 24, 9},
      // Scales of 0 have no value to give.
      {"LiquidExponentDividedByZero", 134, {0, 0, 20, 0, 0}, 30, Const::FMISS},
      {"LiquidBeyondAllBounds", 134, {0, 0, 0, 0x0001, 0}, 255, Const::FMISS},
      {"TopsDividedByZero", 135, {127, 0, 2, 128}, 24, Const::FMISS}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.fault);
    NidsMaker m = product(row.code, NidsMaker::digital({{0, 1, {row.level}}}));
    m.level_words = row.words;
    Opened o(m);
    NidsRadial radial;
    NidsRun run;
    ASSERT_EQ(o.nids.readRadial(radial), 1);
    ASSERT_EQ(o.nids.readRun(run), 1);
    EXPECT_EQ(run.run, 1);
    EXPECT_EQ(run.ival, row.level);
    if (row.value == 0) {
      EXPECT_EQ(run.val, 0);
    } else {
      EXPECT_FLOAT_EQ(run.val, row.value);
    }
    EXPECT_EQ(o.nids.readRun(run), 0);
  }
}

TEST(NidsPacketTest, RasterOfEitherCodeIsOneKind) {
  for (const int code : {0xBA0F, 0xBA07}) {
    Opened o(product(41, NidsMaker::raster({{1, 1, 2}, {3}}, code)));
    EXPECT_EQ(o.info.getType(), 47631);
    EXPECT_TRUE(o.nids.isPacketRastor());
    EXPECT_EQ(o.nids.getCol0(), 3);
    EXPECT_EQ(o.nids.getRow0(), 5);
    EXPECT_EQ(NidsWalk(o.nids).text, "row\nrun 2 1 5\nrun 1 2 10\nrow\nrun 1 3 15\nrun 0 0 -90\n");
  }
}

TEST(NidsPacketTest, RastersOfPairsAndWithoutRows) {
  // Hundreds count in the high nibble of a pair.
  EXPECT_EQ(walkOf(product(37, NidsMaker::raster8({{0x04, 0x04, 0x31}}))),
            "row\nrun 2 4 20\nrun 1 49 305\n");
  Opened o(product(37, NidsMaker::raster({}) + NidsMaker::vectors({{1, 2, 3, 4}})));
  EXPECT_EQ(o.nids.readRastor(), 0);
  EXPECT_EQ(o.nids.readPacket(), 7);
}

TEST(NidsPacketTest, ArrayEndsByCells) {
  NidsMaker m = product(81, NidsMaker::array({{0, 0, 254, 255}, {8, 8, 8, 8}}));
  m.level_words = {0xFFC4, 125, 256};
  EXPECT_EQ(walkOf(m), "row\nrun 2 0 -0.06\nrun 1 254 31.69\nrun 1 255 -9999\nrow\nrun 4 8 0.94\n");
  // A row of 5 cells where the head says 4 never ends by itself, and takes the data behind it for
  // runs: deliberate.
  std::string layer = NidsMaker::array({{1, 1, 1, 1}, {2, 2, 2, 2}});
  layer[12] = 5;
  m.layers = {layer};
  Opened o(m);
  ASSERT_EQ(o.nids.readRastor(), 1);
  const auto runs = runsOf(o.nids);
  ASSERT_EQ(runs.size(), 3U);
  EXPECT_EQ(runs[0].run, 5);
  EXPECT_EQ(runs[1].run, 0);  // the length of the next row
  EXPECT_EQ(runs[2].run, 4);
  NidsRun run;
  EXPECT_EQ(o.nids.readRun(run), -1);
}

TEST(NidsPacketTest, TextsVectorsAndWinds) {
  std::string longer;
  for (int i = 0; i < 30; ++i) longer += "0123456789";
  const std::string next = NidsMaker::vectors({{1, 2, 3, 4}});
  const std::string wind = NidsMaker::winds({{0, 1, 2, 3, 4}});
  const struct {
    std::string layer;
    std::string walk;
  } rows[] = {
      // Cut at 99 characters, and the rest dropped.
      {NidsMaker::text(1, -7, 9, "") + next, "text \"\" 5 -7 9\nvector 0 1 2 3 4\n"},
      {NidsMaker::text(1, -7, 9, longer.substr(0, 99)) + next,
       "text \"" + longer.substr(0, 99) + "\" 5 -7 9\nvector 0 1 2 3 4\n"},
      {NidsMaker::text(1, -7, 9, longer) + next,
       "text \"" + longer.substr(0, 99) + "\" 5 -7 9\nvector 0 1 2 3 4\n"},
      // Code 1 has a value word in this reader, though other readers know none: deliberate.
      {NidsMaker::text(2, 3, 4, "abc", 1), "text \"abc\" 10 3 4\n"},
      // Levels that don't exist are level 0.
      {NidsMaker::text(-1, 1, 2, "x") + NidsMaker::winds({{16, 3, 4, 5, 6}}),
       "text \"x\" -90 1 2\nwind -90 3 4 5 6\n"},
      {NidsMaker::vectors({{-1, 2, 3, -4}, {5, 6, 7, 8}}) + NidsMaker::vectors(-3, {{9, 8, 7, 6}}) +
           NidsMaker::vectors({}) + wind,
       "vector 0 -1 2 3 -4\nvector 0 5 6 7 8\nvector -3 9 8 7 6\nwind -90 1 2 3 4\n"},
      // A length that leaves no room for the value holds no vector, and a text shorter than its
      // head nothing.
      {NidsMaker::u2(10) + NidsMaker::u2(1) + NidsMaker::u2(7) + NidsMaker::u2(8) +
           NidsMaker::u2(3) + NidsMaker::u2(1) + NidsMaker::u2(2) + NidsMaker::u2(3) + wind,
       "text \"\" 5 2 3\nwind -90 1 2 3 4\n"}};
  for (const auto& row : rows) EXPECT_EQ(walkOf(product(48, row.layer)), row.walk);
}

// The length is taken at its word: a packet of 15 bytes runs on to the end of the data. Deliberate.
TEST(NidsPacketTest, WindsOfAnOddLengthRunOn) {
  std::string layer = NidsMaker::winds({{0, 1, 2, 3, 4}, {0, 5, 6, 7, 8}});
  layer[3] = 15;
  Opened o(product(48, layer + NidsMaker::winds({{0, 9, 9, 9, 9}})));
  NidsWind wind;
  EXPECT_EQ(o.nids.readWind(wind), 1);
  EXPECT_EQ(o.nids.readWind(wind), 1);
  EXPECT_EQ(o.nids.readWind(wind), 1);  // the next packet's bytes
  EXPECT_FLOAT_EQ(wind.x, 10);          // its length
  EXPECT_EQ(o.nids.readWind(wind), -1);
}

TEST(NidsPacketTest, PacketsWithoutAReaderArePassedOver) {
  std::string layer;
  for (const int code : {18, 5, 6, 9, 3, 11, 12, 13, 14, 15}) {
    // A payload that would be a text packet if it were read as one.
    layer += NidsMaker::other(code, NidsMaker::text(1, 2, 3, "wrong"));
  }
  Opened o(product(58, layer + NidsMaker::text(1, 2, 3, "right")));
  EXPECT_FALSE(o.nids.isPacketVector());
  const NidsWalk walk(o.nids);
  EXPECT_EQ(walk.text, "text \"right\" 5 2 3\n");
  EXPECT_EQ(walk.packets, (std::vector<int>{18, 5, 6, 9, 3, 11, 12, 13, 14, 15, 8}));
}

TEST(NidsPacketTest, UnknownCodeEndsTheWalk) {
  Opened o(product(58, NidsMaker::winds({{0, 1, 2, 3, 4}}) + NidsMaker::vectors({{1, 2, 3, 4}}) +
                           NidsMaker::other(20, NidsMaker::text(1, 2, 3, "wrong"))));
  EXPECT_EQ(o.nids.skipWind(), 0);
  EXPECT_EQ(o.nids.readPacket(), 7);
  EXPECT_EQ(o.nids.skipVector(), 0);
  EXPECT_EQ(o.nids.readPacket(), 0);
  EXPECT_EQ(o.nids.getPacketCode(), 20);
  EXPECT_EQ(o.nids.readPacket(), 0);
}

/** A layer, and pages whose last ends the file. */
NidsMaker paged() {
  NidsMaker m = product(37, NidsMaker::raster({{1}}));
  m.pages = {NidsMaker::text(0, 0, 1, "ONE") + NidsMaker::text(0, 0, 11, "TWO"),
             NidsMaker::vectors(2, {{1, 2, 3, 4}})};
  return m;
}

TEST(NidsPacketTest, GraphicBlockIsFoundFromAnywhereAhead) {
  // From the image, a packet that isn't known, the divider of a second layer, and the block's own.
  NidsMaker unknown = paged();
  unknown.layers = {NidsMaker::u2(2) + "lost"};
  NidsMaker layers = paged();
  layers.layers = {NidsMaker::text(0, 0, 0, "AA"), NidsMaker::text(0, 0, 0, "BB")};
  NidsMaker one_layer = paged();
  one_layer.layers = {NidsMaker::text(0, 0, 0, "AA")};
  for (NidsMaker maker : {paged(), unknown, layers, one_layer}) {
    for (const auto envelope : {NidsMaker::BARE, NidsMaker::HEADING}) {
      maker.envelope = envelope;
      for (const bool walks : {false, true}) {
        Opened o(maker);
        if (walks && o.nids.isPacketText()) {
          o.nids.skipText();
          while (o.nids.readPacket() > 0) {
          }
        }
        ASSERT_EQ(o.nids.gotoGraphic(), 1);
        ASSERT_EQ(o.nids.graphic(), 1) << envelope << walks << maker.layers.size();
        EXPECT_EQ(o.nids.graphicLayer(), 1);
        EXPECT_EQ(o.nids.readPacket(), 8);
      }
    }
  }
}

TEST(NidsPacketTest, GraphicBlockThatIsNotThere) {
  NidsMaker m = product(37, NidsMaker::raster({{1}}));
  {
    Opened o(m);
    EXPECT_EQ(o.nids.graphicLayer(), 0);
    EXPECT_EQ(NidsWalk(o.nids).pages, 0);
  }
  const std::string whole = paged().build();
  const size_t pages = whole.find(NidsMaker::u2(1) + NidsMaker::u2(26));
  ASSERT_NE(pages, std::string::npos);
  // A page number of 0 or above their count, and a block that isn't the graphic one.
  const struct {
    size_t at;
    char value;
    int found;
  } rows[] = {{pages + 1, 0, 0},
              {pages + 1, 3, 0},
              {pages, '\x80', 0},
              {pages - 7, 3, 0},
              {pages + 1, 2, 2}};
  for (const auto& row : rows) {
    std::string data = whole;
    data[row.at] = row.value;
    Opened o(data);
    EXPECT_EQ(NidsWalk(o.nids).pages, row.found) << row.at;
  }
  // An offset far behind the end of the file.
  std::string far = whole;
  const size_t offsets = 30 + 18 + 94;
  far[offsets] = 0x7F;
  Opened o(far);
  ASSERT_GT(o.nids.getOffGraph(), 0x7F000000);
  EXPECT_EQ(o.nids.gotoGraphic(), 0);
  EXPECT_EQ(o.nids.graphic(), 0);
}

}  // namespace
}  // namespace ZQV
