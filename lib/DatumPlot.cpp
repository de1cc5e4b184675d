#include "DatumPlot.h"

#include <cmath>

#include "CloudPlot.h"
#include "ColorFile.h"
#include "ColorMap.h"
#include "Convert.h"
#include "Datum.h"
#include "EarthPoint.h"
#include "Graph.h"
#include "Plot.h"
#include "PlotAttr.h"
#include "StrLib.h"
#include "Strings.h"
#include "Tools.h"
#include "Wind.h"
#include "WindPlot.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr size_t max_format = 9;
constexpr float text_height = 0.018F;  // sizes of shapes at scale 1, in shares of the plot's height
constexpr float cloud_size = 0.01F;
constexpr float calm_size = 0.013F;
constexpr float small_calm_size = 0.006F;
constexpr float dot_size = 0.003F;
constexpr float wind_size = 0.05F;
constexpr float track_size = 0.1F;
constexpr float symbol_size = 0.03F;
constexpr char open_circle = '0';
constexpr float km = 100.0F;  // in a unit of the plane

template <typename T>
T choose(T v, T missing, T fallback) {
  return v != missing ? v : fallback;
}

float choose(float v, float fallback) {
  return choose(v, Const::FMISS, fallback);
}

int choose(int v, int fallback) {
  return choose(v, Const::MISS, fallback);
}

void setColors(Plot& plot, const char* name) {
  plot.setTextColor(name);
  plot.setLineColor(name);
  plot.setMarkColor(name);
  plot.setFillColor(name);
}

void setColors(Plot& plot, int index) {
  plot.setTextColor(index);
  plot.setLineColor(index);
  plot.setMarkColor(index);
  plot.setFillColor(index);
}

}  // namespace

/** One datum being drawn. */
struct DatumPlot::Job {
  Job(Plot& on, const Datum& what) : plot(on), datum(what), a(what.getFormat()) {}

  [[nodiscard]] Wind wind() const { return {datum.getValue(0), datum.getValue(1)}; }

  Plot& plot;
  const Datum& datum;
  DatumAttr a;
  Point place;  ///< of the datum
  Point at;     ///< where it is drawn, with its offset
  int marker = Const::MISS;
  float size = 0;  ///< that of a datum of scale 1 and height 1
  float expan = 1;
};

int DatumPlot::init() {
  color_table.clear();
  color_fill.clear();
  format.clear();
  fill.init();
  ppt.init();
  scale = 1.0F;
  post_line = 0;
  first = 1;
  attr.init();
  attr.type = Datum::DATA;
  attr.scale = 1.0F;
  attr.dx = attr.dy = 0.0F;
  attr.halign = Graph::HALIGN_CENTER;
  attr.valign = Graph::VALIGN_HALF;
  attr.height = 1.0F;
  attr.width = 0.0F;
  attr.expan = 1.0F;
  attr.shadow = 0;
  attr.skip = 0;
  attr.setColor("green");
  StrLib::copy(attr.font, sizeof attr.font, "modern.fnt");
  StrLib::copy(attr.symbol, sizeof attr.symbol, "wx.smb");
  if (const char* factor = Zqv::getResrc("plot_scale"); Tools::isFloat(factor)) {
    setScale(StrLib::toFloat(factor));
  }
  setColorTable(Zqv::getResrc("color_table"));
  setColorFill(Zqv::getResrc("color_fill"));
  setAttr(Zqv::getResrc("color_data"));
  setFormat(Zqv::getResrc("format"));
  return setParam(Zqv::getResrc("parameter"));
}

int DatumPlot::setParam(const char* text) {
  const Strings items(text, ',');
  for (int i = 0; i < items.getNum(); i++) {
    const char* behind = items.getStringAfter(i, '=');
    if (items.equal(i, "sc", 2)) {
      setScale(items.getFloatAfter(i, '='));
    } else if (items.equal(i, "ct", 2)) {
      setColorTable(behind);
    } else if (items.equal(i, "cof", 3)) {
      setColorFill(behind);
    } else if (items.equal(i, "co=", 3)) {
      setColor(behind);
    } else if (items.equal(i, "fm", 2)) {
      setFormat(behind);
    }
  }
  return 1;
}

int DatumPlot::setAttr(const PlotAttr& other) {
  if (StrLib::valid(other.getColor())) {
    setColor(other.getColor());
  }
  attr.height = choose(other.getHeight(), attr.height);
  attr.width = choose(other.getWidth(), attr.width);
  attr.expan = choose(other.getExpan(), attr.expan);
  attr.shadow = choose(other.getShadow(), attr.shadow);
  if (other.validFont()) {
    StrLib::copy(attr.font, sizeof attr.font, other.getFont());
  }
  return 1;
}

int DatumPlot::setAttr(const char* text) {
  return setAttr(PlotAttr(text));
}

