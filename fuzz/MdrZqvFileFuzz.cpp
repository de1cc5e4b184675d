// Any bytes as a summary of MDR reports.

#include "MdrZqvFile.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "Grid.h"
#include "Image.h"
#include "InputFile.h"
#include "MdrData.h"

namespace {

using namespace ZQV;

constexpr int max_level = 9;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const char* name = inputFile({reinterpret_cast<const char*>(data), size});
  MdrZqvFile file;
  if (file.open(name, 0) == 0) return 0;
  Image image;
  if (file.read(image) == 0) std::abort();
  for (int y = 0; y < image.getHeight(); y++) {
    const unsigned char* row = image.findRow(y);
    for (int x = 0; x < image.getWidth(); x++) {
      if (row[x] > max_level) std::abort();
    }
  }
  MdrData station;
  while (file.read(station) != 0) {
    if (station.num_reg > 1 || station.reg[0].num_move > 1) std::abort();
  }
  Grid grid;
  if (file.read(grid) != 0 || file.open(name, 0) == 0 || file.read(grid) == 0) std::abort();
  return 0;
}
