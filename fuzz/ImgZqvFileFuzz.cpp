// Any bytes as a file of the package's own image format, which is then written again.

#include "ImgZqvFile.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "Image.h"
#include "InputFile.h"

namespace {

using namespace ZQV;

volatile int sink;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  setenv("zqverrtoout", "1", 1);  // warnings go where the fuzzer is told to be silent
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const char* name = inputFile({reinterpret_cast<const char*>(data), size});
  Image image;
  ImgZqvFile file;
  file.read(name, image);
  // The sizes of header and store agree with each other.
  if (image.validData() && image.findRow(image.getHeight() - 1) == nullptr) std::abort();
  sink = image.getVal(image.getWidth() - 1, image.getHeight() - 1);
  if (image.getDataSize() >= 1 << 20) return 0;
  file.setVer(static_cast<int>(size % 2) + 3);
  file.write("/dev/null", static_cast<int>(size / 2 % 2) + 1, image);
  return 0;
}
