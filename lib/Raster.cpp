#include "Raster.h"

#include <algorithm>
#include <bit>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "Image.h"
#include "Points.h"
#include "Rect.h"
#include "StrLib.h"
#include "String.h"
#include "Tools.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr uint32_t WHITE = 0xffffff;
constexpr uint32_t BLACK = 0;
constexpr long MAX_PIXELS = 20L << 20;      ///< of one pixmap, of which a picture needs a copy
constexpr long MAX_ALL_PIXELS = 40L << 20;  ///< of all together
constexpr int SMALL_POLYGON = 12;           ///< edges walked without a list of active ones
constexpr int QUAD_ROWS = 64;               ///< of a quadrilateral filled in one go
constexpr double MITER_LIMIT = 11.0;        ///< degrees below which a corner is cut off, as in X

struct NamedColor {
  const char* name;
  int value;
};

/** The names of X that a background is likely to have. */
constexpr NamedColor NAMED_COLORS[] = {
    {"white", 0xffffff},       {"black", 0x000000},        {"red", 0xff0000},
    {"green", 0x00ff00},       {"blue", 0x0000ff},         {"yellow", 0xffff00},
    {"cyan", 0x00ffff},        {"magenta", 0xff00ff},      {"gray", 0xbebebe},
    {"grey", 0xbebebe},        {"lightgray", 0xd3d3d3},    {"lightgrey", 0xd3d3d3},
    {"darkgray", 0xa9a9a9},    {"darkgrey", 0xa9a9a9},     {"dimgray", 0x696969},
    {"navy", 0x000080},        {"navyblue", 0x000080},     {"midnightblue", 0x191970},
    {"darkblue", 0x00008b},    {"lightblue", 0xadd8e6},    {"skyblue", 0x87ceeb},
    {"steelblue", 0x4682b4},   {"darkgreen", 0x006400},    {"brown", 0xa52a2a},
    {"maroon", 0xb03060},      {"orange", 0xffa500},       {"beige", 0xf5f5dc},
    {"ivory", 0xfffff0},       {"tan", 0xd2b48c},          {"wheat", 0xf5deb3},
    {"lightyellow", 0xffffe0}, {"darkslategray", 0x2f4f4f}};

/** Pixel of a colour in the notation of X: a name, gray0 to gray100, or "#" and one to four
 * hexadecimal digits a channel. */
int namedColor(const char* text, int fallback) {
  if (*text == '#') {
    const int digits = (StrLib::length(text) - 1) / 3;
    if (digits < 1 || digits > 4 || StrLib::length(text) != 1 + 3 * digits) return fallback;
    int value = 0;
    for (int i = 0; i < 3; i++) {
      unsigned v = 0;
      for (int j = 0; j < digits; j++) {
        const int c = std::tolower(static_cast<unsigned char>(text[1 + i * digits + j]));
        if (std::isxdigit(c) == 0) return fallback;
        v = v * 16 + static_cast<unsigned>(c <= '9' ? c - '0' : c - 'a' + 10);
      }
      // One digit means the upper half of a byte, as in X; further digits are cut off.
      value = value << 8 | static_cast<int>(digits == 1 ? v << 4 : v >> (4 * (digits - 2)));
    }
    return value;
  }
  std::string key;
  for (const char* p = text; *p != '\0'; p++) {
    if (*p != ' ') key += static_cast<char>(std::tolower(static_cast<unsigned char>(*p)));
  }
  for (const NamedColor& c : NAMED_COLORS) {
    if (key == c.name) return c.value;
  }
  constexpr double step = 2.55;  // rounded as in the table of X, where 50 percent are 127
  for (int percent = 0; percent <= 100; percent++) {
    const std::string number = std::to_string(percent);
    if (key == "gray" + number || key == "grey" + number) {
      const int level = Tools::cut(percent * step + 0.5);
      return level << 16 | level << 8 | level;
    }
  }
  return fallback;
}

}  // namespace

int Raster::init() {
  ScreenDevice::init();
  name = "raster";
  return 1;
}

int Raster::setParam(const char* /*params*/) {
  return 1;
}

int Raster::open() {
  if (opened) return 0;
  fore_color = static_cast<int>(inverse ? BLACK : WHITE);
  back_color = static_cast<int>(inverse ? WHITE : BLACK);
  bg_color = back_color;
  if (background == "def") background.clear();
  if (!background.empty()) bg_color = namedColor(background.c_str(), back_color);
  dwindow = createPixmap();
  if (dwindow == 0) {
    Zqv::outError("Raster: unable to open a picture of %dx%d\n", width, height);
    return 0;
  }
  opened = true;
  drawing = dwindow;
  pens.fill(Pen());
  for (Pen& p : pens) p.color = static_cast<uint32_t>(fore_color);
  pens[TEXT].width = 1;
  clip.x = clip.y = 0;
  clip.width = width;
  clip.height = height;
  painted = 0;
  return 1;
}

