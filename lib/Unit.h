#pragma once

#include <array>
#include <string>

namespace ZQV {

class String;

/** One conversion: (value * ifac) * mult + offset, divided by ofac. */
struct UnitData {
  std::string in;  ///< the units as they were asked for, numeric factors included
  std::string out;
  std::string cvt;  ///< conversion text of the file, at most 39 characters
  float mult = 1;   ///< multiplier and what is added after it
  float offset = 0;
  float ifac = 1;  ///< numeric factors of the two unit texts
  float ofac = 1;
  int valid = 0;  ///< the conversion is known
  int flag = 0;   ///< age: the lowest was looked up first
};

/** Converts between units by the records of the file "units.lup" in the data path, with a cache of
 * ten conversions in front of it. A unit text may begin with a factor: "100ft", "10^-5 /s", "-m".
 */
class Unit {
 public:
  /** @return the value in the other unit; Const::FMISS for a missing value and an unknown
   * conversion */
  float convert(float value, const char* from, const char* to);
  /** The conversion is known. */
  bool valid(const char* from, const char* to);
  /** The same unit text, ignoring case. */
  static bool equal(const char* a, const char* b);
  /** Looks for the first record of from to to, and fills cvt, mult, offset and valid. @return 1; 0
   * if there is none */
  int readFile(const char* from, const char* to, UnitData& data) const;

  /** Text for the factor of the unit times factor, then the unit without it, then name: "10^3 m" if
   * it is a power of ten, else as "2e+05 m". @return 1 */
  static int scale(const char* unit, float factor, const char* name, String& out);
  /** Splits "name [unit]" or "name (unit)". @return 1; 0 without a unit, the name is then the text
   */
  static int parse(const char* text, String& name, String& unit);
  /** Puts another unit into such a text, as "%s [%s]". @return 1 */
  static int change(String& text, const char* unit);
  /** Removes a "kg/kg" or "g/g", and writes "/s/s" as "/s^2". @return 1 */
  static int simplify(String& text);

 private:
  /** The conversion, from the cache or looked up into it. */
  const UnitData& find(const char* from, const char* to);
  UnitData& takeSlot();

  std::array<UnitData, 10> cvs;
  int ncvs = 0;
};

}  // namespace ZQV
