#include "NidsPlot.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>
#include <vector>

#include "CellPainter.h"
#include "CityTool.h"
#include "ColorFill.h"
#include "ColorMap.h"
#include "Convert.h"
#include "DateTool.h"
#include "Datum.h"
#include "Domain.h"
#include "EarthPoint.h"
#include "FileTool.h"
#include "Four.h"
#include "MapPlot.h"
#include "Plot.h"
#include "PlotAttr.h"
#include "Points.h"
#include "StormAttr.h"
#include "StrLib.h"
#include "Strings.h"
#include "Tools.h"
#include "VarList.h"
#include "Wind.h"
#include "WindPlot.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr const char* variable_file = "nidsplot.var";
constexpr float text_size = 8.0F;
constexpr float barb_size = 20.0F;
constexpr int page_side = 512;      // pixels of a page of tables
constexpr float page_step = 50.0F;  // pixels from one page down to the next
constexpr float page_text_size = 7.0F;
constexpr int max_side = 8192;  // rows, columns and bins of a domain that a file may ask for
constexpr int longest_run = 255;
constexpr int row_corners = max_side + longest_run + 2;

constexpr const char* reflectivity_fill =
    "-100:off,5:blue,10:lblue,15:cyan,20:lcyan,25:green,30:lgreen,35:brown,40:yellow,45:red,"
    "50:lred,55:magenta,60:lmagenta,65:dgray,70:lgray,75:white";
constexpr const char* amount_fill =
    "-100:off,0:blue,5:lblue,10:cyan,15:lcyan,20:green,25:lgreen,30:brown,35:yellow,40:red,"
    "45:lred,50:magenta,55:lmagenta,60:dgray,65:lgray,70:white";
constexpr const char* level_fill =
    "off,blue,lblue,cyan,lcyan,green,lgreen,brown,yellow,red,lred,magenta,lmagenta,dgray,lgray,"
    "white";
constexpr const char* profile_fill = "lblue,lcyan,lgreen,yellow,lred";
constexpr const char* precip_fill =
    "0.01:blue,.1:lblue,.2:cyan,.5:lcyan,.8:green,1.0:lgreen,1.2:brown,1.5:yellow,1.8:red,"
    "2.0:lred,2.5:magenta,3.0:lmagenta,4.0:dgray,6.0:lgray,8.0:white";
constexpr const char* storm_velocity_fill =
    "-50:lblue,-40:cyan,-30:lcyan,-22:green,-10:lgreen,-5:dgray,-1:off,0:lgray,5:yellow,10:brown,"
    "22:lred,30:red,40:lmagenta,50:magenta";
/** Units of the storm variables, as the tables have them. */
struct StormUnit {
  const char* name;
  const char* unit;
};
constexpr StormUnit storm_units[] = {
    {"poh", "%"},       {"posh", "%"},     {"hsize", "in"}, {"vil", "kg/m^2"}, {"dbzm", "dBZ"},
    {"dbzht", "100ft"}, {"ctop", "100ft"}, {"cdir", "deg"}, {"cspd", "knt"},   {"cmvmt", "knt"}};

/** A probability of hail: the number, and a sign for the likely ones. */
void setHail(Datum& datum, int percent) {
  constexpr int likely = 75;
  constexpr int even = 50;
  if (percent > 0) {
    datum.setValue(0, static_cast<float>(percent));
  }
  if (percent >= likely) {
    datum.setData("*");
  } else if (percent >= even) {
    datum.setData("X");
  }
}

}  // namespace

/** What one image layer is drawn with. */
struct NidsPlot::Painter : CellPainter {
  using CellPainter::CellPainter;

  /** Where a level lands in the fill. */
  struct Level {
    const PlotAttr* attr = nullptr;
    bool visible = false;
    bool known = false;
  };

  /** Looks a level up once for each packet: its value depends on the raw level alone. */
  const Level& find(int ival, float val) {
    Level& level = levels[static_cast<size_t>(ival & 0xFF)];
    if (!level.known) {
      level.attr = &fill.get(val);
      level.visible = level.attr->validColor();
      level.known = true;
    }
    return level;
  }
  void forgetLevels() {
    levels.fill(Level());
    filled = nullptr;
  }
  /** Makes the attributes of a level the current ones. */
  void setFill(const Level& level) {
    if (filled == level.attr) return;
    filled = level.attr;
    plot.setFill(*level.attr);
  }

  ColorFill fill;
  PlotAttr data_attr;
  PlotAttr grid_attr;
  std::array<Level, 256> levels{};
  const PlotAttr* filled = nullptr;  ///< attributes that the plot has, while bins are drawn
};

NidsPlot::NidsPlot(const char* params) {
  NidsPlot::init();
  NidsPlot::setParam(params);
}

