#include "HexRaster.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "GeomBox.h"
#include "Image.h"
#include "PageBuffer.h"
#include "RGB.h"
#include "Tools.h"

namespace ZQV {

namespace {

constexpr int64_t MAX_BYTES = int64_t{128} << 20;
constexpr int BYTES_PIXEL = 3;
constexpr int PIXELS_LINE = 80;
constexpr size_t CODES = 256;
constexpr std::string_view WHITE = "FFFFFF";

int channel(float v) {
  return std::clamp(Tools::cut(static_cast<double>(v * 255.0F)), 0, 255);
}

/** The brightness is cut to 0 or 1 before it is scaled: gray rasters have two levels, deliberately.
 */
int grayLevel(const RGB& rgb) {
  if (rgb.isWhite()) return 255;
  const double level = (static_cast<double>(rgb.red) * 0.9 + static_cast<double>(rgb.grn) +
                        static_cast<double>(rgb.blu) * 0.8) /
                       2.7;
  return std::clamp(Tools::cut(level), 0, 1) * 255;
}

void putPair(char* text, int v) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  text[0] = digits[static_cast<size_t>(v >> 4)];
  text[1] = digits[static_cast<size_t>(v & 15)];
}

/** The digits of an image's pixels; those of an 8-bit code are worked out once. */
class PixelText {
 public:
  PixelText(const Image& img, bool is_gray)
      : image(img), gray(is_gray), coded(img.getBitsPixel() == 8) {}

  [[nodiscard]] size_t length() const { return gray ? 2 : WHITE.size(); }

  std::string_view get(int x, int y) {
    size_t code = 0;
    if (coded) {
      code = static_cast<size_t>(image.getVal(x, y)) % CODES;
      if (known[code]) return {texts[code].data(), length()};
    }
    RGB rgb;
    image.getRGB(x, y, rgb);
    if (rgb.red == -1.0F) rgb.set(1.0F, 1.0F, 1.0F);
    std::array<char, WHITE.size()>& text = texts[code];
    if (gray) {
      putPair(text.data(), grayLevel(rgb));
    } else {
      putPair(text.data(), channel(rgb.red));
      putPair(text.data() + 2, channel(rgb.grn));
      putPair(text.data() + 4, channel(rgb.blu));
    }
    known[code] = coded;
    return {text.data(), length()};
  }

 private:
  const Image& image;
  bool gray;
  bool coded;
  std::array<std::array<char, WHITE.size()>, CODES> texts{};
  std::array<bool, CODES> known{};
};

/** Puts the pixels of one row, with a line end after each 80 of them. */
class Row {
 public:
  explicit Row(PageBuffer& buffer) : out(buffer) {}
  void put(std::string_view pixel) {
    out.put(pixel);
    if (++num % PIXELS_LINE == 0) out.put('\n');
  }
  void put(std::string_view pixel, int n) {
    for (int i = 0; i < n; i++) put(pixel);
  }
  void end() {
    out.put('\n');
    num = 0;
  }

 private:
  PageBuffer& out;
  int num = 0;
};

}  // namespace

int HexRaster::getSize(const GeomBox& clip, int& columns, int& rows) {
  columns = Tools::cut(static_cast<double>(clip.width));
  rows = Tools::cut(static_cast<double>(clip.height));
  if (columns < 1 || rows < 1) return 0;
  return int64_t{columns} * rows <= MAX_BYTES / BYTES_PIXEL ? 1 : 0;
}

int HexRaster::write(PageBuffer& out, const Image& image, const GeomBox& clip, float x, float y,
                     Form form) {
  int columns = 0;
  int rows = 0;
  if (!image.validData() || getSize(clip, columns, rows) == 0) return 0;
  // Where the box begins within the image; negative where there is white first.
  const int64_t left = Tools::cut(std::floor(static_cast<double>(clip.x - x) + 0.5));
  const int64_t top = Tools::cut(
      std::floor(static_cast<double>(y) - static_cast<double>(clip.y + clip.height) + 0.5));
  const int white_left = static_cast<int>(std::clamp<int64_t>(-left, 0, columns));
  const int last =
      static_cast<int>(std::clamp<int64_t>(image.getWidth() - left, white_left, columns));
  PixelText pixels(image, form == GRAY);
  const std::string_view white = WHITE.substr(0, pixels.length());
  const std::string_view white_above = form == METAFILE ? WHITE.substr(0, 2) : white;
  Row row(out);
  for (int r = 0; r < rows; r++) {
    const int64_t line = top + r;
    if (line < 0 || line >= image.getHeight()) {
      row.put(line < 0 ? white_above : white, columns);
    } else {
      row.put(white, white_left);
      for (int c = white_left; c < last; c++) {
        row.put(pixels.get(static_cast<int>(c + left), static_cast<int>(line)));
      }
      row.put(white, columns - last);
    }
    row.end();
  }
  return 1;
}

}  // namespace ZQV
