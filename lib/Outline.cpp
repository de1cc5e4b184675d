#include "Outline.h"

#include <algorithm>
#include <cstddef>

namespace ZQV {

namespace {

/** Where the segment from (along1, across1) to (along2, across2) meets the line across = level. Its
 * start doesn't count, its end does, so that a vertex on the line is met once. */
bool crosses(float along1, float across1, float along2, float across2, double level, double& at) {
  const bool up = across1 < level && level <= across2;
  const bool down = across2 <= level && level < across1;
  if (!up && !down) {
    return false;
  }
  const double t = (level - across1) / (static_cast<double>(across2) - across1);
  at = along1 + (static_cast<double>(along2) - along1) * t;
  return true;
}

}  // namespace

bool Outline::within(float px, float py) const {
  int left = 0;
  int right = 0;
  for (size_t i = 1; i < x.size(); i++) {
    double xi = 0;
    if (crosses(x[i - 1], y[i - 1], x[i], y[i], py, xi)) {
      (px > xi ? left : right)++;
    }
  }
  return left % 2 == 1 && right > 0;
}

int Outline::getCenter(float& px, float& py) const {
  if (x.size() < 3) {
    return 0;
  }
  const auto [left, right] = std::minmax_element(x.begin(), x.end());
  const auto [bottom, top] = std::minmax_element(y.begin(), y.end());
  const bool wide = static_cast<double>(*right) - *left > static_cast<double>(*top) - *bottom;
  // A wide outline is cut along the vertical line in its middle, a tall one along the horizontal
  // line.
  const std::vector<float>& along = wide ? y : x;
  const std::vector<float>& across = wide ? x : y;
  const double level =
      wide ? (static_cast<double>(*left) + *right) / 2 : (static_cast<double>(*bottom) + *top) / 2;
  const auto put = [&](double at) {
    px = static_cast<float>(wide ? level : at);
    py = static_cast<float>(wide ? at : level);
  };
  int met = 0;
  double first = 0;
  for (size_t i = 1; i < along.size(); i++) {
    double at = 0;
    if (!crosses(along[i - 1], across[i - 1], along[i], across[i], level, at)) {
      continue;
    }
    if (met++ > 0) {
      put((first + at) / 2);
      if (within(px, py)) {
        return 1;
      }
    }
    first = at;
  }
  if (met == 1) {  // the outline is open, and its closing segment ends the chord
    double at = first;
    crosses(along.back(), across.back(), along.front(), across.front(), level, at);
    put((first + at) / 2);
  }
  return met > 0 ? 1 : 0;
}

void Outline::getCentroid(float& px, float& py) const {
  double sum_x = 0;
  double sum_y = 0;
  int n = 0;
  for (size_t i = 0; i < x.size(); i++) {
    if (i == 0 || x[i] != x[0] || y[i] != y[0]) {
      sum_x += x[i];
      sum_y += y[i];
      n++;
    }
  }
  px = n == 0 ? 0 : static_cast<float>(sum_x / n);
  py = n == 0 ? 0 : static_cast<float>(sum_y / n);
}

}  // namespace ZQV
