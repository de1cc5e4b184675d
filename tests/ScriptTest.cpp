// What a script meets: the status of a strict run, standard streams as files, dates that don't
// change from run to run. Faults: a failed run that a script takes for a good one, and the other
// way round; messages among the bytes of a picture.

#include <string>

#include <gtest/gtest.h>

#include "NidsMaker.h"
#include "Run.h"

using namespace ZQV;

namespace {

class ScriptTest : public testing::Test {
 protected:
  void SetUp() override {
    NidsMaker maker;
    maker.layers = {NidsMaker::radials({{0, 1, {1, 2, 3, 4}}, {90, 1, {5, 6}}})};
    dir.write("a.nids", maker.build());
    dir.write("empty", "");
    dir.write("text", "This is no radar product.\n");
  }
  TempDir dir;
};

const std::string no_display = "DISPLAY=";

}  // namespace

TEST_F(ScriptTest, StatusOfAStrictRun) {
  const struct {
    const char* args;
    int status;  ///< with -strict
  } cases[] = {{"-in nids a.nids -ou png:a.png", 0},
               {"-in nids a.nids -de raster", 0},
               {"-in nids absent -ou png:a.png", 6},
               {"-in lev2 absent -ou png:a.png", 6},
               {"-in nids empty -de meta,/dev/null", 10},
               {"-in nids text -de meta,/dev/null", 10},
               {"-in lev2 text -de meta,/dev/null", 10},
               {"-in nids a.nids -ou png:/dev/full", 8},
               {"-in nids a.nids -ou gif:/dev/full", 8},
               {"-in nids a.nids -ou png:/proc/none/a.png", 8},
               {"-in nids a.nids -de ps,/dev/full", 8},
               {"-in nids a.nids -de meta,/dev/full", 8},
               {"-in nids a.nids -de hpgl,/dev/full", 8},
               {"-in nids a.nids -de 'ps,|false'", 8},
               // The first error counts, though the picture can't be written either.
               {"-in nids absent -ou png:/dev/full", 6},
               {"-in nids a.nids", 4}};
  for (const auto& c : cases) {
    const std::string args = std::string("-mf none ") + c.args;
    EXPECT_EQ(runScopeview(dir, "-strict " + args, no_display).status, c.status) << c.args;
    EXPECT_EQ(runScopeview(dir, args, no_display).status, 0) << c.args;
  }
}

TEST_F(ScriptTest, PictureOnStandardOutputStandsAlone) {
  const struct {
    const char* args;
    const char* file;
    std::string begins;
  } cases[] = {{"-ou png:-", "-ou png:b", "\x89PNG\r\n"},
               {"-ou gif:-", "-ou gif:b", "GIF8"},
               {"-de ps,-", "-de ps,b", "%!PS-Adobe"},
               {"-de meta,-", "-de meta,b", "ZQVMETA2\n"},
               {"-de hpgl,-", "-de hpgl,b", ""}};
  const std::string env = no_display + " SOURCE_DATE_EPOCH=1000000000";
  for (const auto& c : cases) {
    const std::string input = "-mf none -me debug1 -in nids ";
    const ProgramRun file = runScopeview(dir, input + "a.nids " + c.file, env);
    EXPECT_NE(file.out.find("SCOPE VIEWER"), std::string::npos) << c.args;
    // Read from standard input, too.
    const ProgramRun run = runScopeview(dir, input + "- " + c.args + " < a.nids", env);
    EXPECT_EQ(run.status, 0) << c.args;
    EXPECT_EQ(run.out.compare(0, c.begins.size(), c.begins), 0) << c.args;
    EXPECT_TRUE(run.out == dir.read("b")) << c.args;
    EXPECT_NE(run.err.find("SCOPE VIEWER"), std::string::npos) << c.args;
  }
}

TEST_F(ScriptTest, DatesOfTheRunFollowTheEnvironment) {
  const std::string args = "-mf none -in nids a.nids -de ps,a.ps";
  runScopeview(dir, args, "SOURCE_DATE_EPOCH=1000000000");
  EXPECT_NE(dir.read("a.ps").find("%%CreationDate: 01 SEP 09  01:46:40Z\n"), std::string::npos);
  for (const char* bad : {"", "12x", "-5", "999999999999"}) {
    runScopeview(dir, args, std::string("SOURCE_DATE_EPOCH=") + bad);
    const std::string page = dir.read("a.ps");
    EXPECT_NE(page.find("%%CreationDate: 2"), std::string::npos) << bad;
  }
}

TEST_F(ScriptTest, Version) {
  for (const char* option : {"-version", "--version"}) {
    const ProgramRun run = runScopeview(dir, option);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "scopeview 6.65-LINUX-X11\n");
  }
  EXPECT_EQ(runScopeview(dir, "--help").out, runScopeview(dir, "-help").out);
}
