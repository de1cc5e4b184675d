#include "CityHash.h"

#include <cstdio>
#include <cstring>
#include <limits>
#include <type_traits>

#include "CityFile.h"
#include "CityTool.h"
#include "Domain.h"
#include "EarthPoint.h"
#include "FileTool.h"
#include "Point.h"
#include "StrLib.h"
#include "String.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr int RECORD_SIZE = sizeof(CityData);  // 72 bytes
static_assert(std::is_trivially_copyable_v<CityData>, "records are stored as bytes");

void makeKey(long wmo, const char* lead, char (&key)[32]) {
  std::snprintf(key, sizeof(key), "%s%5.5ld", lead, wmo);
}

}  // namespace

CityHash::CityHash(const char* file) {
  setup(file, nullptr, std::numeric_limits<int>::max());
}

CityHash::CityHash(const char* file, Domain& domain, int max_prior) {
  setup(file, &domain, max_prior);
}

int CityHash::setup(const char* file, Domain* domain, int max_prior) {
  prior = max_prior;
  Hash::set(0, RECORD_SIZE, 3);
  String path;
  if (CityTool::getFilename(file, path) == 0) {
    return 0;
  }
  CityFile cities(path.get());
  if (!cities.isOpen()) {
    return 0;
  }
  Hash::set(cities.getNum(), RECORD_SIZE, 3);
  Zqv::outMessage(7, "Reading the city database file...\n");
  CityData data;
  while (cities.read(data) != 0) {
    if (data.prior > prior) {
      continue;
    }
    if (domain != nullptr) {
      EarthPoint e(data.lat, data.lon);
      Point p;
      domain->tran(e, p);
      if (!domain->withinExt(p, 3)) {
        continue;
      }
    }
    const bool buoy = StrLib::equal(data.region, "B_");
    char id[32];
    char wmo[32] = "";
    char place[128];
    if (buoy) {
      makeKey(data.wmo, "b", id);
    } else {
      StrLib::copy(id, sizeof(id), data.id);
      makeKey(data.wmo, "", wmo);
    }
    std::snprintf(place, sizeof(place), "%5.0f%6.0f", static_cast<double>(data.lat) * 10,
                  static_cast<double>(data.lon) * 10);
    enter(id, wmo, place, &data);
  }
  return 1;
}

int CityHash::get(const char* key, CityHashData& out) const {
  const int length = StrLib::length(key);
  if (length == 5 && StrLib::check(key, "ddddd")) {
    return get(1, key, out);
  }
  if (length == 6 && key[0] == 'b') {
    return get(0, key, out);
  }
  if (length == 5 && StrLib::check(key, "uAddd")) {
    long number = 0;
    if (CityTool::toWmo(key, number) != 0) {
      char wmo[32];
      makeKey(number, "", wmo);
      return get(1, wmo, out);
    }
  }
  return get(0, key, out);
}

int CityHash::get(int k, const char* key, CityHashData& out) const {
  out.init();
  const char* found = search(k, key);
  if (found == nullptr) {
    return 0;
  }
  std::memcpy(&out.data, found, sizeof(out.data));
  return 1;
}

}  // namespace ZQV
