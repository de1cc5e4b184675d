// Level II volumes made here: what the reader finds in them, and the whole road to the metafile,
// its places worked out here on their own.

#include <cmath>
#include <cstdlib>
#include <iterator>

#include <gtest/gtest.h>

#include "Lev2Data.h"
#include "Lev2File.h"
#include "Lev2Info.h"
#include "Lev2Maker.h"
#include "Lev2Plot.h"
#include "NidsMaker.h"
#include "Plot.h"
#include "Road.h"
#include "Run.h"
#include "ScratchDir.h"
#include "TempDir.h"

using namespace ZQV;

namespace {

using Place = Record::Place;
using Radial = Lev2Maker::Radial;
using Moment = Lev2Maker::Moment;

constexpr double site_lat = 35.3334;
constexpr double site_lon = -97.2778;
const double map_factor = 1.866 / (1 + std::sin(site_lat * rad));
const double km = map_factor * 0.54 * 1.852 / 100;  // one km in the plane, and a bit
constexpr double close_radial = 0.01;

Moment refl(std::vector<int> levels, int first = 0, int spacing = 1000) {
  return {std::move(levels), first, spacing, 2.0F, 66.0F, "DREF"};
}

Moment velocity(std::vector<int> levels, int first = 0, int spacing = 250) {
  return {std::move(levels), first, spacing, 2.0F, 129.0F, "DVEL"};
}

/** n levels of 0, but for some. */
std::vector<int> gates(size_t n, const std::vector<std::pair<size_t, int>>& some) {
  std::vector<int> levels(n, 0);
  for (const auto& [at, level] : some) {
    levels[at] = level;
  }
  return levels;
}

/** Two cuts of two radials: 5 gates of reflectivity in the first, 3 in the second, 4 of velocity in
 * each. */
std::vector<Radial> radials() {
  const auto make = [](double az, int cut, const Moment& r, const Moment& v) {
    return Radial{az, cut, cut * 0.5 + 0.01, r, v, false, 2};
  };
  // 5 dBZ is level 76, 34.5 is 135, 60 is 186; 10 m/s is level 149, -20 is 89, 0.5 is 130.
  return {make(45, 1, refl(gates(460, {{0, 75}, {1, 76}, {2, 1}, {100, 135}, {459, 186}}), 2125),
               velocity(gates(200, {{0, 149}, {9, 130}}), 500)),
          make(90, 1, refl(gates(460, {{50, 96}, {51, 96}}), 2125),
               velocity(gates(200, {{199, 89}, {7, 1}}), 500)),
          make(135, 2, refl(gates(300, {{5, 206}})), velocity(gates(200, {{4, 149}}))),
          make(225, 2, refl(gates(300, {{6, 100}, {8, 100}})), velocity(gates(200, {{5, 89}})))};
}

/** All forms that a volume of these radials comes in. */
std::string plainVolume(const Lev2Maker& maker, const std::vector<Radial>& list) {
  std::string volume = maker.header() + Lev2Maker::other(2) + Lev2Maker::other(13);
  for (const Radial& r : list) {
    volume += maker.message1(r) + Lev2Maker::other(5);
  }
  return volume;
}

std::string newVolume(const Lev2Maker& maker, const std::vector<Radial>& list) {
  std::string volume = maker.header();
  for (const Radial& r : list) {
    volume += maker.message31(r);
  }
  return volume;
}

std::string chainVolume(const Lev2Maker& maker, const std::vector<Radial>& list) {
  std::string volume = maker.header() + Lev2Maker::record(Lev2Maker::other(2));
  for (size_t i = 0; i < list.size(); i++) {
    volume += Lev2Maker::record(maker.message31(list[i]), i + 1 == list.size());
  }
  return volume;
}

class Lev2Road : public testing::Test {
 protected:
  std::vector<Record> draw(const std::string& volume, const std::string& args) {
    dir.write("v", volume);
    run = runScopeview(dir, "v -de meta,a.meta " + args);
    EXPECT_EQ(run.status, 0) << args;
    return dataFills(readMeta(dir.read("a.meta")), 0.5 - 1.0 / 3);
  }
  /** The page of the own view: 3 by 2, as wide as the page. */
  [[nodiscard]] static Place at(double az, double r, int range = 460) {
    const double scale = 1.0 / (3 * range * km);
    return {0.5 + r * std::sin(az * rad) * scale, 0.5 + r * std::cos(az * rad) * scale};
  }

