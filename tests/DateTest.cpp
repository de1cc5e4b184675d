// Dates with missing fields, zones and labels.

#include "Date.h"

#include <gtest/gtest.h>

#include "Const.h"
#include "DateTool.h"
#include "ForeTime.h"
#include "String.h"
#include "Timezone.h"

using namespace ZQV;

namespace {

Date at(const char* text) {
  Date date;
  date.set(text);
  return date;
}

std::string text(const Date& date, const char* format = nullptr) {
  String out;
  format == nullptr ? date.toText(out) : date.toText(format, out);
  return out.get();
}

std::string label(const char* date, const char* zone, int flags = 0, const char* prefix = nullptr) {
  String out;
  DateTool::createLabel(prefix, at(date), Timezone(zone), flags, out);
  return out.get();
}

}  // namespace

TEST(Date, TakesOnlyWhatIsThere) {
  const Date full = at("#200401021200");
  EXPECT_EQ(full.getMinute(), 0);
  EXPECT_EQ(full.getSecond(), Const::FMISS);
  EXPECT_EQ(full.getSeconds(), 1073044800L);
  const Date year = at("#2004");
  EXPECT_EQ(year.getMonth(), Const::MISS);
  EXPECT_EQ(year.getSeconds(), 1072915200L);  // start of the year
  EXPECT_EQ(text(year), "XX XXX 2004");
  EXPECT_FALSE(at("").isSet());
  EXPECT_FALSE(at(nullptr).isSet());
  EXPECT_TRUE(at("current").isSet());
}

TEST(Date, ArithmeticKeepsMissingFieldsMissing) {
  Date date = at("2004010223");
  date.addHours(2);
  EXPECT_EQ(date.getDay(), 3);
  EXPECT_EQ(date.getHour(), 1);
  EXPECT_EQ(date.getMinute(), Const::MISS);
  Date jan = at("20040131");
  jan.addMonths(-13);
  EXPECT_EQ(jan.getYear(), 2002);
  EXPECT_EQ(jan.getMonth(), 12);
  Date unset;
  EXPECT_EQ(unset.addDays(1), 0);
  EXPECT_FALSE(unset.isSet());
}

TEST(Date, YearsOfTwoDigits) {
  Date date = at("20040102");
  date.setYear(5);
  EXPECT_EQ(date.getYear(), 3905);  // deliberate: both corrections look at the given value
  date.setYear(97);
  EXPECT_EQ(date.getYear(), 1997);
  DateVal val(5, 1, 1, 0, 0, 0);
  val.validate();
  EXPECT_EQ(val.getYear(), 2005);
  DateVal bad(-3, 13, 40, 25, 61, 60);
  EXPECT_EQ(bad.validate(), 1);
  EXPECT_EQ(bad.getYear(), 1980);
  EXPECT_EQ(bad.getMonth(), 1);
  EXPECT_EQ(bad.getHour(), 0);
  EXPECT_EQ(DateVal().validate(), 0);
}

TEST(Date, RefusesFieldsOutOfRange) {
  Date date = at("20040102030405");
  EXPECT_EQ(date.setMonth(13), 0);
  EXPECT_EQ(date.setHour(24), 0);
  EXPECT_EQ(date.setSecond(60.0F), 0);
  EXPECT_EQ(date.setFractionalSecond(1.0F), 0);
  EXPECT_EQ(date.setMinute(Const::MISS), 1);
  EXPECT_EQ(date.getMinute(), Const::MISS);
  EXPECT_EQ(date.setSecond(std::numeric_limits<float>::quiet_NaN()), 0);
}

TEST(Date, DaysOfTheYear) {
  Date date;
  date.set(2024, Const::MISS, 60, 0, 0, 0);
  EXPECT_EQ(date.getMonth(), 2);
  EXPECT_EQ(date.getDay(), 29);
  EXPECT_EQ(Date::getJulian(2023, 12, 31), 365);
  int m = 0;
  int d = 0;
  EXPECT_EQ(Date::setJulian(2023, 366, m, d), 0);
  EXPECT_EQ(Date::setJulian(2023, 32, m, d), 1);
  EXPECT_EQ(m * 100 + d, 201);
  EXPECT_TRUE(Date::isYearLeap(2000));
  EXPECT_FALSE(Date::isYearLeap(1900));
  Date epoch;
  epoch.setDays(0);
  EXPECT_EQ(epoch.getSeconds(), 0);
  EXPECT_EQ(at("19691231120000").getDays(), -1);
}

TEST(Date, FormatsWithStandInsForMissingFields) {
  const Date date = at("20040305091507");
  EXPECT_EQ(text(date, "%a %b %Y %y %m %d %e %j %H %l %p %M %S %u %Z %% %q"),
            "FRI MAR 2004 04 03 05  5  65 09 09 AM 15 07 5 Z % q");
  EXPECT_EQ(text(Date(), "%a %b %Y %y %e %j %H %l %p %s %u"),
            "XXX XXX XXXX XX XX XXX XX XX XX XX.XXXX X");
  EXPECT_EQ(text(date, "%s"), "07.0000");
  EXPECT_EQ(text(at("20040305091512"), "%s"), "   0012");  // deliberate: no time reads so
  EXPECT_EQ(text(date, "ISO8601"), "2004-03-05T09:15:07Z");
  EXPECT_EQ(text(at("20040305"), nullptr), " 5 MAR 2004");
  EXPECT_EQ(text(at("2004030509")), "09Z  5 MAR 2004");
  EXPECT_EQ(text(at("20040305001500"), "%l"), "12");
  testing::internal::CaptureStdout();
  date.print();
  at("2004").print();
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "2004/03/05 09:15:07.000\n2004/MM/MM MM:MM:MM\n");
}

