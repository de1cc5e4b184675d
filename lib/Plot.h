#pragma once

#include <array>
#include <bitset>
#include <string>
#include <vector>

#include "ColorBar.h"
#include "ColorMap.h"
#include "Const.h"
#include "Date.h"
#include "GifFile.h"
#include "Graph.h"
#include "Image.h"
#include "Listener.h"
#include "Panel.h"
#include "PlotLabel.h"
#include "Points.h"
#include "String.h"
#include "Timezone.h"

namespace ZQV {

class EarthPoint;
class EarthPoints;
class GeomBox;
class GridPoint;
class Image;
class Point;
class PlotAttr;
class Strings;

/** What every part of the system draws with: earth, grid or plane coordinates, colours by name,
 * panels with their domains, labels, and the colour bar. Translates through the domain of the
 * current panel, splits lines that wrap around the earth, and passes the rest to its Graph.
 * Operations return nonzero on success; a drawing call in a colour that is none ("off") draws
 * nothing and returns 0. */
class Plot : public Listener {
 public:
  Plot() { init(); }
  explicit Plot(const char* params);
  Plot(const Plot&) = delete;
  Plot& operator=(const Plot&) = delete;
  ~Plot() override = default;

  // Life.

  int init();
  /** Chooses and opens the device by the resources and the parameters, reads the colour table.
   * @return 1; 0 if the device can't be opened */
  int open(const char* params);
  int open() { return open(nullptr); }
  int close();
  /** Comma-separated items: ti, bg, ic, cola, full, full_lab, inv, bar, lo, trans_col, tz, and of
   * image files anim (all frames, not the last alone) and world (a world file beside). @return
   * 1 */
  int setParam(const char* params);
  int setLogo(const char* text);
  int getDevice(String& out) { return graph.getDevice(out); }
  int clear();
  int clearRect(const Rect& rect) { return graph.clearRect(rect); }
  int update();
  /** Hands control to the device, or writes the image file that was asked for. */
  int manage();
  int unmanage() { return graph.unmanage(); }
  [[nodiscard]] bool isManaged() const { return graph.isManaged(); }
  int end();
  /** One layer is complete: the labels of the next one move on. */
  int done();
  int addCallback(const char* type, Listener* listener, const void* client) {
    return graph.addCallback(type, listener, client);
  }
  int doCallback(const char* type, const char* data) { return graph.doCallback(type, data); }
  /** Keys: Return ends the run, Alt-v says where the pointer is, Alt-s and Alt-Shift-s save the
   * picture as GIF and PNG. */
  void callback(const char* type, const char* data, const void* client) override;
  int message(const char* format, ...) __attribute__((format(printf, 2, 3)));
  int bell() { return graph.bell(); }
  int setCursor(int cursor) { return graph.setCursor(cursor); }
  int setFixed(bool flag) { return graph.setFixed(flag); }
  /** 0 normal, 1 the picture fills the page, 2 labels and bar lie inside it too. */
  int setFull(int n);
  [[nodiscard]] int getFull() const { return full; }
  int setDate(const Date& at);
  [[nodiscard]] bool isDateSet() const { return date.isSet(); }
  int setForeHour(float hours);
  int setDataSource(const char* text);
  void setTimeSync(bool flag) { time_sync = flag; }
  [[nodiscard]] bool isTimeSync() const { return time_sync; }
  bool getInverse() { return graph.getInverse(); }

  // Panels and the domain.

