#include "ContPlot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "ColorFile.h"
#include "ColorMap.h"
#include "DateTool.h"
#include "DomainVal.h"
#include "Graph.h"
#include "Grid.h"
#include "GridMath.h"
#include "Plot.h"
#include "Range.h"
#include "Rect.h"
#include "StrLib.h"
#include "Strings.h"
#include "Timezone.h"
#include "Tools.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr float date_line = 180.0F;

constexpr float TWEAK_SHARE = 10000.0F;  // of the range
constexpr float LABEL_SHARE = 0.015F;    // of the domain's height
constexpr float MARK_SHARE = 0.02F;
constexpr size_t MAX_FORMAT = 9;
constexpr int LINE_SOLID = 1;
constexpr int LINE_DASHED = 2;
constexpr float LOWEST = -std::numeric_limits<float>::max();

bool isMiss(const String& text) {
  return text.iequal("miss") || text.iequal("off");
}

/** The range of the values that are numbers. @return 0 if there are none */
int findRange(const Grid& grid, float& lo, float& hi) {
  if (grid.getRange(lo, hi) != 0 && std::isfinite(lo) && std::isfinite(hi)) {
    return hi == Const::FMISS ? 0 : 1;
  }
  lo = hi = Const::FMISS;
  const float* data = grid.getData();
  const size_t n =
      data == nullptr ? 0 : static_cast<size_t>(grid.getNx()) * static_cast<size_t>(grid.getNy());
  for (size_t i = 0; i < n; i++) {
    const float v = data[i];
    if (!std::isfinite(v) || v == Const::FMISS) continue;
    lo = lo == Const::FMISS || v < lo ? v : lo;
    hi = hi == Const::FMISS || v > hi ? v : hi;
  }
  return hi == Const::FMISS ? 0 : 1;
}

bool isNumber(float v) {
  return std::isfinite(v) && v != Const::FMISS;
}

/** i is one of every n; none for an n below 1. */
bool isMultiple(int i, int n) {
  return n > 0 && i % n == 0;
}

}  // namespace

/** Walks the cells of a grid, rows from the top, and projects each point once. */
class ContPlot::Cells {
 public:
  Cells(Grid& of, Plot& plot)
      : grid(of),
        domain(plot.getDomain()),
        is_same(GridMath::isDomainEqual(of.getDomain(), domain)),
        proj(domain.getProj()),
        nx(of.isData() ? of.getNx() : 0),
        ny(of.isData() ? of.getNy() : 0) {
    const Rect& limits = domain.getLimits();
    view.set(std::min(limits.xmin, limits.xmax), std::min(limits.ymin, limits.ymax),
             std::max(limits.xmin, limits.xmax), std::max(limits.ymin, limits.ymax));
  }

  /** Calls with the column and row of each cell in view whose places are known, with its box set.
   */
  template <typename Draw>
  void forEach(GridBox& cell, Draw visit) {
    if (nx < 2 || ny < 2) return;
    upper.resize(static_cast<size_t>(nx));
    lower.resize(static_cast<size_t>(nx));
    project(0, lower);
    for (int j = 0; j < ny - 1; j++) {
      std::swap(upper, lower);
      project(j + 1, lower);
      const float* above = grid.getData() + static_cast<size_t>(j) * static_cast<size_t>(nx);
      const float* below = above + nx;
      for (int i = 0; i < nx - 1; i++) {
        const auto k = static_cast<size_t>(i);
        const std::array<Point, 4> places{upper[k], upper[k + 1], lower[k], lower[k + 1]};
        if (!isSeen(places)) continue;
        cell.set({above[k], above[k + 1], below[k], below[k + 1]}, places, proj);
        visit(i, j);
      }
    }
  }
  /** The place of a point. @return 1; 0 if it isn't in view */
  int find(int i, int j, Point& p) {
    GridBox::project(grid, domain, is_same, i, j, p);
    return p.isSet() && domain.withinExt(p, 1) ? 1 : 0;
  }