  TempDir dir;
  ProgramRun run;
  std::map<std::string, int> color = radarColors();
};

}  // namespace

TEST_F(Lev2Road, GatesLieWhereAzimuthAndRangePutThem) {
  const Lev2Maker maker;
  const struct {
    const char* args;
    double az;
    double first, length;  // km
    int gate;
    const char* color;
    size_t number, of;
    int range;
  } rows[] = {// The first range isn't turned into the plane's units: deliberate.
              {"-va ref1", 45, 2.125, 1, 1, "blue", 0, 5, 460},
              {"-va REF1", 45, 2.125, 1, 100, "lgreen", 1, 5, 460},
              {"-pa va=ref1,range=500", 45, 2.125, 1, 459, "lmagenta", 2, 5, 500},
              {"", 90, 2.125, 1, 50, "cyan", 3, 5, 460},
              {"-va ref1", 90, 2.125, 1, 51, "cyan", 4, 5, 460},
              {"-va ref2", 135, 0, 1, 5, "lgray", 0, 3, 460},
              {"-va ref2", 225, 0, 1, 8, "cyan", 2, 3, 460},
              // Velocity too begins at the range of reflectivity.
              {"-va vel1", 45, 2.125, 0.25, 0, "yellow", 0, 2, 460},
              {"-va vel1", 90, 2.125, 0.25, 199, "green", 1, 2, 460},
              {"-va vel2 -pa range=100", 225, 0, 0.25, 5, "green", 1, 2, 100}};
  const struct {
    std::string volume;
    const char* args;
  } forms[] = {{plainVolume(maker, radials()), "-in lev2 "},
               {newVolume(maker, radials()), "-in lev2 "},
               {chainVolume(maker, radials()), "-in lev2z "},
               {chainVolume(maker, radials()), "-in lev2 "},
               {chainVolume(maker, radials()), "-in lev2 -pa comp "},
               {plainVolume(maker, radials()) + "\r\r\n\003", "-in lev2 "}};
  for (const auto& form : forms) {
    for (const auto& row : rows) {
      const std::string what = std::string(form.args) + row.args;
      const std::vector<Record> drawn = draw(form.volume, form.args + std::string(row.args));
      EXPECT_EQ(run.err, "") << what;
      ASSERT_EQ(drawn.size(), row.of) << what;
      const double r0 = row.first / 100 + row.gate * row.length * km;
      const double r1 = r0 + row.length * km;
      const double az0 = row.az - 0.5;
      const double az1 = row.az + 0.5 + close_radial;
      const Record& record = drawn[row.number];
      expectPlaces(record,
                   {at(az0, r0, row.range), at(az0, r1, row.range), at(az1, r1, row.range),
                    at(az1, r0, row.range), at(az0, r0, row.range)},
                   3e-6, what);
      EXPECT_EQ(record.fill_color, color[row.color]) << what;
    }
  }
}

TEST_F(Lev2Road, ReprojectedGatesGoThroughTheEarth) {
  // Polar stereographic, true at 60 degrees north, its y axis along the site's meridian.
  constexpr double earth = 63.7122;
  const double stereo = earth * (1 + std::sin(60 * rad));
  const auto on_page = [&](double az, double r) {
    const double x = r * std::sin(az * rad);
    const double y = r * std::cos(az * rad) - stereo * std::tan((90 - site_lat) / 2 * rad);
    const double lon = site_lon + std::atan2(x, -y) / rad;
    const double lat = 90 - 2 * std::atan(std::hypot(x, y) / stereo) / rad;
    return Place{0.5 + (lon + 97) / 8, 0.5 + (lat - 35) / 8};
  };
  std::vector<Radial> list = radials();
  list[0].half_degree = true;
  const std::vector<Record> drawn =
      draw(chainVolume(Lev2Maker(), list), "-in lev2z -pd ll,35,-97,81,61,.1,.1");
  ASSERT_EQ(drawn.size(), 4U) << "the one at 460 km lies outside";
  const auto cell = [&](double az, double width, int gate) {
    const double r0 = 0.02125 + gate * km;
    const double az1 = az + width / 2 + close_radial;
    return std::vector<Place>{on_page(az - width / 2, r0), on_page(az - width / 2, r0 + km),
                              on_page(az1, r0 + km), on_page(az1, r0), on_page(az - width / 2, r0)};
  };
  expectPlaces(drawn[1], cell(45, 0.5, 100), 4e-6, "half a degree wide");
  expectPlaces(drawn[2], cell(90, 1, 50), 4e-6, "one degree wide");
  expectPlaces(drawn[3], cell(90, 1, 51), 4e-6, "its neighbour");
}

