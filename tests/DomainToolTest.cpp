#include "DomainTool.h"

#include <string>

#include <gtest/gtest.h>

#include "Domain.h"
#include "Region.h"
#include "ScratchDir.h"
#include "Strings.h"

namespace ZQV {
namespace {

constexpr float M = Const::FMISS;

const char* const STATIONS =
    "DENVER          CO US KDEN -2-  39.8700 -104.6700 1656 72565\n"
    "TULSA           OK US KTUL -2-  36.2000  -95.9000  206 72356\n";

struct Expected {
  int proj;
  float clat, clon, dx, dy;
  int nx, ny;
  float plat = M, plon = M;
};

void expectVal(const DomainVal& val, const Expected& want, const std::string& text) {
  EXPECT_EQ(val.proj, want.proj) << text;
  EXPECT_EQ(val.clat, want.clat) << text;
  EXPECT_EQ(val.clon, want.clon) << text;
  EXPECT_EQ(val.dx, want.dx) << text;
  EXPECT_EQ(val.dy, want.dy) << text;
  EXPECT_EQ(val.nx, want.nx) << text;
  EXPECT_EQ(val.ny, want.ny) << text;
  EXPECT_EQ(val.plat, want.plat) << text;
  EXPECT_EQ(val.plon, want.plon) << text;
}

TEST(DomainTool, Layouts) {
  const ScratchDir files;
  files.write("sao.cty", STATIONS);
  files.write("my.cty", "SOMEWHERE       -- -- some -2-  10.0000   20.0000    5\n");
  files.write("zqv.reg",
              "# name description number domain\n"
              "us United_States 1 ps,38,-97,51,35,1,1\n"
              "plains Plains 2 us\n");
  files.write("mine.reg", "first x 1 ll,0,0,73,37,5,5\nsecond x 2 40,-90,3\n");
  files.write("bare.reg", "39,-97,2\nsecond x 2 40,-90,3\n");
  struct Row {
    const char* text;
    Expected want;
  };
  const int ms = Const::MISS;
  const Row rows[] = {{"ps,40,-95,60,40,1,2", {1, 40, -95, 1, 2, 60, 40}},
                      {"ps,40,-95", {1, 40, -95, 1.2F, 1.2F, 25, 17}},
                      {"40,-95,60,40,1,2", {1, 40, -95, 1, 2, 60, 40}},
                      {"40,-95", {1, 40, -95, 1.2F, 1.2F, 25, 17}},
                      {"KDEN", {1, 39.87F, -104.67F, 1.2F, 1.2F, 25, 17}},
                      {"lc,KTUL,1,2", {4, 36.2F, -95.9F, 1, 2, 25, 17}},
                      {"id:72356", {1, 36.2F, -95.9F, 1.2F, 1.2F, 25, 17}},
                      {"ID:my.cty:some,3", {1, 10, 20, 3, 3, 25, 17}},
                      {"sat,0,-75", {9, 0, -75, 1.2F, 1.2F, 25, 17}},
                      {"size,640,480.9", {51, M, M, M, M, 640, 480}},
                      {"zoom,40,-100", {50, 40, -100, 1, 1, 25, 17}},
                      {"MISS", {ms, M, M, M, M, ms, ms}},
                      {"none", {ms, M, M, M, M, ms, ms}},
                      {"miss,1,2", {ms, M, M, M, M, ms, ms}},
                      // The projection field: with two parts in all the second is plon.
                      {"ps:-100,40,-95", {1, 40, -95, 1.2F, 1.2F, 25, 17, M, -100}},
                      {"ps:60:-100,40,-95", {1, 40, -95, 1.2F, 1.2F, 25, 17, 60, -100}},
                      {"ps:x:-100,40,-95", {1, 40, -95, 1.2F, 1.2F, 25, 17, M, -100}},
                      {"me:e,40,-95", {3, 40, -95, 1.2F, 1.2F, 25, 17, M, M}},
                      // Regions, which lead on to other texts.
                      {"us", {1, 38, -97, 1, 1, 51, 35}},
                      {"plains", {1, 38, -97, 1, 1, 51, 35}},
                      {"fi:mine.reg", {2, 0, 0, 5, 5, 73, 37}},
                      {"mine.reg:Second", {1, 40, -90, 3, 3, 25, 17}},
                      // A bare domain text is the region, whatever was asked for.
                      {"bare.reg:second", {1, 39, -97, 2, 2, 25, 17}},
                      // A projection field alone gives the middle of the United States, and loses
                      // its own numbers to nothing: deliberate.
                      {"ps:60:-100", {1, 39, -97, 2.3F, 2.3F, 25, 17, M, M}}};
  for (const Row& row : rows) {
    DomainVal val;
    testing::internal::CaptureStderr();
    EXPECT_EQ(DomainTool::decode(val, row.text), 1) << row.text;
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << row.text;
    expectVal(val, row.want, row.text);
  }
}

TEST(DomainTool, RefusesWithAWarning) {
  const ScratchDir files;
  files.write("sao.cty", STATIONS);
  files.write("zqv.reg", "us United_States 1 ps,38,-97,51,35,1,1\n");
  for (const char* text : {"ps,kden,1,1", "nowhere", "KXXX", "40", ",", "40,-95,x",
                           "1,2,3,4,5,6,7,8", "us.reg:us", "ps,40,-9999", "id:"}) {
    Domain domain;
    DomainTool::decode(domain, "40,-95");
    testing::internal::CaptureStderr();
    EXPECT_EQ(DomainTool::decode(domain, text), 0) << text;
    EXPECT_NE(testing::internal::GetCapturedStderr().find(
                  std::string("DomainTool::decode: Invalid plot domain: ") + text + "\n"),
              std::string::npos)
        << text;
    EXPECT_EQ(domain.getCLat(), 40) << text;
  }
  testing::internal::CaptureStderr();
  DomainVal val;
  EXPECT_EQ(DomainTool::decode(val, nullptr), 0);
  EXPECT_EQ(DomainTool::decode(val, ""), 0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  // No such station: the centre is missing, and the layout fails.
  val.clat = 7;
  const Strings values("KXXX", ',');
  EXPECT_EQ(DomainTool::setParams(val, values, "id"), 0);
  EXPECT_EQ(val.clat, M);
}

// The names of region and city files may come out of a picture's comment, and must not run
// anything.
TEST(DomainTool, FilesAreNoPipes) {
  const ScratchDir files;
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(files.at("."));
  for (const char* text : {"fi:|touch ran", "|touch ran:us", "id:|touch ran:KDEN,2"}) {
    DomainVal val;
    testing::internal::CaptureStderr();
    DomainTool::decode(val, text);
    testing::internal::GetCapturedStderr();
    EXPECT_FALSE(std::filesystem::exists("ran")) << text;
  }
  std::filesystem::current_path(before);
}

TEST(DomainTool, RegionThatNamesItself) {
  const ScratchDir files;
  files.write("zqv.reg", "round x 1 round\nto x 2 fro\nfro x 3 to\n");
  for (const std::string text : {"round", "to"}) {
    DomainVal val;
    testing::internal::CaptureStderr();
    EXPECT_EQ(DomainTool::decode(val, text.c_str()), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "DomainTool::decode: Invalid plot domain: " + text + "\n");
  }
}

TEST(Region, PackageRegions) {
  const PackageData data;
  std::ifstream file(ZQV_DATA_DIR "/zqv.reg");
  int num = 0;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line[0] == '#') {
      continue;
    }
    Domain domain;
    EXPECT_EQ(DomainTool::decode(domain, line.substr(0, line.find(' ')).c_str()), 1) << line;
    EXPECT_TRUE(domain.isSet());
    num++;
  }
  EXPECT_GE(num, 20);
}

}  // namespace
}  // namespace ZQV
