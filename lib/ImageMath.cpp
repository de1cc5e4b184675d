#include "ImageMath.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <unordered_map>
#include <utility>
#include <vector>

#include "Calc.h"
#include "ColorMap.h"
#include "Const.h"
#include "Domain.h"
#include "EarthPoint.h"
#include "GeomBox.h"
#include "Grid.h"
#include "GridPoint.h"
#include "Image.h"
#include "Point.h"
#include "RGB.h"
#include "Rect.h"
#include "Tools.h"

namespace ZQV {

namespace {

constexpr int INDEX_BITS = 8;
constexpr int MAX_INDEX = 256;
constexpr int TRUE_BITS = 24;
constexpr size_t MAX_KNOWN = 65536;

/** Empties pixel and colour store and gives the header another depth. */
void setForm(Image& image, int bits, int color_type) {
  image.setDepth(bits);
  image.setBitsPixel(bits);
  image.setBytesLine();
  image.setColorType(color_type);
  image.freeColors();
  image.setNumColors(0);
}

/** Turns each pixel of source into one of result; a raw value is worked out once. */
template <typename Convert>
void convertPixels(const Image& source, Image& result, Convert convert) {
  std::unordered_map<int, int> known;
  for (int y = 0; y < source.getHeight(); y++) {
    int last_raw = 0;
    int last = 0;
    for (int x = 0; x < source.getWidth(); x++) {
      const int raw = source.getVal(x, y);
      if (x == 0 || raw != last_raw) {
        if (known.size() >= MAX_KNOWN) known.clear();
        const auto [place, is_new] = known.try_emplace(raw, 0);
        if (is_new) place->second = convert(raw, x, y);
        last_raw = raw;
        last = place->second;
      }
      result.setPixel(x, y, last);
    }
  }
}

/** Calls visit(x, y, earth point) for each pixel of a georeferenced image. @return 0 for another */
template <typename Visit>
int visitEarth(Image& image, Visit visit) {
  if (!image.getDomain().isSet()) return 0;
  for (int y = 0; y < image.getHeight(); y++) {
    for (int x = 0; x < image.getWidth(); x++) {
      EarthPoint e;
      image.tran(GridPoint(static_cast<float>(x), static_cast<float>(y)), e);
      visit(x, y, e);
    }
  }
  return 1;
}

/** Calls visit(x, y, grid point of other) for each pixel of a domain, walked from the upper left
 * corner of its limits in single precision. */
template <typename Visit>
void visitPlane(Domain& domain, Domain& other, Visit visit) {
  const Rect limits = domain.getLimits();
  float py = limits.ymax;
  for (int y = 0; y < domain.getNy(); y++, py -= domain.getDy()) {
    float px = limits.xmin;
    for (int x = 0; x < domain.getNx(); x++, px += domain.getDx()) {
      EarthPoint e;
      GridPoint g;
      // What isn't on the earth has no grid point and reads as 0.
      if (domain.tran(Point(px, py), e) == 0 && e.lat == Const::FMISS) continue;
      other.tran(e, g);
      visit(x, y, g);
    }
  }
}

/** Resamples within one projected plane, where the way over the earth leads back to where it began
 * but for the rounding of latitude and longitude. It is taken at the ends of short spans, and
 * between them only where that rounding could make a difference: the result is the same as that of
 * taking it for each pixel. */
class PlaneRemap {
 public:
  PlaneRemap(const Image& image, const Domain& domain, Image& destination)
      : source(image), result(destination), to(domain), from(image.getDomain()) {
    cell = std::min(std::fabs(from.getDx()), std::fabs(from.getDy()));
    if (source.hasColors()) {
      nearest = 0.5F;
      more = 0;
    }
    right = static_cast<float>(source.getWidth() - 1);
    bottom = static_cast<float>(source.getHeight() - 1);
  }

