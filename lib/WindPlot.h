#pragma once

namespace ZQV {

class Plot;
class Point;
class Wind;

/** Draws winds. Places and sizes are in plot coordinates. */
class WindPlot {
 public:
  /** A barb in the current line and fill colour: a pennant for 50 knots, a full barb for 10, a half
   * one for 5, each from 2 knots below. Speeds above 300 are drawn as 300.
   *  @param length  of the staff, which points to where the wind comes from
   *  @param base    of the staff that is left free at the place
   *  @return 1; 0 for a calm or missing wind */
  static int drawBarb(Plot& plot, const Point& point, const Wind& wind, float length, float base);
};

}  // namespace ZQV
