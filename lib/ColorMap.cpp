#include "ColorMap.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string_view>

#include "RGB.h"
#include "StrLib.h"
#include "Tools.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr size_t MAX_NAME = 19;
constexpr size_t HEX_LENGTH = 7;
constexpr size_t DECIMAL_LENGTH = 10;

struct Fixed {
  const char* name;
  int ind;
};

constexpr Fixed FIXED[] = {
    {"end", -2},    {"none", -1},   {"off", -1},    {"back", -1},   {"pblk", 500},
    {"pbblk", 501}, {"ptblk", 502}, {"pwht", 503},  {"pbwht", 504}, {"ptwht", 505},
    {"pgry", 506},  {"pbgry", 507}, {"ptgry", 508},
};

/** Reads three numbers of equal width behind the "#". @return false if there is another character
 */
bool readChannels(std::string_view text, int base, std::array<float, 3>& channels) {
  const size_t digits = (text.size() - 1) / channels.size();
  for (size_t i = 0; i < channels.size(); i++) {
    int v = 0;
    for (const char c : text.substr(1 + i * digits, digits)) {
      const bool number = c >= '0' && c <= '9';
      const bool letter = base == 16 && ((c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'));
      if (!number && !letter) return false;
      v = v * base + (number ? c - '0' : (c | 0x20) - 'a' + 10);
    }
    channels[i] = static_cast<float>(v) / 255.0F;
  }
  return true;
}

}  // namespace

int ColorMap::init() {
  num = num_fill = 0;
  return 1;
}

int ColorMap::init(int n) {
  if (n < 1) return 0;
  colors.assign(static_cast<size_t>(n), Color());
  return init();
}

int ColorMap::add(const char* name, float r, float g, float b) {
  if (num == getMax()) {
    Zqv::outWarning("Color map size exceeded %d > %d\n", num, getMax());
    return -1;
  }
  const std::string_view text = name != nullptr ? name : "";
  // All entries, also those no longer in use: a table that was reset still knows its names.
  auto found = std::find_if(colors.begin(), colors.end(),
                            [&](const Color& c) { return !c.name.empty() && c.name == text; });
  if (found == colors.end()) {
    found = colors.begin() + num++;
    *found = Color();
    found->name = text.substr(0, MAX_NAME);
  } else {
    Zqv::outDebug(5, "Color name already exists, overwriting: %s\n", found->name.c_str());
  }
  found->red = r;
  found->grn = g;
  found->blu = b;
  return static_cast<int>(found - colors.begin());
}

int ColorMap::add(const char* name, const RGB& rgb) {
  return add(name, rgb.red, rgb.grn, rgb.blu);
}

int ColorMap::getInd(const char* text) {
  if (!StrLib::valid(text)) return -1;
  for (const Fixed& f : FIXED) {
    if (StrLib::iequal(text, f.name)) return f.ind;
  }
  for (int i = 0; i < num; i++) {
    if (StrLib::iequal(text, colors[static_cast<size_t>(i)].name.c_str())) return i;
  }
  const std::string_view view = text;
  if (view[0] == '#') {
    std::array<float, 3> c{};
    const int base = view.size() == HEX_LENGTH ? 16 : 10;
    if (view.size() != HEX_LENGTH && view.size() != DECIMAL_LENGTH) return -1;
    return readChannels(view, base, c) ? add(text, c[0], c[1], c[2]) : -1;
  }
  if (view[0] < '0' || view[0] > '9') return -1;
  const long n = std::strtol(text, nullptr, 10);
  return static_cast<int>(std::min<long>(n, std::numeric_limits<int>::max()));
}

/** The entry, the last one for an i past the end; absent for a negative i and for an empty table.
 */
const Color* ColorMap::find(int i) const {
  i = std::min(i, num - 1);
  return i < 0 ? nullptr : &colors[static_cast<size_t>(i)];
}

const char* ColorMap::getName(int i) const {
  const Color* c = find(i);
  return c != nullptr ? c->name.c_str() : "";
}

int ColorMap::get(int i, RGB& rgb) const {
  return getRGB(i, rgb.red, rgb.grn, rgb.blu);
}

int ColorMap::getRGB(int i, float& r, float& g, float& b) const {
  const Color* c = find(i);
  r = c != nullptr ? c->red : -1.0F;
  g = c != nullptr ? c->grn : -1.0F;
  b = c != nullptr ? c->blu : -1.0F;
  return 1;
}

int ColorMap::getIRGB(int i, int& r, int& g, int& b) const {
  const Color* c = find(i);
  r = c != nullptr ? Tools::cut(static_cast<double>(c->red * 255.0F)) : -1;
  g = c != nullptr ? Tools::cut(static_cast<double>(c->grn * 255.0F)) : -1;
  b = c != nullptr ? Tools::cut(static_cast<double>(c->blu * 255.0F)) : -1;
  return 1;
}

int ColorMap::getValue(int i) const {
  if (colors.empty()) return -1;
  const int last = std::max(std::min(i, num - 1), 0);
  return colors[static_cast<size_t>(last)].value;
}

int ColorMap::setValue(int i, int v) {
  if (i < 0 || i >= num) return 0;
  colors[static_cast<size_t>(i)].value = v;
  return 1;
}

int ColorMap::setNumFill(int n) {
  if (n < 0 || n > num) return 0;
  num_fill = n;
  return 1;
}

bool ColorMap::isColorNear(int i, const RGB& rgb) const {
  const Color* c = find(i);
  if (c == nullptr) return false;
  return std::fabs(c->red - rgb.red) + std::fabs(c->grn - rgb.grn) + std::fabs(c->blu - rgb.blu) <
         0.01F;
}

void ColorMap::print() const {
  std::printf("Fill: %d\n", num_fill);
  for (int i = 0; i < num; i++) {
    const Color& c = colors[static_cast<size_t>(i)];
    std::printf("%3d - %8d (%4.2f,%4.2f,%4.2f) %s\n", i, c.value, static_cast<double>(c.red),
                static_cast<double>(c.grn), static_cast<double>(c.blu), c.name.c_str());
  }
}

}  // namespace ZQV
