// Any bytes as the part of a Kavouras mosaic that is read.

#include "KavradFile.h"

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
  // What comes ahead of it has no meaning.
  constexpr size_t unused = 1996;
  std::string text(unused, '\0');
  text.append(reinterpret_cast<const char*>(data), size);
  const char* name = inputFile(text);
  KavradFile file;
  if (file.open(name) == 0 || file.readHeader() == 0) return 0;
  KavradPacket packet;
  while (file.readPacket(packet) != 0) {
    if (packet.run < -1 || packet.run > 255 || packet.val < 0 || packet.val > 63) std::abort();
    sink = packet.val;
  }
  // An image takes 7 or 30 MB.
  if (size % 16 != 0) return 0;
  Image image;
  file.read(image);
  // The sizes of header and store agree with each other.
  if (image.validData() && image.findRow(image.getHeight() - 1) == nullptr) std::abort();
  sink = image.getVal(image.getWidth() - 1, image.getHeight() - 1);
  return 0;
}
