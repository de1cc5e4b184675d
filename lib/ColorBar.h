#pragma once

#include <string>

#include "ColorFill.h"
#include "Enhance.h"
#include "Range.h"

namespace ZQV {

/** What a colour bar shows, and where. Plot draws it. */
class ColorBar {
 public:
  /** Where the colours come from. */
  enum Type { FILL = 0, ENHANCE = 1 };

  void init() { *this = ColorBar(); }
  /** "lo=CORNER,ra=MIN:MAX". @return 1 */
  int setParam(const char* text);
  int setLocate(const char* text);
  int setFill(const ColorFill& colors);
  int setEnhance(const Enhance& table);
  int setRange(const Range& values);
  [[nodiscard]] int getType() const { return type; }
  [[nodiscard]] const char* getLocate() const { return loc.c_str(); }
  [[nodiscard]] const ColorFill& getFill() const { return fill; }
  [[nodiscard]] const Enhance& getEnhance() const { return enh; }
  [[nodiscard]] const Range& getRange() const { return range; }
  /** Writes "ColorBar\n", "Locate: %s\n", the range and the colours. */
  void print() const;

 private:
  int type = FILL;
  ColorFill fill;
  Enhance enh;
  Range range;
  std::string loc = "ll";
};

}  // namespace ZQV
