// What a script meets: the status of a strict run, standard streams as files, dates that don't
// change from run to run. Faults: a failed run that a script takes for a good one, and the other
// way round; messages among the bytes of a picture.

#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Lev2Maker.h"
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
               {"-in img text -de meta,/dev/null", 10},
               {"-in rcm text -de meta,/dev/null", 10},
               {"-in mdr absent -de meta,/dev/null", 6},
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

// Where PROJ puts the middle of the picture:
//   echo LON LAT | proj -f %.3f +proj=lcc +lat_1=33 +lat_2=45 +lat_0=90 +lon_0=-97 +R=6371220
// and so on, by the definition in each row.
TEST_F(ScriptTest, WorldFileSaysWhereAPictureLies) {
  const struct {
    const char* domain;
    double x, y;     ///< of the middle
    double spacing;  ///< of the domain's grid, 90 by 60 cells in 448.5 by 299 pixels
    const char* projection;
  } cases[] = {{"lc:40:-97:33:45,35.3,-97.3,91,61,.11,.11", -27134.912, -8219747.619, 11000,
                "Lambert_Conformal_Conic_2SP"},
               {"latlon,35.3,-97.3,91,61,.1,.1", -97.3, 35.3, 0.1, "GEOGCS"},
               // +proj=stere +lat_0=-90 +lat_ts=-71 +lon_0=140
               {"ps:-90:140:-71,-30,150,91,61,.1,.1", 1242703.685, 7047722.814, 10000,
                "PARAMETER[\"latitude_of_origin\",-71]"},
               // +proj=moll +lon_0=-100; its plane is larger by the square root of 2
               {"mo:0:-100,35,-97,91,61,.1,.1", 265388.486, 4218642.553, 14142.1356, "Mollweide"}};
  for (const auto& c : cases) {
    const std::string args = "-mf none -in nids a.nids -de raster -ge 450x300 -pa full,world ";
    runScopeview(dir, args + "-ou gif:w.gif -pd " + c.domain);
    std::istringstream lines(dir.read("w.gfw"));
    double dx = 0, row = 0, column = 0, dy = 0, x0 = 0, y0 = 0;
    ASSERT_TRUE(lines >> dx >> row >> column >> dy >> x0 >> y0) << c.domain;
    EXPECT_NEAR(x0 + 224.5 * dx, c.x, dx / 100) << c.domain;
    EXPECT_NEAR(y0 + 149.5 * dy, c.y, dx / 100) << c.domain;
    EXPECT_NEAR(dx, c.spacing * 90 / 448.5, dx * 1e-4) << c.domain;
    EXPECT_NEAR(dy, -dx, dx * 1e-4) << c.domain;
    EXPECT_EQ(row, 0);
    EXPECT_EQ(column, 0);
    EXPECT_NE(dir.read("w.prj").find(c.projection), std::string::npos) << c.domain;
  }
  runScopeview(dir, "-mf none -in nids a.nids -de raster -ou p.png -pa world");
  EXPECT_NE(dir.read("p.pgw"), "");
  runScopeview(dir, "-mf none -in nids a.nids -de raster -ou q.png");
  EXPECT_EQ(dir.read("q.pgw") + dir.read("q.prj"), "") << "only where asked for";
}

