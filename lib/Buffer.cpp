#include "Buffer.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>

#include "Tools.h"

namespace ZQV {

int Buffer::init(int n) {
  clear();
  data.assign(static_cast<size_t>(std::max(n, 0)), 0);
  data.shrink_to_fit();
  return 1;
}

int Buffer::resize(int n) {
  data.resize(static_cast<size_t>(std::max(n, 0)));
  size = std::min(size, getMax());
  ind = std::min(ind, size);
  return 1;
}

int Buffer::check(int n) {
  constexpr int slack = 2000;
  if (n > getMax()) {
    resize(n > std::numeric_limits<int>::max() - slack ? n : n + slack);
  }
  return 1;
}

int Buffer::add(const void* bytes, int n) {
  return insert(size, bytes, n);
}

int Buffer::insert(int at, const void* bytes, int n) {
  if (bytes == nullptr || n < 0 || at < 0 || at > size ||
      n > std::numeric_limits<int>::max() - size) {
    return 0;
  }
  if (n == 0) {
    return 1;
  }
  check(size + n);
  unsigned char* place = data.data() + at;
  std::memmove(place + n, place, static_cast<size_t>(size - at));
  std::memcpy(place, bytes, static_cast<size_t>(n));
  size += n;
  return 1;
}

unsigned char Buffer::get(int off) const {
  const long at = static_cast<long>(ind) + off;
  return at < 0 || at >= size ? 0 : data[static_cast<size_t>(at)];
}

int Buffer::clearUsed() {
  if (ind > 0) {
    std::memmove(data.data(), data.data() + ind, static_cast<size_t>(size - ind));
    size -= ind;
    ind = 0;
  }
  return 1;
}

int Buffer::trunc(int n) {
  const long to = n < 0 ? static_cast<long>(size) + n : n;
  if (to < 0 || to > size) {
    return 0;
  }
  size = static_cast<int>(to);
  if (ind > size) {
    ind = std::max(size - 1, 0);
  }
  return 1;
}

bool Buffer::equal(int off, const char* text) const {
  if (text == nullptr) {
    return false;
  }
  const long n = static_cast<long>(std::strlen(text));
  const long at = off < 0 ? static_cast<long>(size) + off : off;
  return at >= 0 && at + n <= size &&
         std::memcmp(data.data() + at, text, static_cast<size_t>(n)) == 0;
}

int Buffer::setSize(int n) {
  if (n < 0 || n > getMax()) {
    return 0;
  }
  size = n;
  ind = std::min(ind, size);
  return 1;
}

void Buffer::print() const {
  std::printf("Ind: %d Num: %d Max: %d\n", ind, size, getMax());
}

void Buffer::dump(int off, int n) const {
  const long at = off < 0 ? static_cast<long>(size) + off : static_cast<long>(ind) + off;
  if (at >= 0 && at < size && n > 0) {
    Tools::dumpHex(data.data() + at, static_cast<int>(std::min<long>(n, size - at)));
  }
}

}  // namespace ZQV
