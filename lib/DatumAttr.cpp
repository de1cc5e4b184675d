#include "DatumAttr.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "Datum.h"
#include "Graph.h"
#include "StrLib.h"
#include "Strings.h"
#include "Tools.h"

namespace ZQV {

namespace {

struct Keyword {
  const char* name;
  int value;
};

constexpr Keyword types[] = {
    {"data", Datum::DATA},   {"value", Datum::VALUE}, {"text", Datum::TEXT},
    {"mark", Datum::MARK},   {"cloud", Datum::CLOUD}, {"wbarb", Datum::WBARB},
    {"cbarb", Datum::CBARB}, {"dbarb", Datum::DBARB}, {"vect", Datum::VECT},
    {"avect", Datum::AVECT}, {"track", Datum::TRACK}, {"symb", Datum::SYMB},
    {"wx", Datum::SYMB},     {"line", Datum::LINE}};

constexpr Keyword markers[] = {{"dot", 8},    {"pnt", 1},    {"plus", 2}, {"star", 3},
                               {"crcl", 4},   {"circle", 4}, {"x", 5},    {"sqr", 6},
                               {"square", 6}, {"tri", 7},    {"itri", 9}};

/** Steps of the positions: to the sides, and to the outer and the inner rows. */
constexpr float column_step = 0.012F;
constexpr float outer_row = 0.02F;
constexpr float inner_row = 0.012F;

/** Const::FMISS unless the text is a finite number. */
float toNumber(const char* text) {
  const float v = Tools::isFloat(text) ? std::strtof(text, nullptr) : Const::FMISS;
  return std::isfinite(v) ? v : Const::FMISS;
}

/** Const::MISS unless the text is a number. */
int toInteger(const char* text) {
  return Tools::isInt(text) ? StrLib::toInt(text) : Const::MISS;
}

/** The next number of an offset, 1 where there is none. */
float nextNumber(const char*& text) {
  char* end = nullptr;
  const float v = std::strtof(text, &end);
  const bool found = end != text && std::isfinite(v);
  text = end;
  while (*text == ',' || *text == ' ') {
    text++;
  }
  return found ? v : 1.0F;
}

}  // namespace

int DatumAttr::parse(const char* text) {
  const Strings items(text, ',');
  for (int i = 0; i < items.getNum(); i++) {
    const char* item = items.getString(i);
    if (item[0] == '%') {
      setForm(item);
    } else if (StrLib::iequal(item, "fm=", 3)) {
      setForm(item + 3);
    } else if (StrLib::iequal(item, "ta=", 3)) {
      // Two characters of the whole text, so that it has to be its first item: deliberate.
      setAlign(text);
    } else if (!parseType(item) && !parsePosition(item) && !parseField(item) &&
               StrLib::valid(item) && StrLib::index(item, '=') < 0) {
      setColor(item);
    }
  }
  return 1;
}

bool DatumAttr::parseType(const char* item) {
  const auto* found = std::find_if(std::begin(types), std::end(types), [item](const Keyword& k) {
    return StrLib::iequal(item, k.name);
  });
  if (found == std::end(types)) {
    return false;
  }
  type = found->value;
  return true;
}

bool DatumAttr::parsePosition(const char* item) {
  if (StrLib::length(item) != 2) {
    return false;
  }
  float up = 0.0F;
  switch (item[0] | 0x20) {
    case 'u': up = outer_row; break;
    case 't': up = inner_row; break;
    case 'c': break;
    case 'b': up = -inner_row; break;
    case 'l': up = -outer_row; break;
    default: return false;
  }
  switch (item[1] | 0x20) {
    case 'l':
      dx = -column_step;
      halign = Graph::HALIGN_RIGHT;
      break;
    case 'c':
      dx = 0.0F;
      halign = Graph::HALIGN_CENTER;
      break;
    case 'r':
      dx = column_step;
      halign = Graph::HALIGN_LEFT;
      break;
    default: return false;
  }
  dy = up;
  valign = Graph::VALIGN_HALF;
  return true;
}

/** An item with a key. @return false if there is no such key */
bool DatumAttr::parseField(const char* item) {
  constexpr float min_scale = 0.01F;
  constexpr float max_scale = 1000.0F;
  const auto has_key = [item](const char* key) {
    return StrLib::iequal(item, key, StrLib::length(key));
  };
  const char* equals = item + std::max(StrLib::index(item, '='), 0);
  const char* value = *equals == '=' ? equals + 1 : "";
  if (has_key("xy=")) {
    setOffset(value);
  } else if (has_key("rs=")) {
    StrLib::copy(resrc, sizeof resrc, value);
  } else if (has_key("co=")) {
    setColor(value);
  } else if (has_key("hi=")) {
    height = toNumber(value);
  } else if (has_key("sc=")) {
    scale = toNumber(value);
    if (!(scale >= min_scale && scale <= max_scale)) {
      scale = 1.0F;
    }
  } else if (has_key("wi=")) {
    width = toNumber(value);
  } else if (has_key("sh=")) {
    shadow = toInteger(value);
  } else if (has_key("fo=")) {
    StrLib::copy(font, sizeof font, value);
  } else if (has_key("te=") || has_key("exp=")) {
    expan = toNumber(value);
  } else if (has_key("mk=")) {
    setMarker(value);
  } else if (has_key("sf=")) {
    StrLib::copy(symbol, sizeof symbol, value);
  } else if (has_key("mn=")) {
    min = toNumber(value);
  } else if (has_key("mx=")) {
    max = toNumber(value);
  } else if (has_key("sk=")) {
    skip = toInteger(value);
  } else {
    return false;
  }
  return true;
}

void DatumAttr::setOffset(const char* numbers) {
  const float right = nextNumber(numbers);
  const float up = nextNumber(numbers);
  dx = right * column_step;
  dy = up * outer_row;
  halign = Graph::HALIGN_CENTER;
  if (dx != 0.0F) {
    halign = dx < 0.0F ? Graph::HALIGN_RIGHT : Graph::HALIGN_LEFT;
  }
  valign = Graph::VALIGN_HALF;
}

/** Alignment by the characters behind "ta=" at the beginning of the text: l, r or the middle; t, c,
 * s, b or half the height. */
void DatumAttr::setAlign(const char* text) {
  switch (StrLib::getChar(text, 3) | 0x20) {
    case 'l': halign = Graph::HALIGN_LEFT; break;
    case 'r': halign = Graph::HALIGN_RIGHT; break;
    default: halign = Graph::HALIGN_CENTER; break;
  }
  switch (StrLib::getChar(text, 4) | 0x20) {
    case 't': valign = Graph::VALIGN_TOP; break;
    case 'c': valign = Graph::VALIGN_CAP; break;
    case 's': valign = Graph::VALIGN_BASE; break;
    case 'b': valign = Graph::VALIGN_BOTTOM; break;
    default: valign = Graph::VALIGN_HALF; break;
  }
}

void DatumAttr::setColor(const char* name) {
  StrLib::copy(color, sizeof color, name);
}

void DatumAttr::setForm(const char* text) {
  StrLib::copy(form, sizeof form, text);
}

void DatumAttr::setMarker(const char* name) {
  const auto* found = std::find_if(
      std::begin(markers), std::end(markers),
      [name](const Keyword& k) { return StrLib::iequal(name, k.name, StrLib::length(k.name)); });
  marker = found != std::end(markers) ? found->value : toInteger(name);
}

void DatumAttr::print() const {
  const auto real = [](float v) { return static_cast<double>(v); };
  std::printf("DatumAttr ty: %d sc: %.2f xy: %.3f %.3f al: %d %d ", type, real(scale), real(dx),
              real(dy), halign, valign);
  std::printf("hi: %.2f wi: %.2f ex: %.2f sh: %d mk: %d ", real(height), real(width), real(expan),
              shadow, marker);
  std::printf("mn: %.2f mx: %.2f sk: %d fm: %s co: %s fo: %s sf: %s rs: %s\n", real(min), real(max),
              skip, form, color, font, symbol, resrc);
}

}  // namespace ZQV
