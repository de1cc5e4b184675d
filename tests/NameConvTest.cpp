// Name conventions: templates to names and back, and the search for the latest file.

#include "NameConv.h"

#include <cstdlib>

#include <gtest/gtest.h>

#include "Const.h"
#include "Filename.h"
#include "NameConvFile.h"
#include "TempDir.h"
#include "Zqv.h"

using namespace ZQV;

namespace {

/** A data tree and a convention file, at a fixed present of 2004-01-02 12:34. */
class NameConvTest : public testing::Test {
 protected:
  void SetUp() override {
    Zqv::resrc.clear();
    Zqv::setDatabasePath(dir.path.c_str());
    ::setenv("zqvcurtime", "#200401021234", 1);
  }
  void TearDown() override {
    ::unsetenv("zqvcurtime");
    Zqv::resrc.clear();
    Zqv::setDatabasePath("");
  }
  void conventions(const std::string& text) const { dir.write("name.cnv", text); }
  static std::string latest(NameConv& conv, const char* text) {
    NameConvFile found;
    conv.setLatest(text, found);
    return found.filename.get();
  }
  static std::string encoded(const char* form, const char* date) {
    NameConv conv;
    conv.set((std::string("@") + form).c_str());
    Date at;
    at.set(date);
    String out;
    conv.encodeFile(at, out);
    return out.get();
  }

  TempDir dir;
};

}  // namespace

TEST_F(NameConvTest, EncodesTokens) {
  const struct {
    const char* form;
    const char* date;
    const char* expected;
  } rows[] = {{"%Y%m%d_%h%n.dat", "200401021534", "20040102_1534.dat"},
              {"%y%b%d%B%j", "20040203", "04feb03FEB034"},
              {"%6h.%15n", "200401020759", "06.45"},
              {"%0h", "2004010207", "07"},
              {"a b{c}%%d", "2004", "a_bc%d"},
              {"%Y%m%d%h", "2004", "2004000000"},
              {"%b%B", "2004", "xxxXXX"},
              {"%q.x", "2004", ".x"},
              {"x%", "2004", "x"},
              {"%999999999h", "2004010207", "00"}};
  for (const auto& row : rows) {
    EXPECT_EQ(encoded(row.form, row.date), row.expected) << row.form;
  }
}

TEST_F(NameConvTest, TakesConventionLines) {
  conventions(
      "# comment line that is long enough\n"
      "nids %D/%i/%t/%Y%m%d_%h%n - 2000,nids min=60\n"
      "typed %D/x%Y%m%d%h.dat hdr%Y nids,2000 -\n"
      "sized %D/x%Y%m%d%h.dat - t size=100\n"
      "short %Y - t -\n");
  NameConv conv;
  EXPECT_EQ(conv.set("NIDS:i=ABC:t=N0R"), 1);
  EXPECT_STREQ(conv.getType(), "nids");
  EXPECT_EQ(conv.getMinSize(), 2000);
  EXPECT_STREQ(conv.getKey('i'), "ABC");
  EXPECT_EQ(conv.getOffset(), 60);
  conv.set("nids_br1");
  EXPECT_STREQ(conv.getExt(), "br1");
  conv.set("typed");
  EXPECT_STREQ(conv.getType(), "nids,2000");  // deliberate: the size is read in first place only
  EXPECT_EQ(conv.getMinSize(), 0);
  conv.set("sized");
  EXPECT_EQ(conv.getMinSize(), Const::MISS);  // deliberate: the number is never reached
  conv.set("short");
  EXPECT_STREQ(conv.getFile(), "short");  // a line of fewer than 20 characters is none
  conv.set("/a/b%Y,hdr,ttt");
  EXPECT_STREQ(conv.getFile(), "/a/b%Y");
  EXPECT_STREQ(conv.getType(), "ttt");
  EXPECT_EQ(conv.set(""), 0);
  EXPECT_EQ(conv.set("none"), 1);
  EXPECT_FALSE(conv.hasFile());
}

