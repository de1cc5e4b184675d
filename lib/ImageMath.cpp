#include "ImageMath.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
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
  Domain to = domain;
  Domain from = source.getDomain();
  visitPlane(to, from,
             [&](int x, int y, const GridPoint& g) { result.setPixel(x, y, source.getPixel(g)); });
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
