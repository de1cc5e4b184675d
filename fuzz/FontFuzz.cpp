// Files of stroke fonts and of symbols. The first byte of the input chooses which.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "GFont.h"
#include "InputFile.h"
#include "Point.h"
#include "Symbol.h"

namespace {

/** Walks to the end. */
template <typename Walk>
void finish(Walk& walk, int most) {
  ZQV::Point p;
  for (int n = 0; walk.get(p) != 0; n++) {
    if (n > most) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
  const char* path = inputFile(text);
  if (data[0] % 2 == 0) {
    static ZQV::GFont font;
    font.read(path);
    for (int c = 0; c < 256; c++) {
      if (font.getWidth(static_cast<char>(c)) < 0) std::abort();
      if (font.setChar(static_cast<char>(c)) != 0) finish(font, 7500);
    }
  } else {
    static ZQV::Symbol symbol;
    symbol.read(path);
    // Each place of the file as a name.
    for (size_t i = 0; i < text.size() && i < 200; i++) {
      if (symbol.setSymb(text.c_str() + i) != 0) finish(symbol, 3000);
    }
  }
  return 0;
}
