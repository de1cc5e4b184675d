// Any bytes as a PNG picture, which is then written again.

#include "PngFile.h"

#include <cstdint>
#include <cstdlib>
#include <string>

#include <zlib.h>

#include "Image.h"
#include "InputFile.h"

namespace {

using namespace ZQV;

volatile int sink;

/** Makes the checksum of each chunk right, or damage would never get past it. */
void mendSums(std::string& text) {
  const auto* bytes = reinterpret_cast<const Bytef*>(text.data());
  for (size_t at = 8; at + 12 <= text.size();) {
    const size_t size = bytes[at] << 24U | bytes[at + 1] << 16 | bytes[at + 2] << 8 | bytes[at + 3];
    if (size > text.size() - at - 12) return;
    const uLong sum = ::crc32(0, bytes + at + 4, static_cast<uInt>(size + 4));
    for (size_t i = 0; i < 4; i++) {
      text[at + 8 + size + i] = static_cast<char>(sum >> (24 - 8 * i));
    }
    at += size + 12;
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  setenv("zqverrtoout", "1", 1);  // warnings go where the fuzzer is told to be silent
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string text(reinterpret_cast<const char*>(data), size);
  mendSums(text);
  const char* name = inputFile(text);
  Image image;
  PngFile file;
  file.read(name, image);
  // The sizes of header and store agree with each other.
  if (image.validData() && image.findRow(image.getHeight() - 1) == nullptr) std::abort();
  sink = image.getVal(image.getWidth() - 1, image.getHeight() - 1);
  if (image.getDataSize() < 1 << 20) file.write("/dev/null", image);
  return 0;
}
