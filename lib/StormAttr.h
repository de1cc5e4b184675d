#pragma once

#include "Const.h"

namespace ZQV {

/** One storm of a storm attribute table, decoded from a line of the table. The form of the table is
 * known from its head line and is kept from line to line. Heights and sizes are in the units of
 * the table; a count, probability or height that the line doesn't have is 0. */
class StormAttr {
 public:
  /** Forgets the storm; the form of the table stays. */
  void init();
  /** Takes the form from a head line; any other line leaves it. @return 1 */
  int checkType(const char* line);
  /** Takes the storm of a line. @return 1; 0 if it couldn't be read as one, and it then isn't
   * valid: so does a head line, and every line as long as there is no table */
  int decode(const char* line);
  [[nodiscard]] bool isValid() const { return ang != Const::FMISS; }

  /** Form of the table: 0 none, 1 that with a column VLOW, 2 that with a column VIL. */
  [[nodiscard]] int getType() const { return type; }
  [[nodiscard]] const char* getId() const { return id; }
  /** Azimuth from the radar, degrees; Const::FMISS if none. */
  [[nodiscard]] float getAng() const { return ang; }
  /** Range from the radar, nautical miles; Const::FMISS if none. */
  [[nodiscard]] float getRad() const { return rad; }
  /** Tornado vortices: a count, or a flag. */
  [[nodiscard]] int getTvs() const { return tvs; }
  /** Mesocyclone: strength, or a flag. */
  [[nodiscard]] int getMeso() const { return meso; }
  /** Probability of hail, percent. */
  [[nodiscard]] int getHail() const { return hail; }
  /** Probability of severe hail, percent. */
  [[nodiscard]] int getSHail() const { return shail; }
  /** Largest hail, inches. */
  [[nodiscard]] float getHSize() const { return hsize; }
  /** Vertically integrated liquid, kg/m^2. */
  [[nodiscard]] float getVil() const { return vil; }
  /** Largest reflectivity, dBZ, and its height. */
  [[nodiscard]] float getMaxDbz() const { return max_dbz; }
  [[nodiscard]] float getMaxDbzZ() const { return max_dbz_z; }
  /** Base and top of the cell. */
  [[nodiscard]] float getVLow() const { return vlow; }
  [[nodiscard]] float getTops() const { return tops; }
  /** Where the cell comes from, degrees; Const::FMISS if unknown. */
  [[nodiscard]] float getDir() const { return dir; }
  /** Its speed, knots; Const::FMISS if unknown. */
  [[nodiscard]] float getSpd() const { return spd; }
  [[nodiscard]] float getMwVol() const { return mw_vol; }
  /** Writes every field with its name, one a line. */
  void print() const;

 private:
  int decodeLow(const char* line);
  int decodeVil(const char* line);

  int type = 0;
  char id[4] = "";  ///< cut at 3 characters
  float ang = Const::FMISS;
  float rad = Const::FMISS;
  int tvs = 0;
  int meso = 0;
  int hail = 0;
  int shail = 0;
  float hsize = 0;
  float vil = 0;
  float max_dbz = 0;
  float max_dbz_z = 0;
  float vlow = 0;
  float tops = 0;
  float dir = Const::FMISS;
  float spd = Const::FMISS;
  float mw_vol = 0;
};

}  // namespace ZQV
