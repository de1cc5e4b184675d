#pragma once

#include "ForeTime.h"
#include "Level.h"
#include "Variable.h"

namespace ZQV {

class Date;
class String;
class Timezone;

/** What a field shows: a variable, at a level, for a forecast time. It makes the labels of the
 * field. */
class VarSpec {
 public:
  VarSpec() = default;
  explicit VarSpec(const Variable& v) : var(v) {}

  void init() { *this = VarSpec(); }
  void setVar(const Variable& v) { var = v; }
  void setUnits(const char* units) { var.setUnits(units); }
  void setLevel(const Level& lev) { level = lev; }
  void setForeTime(const ForeTime& fore) { ftime = fore; }
  [[nodiscard]] const Variable& getVar() const { return var; }
  [[nodiscard]] const Level& getLevel() const { return level; }
  [[nodiscard]] const ForeTime& getForeTime() const { return ftime; }
  [[nodiscard]] const char* getUnits() const { return var.getUnits(); }
  [[nodiscard]] bool isSet() const { return var.isSet(); }

  /** Level, words and units: "500 mb Height [m]", "Echo top [100ft]". @return 1; 0 with an empty
   * text if there is no variable */
  int toInfoLabel(String& out) const;
  /** The text, the forecast time and the date that they hold for, in the zone. Without text and
   * forecast time the plain date. @return 1; 0 with an empty text for an unset date */
  int toDateLabel(const Date& date, const Timezone& zone, const char* text, String& out) const;
  void print() const;

 private:
  Variable var;
  Level level;
  ForeTime ftime;
};

}  // namespace ZQV
