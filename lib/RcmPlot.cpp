#include "RcmPlot.h"

#include <algorithm>
#include <cmath>

#include "Datum.h"
#include "EarthPoint.h"
#include "FileTool.h"
#include "Grid.h"
#include "Image.h"
#include "Plot.h"
#include "PlotAttr.h"
#include "RcmFile.h"
#include "StrLib.h"
#include "Strings.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr const char* fill_file = "rcm.cfl";
constexpr const char* tops_format = "fm=%.0f";
constexpr int box_size = 100;  // cells of the box that is drawn
constexpr float box_middle = 49.5F;
constexpr float site_cell = 48.0F;  // of the site in its box
constexpr double km = 100;          // in a unit of the plane
constexpr int default_ramp_len = 150;
constexpr int message_file = 6;
constexpr int message_data = 7;
constexpr int debug_data = 2;

}  // namespace

RcmPlot::RcmPlot(const char* params) : ReportPlot("RcmPlot", "RCM", "rcmplot.var", 0.11899F) {
  RcmPlot::init();
  if (params != nullptr) {
    RcmPlot::setParam(params);
  }
}

int RcmPlot::init() {
  initReport("rcm_cvt");
  data.init();
  date.init();
  dated.clear();
  cutoff.clear();
  ramp_prec_cut = ramp_clar_cut = Const::MISS;
  ramp_prec_len = ramp_clar_len = default_ramp_len;
  filter = 0;
  min_hgt = 0;
  num_plt = 100;
  no_clair = 0;
  if (isPresent(Zqv::getResrc("color_table"))) {
    setColorTable(Zqv::getResrc("color_table"));
  }
  if (FileTool::checkPath(Zqv::getDatabasePath(), fill_file) != 0) {
    setColorFill(fill_file);
  }
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
  if (isPresent(Zqv::getResrc("variable"))) {
    setVariable(Zqv::getResrc("variable"));
  }
  setLevelFill();
  setFile();
  return RcmPlot::setParam(Zqv::getResrc("parameter"));
}

int RcmPlot::setInput(const char* name) {
  if (StrLib::equal(name, "site")) {
    type = SITE;
  } else if (StrLib::equal(name, "mos")) {
    type = MOSAIC;
  } else if (StrLib::equal(name, "mosg")) {
    type = MOSAIC_GRID;
  }
  return 1;
}

/** "ramp" alone, or "ramp=CUT:LENGTH:CUT:LENGTH" for clear air and precipitation. */
void RcmPlot::takeRamp(const Strings& items, int i) {
  constexpr int value = 5;
  if (items.getLength(i) <= value) {
    ramp_prec_cut = 30;
    ramp_clar_cut = 45;
    ramp_prec_len = ramp_clar_len = default_ramp_len;
    return;
  }
  ramp_clar_len = Const::MISS;
  items.scanf(i, value, "%d:%d:%d:%d", &ramp_clar_cut, &ramp_clar_len, &ramp_prec_cut,
              &ramp_prec_len);
  if (ramp_clar_len < 1) {
    ramp_clar_len = default_ramp_len;
  }
}

int RcmPlot::setParam(const char* text) {
  constexpr int value = 8;  // place of a value behind a word of seven letters
  constexpr int default_clutter = 25;
  constexpr int default_height = 150;
  const Strings items(text, ',');
  for (int i = 0; i < items.getNum(); i++) {
    const char* behind = items.getStringAfter(i, '=');
    if (items.iequal(i, "fi=", 3)) {
      setFilename(behind);
    } else if (items.iequal(i, "pa", 2)) {
      setPath(behind);
    } else if (takeItem(items, i)) {
      continue;
    } else if (items.iequal(i, "ramp", 4)) {
      takeRamp(items, i);
    } else if (items.iequal(i, "clutter", 7)) {
      clutter = numberAt(items, i, value, default_clutter);
    } else if (items.iequal(i, "min_hgt", 7)) {
      min_hgt = numberAt(items, i, value, default_height);
    } else if (items.equal(i, "num_plt", 7)) {
      num_plt = numberAt(items, i, value, num_plt);
    } else if (items.iequal(i, "noclar")) {
      no_clair = 1;
    } else if (items.equal(i, "filter")) {
      filter = 1;
    }
  }
  passParam(text);
  return 1;
}

