#include "ColorFill.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "ColorMap.h"
#include "StrLib.h"
#include "Strings.h"
#include "TextFile.h"
#include "Tools.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr int MAX_CLASSES = 256;
constexpr size_t MAX_LABEL = 19;
constexpr int MAX_LINE = 80;
constexpr size_t LABEL_START = 7;  ///< in "@label text"
constexpr size_t NAME_START = 6;   ///< in "@name text"

const PlotAttr BLANK;

/** The first "-" past the first character; absent if there is none. */
const char* findDash(const char* item) {
  return *item != '\0' ? std::strchr(item + 1, '-') : nullptr;
}

std::string labelOf(std::string_view line, size_t start) {
  return std::string(line.substr(std::min(start, line.size()), MAX_LABEL));
}

}  // namespace

void ColorFill::init() {
  attr.clear();
  value.clear();
  label.clear();
  base = intrvl = Const::FMISS;
  num = 0;
}

int ColorFill::set(ColorMap& map, const char* spec) {
  init();
  if (spec == nullptr) {
    for (int i = 0; i < map.getNumFill(); i++) {
      PlotAttr a;
      a.setColor(map.getName(i));
      a.setColorInd(i);
      addClass(a, Const::FMISS);
    }
    return 1;
  }
  const Strings items(spec, ',');
  if (items.getNum() == 1) {
    const char* item = items.getString(0);
    if (!Tools::isInt(item) && findDash(item) == nullptr) return readFile(map, item);
  }
  for (int i = 0; i < items.getNum(); i++) decode(map, items.getString(i));
  return 1;
}

int ColorFill::setFill(ColorMap& map, const char* fallback) {
  const char* user = Zqv::getResrc("color_fill");
  const bool given =
      StrLib::valid(user) && !StrLib::iequal(user, "miss") && !StrLib::iequal(user, "def");
  set(map, given ? user : fallback);
  return given ? 2 : 1;
}

int ColorFill::readFile(ColorMap& map, const char* name) {
  TextFile file;
  if (file.open(name) == 0) return 0;
  std::string line;
  while (file.next(line, MAX_LINE) != 0) {
    if (line.empty() || line[0] == '#') continue;
    if (line[0] != '@') {
      decode(map, line.c_str());
    } else if (line.starts_with("@label")) {
      label = labelOf(line, LABEL_START);
    } else if (line.starts_with("@name")) {
      label = labelOf(line, NAME_START);
    }
  }
  validateValues();
  return 1;
}

int ColorFill::decode(ColorMap& map, const char* item) {
  if (num >= MAX_CLASSES) return 0;
  if (item == nullptr) item = "";
  item += std::strspn(item, " \t");
  const char* dash = findDash(item);
  if (dash != nullptr) return decodeRange(map, item, dash);
  PlotAttr a;
  float v = Const::FMISS;
  const char* colon = *item != '\0' ? std::strchr(item + 1, ':') : nullptr;
  if (colon != nullptr && Tools::isFloat(item)) {
    v = std::strtof(item, nullptr);
    item = colon + 1;
  }
  a.parse(item);
  a.setColorInd(map.getInd(a.getColor()));
  return addClass(a, v);
}

/** One class for each colour index from that of the first side to that of the second, either way.
 */
int ColorFill::decodeRange(ColorMap& map, const char* item, const char* dash) {
  PlotAttr a(std::string(item, dash).c_str());
  const PlotAttr end(dash + 1);
  const long first = map.getInd(a.getColor());
  const long last = map.getInd(end.getColor());
  const long step = last <= first ? -1 : 1;
  for (long i = first; i != last + step && num < MAX_CLASSES; i += step) {
    a.setColor(std::to_string(i).c_str());
    a.setColorInd(static_cast<int>(i));
    addClass(a, Const::FMISS);
  }
  return 1;
}

int ColorFill::addClass(const PlotAttr& a, float v) {
  if (num >= MAX_CLASSES) return 0;
  attr.push_back(a);
  value.push_back(v);
  num++;
  return 1;
}

/** Fills in the bounds between two that are given. The entry past the last one is unset. */
void ColorFill::validateValues() {
  if (areValuesSet()) interpolate(value.data(), num, Const::FMISS);
}

void ColorFill::interpolate(float* values, int n, float end) {
  int near = 0;
  while (near < n) {
    int far = near + 1;
    while (far < n && values[far] == Const::FMISS) far++;
    const float from = values[near];
    const float to = far < n ? values[far] : end;
    for (int i = near + 1; i < far; i++) {
      values[i] =
          (to - from) * static_cast<float>(i - near) / static_cast<float>(far - near) + from;
    }
    near = far;
  }
}

int ColorFill::setValues(const float* values, int n) {
  if (values == nullptr) return 0;
  for (int i = 0; i < num; i++) value[static_cast<size_t>(i)] = i < n ? values[i] : Const::FMISS;
  return 1;
}

float ColorFill::getValue(int i) const {
  return i >= 0 && i < num ? value[static_cast<size_t>(i)] : Const::FMISS;
}

/** Class of a value where there is one class at least; -1 below the first bound. */
int ColorFill::findClass(float v) const {
  if (areValuesSet()) {
    if (!(value[0] <= v)) return -1;
    for (int i = 0; i < num - 1; i++) {
      const auto k = static_cast<size_t>(i);
      if (value[k] <= v && v < value[k + 1]) return i;
    }
    return num - 1;
  }
  if (intrvl == 0.0F) return 0;
  // The small shift keeps a value on a boundary in its own class in spite of rounding.
  const int n = Tools::cut(std::floor(static_cast<double>((v - base) / intrvl) + 0.01)) % num;
  return n < 0 ? n + num : n;
}

int ColorFill::getInd(float v) const {
  if (v == Const::FMISS || num == 0) return Const::MISS;
  return findClass(v);
}

const PlotAttr& ColorFill::get(float v) const {
  return get(getInd(v));
}

const PlotAttr& ColorFill::get(int i) const {
  return i >= 0 && i < num ? attr[static_cast<size_t>(i)] : BLANK;
}

bool ColorFill::hasPatterns() const {
  return std::any_of(attr.begin(), attr.begin() + num,
                     [](const PlotAttr& a) { return a.validFillPat(); });
}

const char* ColorFill::getColorName(int i) const {
  return get(i).getColor();
}

int ColorFill::getColor(int i) const {
  return i >= 0 && i < num ? attr[static_cast<size_t>(i)].getColorInd() : -1;
}

int ColorFill::getColor(float v) const {
  if (num == 0) return Const::MISS;
  return getColor(findClass(v));
}

void ColorFill::print() const {
  std::printf("ColorFill\n");
  if (!label.empty()) std::printf("Name: %s\n", label.c_str());
  std::printf("Intrvl: %.2f Base: %.2f\n", static_cast<double>(intrvl), static_cast<double>(base));
  for (int i = 0; i < num; i++) {
    if (getValue(i) != Const::FMISS) std::printf("val: %.2f\n", static_cast<double>(getValue(i)));
    get(i).print();
  }
}

}  // namespace ZQV
