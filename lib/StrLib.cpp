#include "StrLib.h"

#include <algorithm>
#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "Const.h"
#include "Tools.h"

namespace ZQV {

namespace {

int lower(char c) {
  return std::tolower(static_cast<unsigned char>(c));
}

bool isSpace(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0;
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool same(char a, char b, bool ignore_case) {
  return ignore_case ? lower(a) == lower(b) : a == b;
}

bool sameTexts(const char* s, const char* t, bool ignore_case) {
  if (s == nullptr || t == nullptr) {
    return false;
  }
  for (; *s != '\0' && *t != '\0'; s++, t++) {
    if (!same(*s, *t, ignore_case)) {
      return false;
    }
  }
  return *s == *t;
}

/** The counted comparison: n of 1 and up a prefix, 0 and below a suffix. */
bool sameCounted(const char* s, const char* t, int n, bool ignore_case) {
  if (s == nullptr || t == nullptr) {
    return false;
  }
  if (n >= 1) {
    for (int i = 0; i < n; i++) {
      if (!same(s[i], t[i], ignore_case)) {
        return false;
      }
      if (s[i] == '\0') {
        return true;
      }
    }
    return true;
  }
  const int off = StrLib::length(s) + n;
  return off >= 0 && sameTexts(s + off, t, ignore_case);
}

/** The count of a copy: a negative n counts from the end, -1 being the whole text. */
size_t copyLength(const char* text, int n) {
  const int len = StrLib::length(text);
  return static_cast<size_t>(n < 0 ? std::max(len + n + 1, 0) : std::min(n, len));
}

/** The trimmed column field of a fixed-column text. */
std::string field(const char* s, int start, int len) {
  if (s == nullptr || start < 0 || len < 1 || start >= StrLib::length(s)) {
    return {};
  }
  std::string text(s + start, strnlen(s + start, static_cast<size_t>(len)));
  StrLib::trimWS(text);
  return text;
}

/** atof() as a float, huge values saturating. */
float number(const char* s) {
  return static_cast<float>(
      std::clamp(std::strtod(s, nullptr), -3.4028234663852886e38, 3.4028234663852886e38));
}

/** atoi() that saturates. */
int wholeNumber(const char* s) {
  return Tools::cut(static_cast<double>(std::strtol(s, nullptr, 10)));
}

bool fits(char c, char item) {
  const auto u = static_cast<unsigned char>(c);
  switch (item) {
    case 'A': return std::isalnum(u) != 0;
    case 'a': return std::isalpha(u) != 0;
    case 'd': return std::isdigit(u) != 0;
    case 'b': return c == ' ' || c == '\t';
    case 'c': return std::iscntrl(u) != 0;
    case 'l': return std::islower(u) != 0;
    case 'u': return std::isupper(u) != 0;
    case 'p': return std::ispunct(u) != 0;
    case 's': return std::isspace(u) != 0;
    case 'g': return std::isgraph(u) != 0;
    default: return c == item;
  }
}

}  // namespace

int StrLib::clear(char* s) {
  if (s == nullptr) {
    return 0;
  }
  *s = '\0';
  return 1;
}

int StrLib::length(const char* s) {
  return s == nullptr ? 0 : static_cast<int>(std::strlen(s));
}

int StrLib::replace(char* s, char a, char b) {
  if (s == nullptr) {
    return 0;
  }
  std::replace(s, s + std::strlen(s), a, b);
  return 1;
}

int StrLib::trimWS(char* s) {
  if (s == nullptr) {
    return 0;
  }
  size_t n = std::strlen(s);
  while (n > 0 && isSpace(s[n - 1])) {
    n--;
  }
  s[n] = '\0';
  return 1;
}

int StrLib::stripWS(char* s) {
  if (s == nullptr) {
    return 0;
  }
  *std::remove_if(s, s + std::strlen(s), isSpace) = '\0';
  return 1;
}

int StrLib::chop(char* s) {
  if (!valid(s)) {
    return 0;
  }
  s[std::strlen(s) - 1] = '\0';
  return 1;
}

int StrLib::lowCase(char* s) {
  if (s == nullptr) {
    return 0;
  }
  std::transform(s, s + std::strlen(s), s, [](char c) { return static_cast<char>(lower(c)); });
  return 1;
}

int StrLib::upCase(char* s) {
  if (s == nullptr) {
    return 0;
  }
  for (; *s != '\0'; s++) {
    *s = static_cast<char>(std::toupper(static_cast<unsigned char>(*s)));
  }
  return 1;
}

int StrLib::upCaseFirst(char* s) {
  if (s == nullptr) {
    return 0;
  }
  for (int i = 1; s[0] != '\0' && s[i] != '\0'; i++) {
    if (s[i - 1] != ' ') {
      s[i] = static_cast<char>(lower(s[i]));
    }
  }
  return 1;
}

void StrLib::trimWS(std::string& s) {
  while (!s.empty() && isSpace(s.back())) {
    s.pop_back();
  }
}

void StrLib::stripWS(std::string& s) {
  std::erase_if(s, isSpace);
}

void StrLib::lowCase(std::string& s) {
  lowCase(s.data());
}

void StrLib::upCase(std::string& s) {
  upCase(s.data());
}

int StrLib::toInt(const char* s) {
  return s == nullptr ? Const::MISS : wholeNumber(s);
}

int StrLib::toInt(const char* s, int start) {
  return start < 0 || start > length(s) ? Const::MISS : toInt(s == nullptr ? s : s + start);
}

int StrLib::toInt(const char* s, int start, int len) {
  const std::string text = field(s, start, len);
  return text.empty() ? Const::MISS : wholeNumber(text.c_str());
}

float StrLib::toFloat(const char* s) {
  return s == nullptr ? Const::FMISS : number(s);
}

float StrLib::toFloat(const char* s, int start) {
  return start < 0 || start > length(s) ? Const::FMISS : toFloat(s == nullptr ? s : s + start);
}

float StrLib::toFloat(const char* s, int start, int len) {
  const std::string text = field(s, start, len);
  return text.empty() ? Const::FMISS : number(text.c_str());
}

int StrLib::subString(const char* s, int start, int len, char* out, int maxlen) {
  if (out == nullptr || maxlen < 0) {
    return 0;
  }
  *out = '\0';
  if (s == nullptr || start < 0 || len < 0 || start > length(s)) {
    return 0;
  }
  const size_t n = strnlen(s + start, static_cast<size_t>(std::min(len, maxlen)));
  std::memcpy(out, s + start, n);
  out[n] = '\0';
  return 1;
}

const char* StrLib::getField(const char* s, char delim, int n) {
  if (s == nullptr || n < 0) {
    return nullptr;
  }
  for (;; n--) {
    while (*s == delim && *s != '\0') {
      s++;
    }
    if (*s == '\0') {
      return nullptr;
    }
    if (n == 0) {
      return s;
    }
    while (*s != delim && *s != '\0') {
      s++;
    }
  }
}

int StrLib::index(const char* s, char c) {
  return index(s, c, 0);
}

int StrLib::lastIndex(const char* s, char c) {
  int last = -1;
  for (int i = 0; s != nullptr && s[i] != '\0'; i++) {
    if (s[i] == c) {
      last = i;
    }
  }
  return last;
}

int StrLib::index(const char* s, char c, int n) {
  for (int i = 0; s != nullptr && n >= 0 && s[i] != '\0'; i++) {
    if (s[i] == c && n-- == 0) {
      return i;
    }
  }
  return -1;
}

int StrLib::occurs(const char* s, char c) {
  return s == nullptr ? 0 : static_cast<int>(std::count(s, s + std::strlen(s), c));
}

int StrLib::where(const char* s, const char* t) {
  if (s == nullptr || t == nullptr) {
    return -1;
  }
  const char* at = std::strstr(s, t);
  return at == nullptr ? -1 : static_cast<int>(at - s);
}

bool StrLib::contains(const char* s, const char* t) {
  return where(s, t) >= 0;
}

bool StrLib::hasToken(const char* s, char delim, const char* t) {
  if (s == nullptr || t == nullptr) {
    return false;
  }
  const size_t n = std::strlen(t);
  for (const char* p = s;; p++) {
    const char* end = std::strchr(p, delim);
    const size_t len = end != nullptr ? static_cast<size_t>(end - p) : std::strlen(p);
    if (len == n && std::memcmp(p, t, n) == 0) {
      return true;
    }
    if (end == nullptr || *end == '\0') {
      return false;
    }
    p = end;
  }
}

bool StrLib::equal(const char* s, const char* t) {
  return sameTexts(s, t, false);
}

bool StrLib::iequal(const char* s, const char* t) {
  return sameTexts(s, t, true);
}

bool StrLib::equal(const char* s, const char* t, int n) {
  return sameCounted(s, t, n, false);
}

bool StrLib::iequal(const char* s, const char* t, int n) {
  return sameCounted(s, t, n, true);
}

bool StrLib::equal(const char* s, int n, const char* t) {
  return s != nullptr && t != nullptr && n >= 0 && length(t) == n &&
         strnlen(s, static_cast<size_t>(n)) == static_cast<size_t>(n) &&
         std::memcmp(s, t, static_cast<size_t>(n)) == 0;
}

int StrLib::icmp(const char* s, const char* t) {
  return icmp(s, t, std::max(length(s), length(t)));
}

int StrLib::icmp(const char* s, const char* t, int n) {
  if (s == nullptr || t == nullptr) {
    return 0;
  }
  for (int i = 0; i < n; i++) {
    const int diff = lower(s[i]) - lower(t[i]);
    if (diff != 0 || s[i] == '\0') {
      return diff;
    }
  }
  return 0;
}

int StrLib::copy(char* dst, int size, const char* src) {
  return copy(dst, size, src, -1);
}

int StrLib::copy(char* dst, int size, char c) {
  if (dst == nullptr || size < 2) {
    return 0;
  }
  dst[0] = c;
  dst[1] = '\0';
  return 1;
}

int StrLib::copy(char* dst, int size, const char* src, int n) {
  if (dst == nullptr || size < 1) {
    return 0;
  }
  const size_t taken =
      src == nullptr ? 0 : std::min(copyLength(src, n), static_cast<size_t>(size) - 1);
  if (taken > 0) {
    std::memmove(dst, src, taken);
  }
  dst[taken] = '\0';
  return src == nullptr ? 0 : 1;
}

int StrLib::bcopy(char* dst, int size, const char* src, int n) {
  if (dst == nullptr || src == nullptr || size < 1 || n < 0) {
    return 0;
  }
  std::memmove(dst, src, static_cast<size_t>(std::min(n, size)));
  return 1;
}

int StrLib::append(char* dst, int size, const char* src) {
  return append(dst, size, src, -1);
}

int StrLib::append(char* dst, int size, const char* src, int n) {
  if (dst == nullptr || src == nullptr || size < 1) {
    return 0;
  }
  const int len = static_cast<int>(strnlen(dst, static_cast<size_t>(size)));
  return len >= size ? 0 : copy(dst + len, size - len, src, n);
}

std::string StrLib::acopy(const char* s) {
  return s == nullptr ? std::string() : std::string(s);
}

std::string StrLib::acopy(const char* s, int n) {
  return s == nullptr ? std::string() : std::string(s, copyLength(s, n));
}

int StrLib::printf(char* dst, int size, const char* format, ...) {
  if (dst == nullptr || size < 1) {
    return 0;
  }
  va_list args;
  va_start(args, format);
  std::vsnprintf(dst, static_cast<size_t>(size), format, args);
  va_end(args);
  return length(dst);
}

int StrLib::aprintf(char* dst, int size, const char* format, ...) {
  if (dst == nullptr || size < 1) {
    return 0;
  }
  const size_t len = strnlen(dst, static_cast<size_t>(size));
  if (len < static_cast<size_t>(size)) {
    va_list args;
    va_start(args, format);
    std::vsnprintf(dst + len, static_cast<size_t>(size) - len, format, args);
    va_end(args);
  }
  return static_cast<int>(strnlen(dst, static_cast<size_t>(size)));
}

char StrLib::getChar(const char* s, int i) {
  const int len = length(s);
  const int at = i < 0 ? i + len : i;
  return at < 0 || at >= len ? '\0' : s[at];
}

bool StrLib::setChar(char* s, int i, char c) {
  const int len = length(s);
  const int at = i < 0 ? i + len : i;
  if (at < 0 || at >= len) {
    return false;
  }
  s[at] = c;
  return true;
}

bool StrLib::isNum(const char* s) {
  if (!valid(s)) {
    return false;
  }
  const char* p = *s == '-' ? s + 1 : s;
  return std::all_of(p, p + std::strlen(p), isDigit);
}

bool StrLib::isNum(const char* s, int n) {
  return s != nullptr && n >= 0 && strnlen(s, static_cast<size_t>(n)) == static_cast<size_t>(n) &&
         std::all_of(s, s + n, isDigit);
}

int StrLib::clean(char* s) {
  if (s == nullptr) {
    return 0;
  }
  const auto control = [](char c) { return static_cast<signed char>(c) < 32; };
  size_t n = std::strlen(s);
  while (n > 0 && control(s[n - 1])) {
    n--;
  }
  s[n] = '\0';
  std::replace_if(s, s + n, control, ' ');
  return 1;
}

bool StrLib::validData(const char* s) {
  return s != nullptr && s[std::strspn(s, " ")] != '\0';
}

bool StrLib::isAlphaNum(const char* s) {
  return s != nullptr && std::any_of(s, s + std::strlen(s), [](char c) {
           return std::isalnum(static_cast<unsigned char>(c)) != 0;
         });
}

bool StrLib::check(const char* s, const char* pattern) {
  if (s == nullptr || pattern == nullptr) {
    return false;
  }
  for (const char* p = pattern; *p != '\0'; p++, s++) {
    if (*s == '\0') {
      return false;
    }
    const char* close = *p == '[' ? std::strchr(p + 1, ']') : nullptr;
    if (close != nullptr) {
      if (std::memchr(p + 1, *s, static_cast<size_t>(close - p - 1)) == nullptr) {
        return false;
      }
      p = close;
    } else if (!fits(*s, *p)) {
      return false;
    }
  }
  return true;
}

}  // namespace ZQV
