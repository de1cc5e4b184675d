#pragma once

#include <array>

#include "Const.h"
#include "EarthPoint.h"

namespace ZQV {

/** One thing to plot at a place on the earth: numbers, a text, or both, with what it is and how it
 * is to be drawn. Its texts are fixed fields: longer ones are cut. */
class Datum {
 public:
  /** What a datum is. */
  enum Type {
    DATA = 1,   ///< a mark, or the value, or the text
    VALUE = 2,  ///< the value as text
    TEXT = 3,
    MARK = 4,    ///< the mark named by the text
    CLOUD = 6,   ///< sky cover, by the first character of the text
    WBARB = 7,   ///< wind barb of direction and speed
    CBARB = 8,   ///< on a circle
    DBARB = 9,   ///< on a dot
    VECT = 10,   ///< wind vector
    AVECT = 11,  ///< wind arrow of one length
    TRACK = 12,  ///< way ahead of direction and speed, knots
    SYMB = 13,   ///< symbol named by the text
    LINE = 14    ///< line between data
  };
  static constexpr int num_values = 5;

  Datum() = default;
  explicit Datum(const EarthPoint& place) : ept(place) {}

  /** Forgets everything. */
  void init() { *this = Datum(); }
  /** Forgets all but identifier, index and place. */
  void initVals();

  /** New place; everything else stays. */
  void set(const EarthPoint& place) { ept = place; }
  void set(float lat, float lon) { ept.set(lat, lon); }
  /** New place and content, the rest of the content unset. @param what  one of Type */
  void set(const EarthPoint& place, int what, float v, const char* form);
  void set(const EarthPoint& place, int what, const char* text, const char* form);
  void set(float lat, float lon, int what, float v, const char* form);
  void set(float lat, float lon, int what, const char* text, const char* form);

  /** Cut at 19 characters. */
  void setId(const char* text);
  void setType(int what) { type = what; }
  void setIndex(int i) { index = i; }
  /** Value i, 0 to 4. @return 1; 0 out of range */
  int setValue(int i, float v);
  /** Adds to value i, or multiplies it; a missing value stays missing. @return 1; 0 out of range */
  int offsetValue(int i, float v);
  int scaleValue(int i, float f);
  /** Text, cut at 39 characters. */
  void setData(const char* text);
  void setData(char c);
  void clearData() { data[0] = '\0'; }
  /** As printf, cut at 39 characters. @return the length */
  int formatData(const char* form, ...) __attribute__((format(printf, 2, 3)));
  /** Format as DatumAttr reads it, cut at 79 characters. */
  void setFormat(const char* form);
  /** Adds items to the format, behind a comma. */
  void addFormat(const char* form);

  [[nodiscard]] const char* getId() const { return id; }
  [[nodiscard]] const EarthPoint& getPoint() const { return ept; }
  [[nodiscard]] int getType() const { return type; }
  [[nodiscard]] int getIndex() const { return index; }
  [[nodiscard]] const char* getFormat() const { return format; }
  [[nodiscard]] const char* getData() const { return data; }
  /** Const::FMISS if unset or out of range. */
  [[nodiscard]] float getValue(int i) const;
  /** Writes the fields in one line. */
  void print() const;

 private:
  static constexpr std::array<float, num_values> no_values = {
      Const::FMISS, Const::FMISS, Const::FMISS, Const::FMISS, Const::FMISS};
  static bool inRange(int i) { return i >= 0 && i < num_values; }

  char id[20] = "";
  EarthPoint ept;
  int type = Const::MISS;
  int index = Const::MISS;
  char format[80] = "";
  char data[40] = "";
  std::array<float, num_values> value = no_values;
};

}  // namespace ZQV