TEST_F(Lev2Road, StopsBehindTheCutUnlessSomethingIsStillToBeSaid) {
  const Lev2Maker maker;
  std::string broken = Lev2Maker::other(0);
  broken[15] = '\xF0';
  const std::string volume = plainVolume(maker, radials()) + broken;
  for (const char* variable : {"-va ref1", "-va vel1", "-va ref2", "-va ref9"}) {
    draw(volume, std::string("-in lev2 ") + variable);
    const auto drawing = [&] {  // behind the lines with the time
      const std::string meta = dir.read("a.meta");
      return meta.substr(meta.find("\nFCLR"));
    };
    const std::string brief = drawing();
    const bool all = std::string(variable) != "-va ref1" && std::string(variable) != "-va vel1";
    EXPECT_EQ(run.err, all ? "Invalid message type\n" : "") << variable;
    EXPECT_NE(run.out.find("Lat: -9999.000\nLon: -9999.000\nElev: -9999\nVCP: 212\n"),
              std::string::npos);
    draw(volume, std::string("-in lev2 -me out4 ") + variable);
    EXPECT_EQ(run.err, "Invalid message type\n") << "walked to the end";
    EXPECT_EQ(drawing(), brief) << variable;
    EXPECT_NE(run.out.find("El#=2 El=1.0 Az=225.0 Ptr=100,400,0 Num=300,200\n"), std::string::npos);
    draw(volume, std::string("-in lev2 -me out3 ") + variable);
    EXPECT_NE(run.out.find("El#=1 El=0.5 Az=45.0 "), std::string::npos);
    EXPECT_NE(run.out.find("El#=2 El=1.0 Az=135.0 "), std::string::npos);
    EXPECT_EQ(run.out.find("Az=90.0 "), std::string::npos) << "one line a cut";
  }
}

TEST_F(Lev2Road, TakesStreamsPipesAndConventions) {
  const Lev2Maker maker;
  const std::string volume = chainVolume(maker, radials());
  const auto count = [&](const std::string& args) {
    run = runScopeview(dir, "-va vel1 -de meta,a.meta " + args);
    EXPECT_EQ(run.status, 0);
    return dataFills(readMeta(dir.read("a.meta")), 0.5 - 1.0 / 3).size();
  };
  dir.write("v", volume);
  ASSERT_EQ(std::system(("gzip -c '" + dir.at("v") + "' > '" + dir.at("v.gz") + "'").c_str()), 0);
  EXPECT_EQ(count("-in lev2z '|gunzip -c v.gz'"), 2U);
  EXPECT_EQ(count("-in lev2z - < v"), 2U);
  EXPECT_EQ(count("-in lev2z v.gz"), 0U);
  EXPECT_EQ(run.err, "Lev2Plot: Unable to open file: v.gz\n");
  EXPECT_EQ(count("-in lev2z none"), 0U);
  EXPECT_EQ(run.err, "Lev2Plot: Unable to open file: none\n");
  // A file of the installed convention must be larger than 1000 bytes.
  dir.write("data/lev2/TLX/TLX20190715_1200.ar2v", newVolume(maker, radials()));
  dir.write("data/lev2/TLX/TLX20190715_1205.ar2v", volume.substr(0, 900));
  const std::string tree = "-in lev2z -pa in=lev2 -dp '" + dir.at("data") + "' -id TLX ";
  EXPECT_EQ(count(tree + "-cu '#201907151200'"), 2U);
  run = runScopeview(dir, tree + "-va vel1 -de meta,a.meta", "zqvcurtime='#201907151207'");
  EXPECT_EQ(dataFills(readMeta(dir.read("a.meta")), 0.5 - 1.0 / 3).size(), 2U);
}

