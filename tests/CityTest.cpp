#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "CityData.h"
#include "CityFile.h"
#include "CityHash.h"
#include "CityTool.h"
#include "Domain.h"
#include "DomainTool.h"
#include "EarthPoint.h"
#include "ScratchDir.h"
#include "String.h"
#include "Strings.h"
#include "Zqv.h"

namespace ZQV {
namespace {

const std::string STATIONS =
    "DENVER          CO US DEN +1- 39.75 -104.87 1611 72469 17\n"
    "TOPEKA/BILLARD  KS US KTOP -2u 39.0700 -95.6200 270 72456\n"
    "NO NUMBERS      -- -- NONU -3- 10.00 20.00 5\n"
    "HIGH            -- -- HIGH -3- 10.00 20.00 9999\n"
    "GULF BUOY       -- B_ 42001 -5- 25.90 -89.70 0 42001\n";

TEST(CityFile, Records) {
  const ScratchDir files;
  files.write("a.cty", STATIONS);
  CityFile file(files.at("a.cty").c_str());
  ASSERT_TRUE(file.isOpen());
  EXPECT_EQ(file.getNum(), static_cast<int>(STATIONS.size()) / 59);
  CityData d;
  ASSERT_EQ(file.read(d), 1);
  EXPECT_STREQ(d.getName(), "DENVER");
  testing::internal::CaptureStdout();
  d.print();
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "         DENVER CO US       DEN + 1 - 39.750 -104.870 1611 72469 17\n");
  ASSERT_EQ(file.read(d), 1);
  EXPECT_EQ(d.num, 0);
  ASSERT_EQ(file.read(d), 1);  // ends with the elevation
  EXPECT_EQ(d.getWmo(), Const::MISS);
  ASSERT_EQ(file.read(d), 1);
  EXPECT_EQ(d.getElev(), Const::FMISS);
  ASSERT_EQ(file.read(d), 1);
  EXPECT_EQ(file.read(d), 0);
  EXPECT_EQ(d.getPrior(), 9);  // as after init()
  file.rewind();
  EXPECT_EQ(file.read(d), 1);
  EXPECT_STREQ(d.getId(), "DEN");
}

TEST(CityFile, MalformedLineEndsTheReading) {
  const ScratchDir files;
  for (const std::string bad :
       {"SHORT\n", "\n", "BROKEN          CO US BRK -x- 39.75 -104.87 1611 72469\n",
        "NO ELEVATION    CO US NOE -1- 39.75 -104.87\n",
        "# comment with enough in it 1 2 3 4 5 6\n"}) {
    std::string text = STATIONS;
    text += bad;
    text += STATIONS;
    files.write("a.cty", text);
    CityFile file(files.at("a.cty").c_str());
    CityData d;
    int num = 0;
    while (file.read(d) != 0) {
      num++;
    }
    EXPECT_EQ(num, 5) << bad;
  }
}

TEST(CityFile, OpensPlainFilesOnly) {
  const ScratchDir files;
  const std::string ran = files.at("ran");
  EXPECT_FALSE(CityFile(("|touch " + ran).c_str()).isOpen());
  EXPECT_FALSE(std::filesystem::exists(ran));
  EXPECT_FALSE(CityFile(files.at("none.cty").c_str()).isOpen());
}

TEST(CityTool, FindsByAnyKey) {
  const ScratchDir files;
  files.write("a.cty", STATIONS);
  struct Row {
    const char* key;
    int result;
    const char* id;
  };
  for (const Row& row :
       {Row{"72469", 1, "DEN"}, Row{"den", 1, "DEN"}, Row{"denver", 1, "DEN"},
        Row{"Topeka/Billard", 1, "KTOP"}, Row{"TOPEKA", 0, ""}, Row{"-9999", 0, ""},
        Row{"-09999", 1, "NONU"}, Row{"", 0, ""}, Row{nullptr, 0, ""}}) {
    CityData d;
    EXPECT_EQ(CityTool::search("a.cty", row.key, d), row.result)
        << (row.key == nullptr ? "" : row.key);
    EXPECT_STREQ(d.getId(), row.id);
  }
  EarthPoint e(1, 1, 1);
  EXPECT_EQ(CityTool::locate("a.cty", "DEN", e), 1);
  EXPECT_FLOAT_EQ(e.lat, 39.75F);
  EXPECT_EQ(e.elev, Const::FMISS);
  EXPECT_EQ(CityTool::locate("none.cty", "DEN", e), 0);
  EXPECT_FALSE(e.isSet());
}

TEST(CityTool, NameOfTheFile) {
  const ScratchDir files;
  Zqv::resrc.clear();
  String out;
  EXPECT_EQ(CityTool::getFilename(nullptr, out), 1);
  EXPECT_EQ(out.get(), files.at("sao.cty"));
  Zqv::putResrc("city_file", "my.cty");
  CityTool::getFilename(nullptr, out);
  EXPECT_EQ(out.get(), files.at("my.cty"));
  CityTool::getFilename("rad.cty", out);
  EXPECT_EQ(out.get(), files.at("rad.cty"));
  Zqv::putResrc("city_file", "None");
  EXPECT_EQ(CityTool::getFilename(nullptr, out), 0);
  EXPECT_EQ(CityTool::getFilename("none", out), 0);
  Zqv::resrc.clear();
}

TEST(CityTool, ComparesKeys) {
  CityData d;
  std::snprintf(d.name, sizeof(d.name), "DENVER");
  std::snprintf(d.id, sizeof(d.id), "DEN");
  d.wmo = 2469;
  for (const auto& [keys, index] : {std::pair("xx den", 1),
                                    {"02469", 0},
                                    {"2469", -1},
                                    {"Denve", 0},
                                    {"Denv", -1},
                                    {"Denverx", -1}}) {
    EXPECT_EQ(CityTool::compareData(Strings(keys), d), index) << keys;
  }
}

TEST(CityTool, BlocksOfNumbers) {
  long wmo = 0;
  String id;
  for (const auto& [text, number] :
       {std::pair("EN001", 1001L), std::pair("ES699", 2699L), std::pair("eg772", 3772L),
        std::pair("ED384", 10384L), std::pair("LI239", 16239L)}) {
    EXPECT_EQ(CityTool::toWmo(text, wmo), 1) << text;
    EXPECT_EQ(wmo, number);
    EXPECT_EQ(CityTool::toId(number, id), 1);
    EXPECT_TRUE(id.iequal(text)) << text;
  }
  for (const char* bad : {"EN500", "ES700", "QQ001", "EN01", "EN0011", "EN0x1", ""}) {
    EXPECT_EQ(CityTool::toWmo(bad, wmo), 0);
  }
  EXPECT_EQ(CityTool::toWmo(nullptr, wmo), 0);
  EXPECT_EQ(CityTool::toId(99999, id), 0);
}

TEST(CityHash, FindsByEachTable) {
  const ScratchDir files;
  files.write("a.cty", STATIONS + "OSLO            -- NO ENGM -1- 60.20 11.08 204 1384\n");
  const CityHash all("a.cty");
  EXPECT_EQ(all.getNum(), 6);
  struct Row {
    const char* key;
    int result;
    const char* name;
  };
  for (const Row& row :
       {Row{"DEN", 1, "DENVER"}, Row{"72456", 1, "TOPEKA/BILLARD"}, Row{"b42001", 1, "GULF BUOY"},
        Row{"42001", 0, ""}, Row{"EN384", 1, "OSLO"}, Row{"XXXX", 0, ""}, Row{nullptr, 0, ""}}) {
    CityHashData out;
    out.size = 5;
    EXPECT_EQ(all.get(row.key, out), row.result) << (row.key == nullptr ? "" : row.key);
    EXPECT_STREQ(out.data.getName(), row.name);
    EXPECT_EQ(out.size, 0);
  }
  CityHashData out;
  EXPECT_EQ(all.get(2, "  398 -1049", out), 1);
  EXPECT_STREQ(out.data.getId(), "DEN");
  EXPECT_EQ(all.get(7, "DEN", out), 0);

  Domain domain;
  ASSERT_EQ(DomainTool::decode(domain, "ps,39,-100,11,11,1,1"), 1);
  CityHash near("a.cty", domain, 9);
  EXPECT_EQ(near.getNum(), 2);
  EXPECT_EQ(CityHash("none.cty").getNum(), 0);
}

// The package's own files keep to the columns: the readers stop at the first line that doesn't.
TEST(CityFile, PackageFiles) {
  const PackageData data;
  for (const char* name : {"rad.cty", "sao.cty"}) {
    const std::string path = std::string(ZQV_DATA_DIR "/") + name;
    std::ifstream text(path);
    int lines = 0;
    for (std::string line; std::getline(text, line);) {
      lines++;
    }
    CityFile file(path.c_str());
    CityData d;
    int records = 0;
    while (file.read(d) != 0) {
      records++;
    }
    EXPECT_EQ(records, lines);
    EXPECT_GT(records, 200);
  }
  EarthPoint e;
  EXPECT_EQ(CityTool::locate("rad.cty", "TLX", e), 1);
  EXPECT_NEAR(e.lat, 35.333F, 0.01);
  EXPECT_EQ(CityTool::locate("sao.cty", "72530", e), 1);
  EXPECT_NEAR(e.lon, -87.9F, 0.01);
}

}  // namespace
}  // namespace ZQV
