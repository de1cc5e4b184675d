#pragma once

#include <array>
#include <optional>
#include <string>

#include "CityHash.h"
#include "Const.h"
#include "DatumPlot.h"
#include "GridCont.h"
#include "ImagePlot.h"
#include "RadarPlot.h"
#include "String.h"
#include "VarList.h"

namespace ZQV {

class Date;
class EarthPoint;
class Grid;
class Image;
class PlotAttr;
class SiteDomain;

/** What the renderers of coded radar reports share. They draw one site's report out of a bulletin,
 *  or the national mosaic of a summary with its stations, as an image or as a contoured field. */
class ReportPlot : public RadarPlot {
 public:
  enum Type { SITE = 0, MOSAIC = 1, MOSAIC_GRID = 2 };

  /** The view around a site, by the identifier or else by the first report of the file; around 40 N
   * 90 W for one that isn't known. The region "us" for mosaics. @return 1; 0 if there is no such
   * region */
  int getDomain(Domain& domain) override;
  using RadarPlot::setFilename;
  int setFilename() override;
  /** Draws the current file, the latest if none was chosen. @return 0, with a warning if the file
   * can't be opened */
  int draw(Plot& plot) override;
  int print() override;

  /** Type of "site", "mos", "mosg" and "wmo" (a site), MOSAIC of any other name. */
  static int getType(const char* name);
  int setPath(const char* path) { return filename.setPath(path); }
  /** Attributes of what is plotted at sites; of color_data at the start, else white. */
  int setColor(const char* text);
  /** Variables plotted at sites, a list as VarList reads it. */
  int setVariable(const char* text);
  int setMap(int flag);
  /** Draws an image, or a field as filled contours, in the user's colours, else in the own ones,
   * unless only data were asked for. @return 1 */
  int draw(Plot& plot, Image& image);
  int draw(Plot& plot, const Grid& grid);

 protected:
  static constexpr int num_levels = 7;  ///< of echoes, 0 for none

  /** @param name  of the class, as messages have it
   *  @param family  "MDR" or "RCM"
   *  @param list  file of the variables known
   *  @param spacing  of the points of a site's view, 100 km */
  ReportPlot(const char* name, const char* family, const char* list, float spacing)
      : class_name(name), family_name(family), list_file(list), view_spacing(spacing) {}

  /** Reads the wanted report of a bulletin, the first one without an identifier, and decodes it.
   *  @return 1; 0 if it isn't there, -1 if the file can't be opened */
  virtual int readSite() = 0;
  /** Position of the report read last. */
  [[nodiscard]] virtual EarthPoint getSite() const = 0;
  /** Draws the report read last. */
  virtual void drawSite(Plot& plot) = 0;
  /** Draws the mosaic of the file. @return 1; 0 if it has none, -1 if it can't be opened */
  virtual int drawMosaic(Plot& plot) = 0;

  /** Defaults of the shared fields, and the name convention. */
  void initReport(const char* conv);
  /** The built-in colours for images and fields. */
  void setLevelFill();
  /** Takes one of the items that all reports have. @return whether it was one */
  bool takeItem(const Strings& items, int i);
  /** Passes a parameter string on to the renderers of images and fields. */
  void passParam(const char* text);

  /** Position of a station of the site file; unset and unchanged if it isn't there. */
  bool findStation(const char* station, float& lat, float& lon);
  [[nodiscard]] bool isWanted(const char* station) const;
  /** Image of a box of echo levels on the grid of a domain.
   *  @param centre  the middle of the box; an image without data if it is unset
   *  @return 1 if it has data */
  int prepareBox(const SiteDomain& domain, const EarthPoint& centre, int size, Image& image) const;
  /** Info and date of a site's image. */
  void setBoxLabels(const char* station, const Date& date, Image& image) const;
  void setDateLabel(const Date& date, Image& image) const;
  /** Echo level of a reflectivity, 0 below 20 dBZ. */
  static int levelOf(float dbz);
  /** Sets up the plot for what is drawn at a site, marks the site and draws its rings. */
  void startSite(Plot& plot, const EarthPoint& site);
  [[nodiscard]] PlotAttr dataAttr() const;

  int type = MOSAIC;
  int fill = Const::MISS;  ///< taken and not used, as draw_data
  bool draw_plot = true;
  bool draw_data = true;
  String color;
  String variable;
  DatumPlot dplot;
  GridCont gcont;
  ImagePlot img;
  int plt_site = 0;
  std::array<float, 5> plt_dist{};  ///< radii of range rings, km; the fifth is never drawn
  int clutter = 0;                  ///< radius around the site without echoes
  VarList vars;
  int num = 0;  ///< sites that were drawn

 private:
  void readVars();

  const char* class_name;
  const char* family_name;
  const char* list_file;
  float view_spacing;
  std::optional<CityHash> chash;  ///< the site file, once it is needed
  std::string begun;              ///< the file of which the first report is read already
};

}  // namespace ZQV
