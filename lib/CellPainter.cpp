#include "CellPainter.h"

#include <cmath>

#include "Const.h"
#include "EarthPoint.h"
#include "Plot.h"

namespace ZQV {

namespace {
constexpr int corners = 5;
}

CellPainter::CellPainter(Plot& on) : plot(on), poly(corners) {
  for (int i = 0; i < corners; i++) {
    poly.add(0.0F, 0.0F);
  }
}

void CellPainter::setDomain(const Domain& domain, const EarthPoint& site) {
  product = domain;
  EarthPoint place = site;
  product.tran(place, centre);
  same_proj = DomainVal::compareProj(plot.getDomainVal(), product);
}

Point CellPainter::toPlot(float x, float y) {
  EarthPoint e;
  Point p;
  product.tran(Point(x, y), e);
  if (e.lat == Const::FMISS || plot.tran(e, p) == 0) {
    return {};
  }
  return p;
}

void CellPainter::fillCorners(const Point& a, const Point& b, const Point& c, const Point& d) {
  if (a.x == Const::FMISS || b.x == Const::FMISS || c.x == Const::FMISS || d.x == Const::FMISS) {
    return;
  }
  float* px = poly.xs();
  float* py = poly.ys();
  px[0] = px[4] = a.x;
  py[0] = py[4] = a.y;
  px[1] = b.x;
  py[1] = b.y;
  px[2] = c.x;
  py[2] = c.y;
  px[3] = d.x;
  py[3] = d.y;
  plot.drawFill(poly);
}

void CellPainter::setRadial(double az0, double az1, float from, float step) {
  constexpr double rad = Const::DRC;
  sin0 = static_cast<float>(std::sin(az0 * rad));
  cos0 = static_cast<float>(std::cos(az0 * rad));
  sin1 = static_cast<float>(std::sin(az1 * rad));
  cos1 = static_cast<float>(std::cos(az1 * rad));
  start = from;
  length = step;
  edge = -1;
}

void CellPainter::fillCell(int i) {
  const auto place = [this](int k, float s, float c) {
    const float r = start + static_cast<float>(k) * length;
    const Point p(centre.x + r * s, centre.y + r * c);
    return same_proj ? p : toPlot(p.x, p.y);
  };
  // Neighbouring cells share a side, so that each costs two corners.
  if (edge != i) {
    near0 = place(i, sin0, cos0);
    near1 = place(i, sin1, cos1);
  }
  const Point far0 = place(i + 1, sin0, cos0);
  const Point far1 = place(i + 1, sin1, cos1);
  fillCorners(near0, far0, far1, near1);
  near0 = far0;
  near1 = far1;
  edge = i + 1;
}

}  // namespace ZQV
