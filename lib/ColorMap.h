#pragma once

#include <vector>

#include "Color.h"

namespace ZQV {

class RGB;

/** The table of named colours. A name or a colour text becomes an index here, and an index leads to
 * the channels and to the value that the device gave the colour. The leading entries, getNumFill()
 * of them, are those that a fill made from the whole table uses. */
class ColorMap {
 public:
  ColorMap() : ColorMap(256) {}
  /** Room for n entries. */
  explicit ColorMap(int n) { init(n); }

  /** No entries; the names of the old ones can still be overwritten by add(). @return 1 */
  int init();
  /** n new entries, none in use. @return 1; 0 for n below 1, with nothing changed */
  int init(int n);

  /** Adds a colour, or overwrites the channels of the entry that has exactly this name; its device
   *  value stays. @return the index; -1 with a warning if the table is full, even for a known name
   */
  int add(const char* name, float r, float g, float b);
  int add(const char* name, const RGB& rgb);
  /** Index of a colour text, in any case: -2 for "end"; -1 for "none", "off", "back", an absent or
   * an unknown text; 500 to 508 for the fixed pens "pblk" to "ptgry"; a name's index; "#rrggbb" in
   *  hexadecimal and "#rrrgggbbb" in decimal digits become an entry under that name; a number is
   *  the index itself, unchecked. */
  int getInd(const char* text);

  /** Name of entry i, where an i past the end means the last entry; empty if there is none. */
  [[nodiscard]] const char* getName(int i) const;
  /** Channels of entry i, where an i past the end means the last entry; -1.0 in all three for a
   *  negative i and for an empty table. @return 1 */
  int get(int i, RGB& rgb) const;
  int getRGB(int i, float& r, float& g, float& b) const;
  /** The same from 0 to 255, truncated; -1 in all three for a negative i and for an empty table. */
  int getIRGB(int i, int& r, int& g, int& b) const;
  /** Device value of entry i, where an i past the end means the last entry and a negative i the
   * first; -1 if it isn't allocated yet. */
  [[nodiscard]] int getValue(int i) const;
  int getValue(const char* text) { return getValue(getInd(text)); }
  /** @return 1; 0 out of range */
  int setValue(int i, int v);

  [[nodiscard]] int getNum() const { return num; }
  [[nodiscard]] int getMax() const { return static_cast<int>(colors.size()); }
  [[nodiscard]] int getNumFill() const { return num_fill; }
  /** @return 1; 0 if n is not within 0 to getNum() */
  int setNumFill(int n);
  /** Something is drawn with index i: neither -1 ("none") nor -2 ("end"). */
  static bool isColor(int i) { return i >= 0; }
  /** The channels of entry i differ from rgb by less than 0.01 in all. False for "no colour". */
  [[nodiscard]] bool isColorNear(int i, const RGB& rgb) const;
  /** Writes the table to standard output. */
  void print() const;

 private:
  [[nodiscard]] const Color* find(int i) const;

  std::vector<Color> colors;  ///< the whole capacity
  int num = 0;
  int num_fill = 0;
};

}  // namespace ZQV