 private:
  void project(int j, std::vector<Point>& row) {
    for (int i = 0; i < nx; i++) {
      GridBox::project(grid, domain, is_same, i, j, row[static_cast<size_t>(i)]);
    }
  }
  /** Its places are known, and it isn't all beyond one side of the view. */
  [[nodiscard]] bool isSeen(const std::array<Point, 4>& places) const {
    const auto [p, q, r, s] = places;
    return p.isSet() && q.isSet() && r.isSet() && s.isSet() &&
           !(std::max({p.x, q.x, r.x, s.x}) < view.xmin) &&
           !(std::min({p.x, q.x, r.x, s.x}) > view.xmax) &&
           !(std::max({p.y, q.y, r.y, s.y}) < view.ymin) &&
           !(std::min({p.y, q.y, r.y, s.y}) > view.ymax);
  }

  Grid& grid;
  Domain& domain;
  bool is_same;
  int proj;
  int nx;
  int ny;
  Rect view;
  std::vector<Point> upper;
  std::vector<Point> lower;
};

/** The part of a cell between two levels. Along the cell's edge lie the corners between the levels
 *  and the points where the levels cross it; from each such point the outline leaves the edge along
 *  the line of that level, to the point that the line leads to. */
class ContPlot::Band {
 public:
  Band(const GridBox& lower, const GridBox& upper) : boxes{&lower, &upper} {
    is_sound = upper.getLevel() > lower.getLevel();
    for (int s = 0; s < 4 && is_sound; s++) addSide(s);
    is_sound = is_sound && found[LOWER] == lower.getNumSide() && found[UPPER] == upper.getNumSide();
  }
  /** Sends its polygons, not closed, the upper level's crossings first and in their order. */
  template <typename Send>
  void trace(Points& outline, Send send) {
    if (!is_sound) return;
    for (int n = 0; n < found[UPPER]; n++) traceFrom(UPPER, n, outline, send);
    for (int n = found[LOWER] - 1; n >= 0; n--) traceFrom(LOWER, n, outline, send);
  }

 private:
  enum { LOWER = 0, UPPER = 1 };
  enum Zone { LOW = 0, IN = 1, HIGH = 2 };
  /** A corner or a crossing on the edge. */
  struct Item {
    int which;      ///< LOWER or UPPER, -1 a corner
    int n;          ///< crossing or corner
    bool is_entry;  ///< clockwise, the band begins here
  };

  [[nodiscard]] Zone zone(int corner) const {
    if (boxes[UPPER]->getVal(corner) > boxes[UPPER]->getLevel()) return HIGH;
    return boxes[LOWER]->getVal(corner) <= boxes[LOWER]->getLevel() ? LOW : IN;
  }
  void addCrossing(int which, int s, bool is_entry) {
    const GridBox& cell = *boxes[which];
    for (int n = 0; n < 4; n++) {
      if (cell.getCross(n) == s) {
        where[which][n] = num;
        found[which]++;
        items[num++] = {which, n, is_entry};
        return;
      }
    }
    is_sound = false;
  }
  /** Clockwise, a side from its first corner on, without its last one. */
  void addSide(int s) {
    static constexpr int around[5] = {GridBox::UL, GridBox::UR, GridBox::LR, GridBox::LL,
                                      GridBox::UL};
    const Zone from = zone(around[s]);
    const Zone to = zone(around[s + 1]);
    if (from == IN) items[num++] = {-1, around[s], false};
    if (from == LOW && to != LOW) addCrossing(LOWER, s, true);
    if (from == HIGH && to != HIGH) addCrossing(UPPER, s, true);
    if (from != HIGH && to == HIGH) addCrossing(UPPER, s, false);
    if (from != LOW && to == LOW) addCrossing(LOWER, s, false);
  }
  template <typename Send>
  void traceFrom(int which, int n, Points& outline, Send send) {
    if (visited[which][n]) return;
    outline.clear();
    // Each turn of the loop leaves a crossing for good, so that it ends.
    while (!visited[which][n]) {
      leave(which, n, outline);
      n = boxes[which]->getPartner(n);
      if (visited[which][n]) break;
      leave(which, n, outline);
      const int step = items[where[which][n]].is_entry ? 1 : num - 1;
      int i = where[which][n];
      for (i = (i + step) % num; items[i].which < 0; i = (i + step) % num) {
        outline.add(boxes[UPPER]->getPoint(items[i].n));
      }
      which = items[i].which;
      n = items[i].n;
    }
    send();
  }
  void leave(int which, int n, Points& outline) {
    visited[which][n] = true;
    outline.add(boxes[which]->getCrossPoint1(n));
  }