  int initPanel();
  /** Makes rect, of the panel's limits, the place of the picture, in the aspect given (0: its own).
   *  @param halign, valign  as Graph::setViewportAspect */
  int setPanel(const Rect& rect, float aspect, int halign, int valign);
  int setPanel(const Rect& rect, float aspect);
  int setPanel(const Rect& rect);
  int setPanel();
  int setPanel(const Rect& rect, const Domain& domain);
  int setPanel(const Domain& domain);
  /** Sets up panel i again. @return 1; 0 out of range */
  int setPanel(int i);
  int setDomain(const Domain& domain) { return setPanel(domain); }
  int setDomain(const DomainVal& val);
  int setDomain(const Rect& rect, const Domain& domain) { return setPanel(rect, domain); }
  int setDomain(const Rect& rect, float aspect, int halign, int valign) {
    return setPanel(rect, aspect, halign, valign);
  }
  int setDomain(const Rect& rect, float aspect) { return setPanel(rect, aspect); }
  int setDomain(int i) { return setPanel(i); }
  int setDomain(const Rect& rect) { return setPanel(rect); }
  int setDomain() { return setPanel(); }
  int setPanelDomain(int i, const Domain& domain);
  int getPanelDomain(int i, Domain& domain) const;
  /** The next panel on the same page, "WxH+X+Y" in fractions or "COLSxROWS+COL+ROW". @return 1 or 0
   */
  int newPanel(const char* text);

  Domain& getDomain() { return panel().domain; }
  int getDomain(Domain& domain) const;
  [[nodiscard]] DomainVal getDomainVal() const { return panel().domain.get(); }
  [[nodiscard]] int getProj() const { return panel().domain.getProj(); }
  /** Height of the domain in its plane. */
  [[nodiscard]] float getDomVert() const { return panel().domain.getVert(); }
  [[nodiscard]] float getDomAspect() const { return panel().domain.getAspect(); }
  [[nodiscard]] float getDomCLat() const { return panel().domain.getCLat(); }
  [[nodiscard]] float getDomCLon() const { return panel().domain.getCLon(); }
  [[nodiscard]] int getDomNx() const { return panel().domain.getNx(); }
  [[nodiscard]] int getDomNy() const { return panel().domain.getNy(); }
  [[nodiscard]] float getDomDx() const { return panel().domain.getDx(); }
  [[nodiscard]] float getDomDy() const { return panel().domain.getDy(); }
  /** Height of the domain, on which all sizes of marks and texts are based. */
  [[nodiscard]] float getVert() const { return panel().domain.getVert(); }
  bool withinDomain(const Point& p) const { return panel().domain.within(p); }
  bool withinDomain(const EarthPoint& e) { return panel().domain.within(e); }
  bool withinDomainExt(const Point& p, int n) const { return panel().domain.withinExt(p, n); }
  bool withinDomainExt(const EarthPoint& e, int n) { return panel().domain.withinExt(e, n); }
  int whereDomain(const Point& p) const { return panel().domain.where(p); }
  int tran(EarthPoint& e, Point& p) { return panel().domain.tran(e, p); }
  /** Takes places of another domain's plane to the plot's, see Domain::translate(). */
  void translate(Domain& from, float* x, float* y, int n) {
    Domain::translate(from, panel().domain, x, y, n);
  }
  int tran(const Point& p, EarthPoint& e) { return panel().domain.tran(p, e); }
  int tran(const GridPoint& g, Point& p) const { return panel().domain.tran(g, p); }
  int tran(const Point& p, GridPoint& g) const { return panel().domain.tran(p, g); }
  int tran(EarthPoint& e, GridPoint& g) { return panel().domain.tran(e, g); }
  int tran(const GridPoint& g, EarthPoint& e) { return panel().domain.tran(g, e); }
  int adjustDom(Point& p) const { return panel().domain.adjust(p); }
  float adjustDir(float dir, const Point& p) { return panel().domain.adjustDir(dir, p); }
  int offsetPoint(const Point& in, float dir, float km, Point& out) {
    return panel().domain.offset(in, dir, km, out);
  }
  float getMapFactor(const EarthPoint& e) const { return panel().domain.getMapFactor(e); }
  /** The domain of the screen: the panel's, in pixels of the device. */
  int getViewDomain(Domain& domain);

