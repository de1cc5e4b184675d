#pragma once

#include <array>
#include <string>
#include <vector>

namespace ZQV {

class Point;

/** A stroke font, read from a text file of pen moves, or the description of a device font. In font
 *  coordinates 105 units are one text height and the baseline lies at 35. */
class GFont {
 public:
  enum Type { STROKE = 1, DEVICE = 2 };

  /** Reads "modern.fnt" from the current directory, if it is there. */
  GFont() : GFont("modern.fnt") {}
  explicit GFont(const char* file) : opened(read(file) != 0) {}

  /** Reads a stroke font from a plain file, or takes "#Name_of_Font:size", a device font. What the
   * file holds past 7500 pen moves is passed over. @return 1; 0 if the file can't be opened, with
   * the font empty */
  int read(const char* file);
  [[nodiscard]] bool isOpen() const { return opened; }
  [[nodiscard]] int getType() const { return type; }
  /** Name of a device font. */
  [[nodiscard]] const char* getName() const { return name.c_str(); }
  /** Point size of a device font. */
  [[nodiscard]] int getHeight() const { return height; }
  /** Always 1. */
  static int getInd(const char* /*text*/) { return 1; }

  /** Width of the glyph of c, 0 if there is none; 40 for the blank. */
  [[nodiscard]] int getWidth(char c) const { return width[static_cast<unsigned char>(c)]; }
  /** Starts a walk along the glyph of c. @return 1; 0 if c has none */
  int setChar(char c);
  /** The next pen move. @return 1 to draw, 2 to move; 0 at the end of the glyph, with p left alone
   */
  int get(Point& p);

 private:
  void readStrokes(const std::string& text);
  void measure();

  std::string name;  ///< at most 99 characters
  int type = 0;
  std::vector<int> x;  ///< below 128 draw, up to 253 move to x - 128, 255 ends a glyph
  std::vector<int> y;
  std::array<int, 256> width{};
  std::array<int, 256> index{};  ///< first pen move of each character; -1 without a glyph
  int height = 0;
  size_t ch = 0;
  bool opened = false;
};

}  // namespace ZQV
