#include "Symbol.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <string>
#include <string_view>

#include "Point.h"
#include "StrLib.h"
#include "TextFile.h"
#include "Tools.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr size_t MAX_SYMBOLS = 100;
constexpr size_t MAX_POINTS = 3000;
constexpr size_t MAX_NAME = 14;
constexpr int BREAK_L = -1;
constexpr int BREAK_F = -2;
constexpr int END = -9;

/** Takes the next word between white space. @return false at the end */
bool nextWord(std::string_view& text, std::string& word) {
  constexpr const char* space = " \t\n\v\f\r";
  const size_t from = text.find_first_not_of(space);
  if (from == std::string_view::npos) return false;
  const size_t to = std::min(text.find_first_of(space, from), text.size());
  word.assign(text.substr(from, to - from));
  text.remove_prefix(to);
  return true;
}

/** Reads "a,b"; what can't be read counts as 0. */
void readPair(const std::string& text, float& a, float& b) {
  const char* end = text.data() + text.size();
  const auto number = [end](const char* at, float& v) {
    return std::from_chars(at < end && *at == '+' ? at + 1 : at, end, v).ptr;
  };
  const char* at = number(text.data(), a);
  if (at != text.data() && at != end && *at == ',') {
    number(at + 1, b);
  }
}

/** A coordinate as it is stored. The small shift keeps 0.29 from becoming 28. */
int toStored(float v) {
  return Tools::cut((static_cast<double>(v) + 0.001) * 100.0);
}

}  // namespace

int Symbol::init(const char* file) {
  if (file != nullptr) read(file);
  return 1;
}

int Symbol::read(const char* file_name) {
  name.clear();
  index.clear();
  x.clear();
  y.clear();
  num = 0;
  symb = -1;
  std::string text;
  if (TextFile::readAll(file_name, text) == 0) {
    Zqv::outWarning("Symbol_read: unable to load symbol file: %s\n",
                    file_name != nullptr ? file_name : "");
    return 0;
  }
  std::string_view rest = text;
  const auto add = [this](int px, int py) {
    x.push_back(px);
    y.push_back(py);
  };
  bool expect_name = true;
  std::string word;
  // One place is kept for the end of the last symbol.
  while (name.size() <= MAX_SYMBOLS && x.size() < MAX_POINTS - 1 && nextWord(rest, word)) {
    if (expect_name) {
      if (name.size() == MAX_SYMBOLS) break;
      name.push_back(word.substr(0, MAX_NAME));
      index.push_back(x.size());
      expect_name = false;
    } else if (word[0] == '$') {
      add(END, 0);
      num++;
      expect_name = true;
    } else if (word[0] == 'L') {
      add(BREAK_L, 0);
    } else if (word[0] == 'F') {
      add(BREAK_F, 0);
    } else {
      float a = 0.0F;
      float b = 0.0F;
      readPair(word, a, b);
      add(toStored(a), toStored(b));
    }
  }
  add(END, 0);
  return 1;
}

int Symbol::setSymb(const char* symbol) {
  symb = -1;
  for (int i = 0; i < num && symb < 0; i++) {
    const std::string& stored = name[static_cast<size_t>(i)];
    if (StrLib::equal(symbol, stored.c_str(), static_cast<int>(stored.size()))) {
      symb = static_cast<int>(index[static_cast<size_t>(i)]);
    }
  }
  return symb < 0 ? 0 : 1;
}

int Symbol::get(Point& p) {
  if (symb < 0) return 0;
  const auto i = static_cast<size_t>(symb);
  if (x[i] == END) return 0;
  symb++;
  if (x[i] == BREAK_L || x[i] == BREAK_F) return 2;
  p.x = static_cast<float>(x[i] / 100.0);
  p.y = static_cast<float>(y[i] / 100.0);
  return 1;
}

}  // namespace ZQV
