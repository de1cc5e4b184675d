#pragma once

#include <string>

#include "Const.h"

namespace ZQV {

class String;

/** Where in the vertical a field lies: a value with its unit ("500 mb"), a layer between two values
 *  ("1000-500 mb"), or a name ("sfc"). */
class Level {
 public:
  Level() = default;
  explicit Level(const char* text) { set(text); }

  void init() { *this = Level(); }
  /** "500mb", "1000-500mb" or a name. @return 1; 0 for an empty text, which clears it */
  int set(const char* text);
  void set(float v, const char* units);
  void set(float bottom, float top, const char* units);
  [[nodiscard]] bool isSet() const { return val != Const::FMISS || !name.empty(); }
  [[nodiscard]] bool isLayer() const { return val2 != Const::FMISS; }
  /** Const::FMISS for a name. */
  [[nodiscard]] float getValue() const { return val; }
  /** Const::FMISS unless it is a layer. */
  [[nodiscard]] float getTop() const { return val2; }
  /** The unit, or the name. */
  [[nodiscard]] const char* getName() const { return name.c_str(); }
  /** @return 1; 0 with an empty text if unset */
  int toString(String& out) const;
  void print() const;

 private:
  std::string name;
  float val = Const::FMISS;
  float val2 = Const::FMISS;
};

}  // namespace ZQV