int Raster::close() {
  if (!opened) return 0;
  painted = 0;
  pixmaps.clear();
  frames.assign(static_cast<size_t>(max_frame), XFrame());
  num_frame = 0;
  drawing = dwindow = 0;
  opened = false;
  return 1;
}

int Raster::getDevice(String& out) {
  return out.copy(
      ("raster," + std::to_string(width) + "x" + std::to_string(height) + "\n").c_str());
}

int Raster::resize(float w, float h) {
  if (!opened || !(w >= 1.0F) || !(h >= 1.0F)) return 0;
  const int old_width = width;
  const int old_height = height;
  setSize(w, h);
  const unsigned long grown = createPixmap();
  if (grown == 0) {
    width = old_width;
    height = old_height;
    return 0;
  }
  fillPixmap(grown, bg_color);
  copyPixmap(grown, dwindow);
  freePixmap(dwindow);
  if (drawing == dwindow) drawing = grown;
  dwindow = grown;
  return 1;
}

// Pixmaps.

Raster::Pixmap* Raster::find(unsigned long pixmap) {
  return pixmap >= 1 && pixmap <= pixmaps.size() ? &pixmaps[pixmap - 1] : nullptr;
}

unsigned long Raster::createPixmap() {
  painted = 0;
  const long size = static_cast<long>(width) * height;
  long sum = size;
  for (const Pixmap& p : pixmaps) sum += static_cast<long>(p.pixels.size());
  if (size > MAX_PIXELS || sum > MAX_ALL_PIXELS) return 0;
  const auto unused = std::find_if(pixmaps.begin(), pixmaps.end(),
                                   [](const Pixmap& p) { return p.pixels.empty(); });
  const auto place = unused - pixmaps.begin();
  if (unused == pixmaps.end()) pixmaps.emplace_back();
  Pixmap& p = pixmaps[static_cast<size_t>(place)];
  p.width = width;
  p.height = height;
  p.pixels.assign(static_cast<size_t>(size), static_cast<uint32_t>(bg_color));
  return static_cast<unsigned long>(place) + 1;
}

void Raster::freePixmap(unsigned long pixmap) {
  painted = 0;
  if (Pixmap* p = find(pixmap)) *p = Pixmap();
}

void Raster::copyPixmap(unsigned long to, unsigned long from) {
  Pixmap* target = find(to);
  const Pixmap* source = find(from);
  if (target == nullptr || source == nullptr || target == source) return;
  const int rows = std::min(target->height, source->height);
  const int columns = std::min(target->width, source->width);
  for (int row = 0; row < rows; row++) {
    const auto first = source->pixels.begin() + static_cast<long>(row) * source->width;
    std::copy(first, first + columns,
              target->pixels.begin() + static_cast<long>(row) * target->width);
  }
}

void Raster::fillPixmap(unsigned long pixmap, int color) {
  Pixmap* p = find(pixmap);
  if (p != nullptr) std::fill(p->pixels.begin(), p->pixels.end(), static_cast<uint32_t>(color));
}

Raster::Target Raster::unclipped() {
  Target t;
  Pixmap* p = opened ? find(drawing) : nullptr;
  if (p == nullptr) return t;
  t.pixels = p->pixels.data();
  t.stride = p->width;
  t.x2 = p->width;
  t.y2 = p->height;
  return t;
}

/** What is painted on now; worked out when the clip or the drawable has changed. */
inline const Raster::Target& Raster::target() {
  if (painted == drawing && painted != 0) return clipped;
  clipped = unclipped();
  clipped.x1 = std::clamp(clip.x, 0, clipped.x2);
  clipped.y1 = std::clamp(clip.y, 0, clipped.y2);
  clipped.x2 = std::clamp(clip.x + clip.width, clipped.x1, clipped.x2);
  clipped.y2 = std::clamp(clip.y + clip.height, clipped.y1, clipped.y2);
  painted = drawing;
  return clipped;
}

// Attributes.

Raster::Pen& Raster::pen(int element) {
  return pens[element >= LINE && element <= TEXT ? static_cast<size_t>(element) : 0];
}

int Raster::allocColor(float r, float g, float b) {
  if (r == -1.0F) return back_color;
  return (channel(r) >> 8) << 16 | (channel(g) >> 8) << 8 | channel(b) >> 8;
}

int Raster::setColor(int element, int value) {
  if (!opened) return 0;
  pen(element).color = static_cast<uint32_t>(value);
  return 1;
}

int Raster::setLineWidth(int element, float w) {
  if (!opened) return 0;
  pen(element).width = widthPixels(w);
  return 1;
}

