#pragma once

#include <cstddef>
#include <vector>

namespace ZQV {

class Point;
class Rect;

/** A growable polyline in the plane, kept as two parallel arrays. Cleared and refilled it doesn't
 *  allocate until it gets longer than it ever was. z isn't stored. */
class Points {
 public:
  Points() : Points(25) {}
  /** Room for n points. */
  explicit Points(int n);

  /** Drops the points, keeps the room. */
  void clear();
  void init() { clear(); }
  /** Makes room for n points. @return 1 */
  int reserve(int n);

  /** Appends. @return 1 */
  int add(float px, float py);
  int add(const Point& p);
  /** Appends a copy of point i. @return 1; 0 out of range */
  int add(int i);
  /** Puts a point ahead of point i; an i below 0 counts as 0, one of getNum() or more appends.
   * @return 1 */
  int insert(int i, float px, float py);
  int insert(int i, const Point& p);
  /** Out of range: 0, and nothing changes. */
  int set(int i, float px, float py);
  int set(int i, const Point& p);
  int offset(int i, float dx, float dy);
  int remove(int i);
  /** Moves every point. */
  void offset(float dx, float dy);
  /** Keeps the first n points. @return 1; 0 if n is out of range */
  int trunc(int n);
  /** Takes the points, or n of them from start on, in exactly the room that they need. @return 1; 0
   * if the stretch isn't within the other's points */
  int copy(const Points& other);
  int copy(const Points& other, int start, int n);

  /** Becomes n points whose values follow in xs() and ys(), for inner loops. */
  void setNum(int n) {
    x.resize(static_cast<size_t>(n));
    y.resize(static_cast<size_t>(n));
  }
  /** Becomes the points of another, x by fx and y by fy, for inner loops. */
  template <typename FX, typename FY>
  void transform(const Points& from, FX fx, FY fy) {
    const size_t n = from.x.size();
    x.resize(n);
    y.resize(n);
    for (size_t i = 0; i < n; i++) {
      x[i] = fx(from.x[i]);
      y[i] = fy(from.y[i]);
    }
  }

  [[nodiscard]] int getNum() const { return static_cast<int>(x.size()); }
  /** Points that there is room for. */
  [[nodiscard]] int getMax() const { return static_cast<int>(x.capacity()); }
  /** Point i; a negative i counts from the end. @return 1; 0 out of range */
  int get(int i, Point& p) const;
  /** For inner loops: i must be in range. */
  [[nodiscard]] float getX(int i) const { return x[static_cast<size_t>(i)]; }
  [[nodiscard]] float getY(int i) const { return y[static_cast<size_t>(i)]; }
  /** The arrays themselves, getNum() values each; they hold until the polyline changes. */
  [[nodiscard]] const float* xs() const { return x.data(); }
  [[nodiscard]] const float* ys() const { return y.data(); }
  [[nodiscard]] float* xs() { return x.data(); }
  [[nodiscard]] float* ys() { return y.data(); }

  /** Walk: rewind(), then next() until it gives 0. */
  void rewind() { ind = 0; }
  int next(Point& p);

  /** Even-odd test against the segments between consecutive points: the outline isn't closed
   *  implicitly, so its last point must repeat the first. */
  [[nodiscard]] bool within(const Point& p) const;
  /** A place for a label inside the outline. @return 1; 0 with fewer than 3 points or an outline
   *  without extent, and p is then missing */
  int getCenter(Point& p) const;
  /** Mean of the points; later points equal to point 0 don't count. (0, 0) without points. @return
   * 1 */
  int getCentroid(Point& p) const;
  /** Bounding box. @return 1; 0 without points, and rect is then missing */
  int getRect(Rect& rect) const;
  /** Writes "%f,%f\n" for each point. */
  void print() const;

 private:
  void grow(size_t least);

  int ind = 0;
  std::vector<float> x;
  std::vector<float> y;
};

}  // namespace ZQV
