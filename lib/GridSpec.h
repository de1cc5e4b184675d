#pragma once

#include <string>

#include "StrLib.h"

namespace ZQV {

/** Which field of a grid file is wanted, by the name that the file gives it. */
class GridSpec {
 public:
  int set(const char* text) {
    name = StrLib::acopy(text);
    return 1;
  }
  /** Empty for the first field. */
  [[nodiscard]] const char* getName() const { return name.c_str(); }

 private:
  std::string name;
};

}  // namespace ZQV
