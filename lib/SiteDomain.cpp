#include "SiteDomain.h"

#include "Const.h"
#include "EarthPoint.h"
#include "Tools.h"

namespace ZQV {

SiteDomain::SiteDomain(int nx, int ny, float spacing, int site_step, int site_cell)
    : step(site_step), cell(site_cell) {
  DomainVal val;
  val.proj = DomainVal::PSTEREO;
  val.plat = 90.0F;
  val.plon = -105.0F;
  val.clat = 39.579372F;
  val.clon = -97.421463F;
  val.nx = nx;
  val.ny = ny;
  val.dx = val.dy = spacing;
  domain.set(val);
}

int SiteDomain::init() {
  site.init();
  return 1;
}

float SiteDomain::round(float g) const {
  const auto steps = static_cast<double>((g + 0.5F) / static_cast<float>(step));
  return static_cast<float>(Tools::cut(steps)) * static_cast<float>(step);
}

int SiteDomain::setSite(float lat, float lon) {
  site.init();
  EarthPoint e(lat, lon);
  GridPoint g;
  if (!e.isSet() || domain.tran(e, g) == 0 || !g.isSet()) {
    return 0;
  }
  site.set(round(g.gx), round(g.gy));
  return 1;
}

int SiteDomain::tranSite(float col, float row, GridPoint& g) const {
  g.init();
  if (!site.isSet() || col == Const::FMISS || row == Const::FMISS) {
    return 0;
  }
  g = site;
  g.offset(col - static_cast<float>(cell), row - static_cast<float>(cell));
  return 1;
}

int SiteDomain::tranSite(float col, float row, EarthPoint& e) {
  e.init();
  GridPoint g;
  return tranSite(col, row, g) != 0 && domain.tran(g, e) != 0 ? 1 : 0;
}

}  // namespace ZQV