int Raster::setLineStyle(int element, int style) {
  if (!opened) return 0;
  pen(element).style = style;
  return 1;
}

int Raster::setFillStyle(int element, int style) {
  if (!opened) return 0;
  pen(element).fill = style;
  return 1;
}

// Polygons. A pixel belongs to a polygon if its centre, a point of whole coordinates, lies inside;
// on an outline it belongs to what lies to the right of it, or below a horizontal one. Where an
// outline crosses itself the even-odd rule decides.

inline void Raster::advance(Edge& edge) {
  edge.x += edge.step;
  edge.error += edge.rest;
  if (edge.error > 0) {
    edge.error -= edge.height;
    edge.x++;
  }
}

/** @return false if the edge crosses no row of the target */
inline bool Raster::setEdge(const Vertex& a, const Vertex& b, const Target& t, Edge& edge) {
  const bool down = a.y < b.y;
  const Vertex& upper = down ? a : b;
  const Vertex& lower = down ? b : a;
  if (upper.y == lower.y || lower.y <= t.y1 || upper.y >= t.y2) return false;
  const int dx = lower.x - upper.x;
  const int dy = lower.y - upper.y;
  edge.top = upper.y;
  edge.bottom = lower.y;
  edge.x = upper.x;
  edge.error = 0;
  edge.height = dy;
  if (dy == 1) return true;  // its one row is that of the upper end
  edge.step = dx / dy;
  edge.rest = dx % dy;
  if (edge.rest < 0) {
    edge.rest += dy;
    edge.step--;
  }
  // The error runs from 1 - height to 0: x is the exact crossing rounded up.
  if (edge.top < t.y1) {
    const int64_t rows = t.y1 - edge.top;
    const int64_t rest = rows * edge.rest;
    const int64_t carried = (rest + dy - 1) / dy;
    edge.x += static_cast<int>(rows * edge.step + carried);
    edge.error = static_cast<int>(rest - carried * dy);
    edge.top = t.y1;
  }
  return true;
}

inline void Raster::paintSpan(const Target& t, const Pen& p, int y, int x1, int x2) {
  x1 = std::max(x1, t.x1);
  x2 = std::min(x2, t.x2);
  if (x1 >= x2) return;
  uint32_t* row = t.pixels + static_cast<long>(y) * t.stride;
  if (p.fill == 0) {
    const uint32_t color = p.color;
    for (int i = x1; i < x2; i++) row[i] = color;
    return;
  }
  const unsigned bits = stipple(p.fill)[static_cast<size_t>(y) & 7U];
  for (int i = x1; i < x2; i++) {
    if ((bits >> (static_cast<unsigned>(i) & 7U) & 1U) != 0) row[i] = p.color;
  }
}

/** Fills a polygon of up to SMALL_POLYGON vertices. */
void Raster::fillSmall(const Target& t, const Pen& p, const Vertex* v, int n) {
  Edge side[SMALL_POLYGON];
  int num = 0;
  int top = t.y2;
  int bottom = t.y1;
  for (int i = 0, last = n - 1; i < n; last = i++) {
    if (setEdge(v[last], v[i], t, side[num])) {
      top = std::min(top, side[num].top);
      bottom = std::max(bottom, side[num].bottom);
      num++;
    }
  }
  bottom = std::min(bottom, t.y2);
  for (int row = top; row < bottom; row++) {
    int cross[SMALL_POLYGON];
    int k = 0;
    for (int i = 0; i < num; i++) {
      Edge& e = side[i];
      if (row < e.top || row >= e.bottom) continue;
      int place = k++;
      for (; place > 0 && cross[place - 1] > e.x; place--) cross[place] = cross[place - 1];
      cross[place] = e.x;
      advance(e);
    }
    for (int i = 0; i + 1 < k; i += 2) paintSpan(t, p, row, cross[i], cross[i + 1]);
  }
}

/** Fills a polygon of any number of vertices, with a list of the edges that cross the row. */
void Raster::fillLarge(const Target& t, const Pen& p, const Vertex* v, size_t n) {
  edges.clear();
  edges.reserve(n);
  Edge edge;
  for (size_t i = 0, last = n - 1; i < n; last = i++) {
    if (setEdge(v[last], v[i], t, edge)) edges.push_back(edge);
  }
  if (edges.empty()) return;
  std::sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) { return a.top < b.top; });
  active.clear();
  size_t next = 0;
  for (int row = edges.front().top; row < t.y2 && (next < edges.size() || !active.empty()); row++) {
    const auto ended = [&](size_t i) { return edges[i].bottom <= row; };
    active.erase(std::remove_if(active.begin(), active.end(), ended), active.end());
    while (next < edges.size() && edges[next].top == row) active.push_back(next++);
    // Nearly in order from the row before, unless there are very many.
    constexpr size_t many = 64;
    const auto by_x = [&](size_t a, size_t b) { return edges[a].x < edges[b].x; };
    if (active.size() > many) std::sort(active.begin(), active.end(), by_x);
    for (size_t i = 1; i < active.size() && active.size() <= many; i++) {
      const size_t moved = active[i];
      size_t place = i;
      for (; place > 0 && edges[active[place - 1]].x > edges[moved].x; place--) {
        active[place] = active[place - 1];
      }
      active[place] = moved;
    }
    for (size_t i = 0; i + 1 < active.size(); i += 2) {
      paintSpan(t, p, row, edges[active[i]].x, edges[active[i + 1]].x);
    }
    for (const size_t i : active) advance(edges[i]);
  }
}

