#include "Points.h"

#include <algorithm>
#include <cstdio>

#include "Point.h"
#include "Rect.h"

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

Points::Points(int n) {
  reserve(n);
}

void Points::clear() {
  x.clear();
  y.clear();
  ind = 0;
}

int Points::reserve(int n) {
  const auto room = static_cast<size_t>(std::max(n, 0));
  x.reserve(room);
  y.reserve(room);
  return 1;
}

/** Half as much again, by at least so many points. */
void Points::grow(size_t least) {
  if (x.size() == x.capacity()) {
    reserve(static_cast<int>(x.size() + std::max(x.size() / 2, least)));
  }
}

int Points::add(float px, float py) {
  grow(1);
  x.push_back(px);
  y.push_back(py);
  return 1;
}

int Points::add(const Point& p) {
  grow(10);
  return add(p.x, p.y);
}

int Points::add(int i) {
  return i < 0 || i >= getNum() ? 0 : add(getX(i), getY(i));
}

int Points::insert(int i, float px, float py) {
  grow(10);
  const int at = std::clamp(i, 0, getNum());
  x.insert(x.begin() + at, px);
  y.insert(y.begin() + at, py);
  return 1;
}

int Points::insert(int i, const Point& p) {
  return insert(i, p.x, p.y);
}

int Points::set(int i, float px, float py) {
  if (i < 0 || i >= getNum()) {
    return 0;
  }
  x[static_cast<size_t>(i)] = px;
  y[static_cast<size_t>(i)] = py;
  return 1;
}

int Points::set(int i, const Point& p) {
  return set(i, p.x, p.y);
}

int Points::offset(int i, float dx, float dy) {
  return i < 0 || i >= getNum() ? 0 : set(i, getX(i) + dx, getY(i) + dy);
}

int Points::remove(int i) {
  if (i < 0 || i >= getNum()) {
    return 0;
  }
  x.erase(x.begin() + i);
  y.erase(y.begin() + i);
  return 1;
}

void Points::offset(float dx, float dy) {
  for (float& v : x) {
    v += dx;
  }
  for (float& v : y) {
    v += dy;
  }
}

int Points::trunc(int n) {
  if (n < 0 || n > getNum()) {
    return 0;
  }
  x.resize(static_cast<size_t>(n));
  y.resize(static_cast<size_t>(n));
  return 1;
}

int Points::copy(const Points& other) {
  return copy(other, 0, other.getNum());
}

int Points::copy(const Points& other, int start, int n) {
  if (start < 0 || n < 0 || start > other.getNum() || n > other.getNum() - start) {
    return 0;
  }
  const auto from = other.x.begin() + start;
  const auto from_y = other.y.begin() + start;
  std::vector<float> new_x(from, from + n);
  std::vector<float> new_y(from_y, from_y + n);
  x.swap(new_x);
  y.swap(new_y);
  ind = 0;
  return 1;
}

int Points::get(int i, Point& p) const {
  const int at = i < 0 ? i + getNum() : i;
  if (at < 0 || at >= getNum()) {
    return 0;
  }
  p.set(getX(at), getY(at));
  return 1;
}

int Points::next(Point& p) {
  return ind < getNum() ? get(ind++, p) : 0;
}

bool Points::within(const Point& p) const {
  int left = 0;
  int right = 0;
  for (size_t i = 1; i < x.size(); i++) {
    double xi = 0;
    if (crosses(x[i - 1], y[i - 1], x[i], y[i], p.y, xi)) {
      (p.x > xi ? left : right)++;
    }
  }
  return left % 2 == 1 && right > 0;
}

int Points::getCenter(Point& p) const {
  p.init();
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
    p.set(static_cast<float>(wide ? level : at), static_cast<float>(wide ? at : level));
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
      if (within(p)) {
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

int Points::getCentroid(Point& p) const {
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
  p.set(n == 0 ? 0 : static_cast<float>(sum_x / n), n == 0 ? 0 : static_cast<float>(sum_y / n));
  return 1;
}

int Points::getRect(Rect& rect) const {
  rect.init();
  if (x.empty()) {
    return 0;
  }
  const auto [left, right] = std::minmax_element(x.begin(), x.end());
  const auto [bottom, top] = std::minmax_element(y.begin(), y.end());
  rect.set(*left, *bottom, *right, *top);
  return 1;
}

void Points::print() const {
  for (int i = 0; i < getNum(); i++) {
    std::printf("%f,%f\n", static_cast<double>(getX(i)), static_cast<double>(getY(i)));
  }
}

}  // namespace ZQV
