#include "ReportPlot.h"

#include <cstdio>

#include "CityTool.h"
#include "DateTool.h"
#include "Domain.h"
#include "DomainTool.h"
#include "EarthPoint.h"
#include "Graph.h"
#include "Grid.h"
#include "Image.h"
#include "Plot.h"
#include "PlotAttr.h"
#include "SiteDomain.h"
#include "StrLib.h"
#include "Strings.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr const char* level_fill = "-150:off,20:blue,30:cyan,40:green,45:yellow,50:red,55:magenta";
constexpr float level_dbz[] = {0, 20, 30, 40, 45, 50, 55};  // where a level begins

}  // namespace

void ReportPlot::initReport(const char* conv) {
  id.clear();
  color_table.clear();
  color_fill.clear();
  color.clear();
  variable.clear();
  tz = Timezone();
  sync = 0;
  type = MOSAIC;
  fill = Const::MISS;
  draw_plot = true;
  draw_data = true;
  dplot.init();
  gcont.init();
  img.init();
  plt_site = 0;
  plt_dist.fill(0.0F);
  clutter = 0;
  vars.init();
  num = 0;
  begun.clear();
  setNameConv(conv);
}

void ReportPlot::setLevelFill() {
  img.setColorFill(level_fill);
  gcont.setColorFill(level_fill);
}

int ReportPlot::setFilename() {
  char prompt[40];
  std::snprintf(prompt, sizeof(prompt), "Enter the %s filename: ", family_name);
  return filename.setFilePrompt(prompt);
}

int ReportPlot::getType(const char* name) {
  if (StrLib::equal(name, "site") || StrLib::equal(name, "wmo")) {
    return SITE;
  }
  return StrLib::equal(name, "mosg") ? MOSAIC_GRID : MOSAIC;
}

int ReportPlot::setColor(const char* text) {
  return color.copy(StrLib::valid(text, ""));
}

int ReportPlot::setVariable(const char* text) {
  return variable.copy(StrLib::valid(text, ""));
}

int ReportPlot::setMap(int flag) {
  img.setMap(flag);
  gcont.setMap(flag);
  return 1;
}

int ReportPlot::print() {
  std::printf("%s\n", class_name);
  return 1;
}

bool ReportPlot::takeItem(const Strings& items, int i) {
  constexpr int value = 3;  // place of a value behind two letters
  constexpr int behind_fill = 5;
  const char* behind = items.getStringAfter(i, '=');
  if (items.iequal(i, "in", 2)) {
    setInput(behind);
  } else if (items.iequal(i, "nc", 2)) {
    setNameConv(behind);
  } else if (items.equal(i, "ho", 2)) {
    setHour(behind);
  } else if (items.equal(i, "id", 2)) {
    setId(behind);
  } else if (items.equal(i, "tz", 2)) {
    tz.set(items.getString(i, value));
  } else if (items.iequal(i, "ct", 2)) {
    setColorTable(behind);
  } else if (items.iequal(i, "cof", 3)) {
    setColorFill(behind);
  } else if (items.equal(i, "co", 2)) {
    setColor(behind);
  } else if (items.equal(i, "va", 2)) {
    setVariable(behind);
  } else if (items.iequal(i, "plot")) {
    draw_plot = true;
    draw_data = false;
  } else if (items.iequal(i, "data")) {
    draw_plot = false;
    draw_data = true;
  } else if (items.equal(i, "sc", 2)) {
    dplot.setScale(items.getFloat(i, value));
  } else if (items.iequal(i, "site")) {
    plt_site = 1;
  } else if (items.iequal(i, "distm", 5)) {
    takeRings(items, i, 5, true, plt_dist.data());
  } else if (items.iequal(i, "dist", 4)) {
    takeRings(items, i, 4, false, plt_dist.data());
  } else if (items.equal(i, "fill", 4)) {
    fill = items.getInt(i, behind_fill);
  } else if (items.equal(i, "sync")) {
    sync = 1;
  } else if (items.equal(i, "map")) {
    setMap(1);
  } else {
    return false;
  }
  return true;
}

void ReportPlot::passParam(const char* text) {
  gcont.setParam(text);
  img.setParam(text);
}

bool ReportPlot::findStation(const char* station, float& lat, float& lon) {
  if (!chash) {
    chash.emplace(site_file);
  }
  CityHashData found;
  if (chash->get(station, found) == 0) {
    return false;
  }
  lat = found.data.lat;
  lon = found.data.lon;
  return true;
}

