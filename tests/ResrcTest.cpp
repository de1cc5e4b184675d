// Where settings come from, which source wins, and what the odd corners of the command line do.

#include "Resrc.h"

#include <cstdlib>
#include <map>

#include <gtest/gtest.h>

#include "Prog.h"
#include "ResrcCL.h"
#include "ResrcDB.h"
#include "ResrcDBList.h"
#include "ResrcEnv.h"
#include "ResrcFile.h"
#include "String.h"
#include "Strings.h"
#include "TempDir.h"
#include "Zqv.h"
#include "ZqvResrc.h"

using namespace ZQV;

namespace {

/** Fills the store as a program called "p" would, and empties it afterwards. */
class ResrcDBTest : public testing::Test {
 protected:
  void SetUp() override { Zqv::resrc.clear(); }
  void TearDown() override {
    Zqv::resrc.clear();
    Zqv::setMessageLevel(6);
    for (const std::string& name : set_names) {
      ::unsetenv(name.c_str());
    }
  }
  void env(const std::string& name, const std::string& value) {
    ::setenv(name.c_str(), value.c_str(), 1);
    set_names.push_back(name);
  }
  static void create(std::vector<const char*> args) {
    args.insert(args.begin(), "/usr/bin/p");
    ResrcDBList keyed;
    ResrcDBList positional;
    for (int id = 0; id <= ZqvResrc::LAST; id++) {
      if (id != ZqvResrc::FILENAME) {
        ZqvResrc::add(keyed, id);
      }
    }
    ZqvResrc::add(positional, ZqvResrc::FILENAME);
    ResrcDB::create(Strings(static_cast<int>(args.size()), args.data()), keyed, positional);
  }
  static std::string get(const char* name) { return Zqv::getResrc(name, "(absent)"); }

  TempDir dir;
  std::vector<std::string> set_names;
};

using Pairs = std::vector<std::pair<std::string, std::string>>;

Pairs readAll(const std::string& text, const char* tag = nullptr) {
  const TempDir dir;
  ResrcFile file;
  file.set("p", "p");
  if (tag != nullptr) {
    file.setTag(tag);
  }
  file.open(dir.write("a.cfg", text).c_str());
  Pairs lines;
  String key;
  String value;
  while (file.get(key, value) == 1) {
    lines.emplace_back(key.get(), value.get());
  }
  return lines;
}

}  // namespace

TEST(Resrc, TellsSetFromHavingAValue) {
  Resrc store;
  store.add("switch", "", Resrc::COMMAND_LINE);
  store.add("bare", nullptr, Resrc::COMMAND_LINE);
  store.add("off", "OFF", Resrc::FILE_SOURCE);
  store.add("neg", "-5", Resrc::FILE_SOURCE);
  store.add("num", "12x", Resrc::FILE_SOURCE);
  EXPECT_STREQ(store.get("switch"), "");
  EXPECT_STREQ(store.get("bare"), "");
  EXPECT_EQ(store.get("absent"), nullptr);
  EXPECT_TRUE(store.getBool("switch"));
  EXPECT_FALSE(store.getBool("off"));
  EXPECT_FALSE(store.getBool("absent"));
  EXPECT_EQ(store.get("num", 3), 12);
  EXPECT_EQ(store.get("neg", 7), 7);  // deliberate: only a leading digit makes a number
  store.append("num", "y", '\0');
  EXPECT_STREQ(store.get("num"), "12x\ny");
  EXPECT_EQ(store.getType("num"), Resrc::FILE_SOURCE);
  store.prepend("new", "v", ',');
  EXPECT_EQ(store.getType("new"), 0);
}

TEST_F(ResrcDBTest, LaterSourcesWin) {
  const std::string a = dir.write("a.cfg", "*.title: file_a\n*.icon: a\n");
  const std::string b = dir.write("b.cfg", "*.icon: b\n*.format: \"%f kt x\"\n");
  const std::string list = a + ":" + b;
  env("zqvtitle", "environment");
  env("zqvgeometry", "1x1");
  create({"-df", list.c_str(), "-ti", "command"});
  EXPECT_EQ(get("title"), "command");
  EXPECT_EQ(Zqv::getResrcType("title"), Resrc::COMMAND_LINE);
  EXPECT_EQ(get("icon"), "b");
  EXPECT_EQ(get("format"), "%f kt x");
  EXPECT_EQ(get("geometry"), "1x1");
  EXPECT_EQ(Zqv::getResrcType("geometry"), Resrc::ENVIRONMENT);
}

