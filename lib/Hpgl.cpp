#include "Hpgl.h"

#include <cmath>

#include "Image.h"
#include "Points.h"
#include "StrLib.h"
#include "Strings.h"

namespace ZQV {

namespace {

constexpr size_t MAX_FILENAME = 60;
constexpr float UNITS_INCH = 1015.0F;
constexpr float UNITS_PIXEL = 0.72F;
constexpr float CLIP_MARGIN = 0.1F;
constexpr float BASE_WIDTH = 0.3F;  ///< millimetres of a line of width 1

constexpr const char* STYLES[] = {"",           "LT;\n",       "LT2,5,1;\n",
                                  "LT5,8,1;\n", "LT6,10,1;\n", "LT2,1,1;\n"};
constexpr int NUM_STYLES = 5;

}  // namespace

Hpgl::Hpgl() : PageDevice("hpgl", MAX_FILENAME) {
  Hpgl::init();
}

int Hpgl::init() {
  initPage("zqv.hpgl", 756.0F, 576.0F);
  setTitle("ZQV Plot");
  append = pcl = color = rotate = 0;
  scale = 1.0F;
  base_width = BASE_WIDTH;
  line_bold = 1;
  return 1;
}

int Hpgl::setParam(const char* params) {
  const Strings items(params, ',');
  if (items.valid(0)) setFilename(items.getString(0));
  float w = -1.0F;
  float h = -1.0F;
  for (int i = 1; i < items.getNum(); i++) {
    if (takePenOption(items, i)) {
      continue;
    }
    if (items.iequal(i, "port")) {
      rotate = 90;
    } else if (items.iequal(i, "land")) {
      rotate = 0;
    } else if (items.iequal(i, "pcl")) {
      pcl = 1;
    } else if (items.iequal(i, "nopcl")) {
      pcl = 0;
    } else if (items.iequal(i, "lj")) {
      pcl = 2;
    } else if (items.iequal(i, "rot", 3)) {
      rotate = items.getInt(i, 4);
    } else if (items.iequal(i, "sz", 2)) {
      items.scanf(i, 3, "%f:%f", &w, &h);
    } else if (items.iequal(i, "ansid")) {
      w = 30.0F;
      h = 21.5F;
    } else if (items.iequal(i, "roll", 4)) {
      w = items.getFloat(i, 5);
      h = 23.0F;
    } else {
      paperSize(items.getString(i), w, h);
    }
  }
  if (w > 0.0F && h > 0.0F && std::isfinite(w) && std::isfinite(h)) {
    width = w * UNITS_INCH;
    height = h * UNITS_INCH;
  }
  return 1;
}

int Hpgl::open() {
  bool appending = false;
  if (opened || openOutput("Hpgl", appending) == 0) return 0;
  append = appending ? 1 : 0;
  if (append == 0) {
    if (pcl != 0) out.put("\033E\033%1B\033&l1O\n");
    out.put("IN;SP1;PA;\n");
    if (pcl == 2) out.put("RO90;\n");
    switch (rotate) {
      case 90: out.put("RO90;\n"); break;
      case 180: out.put("RO180;\n"); break;
      case 270: out.put("RO270;\n"); break;
      default: break;
    }
  }
  out.put("PW");
  out.putFloat<1>(base_width);
  out.put(";SV;LT;\n");
  return 1;
}

int Hpgl::close() {
  if (!opened) return 0;
  if (append == 0) {
    out.put("SP;PG;\n");
    if (pcl != 0) out.put("\033%0A\033E");
  }
  closeOutput();
  return 1;
}

int Hpgl::setSize(float w, float h) {
  return PageDevice::setSize(w * UNITS_PIXEL, h * UNITS_PIXEL);
}

int Hpgl::setOffset(float dx, float dy) {
  return PageDevice::setOffset(dx * UNITS_PIXEL, dy * UNITS_PIXEL);
}

void Hpgl::putWidth(float w) {
  out.put("PW");
  out.putFloat<1>(w);
  out.put(";\n");
}

/** The pen state of an element; a style that isn't known keeps the one before. */
void Hpgl::putPen(int element) {
  switch (element) {
    case LINE:
      out.put("SV;\n");
      putWidth(line_width * base_width * static_cast<float>(line_bold));
      if (line_style >= 1 && line_style <= NUM_STYLES) out.put(STYLES[line_style]);
      break;
    case MARK:
      out.put("SV;\nLT;\n");
      putWidth(mark_width * base_width);
      break;
    case TEXT:
      out.put("SV;\nLT;\n");
      putWidth(text_width * base_width);
      break;
    default: break;
  }
}

void Hpgl::putMove(const char* command, float px, float py) {
  out.put(command);
  out.putFloat<0>(px);
  out.put(',');
  out.putFloat<0>(py);
  out.put(';');
}

int Hpgl::drawLine(int element, float x1, float y1, float x2, float y2) {
  if (!opened) return 0;
  putPen(element);
  putMove("PU", x1, y1);
  putMove("PD", x2, y2);
  return 1;
}

int Hpgl::drawLine(int element, const Points& points) {
  const int n = points.getNum();
  if (!opened || n < 1) return 0;
  const float* px = points.xs();
  const float* py = points.ys();
  putPen(element);
  putMove("PU", px[0], py[0]);
  for (int i = 1; i < n; i++) putMove("PD", px[i], py[i]);
  return 1;
}

int Hpgl::drawFill(int element, const Points& points) {
  const int n = points.getNum();
  if (!opened || n < 1) return 0;
  const float* px = points.xs();
  const float* py = points.ys();
  if (element == FILL) out.put("SV;\n");
  putMove("PU", px[0], py[0]);
  out.put("PM0;");
  for (int i = 1; i < n; i++) putMove("PD", px[i], py[i]);
  out.put("PM1;PM2;FP;\n");
  return 1;
}

int Hpgl::drawImage(Image& image, float /*px*/, float /*py*/) {
  if (!image.validData()) return 0;
  for (int i = 0; image.hasColors() && i < image.getNumColors(); i++) {
    image.setColorVal(i, allocColor(image.getRed(i), image.getGrn(i), image.getBlu(i)));
  }
  return 1;
}

int Hpgl::setClip(float x1, float y1, float x2, float y2) {
  clip.set(x1 - CLIP_MARGIN, y1 - CLIP_MARGIN, x2 - x1 + 2.0F * CLIP_MARGIN,
           y2 - y1 + 2.0F * CLIP_MARGIN);
  if (!opened) return 0;
  out.put("IW ");
  out.putFloat<0>(clip.x);
  out.put(',');
  out.putFloat<0>(clip.y);
  out.put(',');
  out.putFloat<0>(clip.x + clip.width);
  out.put(',');
  out.putFloat<0>(clip.y + clip.height);
  out.put(";\n");
  return 1;
}

int Hpgl::message(const char* /*text*/) {
  return 1;
}

}  // namespace ZQV
