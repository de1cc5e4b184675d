// Any bytes as a bulletin of MDR reports, and as one report.

#include "MdrFile.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "EarthPoint.h"
#include "InputFile.h"
#include "MdrData.h"

namespace {

using namespace ZQV;

/** Counts fit their lists, and places are on the earth or unset. */
void check(MdrData& data) {
  if (data.num_reg < 0 || data.num_reg > MdrData::max_reg) std::abort();
  data.lat = 35;
  data.lon = -97;
  for (int r = 0; r < data.num_reg; r++) {
    const MdrRegion& reg = data.reg[r];
    if (reg.num_prec > MdrRegion::max_prec || reg.num_loc > MdrRegion::max_loc ||
        reg.num_move > MdrRegion::max_move) {
      std::abort();
    }
    EarthPoint point;
    data.getRegLoc(r, point);
    if (!std::isfinite(point.lat)) std::abort();
    data.getTopsLoc(r, point);
    if (!std::isfinite(point.lon)) std::abort();
  }
  for (const auto& column : data.echo) {
    for (const unsigned char level : column) {
      if (level > 9) std::abort();
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  setenv("zqverrtoout", "1", 1);  // warnings go where the fuzzer is told to be silent
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  MdrFile file;
  MdrData report;
  MdrRawData raw;
  raw.len = static_cast<int>(input.copy(raw.data, sizeof(raw.data) - 1));
  file.decode(raw, report);
  check(report);
  if (file.open(inputFile(input)) == 0) return 0;
  while (file.read(report) != 0) check(report);
  return 0;
}
