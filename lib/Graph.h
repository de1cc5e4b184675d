#pragma once

#include <array>
#include <memory>
#include <string>

#include "GFont.h"
#include "GTran.h"
#include "Listener.h"
#include "Points.h"
#include "Symbol.h"

namespace ZQV {

class Device;
class Image;
class Raster;
class RGB;
class String;

/** The page: turns window coordinates into device coordinates, keeps the current attributes and
 * sends them on only when they change, draws the stroke font, marks and symbols as polylines, adds
 * drop shadows, and passes everything else to its one Device. Colours are device colour values. All
 *  operations return nonzero on success, and 0 as long as there is no device. */
class Graph : public Listener {
 public:
  enum HAlign { HALIGN_LEFT = 1, HALIGN_CENTER = 2, HALIGN_RIGHT = 3 };
  /** HALF is the middle of the capitals, BOTTOM the end of the longest descenders. */
  enum VAlign {
    VALIGN_TOP = 1,
    VALIGN_CAP = 2,
    VALIGN_HALF = 3,
    VALIGN_BASE = 4,
    VALIGN_BOTTOM = 5
  };
  /** Steps of a drop shadow at most. */
  static constexpr int MAX_SHADOW = 50;

  Graph();
  Graph(const char* device, const char* params);
  Graph(const Graph&) = delete;
  Graph& operator=(const Graph&) = delete;
  ~Graph() override;

  // Life.

  /** Back to the default attributes; the device stays. */
  int init();
  /** @param device_name  "postscript", "hpgl", "meta", "raster"; any other is the display
   *  @param params       the device's parameters; "hfont" among them draws all text in its own font
   *  @return 1 */
  int setDevice(const char* device_name, const char* params);
  /** Takes a device made elsewhere, such as one that records what it is told. */
  int setDevice(std::unique_ptr<Device> made, const char* params);
  /** Name of the device. */
  int getDevice(String& out);
  /** Opens the device and reads the stroke font and the symbols. @return 1; 0 if the device can't
   * be opened */
  int open();
  int open(const char* device_name, const char* params);
  [[nodiscard]] bool isOpen() const { return opened; }
  int close();
  int update();
  /** Hands control to the device until it finishes. */
  int manage();
  int unmanage();
  [[nodiscard]] bool isManaged() const { return managed; }
  /** Refused once the device has control. */
  int addCallback(const char* type, Listener* listener, const void* client);
  int doCallback(const char* type, const char* data);
  /** On "Redraw" all transformations go back to the whole device, in its new size. */
  void callback(const char* type, const char* data, const void* client) override;
  int setFixed(bool flag);
  int setSize(float width, float height);
  int setOffset(float x, float y);
  int setInverse(bool flag);
  bool getInverse();
  int setBackground(const char* color);
  int setIcon(bool flag);
  int setTitle(const char* text);

  // Transformations, 0 to 3.

  /** Selects one, without telling the device. @return 1; 0 for a bad number */
  int setTran(int i);
  [[nodiscard]] int getTran() const { return ctran; }
  /** Makes the current viewport the device's clip. */
  int activateTran();
  int activateTran(int i);
  int setViewport(int i, const Rect& rect);
  int setViewport(const Rect& rect);
  int getViewport(int i, Rect& rect) const;
  int getViewport(Rect& rect) const;
  [[nodiscard]] Rect getViewport() const;
  int setWindow(int i, const Rect& rect);
  int setWindow(const Rect& rect);
  int getWindow(int i, Rect& rect) const;
  int getWindow(Rect& rect) const;
  [[nodiscard]] Rect getWindow() const;
  /** The whole page in normalised coordinates. */
  [[nodiscard]] Rect getMaxViewport() const;
  int getMaxViewport(Rect& rect) const;
  /** The device's clip, in plot coordinates. */
  Rect getDeviceViewport();
  int getDeviceViewport(Rect& rect);
  /** Fits a viewport of a given shape into a rectangle.
   *  @param rect    normalised coordinates; a negative one is a margin from its edge of the page
   *  @param aspect  width over height, 0 for that of the rectangle
   *  @param halign  1 left, 3 right, else centred
   *  @param valign  1 bottom, 3 top, else centred */
  int setViewportAspect(const Rect& rect, float aspect, int halign, int valign);
  int setViewportAspect(const Rect& rect, float aspect);
  int tranPlotView(float x, float y, float& nx, float& ny) const;
  int tranPlotWindow(float x, float y, float& wx, float& wy) const;
  int tranPlotWindow(const Point& plot, Point& window_point) const;
  /** From the window of one transformation to that of another, through plot coordinates. */
  int tranWindow(int from, float x, float y, int to, float& tx, float& ty) const;
  int tranWindow(int from, const Point& p, int to, Point& q) const;
  void printTran() const;

  // Attributes. These return 1 after a change and 0, without a call of the device, if the value is
  // the current one.