int NidsPlot::init() {
  sync = 0;
  map = 0;
  id.clear();
  type.clear();
  plt_site = 0;
  plt_table = 0;
  plt_dist.fill(0.0F);
  plt_azimuth = 0;
  clutter_rad = 0;
  ramp_cut = Const::MISS;
  ramp_len = 0;
  draw_plot = true;
  draw_data = true;
  NidsPlot::setNameConv("nids");
  setFile();
  if (isPresent(Zqv::getResrc("color_fill"))) {
    setColorFill(Zqv::getResrc("color_fill"));
  }
  if (isPresent(Zqv::getResrc("color_data"))) {
    setColor(Zqv::getResrc("color_data"));
  }
  if (isPresent(Zqv::getResrc("identifier"))) {
    setId(Zqv::getResrc("identifier"));
  }
  if (isPresent(Zqv::getResrc("type"))) {
    setType(Zqv::getResrc("type"));
  }
  if (isPresent(Zqv::getResrc("timezone"))) {
    tz.set(Zqv::getResrc("timezone"));
  }
  return NidsPlot::setParam(Zqv::getResrc("parameter"));
}

int NidsPlot::setInput(const char* /*name*/) {
  return 1;
}

int NidsPlot::setNameConv(const char* conv) {
  const int done = RadarPlot::setNameConv(conv);
  if (!type.empty()) {
    filename.setKey('t', type.c_str());
  }
  return done;
}

int NidsPlot::setFilename() {
  return filename.setFilePrompt("Enter the NIDS filename: ");
}

int NidsPlot::setFilename(const Filename& other) {
  filename = other;
  return 1;
}

int NidsPlot::setType(const char* text) {
  constexpr size_t max_type = 14;
  type = StrLib::acopy(text).substr(0, max_type);
  return filename.setKey('t', type.c_str());
}

int NidsPlot::setVariable(const char* text) {
  return variable.copy(StrLib::valid(text, ""));
}

int NidsPlot::setColor(const char* text) {
  return color.copy(StrLib::valid(text, ""));
}

int NidsPlot::setMap(int flag) {
  map = flag;
  return 1;
}

int NidsPlot::getInfo(NidsInfo& out) const {
  out = info;
  return 1;
}

int NidsPlot::setParam(const char* text) {
  constexpr int default_clutter = 25;
  constexpr int value = 3;
  const Strings items(text, ',');
  for (int i = 0; i < items.getNum(); i++) {
    const char* behind = items.getStringAfter(i, '=');
    if (items.equal(i, "ct", 2)) {
      setColorTable(behind);
    } else if (items.equal(i, "co", 2)) {
      setColorFill(behind);  // "cof" is told by two characters alone: deliberate
    } else if (items.equal(i, "va", 2)) {
      setVariable(behind);
    } else if (items.equal(i, "if", 2) || items.equal(i, "nc", 2)) {
      setNameConv(behind);
    } else if (items.equal(i, "ho", 2)) {
      setHour(behind);
    } else if (items.equal(i, "tz", 2)) {
      tz.set(items.getString(i, value));
    } else if (items.equal(i, "pa", 2)) {
      setPath(behind);
    } else if (items.equal(i, "id", 2)) {
      setId(items.getString(i, value));
    } else if (items.equal(i, "ty", 2)) {
      setType(items.getString(i, value));
    } else if (items.iequal(i, "plot")) {
      draw_plot = true;
      draw_data = false;
    } else if (items.iequal(i, "data")) {
      draw_plot = false;
      draw_data = true;
    } else if (items.iequal(i, "site")) {
      plt_site = 1;
    } else if (items.iequal(i, "distm", 5)) {
      takeRings(items, i, 5, true, plt_dist.data());
    } else if (items.iequal(i, "dist", 4)) {
      takeRings(items, i, 4, false, plt_dist.data());
    } else if (items.iequal(i, "map")) {
      map = 1;
    } else if (items.iequal(i, "nodist")) {
      plt_dist[0] = 0;
    } else if (items.iequal(i, "notable")) {
      plt_table = 0;
    } else if (items.iequal(i, "table")) {
      plt_table = 1;
    } else if (items.iequal(i, "clutter", 7)) {
      clutter_rad = numberAt(items, i, 8, default_clutter);
    } else if (items.iequal(i, "noclutter")) {
      clutter_rad = 0;
    } else if (items.iequal(i, "ramp", 4)) {
      takeRamp(items, i, ramp_cut, ramp_len);
    }
  }
  return 1;
}

int NidsPlot::print() {
  std::printf("NidsPlot\n  Filename: %s\n  Color table: %s\n  Color fill: %s\n  Color data: %s\n",
              filename.getName(), color_table.get(), color_fill.get(), color.get());
  std::printf("  Variable: %s\n  Draw plot: %d\n  Draw data: %d\n", variable.get(),
              draw_plot ? 1 : 0, draw_data ? 1 : 0);
  std::printf("  Plot site: %d\n  Plot table: %d\n  Clutter radius: %d\n", plt_site, plt_table,
              clutter_rad);
  return 1;
}

