#include "CellPainter.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>

#include "Const.h"
#include "EarthPoint.h"
#include "Four.h"
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
  by_radial = !same_proj || plot.placesCells();
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
  whole ? plot.drawWhole(poly) : plot.drawFill(poly);
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
}

void CellPainter::addCells(int first, int num) {
  if (spans.empty() || spans.back().end != first) {
    spans.push_back({first, first});
  }
  spans.back().end = first + num;
}

const std::vector<CellPainter::Cell>& CellPainter::placeCells() {
  // Neighbours share a side, so that each cell costs two corners.
  size_t size = 0;
  for (const Span& s : spans) {
    size += 2 * static_cast<size_t>(s.end - s.first + 1);
  }
  xs.resize(size);
  ys.resize(size);
  float* x = xs.data();
  float* y = ys.data();
  const Four::Floats origin = {centre.x, centre.x, centre.y, centre.y};
  const Four::Floats direction = {sin0, sin1, cos0, cos1};
  constexpr size_t pair = 2 * sizeof(float);
  for (const Span& s : spans) {
    for (int k = s.first; k <= s.end; k++, x += 2, y += 2) {
      const float r = start + static_cast<float>(k) * length;
      const Four::Floats side = origin + r * direction;
      std::memcpy(x, &side, pair);
      std::memcpy(y, reinterpret_cast<const char*>(&side) + pair, pair);
    }
  }
  const int num = static_cast<int>(size);
  if (!same_proj) {
    plot.translate(product, xs.data(), ys.data(), num);
  }
  whole = plot.isWhole(xs.data(), ys.data(), num);
  // Corners that aren't on the map have to be told from the others.
  const auto missing = [](float place) { return place == Const::FMISS; };
  on_device = plot.placesCells() && !meets_all &&
              (same_proj || std::none_of(xs.begin(), xs.end(), missing));
  if (on_device) {
    plot.placeCells(xs.data(), ys.data(), num);
  }
  cells.clear();
  int at = 0;
  for (const Span& s : spans) {
    int n = s.end - s.first;
    seen.resize(std::max(seen.size(), static_cast<size_t>(n)));
    if (on_device) {
      n = plot.findCells(xs.data() + at, ys.data() + at, n, seen.data());
    } else {
      std::iota(seen.begin(), seen.begin() + n, 0);
    }
    for (int i = 0; i < n; i++) {
      const int k = seen[static_cast<size_t>(i)];
      cells.push_back({s.first + k, at + 2 * k});
    }
    at += 2 * (s.end - s.first + 1);
  }
  return cells;
}

void CellPainter::fillCell(const Cell& cell) {
  const float* x = xs.data() + cell.at;
  const float* y = ys.data() + cell.at;
  if (on_device) {
    plot.fillCell(x, y);
  } else {
    fillCorners({x[0], y[0]}, {x[2], y[2]}, {x[3], y[3]}, {x[1], y[1]});
  }
}

}  // namespace ZQV
