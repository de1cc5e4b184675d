#include "WindPlot.h"

#include <algorithm>
#include <cmath>

#include "Const.h"
#include "Plot.h"
#include "Point.h"
#include "Points.h"
#include "Vect.h"
#include "Wind.h"

namespace ZQV {

namespace {

constexpr float spacing = 0.12F;  // of the staff, between two barbs
constexpr float full_barb = 0.5F;
constexpr float half_barb = 0.25F;
constexpr float head_step = 0.2F;  // of the size of an arrow head
constexpr int max_major = 1000;
constexpr int max_minor = 100;

/** The parts of one barb, drawn along its staff. */
class Barb {
 public:
  Barb(Plot& on, const Point& at, const Wind& wind, float len)
      : plot(on), point(at), length(len), speed(std::min(wind.spd, 300.0F) + 0.01F) {
    const double angle = static_cast<double>(wind.dir) * static_cast<double>(Const::DRC);
    s = static_cast<float>(std::sin(angle));
    c = static_cast<float>(std::cos(angle));
  }

  void draw(float base) const {
    int pennants = static_cast<int>(std::floor((speed + 2) / 50));
    const float rest = speed - 50.0F * static_cast<float>(pennants);
    const int halves = static_cast<int>(std::floor((rest + 2) / 5));
    const int fulls = static_cast<int>(std::floor((rest + 2) / 10));
    const bool has_half = halves % 2 == 1;
    if (has_half && fulls == 0 && pennants == 0) {
      drawStroke(0.88F, 0.94F, half_barb);  // a lone half barb keeps off the end of the staff
    } else {
      plot.setFillStyle(0);
      for (int i = 0; i < pennants; i++) {
        drawPennant(static_cast<float>(i) * spacing);
      }
      if (pennants == 0) {
        pennants = -1;  // the first barb sits at the end of the staff
      }
      for (int j = 0; j < fulls; j++) {
        const float off = static_cast<float>(pennants + j) * spacing;
        drawStroke(0.88F - off, 1.0F - off, full_barb);
      }
      if (has_half) {
        const float off = static_cast<float>(pennants + fulls) * spacing;
        drawStroke(0.88F - off, 0.94F - off, half_barb);
      }
    }
    plot.drawLine(Point(point.x + base * s, point.y + base * c), along(1.0F));
  }

 private:
  /** The place on the staff at a fraction of its length. */
  [[nodiscard]] Point along(float f) const {
    return {point.x + s * f * length, point.y + c * f * length};
  }
  /** The same, moved off the staff to its side by a fraction of the length. */
  [[nodiscard]] Point beside(float f, float off) const {
    const Point p = along(f);
    return {p.x + c * length * off, p.y - s * length * off};
  }
  void drawStroke(float from, float to, float off) const {
    plot.drawLine(along(from), beside(to, off));
  }
  void drawPennant(float off) const {
    Points triangle(4);
    triangle.add(along(1.0F - off));
    triangle.add(beside(1.0F - off, full_barb));
    triangle.add(along(0.88F - off));
    triangle.add(0);
    plot.drawFill(triangle);
  }

  Plot& plot;
  const Point& point;
  float length;
  float speed;
  float s;
  float c;
};

bool isDrawable(const Wind& wind) {
  return wind.isSet() && wind.spd != 0.0F && std::isfinite(wind.dir) && std::isfinite(wind.spd);
}

/** Draws, and under a drop shadow once more without it, so that the shape lies over its own shadow.
 */
template <typename Draw>
void drawOverShadow(Plot& plot, const Draw& draw) {
  draw();
  const int shadow = plot.getDropShadow();
  if (shadow != 0) {
    plot.setDropShadow(0);
    draw();
    plot.setDropShadow(shadow);
  }
}

/** The two strokes of an arrow head: back along (u, v) and across it. */
void drawHead(Plot& plot, const Point& tip, float u, float v, float back, float across) {
  const Point base(tip.x - u * back, tip.y - v * back);
  plot.drawLine(tip, Point(base.x + v * across, base.y - u * across));
  plot.drawLine(tip, Point(base.x - v * across, base.y + u * across));
}

}  // namespace

int WindPlot::drawBarb(Plot& plot, const Point& point, const Wind& wind, float length, float base) {
  if (!isDrawable(wind) || wind.spd < 0) {
    return 0;
  }
  const Barb barb(plot, point, wind, length);
  drawOverShadow(plot, [&] { barb.draw(base); });
  return 1;
}

int WindPlot::drawBarbMap(Plot& plot, const Point& point, const Wind& wind, float length,
                          float base) {
  return drawBarb(plot, point, Wind(plot.adjustDir(wind.dir, point), wind.spd), length, base);
}

int WindPlot::drawVect(Plot& plot, const Point& point, const Wind& wind, float length, float head) {
  Vect to;
  if (!isDrawable(wind) || wind.toVect(to) == 0) {
    return 0;
  }
  if (head < 0) {
    to.scale(1.0F / wind.spd);
  }
  const Point tip(point.x + length * to.x, point.y + length * to.y);
  const float across = head * (length == 0.0F ? 1.0F : length) * head_step;
  drawOverShadow(plot, [&] {
    plot.drawLine(point, tip);
    if (head != 0.0F) {
      drawHead(plot, tip, to.x, to.y, head > 0 ? across : length * head_step, across);
    }
  });
  return 1;
}

int WindPlot::drawVectMap(Plot& plot, const Point& point, const Wind& wind, float length,
                          float head) {
  return drawVect(plot, point, Wind(plot.adjustDir(wind.dir, point), wind.spd), length, head);
}

int WindPlot::drawTrack(Plot& plot, const Point& point, const Wind& wind, float size, float head,
                        int major, int minor) {
  if (!isDrawable(wind)) {
    return 0;
  }
  const double angle = static_cast<double>(wind.dir) * static_cast<double>(Const::DRC);
  const auto s = static_cast<float>(-std::sin(angle));
  const auto c = static_cast<float>(-std::cos(angle));
  const auto along = [&](float dist) { return Point(point.x + dist * s, point.y + dist * c); };
  const auto draw_stroke = [&](float dist, float half) {
    const Point p = along(dist);
    plot.drawLine(Point(p.x - c * half, p.y + s * half), Point(p.x + c * half, p.y - s * half));
  };
  major = std::clamp(major, 0, max_major);
  minor = std::clamp(minor, 0, max_minor);
  const Point end = along(wind.spd);
  plot.drawLine(point, end);
  for (int i = 1; i < major; i++) {
    draw_stroke(static_cast<float>(i) * wind.spd / static_cast<float>(major), size * 0.2F);
  }
  const int n = major * (minor + 1);
  for (int i = 0; i < n; i++) {
    if (i % (minor + 1) != 0) {
      draw_stroke(static_cast<float>(i) * wind.spd / static_cast<float>(n), size * 0.1F);
    }
  }
  if (head > 0) {
    drawHead(plot, end, s, c, size * head_step, size * head * head_step);
  }
  return 1;
}

}  // namespace ZQV