TEST_F(NameConvTest, FindsTheLatestFile) {
  dir.write("a/200401020200.dat", "x");
  dir.write("b/200401021000.dat", "x");
  dir.write("b/200401021100.dat", "");  // empty: not larger than 0 bytes
  Zqv::putResrc("data_path", (dir.at("a") + ":" + dir.at("b")).c_str());
  NameConv conv;
  conv.set("@%D/%Y%m%d%h00.dat");
  EXPECT_EQ(latest(conv, "la"),
            dir.at("a/200401020200.dat"));  // the first path is walked to its end first
  EXPECT_EQ(latest(conv, "la#3"), dir.at("b/200401021000.dat"));
  EXPECT_EQ(latest(conv, nullptr), dir.at("a/200401020200.dat"));
  EXPECT_EQ(latest(conv, "la#3-1"), dir.at("b/200401020900.dat"));
  EXPECT_EQ(latest(conv, "#200401021000"), dir.at("b/200401021000.dat"));
  EXPECT_EQ(latest(conv, "#200312311000"), dir.at("a/200312311000.dat"));
  EXPECT_EQ(latest(conv, "2:34"), dir.at("b/200401021000.dat"));
  EXPECT_EQ(latest(conv, "1d"), dir.at("a/200401011200.dat"));
  EXPECT_EQ(latest(conv, "@x.dat"), "x.dat");
  EXPECT_EQ(latest(conv, ">la"), dir.at("a/200401021200.dat"));
}

TEST_F(NameConvTest, SearchesEnd) {
  Zqv::putResrc("data_path", dir.path.c_str());
  NameConv conv;
  conv.set("@%D/%Y%m%d%h.dat");
  latest(conv, "la#999999999");  // capped
  conv.set("@%D/fixed.dat");
  EXPECT_EQ(conv.getOffset(), Const::MISS);
  EXPECT_EQ(latest(conv, "la"), dir.at("fixed.dat"));
  Zqv::putResrc("data_path", dir.at("none").c_str());
  conv.set("@%D/%Y%m%d%h.dat");
  EXPECT_EQ(latest(conv, "la"), dir.at("none/2004010212.dat"));  // no directory: one look
}

TEST_F(NameConvTest, FixesTheHour) {
  NameConv conv;
  const struct {
    const char* hour;
    const char* expected;
  } rows[] = {{"6", "200401020634"},     {"18", "200401011834"},     {"-6", "200401021234"},
              {"-5", "200401021034"},    {":50", "200401021150"},    {"-:15", "200401021230"},
              {"0115", "200312311534"},  {"010109", "200401010934"}, {"1:30", "200401020130"},
              {"-0:20", "200401020020"}, {"bogus", "200401021234"}};
  for (const auto& row : rows) {
    conv.set("@%Y%m%d%h%n");
    conv.setFixDate(row.hour);
    EXPECT_EQ(latest(conv, ""), row.expected) << row.hour;
  }
}

TEST_F(NameConvTest, DecodesNames) {
  const struct {
    const char* fault;
    const char* form;
    const char* name;
    bool fits;
    const char* date;
  } rows[] = {
      {"FullName", "%D/r/%Y%m%d_%h%n.n", "/data/r/20040102_1534.n", true, "#200401021534"},
      {"PlainNameByLastPart", "%D/r/%Y%m%d_%h%n.n", "20040102_1534.n", true, "#200401021534"},
      {"WrongLiteral", "%D/r/%Y%m%d_%h%n.n", "/data/q/20040102_1534.n", false, ""},
      {"LeftOver", "%Y%m%d", "20040102.gz", false, ""},
      {"NoDigits", "%Y%m%d", "2004010x", false, ""},
      {"MonthName", "%d%b%y", "02jan04", true, "#20040102"},
      {"DayOfYear", "%Y%j", "2004033", true, "#20040202"},
      {"KeyUpToLiteral", "%i_%Y", "ABC_2004", true, "#2004"},
      {"KeyOfStatedLength", "%3i%Y", "ABC2004", true, "#2004"}};
  for (const auto& row : rows) {
    NameConv conv;
    conv.set((std::string("@") + row.form).c_str());
    ASSERT_EQ(conv.decode(row.name) != 0, row.fits) << row.fault;
    if (row.fits) {
      Date expected;
      expected.set(row.date);
      EXPECT_EQ(conv.getDate().getSeconds(), expected.getSeconds()) << row.fault;
    }
  }
}