/** Fills the rectangle from (x1, y1) up to (x2, y2), these not included. */
void Raster::fillBox(const Target& t, const Pen& p, const Vertex& a, const Vertex& b) {
  const int end = std::min(b.y, t.y2);
  for (int row = std::max(a.y, t.y1); row < end; row++) paintSpan(t, p, row, a.x, b.x);
}

/** Fills four corners, of which the lowest row lies less than QUAD_ROWS under the highest: each
 * edge leaves its crossings row by row. */
inline void Raster::fillQuad(const Target& t, const Pen& p, const Vertex* v, int high, int low) {
  const int top = std::max(high, t.y1);
  const int rows = std::min(low, t.y2) - top;
  int cross[QUAD_ROWS][4];
  int count[QUAD_ROWS];
  for (int i = 0; i < rows; i++) count[i] = 0;
  Edge e;
  for (int i = 0, last = 3; i < 4; last = i++) {
    if (!setEdge(v[last], v[i], t, e)) continue;
    const int end = std::min(e.bottom - top, rows);
    int row = e.top - top;
    cross[row][count[row]++] = e.x;
    while (++row < end) {
      advance(e);
      cross[row][count[row]++] = e.x;
    }
  }
  for (int i = 0; i < rows; i++) {
    int* c = cross[i];
    if (count[i] == 4) std::sort(c, c + 4);
    paintSpan(t, p, top + i, std::min(c[0], c[1]), std::max(c[0], c[1]));
    if (count[i] == 4) paintSpan(t, p, top + i, c[2], c[3]);
  }
}

/** Fills four corners of which each lies on a row or on the next: what ends of edges upon the row
 * are apart. */
inline void Raster::fillRow(const Target& t, const Pen& p, Four::Ints vx, Four::Ints vy, int row) {
  if (row < t.y1 || row >= t.y2) return;
  int ends[4];
  int num = 0;
  for (int i = 0, last = 3; i < 4; last = i++) {
    if (vy[last] != vy[i]) ends[num++] = vy[i] == row ? vx[i] : vx[last];
  }
  // Four ends are those of two corners alone, between which nothing lies.
  if (num == 2) paintSpan(t, p, row, std::min(ends[0], ends[1]), std::max(ends[0], ends[1]));
}

/** Fills four corners, between the given rows. */
inline void Raster::fillCorners(const Target& t, const Pen& p, Four::Ints vx, Four::Ints vy,
                                int high, int low) {
  if (low == high + 1) {
    fillRow(t, p, vx, vy, high);
    return;
  }
  const Vertex v[] = {{vx[0], vy[0]}, {vx[1], vy[1]}, {vx[2], vy[2]}, {vx[3], vy[3]}};
  const bool flat_first =
      v[0].y == v[1].y && v[1].x == v[2].x && v[2].y == v[3].y && v[3].x == v[0].x;
  const bool steep_first =
      v[0].x == v[1].x && v[1].y == v[2].y && v[2].x == v[3].x && v[3].y == v[0].y;
  if (low - high > QUAD_ROWS) {
    fillSmall(t, p, v, 4);
  } else if (flat_first || steep_first) {
    const auto [left, right] = std::minmax(v[0].x, v[2].x);
    fillBox(t, p, {left, high}, {right, low});
  } else {
    fillQuad(t, p, v, high, low);
  }
}

/** Fills a polygon of four corners. */
inline void Raster::fillFour(const Target& t, const Pen& p, const float* px, const float* py) {
  const Four::Floats x = Four::load(px);
  const Four::Floats y = Four::load(py);
  // Most bins of a fine product lie between the pixels' centres, or beside the picture.
  const Four::Floats sign = {1.0F, -1.0F, 1.0F, -1.0F};
  const Four::Ints box = pixels(Four::bounds(x, y) * sign);
  const Vertex low{box[0], box[2]};
  const Vertex high{box[1], box[3]};
  if (low.x == high.x || low.y == high.y || high.x <= t.x1 || low.x >= t.x2 || high.y <= t.y1 ||
      low.y >= t.y2) {
    return;
  }
  fillCorners(t, p, pixels(x), pixels(y), low.y, high.y);
}

