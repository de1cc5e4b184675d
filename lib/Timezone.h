#pragma once

#include <string>

#include "Const.h"

namespace ZQV {

/** Display zone of dates, from a text "[+-]NAME:HOURS". */
class Timezone {
 public:
  Timezone() = default;
  explicit Timezone(const char* text) { set(text); }

  void init() { *this = Timezone(); }
  /** A leading "+" or "-" asks for a 12-hour clock; the name is up to four characters. @return 1; 0
   * for an empty text, which clears the zone */
  int set(const char* text);
  [[nodiscard]] bool isSet() const { return offset != Const::MISS; }
  /** 0 24-hour clock; 1 and -1 12-hour clock, -1 with the UTC time behind it. */
  [[nodiscard]] int getPM() const { return pm; }
  /** Seconds from UTC, Const::MISS if unset. */
  [[nodiscard]] int getOffset() const { return offset; }
  [[nodiscard]] const char* getName() const { return name.c_str(); }
  /** Writes "%s %d %d\n". */
  void print() const;

 private:
  std::string name;
  int pm = 0;
  int offset = Const::MISS;
};

}  // namespace ZQV
