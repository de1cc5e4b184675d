#include "DateVal.h"

#include <cstdio>

namespace ZQV {

namespace {

constexpr long seconds_a_minute = 60;
constexpr long seconds_an_hour = 3600;
constexpr long seconds_a_day = 86400;
constexpr long seconds_a_year = 365 * seconds_a_day;

bool missing(int v) {
  return v == Const::MISS;
}

/** A present value outside its range becomes another. */
void correct(int& v, int low, int high, int other) {
  if (!missing(v) && (v < low || v > high)) {
    v = other;
  }
}

void printField(int v, const char* end) {
  if (missing(v)) {
    std::printf("M%s", end);
  } else {
    std::printf("%d%s", v, end);
  }
}

}  // namespace

int DateVal::validate() {
  if (missing(year) && missing(month) && missing(day) && missing(hour) && missing(min) &&
      sec == Const::FMISS) {
    return 0;
  }
  if (!missing(year)) {
    if (year < 0) {
      year = 1980;
    } else if (year < 50) {
      year += 2000;
    } else if (year < 200) {
      year += 1900;
    }
  }
  correct(month, 1, 12, 1);
  correct(day, 1, 31, 1);
  correct(hour, 0, 23, 0);
  correct(min, 0, 60, 0);
  if (sec != Const::FMISS && !(sec >= 0 && sec < 60)) {
    sec = 0;
  }
  return 1;
}

long DateVal::computeSecs() {
  if (validate() == 0) {
    return Const::MISS;
  }
  long total = 0;
  if (sec != Const::FMISS) {
    total += static_cast<long>(sec);
  }
  if (!missing(min)) {
    total += min * seconds_a_minute;
  }
  if (!missing(hour)) {
    total += hour * seconds_an_hour;
  }
  if (!missing(day)) {
    total += (day - 1) * seconds_a_day;
  }
  if (!missing(month)) {
    total += num_day[static_cast<size_t>(month - 1)] * seconds_a_day;
  }
  if (!missing(year)) {
    // A leap year every fourth year: the century rule is left out on purpose, and holds until 2099.
    const long since_1900 = static_cast<long>(year) - 1900;
    long leap_days = since_1900 / 4 - 17;
    if (since_1900 % 4 == 0 && (missing(month) || month < 3)) {
      leap_days--;
    }
    total += (static_cast<long>(year) - 1970) * seconds_a_year + leap_days * seconds_a_day;
  }
  return total;
}

void DateVal::print() const {
  printField(year, "/");
  printField(month, "/");
  printField(day, " ");
  printField(hour, ":");
  printField(min, ":");
  if (sec == Const::FMISS) {
    std::printf("M\n");
  } else {
    std::printf("%.3f\n", static_cast<double>(sec));
  }
}

}  // namespace ZQV