  const GridBox* boxes[2];
  Item items[12]{};
  int num = 0;
  int where[2][4]{};
  bool visited[2][4]{};
  int found[2]{};
  bool is_sound = true;
};

int ContPlot::init() {
  type = LINES;
  def_base = def_intrvl = base = intrvl = Const::FMISS;
  min = max = grid_min = grid_max = conlo = conhi = Const::FMISS;
  num_cont = 0;
  skipx = skipy = fill_pat = Const::MISS;
  skipval = extrad = 2;
  dash = 0;
  line_width = Const::FMISS;
  scale = 1.0F;
  tform.clear();
  bar = 0;
  fill.init();
  if (StrLib::valid(Zqv::getResrc("plot_type"))) setType(Zqv::getResrc("plot_type"));
  setColorTable(Zqv::getResrc("color_table"));
  setInterval(Zqv::getResrc("con_interval", Const::FMISS));
  setBase(Zqv::getResrc("con_base", Const::FMISS));
  setColorLine(Zqv::getResrc("color_cont"));
  setColorFill(Zqv::getResrc("color_fill"));
  setColorLabel(Zqv::getResrc("color_label"));
  setTextFormat(Zqv::getResrc("format"));
  return setParam(Zqv::getResrc("parameter"));
}

int ContPlot::decodeType(const char* name) {
  struct Row {
    const char* name;
    int type;
  };
  static constexpr Row rows[] = {{"none", NONE}, {"value", VALUES},   {"gvalue", VALUES},
                                 {"cf", FILL},   {"lcf", LINES_FILL}, {"ln", LINES},
                                 {"dln", LINES}, {"ndln", LINES}};
  for (const Row& row : rows) {
    if (StrLib::equal(name, row.name)) return row.type;
  }
  return NONE;
}

int ContPlot::setType(const char* name) {
  type = decodeType(name);
  if (StrLib::equal(name, "dln")) dash = 1;
  if (StrLib::equal(name, "ndln")) dash = -1;
  return 1;
}

int ContPlot::setType(int n) {
  type = n;
  return 1;
}

int ContPlot::setParam(const char* text) {
  // First match wins.
  static constexpr const char* types[] = {"cf", "lcf", "ln", "dln", "ndln", "gvalue", "value"};
  const Strings items(text, ',');
  for (int i = 0; i < items.getNum(); i++) {
    const auto begins = [&](const char* with) {
      return items.equal(i, with, StrLib::length(with));
    };
    const char* behind = items.getStringAfter(i, '=');
    const float number = items.getFloatAfter(i, '=');
    if (std::any_of(std::begin(types), std::end(types),
                    [&](const char* t) { return items.equal(i, t); })) {
      setType(items.getString(i));
    } else if (begins("ty") || begins("pl")) {
      setType(behind);
    } else if (begins("int") || begins("ci")) {
      setInterval(number);
    } else if (begins("base") || begins("cb")) {
      setBase(number);
    } else if (begins("wi")) {
      setLineWidth(number);
    } else if (begins("sc")) {
      setScaleFactor(number);
    } else if (begins("fill")) {
      setFillStyle(behind);
    } else if (begins("ct")) {
      setColorTable(behind);
    } else if (begins("coco") || begins("coln") || begins("co=")) {
      setColorLine(behind);
    } else if (begins("cof")) {
      setColorFill(behind);
    } else if (begins("cola")) {
      setColorLabel(behind);
    } else if (begins("fm")) {
      setTextFormat(behind);
    } else if (items.iequal(i, "bar", 3)) {
      bar = 1;
    } else if (begins("lab")) {
      setLabels(items.getString(i, 4));
    }
  }
  return 1;
}

/** "SKIPVAL:EXTRAD:SKIPX:SKIPY", or with "," or "."; one number gives the first two by its digits.
 */
