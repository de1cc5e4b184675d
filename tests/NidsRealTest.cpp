// Products as radars sent them, compared with tables that an independent decoder made. The files
// lie beside the checkout; where they are absent the test is skipped.

#include <array>
#include <filesystem>
#include <fstream>
#include <map>
#include <numeric>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <zlib.h>

#include "NidsFile.h"
#include "NidsInfo.h"
#include "NidsMaker.h"

namespace ZQV {
namespace {

namespace fs = std::filesystem;
using Row = std::map<std::string, std::string>;

fs::path dataDir() {
  const fs::path beside = fs::path(ZQV_SOURCE_DIR).parent_path() / "shared/data/nids";
  return fs::exists(beside) ? beside : fs::path("/work/shared/data/nids");
}

std::vector<std::string> split(const std::string& line, char delim) {
  std::vector<std::string> out;
  std::istringstream in(line);
  for (std::string field; std::getline(in, field, delim);) {
    out.push_back(field);
  }
  return out;
}

std::vector<Row> readTable(const char* name) {
  std::vector<Row> rows;
  std::ifstream in(dataDir() / name);
  std::string line;
  std::getline(in, line);
  const auto heads = split(line, '\t');
  while (std::getline(in, line)) {
    const auto fields = split(line, '\t');
    Row row;
    for (size_t i = 0; i < heads.size(); ++i) {
      row[heads[i]] = i < fields.size() ? fields[i] : "";
    }
    rows.push_back(row);
  }
  return rows;
}

std::string isoTime(int secs) {
  Date date;
  date.set(static_cast<long>(secs));
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02dZ", date.getYear(),
                date.getMonth(), date.getDay(), date.getHour(), date.getMinute(),
                static_cast<int>(date.getSecond()));
  return text;
}

/** Packets as the table writes them: "10x3 8x43" for the first layer. */
std::string packetText(const std::vector<int>& packets) {
  std::string out;
  for (size_t i = 0; i < packets.size();) {
    size_t n = 1;
    while (i + n < packets.size() && packets[i + n] == packets[i]) {
      ++n;
    }
    out += (out.empty() ? "" : " ") + std::to_string(packets[i]) +
           (n > 1 ? "x" + std::to_string(n) : "");
    i += n;
  }
  return out;
}

class NidsReal : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!fs::exists(dataDir() / "index.tsv")) {
      GTEST_SKIP() << "no real products beside the checkout";
    }
  }
  /** Calls check(row, nids, info) with each product of the index, its header read. */
  template <typename Check>
  static void forEach(Check check) {
    for (const auto& row : readTable("index.tsv")) {
      SCOPED_TRACE(row.at("file"));
      NidsFile nids;
      NidsInfo info;
      ASSERT_EQ(nids.open((dataDir() / row.at("file")).c_str()), 1);
      ASSERT_EQ(nids.readHeader(info), 1);
      check(row, nids, info);
    }
  }
};

TEST_F(NidsReal, HeadersAgreeWithTheIndex) {
  int files = 0;
  forEach([&](const Row& row, NidsFile& nids, const NidsInfo& info) {
    ++files;
    if (row.at("code").empty()) {  // free text: a header of letters, and nothing to draw
      EXPECT_STREQ(info.getInfo(), "Not supported - 20047");
      return;
    }
    EXPECT_EQ(std::to_string(info.getCode()), row.at("code"));
    EXPECT_EQ(std::to_string(info.getSrc()), row.at("source_id"));
    EXPECT_EQ(isoTime(info.getVolDate()), row.at("volume_utc"));
    EXPECT_EQ(isoTime(info.getProdDate()), row.at("product_utc"));
    EXPECT_NEAR(static_cast<double>(info.getLat()), std::stod(row.at("lat")), 1e-5);
    EXPECT_NEAR(static_cast<double>(info.getLon()), std::stod(row.at("lon")), 1e-5);
    EXPECT_NEAR(static_cast<double>(info.getAlt()), std::stod(row.at("height_ft")) * 0.3048, 1e-3);
    EXPECT_EQ(std::to_string(info.getMode()), row.at("mode"));
    EXPECT_EQ(std::to_string(info.getVcp()), row.at("vcp"));
    EXPECT_EQ(std::to_string(nids.getScanNum()), row.at("elevation_number"));
    EXPECT_EQ(std::to_string(nids.getOffSymb()) + " " + std::to_string(nids.getOffGraph()) + " " +
                  std::to_string(nids.getOffTab()),
              row.at("offsets"));
    std::string params;
    for (int i = 0; i < 10; ++i) {
      params += (i > 0 ? " " : "") + std::to_string(nids.getParam(i));
    }
    EXPECT_EQ(params, row.at("params"));
    std::string words;
    for (int i = 0; i < 16; ++i) {
      char word[8];
      std::snprintf(word, sizeof word, "%s%04x", i > 0 ? " " : "",
                    static_cast<unsigned>(nids.getIthres(i) & 0xFFFF));
      words += word;
    }
    EXPECT_EQ(words, row.at("level_words"));
  });
  EXPECT_EQ(files, 38);
}

