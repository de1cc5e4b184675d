// A format, a line feed, and any bytes as the text that it scans.

#include "Scanp.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using namespace ZQV;

/** Text and number of characters used stay within what there is. */
void check(const Scanp& scanp, size_t size, int found) {
  if (found < -1 || scanp.length() < 0 ||
      scanp.length() > static_cast<int>(size) - scanp.getOffset() ||
      scanp.assigned() > scanp.matched()) {
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  const size_t end = std::min(input.find('\n'), size);
  // Blocks of their own, so that reading past an end is seen.
  const std::string format = input.substr(0, end);
  const std::string text = input.substr(std::min(end + 1, size));
  Scanp scanp;
  scanp.set(text.data(), static_cast<int>(text.size()));
  int i[3] = {};
  float f[3];
  char s[3][8];
  char c = ' ';
  for (int step = 0; step < 3; step++) {
    check(scanp, text.size(), scanp.scan(format.c_str()));
    check(scanp, text.size(), scanp.scan(format.c_str(), f[0], f[1], f[2]));
    check(scanp, text.size(), scanp.scan(format.c_str(), c, i[0], s[0], f[0]));
    check(scanp, text.size(), scanp.scan(format.c_str(), s[0], s[1], s[2]));
    const int found = scanp.scan(format.c_str(), i[0], i[1], i[2]);
    check(scanp, text.size(), found);
    check(scanp, text.size(), scanp.search(format.c_str()));
    scanp.inc(found > 0 ? i[0] : 1);
    static_cast<void>(scanp.getChar(i[0]));
  }
  return 0;
}
