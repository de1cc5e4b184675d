#pragma once

#include "Drawing.h"
#include "Filename.h"
#include "ImagePlot.h"
#include "Lev2Plot.h"
#include "Listener.h"
#include "MdrPlot.h"
#include "NidsPlot.h"
#include "RcmPlot.h"
#include "String.h"

namespace ZQV {

class Image;

/** What the program draws: holds one renderer for each family of radar input and passes every
 * request on to the one of the current input type. */
class ScopeView : public Drawing, public Listener {
 public:
  /** Input types. */
  enum Type {
    NONE = 0,
    MDR = 1,
    MDR_SITE = 2,
    RCM = 3,
    RCM_SITE = 4,
    IMAGE = 5,
    NIDS = 6,
    LEV2 = 7,
    NOWRAD = 8,
    KAVRAD = 9
  };

  ScopeView() { ScopeView::init(); }
  explicit ScopeView(const char* params);
  ScopeView(const ScopeView&) = delete;
  ScopeView& operator=(const ScopeView&) = delete;
  ~ScopeView() override = default;

  int init() override;
  /** The domain that suits the selected file; the region "us" for mosaics and images. @return 1 */
  int getDomain(Domain& domain) override;
  int setFile() override;
  /** mdr, mdrsite, rcm, rcmg, rcmsite, img, kav..., now..., nids, lev2, lev2z; any other name
   * changes nothing.
   *  @return 1 */
  int setInput(const char* name) override;
  /** A convention whose type is the name of an input type selects that. @return 1 */
  int setNameConv(const char* conv) override;
  /** Every setFilename returns 1, whatever came of it. */
  int setFilename() override;
  int setFilename(const char* text) override;
  int setFilename(Date& date) override;
  int setFilename(Date& date, const char* text) override;
  int setForeTime(const char* time) override;
  int setParam(const char* text) override;
  int getDate(Date& date) override;
  int getLoopType() override { return 1; }
  int getInitDate(Date& date) override;
  int getDateOffset() override;
  int getNumFrames() override;
  int getSync() override { return sync; }
  int draw(Plot& plot) override;
  /** Draws an image in the colours of setColorFill(), else those of reflectivity. @return 1 */
  int draw(Plot& plot, Image& image);
  int print() override;
  void callback(const char* name, const char* data, const void* source) override;

  /** Input type of a name, 0 if it is none. */
  static int getType(const char* name);
  int setPath(const char* path) { return filename.setPath(path); }
  int setHour(const char* hour);
  int setColorTable(const char* name);
  int setColorFill(const char* list);
  int setColor(const char* text);
  int setVariable(const char* text);
  int setMap(int flag);

 private:
  /** The renderer that has a file of its own; absent for images. */
  void setReports(const char* name);
  RadarPlot* radar();
  template <typename File>
  int drawFile(Plot& plot, const char* kind);

  int type = RCM;
  Filename filename;
  String color_table;
  String color_fill;
  ImagePlot img;
  NidsPlot nids;
  Lev2Plot lev2;
  MdrPlot mdr;
  RcmPlot rcm;
  int sync = 0;
};

}  // namespace ZQV
