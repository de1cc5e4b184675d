#include "MapFile.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "EarthPoint.h"
#include "InputFile.h"
#include "MapFileHeader.h"

// Binary and text maps and shapefiles: any bytes as each of them.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using ZQV::MapFile;
  const char* path = inputFile({reinterpret_cast<const char*>(data), size});
  MapFile::checkType(path);
  for (const int type : {MapFile::BINARY, MapFile::TEXT, MapFile::SHAPE}) {
    MapFile map;
    if (map.open(path, 0, type) == 0) continue;
    ZQV::MapFileHeader header;
    ZQV::EarthPoint e;
    while (map.readHeader(header) != 0) {
      while (map.readData(e) != 0) {
      }
    }
    // Parts of segments.
    map.rewind();
    for (int i = 0; map.readHeader(header) != 0; i++) {
      for (int k = 0; k < i % 3; k++) map.readData(e);
      if (i % 4 == 3) {
        map.skipData();
      } else if (i % 4 != 2) {
        map.passData();
      }
    }
    map.seek(map.tell() / 2);
    map.readHeader(header);
  }
  return 0;
}
