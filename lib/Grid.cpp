#include "Grid.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

#include "EarthPoint.h"
#include "GridPoint.h"
#include "Range.h"
#include "StrLib.h"
#include "String.h"

namespace ZQV {

namespace {

constexpr int64_t MAX_POINTS = int64_t{1}
                               << 27;  ///< half a gigabyte of values; no real field comes near

/** A text cut to what a field of n characters with its terminator holds. */
std::string cutText(const char* text, size_t n) {
  return StrLib::acopy(text).substr(0, n - 1);
}

}  // namespace

Grid::Grid(int cols, int rows) {
  setSize(cols, rows);
  allocData();
}

int Grid::copy(const Grid& other) {
  *this = other;
  return 1;
}

int Grid::copyInfo(const Grid& other) {
  if (this == &other) {
    return 1;
  }
  setSize(other.nx, other.ny);
  type = other.type;
  version = other.version;
  source = other.source;
  datim = other.datim;
  info = other.info;
  date = other.date;
  grid_type = other.grid_type;
  domain = other.domain;
  model = other.model;
  gen_name = other.gen_name;
  var = other.var;
  return 1;
}

int Grid::copyData(const Grid& other) {
  nx = other.nx;
  ny = other.ny;
  data = other.data;
  xloc = other.xloc;
  yloc = other.yloc;
  return 1;
}

void Grid::setDatim(const char* text) {
  datim = cutText(text, 50);
}

void Grid::setInfo(const char* text) {
  info = cutText(text, 90);
}

void Grid::setGenName(const char* text) {
  gen_name = cutText(text, 20);
}

void Grid::setSize(int cols, int rows) {
  if (cols != nx || rows != ny) {
    data.clear();
    xloc.clear();
    yloc.clear();
  }
  nx = cols;
  ny = rows;
}

void Grid::setDomain(const Domain& d) {
  domain = d;
}

Date Grid::getValidDate() const {
  Date valid = date;
  if (getForeTime().isSet()) {
    valid.addSeconds(getForeTime().getHours() * 3600);
  }
  return valid;
}

size_t Grid::count() const {
  const int64_t n = static_cast<int64_t>(nx) * ny;
  return nx < 1 || ny < 1 || n > MAX_POINTS ? 0 : static_cast<size_t>(n);
}

int Grid::allocData() {
  data.assign(count(), Const::FMISS);
  return data.empty() ? 0 : 1;
}

int Grid::allocLocate() {
  xloc.assign(count(), Const::FMISS);
  yloc.assign(count(), Const::FMISS);
  return xloc.empty() ? 0 : 1;
}

int Grid::setValue(int x, int y, float v) {
  if (!isIn(x, y) || data.empty()) {
    return 0;
  }
  data[at(x, y)] = v;
  return 1;
}

float Grid::getValue(int x, int y) const {
  return isValue() ? getValue1(0, 0) : getValue1(x, y);
}

float Grid::getValue(const GridPoint& g) const {
  if (data.empty() || !(g.gx >= 0 && g.gx <= static_cast<float>(nx - 1) && g.gy >= 0 &&
                        g.gy <= static_cast<float>(ny - 1))) {
    return Const::FMISS;
  }
  const int i = std::min(static_cast<int>(g.gx), nx - 1);
  const int j = std::min(static_cast<int>(g.gy), ny - 1);
  const double a = static_cast<double>(g.gx) - i;
  const double b = static_cast<double>(g.gy) - j;
  const bool last_col = i == nx - 1;
  const bool last_row = j == ny - 1;
  const float v00 = data[at(i, j)];
  if (last_col && last_row) {
    return v00;
  }
  const float v10 = last_col ? v00 : data[at(i + 1, j)];
  const float v01 = last_row ? v00 : data[at(i, j + 1)];
  const float v11 = last_col ? v01 : (last_row ? v10 : data[at(i + 1, j + 1)]);
  if (v00 == Const::FMISS || v10 == Const::FMISS || v01 == Const::FMISS || v11 == Const::FMISS) {
    return Const::FMISS;
  }
  if (last_col) {
    return static_cast<float>(b * v01 + (1 - b) * v00);
  }
  if (last_row) {
    return static_cast<float>(a * v10 + (1 - a) * v00);
  }
  return static_cast<float>(a * b * v11 + (1 - a) * b * v01 + (1 - b) * a * v10 +
                            (1 - a) * (1 - b) * v00);
}

float Grid::getValue(const EarthPoint& e) {
  EarthPoint copy = e;
  GridPoint g;
  tran(copy, g);
  return getValue(g);
}

float Grid::getValue(const Point& p) const {
  GridPoint g;
  tran(p, g);
  return getValue(g);
}

int Grid::setLocate(int x, int y, const Point& p) {
  if (!isIn(x, y) || xloc.empty()) {
    return 0;
  }
  xloc[at(x, y)] = p.x;
  yloc[at(x, y)] = p.y;
  return 1;
}

Point Grid::getLocate(int x, int y) const {
  return isIn(x, y) && !xloc.empty() ? Point(xloc[at(x, y)], yloc[at(x, y)]) : Point();
}

int Grid::getRange(float& min, float& max) const {
  min = max = Const::FMISS;
  for (const float v : data) {
    if (v != Const::FMISS) {
      min = min == Const::FMISS || v < min ? v : min;
      max = max == Const::FMISS || v > max ? v : max;
    }
  }
  return data.empty() ? 0 : 1;
}

int Grid::getRange(Range& range) const {
  return getRange(range.min, range.max);
}

float Grid::getAverage() const {
  double sum = 0;
  size_t n = 0;
  for (const float v : data) {
    if (v != Const::FMISS) {
      sum += v;
      n++;
    }
  }
  return n == 0 ? Const::FMISS : static_cast<float>(sum / static_cast<double>(n));
}

int Grid::scale(float f) {
  for (float& v : data) {
    v = v == Const::FMISS ? v : v * f;
  }
  return data.empty() ? 0 : 1;
}

int Grid::offset(float f) {
  for (float& v : data) {
    v = v == Const::FMISS ? v : v + f;
  }
  return data.empty() ? 0 : 1;
}

void Grid::print() const {
  printInfo();
  printStats();
}

void Grid::printInfo() const {
  std::printf("Grid: %s\n", info.c_str());
  std::printf("Type: %d %d %d %d\n", type, version, source, grid_type);
  std::printf("Model: %d %s\n", model, gen_name.c_str());
  std::printf("Date: %s\n", datim.c_str());
  date.print();
  std::printf("Variable: ");
  var.print();
  std::printf("Domain: ");
  domain.print();
}

void Grid::printStats() const {
  float min = 0;
  float max = 0;
  getRange(min, max);
  std::printf("Size: %d %d\n", nx, ny);
  std::printf("Max: %f Min: %f Ave: %f\n", static_cast<double>(max), static_cast<double>(min),
              static_cast<double>(getAverage()));
  std::printf("Miss: %d\n", static_cast<int>(std::count(data.begin(), data.end(), Const::FMISS)));
}

void Grid::printData() const {
  for (int y = 0; !data.empty() && y < ny; y++) {
    for (int x = 0; x < nx; x++) {
      std::printf("[%d,%d] = %f\n", x, y, static_cast<double>(data[at(x, y)]));
    }
  }
}

}  // namespace ZQV
