#pragma once

#include <string>

#include "Date.h"
#include "RcmData.h"
#include "RcmDomain.h"
#include "ReportPlot.h"
#include "Unit.h"

namespace ZQV {

class Datum;

/** Draws coded messages: the echo box of one site as an image, or the national mosaic, and what the
 * variables ask for of each message. Of the variables, by exact name:
 *  - city, stat, mode: identifier; "NA", "NE" or "OM"; "P" or "C"
 *  - etop, echotop: highest top, hundreds of feet
 *  - tvs, meso: tornado vortices and mesocyclones
 *  - cid, ctop, cdir, cspd, cmvmt: identifier, top, direction, speed and movement of each storm
 *  - cstat, hail: symbol of each storm's hail; of those with hail alone
 *  - storm: movement, identifier, top and symbol of each storm */
class RcmPlot : public ReportPlot {
 public:
  RcmPlot() : RcmPlot(nullptr) {}
  /** @param params  as setParam() */
  explicit RcmPlot(const char* params);
  RcmPlot(const RcmPlot&) = delete;
  RcmPlot& operator=(const RcmPlot&) = delete;
  ~RcmPlot() override = default;

  int init() override;
  /** "site", "mos" or "mosg"; any other name changes nothing. @return 1 */
  int setInput(const char* name) override;
  /** Comma-separated items: fi=, pa, in, nc, ho, id, tz, ct, cof, co, va, plot, data, sc, ramp,
   * site, distm, dist, clutter, min_hgt, num_plt, noclar, fill, filter, map, sync, and those of
   * GridCont and ImagePlot. The first row that fits an item acts. @return 1 */
  int setParam(const char* text) override;
  /** That of the messages drawn, else of the file, at the quarter hour that products come at: 15,
   * or 45 from minute 30 on. */
  int getDate(Date& out) override;
  int getInitDate(Date& out) override;
  /** Unit of a variable as the messages have it, empty for one without. */
  static const char* getUnits(const char* name);
  /** The echo box of a message as an image of levels; without data for a site without a position.
   *  @return 1 if it has data */
  int toImage(const RcmData& message, Image& image);
  /** Draws what the variables ask for of a message, nothing for a site without a position.
   * @return 1; 0 if nothing was drawn */
  int drawData(Plot& plot, const RcmData& message);

 protected:
  int readSite() override;
  [[nodiscard]] EarthPoint getSite() const override;
  void drawSite(Plot& plot) override;
  int drawMosaic(Plot& plot) override;

 private:
  void setDate(const Date& at);
  void takeRamp(const Strings& items, int i);
  [[nodiscard]] int rampLevel(int mode, double distance) const;
  void drawVar(Plot& plot, const RcmData& message, int i);
  void drawStorms(Plot& plot, const RcmData& message, int i);
  void drawMove(Plot& plot, const RcmStorm& storm, const EarthPoint& place, int i);
  void drawStatus(Plot& plot, const RcmStorm& storm, const EarthPoint& place, const char* format);
  void drawVortices(Plot& plot, const RcmData& message, const RcmVortex* list, int n, bool tornado);
  [[nodiscard]] bool nearStorm(const RcmData& message, const RcmVortex& vortex);
  bool findCell(const RcmData& message, float x, float y, GridPoint& cell);
  EarthPoint findPlace(const RcmData& message, float x, float y);
  float convert(float value, const char* units, int i);

  RcmDomain rdom;
  RcmData data;        ///< the site's message
  Date date;           ///< of the messages drawn last
  std::string dated;   ///< the file that they were in
  std::string cutoff;  ///< level classes, not used
  int ramp_prec_cut = Const::MISS;
  int ramp_prec_len = 0;
  int ramp_clar_cut = Const::MISS;
  int ramp_clar_len = 0;
  int filter = 0;   ///< vortices are drawn near storms only
  int min_hgt = 0;  ///< lowest top of the storms that are drawn, hundreds of feet
  int num_plt = 100;
  int no_clair = 0;  ///< sites in clear air mode aren't drawn
  Unit unit;
};

}  // namespace ZQV
