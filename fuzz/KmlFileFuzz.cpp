#include <cstddef>
#include <cstdint>
#include <string_view>

#include "EarthPoint.h"
#include "InputFile.h"
#include "MapFile.h"
#include "MapFileHeader.h"

// Any bytes as a KML document, plain or compressed.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ZQV::MapFile map;
  if (map.open(inputFile({reinterpret_cast<const char*>(data), size}), 0, ZQV::MapFile::KML) == 0) {
    return 0;
  }
  ZQV::MapFileHeader header;
  ZQV::EarthPoint e;
  while (map.readHeader(header) != 0) {
    while (map.readData(e) != 0) {
    }
  }
  return 0;
}
