#include "EarthPoints.h"

#include <algorithm>

#include "EarthPoint.h"
#include "EarthRange.h"
#include "Point.h"

namespace ZQV {

namespace {

void widen(float v, float& min, float& max) {
  min = min == Const::FMISS ? v : std::min(min, v);
  max = max == Const::FMISS ? v : std::max(max, v);
}

}  // namespace

int EarthPoints::add(const EarthPoint& p) {
  return pts.add(Point(p.lat, p.lon));
}

int EarthPoints::insert(int i, const EarthPoint& p) {
  return pts.insert(i, p.lat, p.lon);
}

int EarthPoints::set(int i, const EarthPoint& p) {
  return pts.set(i, p.lat, p.lon);
}

int EarthPoints::get(int i, EarthPoint& p) const {
  Point found;
  if (pts.get(i, found) == 0) {
    return 0;
  }
  p.set(found.x, found.y);
  return 1;
}

int EarthPoints::next(EarthPoint& p) {
  Point found;
  if (pts.next(found) == 0) {
    return 0;
  }
  p.set(found.x, found.y);
  return 1;
}

bool EarthPoints::within(const EarthPoint& p) const {
  return pts.within(Point(p.lat, p.lon));
}

int EarthPoints::getCenter(EarthPoint& p) const {
  Point center;
  const int result = pts.getCenter(center);
  p.set(center.x, center.y);
  return result;
}

int EarthPoints::getCentroid(EarthPoint& p) const {
  Point mean;
  pts.getCentroid(mean);
  p.set(mean.x, mean.y);
  return 1;
}

EarthRange EarthPoints::getRange() const {
  EarthRange range;
  for (int i = 0; i < getNum(); i++) {
    widen(getLat(i), range.min_lat, range.max_lat);
    widen(getLon(i), range.min_lon, range.max_lon);
  }
  return range;
}

}  // namespace ZQV
