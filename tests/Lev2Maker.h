#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ZQV {

/** Makes Level II volumes for tests, byte by byte from the layout of the format. */
class Lev2Maker {
 public:
  /** A moment of a radial: levels, and where its gates lie. */
  struct Moment {
    std::vector<int> levels;
    int first = 0;       ///< metres
    int spacing = 1000;  ///< metres
    float scale = 2.0F;  ///< message 31 only, as the next two
    float offset = 66.0F;
    std::string name = "DREF";
  };
  struct Radial {
    double azimuth = 0;
    int cut = 1;
    double elevation = 0.5;
    Moment refl;
    Moment vel;
    bool half_degree = true;  ///< message 31 only
    int vel_res = 2;          ///< message 1 only
  };

  std::string site = "KTLX";
  int64_t days = 18093;  ///< 15 July 2019, as day 1 is 1 January 1970
  int64_t msecs = 43237812;
  int vcp = 212;

  /** The 24 bytes of the volume header. */
  [[nodiscard]] std::string header() const;
  /** Messages with their transport headers. The gates of message 1 are put where the reader looks
   * for them. */
  [[nodiscard]] std::string message1(const Radial& radial) const;
  [[nodiscard]] std::string message31(const Radial& radial) const;
  /** A message of the fixed size that isn't a radial. */
  static std::string other(int type);
  /** A record of a chain. @param negative  the sign of the last one's length */
  static std::string record(const std::string& messages, bool negative = false);
};

}  // namespace ZQV