int RcmPlot::getDate(Date& out) {
  constexpr int half = 29;
  constexpr int early = 15;
  constexpr int late = 45;
  if (date.isSet() && dated == filename.getName()) {
    out = date;
  } else {
    filename.getDate(out);
  }
  if (out.isSet()) {
    out.setMinute(out.getMinute() > half ? late : early);
  }
  return out.isSet() ? 1 : 0;
}

int RcmPlot::getInitDate(Date& out) {
  if (!filename.isSet()) {
    filename.setFile("la");
  }
  return getDate(out);
}

const char* RcmPlot::getUnits(const char* name) {
  if (StrLib::iequal(name, "etop") || StrLib::iequal(name, "ctop")) {
    return "100ft";
  }
  if (StrLib::iequal(name, "cdir")) {
    return "deg";
  }
  return StrLib::iequal(name, "cspd") || StrLib::iequal(name, "cmvmt") ? "knt" : "";
}

/** Keeps the date of what is in the current file. */
void RcmPlot::setDate(const Date& at) {
  date = at;
  dated = filename.getName();
}

EarthPoint RcmPlot::getSite() const {
  return {data.lat, data.lon};
}

int RcmPlot::readSite() {
  RcmFile file;
  if (file.open(filename) == 0) {
    return -1;
  }
  Zqv::outMessage(message_file, "RcmPlot: opening RCM file: %s\n", filename.getName());
  setDate(filename.getDate());
  RcmRawData raw;
  while (file.read(raw) != 0) {
    if (isWanted(raw.id)) {
      if (RcmFile::decode(raw, data) == 0) {
        return 0;
      }
      if (Zqv::checkMessage(message_data)) {
        data.print();
      }
      findStation(data.getId(), data.lat, data.lon);
      return 1;
    }
  }
  return 0;
}

void RcmPlot::drawSite(Plot& plot) {
  readColorTable(plot);
  num = 0;
  Image image;
  toImage(data, image);
  draw(plot, image);
  drawData(plot, data);
}

int RcmPlot::drawMosaic(Plot& plot) {
  RcmZqvFile file;
  if (file.open(filename.getName(), 0) == 0) {
    return -1;
  }
  Zqv::outMessage(message_file, "RcmPlot: opening RCM file: %s\n", filename.getName());
  setDate(file.getDate());
  readColorTable(plot);
  num = 0;
  Image image;
  Grid grid;
  if ((type == MOSAIC_GRID ? file.read(grid) : file.read(image)) == 0) {
    return 0;
  }
  if (!plot.isDateSet()) {
    plot.setDate(date);
  }
  if (type == MOSAIC_GRID) {
    draw(plot, grid);
  } else {
    setDateLabel(date, image);
    draw(plot, image);
  }
  RcmData station;
  while (file.read(station) != 0) {
    findStation(station.getId(), station.lat, station.lon);
    drawData(plot, station);
  }
  return 1;
}

/** Level up to which the ramp hides echoes at a distance in km: it falls to 20 dBZ at its length.
 */
int RcmPlot::rampLevel(int mode, double distance) const {
  constexpr double lowest = 20;
  const auto level = [&](int cut, int length) {
    return cut == Const::MISS || length == 0
               ? 0
               : levelOf(static_cast<float>(cut - (cut - lowest) * distance / length));
  };
  switch (mode) {
    case RcmData::CLEAR_AIR: return level(ramp_clar_cut, ramp_clar_len);
    case RcmData::PRECIP: return level(ramp_prec_cut, ramp_prec_len);
    default: return 0;
  }
}

