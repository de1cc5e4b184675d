#pragma once

#include "Points.h"

namespace ZQV {

class EarthPoint;
class EarthRange;

/** A growable polyline on the earth: Points with latitude and longitude as its coordinates.
 * Elevation isn't stored. */
class EarthPoints {
 public:
  EarthPoints() = default;
  /** Room for n points. */
  explicit EarthPoints(int n) : pts(n) {}

  /** Drops the points, keeps the room. */
  void clear() { pts.clear(); }
  void init() { clear(); }
  /** Makes room for n points. @return 1 */
  int reserve(int n) { return pts.reserve(n); }

  /** Appends. @return 1 */
  int add(float la, float lo) { return pts.add(la, lo); }
  int add(const EarthPoint& p);
  /** Appends a copy of point i. @return 1; 0 out of range */
  int add(int i) { return pts.add(i); }
  /** Puts a point ahead of point i; an i below 0 counts as 0, one of getNum() or more appends.
   * @return 1 */
  int insert(int i, float la, float lo) { return pts.insert(i, la, lo); }
  int insert(int i, const EarthPoint& p);
  /** Out of range: 0, and nothing changes. */
  int set(int i, float la, float lo) { return pts.set(i, la, lo); }
  int set(int i, const EarthPoint& p);
  int offset(int i, float dlat, float dlon) { return pts.offset(i, dlat, dlon); }
  int remove(int i) { return pts.remove(i); }
  /** Takes the points, or n of them from start on, in exactly the room that they need. @return 1; 0
   * if the stretch isn't within the other's points */
  int copy(const EarthPoints& other) { return pts.copy(other.pts); }
  int copy(const EarthPoints& other, int start, int n) { return pts.copy(other.pts, start, n); }

  [[nodiscard]] int getNum() const { return pts.getNum(); }
  [[nodiscard]] int getMax() const { return pts.getMax(); }
  /** Point i; a negative i counts from the end. @return 1; 0 out of range */
  int get(int i, EarthPoint& p) const;
  /** For inner loops: i must be in range. */
  [[nodiscard]] float getLat(int i) const { return pts.getX(i); }
  [[nodiscard]] float getLon(int i) const { return pts.getY(i); }

  /** Walk: rewind(), then next() until it gives 0. */
  void rewind() { pts.rewind(); }
  int next(EarthPoint& p);

  /** As Points::within, with latitude as the first coordinate. */
  [[nodiscard]] bool within(const EarthPoint& p) const;
  /** As Points::getCenter. */
  int getCenter(EarthPoint& p) const;
  /** As Points::getCentroid. */
  int getCentroid(EarthPoint& p) const;
  /** Bounds of all points; a missing bound counts as not yet set. */
  [[nodiscard]] EarthRange getRange() const;
  /** Writes "%f,%f\n" for each point. */
  void print() const { pts.print(); }

 private:
  Points pts;
};

}  // namespace ZQV