void Raster::placeCells(float* px, float* py, int n, const Rect& window) {
  const auto whole = [](Four::Floats v) {
    return __builtin_convertvector(pixels(v), Four::Floats);
  };
  int i = 0;
  for (; i + 4 <= n; i += 4) {
    Four::store(whole(Four::load(px + i)), px + i);
    Four::store(whole(Four::load(py + i)), py + i);
  }
  for (; i < n; i++) {
    px[i] = static_cast<float>(pixel(px[i]));
    py[i] = static_cast<float>(pixel(py[i]));
  }
  const Target& t = target();
  const auto [left, right] = std::minmax(window.xmin, window.xmax);
  const auto [top, bottom] = std::minmax(window.ymin, window.ymax);
  const auto limit = [](int painted_end, int window_end) {
    return static_cast<float>(std::min(painted_end, window_end));
  };
  cell_limits = Four::Floats{limit(t.x2, pixel(right) + 1), limit(-t.x1, -pixel(left)),
                             limit(t.y2, pixel(bottom) + 1), limit(-t.y1, -pixel(top))};
}

int Raster::findCells(const float* px, const float* py, int num, int* seen) const {
  // Of a side, as of a cell: smallest x, largest x with its sign turned, and so for y.
  const auto side = [&](int k) {
    const size_t at = 2 * static_cast<size_t>(k);
    constexpr Four::Floats sign = {1.0F, -1.0F, 1.0F, -1.0F};
    return Four::least(Four::Floats{px[at], px[at], py[at], py[at]} * sign,
                       Four::Floats{px[at + 1], px[at + 1], py[at + 1], py[at + 1]} * sign);
  };
  int found = 0;
  Four::Floats near = side(0);
  for (int k = 0; k < num; k++) {
    const Four::Floats far = side(k + 1);
    const Four::Floats box = Four::least(near, far);
    const Four::Floats across = __builtin_shufflevector(box, box, 1, 0, 3, 2);
    seen[found] = k;
    found += Four::holds((box < cell_limits) & (box < -across)) ? 1 : 0;
    near = far;
  }
  return found;
}

void Raster::fillCell(const float* px, const float* py) {
  const Target& t = target();
  if (t.pixels == nullptr) return;
  const auto ring = [](const float* v) {
    const Four::Ints sides = Four::cut(Four::load(v));
    return __builtin_shufflevector(sides, sides, 0, 2, 3, 1);
  };
  const Four::Ints vy = ring(py);
  const int high = std::min(std::min(vy[0], vy[1]), std::min(vy[2], vy[3]));
  const int low = std::max(std::max(vy[0], vy[1]), std::max(vy[2], vy[3]));
  fillCorners(t, pen(FILL), ring(px), vy, high, low);
}

int Raster::drawFill(int element, const Points& points) {
  const Target& t = target();
  const int n = points.getNum();
  if (t.pixels == nullptr || n < 1) return 0;
  const Pen& p = pen(element);
  const float* px = points.xs();
  const float* py = points.ys();
  if (n == 4 || (n == 5 && px[4] == px[0] && py[4] == py[0])) {
    fillFour(t, p, px, py);
    return 1;
  }
  if (n <= SMALL_POLYGON) {
    Vertex v[SMALL_POLYGON];
    for (int i = 0; i < n; i++) v[i] = {pixel(px[i]), pixel(py[i])};
    fillSmall(t, p, v, n);
    return 1;
  }
  vertices.resize(static_cast<size_t>(n));
  for (size_t i = 0; i < vertices.size(); i++) vertices[i] = {pixel(px[i]), pixel(py[i])};
  fillLarge(t, p, vertices.data(), vertices.size());
  return 1;
}

int Raster::clearRect(const Rect& rect) {
  const Target t = unclipped();
  if (t.pixels == nullptr) return 0;
  Pen p;
  p.color = static_cast<uint32_t>(bg_color);
  const int x1 = pixel(std::min(rect.xmin, rect.xmax));
  const int x2 = pixel(std::max(rect.xmin, rect.xmax));
  const int y1 = std::max(pixel(std::min(rect.ymin, rect.ymax)), t.y1);
  const int y2 = std::min(pixel(std::max(rect.ymin, rect.ymax)), t.y2);
  for (int row = y1; row < y2; row++) paintSpan(t, p, row, x1, x2);
  return 1;
}

// Lines.

/** A line one pixel thick, by Bresenham's rule; ties move on, as in the X server. Clipped before it
 * is walked.
 *  @param last  paint the end point too
 *  @param dash  in, out: place in the dashes */
