#include "String.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

#include "StrLib.h"

namespace ZQV {

String::String() = default;

String::String(int n) : maxlen(std::max(n, 1)) {}

String::String(const char* text) : maxlen(StrLib::length(text) + 1) {
  copy(text);
}

String& String::operator=(const String& other) {
  if (this != &other) {
    data = other.data;
    ptr = 0;
    settle();
  }
  return *this;
}

String& String::operator=(const char* text) {
  copy(text);
  return *this;
}

/** Takes the length from the text, and the capacity along where the text outgrew it. */
void String::settle() {
  len = static_cast<int>(data.size());
  maxlen = std::max(maxlen, len + 1);
  ptr = std::min(ptr, data.size());
}

int String::copy(const char* text) {
  if (text == nullptr) {
    data.clear();
    ptr = 0;
    return 0;
  }
  std::string taken = text;  // the text may lie inside our own data
  data.swap(taken);
  ptr = 0;
  settle();
  return 1;
}

int String::copy(const char* text, int n) {
  if (text == nullptr) {
    return copy(nullptr);
  }
  return copy(StrLib::acopy(text, n).c_str());
}

int String::append(const char* text) {
  if (text == nullptr) {
    return 0;
  }
  data += std::string(text);
  settle();
  return 1;
}

int String::append(const char* text, int n) {
  if (text == nullptr) {
    return 0;
  }
  return append(StrLib::acopy(text, n).c_str());
}

int String::append(char c) {
  const char text[2] = {c, '\0'};
  return append(text);
}

int String::vprintf(const char* format, va_list args) {
  data.clear();
  std::vector<char> room(static_cast<size_t>(maxlen));
  std::vsnprintf(room.data(), room.size(), format, args);
  data = room.data();
  ptr = 0;
  settle();
  return len;
}

int String::printf(const char* format, ...) {
  std::vector<char> room(static_cast<size_t>(maxlen));
  va_list args;
  va_start(args, format);
  std::vsnprintf(room.data(), room.size(), format, args);
  va_end(args);
  data = room.data();
  ptr = 0;
  settle();
  return len;
}

int String::aprintf(const char* format, ...) {
  const size_t room_left = static_cast<size_t>(maxlen) - std::min(data.size(), size_t(maxlen) - 1);
  std::vector<char> room(room_left);
  va_list args;
  va_start(args, format);
  std::vsnprintf(room.data(), room.size(), format, args);
  va_end(args);
  data += room.data();
  settle();
  return len;
}

int String::resize(int n) {
  maxlen = std::max(n, 1);
  if (data.size() >= static_cast<size_t>(maxlen)) {
    data.resize(static_cast<size_t>(maxlen) - 1);
    settle();
  }
  return 1;
}

int String::resize() {
  return resize(maxlen * 2);
}

const char* String::get(int i) const {
  const int size = static_cast<int>(data.size());
  if (i > size) {
    i = size - 1;
  }
  if (i < 0) {
    i += size;
  }
  return data.c_str() + std::max(i, 0);
}

char String::getChar(int i) const {
  return *get(i);
}

void String::clear() {
  data.clear();
  len = 0;
  ptr = 0;
}

int String::trunc(int n) {
  const int size = static_cast<int>(data.size());
  if (n > size) {
    return 1;
  }
  if (n < 0) {
    n = std::max(n + size, 0);
  }
  data.resize(static_cast<size_t>(n));
  settle();
  return 1;
}

int String::chop() {
  if (data.empty()) {
    return 0;
  }
  data.pop_back();
  settle();
  return 1;
}

int String::index(char c) const {
  return StrLib::index(get(), c);
}

int String::occurs(char c) const {
  return StrLib::occurs(get(), c);
}

bool String::contains(const char* text) const {
  return StrLib::contains(get(), text);
}

bool String::equal(const char* text) const {
  return StrLib::equal(get(), text);
}

bool String::equal(const char* text, int n) const {
  return StrLib::equal(get(), text, n);
}

bool String::iequal(const char* text) const {
  return StrLib::iequal(get(), text);
}

bool String::iequal(const char* text, int n) const {
  return StrLib::iequal(get(), text, n);
}

int String::scanf(const char* format, ...) const {
  va_list args;
  va_start(args, format);
  const int n = std::vsscanf(get(), format, args);
  va_end(args);
  return n;
}

int String::replace(char a, char b) {
  std::replace(data.begin(), data.end(), a, b);
  data = std::string(data.c_str());
  settle();
  return 1;
}

int String::trimWS() {
  StrLib::trimWS(data);
  settle();
  return 1;
}

int String::stripWS() {
  StrLib::stripWS(data);
  settle();
  return 1;
}

int String::upCase() {
  StrLib::upCase(data);
  return 1;
}

int String::lowCase() {
  StrLib::lowCase(data);
  return 1;
}

bool String::isAlphaNum() const {
  return StrLib::isAlphaNum(get());
}

char String::next() {
  return ptr < data.size() ? data[ptr++] : '\0';
}

void String::print() const {
  std::printf("%d %s\n", len, get());
}

}  // namespace ZQV
