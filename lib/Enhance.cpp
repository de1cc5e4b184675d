#include "Enhance.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "ColorFill.h"
#include "ColorMap.h"
#include "Const.h"
#include "PlotAttr.h"
#include "StrLib.h"
#include "Strings.h"
#include "TextFile.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr int MAX_CODE = 255;
constexpr size_t MAX_NAME = 19;
constexpr int MAX_LINE = 80;

/** The number at the start of a text; fallback if there is none. */
float numberOf(const char* text, float fallback) {
  char* end = nullptr;
  const float v = std::strtof(text, &end);
  return end == text ? fallback : v;
}

int colorOf(ColorMap& map, const char* attributes) {
  return map.getInd(PlotAttr(attributes).getColor());
}

/** The first c past the first character; absent if there is none. */
const char* findPast(const char* item, char c) {
  return *item != '\0' ? std::strchr(item + 1, c) : nullptr;
}

}  // namespace

void Enhance::init() {
  index.fill(0);
  for (size_t i = 0; i < max; i++) {
    value[i] = static_cast<float>(i);
  }
  name.clear();
  type = INDEX;
  num = 0;
}

int Enhance::set(ColorMap& map, const char* spec) {
  init();
  if (!StrLib::valid(spec)) {
    num = std::min(map.getNumFill(), static_cast<int>(max));
    for (int i = 0; i < num; i++) {
      index[static_cast<size_t>(i)] = i;
      value[static_cast<size_t>(i)] = static_cast<float>(i * static_cast<double>(MAX_CODE) / num);
    }
    return 1;
  }
  const Strings items(spec, ',');
  if (items.getNum() == 1 && !items.contains(0, "-")) {
    return readFile(map, items.getString(0));
  }
  for (int i = 0; i < items.getNum(); i++) {
    decode(map, items.getString(i));
  }
  validateValues();
  return 1;
}

int Enhance::readFile(ColorMap& map, const char* file_name) {
  TextFile file;
  if (file.open(file_name) == 0) {
    Zqv::outWarning("Enhance: Unable to read color fill file: %s\n", StrLib::valid(file_name, ""));
    return 0;
  }
  constexpr std::string_view keys[] = {"@name ", "@label "};
  std::string line;
  while (file.next(line, MAX_LINE) != 0) {
    if (line.empty() || line[0] == '#') {
      continue;
    }
    if (line[0] != '@') {
      decode(map, line.c_str());
    } else if (line.starts_with("@value")) {
      type = VALUE;
    } else if (line.starts_with("@index")) {
      type = INDEX;
    }
    for (const std::string_view key : keys) {
      // The character behind the word may be any.
      if (line.starts_with(key.substr(0, key.size() - 1))) {
        name = line.substr(std::min(key.size(), line.size()), MAX_NAME);
      }
    }
  }
  validateValues();
  return 1;
}

int Enhance::decode(ColorMap& map, const char* item) {
  if (num >= static_cast<int>(max)) {
    return 0;
  }
  item = item != nullptr ? item + std::strspn(item, " \t") : "";
  const bool is_value = *item == 'c';
  const char* dash = findPast(item, '-');
  if (!is_value && dash != nullptr) {
    return decodeRange(map, item, dash);
  }
  const char* colon = findPast(item, ':');
  if (colon != nullptr) {
    float& v = value[static_cast<size_t>(num)];
    v = numberOf(is_value ? item + 1 : item, v);
    type = is_value ? VALUE : type;
    item = colon + 1;
  }
  return add(colorOf(map, item));
}

/** One entry for each colour index from that of the first side to that of the second, either way.
 */
int Enhance::decodeRange(ColorMap& map, const char* item, const char* dash) {
  const long first = colorOf(map, std::string(item, dash).c_str());
  const long last = colorOf(map, dash + 1);
  const long step = last <= first ? -1 : 1;
  for (long i = first; i != last + step && num < static_cast<int>(max); i += step) {
    value[static_cast<size_t>(num)] = Const::FMISS;
    add(static_cast<int>(i));
  }
  return 1;
}

int Enhance::add(int color) {
  index[static_cast<size_t>(num)] = color;
  num++;
  return 1;
}

void Enhance::validateValues() {
  if (num < 1) {
    return;
  }
  if (value[0] == Const::FMISS) {
    if (type == VALUE) {
      return;
    }
    value[0] = 0.0F;
  }
  const auto n = static_cast<size_t>(num);
  if (type == INDEX && value[n - 1] == Const::FMISS) {
    const int last = (num * MAX_CODE - MAX_CODE) / num;  // a whole number: codes are
    value[n - 1] = static_cast<float>(last);
  }
  ColorFill::interpolate(value.data(), num, n < max ? value[n] : Const::FMISS);
}

int Enhance::setIndex(int i, int v) {
  if (i < 0 || i >= num) {
    return 0;
  }
  index[static_cast<size_t>(i)] = v;
  return 1;
}

int Enhance::getIndex(int i) const {
  return i >= 0 && i < num ? index[static_cast<size_t>(i)] : 0;
}

float Enhance::getValue(int i) const {
  return i >= 0 && i < num ? value[static_cast<size_t>(i)] : Const::FMISS;
}

int Enhance::getIndex(float v) const {
  const bool falls = num > 1 && value[1] <= value[0];
  if (falls ? v > value[0] : v < value[0]) {
    return -1;
  }
  for (int i = 0; i < num - 1; i++) {
    const float here = value[static_cast<size_t>(i)];
    const float next = value[static_cast<size_t>(i) + 1];
    if (falls ? here >= v && v > next : here <= v && v < next) {
      return i;
    }
  }
  return num - 1;
}

int Enhance::getColor(float v) const {
  const int i = getIndex(v);
  return i >= 0 ? index[static_cast<size_t>(i)] : -1;
}

void Enhance::print() const {
  std::printf("Enhance\nName: %s\n", name.c_str());
  for (int i = 0; i < num; i++) {
    std::printf("Val: %.2f Color: %d\n", static_cast<double>(getValue(i)), getIndex(i));
  }
}

}  // namespace ZQV
