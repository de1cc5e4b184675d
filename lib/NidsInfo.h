#pragma once

#include <array>
#include <string>

#include "Const.h"
#include "Date.h"

namespace ZQV {

/** Summary of a NIDS product's header: what a renderer and its labels need, filled by
 *  NidsFile::readHeader. A plain value; numbers are Const::MISS or Const::FMISS until set. */
class NidsInfo {
 public:
  static constexpr int num_thres = 16;

  NidsInfo() { init(); }

  void init();
  /** The title, cut at 49 characters; an absent text empties it. @return 1; 0 if absent */
  int setInfo(const char* text);
  /** The label tail, likewise. */
  int setMisc(const char* text);
  /** Appends to the label tail, which ends at 49 characters. @return 1; 0 if absent */
  int addMisc(const char* text);

  /** The title, such as "Base reflectivity [dBZ]". */
  [[nodiscard]] const char* getInfo() const { return info.c_str(); }
  /** The label tail: mode, range or resolution, elevation, largest value. */
  [[nodiscard]] const char* getMisc() const { return misc.c_str(); }
  [[nodiscard]] int getSrc() const { return src; }
  [[nodiscard]] float getLat() const { return lat; }
  [[nodiscard]] float getLon() const { return lon; }
  [[nodiscard]] int getMode() const { return mode; }
  [[nodiscard]] int getCode() const { return code; }
  [[nodiscard]] int getType() const { return type; }
  [[nodiscard]] int getVcp() const { return vcp; }
  [[nodiscard]] int getSeq() const { return seq; }
  /** Volume scan date. */
  [[nodiscard]] const Date& getDate() const { return date; }
  /** The same in seconds since 1970. */
  [[nodiscard]] int getVolDate() const { return vol_date; }
  [[nodiscard]] int getProdDate() const { return prod_date; }
  [[nodiscard]] int getMessDate() const { return mess_date; }
  [[nodiscard]] int getNx() const { return nx; }
  [[nodiscard]] int getNy() const { return ny; }
  [[nodiscard]] float getRes() const { return res; }
  [[nodiscard]] float getCres() const { return cres; }
  [[nodiscard]] float getAlt() const { return alt; }
  /** Data level i, Const::FMISS out of 0 to 15. */
  [[nodiscard]] float getThres(int i) const;
  [[nodiscard]] float getElev() const { return elev; }
  [[nodiscard]] float getMax() const { return max; }
  [[nodiscard]] float getNmax() const { return nmax; }

  /** Writes one line a field. */
  void print() const;

  int src = Const::MISS;  ///< source identifier; above 9999 a mosaic
  float lat = Const::FMISS;
  float lon = Const::FMISS;
  int mode = Const::MISS;  ///< 0 maintenance, 1 clear air, 2 precipitation
  int code = Const::MISS;  ///< product code
  int type = Const::MISS;  ///< code of the first packet
  int vcp = Const::MISS;   ///< volume coverage pattern
  int seq = Const::MISS;
  Date date;  ///< volume scan
  int vol_date = Const::MISS;
  int prod_date = Const::MISS;
  int mess_date = Const::MISS;
  int nx = Const::MISS;  ///< size of the image, cells
  int ny = Const::MISS;
  float res = Const::FMISS;   ///< km
  float cres = Const::FMISS;  ///< cell size on the product's domain, 100 km on maps
  float alt = Const::FMISS;   ///< height of the radar, metres
  std::array<float, num_thres> thres{};
  float elev = Const::FMISS;   ///< elevation angle, degrees
  float elevt = Const::FMISS;  ///< reserved, as are those below that nobody sets
  float range = Const::FMISS;
  float max = Const::FMISS;   ///< largest value
  float nmax = Const::FMISS;  ///< most negative value of velocities
  int beg_date = Const::MISS;
  int beg_time = Const::MISS;
  int end_date = Const::MISS;
  int end_time = Const::MISS;

 private:
  std::string info;
  std::string misc;
};

}  // namespace ZQV