int NidsPlot::getDomain(Domain& domain) {
  // The file stays open for the drawing: standard input can be read only once, a command should run
  // only once, and what was decompressed for the header is nearly always the whole product.
  begun.clear();
  if (filename.isSet() && nids.open(filename.getName()) != 0) {
    nids.readHeader(info);
    begun = filename.getName();
    DomainVal val = nids.getDomainVal();
    if (!nids.isMosaic() && !nids.isVAD() && !nids.isDPA()) {
      val.nx = std::clamp(val.ny, 0, max_side) * 3 / 2 + 1;
    }
    domain.set(val);
    constexpr int level = 8;
    if (Zqv::outMessage(level, "NIDS Domain: ") != 0) {
      domain.print();
    }
    return 1;
  }
  if (id.empty()) {
    return 0;
  }
  constexpr float spacing = 0.11899F;
  EarthPoint site;
  CityTool::locate(site_file, id.c_str(), site);
  domain.set(siteView(site, spacing));
  return 1;
}

int NidsPlot::draw(Plot& plot) {
  if (!filename.isSet()) {
    filename.setFile("la");
  }
  const bool goes_on = !begun.empty() && nids.isOpen() && begun == filename.getName();
  begun.clear();
  if (!goes_on && nids.open(filename.getName()) == 0) {
    Zqv::outWarning("NidsPlot: Unable to open file: %s\n", filename.getName());
    Zqv::setError(Zqv::NOFILE);
    return 0;
  }
  constexpr int level = 6;
  Zqv::outMessage(level, "NidsPlot: reading file: %s\n", filename.getName());
  if (!goes_on) {
    nids.readHeader(info);
  }
  if (!nids.isDescribed()) {
    Zqv::setError(Zqv::NODATA);
  }
  readVars();
  const bool draws_map = map != 0 && !variablesHaveMap();
  MapPlot under("under");
  MapPlot middle("default");
  MapPlot over("over");
  if (draws_map) {
    under.draw(plot);
  }
  drawImage(plot);
  if (draws_map) {
    middle.draw(plot);
  }
  drawData(plot);
  if (draws_map) {
    over.draw(plot);
  }
  nids.close();
  return 1;
}

/** The map stands among the storm variables: then no map layer is drawn. */
bool NidsPlot::variablesHaveMap() const {
  for (int i = 0; i < vars.getNum(); i++) {
    if (vars.isMap(i)) {
      return true;
    }
  }
  return false;
}

PlotAttr NidsPlot::dataAttr(Plot& plot) const {
  const char* fallback = Zqv::getResrc("color_data", plot.getInverse() ? "black" : "white");
  return {color.valid() ? color.get() : fallback, nullptr};
}

void NidsPlot::chooseFill(ColorMap& colors, ColorFill& fill) const {
  if (color_fill.valid() && !color_fill.equal("miss")) {
    fill.set(colors, color_fill.get());
    if (!fill.areValuesSet()) {
      fill.setValues(info.thres.data(), NidsInfo::num_thres);
    }
    return;
  }
  if (nids.isDHR() || nids.getCode() == 94) {
    fill.set(colors, reflectivity_fill);
  } else if (nids.isDigVIL() || nids.isEnhTops()) {
    fill.set(colors, amount_fill);
  } else if (nids.isVAD()) {
    fill.set(colors, profile_fill);
    fill.setBase(0.0F);
    fill.setInterval(4.0F);
  } else if (nids.isDPA() || nids.isDSP()) {
    fill.set(colors, precip_fill);
  } else if (nids.isSRVel()) {
    fill.set(colors, storm_velocity_fill);
  } else if (nids.isVel()) {
    fill.set(colors, velocity_fill);
  } else {
    fill.set(colors, level_fill);
    fill.setValues(info.thres.data(), NidsInfo::num_thres);
  }
}

int NidsPlot::drawImage(Plot& plot) {
  Painter painter(plot);
  painter.setDomain(Domain(nids.getDomainVal()), EarthPoint(info.lat, info.lon));
  const bool wanted = draw_plot;
  draw_plot = draw_plot && plot.isDrawing(0);
  readColorTable(plot);
  chooseFill(plot.getColorMap(), painter.fill);
  painter.meets_all = painter.fill.hasPatterns();
  painter.data_attr = dataAttr(plot);
  painter.grid_attr.set(Zqv::getResrc("color_grid", "red"));
  walkPackets(painter);
  plot.setTextCharWidth(0.0F);
  addLabels(plot);
  plot.setBar(painter.fill);
  plot.done();
  draw_plot = wanted;
  return 1;
}

