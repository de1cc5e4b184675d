#pragma once

#include "Domain.h"

namespace ZQV {

class Grid;

/** A large grid made of tiles, neighbours of which share the points of their common edge. */
class GridPiece {
 public:
  /** Prepares the whole for cols by rows tiles like the one given, which is the one at the lower
   *  right: its information, the domain of the whole, and missing values all over.
   *  @return 1; 0 if the tile has no values, isn't on LATLON, or the whole would be too large */
  int set(Grid& whole, int cols, int rows, const Grid& tile);
  /** Copies a tile's values to column ix and row iy of the tiles, counted from the upper left.
   * @return 1; 0 if it doesn't fit */
  int add(Grid& whole, int ix, int iy, const Grid& tile) const;
  /** The domain of cols by rows tiles: the tile's lower right corner stays where it is. @return 1;
   * 0 if that isn't on LATLON or the counts are no counts */
  static int getDomain(const Domain& tile, int cols, int rows, Domain& out);
  [[nodiscard]] const Domain& getDomain() const { return domain; }

 private:
  int nx = 0;
  int ny = 0;
  Domain domain;
};

}  // namespace ZQV
