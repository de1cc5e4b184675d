#pragma once

#include <string>

namespace ZQV {

class String;

/** A variable: its short name, its units and the words for it in labels. */
class Variable {
 public:
  Variable() = default;
  explicit Variable(const char* short_name) { set(short_name); }
  Variable(const char* short_name, const char* unit, const char* words);

  void init() { *this = Variable(); }
  int set(const char* short_name);
  int setUnits(const char* unit);
  int setLabel(const char* words);
  [[nodiscard]] bool isSet() const { return !name.empty(); }
  [[nodiscard]] const char* getName() const { return name.c_str(); }
  [[nodiscard]] const char* getUnits() const { return units.c_str(); }
  /** The words of the label, or without any the name. */
  [[nodiscard]] const char* getLabel() const;
  /** "words [units]", or the words alone. @return 1 */
  int toLabel(String& out) const;
  void print() const;

 private:
  std::string name;
  std::string units;
  std::string label;
};

}  // namespace ZQV