/** Draws the packets, beginning with the one whose head was read with the header. */
int NidsPlot::walkPackets(Painter& painter) {
  bool more = nids.getPacketCode() > 0;
  while (more) {
    painter.forgetLevels();
    if (nids.isPacketRadial()) {
      drawRadials(painter);
    } else if (nids.isPacketRastor() || nids.isPacketDpa()) {
      drawRastors(painter);
    } else if (nids.isPacketVector()) {
      drawVectors(painter);
    } else if (nids.isPacketWindbarb()) {
      drawWinds(painter);
    } else if (nids.isPacketText() && !drawTexts(painter)) {
      return 0;
    }
    more = nids.readPacket() > 0;
  }
  return 1;
}

/** Smallest value shown at a distance from the radar under the ramp; the caller tests ramp_cut. */
float NidsPlot::rampAt(float distance) const {
  const auto cut = static_cast<double>(ramp_cut);
  const double at = cut - static_cast<double>(distance) * cut / static_cast<double>(ramp_len);
  return static_cast<float>(Tools::cut(at));
}

/** Bins of a run, from its first on, that ramp and clutter leave: one that is blanked blanks the
 * rest of its run, deliberate. */
int NidsPlot::numShown(const NidsRun& run, int bin) const {
  const bool ramps = ramp_cut != Const::MISS && ramp_len > 0;
  if (clutter_rad != Const::MISS && clutter_rad > bin) {
    return 0;
  }
  int n = ramps ? 0 : run.run;
  while (ramps && n < run.run && run.val > rampAt(static_cast<float>(bin + n))) {
    n++;
  }
  return n;
}

void NidsPlot::drawRadials(Painter& painter) {
  const bool blanks =
      (ramp_cut != Const::MISS && ramp_len > 0) || (clutter_rad != Const::MISS && clutter_rad > 0);
  bool levels_found = false;
  std::array<bool, 256> visible{};  // by level of a digital radial
  std::vector<unsigned char> row;   // levels of a radial whose corners are placed together
  const Point& c = painter.centre;
  Points& poly = painter.poly;
  float* px = poly.xs();
  float* py = poly.ys();
  NidsRadial radial;
  NidsRun run;
  while (nids.readRadial(radial) > 0) {
    const float az = painter.product.adjustDir(radial.ang0, c);
    const double a0 = static_cast<double>(az) * static_cast<double>(Const::DRC);
    const double a1 = static_cast<double>(az + radial.ang1 + CellPainter::overlap) *
                      static_cast<double>(Const::DRC);
    const auto s0 = static_cast<float>(std::sin(a0));
    const auto c0 = static_cast<float>(std::cos(a0));
    const auto s1 = static_cast<float>(std::sin(a1));
    const auto c1 = static_cast<float>(std::cos(a1));
    // Steps from bin to bin of the corners, two on each side of the radial.
    const Four::Floats dx = info.cres * Four::Floats{s0, s0, s1, s1};
    const Four::Floats dy = info.cres * Four::Floats{c0, c0, c1, c1};
    if (painter.by_radial) {
      painter.setRadial(az, az + radial.ang1 + CellPainter::overlap, 0.0F, info.cres);
    }
    const auto show = [&](const Painter::Level& level, int bin, int num) {
      painter.setFill(level);
      const Four::Floats from_radar =
          static_cast<float>(bin) + Four::Floats{0.0F, 1.0F, 1.0F, 0.0F};
      Four::Floats x = c.x + from_radar * dx;
      Four::Floats y = c.y + from_radar * dy;
      for (int i = 0; i < num; i++, x += dx, y += dy) {
        Four::store(x, px);
        Four::store(y, py);
        px[4] = px[0];
        py[4] = py[0];
        painter.plot.drawFill(poly);
      }
    };
    int bin = 0;  // from the radar on, whatever the packet's first bin is
    const auto is_shown = [&](unsigned char byte, int at) {
      return visible[byte] && (!blanks || numShown({1, byte, nids.getLevel(byte)}, at) != 0);
    };
    while (true) {
      const unsigned char* at = nullptr;
      const int n = nids.readLevels(at);
      if (n == 0 && nids.readRun(run) <= 0) {
        break;
      }
      if (n > 0 && !levels_found) {
        for (size_t i = 0; i < visible.size(); i++) {
          const float val = nids.getLevel(static_cast<unsigned char>(i));
          visible[i] = painter.find(static_cast<int>(i), val).visible;
        }
        levels_found = true;
      }
      if (n > 0 && draw_plot && painter.by_radial) {
        row.resize(static_cast<size_t>(bin) + static_cast<size_t>(n));
        std::copy_n(at, n, row.begin() + bin);
        for (int i = 0, end = 0; i < n; i = end + 1) {
          for (end = i; end < n && is_shown(at[end], bin + end); end++) {
          }
          if (end > i) {
            painter.addCells(bin + i, end - i);
          }
        }
      }
      for (int i = 0; draw_plot && !painter.by_radial && i < n; i++) {
        if (is_shown(at[i], bin + i)) {
          show(painter.levels[at[i]], bin + i, 1);
        }
      }
      bin += n;
      if (n == 0 && draw_plot) {
        const Painter::Level& level = painter.find(run.ival, run.val);
        const int num = level.visible ? numShown(run, bin) : 0;
        if (num > 0 && painter.by_radial) {
          painter.addCells(bin, num);
          row.resize(static_cast<size_t>(bin) + static_cast<size_t>(num));
          std::fill_n(row.begin() + bin, num, static_cast<unsigned char>(run.ival));
        } else if (num > 0) {
          show(level, bin, num);
        }
        bin += run.run;
      }
    }
    if (painter.by_radial) {
      for (const CellPainter::Cell& cell : painter.placeCells()) {
        painter.setFill(painter.levels[row[static_cast<size_t>(cell.number)]]);
        painter.fillCell(cell);
      }
    }
  }
}

