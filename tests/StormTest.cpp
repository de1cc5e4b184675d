// Lines of storm tables.

#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "Const.h"
#include "StormAttr.h"

using namespace ZQV;

namespace {

/** What a line leaves in the record: "type id ang rad | tvs meso shail hail hsize | vil dbz z low
 * top | dir spd", "-" for missing. */
std::string describe(const StormAttr& s) {
  std::ostringstream out;
  const auto put = [&](float v) { v == Const::FMISS ? out << " -" : out << ' ' << v; };
  out << s.getType() << ' ' << s.getId();
  put(s.getAng());
  put(s.getRad());
  out << " | " << s.getTvs() << ' ' << s.getMeso() << ' ' << s.getSHail() << ' ' << s.getHail();
  put(s.getHSize());
  out << " |";
  for (const float v : {s.getVil(), s.getMaxDbz(), s.getMaxDbzZ(), s.getVLow(), s.getTops()}) {
    put(v);
  }
  out << " |";
  put(s.getDir());
  put(s.getSpd());
  return out.str();
}

constexpr const char* vil_head =
    " STM ID  AZ/RAN TVS  MDA  POSH/POH/MX SIZE VIL DBZM  HT  TOP  FCST MVMT ";
constexpr const char* low_head = " ID   AZ RAN TVS MESO HAIL DBZM HGT VLOW TOP DIR SPD";

}  // namespace

TEST(StormTest, LinesOfBothForms) {
  const struct {
    const char* head;
    const char* line;
    int result;
    const char* expected;
  } rows[] = {
      {vil_head, "    B4   45/120 NONE   3    10/ 90/ 1.50    41  58 12.5  33.0  240/ 35 ", 1,
       "2 B4 45 120 | 0 3 10 90 1.5 | 41 58 12.5 0 33 | 240 35"},
      {vil_head, "    B4   45/ 20 TVS  YES    0/  0/ 0.00     1  40  9.0   9.5    NEW    ", 1,
       "2 B4 45 20 | 10 1 0 0 0 | 1 40 9 0 9.5 | - -"},
      {vil_head, "    B4   45/ 20 2    MESO   0/  0/ 0.00     1  40  9.0   9.5  240/ 35  ", 1,
       "2 B4 45 20 | 2 1 0 0 0 | 1 40 9 0 9.5 | 240 35"},
      // "<" in column 34 counts, one column further right it hides the size; so does ">" a top.
      {vil_head, "    B4   45/ 20 NONE NONE  0/ 50  < 0.50    1  40  9.0   9.5  240/ 35  ", 1,
       "2 B4 45 20 | 0 0 0 50 0.25 | 1 40 9 0 9.5 | 240 35"},
      {vil_head, "    H3   45/ 36 NONE    5    0/ 50/<0.50    21  56  4.2 > 9.5  249/ 47  ", 1,
       "2 H3 45 36 | 0 5 0 50 0 | 21 56 4.2 0 0 | 249 47"},
      {vil_head, "    X0  161/154 NONE    4     UNKNOWN       67  63 24.4  45.2  235/ 41  ", 1,
       "2 X0 161 154 | 0 4 0 0 0 | 67 63 24.4 0 45.2 | 235 41"},
      // A line that ends early has what is there; the columns behind its end aren't read.
      {vil_head, "IDENT 45/20 NONE", 1, "2 IDE 45 20 | 0 0 0 0 0 | 0 0 0 0 0 | - -"},
      {vil_head, "    B4   45/ 20", 0, "2  - - | 0 0 0 0 0 | 0 0 0 0 0 | - -"},
      {vil_head, "    B4  nan/ 20 NONE NONE", 0, "2  - - | 0 0 0 0 0 | 0 0 0 0 0 | - -"},
      {vil_head, "B4 45/20 99999999999 -3", 1,
       "2 B4 45 20 | 2147483647 -3 0 0 0 | 0 0 0 0 0 | - -"},
      {vil_head, "", 0, "2  - - | 0 0 0 0 0 | 0 0 0 0 0 | - -"},
      {vil_head, nullptr, 0, "2  - - | 0 0 0 0 0 | 0 0 0 0 0 | - -"},
      {low_head, "07 300 45 YES NO PRO 55 12.5 3.0 > 41.0 250 30", 1,
       "1 07 300 45 | 1 0 50 0 0 | 0 55 12.5 3 41 | 250 30"},
      {low_head, "07 300 45 NO YES POS 55 12.5 3.0 41.0 250 30", 1,
       "1 07 300 45 | 0 1 100 0 0 | 0 55 12.5 3 41 | 250 30"},
      {low_head, "07 300", 1, "1 07 300 - | 0 0 0 0 0 | 0 0 0 0 0 | - -"},
      {low_head, "07", 0, "1  - - | 0 0 0 0 0 | 0 0 0 0 0 | - -"},
      {"no head", "07 300 45 NO YES POS 55 12.5 3.0 41.0 250 30", 0,
       "0  - - | 0 0 0 0 0 | 0 0 0 0 0 | - -"}};
  for (const auto& row : rows) {
    StormAttr storm;
    EXPECT_EQ(storm.decode(row.head), 0) << "a head line is no storm";
    EXPECT_FALSE(storm.isValid());
    EXPECT_EQ(storm.decode(row.line), row.result);
    EXPECT_EQ(describe(storm), row.expected) << (row.line != nullptr ? row.line : "");
    EXPECT_EQ(storm.isValid(), row.result == 1);
  }
}