int DatumPlot::setColor(const char* name) {
  attr.setColor(name);
  return 1;
}

int DatumPlot::setColorTable(const char* name) {
  return color_table.copy(StrLib::valid(name, ""));
}

int DatumPlot::setColorFill(const char* text) {
  return color_fill.copy(StrLib::valid(text, ""));
}

int DatumPlot::setMarker(int marker) {
  attr.marker = marker;
  return 1;
}

/** A factor that is missing or isn't finite leaves the scale. */
int DatumPlot::setScale(float factor) {
  if (factor == Const::FMISS || !std::isfinite(factor)) {
    return 0;
  }
  scale = factor;
  return 1;
}

int DatumPlot::setFormat(const char* text) {
  format = StrLib::acopy(text).substr(0, max_format);
  return 1;
}

int DatumPlot::draw(Plot& plot, float lat, float lon, int type, const char* data,
                    const char* form) {
  return draw(plot, EarthPoint(lat, lon), type, data, form);
}

int DatumPlot::draw(Plot& plot, const EarthPoint& place, int type, const char* data,
                    const char* form) {
  Datum datum;
  datum.set(place, type, data, form);
  return draw(plot, datum);
}

int DatumPlot::draw(Plot& plot, float lat, float lon, int type, float value, const char* form) {
  return draw(plot, EarthPoint(lat, lon), type, value, form);
}

int DatumPlot::draw(Plot& plot, const EarthPoint& place, int type, float value, const char* form) {
  Datum datum;
  datum.set(place, type, value, form);
  return draw(plot, datum);
}

int DatumPlot::draw(Plot& plot, const Datum& datum) {
  Job job(plot, datum);
  EarthPoint e = datum.getPoint();
  if (plot.tran(e, job.place) == 0) {
    job.place.init();
  }
  if (post_line != 0 && ppt.isSet() && job.place.isSet()) {
    plot.drawLine(ppt, job.place);
  }
  post_line = 0;
  if (job.place.isSet()) {
    setState(job);
    if (first != 0) {
      readColors(plot);
    }
    setColors(plot, StrLib::valid(job.a.color) ? job.a.color : attr.color);
    plot.setSymbol(StrLib::valid(job.a.symbol) ? job.a.symbol : attr.symbol);
    drawShape(job);
  }
  ppt = job.place;
  return 1;
}

/** Colours are read with the first datum, as they need the plot's table. */
void DatumPlot::readColors(Plot& plot) {
  first = 0;
  if (color_table.valid()) {
    ColorMap table;
    ColorFile::read(color_table.get(), table);
    plot.setColorMap(table);
  }
  if (color_fill.valid()) {
    fill.set(plot.getColorMap(), color_fill.get());
  }
}

/** Size, offset, and the state of the plot but for the colours. */
void DatumPlot::setState(Job& job) const {
  Plot& plot = job.plot;
  const DatumAttr& a = job.a;
  job.marker = choose(a.marker, attr.marker);
  if (job.marker != Const::MISS) {
    plot.setMarkType(job.marker);
  }
  job.size = choose(a.scale, attr.scale) * scale * plot.getVert();
  const bool moved = a.dx != Const::FMISS;
  job.at = job.place;
  job.at.offset((moved ? a.dx : attr.dx) * job.size, (moved ? a.dy : attr.dy) * job.size);
  job.expan = choose(a.expan, attr.expan);
  plot.setTextAlign(choose(a.halign, attr.halign), choose(a.valign, attr.valign));
  plot.setFont(StrLib::valid(a.font) ? a.font : attr.font);
  plot.setDropShadow(choose(a.shadow, attr.shadow));
  plot.setTextExpansion(job.expan);
  const float height = choose(a.height, attr.height) * job.size * text_height;
  plot.setTextHeight(height);
  plot.setMarkSize(height);
  const float width = choose(a.width, attr.width);
  plot.setLineWidth(width);
  plot.setTextWidth(width);
  plot.setMarkWidth(width);
}

void DatumPlot::drawShape(Job& job) {
  Plot& plot = job.plot;
  const char* data = job.datum.getData();
  switch (choose(job.a.type, choose(job.datum.getType(), static_cast<int>(Datum::DATA)))) {
    case Datum::TEXT: plot.drawText(job.at, data); break;
    case Datum::VALUE:
      setFillColor(job);
      drawValue(job);
      break;
    case Datum::CLOUD: CloudPlot::draw(plot, job.place, job.size * cloud_size, data[0]); break;
    case Datum::WBARB:
    case Datum::CBARB:
    case Datum::DBARB:
    case Datum::VECT:
    case Datum::AVECT: drawWind(job); break;
    case Datum::TRACK: drawTrack(job); break;
    case Datum::MARK:
      plot.setMarkType(PlotAttr::parseMarker(data));
      plot.drawMark(job.at);
      break;
    case Datum::SYMB: plot.drawSymbol(job.at, data, job.size * symbol_size); break;
    case Datum::LINE: drawLine(job); break;
    case 0:
    case Datum::DATA: drawAny(job); break;
    default: break;
  }
}

