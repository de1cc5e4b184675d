#include "XWindow.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

#include <poll.h>

#include "Image.h"
#include "Point.h"
#include "Points.h"
#include "Rect.h"
#include "StrLib.h"
#include "String.h"
#include "Strings.h"
#include "Timer.h"
#include "Tools.h"
#include "Zqv.h"

namespace ZQV {

namespace {

enum CursorNumber { CURSOR_LOOP = 3, CURSOR_STOP = 4, CURSOR_RECT = 6 };

constexpr long EVENT_MASK = KeyPressMask | KeyReleaseMask | ButtonPressMask | ButtonReleaseMask |
                            EnterWindowMask | LeaveWindowMask | ButtonMotionMask | ExposureMask |
                            StructureNotifyMask | FocusChangeMask;
constexpr unsigned long ATTRIBUTE_MASK =
    CWBackPixel | CWBorderPixel | CWBackingStore | CWEventMask | CWColormap;
constexpr long APPEAR_MASK = StructureNotifyMask | ExposureMask;
constexpr float APPEAR_SECONDS = 5.0F;
constexpr unsigned BORDER_WIDTH = 5;
constexpr int MIN_SIZE = 10;
constexpr float TICK = 0.2F;  ///< seconds between looks at the events
constexpr size_t MAX_CONNECT = 39;
constexpr KeySym RETURN_KEY = 65293;
constexpr int ICON_SIZE = 48;
constexpr int BITMAP_PAD = 32;

/** Shapes in the cursor font, by cursor number. */
constexpr unsigned CURSOR_SHAPES[] = {0, 68, 52, 50, 38, 86, 130, 152, 150};

constexpr const char* EVENT_NAMES[] = {
    "Unknown",          "Unknown",         "KeyPress",         "KeyRelease",       "ButtonPress",
    "ButtonRelease",    "MotionNotify",    "EnterNotify",      "LeaveNotify",      "FocusIn",
    "FocusOut",         "KeymapNotify",    "Expose",           "GraphicsExpose",   "NoExpose",
    "VisibilityNotify", "CreateNotify",    "DestroyNotify",    "UnmapNotify",      "MapNotify",
    "MapRequest",       "ReparentNotify",  "Configure",        "ConfigureRequest", "GravityNotify",
    "ResizeRequest",    "CirculateNotify", "CirculateRequest", "PropertyNotify",   "SelectionClear",
    "SelectionRequest", "SelectionNotify", "ColormapNotify",   "ClientMessage",    "MappingNotify"};

using IconBits = std::array<char, size_t{ICON_SIZE} * ICON_SIZE / 8>;

/** The icon: a radar scope, with range rings, a sweep and an echo. */
constexpr IconBits makeIcon() {
  constexpr int centre = ICON_SIZE / 2;
  IconBits bits{};
  size_t at = 0;
  for (int row = 0; row < ICON_SIZE; row++) {
    for (int column = 0; column < ICON_SIZE; column++, at++) {
      const int dx = column - centre;
      const int dy = row - centre;
      const int r = dx * dx + dy * dy;
      const int ex = column - 33;
      const int ey = row - 17;
      const bool ring = (r > 480 && r < 530) || (r > 210 && r < 240) || (r > 50 && r < 66);
      const bool sweep = dx <= 0 && dy <= 0 && dx == dy && r < 500;
      const bool echo = ex * ex + 3 * ey * ey < 20;
      if (ring || sweep || echo) {
        bits[at / 8] = static_cast<char>(static_cast<unsigned char>(bits[at / 8]) | 1U << at % 8);
      }
    }
  }
  return bits;
}

constexpr IconBits zqv_bits = makeIcon();

const char* eventName(int type) {
  const bool known = type >= 0 && type < static_cast<int>(std::size(EVENT_NAMES));
  return EVENT_NAMES[known ? type : 0];
}

short pixel16(int v) {
  return static_cast<short>(v);
}

}  // namespace

Display* XWindow::display = nullptr;
bool XWindow::managed = false;
int XWindow::num_errors = 0;
int XWindow::error = 0;
int XWindow::error_print = 1;
int XWindow::num_windows = 0;
std::array<XWindow*, XWindow::max_windows> XWindow::windows{};
std::list<XCallbackItem> XWindow::callbackroot;
const XLib* XWindow::xlib = nullptr;

void XWindow::initStatic() {
  display = nullptr;
  managed = false;
  num_errors = error = num_windows = 0;
  error_print = 1;
  windows.fill(nullptr);
  callbackroot.clear();
}

XWindow::~XWindow() {
  XWindow::close();
}

int XWindow::init() {
  ScreenDevice::init();
  type = OWN_WINDOW;
  mapped = false;
  name = "ZQV";
  connect.clear();
  window_num = -1;
  cursor = 0;
  return 1;
}

// Parameters.

void XWindow::setForeign(const char* text, bool with_window) {
  type = FOREIGN_WINDOW;
  unsigned w = 0;
  unsigned long own = 0;
  unsigned long pixmap = 0;
  unsigned long colors = 0;
  unsigned h = 0;
  int n = 0;
  if (with_window) {
    n = std::sscanf(text, "%10lu:%10lu:%6ux%6u:%10lu", &own, &pixmap, &w, &h, &colors) - 1;
  } else if (text[0] == '0' && text[1] == 'x') {
    n = std::sscanf(text, "%10lx:%6ux%6u:%10lu", &pixmap, &w, &h, &colors);
  } else {
    n = std::sscanf(text, "%10lu:%6ux%6u:%10lu", &pixmap, &w, &h, &colors);
  }
  window = own;
  dwindow = pixmap;
  if (n >= 3) setSize(static_cast<float>(w), static_cast<float>(h));
  if (n >= 4) color_map = colors;
}

int XWindow::setParam(const char* params) {
  const Strings items(params, ',');
  for (int i = 0; i < items.getNum(); i++) {
    const char* item = items.getString(i);
    if (item == nullptr) continue;
    if (items.equal(i, "co=", 3)) {
      connect = std::string_view(item + 3).substr(0, MAX_CONNECT);
    } else if (items.equal(i, "wp", 2)) {
      const char* value = items.getLength(i) > 3 ? item + 3 : "";
      setForeign(value + (*value == '+' ? 1 : 0), *value == '+');
    } else if (items.equal(i, "show_num")) {
      show_win_num = 1;
    } else if (i == 0 && items.index(i, '=') < 0) {
      connect = std::string_view(item).substr(0, MAX_CONNECT);
    } else if (i == 1 && items.index(i, '=') < 0) {
      setForeign(item + (*item == '+' ? 1 : 0), *item == '+');
    }
  }
  return 1;
}

int XWindow::getDevice(String& out) {
  return out.copy(("d," + connect + ",+" + std::to_string(window) + ":" + std::to_string(drawing) +
                   ":" + std::to_string(width) + "x" + std::to_string(height) + "\n")
                      .c_str());
}

// Opening and closing.

int XWindow::connectDisplay() {
  if (display != nullptr) return 1;
  xlib = XLib::get();
  if (xlib != nullptr) {
    xlib->XSetErrorHandler(errorHandler);
    xlib->XSetIOErrorHandler(errorIOHandler);
    display = xlib->XOpenDisplay(connect.empty() ? nullptr : connect.c_str());
  }
  if (display == nullptr) {
    std::fprintf(stderr, "XWindow: unable to connect to display\n");
    return 0;
  }
  // Without it Xlib would end the process once the handler returns.
  xlib->XSetIOErrorExitHandler(display, exitHandler, nullptr);
  return 1;
}

int XWindow::open() {
  if (opened || connectDisplay() == 0) return 0;
  screen = DefaultScreen(display);
  depth = DefaultDepth(display, screen);
  visual = DefaultVisual(display, screen);
  if (type == OWN_WINDOW || color_map == 0) color_map = DefaultColormap(display, screen);
  fore_color = static_cast<int>(WhitePixel(display, screen));
  back_color = static_cast<int>(BlackPixel(display, screen));
  if (inverse) std::swap(fore_color, back_color);
  const int done = type == FOREIGN_WINDOW ? openForeign() : openWindow();
  if (done == 0 || openResources() == 0) {
    std::fprintf(stderr, "Window open: unable to open window\n");
    leave();
    return 0;
  }
  opened = true;
  if (type == OWN_WINDOW) newCallback(window, ANY_EVENT, this, nullptr);
  return 1;
}

/** Gives up the place among the windows, and the connection with the last one. */
void XWindow::leave() {
  if (window_num >= 0) {
    windows[static_cast<size_t>(window_num)] = nullptr;
    num_windows--;
  }
  window_num = -1;
  window = dwindow = drawing = 0;
  if (num_windows > 0) return;
  if (display != nullptr) xlib->XCloseDisplay(display);
  display = nullptr;
  managed = false;
}

int XWindow::openForeign() {
  if (dwindow == 0 || addWindow(this) < 0) return 0;
  drawing = dwindow;
  if (window == 0) {
    window = dwindow;
  } else {
    char* found = nullptr;
    if (xlib->XFetchName(display, window, &found) != 0 && found != nullptr) {
      const std::string_view text(found);
      title = text.substr(0, std::min(text.find(" ["), MAX_CONNECT));
      xlib->XFree(found);
    }
  }
  return display != nullptr ? 1 : 0;
}

int XWindow::openWindow() {
  Display* const d = display;
  if (x < 0) x += DisplayWidth(d, screen) - width;
  if (y < 0) y += DisplayHeight(d, screen) - height;
  XSetWindowAttributes attributes{};
  attributes.bit_gravity = NorthGravity;
  attributes.backing_store = Always;
  attributes.background_pixel = static_cast<unsigned long>(back_color);
  attributes.border_pixel = static_cast<unsigned long>(fore_color);
  attributes.event_mask = EVENT_MASK;
  attributes.colormap = color_map;
  if (addWindow(this) < 0) return 0;
  error_print = 0;
  error = 0;
  window = xlib->XCreateWindow(d, RootWindow(d, screen), x, y, static_cast<unsigned>(width),
                               static_cast<unsigned>(height), BORDER_WIDTH, depth, InputOutput,
                               visual, ATTRIBUTE_MASK, &attributes);
  if (display != nullptr) xlib->XSync(d, False);  // so that an error has arrived
  error_print = 1;
  if (display == nullptr || error != 0 || window == 0) return 0;
  std::replace(title.begin(), title.end(), '_', ' ');
  if (setHints() == 0) return 0;
  xlib->XMapWindow(d, window);
  xlib->XSync(d, False);
  waitForWindow();
  return display != nullptr ? 1 : 0;
}

/** @return 1; 0 if the server is lost */
int XWindow::setHints() {
  Display* const d = display;
  XSizeHints size{};
  size.flags = PPosition | PSize | PMinSize;
  size.x = x;
  size.y = y;
  size.width = width;
  size.height = height;
  size.min_width = size.min_height = MIN_SIZE;
  if (fixed != 0) {
    size.flags |= PMinSize | PMaxSize;
    size.min_width = size.max_width = width;
    size.min_height = size.max_height = height;
  }
  icon_pixmap = xlib->XCreateBitmapFromData(d, window, zqv_bits.data(), ICON_SIZE, ICON_SIZE);
  Zqv::outDebug("CrPix-icon: %d\n", static_cast<int>(icon_pixmap));
  xlib->XSetStandardProperties(d, window, title.c_str(), title.c_str(), icon_pixmap, nullptr, 0,
                               &size);
  xlib->XSetWMNormalHints(d, window, &size);
  XWMHints hints{};
  hints.flags = InputHint | StateHint | IconPixmapHint;
  hints.input = True;
  hints.initial_state = icon ? IconicState : NormalState;
  hints.icon_pixmap = icon_pixmap;
  xlib->XSetWMHints(d, window, &hints);
  char class_name[] = "Zqv";
  XClassHint hint{name.data(), class_name};
  xlib->XSetClassHint(d, window, &hint);
  if (display == nullptr) return 0;
  protocols = xlib->XInternAtom(d, "WM_PROTOCOLS", False);
  if (display == nullptr) return 0;
  delete_window = xlib->XInternAtom(d, "WM_DELETE_WINDOW", False);
  if (display == nullptr) return 0;
  xlib->XSetWMProtocols(d, window, &delete_window, 1);
  return display != nullptr ? 1 : 0;
}

/** Waits until the window appears; a display where it never does is given up. An icon is not waited
 * for. */
void XWindow::waitForWindow() {
  Timer timer;
  XEvent event;
  while (!icon && display != nullptr && timer.elapsed() < APPEAR_SECONDS) {
    if (xlib->XCheckWindowEvent(display, window, APPEAR_MASK, &event) != 0) {
      // The size that a window manager has given it is looked at when the loop begins.
      if (event.type == ConfigureNotify || event.type == ReparentNotify) continue;
      mapped = event.type == MapNotify || event.type == Expose;
      return;
    }
    constexpr float pause = 0.01F;
    timer.sleep(pause);
  }
}

/** Contexts, pixmap, clip, background, stipples, cursors and font. @return 1; 0 if the server is
 * lost
 */
int XWindow::openResources() {
  constexpr unsigned side = 8;
  Display* const d = display;
  base_gc = createGC();
  if (type == OWN_WINDOW) {
    dwindow = drawing = createPixmap();
    Zqv::outDebug("CrPix-draw: %d\n", static_cast<int>(dwindow));
    xlib->XClearWindow(d, window);
    fillPixmap(dwindow, back_color);
  }
  clip.x = clip.y = 0;
  clip.width = width;
  clip.height = height;
  if (background == "def") background.clear();
  bg_color = back_color;
  XColor color{};
  if (!background.empty() && xlib->XParseColor(d, color_map, background.c_str(), &color) != 0 &&
      display != nullptr) {
    xlib->XAllocColor(d, color_map, &color);
    bg_color = static_cast<int>(color.pixel);
  }
  if (display == nullptr) return 0;
  if (type == OWN_WINDOW) fillPixmap(dwindow, bg_color);
  Zqv::outDebug("CrBit-fill\n");
  for (size_t i = 0; i < fill_pat.size(); i++) {
    const auto& rows = stipple(static_cast<int>(i));
    fill_pat[i] = xlib->XCreateBitmapFromData(
        d, drawing, reinterpret_cast<const char*>(rows.data()), side, side);
  }
  for (size_t i = 0; i < cursors.size() && display != nullptr; i++) {
    cursors[i] = xlib->XCreateFontCursor(d, CURSOR_SHAPES[i]);
  }
  if (display == nullptr) return 0;
  for (const int element : {0, static_cast<int>(LINE), static_cast<int>(TEXT),
                            static_cast<int>(MARK), static_cast<int>(FILL)}) {
    gcs[static_cast<size_t>(element)] = createGC();
  }
  xlib->XSetLineAttributes(d, gcs[TEXT], 1, LineSolid, CapProjecting, JoinBevel);
  xlib->XSetFillStyle(d, gcs[FILL], FillSolid);
  opened = true;
  setFont("fixed");
  opened = false;
  return display != nullptr ? 1 : 0;
}

GC XWindow::createGC() const {
  XGCValues values{};
  values.foreground = static_cast<unsigned long>(fore_color);
  values.background = static_cast<unsigned long>(back_color);
  values.graphics_exposures = False;
  return xlib->XCreateGC(display, drawing != 0 ? drawing : window,
                         GCForeground | GCBackground | GCGraphicsExposures, &values);
}

int XWindow::close() {
  if (!opened) return 0;
  Display* const d = display;
  if (d != nullptr) {
    if (type == OWN_WINDOW) {
      for (int i = 0; i < num_frame; i++) {
        Zqv::outDebug("Deleting frame %d\n", i);
        freePixmap(frames[static_cast<size_t>(i)].pixmap);
      }
      xlib->XUnmapWindow(d, window);
      xlib->XDestroyWindow(d, window);
      Zqv::outDebug("FrPix-draw: %d\n", static_cast<int>(dwindow));
      xlib->XFreePixmap(d, dwindow);
      Zqv::outDebug("FrPix-icon: %d\n", static_cast<int>(icon_pixmap));
      xlib->XFreePixmap(d, icon_pixmap);
      xlib->XSync(d, False);
    }
    Zqv::outDebug("FrPix-fill\n");
    for (const Pixmap p : fill_pat) xlib->XFreePixmap(d, p);
    for (const Cursor c : cursors) xlib->XFreeCursor(d, c);
    for (GC context : gcs) xlib->XFreeGC(d, context);
    xlib->XFreeGC(d, base_gc);
    if (font_info != nullptr) xlib->XFreeFont(d, font_info);
  } else {
    // Without the server only what lies on this side.
    for (GC context : gcs) xlib->XFree(context);
    xlib->XFree(base_gc);
    if (font_info != nullptr) xlib->XFreeFontInfo(nullptr, font_info, 1);
  }
  frames.assign(static_cast<size_t>(max_frame), XFrame());
  num_frame = 0;
  font_info = nullptr;
  deleteCallbacks(window);
  leave();
  opened = mapped = false;
  return 1;
}

int XWindow::addWindow(XWindow* added) {
  for (size_t i = 0; i < windows.size(); i++) {
    if (windows[i] != nullptr) continue;
    windows[i] = added;
    added->window_num = static_cast<int>(i);
    num_windows++;
    return added->window_num;
  }
  return -1;
}

XWindow* XWindow::firstWindow() {
  const auto* found =
      std::find_if(windows.begin(), windows.end(), [](const XWindow* w) { return w != nullptr; });
  return found != windows.end() ? *found : nullptr;
}

XWindow* XWindow::findWindow(Window id) {
  const auto* found = std::find_if(windows.begin(), windows.end(), [id](const XWindow* w) {
    return w != nullptr && w->window == id;
  });
  return found != windows.end() ? *found : nullptr;
}

// Attributes.

GC XWindow::gc(int element) {
  return gcs[element >= LINE && element <= TEXT ? static_cast<size_t>(element) : 0];
}

int XWindow::allocColor(float r, float g, float b) {
  if (!opened || display == nullptr) return 0;
  if (r == -1.0F) return back_color;
  XColor color{};
  color.red = static_cast<unsigned short>(channel(r));
  color.green = static_cast<unsigned short>(channel(g));
  color.blue = static_cast<unsigned short>(channel(b));
  color.flags = DoRed | DoGreen | DoBlue;
  xlib->XAllocColor(display, color_map, &color);
  return static_cast<int>(color.pixel);
}

int XWindow::setColor(int element, int value) {
  if (!opened || display == nullptr) return 0;
  xlib->XSetForeground(display, gc(element), static_cast<unsigned long>(value));
  return 1;
}

int XWindow::setLineWidth(int element, float w) {
  if (!opened || display == nullptr) return 0;
  XGCValues values{};
  values.line_width = widthPixels(w);
  xlib->XChangeGC(display, gc(element), GCLineWidth, &values);
  return 1;
}

int XWindow::setLineStyle(int element, int style) {
  if (!opened || display == nullptr) return 0;
  const Dashes d = dashes(style);
  XGCValues values{};
  values.line_style = d.n > 0 ? LineOnOffDash : LineSolid;
  xlib->XChangeGC(display, gc(element), GCLineStyle, &values);
  if (d.n > 0 && display != nullptr)
    xlib->XSetDashes(display, gc(element), 0, reinterpret_cast<const char*>(d.list.data()), d.n);
  return 1;
}

int XWindow::setFillStyle(int element, int style) {
  if (!opened || display == nullptr) return 0;
  Display* const d = display;
  if (style == 0) {
    xlib->XSetFillStyle(d, gc(element), FillSolid);
    return 1;
  }
  const auto i = static_cast<size_t>(std::clamp(style, 0, NUM_FILL - 1));
  xlib->XSetStipple(d, gc(element), fill_pat[i]);
  xlib->XSetFillStyle(d, gc(element), FillStippled);
  return 1;
}

int XWindow::setFont(const char* font) {
  if (!opened || display == nullptr) return 0;
  Display* const d = display;
  const char* wanted = StrLib::valid(font, "");
  if (font_info != nullptr) xlib->XFreeFont(d, font_info);
  font_info = xlib->XLoadQueryFont(d, wanted);
  if (font_info == nullptr) {
    Zqv::outWarning("read_font: unable to load font: %s\n", wanted);
    return -1;
  }
  xlib->XSetFont(d, gcs[TEXT], font_info->fid);
  return 1;
}

int XWindow::setCursor(int n) {
  const int before = cursor;
  if (!hasWindow() || n < 0 || n >= num_cursors) {
    return before;
  }
  cursor = n;
  xlib->XDefineCursor(display, window, cursors[static_cast<size_t>(n)]);
  if (display != nullptr) xlib->XFlush(display);
  return before;
}

void XWindow::applyClip() {
  if (display == nullptr) return;
  Display* const d = display;
  XRectangle rect{pixel16(clip.x), pixel16(clip.y), static_cast<unsigned short>(clip.width),
                  static_cast<unsigned short>(clip.height)};
  for (GC context : gcs) xlib->XSetClipRectangles(d, context, 0, 0, &rect, 1, Unsorted);
  xlib->XSync(d, False);
}

int XWindow::bell(int volume) {
  constexpr int usual = 50;
  if (!opened || display == nullptr) return 0;
  xlib->XBell(display, volume != 0 ? std::clamp(volume, -100, 100) : usual);
  return 1;
}

void XWindow::showTitle(const char* text) {
  if (!hasWindow()) return;
  Display* const d = display;
  xlib->XStoreName(d, window, text);
  xlib->XSetIconName(d, window, text);
  xlib->XSync(d, False);
}

// Drawing.

int XWindow::drawLine(int element, float x1, float y1, float x2, float y2) {
  if (!opened || display == nullptr || drawing == 0) return 0;
  xlib->XDrawLine(display, drawing, gc(element), pixel(x1), pixel(y1), pixel(x2), pixel(y2));
  return 1;
}

int XWindow::drawLine(int element, const Points& points) {
  constexpr long header = 3;  // words of a request
  const int n = points.getNum();
  if (!opened || display == nullptr || drawing == 0 || n < 1) return 0;
  const float* px = points.xs();
  const float* py = points.ys();
  points_buffer.resize(static_cast<size_t>(n));
  for (size_t i = 0; i < points_buffer.size(); i++) {
    points_buffer[i] = {pixel16(pixel(px[i])), pixel16(pixel(py[i]))};
  }
  // Longer ones than fit a request go in pieces that share a point.
  Display* const d = display;
  const int most = static_cast<int>(xlib->XMaxRequestSize(d) - header);
  for (int start = 0; start == 0 || start < n - 1; start += most - 1) {
    xlib->XDrawLines(d, drawing, gc(element), &points_buffer[static_cast<size_t>(start)],
                     std::min(most, n - start), CoordModeOrigin);
  }
  return 1;
}

int XWindow::drawFill(int element, const Points& points) {
  constexpr long header = 5;
  const int n = points.getNum();
  if (!opened || display == nullptr || drawing == 0 || n < 1) return 0;
  Display* const d = display;
  const long usual = xlib->XMaxRequestSize(d);
  if (n > usual - header && n > xlib->XExtendedMaxRequestSize(d) - header) return 0;
  const float* px = points.xs();
  const float* py = points.ys();
  points_buffer.resize(static_cast<size_t>(n));
  for (size_t i = 0; i < points_buffer.size(); i++) {
    points_buffer[i] = {pixel16(pixel(px[i])), pixel16(pixel(py[i]))};
  }
  xlib->XFillPolygon(d, drawing, gc(element), points_buffer.data(), n, Nonconvex, CoordModeOrigin);
  return 1;
}

int XWindow::drawText(const Point& p, const char* text) {
  if (!opened || display == nullptr || drawing == 0 || !StrLib::valid(text)) return 0;
  const int n = StrLib::length(text);
  int dx = 0;
  int dy = 0;
  if (font_info != nullptr) {
    const int w = xlib->XTextWidth(font_info, text, n);
    if (text_halign == 2) dx = -w / 2;
    if (text_halign == 3) dx = -w;
    if (text_valign == 1) dy = font_info->ascent;
    if (text_valign == 2) dy = font_info->ascent / 2;
    if (text_valign == 3) dy = -font_info->descent;
  }
  xlib->XDrawString(display, drawing, gcs[TEXT], pixel(p.x) + dx, pixel(p.y) + dy, text, n);
  return 1;
}

int XWindow::clearRect(const Rect& rect) {
  if (!opened || display == nullptr || drawing == 0) return 0;
  const int x1 = pixel(std::min(rect.xmin, rect.xmax));
  const int x2 = pixel(std::max(rect.xmin, rect.xmax));
  const int y1 = pixel(std::min(rect.ymin, rect.ymax));
  const int y2 = pixel(std::max(rect.ymin, rect.ymax));
  Display* const d = display;
  xlib->XSetForeground(d, base_gc, static_cast<unsigned long>(bg_color));
  xlib->XFillRectangle(d, drawing, base_gc, x1, y1, static_cast<unsigned>(x2 - x1),
                       static_cast<unsigned>(y2 - y1));
  return 1;
}

/** There is a window that shows the pixmap; it may be that of another program. */
bool XWindow::hasWindow() const {
  return opened && display != nullptr && window != dwindow;
}

int XWindow::update() {
  if (!hasWindow()) return 0;
  Display* const d = display;
  xlib->XCopyArea(d, dwindow, window, base_gc, 0, 0, static_cast<unsigned>(width),
                  static_cast<unsigned>(height), 0, 0);
  xlib->XSync(d, False);
  return 1;
}

// Pixmaps.

unsigned long XWindow::createPixmap() {
  if (display == nullptr) return 0;
  return xlib->XCreatePixmap(display, window, static_cast<unsigned>(width),
                             static_cast<unsigned>(height), static_cast<unsigned>(depth));
}

void XWindow::freePixmap(unsigned long pixmap) {
  if (display != nullptr && pixmap != 0) xlib->XFreePixmap(display, pixmap);
}

void XWindow::copyPixmap(unsigned long to, unsigned long from) {
  if (display == nullptr) return;
  xlib->XCopyArea(display, from, to, base_gc, 0, 0, static_cast<unsigned>(width),
                  static_cast<unsigned>(height), 0, 0);
}

void XWindow::fillPixmap(unsigned long pixmap, int color) {
  if (display == nullptr || pixmap == 0) return;
  Display* const d = display;
  xlib->XSetForeground(d, base_gc, static_cast<unsigned long>(color));
  xlib->XFillRectangle(d, pixmap, base_gc, 0, 0, static_cast<unsigned>(width),
                       static_cast<unsigned>(height));
}

int XWindow::resize(float w, float h) {
  if (!opened || display == nullptr || type != OWN_WINDOW) return 0;
  Display* const d = display;
  const int old_width = width;
  const int old_height = height;
  bool keep = true;
  if (w > 0.0F) {
    setSize(w, h);
    xlib->XClearWindow(d, window);
    xlib->XResizeWindow(d, window, static_cast<unsigned>(width), static_cast<unsigned>(height));
  } else {
    XWindowAttributes attributes{};
    if (xlib->XGetWindowAttributes(d, window, &attributes) == 0) return 0;
    if (attributes.width == width && attributes.height == height) return 0;
    keep = w == -1.0F;
    width = std::max(attributes.width, 1);
    height = std::max(attributes.height, 1);
  }
  if (!keep) return 1;
  const unsigned long grown = createPixmap();
  fillPixmap(grown, bg_color);
  xlib->XCopyArea(d, dwindow, grown, base_gc, 0, 0, static_cast<unsigned>(old_width),
                  static_cast<unsigned>(old_height), 0, 0);
  xlib->XFreePixmap(d, dwindow);
  if (drawing == dwindow) drawing = grown;
  dwindow = grown;
  return 1;
}

// Images.

int XWindow::paintImage(Image& image, const ImagePlace& place) {
  if (display == nullptr) return 0;
  Display* const d = display;
  // No more of it than the clip is large is sent.
  const int w = std::min(image.getWidth(), clip.width);
  const int h = std::min(image.getHeight(), clip.height);
  if (w < 1 || h < 1) return 0;
  XImage* picture =
      xlib->XCreateImage(d, visual, static_cast<unsigned>(depth), ZPixmap, 0, nullptr,
                         static_cast<unsigned>(w), static_cast<unsigned>(h), BITMAP_PAD, 0);
  if (picture == nullptr) return 0;
  std::vector<char> store(static_cast<size_t>(picture->bytes_per_line) * static_cast<size_t>(h));
  picture->data = store.data();
  if (image.getColorType() == Image::TRUE_COLOR) {
    picture->red_mask = image.getRedMask();
    picture->green_mask = image.getGrnMask();
    picture->blue_mask = image.getBluMask();
  }
  const size_t mask_line = (static_cast<size_t>(w) + 7) / 8;
  std::vector<char> mask(place.masked ? mask_line * static_cast<size_t>(h) : 0);
  for (int j = 0; j < h; j++) {
    char* const mask_row = mask.data() + static_cast<size_t>(j) * mask_line;
    for (int i = 0; i < w; i++) {
      const int v = image.getPixel(i, j);
      XPutPixel(picture, i, j, static_cast<unsigned long>(v));
      if (!place.masked) continue;
      const bool shown = place.by_value ? v != place.trans : !image.isPixelTrans(i, j);
      const auto column = static_cast<unsigned>(i);
      if (shown) {
        mask_row[column / 8] =
            static_cast<char>(static_cast<unsigned char>(mask_row[column / 8]) | 1U << column % 8);
      }
    }
  }
  Pixmap bitmap = 0;
  if (place.masked) {
    bitmap = xlib->XCreateBitmapFromData(d, drawing, mask.data(), static_cast<unsigned>(w),
                                         static_cast<unsigned>(h));
    xlib->XSetClipOrigin(d, gcs[0], place.x, place.y);
    xlib->XSetClipMask(d, gcs[0], bitmap);
  }
  xlib->XPutImage(d, drawing, gcs[0], picture, 0, 0, place.x, place.y, static_cast<unsigned>(w),
                  static_cast<unsigned>(h));
  if (place.masked) {
    XRectangle rect{pixel16(clip.x), pixel16(clip.y), static_cast<unsigned short>(clip.width),
                    static_cast<unsigned short>(clip.height)};
    xlib->XSetClipMask(d, gcs[0], 0);
    xlib->XSetClipRectangles(d, gcs[0], 0, 0, &rect, 1, Unsorted);
    xlib->XFreePixmap(d, bitmap);
  }
  picture->data = nullptr;
  XDestroyImage(picture);
  xlib->XSync(d, False);
  return 1;
}

int XWindow::getImage(Image& image) {
  constexpr long most = 32L << 20;
  image.init();
  if (!opened || display == nullptr || drawing == 0) return 0;
  if (static_cast<long>(width) * height > most) return 0;
  Zqv::outDebug("getImg\n");
  XImage* picture = xlib->XGetImage(display, drawing, 0, 0, static_cast<unsigned>(width),
                                    static_cast<unsigned>(height), AllPlanes, ZPixmap);
  if (picture == nullptr) return 0;
  image.setWidth(picture->width);
  image.setHeight(picture->height);
  image.setDepth(picture->depth);
  image.setBitsPixel(picture->bits_per_pixel);
  image.setBytesLine(picture->bytes_per_line);
  image.setColorType(Image::TRUE_COLOR);
  image.setByteOrder(picture->byte_order == MSBFirst ? 1 : 0);
  image.setMask(static_cast<uint32_t>(visual->red_mask), static_cast<uint32_t>(visual->green_mask),
                static_cast<uint32_t>(visual->blue_mask));
  const bool room = image.allocData() != 0 && image.validData();
  for (int j = 0; room && j < height; j++) {
    for (int i = 0; i < width; i++) {
      image.setPixel(i, j, static_cast<int>(XGetPixel(picture, i, j)));
    }
  }
  Zqv::outDebug("destImg\n");
  XDestroyImage(picture);
  return room ? 1 : 0;
}

// Events.

void XWindow::addModifiers(unsigned state, std::string& text) {
  if ((state & Mod1Mask) != 0) text += "-Alt";
  if ((state & ShiftMask) != 0) text += "-Shft";
  if ((state & ControlMask) != 0) text += "-Cntrl";
}

/** Appends ":x:y" of the pointer. */
void XWindow::pointerText(Window id, std::string& text) {
  Window root = 0;
  Window child = 0;
  int root_x = 0;
  int root_y = 0;
  int px = 0;
  int py = 0;
  unsigned state = 0;
  if (display != nullptr) {
    xlib->XQueryPointer(display, id, &root, &child, &root_x, &root_y, &px, &py, &state);
  }
  text += ":" + std::to_string(px) + ":" + std::to_string(py);
}

void XWindow::keyText(XKeyEvent& event, std::string& text) {
  char buffer[40] = "";
  KeySym key = 0;
  const int n = xlib->XLookupString(&event, buffer, sizeof(buffer) - 1, &key, nullptr);
  text.assign(buffer, static_cast<size_t>(std::max(n, 0)));
  if (key == RETURN_KEY) text = "Ret";
  addModifiers(event.state, text);
}

int XWindow::processEvent(XEvent* event) {
  constexpr int detail = 5;
  const Window id = event->xany.window;
  const int type = event->type;
  const char* name = eventName(type);
  std::string data;
  switch (type) {
    case KeyPress:
      keyText(event->xkey, data);
      pointerText(id, data);
      break;
    case ButtonPress:
    case ButtonRelease:
      data = "B" + std::to_string(event->xbutton.button) + (type == ButtonPress ? "-P" : "-R");
      addModifiers(event->xbutton.state, data);
      if (type == ButtonPress) pointerText(id, data);
      break;
    case Expose:
    case ConfigureNotify:
      // One redraw serves all that are waiting.
      while (display != nullptr && xlib->XCheckTypedEvent(display, type, event) != 0) {
      }
      if (type == ConfigureNotify) {
        data = std::to_string(event->xconfigure.width) + ":" +
               std::to_string(event->xconfigure.height);
      }
      break;
    default: break;
  }
  Zqv::outDebug(detail, "Event: %s - %s\n", name, data.c_str());
  procCallback(id, type, name, data.c_str());
  const XWindow* w = findWindow(id);
  if (type == ClientMessage && w != nullptr && event->xclient.format == 32 &&
      event->xclient.message_type == w->protocols &&
      static_cast<Atom>(event->xclient.data.l[0]) == w->delete_window) {
    procCallback(id, KeyPress, eventName(KeyPress), "Ret:0:0");
  }
  return 1;
}

int XWindow::procCallback(Window id, int type, const char* name, const char* data) {
  for (const XCallbackItem& item : callbackroot) {
    if (item.window != id || (item.type != ANY_EVENT && item.type != type)) continue;
    item.listener->callback(name, data, item.data);
    if (findWindow(id) == nullptr) break;  // closed in the callback, and its items with it
  }
  return 1;
}

int XWindow::newCallback(Window id, int type, Listener* listener, const void* data) {
  if (listener == nullptr) return 0;
  // Whoever asks again, as with each frame, isn't told twice.
  const auto same = [&](const XCallbackItem& item) {
    return item.window == id && item.type == type && item.listener == listener && item.data == data;
  };
  if (std::none_of(callbackroot.begin(), callbackroot.end(), same)) {
    callbackroot.push_back({type, id, listener, data});
  }
  return 1;
}

int XWindow::deleteCallbacks(Window id) {
  callbackroot.remove_if([id](const XCallbackItem& item) { return item.window == id; });
  return 1;
}

int XWindow::addCallback(const char* event, Listener* listener, const void* client) {
  if (!opened || type == FOREIGN_WINDOW) return 0;
  if (StrLib::equal(event, "AnyEvent")) return newCallback(window, ANY_EVENT, listener, client);
  if (StrLib::equal(event, "Expose")) return newCallback(window, Expose, listener, client);
  if (StrLib::equal(event, "ButtonPress"))
    return newCallback(window, ButtonPress, listener, client);
  return 0;
}

int XWindow::doCallback(const char* event, const char* data) {
  if (!opened) return 0;
  const Window id = window;
  for (const XCallbackItem& item : callbackroot) {
    if (item.window != id) continue;
    item.listener->callback(event, data, item.data);
    if (findWindow(id) == nullptr) break;
  }
  return 1;
}

void XWindow::callback(const char* event, const char* data, const void* /*client*/) {
  const bool key = StrLib::equal(event, "KeyPress");
  const bool button = StrLib::equal(event, "ButtonPress");
  const auto begins = [data](const char* text) {
    return StrLib::equal(data, text, StrLib::length(text));
  };
  if (StrLib::equal(event, "Expose")) {
    update();
  } else if (StrLib::equal(event, "MapNotify")) {
    mapped = true;
  } else if (StrLib::equal(event, "UnmapNotify")) {
    mapped = false;
  } else if (StrLib::equal(event, "Configure")) {
    if (resize(-1.0F, -1.0F) != 0) {
      const std::string size = std::to_string(width) + ":" + std::to_string(height);
      procCallback(window, REDRAW_EVENT, "Redraw", size.c_str());
    }
    update();
  } else if ((button && begins("B1-P")) || (key && begins("[-Alt"))) {
    if (looping != 0) {
      loopRate(-1);
    } else {
      incFrame(-1);
    }
  } else if ((button && begins("B3-P")) || (key && begins("]-Alt"))) {
    if (looping != 0) {
      loopRate(1);
    } else {
      incFrame(1);
    }
  } else if ((button && begins("B2-P")) || (key && begins("l-Alt"))) {
    toggleLoop();
  } else if (key && begins("d-Alt")) {
    deleteFrame(cur_frame);
  }
}

int XWindow::checkEvent() {
  XEvent event;
  while (display != nullptr && xlib->XPending(display) > 0 && display != nullptr) {
    xlib->XNextEvent(display, &event);
    processEvent(&event);
  }
  return 1;
}

int XWindow::waitEvent() {
  if (display == nullptr) return 0;
  if (xlib->XPending(display) == 0 && display != nullptr) {
    pollfd connection{ConnectionNumber(display), POLLIN, 0};
    poll(&connection, 1, -1);
  }
  return checkEvent();
}

// The loop.

int XWindow::manage() {
  if (!opened || display == nullptr || type == FOREIGN_WINDOW) return 0;
  managed = true;
  return mainloop();
}

int XWindow::unmanage() {
  managed = false;
  return 1;
}

/** Waits for the time of the frame shown, then shows the next one. */
void XWindow::play(XWindow& w, Timer& timer) {
  w.setCursor(CURSOR_LOOP);
  const Window id = w.window;
  while (managed && findWindow(id) != nullptr && w.looping != 0) {
    // The rate may change while a frame is shown, and somebody may set the clock.
    const float t = w.cur_frame == w.num_frame - 1 ? w.end_delay : w.delay;
    if (timer.elapsed() < 0.0F) timer.init();
    const float rest = t - timer.elapsed();
    if (rest <= 0.0F) break;
    timer.sleep(std::min(rest, TICK));
    if (rest > TICK) checkEvent();
  }
  if (findWindow(id) != nullptr && w.looping != 0 && w.mapped) w.incFrame(0);
  timer.init();
  checkEvent();
}

int XWindow::mainloop() {
  XWindow* first = firstWindow();
  if (first == nullptr) return 0;
  if (first->num_frame > 1) first->looping = 1;
  // A window manager may have given it another size than was asked for.
  first->callback(eventName(ConfigureNotify), nullptr, nullptr);
  Timer timer;
  first = firstWindow();
  while (managed && first != nullptr) {
    if (first->num_frame >= 2 && first->looping != 0) {
      play(*first, timer);
    } else {
      // Frames drawn while nothing plays: the newest shows.
      if (first->num_frame > 0 && first->cur_frame < 0) first->displayFrame(first->num_frame - 1);
      first->setCursor(first->num_frame < 2 ? CURSOR_RECT : CURSOR_STOP);
      checkEvent();
      if (managed) timer.sleep(TICK);
    }
    first = firstWindow();
    std::fflush(stdout);  // whoever reads the messages wants them now, not at the end
    if (managed && first != nullptr) {
      procCallback(first->window, IDLE_EVENT, "Idle", nullptr);
      first = firstWindow();
    }
  }
  return 1;
}

// Errors.

int XWindow::errorHandler(Display* d, XErrorEvent* event) {
  error = event->error_code;
  num_errors++;
  if (error_print != 0) {
    char text[100] = "";
    char request[100] = "";
    xlib->XGetErrorText(d, event->error_code, text, sizeof(text));
    const std::string number = std::to_string(event->request_code);
    xlib->XGetErrorDatabaseText(d, "XRequest", number.c_str(), "", request, sizeof(request));
    std::fprintf(stderr, "X11 error: %s in %s\n", text, request);
  }
  return 0;
}

int XWindow::errorIOHandler(Display* /*d*/) {
  std::fprintf(stderr, "X11 Disconnected\n");
  managed = false;
  return 0;
}

/** The connection is gone: nothing may use it from here on. */
void XWindow::exitHandler(Display* d, void* /*data*/) {
  static Display* lost = nullptr;  // Xlib can't free it any more
  lost = d;
  (void)lost;
  display = nullptr;
  managed = false;
}

// Output for people.

int XWindow::printGC(GC context) {
  if (display == nullptr || context == nullptr) return 0;
  XGCValues values{};
  xlib->XGetGCValues(display, context,
                     GCFunction | GCForeground | GCBackground | GCLineWidth | GCLineStyle |
                         GCCapStyle | GCJoinStyle | GCFillStyle,
                     &values);
  std::printf("Function: %d Foreground: %lu Background: %lu\n", values.function, values.foreground,
              values.background);
  std::printf("Line: %d %d %d %d Fill: %d\n", values.line_width, values.line_style,
              values.cap_style, values.join_style, values.fill_style);
  return 1;
}

int XWindow::printImage(const XImage& image) {
  std::printf("Size: %dx%d Depth: %d Bits: %d Line: %d Order: %d\n", image.width, image.height,
              image.depth, image.bits_per_pixel, image.bytes_per_line, image.byte_order);
  std::printf("Masks: %lx %lx %lx\n", image.red_mask, image.green_mask, image.blue_mask);
  return 1;
}

}  // namespace ZQV