int RcmPlot::toImage(const RcmData& message, Image& image) {
  EarthPoint site(message.lat, message.lon);
  EarthPoint centre;
  GridPoint exact;
  rdom.setSite(site.lat, site.lon);
  rdom.tranSite(box_middle, box_middle, centre);
  const int done = prepareBox(rdom, centre, box_size, image);
  setBoxLabels(message.getId(), message.getDate(), image);
  if (done == 0 || rdom.get().tran(site, exact) == 0) {
    return 0;
  }
  Zqv::outDebug("Central grid: %.3f %.3f\n", static_cast<double>(exact.gx),
                static_cast<double>(exact.gy));
  // The site stands on a cell of the mosaic, and its radar somewhere in it.
  const auto sx = static_cast<double>(exact.gx - rdom.getSite().gx + site_cell);
  const auto sy = static_cast<double>(exact.gy - rdom.getSite().gy + site_cell);
  const double cell_km = static_cast<double>(rdom.get().getDx()) * km;
  for (int y = 0; y < box_size; y++) {
    for (int x = 0; x < box_size; x++) {
      const double distance = cell_km * std::hypot(y - sy, x - sx);
      int v = message.echo[x][y] < num_levels ? message.echo[x][y] : 0;
      if (v <= rampLevel(message.getMode(), distance) || (clutter != 0 && distance < clutter)) {
        v = 0;
      }
      image.setPixel(x, y, v);
    }
  }
  return 1;
}

EarthPoint RcmPlot::findPlace(const RcmData& message, float x, float y) {
  if (message.getLocType() == RcmData::EARTH) {
    return {x, y};
  }
  EarthPoint place;
  rdom.tranSite(x, y, place);
  return place;
}

int RcmPlot::drawData(Plot& plot, const RcmData& message) {
  const EarthPoint site(message.lat, message.lon);
  if (!site.isSet() || (no_clair != 0 && message.getMode() == RcmData::CLEAR_AIR)) {
    return 0;
  }
  if (plot.isDrawing(1)) {
    rdom.setSite(site.lat, site.lon);
    startSite(plot, site);
    for (int i = 0; i < vars.getNum(); i++) {
      drawVar(plot, message, i);
    }
  }
  if (num == 0) {
    if (vars.getNum() > 0 && !plot.isDateSet()) {
      plot.setDate(message.getDate());
    }
    addVarLabels(plot, vars, message.getDate(), getUnits);
  }
  num++;
  return 1;
}

/** A value in the units of entry i of the variables; as it is if there is no such conversion. */
float RcmPlot::convert(float value, const char* units, int i) {
  const char* wanted = vars.getUnits(i);
  const float v = StrLib::valid(wanted) ? unit.convert(value, units, wanted) : Const::FMISS;
  return v != Const::FMISS ? v : value;
}

/** Draws what entry i of the variables asks for. */
void RcmPlot::drawVar(Plot& plot, const RcmData& message, int i) {
  const char* name = vars.getName(i);
  const auto is = [name](const char* other) { return StrLib::equal(name, other); };
  const auto draw_word = [&](const char* word) {
    if (StrLib::valid(word)) {
      dplot.draw(plot, EarthPoint(message.lat, message.lon), Datum::DATA, word, vars.getFormat(i));
    }
  };
  if (is("city")) {
    draw_word(message.getId());
  } else if (is("stat")) {
    draw_word(RcmZqvFile::statusWord(message.getStatus()));
  } else if (is("mode")) {
    draw_word(message.getMode() == RcmData::PRECIP      ? "P"
              : message.getMode() == RcmData::CLEAR_AIR ? "C"
                                                        : nullptr);
  } else if (is("etop") || is("echotop")) {
    if (message.getMaxTop() >= min_hgt) {
      dplot.draw(plot, findPlace(message, message.getMaxTopX(), message.getMaxTopY()), Datum::VALUE,
                 convert(static_cast<float>(message.getMaxTop()), getUnits("etop"), i),
                 tops_format);
    }
  } else if (is("tvs")) {
    drawVortices(plot, message, message.tvs, message.getNumTvs(), true);
  } else if (is("meso")) {
    drawVortices(plot, message, message.meso, message.getNumMeso(), false);
  } else {
    drawStorms(plot, message, i);
  }
}

void RcmPlot::drawVortices(Plot& plot, const RcmData& message, const RcmVortex* list, int n,
                           bool tornado) {
  for (int k = 0; k < std::min(n, num_plt); k++) {
    const RcmVortex& v = list[k];
    if (filter != 0 && !nearStorm(message, v)) {
      Zqv::outDebug(debug_data, "RcmPlot: %s filtered: %.0f %.0f\n", tornado ? "TVS" : "Meso",
                    static_cast<double>(v.x), static_cast<double>(v.y));
      continue;
    }
    dplot.draw(plot, findPlace(message, v.x, v.y), Datum::MARK, tornado ? "itri" : "circle",
               tornado ? "co=red,wi=2" : "co=yellow,wi=2");
  }
}

