#include "Scanp.h"

#include <algorithm>
#include <cfloat>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "Const.h"
#include "StrLib.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr int no_width = 999;    ///< limit of a conversion without a width
constexpr size_t word_max = 80;  ///< longest word of "s"
constexpr std::string_view white_space = " \n\r\t";
constexpr std::string_view digits = "0123456789";

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/** How many characters from the start belong to a list. */
size_t count(std::string_view s, std::string_view list) {
  return std::min(s.find_first_not_of(list), s.size());
}

size_t countLetters(std::string_view s) {
  return static_cast<size_t>(std::find_if_not(s.begin(), s.end(), isLetter) - s.begin());
}

bool inSet(std::string_view set, char c) {
  for (size_t i = 0; i < set.size(); i++) {
    const char code = set[i] == '/' && i + 1 < set.size() ? set[i + 1] : '\0';
    if (code == 'A' || code == 'N' || code == '/') {
      if (code == 'A' ? isLetter(c) : code == 'N' ? isDigit(c) : c == '/') {
        return true;
      }
      i++;
    } else if (set[i] == c) {
      return true;
    }
  }
  return false;
}

size_t countSet(std::string_view s, std::string_view set, bool others) {
  return static_cast<size_t>(
      std::find_if(s.begin(), s.end(), [&](char c) { return inSet(set, c) == others; }) -
      s.begin());
}

size_t countSign(std::string_view s) {
  return !s.empty() && (s[0] == '-' || s[0] == '+') ? 1 : 0;
}

/** Length of an integer; a sign alone is none. */
size_t countInt(std::string_view s) {
  const size_t sign = countSign(s);
  const size_t n = count(s.substr(sign), digits);
  return n > 0 ? sign + n : 0;
}

/** Length of a number; one without a digit is none, an exponent without one isn't part of it. */
size_t countFloat(std::string_view s) {
  const size_t sign = countSign(s);
  const size_t whole = count(s.substr(sign), digits);
  size_t n = sign + whole;
  size_t fraction = 0;
  if (n < s.size() && s[n] == '.') {
    fraction = count(s.substr(n + 1), digits);
    n += 1 + fraction;
  }
  if (whole + fraction == 0) {
    return 0;
  }
  if (n < s.size() && (s[n] == 'e' || s[n] == 'E')) {
    const size_t exponent = countInt(s.substr(n + 1));
    n += exponent > 0 ? 1 + exponent : 0;
  }
  return n;
}

int toInt(std::string_view s) {
  const bool negative = s[0] == '-';
  s.remove_prefix(s[0] == '+' ? 1 : 0);
  int v = negative ? INT_MIN : INT_MAX;
  std::from_chars(s.data(), s.data() + s.size(), v);  // leaves v where it doesn't fit
  return v;
}

float toFloat(std::string_view s) {
  char text[no_width + 1];
  text[s.copy(text, no_width)] = '\0';
  return std::clamp(std::strtof(text, nullptr), -FLT_MAX, FLT_MAX);
}

}  // namespace

/** One conversion of a format. */
struct Scanp::Conversion {
  bool assign = true;
  bool limit = false;  ///< the width is a limit
  size_t width = 0;    ///< 0 for none
  bool has_missing = false;
  std::string_view missing;
  char kind = '\0';
  bool others = false;    ///< a set of all but those listed
  std::string_view body;  ///< of a set or alternatives

  const char* parse(const char* f);
  const char* parseBody(const char* f, char end);
  [[nodiscard]] bool isText() const { return std::strchr("dDfFn", kind) == nullptr; }
  [[nodiscard]] bool isNumber() const { return kind != 'n' && !isText(); }
  [[nodiscard]] bool fits(size_t used) const { return width == 0 || limit || used == width; }
  size_t take(std::string_view s, std::string_view& field) const;
  [[nodiscard]] size_t alternative(std::string_view s) const;
  bool store(std::string_view field, int pos, bool is_missing, const Target& to) const;
};

/** Reads what follows the "%". @return what comes behind, absent if this is no conversion */
const char* Scanp::Conversion::parse(const char* f) {
  assign = *f != '*';
  f += assign ? 0 : 1;
  limit = *f == '<';
  f += limit ? 1 : 0;
  for (; isDigit(*f); f++) {
    width = std::min<size_t>(width * 10 + static_cast<size_t>(*f - '0'), INT_MAX);
  }
  if (*f == '!') {
    const char* end = std::strchr(f + 1, '!');
    if (end == nullptr) {
      return nullptr;
    }
    has_missing = true;
    missing = {f + 1, static_cast<size_t>(end - f - 1)};
    f = end + 1;
  }
  kind = *f;
  switch (kind) {
    case '(': return parseBody(f + 1, ')');
    case '[': others = f[1] == '^'; return parseBody(f + (others ? 2 : 1), ']');
    default: return kind != '\0' && std::strchr("nAsScNdDfFwW", kind) != nullptr ? f + 1 : nullptr;
  }
}

const char* Scanp::Conversion::parseBody(const char* f, char end) {
  const char* last = std::strchr(f, end);
  if (last == nullptr) {
    return nullptr;
  }
  body = {f, static_cast<size_t>(last - f)};
  return last + 1;
}