/** The cells of a row that wait until its corners are taken over the earth together. Cells share
 * corners, along the row and with the row above. */
class NidsPlot::RowCells {
 public:
  /** @param x0, size  left end of the rows, and side of a cell, in the product's plane */
  RowCells(Painter& on, float x0, float size)
      : painter(on), left(x0), side(size), upper(on.same_proj ? 0 : row_corners) {
    lower.resize(upper.size());
  }
  void add(const Painter::Level& level, int column) { cells.push_back({&level, column}); }
  /** Draws the row whose upper edge is y, and goes to the next. */
  void draw(float y) {
    for (const Cell& cell : cells) {
      for (const int k : {cell.column, cell.column + 1}) {
        want(upper, k, row, y);
        want(lower, k, row + 1, y - side);
      }
    }
    painter.plot.translate(painter.product, xs.data(), ys.data(), static_cast<int>(xs.size()));
    for (size_t i = 0; i < wanted.size(); i++) {
      wanted[i]->place.set(xs[i], ys[i]);
    }
    for (const Cell& cell : cells) {
      const auto k = static_cast<size_t>(cell.column);
      painter.setFill(*cell.level);
      painter.fillCorners(upper[k].place, upper[k + 1].place, lower[k + 1].place, lower[k].place);
    }
    cells.clear();
    wanted.clear();
    xs.clear();
    ys.clear();
    std::swap(upper, lower);
    row++;
  }

 private:
  struct Cell {
    const Painter::Level* level = nullptr;
    int column = 0;
  };
  struct Corner {
    int edge = -1;  ///< the edge that it lies on, counted from the top
    Point place;
  };
  void want(std::vector<Corner>& corners, int k, int edge, float y) {
    Corner& corner = corners[static_cast<size_t>(k)];
    if (corner.edge == edge) return;
    corner.edge = edge;
    wanted.push_back(&corner);
    xs.push_back(left + static_cast<float>(k) * side);
    ys.push_back(y);
  }

  Painter& painter;
  float left;
  float side;
  int row = 0;
  std::vector<Cell> cells;
  std::vector<Corner> upper;
  std::vector<Corner> lower;
  std::vector<Corner*> wanted;
  std::vector<float> xs;
  std::vector<float> ys;
};

void NidsPlot::drawRastors(Painter& painter) {
  const bool ramps = ramp_cut != Const::MISS && ramp_len > 0;
  const bool blanks = ramps || (clutter_rad != Const::MISS && clutter_rad > 0);
  const bool logarithmic = nids.isDPA();
  // The pixels of a run's cells are those of one rectangle, since the page keeps rows level.
  const bool joins = painter.same_proj && painter.plot.paintsPixels();
  const float cell = info.cres;
  const Point& c = painter.centre;
  const float x0 = c.x - static_cast<float>(info.nx - 1) / 2 * cell;
  float y = c.y + static_cast<float>(info.ny - 1) / 2 * cell;
  NidsRun run;
  RowCells cells(painter, x0, cell);
  while (nids.readRastor() > 0) {
    float x = x0;
    int column = 0;
    while (nids.readRun(run) > 0) {
      if (!draw_plot) {
        continue;
      }
      const bool missing = run.val == Const::FMISS;
      const float val = logarithmic && !missing ? std::pow(10.0F, run.val / 10) / 100 : run.val;
      const Painter::Level* level = missing ? nullptr : &painter.find(run.ival, val);
      if (missing || !level->visible || column > max_side) {
        x += static_cast<float>(run.run) * cell;
        column += run.run;
        continue;
      }
      if (painter.same_proj) {
        painter.setFill(*level);
      }
      if (joins && !blanks) {
        float end = x;
        for (int i = 0; i < run.run; i++) {
          end += cell;
        }
        painter.fillCorners({x, y}, {end, y}, {end, y - cell}, {x, y - cell});
        column += run.run;
        x = end;
        continue;
      }
      bool visible = true;
      for (int i = 0; i < run.run; i++, column++, x += cell) {
        if (blanks) {
          constexpr float km = 100.0F;
          const float distance = km * std::hypot(x - c.x, y - c.y);
          if ((ramps && !(val > rampAt(distance))) ||
              (clutter_rad != Const::MISS && static_cast<float>(clutter_rad) > distance)) {
            visible = painter.fill.get(-20.0F).validColor();
          }
        }
        if (visible && painter.same_proj) {
          painter.fillCorners({x, y}, {x + cell, y}, {x + cell, y - cell}, {x, y - cell});
        } else if (visible) {
          cells.add(*level, column);
        }
      }
    }
    cells.draw(y);
    y -= cell;
  }
}

