// Strings, tokens and number rules: the bricks of every parser in the package.

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "Const.h"
#include "StrLib.h"
#include "String.h"
#include "Strings.h"
#include "Tools.h"

using namespace ZQV;

namespace {

std::vector<std::string> tokens(const Strings& s) {
  std::vector<std::string> list;
  list.reserve(static_cast<size_t>(s.getNum()));
  for (int i = 0; i < s.getNum(); i++) {
    list.emplace_back(s.getString(i));
  }
  return list;
}

using Tokens = std::vector<std::string>;

}  // namespace

TEST(Strings, SplitsAtDelimitersOutsideQuotes) {
  const struct {
    const char* fault;
    const char* text;
    int max;
    Tokens expected;
  } rows[] = {{"QuotedDelimiter", "a,\"b,c\",d", -1, {"a", "b,c", "d"}},
              {"QuoteInsideToken", "a\"b,c\"", -1, {"a\"b", "c\""}},
              {"TrailingDelimiter", "a,", -1, {"a", ""}},
              {"DelimiterAlone", ",", -1, {"", ""}},
              {"EmptyText", "", -1, {}},
              {"AbsentText", nullptr, -1, {}},
              {"UnclosedQuoteRunsToEnd", R"("a,b)", -1, {R"("a,b)"}},
              {"InnerQuotesStay", R"("a"b",c)", -1, {"a\"b", "c"}},
              {"QuoteClosesAtEnd", "x,\"\"", -1, {"x", ""}},
              {"MaxKeepsRest", "a,b,c", 2, {"a", "b,c"}}};
  for (const auto& row : rows) {
    EXPECT_EQ(tokens(Strings(row.text, ',', row.max)), row.expected) << row.fault;
  }
  EXPECT_EQ(tokens(Strings("  a \t b\n")), (Tokens{"a", "b"}));
}

TEST(Strings, ReadsOutOfRangeAsAbsent) {
  const Strings s("x1,-3x,.5,k=7,", ',');
  EXPECT_EQ(s.getInt(0), Const::MISS);
  EXPECT_EQ(s.getInt(1), -3);
  EXPECT_FLOAT_EQ(s.getFloat(2), 0.5F);
  EXPECT_EQ(s.getIntAfter(3, '='), 7);
  EXPECT_EQ(s.getInt(99), Const::MISS);
  EXPECT_EQ(s.getFloat(-1), Const::FMISS);
  EXPECT_EQ(s.getString(5), nullptr);
  EXPECT_EQ(s.getString(0, 2), nullptr);
  EXPECT_STREQ(s.getString(3, '='), "=7");
  EXPECT_EQ(s.getStringAfter(0, '='), nullptr);
  EXPECT_EQ(s.getChar(0, 9), '\0');
  EXPECT_FALSE(s.valid(4));
  EXPECT_EQ(s.find(".5"), 2);
  EXPECT_EQ(s.find(nullptr), -1);
}

TEST(String, CountsNegativeIndicesFromTheEnd) {
  String s("abcdef");
  EXPECT_STREQ(s.get(-1), "f");
  EXPECT_STREQ(s.get(100), "f");
  EXPECT_STREQ(s.get(-100), "abcdef");
  EXPECT_EQ(s.getChar(2), 'c');
  s.copy("abcdef", -2);
  EXPECT_STREQ(s.get(), "abcde");
  s.trunc(-1);
  EXPECT_STREQ(s.get(), "abcd");
  s.trunc(10);
  EXPECT_STREQ(s.get(), "abcd");
  s.trunc(-10);
  EXPECT_STREQ(s.get(), "");
  EXPECT_EQ(s.chop(), 0);
  EXPECT_STREQ(String().get(-1), "");
}

TEST(String, PrintfCutsAtTheCapacityAndCopyGrows) {
  String s;
  EXPECT_EQ(s.printf("%s", std::string(200, 'x').c_str()), 79);
  EXPECT_EQ(s.aprintf("more"), 79);
  s.copy(std::string(200, 'y').c_str());
  EXPECT_EQ(s.getLength(), 200);
  s.append("z");
  EXPECT_EQ(s.getLength(), 201);
  s.resize(5);
  EXPECT_STREQ(s.get(), "yyyy");
}

TEST(String, CopyOfAnAbsentTextLeavesTheLength) {
  String s("abc");
  EXPECT_EQ(s.copy(nullptr), 0);
  EXPECT_STREQ(s.get(), "");
  EXPECT_TRUE(s.valid());  // deliberate: the length isn't touched
  s.append("d");
  EXPECT_STREQ(s.get(), "d");
  s.copy(s.get());
  EXPECT_STREQ(s.get(), "d");
}

