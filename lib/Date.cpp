#include "Date.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>

#include "DateTool.h"
#include "StrLib.h"
#include "String.h"
#include "Tools.h"

namespace ZQV {

namespace {

constexpr long seconds_a_minute = 60;
constexpr long seconds_an_hour = 3600;
constexpr long seconds_a_day = 86400;
constexpr float second_limit = 59.99999F;
constexpr size_t max_zone = 3;

bool missing(int v) {
  return v == Const::MISS;
}

bool within(int v, int low, int high) {
  return missing(v) || (v >= low && v <= high);
}

const std::array<int, 13>& daysBefore(int y) {
  return Date::isYearLeap(y) ? DateVal::num_day_leap : DateVal::num_day;
}

std::string number(const char* width_form, int v) {
  char text[24];
  switch (*width_form) {
    case '2': std::snprintf(text, sizeof(text), "%2d", v); break;
    case '3': std::snprintf(text, sizeof(text), "%3d", v); break;
    case '4': std::snprintf(text, sizeof(text), "%4d", v); break;
    case '0': std::snprintf(text, sizeof(text), "%2.2d", v); break;
    default: std::snprintf(text, sizeof(text), "%d", v); break;
  }
  return text;
}

/** The field by a width form of number(), or what stands for it when missing. */
std::string field(const char* width_form, int v, const char* absent) {
  return missing(v) ? std::string(absent) : number(width_form, v);
}

std::string secondsToken(float sec) {
  if (sec == Const::FMISS) {
    return "XX.XXXX";
  }
  char text[24];
  if (sec < 10) {
    std::snprintf(text, sizeof(text), "0%6.4f", static_cast<double>(sec));
  } else {
    // From ten up the seconds go through an integer format of width 7: deliberate, though no time
    // reads so.
    std::snprintf(text, sizeof(text), "%7.4d", static_cast<int>(sec));
  }
  return text;
}

}  // namespace

void Date::compute() {
  secs = computeSecs();
  jday = wday = Const::MISS;
  std::tm parts{};
  const std::time_t at = secs;
  if (isSet() && ::gmtime_r(&at, &parts) != nullptr) {
    jday = parts.tm_yday + 1;
    wday = parts.tm_wday;
  }
}

void Date::breakDown(long seconds) {
  std::tm parts{};
  const std::time_t at = seconds;
  if (::gmtime_r(&at, &parts) == nullptr) {
    return;
  }
  secs = seconds;
  year = parts.tm_year + 1900;
  month = parts.tm_mon + 1;
  day = parts.tm_mday;
  hour = parts.tm_hour;
  min = parts.tm_min;
  sec = static_cast<float>(parts.tm_sec);
  jday = parts.tm_yday + 1;
  wday = parts.tm_wday;
}

int Date::set() {
  return set(getCurrentSeconds());
}

int Date::set(long seconds) {
  init();
  breakDown(seconds);
  return isSet() ? 1 : 0;
}

int Date::set(const char* text) {
  init();
  if (StrLib::equal(text, "cu", 2)) {
    return set();
  }
  if (text != nullptr) {
    if (*text == '#') {
      text++;
    }
    std::sscanf(text, "%4d%2d%2d%2d%2d%f", &year, &month, &day, &hour, &min, &sec);
  }
  validate();
  compute();
  return 1;
}

int Date::set(int y, int m, int d, int h, int n, float s) {
  return set(DateVal(y, m, d, h, n, s));
}

int Date::set(const DateVal& val) {
  DateVal::operator=(val);
  if (!missing(year) && !missing(day) && missing(month)) {
    setJulian(year, day, month, day);
  }
  validate();
  compute();
  return 1;
}

int Date::set(const DateVal& val, int zone_off, const char* zone_name) {
  constexpr size_t zone_size = 4;
  off = zone_off;
  zone = StrLib::acopy(zone_name).substr(0, zone_size);
  return set(val);
}

int Date::setTime(int h, int n, float s) {
  init();
  hour = h;
  min = n;
  sec = s;
  compute();
  return 1;
}

int Date::setTime(float seconds) {
  init();
  if (std::isfinite(seconds)) {
    const int whole = Tools::cut(static_cast<double>(seconds));
    hour = whole / static_cast<int>(seconds_an_hour);
    min = whole % static_cast<int>(seconds_an_hour) / static_cast<int>(seconds_a_minute);
    sec = seconds - static_cast<float>(whole - whole % static_cast<int>(seconds_a_minute));
  }
  compute();
  return 1;
}

int Date::setYear(int y) {
  if (!missing(y) && y < 0) {
    return 0;
  }
  year = y;
  if (!missing(y)) {
    // Both tests look at the value that was given, so that years below 50 gain twice: deliberate.
    if (y < 50) {
      year += 2000;
    }
    if (y < 200) {
      year += 1900;
    }
  }
  compute();
  return 1;
}

int Date::setMonth(int m) {
  if (!within(m, 1, 12)) {
    return 0;
  }
  month = m;
  compute();
  return 1;
}

int Date::setDay(int d) {
  if (!within(d, 1, 31)) {
    return 0;
  }
  day = d;
  compute();
  return 1;
}

int Date::setHour(int h) {
  if (!within(h, 0, 23)) {
    return 0;
  }
  hour = h;
  compute();
  return 1;
}

int Date::setMinute(int n) {
  if (!within(n, 0, 59)) {
    return 0;
  }
  min = n;
  compute();
  return 1;
}

int Date::setSecond(float s) {
  if (s != Const::FMISS && !(s >= 0 && s <= second_limit)) {
    return 0;
  }
  sec = s;
  compute();
  return 1;
}

int Date::setFractionalSecond(float f) {
  if (!(f >= 0 && f < 1) || sec == Const::FMISS) {
    return 0;
  }
  sec += f;
  compute();
  return 1;
}

int Date::getYear00() const {
  return missing(year) ? Const::MISS : year % 100;
}

long Date::getCurrentSeconds() {
  return static_cast<long>(std::time(nullptr));
}

int Date::getDays() const {
  if (!isSet()) {
    return Const::MISS;
  }
  const long days = secs / seconds_a_day - (secs % seconds_a_day < 0 ? 1 : 0);
  return Tools::cut(static_cast<double>(days));
}

int Date::setDays(int n) {
  return set(n * seconds_a_day);
}

bool Date::isYearLeap(int y) {
  return !missing(y) && y % 4 == 0 && (y % 100 != 0 || y % 400 == 0);
}

int Date::setJulian(int n) {
  if (missing(year) || setJulian(year, n, month, day) == 0) {
    return 0;
  }
  compute();
  return 1;
}

int Date::setJulian(int y, int n, int& m, int& d) {
  const auto& before = daysBefore(y);
  if (n < 1 || n > before.back()) {
    return 0;
  }
  const auto next = std::lower_bound(before.begin(), before.end(), n);
  m = static_cast<int>(next - before.begin());
  d = n - *(next - 1);
  return 1;
}

int Date::getJulian(int y, int m, int d) {
  return m < 1 || m > 12 ? Const::MISS : daysBefore(y)[static_cast<size_t>(m - 1)] + d;
}

int Date::addYears(int n) {
  if (missing(year)) {
    return 0;
  }
  year = Tools::cut(static_cast<double>(year) + n);
  compute();
  return 1;
}

int Date::addMonths(int n) {
  if (missing(month)) {
    return 0;
  }
  const long months = static_cast<long>(month) - 1 + n;
  const long years = months / 12 - (months % 12 < 0 ? 1 : 0);
  month = static_cast<int>(months - years * 12) + 1;
  if (!missing(year)) {
    year += static_cast<int>(years);
  }
  compute();
  return 1;
}

/** Makes the fields missing again that were so before. */
void Date::restore(const Date& before) {
  if (before.sec == Const::FMISS) {
    sec = Const::FMISS;
  }
  if (missing(before.min)) {
    min = Const::MISS;
  }
  if (missing(before.hour)) {
    hour = Const::MISS;
  }
  if (missing(before.day)) {
    day = Const::MISS;
  }
}

int Date::shift(long seconds) {
  if (!isSet()) {
    return 0;
  }
  const Date before = *this;
  breakDown(secs + seconds);
  restore(before);
  return 1;
}

int Date::addDays(int n) {
  return shift(n * seconds_a_day);
}

int Date::addHours(int n) {
  return shift(n * seconds_an_hour);
}

int Date::addMinutes(int n) {
  return shift(n * seconds_a_minute);
}

int Date::addSeconds(float n) {
  return shift(Tools::cut(static_cast<double>(n)));
}

int Date::changeTimezone(int zone_off, const char* name) {
  const int done = shift(static_cast<long>(zone_off) - off);
  off = zone_off;
  zone = StrLib::acopy(name).substr(0, max_zone);
  return done;
}

int Date::adjustHour(int h) {
  if (!within(h, 0, 23) || missing(h)) {
    return 0;
  }
  if (!missing(hour)) {
    if (h > hour + 12) {
      addDays(-1);
    } else if (h < hour - 12) {
      addDays(1);
    }
  }
  return setHour(h);
}

int Date::adjustHour(int d, int h) {
  constexpr int near = 5;
  if (!within(d, 1, 31) || missing(d) || !within(h, 0, 23) || missing(h)) {
    return 0;
  }
  if (missing(day)) {
    setDay(d);
  } else if (d < day - near) {
    addMonths(1);
    setDay(d);
  } else if (h != hour && d > day + near) {
    addMonths(-1);
    setDay(d);
  } else {
    addDays(d - day);
  }
  return setHour(h);
}

int Date::adjustHour(int m, int d, int h) {
  return setHour(h) & setDay(d) & setMonth(m);
}

int Date::adjustMinute(int h, int n) {
  return adjustHour(h) & setMinute(n);
}

int Date::adjustMinute(int d, int h, int n) {
  return adjustHour(d, h) & setMinute(n);
}

int Date::adjustMinute(int m, int d, int h, int n) {
  return adjustHour(m, d, h) & setMinute(n);
}

int Date::adjustSecond(int h, int n, float s) {
  return adjustMinute(h, n) & setSecond(s);
}

int Date::fix() {
  if (sec == Const::FMISS) {
    sec = 0;
  }
  if (missing(min)) {
    min = 0;
  }
  if (missing(day)) {
    day = 1;
  }
  if (missing(month)) {
    month = 1;
  }
  if (missing(year)) {
    year = 1970;
  }
  compute();
  return 1;
}

void Date::print() const {
  const auto write = [](int v, const char* form, const char* absent) {
    if (missing(v)) {
      std::printf("%s", absent);
    } else if (*form == '4') {
      std::printf("%4.4d/", v);
    } else {
      std::printf("%2.2d%s", v, form);
    }
  };
  write(year, "4", "MMMM/");
  write(month, "/", "MM/");
  write(day, " ", "MM ");
  write(hour, ":", "MM:");
  write(min, ":", "MM:");
  if (sec == Const::FMISS) {
    std::printf("MM\n");
  } else if (sec < 10) {
    std::printf("0%5.3f\n", static_cast<double>(sec));
  } else {
    std::printf("%6.3f\n", static_cast<double>(sec));
  }
}

void Date::printSeconds() const {
  std::printf("%ld\n", secs);
}

int Date::toString(String& out) const {
  return toText("%Y%m%d%H%M%s", out);
}

int Date::toText(String& out) const {
  const bool no_sec = sec == Const::FMISS;
  if (missing(hour) && missing(min) && no_sec) {
    return toText("%e %b %Y", out);
  }
  if (missing(min) && no_sec) {
    return toText("%H%Z %e %b %Y", out);
  }
  return toText(no_sec ? "%H:%M%Z %e %b %Y" : "%H:%M:%S%Z %e %b %Y", out);
}

int Date::toText(const char* format, String& out) const {
  if (StrLib::equal(format, "RFC1123")) {
    format = "%d %b %Y %H:%M:%S %Z";
  } else if (StrLib::equal(format, "ISO8601")) {
    format = "%Y-%m-%dT%H:%M:%S%Z";
  }
  std::string text;
  for (const char* p = format; p != nullptr && *p != '\0'; p++) {
    if (*p != '%') {
      text += *p;
      continue;
    }
    p++;
    if (*p == '\0') {
      break;
    }
    switch (*p) {
      case 'a': text += missing(wday) ? "XXX" : DateTool::getDayWeek(wday); break;
      case 'b': text += missing(month) ? "XXX" : DateTool::getMonth(month); break;
      case 'Y': text += field("4", year, "XXXX"); break;
      case 'y': text += field("0", getYear00(), "XX"); break;
      case 'm': text += field("0", month, "XX"); break;
      case 'd': text += field("0", day, "XX"); break;
      case 'e': text += field("2", day, "XX"); break;
      case 'j': text += field("3", jday, "XXX"); break;
      case 'H': text += field("0", hour, "XX"); break;
      case 'l': text += missing(hour) ? "XX" : number("0", hour % 12 == 0 ? 12 : hour % 12); break;
      case 'p':
        if (missing(hour)) {
          text += "XX";
        } else {
          text += hour < 12 ? "AM" : "PM";
        }
        break;
      case 'M': text += field("0", min, "XX"); break;
      case 'S':
        text +=
            sec == Const::FMISS ? "XX" : number("0", Tools::cut(static_cast<double>(sec) + 0.5));
        break;
      case 's': text += secondsToken(sec); break;
      case 'u': text += field("", wday, "X"); break;
      case 'Z': text += zone; break;
      default: text += *p; break;  // "%" ahead of another character is dropped
    }
  }
  return out.copy(text.c_str());
}

}  // namespace ZQV
