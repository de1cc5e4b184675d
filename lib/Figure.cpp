#include "Figure.h"

#include <algorithm>
#include <cstdio>

#include "Drawing.h"
#include "Progress.h"
#include "StrLib.h"
#include "Strings.h"
#include "Tools.h"
#include "Zqv.h"

namespace ZQV {

namespace {

enum LoopType { OVER_DATES = 1, OVER_FORECASTS = 2 };
enum Cursor { NORMAL_CURSOR = 6, BUSY_CURSOR = 8 };

constexpr int default_inc = 3600;
constexpr int message_level = 6;
constexpr int loop_level = 8;

}  // namespace

Figure::Figure(const char* params) {
  init();
  setParam(params);
  open(params);
}

Figure::~Figure() {
  plot_queue.clear();
  close();
}

int Figure::init() {
  file.clear();
  bdate.init();
  ldate.init();
  loop_frames = -1;
  num_frames = -1;
  num_plot = 0;
  loop_type = OVER_DATES;
  loop_inc = -1;
  redraw = 0;
  border = 1;
  num_redraw = 0;
  refresh = 0;
  if (Zqv::getResrc("time") != nullptr) {
    setForeTime(Zqv::getResrc("time"));
  }
  return setParam(Zqv::getResrc("parameter"));
}

int Figure::setParam(const char* text) {
  constexpr int minute = 60;
  constexpr int max_minutes = 10000000;
  const Strings items(text, ',');
  for (int i = 0; i < items.getNum(); i++) {
    if (items.equal(i, "fi", 2)) {
      file.copy(StrLib::valid(items.getStringAfter(i, '='), ""));
    } else if (items.equal(i, "ref", 3)) {
      refresh = items.index(i, '=') >= 0 ? items.getIntAfter(i, '=') : 1;
    } else if (items.equal(i, "nf", 2)) {
      const int frames = items.getInt(i, 3);
      num_frames = frames >= 1 ? frames : num_frames;
    } else if (items.equal(i, "nobord")) {
      border = 0;
    } else if (items.equal(i, "linc", 4)) {
      const int minutes = items.getInt(i, 5);
      if (minutes != Const::MISS) {
        loop_inc = std::clamp(minutes, -max_minutes, max_minutes) * minute;
      }
    }
  }
  return 1;
}

int Figure::open(const char* params) {
  plot.setFixed(false);
  setParam(params);
  const int done = plot.open(params);
  plot.addCallback("AnyEvent", this, "Figure");
  return done;
}

int Figure::close() {
  plot.close();
  loop_frames = -1;
  return clearQueue();
}

int Figure::setDomain(const Domain& domain) {
  bdomain = domain;
  return plot.setDomain(domain);
}

int Figure::startPlot(const Domain& domain) {
  bdomain = domain;
  return plot.setPanel(domain);
}

int Figure::startPlot(const Rect& rect, const Domain& domain) {
  bdomain = domain;
  return plot.setPanel(rect, domain);
}

int Figure::addDrawing(Drawing& drawing) {
  PlotItem item;
  item.drawing = &drawing;
  plot_queue.push_back(item);
  return 1;
}

int Figure::clearQueue() {
  plot_queue.clear();
  return 1;
}

int Figure::setForeTime(const char* text) {
  if (text == nullptr) {
    return 0;
  }
  int first = 0;
  int last = 0;
  int step = 0;
  if (std::sscanf(text, "%9d-%9d/%9d", &first, &last, &step) != 3) {
    return ftime.copy(text);
  }
  std::string list;
  long hour = first;
  for (int i = 0; i < max_frames && hour <= last; i++, hour += step) {
    list += (i > 0 ? "," : "") + std::to_string(hour);
    if (step <= 0) {
      break;  // a step that goes nowhere gives the first time alone
    }
  }
  return ftime.append(
      list.c_str());  // to what an earlier call left, without a separator: deliberate
}

int Figure::setDate(const Date& date) {
  bdate = date;
  loop_frames = 0;
  num_frames = 1;
  return 1;
}

int Figure::setDate(const Date& date, int inc, int frames) {
  bdate = date;
  loop_inc = inc;
  num_frames = frames;
  loop_frames = 0;
  if (inc < 0) {
    bdate.addSeconds(static_cast<float>(inc) * static_cast<float>(frames));
    loop_inc = -inc;
  }
  return 1;
}

/** The date of the last frame from the resource "current". */
void Figure::readCurrent(const char* text) {
  int days = 0;
  int hours = 0;
  int minutes = 0;
  if (*text == '#') {
    bdate.set(text + 1);
    return;
  }
  bdate.set();
  if (std::sscanf(text, "%6dd%6d:%6d", &days, &hours, &minutes) < 2) {
    days = minutes = 0;
    const int n = std::sscanf(text, "%6d:%6d", &hours, &minutes);
    hours = n >= 1 ? hours : 0;
    minutes = n == 2 ? minutes : 0;
  }
  bdate.addDays(-days);
  bdate.addHours(-hours);
  bdate.addMinutes(-minutes);
}

/** Takes from an entry what isn't known yet of the loop. */
void Figure::setTimeBase(Drawing& drawing) {
  if (file.valid()) {
    drawing.setFilename(file.get());
  } else {
    drawing.setFilename();
  }
  if (num_frames == -1) {
    num_frames = drawing.getNumFrames();
    loop_type = drawing.getLoopType();
  }
  if (loop_inc == -1 && drawing.getDateOffset() != Const::MISS) {
    loop_inc = drawing.getDateOffset();
  }
  if (!bdate.isSet()) {
    drawing.getInitDate(bdate);
  }
}

Drawing* Figure::firstLooping() const {
  for (const PlotItem& item : plot_queue) {
    if (item.drawing->getLoopType() != 0) {
      return item.drawing;
    }
  }
  return nullptr;
}

int Figure::endPlot() {
  constexpr int detail = 4;
  constexpr int coarse = 2;
  num_plot = 0;
  bool found = false;
  const char* current = Zqv::getResrc("current");
  if (current != nullptr && !StrLib::contains(current, "la")) {
    readCurrent(current);
  }
  for (const PlotItem& item : plot_queue) {
    if (item.drawing->getLoopType() != 0) {
      num_plot++;
    }
    if (item.drawing->getSync() != 0) {
      setTimeBase(*item.drawing);
      found = true;
      if (!plot.isDateSet()) {
        plot.setDate(bdate);
      }
      if (Zqv::isDebug(detail)) {
        std::printf("Found sync: %d %d %d ", num_frames, loop_type, loop_inc);
        bdate.print();
      }
    }
  }
  if (loop_frames == -1) {
    if (ftime.valid()) {
      num_frames = ftime.occurs(',') + 1;
      loop_type = OVER_FORECASTS;
    } else {
      Drawing* first = firstLooping();
      if (first != nullptr && !found) {
        if (Zqv::isDebug(coarse)) {
          first->print();
        }
        setTimeBase(*first);
      }
      if (num_frames == -1) {
        num_frames = 1;
      }
    }
  }
  return drawPlot();
}

/** There is data for this moment that the frame before doesn't show already. */
bool Figure::isNewFrame(Date& date) {
  Drawing* first = firstLooping();
  bool available = first != nullptr && first->setFilename(date, "") != 0;
  Date found;
  if (first != nullptr) {
    first->getDate(found);
  }
  constexpr int detail = 3;
  Zqv::outDebug(detail, "***************************************************\n");
  // What an earlier run of the loop drew doesn't count, nor a date before anything is drawn: a file
  // without date makes one frame, and a redraw starts from nothing.
  const bool compares = loop_frames == 1 && (loop_type == OVER_DATES || num_plot == 1);
  if (compares && found.getSeconds() == ldate.getSeconds()) {
    available = false;
  }
  return available;
}

int Figure::drawPlot() {
  if (loop_inc == -1) {
    loop_inc = default_inc;
  }
  if (refresh == 1) {
    refresh = loop_inc;
  }
  if (!bdate.isSet()) {
    bdate.set();
  }
  Zqv::outMessage(loop_level, "LOOP-nf=%d linc=%d date=", num_frames, loop_inc);
  if (Zqv::checkMessage(loop_level)) {
    bdate.print();
  }
  const int frames = std::min(num_frames, max_frames);
  const auto step = static_cast<float>(loop_inc);
  Date date = bdate;
  if (loop_type == OVER_DATES && frames > 1) {
    date.addSeconds(-static_cast<float>(frames - 1) * step);
  }
  const Strings times(loop_type == OVER_FORECASTS ? ftime.get() : nullptr, ',');
  loop_frames = 0;
  Progress progress("frame", frames);
  for (int i = 0; i < frames; i++) {
    if (frames > 1) {
      progress.step(i + 1);
    }
    if (frames > 1) {
      if (!isNewFrame(date)) {
        date.addSeconds(step);
        continue;
      }
      plot.newFrame();
    }
    if (!plot_queue.empty()) {
      plot.setCursor(BUSY_CURSOR);
      if (loop_type == OVER_DATES) {
        drawFrame(date);
      } else {
        drawFrame(times.getString(i));
      }
    }
    plot.setCursor(NORMAL_CURSOR);
    if (loop_type == OVER_DATES) {
      date.addSeconds(step);
    }
    plot.update();
    loop_frames = 1;
  }
  return 1;
}

void Figure::finishFrame() {
  if (border != 0) {
    plot.drawBorder();
  }
  plot.drawLabels();
}

int Figure::drawFrame(Date& date) {
  if (Zqv::checkMessage(message_level)) {
    String text;
    date.toText(text);
    std::printf("Plotting for: %s\n", text.get());
  }
  for (const PlotItem& item : plot_queue) {
    item.drawing->setFilename(date, "");
    item.drawing->getDate(ldate);
    item.drawing->draw(plot);
  }
  finishFrame();
  return 1;
}

int Figure::drawFrame(const char* time) {
  if (Zqv::checkMessage(message_level)) {
    std::printf("Plotting for: %s\n", StrLib::valid(time, ""));
  }
  for (const PlotItem& item : plot_queue) {
    item.drawing->setForeTime(time);
    item.drawing->draw(plot);
  }
  finishFrame();
  return 1;
}

int Figure::draw() {
  plot.deleteAllFrames();
  plot.clear();
  redraw++;
  num_redraw++;
  plot.setPanel(0);
  drawPlot();
  redraw--;
  return 1;
}

int Figure::draw(Drawing& drawing) {
  return drawing.draw(plot);
}

int Figure::updateLoop(Date& date) {
  if (num_frames > 1) {
    plot.deleteFrame(0);
    plot.newFrame();
  }
  plot.clearFrame();
  drawFrame(date);
  plot.update();
  bdate = date;
  return 1;
}

int Figure::manage() {
  rtime = std::time(nullptr);
  return plot.manage();
}

void Figure::refreshNow() {
  constexpr int coarse = 2;
  Date now;
  now.set();
  if (refresh <= 1 || now.getSeconds() < static_cast<long>(rtime) + refresh) {
    return;
  }
  Drawing* first = firstLooping();
  bool update = first != nullptr && first->setFilename(now, "") != 0;
  if (update) {
    Date found;
    first->getDate(found);
    const bool compares = loop_type == OVER_DATES || num_plot == 1;
    update = !(compares && found.getSeconds() == ldate.getSeconds());
  }
  Zqv::outDebug(coarse, "Figure-refresh %d\n", update ? 1 : 0);
  if (update) {
    updateLoop(now);
  }
  rtime += refresh;
}

void Figure::callback(const char* name, const char* data, const void* /*source*/) {
  constexpr int coarse = 2;
  if (StrLib::equal(name, "Redraw")) {
    int width = 0;
    int height = 0;
    if (data != nullptr) {
      std::sscanf(data, "%9d:%9d", &width, &height);
    }
    Zqv::outDebug(coarse, "Figure-resize window: %d %d\n", width, height);
    draw();
  } else if (StrLib::equal(data, "r-Alt", 5)) {
    Zqv::outDebug(coarse, "Figure-redraw window\n");
    draw();
  } else if (StrLib::equal(data, "z-Alt", 5)) {
    constexpr float closer = 2.0F;
    moveView("zoom", name, data, 6, closer);
  } else if (StrLib::equal(data, "Z-Alt", 5)) {
    constexpr float wider = 0.5F;
    moveView("unzoom", name, data, 11, wider);
  } else if (StrLib::equal(data, "p-Alt", 5)) {
    moveView("pan", name, data, 6, 0.0F);
  } else if (StrLib::equal(data, "u-Alt", 5)) {
    Zqv::outDebug(coarse, "Figure-unzoom window\n");
    plot.setPanelDomain(0, bdomain);
    draw();
  } else if (StrLib::equal(name, "Idle")) {
    refreshNow();
  }
}

/** Zooms by a factor, or pans for a factor of 0, to the place that a key's data give from start on.
 */
void Figure::moveView(const char* what, const char* name, const char* data, int start,
                      float factor) {
  constexpr int coarse = 2;
  int x = 0;
  int y = 0;
  if (StrLib::length(data) <= start || std::sscanf(data + start, "%9d:%9d", &x, &y) != 2) {
    return;
  }
  Point p;
  Domain domain;
  if (plot.tranPlotWindow(static_cast<float>(x), static_cast<float>(y), p.x, p.y) == 0) {
    return;  // beside the picture
  }
  plot.getPanelDomain(0, domain);
  if (factor > 0.0F) {
    domain.zoom(p, factor);
  } else {
    domain.pan(p);
  }
  plot.setPanelDomain(0, domain);
  Zqv::outDebug(coarse, "Figure-%s window: %s %.2f %.2f\n", what, name, static_cast<double>(p.x),
                static_cast<double>(p.y));
  if (Zqv::checkMessage(message_level)) {
    std::printf("New domain: ");
    domain.print();
  }
  draw();
}

}  // namespace ZQV
