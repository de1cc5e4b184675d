#pragma once

#include <string>

#include "ContPlot.h"
#include "Drawing.h"
#include "Filename.h"
#include "Grid.h"
#include "GridRead.h"
#include "Listener.h"
#include "ModelSpec.h"
#include "String.h"

namespace ZQV {

/** Draws a field, read from a file or given, as contours between the maps that lie under and over
 *  it, and tells its value at a place of the window. */
class GridCont : public Drawing, public Listener {
 public:
  GridCont() { GridCont::init(); }

  int init() override;
  /** That of the field, "us" if none can be read. @return 1 */
  int getDomain(Domain& domain) override;
  /** Takes the resources "in_file", "hour" and "num_hour". @return 1 */
  int setFile() override;
  int setInput(const char* /*name*/) override { return 1; }
  int setNameConv(const char* conv) override { return filename.setNameConv(conv); }
  int setFilename() override { return filename.setFilePrompt("Enter the grid filename: "); }
  int setFilename(const char* text) override { return filename.setFile(text); }
  int setFilename(Date& date) override { return filename.setDate(date); }
  int setFilename(Date& date, const char* text) override { return filename.setDate(date, text); }
  /** Has nothing to choose. @return 1 */
  int setForeTime(const char* /*time*/) override { return 1; }
  /** Comma-separated words: gs=, map_fill, map_line, mo=, nolabel, and those of
   * ContPlot::setParam. @return 1 */
  int setParam(const char* text) override;
  int getDate(Date& date) override { return filename.getDate(date); }
  int getLoopType() override { return 1; }
  /** The date of the file, the latest if none was chosen. */
  int getInitDate(Date& date) override;
  int getDateOffset() override { return filename.getOffset(); }
  int getNumFrames() override { return filename.getNumFiles(); }
  int getSync() override { return sync; }
  /** Reads the field and draws it. @return 1; 0 if it can't be read */
  int draw(Plot& plot) override;
  int print() override;
  /** "QueryLoc" with "LAT,LON" writes the value there, "GridCont value [%.2f,%.2f]: %f". */
  void callback(const char* name, const char* data, const void* source) override;

  /** Draws a field that is given. @return 1; 0 if it has no data */
  int draw(Plot& plot, const Grid& field);
  /** Cut at 19 characters. */
  int setModel(const char* name);
  int setPath(const char* path) { return filename.setPath(path); }
  int setColorTable(const char* text) { return cont.setColorTable(text); }
  int setColorFill(const char* text) { return cont.setColorFill(text); }
  /** 1: the default maps too; 0: only what the map list asks to have over data. */
  int setMap(int flag);
  /** As ContPlot::Type. */
  int setType(int n) { return cont.setType(n); }
  int setType(const char* name) { return cont.setType(name); }
  /** As ContPlot::setLabelParam. */
  int setLabelParam(int every, int radius) { return cont.setLabelParam(every, radius); }

 private:
  enum MapFill { BY_TYPE = -1, FOR_LINES = 0, FOR_FILL = 1 };

  std::string model;
  int label = 1;           ///< corner labels
  int map = 0;             ///< default maps
  int map_fill = BY_TYPE;  ///< which contours the maps' colour shall suit
  ModelSpec model_spec;
  Filename filename;
  ContPlot cont;
  GridRead gread;
  Grid grid;  ///< the field drawn last
  String grid_spec;
  int sync = 0;
};

}  // namespace ZQV