TEST_F(Lev2Road, HeaderFieldsOfMessage31) {
  const Lev2Maker maker;
  std::vector<Radial> list = {radials()[0]};
  list[0].half_degree = true;
  draw(chainVolume(maker, list), "-in lev2z -va ref1 -me debug5");
  // Pointers: behind 56 bytes of header lie 44, 12 and 20 of volume, elevation and radial, then 28
  // and the 460 gates, then 28 and 200.
  for (const char* lines :
       {"Elevation: 370\nMess type: 31\nSeq: 7\nDate: 18093\nTime: 43237812\n",
        "Refl data ptr: 132\nDop data ptr: 620\nSpect data ptr: 0\nVolume data ptr: 56\n"
        "Elevation data ptr: 100\nRadial data ptr: 112\n",
        "Coverage patt: 212\n"}) {
    EXPECT_NE(run.out.find(lines), std::string::npos) << lines;
  }
  // Without reflectivity the gates begin at the velocity's own first range.
  list[0].refl.levels.clear();
  const std::vector<Record> fills = draw(chainVolume(maker, list), "-in lev2z -va vel1");
  ASSERT_EQ(fills.size(), 1U);  // 0.5 m/s isn't drawn
  const Place corner = at(44.75, 0.5 / 100);
  EXPECT_NEAR(fills[0].points[0].x, corner.x, 2e-4);
  EXPECT_NEAR(fills[0].points[0].y, corner.y, 2e-4);
}

TEST_F(Lev2Road, PipesEndCalmly) {
  const Lev2Maker maker;
  // More than a pipe holds stands behind the cut, where the walk ends.
  std::string noise(400000, '\0');
  unsigned v = 1;
  for (char& c : noise) c = static_cast<char>((v = v * 1103515245U + 12345U) >> 24);
  dir.write("v", plainVolume(maker, radials()) + noise);
  run = runScopeview(dir, "-in lev2 -va ref1 -de meta,a.meta '|gzip -c v | gunzip -c'");
  EXPECT_EQ(run.err, "") << "nobody is told of a broken pipe";
  EXPECT_FALSE(dataFills(readMeta(dir.read("a.meta")), 0.5 - 1.0 / 3).empty());
  // A stream without end is left at a volume's largest size.
  run = runScopeview(dir, "-in lev2 -de meta,a.meta '|yes'");
  EXPECT_EQ(run.status, 0);
}

