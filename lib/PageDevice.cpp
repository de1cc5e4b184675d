#include "PageDevice.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "DateTool.h"
#include "Image.h"
#include "StrLib.h"
#include "String.h"
#include "Strings.h"
#include "Tools.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr size_t MAX_TITLE = 59;

struct Paper {
  const char* name;
  float width;
  float height;
};

/** In inches, without the margin that printers leave. */
constexpr Paper PAPERS[] = {{"letter", 10.5F, 8.0F},
                            {"legal", 13.5F, 8.0F},
                            {"11x17", 16.5F, 10.5F},
                            {"a4", 11.2F, 7.8F},
                            {"a3", 15.4F, 11.2F}};

int channel(float v) {
  return std::clamp(Tools::cut(static_cast<double>(v * 255.0F)), 0, 255);
}

}  // namespace

void PageDevice::initPage(const char* file_name, float w, float h) {
  inverse = icon = false;
  fixed = 0;
  width = w;
  height = h;
  x = y = 0.0F;
  setFilename(file_name);
  clip.set(0.0F, 0.0F, w, h);
  line_color = text_color = fill_color = mark_color = 0;
  line_style = 1;
  fill_style = 0;
  line_width = text_width = mark_width = 1.0F;
}

bool PageDevice::takePenOption(const Strings& items, int i) {
  constexpr float min_scale = 0.01F;
  constexpr float max_scale = 1000.0F;
  if (items.iequal(i, "color")) {
    color = 1;
    inverse = true;  // dark on paper: deliberate
  } else if (items.iequal(i, "gray")) {
    color = 0;
  } else if (items.iequal(i, "scale", 5)) {
    const float v = items.getFloat(i, 6);
    if (v >= min_scale && v <= max_scale) scale = v;
  } else if (items.iequal(i, "lwidth", 6)) {
    const float v = items.getFloat(i, 7);
    if (v >= 0.0F && v <= max_scale) base_width = v;
  } else {
    return false;
  }
  return true;
}

void PageDevice::setFilename(const char* text) {
  filename = std::string_view(text).substr(0, max_filename);
}

int PageDevice::openOutput(const char* class_name, bool& appending) {
  const char* output = filename.c_str();
  int result = 0;
  appending = false;
  if (output[0] == '|') {
    result = file.open(output, "w");
    if (result != 0) Zqv::outMessage("Spooling to: %s\n", output + 1);
  } else if (output[0] == '+') {
    appending = true;
    result = file.open(output + 1, "a");
    if (result != 0) Zqv::outMessage("Appending to: %s\n", output + 1);
  } else {
    result = file.open(output, "w");
    // On standard output the message would land in the page.
    if (result != 0 && !StrLib::equal(output, "-")) Zqv::outMessage("Creating: %s\n", output);
  }
  if (result == 0) {
    Zqv::outError("%s: unable to output to file\n", class_name);
    return 0;
  }
  opened = true;
  clip.set(0.0F, 0.0F, width, height);
  return 1;
}

void PageDevice::closeOutput() {
  out.flush();
  file.close();
  opened = false;
}

std::string PageDevice::currentDate() {
  String text;
  DateTool::getCurrent(text);
  return text.get();
}

bool PageDevice::paperSize(const char* paper, float& w, float& h) {
  for (const Paper& p : PAPERS) {
    if (!StrLib::iequal(paper, p.name)) continue;
    w = p.width;
    h = p.height;
    return true;
  }
  return false;
}

int PageDevice::getDevice(String& text) {
  return text.copy(name.c_str());
}

int PageDevice::setTitle(const char* text) {
  title = std::string_view(text != nullptr ? text : "").substr(0, MAX_TITLE);
  return 1;
}

int PageDevice::setIcon(bool flag) {
  icon = flag;
  return 1;
}

int PageDevice::setFixed(bool flag) {
  fixed = flag ? 1 : 0;
  return 1;
}

int PageDevice::setInverse(bool flag) {
  inverse = flag;
  return 1;
}

