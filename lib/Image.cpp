#include "Image.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "EarthPoint.h"
#include "FloatArray.h"
#include "GridPoint.h"
#include "Point.h"
#include "RGB.h"
#include "Tools.h"

namespace ZQV {

namespace {

constexpr size_t MAX_DATIM = 49;
constexpr size_t MAX_INFO = 79;
constexpr int64_t MAX_DATA = int64_t{128} << 20;
constexpr int MAX_COLORS = 65536;
constexpr size_t NUM_VALUES = 256;
constexpr int MAX_CUTOFF = 4;

std::string cutText(const char* text, size_t max) {
  return std::string(std::string_view(text != nullptr ? text : "").substr(0, max));
}

/** To the nearest pixel. */
int nearest(float v) {
  return Tools::cut(static_cast<double>(v) + 0.5);
}

/** The channel under a mask, from 0.0 to 1.0; 0.0 without a mask. */
float maskedChannel(uint32_t raw, uint32_t mask) {
  if (mask == 0) return 0.0F;
  const int shift = std::countr_zero(mask);
  return static_cast<float>((raw & mask) >> shift) / static_cast<float>(mask >> shift);
}

}  // namespace

// Size and store.

int Image::copyInfo(const Image& other) {
  if (&other == this) return 0;
  static_cast<ImageInfo&>(*this) = static_cast<const ImageInfo&>(other);
  return 1;
}

int Image::copyData(const Image& other) {
  if (&other != this) data = other.data;
  return 1;
}

int Image::copy(const Image& other) {
  return copyInfo(other) != 0 ? copyData(other) : 0;
}

int Image::set(int w, int h, int bits) {
  width = w;
  height = h;
  depth = bits_pixel = bits;
  return setBytesLine();
}

int Image::set(const Domain& d, int bits) {
  domain = d;
  return set(d.getNx(), d.getNy(), bits);
}

int Image::set(const DomainVal& d, int bits) {
  domain.set(d);
  return set(d.nx, d.ny, bits);
}

int Image::setDomain(const Domain& d) {
  domain = d;
  width = d.getNx();
  height = d.getNy();
  return 1;
}

int Image::setDomain(const DomainVal& d) {
  domain.set(d);
  width = d.nx;
  height = d.ny;
  return 1;
}

int Image::bindDomain(const Domain& d) {
  domain = d;
  return 1;
}

int Image::setBytesLine() {
  const int64_t n = int64_t{width} * depth / 8;
  bytes_line = Tools::cut(static_cast<double>(n));
  return 1;
}

int Image::setBytesLine(int n) {
  bytes_line = n;
  return 1;
}

int Image::allocData() {
  data.clear();
  if (bytes_line < 1 || height < 1) return 1;
  const int64_t size = int64_t{bytes_line} * height;
  if (size > MAX_DATA) return 0;
  data.assign(static_cast<size_t>(size), 0);
  return 1;
}

int Image::clearData() {
  std::fill(data.begin(), data.end(), static_cast<unsigned char>(0));
  return data.empty() ? 0 : 1;
}

int Image::getRow(int y, unsigned char* buffer) const {
  const unsigned char* row = findRow(y);
  if (row == nullptr) return 0;
  std::memcpy(buffer, row, static_cast<size_t>(bytes_line));
  return bytes_line;
}

const unsigned char* Image::findRow(int y) const {
  if (y < 0 || y >= height || bytes_line < 1) return nullptr;
  const auto n = static_cast<size_t>(bytes_line);
  const size_t start = static_cast<size_t>(y) * n;
  return start + n <= data.size() ? data.data() + start : nullptr;
}

const unsigned char* Image::getBytes(int y, std::vector<unsigned char>& buffer) const {
  const unsigned char* row = findRow(y);
  if (row != nullptr && bits_pixel == 8 && bytes_line >= width) return row;
  buffer.resize(static_cast<size_t>(std::max(width, 0)));
  for (int x = 0; x < width; x++) {
    buffer[static_cast<size_t>(x)] = static_cast<unsigned char>(getVal(x, y));
  }
  return buffer.data();
}

// Header.

void Image::setDatim(const char* text) {
  datim = cutText(text, MAX_DATIM);
}

void Image::setInfo(const char* text) {
  info = cutText(text, MAX_INFO);
}

// Colour table.

int Image::allocColors(int n) {
  colors.clear();
  if (n < 1 || n > MAX_COLORS) return 0;
  colors.resize(static_cast<size_t>(n));
  num_colors = n;
  return 1;
}

float Image::getRed(int i) const {
  const ImageColor* c = i < num_colors ? findColor(i) : nullptr;
  return c != nullptr ? c->r : 0.0F;
}

float Image::getGrn(int i) const {
  const ImageColor* c = i < num_colors ? findColor(i) : nullptr;
  return c != nullptr ? c->g : 0.0F;
}

float Image::getBlu(int i) const {
  const ImageColor* c = i < num_colors ? findColor(i) : nullptr;
  return c != nullptr ? c->b : 0.0F;
}

int Image::getRGB(int i, RGB& rgb) const {
  const ImageColor* c = i < num_colors ? findColor(i) : nullptr;
  if (c == nullptr) return 0;
  rgb.set(c->r, c->g, c->b);
  return 1;
}

ImageColor* Image::entry(int i) {
  return i >= 0 && i < num_colors && static_cast<size_t>(i) < colors.size()
             ? &colors[static_cast<size_t>(i)]
             : nullptr;
}

int Image::setRed(int i, float v) {
  ImageColor* c = entry(i);
  if (c == nullptr) return 0;
  c->r = v;
  return 1;
}

int Image::setGrn(int i, float v) {
  ImageColor* c = entry(i);
  if (c == nullptr) return 0;
  c->g = v;
  return 1;
}

int Image::setBlu(int i, float v) {
  ImageColor* c = entry(i);
  if (c == nullptr) return 0;
  c->b = v;
  return 1;
}

int Image::setColor(int i, float r, float g, float b) {
  ImageColor* c = entry(i);
  if (c == nullptr) return 0;
  c->r = r;
  c->g = g;
  c->b = b;
  return 1;
}

int Image::setColor(int i, const RGB& rgb) {
  return setColor(i, rgb.red, rgb.grn, rgb.blu);
}

int Image::setColorVal(int i, int v) {
  ImageColor* c = entry(i);
  if (c == nullptr) return 0;
  c->val = v;
  return 1;
}

int Image::getColorVal(int i) const {
  const ImageColor* c = i < num_colors ? findColor(i) : nullptr;
  return c != nullptr ? c->val : 0;
}

// Level classes.

int Image::setCutoff(const char* text) {
  int v[MAX_CUTOFF] = {};
  const int n =
      text != nullptr ? std::sscanf(text, "%9d:%9d:%9d:%9d", &v[0], &v[1], &v[2], &v[3]) : 0;
  if (n < 1) return 0;
  cutbase = v[0];
  numcut = n - 1;
  cutoff[0] = 0;
  for (int i = 1; i < n; i++) cutoff[static_cast<size_t>(i)] = v[i];
  cutoff[static_cast<size_t>(n)] = 256;
  return 1;
}

int Image::setCutoff(int i, int v) {
  if (i < 0 || i > MAX_CUTOFF) return 0;
  cutoff[0] = 0;
  cutoff[static_cast<size_t>(i) + 1] = v;
  numcut = std::max(numcut, i + 1);
  cutoff[static_cast<size_t>(numcut) + 1] = 256;
  return 1;
}

int Image::getCutoff(int i) const {
  return i >= 0 && i < static_cast<int>(cutoff.size()) ? cutoff[static_cast<size_t>(i)]
                                                       : Const::MISS;
}

// Pixels.

/** Byte offset of a pixel that takes so many bytes in the store; -1 off the image. */
long Image::find(int x, int y, int bytes) const {
  if (x < 0 || x >= width || y < 0 || y >= height) return -1;
  const int64_t off = int64_t{y} * bytes_line + int64_t{x} * bytes;
  return off + bytes <= static_cast<int64_t>(data.size()) ? static_cast<long>(off) : -1;
}

int Image::getVal(int x, int y) const {
  const int bytes = bits_pixel / 8;
  const long off = find(x, y, bytes);
  if (off < 0) return 0;
  index = static_cast<int>(off);
  const unsigned char* p = data.data() + off;
  switch (bits_pixel) {
    case 8: return *p;
    case 16: return byte_order != 0 ? p[0] << 8 | p[1] : p[1] << 8 | p[0];
    case 24: return byte_order != 0 ? p[0] << 16 | p[1] << 8 | p[2] : p[2] << 16 | p[1] << 8 | p[0];
    case 32: {
      uint32_t v = 0;
      for (int i = 0; i < 4; i++) v = v << 8 | p[byte_order != 0 ? i : 3 - i];
      return static_cast<int>(v);
    }
    default: return 0;
  }
}

int Image::getPixel(int x, int y) const {
  if (depth == 16) {
    const long off = find(x, y, 2);
    if (off < 0) return 0;
    index = static_cast<int>(off);
    return data[static_cast<size_t>(off)] << 8 | data[static_cast<size_t>(off) + 1];
  }
  const int raw = getVal(x, y);
  if (depth != 8 || num_colors < 1 || colors.empty()) return raw;
  if (find(x, y, 1) < 0) return 0;
  const int last = std::min(num_colors, static_cast<int>(colors.size())) - 1;
  return colors[static_cast<size_t>(std::clamp(raw, 0, last))].val;
}

int Image::getPixel(float x, float y) const {
  // Nothing on the last column and row, not even exactly there: deliberate, see the header.
  if (!(x >= 0.0F && x < static_cast<float>(width - 1) && y >= 0.0F &&
        y < static_cast<float>(height - 1))) {
    return 0;
  }
  if (depth == 24) {
    const long off = find(nearest(x), nearest(y), std::max(bits_pixel / 8, 3));
    if (off < 0) return 0;
    index = static_cast<int>(off);
    const unsigned char* p = data.data() + off;
    return p[0] << 16 | p[1] << 8 | p[2];
  }
  if (depth != 8) return 0;
  if (!hasColors()) return sample(x, y);
  const long off = find(nearest(x), nearest(y), 1);
  if (off < 0) return 0;
  index = static_cast<int>(off);
  return data[static_cast<size_t>(off)];
}

/** Value of a data image between four pixels, which never mixes two level classes. */
int Image::sample(float x, float y) const {
  const int x0 = Tools::cut(static_cast<double>(x));
  const int y0 = Tools::cut(static_cast<double>(y));
  const long off = find(x0, y0, 1);
  const long below = find(x0 + 1, y0 + 1, 1);
  if (off < 0 || below < 0) return 0;
  index = static_cast<int>(off);
  const unsigned char* upper = data.data() + off;
  const unsigned char* lower = data.data() + below - 1;
  std::array<int, 4> p{upper[0], upper[1], lower[0], lower[1]};
  if (p[0] == p[1] && p[0] == p[2] && p[0] == p[3]) return p[0];
  bool mixed = false;
  int sentinel = -1;
  for (int k = 0; k <= numcut && numcut != 0; k++) {
    const int from = cutoff[static_cast<size_t>(k)];
    const int to = cutoff[static_cast<size_t>(k) + 1];
    const auto n = std::count_if(p.begin(), p.end(),
                                 [&](int v) { return v == cutbase || (v >= from && v < to); });
    if (n == 4) {
      mixed = false;
      for (int& v : p) {
        if (v == cutbase) v = sentinel = from;
      }
      break;
    }
    if (n > 0) mixed = true;
  }
  double fx = static_cast<double>(x) - x0;
  double fy = static_cast<double>(y) - y0;
  if (!pix_ave || mixed) {
    fx = fx > 0.5 ? 1.0 : 0.0;
    fy = fy > 0.5 ? 1.0 : 0.0;
  }
  const int v = Tools::cut((1.0 - fy) * (1.0 - fx) * p[0] + (1.0 - fy) * fx * p[1] +
                           (1.0 - fx) * fy * p[2] + fy * fx * p[3] + 0.5);
  return v == sentinel ? cutbase : v;
}

int Image::getPixel(const GridPoint& g) const {
  return getPixel(g.gx, g.gy);
}

int Image::getPixel(const Point& p) {
  GridPoint g;
  domain.tran(p, g);
  return getPixel(g.gx, g.gy);
}

int Image::getPixel(const EarthPoint& p) {
  EarthPoint e = p;
  GridPoint g;
  domain.tran(e, g);
  return getPixel(g.gx, g.gy);
}

int Image::getVal(const EarthPoint& p) {
  EarthPoint e = p;
  GridPoint g;
  domain.tran(e, g);
  return getVal(nearest(g.gx), nearest(g.gy));
}

int Image::setPixel(int x, int y, int v) {
  const int bytes = bits_pixel / 8;
  const long off = find(x, y, bytes);
  if (off < 0 || data.empty()) return 0;
  if (bits_pixel % 8 != 0 || bytes < 1 || bytes > 4) return 1;
  unsigned char* p = data.data() + off;
  for (int i = 0; i < bytes; i++) {
    p[byte_order != 0 ? bytes - 1 - i : i] =
        static_cast<unsigned char>(static_cast<uint32_t>(v) >> (8 * i) & 0xffU);
  }
  return 1;
}

int Image::setPixel(int v) {
  if (data.empty() || index < 0 || static_cast<size_t>(index) >= data.size()) return 0;
  if (bits_pixel == 8) data[static_cast<size_t>(index)] = static_cast<unsigned char>(v);
  return 1;
}

int Image::setPixel(const GridPoint& g, int v) {
  return setPixel(nearest(g.gx), nearest(g.gy), v);
}

bool Image::isPixelTrans(int x, int y) const {
  const int raw = getVal(x, y);
  if (trans_color != -1 && raw == trans_color) return true;
  const ImageColor* c = findColor(raw);
  return c != nullptr && c->r == -1.0F;
}

int Image::getRGB(int x, int y, RGB& rgb) const {
  rgb.init();
  if (color_type != TRUE_COLOR && color_type != INDEXED) return 0;
  const int raw = getVal(x, y);
  if (color_type == INDEXED) {
    const ImageColor* c = findColor(raw);
    if (c != nullptr) rgb.set(c->r, c->g, c->b);
  } else {
    const auto bits = static_cast<uint32_t>(raw);
    rgb.set(maskedChannel(bits, red_mask), maskedChannel(bits, grn_mask),
            maskedChannel(bits, blu_mask));
  }
  return raw;
}

// Physical values.

int Image::allocValues() {
  if (depth != 8) return 0;
  values.assign(NUM_VALUES, Const::FMISS);
  return 1;
}

int Image::setValue(int i, float v) {
  if (i < 0 || static_cast<size_t>(i) >= values.size()) return 0;
  values[static_cast<size_t>(i)] = v;
  return 1;
}

int Image::setValues(const FloatArray& v) {
  if (values.empty()) return 0;
  for (int i = 0; i < v.getNum() && i < static_cast<int>(values.size()); i++) {
    values[static_cast<size_t>(i)] = v.get(i);
  }
  return 1;
}

float Image::getValue(int i) const {
  return i >= 0 && static_cast<size_t>(i) < values.size() ? values[static_cast<size_t>(i)]
                                                          : Const::FMISS;
}

float Image::getValue(int x, int y) const {
  const int raw = getVal(x, y);
  return values.empty() ? static_cast<float>(raw) : getValue(raw);
}

float Image::getValue(float x, float y) const {
  return getValue(Tools::cut(static_cast<double>(x)), Tools::cut(static_cast<double>(y)));
}

float Image::getValue(const GridPoint& g) const {
  return getValue(g.gx, g.gy);
}

float Image::getValue(const Point& p) {
  GridPoint g;
  domain.tran(p, g);
  return getValue(g.gx, g.gy);
}

float Image::getValue(const EarthPoint& p) {
  EarthPoint e = p;
  GridPoint g;
  domain.tran(e, g);
  return getValue(g.gx, g.gy);
}

int Image::getIndex(float v) const {
  constexpr int last = NUM_VALUES - 1;
  if (values.empty()) {
    if (v > static_cast<float>(last)) return last;
    return v < 0.0F ? 0 : Tools::cut(static_cast<double>(v));
  }
  if (values[0] > v) return 0;
  for (size_t i = 0; i + 2 < NUM_VALUES; i++) {
    if (values[i] == Const::FMISS || values[i + 1] == Const::FMISS) continue;
    if (values[i] <= v && v < values[i + 1]) return static_cast<int>(i);
  }
  return last;
}

// Earth binding.

int Image::getDomain(Domain& d) const {
  d = domain;
  return 1;
}

DomainVal Image::getDomainVal() const {
  return domain.get();
}

int Image::getDomainProj() const {
  return domain.getProj();
}

float Image::getPLat() const {
  return domain.getPLat();
}

float Image::getPLon() const {
  return domain.getPLon();
}

float Image::getDx() const {
  return domain.getDx();
}

float Image::getDy() const {
  return domain.getDy();
}

Rect Image::getLimits() const {
  return domain.getLimits();
}

int Image::tran(EarthPoint& e, Point& p) {
  return domain.tran(e, p);
}

int Image::tran(const Point& p, EarthPoint& e) {
  return domain.tran(p, e);
}

int Image::tran(const GridPoint& g, Point& p) const {
  return domain.tran(g, p);
}

int Image::tran(const Point& p, GridPoint& g) const {
  return domain.tran(p, g);
}

int Image::tran(EarthPoint& e, GridPoint& g) {
  return domain.tran(e, g);
}

int Image::tran(const GridPoint& g, EarthPoint& e) {
  return domain.tran(g, e);
}

// Output for people.

void Image::print() const {
  std::printf("Source: %d\n", source);
  std::printf("Version: %d\n", version);
  std::printf("Date: %s\n", datim.c_str());
  date.print();
  std::printf("Info: %s\n", info.c_str());
  std::printf("Type: %d\n", type);
  std::printf("Size: %dx%d\n", width, height);
  std::printf("Resolution: %.2fx%.2f\n", static_cast<double>(xres), static_cast<double>(yres));
  std::printf("Offset: %.2fx%.2f\n", static_cast<double>(xoff), static_cast<double>(yoff));
  std::printf("Depth: %d\n", depth);
  std::printf("Bits per pixel: %d\n", bits_pixel);
  std::printf("Bytes per line: %d\n", bytes_line);
  std::printf("Bytes order: %d\n", byte_order);
  std::printf("Type of color: %d\n", color_type);
  std::printf("Number of colors: %d (%p)\n", num_colors, static_cast<const void*>(colors.data()));
  std::printf("Transparent color: %d\n", trans_color);
  std::printf("Image domain: ");
  domain.print();
  if (hasValues()) std::printf("Image has values\n");
  if (!hasCutoff()) return;
  std::printf("Cutoff-base: %d - %d ", cutbase, numcut);
  for (int i = 1; i <= numcut; i++) {
    if (getCutoff(i) != Const::MISS) {
      std::printf("%d ", getCutoff(i));
    } else {
      std::printf("- ");
    }
  }
  std::printf("\n");
}

void Image::printInt() const {
  print();
  std::printf("Data %p\n", static_cast<const void*>(getData()));
}

void Image::printValues() const {
  if (values.empty()) std::printf("No values\n");
  for (size_t i = 0; i < values.size(); i++) {
    if (values[i] != Const::FMISS) {
      std::printf("%d %f\n", static_cast<int>(i), static_cast<double>(values[i]));
    }
  }
}

void Image::printColors() const {
  if (colors.empty()) std::printf("No colors\n");
  for (int i = 0; i < num_colors; i++) {
    const ImageColor* c = findColor(i);
    if (c == nullptr) break;
    std::printf("%d %.2f %.2f %.2f = %d\n", i, static_cast<double>(c->r), static_cast<double>(c->g),
                static_cast<double>(c->b), c->val);
  }
}

int Image::printHist() const {
  if (depth != 8) return 0;
  std::array<int, NUM_VALUES> count{};
  for (int y = 0; y < height; y++) {
    for (int x = 0; x < width; x++) {
      const long off = find(x, y, 1);
      if (off >= 0) count[data[static_cast<size_t>(off)]]++;
    }
  }
  for (size_t i = 0; i < count.size(); i++) {
    if (count[i] == 0) continue;
    if (values.empty()) {
      std::printf("%3d %6d\n", static_cast<int>(i), count[i]);
    } else {
      std::printf("%3d [%8f] %6d\n", static_cast<int>(i), static_cast<double>(values[i]), count[i]);
    }
  }
  return 1;
}

int Image::printData(const EarthPoint& p) {
  std::printf("Ind: %d Value: %f\n", getVal(p), static_cast<double>(getValue(p)));
  return 1;
}

}  // namespace ZQV
