#pragma once

#include "Calc.h"
#include "Const.h"
#include "Vect.h"

namespace ZQV {

/** A wind: where it comes from, degrees, and its speed, in the unit of its source. */
class Wind {
 public:
  Wind() = default;
  Wind(float direction, float speed) : dir(direction), spd(speed) {}
  void init() { *this = Wind(); }
  void set(float direction, float speed) { *this = Wind(direction, speed); }
  [[nodiscard]] bool isSet() const { return dir != Const::FMISS && spd != Const::FMISS; }
  /** The components towards east and north; v stays as it is if either is missing. @return 1 or 0
   */
  int toVect(Vect& v) const {
    if (!isSet()) {
      return 0;
    }
    v.set(Calc::windU(dir, spd), Calc::windV(dir, spd));
    return 1;
  }

  float dir = Const::FMISS;
  float spd = Const::FMISS;
};

}  // namespace ZQV