void ContPlot::setLabels(const char* text) {
  int v[4] = {0, 0, 0, 0};
  int n = 0;
  for (const char* format : {"%d:%d:%d:%d", "%d,%d,%d,%d", "%d.%d.%d.%d"}) {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    n = std::sscanf(text != nullptr ? text : "", format, &v[0], &v[1], &v[2], &v[3]);
#pragma GCC diagnostic pop
    if (n > 1) break;
  }
  if (n == 1) setLabelParam(v[0] / 10, v[0] % 10);
  if (n >= 2) setLabelParam(v[0], v[1]);
  if (n >= 3) setLabelSpace(v[2], n == 3 ? v[2] : v[3]);
}

int ContPlot::setInterval(float v) {
  def_intrvl = intrvl = std::isfinite(v) ? v : Const::FMISS;
  return 1;
}

int ContPlot::setBase(float v) {
  def_base = base = std::isfinite(v) ? v : Const::FMISS;
  return 1;
}

int ContPlot::setRange(float lo, float hi) {
  const bool is_set = isNumber(lo) && isNumber(hi);
  grid_min = is_set ? lo : Const::FMISS;
  grid_max = is_set ? hi : Const::FMISS;
  return 1;
}

int ContPlot::setLabelParam(int every, int radius) {
  skipval = every;
  extrad = std::min(radius, most_extrad);
  return 1;
}

int ContPlot::setLabelSpace(int cols, int rows) {
  skipx = cols;
  skipy = rows;
  return 1;
}

int ContPlot::setFillStyle(const char* text) {
  fill_pat = StrLib::valid(text) ? PlotAttr::parseFillStyle(text) : Const::MISS;
  return 1;
}

int ContPlot::setFillStyle(int pattern) {
  fill_pat = pattern;
  return 1;
}

int ContPlot::setLineWidth(float v) {
  line_width = std::isfinite(v) ? v : Const::FMISS;
  return 1;
}

int ContPlot::setTextFormat(const char* format) {
  tform = StrLib::acopy(format).substr(0, MAX_FORMAT);
  return 1;
}

int ContPlot::setColorTable(const char* text) {
  return color_table.copy(StrLib::valid(text, ""));
}

int ContPlot::setColorFill(const char* text) {
  return color_fill.copy(StrLib::valid(text, ""));
}

int ContPlot::setColorLine(const char* text) {
  return color_line.copy(StrLib::valid(text, ""));
}

int ContPlot::setColorLabel(const char* text) {
  return color_label.copy(StrLib::valid(text, ""));
}

int ContPlot::setScaleFactor(float v) {
  scale = isNumber(v) ? v : 1.0F;
  return 1;
}

int ContPlot::draw(Plot& plot, Grid& grid) {
  if (chooseLevels(plot, grid) == 0) return 0;
  switch (type) {
    case LINES_FILL:
      drawFill(plot, grid);
      drawLine(plot, grid);
      break;
    case LINES: drawLine(plot, grid); break;
    case VALUES: drawValues(plot, grid); break;
    default: drawFill(plot, grid); break;
  }
  if (type != VALUES) {
    drawLineLabels(plot, grid);
    drawMaxMin(plot, grid);
  }
  if (bar != 0) {
    if (fill.areValuesSet()) {
      plot.setBar(fill);
    } else {
      plot.setBar(fill, Range(conlo, conhi));
    }
  }
  return 1;
}

/** The fill's classes carry indices of the plot's own table. */
int ContPlot::chooseColors(Plot& plot) {
  ColorMap& map = plot.getColorMap();
  ColorMap table;
  if (color_table.valid()) {
    ColorFile::read(color_table.get(), table);
    plot.setColorMap(table);
  }
  if (color_fill.valid() && !color_fill.iequal("miss") && !color_fill.iequal("def")) {
    return fill.set(map, color_fill.get());
  }
  if (table.getNumFill() < 1) return fill.set(map, nullptr);
  fill.init();
  for (int i = 0; i < table.getNumFill(); i++) fill.decode(map, table.getName(i));
  return 1;
}

void ContPlot::calcInterval(float lo, float hi) {
  intrvl = Tools::calcInterval(hi, lo, fill.getNum() - 1);
  if (!std::isfinite(intrvl) || !(intrvl > 0)) {
    intrvl =
        static_cast<float>(std::fabs(static_cast<double>(hi) - lo) / std::max(fill.getNum(), 2));
  }
}

