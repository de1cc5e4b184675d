#pragma once

#include "Const.h"

namespace ZQV {

/** Plain conversions between the units of temperature, length and speed. A missing value stays
 * missing. */
class Convert {
 public:
  // NOLINTBEGIN(readability-identifier-naming): units keep their own letters
  static float CtoK(float c) { return linear(c, 1, 273.15); }
  static float KtoC(float k) { return linear(k, 1, -273.15); }
  static float CtoF(float c) { return linear(c, 1.8, 32); }
  static float FtoC(float f) { return linear(f, 1 / 1.8, -32 / 1.8); }
  static float KtoF(float k) { return linear(k, 1.8, 32 - 273.15 * 1.8); }
  static float FtoK(float f) { return linear(f, 1 / 1.8, 273.15 - 32 / 1.8); }
  static float FTtoM(float ft) { return linear(ft, 0.3048, 0); }
  static float MtoFT(float m) { return linear(m, 1 / 0.3048, 0); }
  static float NMtoKM(float nm) { return linear(nm, 1.852, 0); }
  static float KMtoNM(float km) { return linear(km, 1 / 1.852, 0); }
  static float KTtoKMH(float kt) { return linear(kt, 1.852, 0); }
  /** In 32 bits throughout, so that a scale and an offset that meet at 0 m/s meet at 0 kt too. */
  static float MStoKT(float ms) { return ms == Const::FMISS ? ms : ms * 1.9438445F; }
  static float KTtoMS(float kt) { return linear(kt, 1.852 / 3.6, 0); }
  // NOLINTEND(readability-identifier-naming)

 private:
  static float linear(float v, double factor, double added) {
    return v == Const::FMISS ? v : static_cast<float>(static_cast<double>(v) * factor + added);
  }
};

}  // namespace ZQV
