#include "RadarPlot.h"

#include <array>

#include "ColorFile.h"
#include "ColorMap.h"
#include "Convert.h"
#include "EarthPoint.h"
#include "Plot.h"
#include "PlotAttr.h"
#include "StrLib.h"
#include "Strings.h"
#include "VarList.h"
#include "Zqv.h"

namespace ZQV {

int RadarPlot::setFile() {
  if (isPresent(Zqv::getResrc("input"))) {
    setInput(Zqv::getResrc("input"));
  }
  if (isPresent(Zqv::getResrc("in_file"))) {
    setNameConv(Zqv::getResrc("in_file"));
  }
  if (isPresent(Zqv::getResrc("hour"))) {
    setHour(Zqv::getResrc("hour"));
  }
  if (isPresent(Zqv::getResrc("num_hour"))) {
    filename.setNumFiles(Zqv::getResrc("num_hour"));
  }
  return 1;
}

int RadarPlot::setNameConv(const char* conv) {
  const int done = filename.setNameConv(conv);
  if (!id.empty()) {
    filename.setKey('i', id.c_str());
  }
  if (isPresent(Zqv::getResrc("num_hour"))) {
    filename.setNumFiles(Zqv::getResrc("num_hour"));
  }
  return done;
}

int RadarPlot::getInitDate(Date& date) {
  if (!filename.isSet()) {
    filename.setFile("la");
  }
  return filename.getDate(date);
}

int RadarPlot::setId(const char* text) {
  constexpr size_t max_id = 4;
  id = StrLib::acopy(text).substr(0, max_id);
  return filename.setKey('i', id.c_str());
}

int RadarPlot::setColorTable(const char* text) {
  return color_table.copy(StrLib::valid(text, ""));
}

int RadarPlot::setColorFill(const char* text) {
  return color_fill.copy(StrLib::valid(text, ""));
}

void RadarPlot::takeRings(const Strings& items, int i, int key_length, bool nautical,
                          float* radii) {
  std::array<float, num_rings> given{100.0F, 0.0F, 0.0F, 0.0F};
  int n = 1;
  if (items.getLength(i) > key_length) {
    n = items.scanf(i, key_length + 1, "%f:%f:%f:%f", &given[0], &given[1], &given[2], &given[3]);
  }
  for (int k = 0; k < n; k++) {
    const float radius = given[static_cast<size_t>(k)];
    radii[k] = nautical ? Convert::NMtoKM(radius) : radius;
  }
}

int RadarPlot::numberAt(const Strings& items, int i, int at, int fallback) {
  const char* text = items.getString(i, at);
  return text == nullptr ? fallback : StrLib::toInt(text);
}

void RadarPlot::takeRamp(const Strings& items, int i, int& cut, int& length) {
  constexpr int default_length = 200;
  constexpr int value = 5;
  items.scanf(i, value, "%d:%d", &cut, &length);
  if (length < 1) {
    length = default_length;
  }
}

DomainVal RadarPlot::siteView(const EarthPoint& site, float spacing) {
  DomainVal val;
  val.proj = DomainVal::PSTEREO;
  val.nx = 90;
  val.ny = 60;
  val.dx = val.dy = spacing;
  if (site.isSet()) {
    val.clat = val.plat = site.lat;
    val.clon = val.plon = site.lon;
  }
  return val;
}

void RadarPlot::setSiteMark(Plot& plot, const PlotAttr& attr) {
  constexpr int plus = 2;
  constexpr float share = 0.03F;
  const float size = share * plot.getVert();
  plot.setMarkType(plus);
  plot.setMarkSize(size);
  plot.setMark(attr, size);
}

void RadarPlot::drawRings(Plot& plot, const EarthPoint& site, const float* radii) {
  for (int i = 0; radii[0] != 0.0F && i < num_rings; i++) {
    if (radii[i] != 0.0F) {
      plot.drawCircle(site, radii[i]);
    }
  }
}

void RadarPlot::addVarLabels(Plot& plot, const VarList& vars, const Date& date,
                             const char* (*units)(const char* name)) const {
  for (int i = 0; i < vars.getNum(); i++) {
    if (vars.getLayer(i) != 0) {
      continue;
    }
    VarSpec spec = vars.getSpec(i);
    if (!StrLib::valid(spec.getUnits())) {
      spec.setUnits(units(vars.getName(i)));
    }
    String label;
    spec.toInfoLabel(label);
    plot.addLabel("ul", label.get());
    spec.toDateLabel(date, tz, "", label);
    plot.addLabel("ur", label.get());
    plot.done();
  }
}

void RadarPlot::readColorTable(Plot& plot) const {
  if (color_table.valid()) {
    ColorMap table;
    ColorFile::read(color_table.get(), table);
    plot.setColorMap(table);
  }
}

}  // namespace ZQV
