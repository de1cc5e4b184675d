#include "PlotAttr.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string_view>

#include "StrLib.h"
#include "Strings.h"
#include "Tools.h"

namespace ZQV {

namespace {

constexpr size_t MAX_COLOR = 19;
constexpr size_t MAX_FONT = 119;
constexpr size_t MAX_SHORT_FONT = 19;

struct Keyword {
  const char* name;
  int value;
};

constexpr Keyword LINE_STYLES[] = {{"sol", 1}, {"dsh", 2}, {"lsdsh", 3}, {"llsdsh", 4}, {"dot", 5}};

constexpr Keyword FILL_STYLES[] = {
    {"sol", 0}, {"st", 1},   {"ost", 2}, {"rst", 3}, {"lst", 4}, {"vln", 5}, {"||", 5},
    {"dlr", 6}, {"\\\\", 6}, {"drl", 7}, {"//", 7},  {"hln", 8}, {"--", 8},  {"hat", 9},
    {"XX", 9},  {"clr", 10}, {"0%", 10}, {"1%", 11}, {"2%", 12}, {"3%", 13}, {"4%", 14},
    {"5%", 15}, {"6%", 16},  {"7%", 17}, {"8%", 18}, {"9%", 19}};

constexpr Keyword MARKERS[] = {{"pnt", 1}, {".", 1},      {"plus", 2},   {"+", 2},      {"star", 3},
                               {"*", 3},   {"crcl", 4},   {"circle", 4}, {"o", 4},      {"x", 5},
                               {"sqr", 6}, {"square", 6}, {"#", 6},      {"tri", 7},    {"^", 7},
                               {"dot", 8}, {"itri", 9},   {"v", 9},      {"light", 10}, {"z", 10}};
constexpr int DEFAULT_MARKER = 2;

template <size_t n>
const Keyword* findKeyword(const Keyword (&table)[n], const char* text) {
  const auto* end = table + n;
  const auto* found =
      std::find_if(table, end, [=](const Keyword& k) { return StrLib::iequal(text, k.name); });
  return found == end ? nullptr : found;
}

/** Const::FMISS unless the text is a finite number. */
float toNumber(const char* text) {
  if (!Tools::isFloat(text)) return Const::FMISS;
  const float v = std::strtof(text, nullptr);
  return std::isfinite(v) ? v : Const::FMISS;
}

/** Const::MISS unless the text is a number. */
int toInteger(const char* text) {
  return Tools::isInt(text) ? Tools::cut(static_cast<double>(std::strtol(text, nullptr, 10)))
                            : Const::MISS;
}

int toStyle(const char* text) {
  const Keyword* k = findKeyword(LINE_STYLES, text);
  return k != nullptr ? k->value : toInteger(text);
}

std::string cutText(const char* text, size_t max) {
  return text != nullptr ? std::string(std::string_view(text).substr(0, max)) : std::string();
}

}  // namespace

int PlotAttr::set(const char* text, const char* fallback) {
  return parse(StrLib::valid(text) ? text : fallback);
}

int PlotAttr::parse(const char* text) {
  init();
  const Strings fields(text, StrLib::index(text, ':') >= 0 ? ':' : ',');
  for (int i = 0; i < fields.getNum(); i++) {
    const char* field = fields.getString(i);
    if (i == 0 && StrLib::index(field, '=') < 0) {
      setColor(field);
    } else {
      parseField(field);
    }
  }
  return 1;
}

/** The forms with a "=" are tried first, so that "st=" and "sh=" don't fall to the letter "s". */
void PlotAttr::parseField(const char* field) {
  constexpr int key_length = 3;
  const auto has_key = [=](const char* key) { return StrLib::iequal(field, key, key_length); };
  const char* text = StrLib::length(field) >= key_length ? field + key_length : "";
  if (has_key("co=")) {
    setColor(text);
  } else if (has_key("wi=")) {
    width = toNumber(text);
  } else if (has_key("sh=")) {
    shadow = toInteger(text);
  } else if (has_key("st=")) {
    style = toStyle(text);
  } else if (has_key("fo=")) {
    setFont(text);
  } else if (has_key("fi=") || has_key("fp=")) {
    fill_pat = parseFillStyle(text);
  } else if (has_key("sc=") || has_key("hi=")) {
    height = toNumber(text);
  } else if (has_key("te=")) {
    expan = toNumber(text);
  } else {
    switch (field[0] | 0x20) {
      case 'w': width = toNumber(field + 1); break;
      case 's': style = toInteger(field + 1); break;
      case 't': font = cutText(text, MAX_SHORT_FONT); break;
      case 'f': fill_pat = toInteger(field + 1); break;
      case 'h': height = toNumber(field + 1); break;
      case 'e': expan = toNumber(field + 1); break;
      default: break;
    }
  }
}

int PlotAttr::update(const PlotAttr& other) {
  if (!other.color.empty()) setColor(other.getColor());
  if (other.validColorInd()) color_ind = other.color_ind;
  if (other.validWidth()) width = other.width;
  if (other.validHeight()) height = other.height;
  if (other.validFont()) font = other.font;
  if (other.validExpan()) expan = other.expan;
  if (other.validStyle()) style = other.style;
  if (other.validFillPat()) fill_pat = other.fill_pat;
  return 1;
}

bool PlotAttr::validColor() const {
  return color_ind != -1 && !color.empty() && !StrLib::iequal(color.c_str(), "off");
}

void PlotAttr::setColor(const char* name) {
  color = cutText(name, MAX_COLOR);
  color_ind = Const::MISS;
}

void PlotAttr::setFont(const char* name) {
  font = cutText(name, MAX_FONT);
}

int PlotAttr::parseFillStyle(const char* text) {
  const Keyword* k = findKeyword(FILL_STYLES, text);
  if (k != nullptr) return k->value;
  return text != nullptr ? Tools::cut(static_cast<double>(std::strtol(text, nullptr, 10))) : 0;
}

int PlotAttr::parseMarker(const char* text) {
  const Keyword* k = findKeyword(MARKERS, text);
  return k != nullptr ? k->value : DEFAULT_MARKER;
}

void PlotAttr::print() const {
  std::printf("PlotAttr co: %s %d ", color.c_str(), color_ind);
  std::printf("st: %d ", style);
  std::printf("he: %5.2f ", static_cast<double>(height));
  std::printf("wi: %5.2f ", static_cast<double>(width));
  std::printf("ex: %5.2f ", static_cast<double>(expan));
  std::printf("fi: %d ", fill_pat);
  std::printf("sh: %d ", shadow);
  std::printf("fo: %s\n", font.c_str());
}

}  // namespace ZQV