size_t Scanp::Conversion::alternative(std::string_view s) const {
  for (std::string_view list = body; !list.empty();) {
    const std::string_view one = list.substr(0, list.find('|'));
    if (s.starts_with(one)) {
      return one.size();
    }
    list.remove_prefix(std::min(one.size() + 1, list.size()));
  }
  return 0;
}

/** Measures the field at the start of s. @param field  out: the part of it that is stored
 *  @return the characters used, 0 if there is no such field */
size_t Scanp::Conversion::take(std::string_view s, std::string_view& field) const {
  const size_t single = kind == 'c' ? 1 : no_width;
  s = s.substr(0, width > 0 ? width : single);
  size_t before = 0;
  size_t n = 0;
  switch (kind) {
    case '(': n = alternative(s); break;
    case '[': n = countSet(s, body, others); break;
    case 'A': n = countLetters(s); break;
    case 's': n = std::min(s.find_first_of(white_space), std::min(s.size(), word_max)); break;
    case 'S':
    case 'c': n = s.size(); break;
    case 'N': n = count(s, digits); break;
    case 'd': n = countInt(s); break;
    case 'f': n = countFloat(s); break;
    case 'D':
    case 'F':
      before = count(s, white_space);
      s.remove_prefix(before);
      n = kind == 'D' ? countInt(s) : countFloat(s);
      break;
    case 'w': n = count(s, " \r\t"); break;
    default: n = count(s, " \n\t"); break;
  }
  field = s.substr(0, n);
  if (n > 0 && (kind == 'D' || kind == 'F')) {
    n += before + count(s.substr(n), white_space);
  }
  return n;
}

/** @return false if the variable isn't of the type */
bool Scanp::Conversion::store(std::string_view field, int pos, bool is_missing,
                              const Target& to) const {
  if (isText()) {
    const auto* text = std::get_if<std::span<char>>(&to);
    if (text == nullptr) {
      return false;
    }
    const size_t room = text->size() - (kind == 'c' ? 0 : 1);
    const size_t n = field.copy(text->data(), room);
    if (kind != 'c') {
      (*text)[n] = '\0';
    }
  } else if (kind == 'f' || kind == 'F') {
    float* const* v = std::get_if<float*>(&to);
    if (v == nullptr) {
      return false;
    }
    **v = is_missing ? Const::FMISS : toFloat(field);
  } else {
    int* const* v = std::get_if<int*>(&to);
    if (v == nullptr) {
      return false;
    }
    const int number = kind == 'n' || is_missing ? Const::MISS : toInt(field);
    **v = kind == 'n' ? pos : number;
  }
  return true;
}

void Scanp::set(const char* text) {
  set(text, StrLib::length(text));
}

void Scanp::set(const char* text, int n) {
  *this = Scanp();
  if (text != nullptr) {
    str = text;
    str_len = std::max(n, 0);
  }
}

int Scanp::run(const char* format, std::span<const Target> targets) {
  len = tot_assign = match = 0;
  finish = false;
  if (!StrLib::valid(format) || off >= str_len) {
    return -1;
  }
  const bool trace = Zqv::checkDebug(5);
  const char* f = format;
  int pos = off;
  while (*f != '\0') {
    const std::string_view s = rest(pos);
    if (trace) {
      Zqv::outDebug(5, "     :%s:%.50s:\n", f, s.data());
    }
    if (*f == ' ') {
      const size_t n = count(s, white_space);
      if (n == 0) {
        break;
      }
      pos += static_cast<int>(n);
      f++;
      continue;
    }
    if (*f != '%') {
      if (s.empty() || s[0] != *f) {
        break;
      }
      pos++;
      f++;
      continue;
    }
    Conversion conv;
    const char* behind = conv.parse(f + 1);
    if (behind == nullptr) {
      break;
    }
    std::string_view field;
    size_t used = conv.kind == 'n' ? 0 : conv.take(s, field);
    bool is_missing = false;
    bool found = conv.kind == 'n' || (used > 0 && conv.fits(used));
    if (used == 0 && conv.isNumber() && conv.has_missing && s.starts_with(conv.missing)) {
      used = conv.missing.size();
      found = is_missing = true;
    }
    found = found || (used == 0 && conv.kind == '(' && conv.limit && conv.width == 0);
    if (!found) {
      break;
    }
    if (conv.assign) {
      const auto next = static_cast<size_t>(tot_assign);
      if (next >= targets.size() || !conv.store(field, pos, is_missing, targets[next])) {
        break;
      }
      tot_assign++;
    }
    match++;
    pos += static_cast<int>(used);
    f = behind;
  }
  finish = *f == '\0';
  len = pos - off;
  Zqv::outDebug(4, "SCANP:%.50s:%s:%d:%d:%d:%d\n", string(), format, len, tot_assign, match,
                finish ? 1 : 0);
  return match;
}

int Scanp::search(const char* text) {
  len = 0;
  const size_t at = text != nullptr ? rest(off).find(text) : std::string_view::npos;
  if (at == std::string_view::npos) {
    return 0;
  }
  len = static_cast<int>(at);
  return 1;
}

int Scanp::inc(int n) {
  off += std::clamp(n, -off, str_len - off);
  return 1;
}

int Scanp::offset(int n) {
  off = std::clamp(n, 0, str_len);
  return 1;
}

void Scanp::print() const {
  std::printf("%s:%d:%d:%d:%d\n", str, str_len, off, len, match);
}

}  // namespace ZQV
