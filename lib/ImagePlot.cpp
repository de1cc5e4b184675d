#include "ImagePlot.h"

#include <cstdio>

#include "ColorFill.h"
#include "DateTool.h"
#include "Domain.h"
#include "EarthPoint.h"
#include "GeomBox.h"
#include "ImageFile.h"
#include "ImageMath.h"
#include "ImageTool.h"
#include "MapPlot.h"
#include "Plot.h"
#include "PlotAttr.h"
#include "Rect.h"
#include "StrLib.h"
#include "Strings.h"
#include "Zqv.h"

namespace ZQV {

namespace {

/** What stands at a place of an item takes the place of what there was, if it is a number. */
void takeFloat(const Strings& items, int i, int at, float& value) {
  const float v = items.getFloat(i, at);
  value = v != Const::FMISS ? v : value;
}

}  // namespace

ImagePlot::ImagePlot(const char* params) {
  ImagePlot::init();
  ImagePlot::setParam(params);
}

int ImagePlot::init() {
  color_table.clear();
  color_fill.clear();
  id.clear();
  sync = 0;
  tz = Timezone();
  map = false;
  over = fill = pix_off = bar = 0;
  zoom = 1.0F;
  pix_ave = 1;
  cutoff.clear();
  min_lon = max_lon = Const::FMISS;
  image.init();
  ImagePlot::setFile();
  if (isPresent(Zqv::getResrc("timezone"))) {
    tz.set(Zqv::getResrc("timezone"));
  }
  return ImagePlot::setParam(Zqv::getResrc("parameter"));
}

int ImagePlot::setFile() {
  const char* conv = Zqv::getResrc("in_file");
  setNameConv(isPresent(conv) ? conv : "image");
  // Behind the convention, whose own type is one of the program's inputs and not one of files.
  const char* input = Zqv::getResrc("input");
  return ImagePlot::setInput(isPresent(input) ? input : "image");
}

int ImagePlot::setInput(const char* name) {
  filename.setType(ImageFile::getType(name) != ImageFile::UNKNOWN ? name : "unk");
  return 1;
}

int ImagePlot::setFilename() {
  return filename.setFilePrompt("Enter the image filename: ");
}

int ImagePlot::setMap(int flag) {
  map = flag != 0;
  return 1;
}

int ImagePlot::setPixAve(int flag) {
  pix_ave = flag;
  return 1;
}

int ImagePlot::setParam(const char* text) {
  constexpr size_t max_cutoff = 19;
  constexpr int zone = 3;
  constexpr int behind4 = 5;  // place of a value behind a word of 4 letters
  constexpr int behind6 = 7;
  const Strings items(text, ',');
  for (int i = 0; i < items.getNum(); i++) {
    const char* value = items.getStringAfter(i, '=');
    // Ahead of "fi", which it begins with.
    if (items.iequal(i, "fill", 4)) {
      fill = PlotAttr::parseFillStyle(StrLib::valid(items.getString(i, behind4), ""));
    } else if (items.iequal(i, "fi", 2)) {
      setFilename(value);
    } else if (items.iequal(i, "in", 2)) {
      setInput(value);
    } else if (items.iequal(i, "nc", 2)) {
      setNameConv(value);
    } else if (items.equal(i, "tz", 2)) {
      tz.set(items.getString(i, zone));
    } else if (items.iequal(i, "ct", 2)) {
      setColorTable(value);
    } else if (items.iequal(i, "cof", 3)) {
      setColorFill(value);
    } else if (items.iequal(i, "zoom", 4)) {
      takeFloat(items, i, behind4, zoom);
    } else if (items.iequal(i, "map")) {
      map = true;
    } else if (items.iequal(i, "over")) {
      over = 1;
    } else if (items.iequal(i, "bar")) {
      bar = 1;
    } else if (items.iequal(i, "pixoff", 6)) {
      const int n = items.getInt(i, behind6);
      pix_off = n != Const::MISS ? n : pix_off;
    } else if (items.iequal(i, "minlon", 6)) {
      takeFloat(items, i, behind6, min_lon);
    } else if (items.iequal(i, "maxlon", 6)) {
      takeFloat(items, i, behind6, max_lon);
    } else if (items.iequal(i, "cutoff", 6)) {
      cutoff = StrLib::acopy(items.getString(i, behind6)).substr(0, max_cutoff);
    }
  }
  return 1;
}

int ImagePlot::openFile(ImageFile& file) const {
  // The content tells best. The type that was given is for what can't, such as a standard stream.
  const char* name = filename.getName();
  const int told = ImageFile::getType(filename.getType());
  const int found = told != ImageFile::UNKNOWN ? ImageFile::checkType(name) : ImageFile::UNKNOWN;
  return file.open(name, ImageFile::READ, found != ImageFile::UNKNOWN ? found : told);
}

int ImagePlot::getDomain(Domain& domain) {
  ImageFile file;
  Image header;
  if (!filename.isSet() || openFile(file) == 0 || file.readHeader(header) < 1 ||
      !header.getDomain().isSet()) {
    return 0;
  }
  return header.getDomain(domain);
}

int ImagePlot::draw(Plot& plot) {
  if (!filename.isSet()) {
    filename.setFile("la");
  }
  ImageFile file;
  if (openFile(file) == 0) {
    Zqv::outWarning("ImagePlot: Unable to open file: %s\n", filename.getName());
    return 0;
  }
  return drawFile(plot, file);
}

int ImagePlot::draw(Plot& plot, const char* name) {
  ImageFile file;
  if (file.open(name) == 0) {
    Zqv::outWarning("ImagePlot: Unable to open file: %s\n", StrLib::valid(name, ""));
    return 0;
  }
  return drawFile(plot, file);
}

/** Draws what can be read of a file. */
int ImagePlot::drawFile(Plot& plot, ImageFile& file) {
  Image source;
  file.read(source);
  return draw(plot, source);
}

int ImagePlot::draw(Plot& plot, Image& source) {
  plot.addCallback("AnyEvent", this, nullptr);
  MapPlot under_map("under");
  MapPlot over_map("default,over");
  if (map) {
    under_map.draw(plot);
  }
  drawImage(plot, source);
  if (map) {
    over_map.draw(plot);
  }
  plot.addLabel("ul", source.getInfo());
  if (!plot.isDateSet()) {
    plot.setDate(source.getDate());
  }
  String date;
  DateTool::createLabel(source.getDate(), tz, date);
  plot.addLabel("ur", date.get());
  plot.done();
  return 1;
}

int ImagePlot::drawImage(Plot& plot, Image& source) {
  if (!cutoff.empty()) {
    source.setCutoff(cutoff.c_str());
  }
  if (pix_ave == 0) {
    source.setPixAve(false);
  }
  image.init();
  const bool is_placed = source.validData() && place(plot, source) != 0;
  readColorTable(plot);
  ColorFill colors;
  if (color_fill.valid()) {
    colors.set(plot.getColorMap(), color_fill.get());
  } else {
    colors.setFill(plot.getColorMap(), nullptr);
  }
  if (is_placed) {
    ImageTool::addColor(image, plot.getColorMap(), colors);
    Rect window;
    plot.getWindow(window);
    plot.drawImage(image, window.xmin, window.ymax);
  }
  // Also on a page without pixels, such as that of a metafile.
  if (bar != 0) {
    plot.setBar(colors);
  }
  return is_placed ? 1 : 0;
}

/** Brings the image onto the pixels of the plot. */
int ImagePlot::place(Plot& plot, const Image& source) {
  Domain view;
  if (plot.getViewDomain(view) == 0 && view.isSet()) {
    return 0;
  }
  // Without a map of its own the plot has a plain plane, which an image of a map can't be put on.
  if (view.isSet() && (view.isMap() || !source.getDomain().isMap())) {
    return source.getDomain().isSet() ? ImageMath::remap(source, view, image) : image.copy(source);
  }
  // A plot that has no domain takes the image's.
  const int w = view.getNx() >= 1 ? view.getNx() : source.getWidth();
  const int h = view.getNy() >= 1 ? view.getNy() : source.getHeight();
  const GeomBox box(0.0F, 0.0F, static_cast<float>(w), static_cast<float>(h));
  return ImageMath::clip(source, box, image) != 0 ? plot.setDomain(image.getDomainVal()) : 0;
}

int ImagePlot::print() {
  std::printf("ImagePlot\n");
  return 1;
}

void ImagePlot::callback(const char* name, const char* data, const void* /*source*/) {
  EarthPoint p;
  if (!StrLib::equal(name, "QueryLoc") || data == nullptr ||
      std::sscanf(data, "%f,%f", &p.lat, &p.lon) != 2) {
    return;
  }
  std::printf("ImagePlot value: %d %.1f\n", image.getVal(p),
              static_cast<double>(image.getValue(p)));
  std::fflush(stdout);
}

}  // namespace ZQV
