#include "DateTool.h"

#include <array>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "Const.h"
#include "Date.h"
#include "ForeTime.h"
#include "StrLib.h"
#include "String.h"
#include "Timezone.h"
#include "Tools.h"

namespace ZQV {

namespace {

constexpr float seconds_an_hour = 3600.0F;

constexpr std::array<const char*, 12> months = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                                "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};
constexpr std::array<const char*, 12> months_lc = {"jan", "feb", "mar", "apr", "may", "jun",
                                                   "jul", "aug", "sep", "oct", "nov", "dec"};
constexpr std::array<const char*, 12> months_long = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<const char*, 7> day_of_week = {"SUN", "MON", "TUE", "WED",
                                                    "THU", "FRI", "SAT"};

template <size_t N>
const char* nameOf(const std::array<const char*, N>& names, int i) {
  return i < 0 || i >= static_cast<int>(N) ? "" : names[static_cast<size_t>(i)];
}

bool missing(int v) {
  return v == Const::MISS;
}

/** How much of the time of day a date has. */
enum class Precision { HOUR, MINUTE, SECOND };

Precision precisionOf(const Date& date) {
  if (missing(date.getMinute())) {
    return Precision::HOUR;
  }
  return date.getSecond() == Const::FMISS ? Precision::MINUTE : Precision::SECOND;
}

int roundedSeconds(const Date& date) {
  constexpr double half = 0.5;
  return date.getSecond() == Const::FMISS
             ? 0
             : Tools::cut(static_cast<double>(date.getSecond()) + half);
}

/** Time of day on a 24-hour clock. A zone's name follows an hour closely and a full time after a
 * blank. */
std::string clock24(const Date& date, const Timezone& zone) {
  char text[64];
  const int h = date.getHour();
  const int n = date.getMinute();
  const char* name = zone.isSet() ? zone.getName() : "Z";
  const char* gap = zone.isSet() ? " " : "";
  switch (precisionOf(date)) {
    case Precision::HOUR: std::snprintf(text, sizeof(text), "%2.2d%s", h, name); break;
    case Precision::MINUTE:
      std::snprintf(text, sizeof(text), "%2.2d%2.2d%s%s", h, n, gap, name);
      break;
    case Precision::SECOND:
      std::snprintf(text, sizeof(text), "%2.2d:%2.2d:%2.2d%s%s", h, n, roundedSeconds(date), gap,
                    name);
      break;
  }
  return text;
}

std::string clock12(const Date& date, const Timezone& zone) {
  char text[64];
  const int h = date.getHour() % 12 == 0 ? 12 : date.getHour() % 12;
  const int n = date.getMinute();
  const char* half = date.getHour() < 12 ? "AM" : "PM";
  switch (precisionOf(date)) {
    case Precision::HOUR:
      std::snprintf(text, sizeof(text), "%d %s %s", h, half, zone.getName());
      break;
    case Precision::MINUTE:
      std::snprintf(text, sizeof(text), "%d:%2.2d %s %s", h, n, half, zone.getName());
      break;
    case Precision::SECOND:
      std::snprintf(text, sizeof(text), "%d:%2.2d:%2.2d %s %s", h, n, roundedSeconds(date), half,
                    zone.getName());
      break;
  }
  return text;
}

/** The UTC time in brackets that follows a 12-hour time. */
std::string bracketUtc(const Date& utc) {
  char text[64];
  const int h = utc.getHour();
  const int n = utc.getMinute();
  switch (precisionOf(utc)) {
    case Precision::HOUR: std::snprintf(text, sizeof(text), " [%2.2dZ]", h); break;
    case Precision::MINUTE: std::snprintf(text, sizeof(text), " [%2.2d%2.2dZ]", h, n); break;
    case Precision::SECOND:
      std::snprintf(text, sizeof(text), " [%2.2d%2.2d%2.2dZ]", h, n, roundedSeconds(utc));
      break;
  }
  return text;
}

std::string timeOf(const Date& local, const Date& utc, const Timezone& zone) {
  if (!zone.isSet() || zone.getPM() == 0) {
    return clock24(local, zone);
  }
  return clock12(local, zone) + (zone.getPM() < 0 ? bracketUtc(utc) : "");
}

/** The date behind the time, with the day of the week ahead of it if wanted. */
std::string dayOf(const Date& date, bool with_weekday) {
  String year;
  date.toText("%y", year);  // "XX" for a missing one
  if (missing(date.getMonth())) {
    return year.get();
  }
  char text[64];
  const char* month = DateTool::getMonth(date.getMonth());
  if (missing(date.getDay())) {
    std::snprintf(text, sizeof(text), "%3s %s", month, year.get());
  } else {
    std::snprintf(text, sizeof(text), "%s%s%2d %3s %s",
                  with_weekday ? DateTool::getDayWeek(date.getDayOfWeek()) : "",
                  with_weekday ? " " : "", date.getDay(), month, year.get());
  }
  return text;
}

/** What a date form read. */
struct Reading {
  int hour = Const::MISS;
  int minute = Const::MISS;
  float second = Const::FMISS;
  int day = Const::MISS;
  int month = Const::MISS;
  int year = Const::MISS;
};

const char* tail(const char* text, int n) {
  const int len = StrLib::length(text);
  return len > n ? text + len - n : text;
}

bool readLabel(const char* text, Reading& r) {
  char name[4] = "";
  const auto named = [&](int got, int fields) {
    if (got == fields) {
      r.month = DateTool::decodeMonth(name);
    }
    return got == fields;
  };
  const auto hour_forms = [&](const char* s, const char* form) {
    r = Reading();
    // The four forms differ in the width of the year and in a day name that is skipped.
    const bool wide = form[0] == '4';
    const bool skips = form[1] == 's';
    if (skips) {
      return named(wide ? std::sscanf(s, "%2dZ %*3s %2d %3s %4d", &r.hour, &r.day, name, &r.year)
                        : std::sscanf(s, "%2dZ %*3s %2d %3s %2d", &r.hour, &r.day, name, &r.year),
                   4);
    }
    return named(wide ? std::sscanf(s, "%2dZ %2d %3s %4d", &r.hour, &r.day, name, &r.year)
                      : std::sscanf(s, "%2dZ %2d %3s %2d", &r.hour, &r.day, name, &r.year),
                 4);
  };
  const auto minute_forms = [&](const char* s, bool wide) {
    r = Reading();
    const bool short_hour = *s == ' ';  // a blank in first place means a one-digit hour
    int got = 0;
    if (short_hour) {
      got = wide ? std::sscanf(s, "%1d%2dZ %2d %3s %4d", &r.hour, &r.minute, &r.day, name, &r.year)
                 : std::sscanf(s, "%1d%2dZ %2d %3s %2d", &r.hour, &r.minute, &r.day, name, &r.year);
    } else {
      got = wide ? std::sscanf(s, "%2d%2dZ %2d %3s %4d", &r.hour, &r.minute, &r.day, name, &r.year)
                 : std::sscanf(s, "%2d%2dZ %2d %3s %2d", &r.hour, &r.minute, &r.day, name, &r.year);
    }
    return named(got, 5);
  };
  const auto second_forms = [&](const char* s, bool wide) {
    r = Reading();
    return named(wide ? std::sscanf(s, "%2d:%2d:%2fZ %2d %3s %4d", &r.hour, &r.minute, &r.second,
                                    &r.day, name, &r.year)
                      : std::sscanf(s, "%2d:%2d:%2fZ %2d %3s %2d", &r.hour, &r.minute, &r.second,
                                    &r.day, name, &r.year),
                 6);
  };
  if (hour_forms(text, "4") || hour_forms(text, "2") || minute_forms(tail(text, 17), true) ||
      minute_forms(tail(text, 15), false) || second_forms(tail(text, 21), true) ||
      second_forms(tail(text, 19), false) || hour_forms(tail(text, 19), "4s") ||
      hour_forms(tail(text, 17), "2s") || hour_forms(tail(text, 15), "4") ||
      hour_forms(tail(text, 13), "2")) {
    return true;
  }
  r = Reading();
  if (std::sscanf(text, "%2d %2d %2d %2d", &r.hour, &r.day, &r.month, &r.year) == 4) {
    return true;
  }
  r = Reading();
  return named(std::sscanf(text, "%2d %3s %2d", &r.day, name, &r.year), 3);
}

}  // namespace

long DateTool::getSeconds(const char* text) {
  if (text == nullptr) {
    return 0;
  }
  if (*text != '#') {
    return std::atoi(text);
  }
  DateVal val;
  int y = Const::MISS;
  int m = Const::MISS;
  int d = Const::MISS;
  int h = Const::MISS;
  int n = Const::MISS;
  std::sscanf(text + 1, "%4d%2d%2d%2d%2d", &y, &m, &d, &h, &n);
  val.set(y, m, d, h, n, Const::FMISS);
  return val.computeSecs();
}

int DateTool::getMinutes(const char* text) {
  int h = 0;
  int m = 0;
  constexpr int max_hours = 1000000;
  const int got = text == nullptr ? 0 : std::sscanf(text, "%9d:%9d", &h, &m);
  if (got < 1 || std::abs(static_cast<long>(h)) > max_hours ||
      std::abs(static_cast<long>(m)) > max_hours) {
    return 0;
  }
  if (got == 1) {
    return h * 60;
  }
  return h < 0 ? h * 60 - m : h * 60 + m;
}

int DateTool::getCurrent(String& out) {
  return getCurrent(nullptr, out);
}

int DateTool::getCurrent(const char* form, String& out) {
  Date now;
  now.set();
  // What the output of a run says of the time it was made; see reproducible-builds.org.
  const char* epoch = std::getenv("SOURCE_DATE_EPOCH");
  constexpr int longest = 11;  // digits, up to the year 5138
  if (StrLib::valid(epoch) && StrLib::length(epoch) <= longest &&
      StrLib::isNum(epoch, StrLib::length(epoch))) {
    now.set(std::atol(epoch));
  }
  if (StrLib::equal(form, "RFC1123")) {
    return now.toText("%d %b %Y %H:%M:%S GMT", out);
  }
  if (StrLib::equal(form, "ISO8601")) {
    return now.toText("%Y-%m-%dT%H:%M:%SZ", out);
  }
  return now.toText("%y %b %d  %H:%M:%SZ", out);
}

int DateTool::decode(const char* text, Date& date) {
  Reading r;
  if (text != nullptr) {
    readLabel(text, r);
  }
  date.init();
  date.set(r.year, r.month, r.day, r.hour, r.minute, r.second);
  return 1;
}

int DateTool::decodeMonth(const char* text) {
  char c[4] = "";
  for (int i = 0; i < 3 && StrLib::length(text) > i; i++) {
    c[i] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[i])));
  }
  switch (c[0]) {
    case 'F': return 2;
    case 'S': return 9;
    case 'O': return 10;
    case 'N': return 11;
    case 'D': return 12;
    case 'J':
      if (c[1] == 'A') {
        return 1;
      }
      return c[2] == 'N' ? 6 : c[2] == 'L' ? 7 : 0;
    case 'M': return c[2] == 'R' ? 3 : c[2] == 'Y' ? 5 : 0;
    case 'A': return c[2] == 'R' ? 4 : c[2] == 'G' ? 8 : 0;
    default: return 0;
  }
}

