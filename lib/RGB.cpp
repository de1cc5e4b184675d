#include "RGB.h"

#include <cstdio>

namespace ZQV {

void RGB::print() const {
  std::printf("R: %5.3f G: %5.3f B: %5.3f\n", static_cast<double>(red), static_cast<double>(grn),
              static_cast<double>(blu));
}

}  // namespace ZQV