  [[nodiscard]] int getTran() const { return graph.getTran(); }
  int activateTran(int i) { return graph.activateTran(i); }
  int setViewport(int i, const Rect& rect) { return graph.setViewport(i, rect); }
  int getViewport(Rect& rect) const { return graph.getViewport(rect); }
  int setWindow(int i, const Rect& rect) { return graph.setWindow(i, rect); }
  int getWindow(Rect& rect) const { return graph.getWindow(rect); }
  int tranWindow(int from, const Point& p, int to, Point& q) const {
    return graph.tranWindow(from, p, to, q);
  }
  /** From device coordinates to the plane of the panel that lies there. @return 1 if one does */
  int tranPlotWindow(float x, float y, float& wx, float& wy) const;

  // Colour.

  ColorMap& getColorMap() { return colormap; }
  /** Device value of entry i, allocated if it isn't yet. */
  int allocColor(int i);
  /** Allocates the colours of a map and adds them to the own one. @return 1; 0 for an empty map */
  int setColorMap(ColorMap& map);
  int getColorRGB(int i, float& r, float& g, float& b) const { return colormap.getRGB(i, r, g, b); }
  int getColorValue(const char* name);

  // Lines.

  int drawLine(float x1, float y1, float x2, float y2);
  int drawLine(const Point& p1, const Point& p2);
  int drawLine(const EarthPoint& e1, const EarthPoint& e2);
  int drawLine(const GridPoint& g1, const GridPoint& g2);
  int drawLine(const Points& points);
  int drawLine(const EarthPoints& points);
  /** A smooth curve through the points, in four steps a point. @return 1; 0 if there is none */
  int drawSpline(const Points& points);
  int drawSpline(const EarthPoints& points);
  int drawRect(const Rect& rect);
  int drawRect(float x1, float y1, float x2, float y2);
  int drawCircle(const Point& centre, float r);
  /** @param km  radius on the earth */
  int drawCircle(const EarthPoint& centre, float km);
  int setLineColor(const char* name);
  int setLineColor(int index);
  int setLineWidth(float width) { return graph.setLineWidth(width); }
  int setLineStyle(int style) { return graph.setLineStyle(style); }
  int setLine();
  int setLine(const PlotAttr& attr);
  int setLine(const char* text);
  /** Cuts a line of a LATLON domain at 180 degrees east and west. @return 1 if it was changed */
  int cropLine(Point& p1, Point& p2) const;
  /** The same for a polyline; a missing point marks a break. */
  int cropLine(Points& points) const;

  // Fills.

  int drawFill(const Points& points);
  int drawFill(const EarthPoints& points);
  int drawFill(const Rect& rect);

  /** No polygon among these corners has to be drawn on both sides of a map that closes on itself,
   * so that drawWhole() will do. */
  [[nodiscard]] bool isWhole(const float* x, const float* y, int n) const {
    return !wraps() || panel().domain.neverWraps(x, y, n);
  }
  /** Fills as drawFill() does. */
  int drawWhole(const Points& points) {
    return ColorMap::isColor(fill_color) ? graph.drawFill(points) : 0;
  }

  // Cells of radar data, their corners placed ahead, see Graph: only in planes that don't wrap.

  [[nodiscard]] bool placesCells() const { return graph.placesCells() && !wraps(); }
  void placeCells(float* x, float* y, int n) { graph.placeCells(x, y, n); }
  int findCells(const float* x, const float* y, int num, int* seen) const {
    return graph.findCells(x, y, num, seen);
  }
  void fillCell(const float* x, const float* y) {
    if (ColorMap::isColor(fill_color)) graph.fillCell(x, y);
  }
  [[nodiscard]] bool paintsPixels() const { return graph.paintsPixels() && !wraps(); }
  int drawFillarea(const Points& points) { return drawFill(points); }
  int setFillColor(const char* name);
  int setFillColor(int index);
  int setFillStyle(int style) { return graph.setFillStyle(style); }
  int setFill();
  int setFill(const PlotAttr& attr);
  int setFill(const char* text);

  // Text.

