// Enhancement tables as users write them, and the files of them. The first byte of the input
// chooses which it is.

#include "Enhance.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "ColorMap.h"
#include "InputFile.h"

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  setenv("zqverrtoout", "1", 1);  // warnings go where the fuzzer is told to be silent
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
  ZQV::ColorMap map(512);
  map.add("red", 1.0F, 0.0F, 0.0F);
  map.add("blue", 0.0F, 0.0F, 1.0F);
  ZQV::Enhance table;
  if (data[0] % 2 == 0) {
    table.set(map, ("red," + text).c_str());  // as a list, never as the name of a file
  } else {
    table.readFile(map, inputFile(text));
  }
  if (table.getNum() > 256 || std::strlen(table.getName()) > 19) std::abort();
  for (const float v : {-1e30F, -9999.0F, -1.0F, 0.0F, 0.5F, 7.0F, 255.0F, 1e30F}) {
    const int i = table.getIndex(v);
    if (i < -1 || i >= table.getNum()) std::abort();
    if (i >= 0 && table.getColor(v) != table.getIndex(i)) std::abort();
  }
  return 0;
}
