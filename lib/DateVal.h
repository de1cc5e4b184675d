#pragma once

#include <array>

#include "Const.h"

namespace ZQV {

/** Broken-down time, UTC, in which any field may be Const::MISS: a date holds only the precision
 * that its source had. */
class DateVal {
 public:
  static constexpr std::array<int, 13> num_day = {0,   31,  59,  90,  120, 151, 181,
                                                  212, 243, 273, 304, 334, 365};
  static constexpr std::array<int, 13> num_day_leap = {0,   31,  60,  91,  121, 152, 182,
                                                       213, 244, 274, 305, 335, 366};

  DateVal() = default;
  DateVal(int y, int m, int d, int h, int n, float s)
      : year(y), month(m), day(d), hour(h), min(n), sec(s) {}

  /** All fields missing. */
  void init() { *this = DateVal(); }
  void set(int y, int m, int d, int h, int n, float s) { *this = DateVal(y, m, d, h, n, s); }
  /** Corrects present fields that are out of range (year below 0: 1980, below 50: plus 2000, below
   * 200: plus 1900; month and day: 1; time: 0). @return 1; 0 if all fields are missing */
  int validate();
  /** Seconds since 1970 of the fields that are there, after validate(); leap days by a rule that
   * holds from 1901 to 2099. @return Const::MISS if all are missing */
  long computeSecs();
  /** Writes the fields in order, "M" for a missing one. */
  void print() const;

  [[nodiscard]] int getYear() const { return year; }
  [[nodiscard]] int getMonth() const { return month; }
  [[nodiscard]] int getDay() const { return day; }
  [[nodiscard]] int getHour() const { return hour; }
  [[nodiscard]] int getMinute() const { return min; }
  [[nodiscard]] float getSecond() const { return sec; }
  void setYear(int y) { year = y; }
  void setMonth(int m) { month = m; }
  void setDay(int d) { day = d; }
  void setHour(int h) { hour = h; }
  void setMinute(int n) { min = n; }
  void setSecond(float s) { sec = s; }

 protected:
  int year = Const::MISS;
  int month = Const::MISS;
  int day = Const::MISS;
  int hour = Const::MISS;
  int min = Const::MISS;
  float sec = Const::FMISS;
};

}  // namespace ZQV
