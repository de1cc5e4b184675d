#include "CloudPlot.h"

#include "Plot.h"
#include "Point.h"
#include "Points.h"

namespace ZQV {

namespace {

constexpr float s30 = 0.5F;
constexpr float c30 = 0.8660254F;

/** The corners of the circle, clockwise from the top, every 30 degrees. */
constexpr float circle[13][2] = {{0, 1},      {s30, c30},  {c30, s30},   {1, 0},       {c30, -s30},
                                 {s30, -c30}, {0, -1},     {-s30, -c30}, {-c30, -s30}, {-1, 0},
                                 {-c30, s30}, {-s30, c30}, {0, 1}};

/** Right of a slit through the middle: the corners, and where the slit meets the circle. */
constexpr float slit = 0.25F;
constexpr float slit_end = 1 - (1 - c30) * slit / s30;
constexpr float beside_slit[][2] = {
    {slit, slit_end}, {s30, c30},  {c30, s30},        {1, 0},
    {c30, -s30},      {s30, -c30}, {slit, -slit_end}, {slit, slit_end}};

/** A cross within the circle, and the letter of an observation that is missing. */
constexpr float diagonal = 0.683F;
constexpr float letter[][2] = {{-0.4F, -0.5F}, {-0.4F, 0.5F}, {0, 0}, {0.4F, 0.5F}, {0.4F, -0.5F}};

/** Shapes of a unit circle, drawn at a place and size. */
class Pen {
 public:
  Pen(Plot& on, const Point& at, float size) : plot(on), point(at), radius(size) {}

  template <size_t n>
  void line(const float (&corners)[n][2]) {
    take(corners, 1.0F);
    plot.drawLine(shape);
  }
  void line(float x1, float y1, float x2, float y2) { plot.drawLine(place(x1, y1), place(x2, y2)); }
  template <size_t n>
  void fill(const float (&corners)[n][2], float mirror) {
    take(corners, mirror);
    plot.drawFill(shape);
  }
  /** Fills from the top clockwise to a corner of the circle. */
  void fillSector(int last) {
    shape.clear();
    shape.add(point);
    for (int i = 0; i <= last; i++) {
      shape.add(place(circle[i][0], circle[i][1]));
    }
    shape.add(point);
    plot.drawFill(shape);
  }

 private:
  [[nodiscard]] Point place(float x, float y) const {
    return {point.x + x * radius, point.y + y * radius};
  }
  template <size_t n>
  void take(const float (&corners)[n][2], float mirror) {
    shape.clear();
    for (const auto& corner : corners) {
      shape.add(place(corner[0] * mirror, corner[1]));
    }
  }

  Plot& plot;
  const Point& point;
  float radius;
  Points shape{16};
};

}  // namespace

int CloudPlot::draw(Plot& plot, const Point& point, float size, char code) {
  constexpr int quarter = 3;
  Pen pen(plot, point, size);
  plot.setFillStyle(0);
  switch (code) {
    case '0': break;
    case '1': pen.line(0, -1, 0, 1); break;
    case '2': pen.fillSector(quarter); break;
    case '3':
      pen.fillSector(quarter);
      pen.line(0, -1, 0, 1);
      break;
    case '4': pen.fillSector(2 * quarter); break;
    case '5':
      pen.fillSector(2 * quarter);
      pen.line(-1, 0, 0, 0);
      break;
    case '6': pen.fillSector(3 * quarter); break;
    case '7':
      pen.fill(beside_slit, 1.0F);
      pen.fill(beside_slit, -1.0F);
      break;
    case '8': pen.fill(circle, 1.0F); break;
    case '9':
      pen.line(-diagonal, -diagonal, diagonal, diagonal);
      pen.line(-diagonal, diagonal, diagonal, -diagonal);
      break;
    case '/':
    case 'M': pen.line(letter); break;
    default: return 0;
  }
  pen.line(circle);
  return 1;
}

}  // namespace ZQV
