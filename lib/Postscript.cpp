#include "Postscript.h"

#include <cmath>
#include <cstdio>
#include <string>

#include "HexRaster.h"
#include "Image.h"
#include "Points.h"
#include "StrLib.h"
#include "Strings.h"
#include "Tools.h"

namespace ZQV {

namespace {

constexpr size_t MAX_FILENAME = std::string::npos;  // paths are never cut: it would be another file
constexpr float POINTS_INCH = 72.0F;
constexpr float POINTS_PIXEL = 0.72F;
constexpr float CLIP_MARGIN = 0.1F;

constexpr const char* PROLOG =
    "/inch {72 mul} def\n"
    "/dot {.33 mul} def\n"
    "/mv {moveto} def\n"
    "/ln {lineto} def\n"
    "/lw {setlinewidth} def\n"
    "/np {newpath} def\n"
    "/cp {closepath} def\n";

constexpr const char* DASHES[] = {"",
                                  "[] 0 setdash\n",
                                  "[6] 0 setdash\n",
                                  "[3 6] 0 setdash\n",
                                  "[6 6 3 6] 0 setdash\n",
                                  "[2] 0 setdash\n"};
constexpr int NUM_DASHES = 5;

}  // namespace

Postscript::Postscript() : PageDevice("postscript", MAX_FILENAME) {
  Postscript::init();
}

int Postscript::init() {
  initPage("zqv.ps", 756.0F, 576.0F);
  setTitle("ZQV Plot");
  append = eps = color = orient = 0;
  scale = 1.0F;
  base_width = 1.0F;
  line_bold = 1;
  return 1;
}

int Postscript::setParam(const char* params) {
  const Strings items(params, ',');
  if (items.valid(0)) setFilename(items.getString(0));
  for (int i = 1; i < items.getNum(); i++) {
    float w = 0.0F;
    float h = 0.0F;
    const char* item = items.getString(i);
    if (takePenOption(items, i)) {
      continue;
    }
    if (items.iequal(i, "port")) {
      orient = 1;
    } else if (items.iequal(i, "land")) {
      orient = 0;
    } else if (items.iequal(i, "eps")) {
      eps = 1;
    } else if (items.iequal(i, "noeps")) {
      eps = 0;
    } else if (items.iequal(i, "sz", 2)) {
      if (items.scanf(i, 3, "%f:%f", &w, &h) == 2) setPaper(w, h);
    } else if (items.iequal(i, "ansid")) {
      setPaper(33.5F, 21.5F);
    } else if (paperSize(item, w, h)) {
      setPaper(w, h);
    }
  }
  return 1;
}

/** @param w,h  inches */
void Postscript::setPaper(float w, float h) {
  if (!(w > 0.0F && h > 0.0F) || !std::isfinite(w) || !std::isfinite(h)) return;
  width = w * POINTS_INCH;
  height = h * POINTS_INCH;
}

int Postscript::open() {
  bool appending = false;
  if (opened || openOutput("Postscript", appending) == 0) return 0;
  append = appending ? 1 : 0;
  if (eps != 0) {
    out.put("%!PS-Adobe-3.0 EPSF-3.0\n");
    out.put(orient == 1 ? "%%BoundingBox: 0 0 756 576\n" : "%%BoundingBox: 0 0 576 756\n");
  } else {
    out.put("%!PS-Adobe-1.0\n");
  }
  out.put("%%Title: ZQV Graphics Display: ");
  out.putLine(title.c_str());
  out.put("\n%%Creator: ZQV Postscript Processor-5.5\n%%CreationDate: ");
  out.putLine(currentDate().c_str());
  out.put("\n%%EndComments\n%%Postscript initialization\n");
  if (eps == 0) out.put("30 dict begin\n/saveobj save def\n");
  out.put(PROLOG);
  if (orient == 0) {
    out.put("90 rotate\n");
    out.put(eps != 0 ? "0. inch -8.5 inch translate\n" : ".25 inch -8.25 inch translate\n");
  } else if (eps == 0) {
    out.put(".25 inch .25 inch translate\n");
  }
  out.put(color != 0 ? "0 0 0 setrgbcolor\n" : "0 setgray\n");
  out.put("2 setlinejoin\n1 dot lw\n[] 0 setdash\n");
  if (scale != 1.0F) {
    out.putFloat<2>(scale);
    out.put(' ');
    out.putFloat<2>(scale);
    out.put(" scale\n");
  }
  out.put("%%Begin plot\n%%ZQV Plot: ");
  out.putLine(title.c_str());
  out.put('\n');
  return 1;
}

int Postscript::close() {
  if (!opened) return 0;
  out.put("%%End of plot\n");
  if (append == 0) {
    // An encapsulated page begins without these two, yet the lines below undo them.
    if (eps != 0) out.put("30 dict begin /saveobj save def\n");
    out.put("saveobj restore\nshowpage\nend\n%%EOF\n");
  }
  closeOutput();
  return 1;
}

int Postscript::setSize(float w, float h) {
  return PageDevice::setSize(w * POINTS_PIXEL, h * POINTS_PIXEL);
}

int Postscript::setOffset(float dx, float dy) {
  return PageDevice::setOffset(dx * POINTS_PIXEL, dy * POINTS_PIXEL);
}

int Postscript::setLineWidth(int element, float w) {
  return PageDevice::setLineWidth(element, w > 0.0F ? w : 1.0F);
}

int Postscript::outputColor(int value) {
  const auto channel = [=](int shift) {
    return static_cast<float>(value >> shift & 0xff) / 255.0F;
  };
  const float r = channel(16);
  const float g = channel(8);
  const float b = channel(0);
  if (color != 0) {
    out.putFloat<2>(r);
    out.put(' ');
    out.putFloat<2>(g);
    out.put(' ');
    out.putFloat<2>(b);
    out.put(" setrgbcolor\n");
  } else {
    out.putFloat<2>(static_cast<float>(
        (static_cast<double>(r) * 0.9 + static_cast<double>(g) + static_cast<double>(b) * 0.8) /
        2.7));
    out.put(" setgray\n");
  }
  return 1;
}

/** Colour, dash and width of an element; nothing for one that has no lines. */
void Postscript::putPen(int element) {
  float w = 0.0F;
  switch (element) {
    case LINE:
      outputColor(line_color);
      w = line_width * base_width * static_cast<float>(line_bold);
      break;
    case MARK:
      outputColor(mark_color);
      w = mark_width * base_width;
      break;
    case TEXT:
      outputColor(text_color);
      w = text_width * base_width;
      break;
    default: return;
  }
  if (element != LINE) out.put(DASHES[1]);
  out.putFloat<1>(w);
  out.put(" dot lw\n");
  if (element == LINE && line_style >= 1 && line_style <= NUM_DASHES) out.put(DASHES[line_style]);
}

void Postscript::putPoint(float px, float py, const char* verb) {
  out.putFloat<2>(px);
  out.put(' ');
  out.putFloat<2>(py);
  out.put(verb);
}

void Postscript::putPath(const Points& points) {
  const int n = points.getNum();
  const float* px = points.xs();
  const float* py = points.ys();
  out.put("np\n");
  putPoint(px[0], py[0], " mv\n");
  for (int i = 1; i < n; i++) putPoint(px[i], py[i], " ln\n");
}

int Postscript::drawLine(int element, float x1, float y1, float x2, float y2) {
  if (!opened) return 0;
  out.put("%%PL:2\n");
  putPen(element);
  out.put("np\n");
  putPoint(x1, y1, " mv\n");
  putPoint(x2, y2, " ln\n");
  out.put("stroke\n");
  return 1;
}

int Postscript::drawLine(int element, const Points& points) {
  if (!opened || points.getNum() < 1) return 0;
  out.put("%%PL:");
  out.putInt(points.getNum());
  out.put('\n');
  putPen(element);
  putPath(points);
  out.put("stroke\n");
  return 1;
}

int Postscript::drawFill(int element, const Points& points) {
  if (!opened || points.getNum() < 1) return 0;
  out.put("%%FA:");
  out.putInt(points.getNum());
  out.put('\n');
  if (element == FILL) outputColor(fill_color);
  putPath(points);
  out.put("cp\nfill\n");
  return 1;
}

int Postscript::setClip(float x1, float y1, float x2, float y2) {
  clip.set(x1 - CLIP_MARGIN, y1 - CLIP_MARGIN, x2 - x1 + 2.0F * CLIP_MARGIN,
           y2 - y1 + 2.0F * CLIP_MARGIN);
  if (!opened) return 0;
  out.put("initclip\nnp\n");
  putPoint(x1 - CLIP_MARGIN, y1 - CLIP_MARGIN, " mv\n");
  putPoint(x1 - CLIP_MARGIN, y2 + CLIP_MARGIN, " ln\n");
  putPoint(x2 + CLIP_MARGIN, y2 + CLIP_MARGIN, " ln\n");
  putPoint(x2 + CLIP_MARGIN, y1 - CLIP_MARGIN, " ln\n");
  out.put("cp\nclip\n");
  return 1;
}

int Postscript::drawImage(Image& image, float px, float py) {
  int columns = 0;
  int rows = 0;
  if (!opened || !image.validData() || HexRaster::getSize(clip, columns, rows) == 0) return 0;
  char head[256];
  StrLib::printf(head, sizeof(head),
                 "gsave\n%d %d translate\n%d %d scale\n/picstr %d string def\n"
                 "%d %d 8 [ %d 0 0 %d 0 %d ]\n{ currentfile picstr readhexstring pop }\n",
                 Tools::cut(std::round(static_cast<double>(clip.x))),
                 Tools::cut(std::round(static_cast<double>(clip.y))), columns, rows, columns,
                 columns, rows, columns, -rows, rows);
  out.put(head);
  out.put(color != 0 ? "false 3 colorimage\n" : "image\n");
  const int result =
      HexRaster::write(out, image, clip, px, py, color != 0 ? HexRaster::COLOR : HexRaster::GRAY);
  out.put("grestore\n");
  return result;
}

int Postscript::message(const char* text) {
  if (!opened) return 0;
  out.put("%% ");
  out.putLine(text);
  out.put('\n');
  return 1;
}

}  // namespace ZQV
