#pragma once

#include <array>
#include <memory>

#include "Const.h"
#include "RadarPlot.h"

namespace ZQV {

class CellPainter;
class ColorFill;
class Domain;
class EarthPoint;
class Lev2Data;
class Lev2File;
class Lev2Info;

/** Draws one cut of a Level II volume: each gate as one filled polygon while the volume streams
 * from its file, the labels and the colour bar. */
class Lev2Plot : public RadarPlot {
 public:
  Lev2Plot();
  explicit Lev2Plot(const char* params);
  Lev2Plot(const Lev2Plot&) = delete;
  Lev2Plot& operator=(const Lev2Plot&) = delete;
  ~Lev2Plot() override;

  int init() override;
  /** A view of the site: range km up and down, one and a half times that to the sides.
   *  @return 1; 0 if the file can't be opened, and the domain stays */
  int getDomain(Domain& domain) override;
  /** The same around a site. @return 1 */
  int getDomain(const EarthPoint& site, Domain& domain) const;
  /** "lev2z" and "comp" say that the volume is compressed, any other name that it isn't.
   *  @return 0 */
  int setInput(const char* name) override;
  /** A convention that names a type says by it whether volumes are compressed. */
  int setNameConv(const char* conv) override;
  using RadarPlot::setFilename;
  int setFilename() override;
  /** Comma-separated items: fi, in, nc, ho, id, tz, ct, cof, va, comp, site, dist, range, nodist,
   * nograph, graph, map, clutter, noclutter. The first row that fits an item acts. @return 1 */
  int setParam(const char* text) override;
  /** @return 1; 0 with a warning if the file can't be opened */
  int draw(Plot& plot) override;
  int print() override;

  /** "refN", "velN" or "spectN": reflectivity, velocity or spectrum width of cut N. @return 1; 0
   * for an empty name */
  int setVariable(const char* name);
  int setMap(int flag);

 private:
  /** What the walk through a volume finds. */
  struct Walk {
    float largest = -500.0F;
    float smallest = 500.0F;
    float elev_ang = Const::FMISS;
    int mode = 0;  ///< 1 precipitation, 2 clear air, 0 if nothing was drawn
  };
  class Levels;
  struct Begun;

  int openFile(Lev2File& file);
  Walk walkVolume(Lev2File& file, CellPainter& painter, const ColorFill& fill) const;
  void drawRadial(Lev2File& file, const Lev2Data& data, CellPainter& painter, Levels& levels) const;
  void addLabels(Plot& plot, const Lev2Info& info, const Walk& walk) const;

  static constexpr int max_rings = 10;

  int file_type = 0;  ///< 1: the volume is compressed
  int plt_site = 0;   ///< taken and not drawn, as the next three
  int plt_graph = 0;
  std::array<float, max_rings> plt_dist{};
  int clutter_rad = 0;
  int range = 0;      ///< half height of the view, km
  int scan_num = 1;   ///< number of the cut
  int scan_type = 0;  ///< one of Lev2File::DataType
  bool map = false;
  std::unique_ptr<Begun> begun;
};

}  // namespace ZQV