int DateTool::createLabel(const char* prefix, const Date& date, const Timezone& zone, int flags,
                          String& out) {
  out.clear();
  if (!date.isSet()) {
    return 0;
  }
  std::string text;
  if (StrLib::valid(prefix)) {
    text = std::string(prefix) + " ";
  }
  Date local = date;
  if (zone.isSet()) {
    local.changeTimezone(zone.getOffset(), zone.getName());
  }
  const bool has_time =
      !missing(local.getMonth()) && !missing(local.getDay()) && !missing(local.getHour());
  if (has_time) {
    text += timeOf(local, date, zone) + " ";
  }
  text += dayOf(local, (flags & 1) != 0);
  return out.copy(text.c_str());
}

int DateTool::createLabel(const char* prefix, const Date& date, const Timezone& zone, String& out) {
  return createLabel(prefix, date, zone, 0, out);
}

int DateTool::createLabel(const Date& date, const Timezone& zone, String& out) {
  return createLabel(nullptr, date, zone, 0, out);
}

int DateTool::createLabel(const Date& date, String& out) {
  return createLabel(date, Timezone(), out);
}

int DateTool::createLabel(const Date& date, const Timezone& zone, float hours, String& out) {
  Date moved = date;
  if (hours != Const::FMISS) {
    moved.addSeconds(hours * seconds_an_hour);
  }
  return createLabel(moved, zone, out);
}