/** The levels at the interval that cover the range, at most a few more than can be drawn. */
void ContPlot::countLevels(float lo, float hi) {
  const double b = base == Const::FMISS ? 0.0 : base;
  if (lo <= hi) {
    conlo = static_cast<float>(b + intrvl * std::floor((lo - b) / intrvl));
    conhi = static_cast<float>(b + intrvl * std::ceil((hi - b) / intrvl));
    if (conhi == static_cast<float>(hi - b)) conhi += intrvl;
  } else {
    conlo = hi;
    conhi = lo;
  }
  num_cont = Tools::cut((static_cast<double>(conhi) - conlo) / intrvl + 1.01);
}

int ContPlot::chooseLevels(Plot& plot, Grid& grid) {
  float lo = 0;
  float hi = 0;
  const int has_data = findRange(grid, lo, hi);
  const float lowest = lo;
  if (grid_max != Const::FMISS) {
    lo = grid_min;
    hi = grid_max;
  }
  min = lo;
  max = hi;
  chooseColors(plot);
  const auto tweak = static_cast<float>((static_cast<double>(hi) - lo) / TWEAK_SHARE);
  box.setTweak(tweak);
  pbox.setTweak(tweak);
  base = def_base;
  intrvl = std::fabs(def_intrvl);
  if (def_intrvl == Const::FMISS || def_intrvl == 0.0F) calcInterval(lo, hi);
  if (fill.areValuesSet()) {
    conlo = fill.getBaseVal();
    num_cont = fill.getNum();
    conhi = fill.getValue(num_cont - 1);
    intrvl = Const::FMISS;
  } else if (has_data == 0) {
    conlo = conhi = 0;
    intrvl = 1;
    num_cont = 0;
  } else {
    countLevels(lo, hi);
    if (num_cont > most_levels) {
      Zqv::outWarning("Contour interval too small, recomputing...\n");
      calcInterval(lo, hi);
      countLevels(lo, hi);
      num_cont = std::min(num_cont, most_levels);
    }
  }
  fill.setInterval(intrvl);
  fill.setBase(base == Const::FMISS ? conlo : base);
  if (has_data == 0) return 0;
  levels.clear();
  levels.reserve(static_cast<size_t>(num_cont) + 1);
  for (int k = 0; k <= num_cont; k++) levels.push_back(getLevel(k));
  chooseAttrs(plot);
  // Where nothing lies below the first level, no cell is cut at it: a corner that lies on it would
  // else leave a gap as wide as the tweak.
  bottom =
      levels[0] - tweak <= lowest ? std::nextafter(std::min(lowest, levels[0]), LOWEST) : levels[0];
  return 1;
}

float ContPlot::getLevel(int k) const {
  if (!fill.areValuesSet()) return conlo + static_cast<float>(k) * intrvl;
  if (k < num_cont) return fill.getValue(k);
  return std::max(max + 1, std::nextafter(max, std::numeric_limits<float>::max()));
}

/** Lines, bands and labels of each level. */
void ContPlot::chooseAttrs(Plot& plot) {
  ColorMap& map = plot.getColorMap();
  const bool own = !isMiss(color_line);
  PlotAttr line(own ? color_line.get() : "");
  if (!StrLib::valid(line.getColor())) line.setColor(type == LINES_FILL ? "black" : "white");
  line.setColorInd(map.getInd(line.getColor()));
  const PlotAttr label(
      color_label.get(),
      type == LINES_FILL
          ? Zqv::getResrc("color_clabel", "black")
          : (color_line.valid() ? color_line.get() : Zqv::getResrc("color_label", "white")));
  const int label_color = map.getInd(label.getColor());
  const bool label_own = color_label.valid() || type == LINES_FILL || own;
  mark_color = label_own ? label_color : map.getInd("white");
  line_attrs.clear();
  fills.clear();
  label_colors.clear();
  for (int k = 0; k < num_cont; k++) {
    const float level_k = levels[static_cast<size_t>(k)];
    const PlotAttr& band = fill.get(level_k);
    fills.push_back(band.validColor() ? &band : nullptr);
    PlotAttr a;
    a.setWidth(0.0F);
    a.setStyle(dash == 1 || (dash == -1 && level_k < 0) ? LINE_DASHED : LINE_SOLID);
    a.update(line);
    if (isNumber(line_width)) a.setWidth(line_width);
    if (band.validStyle()) a.setStyle(band.getStyle());
    if (band.validWidth()) a.setWidth(band.getWidth());
    if (!own) a.setColorInd(band.validColor() ? band.getColorInd() : -1);
    line_attrs.push_back(a);
    label_colors.push_back(label_own ? label_color : (band.validColor() ? band.getColorInd() : -1));
  }
}

