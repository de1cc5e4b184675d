#pragma once

#include <string>

#include "StrLib.h"

namespace ZQV {

/** Which model's fields are wanted. */
class ModelSpec {
 public:
  int set(const char* text) {
    name = StrLib::acopy(text);
    return 1;
  }
  [[nodiscard]] const char* getName() const { return name.c_str(); }
  [[nodiscard]] bool isSet() const { return !name.empty(); }

 private:
  std::string name;
};

}  // namespace ZQV
