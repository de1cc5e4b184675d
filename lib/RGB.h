#pragma once

namespace ZQV {

/** A colour value: red, green and blue, nominally 0.0 to 1.0. All three at -1.0 mean "no colour".
 */
class RGB {
 public:
  RGB() = default;
  RGB(float r, float g, float b) : red(r), grn(g), blu(b) {}

  /** Black. */
  void init() { *this = RGB(); }
  void set(float r, float g, float b) { *this = RGB(r, g, b); }
  /** All three are exactly 1.0. */
  [[nodiscard]] bool isWhite() const { return red == 1.0F && grn == 1.0F && blu == 1.0F; }
  /** All three are exactly 0.0. */
  [[nodiscard]] bool isBlack() const { return red == 0.0F && grn == 0.0F && blu == 0.0F; }
  /** Writes "R: %5.3f G: %5.3f B: %5.3f\n". */
  void print() const;

  float red = 0.0F;
  float grn = 0.0F;
  float blu = 0.0F;
};

}  // namespace ZQV