TEST_F(ResrcDBTest, NamesSelectLinesAndVariables) {
  const std::string a = dir.write("a.cfg",
                                  "p.x.color_table: plus\nfoo.color_map: foo\np.color_map: p\n"
                                  "background: red\np.own_thing: yes\nq.own_thing: no\n");
  env("zqv_p_x_title", "of x");
  create({"-df", a.c_str(), "-na", "+x"});
  EXPECT_EQ(get("color_table"), "plus");
  EXPECT_EQ(get("title"), "of x");
  EXPECT_EQ(get("color_map"), "(absent)");
  Zqv::resrc.clear();
  create({"-df", a.c_str(), "-na", "foo"});
  EXPECT_EQ(get("color_map"), "foo");
  Zqv::resrc.clear();
  create({"-df", a.c_str()});
  EXPECT_EQ(get("color_map"), "p");
  EXPECT_EQ(get("own_thing"), "yes");        // nobody declared it
  EXPECT_EQ(get("background"), "(absent)");  // deliberate: a bare name is never qualified
}

TEST_F(ResrcDBTest, CommandLineForms) {
  const struct {
    const char* fault;
    std::vector<const char*> args;
    std::map<std::string, std::string> expected;
  } rows[] = {
      {"EqualsSign", {"-bg=red"}, {{"background", "red"}}},
      {"DoubleDash", {"--bg", "red"}, {{"background", "red"}}},
      {"DoubleDashEquals", {"--bg=red"}, {{"background", "red"}}},
      {"LongName", {"-background", "red"}, {{"background", "red"}}},
      {"AbbreviationIsItsOwn", {"-tit", "x"}, {{"tit", "x"}, {"title", "(absent)"}}},
      {"NegativeValue", {"-pa", "-5"}, {{"parameter", "-5"}}},
      {"DashLetterIsKey", {"-pa", "-x"}, {{"parameter", ""}, {"x", ""}}},
      {"ValueMayBeginDoubleDash", {"-pa", "--x"}, {{"parameter", "--x"}}},
      {"SwitchEatsFile", {"-it", "a.nids"}, {{"inter", "a.nids"}, {"filename", "(absent)"}}},
      {"PositionalList", {"a", "b", "c"}, {{"filename", "a\nb\nc"}}},
      {"NegativeNumberIsPositional", {"-5"}, {{"filename", "-5"}}},
      {"BareDoubleDashIsEmptyKey", {"--", "a"}, {{"", ""}, {"filename", "a"}}},
      {"NameByItsBeginning", {"-nam", "z"}, {{"name", "z"}, {"nam", "(absent)"}}},
      {"EmptyValueAfterEquals", {"-bg="}, {{"background", ""}}}};
  for (const auto& row : rows) {
    Zqv::resrc.clear();
    create(row.args);
    for (const auto& [name, value] : row.expected) {
      EXPECT_EQ(get(name.c_str()), value) << row.fault << " " << name;
    }
  }
}

TEST(ResrcFile, PatternsMatchFromTheStart) {
  ResrcFile file;
  file.set("scopeview", "scopeview");
  for (const char* good :
       {"*background", "*.background", "scopeview.background", "*view.back*und"}) {
    EXPECT_TRUE(file.compare("background", good)) << good;
  }
  for (const char* bad : {"background", "*", "scopeview.*", "*.ground", "scopeview.backgrounds", "",
                          "Scopeview.background"}) {
    EXPECT_FALSE(file.compare("background", bad)) << bad;
  }
  String name;
  ResrcFile::parseName("a.b*c", name);
  EXPECT_STREQ(name.get(), "c");
  ResrcFile::parseName("background", name);
  EXPECT_STREQ(name.get(), "ackground");  // deliberate
}