/** Place in cells: of the site's box, or of the national grid for places on the earth. */
bool RcmPlot::findCell(const RcmData& message, float x, float y, GridPoint& cell) {
  if (message.getLocType() == RcmData::EARTH) {
    EarthPoint place(x, y);
    return rdom.get().tran(place, cell) != 0 && cell.isSet();
  }
  cell.set(x, y);
  return cell.isSet();
}

/** Some storm is less than four cells away, across and down together. */
bool RcmPlot::nearStorm(const RcmData& message, const RcmVortex& vortex) {
  constexpr float limit = 4.0F;
  GridPoint cell;
  GridPoint other;
  if (!findCell(message, vortex.x, vortex.y, cell)) {
    return false;
  }
  for (int k = 0; k < message.getNumStorm(); k++) {
    if (findCell(message, message.getStormX(k), message.getStormY(k), other) &&
        std::fabs(cell.gx - other.gx) + std::fabs(cell.gy - other.gy) < limit) {
      return true;
    }
  }
  return false;
}

/** Draws entry i of the variables for each storm. */
void RcmPlot::drawStorms(Plot& plot, const RcmData& message, int i) {
  const char* name = vars.getName(i);
  const char* format = vars.getFormat(i);
  const auto is = [name](const char* other) { return StrLib::equal(name, other); };
  for (int k = 0; k < std::min(message.getNumStorm(), num_plt); k++) {
    const RcmStorm& storm = message.storm[k];
    if (storm.hgt < min_hgt) {
      continue;  // an unknown height is below any
    }
    const EarthPoint place = findPlace(message, storm.x, storm.y);
    const auto draw_value = [&](int v, const char* units, const char* how) {
      const auto value = static_cast<float>(v);
      dplot.draw(plot, place, Datum::VALUE, units != nullptr ? convert(value, units, i) : value,
                 how);
    };
    if (is("cid")) {
      dplot.draw(plot, place, Datum::TEXT, storm.id, format);
    } else if (is("cstat") || (is("hail") && storm.hail >= 1)) {
      drawStatus(plot, storm, place, format);
    } else if (is("ctop")) {
      draw_value(storm.hgt, getUnits(name), tops_format);
    } else if (is("cdir")) {
      draw_value(storm.dir, nullptr, format);
    } else if (is("cspd")) {
      draw_value(storm.spd, getUnits(name), format);
    } else if (is("cmvmt")) {
      drawMove(plot, storm, place, i);
    } else if (is("storm")) {
      drawMove(plot, storm, place, i);
      dplot.draw(plot, place, Datum::TEXT, storm.id, "ul");
      draw_value(storm.hgt, nullptr, "ur,fm=%.0f");
      drawStatus(plot, storm, place, format);
    }
  }
}

void RcmPlot::drawMove(Plot& plot, const RcmStorm& storm, const EarthPoint& place, int i) {
  Datum datum(place);
  datum.setType(Datum::WBARB);
  datum.setValue(0, static_cast<float>(storm.dir));
  datum.setValue(1, convert(static_cast<float>(storm.spd), getUnits("cmvmt"), i));
  datum.setFormat(vars.getFormat(i));
  dplot.draw(plot, datum);
}

/** Symbol of a storm: a triangle for hail, a cross without. */
void RcmPlot::drawStatus(Plot& plot, const RcmStorm& storm, const EarthPoint& place,
                         const char* format) {
  constexpr int probable = 1;
  constexpr int sure = 2;
  const bool hail = storm.hail == probable || storm.hail == sure;
  Datum datum;
  datum.set(place, Datum::MARK, hail ? "tri" : "+",
            storm.hail == sure       ? "co=lgreen,wi=2"
            : storm.hail == probable ? "co=green,wi=2"
                                     : "co=white,wi=2");
  datum.addFormat(format);
  dplot.draw(plot, datum);
}

}  // namespace ZQV
