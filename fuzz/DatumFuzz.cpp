// Formats of data, as users and lists of variables give them. The first line is the format, the
// second the text of the datum, further ones its values; all of it is drawn to a page.

#include "Datum.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "DatumAttr.h"
#include "DatumPlot.h"
#include "Domain.h"
#include "Plot.h"
#include "Zqv.h"

namespace {

using namespace ZQV;

Plot& page() {
  static Plot plot;
  static bool opened = false;
  if (!opened) {
    opened = true;
    Zqv::putResrc("device", "meta,/dev/null");
    if (plot.open() == 0) {
      std::abort();
    }
    Domain map;
    map.set("ll,35,-97,81,61,.1,.1");
    plot.setPanel(map);
  }
  return plot;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  setenv("zqverrtoout", "1", 1);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::istringstream lines(std::string(reinterpret_cast<const char*>(data), size));
  std::string line;
  std::getline(lines, line);
  const DatumAttr attr(line.c_str());
  if (attr.scale != Const::FMISS && !(attr.scale >= 0.01F && attr.scale <= 1000.0F)) {
    std::abort();
  }
  for (const float v : {attr.dx, attr.dy, attr.height, attr.width, attr.expan, attr.max}) {
    if (!std::isfinite(v)) {
      std::abort();
    }
  }
  Datum datum(EarthPoint(35.0F, -97.0F));
  datum.setFormat(line.c_str());
  std::getline(lines, line);
  datum.setData(line.c_str());
  for (int i = 0; std::getline(lines, line); i++) {
    datum.setValue(i, std::strtof(line.c_str(), nullptr));
  }
  static DatumPlot dplot;
  for (const int type : {1, 2, 3, 4, 6, 7, 8, 9, 10, 11, 12, 13, 14}) {
    datum.setType(type);
    dplot.draw(page(), datum);
  }
  return 0;
}
