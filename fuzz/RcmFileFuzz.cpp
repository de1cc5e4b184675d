// Any bytes as a bulletin of coded messages, and as one message.

#include "RcmFile.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "InputFile.h"
#include "RcmData.h"

namespace {

using namespace ZQV;

/** Counts fit their lists, cells have a level or none. */
void check(const RcmData& data) {
  if (data.num_storm > RcmData::max_storm || data.num_tvs > RcmData::max_tvs ||
      data.num_meso > RcmData::max_meso || data.num_vad > RcmData::max_vad ||
      !std::isfinite(data.lat) || !std::isfinite(data.lon) || !std::isfinite(data.elev)) {
    std::abort();
  }
  for (const auto& column : data.echo) {
    for (const unsigned char level : column) {
      if (level > 9 && level != RcmData::no_echo) std::abort();
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  RcmData message;
  RcmRawData raw;
  raw.len = static_cast<int>(input.copy(raw.data, sizeof(raw.data) - 1));
  RcmFile::decode(raw, message);
  check(message);
  RcmFile file;
  if (file.open(inputFile(input)) == 0) return 0;
  while (file.read(raw) != 0) {
    if (raw.len < 1 || raw.len >= static_cast<int>(sizeof(raw.data))) std::abort();
    RcmFile::decode(raw, message);
    check(message);
  }
  return 0;
}