void Raster::thinLine(const Target& t, const Pen& p, const Vertex& a, const Vertex& b, bool last,
                      int& dash) {
  const int dx = b.x - a.x;
  const int dy = b.y - a.y;
  const int64_t adx = std::abs(dx);
  const int64_t ady = std::abs(dy);
  const bool steep = adx < ady;
  const int64_t length = steep ? ady : adx;
  const int64_t other = steep ? adx : ady;
  const int start = dash;
  constexpr int all_dashes = 3600;  // a multiple of the length of each list
  dash = static_cast<int>((dash + length) % all_dashes);
  const bool left = dx < 0;
  const bool up = dy < 0;
  // After k steps along the longer axis the line has moved (2 k other + length) / (2 length) along
  // the shorter one.
  int64_t first = 0;
  int64_t end = length - (last ? 0 : 1);
  const auto limit_long = [&](int from, bool back, int low, int high) {
    // from + k or from - k within low to high - 1
    first = std::max<int64_t>(first, back ? from - (high - 1) : low - from);
    end = std::min<int64_t>(end, back ? from - low : high - 1 - from);
  };
  const auto limit_short = [&](int from, bool back, int low, int high) {
    const int64_t least = back ? from - (high - 1) : low - from;
    const int64_t most = back ? from - low : high - 1 - from;
    if (most < 0 || (other == 0 && least > 0)) {
      end = -1;
      return;
    }
    if (other == 0) return;
    const auto ceil_div = [](int64_t n, int64_t d) { return n <= 0 ? 0 : (n + d - 1) / d; };
    if (least > 0) first = std::max(first, ceil_div(2 * least * length - length, 2 * other));
    end = std::min(end, (2 * (most + 1) * length - length - 1) / (2 * other));
  };
  if (steep) {
    limit_long(a.y, up, t.y1, t.y2);
    limit_short(a.x, left, t.x1, t.x2);
  } else {
    limit_long(a.x, left, t.x1, t.x2);
    limit_short(a.y, up, t.y1, t.y2);
  }
  if (first > end) return;
  int64_t error = length > 0 ? 2 * first * other + length : 0;
  const int64_t moved = length > 0 ? error / (2 * length) : 0;
  error -= moved * 2 * length;
  const long long_step = steep ? (up ? -t.stride : t.stride) : (left ? -1 : 1);
  const long short_step = steep ? (left ? -1 : 1) : (up ? -t.stride : t.stride);
  uint32_t* at =
      t.pixels + static_cast<long>(a.y) * t.stride + a.x + first * long_step + moved * short_step;
  const Dashes d = dashes(p.style);
  size_t item = 0;
  int left_over = 0;
  if (d.n > 0) {
    int sum = 0;
    for (const int on_or_off : d.list) sum += on_or_off;
    left_over = static_cast<int>((start + first) % sum);
    while (left_over >= d.list[item]) left_over -= d.list[item++];
    left_over = d.list[item] - left_over;
  }
  for (int64_t k = first; k <= end; k++) {
    if (item % 2 == 0) *at = p.color;
    if (d.n > 0 && --left_over == 0) {
      item = (item + 1) % static_cast<size_t>(d.n);
      left_over = d.list[item];
    }
    at += long_step;
    error += 2 * other;
    if (error >= 2 * length) {
      error -= 2 * length;
      at += short_step;
    }
  }
}

/** Fills a convex outline of any coordinates by the rule of polygons. */
void Raster::fillConvex(const Target& t, const Pen& p, const double (*v)[2], int n) {
  double low = v[0][1];
  double high = v[0][1];
  for (int i = 1; i < n; i++) {
    low = std::min(low, v[i][1]);
    high = std::max(high, v[i][1]);
  }
  const int first = std::max(static_cast<int>(std::ceil(low)), t.y1);
  const int end = std::min(static_cast<int>(std::ceil(high)), t.y2);
  for (int y = first; y < end; y++) {
    double x1 = 1e9;
    double x2 = -1e9;
    for (int i = 0, last = n - 1; i < n; last = i++) {
      const double ya = v[last][1];
      const double yb = v[i][1];
      if ((ya <= y) == (yb <= y)) continue;
      const double cross = v[last][0] + (v[i][0] - v[last][0]) * (y - ya) / (yb - ya);
      x1 = std::min(x1, cross);
      x2 = std::max(x2, cross);
    }
    if (x1 <= x2)
      paintSpan(t, p, y, static_cast<int>(std::ceil(x1)), static_cast<int>(std::ceil(x2)));
  }
}

