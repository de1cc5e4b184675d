#pragma once

#include <array>
#include <cstdio>

#include "Const.h"

namespace ZQV {

/** Head of one radial. */
struct NidsRadial {
  float ang0 = 0;  ///< start angle, degrees clockwise from north
  float ang1 = 0;  ///< width, degrees

  void print() const {
    std::printf("Radial: %.1f %.1f\n", static_cast<double>(ang0), static_cast<double>(ang1));
  }
};

/** A stretch of equal bins or cells. A stretch of none is legal and moves nothing. */
struct NidsRun {
  int run = 0;               ///< number of bins or cells, 0 to 255
  int ival = 0;              ///< raw level, 0 to 255
  float val = Const::FMISS;  ///< physical value; Const::FMISS where there is none

  void print() const { std::printf("Run: %d %d %f\n", run, ival, static_cast<double>(val)); }
};

/** A line between two points, product coordinates. */
struct NidsVector {
  float val = 0;  ///< the packet's value, 0 where it has none
  float x1 = 0;
  float y1 = 0;
  float x2 = 0;
  float y2 = 0;

  void print() const {
    std::printf("Vector: %f (%f,%f)-(%f,%f)\n", static_cast<double>(val), static_cast<double>(x1),
                static_cast<double>(y1), static_cast<double>(x2), static_cast<double>(y2));
  }
};

/** A line of text at a point, product coordinates. */
struct NidsText {
  float val = 0;  ///< data level
  float x = 0;
  float y = 0;
  std::array<char, 100> data{};  ///< terminated; a longer text is cut

  void print() const {
    std::printf("Text: %f (%f,%f) %s\n", static_cast<double>(val), static_cast<double>(x),
                static_cast<double>(y), data.data());
  }
};

/** A wind barb at a point, product coordinates. */
struct NidsWind {
  float val = 0;  ///< data level
  float x = 0;
  float y = 0;
  float dir = 0;  ///< where it blows from, degrees
  float spd = 0;  ///< knots

  void print() const {
    std::printf("Wind: %f (%f,%f) %f %f\n", static_cast<double>(val), static_cast<double>(x),
                static_cast<double>(y), static_cast<double>(dir), static_cast<double>(spd));
  }
};

}  // namespace ZQV
