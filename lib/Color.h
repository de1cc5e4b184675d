#pragma once

#include <string>

namespace ZQV {

/** One entry of a ColorMap: a named colour and the value that a device gave it. */
class Color {
 public:
  /** No name, black, not allocated. */
  void init() { *this = Color(); }

  std::string name;  ///< at most 19 characters
  float red = 0.0F;  ///< channels from 0.0 to 1.0
  float grn = 0.0F;
  float blu = 0.0F;
  int value = -1;  ///< device colour value; -1 = not allocated yet
};

}  // namespace ZQV
