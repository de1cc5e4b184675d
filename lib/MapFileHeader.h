#pragma once

#include <cstdio>

#include "Const.h"
#include "StrLib.h"

namespace ZQV {

/** What is known of one segment of a map file ahead of its points. */
class MapFileHeader {
 public:
  void init() { *this = MapFileHeader(); }
  /** Cut at 49 characters. */
  void setLabel(const char* text) { StrLib::copy(label, sizeof(label), text); }
  [[nodiscard]] const char* getLabel() const { return label; }
  /** Both latitudes are 0: the file doesn't say where the segment lies. */
  [[nodiscard]] bool hasBox() const { return minlat != 0.0F || maxlat != 0.0F; }
  /** Writes "%d - %.2f %.2f - %.2f %.2f - %d %s\n". */
  void print() const {
    std::printf("%d - %.2f %.2f - %.2f %.2f - %d %s\n", num, static_cast<double>(minlat),
                static_cast<double>(maxlat), static_cast<double>(minlon),
                static_cast<double>(maxlon), index, label);
  }

  int num = 0;                  ///< points
  float minlat = Const::FMISS;  ///< bounds, degrees
  float maxlat = Const::FMISS;
  float minlon = Const::FMISS;
  float maxlon = Const::FMISS;
  int index = Const::MISS;  ///< identifies the segment
  char label[50] = "";
};

}  // namespace ZQV
