#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "Domain.h"
#include "DomainTool.h"
#include "EarthPoint.h"
#include "GridPoint.h"
#include "Point.h"
#include "Points.h"
#include "String.h"
#include "Zqv.h"

// Domain texts stand on the command line and in the comments of pictures: whatever they say, the
// domain that comes of them must take any point.

namespace {

using ZQV::Domain;
using ZQV::EarthPoint;
using ZQV::GridPoint;
using ZQV::Point;
using ZQV::Points;

void use(Domain& domain) {
  ZQV::String text;
  domain.toString(text);
  Points line;
  for (float lat = -90; lat <= 90; lat += 45) {
    for (float lon = -360; lon <= 360; lon += 120) {
      EarthPoint e(lat, lon);
      Point p;
      GridPoint g;
      domain.tran(e, p);
      domain.tran(p, g);
      domain.tran(g, e);
      domain.tran(p, e);
      line.add(p);
      domain.adjustDir(lon, p);
      domain.unadjustDir(lon, p);
      p.x = domain.direct(p, Point(1, 1));
    }
  }
  domain.offsetLine(line, domain.wrapLine(line));
  domain.adjust(line);
  domain.scaleSize(640, 480);
  domain.scaleGrid(1.5F);
  domain.zoom(Point(1, 1), 2);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  // Warnings go where they don't take time; reports of the sanitizers stay.
  ::setenv("zqverrtoout", "1", 1);
  if (std::freopen("/dev/null", "w", stdout) == nullptr) {
    return 1;
  }
  ZQV::Zqv::setDatabasePath("/nonexistent");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  Domain domain;
  if (ZQV::DomainTool::decode(domain, text.c_str()) != 0) {
    use(domain);
  }
  if (domain.set(text.c_str()) != 0) {
    use(domain);
  }
  return 0;
}