// Lines.

void ContPlot::drawLine(Plot& plot, Grid& grid) {
  last_attr = -1;
  Cells(grid, plot).forEach(box, [&](int /*i*/, int /*j*/) {
    if (!box.isDataValid()) return;
    for (int k = 0; k < num_cont; k++) {
      const float at = levels[static_cast<size_t>(k)];
      if (at < box.getMin() || at > box.getMax() || box.setLevel(at) == 0) continue;
      if (k != last_attr) {
        plot.setLine(line_attrs[static_cast<size_t>(k)]);
        last_attr = k;
      }
      drawBoxLine(plot);
    }
  });
}

void ContPlot::drawBoxLine(Plot& plot) const {
  struct Ends {
    int a, b;
  };
  static constexpr Ends sides[4] = {{GridBox::UL, GridBox::UR},
                                    {GridBox::UR, GridBox::LR},
                                    {GridBox::LL, GridBox::LR},
                                    {GridBox::UL, GridBox::LL}};
  for (int s = 0; s < 4; s++) {
    if (box.getSide(s) == GridBox::ALONG && box.getVal(sides[s].a) == box.getLevel()) {
      drawSegment(plot, box.getPoint(sides[s].a), box.getPoint(sides[s].b));
    }
  }
  if (box.getNumSide() == 2) {
    drawSegment(plot, box.getCrossPoint1(0), box.getCrossPoint1(1));
  } else if (box.getNumSide() == 4) {
    const int partner = box.getPartner(0);
    const int other = partner == 1 ? 2 : 1;
    drawSegment(plot, box.getCrossPoint1(0), box.getCrossPoint1(partner));
    drawSegment(plot, box.getCrossPoint1(other), box.getCrossPoint1(box.getPartner(other)));
  }
}

/** A cell across the seam of the map shows on both sides of it. */
void ContPlot::drawSegment(Plot& plot, Point p1, Point p2) const {
  // Wholly beyond the edge of the map: cut there, it would become a ray along it.
  const bool beyond =
      box.getProj() == DomainVal::LATLON && std::min(std::abs(p1.x), std::abs(p2.x)) > date_line;
  if (!beyond || box.isSpan()) {
    plot.drawLine(p1, p2);
  }
  if (box.isSpan()) {
    p1.x -= box.getPeriod();
    p2.x -= box.getPeriod();
    plot.drawLine(p1, p2);
  }
}

// Bands.

void ContPlot::drawFill(Plot& plot, Grid& grid) {
  last_attr = -1;
  plot.setFill();
  Cells(grid, plot).forEach(box, [&](int /*i*/, int /*j*/) {
    if (box.isDataValid()) drawCellFill(plot);
  });
}

void ContPlot::drawCellFill(Plot& plot) {
  if (num_cont == 0) return;
  // The levels below the cell cost one comparison each.
  int k = 1;
  while (k < num_cont && levels[static_cast<size_t>(k)] < box.getMin()) k++;
  box.setLevel(k == 1 ? bottom : levels[static_cast<size_t>(k) - 1]);
  for (; k < num_cont; k++) {
    pbox = box;
    box.setLevel(levels[static_cast<size_t>(k)]);
    if (box.getEqual() != -1) paintBand(plot, k - 1);
    if (box.getEqual() == 1) return;
  }
  pbox = box;
  box.setLevel(std::max(levels[static_cast<size_t>(k)],
                        std::nextafter(box.getMax(), std::numeric_limits<float>::max())));
  if (pbox.getNumSide() != 0 || !(pbox.getMin() < pbox.getLevel())) paintBand(plot, k - 1);
}