int DateTool::createLabel(const Date& date, const Timezone& zone, const char* text,
                          const ForeTime& fore, String& out) {
  if (!fore.isSet()) {
    return createLabel(text, date, zone, out);
  }
  std::string prefix = StrLib::acopy(text);
  String time;
  fore.toTimeLabel(time);
  if (!prefix.empty() && time.valid()) {
    prefix += " ";
  }
  prefix += time.get();
  prefix += fore.getHours() > 0 ? " for" : " valid";
  Date moved = date;
  moved.addSeconds(fore.getHours() * seconds_an_hour);
  return createLabel(prefix.c_str(), moved, zone, out);
}

int DateTool::createLabel(const Date& date, const Timezone& zone, const char* text, float hours,
                          String& out) {
  const bool named = StrLib::valid(text);
  std::string prefix = named ? std::string(text) + " " : "";
  Date moved = date;
  if (hours == Const::FMISS) {
    prefix += named ? "data valid" : "Data valid";
  } else if (hours == 0.0F) {
    prefix += named ? "analysis valid" : "Analysis valid";
  } else {
    String time;
    createHourLabel(hours, 0, time);
    prefix += std::string(time.get()) + (hours > 0 ? " for" : " valid");
    moved.addSeconds(hours * seconds_an_hour);
  }
  return createLabel(prefix.c_str(), moved, zone, out);
}

