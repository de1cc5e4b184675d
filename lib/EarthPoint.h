#pragma once

#include <cstdio>

#include "Const.h"

namespace ZQV {

/** A position on the earth. On diagram domains the same fields carry other pairs: (lat, lon) is (x,
 * y), (temperature in degrees Celsius, pressure) or (direction, speed). Missing is Const::FMISS. */
class EarthPoint {
 public:
  EarthPoint() = default;
  EarthPoint(float la, float lo, float el = Const::FMISS) : lat(la), lon(lo), elev(el) {}

  void init() { *this = EarthPoint(); }
  void set(float la, float lo) {
    lat = la;
    lon = lo;
  }
  void set(float la, float lo, float el) {
    set(la, lo);
    elev = el;
  }
  [[nodiscard]] bool isSet() const { return lat != Const::FMISS && lon != Const::FMISS; }
  /** Writes "%f,%f,%f\n" with the elevation if that is set, else "%f,%f\n". */
  void print() const {
    if (elev != Const::FMISS) {
      std::printf("%f,%f,%f\n", static_cast<double>(lat), static_cast<double>(lon),
                  static_cast<double>(elev));
    } else {
      std::printf("%f,%f\n", static_cast<double>(lat), static_cast<double>(lon));
    }
  }

  float lat = Const::FMISS;   ///< degrees north
  float lon = Const::FMISS;   ///< degrees east
  float elev = Const::FMISS;  ///< metres
};

}  // namespace ZQV
