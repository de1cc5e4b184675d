#include "Spline.h"

#include <algorithm>
#include <cmath>

#include "Const.h"
#include "Point.h"
#include "Points.h"

namespace ZQV {

int Spline::set(const Points& points, int kind) {
  type = kind;
  poly = 0;
  x.clear();
  y.clear();
  d.clear();
  coeffx.clear();
  coeffy.clear();
  const auto room = static_cast<size_t>(points.getNum()) + 2;
  x.reserve(room);
  y.reserve(room);
  d.reserve(room);
  for (int i = 0; i < points.getNum(); i++) {
    const Point p(points.getX(i), points.getY(i));
    if (!p.isSet() || !std::isfinite(p.x) || !std::isfinite(p.y)) {
      continue;
    }
    float at = 0.0F;
    if (!x.empty()) {
      at = d.back() + std::hypot(p.x - x.back(), p.y - y.back());
      if (!(at > d.back()) || !std::isfinite(at)) {
        continue;
      }
    }
    x.push_back(p.x);
    y.push_back(p.y);
    d.push_back(at);
  }
  num = static_cast<int>(x.size());
  if (num < 2) {
    num = 0;
    return 0;
  }
  if (num > 2 && x.front() == x.back() && y.front() == y.back()) {
    // The loop goes on for one piece at each end, so that it passes its joint smoothly.
    const size_t last = x.size() - 1;
    const float into = d[last] - d[last - 1];
    const float out = d[1];
    x.insert(x.begin(), x[last - 1]);
    y.insert(y.begin(), y[last - 1]);
    d.insert(d.begin(), -into);
    x.push_back(x[2]);
    y.push_back(y[2]);
    d.push_back(d.back() + out);
    num += 2;
    poly = 1;
  }
  coeffx = createCoeffs(d, x);
  coeffy = createCoeffs(d, y);
  return 1;
}

/** Second derivatives of a cubic spline with none at its ends, by one sweep forth and one back. The
 * factor of the sweep back is divided by the number of points, where a natural spline has the
 * pivot: a deliberate damping that gives the curve its looseness. */
Spline::Values Spline::createCoeffs(const Values& d, const Values& v) {
  const size_t n = d.size();
  Values c(n, 0.0F);
  Values r(n, 0.0F);
  for (size_t i = 1; i + 1 < n; i++) {
    const float both = d[i + 1] - d[i - 1];
    const float before = d[i] - d[i - 1];
    const float s = before / both;
    const float bend = (v[i + 1] - v[i]) / (d[i + 1] - d[i]) - (v[i] - v[i - 1]) / before;
    r[i] = (6.0F * bend / both - s * r[i - 1]) / (s * c[i - 1] + 2.0F);
    c[i] = (s - 1.0F) / static_cast<float>(n);
  }
  for (size_t i = n - 1; i-- > 0;) {
    c[i] = c[i] * c[i + 1] + r[i];
  }
  return c;
}

float Spline::interp(float t, const Values& c, const Values& v) const {
  // The piece that begins at or before t; the first one, or the last, for what lies beyond.
  const auto next = std::upper_bound(d.begin() + 1, d.end() - 1, t);
  const auto i = static_cast<size_t>(next - d.begin()) - 1;
  const float h = d[i + 1] - d[i];
  const float u = t - d[i];
  return v[i] + u * (((c[i + 1] - c[i]) * u / (6.0F * h) + c[i] / 2.0F) * u +
                     (v[i + 1] - v[i]) / h - (2.0F * c[i] + c[i + 1]) * h / 6.0F);
}

float Spline::getDist(int i) const {
  return i >= 0 && i < getNum() ? d[static_cast<size_t>(i) + static_cast<size_t>(poly)] : 0.0F;
}

int Spline::getPoint(float t, Point& p) const {
  if (num == 0) {
    p.set(Const::FMISS, Const::FMISS);
    return 0;
  }
  p.set(interp(t, coeffx, x), interp(t, coeffy, y));
  return 1;
}

float Spline::getValue(float t) const {
  return num == 0 ? Const::FMISS : interp(t, coeffy, y);
}

}  // namespace ZQV
