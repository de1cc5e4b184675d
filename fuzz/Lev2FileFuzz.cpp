// Any bytes as a Level II volume, plain or compressed by the first byte: walked as a renderer does.

#include "Lev2File.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "InputFile.h"
#include "Lev2Data.h"
#include "Lev2Info.h"
#include "Tools.h"

namespace {

using namespace ZQV;

volatile int sink;

void readGates(Lev2File& file, int type, bool by_gate) {
  if (file.setDataType(type) == 0) {
    return;
  }
  if (by_gate) {
    constexpr int most = 3000;  // more behind the data is only more time
    for (int i = 0; i < std::min(file.getNumData(), most); i++) {
      sink = Tools::cut(static_cast<double>(file.getData()));
    }
    return;
  }
  Lev2File::Values values;
  file.getValues(values);
  int n = 0;
  const unsigned char* gates = file.getGates(n);
  if (n < 0 || n > 65535) {
    std::abort();
  }
  for (int i = 0; i < n; i++) {
    sink = Tools::cut(static_cast<double>(values[gates[i]]));
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  setenv("zqverrtoout", "1", 1);  // warnings go where the fuzzer is told to be silent
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const bool compressed = size > 0 && (data[0] & 1U) != 0;
  const bool by_gate = size > 0 && (data[0] & 2U) != 0;
  const char* name = inputFile({reinterpret_cast<const char*>(data), size});
  Lev2File file;
  Lev2Info info;
  if (file.open(name, compressed ? 1 : 0) == 0) {
    return 0;
  }
  constexpr unsigned ahead = 0xF0;  // of the first byte, which no reader looks at
  file.setAhead(size > 0 && (data[0] & ahead) == ahead ? 2 : 0);
  file.getHeader(info);
  Lev2Data radial;
  for (int type = 0; file.getBlock(radial) != 0; type = (type + 1) % 4) {
    readGates(file, type, by_gate);
    readGates(file, 0, by_gate);
    file.nextBlock();
  }
  return 0;
}
