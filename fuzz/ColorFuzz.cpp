// Colour texts, attribute texts and fills, as users write them, and the files of colours and fills.
// The first byte of the input chooses what the rest is.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "ColorFile.h"
#include "ColorFill.h"
#include "ColorMap.h"
#include "InputFile.h"
#include "PlotAttr.h"
#include "RGB.h"

namespace {

void useMap(const ZQV::ColorMap& map) {
  ZQV::RGB rgb;
  int r = 0;
  int g = 0;
  int b = 0;
  for (int i = -3; i < map.getNum() + 3; i++) {
    map.get(i, rgb);
    map.getIRGB(i, r, g, b);
    if (std::string(map.getName(i)).size() > 19) std::abort();
  }
  if (map.getNum() > map.getMax() || map.getNumFill() > map.getNum()) std::abort();
}

void useFill(const ZQV::ColorFill& fill, const ZQV::ColorMap& map) {
  if (fill.getNum() > 256) std::abort();
  for (const float v : {-1e30F, -9999.0F, -1.0F, 0.0F, 0.5F, 7.0F, 1e30F}) {
    const int i = fill.getInd(v);
    if (i >= fill.getNum()) std::abort();
    if (map.getName(fill.getColor(v)) == nullptr) std::abort();
    if (fill.get(v).validFont() && fill.getNum() == 0) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  const int kind = data[0] % 4;
  const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
  ZQV::ColorMap map(512);
  map.add("red", 1.0F, 0.0F, 0.0F);
  ZQV::ColorFill fill;
  switch (kind) {
    case 0: {
      map.getInd(text.c_str());
      const ZQV::PlotAttr attr(text.c_str());
      ZQV::PlotAttr other("red:w1");
      other.update(attr);
      ZQV::PlotAttr::parseFillStyle(text.c_str());
      ZQV::PlotAttr::parseMarker(text.c_str());
      break;
    }
    case 1:
      // As a list, never as the name of a file.
      fill.set(map, ("red," + text).c_str());
      fill.setBase(1.0F);
      fill.setInterval(0.5F);
      break;
    case 2: ZQV::ColorFile::readFile(inputFile(text), map); break;
    default: fill.readFile(map, inputFile(text)); break;
  }
  useMap(map);
  useFill(fill, map);
  return 0;
}