  int setLineColor(int value);
  int setLineWidth(float width);
  int setLineStyle(int style);
  int setFillColor(int value);
  int setFillStyle(int style);
  int setTextColor(int value);
  int setTextWidth(float width);
  int setMarkColor(int value);
  int setMarkWidth(float width);
  int setMarkType(int type);
  int setMarkSize(float size);
  int setTextHeight(float height);
  // These only store, and return 1.
  int setTextExpansion(float v);
  /** Gap between characters, in widths of a fixed character. */
  int setTextSpacing(float v);
  /** Fixed width of the characters, 0 for proportional ones. */
  int setTextCharWidth(float v);
  int setTextBoxColor(int value);
  int setTextAlign(int halign, int valign);
  /** Up direction of the text; a vector of length 0 is refused with 0. */
  int setTextDirection(float upx, float upy);
  int setDropColor(int value);
  /** Steps, from 0 to MAX_SHADOW. */
  int setDropShadow(int n);
  int setDropWidth(float width);
  [[nodiscard]] int getDropShadow() const { return drop_shadow; }
  /** A name of the font list "zqv.fnl", or "#..." for a device font. @return 1; 0 if it is the
   * current one or can't be had, with the font unchanged */
  int setFont(const char* name);
  int setSymbol(const char* file);

  // Drawing, in the window of the current transformation.

  int clear();
  int clearRect(const Rect& rect);
  int allocColor(float r, float g, float b);
  int allocColor(const RGB& rgb);
  int drawLine(float x1, float y1, float x2, float y2);
  int drawLine(const Point& p1, const Point& p2);
  /** @return 0 also for fewer than 2 points and for a line that lies outside the window */
  int drawLine(const Points& points);
  int drawRect(float x1, float y1, float x2, float y2);
  int drawRect(const Rect& rect);
  int drawCircle(float x, float y, float r);
  int drawCircle(const Point& centre, float r);
  int drawFill(const Rect& rect);

  // Cells of radar data, their corners placed ahead, see Raster.

  [[nodiscard]] bool placesCells() const { return raster != nullptr; }
  /** Takes corners in the window to the device, in place. */
  void placeCells(float* x, float* y, int n);
  int findCells(const float* x, const float* y, int num, int* seen) const;
  void fillCell(const float* x, const float* y);
  /** The device paints pixels, so that polygons side by side may as well be one. */
  [[nodiscard]] bool paintsPixels() const;
  int drawFill(const Points& points);
  int drawFillarea(const Points& points) { return drawFill(points); }
  int drawText(float x, float y, const char* text);
  int drawText(const Point& p, const char* text);
  int drawFormText(float x, float y, const char* format, ...) __attribute__((format(printf, 4, 5)));
  int drawFormText(const Point& p, const char* format, ...) __attribute__((format(printf, 3, 4)));
  int drawMark(float x, float y);
  int drawMark(const Point& p);
  int drawSymbol(float x, float y, const char* name, float size);
  int drawSymbol(const Point& p, const char* name, float size);
  int drawImage(Image& image, float x, float y);
  int drawImage(Image& image, int mode, float x, float y);
  int getImage(Image& image);
  int setImageAlign(int halign, int valign);

  // Frames and the rest of the device.

  bool isLooping();
  int getFrame();
  int setFrame(int frame);
  int newFrame();
  int deleteFrame(int frame);
  int getNumFrames();
  int message(const char* format, ...) __attribute__((format(printf, 2, 3)));
  int bell();
  int setCursor(int cursor);

 private:
  [[nodiscard]] const GTran& current() const { return tran[static_cast<size_t>(ctran)]; }
  [[nodiscard]] bool isDeviceText() const;
  /** One of the values that the device is told only when they change. */
  template <typename Value>
  static int change(Value& stored, Value v);
  int sendColor(int element, int& stored, int v);
  int sendWidth(int element, float& stored, float v);
  void addPlot(float x, float y);
  int setFontSpec();
  /** Finds a name in the font list. */
  static bool findFont(const char* name, std::string& spec);
  void drawTextRow(float x, float y, const char* text);
  void drawTextLine(float x, float y, const char* text);
  void drawGlyph(float x, float y, float h, float v);
  [[nodiscard]] float textWidth(const char* text) const;
  int drawMarkLine(float x, float y, float size);
  void drawMarkPart(float x, float y, float s, const Point* part, int n);

  bool opened = false;
  std::unique_ptr<Device> window;
  Raster* raster = nullptr;         ///< window, if it is one
  std::unique_ptr<Device> retired;  ///< a device closed in its own loop, until that has ended
  bool looping = false;             ///< the device has control
  std::array<GTran, 4> tran;
  int ctran = 0;
  int font_type = 1;
  std::string font_name;
  std::string font_spec;
  GFont font;
  std::string symb_file;
  Symbol symbol;
  Points pts;      ///< polyline in plot coordinates, reused by each drawing
  Points outline;  ///< line of a symbol, in window coordinates
  int device = 0;
  bool managed = false;
  bool fixed = false;
  int line_color = 1;
  float line_width = -1.0F;
  int line_style = 1;
  int fill_color = 1;
  int fill_style = 0;
  int hfont = 0;
  int text_color = 1;
  float text_width = 1.0F;
  float text_height = 0.01F;
  float text_expan = 1.0F;
  float text_char_space = 0.25F;
  float text_char_width = 0.0F;
  int text_halign = 0;
  int text_valign = 0;
  float text_upx = 0.0F;
  float text_upy = 1.0F;
  int text_box_color = 0;
  bool text_box = false;
  int drop_color = 1;
  int drop_shadow = 0;
  float drop_width = 0.0F;
  int mark_type = 1;
  float mark_size = 0.01F;
  float mark_width = 1.0F;
  int mark_color = 1;
};

}  // namespace ZQV
