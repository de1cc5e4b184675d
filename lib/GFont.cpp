#include "GFont.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string_view>

#include "Point.h"
#include "StrLib.h"
#include "TextFile.h"
#include "Tools.h"

namespace ZQV {

namespace {

constexpr size_t MAX_NAME = 99;
constexpr int DEFAULT_HEIGHT = 12;
constexpr size_t MAX_MOVES = 7500;
constexpr int END_FILE = 254;
constexpr int END_GLYPH = 255;
constexpr int PEN_UP = 128;
constexpr int MAX_PEN_UP = 253;
constexpr int BLANK_WIDTH = 40;

/** Reads the numbers and characters of a font, with white space free between them. */
class StrokeText {
 public:
  explicit StrokeText(std::string_view t) : text(t) {}

  /** The next number, and the white space behind it. @return false at the end and at anything else
   */
  bool next(int& v) {
    skipSpace();
    size_t end = pos;
    if (end < text.size() && (text[end] == '-' || text[end] == '+')) end++;
    const size_t digits = end;
    while (end < text.size() && text[end] >= '0' && text[end] <= '9') end++;
    if (end == digits) return false;
    constexpr int64_t most = std::numeric_limits<int>::max();
    int64_t n = 0;
    for (size_t i = digits; i < end; i++) {
      n = std::min(n * 10 + (text[i] - '0'), most);
    }
    v = static_cast<int>(text[pos] == '-' ? -n : n);
    pos = end;
    skipSpace();
    return true;
  }
  bool next(char& c) {
    if (pos >= text.size()) return false;
    c = text[pos++];
    return true;
  }

 private:
  void skipSpace() {
    while (pos < text.size() && std::isspace(static_cast<unsigned char>(text[pos])) != 0) pos++;
  }

  std::string_view text;
  size_t pos = 0;
};

}  // namespace

int GFont::read(const char* file) {
  index.fill(-1);
  width.fill(0);
  x.assign(1, END_GLYPH);
  y.assign(1, END_GLYPH);
  ch = 0;
  if (!StrLib::valid(file)) return 0;
  if (file[0] == '#') {
    const std::string_view text = file + 1;
    const size_t colon = text.find(':');
    name = text.substr(0, std::min(colon, MAX_NAME));
    std::replace(name.begin(), name.end(), '_', ' ');
    height = DEFAULT_HEIGHT;
    if (colon != std::string_view::npos) {
      height = Tools::cut(static_cast<double>(std::strtol(file + 1 + colon + 1, nullptr, 10)));
    }
    type = DEVICE;
    return 1;
  }
  std::string text;
  if (TextFile::readAll(file, text) == 0) return 0;
  type = STROKE;
  readStrokes(text);
  measure();
  return 1;
}

/** Fills the tables of pen moves. A text that breaks off ends the glyph at hand. */
void GFont::readStrokes(const std::string& text) {
  StrokeText in(text);
  x.clear();
  y.clear();
  int v = 0;
  char c = '\0';
  const auto start_glyph = [&] {
    if (!in.next(c)) return false;
    index[static_cast<unsigned char>(c)] = static_cast<int>(x.size());
    return true;
  };
  bool more = in.next(v) && (v == END_GLYPH || start_glyph());
  // One place is kept for the end of the last glyph.
  while (more && x.size() < MAX_MOVES - 1 && in.next(v) && v != END_FILE) {
    int py = END_GLYPH;
    if (v != END_GLYPH && !in.next(py)) break;
    x.push_back(v);
    y.push_back(py);
    if (v == END_GLYPH) more = start_glyph();
  }
  x.push_back(END_GLYPH);
  y.push_back(END_GLYPH);
}

void GFont::measure() {
  for (size_t i = 0; i < index.size(); i++) {
    if (index[i] < 0) continue;
    for (auto k = static_cast<size_t>(index[i]); x[k] != END_GLYPH; k++) {
      const bool up = x[k] >= PEN_UP && x[k] <= MAX_PEN_UP;
      width[i] = std::max(width[i], up ? x[k] - PEN_UP : x[k]);
    }
  }
  width[' '] = BLANK_WIDTH;
}

int GFont::setChar(char c) {
  const int start = index[static_cast<unsigned char>(c)];
  if (start < 0) return 0;
  ch = static_cast<size_t>(start);
  return 1;
}

int GFont::get(Point& p) {
  const int v = x[ch];
  if (v > MAX_PEN_UP) return 0;
  p.x = static_cast<float>(v < PEN_UP ? v : v - PEN_UP);
  p.y = static_cast<float>(y[ch]);
  ch++;
  return v < PEN_UP ? 1 : 2;
}

}  // namespace ZQV