TEST_F(NidsReal, ImagesAgreeCellByCell) {
  // Images of which the reader has no more than the header: the product isn't known as digital, and
  // its compressed data stay unread.
  const std::set<std::string> unread = {"180"};
  std::map<std::string, std::map<int, int>> histograms;
  for (const auto& row : readTable("levels.tsv")) {
    histograms[row.at("file")][std::stoi(row.at("level"))] = std::stoi(row.at("cells"));
  }
  int images = 0;
  forEach([&](const Row& row, NidsFile& nids, const NidsInfo& /*info*/) {
    const NidsWalk walk(nids, false);
    if (row.at("size").empty() || unread.count(row.at("code")) != 0) {
      EXPECT_TRUE(walk.cells.empty());
      return;
    }
    ++images;
    const auto size = split(row.at("size"), 'x');
    EXPECT_EQ(walk.rows, std::vector<int>(std::stoul(size[0]), std::stoi(size[1])));
    EXPECT_EQ(std::to_string(walk.cells.size()), row.at("cells"));
    EXPECT_EQ(std::to_string(std::accumulate(walk.cells.begin(), walk.cells.end(), 0L)),
              row.at("level_sum"));
    EXPECT_EQ(row.at("zero_runs"), walk.zero_runs == 0 && row.at("zero_runs").empty()
                                       ? ""
                                       : std::to_string(walk.zero_runs));
    char crc[16];
    std::snprintf(crc, sizeof crc, "%08lx",
                  crc32(0, walk.cells.data(), static_cast<uInt>(walk.cells.size())));
    EXPECT_EQ(crc, row.at("levels_crc32"));
    std::map<int, int> histogram;
    for (const unsigned char level : walk.cells) {
      ++histogram[level];
    }
    if (histograms.count(row.at("file")) != 0) {
      EXPECT_EQ(histogram, histograms[row.at("file")]);
    }
    if (!walk.rays.empty()) {
      EXPECT_NEAR(static_cast<double>(walk.rays[0].ang0), std::stod(row.at("first_azimuth")), 0.01);
      EXPECT_NEAR(static_cast<double>(walk.rays[0].ang1), std::stod(row.at("first_step")), 0.01);
      double sum = 0;
      for (const auto& ray : walk.rays) {
        sum += static_cast<double>(ray.ang1);
      }
      EXPECT_NEAR(sum, std::stod(row.at("sum_steps")), 0.05);
    }
  });
  EXPECT_EQ(images, 30);
}

TEST_F(NidsReal, PacketsAndPagesAgree) {
  std::map<std::string, std::vector<std::string>> lines;
  for (const auto& row : readTable("pages.tsv")) {
    lines[row.at("file")].push_back(row.at("page") + "\t" + row.at("j") + "\t" + row.at("text"));
  }
  int paged = 0;
  forEach([&](const Row& row, NidsFile& nids, const NidsInfo& /*info*/) {
    const std::string packets = row.at("packets");
    if (row.at("code") == "180" || packets.empty() || packets.substr(0, 5) == "mixed") {
      return;  // no walk, or one through packets that have no reader
    }
    const NidsWalk walk(nids, false);
    std::string first = packets.substr(0, packets.find(" |"));
    if (first == "47623") {
      first = "47631";  // the one code for rasters
    }
    EXPECT_EQ(packetText(walk.packets), first);
    if (row.at("pages").empty()) {
      EXPECT_EQ(walk.pages, 0);
      return;
    }
    ++paged;
    EXPECT_EQ(std::to_string(walk.pages), row.at("pages"));
    std::vector<std::string> found;
    for (const auto& line : walk.texts) {
      found.push_back(std::to_string(line.page) + "\t" + std::to_string(static_cast<int>(line.y)) +
                      "\t" + line.data);
    }
    EXPECT_EQ(found, lines[row.at("file")]);
  });
  EXPECT_EQ(paged, 3);
}

}  // namespace
}  // namespace ZQV