  int drawText(float x, float y, const char* text);
  int drawText(const Point& p, const char* text);
  int drawText(const EarthPoint& e, const char* text);
  int drawText(const GridPoint& g, const char* text);
  int drawFormText(const Point& p, const char* format, ...) __attribute__((format(printf, 3, 4)));
  int drawFormText(const EarthPoint& e, const char* format, ...)
      __attribute__((format(printf, 3, 4)));
  int setTextColor(const char* name);
  int setTextColor(int index);
  int setTextAlign(int halign, int valign) { return graph.setTextAlign(halign, valign); }
  int setTextHeight(float height) { return graph.setTextHeight(height); }
  int setTextWidth(float width) { return graph.setTextWidth(width); }
  int setTextExpansion(float v) { return graph.setTextExpansion(v); }
  int setTextSpacing(float v) { return graph.setTextSpacing(v); }
  int setTextCharWidth(float v) { return graph.setTextCharWidth(v); }
  int setTextDirection(float upx, float upy) { return graph.setTextDirection(upx, upy); }
  int setFont(const char* name) { return graph.setFont(name); }
  int setDropShadow(int n) { return graph.setDropShadow(n); }
  [[nodiscard]] int getDropShadow() const { return graph.getDropShadow(); }
  int setText();
  int setText(const PlotAttr& attr);
  /** A height in the attributes counts in units of size. */
  int setText(const PlotAttr& attr, float size);
  int setText(const char* text);

  // Marks and symbols.

  int drawMark(float x, float y);
  int drawMark(const Point& p);
  int drawMark(const EarthPoint& e);
  int drawMark(const GridPoint& g);
  int setMarkColor(const char* name);
  int setMarkColor(int index);
  int setMarkType(int type) { return graph.setMarkType(type); }
  int setMarkType(const char* name);
  int setMarkSize(float size) { return graph.setMarkSize(size); }
  int setMarkWidth(float width) { return graph.setMarkWidth(width); }
  int setMark();
  int setMark(const PlotAttr& attr);
  int setMark(const PlotAttr& attr, float size);
  int setMark(const char* text);
  int setSymbol(const char* file) { return graph.setSymbol(file); }
  int drawSymbol(const Point& p, const char* name, float size);

  // Images.

  int setImageAlign(int halign, int valign) { return graph.setImageAlign(halign, valign); }
  /** Fills the panel, resampled onto the domain of the screen if the image is georeferenced. */
  int drawImage(Image& image);
  int drawImage(Image& image, int mode);
  int drawImage(Image& image, float x, float y) { return graph.drawImage(image, x, y); }
  int drawImage(Image& image, int mode, float x, float y) {
    return graph.drawImage(image, mode, x, y);
  }
  /** Draws an image file, its anchor at a place of the window. @return 1; 0 if it can't be read */
  int drawImage(const char* name, float x, float y);
  /** @param align  anchor by its row and column: first letter u, c or l, second l, c or r */
  int drawImage(const char* name, float x, float y, const char* align);
  /** The picture as the device has it, with the panel's domain when it fills the page. */
  int getImage(Image& image);
  /** Writes the picture to a file in the resource "image_path".
   *  @param type  "GIF" or "PNG". @return 1; 0 if it can't be read back or written */
  int saveImage(const char* name, const char* type);
  /** The last three letters of the name say the type. */
  int saveImage(const char* name);

  // Labels, border and bar.

