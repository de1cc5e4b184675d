#pragma once

#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <string>
#include <vector>

#include "Image.h"
#include "PageDevice.h"
#include "Point.h"
#include "Points.h"
#include "String.h"

namespace ZQV {

/** A device that writes one line a call into a list. Its page is 1000 by 500 units with y downward,
 * as on a screen. */
class RecordingDevice : public PageDevice {
 public:
  using Lines = std::vector<std::string>;

  explicit RecordingDevice(Lines& calls, bool can_open = true)
      : PageDevice("recording", 20), lines(calls), openable(can_open) {
    RecordingDevice::init();
  }

  int init() override {
    initPage("none", 1000.0F, 500.0F);
    return 1;
  }
  int setParam(const char* params) override { return add("param %s", params); }
  int open() override { return openable ? 1 : 0; }
  int close() override { return add("close"); }
  Rect getCoords() override { return {0.0F, 0.0F, width, height}; }
  int setColor(int element, int value) override { return add("color %d %d", element, value); }
  int setLineWidth(int element, float w) override {
    return add("width %d %g", element, static_cast<double>(w));
  }
  int setLineStyle(int element, int style) override { return add("style %d %d", element, style); }
  int setFillStyle(int element, int style) override { return add("pattern %d %d", element, style); }
  int drawLine(int element, float x1, float y1, float x2, float y2) override {
    return add("line %d %g,%g %g,%g", element, static_cast<double>(x1), static_cast<double>(y1),
               static_cast<double>(x2), static_cast<double>(y2));
  }
  int drawLine(int element, const Points& points) override {
    return addPoints("polyline", element, points);
  }
  int drawFill(int element, const Points& points) override {
    return addPoints("fill", element, points);
  }
  using PageDevice::drawImage;
  int drawImage(Image& /*image*/, float px, float py) override {
    return add("image %g,%g", static_cast<double>(px), static_cast<double>(py));
  }
  int setFont(const char* font) override { return add("font %s", font); }
  int setTextAlign(int horizontal, int vertical) override {
    return add("align %d %d", horizontal, vertical);
  }
  int drawText(const Point& p, const char* text) override {
    return add("text %g,%g %s", static_cast<double>(p.x), static_cast<double>(p.y), text);
  }
  using PageDevice::setClip;
  int setClip(float x1, float y1, float x2, float y2) override {
    return add("clip %g,%g %g,%g", static_cast<double>(x1), static_cast<double>(y1),
               static_cast<double>(x2), static_cast<double>(y2));
  }
  int displayFrame(int frame) override { return add("display %d", frame); }
  int newFrame(int frame) override { return add("new %d", frame); }
  int setFrame(int frame) override { return add("frame %d", frame); }
  int manage() override { return add("manage"); }
  int update() override { return add("update"); }
  int message(const char* text) override { return add("message %s", text); }
  int bell(int volume) override { return add("bell %d", volume); }

 private:
  int add(const char* format, ...) __attribute__((format(printf, 2, 3))) {
    char text[400];
    va_list args;
    va_start(args, format);
    std::vsnprintf(text, sizeof(text), format, args);
    va_end(args);
    lines.emplace_back(text);
    return 1;
  }
  int addPoints(const char* what, int element, const Points& points) {
    std::string line = std::string(what) + " " + std::to_string(element);
    for (int i = 0; i < points.getNum(); i++) {
      char text[60];
      // Rounded, so that a list of points isn't about the last bit of a float.
      std::snprintf(text, sizeof(text), " %.6g,%.6g",
                    std::round(static_cast<double>(points.getX(i)) * 100.0) / 100.0 + 0.0,
                    std::round(static_cast<double>(points.getY(i)) * 100.0) / 100.0 + 0.0);
      line += text;
    }
    lines.push_back(line);
    return 1;
  }

  Lines& lines;
  bool openable;
};

}  // namespace ZQV