  /** The two share a plane on which what lies between two places of the earth does so, too, and the
   * pixels are bytes. */
  static bool fits(const Image& source, const Domain& domain) {
    constexpr int planes[] = {Domain::PSTEREO, Domain::MERC,   Domain::LAMB, Domain::ORTHO,
                              Domain::SAT,     Domain::LAMBAZ, Domain::MOLL};
    return domain.getNx() > 0 && DomainVal::compareProj(domain, source.getDomain()) &&
           std::any_of(std::begin(planes), std::end(planes),
                       [&](int code) { return domain.isProj(code); }) &&
           source.getDepth() == INDEX_BITS && source.getBitsPixel() == INDEX_BITS &&
           source.getBytesLine() >= source.getWidth() &&
           source.findRow(source.getHeight() - 1) != nullptr;
  }

  void run() {
    const Rect limits = to.getLimits();
    columns.reserve(static_cast<size_t>(to.getNx()));
    float px = limits.xmin;
    for (int x = 0; x < to.getNx(); x++, px += to.getDx()) columns.push_back(px);
    py = limits.ymax;
    for (row = 0; row < to.getNy(); row++, py -= to.getDy()) runRow();
  }

 private:
  static constexpr int span = 16;
  static constexpr float tolerance = 1.0F / 32.0F;  ///< in cells of the source

  /** Where a pixel lies. */
  struct Place {
    Point p;
    EarthPoint e;
    GridPoint g;
  };

  Place locate(int x) {
    Place place;
    place.p.set(columns[static_cast<size_t>(x)], py);
    if (to.tran(place.p, place.e) != 0 || place.e.lat != Const::FMISS) from.tran(place.e, place.g);
    return place;
  }

  void runRow() {
    const int last = to.getNx() - 1;
    Place begin = locate(0);
    result.setPixel(0, row, source.getPixel(begin.g));
    for (int x = 0; x < last;) {
      const int next = std::min(x + span, last);
      const Place end = locate(next);
      const bool close = isClose(begin) && isClose(end) && isSmooth(begin, end);
      for (int i = x + 1; i < next; i++) {
        if (!close || !take(i)) result.setPixel(i, row, source.getPixel(locate(i).g));
      }
      result.setPixel(next, row, source.getPixel(end.g));
      x = next;
      begin = end;
    }
  }

  /** The way over the earth led back. */
  bool isClose(const Place& place) {
    GridPoint g;
    from.tran(place.p, g);
    return std::fabs(g.gx - place.g.gx) < tolerance / 4 &&
           std::fabs(g.gy - place.g.gy) < tolerance / 4;
  }

  /** No edge of the map lies between two places, and a last bit of latitude and longitude is far
   * below a cell. */
  [[nodiscard]] bool isSmooth(const Place& a, const Place& b) const {
    constexpr double last_bit = 1e-5;  // degrees
    constexpr double most_scale = 4.0;
    const auto from_origin = [&](float lon) {
      return std::remainder(static_cast<double>(lon) - static_cast<double>(to.getPLon()), 360.0);
    };
    const double east = from_origin(b.e.lon) - from_origin(a.e.lon);
    const double north = static_cast<double>(b.e.lat) - static_cast<double>(a.e.lat);
    const double arc =
        std::hypot(north, east * std::cos(static_cast<double>(a.e.lat) * Const::DRC));
    // Plane units a degree. On a conformal plane that along the row is that of any direction; the
    // others stay below a limit.
    double scale = 2.0 * std::fabs(static_cast<double>(b.p.x) - static_cast<double>(a.p.x)) / arc;
    if (!to.isProj(Domain::PSTEREO) && !to.isProj(Domain::MERC) && !to.isProj(Domain::LAMB)) {
      scale = std::max(scale, most_scale);
    }
    return std::fabs(east) < 180.0 &&
           last_bit * scale < static_cast<double>(cell) * static_cast<double>(tolerance / 2);
  }

