#pragma once

#include "Const.h"

namespace ZQV {

class String;

/** The forecast time of a field: hours ahead of its reference date, 0 for an analysis. Unset it
 * adds nothing to a label. */
class ForeTime {
 public:
  ForeTime() = default;
  explicit ForeTime(float h) : hours(h) {}

  void init() { hours = Const::FMISS; }
  /** @return 1 */
  int set(float h);
  /** A number of hours; "an" in any case is 0. @return 1; 0 for another text, which clears it */
  int set(const char* text);
  [[nodiscard]] bool isSet() const { return hours != Const::FMISS; }
  /** Const::FMISS if unset. */
  [[nodiscard]] float getHours() const { return hours; }
  [[nodiscard]] bool isForecast() const { return isSet() && hours > 0; }
  /** "12 hour forecast", "Analysis", or the empty text if unset. @return 1; 0 if unset */
  int toTimeLabel(String& out) const;
  /** Writes "%f\n". */
  void print() const;

 private:
  float hours = Const::FMISS;
};

}  // namespace ZQV