TEST(StrLib, ReadsColumnFields) {
  EXPECT_EQ(StrLib::toInt("  12  ", 0, 6), 12);
  EXPECT_EQ(StrLib::toInt("      ", 0, 6), Const::MISS);
  EXPECT_EQ(StrLib::toInt("123456", 4, 10), 56);
  EXPECT_FLOAT_EQ(StrLib::toFloat("xx 1.5", 2, 4), 1.5F);
  EXPECT_STREQ(StrLib::getField(",,a,,b", ',', 1), "b");
  EXPECT_EQ(StrLib::getField("a,b", ',', 2), nullptr);
  EXPECT_TRUE(StrLib::hasToken("a:b:c", ':', "b"));
  EXPECT_FALSE(StrLib::hasToken("a:bb:c", ':', "b"));
  char words[20] = "ABC DEF";
  StrLib::upCaseFirst(words);
  EXPECT_STREQ(words, "Abc Def");
  StrLib::copy(words, 5, "abcdefgh", -6);
  EXPECT_STREQ(words, "abc");
}

TEST(StrLib, TellsNumbersAndTemplates) {
  EXPECT_TRUE(StrLib::equal("abcd", 2, "ab"));
  EXPECT_FALSE(StrLib::equal("abcd", 2, "abc"));
  EXPECT_FALSE(StrLib::equal("abcd", 2, "a"));
  EXPECT_TRUE(StrLib::isNum("-"));  // deliberate
  EXPECT_FALSE(StrLib::isNum(""));
  EXPECT_TRUE(StrLib::isNum("-12"));
  EXPECT_FALSE(StrLib::isNum("12a"));
  EXPECT_TRUE(StrLib::isNum("12a", 2));
  EXPECT_FALSE(StrLib::isNum("1", 2));
  EXPECT_TRUE(StrLib::check("K1a-x", "ud[abc]-"));
  EXPECT_FALSE(StrLib::check("K1d-", "ud[abc]-"));
  EXPECT_FALSE(StrLib::check("K1", "udd"));
  char text[20] = "a\tb\x01\x80";
  StrLib::clean(text);
  EXPECT_STREQ(text, "a b");
}

TEST(Tools, WritesValuesByTheTrailingZeroRule) {
  const struct {
    float value;
    const char* expected;
  } rows[] = {{0.0F, "0"},           {0.5F, "0.5"},
              {1234.5F, "1234.5"},   {-2.0F, "-2"},
              {75.0F, "75"},         {0.01F, "0.01"},
              {123456.0F, "123456"}, {1e7F, "1.000000e+07"},
              {-100.0F, "-100"},     {1.0e-7F, "1.000000e-07"}};
  String out;
  for (const auto& row : rows) {
    Tools::toString(row.value, out);
    EXPECT_STREQ(out.get(), row.expected);
  }
  Tools::toString(std::numeric_limits<float>::infinity(), out);
  EXPECT_STREQ(out.get(), "inf");
}

TEST(Tools, RoundsIntervals) {
  EXPECT_FLOAT_EQ(Tools::calcInterval(100, 0, 3), 34.0F);
  EXPECT_FLOAT_EQ(Tools::calcInterval(1, 0, 3), 0.4F);
  // The upper rows come to the plain ceiling and don't step to round hundreds: deliberate.
  EXPECT_FLOAT_EQ(Tools::calcInterval(2501, 0, 2), 1251.0F);
  EXPECT_FLOAT_EQ(Tools::calcInterval(107, 0, 1), 107.0F);
  EXPECT_FLOAT_EQ(Tools::calcInterval(0.3F, 0, 1), 0.3F);
  EXPECT_FLOAT_EQ(Tools::calcInterval(5, 5, 0), 1.0F);
}

TEST(Tools, PacksValuesInTwoDigits) {
  EXPECT_EQ(Tools::toInt(0.0F), 0);
  EXPECT_EQ(Tools::toInt(5.5F), 55);
  EXPECT_EQ(Tools::toInt(85.0F), 185);
  EXPECT_EQ(Tools::toInt(-850.0F), -285);
  EXPECT_EQ(Tools::toInt(0.05F),
            800);  // deliberate: four steps up, which leaves both digits behind
}

TEST(Tools, CutsAndGuardsNumbers) {
  EXPECT_EQ(Tools::cut(-1.9), -1);
  EXPECT_EQ(Tools::cut(1e30), std::numeric_limits<int>::max());
  EXPECT_EQ(Tools::cut(-1e30), std::numeric_limits<int>::min());
  EXPECT_EQ(Tools::cut(std::nan("")), 0);
  EXPECT_STREQ(Tools::numFormat("%.1f kt"), "%.1f kt");
  for (const char* bad : {"%s", "%d", "%f%f", "%n", "none", "%*f", "%999f", "%", "%.f%", ""}) {
    EXPECT_STREQ(Tools::numFormat(bad), "%1.0f") << bad;
  }
  EXPECT_STREQ(Tools::numFormat("%5.2e%%"), "%5.2e%%");
}