  /** Stores a pixel by its place on the plane, if all places within the tolerance give the same. */
  bool take(int x) {
    GridPoint g;
    from.tran(Point(columns[static_cast<size_t>(x)], py), g);
    const float left = g.gx - tolerance;
    const float top = g.gy - tolerance;
    const float x_end = g.gx + tolerance;
    const float y_end = g.gy + tolerance;
    if (x_end < 0.0F || y_end < 0.0F || left >= right || top >= bottom) return true;  // off: 0
    if (!(left >= 0.0F && top >= 0.0F && x_end < right && y_end < bottom)) return false;
    const auto i1 = static_cast<int>(left + nearest);
    const auto j1 = static_cast<int>(top + nearest);
    const auto i2 = static_cast<int>(x_end + nearest);
    const auto j2 = static_cast<int>(y_end + nearest);
    int value = source.findRow(j1)[i1];
    if (!isUniform(i1, j1, i2 + more, j2 + more)) {
      // Between the same four pixels the least and the largest are those of the corners.
      if (more == 0 || i1 != i2 || j1 != j2 || source.getNumCut() != 0) return false;
      value = source.getPixel(left, top);
      if (source.getPixel(x_end, top) != value || source.getPixel(left, y_end) != value ||
          source.getPixel(x_end, y_end) != value) {
        return false;
      }
    }
    result.findRow(row)[x] = static_cast<unsigned char>(value);
    return true;
  }

  [[nodiscard]] bool isUniform(int i1, int j1, int i2, int j2) const {
    const unsigned char value = source.findRow(j1)[i1];
    for (int j = j1; j <= j2; j++) {
      const unsigned char* pixels = source.findRow(j);
      for (int i = i1; i <= i2; i++) {
        if (pixels[i] != value) return false;
      }
    }
    return true;
  }

