#pragma once

#include <string>

#include "DateVal.h"

namespace ZQV {

class String;

/** A date and time with derived fields and arithmetic that keeps missing fields missing. Copied as
 * a plain value. */
class Date : public DateVal {
 public:
  /** All missing, zone "Z". */
  Date() = default;

  void init() { *this = Date(); }
  /** Seconds are known. */
  [[nodiscard]] bool isSet() const { return secs != Const::MISS; }
  /** The present moment. @return 1 */
  int set();
  /** Every field from seconds since 1970. @return 1; 0 out of range of the calendar */
  int set(long seconds);
  /** "#YYYYMMDDHHMMSS" or without "#", as far as it goes; "cu..." the present. @return 1 */
  int set(const char* text);
  /** Takes the fields; a year and a day without month mean the day of the year. @return 1 */
  int set(int y, int m, int d, int h, int n, float s);
  int set(const DateVal& val);
  int set(const DateVal& val, int zone_off, const char* zone_name);
  /** Only the time of day. @return 1 */
  int setTime(int h, int n, float s);
  /** From the seconds of a day. @return 1 */
  int setTime(float seconds);

  /** Each refuses a value out of range (0; Const::MISS is accepted), else recomputes. A year below
   * 50 becomes 3900 + y and 50 to 199 become 1900 + y: deliberate. @return 1 or 0 */
  int setYear(int y);
  int setMonth(int m);
  int setDay(int d);
  int setHour(int h);
  int setMinute(int n);
  int setSecond(float s);
  /** Adds f, from 0 to below 1, to the seconds. @return 1 or 0 */
  int setFractionalSecond(float f);

  /** Year modulo 100, Const::MISS if missing. */
  [[nodiscard]] int getYear00() const;
  [[nodiscard]] long getSeconds() const { return secs; }
  [[nodiscard]] int getJulian() const { return jday; }
  [[nodiscard]] int getDayOfWeek() const { return wday; }
  [[nodiscard]] int getOffset() const { return off; }
  [[nodiscard]] const char* getZone() const { return zone.c_str(); }
  static long getCurrentSeconds();
  /** Days since 1 January 1970, counted from 0; Const::MISS if not set. */
  [[nodiscard]] int getDays() const;
  int setDays(int n);
  [[nodiscard]] bool isLeap() const { return isYearLeap(year); }
  static bool isYearLeap(int y);
  /** Month and day of day n of the year. @return 1; 0 out of range */
  int setJulian(int n);
  static int setJulian(int y, int n, int& m, int& d);
  /** Day of the year, Const::MISS for a bad month. */
  static int getJulian(int y, int m, int d);

  /** On the fields; the day isn't clamped to the month. @return 1; 0 if the field is missing */
  int addYears(int n);
  int addMonths(int n);
  /** On the seconds; fields that were missing stay missing. @return 1; 0 if not set */
  int addDays(int n);
  int addHours(int n);
  int addMinutes(int n);
  /** Truncates to whole seconds. */
  int addSeconds(float n);
  /** Moves the fields to another zone. @param zone_off  seconds from UTC. @return 1; 0 if not set
   */
  int changeTimezone(int zone_off, const char* name);

  /** Takes a new hour near the old time: more than 12 above goes a day back, below a day forward.
   * @return 1 */
  int adjustHour(int h);
  /** Places a day of the month near the present date. */
  int adjustHour(int d, int h);
  /** Sets hour, day and month. */
  int adjustHour(int m, int d, int h);
  int adjustMinute(int h, int n);
  int adjustMinute(int d, int h, int n);
  int adjustMinute(int m, int d, int h, int n);
  int adjustSecond(int h, int n, float s);
  /** Missing seconds and minutes become 0, day and month 1, year 1970; the hour stays. @return 1 */
  int fix();

  /** "YYYY/MM/DD HH:NN:SS.sss\n", with M for what is missing. */
  void print() const;
  void printSeconds() const;
  int toString(String& out) const;
  /** By precision: "HH:MM:SSZ DD MON YYYY" or less. @return 1 */
  int toText(String& out) const;
  /** Format with tokens %% %a %b %Y %y %m %d %e %j %H %l %p %M %S %s %u %Z; "RFC1123" and "ISO8601"
   * are names of formats. @return 1 */
  int toText(const char* format, String& out) const;

 private:
  void compute();
  void breakDown(long seconds);
  void restore(const Date& before);
  int shift(long seconds);

  int wday = Const::MISS;
  int jday = Const::MISS;
  long secs = Const::MISS;
  int off = 0;
  std::string zone = "Z";
};

}  // namespace ZQV
