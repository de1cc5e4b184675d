// Any bytes as a summary of coded messages.

#include "RcmZqvFile.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "Grid.h"
#include "Image.h"
#include "InputFile.h"
#include "RcmData.h"

namespace {

using namespace ZQV;

constexpr int max_level = 18;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const char* name = inputFile({reinterpret_cast<const char*>(data), size});
  RcmZqvFile file;
  if (file.open(name, 0) == 0) return 0;
  Image image;
  if (file.read(image) == 0) std::abort();
  for (int y = 0; y < image.getHeight(); y++) {
    const unsigned char* row = image.findRow(y);
    for (int x = 0; x < image.getWidth(); x++) {
      if (row[x] > max_level) std::abort();
    }
  }
  RcmData station;
  while (file.read(station) != 0) {
    if (station.num_storm > RcmData::max_storm || station.num_tvs > RcmData::max_tvs ||
        station.num_meso > RcmData::max_meso) {
      std::abort();
    }
  }
  Grid grid;
  if (file.read(grid) != 0 || file.open(name, 0) == 0 || file.read(grid) == 0) std::abort();
  return 0;
}
