#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Plot.h"
#include "Run.h"
#include "TempDir.h"
#include "Zqv.h"

namespace ZQV {

/** Tests of what a plot draws into a metafile, with a directory of their own ahead of the package's
 * data and no settings. */
class MetaTest : public testing::Test {
 public:
  MetaTest(const MetaTest&) = delete;
  MetaTest& operator=(const MetaTest&) = delete;

 protected:
  /** @param params  of the device, behind the name of its file */
  explicit MetaTest(const std::string& params = "") {
    Zqv::resrc.clear();
    Zqv::setDatabasePath((dir.path + ":" ZQV_DATA_DIR).c_str());
    Zqv::setMessageLevel("none");
    Zqv::putResrc("device", ("meta," + dir.at("m") + params).c_str());
  }
  ~MetaTest() override {
    Zqv::resrc.clear();
    Zqv::setMessageLevel(6);
    Zqv::setDatabasePath("");
  }
  /** The records of a plot that draw(plot) fills. */
  template <typename Draw>
  std::vector<Record> drawn(Draw draw) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    Plot plot;
    EXPECT_EQ(plot.open(), 1);
    draw(plot);
    plot.close();
    out = testing::internal::GetCapturedStdout();
    err = testing::internal::GetCapturedStderr();
    return readMeta(dir.read("m"));
  }

  TempDir dir;
  std::string out;  ///< what the last plot said
  std::string err;
};

}  // namespace ZQV
