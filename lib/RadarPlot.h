#pragma once

#include <string>

#include "Drawing.h"
#include "Filename.h"
#include "Listener.h"
#include "String.h"
#include "Timezone.h"

namespace ZQV {

class Plot;
class Strings;

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

  static bool isPresent(const char* text) { return text != nullptr; }
  /** Radii in km of an item of key_length letters: 100 without a value, else up to num_rings.
   *  @param nautical  they are given in nautical miles */
  static void takeRings(const Strings& items, int i, int key_length, bool nautical, float* radii);
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
