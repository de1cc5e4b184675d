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
  spans.clear();
  xs.clear();
  ys.clear();
  span = 0;
  placed = false;
}

void CellPainter::addCells(int first, int num) {
  // Neighbouring cells share a side, so that each costs two corners.
  const bool goes_on = !spans.empty() && spans.back().end == first;
  if (!goes_on) {
    spans.push_back({first, first, xs.size()});
  }
  spans.back().end = first + num;
  for (int k = goes_on ? first + 1 : first; k <= first + num; k++) {
    const float r = start + static_cast<float>(k) * length;
    xs.insert(xs.end(), {centre.x + r * sin0, centre.x + r * sin1});
    ys.insert(ys.end(), {centre.y + r * cos0, centre.y + r * cos1});
  }
}

void CellPainter::placeCorners() {
  placed = true;
  if (!same_proj) {
    plot.translate(product, xs.data(), ys.data(), static_cast<int>(xs.size()));
  }
}

void CellPainter::fillCell(int i) {
  if (!placed) {
    placeCorners();
  }
  while (span < spans.size() && i >= spans[span].end) {
    span++;
  }
  if (span == spans.size() || i < spans[span].first) {
    return;
  }
  const size_t at = spans[span].at + 2 * static_cast<size_t>(i - spans[span].first);
  const float* x = xs.data() + at;
  const float* y = ys.data() + at;
  fillCorners({x[0], y[0]}, {x[2], y[2]}, {x[3], y[3]}, {x[1], y[1]});
}

}  // namespace ZQV
