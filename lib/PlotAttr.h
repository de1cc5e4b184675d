#pragma once

#include <string>

#include "Const.h"

namespace ZQV {

/** How one line, fill, mark or text is drawn, as given by a text such as "red:wi=2:st=dsh" or
 * "red,w2". Each attribute may be unset: Const::MISS, or an empty text. */
class PlotAttr {
 public:
  PlotAttr() = default;
  explicit PlotAttr(const char* text) { set(text); }
  PlotAttr(const char* text, const char* fallback) { set(text, fallback); }

  /** Unsets everything. */
  void init() { *this = PlotAttr(); }
  /** The same as parse(). */
  int set(const char* text) { return parse(text); }
  /** Parses text if it is valid, else fallback. */
  int set(const char* text, const char* fallback);
  /** Replaces all attributes by those of the text. Its fields are separated by ":" if it has one,
   * else by ","; the first is the colour name unless it has a "=". Unknown fields are ignored.
   * @return 1 */
  int parse(const char* text);
  /** Takes over each attribute that is set in other, except the shadow. @return 1 */
  int update(const PlotAttr& other);

  [[nodiscard]] bool validWidth() const { return width != Const::FMISS; }
  [[nodiscard]] bool validHeight() const { return height != Const::FMISS; }
  [[nodiscard]] bool validExpan() const { return expan != Const::FMISS; }
  [[nodiscard]] bool validStyle() const { return style != Const::MISS; }
  [[nodiscard]] bool validShadow() const { return shadow != Const::MISS; }
  [[nodiscard]] bool validFillPat() const { return fill_pat != Const::MISS; }
  [[nodiscard]] bool validColorInd() const { return color_ind != Const::MISS; }
  /** False for the index -1, for no name and for "off" in any case. */
  [[nodiscard]] bool validColor() const;
  [[nodiscard]] bool validFont() const { return !font.empty(); }

  [[nodiscard]] float getWidth() const { return width; }    ///< of line, mark or text
  [[nodiscard]] float getHeight() const { return height; }  ///< of text or mark
  [[nodiscard]] float getExpan() const { return expan; }    ///< expansion of text
  [[nodiscard]] int getStyle() const { return style; }      ///< line style, 1 to 5
  [[nodiscard]] int getShadow() const { return shadow; }    ///< steps of the drop shadow
  [[nodiscard]] int getFillPat() const { return fill_pat; }
  [[nodiscard]] int getColorInd() const { return color_ind; }  ///< index in the ColorMap
  [[nodiscard]] const char* getColor() const { return color.c_str(); }
  [[nodiscard]] const char* getFont() const { return font.c_str(); }

  void setWidth(float v) { width = v; }
  void setHeight(float v) { height = v; }
  void setExpan(float v) { expan = v; }
  void setStyle(int v) { style = v; }
  void setShadow(int v) { shadow = v; }
  void setFillPat(int v) { fill_pat = v; }
  void setColorInd(int v) { color_ind = v; }
  /** Colour by name, cut at 19 characters; its index becomes unset. */
  void setColor(const char* name);
  /** Cut at 119 characters. */
  void setFont(const char* name);

  /** Fill style of a keyword such as "sol", "hat", "||" or "5%", in any case; any other text is
   * read as a number, 0 if it is none. */
  static int parseFillStyle(const char* text);
  /** Marker of a keyword such as "plus", "crcl" or "z", in any case; 2 for any other text. */
  static int parseMarker(const char* text);
  /** Writes all attributes in one line. */
  void print() const;

 private:
  void parseField(const char* field);

  float width = Const::FMISS;
  float height = Const::FMISS;
  float expan = Const::FMISS;
  int style = Const::MISS;
  int shadow = Const::MISS;
  int fill_pat = Const::MISS;
  int color_ind = Const::MISS;
  std::string color;
  std::string font;
};

}  // namespace ZQV