// Faults: frames missing, twice, in the wrong order or with each other's colours; a delay at the
// wrong frame.
TEST_F(ScriptTest, LoopInOneFileOrInNumberedOnes) {
  dir.write("loop.cnv", "nids " + dir.path + "/l%Y%m%d_%h%n.nids - nids min=5\n");
  const char* names[] = {"l20250430_0145.nids", "l20250430_0150.nids", "l20250430_0155.nids"};
  for (int i = 0; i < 3; i++) {
    NidsMaker maker;
    maker.layers = {NidsMaker::radials({{60.0 * i, 40, std::vector<int>(200, 4 * i + 3)}})};
    dir.write(names[i], maker.build());
  }
  const std::string env = no_display + " SOURCE_DATE_EPOCH=1000000000";
  const std::string look = "-mf none -in nids -ge 300x200 -pd latlon,35.3,-97.3,91,61,.1,.1 ";
  const std::string loop =
      look + "-nc " + dir.at("loop.cnv") + " -cu '#202504300155' -pa nf=3,linc=5,anim ";
  const ProgramRun run = runScopeview(dir, loop + "-ou png:loop.png", env);
  EXPECT_NE(run.out.find("Created PNG file: loop-001.png\n"), std::string::npos);
  const ProgramRun gif = runScopeview(dir, loop + "-ou gif:loop.gif", env);
  EXPECT_NE(gif.out.find("Created GIF file: loop.gif\n"), std::string::npos);
  const std::string movie = dir.read("loop.gif");
  size_t at = 0;
  for (int i = 0; i < 3; i++) {
    runScopeview(dir, look + names[i] + " -ou png:one.png", env);
    EXPECT_TRUE(dir.read("one.png") == dir.read("loop-00" + std::to_string(i) + ".png")) << i;
    runScopeview(dir, look + names[i] + " -ou gif:one.gif", env);
    // From the block that says how long it stays to the pixels' codes, which are those of the
    // picture alone.
    const std::string one = dir.read("one.gif");
    const std::string codes = one.substr(one.find(std::string("\0\x2c\0\0\0\0", 6)) + 12);
    at = movie.find(std::string("\x21\xf9\x04\0", 4) + (i == 2 ? '\x64' : '\x32'), at);
    ASSERT_NE(at, std::string::npos) << i;
    const size_t next = movie.find(codes.substr(0, codes.size() - 1), at);
    ASSERT_NE(next, std::string::npos) << i;
    EXPECT_LT(next - at, 200U) << i;
    at = next;
  }
  EXPECT_EQ(movie.find("\x21\xf9", at), std::string::npos);
  EXPECT_EQ(movie.back(), ';');
  EXPECT_EQ(runScopeview(dir, "-strict " + loop + "-ou gif:/dev/full", env).status, 8);
}

// Faults: a line that stays, one in a log file, one where messages are off.
TEST_F(ScriptTest, ProgressIsForTerminals) {
  Lev2Maker maker;
  Lev2Maker::Radial radial;
  radial.refl.levels = std::vector<int>(100, 90);
  std::string volume = maker.header();
  dir.write("first", volume + maker.message1(radial));
  dir.write("rest", maker.message1(radial) + maker.message1(radial));
  // The volume stops in the middle for longer than nothing is said.
  const std::string draw = "'" ZQV_SCOPEVIEW "' -fp '" ZQV_DATA_DIR
                           "' -mf none -in lev2 '|cat first; sleep 1; cat rest' "
                           "-pd latlon,35,-97,91,61,.1,.1 -de meta,m.meta ";
  const auto on_terminal = [&](const std::string& args) {
    dir.write("run", "cd '" + dir.path + "'; zqvdefault=/nonexistent " + draw + args + " >out\n");
    const std::string command = "script -qec 'sh " + dir.at("run") + "' /dev/null </dev/null >'" +
                                dir.at("seen") + "' 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0);
    return dir.read("seen");
  };
  const std::string seen = on_terminal("");
  EXPECT_NE(seen.find("\rradial "), std::string::npos) << seen;
  EXPECT_EQ(seen.substr(seen.size() - 4), "\r\033[K") << "wiped out at the end";
  EXPECT_EQ(on_terminal("-me none"), "");
  EXPECT_EQ(on_terminal("2>err"), "");
  EXPECT_EQ(dir.read("err"), "");
}

TEST_F(ScriptTest, Version) {
  for (const char* option : {"-version", "--version"}) {
    const ProgramRun run = runScopeview(dir, option);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "scopeview 6.65-LINUX-X11\n");
  }
  EXPECT_EQ(runScopeview(dir, "--help").out, runScopeview(dir, "-help").out);
}
