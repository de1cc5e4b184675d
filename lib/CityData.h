#pragma once

#include "Const.h"

namespace ZQV {

/** One station of a city file. Its texts are fixed fields, as CityHash stores records as blocks of
 * bytes. */
class CityData {
 public:
  /** Empty texts, priority 9, missing numbers, num 0. */
  void init() { *this = CityData(); }

  [[nodiscard]] const char* getName() const { return name; }
  [[nodiscard]] const char* getState() const { return state; }
  [[nodiscard]] const char* getRegion() const { return region; }
  [[nodiscard]] const char* getId() const { return id; }
  [[nodiscard]] int getPrior() const { return prior; }
  [[nodiscard]] float getLat() const { return lat; }
  [[nodiscard]] float getLon() const { return lon; }
  [[nodiscard]] float getElev() const { return el; }
  [[nodiscard]] long getWmo() const { return wmo; }
  /** Writes "%15s %2s %2s %9s %c %d %c %.3f %.3f %.0f %ld %d\n". */
  void print() const;

  char name[17] = "";   ///< up to 15 characters, without trailing blanks
  char state[3] = "";   ///< state or country code
  char region[3] = "";  ///< region code; "B_" marks a buoy
  char id[10] = "";     ///< identifier
  int prior = 9;        ///< a smaller value is a more important station
  char mos = '\0';      ///< flag characters of the file
  char ua = '\0';
  float lat = Const::FMISS;  ///< degrees
  float lon = Const::FMISS;
  float el = Const::FMISS;  ///< metres; Const::FMISS if the file has 9000 or more
  long wmo = Const::MISS;   ///< WMO block and station number
  int num = 0;              ///< extra number
};

}  // namespace ZQV
