#include "Lev2Plot.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <utility>

#include "BZahead.h"
#include "CellPainter.h"
#include "ColorFill.h"
#include "Convert.h"
#include "DateTool.h"
#include "Domain.h"
#include "EarthPoint.h"
#include "FileTool.h"
#include "Lev2Data.h"
#include "Lev2File.h"
#include "Lev2Info.h"
#include "MapPlot.h"
#include "Plot.h"
#include "PlotAttr.h"
#include "Progress.h"
#include "StrLib.h"
#include "Strings.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr int default_range = 460;    // km
constexpr int max_range = 100000;     // km, far above any view
constexpr float km_in_nm = 0.54F;     // of one km in nautical miles
constexpr float plane_unit = 100.0F;  // km
constexpr int mess_file = 6;

constexpr const char* reflectivity_fill =
    "-50:off,5:blue,10:lblue,15:cyan,20:lcyan,25:green,30:lgreen,35:brown,40:yellow,45:red,"
    "50:lred,55:magenta,60:lmagenta,65:dgray,70:lgray,75:white";

}  // namespace

/** A volume whose header was read. Streams and pipes, which can't go back, stay so from getDomain
 * to draw. */
struct Lev2Plot::Begun {
  std::string name;
  Lev2File file;
  Lev2Info info;
};

/** What becomes of each level, worked out once for each scale that the radials have. */
class Lev2Plot::Levels {
 public:
  Levels(const ColorFill& colors, Walk& found) : fill(colors), walk(found) {}

  /** Takes the scale of the radial at hand. */
  void set(const Lev2File& file) {
    Lev2File::Values now;
    file.getValues(now);
    if (known && now == values) {
      return;
    }
    known = true;
    values = now;
    for (size_t i = 0; i < values.size(); i++) {
      attr[i] = &fill.get(values[i]);
      visible[i] = attr[i]->validColor();
      met[i] = false;
    }
  }
  /** Counts a level in for the limits. */
  void meet(unsigned char level) {
    if (met[level]) {
      return;
    }
    met[level] = true;
    const float v = values[level];
    walk.largest = std::max(walk.largest, v);
    if (v > Lev2File::range_folded) {
      walk.smallest = std::min(walk.smallest, v);
    }
  }
  [[nodiscard]] bool isVisible(unsigned char level) const { return visible[level]; }
  /** Makes the attributes of a level the current ones. */
  void setFill(Plot& plot, unsigned char level) {
    if (filled != attr[level]) {
      filled = attr[level];
      plot.setFill(*filled);
    }
  }

 private:
  const ColorFill& fill;
  Walk& walk;
  bool known = false;
  Lev2File::Values values{};
  std::array<const PlotAttr*, 256> attr{};
  std::array<bool, 256> visible{};
  std::array<bool, 256> met{};
  const PlotAttr* filled = nullptr;  ///< attributes that the plot has
};

Lev2Plot::Lev2Plot() {
  Lev2Plot::init();
}

Lev2Plot::Lev2Plot(const char* params) {
  Lev2Plot::init();
  Lev2Plot::setParam(params);
}

Lev2Plot::~Lev2Plot() = default;

int Lev2Plot::init() {
  begun.reset();
  color_table.clear();
  color_fill.clear();
  tz = Timezone();
  id.clear();
  file_type = 0;
  plt_site = plt_graph = 0;
  plt_dist.fill(0.0F);
  clutter_rad = 0;
  range = default_range;
  scan_num = 1;
  scan_type = Lev2File::REFLECTIVITY;
  map = false;
  sync = 0;
  Lev2Plot::setNameConv("lev2");
  setFile();
  if (isPresent(Zqv::getResrc("variable"))) {
    setVariable(Zqv::getResrc("variable"));
  }
  if (isPresent(Zqv::getResrc("identifier"))) {
    setId(Zqv::getResrc("identifier"));
  }
  return Lev2Plot::setParam(Zqv::getResrc("parameter"));
}

int Lev2Plot::setInput(const char* name) {
  file_type = StrLib::equal(name, "lev2z") || StrLib::equal(name, "comp") ? 1 : 0;
  return 0;
}

int Lev2Plot::setNameConv(const char* conv) {
  const int done = RadarPlot::setNameConv(conv);
  if (StrLib::valid(filename.getType())) {
    setInput(filename.getType());
  }
  return done;
}

int Lev2Plot::setFilename() {
  return filename.setFilePrompt("Enter the Level II filename: ");
}

int Lev2Plot::setMap(int flag) {
  map = flag != 0;
  return 1;
}

int Lev2Plot::setVariable(const char* name) {
  constexpr int short_name = 3;
  constexpr int long_name = 5;
  if (!StrLib::valid(name)) {
    return 0;
  }
  if (StrLib::iequal(name, "ref", short_name)) {
    scan_type = Lev2File::REFLECTIVITY;
    scan_num = StrLib::toInt(name, short_name);
  } else if (StrLib::iequal(name, "vel", short_name)) {
    scan_type = Lev2File::VELOCITY;
    scan_num = StrLib::toInt(name, short_name);
  } else if (StrLib::iequal(name, "spect", long_name)) {
    scan_type = Lev2File::SPECTRUM_WIDTH;
    if (StrLib::length(name) > long_name) {
      scan_num = StrLib::toInt(name, long_name);
    }
  }
  return 1;
}

