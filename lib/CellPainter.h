#pragma once

#include <cstddef>
#include <vector>

#include "Domain.h"
#include "Point.h"
#include "Points.h"

namespace ZQV {

class EarthPoint;
class Plot;

/** Fills the cells of a radar's data, given in the plane of their own domain, on a plot. Where the
 * plot has another projection, every corner lies at its place on the earth. */
class CellPainter {
 public:
  /** Degrees added to the width of a radial, which close the hairline between neighbours. */
  static constexpr float overlap = 0.01F;

  explicit CellPainter(Plot& on);

  /** The domain of the data, and the radar's place in it. */
  void setDomain(const Domain& domain, const EarthPoint& site);
  /** Fills the polygon of four corners, each already in the plot's plane. */
  void fillCorners(const Point& a, const Point& b, const Point& c, const Point& d);
  /** Goes to a radial.
   *  @param az0, az1  its edges in the plane of the data, degrees from up
   *  @param from, step  near side of the first cell, and length of all of them, in the plane */
  void setRadial(double az0, double az1, float from, float step);
  /** Says that cells of the radial will be filled, from the radar outward. */
  void addCells(int first, int num);
  /** A cell of the radial, and where its corners begin. */
  struct Cell {
    int number = 0;
    int at = 0;
  };
  /** Those of the cells added of which something is seen, or all, in their order. */
  const std::vector<Cell>& placeCells();
  void fillCell(const Cell& cell);

  Plot& plot;
  Domain product;
  Point centre;
  bool same_proj = false;  ///< plot and data share one plane
  /** Cells cost less by the radial than one by one. */
  bool by_radial = false;
  /** Also cells of which nothing is seen are met, since those behind them take their pattern. */
  bool meets_all = false;
  Points poly;  ///< five points

 private:
  float sin0 = 0;
  float cos0 = 0;
  float sin1 = 0;
  float cos1 = 0;
  float start = 0;
  float length = 0;
  /** Cells without a gap. */
  struct Span {
    int first = 0;
    int end = 0;
  };
  std::vector<Span> spans;
  std::vector<Cell> cells;
  std::vector<int> seen;
  bool whole = false;      ///< no cell crosses the seam of a map
  bool on_device = false;  ///< corners are where the device has placed them, not in the plane
  /** Near sides of the cells, and the far side of the last; the radial's two edges in turn. */
  std::vector<float> xs;
  std::vector<float> ys;
};

}  // namespace ZQV
