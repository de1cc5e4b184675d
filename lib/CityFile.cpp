#include "CityFile.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>

#include "CityData.h"
#include "FileTool.h"
#include "StrLib.h"

namespace ZQV {

namespace {

constexpr long RECORD_SIZE = 59;    ///< bytes of a usual line
constexpr float NO_ELEV = 9000.0F;  ///< elevations from here on mean none

}  // namespace

int CityFile::open(const char* name, int mode) {
  close();
  num = 0;
  if (mode == 0) {
    opened = openPlain(name) != 0;
    const long size = opened ? FileTool::getSize(name) : 0;
    num =
        static_cast<int>(std::clamp(size / RECORD_SIZE, 0L, long{std::numeric_limits<int>::max()}));
  } else if (mode == 1) {
    opened = File::open(name, "w") != 0;
  }
  return opened ? 1 : 0;
}

int CityFile::close() {
  opened = false;
  return File::close();
}

int CityFile::read(CityData& data) {
  data.init();
  char line[120];
  const int length = opened ? getLine(line, sizeof(line)) : 0;
  if (length <= 0) {
    return 0;
  }
  if (line[length - 1] != '\n' && !endFile()) {
    skipLine();
  }
  char name[16] = "";
  CityData d;
  const int n =
      std::sscanf(line, "%15c %2s %2s %9s%*c%c%d%c %f %f %f %ld %d\n", name, d.state, d.region,
                  d.id, &d.mos, &d.prior, &d.ua, &d.lat, &d.lon, &d.el, &d.wmo, &d.num);
  if (n < 10) {
    return 0;
  }
  StrLib::trimWS(name);
  StrLib::copy(d.name, sizeof(d.name), name);
  d.el = d.el >= NO_ELEV ? Const::FMISS : d.el;
  data = d;
  return 1;
}

}  // namespace ZQV
