#pragma once

namespace ZQV {

class Plot;
class Point;

/** Draws sky cover symbols of station plots. */
class CloudPlot {
 public:
  /** The symbol in the current line and fill colour, its circle made of chords of 30 degrees.
   *  @param size  radius of the circle, plot coordinates
   *  @param code  '0' the empty circle, '1' to '8' the eighths of the sky that are covered, '9' sky
   * obscured, '/' or 'M' not observed
   *  @return 1; 0 for any other code, and nothing is drawn */
  static int draw(Plot& plot, const Point& point, float size, char code);
};

}  // namespace ZQV
