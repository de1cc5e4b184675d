#pragma once

#include "Strings.h"

namespace ZQV {

class String;

/** Walks a command line of keyed ("-key value", "--key=value") and positional arguments. */
class ResrcCL {
 public:
  explicit ResrcCL(const Strings& args) : strings(args) {}

  void rewind();
  /** Takes the next argument if it is keyed, with the following word as its value where that isn't
   * keyed itself. "--" counts as a key without name.
   *  @return 1; 0 if the next argument is positional, and stays; -1 at the end */
  int getKeyed(String& key, String& value);
  /** Takes the next argument as positional. @return its number, from 0; -1 at the end */
  int getPosition(String& value);
  /** @return 2 if key equals the short key, 1 if it is an initial part of the name, else 0 */
  static int compare(const char* key, const char* name, const char* short_key);
  /** How the last keyed argument was written: 2 with "=", 5 with a word behind it, 6 without value,
   *  9 the bare "--". */
  [[nodiscard]] int getFlag() const { return flag; }

 private:
  Strings strings;
  int ind = 1;
  int pos = 0;
  int flag = 0;
};

}  // namespace ZQV
