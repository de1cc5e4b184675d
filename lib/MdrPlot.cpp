#include "MdrPlot.h"

#include <cmath>
#include <cstdio>

#include "Convert.h"
#include "Datum.h"
#include "EarthPoint.h"
#include "Graph.h"
#include "Grid.h"
#include "Image.h"
#include "MdrFile.h"
#include "Plot.h"
#include "PlotAttr.h"
#include "StrLib.h"
#include "Strings.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr const char* mosaic_convention = "rad_cvt";
constexpr const char* site_convention = "mdr_site";
constexpr const char* tops_format = "fm=%.0f";
constexpr int site_cell = 12;      // of the site in its echo box
constexpr double cell_miles = 11;  // nautical, the width of a cell as ramp and clutter count it
constexpr int message_data = 7;
constexpr int debug_data = 2;

/** The region has a point i; what has no direction is a width. */
bool hasPoint(const MdrRegion& region, int i) {
  return i < region.num_loc && region.loc[i].dir != Const::MISS;
}

/** Position of a point of a region, unset if it has none. */
EarthPoint pointOf(const MdrData& report, const MdrRegion& region, int i) {
  EarthPoint place;
  if (hasPoint(region, i)) {
    report.locate(region.loc[i].dir, region.loc[i].rad, place);
  }
  return place;
}

/** Where a region's items are drawn: at its first point, or in the middle of the first two. */
EarthPoint placeOf(const MdrData& report, const MdrRegion& region) {
  if (!hasPoint(region, 0)) {
    return {report.lat, report.lon};
  }
  EarthPoint place = pointOf(report, region, 0);
  const EarthPoint other = pointOf(report, region, 1);
  if (place.isSet() && other.isSet()) {
    place.set((place.lat + other.lat) / 2, (place.lon + other.lon) / 2);
  }
  return place;
}

/** The first precipitation with its mark; no type leaves the text as it is. */
void setPrecip(const MdrRegion& region, Datum& datum) {
  const MdrPrecip& prec = region.prec[0];
  if (region.num_prec > 0 && StrLib::valid(prec.type)) {
    datum.formatData("%s%s", prec.type, StrLib::valid(prec.getMark(), ""));
  }
}

/** Empties all but the place and the text, which items without an own one leave as it was. */
void startItem(Datum& datum, int type, const char* format) {
  for (int i = 0; i < Datum::num_values; i++) {
    datum.setValue(i, Const::FMISS);
  }
  datum.setType(type);
  datum.setFormat(format);
}

const char* noUnits(const char* /*name*/) {
  return "";
}

}  // namespace

MdrPlot::MdrPlot(const char* params) : ReportPlot("MdrPlot", "MDR", "mdrplot.var", 0.118991F) {
  MdrPlot::init();
  if (params != nullptr) {
    MdrPlot::setParam(params);
  }
}

int MdrPlot::init() {
  initReport(mosaic_convention);
  data.init();
  plt_echo = 0;
  cutoff.clear();
  ramp_cut = ramp_len = Const::MISS;
  if (isPresent(Zqv::getResrc("color_fill"))) {
    setColorFill(Zqv::getResrc("color_fill"));
  }
  if (isPresent(Zqv::getResrc("color_data"))) {
    setColor(Zqv::getResrc("color_data"));
  }
  if (isPresent(Zqv::getResrc("timezone"))) {
    tz.set(Zqv::getResrc("timezone"));
  }
  if (isPresent(Zqv::getResrc("identifier"))) {
    setId(Zqv::getResrc("identifier"));
  }
  setLevelFill();
  setFile();
  return MdrPlot::setParam(Zqv::getResrc("parameter"));
}

int MdrPlot::setInput(const char* name) {
  if (StrLib::equal(name, "site") || StrLib::equal(name, "mdrsite")) {
    type = SITE;
    setNameConv(site_convention);
  } else if (StrLib::equal(name, "mos") || StrLib::equal(name, "mdr")) {
    type = MOSAIC;
    setNameConv(mosaic_convention);
  } else if (StrLib::equal(name, "mosg")) {
    type = MOSAIC_GRID;
    setNameConv(mosaic_convention);
  }
  return 1;
}

int MdrPlot::setParam(const char* text) {
  const Strings items(text, ',');
  for (int i = 0; i < items.getNum(); i++) {
    if (items.iequal(i, "fi", 2)) {
      setFilename(items.getStringAfter(i, '='));  // "fill" and "filter" too: deliberate
    } else if (takeItem(items, i)) {
      continue;
    } else if (items.iequal(i, "ramp", 4)) {
      takeRamp(items, i, ramp_cut, ramp_len);
    } else if (items.equal(i, "echo", 4)) {
      plt_echo = 1;
    }
  }
  passParam(text);
  return 1;
}

