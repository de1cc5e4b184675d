// Any bytes as a NIDS product: walked through all packets and pages as a renderer does.

#include "NidsFile.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "InputFile.h"
#include "NidsInfo.h"
#include "Tools.h"

namespace {

using namespace ZQV;

volatile int sink;

/** Values become colours and places: integers, which must not be undefined. */
void useValue(float v) {
  sink = Tools::cut(static_cast<double>(v));
}

void drain(NidsFile& nids) {
  NidsRun run;
  while (nids.readRun(run) > 0) {
    if (run.run < 0 || run.run > 255 || run.ival < 0 || run.ival > 255 || !(run.val == run.val)) {
      std::abort();
    }
    useValue(run.val);
  }
}

void readPacket(NidsFile& nids) {
  if (nids.isPacketRadial()) {
    NidsRadial radial;
    while (nids.readRadial(radial) > 0) {
      drain(nids);
    }
  } else if (nids.isPacketRastor() || nids.isPacketDpa()) {
    while (nids.readRastor() > 0) {
      drain(nids);
    }
  } else if (nids.isPacketVector()) {
    NidsVector vect;
    while (nids.readVector(vect) > 0) {
      useValue(vect.val);
    }
  } else if (nids.isPacketWindbarb()) {
    NidsWind wind;
    while (nids.readWind(wind) > 0) {
      useValue(wind.val);
    }
  } else if (nids.isPacketText()) {
    NidsText text;
    nids.readText(text);
    if (text.data.back() != '\0') {
      std::abort();
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  setenv("zqverrtoout", "1", 1);  // warnings go where the fuzzer is told to be silent
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const char* name = inputFile({reinterpret_cast<const char*>(data), size});
  NidsFile nids;
  NidsInfo info;
  if (nids.open(name) == 0 || nids.readHeader(info) == 0) {
    return 0;
  }
  const DomainVal dom = nids.getDomainVal();
  if (dom.nx < 0 || dom.ny < 0 || dom.nx > 16385 || dom.ny > 16385 || !(dom.dx > 0)) {
    std::abort();
  }
  int packets = 0;
  do {
    readPacket(nids);
    ++packets;
  } while (nids.readPacket() > 0);
  if (packets % 2 != 0) {  // now by the offset, now where the walk has ended
    nids.gotoGraphic();
  }
  if (nids.graphic() != 0) {
    while (nids.graphicLayer() > 0) {
      while (nids.readPacket() > 0) {
        readPacket(nids);
      }
    }
  }
  nids.close();
  return 0;
}
