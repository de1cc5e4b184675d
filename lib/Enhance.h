#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace ZQV {

class ColorMap;

/** How the values of an image become colours: up to 256 colour indices, each with a threshold. The
 * thresholds of an index table are pixel codes, those of a value table physical values. They rise
 * or fall; class i holds the values from threshold i to the next. */
class Enhance {
 public:
  Enhance() { init(); }

  /** An index table without entries. */
  void init();
  /** Takes a comma-separated list of items (see decode()), or the name of an enhancement file if
   * the text is one item without "-". An absent or empty text takes the fill colours of the map,
   * spread over the codes 0 to 255.
   *  @param map  colours that the text names by their channels are added to it
   *  @return 1; 0 if an enhancement file can't be opened */
  int set(ColorMap& map, const char* spec);
  /** Adds the items of an enhancement file, one a line, found along the data path. Lines "@value"
   * and "@index" choose the kind of table, "@name" and "@label" name it.
   *  @return 1; 0 with a warning if it can't be opened */
  int readFile(ColorMap& map, const char* name);
  /** Gives thresholds to entries without one: between two that are set by their distance. */
  void validateValues();
  /** Adds one item: "first-last" for a range of colours without thresholds, "value:attributes",
   * "cvalue:attributes", which makes this a value table, or attributes alone, whose threshold is
   * the entry's number. Of the attributes the colour counts.
   *  @return 1; 0 if all 256 entries are in use */
  int decode(ColorMap& map, const char* item);

  [[nodiscard]] bool isIndex() const { return type == INDEX; }
  [[nodiscard]] bool isValue() const { return type == VALUE; }
  [[nodiscard]] int getNum() const { return num; }
  [[nodiscard]] const char* getName() const { return name.c_str(); }
  /** Replaces the colour index of entry i. @return 1; 0 for a bad i */
  int setIndex(int i, int v);
  /** Colour index of entry i, 0 for a bad i. */
  [[nodiscard]] int getIndex(int i) const;
  /** Threshold of entry i; Const::FMISS if unset or for a bad i. */
  [[nodiscard]] float getValue(int i) const;
  /** Class of a value: -1 on the far side of the first threshold, the last one where no class
   * holds it. */
  [[nodiscard]] int getIndex(float v) const;
  /** Colour index of the class of a value, -1 where there is none. */
  [[nodiscard]] int getColor(float v) const;
  /** Writes "Enhance\n", "Name: %s\n", and "Val: %.2f Color: %d\n" for each entry. */
  void print() const;

 private:
  enum Type { INDEX = 0, VALUE = 1 };
  static constexpr size_t max = 256;

  int add(int color);
  int decodeRange(ColorMap& map, const char* item, const char* dash);

  std::string name;  ///< at most 19 characters
  std::array<int, max> index{};
  std::array<float, max> value{};
  int type = INDEX;
  int num = 0;
};

}  // namespace ZQV
