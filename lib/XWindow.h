#pragma once

#include <array>
#include <list>
#include <string>
#include <vector>

#include "ScreenDevice.h"
#include "XLib.h"

namespace ZQV {

class Timer;

/** Who is to hear of the events of a window. */
struct XCallbackItem {
  int type = 0;  ///< number of the X event, or one of XWindow::EventType
  Window window = 0;
  Listener* listener = nullptr;  ///< not owned; must outlive the window
  const void* data = nullptr;
};

/** The interactive device: draws on a pixmap, shows it in a window, keeps the frames of an
 * animation as pixmaps, and runs the loop that plays them and turns X events into texts for
 * listeners. Draws off screen, too, for images that are read back. The connection to the display is
 * shared by all windows of the process, as Xlib's error handlers are. */
class XWindow : public ScreenDevice {
 public:
  /** Beside the numbers of X events. */
  enum EventType { ANY_EVENT = 0, REDRAW_EVENT = 50, IDLE_EVENT = 999 };
  /** A window of its own, or the drawable of another program. */
  enum WindowType { OWN_WINDOW = 1, FOREIGN_WINDOW = 2 };

  XWindow() { XWindow::init(); }
  XWindow(const XWindow&) = delete;
  XWindow& operator=(const XWindow&) = delete;
  ~XWindow() override;

  static void initStatic();

  int init() override;
  /** Items: co=DISPLAY, wpDRAWABLE, show_num; a first item without "=" is the display, a second one
   * the drawable to use. @return 1 */
  int setParam(const char* params) override;
  /** @return 1; 0 with a message on standard error if there is no display or no window */
  int open() override;
  int close() override;
  /** A device text with which another program can draw into this window. */
  int getDevice(String& out) override;
  /** @param w  new width, with h; 0 takes over the window's size with an empty picture, -1 with
   * what was drawn. @return 1; 0 if nothing changed */
  int resize(float w, float h) override;
  /** Runs the loop until unmanage(). */
  int manage() override;
  int unmanage() override;
  /** @param type  "AnyEvent", "Expose" or "ButtonPress". @return 1; 0 for others */
  int addCallback(const char* type, Listener* listener, const void* client) override;
  int doCallback(const char* type, const char* data) override;
  void callback(const char* type, const char* data, const void* client) override;
  int update() override;
  int clearRect(const Rect& rect) override;
  int allocColor(float r, float g, float b) override;
  int setColor(int element, int value) override;
  int setLineWidth(int element, float w) override;
  int setLineStyle(int element, int style) override;
  int setFillStyle(int element, int style) override;
  int drawLine(int element, float x1, float y1, float x2, float y2) override;
  int drawLine(int element, const Points& points) override;
  int drawFill(int element, const Points& points) override;
  int getImage(Image& image) override;
  /** @return 1; -1 with a warning if the server hasn't got the font */
  int setFont(const char* font) override;
  int drawText(const Point& p, const char* text) override;
  /** @return the cursor before */
  int setCursor(int n) override;
  [[nodiscard]] int getCursor() const { return cursor; }
  int bell(int volume) override;
  /** Without effect. */
  static int setFocus() { return 1; }
  static int unsetFocus() { return 1; }
  [[nodiscard]] bool isMapped() const { return mapped; }

  // Events.

  /** The loop of the first window. */
  static int mainloop();
  /** Waits for an event and handles all there are. */
  static int waitEvent();
  /** Handles the events that there are. */
  static int checkEvent();
  /** Enters a window in the first free place. @return its place; -1 if there is none */
  static int addWindow(XWindow* window);
  static int processEvent(XEvent* event);
  static int procCallback(Window window, int type, const char* name, const char* data);
  static int newCallback(Window window, int type, Listener* listener, const void* data);
  static int deleteCallbacks(Window window);
  static int errorHandler(Display* d, XErrorEvent* event);
  static int errorIOHandler(Display* d);

  // Output for people.

  static int printGC(GC gc);
  static int printImage(const XImage& image);

 protected:
  unsigned long createPixmap() override;
  void freePixmap(unsigned long pixmap) override;
  void copyPixmap(unsigned long to, unsigned long from) override;
  void fillPixmap(unsigned long pixmap, int color) override;
  void applyClip() override;
  int paintImage(Image& image, const ImagePlace& place) override;
  void showTitle(const char* text) override;

 private:
  static constexpr int max_windows = 10;
  static constexpr int num_cursors = 9;
  /** Contexts by element, 0 for what is none. */
  static constexpr int num_gc = 5;

  int connectDisplay();
  int openWindow();
  int openForeign();
  void leave();
  int setHints();
  void waitForWindow();
  int openResources();
  [[nodiscard]] bool hasWindow() const;
  void setForeign(const char* text, bool with_window);
  GC gc(int element);
  GC createGC() const;
  static XWindow* firstWindow();
  static XWindow* findWindow(Window window);
  static void keyText(XKeyEvent& event, std::string& text);
  static void addModifiers(unsigned state, std::string& text);
  static void pointerText(Window window, std::string& text);
  static void exitHandler(Display* d, void* data);
  static void play(XWindow& w, Timer& timer);

  static Display* display;
  static bool managed;  ///< the loop runs as long as it is set
  static int num_errors;
  static int error;
  static int error_print;
  static int num_windows;
  static std::array<XWindow*, max_windows> windows;
  static std::list<XCallbackItem> callbackroot;
  static const XLib* xlib;

  int type = OWN_WINDOW;
  bool mapped = false;
  std::string connect;  ///< display name, at most 39 characters
  int window_num = -1;
  int screen = 0;
  Colormap color_map = 0;
  Window window = 0;
  Visual* visual = nullptr;
  int depth = 0;
  Pixmap icon_pixmap = 0;
  std::array<Cursor, num_cursors> cursors{};
  int cursor = 0;
  GC base_gc = nullptr;
  std::array<GC, num_gc> gcs{};
  std::array<Pixmap, NUM_FILL> fill_pat{};
  XFontStruct* font_info = nullptr;
  Atom protocols = 0;
  Atom delete_window = 0;
  std::vector<XPoint> points_buffer;
};

}  // namespace ZQV