void NidsPlot::drawVectors(Painter& painter) {
  painter.plot.setLine(painter.grid_attr);
  NidsVector vect;
  while (nids.readVector(vect) > 0) {
    EarthPoint e1(vect.x1, vect.y1);
    EarthPoint e2(vect.x2, vect.y2);
    Point p1;
    Point p2;
    painter.product.tran(e1, p1);
    painter.product.tran(e2, p2);
    if (draw_plot) {
      painter.plot.drawLine(p1, p2);
    }
  }
}

void NidsPlot::drawWinds(Painter& painter) {
  NidsWind barb;
  while (nids.readWind(barb) > 0) {
    EarthPoint e(barb.x, barb.y);
    Point p;
    painter.product.tran(e, p);
    const int index = painter.fill.getColor(barb.val);
    if (index >= 0 && draw_plot) {
      painter.plot.setFillColor(index);
      painter.plot.setLineColor(index);
      WindPlot::drawBarb(painter.plot, p, Wind(barb.dir, barb.spd), barb_size, 0.0F);
    }
  }
}

/** @return false if the data attribute has no colour, which ends the layer */
bool NidsPlot::drawTexts(Painter& painter) {
  NidsText text;
  nids.readText(text);
  EarthPoint e(text.x, text.y);
  Point p;
  painter.product.tran(e, p);
  painter.plot.setTextHeight(text_size);
  painter.plot.setText(painter.data_attr, text_size);
  painter.plot.setTextAlign(Graph::HALIGN_LEFT, Graph::VALIGN_CAP);
  if (!painter.data_attr.validColor()) {
    return false;
  }
  if (draw_plot) {
    painter.plot.drawText(p, text.data.data());
  }
  return true;
}

void NidsPlot::addLabels(Plot& plot) {
  char text[120];
  if (!id.empty()) {
    std::snprintf(text, sizeof(text), "%s %s", id.c_str(), info.getInfo());
  } else if (nids.isMosaic()) {
    std::snprintf(text, sizeof(text), "%s", info.getInfo());
  } else {
    std::snprintf(text, sizeof(text), "Site: %3.3d %s", info.getSrc(), info.getInfo());
  }
  plot.addLabel("ul", text);
  if (!plot.isDateSet()) {
    plot.setDate(info.getDate());
  }
  String date;
  DateTool::createLabel(info.getDate(), tz, date);
  plot.addLabel("ur", date.get());
  plot.addLabel("lr", info.getMisc());
}

int NidsPlot::drawData(Plot& plot) {
  const EarthPoint site(info.lat, info.lon);
  const PlotAttr data_attr = dataAttr(plot);
  plot.setLine(data_attr);
  if (plt_site != 0) {
    setSiteMark(plot, data_attr);
    plot.drawMark(site);
  }
  drawRings(plot, site, plt_dist.data());
  const bool wanted = draw_data;
  draw_data = draw_data && plot.isDrawing(1);
  dplot.emplace();
  drawPages(plot, data_attr);
  draw_data = wanted;
  plot.setTextCharWidth(0.0F);
  addVarLabels(plot, vars, info.date, getUnits);
  return 1;
}

/** The storm variables that were asked for. */
void NidsPlot::readVars() {
  vars.init();
  vars.readFile(variable_file);
  vars.decode(variable.valid() ? variable.get() : Zqv::getResrc("variable"));
}

/** The pages of tables, one below the other. The picture's own domain is in force again for each
 * storm found on them. */