bool ReportPlot::isWanted(const char* station) const {
  return id.empty() || StrLib::iequal(station, id.c_str());
}

int ReportPlot::getDomain(Domain& domain) {
  if (type != SITE) {
    return DomainTool::set(domain, "us");
  }
  constexpr float default_lat = 40.0F;
  constexpr float default_lon = -90.0F;
  EarthPoint site;
  if (!id.empty()) {
    CityTool::locate(site_file, id.c_str(), site);
  } else if (filename.isSet() && readSite() > 0) {
    // Kept for the drawing: standard input can be read only once.
    begun = filename.getName();
    site = getSite();
  }
  if (!site.isSet()) {
    site.set(default_lat, default_lon);
  }
  domain.set(siteView(site, view_spacing));
  return 1;
}

void ReportPlot::readVars() {
  vars.init();
  vars.readFile(list_file);
  vars.decode(variable.valid() ? variable.get() : Zqv::getResrc("variable"));
}

int ReportPlot::draw(Plot& plot) {
  if (!filename.isSet()) {
    filename.setFile("la");
  }
  const bool goes_on = type == SITE && id.empty() && !begun.empty() && begun == filename.getName();
  begun.clear();
  readVars();
  int found = 1;
  if (type != SITE) {
    found = drawMosaic(plot);
  } else {
    found = goes_on ? 1 : readSite();
    if (found > 0) {
      drawSite(plot);
    }
  }
  if (found < 0) {
    Zqv::outWarning("%s: Unable to open %s%s file: %s\n", class_name, family_name,
                    type == SITE ? " site" : "", filename.getName());
    Zqv::setFileError(filename.getName());
  } else if (found == 0) {
    Zqv::setError(Zqv::NODATA);
  }
  return 0;
}

int ReportPlot::draw(Plot& plot, Image& image) {
  if (color_fill.valid()) {
    img.setColorFill(color_fill.get());
  }
  if (draw_plot && plot.isDrawing(0)) {
    img.draw(plot, image);
  }
  return 1;
}

int ReportPlot::draw(Plot& plot, const Grid& grid) {
  if (color_fill.valid()) {
    gcont.setColorFill(color_fill.get());
  }
  gcont.setType(ContPlot::FILL);
  gcont.setLabelParam(0, 0);
  if (draw_plot && plot.isDrawing(0)) {
    gcont.draw(plot, grid);
  }
  return 1;
}

int ReportPlot::prepareBox(const SiteDomain& domain, const EarthPoint& centre, int size,
                           Image& image) const {
  image.init();
  if (!centre.isSet()) {
    return 0;
  }
  DomainVal box = domain.get().get();
  box.nx = box.ny = size;
  box.clat = centre.lat;
  box.clon = centre.lon;
  image.set(box, 8);
  image.setColorType(Image::DATA);
  if (image.allocData() == 0 || image.allocValues() == 0) {
    return 0;
  }
  for (int i = 0; i < num_levels; i++) {
    image.setValue(i, level_dbz[i]);
  }
  return 1;
}

void ReportPlot::setBoxLabels(const char* station, const Date& date, Image& image) const {
  char info[60];
  std::snprintf(info, sizeof(info), "Site: %s %s reflectvity [dBZ]", station, family_name);
  image.setInfo(info);
  image.setDate(date);
  setDateLabel(date, image);
}

void ReportPlot::setDateLabel(const Date& date, Image& image) const {
  String label;
  DateTool::createLabel(date, tz, label);
  image.setDatim(label.get());
}

int ReportPlot::levelOf(float dbz) {
  int level = num_levels - 1;
  while (level > 0 && !(dbz >= level_dbz[level])) {
    level--;
  }
  return level;
}

PlotAttr ReportPlot::dataAttr() const {
  return PlotAttr(color.valid() ? color.get() : "white");
}

void ReportPlot::startSite(Plot& plot, const EarthPoint& site) {
  constexpr float text_share = 0.01F;
  const PlotAttr attr = dataAttr();
  const float height = text_share * plot.getVert();
  plot.setLine();
  plot.setMark();
  plot.setText();
  plot.setTextAlign(Graph::HALIGN_CENTER, Graph::VALIGN_HALF);
  plot.setTextHeight(height);
  plot.setLine(attr);
  plot.setText(attr, height);
  setSiteMark(plot, attr);
  dplot.setAttr(attr);
  if (plt_site != 0) {
    plot.drawMark(site);
  }
  drawRings(plot, site, plt_dist.data());
}

}  // namespace ZQV
