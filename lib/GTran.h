#pragma once

#include <algorithm>

#include "Coords.h"
#include "Point.h"
#include "Rect.h"

namespace ZQV {

class Points;

/** One transformation between the caller's window and the device. The window lies in a viewport,
 * given in normalised coordinates: the whole device, whose shorter side is 1. Normalised y grows
 * upward, plot (device) y as the device's rectangle says. */
class GTran {
 public:
  /** Plot coordinates stay within plus and minus this, as 16 bits must hold them. */
  static constexpr float PLOT_LIMIT = 30000.0F;

  /** The unit rectangle. */
  GTran();

  /** Sets the device rectangle; viewport and window become the whole device. @return 1 */
  int set(const Rect& rect);
  /** The same as set(). */
  int resize(const Rect& rect) { return set(rect); }
  int setWindow(const Rect& rect);
  int setViewport(const Rect& rect);
  [[nodiscard]] Rect getWindow() const;
  [[nodiscard]] Rect getViewport() const;
  /** The whole device in normalised coordinates. */
  [[nodiscard]] Rect getMaxViewport() const;
  [[nodiscard]] Rect getDevice() const;
  /** The viewport in plot coordinates, from small to large. */
  [[nodiscard]] Rect getClipRect() const;

  [[nodiscard]] float tranWindowNdcX(float x) const { return (x - wn.xmin) * wn_vp.x + vp.xmin; }
  [[nodiscard]] float tranWindowNdcY(float y) const { return (y - wn.ymin) * wn_vp.y + vp.ymin; }
  [[nodiscard]] float tranNdcPlotX(float x) const { return limit(x * vp_plt.x + plt.xmin); }
  [[nodiscard]] float tranNdcPlotY(float y) const {
    return limit((ndc.ymax - y) * vp_plt.y + plt.ymin);
  }
  [[nodiscard]] float tranWindowPlotX(float x) const { return tranNdcPlotX(tranWindowNdcX(x)); }
  [[nodiscard]] float tranWindowPlotY(float y) const { return tranNdcPlotY(tranWindowNdcY(y)); }

  /** Plot units to one unit of the window, with their sign. */
  [[nodiscard]] float getScaleX() const { return wn_vp.x * vp_plt.x; }
  [[nodiscard]] float getScaleY() const { return -wn_vp.y * vp_plt.y; }

  [[nodiscard]] float tranPlotNdcX(float x) const;
  [[nodiscard]] float tranPlotNdcY(float y) const;
  [[nodiscard]] float tranNdcWindowX(float x) const;
  [[nodiscard]] float tranNdcWindowY(float y) const;
  [[nodiscard]] float tranPlotWindowX(float x) const { return tranNdcWindowX(tranPlotNdcX(x)); }
  [[nodiscard]] float tranPlotWindowY(float y) const { return tranNdcWindowY(tranPlotNdcY(y)); }

  /** Takes a polyline to the plot. @return 1; 0 if isPointsInWindow() is false for it, and plotted
   * is then undefined */
  int tranWindowPlot(const Points& points, Points& plotted) const;
  /** Takes n places to the page, in place, in the same arithmetic. */
  void tranWindowPlot(float* x, float* y, int n) const;

  /** From window a to window b through the viewports. */
  static float tranWindowX(const GTran& a, const GTran& b, float x);
  static float tranWindowY(const GTran& a, const GTran& b, float y);

  /** False only if all points lie beyond one and the same edge of the window. */
  [[nodiscard]] bool isPointsInWindow(const Points& points) const;
  [[nodiscard]] bool isPointsInWindow(int n, const Point* points) const;
  void print() const;

 private:
  /** NaN becomes the lower limit. */
  static float limit(float v) {
    v = v > -PLOT_LIMIT ? v : -PLOT_LIMIT;
    return v < PLOT_LIMIT ? v : PLOT_LIMIT;
  }
  [[nodiscard]] bool isBoxInWindow(float xmin, float ymin, float xmax, float ymax) const {
    return !(xmax < std::min(wn.xmin, wn.xmax) || xmin > std::max(wn.xmin, wn.xmax) ||
             ymax < std::min(wn.ymin, wn.ymax) || ymin > std::max(wn.ymin, wn.ymax));
  }
  void placeFour(const float* px, const float* py, float* qx, float* qy) const;
  int tranAny(const Points& points, Points& plotted) const;
  void scale();

  Coords plt;      ///< device rectangle; its extents may be negative
  Coords ndc;      ///< normalised coordinates of the whole device
  Point wn_vp;     ///< factors from window to viewport
  Point vp_plt;    ///< factors from viewport to plot
  Coords wn;       ///< window
  Coords vp;       ///< viewport
  Rect clip_rect;  ///< viewport in plot coordinates
};

}  // namespace ZQV
