#pragma once

#include <string>
#include <vector>

#include "VarSpec.h"

namespace ZQV {

/** The variables that a plot is to show, decoded from the user's text against a list file of those
 * known.
 *
 *  The list file has one variable a line: name, units, format, layer, and the words of its label to
 * the end of the line; "-" stands for none, "#" begins a comment line.
 *
 *  The user's text is a comma-separated list of names, each with settings of its own behind colons:
 *  "cid,vil:un=kg/m^2:fm=%.1f". A setting with a comma in it needs the item in double quotes. */
class VarList {
 public:
  void init();
  /** Adds the variables of a list file of the data path to those known. @return 1; 0 if there is no
   * such file */
  int readFile(const char* name);
  /** The entries become those of the text; a name that isn't known has no units and no format, and
   * itself as label. Settings: un= units, fm= format, la= layer, lb= label. @return 1; 0 for an
   * empty text, which leaves no entries */
  int decode(const char* text);

  /** Entries of the last decode(). */
  [[nodiscard]] int getNum() const { return static_cast<int>(entries.size()); }
  /** Out of range the empty text, layer 0, and an unset VarSpec. */
  [[nodiscard]] const char* getName(int i) const;
  [[nodiscard]] const char* getUnits(int i) const;
  [[nodiscard]] const char* getFormat(int i) const;
  [[nodiscard]] int getLayer(int i) const;
  [[nodiscard]] const VarSpec& getSpec(int i) const;
  /** The entry asks for a map overlay at its place in the list: its name is "map". */
  [[nodiscard]] bool isMap(int i) const;
  /** Writes "%s %s %s %d %s\n" for each entry. */
  void print() const;

 private:
  struct Entry {
    VarSpec spec;
    std::string format;
    int layer = 0;
  };
  [[nodiscard]] const Entry& at(int i) const;

  std::vector<Entry> known;
  std::vector<Entry> entries;
};

}  // namespace ZQV
