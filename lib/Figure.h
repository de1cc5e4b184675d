#pragma once

#include <ctime>
#include <deque>

#include "Date.h"
#include "Domain.h"
#include "Listener.h"
#include "Plot.h"
#include "String.h"

namespace ZQV {

class Drawing;

/** One entry of a Figure's queue. */
struct PlotItem {
  enum Type { DRAWING = 1 };
  int panel = 0;
  int type = DRAWING;
  Drawing* drawing = nullptr;  ///< not owned
};

/** One plot run: owns a Plot, keeps a queue of drawings, decides how many frames to draw and at
 * what times, and reacts to what the device reports. All that it learns of the data comes through
 * Drawing. */
class Figure : public Listener {
 public:
  Figure() { init(); }
  explicit Figure(const char* params);
  Figure(const Figure&) = delete;
  Figure& operator=(const Figure&) = delete;
  ~Figure() override;

  int init();
  /** Comma-separated items: fi=FILE, ref[=SECONDS], nf=FRAMES, nobord, linc=MINUTES. @return 1 */
  int setParam(const char* text);
  /** @return 1; 0 if the device can't be opened */
  int open() {
    loop_frames = -1;
    return open("");
  }
  int open(const char* params);
  int close();

  int setDomain(const Domain& domain);
  /** Sets the panel up; a domain is kept for the unzoom key. */
  int startPlot(const Domain& domain);
  int startPlot(const Rect& rect, const Domain& domain);
  int startPlot(const Rect& rect, float aspect) { return plot.setPanel(rect, aspect); }
  int startPlot(const Rect& rect) { return plot.setPanel(rect); }
  int startPlot() { return plot.setPanel(); }
  /** The drawing must outlive the Figure. @return 1 */
  int addDrawing(Drawing& drawing);
  int clearQueue();

  /** Forecast times: "first-last/step", or a list. @return 1; 0 for an absent text */
  int setForeTime(const char* text);
  int setDate(const Date& date);
  /** @param inc     seconds between frames; a negative one makes the date that of the first frame
   *  @param frames  number of frames */
  int setDate(const Date& date, int inc, int frames);
  void setLoopType(int type) { loop_type = type; }
  void setRefresh(int seconds) { refresh = seconds; }
  int setDrawing(const char* text) { return plot.setDrawing(text); }
  [[nodiscard]] bool isDrawing(int i) const { return plot.isDrawing(i); }
  [[nodiscard]] int getNumFrames() const { return num_frames; }

  /** Fixes the time base and draws all frames. @return 1 */
  int endPlot();
  /** Draws all frames. @return 1 */
  int drawPlot();
  /** Draws everything anew. @return 1 */
  int draw();
  int draw(Drawing& drawing);
  int drawFrame(Date& date);
  int drawFrame(const char* time);
  /** The oldest frame goes and one for the date comes. @return 1 */
  int updateLoop(Date& date);
  /** Hands over to the device until it has finished. */
  int manage();
  void callback(const char* name, const char* data, const void* source) override;

 private:
  static constexpr int max_frames = 128;
  void readCurrent(const char* text);
  void setTimeBase(Drawing& drawing);
  [[nodiscard]] Drawing* firstLooping() const;
  bool isNewFrame(Date& date);
  void finishFrame();
  void refreshNow();
  void moveView(const char* what, const char* name, const char* data, int start, float factor);

  Plot plot;
  std::deque<PlotItem> plot_queue;
  String file;
  String ftime;
  Date bdate;  ///< date of the last frame
  Date ldate;  ///< date of the data drawn last
  Domain bdomain;
  int loop_frames = -1;
  int num_frames = -1;
  int num_plot = 0;
  int loop_type = 1;
  int loop_inc = -1;
  int redraw = 0;
  int border = 1;
  int num_redraw = 0;
  int refresh = 0;
  std::time_t rtime = 0;
};

}  // namespace ZQV
