#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace ZQV {

class File;

/** Output of a file device: formats numbers into one large buffer and writes it to the file in
 * blocks. Numbers come out exactly as printf() writes them. */
class PageBuffer {
 public:
  explicit PageBuffer(File& f) : file(f), data(CAPACITY) {}
  PageBuffer(const PageBuffer&) = delete;
  PageBuffer& operator=(const PageBuffer&) = delete;
  ~PageBuffer() = default;

  void put(char c) {
    reserve(1);
    data[num++] = c;
  }
  void put(std::string_view text) {
    if (text.size() > ROOM) {
      putLong(text);
      return;
    }
    reserve(text.size());
    std::memcpy(data.data() + num, text.data(), text.size());
    num += text.size();
  }
  /** As "%d". */
  void putInt(int v);
  /** As "%.<digits>f", digits from 0 to 6. */
  template <int digits>
  void putFloat(float v) {
    static_assert(digits >= 0 && digits <= 6);
    constexpr double factor = POWERS[digits];
    reserve(ROOM);
    // A float times a power of ten up to the sixth is exact in double precision, so that this
    // rounds as printf() does: to the nearest, a tie to the even digit.
    const double scaled = static_cast<double>(v) * factor;
    if (!(std::fabs(scaled) < MAX_SCALED)) {
      putAny(v, digits);
      return;
    }
    // Beyond this sum there are no places behind the point: adding it rounds.
    constexpr double whole_numbers = 4503599627370496.0;
    putScaled<digits>(static_cast<int64_t>((std::fabs(scaled) + whole_numbers) - whole_numbers),
                      std::signbit(v));
  }
  /** Text for a one-line comment or record: control characters become blanks. */
  void putLine(const char* text);
  /** Writes what is there to the file. */
  void flush();

 private:
  static constexpr size_t CAPACITY = 256 * 1024;
  static constexpr size_t ROOM = 128;  ///< what one number takes at most
  static constexpr double POWERS[] = {1.0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};
  static constexpr double MAX_SCALED = 1e15;
  /** "00" to "99", and room for a look at two characters from the second on. */
  static constexpr std::array<std::array<char, 3>, 100> PAIRS = [] {
    std::array<std::array<char, 3>, 100> pairs{};
    for (size_t i = 0; i < pairs.size(); i++) {
      pairs[i] = {static_cast<char>('0' + i / 10), static_cast<char>('0' + i % 10), '\0'};
    }
    return pairs;
  }();

  void reserve(size_t n) {
    if (num + n > CAPACITY) flush();
  }
  /** A number times ten to the power of its digits behind the point. */
  template <int digits>
  void putScaled(int64_t scaled, bool negative) {
    const auto v = static_cast<uint64_t>(scaled);
    constexpr auto power = static_cast<uint64_t>(POWERS[digits]);
    char* p = data.data() + num;
    *p = '-';
    p = putWhole(p + (negative ? 1 : 0), v / power);
    if constexpr (digits > 0) {
      *p = '.';
      p += 1 + digits;
      auto rest = static_cast<uint32_t>(v % power);
      char* q = p;
      for (int i = 0; i < digits / 2; i++, rest /= 100) {
        q -= 2;
        std::memcpy(q, PAIRS[rest % 100].data(), 2);
      }
      if (digits % 2 != 0) {
        *--q = static_cast<char>('0' + rest);
      }
    }
    num = static_cast<size_t>(p - data.data());
  }
  /** @return behind the digits */
  static char* putWhole(char* p, uint64_t v) {
    if (v >= 10000) return putLarge(p, v);
    auto rest = static_cast<uint32_t>(v);
    if (rest >= 100) {
      p = putPair(p, rest / 100);
      std::memcpy(p, PAIRS[rest % 100].data(), 2);
      return p + 2;
    }
    return putPair(p, rest);
  }
  /** A number below 100. */
  static char* putPair(char* p, uint32_t v) {
    const size_t zero = v < 10 ? 1 : 0;
    std::memcpy(p, PAIRS[v].data() + zero, 2);
    return p + 2 - zero;
  }
  static char* putLarge(char* p, uint64_t v);
  void putAny(float v, int digits);
  void putLong(std::string_view text);

  File& file;
  std::vector<char> data;
  size_t num = 0;
};

}  // namespace ZQV