TEST(Timezone, ReadsSignNameAndHours) {
  const Timezone est("-EASTERN:-5");
  EXPECT_EQ(est.getPM(), -1);
  EXPECT_STREQ(est.getName(), "EAST");
  EXPECT_EQ(est.getOffset(), -18000);
  EXPECT_EQ(Timezone("IST:5.5").getOffset(), 19800);
  EXPECT_FALSE(Timezone("EST").isSet()) << "UTC times would stand under another name";
  Timezone none;
  EXPECT_EQ(none.set(""), 0);
  EXPECT_FALSE(none.isSet());
}

TEST(DateTool, Labels) {
  const struct {
    const char* date;
    const char* zone;
    int flags;
    const char* expected;
  } rows[] = {{"2004", "", 0, "04"},
              {"200403", "", 0, "MAR 04"},
              {"20040305", "", 0, " 5 MAR 04"},
              {"20040305", "", 1, "FRI  5 MAR 04"},
              {"2004030509", "", 0, "09Z  5 MAR 04"},
              {"200403050915", "", 0, "0915Z  5 MAR 04"},
              {"20040305091507", "", 1, "09:15:07Z FRI  5 MAR 04"},
              {"200403050315", "EST:-5", 0, "2215 EST  4 MAR 04"},
              {"2004030503", "EST:-5", 0, "22EST  4 MAR 04"},
              {"200403050315", "-EST:-5", 0, "10:15 PM EST [0315Z]  4 MAR 04"},
              {"200403050315", "+EST:-5", 0, "10:15 PM EST  4 MAR 04"},
              {"200403051700", "+EST:-5", 0, "12:00 PM EST  5 MAR 04"},
              {"2004030505", "-EST:-5", 0, "12 AM EST [05Z]  5 MAR 04"},
              {"20040305150729", "-EST:-5", 0, "10:07:29 AM EST [150729Z]  5 MAR 04"},
              {"", "EST:-5", 0, ""}};
  for (const auto& row : rows) {
    EXPECT_EQ(label(row.date, row.zone, row.flags), row.expected) << row.date << row.zone;
  }
  EXPECT_EQ(label("2004", "", 0, "Radar"), "Radar 04");
  String out;
  DateTool::createLabel(at("2004030509"), Timezone(), 3.0F, out);
  EXPECT_STREQ(out.get(), "12Z  5 MAR 04");
  DateTool::createLabel(at("2004030509"), Timezone(), "GFS", ForeTime(), out);
  EXPECT_STREQ(out.get(), "GFS 09Z  5 MAR 04");  // an unset forecast time adds nothing
  const struct {
    float hours;
    int flag;
    const char* expected;
  } hours[] = {{72, 1, "3 day"},   {6, 0, "6 hour"}, {12, 1, "0.5 day"}, {12, 0, "12 hour"},
               {60, 0, "2.5 day"}, {0, 0, ""},       {48, 0, "48 hour"}, {62, 0, "62 hour"}};
  for (const auto& row : hours) {
    DateTool::createHourLabel(row.hours, row.flag, out);
    EXPECT_STREQ(out.get(), row.expected);
  }
}

TEST(DateTool, ReadsLabelsBack) {
  const struct {
    const char* label;
    const char* expected;
  } rows[] = {{"12Z  5 MAR 2004", "12Z  5 MAR 2004"},
              {"12Z  5 MAR 04", "12Z  5 MAR 2004"},
              {"1215Z  5 MAR 04", "12:15Z  5 MAR 2004"},
              {"Radar at 1215Z  5 AUG 1999", "12:15Z  5 AUG 1999"},
              {"12:15:30Z  5 JUN 04", "12:15:30Z  5 JUN 2004"},
              {"12Z FRI  5 MAR 04", "12Z  5 MAR 2004"},
              {"12 05 03 04", "12Z  5 MAR 2004"},
              {" 5 JUL 04", " 5 JUL 2004"}};
  for (const auto& row : rows) {
    Date date;
    EXPECT_EQ(DateTool::decode(row.label, date), 1);
    EXPECT_EQ(text(date), row.expected) << row.label;
  }
  Date none;
  EXPECT_EQ(DateTool::decode("nothing here", none), 1);
  EXPECT_EQ(DateTool::decode(nullptr, none), 1);
  EXPECT_EQ(DateTool::getMinutes("-2:30"), -150);
  EXPECT_EQ(DateTool::getMinutes("2:30"), 150);
  EXPECT_EQ(DateTool::getMinutes("x"), 0);
  EXPECT_EQ(DateTool::getSeconds("#197001020000"), 86400);
  EXPECT_EQ(DateTool::getSeconds("77"), 77);
}