  const Image& source;
  Image& result;
  Domain to;
  Domain from;
  std::vector<float> columns;  ///< x of each
  float py = 0.0F;             ///< y of the row
  int row = 0;
  float cell;            ///< of the source, the smaller side, in the plane
  float nearest = 0.0F;  ///< 0.5 where the nearest pixel counts, 0 where all four around do
  int more = 1;          ///< pixels that count to the right and below
  float right;           ///< last column and row, where nothing is seen any more
  float bottom;
};

}  // namespace

int ImageMath::clip(const Image& source, const GeomBox& box, Image& destination) {
  const int w = Tools::cut(static_cast<double>(box.width));
  const int h = Tools::cut(static_cast<double>(box.height));
  if (w < 1 || h < 1) return 0;
  Image result;
  result.copyInfo(source);
  result.freeColors();
  result.setSource(1);
  result.setWidth(w);
  result.setHeight(h);
  if (source.getDomain().isSet()) {
    Domain domain = source.getDomain();
    EarthPoint centre;
    domain.tran(GridPoint(box.x + box.width / 2.0F, box.y + box.height / 2.0F), centre);
    DomainVal val = domain.get();
    val.clat = centre.lat;
    val.clon = centre.lon;
    val.nx = w;
    val.ny = h;
    result.setDomain(val);
  }
  result.setBytesLine();
  if (result.allocData() == 0) return 0;
  for (int j = 0; j < h; j++) {
    for (int i = 0; i < w; i++) {
      result.setPixel(
          i, j, source.getPixel(static_cast<float>(i) + box.x, static_cast<float>(j) + box.y));
    }
  }
  destination = std::move(result);
  return 1;
}

int ImageMath::remap(const Image& source, const Domain& domain, Image& destination) {
  if (!domain.isSet()) return 0;
  Image result;
  result.copyInfo(source);
  result.setSource(1);
  result.setDomain(domain);
  result.setBytesLine();
  if (result.allocData() == 0) return 0;
  if (PlaneRemap::fits(source, domain)) {
    PlaneRemap(source, domain, result).run();
  } else {
    Domain to = domain;
    Domain from = source.getDomain();
    visitPlane(to, from, [&](int x, int y, const GridPoint& g) {
      result.setPixel(x, y, source.getPixel(g));
    });
  }
  destination = std::move(result);
  return 1;
}

int ImageMath::toIndex(const Image& source, int bits, Image& destination) {
  if (source.getColorType() == Image::INDEXED) {
    if (&destination != &source) destination = source;
    return 1;
  }
  if (bits != INDEX_BITS) return 0;
  Image result;
  result.copyInfo(source);
  setForm(result, bits, Image::INDEXED);
  result.allocColors(MAX_INDEX);
  result.setNumColors(0);
  result.setTransColor(-1);
  if (result.allocData() == 0) return 0;
  convertPixels(source, result, [&](int raw, int x, int y) {
    RGB rgb;
    source.getRGB(x, y, rgb);
    const int num = result.getNumColors();
    int i = 0;
    while (i < num && (result.getRed(i) != rgb.red || result.getGrn(i) != rgb.grn ||
                       result.getBlu(i) != rgb.blu)) {
      i++;
    }
    if (i == num && num < MAX_INDEX) {
      result.setNumColors(num + 1);
      result.setColor(i, rgb);
    }
    if (i < MAX_INDEX && source.hasTransColor() && raw == source.getTransColor()) {
      result.setTransColor(i);
    }
    return i;  // 256 when the table is full, which the byte of a pixel turns into 0
  });
  destination = std::move(result);
  return 1;
}

int ImageMath::toIndex(const Image& source, Image& destination) {
  return toIndex(source, INDEX_BITS, destination);
}

int ImageMath::toIndex(const Image& source, const ColorMap& map, Image& destination) {
  if (source.getColorType() == Image::INDEXED) {
    if (&destination != &source) destination = source;
    return 1;
  }
  const int num = std::min(map.getNum(), MAX_INDEX);
  Image result;
  result.copyInfo(source);
  setForm(result, INDEX_BITS, Image::INDEXED);
  result.allocColors(num);
  result.setTransColor(-1);
  if (result.allocData() == 0) return 0;
  std::vector<RGB> colors(static_cast<size_t>(num));
  for (int i = 0; i < num; i++) {
    map.get(i, colors[static_cast<size_t>(i)]);
    result.setColor(i, colors[static_cast<size_t>(i)]);
  }
  convertPixels(source, result, [&](int raw, int x, int y) {
    RGB rgb;
    source.getRGB(x, y, rgb);
    float least = 3.0F;
    int winner = 0;
    for (int i = 0; i < num; i++) {
      const RGB& c = colors[static_cast<size_t>(i)];
      const float distance =
          std::fabs(c.red - rgb.red) + std::fabs(c.grn - rgb.grn) + std::fabs(c.blu - rgb.blu);
      if (distance < least) {
        least = distance;
        winner = i;
      }
    }
    if (source.hasTransColor() && raw == source.getTransColor()) result.setTransColor(winner);
    return winner;
  });
  destination = std::move(result);
  return 1;
}

int ImageMath::toGray(const Image& source, Image& destination) {
  if (source.getColorType() == Image::INDEXED) {
    if (&destination != &source) destination = source;
    return 1;
  }
  Image result;
  result.copyInfo(source);
  setForm(result, INDEX_BITS, Image::INDEXED);
  result.allocColors(MAX_INDEX);
  if (result.allocData() == 0) return 0;
  for (int i = 0; i < MAX_INDEX; i++) {
    const float level = static_cast<float>(i) / 255.0F;
    result.setColor(i, level, level, level);
  }
  result.setNumColors(0);  // pixels are levels and not yet values of a device
  convertPixels(source, result, [&](int /*raw*/, int x, int y) {
    RGB rgb;
    source.getRGB(x, y, rgb);
    return Tools::cut((static_cast<double>(rgb.red) + static_cast<double>(rgb.grn) +
                       static_cast<double>(rgb.blu)) *
                      255.0 / 3.0);
  });
  destination = std::move(result);
  return 1;
}

int ImageMath::toTrueColor(const Image& source, int bits, Image& destination) {
  if (source.getColorType() == Image::TRUE_COLOR) {
    if (&destination != &source) destination = source;
    return 1;
  }
  Image result;
  result.copyInfo(source);
  setForm(result, bits, Image::TRUE_COLOR);
  if (bits >= TRUE_BITS) result.setMask(0xff0000, 0x00ff00, 0x0000ff);
  if (result.allocData() == 0) return 0;
  const auto channel = [](float v) {
    return std::clamp(Tools::cut(static_cast<double>(v * 255.0F)), 0, 255);
  };
  convertPixels(source, result, [&](int raw, int x, int y) {
    if (!source.hasColors()) {
      const int p = source.getPixel(x, y) & 0xff;
      return p << 16 | p << 8 | p;
    }
    const ImageColor* c = source.findColor(raw);
    if (c == nullptr || c->r == -1.0F) return 0;
    return channel(c->r) << 16 | channel(c->g) << 8 | channel(c->b);
  });
  destination = std::move(result);
  return 1;
}

int ImageMath::toTrueColor(const Image& source, Image& destination) {
  return toTrueColor(source, TRUE_BITS, destination);
}

int ImageMath::compressColor(Image& image) {
  if (image.getColorType() != Image::INDEXED) return 0;
  std::vector<RGB> distinct;
  std::vector<int> place;
  for (int i = 0; i < MAX_INDEX && image.findColor(i) != nullptr; i++) {
    const ImageColor* c = image.findColor(i);
    const auto found = std::find_if(distinct.begin(), distinct.end(), [&](const RGB& rgb) {
      return rgb.red == c->r && rgb.grn == c->g && rgb.blu == c->b;
    });
    place.push_back(static_cast<int>(found - distinct.begin()));
    if (found == distinct.end()) distinct.emplace_back(c->r, c->g, c->b);
  }
  if (distinct.size() == place.size()) return 1;
  const auto placed = [&](int raw) {
    return raw >= 0 && static_cast<size_t>(raw) < place.size() ? place[static_cast<size_t>(raw)]
                                                               : raw;
  };
  for (size_t i = 0; i < distinct.size(); i++) image.setColor(static_cast<int>(i), distinct[i]);
  image.setTransColor(placed(image.getTransColor()));
  for (int y = 0; y < image.getHeight(); y++) {
    for (int x = 0; x < image.getWidth(); x++) image.setPixel(x, y, placed(image.getVal(x, y)));
  }
  return 1;
}

int ImageMath::merge(Image& image, const Image& overlay) {
  if (!image.getDomain().isSet() || !overlay.getDomain().isSet()) return 0;
  Domain to = image.getDomain();
  Domain from = overlay.getDomain();
  visitPlane(to, from, [&](int x, int y, const GridPoint& g) {
    const int v = overlay.getPixel(g);
    if (v > 0) image.setPixel(x, y, v);
  });
  return 1;
}

int ImageMath::blank(Image& image, const EarthPoint& p1, const EarthPoint& p2) {
  return visitEarth(image, [&](int x, int y, const EarthPoint& e) {
    bool outside = e.lat > p1.lat || e.lat < p2.lat;
    if (p1.lon <= p2.lon) {
      outside = outside || e.lon < p1.lon || e.lon > p2.lon;
    } else {
      outside = outside || (e.lon > 0.0F && e.lon < p1.lon) || (e.lon < 0.0F && e.lon > p2.lon);
    }
    if (outside) image.setPixel(x, y, 0);
  });
}

int ImageMath::blank(Image& image, float radius) {
  const float plat = image.getPLat();
  const float plon = image.getPLon();
  return visitEarth(image, [&](int x, int y, const EarthPoint& e) {
    const float angle = Calc::earthAngle(e.lat, e.lon, plat, plon);
    if (angle == Const::FMISS || angle > radius) image.setPixel(x, y, 0);
  });
}

int ImageMath::maskLesser(Image& destination, const Image& source, Grid& grid) {
  if (&destination != &source) destination = source;
  return visitEarth(destination, [&](int x, int y, const EarthPoint& e) {
    const float limit = grid.getValue(e);
    if (limit == Const::FMISS || !(limit < destination.getValue(x, y))) {
      destination.setPixel(x, y, 0);
    }
  });
}

int ImageMath::maskGreater(Image& destination, const Image& source, Grid& grid) {
  if (&destination != &source) destination = source;
  return visitEarth(destination, [&](int x, int y, const EarthPoint& e) {
    const float limit = grid.getValue(e);
    if (limit == Const::FMISS || !(destination.getValue(x, y) < limit)) {
      destination.setPixel(x, y, 0);
    }
  });
}

}  // namespace ZQV