TEST_F(Lev2Road, DamagedVolumesDrawWhatTheyHave) {
  const Lev2Maker maker;
  const std::vector<Radial> list = radials();
  const std::string first = maker.message31(list[0]);
  const std::string second = maker.message31(list[1]);
  constexpr size_t head = 24;
  constexpr size_t body = 28;
  const auto changed = [&](size_t at, const std::string& text) {
    std::string message = second;
    message.replace(at, text.size(), text);
    return maker.header() + first + message + first;
  };
  // The pointers of the second radial, and its block of reflectivity.
  constexpr size_t to_refl = body + 32 + 12;
  const size_t block = second.find("DREF");
  const std::string chain = Lev2Maker::record(first + second);
  std::string crc = chain;
  crc[10] ^= 0x40;
  std::string sum = chain;
  sum[sum.size() - 4] = static_cast<char>(sum[sum.size() - 4] ^ 1);
  const auto repeat = [](const std::string& text, int n) {
    std::string out;
    for (int i = 0; i < n; i++) {
      out += text;
    }
    return out;
  };
  const struct {
    const char* what;
    std::string volume;
    size_t fills;
  } rows[] = {
      {"nothing is wrong", changed(0, ""), 8},
      {"empty", "", 0},
      {"cut in the header", maker.header().substr(0, 10), 0},
      {"header alone", maker.header(), 0},
      {"cut in a message header", maker.header() + first + second.substr(0, 20), 3},
      {"cut in a radial's header", maker.header() + first + second.substr(0, 60), 3},
      {"cut in the gates", maker.header() + first + second.substr(0, block + 28 + 51), 4},
      {"pointer behind the message", changed(to_refl, NidsMaker::u4(100000)), 6},
      {"pointer below 0", changed(to_refl, NidsMaker::u4(-200)), 6},
      {"pointer to the end", changed(to_refl, NidsMaker::u4(int64_t(second.size()) - 28)), 6},
      {"more gates than bytes: into the next block, not into the next message",
       changed(block + 8, NidsMaker::u2(65535)), 14},
      {"scale of 0", changed(block + 20, NidsMaker::u4(0)), 6},
      {"scale that is no number", changed(block + 20, NidsMaker::u4(0x7FC00000)), 6},
      {"azimuth that is no number", changed(body + 12, NidsMaker::u4(0x7FC00000)), 6},
      {"size of 0", changed(12, NidsMaker::u2(0)), 3},
      {"negative type", changed(15, "\x80"), 3},
      {"damaged check sum: what came out ahead of it", maker.header() + chain + sum + chain, 10},
      {"damaged record", maker.header() + chain + crc + chain, 5},
      {"cut record", maker.header() + chain + chain.substr(0, chain.size() / 2), 5},
      {"record of none", maker.header() + chain + NidsMaker::u4(0) + chain, 5},
      {"length past the end",
       maker.header() + NidsMaker::u4(0x7FFFFFFF) + chain.substr(4) + std::string(100, 'x'), 5},
      {"largest negative length", maker.header() + NidsMaker::u4(0x80000000LL) + chain.substr(4),
       5},
      {"empty streams between", maker.header() + chain + repeat(Lev2Maker::record(""), 50) + chain,
       10},
      {"a message over two records",
       maker.header() + Lev2Maker::record(first.substr(0, 300)) +
           Lev2Maker::record(first.substr(300) + second),
       5},
      {"messages of nothing", maker.header() + std::string(500000, '\0') + first, 0}};
  for (const auto& row : rows) {
    EXPECT_EQ(draw(row.volume, "-in lev2 -va ref1").size(), row.fills) << row.what;
    draw(row.volume, "-in lev2z -va vel1");
    draw(row.volume, "-in lev2 -va spect1");
  }
  // Cut anywhere: never a failure, and never less than what is whole.
  const std::string whole = maker.header() + first + second;
  for (size_t size = head; size < whole.size(); size += 97) {
    const size_t drawn = draw(whole.substr(0, size), "-in lev2 -va ref1").size();
    EXPECT_TRUE(size < head + first.size() || drawn >= 3) << size;
  }
}

TEST(Lev2File, ReadsOnAcrossTheWindow) {
  // Radials of many lengths, over several fills of the window and records far longer than its
  // input: each must begin where the one before it ends. Messages of type 1 leave no seam out.
  const TempDir dir;
  const Lev2Maker maker;
  std::string messages;
  std::vector<long> sums;
  for (int i = 0; i < 900; i++) {
    Radial radial;
    std::vector<int> levels(static_cast<size_t>(300 + i * 37 % 1500));
    long sum = 0;
    unsigned noise = 12345U + static_cast<unsigned>(i);
    for (int& level : levels) {
      noise = noise * 1664525U + 1013904223U;  // so that it doesn't compress
      level = static_cast<int>(noise >> 24U);
      sum += level;
    }
    sums.push_back(sum);
    radial.refl = refl(levels);
    messages += maker.message31(radial);
    if (i % 50 == 0) {
      messages += Lev2Maker::other(13);
    }
  }
  const std::string record = Lev2Maker::record(messages);
  ASSERT_GT(record.size(), 600000U);
  const std::string forms[] = {maker.header() + messages, maker.header() + record};
  for (const std::string& volume : forms) {
    for (const bool reads_gates : {true, false}) {
      Lev2File file(dir.write("v", volume).c_str(), 0);
      Lev2Info info;
      ASSERT_EQ(file.getHeader(info), 1);
      Lev2Data data;
      size_t found = 0;
      for (; file.getBlock(data) != 0; file.nextBlock()) {
        if (data.type != 31) {
          continue;
        }
        if (reads_gates) {
          ASSERT_EQ(file.setDataType(Lev2File::REFLECTIVITY), 1);
          long sum = 0;
          for (int i = 0; i < file.getNumData(); i++) {
            const float v = file.getData();
            sum += v == -100.0F ? 0 : v == -90.0F ? 1 : std::lround(v * 2 + 66);
          }
          ASSERT_EQ(sum, sums[found]) << found;
        }
        found++;
      }
      EXPECT_EQ(found, sums.size());
    }
  }
}