TEST(ResrcFile, ConditionsNestAndClose) {
  const struct {
    const char* fault;
    const char* text;
    const char* tag;
    Pairs expected;
  } rows[] = {
      {"ElseOfFalse",
       "IF x\n*.a 1\nELSE\n*.a 2\nEND\n*.b 3\n",
       nullptr,
       {{"*.a", "2"}, {"*.b", "3"}}},
      {"ElifTakesOnce", "IF x\n*.a 1\nELIF y\n*.a 2\nELSE\n*.a 3\nEND\n", "y", {{"*.a", "2"}}},
      {"TrueClosesElif", "IF y\n*.a 1\nELIF y\n*.a 2\nEND\n", "Y", {{"*.a", "1"}}},
      {"OuterFalseHidesInner", "IF x\nIF V6\n*.a 1\nEND\nEND\n*.b 2\n", nullptr, {{"*.b", "2"}}},
      {"BuiltInTag", "IF v6\n*.a 1\nEND\n", nullptr, {{"*.a", "1"}}},
      {"ElifIgnoresBuiltIn", "IF x\nELIF V6\n*.a 1\nEND\n", nullptr, {}},
      {"DefineInFile", "DEF z\nIF z\n*.a 1\nEND\n", nullptr, {{"def", "z"}, {"*.a", "1"}}},
      {"UndefineRemoves", "UNDEF y\nIF y\n*.a 1\nEND\n", "y", {{"undef", "y"}}},
      {"UndefBelowZero",
       "UNDEF a\nUNDEF b\nDEF c\nDEF d\nIF c\n*.a 1\nEND\n",
       nullptr,
       {{"undef", "a"}, {"undef", "b"}, {"def", "c"}, {"def", "d"}}},
      {"DeepNesting",
       "IF V6\nIF V6\nIF V6\nIF V6\nIF V6\nIF V6\nIF V6\nIF V6\nIF V6\nIF V6\nIF V6\n"
       "IF V6\n*.a 1\n",
       nullptr,
       {{"*.a", "1"}}},
      {"Quotes",
       "*.t: \"A long title\"\n*.u: \"open\n*.v \"\"\n",
       nullptr,
       {{"*.t", "A long title"}, {"*.u", "open\n"}, {"*.v", ""}}},
      {"CommentsAndCase",
       "#*.a 1\n #x y\n*.AbC: D\n*.novalue\n",
       nullptr,
       {{"#x", "y"}, {"*.abc", "D"}}}};
  for (const auto& row : rows) {
    EXPECT_EQ(readAll(row.text, row.tag), row.expected) << row.fault;
  }
  const std::string long_line = "*.k " + std::string(400, 'v') + "\n";
  const Pairs read = readAll(long_line);
  ASSERT_FALSE(read.empty());
  EXPECT_EQ(read[0].second.size(), 245U);  // a line holds 249 characters
}

TEST(ResrcFile, OpensTheFirstNameOfADirectory) {
  const TempDir dir;
  dir.write("etc/.zqvdef", "*.a 1\n");
  dir.write("etc/Zqv.res", "*.a 2\n");
  ResrcFile file;
  file.set("p", "p");
  ASSERT_EQ(file.open(dir.at("etc").c_str()), 1);
  String key;
  String value;
  ASSERT_EQ(file.getValid(key, value), 1);
  EXPECT_STREQ(value.get(), "1");
  EXPECT_EQ(file.open(dir.at("none").c_str()), 0);
  EXPECT_EQ(file.get(key, value), -1);
}

TEST(Zqv, MessageLevels) {
  const struct {
    const char* text;
    unsigned mask;
  } rows[] = {{"debug8", 0xFFFFF}, {"DEBUG", 0xFFFFF},
              {"none", 0},         {"mess,+debug3", 0x400F},
              {"-mess", 0x37},     {"-mess,-mess", 0x3F},
              {"bogus", 0x3F},     {"warn", 7},
              {"print,+none", 1},  {"", 0x3F}};
  for (const auto& row : rows) {
    Zqv::setMessageLevel(6);
    Zqv::setMessageLevel(row.text);
    unsigned mask = 0;
    for (int n = 1; n <= 20; n++) {
      mask |= Zqv::checkMessage(n) ? 1U << (n - 1) : 0U;
    }
    EXPECT_EQ(mask, row.mask) << row.text;
  }
  Zqv::setMessageLevel("debug4");
  EXPECT_EQ(Zqv::outDebug(4, "%s", ""), 1);
  EXPECT_FALSE(Zqv::isDebug(4));  // deliberate: one bit above what outDebug(4) tests
  Zqv::setMessageLevel("debug5");
  EXPECT_TRUE(Zqv::isDebug(4));
  Zqv::setMessageLevel(6);
}

TEST(Prog, CommandWordsAtAPrompt) {
  Zqv::resrc.clear();
  EXPECT_EQ(Prog::setCommand("set title Radar of %s"), 1);
  EXPECT_STREQ(Zqv::getResrc("title"), "Radar of %s");
  EXPECT_EQ(Prog::setCommand("set label= = x"), 1);
  EXPECT_STREQ(Zqv::getResrc("label"), "x");
  EXPECT_EQ(Prog::setCommand("settle"), 0);
  EXPECT_EQ(Prog::setCommand(""), 0);
  EXPECT_EQ(Prog::setCommand(nullptr), 0);
  Zqv::resrc.clear();
}
