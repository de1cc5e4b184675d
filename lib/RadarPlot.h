#pragma once

#include <string>

#include "Date.h"
#include "DomainVal.h"
#include "Drawing.h"
#include "Filename.h"
#include "Listener.h"
#include "String.h"
#include "Timezone.h"

namespace ZQV {

class EarthPoint;
class Plot;
class PlotAttr;
class Strings;
class VarList;

/** What the renderers of radar files share: the file and how it is chosen, the site's identifier
 * and the user's colours. */
class RadarPlot : public Drawing, public Listener {
 public:
  /** Takes the resources "input", "in_file", "hour" and "num_hour". @return 1 */
  int setFile() override;
  int setNameConv(const char* conv) override;
  using Drawing::setFilename;
  int setFilename(const char* text) override { return filename.setFile(text); }
  int setFilename(Date& date) override { return filename.setDate(date); }
  int setFilename(Date& date, const char* text) override { return filename.setDate(date, text); }
  /** Has nothing to choose. @return 1 */
  int setForeTime(const char* /*time*/) override { return 1; }
  int getDate(Date& date) override { return filename.getDate(date); }
  int getLoopType() override { return 1; }
  /** The date of the file, the latest if none was chosen. */
  int getInitDate(Date& date) override;
  int getDateOffset() override { return filename.getOffset(); }
  int getNumFrames() override { return filename.getNumFiles(); }
  int getSync() override { return sync; }
  void callback(const char* /*name*/, const char* /*data*/, const void* /*source*/) override {}

  int setHour(const char* hour) { return filename.setFixDate(hour); }
  /** Site identifier, key "i" of the file name, cut at 4 characters. */
  int setId(const char* text);
  int setColorTable(const char* text);
  int setColorFill(const char* text);

 protected:
  static constexpr int num_rings = 4;
  /** Colours of Doppler velocities, m/s. */
  static constexpr const char* velocity_fill =
      "-70:blue,-63:lblue,-49:cyan,-35:lcyan,-25:green,-19:lgreen,-9:dgray,0:off,1:lgray,10:yellow,"
      "20:brown,26:lred,36:red,50:lmagenta,64:magenta";

  /** Stations with the radars. */
  static constexpr const char* site_file = "rad.cty";

  static bool isPresent(const char* text) { return text != nullptr; }
  /** Number of an item from character at on; fallback without one. */
  static int numberAt(const Strings& items, int i, int at, int fallback);
  /** "ramp=CUT:LENGTH"; a length below 1 becomes 200. */
  static void takeRamp(const Strings& items, int i, int& cut, int& length);
  /** Radii in km of an item of key_length letters: 100 without a value, else up to num_rings.
   *  @param nautical  they are given in nautical miles */
  static void takeRings(const Strings& items, int i, int key_length, bool nautical, float* radii);
  /** A view around a radar, 3:2, in the projection of the products.
   *  @param spacing  of its 90 by 60 points, 100 km */
  static DomainVal siteView(const EarthPoint& site, float spacing);
  /** The mark of a radar: a plus. */
  static void setSiteMark(Plot& plot, const PlotAttr& attr);
  /** Up to num_rings rings around the radar, none if the first radius is 0; km. */
  static void drawRings(Plot& plot, const EarthPoint& site, const float* radii);
  /** A label and a date for each variable of layer 0, as a layer of the plot each.
   *  @param units  gives the units of a variable that has none */
  void addVarLabels(Plot& plot, const VarList& vars, const Date& date,
                    const char* (*units)(const char* name)) const;
  /** Gives the plot the user's colour table, if there is one. */
  void readColorTable(Plot& plot) const;

  std::string id;
  String color_table;
  String color_fill;
  int sync = 0;
  Filename filename;
  Timezone tz;
};

}  // namespace ZQV