/** The colour of the value's class, if there is a fill. A class without colour hides the datum. */
void DatumPlot::setFillColor(Job& job) const {
  const float value = job.datum.getValue(0);
  if (fill.getNum() > 0 && value != Const::FMISS) {
    const PlotAttr& of_class = fill.get(value);
    setColors(job.plot, of_class.validColor() ? of_class.getColorInd() : -1);
  }
}

/** The number format that is set, absent if none is. */
const char* DatumPlot::findFormat(const Job& job) const {
  if (!format.empty()) {
    return format.c_str();
  }
  if (StrLib::valid(job.a.form)) {
    return job.a.form;
  }
  return StrLib::valid(attr.form) ? attr.form : nullptr;
}

void DatumPlot::drawValue(Job& job) const {
  const float value = job.datum.getValue(0);
  if (value != Const::FMISS) {
    String text;
    Tools::toString(value, findFormat(job), text);
    job.plot.drawText(job.at, text.get());
  }
}

/** A mark, a value or a text, whichever there is. */
void DatumPlot::drawAny(Job& job) const {
  setFillColor(job);
  if (job.marker != Const::MISS) {
    job.plot.drawMark(job.at);
  } else if (findFormat(job) == nullptr && job.datum.getValue(0) == Const::FMISS) {
    job.plot.drawText(job.at, job.datum.getData());
  } else {
    drawValue(job);
  }
}

void DatumPlot::drawWind(Job& job) const {
  Plot& plot = job.plot;
  const float size = job.size;
  Wind wind = job.wind();
  const bool calm = wind.spd == 0.0F;
  const auto draw_circle = [&](float share) {
    CloudPlot::draw(plot, job.place, size * share, open_circle);
  };
  const auto draw_barb = [&](float base) {
    if (!(wind.dir < 0)) {
      WindPlot::drawBarbMap(plot, job.at, wind, size * wind_size, size * base);
    }
  };
  switch (choose(job.a.type, job.datum.getType())) {
    case Datum::CBARB:
      if (calm) {
        draw_circle(calm_size);
      }
      draw_barb(cloud_size);
      break;
    case Datum::DBARB:
      draw_circle(dot_size);
      if (calm) {
        draw_circle(small_calm_size);
      } else {
        draw_barb(dot_size);
      }
      break;
    case Datum::WBARB:
      if (calm) {
        draw_circle(dot_size);
      } else {
        draw_barb(0.0F);
      }
      break;
    case Datum::VECT:
      wind.spd = Convert::NMtoKM(wind.spd) / km;
      if (!(wind.spd < 0)) {
        WindPlot::drawVectMap(plot, job.at, wind, size * wind_size, job.expan);
      }
      break;
    default:
      if (calm) {
        draw_circle(small_calm_size);
      } else if (!(wind.spd < 0)) {
        // The conversion is one of distances, and acts on a size here: deliberate.
        WindPlot::drawVectMap(plot, job.at, wind, Convert::NMtoKM(size) * wind_size, -job.expan);
      }
      break;
  }
}

/** The way of the next hours: as many as the format says with a stroke every hour, or two. */
void DatumPlot::drawTrack(Job& job) {
  constexpr int default_hours = 2;
  Plot& plot = job.plot;
  Wind wind = job.wind();
  if (!wind.isSet()) {
    return;
  }
  wind.dir = plot.adjustDir(wind.dir, job.at);
  wind.spd = Convert::KTtoKMH(wind.spd) * plot.getMapFactor(job.datum.getPoint());
  const float hours = choose(job.a.max, static_cast<float>(default_hours));
  wind.spd = wind.spd * hours / km;
  WindPlot::drawTrack(plot, job.at, wind, job.size * track_size, job.expan,
                      Tools::cut(static_cast<double>(hours)), 1);
}

void DatumPlot::drawLine(Job& job) {
  const char* data = job.datum.getData();
  const float lat = job.datum.getValue(0);
  const float lon = job.datum.getValue(1);
  if (StrLib::equal(data, "pre")) {
    if (ppt.isSet()) {
      job.plot.drawLine(ppt, job.place);
    }
  } else if (StrLib::equal(data, "post")) {
    post_line = 1;
  } else if (lat != Const::FMISS && lon != Const::FMISS) {
    EarthPoint e(lat, lon);
    Point to;
    if (job.plot.tran(e, to) != 0 && to.isSet()) {
      job.plot.drawLine(job.place, to);
    }
  }
}

}  // namespace ZQV
