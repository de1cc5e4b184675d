#include "Scanp.h"

#include <cfloat>
#include <climits>
#include <string>

#include <gtest/gtest.h>

namespace ZQV {
namespace {

/** What a scan gives, as "matches/characters used" and the values that it assigned, behind the
 *  whole a "." if it came to the end of the format. */
template <class T, class Show>
std::string scan(const char* format, const char* text, const Show& show) {
  Scanp p;
  p.set(text);
  T values[3] = {};
  const int n = p.scan(format, values[0], values[1], values[2]);
  std::string s = std::to_string(n) + "/" + std::to_string(p.length());
  for (int i = 0; i < p.assigned(); i++) s += " " + show(values[i]);
  EXPECT_EQ(p.getOffset(), 0);
  return s + (p.finished() ? "." : "");
}

struct Row {
  const char* format;
  const char* text;
  const char* want;
};

TEST(ScanpTest, Texts) {
  const Row rows[] = {
      {"%s %s", "KOKC \r\n\tPPINE x", "2/13 KOKC PPINE."},
      {"%s %s", "KOKC", "1/4 KOKC"},
      {"%s ", " KOKC", "0/0"},  // a word doesn't skip what stands ahead of it
      {"%5s", "KOKC 12", "0/0"},
      {"%<5s %s", "KOKC 12", "2/7 KOKC 12."},
      {"%<3s%s", "KOKC", "2/4 KOK C."},
      {"%s", "a word too long for it", "1/1 a."},
      {"%s", "toolongforit", "1/12 toolong."},  // cut, but used in whole
      {"MT%s", "MS310", "0/1"},
      {"%A%N%A", "ABc012d", "3/7 ABc 012 d."},
      {"%2A%1N", "ABC1", "1/2 AB"},
      {"%[/A-]%[//N]%[/N+]", "a-B/N7+/", "3/7 a-B /N 7+."},
      {"%[^/N ]%[^//]", "AB-1 2/", "2/6 AB- 1 2."},
      {"%[AB", "AB", "0/0"},
      {"%[]", "]", "0/0"},
      {"%w|%W|%w", " \t\r|\n \t|\n", "2/8  \t\r \n \t"},
      {"%S", "to the\nend", "1/10 to the\n."},
      {"%(AB|ABC|D)%(D)", "ABCD", "1/2 AB"},
      {"%(X|ABC)%*(D)%s", "ABCDE", "3/5 ABC E."},
      {"%*(RTD|COR) %s", "1235", "0/0"},
      {"%<(X|Y)%s", "1235", "2/4  1235."},  // none of them is as good as any
      {"%<2(X|YYY)%s", "YYY", "0/0"},       // but not within a width
      {"%3(YY|YYY)", "YYY", "0/0"},         // the first that is there decides
      {"%q", "q", "0/0"},
      {"", "q", "-1/0"},
      {"%s", "", "-1/0"},
      {"%s%s%s%s", "a", "1/1 a"},
      {"%1s%1s%1s%1s", "abcd", "3/3 a b c"},  // a fourth variable is not there
  };
  for (const Row& row : rows) {
    EXPECT_EQ((scan<char[8]>(row.format, row.text, [](const char* s) { return std::string(s); })),
              row.want)
        << row.format << " on " << row.text;
  }
  const std::string word(100, 'x');
  Scanp p;
  p.set(word.c_str());
  EXPECT_EQ(p.scan("%*s"), 1);
  EXPECT_EQ(p.length(), 80) << "a word is no longer";
}

TEST(ScanpTest, Integers) {
  const Row rows[] = {
      {"%d/%d ", "162/110", "2/7 162 110"},
      {"%d%d", "-12+7", "2/5 -12 7."},
      {"%d", "-", "0/0"},
      {"%d", "--1", "0/0"},
      {"%2d%2d%2d", "202016", "3/6 20 20 16."},
      {"%2d%2d%2d", "20201", "2/4 20 20"},  // exact widths
      {"%2d%<2d", "201", "2/3 20 1."},
      {"%4d", "-123", "1/4 -123."},
      {"%2D%2D%2D", " 51 2\n", "3/6 5 1 2."},
      {"%2D%2D%2D", " 51  3", "3/6 5 1 3."},
      {"%4D", " 1 2", "0/0"},  // nothing goes on behind white space
      {"%D%d", " \n 12 \t7", "2/8 12 7."},
      {"%!!d%d", "TRW", "1/0 -9999"},
      {"%2!//!d%2d", "//12", "2/4 -9999 12."},
      {"%2!M!d", "MM", "1/1 -9999."},
      {"%2!M!d", "1M", "0/0"},  // too short, not missing
      {"%!M!2d", "M", "0/0"},   // the width comes first
      {"%*!M!d%d", "M5", "2/2 5."},
      {"%!Md", "M", "0/0"},
      {"%*2d%n%*d%n", "1234", "4/4 2 4."},
      {"%d%d", "99999999999-99999999999", "2/23 2147483647 -2147483648."},
      {"%99999999999d", "1", "0/0"},
      {"%s", "12", "0/0"},  // not the type of the variable
  };
  for (const Row& row : rows) {
    EXPECT_EQ(scan<int>(row.format, row.text, [](int v) { return std::to_string(v); }), row.want)
        << row.format << " on " << row.text;
  }
}

TEST(ScanpTest, Reals) {
  const Row rows[] = {
      {"%f,%f,%f", "1.5,-.25,+3.", "3/12 1.500000 -0.250000 3.000000."},
      {"%f%f", "1e2e3", "1/3 100.000000"},
      {"%f%*s", "12E", "2/3 12.000000."},  // an exponent needs a digit
      {"%f", "-.", "0/0"},
      {"%f", "nan", "0/0"},
      {"%!M!f%4F", "M 7.5", "2/5 -9999.000000 7.500000."},
      {"%8F%10F%4F", "  33.172   -86.77  75 ", "3/22 33.172001 -86.769997 75.000000."},
      {"%d", "1", "0/0"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(scan<float>(row.format, row.text, [](float v) { return std::to_string(v); }),
              row.want)
        << row.format << " on " << row.text;
  }
  Scanp p;
  p.set("1e99 -1e999");
  float v[2];
  EXPECT_EQ(p.scan("%f %f", v[0], v[1]), 2);
  EXPECT_EQ(v[0], FLT_MAX);
  EXPECT_EQ(v[1], -FLT_MAX);
}

TEST(ScanpTest, ThePositionStaysWithinTheText) {
  const char text[] = "ab\0/MT 310";  // with a NUL
  Scanp p;
  p.set(text, 10);
  EXPECT_EQ(p.search("/NI"), 0);
  EXPECT_EQ(p.search("/MT"), 1);
  EXPECT_EQ(p.length(), 3);
  p.inc();
  EXPECT_STREQ(p.string(), "/MT 310");
  EXPECT_EQ(p.search("ab"), 0) << "it lies before";
  EXPECT_EQ(p.getChar(0), '/');
  EXPECT_EQ(p.getChar(-3), 'a');
  EXPECT_EQ(p.getChar(-4), '\0');
  EXPECT_EQ(p.getChar(7), '\0');
  int top = 0;
  EXPECT_EQ(p.scan("%*(/MT) %d", top), 2);
  EXPECT_EQ(top, 310);
  p.inc(INT_MAX);
  EXPECT_EQ(p.getOffset(), 10);
  EXPECT_EQ(p.scan("%<(A)"), -1);
  p.inc(INT_MIN);
  EXPECT_EQ(p.getOffset(), 0);
  p.offset(99);
  EXPECT_EQ(p.getOffset(), 10);
  p.set(nullptr);
  EXPECT_STREQ(p.string(), "");
  EXPECT_EQ(p.scan("%s"), -1);
}

}  // namespace
}  // namespace ZQV
