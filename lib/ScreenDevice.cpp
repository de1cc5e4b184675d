#include "ScreenDevice.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string_view>

#include "Image.h"
#include "Rect.h"
#include "StrLib.h"
#include "Tools.h"
#include "Zqv.h"

namespace ZQV {

namespace {

enum Cursor { LOOP_CURSOR = 3, STOP_CURSOR = 4 };

constexpr size_t MAX_TITLE = 39;
constexpr size_t MAX_BACKGROUND = 39;
constexpr int MAX_SIZE = 16384;

/** By the fill styles of PlotAttr. */
constexpr std::array<std::array<unsigned char, 8>, ScreenDevice::NUM_FILL> FILL_BITS = {{
    {0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff},
    {0xaa, 0x55, 0xaa, 0x55, 0xaa, 0x55, 0xaa, 0x55},
    {0x55, 0x00, 0x55, 0x00, 0x55, 0x00, 0x55, 0x00},
    {0x24, 0x11, 0x82, 0x48, 0x42, 0x11, 0x28, 0x84},
    {0x33, 0x33, 0x00, 0x00, 0xcc, 0xcc, 0x00, 0x00},
    {0x33, 0x33, 0x33, 0x33, 0x33, 0x33, 0x33, 0x33},
    {0x03, 0x06, 0x0c, 0x18, 0x30, 0x60, 0xc0, 0x81},
    {0x81, 0xc0, 0x60, 0x30, 0x18, 0x0c, 0x06, 0x03},
    {0xff, 0xff, 0x00, 0x00, 0xff, 0xff, 0x00, 0x00},
    {0xc3, 0x66, 0x3c, 0x18, 0x3c, 0x66, 0xc3, 0x81},
    {0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00},
    {0x40, 0x10, 0x20, 0x01, 0x00, 0x04, 0x08, 0x02},
    {0x08, 0xa0, 0x44, 0x11, 0x22, 0x10, 0x81, 0x44},
    {0x45, 0x28, 0x94, 0x43, 0x50, 0x09, 0x52, 0xa8},
    {0x19, 0xca, 0x34, 0x1a, 0xe1, 0x32, 0xa5, 0xcc},
    {0x55, 0xdc, 0x3b, 0xe2, 0x97, 0xaa, 0x65, 0x3e},
    {0x7a, 0xe5, 0x5f, 0xab, 0xf5, 0xeb, 0x5e, 0xb5},
    {0xfe, 0xbb, 0xf5, 0x6f, 0xfe, 0xd7, 0xbd, 0xeb},
    {0xfd, 0xff, 0xef, 0x7f, 0xdf, 0xfe, 0xf7, 0xaf},
    {0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff},
}};

std::string cutText(const char* text, size_t max) {
  return std::string(std::string_view(text != nullptr ? text : "").substr(0, max));
}

/** What allocTable() found for transparent pixels, beside a value. */
constexpr int NOT_TRANSPARENT = -1;

}  // namespace

int ScreenDevice::init() {
  inverse = icon = false;
  width = 640;
  height = 512;
  x = y = 100;
  fixed = 1;
  title = "ZQV";
  background.clear();
  show_win_num = 0;
  text_halign = text_valign = 2;
  image_halign = 1;
  image_valign = 3;
  num_frame = cur_frame = looping = 0;
  direct = 1;
  delay = 0.5F;
  end_delay = 1.0F;
  start_frame = end_frame = -1;
  frames.assign(static_cast<size_t>(max_frame), XFrame());
  return 1;
}

int ScreenDevice::setTitle(const char* text) {
  title = cutText(text, MAX_TITLE);
  if (opened) showTitle(title.c_str());
  return 1;
}

int ScreenDevice::setIcon(bool flag) {
  icon = flag;
  return 1;
}

int ScreenDevice::setFixed(bool flag) {
  fixed = flag ? 1 : 0;
  return 1;
}

int ScreenDevice::setInverse(bool flag) {
  inverse = flag;
  return 1;
}

int ScreenDevice::setBackground(const char* color) {
  background = cutText(color, MAX_BACKGROUND);
  return 1;
}

int ScreenDevice::setSize(float w, float h) {
  width = std::clamp(Tools::cut(static_cast<double>(w)), 1, MAX_SIZE);
  height = std::clamp(Tools::cut(static_cast<double>(h)), 1, MAX_SIZE);
  return 1;
}

int ScreenDevice::getSize(float& w, float& h) {
  w = getWidth();
  h = getHeight();
  return 1;
}

int ScreenDevice::setOffset(float px, float py) {
  x = pixel(px - 0.5F);
  y = pixel(py - 0.5F);
  return 1;
}

int ScreenDevice::getOffset(float& px, float& py) {
  px = static_cast<float>(x);
  py = static_cast<float>(y);
  return 1;
}

int ScreenDevice::getCoords(Rect& rect) {
  rect = getCoords();
  return 1;
}

Rect ScreenDevice::getCoords() {
  return {0.0F, 0.0F, static_cast<float>(width - 1), static_cast<float>(height - 1)};
}

int ScreenDevice::setImageAlign(int horizontal, int vertical) {
  image_halign = horizontal;
  image_valign = vertical;
  return 1;
}

int ScreenDevice::setTextAlign(int horizontal, int vertical) {
  text_halign = horizontal;
  text_valign = vertical;
  return 1;
}

Rect ScreenDevice::getClip() {
  return {static_cast<float>(clip.x), static_cast<float>(clip.y),
          static_cast<float>(clip.x + clip.width), static_cast<float>(clip.y + clip.height)};
}

int ScreenDevice::setClip(float x1, float y1, float x2, float y2) {
  if (!opened) return 0;
  clip.x = pixel(x1);
  clip.y = pixel(y1);
  clip.width = std::max(pixel(x2) - clip.x + 1, 0);
  clip.height = std::max(pixel(y2) - clip.y + 1, 0);
  applyClip();
  return 1;
}

int ScreenDevice::setClip(const Rect& rect) {
  return setClip(rect.xmin, rect.ymin, rect.xmax, rect.ymax);
}

int ScreenDevice::clear() {
  if (!opened || drawing == 0) return 0;
  fillPixmap(drawing, bg_color);
  return 1;
}

int ScreenDevice::message(const char* text) {
  Zqv::outDebug("Mess: %s\n", text != nullptr ? text : "");
  return 1;
}

int ScreenDevice::widthPixels(float w) {
  constexpr int max_width = 1000;
  return std::clamp(pixel(w), 0, max_width);
}

ScreenDevice::Dashes ScreenDevice::dashes(int style) {
  switch (style) {
    case 2: return {{6, 6}, 2};
    case 3: return {{3, 6}, 2};
    case 4: return {{6, 6, 3, 6}, 4};
    case 5: return {{2, 2}, 2};
    default: return {};
  }
}

const std::array<unsigned char, 8>& ScreenDevice::stipple(int style) {
  return FILL_BITS[static_cast<size_t>(std::clamp(style, 0, NUM_FILL - 1))];
}

int ScreenDevice::channel(float v) {
  constexpr float most = 65535.0F;
  return std::clamp(Tools::cut(static_cast<double>(v * most)), 0, 65535);
}

// Images.

/** Gives each colour of an indexed image its device value. @return the last transparent entry, or
 * NOT_TRANSPARENT */
int ScreenDevice::allocTable(Device& device, Image& image) {
  int last = NOT_TRANSPARENT;
  for (int i = 0; i < image.getNumColors(); i++) {
    if (image.getRed(i) == -1.0F) last = i;
    image.setColorVal(i, device.allocColor(image.getRed(i), image.getGrn(i), image.getBlu(i)));
  }
  return last;
}

int ScreenDevice::drawImage(Image& image, float px, float py) {
  if (!opened || drawing == 0 || image.getWidth() <= 0 || image.getHeight() <= 0 ||
      !image.validData()) {
    return 0;
  }
  const auto w = static_cast<float>(image.getWidth());
  const auto h = static_cast<float>(image.getHeight());
  if (image_halign == 2) px += -w / 2.0F + 0.5F;
  if (image_halign == 3) px += -w + 0.5F;
  if (image_valign == 0 || image_valign == 1) py += -h + 0.5F;
  if (image_valign == 2) py += -h / 2.0F + 0.5F;
  ImagePlace place;
  place.x = pixel(px - 0.5F);
  place.y = pixel(py - 0.5F);
  if (image.getColorType() == Image::INDEXED && image.hasColors()) {
    const int last = allocTable(*this, image);
    place.masked = last != NOT_TRANSPARENT || image.hasTransColor();
  }
  return paintImage(image, place);
}

int ScreenDevice::drawImage(Image& image, int trans, float px, float py) {
  if (!opened || drawing == 0 || image.getWidth() <= 0 || image.getHeight() <= 0 ||
      !image.validData()) {
    return 0;
  }
  ImagePlace place;
  place.x = pixel(px - 0.5F);
  place.y = pixel(py - 0.5F);
  place.masked = place.by_value = true;
  place.trans = trans;
  if (image.getColorType() == Image::INDEXED && image.hasColors()) {
    allocTable(*this, image);
    if (trans >= 0 && trans < image.getNumColors()) place.trans = image.getColorVal(trans);
  }
  return paintImage(image, place);
}

// Frames.

unsigned long ScreenDevice::getFramePixmap(int i) const {
  if (i == BASE_PIXMAP) return dwindow;
  if (i == LAST_FRAME) i = num_frame - 1;
  if (i == CURRENT_FRAME) i = cur_frame;
  if (i < 0 || i >= num_frame) return 0;
  return frames[static_cast<size_t>(i)].pixmap;
}

int ScreenDevice::copyFrame(int to, int from) {
  const unsigned long target = getFramePixmap(to);
  const unsigned long source = getFramePixmap(from);
  if (!opened || target == 0 || source == 0) return 0;
  copyPixmap(target, source);
  return 1;
}

int ScreenDevice::displayFrame(int frame) {
  constexpr int detail = 3;
  if (!opened) return 0;
  Zqv::outDebug(detail, "Display frame: %s [%d]\n", title.c_str(), frame);
  copyFrame(BASE_PIXMAP, frame);
  if (show_win_num != 0 && num_frame > 0) {
    char text[80];
    std::snprintf(text, sizeof(text), "%s [%d]", title.c_str(), frame);
    showTitle(text);
  }
  update();
  if (frame != CURRENT_FRAME) cur_frame = frame;
  return 1;
}

int ScreenDevice::clearFrame(int frame) {
  const unsigned long pixmap = getFramePixmap(frame);
  if (!opened || pixmap == 0) return 0;
  fillPixmap(pixmap, bg_color);
  return 1;
}

int ScreenDevice::newFrame(int frame) {
  const int i = frame < 0 ? num_frame : frame;
  if (!opened || i > num_frame || i >= max_frame) return 0;
  XFrame& f = frames[static_cast<size_t>(i)];
  if (f.pixmap == 0) f.pixmap = createPixmap();
  if (f.pixmap == 0) return 0;
  Zqv::outDebug("newFrm\n");
  fillPixmap(f.pixmap, bg_color);
  f.title = title;
  if (i == num_frame) num_frame++;
  if (i > 0) frames[static_cast<size_t>(i) - 1].delay = delay;
  frames[static_cast<size_t>(num_frame) - 1].delay = end_delay;
  return 1;
}

int ScreenDevice::newFrame() {
  const int before = num_frame;
  newFrame(LAST_FRAME);
  return before;
}

int ScreenDevice::setFrame(int frame) {
  const unsigned long pixmap = getFramePixmap(frame);
  if (!opened || num_frame < 1 || pixmap == 0) return 0;
  drawing = pixmap;
  return 1;
}

int ScreenDevice::incFrame(int step) {
  if (num_frame < 1) return -1;
  const int start = std::clamp(start_frame, 0, num_frame - 1);
  const int end = end_frame >= 0 ? std::min(end_frame, num_frame - 1) : num_frame - 1;
  int next = 0;
  if (cur_frame != -1) {
    next = cur_frame + (step != 0 ? step : (direct % 2 != 0 ? 1 : -1));
  }
  const bool both_ways = direct == 2 || direct == 3;
  if (next > end) {
    next = both_ways ? std::max(end - 1, start) : start;
    if (both_ways) direct = 2;
  } else if (next < start) {
    next = both_ways ? std::min(start + 1, end) : end;
    if (both_ways) direct = 3;
  }
  return displayFrame(next);
}

int ScreenDevice::deleteFrame(int frame) {
  if (!opened || frame < 0 || frame >= num_frame) return 0;
  Zqv::outDebug("Deleting frame %d\n", frame);
  const auto place = frames.begin() + frame;
  const bool last = frame == num_frame - 1;
  const bool shown = frame == cur_frame;
  if (drawing == place->pixmap) drawing = dwindow;
  freePixmap(place->pixmap);
  std::move(place + 1, frames.begin() + num_frame, place);
  num_frame--;
  frames[static_cast<size_t>(num_frame)] = XFrame();
  if (last && num_frame >= 2) {
    frames[static_cast<size_t>(num_frame) - 2].delay = delay;
    frames[static_cast<size_t>(num_frame) - 1].delay = end_delay;
  }
  if (num_frame == 0) {
    clear();
    update();
  }
  cur_frame = std::min(cur_frame, num_frame - 1);
  if (shown && num_frame > 0) displayFrame(cur_frame);
  return 1;
}

int ScreenDevice::deleteFrame() {
  while (num_frame > 0 && deleteFrame(num_frame - 1) != 0) {
  }
  return 1;
}

int ScreenDevice::toggleLoop() {
  looping = looping != 0 ? 0 : 1;
  return setCursor(looping != 0 ? LOOP_CURSOR : STOP_CURSOR);
}

int ScreenDevice::loopRate(int sign) {
  constexpr int level = 8;
  constexpr float fine = 0.1F;
  constexpr float coarse = 1.0F;
  if (sign > 0) {
    delay = std::max(delay - (delay >= 1.6F ? coarse : fine), 0.05F);
  } else if (delay < 0.051F) {
    delay = fine;
  } else {
    delay = std::min(delay + (delay <= 1.01F ? fine : coarse), 10.0F);
  }
  Zqv::outMessage(level, "Delay: %f\n", static_cast<double>(delay));
  return 1;
}

}  // namespace ZQV
