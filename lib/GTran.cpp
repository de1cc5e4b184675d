#include "GTran.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "Four.h"
#include "Points.h"

namespace ZQV {

namespace {

/** 0 where there is nothing to divide by: a window without extent maps to one place. */
float ratio(float a, float b) {
  return b != 0.0F ? a / b : 0.0F;
}

Rect rectOf(const Coords& c) {
  Rect rect;
  rect.xmin = c.xmin;
  rect.ymin = c.ymin;
  rect.xmax = c.xmax;
  rect.ymax = c.ymax;
  return rect;
}

}  // namespace

GTran::GTran() {
  set(Rect(0.0F, 0.0F, 1.0F, 1.0F));
}

int GTran::set(const Rect& rect) {
  plt.set(rect.xmin, rect.ymin, rect.xmax, rect.ymax);
  const float a = plt.xext;
  const float b = std::fabs(plt.yext);
  float w = 1.0F;
  float h = 1.0F;
  if (a > 0.0F && b > 0.0F) {
    if (a >= b) {
      w = a / b;
    } else {
      h = b / a;
    }
  }
  ndc.set(0.0F, 0.0F, w, h);
  vp = wn = ndc;
  vp_plt.x = ratio(plt.xext, vp.xext);
  vp_plt.y = ratio(plt.yext, vp.yext);
  scale();
  return 1;
}

int GTran::setWindow(const Rect& rect) {
  wn.set(rect.xmin, rect.ymin, rect.xmax, rect.ymax);
  scale();
  return 1;
}

int GTran::setViewport(const Rect& rect) {
  vp.set(rect.xmin, rect.ymin, rect.xmax, rect.ymax);
  scale();
  return 1;
}

void GTran::scale() {
  wn_vp.x = ratio(vp.xext, wn.xext);
  wn_vp.y = ratio(vp.yext, wn.yext);
  clip_rect.set(tranNdcPlotX(vp.xmin), tranNdcPlotY(vp.ymax), tranNdcPlotX(vp.xmax),
                tranNdcPlotY(vp.ymin));
}

Rect GTran::getWindow() const {
  return rectOf(wn);
}

Rect GTran::getViewport() const {
  return rectOf(vp);
}

Rect GTran::getMaxViewport() const {
  return rectOf(ndc);
}

Rect GTran::getDevice() const {
  return rectOf(plt);
}

Rect GTran::getClipRect() const {
  return clip_rect;
}

float GTran::tranPlotNdcX(float x) const {
  return ratio(x - plt.xmin, vp_plt.x);
}

float GTran::tranPlotNdcY(float y) const {
  return ndc.ymax - ratio(y - plt.ymin, vp_plt.y);
}

float GTran::tranNdcWindowX(float x) const {
  return ratio(x - vp.xmin, wn_vp.x) + wn.xmin;
}

float GTran::tranNdcWindowY(float y) const {
  return ratio(y - vp.ymin, wn_vp.y) + wn.ymin;
}

float GTran::tranWindowX(const GTran& a, const GTran& b, float x) {
  const float view = ratio((x - a.wn.xmin) * a.vp.xext, a.wn.xext) + a.vp.xmin;
  return ratio(view - b.vp.xmin, b.vp.xext) * b.wn.xext + b.wn.xmin;
}

float GTran::tranWindowY(const GTran& a, const GTran& b, float y) {
  const float view = ratio((y - a.wn.ymin) * a.vp.yext, a.wn.yext) + a.vp.ymin;
  return ratio(view - b.vp.ymin, b.vp.yext) * b.wn.yext + b.wn.ymin;
}

bool GTran::isPointsInWindow(const Points& points) const {
  const int n = points.getNum();
  if (n < 1) return false;
  const float* px = points.xs();
  const float* py = points.ys();
  const auto [xmin, xmax] = std::minmax_element(px, px + n);
  const auto [ymin, ymax] = std::minmax_element(py, py + n);
  return isBoxInWindow(*xmin, *ymin, *xmax, *ymax);
}

/** Four points: nearly all polygons of a picture are closed bins of four corners, and this is most
 * of what they cost on their way to the device. */
inline void GTran::placeFour(const float* px, const float* py, float* qx, float* qy) const {
  const Four::Floats x = Four::load(px);
  const Four::Floats y = Four::load(py);
  const auto limited = [](Four::Floats v) {
    return Four::least(Four::most(v, Four::all(-PLOT_LIMIT)), Four::all(PLOT_LIMIT));
  };
  Four::store(limited(((x - wn.xmin) * wn_vp.x + vp.xmin) * vp_plt.x + plt.xmin), qx);
  Four::store(limited((ndc.ymax - ((y - wn.ymin) * wn_vp.y + vp.ymin)) * vp_plt.y + plt.ymin), qy);
}

void GTran::tranWindowPlot(float* x, float* y, int n) const {
  constexpr int four = 4;
  int i = 0;
  for (; i + four <= n; i += four) {
    placeFour(x + i, y + i, x + i, y + i);
  }
  for (; i < n; i++) {
    x[i] = tranWindowPlotX(x[i]);
    y[i] = tranWindowPlotY(y[i]);
  }
}

int GTran::tranWindowPlot(const Points& points, Points& plotted) const {
  constexpr int corners = 4;
  const int n = points.getNum();
  const float* px = points.xs();
  const float* py = points.ys();
  if (n == corners + 1 && px[corners] == px[0] && py[corners] == py[0]) {
    if (plotted.getNum() != n) plotted.setNum(n);
    float* qx = plotted.xs();
    float* qy = plotted.ys();
    const Four::Floats box = Four::bounds(Four::load(px), Four::load(py));
    if (!isBoxInWindow(box[0], box[2], -box[1], -box[3])) return 0;
    placeFour(px, py, qx, qy);
    qx[corners] = qx[0];
    qy[corners] = qy[0];
    return 1;
  }
  return tranAny(points, plotted);
}

/** Apart, so that the short way for four corners stays short. */
[[gnu::noinline]] int GTran::tranAny(const Points& points, Points& plotted) const {
  if (!isPointsInWindow(points)) return 0;
  plotted.transform(
      points, [this](float x) { return tranWindowPlotX(x); },
      [this](float y) { return tranWindowPlotY(y); });
  return 1;
}

bool GTran::isPointsInWindow(int n, const Point* points) const {
  if (n < 1 || points == nullptr) return false;
  const Point* end = points + n;
  const auto by_x = [](const Point& a, const Point& b) { return a.x < b.x; };
  const auto by_y = [](const Point& a, const Point& b) { return a.y < b.y; };
  const auto [xmin, xmax] = std::minmax_element(points, end, by_x);
  const auto [ymin, ymax] = std::minmax_element(points, end, by_y);
  return isBoxInWindow(xmin->x, ymin->y, xmax->x, ymax->y);
}

void GTran::print() const {
  std::printf("GTran\n");
  std::printf("Plot: ");
  plt.print();
  std::printf("Ndc: ");
  ndc.print();
  std::printf("Window: ");
  wn.print();
  std::printf("Viewport: ");
  vp.print();
  std::printf("Scale: %f %f - %f %f\n", static_cast<double>(wn_vp.x), static_cast<double>(wn_vp.y),
              static_cast<double>(vp_plt.x), static_cast<double>(vp_plt.y));
}

}  // namespace ZQV
