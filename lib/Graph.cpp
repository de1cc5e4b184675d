#include "Graph.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <utility>

#include "Const.h"
#include "Device.h"
#include "FileTool.h"
#include "Hpgl.h"
#include "Image.h"
#include "MetaFile.h"
#include "Postscript.h"
#include "RGB.h"
#include "Raster.h"
#include "StrLib.h"
#include "String.h"
#include "Strings.h"
#include "TextFile.h"
#include "XWindow.h"
#include "Zqv.h"

namespace ZQV {

namespace {

enum DeviceType { X_WINDOW = 1, POSTSCRIPT = 2, HPGL = 3, META = 4, RASTER = 5 };
enum FontType { STROKE_FONT = 1, DEVICE_FONT = 2, SCALED_FONT = 3 };

constexpr size_t MAX_FONT_NAME = 39;
constexpr size_t MAX_FONT_SPEC = 119;
constexpr size_t MAX_SYMBOL_NAME = 79;
constexpr const char* DEFAULT_FONT = "modern.fnt";
constexpr const char* DEFAULT_SYMBOLS = "wx.smb";
constexpr const char* FONT_LIST = "zqv.fnl";
constexpr size_t MAX_TEXT_ROW = 99;
constexpr int MAX_FORM_TEXT = 2000;

constexpr float FONT_HEIGHT = 105.0F;  ///< font units of one text height
constexpr float FONT_GAP = 100.0F;     ///< font units of one fixed character
constexpr float BLANK_WIDTH = 40.0F;
constexpr float ROW_HEIGHT = 1.3F;  ///< text heights from row to row

constexpr int CIRCLE_STEP = 5;
constexpr int CIRCLE_POINTS = 73;

/** Font units from the place of a text down to the bottom of its characters. */
float verticalOffset(int valign) {
  switch (valign) {
    case Graph::VALIGN_TOP: return -160.0F;
    case Graph::VALIGN_CAP: return -140.0F;
    case Graph::VALIGN_HALF: return -85.0F;
    case Graph::VALIGN_BOTTOM: return 0.0F;
    default: return -35.0F;
  }
}

/** Sine and cosine of the bearings of a circle's points. */
const std::array<Point, CIRCLE_POINTS>& circlePoints() {
  static const std::array<Point, CIRCLE_POINTS> table = [] {
    std::array<Point, CIRCLE_POINTS> points;
    for (size_t i = 0; i < points.size(); i++) {
      const double a = static_cast<double>(i) * CIRCLE_STEP * static_cast<double>(Const::DRC);
      points[i].set(static_cast<float>(std::sin(a)), static_cast<float>(std::cos(a)));
    }
    return points;
  }();
  return table;
}

std::string dataPath(const char* name) {
  String path;
  FileTool::addPath(Zqv::getDatabasePath(), name, path);
  return path.get();
}

std::string cutText(const char* text, size_t max) {
  return std::string(std::string_view(text != nullptr ? text : "").substr(0, max));
}

float ratio(float a, float b) {
  return b != 0.0F ? a / b : 0.0F;
}

}  // namespace

Graph::Graph() {
  init();
}

Graph::Graph(const char* device_name, const char* params) : Graph() {
  setDevice(device_name, params);
}

Graph::~Graph() {
  Graph::close();
}

int Graph::init() {
  ctran = 0;
  line_color = 1;
  line_style = 1;
  line_width = -1.0F;
  fill_color = 1;
  fill_style = 0;
  font_type = STROKE_FONT;
  font_name = DEFAULT_FONT;
  font_spec.clear();
  symb_file = DEFAULT_SYMBOLS;
  text_color = 1;
  text_width = 1.0F;
  text_height = 0.01F;
  text_expan = 1.0F;
  text_char_space = 0.25F;
  text_char_width = 0.0F;
  text_halign = text_valign = 0;
  text_upx = 0.0F;
  text_upy = 1.0F;
  text_box_color = 0;
  text_box = false;
  drop_color = 1;
  drop_shadow = 0;
  drop_width = 0.0F;
  mark_color = 1;
  mark_width = 1.0F;
  mark_type = 1;
  mark_size = 0.01F;
  return 1;
}

int Graph::setDevice(const char* device_name, const char* params) {
  close();
  device = 0;
  std::unique_ptr<Device> made;
  if (StrLib::equal(device_name, "postscript")) {
    made = std::make_unique<Postscript>();
    device = POSTSCRIPT;
  } else if (StrLib::equal(device_name, "hpgl")) {
    made = std::make_unique<Hpgl>();
    device = HPGL;
  } else if (StrLib::equal(device_name, "meta")) {
    made = std::make_unique<MetaFile>();
    device = META;
  } else if (StrLib::equal(device_name, "raster")) {
    made = std::make_unique<Raster>();
    device = RASTER;
  } else {
    made = std::make_unique<XWindow>();
    device = X_WINDOW;
  }
  return setDevice(std::move(made), params);
}

int Graph::setDevice(std::unique_ptr<Device> made, const char* params) {
  close();
  window = std::move(made);
  raster = dynamic_cast<Raster*>(window.get());
  if (window == nullptr) return 0;
  if (Strings(params, ',').find("hfont") >= 0) hfont = 1;
  return window->setParam(params);
}

int Graph::getDevice(String& out) {
  return window != nullptr ? window->getDevice(out) : 0;
}

int Graph::open() {
  init();
  if (window == nullptr) {
    window = std::make_unique<XWindow>();
    device = X_WINDOW;
  }
  window->setFixed(fixed);
  if (window->open() == 0) return 0;
  opened = true;
  for (GTran& t : tran) t.set(window->getCoords());
  font.read(dataPath(font_name.c_str()).c_str());
  symbol.read(dataPath(symb_file.c_str()).c_str());
  window->addCallback("AnyEvent", this, nullptr);
  return 1;
}

int Graph::open(const char* device_name, const char* params) {
  return setDevice(device_name, params) != 0 ? open() : 0;
}

int Graph::close() {
  const int result = opened ? window->close() : 0;
  // A key may close the page from inside the device's own loop, which the device must outlive.
  if (looping) {
    retired = std::move(window);
    raster = nullptr;
  } else {
    window.reset();
    raster = nullptr;
  }
  opened = false;
  managed = false;
  hfont = 0;
  return result;
}

int Graph::update() {
  return window != nullptr ? window->update() : 0;
}

int Graph::manage() {
  if (window == nullptr) return 0;
  window->update();
  looping = true;
  const int result = window->manage();
  looping = false;
  retired.reset();
  managed = true;
  return result;
}

int Graph::unmanage() {
  return window != nullptr ? window->unmanage() : 0;
}

int Graph::addCallback(const char* type, Listener* listener, const void* client) {
  if (window == nullptr || managed) return 0;
  return window->addCallback(type, listener, client);
}

int Graph::doCallback(const char* type, const char* data) {
  return window != nullptr ? window->doCallback(type, data) : 0;
}

void Graph::callback(const char* type, const char* /*data*/, const void* /*client*/) {
  if (window == nullptr || !StrLib::equal(type, "Redraw")) return;
  for (GTran& t : tran) t.resize(window->getCoords());
  activateTran();
}

int Graph::setFixed(bool flag) {
  fixed = flag;
  return window != nullptr ? window->setFixed(flag) : 0;
}

int Graph::setSize(float width, float height) {
  return window != nullptr ? window->setSize(width, height) : 0;
}

int Graph::setOffset(float x, float y) {
  return window != nullptr ? window->setOffset(x, y) : 0;
}

int Graph::setInverse(bool flag) {
  return window != nullptr ? window->setInverse(flag) : 0;
}

bool Graph::getInverse() {
  return window != nullptr && window->getInverse();
}

int Graph::setBackground(const char* color) {
  return window != nullptr ? window->setBackground(color) : 0;
}

int Graph::setIcon(bool flag) {
  return window != nullptr ? window->setIcon(flag) : 0;
}

int Graph::setTitle(const char* text) {
  return window != nullptr ? window->setTitle(text) : 0;
}

// Transformations.

int Graph::setTran(int i) {
  if (i < 0 || i >= static_cast<int>(tran.size())) return 0;
  ctran = i;
  return 1;
}

int Graph::activateTran() {
  return window != nullptr ? window->setClip(current().getClipRect()) : 0;
}

int Graph::activateTran(int i) {
  return setTran(i) != 0 ? activateTran() : 0;
}

int Graph::setViewport(int i, const Rect& rect) {
  if (i < 0 || i >= static_cast<int>(tran.size())) return 0;
  return tran[static_cast<size_t>(i)].setViewport(rect);
}

int Graph::setViewport(const Rect& rect) {
  return setViewport(ctran, rect);
}

int Graph::getViewport(int i, Rect& rect) const {
  if (i < 0 || i >= static_cast<int>(tran.size())) return 0;
  rect = tran[static_cast<size_t>(i)].getViewport();
  return 1;
}

int Graph::getViewport(Rect& rect) const {
  return getViewport(ctran, rect);
}

Rect Graph::getViewport() const {
  return current().getViewport();
}

int Graph::setWindow(int i, const Rect& rect) {
  if (i < 0 || i >= static_cast<int>(tran.size())) return 0;
  return tran[static_cast<size_t>(i)].setWindow(rect);
}

int Graph::setWindow(const Rect& rect) {
  return setWindow(ctran, rect);
}

int Graph::getWindow(int i, Rect& rect) const {
  if (i < 0 || i >= static_cast<int>(tran.size())) return 0;
  rect = tran[static_cast<size_t>(i)].getWindow();
  return 1;
}

int Graph::getWindow(Rect& rect) const {
  return getWindow(ctran, rect);
}

Rect Graph::getWindow() const {
  return current().getWindow();
}

Rect Graph::getMaxViewport() const {
  return current().getMaxViewport();
}

int Graph::getMaxViewport(Rect& rect) const {
  rect = getMaxViewport();
  return 1;
}

Rect Graph::getDeviceViewport() {
  return window != nullptr ? window->getClip() : Rect();
}

int Graph::getDeviceViewport(Rect& rect) {
  rect = getDeviceViewport();
  return window != nullptr ? 1 : 0;
}

int Graph::setViewportAspect(const Rect& rect, float aspect, int halign, int valign) {
  Rect view = getMaxViewport();
  view.xmin = rect.xmin < 0.0F ? view.xmin - rect.xmin : rect.xmin;
  view.xmax = rect.xmax < 0.0F ? view.xmax + rect.xmax : rect.xmax;
  view.ymin = rect.ymin < 0.0F ? view.ymin - rect.ymin : rect.ymin;
  view.ymax = rect.ymax < 0.0F ? view.ymax + rect.ymax : rect.ymax;
  const float w = view.xmax - view.xmin;
  const float h = view.ymax - view.ymin;
  // A shape that can't be had is taken as none, too: a domain of one row has an infinite aspect.
  if (!std::isfinite(aspect) || aspect <= 0.0F) aspect = ratio(w, h);
  float new_w = w;
  float new_h = h;
  if (ratio(aspect, w) * h >= 1.0F) {
    new_h = ratio(w, aspect);
  } else {
    new_w = h * aspect;
  }
  switch (halign) {
    case 1: view.xmax = view.xmin + new_w; break;
    case 3: view.xmin = view.xmax - new_w; break;
    default:
      view.xmin += (w - new_w) * 0.5F;
      view.xmax -= (w - new_w) * 0.5F;
      break;
  }
  switch (valign) {
    case 1: view.ymax = view.ymin + new_h; break;
    case 3: view.ymin = view.ymax - new_h; break;
    default:
      view.ymin += (h - new_h) * 0.5F;
      view.ymax -= (h - new_h) * 0.5F;
      break;
  }
  if (Zqv::isDebug(4)) view.print();
  return setViewport(view);
}

int Graph::setViewportAspect(const Rect& rect, float aspect) {
  return setViewportAspect(rect, aspect, 2, 2);
}

int Graph::tranPlotView(float x, float y, float& nx, float& ny) const {
  nx = current().tranPlotNdcX(x);
  ny = current().tranPlotNdcY(y);
  return 1;
}

int Graph::tranPlotWindow(float x, float y, float& wx, float& wy) const {
  wx = current().tranPlotWindowX(x);
  wy = current().tranPlotWindowY(y);
  return 1;
}

int Graph::tranPlotWindow(const Point& plot, Point& window_point) const {
  return tranPlotWindow(plot.x, plot.y, window_point.x, window_point.y);
}

int Graph::tranWindow(int from, float x, float y, int to, float& tx, float& ty) const {
  const int n = static_cast<int>(tran.size());
  if (from < 0 || from >= n || to < 0 || to >= n) return 0;
  const GTran& a = tran[static_cast<size_t>(from)];
  const GTran& b = tran[static_cast<size_t>(to)];
  tx = b.tranPlotWindowX(a.tranWindowPlotX(x));
  ty = b.tranPlotWindowY(a.tranWindowPlotY(y));
  return 1;
}

int Graph::tranWindow(int from, const Point& p, int to, Point& q) const {
  return tranWindow(from, p.x, p.y, to, q.x, q.y);
}

void Graph::printTran() const {
  std::printf("Current: %d\n", ctran);
  for (size_t i = 0; i < tran.size(); i++) {
    std::printf("%d: ", static_cast<int>(i));
    tran[i].print();
  }
}

// Attributes.

template <typename Value>
int Graph::change(Value& stored, Value v) {
  if (stored == v) return 0;
  stored = v;
  return 1;
}

int Graph::sendColor(int element, int& stored, int v) {
  if (window == nullptr || change(stored, v) == 0) return 0;
  window->setColor(element, v);
  return 1;
}

int Graph::sendWidth(int element, float& stored, float v) {
  if (window == nullptr || change(stored, v) == 0) return 0;
  window->setLineWidth(element, v);
  return 1;
}

int Graph::setLineColor(int value) {
  return sendColor(Device::LINE, line_color, value);
}

int Graph::setFillColor(int value) {
  return sendColor(Device::FILL, fill_color, value);
}

int Graph::setTextColor(int value) {
  return sendColor(Device::TEXT, text_color, value);
}

int Graph::setMarkColor(int value) {
  return sendColor(Device::MARK, mark_color, value);
}

int Graph::setLineWidth(float width) {
  return sendWidth(Device::LINE, line_width, width);
}

int Graph::setTextWidth(float width) {
  return sendWidth(Device::TEXT, text_width, width);
}

int Graph::setMarkWidth(float width) {
  return sendWidth(Device::MARK, mark_width, width);
}

int Graph::setLineStyle(int style) {
  if (window == nullptr || change(line_style, style) == 0) return 0;
  window->setLineStyle(Device::LINE, style);
  return 1;
}

int Graph::setFillStyle(int style) {
  if (window == nullptr || change(fill_style, style) == 0) return 0;
  window->setFillStyle(Device::FILL, style);
  return 1;
}

int Graph::setMarkType(int type) {
  if (window == nullptr) return 0;
  return change(mark_type, type);
}

int Graph::setMarkSize(float size) {
  if (window == nullptr) return 0;
  return change(mark_size, size);
}

int Graph::setTextHeight(float height) {
  if (window == nullptr) return 0;
  const int result = change(text_height, height);
  if (font_type == SCALED_FONT) setFontSpec();
  return result;
}

int Graph::setTextExpansion(float v) {
  if (window == nullptr) return 0;
  text_expan = v;
  return 1;
}

int Graph::setTextSpacing(float v) {
  if (window == nullptr) return 0;
  text_char_space = v;
  return 1;
}

int Graph::setTextCharWidth(float v) {
  if (window == nullptr) return 0;
  text_char_width = v;
  return 1;
}

int Graph::setTextBoxColor(int value) {
  if (window == nullptr) return 0;
  text_box_color = value;
  text_box = true;
  return 1;
}

int Graph::setTextAlign(int halign, int valign) {
  if (window == nullptr) return 0;
  text_halign = halign;
  text_valign = valign;
  return 1;
}

int Graph::setTextDirection(float upx, float upy) {
  if (window == nullptr) return 0;
  const float length = std::hypot(upx, upy);
  if (!(length > 0.0F) || !std::isfinite(length)) return 0;
  text_upx = upx / length;
  text_upy = upy / length;
  return 1;
}

int Graph::setDropColor(int value) {
  if (window == nullptr) return 0;
  drop_color = value;
  return 1;
}

int Graph::setDropShadow(int n) {
  if (window == nullptr) return 0;
  drop_shadow = std::clamp(n, 0, MAX_SHADOW);
  return 1;
}

int Graph::setDropWidth(float width) {
  if (window == nullptr) return 0;
  drop_width = width;
  return 1;
}

bool Graph::findFont(const char* name, std::string& spec) {
  TextFile file;
  if (file.open(FONT_LIST) == 0) return false;
  std::string line;
  while (file.next(line) != 0) {
    const size_t end = line.find_first_of(" \t");
    if (end == std::string::npos || line.compare(0, end, name) != 0) continue;
    spec = line.substr(line.find_first_not_of(" \t", end));
    return true;
  }
  return false;
}

int Graph::setFont(const char* name) {
  if (!StrLib::valid(name) || font_name == name) return 0;
  std::string spec = name;
  // A name that isn't in the list may still be that of a font file.
  if (name[0] != '#') findFont(name, spec);
  spec.resize(std::min(spec.size(), MAX_FONT_SPEC));
  if (spec[0] != '#') {
    GFont found(dataPath(spec.c_str()).c_str());
    if (!found.isOpen()) return 0;
    font = std::move(found);
    font_type = STROKE_FONT;
  } else {
    font_type = spec.find('{', 1) != std::string::npos ? SCALED_FONT : DEVICE_FONT;
  }
  font_name = cutText(name, MAX_FONT_NAME);
  font_spec = spec;
  if (font_type != STROKE_FONT) setFontSpec();
  return 1;
}

/** Gives the device its font, of a size that follows the text height. */
int Graph::setFontSpec() {
  if (window == nullptr) return 0;
  std::string text = font_spec.substr(1);
  const Rect rect = getWindow();
  const float window_height = rect.ymax - rect.ymin;
  float size = 0.0F;
  const size_t open = text.find('{', 1);
  if (open != std::string::npos) {
    int s = 0;
    std::sscanf(text.c_str() + open + 1, "%9d", &s);
    size = ratio(text_height, window_height) * 36.0F * static_cast<float>(s);
    char number[64];
    StrLib::printf(number, sizeof(number), "%.0f", static_cast<double>(size));
    const size_t close_at = text.find('}', open);
    const std::string rest = close_at != std::string::npos ? text.substr(close_at + 1) : "";
    text = text.substr(0, open) + number + rest;
  }
  Zqv::outDebug("Font: %s %.2f %.2f %.2f\n", text.c_str(), static_cast<double>(text_height),
                static_cast<double>(window_height), static_cast<double>(size));
  return window->setFont(text.c_str());
}

int Graph::setSymbol(const char* file) {
  if (!StrLib::valid(file) || symb_file == file) return 0;
  symb_file = cutText(file, MAX_SYMBOL_NAME);
  return symbol.read(dataPath(symb_file.c_str()).c_str());
}

// Drawing.

int Graph::clear() {
  return window != nullptr ? window->clear() : 0;
}

int Graph::clearRect(const Rect& rect) {
  if (window == nullptr) return 0;
  const GTran& t = current();
  Rect plot;
  plot.xmin = t.tranWindowPlotX(rect.xmin);
  plot.ymin = t.tranWindowPlotY(rect.ymax);
  plot.xmax = t.tranWindowPlotX(rect.xmax);
  plot.ymax = t.tranWindowPlotY(rect.ymin);
  return window->clearRect(plot);
}

int Graph::allocColor(float r, float g, float b) {
  return window != nullptr ? window->allocColor(r, g, b) : 0;
}

int Graph::allocColor(const RGB& rgb) {
  return allocColor(rgb.red, rgb.grn, rgb.blu);
}

void Graph::addPlot(float x, float y) {
  pts.add(current().tranWindowPlotX(x), current().tranWindowPlotY(y));
}

int Graph::drawLine(float x1, float y1, float x2, float y2) {
  if (window == nullptr) return 0;
  const GTran& t = current();
  return window->drawLine(Device::LINE, t.tranWindowPlotX(x1), t.tranWindowPlotY(y1),
                          t.tranWindowPlotX(x2), t.tranWindowPlotY(y2));
}

int Graph::drawLine(const Point& p1, const Point& p2) {
  return drawLine(p1.x, p1.y, p2.x, p2.y);
}

int Graph::drawLine(const Points& points) {
  if (window == nullptr || points.getNum() < 2 || current().tranWindowPlot(points, pts) == 0) {
    return 0;
  }
  if (drop_shadow != 0) {
    window->setColor(Device::LINE, drop_color);
    window->setLineWidth(Device::LINE, drop_width);
    for (int i = 0; i < drop_shadow; i++) {
      pts.offset(1.0F, 1.0F);
      window->drawLine(Device::LINE, pts);
    }
    window->setLineWidth(Device::LINE, line_width);
    window->setColor(Device::LINE, line_color);
    pts.offset(-static_cast<float>(drop_shadow), -static_cast<float>(drop_shadow));
  }
  return window->drawLine(Device::LINE, pts);
}

int Graph::drawRect(float x1, float y1, float x2, float y2) {
  if (window == nullptr) return 0;
  pts.clear();
  addPlot(x1, y1);
  addPlot(x2, y1);
  addPlot(x2, y2);
  addPlot(x1, y2);
  addPlot(x1, y1);
  return window->drawLine(Device::LINE, pts);
}

int Graph::drawRect(const Rect& rect) {
  return drawRect(rect.xmin, rect.ymin, rect.xmax, rect.ymax);
}

int Graph::drawCircle(float x, float y, float r) {
  if (window == nullptr) return 0;
  pts.clear();
  for (const Point& p : circlePoints()) addPlot(x + r * p.x, y + r * p.y);
  return window->drawLine(Device::LINE, pts);
}

int Graph::drawCircle(const Point& centre, float r) {
  return drawCircle(centre.x, centre.y, r);
}

int Graph::drawFill(const Rect& rect) {
  if (window == nullptr) return 0;
  pts.clear();
  addPlot(rect.xmin, rect.ymin);
  addPlot(rect.xmin, rect.ymax);
  addPlot(rect.xmax, rect.ymax);
  addPlot(rect.xmax, rect.ymin);
  addPlot(rect.xmin, rect.ymin);
  return window->drawFill(Device::FILL, pts);
}

int Graph::drawFill(const Points& points) {
  if (window == nullptr || points.getNum() < 2 || current().tranWindowPlot(points, pts) == 0) {
    return 0;
  }
  return window->drawFill(Device::FILL, pts);
}

void Graph::placeCells(float* x, float* y, int n) {
  if (raster == nullptr) return;
  current().tranWindowPlot(x, y, n);
  raster->placeCells(x, y, n, current().getClipRect());
}

int Graph::findCells(const float* x, const float* y, int num, int* seen) const {
  return raster != nullptr ? raster->findCells(x, y, num, seen) : 0;
}

void Graph::fillCell(const float* x, const float* y) {
  if (raster != nullptr) raster->fillCell(x, y);
}

bool Graph::paintsPixels() const {
  return dynamic_cast<const ScreenDevice*>(window.get()) != nullptr;
}

/** The current text is the device's business; a raster has no font of its own and takes strokes. */
bool Graph::isDeviceText() const {
  if (device == RASTER) return false;
  return hfont != 0 || font_type == DEVICE_FONT || font_type == SCALED_FONT;
}

int Graph::drawText(float x, float y, const char* text) {
  if (window == nullptr || text == nullptr) return 0;
  if (isDeviceText()) {
    const int halign = text_halign == 2 || text_halign == 3 ? text_halign : 1;
    int valign = 3;
    if (text_valign == VALIGN_TOP || text_valign == VALIGN_CAP) valign = 1;
    if (text_valign == VALIGN_HALF) valign = 2;
    window->setTextAlign(halign, valign);
  }
  // One step of a shadow is one device unit.
  const float dx = ratio(1.0F, current().getScaleX());
  const float dy = ratio(1.0F, current().getScaleY());
  std::string_view rest = text;
  while (true) {
    const size_t end = rest.find('\n');
    const std::string row(rest.substr(0, std::min(end, MAX_TEXT_ROW)));
    if (drop_shadow != 0) {
      window->setColor(Device::TEXT, drop_color);
      for (int i = 0; i < drop_shadow; i++) {
        const auto step = static_cast<float>(i);
        drawTextRow(x + step * dx, y + step * dy, row.c_str());
      }
      window->setColor(Device::TEXT, text_color);
    }
    drawTextRow(x, y, row.c_str());
    if (end == std::string_view::npos) break;
    rest.remove_prefix(end + 1);
    x -= text_upx * text_height * ROW_HEIGHT;
    y -= text_upy * text_height * ROW_HEIGHT;
  }
  return 1;
}

int Graph::drawText(const Point& p, const char* text) {
  return drawText(p.x, p.y, text);
}

int Graph::drawFormText(float x, float y, const char* format, ...) {
  char text[MAX_FORM_TEXT];
  va_list args;
  va_start(args, format);
  std::vsnprintf(text, sizeof(text), format, args);
  va_end(args);
  return drawText(x, y, text);
}

int Graph::drawFormText(const Point& p, const char* format, ...) {
  char text[MAX_FORM_TEXT];
  va_list args;
  va_start(args, format);
  std::vsnprintf(text, sizeof(text), format, args);
  va_end(args);
  return drawText(p.x, p.y, text);
}

void Graph::drawTextRow(float x, float y, const char* text) {
  if (isDeviceText()) {
    window->drawText(Point(current().tranWindowPlotX(x), current().tranWindowPlotY(y)), text);
  } else {
    drawTextLine(x, y, text);
  }
}

/** Width of a row of text, in font units. */
float Graph::textWidth(const char* text) const {
  float sum = 0.0F;
  for (const char* p = text; *p != '\0'; p++) {
    const bool last = p[1] == '\0';
    const float gap = last ? 0.0F : text_char_space * FONT_GAP;
    sum += text_char_width > 0.0F ? (last ? FONT_GAP : gap + FONT_GAP) * text_char_width
                                  : static_cast<float>(font.getWidth(*p)) + gap;
  }
  return sum * text_expan;
}

/** Draws one row in the stroke font. */
void Graph::drawTextLine(float x, float y, const char* text) {
  const bool is_fixed = text_char_width > 0.0F;
  const float gap = text_char_space * FONT_GAP;
  const float v = verticalOffset(text_valign);
  float h = 0.0F;
  if (text_halign == HALIGN_CENTER) h = -textWidth(text) / 2.0F;
  if (text_halign == HALIGN_RIGHT) h = -textWidth(text);
  for (const char* p = text; *p != '\0'; p++) {
    if (font.setChar(*p) != 0) {
      const auto width = static_cast<float>(font.getWidth(*p));
      if (is_fixed) h += (text_char_width * FONT_GAP - width) * text_expan / 2.0F;
      drawGlyph(x, y, h, v);
      h += is_fixed ? (width + text_char_width * FONT_GAP) * text_expan / 2.0F + gap * text_expan
                    : (width + gap) * text_expan;
    } else if (*p == ' ') {
      h += is_fixed ? (gap + FONT_GAP) * text_char_width * text_expan
                    : (gap + BLANK_WIDTH) * text_expan;
    }
  }
}

/** Draws the glyph that the font's walk stands at. @param h,v  its place in font units */
void Graph::drawGlyph(float x, float y, float h, float v) {
  const float scale = text_height / FONT_HEIGHT;
  Point p;
  int code = 0;
  pts.clear();
  while ((code = font.get(p)) != 0) {
    if (code == 2) {
      if (pts.getNum() > 1) window->drawLine(Device::TEXT, pts);
      pts.clear();
    }
    const float a = (p.x * text_expan + h) * scale;
    const float b = (p.y + v) * scale;
    addPlot(x + a * text_upy + b * text_upx, y - a * text_upx + b * text_upy);
  }
  if (pts.getNum() > 1) window->drawLine(Device::TEXT, pts);
}

int Graph::drawMark(float x, float y) {
  if (window == nullptr) return 0;
  if (drop_shadow != 0) {
    const float dx = ratio(1.0F, current().getScaleX());
    const float dy = ratio(1.0F, current().getScaleY());
    window->setColor(Device::MARK, drop_color);
    for (int i = 0; i < drop_shadow; i++) {
      const auto step = static_cast<float>(i);
      drawMarkLine(x + step * dx, y + step * dy, mark_size);
    }
    window->setColor(Device::MARK, mark_color);
  }
  return drawMarkLine(x, y, mark_size);
}

int Graph::drawMark(const Point& p) {
  return drawMark(p.x, p.y);
}

/** Draws the polyline of one part of a mark. @param part  points in half sizes from its place */
void Graph::drawMarkPart(float x, float y, float s, const Point* part, int n) {
  pts.clear();
  for (int i = 0; i < n; i++) addPlot(x + part[i].x * s, y + part[i].y * s);
  if (n == 2) {
    window->drawLine(Device::MARK, pts.getX(0), pts.getY(0), pts.getX(1), pts.getY(1));
  } else {
    window->drawLine(Device::MARK, pts);
  }
}

int Graph::drawMarkLine(float x, float y, float size) {
  constexpr float c30 = 0.866F;
  constexpr float s30 = 0.5F;
  static const Point pnt[] = {{0.0F, 0.0F}, {0.2F, 0.0F}, {0.2F, 0.2F}, {0.0F, 0.2F}, {0.0F, 0.0F}};
  static const Point horizontal[] = {{-1.0F, 0.0F}, {1.0F, 0.0F}};
  static const Point vertical[] = {{0.0F, -1.0F}, {0.0F, 1.0F}};
  static const Point rising[] = {{-1.0F, -1.0F}, {1.0F, 1.0F}};
  static const Point falling[] = {{-1.0F, 1.0F}, {1.0F, -1.0F}};
  static const Point circle[] = {{-1.0F, 0.0F}, {-c30, s30},   {-s30, c30},  {0.0F, 1.0F},
                                 {s30, c30},    {c30, s30},    {1.0F, 0.0F}, {c30, -s30},
                                 {s30, -c30},   {0.0F, -1.0F}, {-s30, -c30}, {-c30, -s30},
                                 {-1.0F, 0.0F}};
  static const Point square[] = {
      {-1.0F, 1.0F}, {1.0F, 1.0F}, {1.0F, -1.0F}, {-1.0F, -1.0F}, {-1.0F, 1.0F}};
  static const Point triangle[] = {{-1.0F, -1.0F}, {1.0F, -1.0F}, {0.0F, 1.0F}, {-1.0F, -1.0F}};
  static const Point dot[] = {{0.0F, 0.0F}, {0.1F, 0.1F}};
  static const Point inverse[] = {{-1.0F, 1.0F}, {1.0F, 1.0F}, {0.0F, -1.0F}, {-1.0F, 1.0F}};
  static const Point light[] = {{0.0F, 1.0F}, {0.5F, 0.0F}, {-0.5F, 0.0F}, {0.0F, -1.0F}};
  const float s = size / 2.0F;
  const auto draw = [&](const auto& part) {
    drawMarkPart(x, y, s, part, static_cast<int>(std::size(part)));
  };
  switch (mark_type) {
    case 1: draw(pnt); break;
    case 2:
      draw(horizontal);
      draw(vertical);
      break;
    case 3:
      draw(horizontal);
      draw(rising);
      draw(vertical);
      draw(falling);
      break;
    case 4: draw(circle); break;
    case 5:
      draw(rising);
      draw(falling);
      break;
    case 6: draw(square); break;
    case 7: draw(triangle); break;
    case 8: draw(dot); break;
    case 9: draw(inverse); break;
    case 10: draw(light); break;
    default: return 0;
  }
  return 1;
}

int Graph::drawSymbol(float x, float y, const char* name, float size) {
  if (window == nullptr || symbol.setSymb(name) == 0) return 0;
  if (text_halign == HALIGN_RIGHT) x -= size;
  if (text_halign == HALIGN_CENTER) x -= size * 0.5F;
  if (text_valign == VALIGN_TOP || text_valign == VALIGN_CAP) y -= size;
  if (text_valign == VALIGN_HALF) y -= size * 0.5F;
  Point p;
  int code = 0;
  outline.clear();
  while ((code = symbol.get(p)) != 0) {
    if (code == 2) {
      drawLine(outline);
      outline.clear();
    } else {
      outline.add(x + p.x * size, y + p.y * size);
    }
  }
  drawLine(outline);
  return 1;
}

int Graph::drawSymbol(const Point& p, const char* name, float size) {
  return drawSymbol(p.x, p.y, name, size);
}

int Graph::drawImage(Image& image, float x, float y) {
  if (window == nullptr) return 0;
  return window->drawImage(image, current().tranWindowPlotX(x), current().tranWindowPlotY(y));
}

int Graph::drawImage(Image& image, int mode, float x, float y) {
  if (window == nullptr) return 0;
  return window->drawImage(image, mode, current().tranWindowPlotX(x), current().tranWindowPlotY(y));
}

int Graph::getImage(Image& image) {
  return window != nullptr ? window->getImage(image) : 0;
}

int Graph::setImageAlign(int halign, int valign) {
  return window != nullptr ? window->setImageAlign(halign, valign) : 0;
}

// Frames and the rest of the device.

bool Graph::isLooping() {
  return window != nullptr && window->isLooping();
}

int Graph::getFrame() {
  return window != nullptr ? window->getFrame() : 0;
}

int Graph::setFrame(int frame) {
  return window != nullptr ? window->setFrame(frame) : 0;
}

int Graph::newFrame() {
  if (window == nullptr) return 0;
  window->displayFrame(-1);
  const int made = window->newFrame(-1);
  const int result = window->setFrame(-1);
  if (made == 0) window->clear();  // no room for another: the last one is used again
  return result;
}

int Graph::deleteFrame(int frame) {
  return window != nullptr ? window->deleteFrame(frame) : 0;
}

int Graph::getNumFrames() {
  return window != nullptr ? window->getNumFrames() : 0;
}

int Graph::message(const char* format, ...) {
  if (window == nullptr) return 0;
  char text[MAX_FORM_TEXT];
  va_list args;
  va_start(args, format);
  std::vsnprintf(text, sizeof(text), format, args);
  va_end(args);
  return window->message(text);
}

int Graph::bell() {
  return window != nullptr ? window->bell(0) : 0;
}

int Graph::setCursor(int cursor) {
  return window != nullptr ? window->setCursor(cursor) : 0;
}

}  // namespace ZQV