TEST(Lev2File, ThreadsAheadReadTheSame) {
  // Records of many sizes, one longer than a thread holds; whole, cut, damaged, left and reread.
  const TempDir dir;
  const Lev2Maker maker;
  std::string volume = maker.header();
  unsigned noise = 1;
  int made = 0;
  const int record_radials[] = {3, 40, 1, 1200, 60, 7, 90};
  for (const int n : record_radials) {
    std::string messages;
    for (int i = 0; i < n; i++) {
      std::vector<int> levels(1800, made % 256);
      for (size_t k = 0; k < 50; k++) {
        noise = noise * 1664525U + 1013904223U;
        levels[k] = static_cast<int>(noise >> 29U);
      }
      messages += maker.message31(Radial{0.25 * made++, 1, 0.5, refl(levels), {}, true, 2});
    }
    volume += Lev2Maker::record(messages);
  }
  /** Radials read, and a sum over their gates in order. */
  const auto walk = [](Lev2File& file, int most) {
    Lev2Info info;
    std::pair<int, uint64_t> seen{};
    file.getHeader(info);
    Lev2Data data;
    for (; seen.first < most && file.getBlock(data) != 0; file.nextBlock(), seen.first++) {
      int num = 0;
      const unsigned char* levels =
          file.setDataType(Lev2File::REFLECTIVITY) == 1 ? file.getGates(num) : nullptr;
      for (int i = 0; i < num; i++) {
        seen.second = seen.second * 31 + levels[i];
      }
    }
    return seen;
  };
  const size_t size = volume.size();
  std::string damaged = volume;
  damaged[size / 2] = static_cast<char>(damaged[size / 2] ^ 4);
  // An empty record within a message.
  const std::string message = maker.message31(Radial{0, 1, 0.5, refl({2, 3, 4}), {}, true, 2});
  const std::string parted = maker.header() + Lev2Maker::record(message + message.substr(0, 150)) +
                             std::string(4, '\0') +
                             Lev2Maker::record(message.substr(150) + message);
  const struct {
    std::string bytes;
    int most, least;
  } rows[] = {{volume, 9999, made},
              {parted, 9999, 2},
              {volume, 30, 30},
              {volume, 700, 700},
              {volume.substr(0, size / 2), 9999, 44},
              {volume.substr(0, size - 1), 9999, 1300},
              {damaged, 9999, 44},
              {volume + "\r\r\n\003", 9999, made},
              {volume + std::string(4, '\0') + volume.substr(24), 9999, made}};
  for (const auto& row : rows) {
    Lev2File file(dir.write("v", row.bytes).c_str(), 1);
    const auto expected = walk(file, row.most);
    EXPECT_GE(expected.first, row.least);
    for (const int threads : {1, 2}) {
      file.setAhead(threads);
      EXPECT_EQ(walk(file, row.most), expected) << threads << ", " << row.bytes.size();
    }
  }
}

