#include "GridPiece.h"

#include <cstdint>
#include <limits>

#include "Grid.h"

namespace ZQV {

namespace {

/** Points of a row of tiles, each with its own n points, one shared with the next. 0 if they are
 * beyond counting. */
int total(int tiles, int n) {
  const int64_t points = static_cast<int64_t>(tiles) * n - tiles + 1;
  return tiles < 1 || n < 1 || points > std::numeric_limits<int>::max() ? 0
                                                                        : static_cast<int>(points);
}

}  // namespace

int GridPiece::getDomain(const Domain& tile, int cols, int rows, Domain& out) {
  const int across = total(cols, tile.getNx());
  const int down = total(rows, tile.getNy());
  if (!tile.isProj(Domain::LATLON) || across == 0 || down == 0) return 0;
  DomainVal val = tile.get();
  const auto half = [](int points, float step) { return (points - 1) / 2.0 * step; };
  val.clon = static_cast<float>(val.clon + half(val.nx, val.dx) - half(across, val.dx));
  val.clat = static_cast<float>(val.clat + half(down, val.dy) - half(val.ny, val.dy));
  val.nx = across;
  val.ny = down;
  return out.set(val);
}

int GridPiece::set(Grid& whole, int cols, int rows, const Grid& tile) {
  Domain own = tile.getDomain();
  own.nx = tile.getNx();
  own.ny = tile.getNy();
  if (!tile.isData() || getDomain(own, cols, rows, domain) == 0) return 0;
  nx = cols;
  ny = rows;
  whole.copyInfo(tile);
  whole.setSize(domain.getNx(), domain.getNy());
  whole.setDomain(domain);
  return whole.allocData();
}

int GridPiece::add(Grid& whole, int ix, int iy, const Grid& tile) const {
  if (ix < 0 || ix >= nx || iy < 0 || iy >= ny || !tile.isData() || !whole.isData() ||
      total(nx, tile.getNx()) != whole.getNx() || total(ny, tile.getNy()) != whole.getNy()) {
    return 0;
  }
  const int left = (tile.getNx() - 1) * ix;
  const int top = (tile.getNy() - 1) * iy;
  for (int y = 0; y < tile.getNy(); y++) {
    for (int x = 0; x < tile.getNx(); x++) {
      whole.setValue(left + x, top + y, tile.getValue1(x, y));
    }
  }
  return 1;
}

}  // namespace ZQV
