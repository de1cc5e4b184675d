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
   *  @return 1; 0 for a calm or missing wind, and for a speed below 0 */
  static int drawBarb(Plot& plot, const Point& point, const Wind& wind, float length, float base);
  /** The same with the direction turned as the plot's projection is at the point. */
  static int drawBarbMap(Plot& plot, const Point& point, const Wind& wind, float length,
                         float base);
  /** A line to where the wind blows, as long as length times its speed.
   *  @param head  size of the arrow head: above 0 it grows with the speed, below 0 the whole arrow
   * has the fixed length instead; 0 draws none
   *  @return 1; 0 for a calm or missing wind */
  static int drawVect(Plot& plot, const Point& point, const Wind& wind, float length, float head);
  /** The same with the direction turned as the plot's projection is at the point. */
  static int drawVectMap(Plot& plot, const Point& point, const Wind& wind, float length,
                         float head);
  /** The way ahead of something that moves, with strokes across it as marks of time.
   *  @param wind   where it comes from; its speed is the length of the way
   *  @param size   of the strokes: 0.2 of it to each side of the way, 0.1 for minor ones
   *  @param head   width of the arrow head at the end; none for 0 and below
   *  @param major  parts between major strokes, at most 1000
   *  @param minor  minor strokes within each of them, at most 100
   *  @return 1; 0 for what stands still or is missing */
  static int drawTrack(Plot& plot, const Point& point, const Wind& wind, float size, float head,
                       int major, int minor);
};

}  // namespace ZQV
