#include "Strings.h"

#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "Const.h"
#include "StrLib.h"
#include "Tools.h"

namespace ZQV {

namespace {

bool isSpace(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0;
}

/** End of the token that starts at text: the next delimiter outside quotes, or the end. */
const char* tokenEnd(const char* text, char delim) {
  if (*text == '"') {
    for (const char* p = text + 1; *p != '\0'; p++) {
      if (*p == '"' && (p[1] == '\0' || p[1] == delim)) {
        return p + 1;
      }
    }
    return text + std::strlen(text);
  }
  const char* end = std::strchr(text, delim);
  return end != nullptr ? end : text + std::strlen(text);
}

/** Takes the pair of quotes off a token that starts and ends with one. */
std::string unquoted(const char* beg, const char* end) {
  if (end - beg >= 2 && *beg == '"' && end[-1] == '"') {
    return {beg + 1, end - 1};
  }
  return {beg, end};
}

}  // namespace

Strings::Strings(int argc, const char* const* argv) {
  set(argc, argv);
}

Strings::Strings(const char* text) {
  set(text);
}

Strings::Strings(const char* text, char delim) {
  set(text, delim);
}

Strings::Strings(const char* text, char delim, int max) {
  set(text, delim, max);
}

Strings::Strings(int n) {
  set(n);
}

int Strings::set(int argc, const char* const* argv) {
  vals.clear();
  for (int i = 0; argv != nullptr && i < argc; i++) {
    vals.emplace_back(argv[i] != nullptr ? argv[i] : "");
  }
  return 1;
}

int Strings::set(const char* text) {
  std::vector<std::string> split;
  for (const char* p = text; p != nullptr && *p != '\0';) {
    if (isSpace(*p)) {
      p++;
      continue;
    }
    const char* beg = p;
    while (*p != '\0' && !isSpace(*p)) {
      p++;
    }
    split.emplace_back(beg, p);
  }
  vals.swap(split);
  return 1;
}

int Strings::set(const char* text, char delim) {
  return set(text, delim, -1);
}

int Strings::set(const char* text, char delim, int max) {
  std::vector<std::string> split;
  for (const char* p = text; StrLib::valid(text);) {
    const bool rest = max >= 1 && static_cast<int>(split.size()) == max - 1;
    const char* end = rest ? p + std::strlen(p) : tokenEnd(p, delim);
    split.push_back(unquoted(p, end));
    if (*end == '\0') {
      break;
    }
    p = end + 1;
  }
  vals.swap(split);
  return 1;
}

int Strings::set(int n) {
  vals.clear();
  if (n < 0) {
    return 0;
  }
  vals.resize(static_cast<size_t>(n));
  return 1;
}

int Strings::set(int i, const char* text) {
  if (i < 0 || i >= getNum()) {
    return 0;
  }
  vals[static_cast<size_t>(i)] = text != nullptr ? text : "";
  return 1;
}

int Strings::add(const char* text) {
  vals.emplace_back(text != nullptr ? text : "");
  return 1;
}

const char* Strings::getString(int i) const {
  return i < 0 || i >= getNum() ? nullptr : vals[static_cast<size_t>(i)].c_str();
}

const char* Strings::getString(int i, char c) const {
  const int at = index(i, c);
  return at < 0 ? nullptr : getString(i) + at;
}

const char* Strings::getString(int i, int off) const {
  return off < 0 || off >= getLength(i) ? nullptr : getString(i) + off;
}

const char* Strings::getStringAfter(int i, char c) const {
  const int at = index(i, c);
  return at < 0 ? nullptr : getString(i) + at + 1;
}

char Strings::getChar(int i, int off) const {
  const char* text = getString(i, off);
  return text == nullptr ? '\0' : *text;
}

int Strings::getLength(int i) const {
  return StrLib::length(getString(i));
}

bool Strings::valid(int i) const {
  return StrLib::valid(getString(i));
}

bool Strings::equal(int i, const char* text) const {
  return StrLib::equal(getString(i), text);
}

bool Strings::equal(int i, const char* text, int n) const {
  return StrLib::equal(getString(i), text, n);
}

bool Strings::equal(int i, int off, const char* text) const {
  return StrLib::equal(getString(i, off), text);
}

bool Strings::iequal(int i, const char* text) const {
  return StrLib::iequal(getString(i), text);
}

bool Strings::iequal(int i, const char* text, int n) const {
  return StrLib::iequal(getString(i), text, n);
}

bool Strings::iequal(int i, int off, const char* text) const {
  return StrLib::iequal(getString(i, off), text);
}

int Strings::find(const char* text) const {
  for (int i = 0; i < getNum(); i++) {
    if (equal(i, text)) {
      return i;
    }
  }
  return -1;
}

int Strings::index(int i, char c) const {
  return StrLib::index(getString(i), c);
}

bool Strings::contains(int i, const char* text) const {
  return StrLib::contains(getString(i), text);
}

int Strings::getInt(int i) const {
  const char* text = getString(i);
  return Tools::isInt(text) ? StrLib::toInt(text) : Const::MISS;
}

int Strings::getInt(int i, int off) const {
  const char* text = getString(i, off);
  return Tools::isInt(text) ? StrLib::toInt(text) : Const::MISS;
}

int Strings::getIntAfter(int i, char c) const {
  const char* text = getStringAfter(i, c);
  return Tools::isInt(text) ? StrLib::toInt(text) : Const::MISS;
}

float Strings::getFloat(int i) const {
  const char* text = getString(i);
  return Tools::isFloat(text) ? StrLib::toFloat(text) : Const::FMISS;
}

float Strings::getFloat(int i, int off) const {
  const char* text = getString(i, off);
  return Tools::isFloat(text) ? StrLib::toFloat(text) : Const::FMISS;
}

float Strings::getFloatAfter(int i, char c) const {
  const char* text = getStringAfter(i, c);
  return Tools::isFloat(text) ? StrLib::toFloat(text) : Const::FMISS;
}

int Strings::scanf(int i, const char* format, ...) const {
  const char* text = getString(i);
  if (text == nullptr) {
    return 0;
  }
  va_list args;
  va_start(args, format);
  const int n = std::vsscanf(text, format, args);
  va_end(args);
  return n;
}

int Strings::scanf(int i, int off, const char* format, ...) const {
  const char* text = getString(i, off);
  if (text == nullptr) {
    return 0;
  }
  va_list args;
  va_start(args, format);
  const int n = std::vsscanf(text, format, args);
  va_end(args);
  return n;
}

bool Strings::check(int i, const char* pattern) const {
  return StrLib::check(getString(i), pattern);
}

void Strings::print() const {
  for (int i = 0; i < getNum(); i++) {
    std::printf("%d=%s\n", i, getString(i));
  }
}

}  // namespace ZQV