int DateTool::createLabel(const Date& date, const char* text, float hours, String& out) {
  return createLabel(date, Timezone(), text, hours, out);
}

int DateTool::createHourLabel(float hours, int flag, String& out) {
  out.clear();
  if (hours == Const::FMISS || hours == 0.0F || !std::isfinite(hours)) {
    return 1;
  }
  const int whole = Tools::cut(static_cast<double>(hours));
  const bool exact = static_cast<float>(whole) == hours;
  const bool in_days = whole >= 60 || (flag != 0 && whole >= 12);
  char text[64];
  if (exact && in_days && whole % 24 == 0) {
    std::snprintf(text, sizeof(text), "%d day", whole / 24);
  } else if (exact && in_days && whole % 24 == 12) {
    std::snprintf(text, sizeof(text), "%d.5 day", whole / 24);
  } else {
    std::snprintf(text, sizeof(text), "%.0f hour", static_cast<double>(hours));
  }
  return out.copy(text);
}

const char* DateTool::getMonth(int i) {
  return nameOf(months, i - 1);
}

const char* DateTool::getMonthLower(int i) {
  return nameOf(months_lc, i - 1);
}

const char* DateTool::getMonthLong(int i) {
  return nameOf(months_long, i - 1);
}

const char* DateTool::getDayWeek(int i) {
  return nameOf(day_of_week, i);
}

void DateTool::print(long secs) {
  Date date;
  date.set(secs);
  date.print();
}

}  // namespace ZQV