/** The bar along a stretch of a wide line. @param before, after  pixels that it sticks out */
void Raster::wideSegment(const Target& t, const Pen& p, const double* a, const double* b,
                         double before, double after) {
  double ux = b[0] - a[0];
  double uy = b[1] - a[1];
  const double length = std::hypot(ux, uy);
  ux = length > 0.0 ? ux / length : 1.0;
  uy = length > 0.0 ? uy / length : 0.0;
  const double half = p.width / 2.0;
  const double v[4][2] = {{a[0] - ux * before - uy * half, a[1] - uy * before + ux * half},
                          {b[0] + ux * after - uy * half, b[1] + uy * after + ux * half},
                          {b[0] + ux * after + uy * half, b[1] + uy * after - ux * half},
                          {a[0] - ux * before + uy * half, a[1] - uy * before - ux * half}};
  fillConvex(t, p, v, 4);
}

/** The outer corner where a wide line bends at b. */
void Raster::wideJoin(const Target& t, const Pen& p, const Vertex& a, const Vertex& b,
                      const Vertex& c, bool bevel) {
  const double l1 = std::hypot(b.x - a.x, b.y - a.y);
  const double l2 = std::hypot(c.x - b.x, c.y - b.y);
  if (l1 == 0.0 || l2 == 0.0) return;
  const double ux = (b.x - a.x) / l1;
  const double uy = (b.y - a.y) / l1;
  const double wx = (c.x - b.x) / l2;
  const double wy = (c.y - b.y) / l2;
  const double turn = ux * wy - uy * wx;
  const double along = ux * wx + uy * wy;
  if (turn == 0.0) return;
  const double half = turn > 0.0 ? p.width / 2.0 : -p.width / 2.0;
  const double p1[2] = {b.x + uy * half, b.y - ux * half};
  const double p2[2] = {b.x + wy * half, b.y - wx * half};
  // The tip lies where the outer edges meet, unless they meet too far away.
  const double corner = 180.0 - std::atan2(std::fabs(turn), along) * 180.0 / M_PI;
  if (bevel || corner < MITER_LIMIT) {
    const double v[3][2] = {
        {static_cast<double>(b.x), static_cast<double>(b.y)}, {p1[0], p1[1]}, {p2[0], p2[1]}};
    fillConvex(t, p, v, 3);
    return;
  }
  const double s = half / (1.0 + along);
  const double v[4][2] = {{static_cast<double>(b.x), static_cast<double>(b.y)},
                          {p1[0], p1[1]},
                          {b.x + (uy + wy) * s, b.y - (ux + wx) * s},
                          {p2[0], p2[1]}};
  fillConvex(t, p, v, 4);
}

/** The dashes of a stretch of a wide line. @param done  in, out: length drawn before */
void Raster::wideDashes(const Target& t, const Pen& p, const Vertex& a, const Vertex& b,
                        double& done) {
  const Dashes d = dashes(p.style);
  const double length = std::hypot(b.x - a.x, b.y - a.y);
  if (length == 0.0) return;
  double sum = 0.0;
  for (const int on_or_off : d.list) sum += on_or_off;
  size_t item = 0;
  double from = -std::fmod(done, sum);
  done += length;
  // What lies beside the picture needs no dashes.
  const double slack = p.width + 1.0;
  double first = 0.0;
  double end = length;
  const auto within = [&](double start, double run, double low, double high) {
    if (run == 0.0) {
      if (start < low || start > high) end = -1.0;
      return;
    }
    const double s1 = (low - start) / run * length;
    const double s2 = (high - start) / run * length;
    first = std::max(first, std::min(s1, s2));
    end = std::min(end, std::max(s1, s2));
  };
  within(a.x, b.x - a.x, t.x1 - slack, t.x2 + slack);
  within(a.y, b.y - a.y, t.y1 - slack, t.y2 + slack);
  if (first > end) return;
  if (from < first) from += std::floor((first - from) / sum) * sum;
  for (; from < end; item = (item + 1) % static_cast<size_t>(d.n)) {
    const double to = from + d.list[item];
    const double s1 = std::max(from, 0.0) / length;
    const double s2 = std::min(to, length) / length;
    if (item % 2 == 0 && s1 < s2) {
      const double v1[2] = {a.x + (b.x - a.x) * s1, a.y + (b.y - a.y) * s1};
      const double v2[2] = {a.x + (b.x - a.x) * s2, a.y + (b.y - a.y) * s2};
      wideSegment(t, p, v1, v2, 0.0, 0.0);
    }
    from = to;
  }
}

/** Draws the vertices as a line of 1 or more pixels. @param text  ends stick out, corners are cut
 */
