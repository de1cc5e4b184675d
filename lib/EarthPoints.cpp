#include "EarthPoints.h"

#include <algorithm>
#include <cstdio>

#include "EarthPoint.h"
#include "EarthRange.h"
#include "Outline.h"

namespace ZQV {

EarthPoints::EarthPoints(int n) {
  reserve(n);
}

void EarthPoints::clear() {
  lat.clear();
  lon.clear();
  ind = 0;
}

int EarthPoints::reserve(int n) {
  const auto room = static_cast<size_t>(std::max(n, 0));
  lat.reserve(room);
  lon.reserve(room);
  return 1;
}

/** Half as much again, by at least ten points. */
void EarthPoints::grow() {
  if (lat.size() == lat.capacity()) {
    reserve(static_cast<int>(lat.size() + std::max<size_t>(lat.size() / 2, 10)));
  }
}

int EarthPoints::add(float la, float lo) {
  grow();
  lat.push_back(la);
  lon.push_back(lo);
  return 1;
}

int EarthPoints::add(const EarthPoint& p) {
  return add(p.lat, p.lon);
}

int EarthPoints::add(int i) {
  return i < 0 || i >= getNum() ? 0 : add(getLat(i), getLon(i));
}

int EarthPoints::insert(int i, float la, float lo) {
  grow();
  const int at = std::clamp(i, 0, getNum());
  lat.insert(lat.begin() + at, la);
  lon.insert(lon.begin() + at, lo);
  return 1;
}

int EarthPoints::insert(int i, const EarthPoint& p) {
  return insert(i, p.lat, p.lon);
}

int EarthPoints::set(int i, float la, float lo) {
  if (i < 0 || i >= getNum()) {
    return 0;
  }
  lat[static_cast<size_t>(i)] = la;
  lon[static_cast<size_t>(i)] = lo;
  return 1;
}

int EarthPoints::set(int i, const EarthPoint& p) {
  return set(i, p.lat, p.lon);
}

int EarthPoints::offset(int i, float dlat, float dlon) {
  return i < 0 || i >= getNum() ? 0 : set(i, getLat(i) + dlat, getLon(i) + dlon);
}

int EarthPoints::remove(int i) {
  if (i < 0 || i >= getNum()) {
    return 0;
  }
  lat.erase(lat.begin() + i);
  lon.erase(lon.begin() + i);
  return 1;
}

int EarthPoints::copy(const EarthPoints& other) {
  return copy(other, 0, other.getNum());
}

int EarthPoints::copy(const EarthPoints& other, int start, int n) {
  if (start < 0 || n < 0 || start > other.getNum() || n > other.getNum() - start) {
    return 0;
  }
  const auto from = other.lat.begin() + start;
  const auto from_lon = other.lon.begin() + start;
  std::vector<float> new_lat(from, from + n);
  std::vector<float> new_lon(from_lon, from_lon + n);
  lat.swap(new_lat);
  lon.swap(new_lon);
  ind = 0;
  return 1;
}

int EarthPoints::get(int i, EarthPoint& p) const {
  const int at = i < 0 ? i + getNum() : i;
  if (at < 0 || at >= getNum()) {
    return 0;
  }
  p.set(getLat(at), getLon(at));
  return 1;
}

int EarthPoints::next(EarthPoint& p) {
  return ind < getNum() ? get(ind++, p) : 0;
}

bool EarthPoints::within(const EarthPoint& p) const {
  return Outline(lat, lon).within(p.lat, p.lon);
}

int EarthPoints::getCenter(EarthPoint& p) const {
  p.init();
  return Outline(lat, lon).getCenter(p.lat, p.lon);
}

int EarthPoints::getCentroid(EarthPoint& p) const {
  Outline(lat, lon).getCentroid(p.lat, p.lon);
  return 1;
}

namespace {

void widen(float v, float& min, float& max) {
  min = min == Const::FMISS ? v : std::min(min, v);
  max = max == Const::FMISS ? v : std::max(max, v);
}

}  // namespace

EarthRange EarthPoints::getRange() const {
  EarthRange range;
  for (int i = 0; i < getNum(); i++) {
    widen(getLat(i), range.min_lat, range.max_lat);
    widen(getLon(i), range.min_lon, range.max_lon);
  }
  return range;
}

void EarthPoints::print() const {
  for (int i = 0; i < getNum(); i++) {
    std::printf("%f,%f\n", static_cast<double>(getLat(i)), static_cast<double>(getLon(i)));
  }
}

}  // namespace ZQV
