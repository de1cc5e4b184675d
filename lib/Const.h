#pragma once

namespace ZQV {

/** The package's constants: the missing value, angles, the earth and dry air.
 *  All floating constants are 32-bit, and formulas rely on that. */
class Const {
 public:
  /** Marks an absent number in every integer field. */
  static constexpr int MISS = -9999;
  /** The same mark in a float field. */
  static constexpr float FMISS = -9999.0F;

  static constexpr float PI = 3.1415927F;
  static constexpr float TWO_PI = 6.2831855F;
  static constexpr float DRC = 0.017453292F;  ///< degrees to radians
  static constexpr float RDC = 57.29578F;     ///< radians to degrees
  static constexpr float EARTH = 63.7122F;    ///< radius of the earth, 100 km
  static constexpr float R = 287.05F;         ///< gas constant of dry air, J/(kg K)
  static constexpr float G = 9.8F;            ///< gravity, m/s^2
  static constexpr float CP = 1004.0F;        ///< heat of dry air, constant pressure, J/(kg K)
  static constexpr float CV = 717.0F;         ///< heat of dry air, constant volume, J/(kg K)
};

}  // namespace ZQV
