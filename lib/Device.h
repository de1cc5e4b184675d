#pragma once

namespace ZQV {

class Image;
class Listener;
class Point;
class Points;
class Rect;
class String;

/** An output device: it knows plot coordinates, polylines, filled polygons, images and text in its
 * own font, and nothing above. Only Graph calls it. All operations return 1 for success unless
 * stated, and a device answers what it can't do with 1 or 0 and no effect. */
class Device {
 public:
  /** What an attribute or a drawing belongs to; a device keeps the four sets of attributes apart.
   */
  enum Element { LINE = 1, MARK = 2, FILL = 3, TEXT = 4 };

  Device() = default;
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;
  virtual ~Device() = default;

  virtual int init() = 0;
  /** @param params  the comma-separated device text */
  virtual int setParam(const char* params) = 0;
  virtual int open() = 0;
  /** Name of the device. */
  virtual int getDevice(String& out) = 0;
  virtual int resize(float width, float height) = 0;
  /** Hands control to the device until it finishes. */
  virtual int manage() = 0;
  virtual int unmanage() = 0;
  virtual int addCallback(const char* type, Listener* listener, const void* client) = 0;
  virtual int doCallback(const char* type, const char* data) = 0;
  /** As in Listener, from which devices derive too. */
  virtual void callback(const char* type, const char* data, const void* client) = 0;
  virtual int close() = 0;
  /** Makes visible what was drawn. */
  virtual int update() = 0;
  virtual int clear() = 0;
  virtual int clearRect(const Rect& rect) = 0;
  virtual int setTitle(const char* text) = 0;
  virtual int setIcon(bool flag) = 0;
  virtual int setFixed(bool flag) = 0;
  /** Swaps black and white. */
  virtual int setInverse(bool flag) = 0;
  virtual bool getInverse() = 0;
  virtual int setBackground(const char* color) = 0;
  /** In screen pixels. */
  virtual int setSize(float width, float height) = 0;
  /** In the device's unit. */
  virtual int getSize(float& width, float& height) = 0;
  virtual float getWidth() = 0;
  virtual float getHeight() = 0;
  virtual int setOffset(float x, float y) = 0;
  virtual int getOffset(float& x, float& y) = 0;
  /** The device rectangle, its corners in the order of the page: ymin may be above ymax. */
  virtual int getCoords(Rect& rect) = 0;
  virtual Rect getCoords() = 0;
  /** @return the device colour value of channels from 0.0 to 1.0 */
  virtual int allocColor(float r, float g, float b) = 0;
  virtual int setColor(int element, int value) = 0;
  virtual int setLineWidth(int element, float width) = 0;
  /** @param style  1 solid, 2 dashed, 3 short and long dash, 4 dash and dot, 5 dotted */
  virtual int setLineStyle(int element, int style) = 0;
  /** @param style  0 solid, or one of the patterns of PlotAttr::parseFillStyle() */
  virtual int setFillStyle(int element, int style) = 0;
  virtual int drawLine(int element, float x1, float y1, float x2, float y2) = 0;
  virtual int drawLine(int element, const Points& points) = 0;
  virtual int drawFill(int element, const Points& points) = 0;
  virtual int setImageAlign(int horizontal, int vertical) = 0;
  virtual int drawImage(Image& image, float x, float y) = 0;
  virtual int drawImage(Image& image, int mode, float x, float y) = 0;
  /** Reads the picture back. */
  virtual int getImage(Image& image) = 0;
  virtual int setFont(const char* name) = 0;
  virtual int setTextAlign(int horizontal, int vertical) = 0;
  virtual int drawText(const Point& p, const char* text) = 0;
  virtual Rect getClip() = 0;
  virtual int setClip(float x1, float y1, float x2, float y2) = 0;
  virtual int setClip(const Rect& rect) = 0;
  virtual int setCursor(int cursor) = 0;
  virtual int copyFrame(int to, int from) = 0;
  virtual int displayFrame(int frame) = 0;
  virtual int clearFrame(int frame) = 0;
  virtual int newFrame(int frame) = 0;
  virtual int newFrame() = 0;
  virtual bool isLooping() = 0;
  virtual int getFrame() = 0;
  virtual int setFrame(int frame) = 0;
  virtual int incFrame(int step) = 0;
  virtual int deleteFrame(int frame) = 0;
  virtual int getNumFrames() = 0;
  virtual int message(const char* text) = 0;
  virtual int bell(int volume) = 0;
};

}  // namespace ZQV