void ContPlot::paintBand(Plot& plot, int k) {
  const PlotAttr* attr = fills[static_cast<size_t>(k)];
  if (attr == nullptr) return;
  if (k != last_attr) {
    plot.setFillStyle(0);
    plot.setFill(*attr);
    if (fill_pat != Const::MISS) plot.setFillStyle(fill_pat);
    last_attr = k;
  }
  drawBoxFill(plot);
}

void ContPlot::drawBoxFill(Plot& plot) {
  if (box.getNumSide() == 0 && pbox.getNumSide() == 0) {
    // Corners at the upper level count as below it; a cell that is flat at a level lies above it.
    if (pbox.getLevel() <= box.getMin() && box.getMin() < box.getLevel() &&
        box.getMax() <= box.getLevel()) {
      polygon.clear();
      for (const int n : {GridBox::UR, GridBox::LR, GridBox::LL, GridBox::UL}) {
        polygon.add(box.getPoint(n));
      }
      sendPolygon(plot);
    }
    return;
  }
  Band(pbox, box).trace(polygon, [&] { sendPolygon(plot); });
}

/** Closes the polygon and draws it, on both sides of the seam if it spans one. */
void ContPlot::sendPolygon(Plot& plot) {
  if (polygon.getNum() < 3) return;
  polygon.add(0);
  plot.drawFill(polygon);
  if (box.isSpan()) {
    polygon.offset(-box.getPeriod(), 0.0F);
    plot.drawFill(polygon);
  }
}

// Texts.

void ContPlot::numberText(float v, String& out) const {
  if (tform.empty()) {
    Tools::toString(v, out);
  } else {
    Tools::toString(v, tform.c_str(), out);
  }
}

void ContPlot::prepareText(Plot& plot) {
  plot.setText();
  plot.setTextAlign(Graph::HALIGN_CENTER, Graph::VALIGN_HALF);
  plot.setTextHeight(LABEL_SHARE * plot.getVert() * scale);
}

void ContPlot::drawValues(Plot& plot, Grid& grid) {
  if (skipval < 1) return;
  Cells cells(grid, plot);
  prepareText(plot);
  plot.setTextColor(StrLib::valid(PlotAttr(color_label.get()).getColor(), "green"));
  String text;
  for (int j = 0; j < grid.getNy(); j += skipval) {
    for (int i = 0; i < grid.getNx(); i += skipval) {
      const float v = grid.getValue1(i, j);
      Point p;
      if (!isNumber(v) || cells.find(i, j, p) == 0) continue;
      numberText(v, text);
      plot.drawText(p, text.get());
    }
  }
}

void ContPlot::drawLineLabels(Plot& plot, Grid& grid) {
  if (skipval < 1) return;
  const int cols = skipx == Const::MISS ? std::max(grid.getNx() / 5, 1) : skipx;
  const int rows = skipy == Const::MISS ? std::max(grid.getNy() / 5, 1) : skipy;
  prepareText(plot);
  last_attr = -1;
  Cells(grid, plot).forEach(box, [&](int i, int j) {
    const bool across = isMultiple(i, cols);
    const bool down = isMultiple(j, rows);
    if ((across || down) && box.isDataValid()) drawCellLabels(plot, across, down);
  });
}

void ContPlot::drawCellLabels(Plot& plot, bool across, bool down) {
  for (int k = 0; k < num_cont; k += std::min(skipval, num_cont)) {
    const float at = levels[static_cast<size_t>(k)];
    if (at < box.getMin() || at > box.getMax() || box.setLevel(at) != 2) continue;
    if (across && box.getCross(0) == GridBox::RIGHT && box.getCross(1) == GridBox::LEFT) {
      drawCross(plot, k);
    }
    if (down && box.getCross(0) == GridBox::TOP && box.getCross(1) == GridBox::BOTTOM) {
      drawCross(plot, k);
    }
  }
}

/** The level in the middle of its line through the cell. */
void ContPlot::drawCross(Plot& plot, int k) {
  if (k != last_attr) {
    plot.setTextColor(label_colors[static_cast<size_t>(k)]);
    last_attr = k;
  }
  Point p;
  p.interp(box.getCrossPoint1(0), box.getCrossPoint1(1), 0.5F);
  plot.adjustDom(p);
  if (!plot.withinDomainExt(p, 1)) return;
  String text;
  numberText(box.getLevel(), text);
  plot.drawText(p, text.get());
}