int Lev2Plot::setParam(const char* text) {
  constexpr int default_clutter = 25;
  constexpr int value = 3;
  const Strings items(text, ',');
  for (int i = 0; i < items.getNum(); i++) {
    const char* behind = items.getStringAfter(i, '=');
    if (items.iequal(i, "fi", 2)) {
      setFilename(behind);
    } else if (items.iequal(i, "in", 2)) {
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
    } else if (items.equal(i, "va", 2)) {
      setVariable(behind);
    } else if (items.iequal(i, "comp")) {
      file_type = 1;
    } else if (items.iequal(i, "site")) {
      plt_site = 1;
    } else if (items.iequal(i, "dist", 4)) {
      takeRings(items, i, 4, false, plt_dist.data());
    } else if (items.iequal(i, "range", 5)) {
      range = numberAt(items, i, 6, range);
    } else if (items.iequal(i, "nodist")) {
      plt_dist[0] = 0;
    } else if (items.iequal(i, "nograph")) {
      plt_graph = 0;
    } else if (items.iequal(i, "graph")) {
      plt_graph = 1;
    } else if (items.iequal(i, "map")) {
      map = true;
    } else if (items.iequal(i, "clutter", 7)) {
      clutter_rad = numberAt(items, i, 8, default_clutter);
    } else if (items.iequal(i, "noclutter")) {
      clutter_rad = 0;
    }
  }
  return 1;
}

int Lev2Plot::print() {
  std::printf("Lev2Plot\n");
  return 1;
}

int Lev2Plot::openFile(Lev2File& file) {
  return file.open(filename.getName(), file_type);
}

int Lev2Plot::getDomain(Domain& domain) {
  auto own = std::make_unique<Begun>();
  if (!filename.isSet() || openFile(own->file) == 0) {
    return 0;
  }
  own->file.getHeader(own->info);
  const EarthPoint site(own->info.lat, own->info.lon);
  if (FileTool::isStdio(filename.getName()) || *filename.getName() == '|') {
    own->name = filename.getName();
    begun = std::move(own);
  }
  return getDomain(site, domain);
}

int Lev2Plot::getDomain(const EarthPoint& site, Domain& domain) const {
  DomainVal val;
  val.proj = DomainVal::PSTEREO;
  val.plat = val.clat = site.lat;
  val.plon = val.clon = site.lon;
  const int half = std::clamp(range, 1, max_range);
  val.nx = 3 * half + 1;
  val.ny = 2 * half + 1;
  val.dx = val.dy = km_in_nm;
  domain.set(val);
  val.dx = val.dy = domain.getMapFactor(site) * Convert::NMtoKM(km_in_nm) / plane_unit;
  domain.set(val);
  constexpr int level = 3;
  if (Zqv::checkDebug(level)) {
    domain.print();
  }
  return 1;
}

int Lev2Plot::draw(Plot& plot) {
  if (!filename.isSet()) {
    filename.setFile("la");
  }
  std::unique_ptr<Begun> volume = std::move(begun);
  if (!volume || volume->name != filename.getName()) {
    volume = std::make_unique<Begun>();
    if (openFile(volume->file) == 0) {
      Zqv::outWarning("Lev2Plot: Unable to open file: %s\n", filename.getName());
      Zqv::setFileError(filename.getName());
      return 0;
    }
    if (FileTool::isFile(filename.getName())) {
      volume->file.setAhead(BZahead::coreThreads());
    }
    volume->file.getHeader(volume->info);
  }
  const Lev2Info& info = volume->info;
  const EarthPoint site(info.lat, info.lon);
  Domain domain;
  getDomain(site, domain);
  CellPainter painter(plot);
  painter.setDomain(domain, site);
  readColorTable(plot);
  ColorFill fill;
  if (color_fill.valid()) {
    fill.set(plot.getColorMap(), color_fill.get());
  } else {
    fill.set(plot.getColorMap(),
             scan_type == Lev2File::REFLECTIVITY ? reflectivity_fill : velocity_fill);
  }
  painter.meets_all = fill.hasPatterns();
  MapPlot under("under");
  MapPlot over("default,over");
  if (map) {
    under.draw(plot);
  }
  const Walk walk = walkVolume(volume->file, painter, fill);
  if (map) {
    over.draw(plot);
  }
  if (walk.elev_ang == Const::FMISS) {
    Zqv::setError(Zqv::NODATA);
  }
  addLabels(plot, info, walk);
  plot.setBar(fill);
  plot.done();
  return 1;
}

