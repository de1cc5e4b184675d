#pragma once

#include <array>
#include <optional>
#include <string>

#include "Const.h"
#include "DatumPlot.h"
#include "NidsFile.h"
#include "NidsInfo.h"
#include "Point.h"
#include "RadarPlot.h"
#include "String.h"
#include "Unit.h"
#include "VarList.h"

namespace ZQV {

class ColorFill;
class ColorMap;
class EarthPoint;
class PlotAttr;
class StormAttr;

/** Draws NIDS products: each bin or cell as one filled polygon while the product streams from its
 * file, vectors, barbs and texts, the labels and the colour bar; then the site mark and range
 * rings, the pages of tables, and what the variables ask for of the storms in the tables. On
 * another projection than the product's every vertex goes through its place on the earth, so that
 * the picture is exact on any map. */
class NidsPlot : public RadarPlot {
 public:
  NidsPlot() { NidsPlot::init(); }
  explicit NidsPlot(const char* params);
  NidsPlot(const NidsPlot&) = delete;
  NidsPlot& operator=(const NidsPlot&) = delete;
  ~NidsPlot() override = default;

  int init() override;
  /** The product's own domain, made 3:2 for a radar's picture; without a file that of the site of
   * the identifier.
   *  @return 1; 0 if there is neither, and the domain stays */
  int getDomain(Domain& domain) override;
  /** Has nothing to choose. @return 1 */
  int setInput(const char* name) override;
  int setNameConv(const char* conv) override;
  using RadarPlot::setFilename;
  int setFilename() override;
  int setFilename(const Filename& other);
  /** Comma-separated items: ct, co(f), va, if, nc, ho, tz, pa, id, ty, plot, data, site, distm,
   * dist, map, nodist, notable, table, clutter, noclutter, ramp. The first row that fits an item
   * acts. @return 1 */
  int setParam(const char* text) override;
  /** @return 1; 0 with a warning if the file can't be opened */
  int draw(Plot& plot) override;
  int print() override;

  int setPath(const char* path) { return filename.setPath(path); }
  /** Product type, key "t" of the file name, cut at 14 characters. */
  int setType(const char* text);
  int setVariable(const char* text);
  int setColor(const char* text);
  int setMap(int flag);
  /** Draws what the variables ask for of one storm. @return 1 */
  int drawStorm(Plot& plot, const StormAttr& storm);
  /** Unit of a storm variable as the tables have it, empty for one without. */
  static const char* getUnits(const char* name);
  /** Summary of the product drawn last. */
  int getInfo(NidsInfo& out) const;

 private:
  struct Painter;
  class RowCells;
  [[nodiscard]] bool variablesHaveMap() const;
  int drawImage(Plot& plot);
  int drawData(Plot& plot);
  void readVars();
  void drawPages(Plot& plot, const PlotAttr& data_attr);
  void drawPageText(Plot& plot, const PlotAttr& data_attr, const NidsText& text, float down);
  void drawPageVectors(Plot& plot, float down);
  void drawPageWinds(Plot& plot);
  void drawStormVar(Plot& plot, const StormAttr& storm, const EarthPoint& place, int i);
  void drawComposite(Plot& plot, const StormAttr& storm, const EarthPoint& place);
  void drawStatus(Plot& plot, const StormAttr& storm, const EarthPoint& place);
  void drawTrack(Plot& plot, const StormAttr& storm, const EarthPoint& place);
  void chooseFill(ColorMap& map, ColorFill& fill) const;
  int walkPackets(Painter& painter);
  void drawRadials(Painter& painter);
  [[nodiscard]] int numShown(const NidsRun& run, int bin) const;
  void drawRastors(Painter& painter);
  void drawVectors(Painter& painter);
  void drawWinds(Painter& painter);
  bool drawTexts(Painter& painter);
  void addLabels(Plot& plot);
  [[nodiscard]] float rampAt(float distance) const;
  [[nodiscard]] PlotAttr dataAttr(Plot& plot) const;

  std::string type;
  int plt_site = 0;
  int plt_table = 0;
  std::array<float, 5> plt_dist{};  ///< radii of range rings, km; the fifth is never drawn
  float plt_azimuth = 0;
  bool draw_plot = true;
  bool draw_data = true;
  String variable;
  String color;
  int map = 0;
  int clutter_rad = 0;  ///< blanked around the radar: bins of radials, km of rasters
  int ramp_cut = Const::MISS;
  int ramp_len = 0;
  NidsFile nids;
  NidsInfo info;
  VarList vars;
  Unit unit;                       ///< of all conversions, for its cache
  std::optional<DatumPlot> dplot;  ///< of the storms of one product
  std::string begun;               ///< the file of which nids has the header already
};

}  // namespace ZQV
