#include "Plot.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>

#include "ColorFile.h"
#include "DateTool.h"
#include "EarthPoint.h"
#include "EarthPoints.h"
#include "FileTool.h"
#include "ForeTime.h"
#include "GeomBox.h"
#include "GridPoint.h"
#include "Image.h"
#include "ImageFile.h"
#include "ImageMath.h"
#include "PlotAttr.h"
#include "Point.h"
#include "Prog.h"
#include "RGB.h"
#include "Spline.h"
#include "StrLib.h"
#include "Strings.h"
#include "Tools.h"
#include "WorldFile.h"
#include "Zqv.h"

namespace ZQV {

namespace {

enum Switch { DRAW_GRID = 2, DRAW_TEXT = 3, DRAW_BORDER = 9, LAST_SWITCH = 9 };

constexpr int debug_level = 5;
constexpr float date_line = 180.0F;
constexpr float label_share = 0.03F;   // of the picture's height, at most, for a label
constexpr float label_height = 0.75F;  // of its space
constexpr size_t max_text = 99;

constexpr struct {
  const char* name;
  int first;
  int last;
} switches[] = {{"plot", 0, 0},    {"sum", 0, 0},     {"data", 1, 1},    {"grid", 2, 2},
                {"map", 2, 2},     {"text_ul", 3, 3}, {"text_uc", 4, 4}, {"text_ur", 5, 5},
                {"text_ll", 6, 6}, {"text_lc", 7, 7}, {"text_lr", 8, 8}, {"text", 3, 9},
                {"bord", 9, 9}};

bool asksImageFile(const char* text) {
  return StrLib::equal(text, "gif", 3) || StrLib::equal(text, "png", 3) ||
         StrLib::equal(text, "gif", -3) || StrLib::equal(text, "png", -3);
}

/** Name of the device that a first letter stands for. */
const char* deviceOf(char letter) {
  switch (letter) {
    case 'p': return "postscript";
    case 'h': return "hpgl";
    case 'm': return "meta";
    default: return "display";
  }
}

/** The same for a device text: its first letter counts, but one word is written whole. */
const char* deviceOf(const char* text) {
  const bool raster = StrLib::equal(text, "raster") || StrLib::equal(text, "raster,", 7);
  return raster ? "raster" : deviceOf(*text);
}

/** Value of the last item "KEYvalue" of a parameter text, or fallback. */
const char* itemValue(const Strings& items, const char* key, const char* fallback) {
  const int n = StrLib::length(key);
  for (int i = 0; i < items.getNum(); i++) {
    if (items.equal(i, key, n)) {
      fallback = items.getString(i) + n;
    }
  }
  return fallback;
}

std::string cut(const char* text, size_t n) {
  return StrLib::acopy(text).substr(0, n);
}

/** Moves p onto x = edge along the line to q. */
void moveToEdge(Point& p, const Point& q, float edge) {
  const float run = q.x - p.x;
  if (run != 0.0F) {
    p.y += (q.y - p.y) * (edge - p.x) / run;
  }
  p.x = edge;
}

bool beyondEdge(float x) {
  return x < -date_line || x > date_line;
}

float edgeOf(float x) {
  return x < 0 ? -date_line : date_line;
}

}  // namespace

Plot::Plot(const char* params) {
  init();
  open(params);
}

int Plot::init() {
  layer = 0;
  label.clear();
  logo.clear();
  color_label.clear();
  date.init();
  fore_hour = Const::FMISS;
  source.clear();
  num_panel = 0;
  cur_panel = 0;
  bar = 0;
  draw.set();
  setDrawing(Zqv::getResrc("draw"));
  return 1;
}

int Plot::chooseDevice(const char* params) {
  const Strings items(params, ',');
  const char* device = itemValue(items, "de=", Zqv::getResrc("device"));
  if (StrLib::valid(device)) {
    const int comma = StrLib::index(device, ',');
    return graph.setDevice(deviceOf(device), comma >= 0 ? device + comma + 1 : params);
  }
  if (Zqv::getResrc("inter") == nullptr) {
    return graph.setDevice("display", "");
  }
  String answer;
  Prog::prompt("Display (D) or Postscript (P): ", answer);
  answer.lowCase();
  return graph.setDevice(deviceOf(answer.getChar(0)), "");
}

void Plot::setTitle(const char* text) {
  constexpr size_t max_title = 79;
  title = cut(text, max_title);
  graph.setTitle(title.c_str());
}

void Plot::readTitle() {
  const char* name = Zqv::getResrc("title");
  if (name == nullptr) {
    name = Zqv::getResrc("name");
    if (name != nullptr && *name == '+') {
      name++;
    }
  }
  if (name == nullptr) {
    name = Zqv::getProgramName();
  }
  if (StrLib::valid(name)) {
    setTitle(name);
  }
}

/** Size, place and looks, as the resources and the parameters have them. */
void Plot::prepareDevice(const Strings& items) {
  GeomBox box;
  const int geometry = decodeGeometryStr(itemValue(items, "ge=", Zqv::getResrc("geometry")), box);
  if (geometry == 1 || geometry == 2) {
    graph.setSize(box.width, box.height);
  }
  if (geometry == 2 || geometry == 3) {
    graph.setOffset(box.x, box.y);
  }
  if (Zqv::getResrc("background") != nullptr) {
    graph.setBackground(Zqv::getResrc("background"));
  }
  if (Zqv::getResrc("icon") != nullptr) {
    graph.setIcon(true);
  }
  readTitle();
}

int Plot::open(const char* params) {
  init();
  chooseDevice(params);
  const Strings items(params, ',');
  prepareDevice(items);
  output = asksImageFile(Zqv::getResrc("output")) ? 1 : 0;
  if (Zqv::getResrc("logo") != nullptr) {
    setLogo(Zqv::getResrc("logo"));
  }
  setDrawing(Zqv::getResrc("draw"));
  if (Zqv::getResrc("timezone") != nullptr) {
    tz.set(Zqv::getResrc("timezone"));
  }
  setParam(Zqv::getResrc("parameter"));
  setParam(params);
  if (graph.open() == 0) {
    const bool named = StrLib::valid(itemValue(items, "de=", Zqv::getResrc("device")));
    if (output == 0 || named) {
      Zqv::setError(Zqv::NOGRAPH);  // unless it was the file of a picture that can't be written
      return 0;
    }
    // A picture for a file needs no window.
    Zqv::outWarning("Plot: no display, drawing off screen\n");
    graph.setDevice("raster", "");
    prepareDevice(items);
    setParam(Zqv::getResrc("parameter"));
    setParam(params);
    if (graph.open() == 0) {
      return 0;
    }
  }
  constexpr int capacity = 512;
  colormap.init(capacity);
  ColorFile::read(itemValue(items, "ct=", Zqv::getResrc("color_table", "zqv.clr")), colormap);
  for (int i = 0; i < colormap.getNum(); i++) {
    allocColor(i);
  }
  graph.addCallback("AnyEvent", this, nullptr);
  initPanel();
  return 1;
}

int Plot::close() {
  return graph.close();
}

int Plot::setParam(const char* params) {
  constexpr int value = 3;
  constexpr size_t max_color = 19;
  const Strings items(params, ',');
  for (int i = 0; i < items.getNum(); i++) {
    if (items.equal(i, "ti", 2)) {
      setTitle(items.getString(i, value));
    } else if (items.equal(i, "bg", 2)) {
      graph.setBackground(items.getString(i, value));
    } else if (items.equal(i, "ic", 2)) {
      graph.setIcon(items.getString(i, value) != nullptr);
    } else if (items.equal(i, "cola", 4)) {
      color_label.copy(StrLib::valid(items.getStringAfter(i, '='), ""));
    } else if (items.iequal(i, "full")) {
      setFull(1);
    } else if (items.iequal(i, "full_lab")) {
      setFull(2);
    } else if (items.iequal(i, "anim")) {
      anim = true;
    } else if (items.iequal(i, "world")) {
      world = true;
    } else if (items.iequal(i, "inv", 3)) {
      graph.setInverse(true);
    } else if (items.equal(i, "bar", 3)) {
      if (items.getLength(i) > 4) {
        cbar.setParam(items.getString(i, 4));
      }
    } else if (items.equal(i, "lo", 2)) {
      setLogo(items.getStringAfter(i, '='));
    } else if (items.iequal(i, "trans_col", 9)) {
      trans_color = cut(items.getStringAfter(i, '='), max_color);
    } else if (items.equal(i, "tz", 2)) {
      tz.set(items.getString(i, value));
    }
  }
  return 1;
}

int Plot::setLogo(const char* text) {
  logo.copy(text != nullptr ? text : "");
  return 1;
}

int Plot::clear() {
  init();
  graph.clear();
  return initPanel();
}

int Plot::update() {
  if (output != 0) {
    return anim ? keepFrame() : 1;
  }
  return graph.update();
}

int Plot::manage() {
  if (output == 0) {
    return graph.manage();
  }
  if (anim && num_kept > 1) {
    writeKept(true);
    return movie.close();
  }
  const char* type = nullptr;
  const std::string name = outputName(type);
  return type != nullptr ? saveImage(name.c_str(), type) : saveImage(name.c_str());
}

/** Name of the image file, and its type unless the name's end decides: "gif:NAME", or a name that
 * ends so; "gif" alone leaves the name to the program. */
std::string Plot::outputName(const char*& type) const {
  constexpr int name_at = 4;
  const char* text = Zqv::getResrc("output", "");
  for (const char* known : {"GIF", "PNG"}) {
    if (StrLib::iequal(text, known, 3) && (*text == 'g' || *text == 'p')) {
      type = known;
      return StrLib::length(text) > name_at ? text + name_at
                                            : std::string("output.") + std::string(text, 3);
    }
  }
  return text;
}

/** A frame of an animation is complete. It is written when the next one is, or when it turns out to
 * be the last. */
int Plot::keepFrame() {
  if (num_kept > 0 && writeKept(false) == 0) {
    return 0;
  }
  num_kept++;
  return getImage(kept);
}

int Plot::writeKept(bool last) {
  const char* type = nullptr;
  const std::string name = outputName(type);
  if (StrLib::equal(type, "PNG") || StrLib::equal(name.c_str(), "png", -3)) {
    const size_t dot = name.rfind('.');
    const size_t slash = name.rfind('/');
    const bool has_end = dot != std::string::npos && (slash == std::string::npos || dot > slash);
    char number[16];
    std::snprintf(number, sizeof(number), "-%3.3d", num_kept - 1);
    const std::string stem = has_end ? name.substr(0, dot) : name;
    return saveImage(kept, (stem + number + (has_end ? name.substr(dot) : "")).c_str(), "PNG");
  }
  if (!movie.isOpen()) {
    String path;
    FileTool::addOutPath(Zqv::getResrc("image_path"), name.c_str(), path);
    if (movie.open(path.get(), 1) == 0) {
      return imageFailed(path.get());
    }
    constexpr int delay = 50;  // hundredths of a second, as in the window
    constexpr int end_delay = 100;
    movie.setLoopDelay(delay, end_delay);
    writeWorld(path.get());
    imageCreated(path.get(), true);
  }
  return movie.writeFrame(kept, last);
}

int Plot::end() {
  drawBorder();
  drawLabels();
  return manage();
}

int Plot::done() {
  layer++;
  return 1;
}

void Plot::callback(const char* type, const char* data, const void* /*client*/) {
  constexpr int query_at = 6;
  if (!StrLib::equal(type, "KeyPress")) {
    return;
  }
  if (StrLib::equal(data, "Ret", 3)) {
    bell();
    unmanage();
    close();
  } else if (StrLib::equal(data, "v-Alt", 5)) {
    queryLocation(StrLib::length(data) > query_at ? data + query_at : "");
  } else if (StrLib::equal(data, "s-Alt", 5)) {
    saveFrames("gif");
  } else if (StrLib::equal(data, "S-Alt", 5) && graph.getNumFrames() <= 1) {
    saveFrames("png");
  }
}

/** Prints where on the earth a place of the device lies. */
void Plot::queryLocation(const char* text) {
  float x = 0.0F;
  float y = 0.0F;
  float nx = 0.0F;
  float ny = 0.0F;
  if (std::sscanf(text, "%12f:%12f", &x, &y) != 2) {
    return;
  }
  const int i = findPanel(x, y, nx, ny);
  Point p;
  if (i < 0 || panels[static_cast<size_t>(i)].getWindow(nx, ny, p.x, p.y) == 0) {
    return;
  }
  Domain& domain = panels[static_cast<size_t>(i)].domain;
  EarthPoint e;
  GridPoint g;
  domain.tran(p, e);
  domain.tran(p, g);
  // A place on the earth, and otherwise whatever the two axes mean.
  const char* first = "Lat";
  const char* second = "Lon";
  if (domain.isTherm()) {
    first = "Temp";
    second = "Pres";
  } else if (domain.isPolar()) {
    first = "A";
    second = "R";
  } else if (domain.isCoord()) {
    first = "X";
    second = domain.isProj(Domain::XLOGP) ? "P" : "Y";
  }
  const auto a = static_cast<double>(e.lat);
  const auto b = static_cast<double>(e.lon);
  std::printf("%s: %.4f %s: %.4f XY: %.3f %.3f ", first, a, second, b, static_cast<double>(p.x),
              static_cast<double>(p.y));
  if (!domain.isTherm()) {
    std::printf("Grid: %.2f %.2f ", static_cast<double>(g.gx), static_cast<double>(g.gy));
  }
  std::printf("Pixel: %.0f %.0f\n", static_cast<double>(x), static_cast<double>(y));
  std::fflush(stdout);
  char line[80];
  std::snprintf(line, sizeof(line), "%f,%f", a, b);
  doCallback("QueryLoc", line);
}

/** Name of a saved picture: what the title begins with, and the number of the frame unless it is
 * negative. */
std::string Plot::imageName(const char* extension, int frame) const {
  constexpr size_t most = 5;
  std::string name = title.empty() ? "output" : title.substr(0, most);
  for (char& c : name) {
    if (c == ' ' || c == '/') {
      c = '_';
    }
  }
  if (name[0] == '|' || name[0] == '-' || name[0] == '~' || name[0] == '.') {
    name[0] = '_';  // a plain file in any case
  }
  if (frame >= 0) {
    char number[16];
    std::snprintf(number, sizeof(number), "-%2.2d", frame);
    name += number;
  }
  return name + "." + extension;
}

/** Saves the picture, or while a loop runs all its frames. */
void Plot::saveFrames(const char* type) {
  const int num = graph.getNumFrames();
  if (num < 2) {
    saveImage(imageName(type, -1).c_str());
    return;
  }
  const int shown = graph.getFrame() >= 0 ? graph.getFrame() : num - 1;
  const bool all = graph.isLooping();
  for (int i = all ? 0 : shown; i <= (all ? num - 1 : shown); i++) {
    graph.setFrame(i);
    saveImage(imageName(type, i).c_str());
  }
  graph.setFrame(shown);
}

int Plot::message(const char* format, ...) {
  char text[512];
  va_list args;
  va_start(args, format);
  std::vsnprintf(text, sizeof(text), format, args);
  va_end(args);
  return graph.message("%s", text);
}

int Plot::setFull(int n) {
  full = n;
  return 1;
}

int Plot::setDate(const Date& at) {
  date = at;
  return 1;
}

int Plot::setForeHour(float hours) {
  fore_hour = hours;
  return 1;
}

int Plot::setDataSource(const char* text) {
  constexpr size_t max_source = 9;
  source = cut(text, max_source);
  return 1;
}

// Panels and the domain.

int Plot::initPanel() {
  num_panel = 1;
  cur_panel = 0;
  const Rect page = graph.getMaxViewport();
  panels[0].limits = Rect(0.0F, 0.0F, 1.0F, 1.0F);
  graph.setWindow(page);
  graph.activateTran();
  panels[0].view = page;
  return 1;
}

int Plot::setPanel(const Rect& rect, float aspect, int halign, int valign) {
  Panel& p = panel();
  p.offset = rect;
  const Rect page = graph.getMaxViewport();
  const float w = page.getWidth();
  const float h = page.getHeight();
  p.view = page;
  if (full == 0) {
    const float lw = p.limits.getWidth();
    const float lh = p.limits.getHeight();
    p.view.xmin = (rect.xmin * lw + p.limits.xmin) * w;
    p.view.xmax = (rect.xmax * lw + p.limits.xmin) * w;
    p.view.ymin = (rect.ymin * lh + p.limits.ymin) * h;
    p.view.ymax = (rect.ymax * lh + p.limits.ymin) * h;
  }
  graph.setTran(1);
  graph.setViewportAspect(p.view, aspect, halign, valign);
  graph.getViewport(p.view);
  graph.setWindow(p.view);
  graph.activateTran();
  if (!p.domain.isSet()) {
    DomainVal plain;
    plain.proj = DomainVal::XY;
    plain.clat = w / 2;
    plain.clon = h / 2;
    plain.dx = w;
    plain.dy = h;
    plain.nx = plain.ny = 2;
    p.domain.set(plain);
  }
  return 1;
}

int Plot::setPanel(const Rect& rect, float aspect) {
  return setPanel(rect, aspect, 2, 2);
}

int Plot::setPanel(const Rect& rect) {
  return setPanel(rect, 0.0F);
}

int Plot::setPanel() {
  return setPanel(Rect(0.0F, 0.0F, 0.0F, 0.0F));
}

int Plot::setPanel(const Rect& rect, const Domain& domain) {
  if (domain.isSet()) {
    panel().domain = Domain(domain);
    setPanel(Rect(rect), panel().domain.getAspect(), 2, 2);
  } else {
    const Rect page = graph.getMaxViewport();
    panel().view = page;
    setPanel(Rect(rect), page.getWidth() / page.getHeight(), 2, 2);
  }
  panel().domain.setView(graph.getViewport());
  graph.setWindow(panel().domain.getLimits());
  return graph.activateTran();
}

int Plot::setPanel(const Domain& domain) {
  const Rect place(0.0F, 0.04F, 1.0F, 0.96F);  // room for labels above and below
  if (!panel().domain.isSet()) {
    return setPanel(place, domain);
  }
  graph.setTran(1);
  panel().offset = place;
  panel().domain = Domain(domain);
  graph.setWindow(panel().domain.getLimits());
  return graph.activateTran();
}

int Plot::setPanel(int i) {
  if (i < 0 || i >= max_panels) {
    return 0;
  }
  const Panel wanted = panels[static_cast<size_t>(i)];
  setPanel(wanted.offset, wanted.domain);
  cur_panel = i;
  return 1;
}

int Plot::setDomain(const DomainVal& val) {
  return setPanel(Domain(val));
}

int Plot::setPanelDomain(int i, const Domain& domain) {
  if (i < 0 || i >= max_panels) {
    return 0;
  }
  panels[static_cast<size_t>(i)].domain = domain;
  return 1;
}

int Plot::getPanelDomain(int i, Domain& domain) const {
  if (i < 0 || i >= max_panels) {
    return 0;
  }
  domain = panels[static_cast<size_t>(i)].domain;
  return 1;
}

int Plot::getDomain(Domain& domain) const {
  domain = panel().domain;
  return 1;
}

int Plot::decodePanelStr(const Rect& rect, const char* text, GeomBox& box) const {
  const float w = rect.getWidth();
  const float h = rect.getHeight();
  box = GeomBox(rect.xmin, rect.ymin, w, h);
  float v[4] = {1.0F, 1.0F, 0.0F, 0.0F};
  const int n = text == nullptr ? 0 : std::sscanf(text, "%fx%f+%f+%f", &v[0], &v[1], &v[2], &v[3]);
  if (n != 2 && n != 4) {
    return 0;
  }
  if (v[0] <= 1) {
    box = GeomBox(v[2] * w, v[3] * h, v[0] * w, v[1] * h);
    return 1;
  }
  constexpr int most = 8;
  const auto columns = static_cast<float>(std::clamp(Tools::cut(v[0]), 1, most));
  const auto rows = static_cast<float>(std::clamp(Tools::cut(v[1]), 1, most));
  const auto column = static_cast<float>(Tools::cut(v[2]));
  const auto row = static_cast<float>(Tools::cut(v[3]));
  box = GeomBox(column / columns * w, (1 - (row + 1) / rows) * h, w / columns, h / rows);
  return 1;
}

int Plot::newPanel(const char* text) {
  if (!label.empty()) {
    drawBorder();
    drawLabels();
  }
  const Strings items(text, ',');
  GeomBox box;
  const int done_well = decodePanelStr(graph.getMaxViewport(), items.getString(0), box);
  const Rect place(box.x, box.y, box.x + box.width, box.y + box.height);
  constexpr float margin = 0.04F;
  const Rect view(place.xmin, place.ymin + box.height * margin, place.xmax,
                  place.ymax - box.height * margin);
  const int tran = graph.getTran();
  graph.setViewport(0, place);
  graph.setWindow(0, place);
  graph.setTran(tran);
  if (num_panel < max_panels) {
    const int next = std::min(cur_panel + 1, max_panels - 1);
    panels[static_cast<size_t>(next)] = panel();
    cur_panel = next;
    num_panel++;
  }
  Panel& p = panel();
  p.limits = place;
  graph.setViewportAspect(view, p.domain.getAspect());
  graph.getViewport(p.view);
  graph.setWindow(p.domain.getLimits());
  if (Zqv::outDebug(debug_level, "PANEL\n") != 0) {
    p.print();
  }
  graph.activateTran();
  layer = 0;
  label.clear();
  source.clear();
  bar = 0;
  fore_hour = Const::FMISS;
  return done_well;
}

int Plot::getViewDomain(Domain& domain) {
  domain = panel().domain;
  const Rect clip = graph.getDeviceViewport();
  const Rect& limits = domain.getLimits();
  domain.nx = Tools::cut(std::fabs(clip.getWidth()));
  domain.ny = Tools::cut(std::fabs(clip.getHeight()));
  if (domain.nx < 1 || domain.ny < 1) {
    return 0;
  }
  domain.dx = limits.getWidth() / static_cast<float>(domain.nx);
  domain.dy = limits.getHeight() / static_cast<float>(domain.ny);
  return 1;
}

/** The last panel at a place of the device, -1 if there is none. @param nx, ny  out: the place,
 * normalised */
int Plot::findPanel(float x, float y, float& nx, float& ny) const {
  nx = ny = 0.0F;
  graph.tranPlotView(x, y, nx, ny);
  const Rect page = graph.getMaxViewport();
  int found = -1;
  for (int i = 0; i < num_panel; i++) {
    const Panel& p = panels[static_cast<size_t>(i)];
    if (p.withinLimits(nx / page.getWidth(), ny / page.getHeight())) {
      found = i;
    }
  }
  return found;
}

int Plot::tranPlotWindow(float x, float y, float& wx, float& wy) const {
  wx = wy = Const::FMISS;
  float nx = 0;
  float ny = 0;
  const int found = findPanel(x, y, nx, ny);
  return found >= 0 ? panels[static_cast<size_t>(found)].getWindow(nx, ny, wx, wy) : 0;
}

// Colour.

int Plot::allocColor(int i) {
  int value = colormap.getValue(i);
  if (value == -1 && colormap.getNum() > 0) {
    RGB rgb;
    colormap.get(i, rgb);
    value = graph.allocColor(rgb);
    colormap.setValue(std::min(i, colormap.getNum() - 1), value);
  }
  return value;
}

int Plot::setColorMap(ColorMap& map) {
  for (int i = 0; i < map.getNum(); i++) {
    RGB rgb;
    map.get(i, rgb);
    map.setValue(i, graph.allocColor(rgb));
    const int own = colormap.add(map.getName(i), rgb);
    if (own >= 0) {
      colormap.setValue(own, map.getValue(i));
    }
  }
  return map.getNum() > 0 ? 1 : 0;
}

int Plot::getColorValue(const char* name) {
  const int i = colormap.getInd(name);
  return ColorMap::isColor(i) ? allocColor(i) : -1;
}

// Lines.

/** The plane of the panel closes on itself, so that lines may have to be drawn on both sides. */
bool Plot::wraps() const {
  if (graph.getTran() != 1) {
    return false;
  }
  const int proj = panel().domain.getProj();
  return proj == DomainVal::LATLON || proj == DomainVal::MERC || proj == DomainVal::MOLL ||
         proj == DomainVal::LAMB;
}

int Plot::drawLine(float x1, float y1, float x2, float y2) {
  return drawLine(Point(x1, y1), Point(x2, y2));
}

int Plot::drawLine(const Point& p1, const Point& p2) {
  if (!ColorMap::isColor(line_color)) {
    return 0;
  }
  if (graph.getTran() != 1) {
    return graph.drawLine(p1, p2);
  }
  Point a = p1;
  Point b = p2;
  const int wrapped = panel().domain.wrapLine(a, b);
  const auto draw_cropped = [this](Point from, Point to) {
    cropLine(from, to);
    return graph.drawLine(from, to);
  };
  const int drawn = draw_cropped(a, b);
  if (wrapped == 0) {
    return drawn;
  }
  panel().domain.offsetLine(a, b, wrapped);
  return draw_cropped(a, b);
}

int Plot::drawLine(const EarthPoint& e1, const EarthPoint& e2) {
  EarthPoint a = e1;
  EarthPoint b = e2;
  Point p;
  Point q;
  return tran(a, p) & tran(b, q) & 1 ? drawLine(p, q) : 0;
}

int Plot::drawLine(const GridPoint& g1, const GridPoint& g2) {
  Point p;
  Point q;
  return tran(g1, p) & tran(g2, q) & 1 ? drawLine(p, q) : 0;
}

int Plot::cropLine(Point& p1, Point& p2) const {
  if (panel().domain.getProj() != DomainVal::LATLON) {
    return 0;
  }
  if (beyondEdge(p1.x)) {
    moveToEdge(p1, p2, edgeOf(p1.x));
    Zqv::outDebug(debug_level, "1: %.3f %.2f %.2f\n", static_cast<double>(p1.x),
                  static_cast<double>(p1.y), static_cast<double>(p2.x));
    return 1;
  }
  if (beyondEdge(p2.x)) {
    moveToEdge(p2, p1, edgeOf(p2.x));
    Zqv::outDebug(debug_level, "2: %.3f %.2f %.2f\n", static_cast<double>(p2.x),
                  static_cast<double>(p2.y), static_cast<double>(p1.x));
    return 1;
  }
  return 0;
}

int Plot::cropLine(Points& points) const {
  if (panel().domain.getProj() != DomainVal::LATLON || points.getNum() < 1) {
    return 0;
  }
  Points cropped(points.getNum() + 2);
  cropped.add(points.getX(0), points.getY(0));
  int num_cut = 0;
  bool changed = false;
  bool was_inside = !beyondEdge(points.getX(0));
  for (int i = 1; i < points.getNum(); i++) {
    Point before;
    Point p;
    cropped.get(-1, before);
    points.get(i, p);
    bool inside = !beyondEdge(p.x);
    if (!was_inside && !inside) {
      Zqv::outDebug(debug_level, "DEL %d %.2f %.2f\n", i - 1, static_cast<double>(before.x),
                    static_cast<double>(before.y));
      cropped.trunc(cropped.getNum() - 1);
      changed = true;
    } else if (!was_inside) {
      cropped.trunc(cropped.getNum() - 1);
      if (num_cut > 0) {
        cropped.add(Const::FMISS, Const::FMISS);
      }
      moveToEdge(before, p, edgeOf(before.x));
      cropped.add(before);
      changed = true;
    } else if (!inside) {
      Zqv::outDebug(debug_level, "CROP< %d %.2f %.2f\n", i, static_cast<double>(p.x),
                    static_cast<double>(p.y));
      if (std::fabs(before.x) != date_line) {
        // The point itself moves to the edge and counts as inside from here on, so that a line
        // which comes back at once goes on from there without a break: deliberate.
        moveToEdge(p, before, edgeOf(p.x));
        num_cut++;
        inside = true;
        changed = true;
      }
    }
    cropped.add(p);
    was_inside = inside;
  }
  const int last = cropped.getNum() - 1;
  if (cropped.getX(last) != Const::FMISS && beyondEdge(cropped.getX(last))) {
    cropped.trunc(last);
    changed = true;
  }
  if (changed) {
    points.copy(cropped);
  }
  return changed ? 1 : 0;
}

/** Draws the stretches between missing points. */
int Plot::drawStretches(const Points& line) {
  int drawn = 0;
  stretch.clear();
  for (int i = 0; i < line.getNum(); i++) {
    if (line.getX(i) == Const::FMISS) {
      drawn |= graph.drawLine(stretch);
      stretch.clear();
    } else {
      stretch.add(line.getX(i), line.getY(i));
    }
  }
  return drawn | graph.drawLine(stretch);
}

int Plot::drawLine(const Points& points) {
  if (!ColorMap::isColor(line_color)) {
    return 0;
  }
  if (graph.getTran() != 1) {
    return graph.drawLine(points);
  }
  if (!wraps()) {
    return drawStretches(points);
  }
  const int proj = panel().domain.getProj();
  const bool crops = proj == DomainVal::LATLON || proj == DomainVal::MERC;
  work.copy(points);
  const int wrapped = panel().domain.wrapLine(work);
  const auto draw_cropped = [&]() {
    if (!crops) {
      return drawStretches(work);
    }
    Points cropped = work;
    cropLine(cropped);
    return drawStretches(cropped);
  };
  int drawn = draw_cropped();
  if (wrapped != 0) {
    panel().domain.offsetLine(work, wrapped);
    drawn |= draw_cropped();
  }
  return drawn;
}

/** The line in the panel's plane; what can't be shown is missing. */
Points Plot::tranLine(const EarthPoints& points) {
  Points line(points.getNum());
  for (int i = 0; i < points.getNum(); i++) {
    EarthPoint e;
    Point p;
    points.get(i, e);
    tran(e, p);
    line.add(p);
  }
  return line;
}

int Plot::drawLine(const EarthPoints& points) {
  return drawLine(tranLine(points));
}

int Plot::drawSpline(const Points& points) {
  constexpr int steps_point = 4;
  if (!ColorMap::isColor(line_color)) {
    return 0;
  }
  const bool plane = graph.getTran() != 1;
  Points line = points;
  const int wrapped = plane ? 0 : panel().domain.wrapLine(line);
  const Spline spline(line);
  const float dist = spline.getDist();
  if (!(dist > 0.0F)) {
    return 0;
  }
  const int n = steps_point * points.getNum();
  Points curve(n + 1);
  for (int i = 0; i <= n; i++) {
    Point p;
    spline.getPoint(dist * static_cast<float>(i) / static_cast<float>(n), p);
    curve.add(p);
  }
  const auto draw_curve = [&]() {
    Points cropped = curve;
    if (!plane) {
      cropLine(cropped);
    }
    return drawStretches(cropped);
  };
  int drawn = draw_curve();
  if (wrapped != 0) {
    panel().domain.offsetLine(curve, wrapped);
    drawn |= draw_curve();
  }
  return drawn;
}

int Plot::drawSpline(const EarthPoints& points) {
  return drawSpline(tranLine(points));
}

int Plot::drawRect(const Rect& rect) {
  return drawRect(rect.xmin, rect.ymin, rect.xmax, rect.ymax);
}

int Plot::drawRect(float x1, float y1, float x2, float y2) {
  return ColorMap::isColor(line_color) ? graph.drawRect(x1, y1, x2, y2) : 0;
}

int Plot::drawCircle(const Point& centre, float r) {
  return ColorMap::isColor(line_color) ? graph.drawCircle(centre, r) : 0;
}

int Plot::drawCircle(const EarthPoint& centre, float km) {
  constexpr int steps = 72;
  constexpr float step = 5.0F;  // degrees
  Points circle(steps + 1);
  for (int i = 0; i <= steps; i++) {
    EarthPoint e;
    Point p;
    Domain::offsetLatLon(centre, static_cast<float>(i) * step, km, e);
    tran(e, p);
    circle.add(p);
  }
  return drawLine(circle);
}

int Plot::setLineColor(const char* name) {
  return setLineColor(colormap.getInd(name));
}

int Plot::setLineColor(int index) {
  line_color = index;
  return ColorMap::isColor(index) ? graph.setLineColor(allocColor(index)) : 0;
}

int Plot::setLine() {
  setLineColor("white");
  setLineStyle(1);
  setLineWidth(0.0F);
  setDropShadow(0);
  return 1;
}

int Plot::setLine(const PlotAttr& attr) {
  if (attr.validColorInd()) {
    setLineColor(attr.getColorInd());
  } else if (StrLib::valid(attr.getColor())) {
    setLineColor(attr.getColor());
  }
  if (attr.validStyle()) {
    setLineStyle(attr.getStyle());
  }
  if (attr.validWidth()) {
    setLineWidth(attr.getWidth());
  }
  setDropShadow(attr.validShadow() ? attr.getShadow() : 0);
  return 1;
}

int Plot::setLine(const char* text) {
  return setLine(PlotAttr(text));
}

// Fills.

int Plot::drawFill(const Points& points) {
  if (!ColorMap::isColor(fill_color)) {
    return 0;
  }
  if (!wraps() || !panel().domain.wraps(points)) {
    return graph.drawFill(points);
  }
  work.copy(points);
  const int wrapped = panel().domain.wrapLine(work);
  int drawn = graph.drawFill(work);
  if (wrapped != 0) {
    panel().domain.offsetLine(work, wrapped);
    drawn |= graph.drawFill(work);
  }
  return drawn;
}

int Plot::drawFill(const EarthPoints& points) {
  return drawFill(tranLine(points));
}

int Plot::drawFill(const Rect& rect) {
  return ColorMap::isColor(fill_color) ? graph.drawFill(rect) : 0;
}

int Plot::setFillColor(const char* name) {
  return setFillColor(colormap.getInd(name));
}

int Plot::setFillColor(int index) {
  fill_color = index;
  return ColorMap::isColor(index) ? graph.setFillColor(allocColor(index)) : 0;
}

int Plot::setFill() {
  setFillColor("white");
  setFillStyle(0);
  return 1;
}

int Plot::setFill(const PlotAttr& attr) {
  if (attr.validColorInd()) {
    setFillColor(attr.getColorInd());
  } else {
    setFillColor(attr.getColor());
  }
  if (attr.validFillPat()) {
    setFillStyle(attr.getFillPat());
  }
  return 1;
}

int Plot::setFill(const char* text) {
  return setFill(PlotAttr(text));
}

// Text.

int Plot::drawText(float x, float y, const char* text) {
  return ColorMap::isColor(text_color) ? graph.drawText(x, y, text) : 0;
}

int Plot::drawText(const Point& p, const char* text) {
  return drawText(p.x, p.y, text);
}

int Plot::drawText(const EarthPoint& e, const char* text) {
  EarthPoint place = e;
  Point p;
  return tran(place, p) != 0 && p.x != Const::FMISS ? drawText(p, text) : 0;
}

int Plot::drawText(const GridPoint& g, const char* text) {
  Point p;
  return tran(g, p) != 0 ? drawText(p, text) : 0;
}

int Plot::drawFormText(const Point& p, const char* format, ...) {
  char text[200];
  va_list args;
  va_start(args, format);
  std::vsnprintf(text, sizeof(text), format, args);
  va_end(args);
  return drawText(p, text);
}

int Plot::drawFormText(const EarthPoint& e, const char* format, ...) {
  char text[200];
  va_list args;
  va_start(args, format);
  std::vsnprintf(text, sizeof(text), format, args);
  va_end(args);
  return drawText(e, text);
}

int Plot::setTextColor(const char* name) {
  return setTextColor(colormap.getInd(name));
}

int Plot::setTextColor(int index) {
  text_color = index;
  return ColorMap::isColor(index) ? graph.setTextColor(allocColor(index)) : 0;
}

int Plot::setText() {
  setTextColor("white");
  setDropShadow(0);
  setTextHeight(0.01F);
  setTextWidth(0.0F);
  setTextCharWidth(0.0F);
  setTextAlign(0, 0);
  setTextExpansion(1.0F);
  setTextDirection(0.0F, 1.0F);
  setFont("modern.fnt");
  return 1;
}

int Plot::setText(const PlotAttr& attr) {
  return setText(attr, 1.0F);
}

int Plot::setText(const PlotAttr& attr, float size) {
  if (attr.validColorInd()) {
    setTextColor(attr.getColorInd());
  } else if (StrLib::valid(attr.getColor())) {
    setTextColor(attr.getColor());
  }
  if (attr.validWidth()) {
    setTextWidth(attr.getWidth());
  }
  if (attr.validHeight()) {
    setTextHeight(attr.getHeight() * size);
  }
  if (attr.validExpan()) {
    setTextExpansion(attr.getExpan());
  }
  if (attr.validShadow()) {
    setDropShadow(attr.getShadow());
  }
  if (attr.validFont()) {
    setFont(attr.getFont());
  }
  return 1;
}

int Plot::setText(const char* text) {
  return setText(PlotAttr(text));
}

// Marks and symbols.

int Plot::drawMark(float x, float y) {
  return ColorMap::isColor(mark_color) ? graph.drawMark(x, y) : 0;
}

int Plot::drawMark(const Point& p) {
  return drawMark(p.x, p.y);
}

int Plot::drawMark(const EarthPoint& e) {
  EarthPoint place = e;
  Point p;
  return tran(place, p) != 0 && p.x != Const::FMISS ? drawMark(p) : 0;
}

int Plot::drawMark(const GridPoint& g) {
  Point p;
  return tran(g, p) != 0 ? drawMark(p) : 0;
}

int Plot::setMarkColor(const char* name) {
  return setMarkColor(colormap.getInd(name));
}

int Plot::setMarkColor(int index) {
  mark_color = index;
  return ColorMap::isColor(index) ? graph.setMarkColor(allocColor(index)) : 0;
}

int Plot::setMarkType(const char* name) {
  return graph.setMarkType(PlotAttr::parseMarker(name));
}

int Plot::setMark() {
  setMarkColor("white");
  setDropShadow(0);
  setMarkSize(0.01F);
  setMarkWidth(0.0F);
  return 1;
}

int Plot::setMark(const PlotAttr& attr) {
  return setMark(attr, 1.0F);
}

int Plot::setMark(const PlotAttr& attr, float size) {
  if (attr.validColorInd()) {
    setMarkColor(attr.getColorInd());
  } else if (StrLib::valid(attr.getColor())) {
    setMarkColor(attr.getColor());
  }
  if (attr.validWidth()) {
    setMarkWidth(attr.getWidth());
  }
  if (attr.validHeight()) {
    setMarkSize(attr.getHeight() * size);
  }
  if (attr.validShadow()) {
    setDropShadow(attr.getShadow());
  }
  return 1;
}

int Plot::setMark(const char* text) {
  return setMark(PlotAttr(text));
}

int Plot::drawSymbol(const Point& p, const char* name, float size) {
  return ColorMap::isColor(line_color) ? graph.drawSymbol(p, name, size) : 0;
}

// Images.

int Plot::drawImage(Image& image) {
  const Rect window = graph.getWindow();
  Domain view;
  if (!image.getDomain().isSet() || getViewDomain(view) == 0 || !view.isSet()) {
    return graph.drawImage(image, window.xmin, window.ymax);
  }
  Image seen;
  return ImageMath::remap(image, view, seen) != 0 ? graph.drawImage(seen, window.xmin, window.ymax)
                                                  : 0;
}

int Plot::drawImage(Image& image, int mode) {
  const Rect window = graph.getWindow();
  Domain view;
  if (!image.getDomain().isSet() || getViewDomain(view) == 0 || !view.isSet()) {
    return graph.drawImage(image, mode, window.xmin, window.ymax);
  }
  Image seen;
  return ImageMath::remap(image, view, seen) != 0
             ? graph.drawImage(seen, mode, window.xmin, window.ymax)
             : 0;
}

int Plot::drawImage(const char* name, float x, float y) {
  ImageFile file;
  Image image;
  return file.read(name, image) > 0 ? graph.drawImage(image, x, y) : 0;
}

int Plot::drawImage(const char* name, float x, float y, const char* align) {
  constexpr struct {
    const char* name;
    int halign;
    int valign;
  } places[] = {{"ul", 1, 3}, {"uc", 2, 3}, {"ur", 3, 3}, {"cl", 1, 2}, {"cc", 2, 2},
                {"cr", 3, 2}, {"ll", 1, 1}, {"lc", 2, 1}, {"lr", 3, 1}};
  for (const auto& p : places) {
    if (StrLib::equal(align, p.name)) {
      setImageAlign(p.halign, p.valign);
    }
  }
  return drawImage(name, x, y);
}

int Plot::getImage(Image& image) {
  if (graph.getImage(image) == 0) {
    return 0;
  }
  if (full != 0) {
    // The picture is the panel's map section: the file says where it lies.
    Domain domain = panel().domain;
    domain.scaleSize(image.getWidth(), image.getHeight());
    image.setDomain(domain);
  }
  return 1;
}

int Plot::imageFailed(const char* path) {
  Zqv::outError("Plot: unable to write image file: %s\n", path);
  return 0;
}

void Plot::imageCreated(const char* path, bool gif) {
  constexpr int level = 4;
  // On standard output the message would land in the picture.
  if (!StrLib::equal(path, "-")) {
    Zqv::outMessage(level, gif ? "Created GIF file: %s\n" : "Created PNG file: %s\n", path);
  }
}

/** Files beside a picture that say where it lies: one map on it, and pixels to the device's unit.
 */
void Plot::writeWorld(const char* name) const {
  if (!world || num_panel > 1) {
    return;
  }
  constexpr float far = 1000.0F;  // pixels, for a size that isn't rounded
  WorldFile::Place place;
  const auto at = [this](float pixel, float& x, float& y) {
    float nx = 0;
    float ny = 0;
    return graph.tranPlotView(pixel, pixel, nx, ny) != 0 && panel().getWindow(nx, ny, x, y) != 0;
  };
  float x0 = 0;
  float y0 = 0;
  float x1 = 0;
  float y1 = 0;
  if (!at(0.0F, x0, y0) || !at(far, x1, y1)) {
    return;
  }
  place.x0 = x0;
  place.y0 = y0;
  place.dx = (static_cast<double>(x1) - x0) / far;
  place.dy = (static_cast<double>(y1) - y0) / far;
  WorldFile::write(name, panel().domain, place);
}

int Plot::saveImage(const char* name, const char* type) {
  Image image;
  return StrLib::valid(name) && getImage(image) != 0 ? saveImage(image, name, type) : 0;
}

int Plot::saveImage(Image& image, const char* name, const char* type) {
  if (!trans_color.empty()) {
    image.setTransColor(getColorValue(trans_color.c_str()));
  }
  const bool gif = StrLib::equal(type, "GIF");
  String path;
  FileTool::addOutPath(Zqv::getResrc("image_path"), name, path);
  ImageFile file;
  if (file.write(path.get(), gif ? ImageFile::GIF : ImageFile::PNG, image) <= 0) {
    return imageFailed(path.get());
  }
  imageCreated(path.get(), gif);
  writeWorld(path.get());
  return 1;
}

int Plot::saveImage(const char* name) {
  if (StrLib::equal(name, "gif", -3)) {
    return saveImage(name, "GIF");
  }
  return StrLib::equal(name, "png", -3) ? saveImage(name, "PNG") : 0;
}

// Labels, border and bar.

const char* Plot::textColor() {
  return Zqv::getResrc("color_text", graph.getInverse() ? "black" : "white");
}

int Plot::setLabelColor(const char* text) {
  color_label.copy(text != nullptr ? text : "");
  return 1;
}

int Plot::setLabelFormat(const char* text) {
  label_format = cut(text, max_text);
  return 1;
}

int Plot::storeLabel(const char* locate, const char* text, int at_layer) {
  constexpr size_t max_locate = 9;
  constexpr size_t max_format = 49;
  if (label.size() >= max_labels) {
    return 0;
  }
  label.push_back(
      {at_layer, cut(locate, max_locate), cut(text, max_text), label_format.substr(0, max_format)});
  return 1;
}

int Plot::addLabel(const char* locate, const char* text) {
  return storeLabel(locate, text, layer);
}

int Plot::setLabel(const char* locate, const char* text) {
  return storeLabel(locate, text, PlotLabel::FIXED);
}

void Plot::printLabels() const {
  for (const PlotLabel& l : label) {
    l.print();
  }
}

int Plot::getLabelPosIndex(const char* locate) {
  static constexpr const char* names[] = {"ul", "uc", "ur", "ll", "lc", "lr"};
  const auto* found = std::find_if(std::begin(names), std::end(names), [locate](const char* name) {
    return StrLib::equal(locate, name);
  });
  return found == std::end(names) ? 0 : static_cast<int>(found - std::begin(names));
}

int Plot::formatLabel(const char* format, String& out) const {
  std::string text;
  String part;
  for (const char* p = format; p != nullptr && *p != '\0'; p++) {
    if (*p == '_') {
      text += ' ';
      continue;
    }
    if (*p != '%') {
      text += *p;
      continue;
    }
    part.clear();
    switch (p[1]) {
      case 'D': DateTool::createLabel(date, tz, part); break;
      case 'V': DateTool::createLabel(date, tz, source.c_str(), fore_hour, part); break;
      case 'Y': part.printf("%2.2d", date.getYear()); break;
      case 'y': part.printf("%2.2d", date.getYear00()); break;
      case 'm': part.printf("%2.2d", date.getMonth()); break;
      case 'b': part.copy(DateTool::getMonth(date.getMonth())); break;
      case 'h': part.printf("%2.2d", date.getHour()); break;
      case 'd': part.printf("%2.2d", date.getDay()); break;
      case 'n': part.printf("%2.2d", date.getMinute()); break;
      case 'f':
        if (fore_hour != Const::FMISS) {
          part.printf("%d", Tools::cut(static_cast<double>(fore_hour)));
        }
        break;
      case 'F':
        if (fore_hour != Const::FMISS) {
          ForeTime(fore_hour).toTimeLabel(part);
        }
        break;
      case '%': part.copy("%"); break;
      default: text += '%'; continue;  // what follows is read as plain text
    }
    text += part.get();
    p++;
  }
  return out.copy(text.substr(0, max_text).c_str());
}

int Plot::clearLabels() {
  const int tran = graph.getTran();
  const Rect view = graph.getViewport();
  graph.activateTran(0);
  const Rect page = graph.getViewport();
  graph.clearRect(Rect(page.xmin, page.ymin, page.xmax, view.ymin));
  graph.clearRect(Rect(page.xmin, view.ymax, page.xmax, page.ymax));
  graph.activateTran(tran);
  label.clear();
  layer = 0;
  Zqv::outDebug("Plot labels cleared\n");
  return 1;
}

/** The labels that the resource "label" asks for. */
void Plot::addResourceLabels() {
  const Strings items(Zqv::getResrc("label"), ',');
  for (int i = 0; i < items.getNum(); i++) {
    if (items.getChar(i, 2) == ':') {
      setLabel(cut(items.getString(i), 2).c_str(), items.getString(i) + 3);
    } else {
      setLabel("ul", items.getString(i));
    }
  }
}

void Plot::drawLabel(const PlotLabel& l, int count, const Rect& view, float space, float step,
                     int base_layer, const PlotAttr& attr) {
  const int position = getLabelPosIndex(l.locate.c_str());
  if (!isDrawing(DRAW_TEXT + position) || (count < 0 && l.layer != PlotLabel::FIXED)) {
    return;
  }
  constexpr float inset = 0.01F;
  const int column = position % 3;
  const bool at_top = position < 3;
  const float width = view.getWidth();
  float x = view.xmin + width * inset;
  if (column == 1) {
    x = view.xmin + width * 0.5F;
  } else if (column == 2) {
    x = view.xmax - width * inset;
  }
  float y = at_top ? view.ymax : view.ymin;
  const bool hangs = at_top == (full == 2);  // from its line, into the picture or below it
  float height = space * label_height;
  if (count >= 0) {
    const int steps = at_top ? l.layer - base_layer : l.layer - layer + 1 + base_layer;
    y += static_cast<float>(steps) * step;
    height = step * label_height;
  }
  graph.setTextHeight(height);
  setText(attr, height);
  setText(PlotAttr(l.format.c_str()), height);
  graph.setTextAlign(column + 1, hangs ? Graph::VALIGN_TOP : Graph::VALIGN_BOTTOM);
  String text;
  formatLabel(l.string.c_str(), text);
  drawText(x, y, text.get());
}

int Plot::drawLabels() {
  const int tran = graph.getTran();
  const Rect view = graph.getViewport();
  graph.activateTran(0);
  const Rect page = graph.getViewport();
  constexpr float full_space = 0.06F;
  const float most = view.getHeight() * label_share;
  float space = page.ymax - view.ymax;
  if (space == 0.0F) {
    space = view.ymin - page.ymin;
  }
  if (full == 2) {
    space = full_space;
  }
  const float step = layer > 0 ? std::min(space / static_cast<float>(layer), most) : most;
  space = std::min(space, most);
  const int base_layer = full == 2 ? layer - 1 : 0;
  Zqv::outDebug(debug_level, "Plot labels P: %f X: %f Y: %f - %d %f\n", static_cast<double>(space),
                static_cast<double>(view.getWidth()), static_cast<double>(view.getHeight()), layer,
                static_cast<double>(step));
  setText();
  const PlotAttr attr(color_label.valid() ? color_label.get() : textColor());
  addResourceLabels();
  std::array<int, 6> count{};
  for (const PlotLabel& l : label) {
    int& c = count[static_cast<size_t>(getLabelPosIndex(l.locate.c_str()))];
    if (l.layer == PlotLabel::FIXED) {
      c = -1;
    } else if (c >= 0) {
      c++;
    }
  }
  for (const PlotLabel& l : label) {
    drawLabel(l, count[static_cast<size_t>(getLabelPosIndex(l.locate.c_str()))], view, space, step,
              base_layer, attr);
  }
  graph.activateTran(tran);
  if (bar != 0) {
    drawBar();
  }
  drawLogo();
  return 1;
}

/** Draws the image "[im:|if:]NAME:CORNER:X:Y" at a corner, moved by x and y, on the map or, with
 * "if:", on the page. */
void Plot::drawLogo() {
  constexpr int level = 8;
  if (!logo.contains(".gif") && !logo.contains(".png")) {
    return;
  }
  const bool on_page = StrLib::equal(logo.get(), "if:", 3);
  const bool prefixed = on_page || StrLib::equal(logo.get(), "im:", 3);
  const std::string_view text(logo.get() + (prefixed ? 3 : 0));
  const size_t end = std::min(text.find(':'), text.size());
  const std::string name(text.substr(0, end));
  const std::string place(text.substr(end));
  char corner[40] = "";
  float x = 0.0F;
  float y = 0.0F;
  if (std::sscanf(place.c_str(), ":%39[^:]:%12f:%12f", corner, &x, &y) < 1) {
    std::sscanf(place.c_str(), "::%12f:%12f", &x, &y);
  }
  String path;
  FileTool::addPath(Zqv::getResrc("image_path"), name.c_str(), path);
  message("Logo: %s", path.get());
  Zqv::outMessage(level, "Logo: %s", path.get());
  const int tran = graph.getTran();
  graph.activateTran(on_page ? 0 : 1);
  const Rect window = graph.getWindow();
  const bool lower_left = StrLib::equal(corner, "ll");
  setImageAlign(lower_left ? 1 : 3, 1);
  Image image;
  ImageFile file;
  if (file.readPlain(path.get(), image) > 0) {
    graph.drawImage(image, (lower_left ? window.xmin : window.xmax) + x, window.ymin + y);
  } else {
    Zqv::outWarning("Logo not found: %s\n", path.get());
  }
  setImageAlign(1, 3);
  graph.activateTran(tran);
}

int Plot::drawBorder() {
  if (!draw[DRAW_BORDER]) {
    return 0;
  }
  setLine();
  setLine(textColor());
  const int tran = graph.getTran();
  const Rect view = graph.getViewport();
  graph.activateTran(0);
  drawRect(view);
  graph.activateTran(tran);
  return 1;
}

int Plot::setBarLocate(const char* text) {
  bar = 1;
  return cbar.setLocate(text);
}

int Plot::setBarRange(const Range& range) {
  bar = 1;
  return cbar.setRange(range);
}

int Plot::setBar(const ColorFill& fill, const Range& range) {
  cbar.setRange(range);
  return setBar(fill);
}

int Plot::setBar(const ColorFill& fill) {
  bar = 1;
  return cbar.setFill(fill);
}

int Plot::setBar(const Enhance& table) {
  bar = 1;
  return cbar.setEnhance(table);
}

int Plot::drawBar() {
  return cbar.getType() == ColorBar::ENHANCE ? drawEnhBar() : drawBar(Range());
}

/** Where the bar lies on the page; only the corner "ll" has a layout. */
Rect Plot::barRect(const Rect& view) const {
  if (!StrLib::equal(cbar.getLocate(), "ll")) {
    return {0.0F, 0.0F, 0.0F, 0.0F};
  }
  constexpr float share = 0.05F;
  constexpr float gap = 0.15F;
  constexpr float inset = 0.03F;
  const Rect page = graph.getViewport();  // of the whole page, which is current now
  const float most = page.getHeight() * share;
  const float b = full == 2 ? most : std::min(view.ymin - page.ymin, most);
  const float xmin = view.xmin + view.getWidth() * inset;
  const float xmax = view.xmin + view.getWidth() * 0.5F;
  return full == 2 ? Rect(xmin, view.ymin + gap * b, xmax, view.ymin + b)
                   : Rect(xmin, view.ymin - b, xmax, view.ymin - gap * b);
}

/** Turns to the page and draws the name of the colours beside the bar's place. @return that place
 */
Rect Plot::startBar(const char* name) {
  const Rect view = graph.getViewport();
  graph.activateTran(0);
  const Rect rect = barRect(view);
  constexpr float text_share = 0.35F;
  constexpr float label_gap = 0.01F;
  setText();
  setTextHeight(rect.getHeight() * text_share);
  setText(PlotAttr(textColor()), rect.getHeight() * text_share);
  if (StrLib::valid(name)) {
    setTextAlign(Graph::HALIGN_LEFT, Graph::VALIGN_BASE);
    drawText(rect.xmax + label_gap, rect.ymin, name);
  }
  setTextAlign(Graph::HALIGN_CENTER, Graph::VALIGN_BASE);
  return rect;
}

/** Draws a frame around the boxes and turns back. */
void Plot::endBar(const Rect& boxes, int tran) {
  setLine(textColor());
  drawRect(boxes);
  graph.activateTran(tran);
}

int Plot::drawBar(const Range& asked) {
  const ColorFill& fill = cbar.getFill();
  const Range range = cbar.getRange().getRange() != Const::FMISS ? cbar.getRange() : asked;
  const bool has_range = range.getRange() != Const::FMISS;
  const bool has_interval = fill.getInterval() != Const::FMISS && fill.getInterval() != 0.0F;
  int n = fill.getNum();
  int first = 0;
  if (has_range && fill.areValuesSet()) {
    first = std::max(fill.getInd(range.min), 0);
    n = std::max(fill.getInd(range.max), 0) - first + 1;
  } else if (has_range && has_interval) {
    n = Tools::cut(static_cast<double>(range.getRange() / fill.getInterval()) + 0.01);
  }
  constexpr int most_boxes = 256;
  n = std::min(n, most_boxes);
  if (n < 1) {
    return 0;
  }
  const int tran = graph.getTran();
  const Rect rect = startBar(fill.getLabel());
  const float middle = rect.ymin + rect.getHeight() * 0.5F;
  const float width = rect.getWidth() / static_cast<float>(n);
  const int every = n / 16 + 1;
  String text;
  for (int i = 0; i < n; i++) {
    const auto step = static_cast<float>(i);
    float value = fill.getValue(first + i);
    if (value == Const::FMISS) {
      if (has_range && has_interval) {
        value = range.min + step * fill.getInterval();
      } else if (fill.getBase() != Const::FMISS && has_interval) {
        value = fill.getBase() + step * fill.getInterval();
      } else {
        value = step;
      }
    }
    const PlotAttr& attr = fill.get(value);
    setFill(attr);
    setLine(attr);
    const float x = rect.xmin + step * width;
    drawFill(Rect(x, middle, x + width, rect.ymax));
    if (i % every == 0) {
      Tools::toString(value, text);
      drawText(x, rect.ymin, text.get());
    }
  }
  endBar(Rect(rect.xmin, middle, rect.xmax, rect.ymax), tran);
  return 1;
}

int Plot::drawEnhBar() {
  constexpr int codes = 256;
  constexpr int decimals = 2;
  const Enhance& table = cbar.getEnhance();
  const int n = table.isValue() ? table.getNum() : codes;
  if (table.getNum() < 1) {
    return 0;
  }
  const int tran = graph.getTran();
  Rect boxes = startBar(table.getName());
  const float base = boxes.ymin;
  if (table.isValue()) {
    boxes.ymin += boxes.getHeight() * 0.5F;
  }
  const float width = boxes.getWidth() / static_cast<float>(n);
  const int every = n / 16 + 1;
  setFillStyle(0);
  String text;
  for (int i = 0; i < n; i++) {
    const auto step = static_cast<float>(i);
    setFillColor(table.isValue() ? table.getIndex(i) : table.getColor(step));
    const float x = boxes.xmin + step * width;
    drawFill(Rect(x, boxes.ymin, x + width, boxes.ymax));
    if (table.isValue() && i % every == 0) {
      Tools::toString(table.getValue(i), decimals, text);
      drawText(x, base, text.get());
    }
  }
  endBar(boxes, tran);
  return 1;
}

int Plot::setDrawing(const char* text) {
  if (!StrLib::valid(text)) {
    draw.set();
    return 1;
  }
  draw.reset();
  const Strings items(text, ',');
  if (items.getChar(0, 0) == '-') {
    draw.set();
  }
  for (int i = 0; i < items.getNum(); i++) {
    const char* name = items.getString(i);
    const bool on = *name != '-';
    if (*name == '-' || *name == '+') {
      name++;
    }
    if (StrLib::equal(name, "none")) {
      draw.reset();
    } else if (StrLib::equal(name, "all")) {
      draw.set();
    }
    for (const auto& s : switches) {
      if (StrLib::equal(name, s.name)) {
        for (int k = s.first; k <= s.last; k++) {
          draw[static_cast<size_t>(k)] = on;
        }
      }
    }
  }
  return 1;
}

bool Plot::isDrawing(int i) const {
  return i >= 0 && i <= LAST_SWITCH && draw[static_cast<size_t>(i)];
}

void Plot::printDrawing() const {
  for (int i = 0; i <= LAST_SWITCH; i++) {
    std::printf("draw[%d] = %d\n", i, isDrawing(i) ? 1 : 0);
  }
}

// Frames.

int Plot::clearFrame() {
  graph.clear();
  label.clear();
  layer = 0;
  return 1;
}

int Plot::newFrame() {
  // Of a loop that goes to an image file only the last frame is kept.
  const int done_well = output != 0 ? graph.clear() : graph.newFrame();
  label.clear();
  layer = 0;
  if (num_panel > 1) {
    initPanel();
  }
  return done_well;
}

int Plot::deleteAllFrames() {
  for (int i = graph.getNumFrames(); i > 0; i--) {
    graph.deleteFrame(0);
  }
  return 1;
}

int Plot::decodeGeometryStr(const char* text, GeomBox& box) {
  float w = Const::FMISS;
  float h = Const::FMISS;
  float x = Const::FMISS;
  float y = Const::FMISS;
  char x_sign[8] = "";
  char y_sign[8] = "";
  if (text == nullptr) {
    return 0;
  }
  const auto place = [&]() {
    box.x = *x_sign == '-' ? -x : x;
    box.y = *y_sign == '-' ? -y : y;
  };
  const int n = std::sscanf(text, "%fx%f%7[-+]%f%7[-+]%f", &w, &h, x_sign, &x, y_sign, &y);
  if (n == 6) {
    box.width = w;
    box.height = h;
    place();
    return 2;
  }
  if (n == 2) {
    box = GeomBox();
    box.width = w;
    box.height = h;
    return 1;
  }
  if (std::sscanf(text, "%7[-+]%f%7[-+]%f", x_sign, &x, y_sign, &y) == 4) {
    box = GeomBox();
    place();
    return 3;
  }
  return 0;
}

}  // namespace ZQV
