#pragma once

#include "Const.h"
#include "Date.h"

namespace ZQV {

class EarthPoint;

/** Precipitation of an echo region. */
struct MdrPrecip {
  /** The mark of the intensity in small letters; absent for one that isn't known. */
  [[nodiscard]] const char* getMark() const;

  int cover = 0;      ///< tenths of the region
  char type[8] = "";  ///< letters: R, RW, TRW, S ...
  int intens = 0;     ///< 1 "-", 2 none, 3 "+", 4 "++", 5 "X", 6 "XX", 9 "U", 0 unknown
};

/** A corner of an echo region as seen from the radar, or how wide it is. */
struct MdrLoc {
  int dir = Const::MISS;  ///< degrees; Const::MISS if this is a width or a diameter
  int rad = Const::MISS;  ///< nautical miles
};

/** Movement of an echo region. */
struct MdrMove {
  char type = ' ';        ///< 'A' of the area, 'C' of its cells, 'L' of the line, ' ' for none
  int dir = Const::MISS;  ///< degrees
  int spd = Const::MISS;  ///< knots
};

/** Highest top of an echo region. */
struct MdrTops {
  int hgt = Const::MISS;  ///< hundreds of feet
  int dir = Const::MISS;  ///< degrees from the radar; Const::MISS if the place isn't told
  int rad = Const::MISS;  ///< nautical miles
};

/** One echo region of a report. */
struct MdrRegion {
  static constexpr int max_prec = 3;
  static constexpr int max_loc = 5;
  static constexpr int max_move = 3;

  char config[10] = "";  ///< shape: "AREA", "CELL", "LINE" and the like
  MdrPrecip prec[max_prec];
  int num_prec = 0;
  char trend[4] = "";  ///< of the intensity
  MdrLoc loc[max_loc];
  int num_loc = 0;
  MdrMove move[max_move];
  int num_move = 0;
  MdrTops tops;
  char rem[20] = "";
};

/** One report as it stands in a bulletin. */
struct MdrRawData {
  char id[10] = "";
  char data[1000] = "";  ///< its lines, with line feeds between
  int len = 0;
};

/** One radar's decoded report. Accessors with an index give Const::MISS, 0, ' ' or an absent text
 * where there is no such region or entry. */
class MdrData {
 public:
  enum Status { NOT_AVAILABLE = 0, NO_ECHO = 1, MAINTENANCE = 2, VALID = 3 };
  static constexpr int max_reg = 10;
  static constexpr int size = 26;  ///< cells of the echo box each way

  void init() { *this = MdrData(); }

  [[nodiscard]] const char* getId() const { return id; }
  [[nodiscard]] const Date& getDate() const { return date; }
  [[nodiscard]] int getStatus() const { return status; }
  [[nodiscard]] int getNumReg() const { return num_reg; }
  [[nodiscard]] int getNumPrecip(int r) const;
  [[nodiscard]] int getPrecipCover(int r, int i) const;
  [[nodiscard]] const char* getPrecipType(int r, int i) const;
  [[nodiscard]] int getPrecipIntensity(int r, int i) const;
  [[nodiscard]] int getNumLoc(int r) const;
  [[nodiscard]] int getLocDir(int r, int i) const;
  [[nodiscard]] int getLocRad(int r, int i) const;
  [[nodiscard]] int getNumMove(int r) const;
  [[nodiscard]] char getMoveType(int r, int i) const;
  [[nodiscard]] int getMoveDir(int r, int i) const;
  [[nodiscard]] int getMoveSpd(int r, int i) const;
  /** The region has a top; its place need not be known. */
  [[nodiscard]] bool validTops(int r) const { return getTopsHgt(r) != Const::MISS; }
  [[nodiscard]] int getTopsHgt(int r) const;
  [[nodiscard]] int getTopsDir(int r) const;
  [[nodiscard]] int getTopsRad(int r) const;

  /** The place in a direction and distance (nautical miles) from the site. @return 1; 0 with the
   * point unset if any of them is missing */
  int locate(int dir, int rad, EarthPoint& point) const;
  /** Mean position of the corners of a region. @return 1; 0 with the point unset for a region that
   * isn't there or has none, and if the site's position isn't known */
  int getRegLoc(int r, EarthPoint& point) const;
  /** Position of a region's top. @return as getRegLoc */
  int getTopsLoc(int r, EarthPoint& point) const;

  /** Writes all but the echoes. */
  void print() const;
  /** Writes the echo box, a line for each y. */
  void printEchoes() const;

  char id[5] = "";
  char region[11] = "";  ///< reserved
  float lat = Const::FMISS;
  float lon = Const::FMISS;
  float elev = Const::FMISS;  ///< metres
  Date date;
  int status = NOT_AVAILABLE;
  MdrRegion reg[max_reg];
  int num_reg = 0;
  unsigned char echo[size][size] = {};  ///< levels by [x][y]; the site is cell (12, 12)

 private:
  [[nodiscard]] const MdrRegion* find(int r) const {
    return r >= 0 && r < num_reg ? &reg[r] : nullptr;
  }
  [[nodiscard]] const MdrPrecip* findPrecip(int r, int i) const;
  [[nodiscard]] const MdrLoc* findLoc(int r, int i) const;
  [[nodiscard]] const MdrMove* findMove(int r, int i) const;
};

}  // namespace ZQV