TEST(Lev2File, HeadersAndScales) {
  const PackageData data_files;
  const TempDir dir;
  Lev2Maker maker;
  const auto head = [&](const char* own_id = "") {
    Lev2File file(dir.write("v", maker.header()).c_str(), 0);
    file.setId(own_id);
    Lev2Info info;
    EXPECT_EQ(file.getHeader(info), 1);
    return info;
  };
  Lev2Info info = head();
  EXPECT_EQ(info.getDate().getSeconds(), 18092L * 86400 + 43237) << "day 1 is 1 January 1970";
  EXPECT_STREQ(info.getId(), "TLX");
  EXPECT_NEAR(static_cast<double>(info.getLat()), site_lat, 1e-4);
  EXPECT_NEAR(static_cast<double>(head("FTG").getLat()), 39.79, 0.01);
  for (const char* site : {"    ", "KQQQ", "\0\0\0\0"}) {
    maker.site = std::string(site, 4);
    info = head();
    EXPECT_FLOAT_EQ(info.getLat(), 38.98F);
    EXPECT_FLOAT_EQ(info.getLon(), -77.48F);
  }

  const auto first = [&](const std::string& message, int type) {
    Lev2File file(dir.write("v", maker.header() + message).c_str(), 0);
    Lev2Data data;
    EXPECT_EQ(file.getHeader(info), 1);
    EXPECT_EQ(file.getBlock(data), 1);
    std::vector<float> values;
    if (file.setDataType(type) != 0) {
      for (int i = 0; i < 3; i++) {
        values.push_back(file.getData());
      }
    }
    return values;
  };
  using Floats = std::vector<float>;
  Radial radial;
  radial.vel = velocity({0, 1, 131});
  radial.refl = refl({0, 1, 131});
  EXPECT_EQ(first(maker.message1(radial), 0), (Floats{-100, -90, 32.5}));
  EXPECT_EQ(first(maker.message1(radial), 1), (Floats{-100, -90, 1}));
  radial.vel_res = 4;
  EXPECT_EQ(first(maker.message1(radial), 1), (Floats{-100, -90, 2}));
  EXPECT_EQ(first(maker.message1(radial), 3), Floats());
  radial.vel.scale = 4;
  EXPECT_EQ(first(maker.message31(radial), 1), (Floats{-100, -90, 0.5}));
  // The velocity pointer of a surveillance cut leads to another moment.
  for (const char* name : {"DREF", "DZDR", "DPHI", "DRHO", "DSW ", "DCFP"}) {
    radial.vel.name = name;
    EXPECT_EQ(first(maker.message31(radial), 1), Floats()) << name;
  }
  for (const char* name : {"DSWX", "    ", "dzdr"}) {
    radial.vel.name = name;
    EXPECT_EQ(first(maker.message31(radial), 1).size(), 3U) << name;
  }

  // Spectrum width reads from the window's start by the pointer to reflectivity, for every radial
  // the same: the last 12 bytes ahead of the first radial's gates, then those.
  radial.refl = refl({150, 151, 152});
  radial.vel = velocity(std::vector<int>(14, 1));
  Radial other = radial;
  other.refl = refl({9, 9, 9});
  const std::string messages = maker.message1(radial) + maker.message1(other);
  Lev2File file(dir.write("v", maker.header() + messages).c_str(), 0);
  file.getHeader(info);
  for (Lev2Data data; file.getBlock(data) != 0; file.nextBlock()) {
    ASSERT_EQ(file.setDataType(Lev2File::SPECTRUM_WIDTH), 1);
    Floats values;
    for (int i = 0; i < file.getNumData(); i++) {
      values.push_back(file.getData());
    }
    ASSERT_EQ(values.size(), 14U);
    EXPECT_EQ(values[11], -100.0F);
    EXPECT_EQ(values[12], 10.5F);
    EXPECT_EQ(values[13], 11.0F);
  }
}

TEST(Lev2Plot, LabelsTellOfTheCut) {
  const PackageData data_files;
  const TempDir dir;
  const auto labels = [&](const Lev2Maker& maker, const char* params) {
    Lev2Plot lev2(params);
    lev2.setFilename(("@" + dir.write("v", plainVolume(maker, radials()))).c_str());
    Plot plot;
    lev2.draw(plot);
    testing::internal::CaptureStdout();
    plot.printLabels();
    return testing::internal::GetCapturedStdout();
  };
  const auto has = [](const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
  };
  Lev2Maker maker;
  std::string text = labels(maker, "va=ref1");
  EXPECT_TRUE(has(text, "TLX Reflectivity [dBZ]")) << text;
  EXPECT_TRUE(has(text, "Md=pr Sc=1 El=0.5 Mx=60")) << text;
  EXPECT_TRUE(has(text, "12:00:37Z 15 JUL 19")) << text;
  text = labels(maker, "va=vel1,tz=EST:-5");
  EXPECT_TRUE(has(text, "TLX Velocity [m/s]")) << text;
  EXPECT_TRUE(has(text, "Md=pr Sc=1 El=0.5 Rng=-20,10")) << text;
  EXPECT_TRUE(has(text, "12:00:37Z 15 JUL 19")) << "in no zone of the user's: " << text;
  EXPECT_TRUE(has(labels(maker, "va=ref"), "Md=cl Sc=0 El=-9999.0 Mx=-500")) << "no such cut";
  EXPECT_TRUE(has(labels(maker, "va=Spect"), "TLX Spectrum width [m/s]"));
  maker.vcp = 32;
  EXPECT_TRUE(has(labels(maker, "VA=vel2,va=vel2"), "Md=cl Sc=2 El=1.0 Rng=-20,10"));
}
