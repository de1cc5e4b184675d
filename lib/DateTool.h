#pragma once

namespace ZQV {

class Date;
class ForeTime;
class String;
class Timezone;

/** Labels and parsers of dates. Static operations only. */
class DateTool {
 public:
  /** "#YYYYMMDDHHMM" gives the seconds of that date, any other text its number. */
  static long getSeconds(const char* text);
  /** "h" or "h:m" in minutes, the minutes counting away from 0; anything else 0. */
  static int getMinutes(const char* text);
  /** The present moment as "%y %b %d  %H:%M:%SZ". @return 1 */
  static int getCurrent(String& out);
  /** The same in form "RFC1123" or "ISO8601", otherwise as before. @return 1 */
  static int getCurrent(const char* form, String& out);

  /** Reads a label back into a date. @return 1 always */
  static int decode(const char* text, Date& date);
  /** Month of a name by its telling letters, 0 if it is none. */
  static int decodeMonth(const char* text);

  /** Text for plot labels: prefix and a blank, the time as far as it is known, the date.
   *  @param flags  bit 0 adds the day of the week. @return 1; 0 with an empty text for an unset
   * date */
  static int createLabel(const char* prefix, const Date& date, const Timezone& zone, int flags,
                         String& out);
  static int createLabel(const char* prefix, const Date& date, const Timezone& zone, String& out);
  static int createLabel(const Date& date, const Timezone& zone, String& out);
  static int createLabel(const Date& date, String& out);
  /** Adds hours, if not missing, first. */
  static int createLabel(const Date& date, const Timezone& zone, float hours, String& out);
  /** The text and the time label of the forecast, " for " or " valid ", and the date moved by it.
   */
  static int createLabel(const Date& date, const Timezone& zone, const char* text,
                         const ForeTime& fore, String& out);
  /** The same with hours: none are an "analysis", missing ones "data", with a capital where no text
   * goes ahead. */
  static int createLabel(const Date& date, const Timezone& zone, const char* text, float hours,
                         String& out);
  static int createLabel(const Date& date, const char* text, float hours, String& out);
  /** "%.0f hour", with flag or from 60 hours up in days and half days; empty for 0 and missing. */
  static int createHourLabel(float hours, int flag, String& out);

  /** Names by number, months from 1, days of the week from 0 (Sunday); empty out of range. */
  static const char* getMonth(int i);
  static const char* getMonthLower(int i);
  static const char* getMonthLong(int i);
  static const char* getDayWeek(int i);
  /** Date::print of that moment. */
  static void print(long secs);
};

}  // namespace ZQV
