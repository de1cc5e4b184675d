#pragma once

#include <string>
#include <vector>

#include "Const.h"
#include "PlotAttr.h"

namespace ZQV {

class ColorMap;

/** How a data value becomes a colour. With lower bounds given, class i holds the values from bound
 * i up to but not including bound i + 1, and the last class is open upward. Without bounds the
 * classes are taken in turn, one every interval from the base value on. At most 256 classes. */
class ColorFill {
 public:
  /** No classes, nothing set. */
  void init();
  /** Takes a comma-separated list of items (see decode()), or the name of a fill file if the text
   * is one item that is neither a number nor a range. An absent text takes the fill colours of the
   * map.
   *  @param map  colours that the text names by their channels are added to it
   *  @return 1; 0 if a fill file can't be opened */
  int set(ColorMap& map, const char* spec);
  /** Takes the resource "color_fill", or fallback if that is not set, "miss" or "def".
   *  @return 2 if the user's value is in force, else 1 */
  int setFill(ColorMap& map, const char* fallback);
  /** Adds the items of a fill file, one a line, found along the data path. @return 1; 0 if it can't
   * be opened */
  int readFile(ColorMap& map, const char* name);
  /** Adds one item: "first-last" for a range of colours, "value:attributes" for a class with a
   * lower bound, or attributes. @return 1; 0 if all classes are in use */
  int decode(ColorMap& map, const char* item);
  /** The first values become the lower bounds, those past n unset. @return 1; 0 without values */
  int setValues(const float* values, int n);

  [[nodiscard]] bool areValuesSet() const { return getBaseVal() != Const::FMISS; }
  [[nodiscard]] int getNum() const { return num; }
  /** Lower bound of the first class, Const::FMISS if unset. */
  [[nodiscard]] float getBaseVal() const { return getValue(0); }
  /** Lower bound of class i, Const::FMISS if unset or out of range. */
  [[nodiscard]] float getValue(int i) const;
  void setBase(float v) { base = v; }
  [[nodiscard]] float getBase() const { return base; }
  void setInterval(float v) { intrvl = v; }
  [[nodiscard]] float getInterval() const { return intrvl; }

  /** Class of a value; -1 below the first bound; Const::MISS for a missing value or no classes. */
  [[nodiscard]] int getInd(float v) const;
  /** Attributes of the class of a value; all unset where there is none. */
  [[nodiscard]] const PlotAttr& get(float v) const;
  /** Attributes of class i; all unset out of range. */
  [[nodiscard]] const PlotAttr& get(int i) const;
  /** A class has a fill pattern, which those after it keep that have none. */
  [[nodiscard]] bool hasPatterns() const;
  /** Colour name of class i, empty out of range. */
  [[nodiscard]] const char* getColorName(int i) const;
  /** Colour index of class i, -1 out of range. */
  [[nodiscard]] int getColor(int i) const;
  /** Colour index of the class of a value, -1 below the first bound. Without bounds and with an
   * interval of 0 the first class counts; without any class the result is Const::MISS. A missing
   * value is taken as a number: callers test it first. */
  [[nodiscard]] int getColor(float v) const;
  [[nodiscard]] const char* getLabel() const { return label.c_str(); }
  /** Fills in the unset ones of n values, linearly between those that are set; those behind the
   * last one that is set are drawn toward end, whether that is set or not: deliberate. */
  static void interpolate(float* values, int n, float end);
  void print() const;

 private:
  [[nodiscard]] int findClass(float v) const;
  int addClass(const PlotAttr& a, float v);
  int decodeRange(ColorMap& map, const char* item, const char* dash);
  void validateValues();

  std::vector<PlotAttr> attr;
  std::vector<float> value;
  std::string label;  ///< at most 19 characters
  float base = Const::FMISS;
  float intrvl = Const::FMISS;
  int num = 0;
};

}  // namespace ZQV
