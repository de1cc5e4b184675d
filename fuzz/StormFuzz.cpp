// Any bytes as the lines of a storm table, cut as text packets are.

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>

#include "StormAttr.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::istringstream lines(std::string(reinterpret_cast<const char*>(data), size));
  ZQV::StormAttr storm;
  for (std::string line; std::getline(lines, line);) {
    // A block of its own, so that reading past the end of the line is seen.
    const int result = storm.decode(std::string(line).c_str());
    if (storm.isValid() != (result == 1) || std::strlen(storm.getId()) > 3) {
      std::abort();
    }
    for (const float v :
         {storm.getAng(), storm.getRad(), storm.getHSize(), storm.getVil(), storm.getMaxDbz(),
          storm.getMaxDbzZ(), storm.getVLow(), storm.getTops(), storm.getDir(), storm.getSpd()}) {
      if (!std::isfinite(v)) {
        std::abort();
      }
    }
  }
  return 0;
}
