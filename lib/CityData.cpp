#include "CityData.h"

#include <cstdio>

namespace ZQV {

void CityData::print() const {
  std::printf("%15s %2s %2s %9s %c %d %c %.3f %.3f %.0f %ld %d\n", name, state, region, id, mos,
              prior, ua, static_cast<double>(lat), static_cast<double>(lon),
              static_cast<double>(el), wmo, num);
}

}  // namespace ZQV
