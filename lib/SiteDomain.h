#pragma once

#include "Domain.h"
#include "GridPoint.h"

namespace ZQV {

/** A national grid, and on it the box of cells of one radar: the site is put on a cell of the grid,
 * which is a fixed cell of its box. */
class SiteDomain {
 public:
  /** Forgets the site. @return 1 */
  int init();
  /** The national grid; its transformations aren't const. */
  Domain& get() { return domain; }
  [[nodiscard]] const Domain& get() const { return domain; }

  /** Puts the box around a position in degrees. @return 1; 0 with no site if it is missing or can't
   * be projected */
  int setSite(float lat, float lon);
  /** Cell of the national grid on which the site was put; unset without a site. */
  [[nodiscard]] const GridPoint& getSite() const { return site; }
  /** From a cell of the site's box, from the upper left, to the national grid. @return 1; 0 with
   * the point unset for a missing cell or without a site */
  int tranSite(float col, float row, GridPoint& g) const;
  /** The same to a position on the earth. */
  int tranSite(float col, float row, EarthPoint& e);
  void print() const { domain.print(); }

 protected:
  /** @param spacing  of the points, 100 km
   *  @param site_step  the site is put on a multiple of it
   *  @param site_cell  its column and row in the box */
  SiteDomain(int nx, int ny, float spacing, int site_step, int site_cell);

 private:
  [[nodiscard]] float round(float g) const;

  Domain domain;
  GridPoint site;
  int step;
  int cell;
};

}  // namespace ZQV
