#include "WindPlot.h"

#include <algorithm>
#include <cmath>

#include "Const.h"
#include "Plot.h"
#include "Point.h"
#include "Points.h"
#include "Wind.h"

namespace ZQV {

namespace {

constexpr float spacing = 0.12F;  // of the staff, between two barbs
constexpr float full_barb = 0.5F;
constexpr float half_barb = 0.25F;

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

}  // namespace

int WindPlot::drawBarb(Plot& plot, const Point& point, const Wind& wind, float length, float base) {
  if (!wind.isSet() || !(wind.spd != 0.0F) || !std::isfinite(wind.dir) ||
      !std::isfinite(wind.spd)) {
    return 0;
  }
  const Barb barb(plot, point, wind, length);
  barb.draw(base);
  const int shadow = plot.getDropShadow();
  if (shadow != 0) {  // once more without it, so that the barb lies over its own shadow
    plot.setDropShadow(0);
    barb.draw(base);
    plot.setDropShadow(shadow);
  }
  return 1;
}

}  // namespace ZQV
