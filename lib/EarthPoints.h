#pragma once

#include <cstddef>
#include <vector>

namespace ZQV {

class EarthPoint;
class EarthRange;

/** A growable polyline on the earth, kept as parallel arrays of latitudes and longitudes; the
 *  counterpart of Points, without elevation. */
class EarthPoints {
 public:
  EarthPoints() : EarthPoints(25) {}
  /** Room for n points. */
  explicit EarthPoints(int n);

  /** Drops the points, keeps the room. */
  void clear();
  void init() { clear(); }
  /** Makes room for n points. @return 1 */
  int reserve(int n);

  /** Appends. @return 1 */
  int add(float la, float lo);
  int add(const EarthPoint& p);
  /** Appends a copy of point i. @return 1; 0 out of range */
  int add(int i);
  /** Puts a point ahead of point i; an i below 0 counts as 0, one of getNum() or more appends.
   * @return 1 */
  int insert(int i, float la, float lo);
  int insert(int i, const EarthPoint& p);
  /** Out of range: 0, and nothing changes. */
  int set(int i, float la, float lo);
  int set(int i, const EarthPoint& p);
  int offset(int i, float dlat, float dlon);
  int remove(int i);
  /** Takes the points, or n of them from start on, in exactly the room that they need. @return 1; 0
   * if the stretch isn't within the other's points */
  int copy(const EarthPoints& other);
  int copy(const EarthPoints& other, int start, int n);

  [[nodiscard]] int getNum() const { return static_cast<int>(lat.size()); }
  [[nodiscard]] int getMax() const { return static_cast<int>(lat.capacity()); }
  /** Point i; a negative i counts from the end. @return 1; 0 out of range */
  int get(int i, EarthPoint& p) const;
  /** For inner loops: i must be in range. */
  [[nodiscard]] float getLat(int i) const { return lat[static_cast<size_t>(i)]; }
  [[nodiscard]] float getLon(int i) const { return lon[static_cast<size_t>(i)]; }

  /** Walk: rewind(), then next() until it gives 0. */
  void rewind() { ind = 0; }
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
  void print() const;

 private:
  void grow();

  int ind = 0;
  std::vector<float> lat;
  std::vector<float> lon;
};

}  // namespace ZQV