void Raster::wideLine(const Target& t, const Pen& p, bool text) {
  const size_t n = vertices.size();
  const Vertex& start = vertices.front();
  const Vertex& stop = vertices.back();
  const bool closed = n > 2 && start.x == stop.x && start.y == stop.y;
  const double cap = text && !closed ? p.width / 2.0 : 0.0;
  const bool dashed = dashes(p.style).n > 0;
  double done = 0.0;
  for (size_t i = 0; i + 1 < n; i++) {
    const Vertex& a = vertices[i];
    const Vertex& b = vertices[i + 1];
    if (dashed) {
      wideDashes(t, p, a, b, done);
      continue;
    }
    const double v1[2] = {static_cast<double>(a.x), static_cast<double>(a.y)};
    const double v2[2] = {static_cast<double>(b.x), static_cast<double>(b.y)};
    if (a.x != b.x || a.y != b.y || cap > 0.0) {
      wideSegment(t, p, v1, v2, i == 0 ? cap : 0.0, i + 2 == n ? cap : 0.0);
    }
    if (i + 2 < n) wideJoin(t, p, a, b, vertices[i + 2], text);
  }
  if (closed && !dashed) wideJoin(t, p, vertices[n - 2], start, vertices[1], text);
}

/** Draws the vertices with an element's pen. */
void Raster::strokeLine(int element) {
  const Target& t = target();
  Pen p = pen(element);
  if (t.x1 >= t.x2 || t.y1 >= t.y2) return;
  if (p.width > 0) {
    p.fill = 0;
    wideLine(t, p, element == TEXT);
    return;
  }
  int dash = 0;
  // The end of a closed line is its start: so that one within a single pixel leaves none, as in X.
  const Vertex& start = vertices.front();
  const Vertex& end = vertices.back();
  const bool paints_end = vertices.size() == 2 || start.x != end.x || start.y != end.y;
  for (size_t i = 0; i + 1 < vertices.size(); i++) {
    thinLine(t, p, vertices[i], vertices[i + 1], paints_end && i + 2 == vertices.size(), dash);
  }
}

int Raster::drawLine(int element, float x1, float y1, float x2, float y2) {
  if (!opened || drawing == 0) return 0;
  vertices.resize(2);
  vertices[0] = {pixel(x1), pixel(y1)};
  vertices[1] = {pixel(x2), pixel(y2)};
  strokeLine(element);
  return 1;
}

int Raster::drawLine(int element, const Points& points) {
  const int n = points.getNum();
  if (!opened || drawing == 0 || n < 1) return 0;
  const float* px = points.xs();
  const float* py = points.ys();
  vertices.resize(static_cast<size_t>(n));
  for (size_t i = 0; i < vertices.size(); i++) vertices[i] = {pixel(px[i]), pixel(py[i])};
  strokeLine(element);
  return 1;
}

// Images.

int Raster::paintImage(Image& image, const ImagePlace& place) {
  const Target t = place.masked ? unclipped() : target();
  if (t.pixels == nullptr) return 0;
  // As a window does it: no more of the image than the clip is large.
  const int columns = std::min({image.getWidth(), clip.width, t.x2 - place.x});
  const int rows = std::min({image.getHeight(), clip.height, t.y2 - place.y});
  for (int j = std::max(0, t.y1 - place.y); j < rows; j++) {
    uint32_t* row = t.pixels + static_cast<long>(place.y + j) * t.stride + place.x;
    for (int i = std::max(0, t.x1 - place.x); i < columns; i++) {
      const int v = image.getPixel(i, j);
      if (place.masked && (place.by_value ? v == place.trans : image.isPixelTrans(i, j))) continue;
      row[i] = static_cast<uint32_t>(v) & WHITE;
    }
  }
  return 1;
}

int Raster::getImage(Image& image) {
  image.init();
  const Pixmap* p = opened ? find(drawing) : nullptr;
  if (p == nullptr) return 0;
  constexpr int depth = 24;
  constexpr int bits = 32;
  image.setWidth(p->width);
  image.setHeight(p->height);
  image.setDepth(depth);
  image.setBitsPixel(bits);
  image.setBytesLine(p->width * static_cast<int>(sizeof(uint32_t)));
  image.setColorType(Image::TRUE_COLOR);
  image.setByteOrder(std::endian::native == std::endian::little ? 0 : 1);
  image.setMask(0xff0000, 0xff00, 0xff);
  if (image.allocData() == 0 || !image.validData()) return 0;
  std::memcpy(image.getData(), p->pixels.data(), p->pixels.size() * sizeof(uint32_t));
  return 1;
}

// Of a window, without effect.

int Raster::addCallback(const char* /*type*/, Listener* /*listener*/, const void* /*client*/) {
  return 1;
}

int Raster::doCallback(const char* /*type*/, const char* /*data*/) {
  return 1;
}

void Raster::callback(const char* /*type*/, const char* /*data*/, const void* /*client*/) {}

int Raster::setFont(const char* /*font*/) {
  return 0;
}

int Raster::drawText(const Point& /*p*/, const char* /*text*/) {
  return 0;
}

int Raster::setCursor(int /*cursor*/) {
  return 1;
}

int Raster::bell(int /*volume*/) {
  return 1;
}

void Raster::showTitle(const char* /*text*/) {}

}  // namespace ZQV
