#include "PageBuffer.h"

#include <charconv>

#include "File.h"

namespace ZQV {

void PageBuffer::putInt(int v) {
  reserve(ROOM);
  const auto end = std::to_chars(data.data() + num, data.data() + num + ROOM, v);
  num = static_cast<size_t>(end.ptr - data.data());
}

char* PageBuffer::putLarge(char* p, uint64_t v) {
  return std::to_chars(p, p + ROOM / 2, v).ptr;
}

/** A number too large to be scaled. One that isn't finite would make the page unreadable and
 * comes out as 0. */
void PageBuffer::putAny(float v, int digits) {
  if (!std::isfinite(v)) {
    v = 0.0F;
  }
  const auto end = std::to_chars(data.data() + num, data.data() + num + ROOM,
                                 static_cast<double>(v), std::chars_format::fixed, digits);
  num = static_cast<size_t>(end.ptr - data.data());
}

void PageBuffer::putLine(const char* text) {
  for (const char* p = text != nullptr ? text : ""; *p != '\0'; p++) {
    const auto c = static_cast<unsigned char>(*p);
    put(c < ' ' || c == 0x7f ? ' ' : *p);
  }
}

void PageBuffer::putLong(std::string_view text) {
  while (!text.empty()) {
    put(text.substr(0, ROOM));
    text.remove_prefix(text.size() < ROOM ? text.size() : ROOM);
  }
}

void PageBuffer::flush() {
  if (num > 0) file.write(data.data(), num);
  num = 0;
}

}  // namespace ZQV
