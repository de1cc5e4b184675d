#pragma once

#include <cstring>

#include "Const.h"
#include "Date.h"

namespace ZQV {

/** Centroid of a storm. */
struct RcmStorm {
  char id[4] = "";
  float x = Const::FMISS;
  float y = Const::FMISS;
  int hgt = Const::MISS;  ///< of its top, hundreds of feet
  int dir = Const::MISS;  ///< where it comes from, degrees
  int spd = Const::MISS;  ///< knots
  int hail = -1;          ///< -1 unknown, 0 none, 1 probable, 2 hail
};

/** A tornado vortex or a mesocyclone. */
struct RcmVortex {
  char id[4] = "";
  float x = Const::FMISS;
  float y = Const::FMISS;
};

/** Wind aloft. */
struct RcmWind {
  int hgt = Const::MISS;  ///< hundreds of feet
  int dir = Const::MISS;  ///< degrees
  int spd = Const::MISS;  ///< knots
  int rms = Const::MISS;  ///< error that it may have, knots
};

/** One message as it stands in a bulletin. */
struct RcmRawData {
  char data[5000] = "";  ///< its lines, with line feeds between; may hold NUL characters
  int len = 0;
  char id[10] = "";
};

/** One radar's decoded coded message. Accessors with an index give Const::MISS or an absent text
 * where there is no such entry. */
class RcmData {
 public:
  enum Mode { PRECIP = 1, CLEAR_AIR = 2 };
  enum Status { NOT_AVAILABLE = 0, NO_ECHO = 1, MAINTENANCE = 2, VALID = 3 };
  /** What the positions are: x column and y row of a cell of the site's box, or x latitude and y
   * longitude in degrees. */
  enum LocType { CELL = 0, EARTH = 1 };
  static constexpr int size = 104;  ///< cells of the echo box each way
  static constexpr int max_storm = 40;
  static constexpr int max_tvs = 10;
  static constexpr int max_meso = 20;
  static constexpr int max_vad = 20;
  static constexpr unsigned char no_echo = 255;  ///< a cell that wasn't coded

  RcmData() { std::memset(echo, no_echo, sizeof(echo)); }
  void init() { *this = RcmData(); }

  void setLocType(int t) { loc_type = t; }
  [[nodiscard]] const char* getId() const { return id; }
  [[nodiscard]] float getLat() const { return lat; }
  [[nodiscard]] float getLon() const { return lon; }
  [[nodiscard]] const Date& getDate() const { return date; }
  [[nodiscard]] int getMode() const { return mode; }
  [[nodiscard]] int getStatus() const { return status; }
  [[nodiscard]] int getLocType() const { return loc_type; }
  /** Hundreds of feet; Const::MISS if none. */
  [[nodiscard]] int getMaxTop() const { return maxt; }
  [[nodiscard]] float getMaxTopX() const { return maxt_x; }
  [[nodiscard]] float getMaxTopY() const { return maxt_y; }
  [[nodiscard]] int getNumStorm() const { return num_storm; }
  [[nodiscard]] const char* getStormId(int i) const;
  [[nodiscard]] float getStormX(int i) const;
  [[nodiscard]] float getStormY(int i) const;
  [[nodiscard]] int getStormHgt(int i) const;
  [[nodiscard]] int getStormDir(int i) const;
  [[nodiscard]] int getStormSpd(int i) const;
  [[nodiscard]] int getStormHail(int i) const;
  [[nodiscard]] int getNumTvs() const { return num_tvs; }
  [[nodiscard]] float getTvsX(int i) const;
  [[nodiscard]] float getTvsY(int i) const;
  [[nodiscard]] int getNumMeso() const { return num_meso; }
  [[nodiscard]] float getMesoX(int i) const;
  [[nodiscard]] float getMesoY(int i) const;

  /** The storm of an identifier, added if there is none. @return absent if there is no room */
  RcmStorm* takeStorm(const char* storm_id);

  /** Writes all but the echoes. */
  void print() const;
  /** Writes one storm, nothing out of range. */
  void printStorm(int i) const;
  /** Writes the echo box, a line for each y, with a blank for a cell that wasn't coded. */
  void printEchoes() const;

  char id[5] = "";
  int num = Const::MISS;  ///< of the site
  float lat = Const::FMISS;
  float lon = Const::FMISS;
  float elev = Const::FMISS;  ///< metres
  Date date;
  int mode = 0;
  int status = NOT_AVAILABLE;
  int loc_type = CELL;
  unsigned char echo[size][size];  ///< levels by [x][y]; the site is cell (48, 48)
  int maxt = Const::MISS;
  float maxt_x = Const::FMISS;
  float maxt_y = Const::FMISS;
  RcmStorm storm[max_storm];
  int num_storm = 0;
  RcmVortex tvs[max_tvs];
  int num_tvs = 0;
  RcmVortex meso[max_meso];
  int num_meso = 0;
  RcmWind vad[max_vad];
  int num_vad = 0;
};

}  // namespace ZQV