namespace {

/** Whether a point is higher or lower than all around it. */
class Extreme {
 public:
  explicit Extreme(const Grid& of) : grid(of) {}
  /** @param r  half the width of the square of points around. @return 1 the highest, -1 the lowest,
   *            0 neither */
  int find(int x, int y, int r) {
    value = grid.getValue1(x, y);
    lower = higher = missing = 0;
    if (!isNumber(value)) return 0;
    // Those next to it settle nearly all points.
    if (!compare(x, y, 1) || (r > 1 && !restart().compare(x, y, r))) return 0;
    if (lower + higher == 0) return 0;
    return lower > 0 ? 1 : -1;
  }

 private:
  Extreme& restart() {
    lower = higher = missing = 0;
    return *this;
  }
  /** @return false as soon as it can be neither */
  bool compare(int x, int y, int r) {
    const int left = std::max(x - r, 0);
    const int right = std::min(x + r, grid.getNx() - 1);
    const int last = std::min(y + r, grid.getNy() - 1);
    for (int j = std::max(y - r, 0); j <= last; j++) {
      const float* row =
          grid.getData() + static_cast<size_t>(j) * static_cast<size_t>(grid.getNx());
      for (int i = left; i <= right; i++) {
        if (i == x && j == y) continue;
        const float v = row[i];
        if (!isNumber(v)) {
          if (++missing > 1) return false;
        } else if (v < value) {
          if (higher > 0) return false;
          lower++;
        } else if (v > value) {
          if (lower > 0) return false;
          higher++;
        } else {
          return false;
        }
      }
    }
    return true;
  }

  const Grid& grid;
  float value = 0.0F;
  int lower = 0;
  int higher = 0;
  int missing = 0;
};

}  // namespace

void ContPlot::drawMaxMin(Plot& plot, Grid& grid) {
  const int r = std::min(extrad, most_extrad);
  if (r < 1) return;
  Cells cells(grid, plot);
  Extreme extreme(grid);
  prepareText(plot);
  const float mark = MARK_SHARE * plot.getVert() * scale;
  const float label = LABEL_SHARE * plot.getVert() * scale;
  String text;
  for (int j = 0; j < grid.getNy(); j++) {
    for (int i = 0; i < grid.getNx(); i++) {
      const int found = extreme.find(i, j, r);
      Point p;
      if (found == 0 || cells.find(i, j, p) == 0) continue;
      plot.setTextColor(mark_color);
      plot.setTextHeight(mark);
      plot.drawText(p, found > 0 ? "H" : "L");
      numberText(grid.getValue1(i, j), text);
      plot.setTextHeight(label);
      p.offset(0.0F, -(mark + label) / 2 - label / 4);
      plot.drawText(p, text.get());
    }
  }
}

int ContPlot::drawLabels(Plot& plot, Grid& grid) const {
  String text(200);
  if (grid.getVar().toInfoLabel(text) == 0) text.copy(grid.getInfo());
  if (text.valid()) plot.addLabel("ul", text.get());
  Timezone zone;
  if (StrLib::valid(Zqv::getResrc("timezone"))) zone.set(Zqv::getResrc("timezone"));
  if (grid.getVar().toDateLabel(grid.getDate(), zone, grid.getGenName(), text) == 0) {
    text.copy(grid.getDatim());
  }
  if (text.valid()) plot.addLabel("ur", text.get());
  Range range;
  if (findRange(grid, range.min, range.max) == 0) return 1;
  String lo;
  String hi;
  Tools::toString(range.min, lo);
  Tools::toString(range.max, hi);
  String step;
  if (intrvl != Const::FMISS) {
    Tools::toString(intrvl, step);
    text.printf("Int: %s Lo: %s Hi: %s", step.get(), lo.get(), hi.get());
  } else {
    text.printf("Lo: %s Hi: %s", lo.get(), hi.get());
  }
  return plot.addLabel("lr", text.get());
}

}  // namespace ZQV
