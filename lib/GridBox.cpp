#include "GridBox.h"

#include <cmath>
#include <cstdio>
#include <limits>

#include "Domain.h"
#include "Grid.h"
#include "GridMath.h"
#include "GridPoint.h"

namespace ZQV {

namespace {

constexpr int LEVEL_BELOW = -1;
constexpr int LEVEL_ABOVE = 1;
constexpr float WIDEST_CELL = 50.0F;  ///< in the plane; a wider one spans the seam of the map

struct Ends {
  size_t start, end;
};

/** Corners of the sides TOP, RIGHT, BOTTOM, LEFT. */
constexpr Ends SIDE_ENDS[4] = {{GridBox::UL, GridBox::UR},
                               {GridBox::LR, GridBox::UR},
                               {GridBox::LL, GridBox::LR},
                               {GridBox::LL, GridBox::UL}};

/** What the places west of the seam are raised by, 0 where a map has none. For MOLL that is half
 * the distance after which the map repeats: deliberate, and here alone. */
float periodOf(int proj, float y) {
  if (proj == DomainVal::LATLON) return Domain::OFFSET_LL;
  if (proj == DomainVal::MERC) return Domain::OFFSET_MERC;
  if (proj == DomainVal::MOLL) {
    const float q = Domain::earth_rad * Domain::earth_rad - y * y;
    return q > 0 ? 2 * std::sqrt(q) : 0.0F;
  }
  return 0.0F;
}

bool isEnd(float fraction) {
  return fraction == 0.0F || fraction == 1.0F;
}

}  // namespace

int GridBox::project(Grid& grid, Domain& domain, bool is_same, int i, int j, Point& p) {
  if (grid.isLocate()) {
    p = grid.getLocate(i, j);
    return p.isSet() ? 1 : 0;
  }
  const GridPoint g(static_cast<float>(i), static_cast<float>(j));
  if (is_same) return grid.tran(g, p);
  Point own;
  if (grid.tran(g, own) == 0) {
    p.init();
    return 0;
  }
  return grid.tran(own, domain, p);
}

int GridBox::set(Grid& grid, Domain& domain, int i, int j) {
  const bool is_same = GridMath::isDomainEqual(grid.getDomain(), domain);
  std::array<float, 4> values{};
  std::array<Point, 4> places;
  for (int n = 0; n < 4; n++) {
    const int x = i + n % 2;
    const int y = j + n / 2;
    values[at(n)] = grid.getValue1(x, y);
    project(grid, domain, is_same, x, y, places[at(n)]);
  }
  return set(values, places, domain.getProj());
}

int GridBox::set(Grid& grid, Domain& domain, int i, int j, float at_level) {
  set(grid, domain, i, j);
  return setLevel(at_level);
}

int GridBox::set(const std::array<float, 4>& values, const std::array<Point, 4>& places, int code) {
  pt = places;
  proj = code;
  min = max = Const::FMISS;
  for (size_t n = 0; n < 4; n++) {
    const float v = std::isfinite(values[n]) ? values[n] : Const::FMISS;
    val[n] = v;
    if (v != Const::FMISS) {
      min = min == Const::FMISS || v < min ? v : min;
      max = max == Const::FMISS || v > max ? v : max;
    }
  }
  unwrap();
  return 1;
}

void GridBox::unwrap() {
  span = 0;
  period = 0.0F;
  if ((proj != DomainVal::LATLON && proj != DomainVal::MERC && proj != DomainVal::MOLL) ||
      !isLocateValid()) {
    return;
  }
  const float x = pt[UL].x;
  if (!(std::fabs(pt[UR].x - x) > WIDEST_CELL || std::fabs(pt[LL].x - x) > WIDEST_CELL ||
        std::fabs(pt[LR].x - x) > WIDEST_CELL)) {
    return;
  }
  span = 1;
  period = periodOf(proj, pt[UL].y);
  for (Point& p : pt) {
    p.x += p.x < 0 ? period : 0.0F;
  }
}

void GridBox::initLevel() {
  level = Const::FMISS;
  numside = 0;
  side.fill(BEFORE);
  cross.fill(-1);
  equal = -2;
}

int GridBox::setLevel(float at_level) {
  initLevel();
  level = at_level;
  if (!(level >= min)) {
    equal = LEVEL_BELOW;
    return 0;
  }
  if (level > max) {
    equal = LEVEL_ABOVE;
    return 0;
  }
  equal = 0;
  if (!isDataValid()) return 0;
  lowerCorners();
  for (size_t n = 0; n < 4; n++) {
    const double a = val[SIDE_ENDS[n].start];
    const double b = val[SIDE_ENDS[n].end];
    if (a == b) {
      side[n] = a == level ? ALONG : FLAT;
      continue;
    }
    const double t = (level - a) / (b - a);
    side[n] = static_cast<float>(t);
    if (a == level) {
      side[n] = AT_START;
    } else if (t < 0) {
      side[n] = BEFORE;
    } else if (t > 1) {
      side[n] = BEYOND;
    }
    numside += side[n] >= 0 ? 1 : 0;
  }
  if (tweak == 0.0F) {
    settleFlat();
    settleCount();
  }
  findCrossings();
  return numside;
}

/** Moves the corners at the level below it. */
void GridBox::lowerCorners() {
  for (float& v : val) {
    if (v != level) continue;
    if (tweak == Const::FMISS) {
      constexpr float share = 5e-05F;
      tweak = share * v;
    }
    const float lowered = v - tweak;
    // A tweak too small to show in this value still counts.
    v = lowered != v || tweak == 0.0F ? lowered
                                      : std::nextafter(v, -std::numeric_limits<float>::max());
  }
}

/** An edge on the level passes along the cell: it is no crossing. */
void GridBox::settleFlat() {
  int along = 0;
  for (const float s : side) {
    along += s == ALONG ? 1 : 0;
  }
  if (along < 2) return;
  for (float& s : side) {
    s = isEnd(s) ? AT_START : s;
  }
  numside = 0;
}

/** A level through corners gives one crossing or three, where lines need pairs. */
void GridBox::settleCount() {
  if (numside == 1) {
    for (size_t n = 0; n < 4; n++) {
      if (side[n] == AT_START) {
        side[n] = n == RIGHT || n == BOTTOM ? 1.0F : 0.0F;
        numside = 2;
        return;
      }
    }
    for (float& s : side) {
      s = isEnd(s) ? AT_START : s;
    }
    numside = 0;
  } else if (numside == 3) {
    if (isEnd(side[0])) {
      side[0] = AT_START;
    } else if (isEnd(side[1])) {
      side[1] = AT_START;
    }
    numside = 2;
  }
}

void GridBox::findCrossings() {
  int n = 0;
  for (int s = 0; s < 4; s++) {
    const float t = side[at(s)];
    if (!(t >= 0)) continue;
    cross[at(n)] = s;
    cpt[at(n)].interp(pt[SIDE_ENDS[s].start], pt[SIDE_ENDS[s].end], t);
    n++;
  }
  tsides = (2 - side[TOP] - side[RIGHT]) + side[BOTTOM] + side[LEFT];
}

int GridBox::getCrossPoint(int n, Point& p) const {
  if (n < 0 || n >= numside) return 0;
  p = cpt[at(n)];
  return 1;
}

int GridBox::getPartner(int n) const {
  return numside == 4 && !(tsides >= 2) ? 3 - n : n ^ 1;
}

bool GridBox::isDataValid() const {
  return val[UL] != Const::FMISS && val[UR] != Const::FMISS && val[LL] != Const::FMISS &&
         val[LR] != Const::FMISS;
}

bool GridBox::isLocateValid() const {
  return pt[UL].isSet() && pt[UR].isSet() && pt[LL].isSet() && pt[LR].isSet();
}

void GridBox::print() const {
  std::printf("GridBox\n");
  std::printf("Values: %f %f %f %f\n", static_cast<double>(val[UL]), static_cast<double>(val[UR]),
              static_cast<double>(val[LL]), static_cast<double>(val[LR]));
  printPoints();
  printLevel();
}

void GridBox::printLevel() const {
  std::printf("Level: %f Equal: %d\n", static_cast<double>(level), equal);
  std::printf("Sides: %d %f %f %f %f\n", numside, static_cast<double>(side[TOP]),
              static_cast<double>(side[RIGHT]), static_cast<double>(side[BOTTOM]),
              static_cast<double>(side[LEFT]));
}

void GridBox::printPoints() const {
  for (const Point& p : pt) {
    std::printf("%f,%f\n", static_cast<double>(p.x), static_cast<double>(p.y));
  }
}

}  // namespace ZQV
