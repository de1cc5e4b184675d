#pragma once

#include <vector>

namespace ZQV {

/** The geometry of an outline given by two arrays of coordinates: what Points does with x and y,
 * and EarthPoints with latitude and longitude. A view, that lives no longer than the arrays. */
class Outline {
 public:
  /** Both arrays have the same length. */
  Outline(const std::vector<float>& u, const std::vector<float>& v) : x(u), y(v) {}

  /** Even-odd test against the segments as they are; the last point isn't joined to the first. */
  [[nodiscard]] bool within(float px, float py) const;
  /** Middle of a chord inside the outline, across its longer side. @return 1; 0 with fewer than 3
   * points or no chord, and nothing is changed then */
  int getCenter(float& px, float& py) const;
  /** Mean of the points without later copies of point 0; (0, 0) without points. */
  void getCentroid(float& px, float& py) const;

 private:
  const std::vector<float>& x;
  const std::vector<float>& y;
};

}  // namespace ZQV
