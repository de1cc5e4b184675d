#include "MetaFile.h"

#include <cmath>
#include <string>

#include "HexRaster.h"
#include "Image.h"
#include "Point.h"
#include "Points.h"
#include "StrLib.h"
#include "Strings.h"
#include "Tools.h"

namespace ZQV {

namespace {

constexpr size_t MAX_FILENAME = std::string::npos;  // paths are never cut: it would be another file
constexpr int WHITE = 0xffffff;

/** Words of this and the other devices, none of which is a file's name. */
bool isOption(const char* item) {
  for (const char* word : {"hfont", "color", "gray", "port", "land"}) {
    if (StrLib::iequal(item, word)) return true;
  }
  return StrLib::iequal(item, "sz=", 3) || StrLib::iequal(item, "file=", 5);
}

}  // namespace

MetaFile::MetaFile() : PageDevice("meta", MAX_FILENAME) {
  MetaFile::init();
}

int MetaFile::init() {
  initPage("meta.out", 1.0F, 1.0F);
  setTitle("");
  line_color = text_color = fill_color = mark_color = WHITE;
  return 1;
}

int MetaFile::setParam(const char* params) {
  const Strings items(params, ',');
  for (int i = 0; i < items.getNum(); i++) {
    const char* item = items.getString(i);
    if (i < 2 && items.valid(i) && !isOption(item)) setFilename(item);
    float w = 0.0F;
    float h = 0.0F;
    if (items.iequal(i, "sz", 2) && items.scanf(i, 3, "%fx%f", &w, &h) == 2 && w > 0.0F &&
        h > 0.0F && std::isfinite(w) && std::isfinite(h)) {
      width = w;
      height = h;
    }
    if (items.iequal(i, "file", 4) && StrLib::length(item) > 5) setFilename(item + 5);
  }
  return 1;
}

int MetaFile::open() {
  bool appending = false;
  if (opened || openOutput("MetaFile", appending) == 0) return 0;
  out.put("ZQVMETA2\n#Title: ZQV Graphics Display\n#Creator: ZQV MetaFile Processor-2.0\n");
  out.put("#CreationDate: ");
  out.putLine(currentDate().c_str());
  out.put("\n#Begin plot\nSZ ");
  out.putFloat<6>(width);
  out.put(' ');
  out.putFloat<6>(height);
  out.put("\n#ZQV Plot: ");
  out.putLine(title.c_str());
  out.put('\n');
  return 1;
}

int MetaFile::close() {
  if (!opened) return 0;
  out.put("#End of plot\n");
  closeOutput();
  return 1;
}

void MetaFile::putRecord(const char* code, int value) {
  if (!opened) return;
  out.put(code);
  out.putInt(value);
  out.put('\n');
}

void MetaFile::putWidth(const char* code, float w) {
  if (!opened) return;
  out.put(code);
  out.putFloat<2>(w);
  out.put('\n');
}

int MetaFile::setColor(int element, int value) {
  const auto set = [&](const char* code, int& stored) {
    if (value != stored) putRecord(code, value);
    stored = value;
  };
  switch (element) {
    case LINE: set("LCLR ", line_color); break;
    case MARK: set("MCLR ", mark_color); break;
    case FILL: set("FCLR ", fill_color); break;
    case TEXT: set("TCLR ", text_color); break;
    default: return 0;
  }
  return 1;
}

int MetaFile::setLineWidth(int element, float w) {
  if (!(w > 0.0F)) w = 1.0F;
  const auto set = [&](const char* code, float& stored) {
    if (w != stored) putWidth(code, w);
    stored = w;
  };
  // Deliberate: the first test is of the width and not of the element.
  if (w == 1.0F) {
    set("LWID ", line_width);
  } else if (element == MARK) {
    set("MWID ", mark_width);
  } else if (element == TEXT) {
    set("TWID ", text_width);
  }
  return 1;
}

int MetaFile::setLineStyle(int element, int style) {
  if (element != LINE) return 0;
  if (style != line_style) putRecord("LSTY ", style);
  line_style = style;
  return 1;
}

int MetaFile::setFillStyle(int element, int style) {
  if (element != FILL) return 0;
  if (style != fill_style) putRecord("FSTY ", style);
  fill_style = style;
  return 1;
}

int MetaFile::drawLine(int /*element*/, float x1, float y1, float x2, float y2) {
  if (!opened) return 0;
  out.put("L 2 ");
  out.putFloat<6>(x1);
  out.put(',');
  out.putFloat<6>(y1);
  out.put(' ');
  out.putFloat<6>(x2);
  out.put(',');
  out.putFloat<6>(y2);
  out.put('\n');
  return 1;
}

void MetaFile::putPoints(const char* code, const Points& points) {
  const int n = points.getNum();
  const float* px = points.xs();
  const float* py = points.ys();
  out.put(code);
  out.putInt(n);
  out.put(' ');
  for (int i = 0; i < n; i++) {
    out.putFloat<6>(px[i]);
    out.put(',');
    out.putFloat<6>(py[i]);
    out.put(' ');
  }
  out.put('\n');
}

int MetaFile::drawLine(int /*element*/, const Points& points) {
  if (!opened) return 0;
  putPoints("L ", points);
  return 1;
}

int MetaFile::drawFill(int /*element*/, const Points& points) {
  if (!opened) return 0;
  putPoints("F ", points);
  return 1;
}

int MetaFile::setFont(const char* font) {
  if (!opened) return 0;
  out.put("FONT ");
  out.putLine(font);
  out.put('\n');
  return 1;
}

int MetaFile::setTextAlign(int horizontal, int vertical) {
  if (!opened) return 0;
  out.put("TALIGN ");
  out.putInt(horizontal);
  putRecord(" ", vertical);
  return 1;
}

int MetaFile::setImageAlign(int horizontal, int vertical) {
  if (!opened) return 0;
  out.put("IALIGN ");
  out.putInt(horizontal);
  putRecord(" ", vertical);
  return 1;
}

int MetaFile::drawText(const Point& p, const char* text) {
  if (!opened) return 0;
  out.put("T ");
  out.putFloat<6>(p.x);
  out.put(',');
  out.putFloat<6>(p.y);
  out.put(' ');
  out.putLine(text);
  out.put('\n');
  return 1;
}

int MetaFile::setClip(float x1, float y1, float x2, float y2) {
  clip.set(x1, y1, x2 - x1, y2 - y1);
  if (!opened) return 0;
  out.put("CL ");
  out.putFloat<6>(x1);
  out.put(' ');
  out.putFloat<6>(y1);
  out.put(' ');
  out.putFloat<6>(x2);
  out.put(' ');
  out.putFloat<6>(y2);
  out.put('\n');
  return 1;
}

int MetaFile::drawImage(Image& image, float px, float py) {
  int columns = 0;
  int rows = 0;
  if (!opened || !image.validData() || HexRaster::getSize(clip, columns, rows) == 0) return 0;
  char head[128];
  StrLib::printf(head, sizeof(head), "I\n%d %d translate\n%d %d scale\n",
                 Tools::cut(std::round(static_cast<double>(clip.x))),
                 Tools::cut(std::round(static_cast<double>(clip.y))), columns, rows);
  out.put(head);
  const int result = HexRaster::write(out, image, clip, px, py, HexRaster::METAFILE);
  out.put("grestore\n");
  return result;
}

int MetaFile::message(const char* text) {
  if (!opened) return 0;
  out.put('#');
  out.putLine(text);
  out.put('\n');
  return 1;
}

}  // namespace ZQV