int PageDevice::setSize(float w, float h) {
  width = w;
  height = h;
  return 1;
}

int PageDevice::getSize(float& w, float& h) {
  w = width;
  h = height;
  return 1;
}

int PageDevice::setOffset(float dx, float dy) {
  x = dx;
  y = dy;
  return 1;
}

int PageDevice::getOffset(float& dx, float& dy) {
  dx = x;
  dy = y;
  return 1;
}

int PageDevice::getCoords(Rect& rect) {
  rect = getCoords();
  return 1;
}

Rect PageDevice::getCoords() {
  Rect rect;  // not set(), which would sort: y grows upward, so that the page begins at its top
  rect.xmin = 0.0F;
  rect.ymin = height;
  rect.xmax = width;
  rect.ymax = 0.0F;
  return rect;
}

int PageDevice::allocColor(float r, float g, float b) {
  return channel(r) << 16 | channel(g) << 8 | channel(b);
}

int PageDevice::setColor(int element, int value) {
  switch (element) {
    case LINE: line_color = value; break;
    case MARK: mark_color = value; break;
    case FILL: fill_color = value; break;
    case TEXT: text_color = value; break;
    default: return 0;
  }
  return 1;
}

int PageDevice::setLineWidth(int element, float w) {
  switch (element) {
    case LINE: line_width = w; break;
    case MARK: mark_width = w; break;
    case TEXT: text_width = w; break;
    default: return 0;
  }
  return 1;
}

int PageDevice::setLineStyle(int element, int style) {
  if (element != LINE) return 0;
  line_style = style;
  return 1;
}

int PageDevice::setFillStyle(int element, int style) {
  if (element != FILL) return 0;
  fill_style = style;
  return 1;
}

int PageDevice::drawImage(Image& image, int /*mode*/, float px, float py) {
  return drawImage(image, px, py);
}

int PageDevice::getImage(Image& image) {
  image.init();
  return 0;
}

Rect PageDevice::getClip() {
  return {clip.x, clip.y, clip.x + clip.width, clip.y + clip.height};
}

int PageDevice::setClip(const Rect& rect) {
  return setClip(rect.xmin, rect.ymin, rect.xmax, rect.ymax);
}

int PageDevice::resize(float /*w*/, float /*h*/) {
  return 1;
}

int PageDevice::addCallback(const char* /*type*/, Listener* /*listener*/, const void* /*client*/) {
  return 1;
}

int PageDevice::doCallback(const char* /*type*/, const char* /*data*/) {
  return 1;
}

void PageDevice::callback(const char* /*type*/, const char* /*data*/, const void* /*client*/) {}

int PageDevice::clearRect(const Rect& /*rect*/) {
  return 1;
}

int PageDevice::setBackground(const char* /*color*/) {
  return 1;
}

int PageDevice::setImageAlign(int /*horizontal*/, int /*vertical*/) {
  return 1;
}

int PageDevice::setFont(const char* /*font*/) {
  return 1;
}

int PageDevice::setTextAlign(int /*horizontal*/, int /*vertical*/) {
  return 1;
}

int PageDevice::drawText(const Point& /*p*/, const char* /*text*/) {
  return 1;
}

int PageDevice::setCursor(int /*cursor*/) {
  return 0;
}

int PageDevice::copyFrame(int /*to*/, int /*from*/) {
  return 0;
}

int PageDevice::displayFrame(int /*frame*/) {
  return 0;
}

int PageDevice::clearFrame(int /*frame*/) {
  return 0;
}

int PageDevice::newFrame(int /*frame*/) {
  return 0;
}

int PageDevice::setFrame(int /*frame*/) {
  return 0;
}

int PageDevice::incFrame(int /*step*/) {
  return 0;
}

int PageDevice::deleteFrame(int /*frame*/) {
  return 0;
}

int PageDevice::bell(int /*volume*/) {
  return 1;
}

}  // namespace ZQV
