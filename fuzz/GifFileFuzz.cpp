// Any bytes as a GIF picture, which is then written again.

#include "GifFile.h"

#include <cstdint>
#include <cstdlib>
#include <string>

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
  std::string text(reinterpret_cast<const char*>(data), size);
  if (size % 64 != 0 && size > 10) {  // large screens take most of the time
    text[7] &= 1;
    text[9] &= 1;
  }
  const char* name = inputFile(text);
  Image image;
  GifFile file(name, 0);
  file.read(image);
  file.close();
  // The sizes of header and store agree with each other.
  if (image.validData() && image.findRow(image.getHeight() - 1) == nullptr) std::abort();
  sink = image.getVal(image.getWidth() - 1, image.getHeight() - 1);
  GifFile out("/dev/null", 1);
  if (image.getDataSize() < 1 << 20) out.write(image);
  out.write(name, true);
  return 0;
}
