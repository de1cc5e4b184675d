#pragma once

#include <set>
#include <string>

#include "Const.h"
#include "Drawing.h"
#include "EarthPoint.h"
#include "Points.h"
#include "String.h"

namespace ZQV {

class Domain;
class MapFile;
class MapFileHeader;
class PlotAttr;
class Plot;

/** Draws the map under and over data: the items of a list of map files, lat/lon lines, grids and
 * marks, each under its own conditions. */
class MapPlot : public Drawing {
 public:
  MapPlot() { MapPlot::init(); }
  /** @param params  as setParam() */
  explicit MapPlot(const char* params);

  int init() override;
  /** A map has no domain of its own: the domain becomes the whole earth. @return 0 */
  int getDomain(Domain& domain) override;
  int setFile() override { return 1; }
  int setInput(const char* /*name*/) override { return 1; }
  int setNameConv(const char* /*conv*/) override { return 1; }
  int setFilename() override { return 1; }
  int setFilename(const char* /*text*/) override { return 1; }
  int setFilename(Date& /*date*/) override { return 1; }
  int setFilename(Date& /*date*/, const char* /*text*/) override { return 1; }
  int setForeTime(const char* /*time*/) override { return 1; }
  /** Comma-separated words, in their exact form: ct=, co=, coll=, mf=, fill, fill_cont, fc, map_in,
   *  index, lalo=LA:LO, default, nodefault, over, under. @return 1 */
  int setParam(const char* text) override;
  int getSync() override { return 0; }
  int getDate(Date& /*date*/) override { return 0; }
  int getLoopType() override { return 0; }
  int getInitDate(Date& /*date*/) override { return 0; }
  int getDateOffset() override { return 0; }
  int getNumFrames() override { return 0; }
  /** Draws the list of maps: the own one, else that of the resource "map_file", else the list file
   *  zqv.map on views of North America and cont.map,country.map elsewhere.
   *  @return 1; 0 if maps are switched off */
  int draw(Plot& plot) override;
  int print() override;

  int setMapFiles(const char* text);
  int setFillCont(int flag);
  int setColorTable(const char* text);
  /** Of maps that the list gives no attributes. */
  int setColor(const char* text);
  int setColorLatLon(const char* text);

  /** Draws the segments of one map file.
   *  @return 1; 0 if it can't be opened, maps are switched off or the domain is no map */
  int draw(Plot& plot, const char* file);
  /** Draws lat/lon lines with their labels in the current attributes.
   *  @param lat, lon  spacing in degrees, at least 0.1; anything else draws nothing. @return 1
   *                   or 0 */
  int drawLatLon(Plot& plot, float lat, float lon);
  /** Draws a line, or fills an outline, and clears the points. */
  int drawSegment(Plot& plot, Points& points) const;
  /** Draws one item of a map list, or takes note of a region heading.
   *  @param pass  bit 1 under the data, bit 2 over it; items without sign need "default"
   *  @return 1 if it drew something, else 0 */
  int process(Plot& plot, const char* item, int pass);

 private:
  static constexpr int most_places = 65536;
  static constexpr int room = 5000;

  /** Points of a segment on their way from the file to the plot. */
  struct Places {
    Points held{room};   ///< projected, x is missing where the projection shows nothing
    Points piece{room};  ///< visible ones that follow each other
    EarthPoint first;    ///< of those held
  };
  enum Region { ENDED = -1, OUTSIDE = 0, AHEAD = 1, INSIDE = 2 };

  int drawList(Plot& plot, const char* name, bool is_given);
  void readHeading(Plot& plot, const char* text);
  int processItem(Plot& plot, const char* item);
  int drawMark(Plot& plot, const char* text) const;
  int drawGrid(Plot& plot, const char* item) const;
  int drawLatLonItem(Plot& plot, const char* text);
  int drawMapItem(Plot& plot, const char* item);
  int drawImageItem(Plot& plot, const char* item, bool on_map);
  int drawRawItem(Plot& plot, const char* text);
  void setAttr(Plot& plot, const PlotAttr& attr) const;
  int drawSegments(Plot& plot, MapFile& map, const char* name);
  int drawSegment(Plot& plot, MapFile& map, const MapFileHeader& header, Places& places);
  static int readPlaces(Plot& plot, MapFile& map, Places& places);
  [[nodiscard]] const char* latLonColor() const;

  int def = 1;              ///< draw items without sign: 1, 2 whatever the pass is, or 0
  int type = 0;             ///< pass: bit 1 under the data, bit 2 over it
  int in_region = AHEAD;    ///< state of the sections of map lists
  int fill_cont = 0;        ///< take the colour that is meant for filled contours
  int fill = 0;             ///< fill segments
  int map_in = 0;           ///< draw all segments, whether near the domain or not
  int index = 0;            ///< show the number of each segment
  float la = Const::FMISS;  ///< spacing of lat/lon lines, degrees
  float lo = Const::FMISS;
  String color_table;
  String color;
  String color_latlon;
  String filenames;
  bool warned_raw = false;
  std::set<std::string> warned_lists;
};

}  // namespace ZQV