Lev2Plot::Walk Lev2Plot::walkVolume(Lev2File& file, CellPainter& painter,
                                    const ColorFill& fill) const {
  constexpr int first_level = 7;  // of the line for the first radial of a cut
  constexpr int level = 8;        // of those for all others
  constexpr int print_level = 5;
  const bool prints = Zqv::checkDebug(print_level);
  // Lines that later radials would still write.
  const bool writes = Zqv::checkMessage(first_level) || Zqv::checkMessage(level) || Zqv::isDebug();
  Walk walk;
  Levels levels(fill, walk);
  Lev2Data data;
  int last_elev = -1;
  int num_blocks = 0;
  Progress progress("radial");
  for (; file.getBlock(data) != 0; file.nextBlock()) {
    if (data.type != 1 && data.type != 31) {
      continue;
    }
    progress.step(num_blocks + 1);
    if (num_blocks++ == 0) {
      Zqv::outMessage(mess_file, "Lat: %.3f\n", static_cast<double>(data.lat));
      Zqv::outMessage(mess_file, "Lon: %.3f\n", static_cast<double>(data.lon));
      Zqv::outMessage(mess_file, "Elev: %d\n", data.elev);
      Zqv::outMessage(mess_file, "VCP: %d\n", data.cov_patt);
    }
    if (prints) {
      data.print();
    }
    if (writes) {
      Zqv::outMessage(data.elev_num != last_elev ? first_level : level,
                      "El#=%d El=%.1f Az=%.1f Ptr=%d,%d,%d Num=%d,%d\n", data.elev_num,
                      static_cast<double>(data.elev_ang), static_cast<double>(data.rad_az),
                      data.refl_ptr, data.vel_ptr, data.spect_ptr, data.num_refl, data.num_vel);
    }
    last_elev = data.elev_num;
    if (data.elev_num > scan_num && !writes) {
      break;  // the cuts of a volume go upward
    }
    if (data.elev_num != scan_num || file.setDataType(scan_type) == 0) {
      continue;
    }
    walk.elev_ang = data.elev_ang;
    constexpr int clear_air_first = 30;
    constexpr int clear_air_last = 39;
    const bool clear_air = data.cov_patt >= clear_air_first && data.cov_patt <= clear_air_last;
    walk.mode = clear_air ? 2 : 1;
    levels.set(file);
    drawRadial(file, data, painter, levels);
  }
  return walk;
}

void Lev2Plot::drawRadial(Lev2File& file, const Lev2Data& data, CellPainter& painter,
                          Levels& levels) const {
  const bool refl = scan_type == Lev2File::REFLECTIVITY;
  const float gate = painter.product.getDx() * (refl ? data.refl_size : data.vel_size);
  // Velocity and width begin at the range of reflectivity: deliberate.
  const float first = data.first_refl != Const::FMISS ? data.first_refl : data.first_vel;
  int n = 0;
  const unsigned char* gates = file.getGates(n);
  for (int i = 0; i < n; i++) {
    levels.meet(gates[i]);
  }
  const float az = painter.product.adjustDir(data.rad_az, painter.centre);
  if (!std::isfinite(az)) {
    return;
  }
  const auto az0 = static_cast<double>(az - data.az_space / 2);
  const double az1 = az0 + static_cast<double>(data.az_space + CellPainter::overlap);
  painter.setRadial(az0, az1, first / plane_unit, gate);
  for (int i = 0, end = 0; i < n; i = end + 1) {
    for (end = i; end < n && levels.isVisible(gates[end]); end++) {
    }
    if (end > i) {
      painter.addCells(i, end - i);
    }
  }
  for (const CellPainter::Cell& cell : painter.placeCells()) {
    levels.setFill(painter.plot, gates[cell.number]);
    painter.fillCell(cell);
  }
}

void Lev2Plot::addLabels(Plot& plot, const Lev2Info& info, const Walk& walk) const {
  const bool refl = scan_type == Lev2File::REFLECTIVITY;
  const char* title = refl                              ? "Reflectivity [dBZ]"
                      : scan_type == Lev2File::VELOCITY ? "Velocity [m/s]"
                                                        : "Spectrum width [m/s]";
  char text[80];
  std::snprintf(text, sizeof(text), "%s %s", info.getId(), title);
  plot.addLabel("ul", text);
  const char* mode = walk.mode == 1 ? "pr" : "cl";
  const auto elev = static_cast<double>(walk.elev_ang);
  const auto largest = static_cast<double>(walk.largest);
  char misc[40];
  if (refl) {
    std::snprintf(misc, sizeof(misc), "Md=%s Sc=%d El=%.1f Mx=%.0f", mode, scan_num, elev, largest);
  } else {
    std::snprintf(misc, sizeof(misc), "Md=%s Sc=%d El=%.1f Rng=%.0f,%.0f", mode, scan_num, elev,
                  static_cast<double>(walk.smallest), largest);
  }
  // In the default zone, whatever the user's is: deliberate.
  String date;
  DateTool::createLabel(info.getDate(), Timezone(), date);
  plot.addLabel("ur", date.get());
  plot.addLabel("lr", misc);
}

}  // namespace ZQV
