#pragma once

#include <cstdio>

#include "Const.h"

namespace ZQV {

/** A window geometry: a place and a size. */
class GeomBox {
 public:
  GeomBox() = default;
  GeomBox(float px, float py, float w, float h) : x(px), y(py), width(w), height(h) {}

  void init() { *this = GeomBox(); }
  void set(float px, float py, float w, float h) { *this = GeomBox(px, py, w, h); }
  /** Writes "%.1fx%.1f+%.1f+%.1f\n": width, height, x, y. */
  void print() const {
    std::printf("%.1fx%.1f+%.1f+%.1f\n", static_cast<double>(width), static_cast<double>(height),
                static_cast<double>(x), static_cast<double>(y));
  }

  float x = Const::FMISS;
  float y = Const::FMISS;
  float width = Const::FMISS;
  float height = Const::FMISS;
};

}  // namespace ZQV
