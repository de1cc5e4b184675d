#pragma once

#include <string>

#include "ColorFill.h"
#include "Const.h"
#include "DatumAttr.h"
#include "Point.h"
#include "String.h"

namespace ZQV {

class Datum;
class EarthPoint;
class Plot;
class PlotAttr;

/** Draws one thing at one place of the earth: a value, a text, a mark, a symbol, a wind, the track
 * of a storm. How is said by the datum's format, and by the own attributes where that is silent.
 * All sizes are shares of the plot's height. */
class DatumPlot {
 public:
  /** With what the resources plot_scale, color_table, color_fill, color_data, format and parameter
   * say. */
  DatumPlot() { init(); }

  int init();
  /** Comma-separated items: sc ct cof co= fm. @return 1 */
  int setParam(const char* text);
  /** Takes over the colour, height, width, expansion, shadow and font that are set. @return 1 */
  int setAttr(const PlotAttr& other);
  int setAttr(const char* text);
  int setColor(const char* name);
  int setColorTable(const char* name);
  /** Values then take their colours from this fill. */
  int setColorFill(const char* text);
  int setMarker(int marker);
  int setScale(float factor);
  /** Number format of all values, ahead of those of the data. Cut at 9 characters. */
  int setFormat(const char* text);

  /** Draws a datum; one that has no place on the plot, or no value, draws nothing. @return 1 */
  int draw(Plot& plot, const Datum& datum);
  /** The same with a datum made of the arguments. @param type  Datum::Type */
  int draw(Plot& plot, float lat, float lon, int type, const char* data, const char* form);
  int draw(Plot& plot, const EarthPoint& place, int type, const char* data, const char* form);
  int draw(Plot& plot, float lat, float lon, int type, float value, const char* form);
  int draw(Plot& plot, const EarthPoint& place, int type, float value, const char* form);

 private:
  struct Job;
  void readColors(Plot& plot);
  void setState(Job& job) const;
  void drawShape(Job& job);
  void drawAny(Job& job) const;
  void drawValue(Job& job) const;
  void setFillColor(Job& job) const;
  void drawWind(Job& job) const;
  static void drawTrack(Job& job);
  void drawLine(Job& job);
  [[nodiscard]] const char* findFormat(const Job& job) const;

  String color_table;
  String color_fill;
  std::string format;
  DatumAttr attr;
  ColorFill fill;
  Point ppt;  ///< place of the datum before, plot coordinates
  float scale = 1.0F;
  int post_line = 0;  ///< the next datum is joined to the one before
  int first = 1;      ///< colours aren't read yet
};

}  // namespace ZQV
