#pragma once

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
    putScaled(static_cast<int64_t>(std::nearbyint(std::fabs(scaled))), digits, std::signbit(v));
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

  void reserve(size_t n) {
    if (num + n > CAPACITY) flush();
  }
  void putScaled(int64_t v, int digits, bool negative);
  void putAny(float v, int digits);
  void putLong(std::string_view text);

  File& file;
  std::vector<char> data;
  size_t num = 0;
};

}  // namespace ZQV