void NidsPlot::drawPages(Plot& plot, const PlotAttr& data_attr) {
  // Where packets that nobody knows have ended the symbology, the offset tells where pages begin.
  if (nids.getOffGraph() == 0 || nids.gotoGraphic() == 0 || nids.graphic() == 0) {
    return;
  }
  const DomainVal picture = plot.getDomainVal();
  const auto aspect = static_cast<double>(plot.getDomAspect());
  DomainVal page;
  page.proj = DomainVal::PIXEL;
  page.clat = page.clon = 0.0F;
  page.dx = page.dy = 1.0F;
  page.nx = page.ny = page_side;
  if (aspect > 1) {
    page.nx = std::min(Tools::cut(std::round(page_side * aspect)), max_side);
  } else if (aspect > 0) {
    page.ny = std::min(Tools::cut(std::round(page_side / aspect)), max_side);
  }
  plot.setDomain(page);
  constexpr int max_storms = 2000;  // far more than a radar can tell apart
  StormAttr storm;
  int num_storms = 0;
  for (float down = 0.0F; nids.graphicLayer() > 0; down += page_step) {
    while (nids.readPacket() > 0) {
      if (nids.isPacketVector()) {
        drawPageVectors(plot, down);
      } else if (nids.isPacketWindbarb()) {
        drawPageWinds(plot);
      } else if (nids.isPacketText()) {
        NidsText text;
        nids.readText(text);
        drawPageText(plot, data_attr, text, down);
        storm.decode(text.data.data());
        if (storm.isValid() && draw_data && vars.getNum() > 0 && num_storms < max_storms) {
          num_storms++;
          plot.setDomain(picture);
          drawStorm(plot, storm);
          plot.setDomain(page);
        }
      }
    }
  }
  plot.setDomain(picture);
}

void NidsPlot::drawPageVectors(Plot& plot, float down) {
  plot.setLine(PlotAttr(Zqv::getResrc("color_grid", "red")));
  NidsVector vect;
  while (nids.readVector(vect) > 0) {
    if (plt_table != 0) {
      plot.drawLine(EarthPoint(vect.x1, down + vect.y1), EarthPoint(vect.x2, down + vect.y2));
    }
  }
}

void NidsPlot::drawPageWinds(Plot& plot) {
  NidsWind barb;
  while (nids.readWind(barb) > 0) {
    EarthPoint e(barb.x, barb.y);
    Point p;
    plot.tran(e, p);
    if (plt_table != 0) {
      WindPlot::drawBarb(plot, p, Wind(barb.dir, barb.spd), barb_size, 0.0F);
    }
  }
}

void NidsPlot::drawPageText(Plot& plot, const PlotAttr& data_attr, const NidsText& text,
                            float down) {
  constexpr float expansion = 0.85F;
  constexpr int level = 6;
  plot.setLine(data_attr);
  plot.setFill(data_attr);
  plot.setTextCharWidth(1.0F);
  plot.setTextHeight(page_text_size);
  plot.setText(data_attr, page_text_size);
  plot.setTextAlign(Graph::HALIGN_LEFT, Graph::VALIGN_CAP);
  plot.setTextExpansion(expansion);
  if (plt_table != 0 && data_attr.validColor()) {
    plot.drawText(EarthPoint(text.x, down + text.y), text.data.data());
  }
  // What goes to a terminal must not hold its control sequences.
  std::array<char, sizeof(text.data)> line = text.data;
  std::replace_if(
      line.begin(), line.begin() + StrLib::length(line.data()),
      [](char c) { return (static_cast<unsigned char>(c) & 0x7F) < ' ' || c == '\x7F'; }, ' ');
  Zqv::outMessage(level, "%s\n", line.data());
}

const char* NidsPlot::getUnits(const char* name) {
  const auto* found =
      std::find_if(std::begin(storm_units), std::end(storm_units),
                   [name](const StormUnit& row) { return StrLib::iequal(name, row.name); });
  return found != std::end(storm_units) ? found->unit : "";
}

int NidsPlot::drawStorm(Plot& plot, const StormAttr& storm) {
  if (!dplot) {
    dplot.emplace();
  }
  plot.setText();
  plot.setLine();
  const PlotAttr attr(color.valid() ? color.get() : nullptr, plot.getInverse() ? "black" : "white");
  dplot->setAttr(attr);
  plot.setText(attr);
  EarthPoint place;
  Domain::offsetLatLon(EarthPoint(info.lat, info.lon), storm.getAng(),
                       Convert::NMtoKM(storm.getRad()), place);
  for (int i = 0; i < vars.getNum(); i++) {
    drawStormVar(plot, storm, place, i);
  }
  // Widths and shadows of a storm's symbols aren't those of what follows.
  plot.setText();
  plot.setLine();
  return 1;
}