EarthPoint MdrPlot::getSite() const {
  return {data.lat, data.lon};
}

int MdrPlot::readSite() {
  MdrFile file;
  if (file.open(filename) == 0) {
    return -1;
  }
  MdrRawData raw;
  while (file.read(raw) != 0) {
    if (isWanted(raw.id)) {
      file.decode(raw, data);
      findStation(data.getId(), data.lat, data.lon);
      return 1;
    }
  }
  return 0;
}

void MdrPlot::drawSite(Plot& plot) {
  if (Zqv::checkMessage(message_data)) {
    data.print();
    data.printEchoes();
  }
  readColorTable(plot);
  Image image;
  toImage(data, image);
  draw(plot, image);
  drawData(plot, data);
}

int MdrPlot::drawMosaic(Plot& plot) {
  MdrZqvFile file;
  if (file.open(filename.getName(), 0) == 0) {
    return -1;
  }
  readColorTable(plot);
  if (type == MOSAIC_GRID) {
    Grid grid;
    return file.read(grid) != 0 ? draw(plot, grid) : 0;
  }
  Image image;
  if (file.read(image) == 0) {
    return 0;
  }
  setDateLabel(file.getDate(), image);
  draw(plot, image);
  if (plt_echo != 0) {
    drawEchoes(plot, image);
  }
  MdrData station;
  while (file.read(station) != 0) {
    if (findStation(station.getId(), station.lat, station.lon) && Zqv::checkMessage(message_data)) {
      station.print();
    }
    drawData(plot, station);
  }
  return 1;
}

/** The level of each cell of the mosaic as a number. */
void MdrPlot::drawEchoes(Plot& plot, const Image& image) {
  constexpr float mark_share = 0.02F;
  constexpr float text_share = 0.01F;
  constexpr int plus = 2;
  const PlotAttr attr = dataAttr();
  const float height = text_share * plot.getVert();
  plot.setMarkType(plus);
  plot.setMarkSize(mark_share * plot.getVert());
  plot.setText();
  plot.setTextAlign(Graph::HALIGN_CENTER, Graph::VALIGN_HALF);
  plot.setTextHeight(height);
  plot.setText(attr, height);
  for (int y = 0; y < image.getHeight(); y++) {
    for (int x = 0; x < image.getWidth(); x++) {
      EarthPoint e;
      mdom.get().tran(GridPoint(static_cast<float>(x), static_cast<float>(y)), e);
      plot.drawFormText(e, "%d", image.getVal(x, y));
    }
  }
}

/** The same of a site's box. */
void MdrPlot::drawEchoes(Plot& plot, const MdrData& report) {
  for (int y = 0; y < MdrData::size; y++) {
    for (int x = 0; x < MdrData::size; x++) {
      EarthPoint e;
      mdom.tranSite(static_cast<float>(x), static_cast<float>(y), e);
      plot.drawFormText(e, "%d", report.echo[x][y]);
    }
  }
}

int MdrPlot::toImage(const MdrData& report, Image& image) {
  EarthPoint centre;
  mdom.setSite(report.lat, report.lon);
  mdom.tranSite(site_cell, site_cell, centre);
  const int done = prepareBox(mdom, centre, MdrData::size, image);
  setBoxLabels(report.getId(), report.getDate(), image);
  for (int y = 0; done != 0 && y < MdrData::size; y++) {
    for (int x = 0; x < MdrData::size; x++) {
      int v = report.echo[x][y] < num_levels ? report.echo[x][y] : 0;
      const double distance = cell_miles * std::hypot(y - site_cell, x - site_cell);
      if (ramp_cut != Const::MISS &&
          v <= levelOf(static_cast<float>(ramp_cut - ramp_cut * distance / ramp_len))) {
        v = 0;
      }
      if (clutter != 0 && distance < clutter) {
        v = 0;
      }
      image.setPixel(x, y, v);
    }
  }
  return done;
}

int MdrPlot::drawData(Plot& plot, const MdrData& report) {
  const EarthPoint site(report.lat, report.lon);
  if (!site.isSet()) {
    return 0;
  }
  if (plot.isDrawing(1)) {
    mdom.setSite(report.lat, report.lon);
    startSite(plot, site);
    if (plt_echo != 0 && type == SITE) {
      drawEchoes(plot, report);
    }
    if (Zqv::checkDebug(debug_data)) {
      report.print();
    }
    drawVars(plot, report);
  }
  // Of the first site alone, so that a loop has them in its first frame only: deliberate.
  if (num == 0) {
    addVarLabels(plot, vars, report.getDate(), noUnits);
  }
  num++;
  return 1;
}