  int setLabelColor(const char* text);
  int setLabelFormat(const char* text);
  /** A label of the current layer. @return 1; 0 if there are 30 */
  int addLabel(const char* locate, const char* text);
  /** A label that stands alone at its place. */
  int setLabel(const char* locate, const char* text);
  void printLabels() const;
  /** 0 to 5 for "ul", "uc", "ur", "ll", "lc", "lr"; 0 for any other text. */
  static int getLabelPosIndex(const char* locate);
  /** Replaces "_" by a blank and the codes %D %V %Y %y %m %b %h %d %n %f %F %%. Cut at 99
   * characters. */
  int formatLabel(const char* format, String& out) const;
  int clearLabels();
  int drawLabels();
  int drawBorder();
  int setBarLocate(const char* text);
  int setBarRange(const Range& range);
  int setBar(const ColorFill& fill, const Range& range);
  int setBar(const ColorFill& fill);
  int setBar(const Enhance& table);
  int drawBar();
  int drawBar(const Range& range);
  /** The bar of an enhancement table: the classes of a value table, or the 256 pixel codes.
   * @return 1; 0 without any class */
  int drawEnhBar();
  /** Which elements are drawn: names with "+" or "-", "all", "none"; an empty text means all.
   * @return 1 */
  int setDrawing(const char* text);
  [[nodiscard]] bool isDrawing(int i) const;
  void printDrawing() const;

  // Frames.

  int clearFrame();
  int newFrame();
  int deleteFrame(int i) { return graph.deleteFrame(i); }
  int deleteAllFrames();

  /** Reads "WxH+X+Y" (2), "WxH" (1) or "+X+Y" (3) into a box. @return that number, 0 for any other
   * text */
  static int decodeGeometryStr(const char* text, GeomBox& box);

 private:
  static constexpr int max_panels = 16;
  static constexpr size_t max_labels = 30;
  static constexpr int num_drawing = 13;

  Panel& panel() { return panels[static_cast<size_t>(cur_panel)]; }
  [[nodiscard]] const Panel& panel() const { return panels[static_cast<size_t>(cur_panel)]; }
  int chooseDevice(const char* params);
  void readTitle();
  void setTitle(const char* text);
  [[nodiscard]] bool wraps() const;
  int drawStretches(const Points& line);
  Points tranLine(const EarthPoints& points);
  int decodePanelStr(const Rect& rect, const char* text, GeomBox& box) const;
  int storeLabel(const char* locate, const char* text, int at_layer);
  void addResourceLabels();
  void drawLabel(const PlotLabel& label, int count, const Rect& view, float space, float step,
                 int base_layer, const PlotAttr& attr);
  [[nodiscard]] const char* textColor();
  Rect barRect(const Rect& view) const;
  Rect startBar(const char* name);
  void endBar(const Rect& boxes, int tran);
  void drawLogo();
  [[nodiscard]] int findPanel(float x, float y, float& nx, float& ny) const;
  void prepareDevice(const Strings& items);
  void queryLocation(const char* text);
  void saveFrames(const char* type);
  [[nodiscard]] std::string outputName(const char*& type) const;
  int keepFrame();
  int saveImage(Image& image, const char* name, const char* type);
  static int imageFailed(const char* path);
  static void imageCreated(const char* path, bool gif);
  int writeKept(bool last);
  void writeWorld(const char* name) const;
  [[nodiscard]] std::string imageName(const char* extension, int frame) const;
  int drawable(int color) const { return ColorMap::isColor(color) ? 1 : 0; }

  Graph graph;
  ColorMap colormap{512};
  String color_label;
  std::array<Panel, max_panels> panels;
  int cur_panel = 0;
  int num_panel = 0;
  int full = 0;
  int output = 0;
  bool anim = false;   ///< all frames of a loop go to the image file, or files
  bool world = false;  ///< files beside a picture say where it lies
  Image kept;          ///< the frame before, of an animation
  int num_kept = 0;    ///< frames of an animation so far
  GifFile movie;
  std::bitset<num_drawing> draw;
  std::string title;
  int line_color = 0;
  int fill_color = 0;
  int text_color = 0;
  int mark_color = 0;
  int layer = 0;
  std::string trans_color;
  std::vector<PlotLabel> label;
  std::string label_format;
  int bar = 0;
  ColorBar cbar;
  String logo;
  bool time_sync = false;
  std::string source;
  float fore_hour = Const::FMISS;
  Date date;
  Timezone tz;
  Points work;     ///< a line being wrapped or cropped
  Points stretch;  ///< a part of it
};

}  // namespace ZQV
