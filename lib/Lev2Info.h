#pragma once

#include <string>

#include "Const.h"
#include "Date.h"

namespace ZQV {

/** What the header of a Level II volume tells. A plain value, filled by Lev2File::getHeader. */
class Lev2Info {
 public:
  /** Site identifier, three letters as a rule. */
  [[nodiscard]] const char* getId() const { return id.c_str(); }
  [[nodiscard]] float getLat() const { return lat; }
  [[nodiscard]] float getLon() const { return lon; }
  [[nodiscard]] const Date& getDate() const { return date; }

  std::string id;            ///< at most 9 characters
  float lat = Const::FMISS;  ///< of the site, degrees north
  float lon = Const::FMISS;  ///< degrees east
  Date date;                 ///< of the volume, unset where the header has none
};

}  // namespace ZQV
