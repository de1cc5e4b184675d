#pragma once

#include "Const.h"

namespace ZQV {

/** A vector in the plane. A missing component stays missing through all operations. */
class Vect {
 public:
  Vect() = default;
  Vect(float vx, float vy) : x(vx), y(vy) {}
  void init() { *this = Vect(); }
  void set(float vx, float vy) { *this = Vect(vx, vy); }
  [[nodiscard]] bool isSet() const { return x != Const::FMISS && y != Const::FMISS; }
  void add(const Vect& v) {
    x = sum(x, v.x, 1.0F);
    y = sum(y, v.y, 1.0F);
  }
  void sub(const Vect& v) {
    x = sum(x, v.x, -1.0F);
    y = sum(y, v.y, -1.0F);
  }
  void scale(float f) {
    x = x == Const::FMISS ? x : x * f;
    y = y == Const::FMISS ? y : y * f;
  }

  float x = Const::FMISS;
  float y = Const::FMISS;

 private:
  static float sum(float a, float b, float sign) {
    return a == Const::FMISS || b == Const::FMISS ? Const::FMISS : a + sign * b;
  }
};

}  // namespace ZQV
