#pragma once

#include <cstdio>
#include <string>

#include "EarthPoint.h"
#include "EarthPoints.h"
#include "EarthRange.h"
#include "StrLib.h"

namespace ZQV {

/** One list of coordinates of a KML document, with the name of the placemark that it belongs to. */
class KmlData {
 public:
  enum Type { UNKNOWN = 0, LINE = 1 };

  void init() {
    type = UNKNOWN;
    name.clear();
    epts.clear();
  }
  void setType(int v) { type = v; }
  [[nodiscard]] int getType() const { return type; }
  /** Cut at 99 characters. */
  void setName(const char* text) { name = StrLib::acopy(text).substr(0, max_name); }
  [[nodiscard]] const char* getName() const { return name.c_str(); }
  int add(float lat, float lon) { return epts.add(lat, lon); }
  /** Point i; a negative i counts from the end. @return 1; 0 out of range */
  int getPoint(int i, EarthPoint& point) const { return epts.get(i, point); }
  [[nodiscard]] int getNum() const { return epts.getNum(); }
  [[nodiscard]] EarthRange getRange() const { return epts.getRange(); }
  /** Writes "%d - %s\n". */
  void print() const { std::printf("%d - %s\n", type, name.c_str()); }

 private:
  static constexpr size_t max_name = 99;

  int type = UNKNOWN;
  std::string name;
  EarthPoints epts;
};

}  // namespace ZQV
