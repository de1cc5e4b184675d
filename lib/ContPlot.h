#pragma once

#include <string>
#include <vector>

#include "ColorFill.h"
#include "Const.h"
#include "GridBox.h"
#include "PlotAttr.h"
#include "Point.h"
#include "Points.h"
#include "String.h"

namespace ZQV {

class Grid;
class Plot;

/** Contours a field: lines, filled bands, values, line labels, marks of highs and lows. It works
 *  cell by cell, rows from the top, and within a cell level by level; nothing is traced from cell
 *  to cell. */
class ContPlot {
 public:
  enum Type { NONE = 0, VALUES = 1, LINES = 2, FILL = 3, LINES_FILL = 4 };
  static constexpr int most_levels = 100;
  static constexpr int most_extrad = 50;

  ContPlot() { init(); }

  /** Defaults, then the resources. @return 1 */
  int init();
  /** Comma-separated words: cf, lcf, ln, dln, ndln, value, gvalue, ty=, pl=, int=, ci=, base=, cb=,
   *  wi=, sc=, fill=, ct=, coco=, coln=, co=, cof=, cola=, fm=, bar, lab=. @return 1 */
  int setParam(const char* text);
  /** cf, lcf, ln, dln, ndln, value, gvalue; anything else is none. "dln" and "ndln" set the dashes
   * too. */
  int setType(const char* name);
  int setType(int n);
  /** Missing or 0: about as many levels as there are colours. */
  int setInterval(float v);
  /** A value that is a level; missing: 0. */
  int setBase(float v);
  /** Range of the levels, in place of the field's own; missing: the field's. */
  int setRange(float lo, float hi);
  /** @param every   a label at each so many levels, and a value at each so many points; 0 none
   *  @param radius  of the square of points within which a high or low is one, at most 50; 0 none
   */
  int setLabelParam(int every, int radius);
  /** Labels at each so many columns and rows; missing: a fifth of the grid; 0 none. */
  int setLabelSpace(int cols, int rows);
  /** Fill pattern by keyword or number, see PlotAttr::parseFillStyle. */
  int setFillStyle(const char* text);
  int setFillStyle(int pattern);
  int setLineWidth(float v);
  /** Of the numbers, as Tools::numFormat takes it; cut at 9 characters. */
  int setTextFormat(const char* format);
  int setColorTable(const char* text);
  /** As ColorFill::set; a list with values gives the levels too. */
  int setColorFill(const char* text);
  /** Line attributes; "miss" and "off" leave the colour to the fill. */
  int setColorLine(const char* text);
  int setColorLabel(const char* text);
  /** Of the texts. */
  int setScaleFactor(float v);

  /** Draws the field by the type. A cell with a missing corner stays empty. @return 1; 0 without
   * data */
  int draw(Plot& plot, Grid& grid);
  /** What is drawn, its date, and the interval with the range, at "ul", "ur" and "lr". */
  int drawLabels(Plot& plot, Grid& grid) const;
  /** Level k of the drawing at hand. */
  [[nodiscard]] float getLevel(int k) const;
  [[nodiscard]] int getNumLevels() const { return num_cont; }
  [[nodiscard]] int getType() const { return type; }
  /** The type fills. */
  [[nodiscard]] bool isTypeFill() const { return type == FILL || type == LINES_FILL; }
  static int decodeType(const char* name);

 private:
  class Cells;
  class Band;

  void setLabels(const char* text);
  int chooseColors(Plot& plot);
  int chooseLevels(Plot& plot, Grid& grid);
  void countLevels(float lo, float hi);
  void calcInterval(float lo, float hi);
  void chooseAttrs(Plot& plot);
  void drawLine(Plot& plot, Grid& grid);
  void drawBoxLine(Plot& plot) const;
  void drawSegment(Plot& plot, Point p1, Point p2) const;
  void drawFill(Plot& plot, Grid& grid);
  void drawCellFill(Plot& plot);
  void paintBand(Plot& plot, int k);
  void drawBoxFill(Plot& plot);
  void sendPolygon(Plot& plot);
  void drawValues(Plot& plot, Grid& grid);
  void drawLineLabels(Plot& plot, Grid& grid);
  void drawCellLabels(Plot& plot, bool across, bool down);
  void drawCross(Plot& plot, int k);
  void drawMaxMin(Plot& plot, Grid& grid);
  void prepareText(Plot& plot);
  void numberText(float v, String& out) const;

  int type = LINES;
  String color_table;
  String color_fill;
  String color_line;
  String color_label;
  float def_base = Const::FMISS;    ///< what the user asked for
  float def_intrvl = Const::FMISS;  ///< what the user asked for
  float min = Const::FMISS;         ///< range that the levels cover
  float max = Const::FMISS;
  float grid_min = Const::FMISS;  ///< in place of the field's own range
  float grid_max = Const::FMISS;
  float base = Const::FMISS;
  float intrvl = Const::FMISS;  ///< in force; missing with levels of the fill's own
  int num_cont = 0;
  float conlo = Const::FMISS;
  float conhi = Const::FMISS;
  ColorFill fill;
  GridBox box;   ///< the cell at the level at hand
  GridBox pbox;  ///< the same at the level below
  int skipx = Const::MISS;
  int skipy = Const::MISS;
  int skipval = 2;
  int extrad = 2;
  int dash = 0;  ///< 1 all lines, -1 negative levels, 0 none
  int fill_pat = Const::MISS;
  float line_width = Const::FMISS;
  float scale = 1.0F;
  std::string tform;
  int bar = 0;

  // Of the drawing at hand, worked out once.
  std::vector<float> levels;           ///< and the one above the last
  float bottom = 0.0F;                 ///< the first level as the bands take it
  std::vector<PlotAttr> line_attrs;    ///< of each level
  std::vector<const PlotAttr*> fills;  ///< of the band above each level, absent if it isn't drawn
  std::vector<int> label_colors;       ///< of each level
  int mark_color = -1;                 ///< of highs and lows
  int last_attr = -1;                  ///< level whose attributes the plot has
  Points polygon;
};

}  // namespace ZQV
