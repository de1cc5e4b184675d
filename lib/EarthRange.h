#pragma once

#include <cstdio>

#include "Const.h"

namespace ZQV {

/** Bounds of a piece of the earth, degrees; Const::FMISS for a bound that isn't set. */
class EarthRange {
 public:
  EarthRange() = default;
  EarthRange(float lat1, float lat2, float lon1, float lon2)
      : min_lat(lat1), max_lat(lat2), min_lon(lon1), max_lon(lon2) {}

  void init() { *this = EarthRange(); }
  void set(float lat1, float lat2, float lon1, float lon2) {
    *this = EarthRange(lat1, lat2, lon1, lon2);
  }
  /** Writes "Lat: %f - %f Lon: %f - %f\n". */
  void print() const {
    std::printf("Lat: %f - %f Lon: %f - %f\n", static_cast<double>(min_lat),
                static_cast<double>(max_lat), static_cast<double>(min_lon),
                static_cast<double>(max_lon));
  }

  float min_lat = Const::FMISS;
  float max_lat = Const::FMISS;
  float min_lon = Const::FMISS;
  float max_lon = Const::FMISS;
};

}  // namespace ZQV