TEST_F(NameConvTest, FilesThatUsersName) {
  conventions("nids %D/%i_%Y%m%d_%h%n.nids - nids -\n");
  Zqv::putResrc("data_path", dir.path.c_str());
  dir.write("ABC_20040102_1200.nids", "x");
  dir.write("other.bin", "x");
  Filename name;
  name.setNameConv("nids");
  const struct {
    const char* text;
    std::string expected;
    bool fixed;
  } rows[] = {{"@odd,name", "odd", true},
              {"-", "-", true},
              {"std", "-", true},
              {"/x/y.dat", "/x/y.dat", true},
              {"ABC_20040102_1200.nids", dir.at("ABC_20040102_1200.nids"), false},
              {"ABC_20040102_1200.nids.bak", "ABC_20040102_1200.nids.bak", true},
              {"#200401021200", dir.at("ABC_20040102_1200.nids"), false}};
  for (const auto& row : rows) {
    EXPECT_EQ(name.setFile(row.text), 1);
    EXPECT_EQ(name.getName(), row.expected) << row.text;
    EXPECT_EQ(name.isFixed(), row.fixed) << row.text;
  }
  Date at;
  at.set("#200401021200");
  EXPECT_EQ(name.setDate(at, ""), 1);
  at.set("#200401021201");
  EXPECT_EQ(name.setDate(at, ""), 0);
  EXPECT_EQ(name.setDate(Date()), 0);
}

TEST_F(NameConvTest, SeriesAndLists) {
  Filename name;
  name.setNameConv("@/x/%Y%m%d%h");
  const struct {
    const char* text;
    int files;
    int offset;
  } rows[] = {{"-6", 7, 3600}, {"2,:30", 5, 1800}, {":90", 2, 3600},
              {"3,0", 4, 0},   {"0", 1, 3600},     {"999999999,:1", 10000, 60}};
  for (const auto& row : rows) {
    name.setNumFiles(row.text);
    EXPECT_EQ(name.getNumFiles(), row.files) << row.text;
    EXPECT_EQ(name.getOffset(), row.offset) << row.text;
  }
  name.setNameConv("@/x/%Y%m%d%h");
  name.setNumFiles(-3);  // counts backward: the first file is two periods before the date
  name.setFile("#2004010212");
  String out;
  name.getName(0, out);
  EXPECT_STREQ(out.get(), "/x/2004010210");
  EXPECT_EQ(name.getName(3, out), 0);
  name.setFile("a,b,c");
  EXPECT_EQ(name.getNumFiles(), 3);
  EXPECT_EQ(name.getName(2, out), 1);
  EXPECT_STREQ(out.get(), "c");
  Filename no_time;
  no_time.setNameConv("@/x/fixed");
  no_time.setNumFiles("5");
  EXPECT_EQ(no_time.getNumFiles(), 1);
}

TEST_F(NameConvTest, PatternsForListingRunNoShell) {
  NameConv conv;
  Zqv::putResrc("data_path", "/d*;x");
  conv.set("@%D/%i_%2k_%Y%j%b_%e");
  conv.setKey('i', "A?");
  String out;
  conv.toPattern(out);
  EXPECT_STREQ(out.get(), "/d\\*;x/A\\?_??_??????????_*");
}