void MdrPlot::drawVars(Plot& plot, const MdrData& report) {
  const EarthPoint site(report.lat, report.lon);
  Datum datum(site);
  const int num_reg = report.getNumReg();
  for (int i = 0; i < vars.getNum(); i++) {
    const char* name = vars.getName(i);
    const char* format = vars.getFormat(i);
    const auto is = [name](const char* other) { return StrLib::equal(name, other); };
    if (is("city") || is("stat")) {
      const char* text = is("city") ? report.getId() : MdrZqvFile::statusWord(report.getStatus());
      startItem(datum, Datum::DATA, format);
      datum.set(site);
      if (text != nullptr) {
        datum.setData(text);
      }
      if (StrLib::valid(datum.getData())) {
        dplot.draw(plot, datum);
      }
    } else if (is("etop") || is("echotop")) {
      drawTops(plot, report, datum);
    } else if (is("pr_typ") || is("pr_tnd")) {
      for (int r = 0; r < num_reg; r++) {
        startItem(datum, Datum::TEXT, format);
        datum.set(placeOf(report, report.reg[r]));
        if (is("pr_tnd")) {
          datum.setData(report.reg[r].trend);
        } else {
          setPrecip(report.reg[r], datum);
        }
        dplot.draw(plot, datum);
      }
      // Regions and entries share their counter: the walk goes on one above the regions, and ends
      // where that would serve an entry again. Deliberate.
      if (num_reg + 1 <= i) {
        return;
      }
      i = num_reg;
    } else if (is("pr_amv") || is("pr_cmv")) {
      for (int r = 0; r < num_reg; r++) {
        datum.set(placeOf(report, report.reg[r]));
        if (drawMove(plot, report.reg[r], is("pr_amv") ? 'A' : 'C', format, datum)) {
          datum.print();
        }
      }
    } else if (is("area")) {
      for (int r = 0; r < num_reg; r++) {
        drawArea(plot, report, report.reg[r]);
      }
    } else if (is("comp")) {
      startItem(datum, Datum::DATA, format);
      datum.set(site);
      const char* text = MdrZqvFile::statusWord(report.getStatus());
      if (text != nullptr) {
        datum.setData(text);
        dplot.draw(plot, datum);
      }
      drawTops(plot, report, datum);
      for (int r = 0; r < num_reg; r++) {
        datum.set(placeOf(report, report.reg[r]));
        drawRegion(plot, report.reg[r], datum, format);
      }
    }
  }
}

/** Height of the highest top of the first region, where that is. */
void MdrPlot::drawTops(Plot& plot, const MdrData& report, Datum& datum) {
  EarthPoint place;
  if (!report.validTops(0) || report.getTopsLoc(0, place) == 0) {
    return;
  }
  startItem(datum, Datum::VALUE, tops_format);
  datum.set(place);
  datum.setValue(0, static_cast<float>(report.getTopsHgt(0)));
  dplot.draw(plot, datum);
}

/** Type, trend and movements of a region at the place of the datum. */
void MdrPlot::drawRegion(Plot& plot, const MdrRegion& region, Datum& datum, const char* format) {
  startItem(datum, Datum::TEXT, format);
  setPrecip(region, datum);
  dplot.draw(plot, datum);
  datum.setData(region.trend);
  dplot.draw(plot, datum);
  drawMove(plot, region, 'A', format, datum);
  drawMove(plot, region, 'C', "", datum);
}

/** The first movement of a region at the place of the datum, if it is of the area ('A') or of cells
 * ('C'). @return whether it is */
bool MdrPlot::drawMove(Plot& plot, const MdrRegion& region, char move, const char* format,
                       Datum& datum) {
  if (region.num_move < 1 || region.move[0].type != move) {
    return false;
  }
  startItem(datum, move == 'A' ? Datum::VECT : Datum::WBARB, format);
  datum.setValue(0, static_cast<float>(region.move[0].dir));
  datum.setValue(1, static_cast<float>(region.move[0].spd));
  dplot.draw(plot, datum);
  return true;
}

/** A line between the first two points of a region, or a circle around the only one. */
void MdrPlot::drawArea(Plot& plot, const MdrData& report, const MdrRegion& region) {
  const EarthPoint first = pointOf(report, region, 0);
  if (!first.isSet()) {
    return;
  }
  plot.setLine();
  plot.setLine(dataAttr());
  if (hasPoint(region, 1)) {
    const EarthPoint second = pointOf(report, region, 1);
    if (second.isSet()) {
      plot.drawLine(first, second);
    }
  } else if (region.num_loc > 1 && region.loc[1].rad != Const::MISS) {
    plot.drawCircle(first, Convert::NMtoKM(static_cast<float>(region.loc[1].rad)));
  }
}

}  // namespace ZQV