/** Draws what entry i of the variables asks for. */
void NidsPlot::drawStormVar(Plot& plot, const StormAttr& storm, const EarthPoint& place, int i) {
  constexpr int strong_meso = 4;
  const char* name = vars.getName(i);
  const auto is = [name](const char* other) { return StrLib::iequal(name, other); };
  Datum datum(place);
  int converted = -1;  // the value that the entry's units are for
  if (is("cid")) {
    datum.setData(storm.getId());
  } else if (is("tvs")) {
    if (storm.getTvs() == 0) {
      return;
    }
    datum.setValue(0, 1.0F);
    datum.setData("TVS");
  } else if (is("meso") || is("meso5")) {
    if (storm.getMeso() == 0 || (is("meso5") && storm.getMeso() <= strong_meso)) {
      return;
    }
    datum.setValue(0, static_cast<float>(storm.getMeso()));
    datum.setData("MESO");
  } else if (is("poh")) {
    if (storm.getHail() <= 0) {
      return;
    }
    setHail(datum, storm.getHail());
  } else if (is("posh")) {
    setHail(datum, storm.getSHail());
  } else if (is("hsize")) {
    datum.setValue(0, storm.getHSize());
    converted = 0;
  } else if (is("vil")) {
    datum.setValue(0, storm.getVil());
    converted = 0;
  } else if (is("dbzm")) {
    datum.setValue(0, storm.getMaxDbz());
  } else if (is("dbzht")) {
    datum.setValue(0, storm.getMaxDbzZ());
    converted = 0;
  } else if (is("ctop")) {
    datum.setValue(0, storm.getTops());
    converted = 0;
  } else if (is("cdir")) {
    datum.setValue(0, storm.getDir());
  } else if (is("cspd")) {
    datum.setValue(0, storm.getSpd());
    converted = 0;
  } else if (is("cmvmt")) {
    datum.setValue(0, storm.getDir());
    datum.setValue(1, storm.getSpd());
    converted = 1;
  } else if (is("cstat")) {
    drawStatus(plot, storm, place);
    return;
  } else if (StrLib::equal(name, "comp")) {
    drawComposite(plot, storm, place);
    return;
  } else {
    if (StrLib::equal(name, "track")) {
      drawTrack(plot, storm, place);
    }
    return;
  }
  if (converted >= 0 && StrLib::valid(vars.getUnits(i))) {
    const float v = unit.convert(datum.getValue(converted), getUnits(name), vars.getUnits(i));
    if (v != Const::FMISS) {  // else there is no such conversion, and the value stays
      datum.setValue(converted, v);
    }
  }
  datum.setFormat(vars.getFormat(i));
  dplot->draw(plot, datum);
}

/** Movement, identifier, top and status. */
void NidsPlot::drawComposite(Plot& plot, const StormAttr& storm, const EarthPoint& place) {
  Datum datum(place);
  datum.setType(Datum::WBARB);
  datum.setValue(0, storm.getDir());
  datum.setValue(1, storm.getSpd());
  dplot->draw(plot, datum);
  dplot->draw(plot, place, Datum::TEXT, storm.getId(), "ul");
  dplot->draw(plot, place, Datum::VALUE, storm.getTops(), "ur,fm=%.0f");
  drawStatus(plot, storm, place);
}

/** Symbols for hail, mesocyclone and tornado vortex, one over the other; a cross for none of them.
 */
void NidsPlot::drawStatus(Plot& plot, const StormAttr& storm, const EarthPoint& place) {
  constexpr int even = 50;
  bool drawn = false;
  const auto draw_mark = [&](const char* symbol, const char* format) {
    dplot->draw(plot, place, Datum::MARK, symbol, format);
    drawn = true;
  };
  if (storm.getSHail() >= even) {
    draw_mark("tri", "co=lgreen,wi=2");
  } else if (storm.getHail() >= even) {
    draw_mark("tri", "co=green,wi=2");
  }
  if (storm.getMeso() != 0) {
    draw_mark("circle", "co=yellow,wi=2");
  }
  if (storm.getTvs() != 0) {
    draw_mark("itri", "co=red,wi=2");
  }
  if (!drawn) {
    draw_mark("plus", "co=white,wi=2");
  }
}

/** The way of the next two hours, with a stroke every half hour. */
void NidsPlot::drawTrack(Plot& plot, const StormAttr& storm, const EarthPoint& place) {
  constexpr float hours = 2.0F;
  constexpr float km = 100.0F;  // in a unit of the plane
  constexpr float share = 0.1F;
  constexpr int steps = 4;
  EarthPoint e = place;
  Point p;
  if (storm.getSpd() == Const::FMISS || plot.tran(e, p) == 0 || !p.isSet()) {
    return;
  }
  plot.setLine();
  plot.setLine(
      PlotAttr(color.valid() ? color.get() : nullptr, plot.getInverse() ? "black" : "white"));
  // The map's factor is that of the radar's place, not of the storm's: deliberate.
  const float factor = plot.getMapFactor(EarthPoint(info.lat, info.lon));
  const Wind wind(plot.adjustDir(storm.getDir(), p),
                  Convert::KTtoKMH(storm.getSpd()) * factor * hours / km);
  WindPlot::drawTrack(plot, p, wind, share * plot.getVert(), 1.0F, steps, 0);
}

}  // namespace ZQV
