#pragma once

#include <array>
#include <cstddef>

#include "Const.h"
#include "Point.h"

namespace ZQV {

class Domain;
class Grid;

/** The geometry of one cell of a grid: four neighbouring points with their values, and where a
 *  level crosses the sides between them. Contours are made of such cells, one after the other. */
class GridBox {
 public:
  enum Corner { UL = 0, UR = 1, LL = 2, LR = 3 };
  /** TOP runs from UL to UR, RIGHT from LR up to UR, BOTTOM from LL to LR, LEFT from LL up to UL.
   */
  enum Side { TOP = 0, RIGHT = 1, BOTTOM = 2, LEFT = 3 };
  /** What a side holds that the level doesn't cross. */
  static constexpr float AT_START = -1;  ///< the start corner is at the level
  static constexpr float BEFORE = -2;    ///< the level lies before the side's start
  static constexpr float BEYOND = -3;    ///< and beyond its end
  static constexpr float ALONG = -4;     ///< the whole side is at the level
  static constexpr float FLAT = -5;      ///< both corners are equal, and not at the level

  /** No cell and no tweak. */
  void init() { *this = GridBox(); }
  /** Takes cell (i, j) of a grid as it lies in the plane of a domain, with one value and one place
   *  a corner. Values that aren't finite count as missing. @return 1 */
  int set(Grid& grid, Domain& domain, int i, int j);
  /** The same, and the crossings of a level. @return as setLevel() */
  int set(Grid& grid, Domain& domain, int i, int j, float at);
  /** The same from places that are projected already.
   *  @param values, places  of the corners UL, UR, LL, LR; what can't be shown is missing
   *  @param code            of the projection, DomainVal::Proj */
  int set(const std::array<float, 4>& values, const std::array<Point, 4>& places, int code);
  /** The place of grid point (i, j) in the plane of a domain, missing if it can't be shown.
   *  @param is_same  the domain is the grid's own. @return 1 or 0 */
  static int project(Grid& grid, Domain& domain, bool is_same, int i, int j, Point& p);

  /** Forgets the level. */
  void initLevel();
  /** Finds where a level crosses the sides. A corner at the level is moved below it by the tweak,
   *  and stays there for the levels that follow, so that no line runs through a corner. Only
   *  without any tweak a side may lie on the level.
   *  @return the number of crossings: 0, 2, or 4 for a saddle */
  int setLevel(float at);
  /** How far a corner at the level is lowered: small against the range of the field. Missing: by
   * 5e-05 of the value. */
  void setTweak(float v) { tweak = v; }

  /** Value of a corner, -1 for a bad index. */
  [[nodiscard]] float getVal(int n) const { return isIndex(n) ? val[at(n)] : -1.0F; }
  /** Fraction of a side where the level crosses it, or what it holds instead; -1 for a bad index.
   */
  [[nodiscard]] float getSide(int n) const { return isIndex(n) ? side[at(n)] : -1.0F; }
  /** Side of crossing n, in the order of the sides; -1 if there is none. */
  [[nodiscard]] int getCross(int n) const { return isIndex(n) ? cross[at(n)] : -1; }
  /** Place of crossing n. In a cell across the seam of the map it is to the right of the seam, as
   *  the corners are. @return 1; 0 if there is none */
  int getCrossPoint(int n, Point& p) const;
  /** The same without a test; a bad index gives crossing 0. */
  [[nodiscard]] const Point& getCrossPoint1(int n) const { return cpt[at(isIndex(n) ? n : 0)]; }
  /** Place of a corner; a bad index gives corner 0. */
  [[nodiscard]] const Point& getPoint(int n) const { return pt[at(isIndex(n) ? n : 0)]; }
  [[nodiscard]] int getNumSide() const { return numside; }
  /** Which way a saddle is divided: from 2 up crossing 0 joins 1, and 2 joins 3; below, 0 joins 3,
   * and 1 joins 2. */
  [[nodiscard]] float getTotalDsides() const { return tsides; }
  /** Crossing that a line from crossing n leads to, by that rule. */
  [[nodiscard]] int getPartner(int n) const;
  /** -1 the level is below the cell, 1 above, 0 within, -2 no level is set. */
  [[nodiscard]] int getEqual() const { return equal; }
  /** No corner's value is missing. */
  [[nodiscard]] bool isDataValid() const;
  /** No corner's place is missing. */
  [[nodiscard]] bool isLocateValid() const;
  /** Of the values that aren't missing, before any tweak; missing if there are none. */
  [[nodiscard]] float getMin() const { return min; }
  [[nodiscard]] float getMax() const { return max; }
  [[nodiscard]] float getLevel() const { return level; }
  /** The cell spans the seam of the map: what lay left of it was moved right by the period. */
  [[nodiscard]] bool isSpan() const { return span != 0; }
  /** Projection of the plane that the corners lie in. */
  [[nodiscard]] int getProj() const { return proj; }
  /** By how much. */
  [[nodiscard]] float getPeriod() const { return period; }
  void print() const;
  void printLevel() const;
  void printPoints() const;

 private:
  static bool isIndex(int n) { return n >= 0 && n < 4; }
  static std::size_t at(int n) { return static_cast<std::size_t>(n); }
  void unwrap();
  void lowerCorners();
  void settleFlat();
  void settleCount();
  void findCrossings();

  std::array<float, 4> val{};
  float level = Const::FMISS;
  int proj = Const::MISS;
  int span = 0;
  std::array<Point, 4> pt{};
  std::array<Point, 4> cpt{};
  std::array<float, 4> side{BEFORE, BEFORE, BEFORE, BEFORE};
  int numside = 0;
  std::array<int, 4> cross{-1, -1, -1, -1};
  float tsides = 0.0F;
  float min = Const::FMISS;
  float max = Const::FMISS;
  float tweak = Const::FMISS;
  int equal = -2;
  float period = 0.0F;
};

}  // namespace ZQV
