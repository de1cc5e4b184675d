#pragma once

#include <string>

#include "MdrData.h"
#include "MdrDomain.h"
#include "ReportPlot.h"

namespace ZQV {

class Datum;
class MdrFile;

/** Draws MDR reports: the echo box of one site as an image, or the national mosaic, and what the
 * variables ask for of each report. Of the variables, by exact name:
 *  - city, stat: identifier, and "NA", "NE" or "OM" for a site without a report
 *  - etop, echotop: highest top, hundreds of feet
 *  - pr_typ, pr_tnd: precipitation and its trend at each echo region
 *  - pr_amv, pr_cmv: movement of the area as a vector, of its cells as a barb
 *  - area: line or extent of each region
 *  - comp: all of these but the last */
class MdrPlot : public ReportPlot {
 public:
  MdrPlot() : MdrPlot(nullptr) {}
  /** @param params  as setParam() */
  explicit MdrPlot(const char* params);
  MdrPlot(const MdrPlot&) = delete;
  MdrPlot& operator=(const MdrPlot&) = delete;
  ~MdrPlot() override = default;

  int init() override;
  /** "site" or "mdrsite", "mos" or "mdr", "mosg", each with its name convention; any other name
   * changes nothing. @return 1 */
  int setInput(const char* name) override;
  /** Comma-separated items: fi, in, nc, ho, id, tz, ct, cof, co, va, plot, data, sc, ramp, site,
   * distm, dist, echo, fill, sync, map, and those of GridCont and ImagePlot. The first row that
   * fits an item acts. @return 1 */
  int setParam(const char* text) override;
  /** The echo box of a report as an image of levels; without data for a site without a position.
   *  @return 1 if it has data */
  int toImage(const MdrData& report, Image& image);
  /** Draws what the variables ask for of a report, nothing for a site without a position.
   * @return 1; 0 if nothing was drawn */
  int drawData(Plot& plot, const MdrData& report);

 protected:
  int readSite() override;
  [[nodiscard]] EarthPoint getSite() const override;
  void drawSite(Plot& plot) override;
  int drawMosaic(Plot& plot) override;

 private:
  void drawVars(Plot& plot, const MdrData& report);
  void drawArea(Plot& plot, const MdrData& report, const MdrRegion& region);
  void drawTops(Plot& plot, const MdrData& report, Datum& datum);
  void drawRegion(Plot& plot, const MdrRegion& region, Datum& datum, const char* format);
  bool drawMove(Plot& plot, const MdrRegion& region, char move, const char* format, Datum& datum);
  void drawEchoes(Plot& plot, const Image& image);
  void drawEchoes(Plot& plot, const MdrData& report);

  MdrDomain mdom;
  MdrData data;  ///< the site's report
  int plt_echo = 0;
  std::string cutoff;  ///< level classes, not used
  int ramp_cut = Const::MISS;
  int ramp_len = Const::MISS;
};

}  // namespace ZQV
