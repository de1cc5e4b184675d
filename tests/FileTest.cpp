// Files, paths, buffers, byte order, stream decompression, hash tables.

#include "File.h"

#include <gtest/gtest.h>

#include "Buffer.h"
#include "Const.h"
#include "FileTool.h"
#include "Hash.h"
#include "String.h"
#include "TempDir.h"

using namespace ZQV;

namespace {

std::string entry(const char* paths, int i) {
  String out;
  FileTool::getPath(paths, i, out);
  return out.get();
}

}  // namespace

TEST(FileTool, PathLists) {
  EXPECT_EQ(FileTool::numPath("a:b:c"), 3);
  EXPECT_EQ(FileTool::numPath(""), 0);
  EXPECT_EQ(FileTool::numPath(nullptr), 0);
  EXPECT_EQ(entry("a:b:c", 2), "c");
  EXPECT_EQ(FileTool::numPath("a::b"), 2);  // an empty entry ends the walk
  EXPECT_EQ(entry("a::b", 0), "a");
  EXPECT_EQ(entry("a::b", 1), ":b");
  EXPECT_EQ(FileTool::numPath("a:"), 1);
  EXPECT_EQ(entry("a:", 0), "a");
  EXPECT_EQ(entry("a:b", 5), "");
  String out;
  EXPECT_EQ(FileTool::addPath("a:b", "c", out), 0);
  EXPECT_STREQ(out.get(), "b/c");
  EXPECT_EQ(FileTool::addPath("/a", "/etc", out), 1);
  EXPECT_STREQ(out.get(), "/etc");
  FileTool::addPath("", "c", out);
  EXPECT_STREQ(out.get(), "c");
  const TempDir dir;
  dir.write("two/c", "");
  const std::string list = dir.at("one") + ":" + dir.at("two");
  EXPECT_EQ(FileTool::addPath(list.c_str(), "c", out), 1);
  EXPECT_EQ(out.get(), dir.at("two/c"));
  FileTool::addOutPath(list.c_str(), "new", out);
  EXPECT_EQ(out.get(), dir.at("two/new"));
}

TEST(FileTool, TestsAndHomes) {
  EXPECT_TRUE(FileTool::isStdio("StdN"));
  EXPECT_TRUE(FileTool::isFullPath("http://x"));
  String out;
  FileTool::addUserPath("~nosuchuser_x/a", out);
  EXPECT_STREQ(out.get(), "~nosuchuser_x/a");
  FileTool::addUserPath("~/a", out);
  EXPECT_EQ(out.getChar(0), '/');
  EXPECT_FALSE(FileTool::exist(nullptr));
}

TEST(File, PipesReadAndWriteOneWay) {
  File file;
  ASSERT_EQ(file.open("|printf 'a\\nb'", "r"), 1);
  char line[10];
  EXPECT_EQ(file.getLine(line, 10), 2);
  EXPECT_EQ(file.read(line, 5), 1);
  file.close();
  ASSERT_EQ(file.open("|cat > /dev/null", "w"), 1);
  EXPECT_EQ(file.read(line, 1), -1);
  EXPECT_EQ(file.rewind(), 0);
  EXPECT_EQ(file.openPlain("|echo danger"), 0);  // a name out of a data file runs nothing
  EXPECT_EQ(file.openPlain("-"), 0);
  EXPECT_EQ(file.openPlain("/dev/null"), 0);
}

TEST(Buffer, KeepsItsPlaces) {
  Buffer buffer(5);
  buffer.check(10);
  EXPECT_EQ(buffer.getMax(), 2010);
  buffer.add("abcdef", 6);
  buffer.inc(2);
  buffer.insert(2, "XY", 2);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(buffer.get()), 4), "XYcd");
  EXPECT_EQ(buffer.inc(-3) + buffer.inc(7), 0);
  EXPECT_EQ(buffer.get(100), 0);
  EXPECT_TRUE(buffer.equal(-2, "ef"));
  EXPECT_FALSE(buffer.equal(-1, "ef"));
  EXPECT_EQ(buffer.trunc(-3), 1);
  EXPECT_EQ(buffer.getSize(), 5);
  EXPECT_EQ(buffer.trunc(-9), 0);
  buffer.clearUsed();
  EXPECT_EQ(buffer.getSize(), 3);
  buffer.inc(3);
  buffer.trunc(1);
  EXPECT_EQ(buffer.getInd(), 0);
  EXPECT_EQ(buffer.insert(9, "x", 1), 0);
}

TEST(Hash, FindsByEachKeyAndKeepsOrder) {
  Hash hash(0, 7, 0, 2);
  hash.enter("DEN", "72469", "denver");
  hash.enter("STL", "72434", "st louis");
  EXPECT_STREQ(hash.search(1, "72434"), "st louis");
  EXPECT_EQ(hash.search("XXX"), nullptr);
  hash.enter("DEN", "99999", "other");  // a known key keeps finding the older entry
  EXPECT_STREQ(hash.search("DEN"), "denver");
  EXPECT_STREQ(hash.search(1, "99999"), "other");
  hash.enter("DEN", "72469", "replaced");
  EXPECT_STREQ(hash.search("DEN"), "replaced");
  EXPECT_EQ(hash.getNum(), 3);
  EXPECT_STREQ(hash.first(), "replaced");
  EXPECT_STREQ(hash.next(), "st louis");
  EXPECT_EQ(hash.enter(nullptr, "x", "y"), 0);
  Hash ints(1, 1);
  ints.enterInt("k", 5);
  EXPECT_EQ(ints.searchInt("k"), 5);
  EXPECT_EQ(ints.searchInt("z"), Const::MISS);
  ints.enter("absent", nullptr);
  EXPECT_EQ(ints.searchInt("absent"), 0);
  EXPECT_GE(hash.key("\xFF\xFE\x80"), 0);
}
