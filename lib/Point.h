#pragma once

#include "Const.h"

namespace ZQV {

/** A position in the plane of a projection: 100 km on map projections, degrees on LATLON. Missing
 * is Const::FMISS. */
class Point {
 public:
  Point() = default;
  Point(float px, float py, float pz = Const::FMISS) : x(px), y(py), z(pz) {}

  void init() { *this = Point(); }
  void set(float px, float py) {
    x = px;
    y = py;
  }
  void set(float px, float py, float pz) {
    set(px, py);
    z = pz;
  }
  [[nodiscard]] bool isSet() const { return x != Const::FMISS && y != Const::FMISS; }
  void offset(float dx, float dy) {
    x += dx;
    y += dy;
  }
  /** Becomes p1 + (p2 - p1) t in x and y. */
  void interp(const Point& p1, const Point& p2, float t) {
    set(p1.x + (p2.x - p1.x) * t, p1.y + (p2.y - p1.y) * t);
  }

  float x = Const::FMISS;
  float y = Const::FMISS;
  float z = Const::FMISS;  ///< carried by Domain::translate only
};

}  // namespace ZQV
