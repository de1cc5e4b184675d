#include "MapPlot.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "Domain.h"
#include "DomainTool.h"
#include "EarthPoint.h"
#include "EarthPoints.h"
#include "File.h"
#include "FileTool.h"
#include "Graph.h"
#include "GridPoint.h"
#include "Image.h"
#include "ImageFile.h"
#include "ImageMath.h"
#include "MapFile.h"
#include "MapFileHeader.h"
#include "Plot.h"
#include "PlotAttr.h"
#include "Point.h"
#include "Points.h"
#include "RGB.h"
#include "Rect.h"
#include "StrLib.h"
#include "Strings.h"
#include "Tools.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr int map_layer = 2;  // of Plot::isDrawing
constexpr int under_bit = 1;
constexpr int over_bit = 2;
constexpr const char* latlon_color = "magenta:st=4";
constexpr const char* list_name = "zqv.map";
constexpr float text_share = 0.015F;  // of the domain's height
constexpr float mark_share = 0.018F;
constexpr float default_spacing = 5.0F;  // degrees
constexpr float least_spacing = 0.1F;

/** What follows the first n characters. */
std::string behind(const char* text, int n) {
  return text != nullptr && StrLib::length(text) > n ? std::string(text + n) : std::string();
}

bool begins(const char* text, const char* with) {
  return StrLib::iequal(text, with, StrLib::length(with));
}

/** The pass that a sign asks for, 0 without sign. */
int signBit(char c) {
  return c == '-' ? under_bit : (c == '+' ? over_bit : 0);
}

bool hasNum(const char*& item, float& v) {
  char* end = nullptr;
  v = std::strtof(item, &end);
  if (end == item) {
    return false;
  }
  item = end;
  return true;
}

/** Lists have names in "mpl"; the package's own is called after what it lists. */
bool isList(const char* name) {
  const int slash = StrLib::lastIndex(name, '/');
  return StrLib::iequal(name, "mpl", -3) || StrLib::equal(name + slash + 1, list_name);
}

/** The number of a condition, whose sign is sign. Without a number it is the name of a file. */
bool startsCondition(const char* item, std::string_view sign, float& limit) {
  if (std::string_view(item).substr(0, sign.size()) != sign) {
    return false;
  }
  const char* text = item + sign.size();
  const char* digits = text + (*text == '-' || *text == '+' ? 1 : 0);
  const bool is_number = std::isdigit(static_cast<unsigned char>(*digits)) != 0 || *digits == '.';
  return is_number && hasNum(text, limit);
}

/** Moves on past the colon that ends a condition. */
void endCondition(const char*& item) {
  const int colon = StrLib::index(item, ':');
  item += colon >= 0 ? colon + 1 : StrLib::length(item);
}

/** A sign ("s+", ">": at least; "s-": at most) and a number, if they stand there. @return false if
 * the condition fails */
bool holdsScale(const char*& item, std::string_view sign, float height) {
  float limit = 0;
  if (!startsCondition(item, sign, limit)) {
    return true;
  }
  endCondition(item);
  return sign == "s-" ? height <= limit : height >= limit;
}

/** ">NUMBER:" or ">LOW<HIGH:", or the same the other way round, if it stands there. @return false
 * if it fails */
bool holdsRange(const char*& item, char first, char second, float height) {
  float near = 0;
  if (!startsCondition(item, std::string_view(&first, 1), near)) {
    return true;
  }
  const char* text = item + 1;
  float far = 0;
  hasNum(text, near);
  const bool has_far = *text == second && hasNum(++text, far);
  endCondition(item);
  const bool up = first == '>';
  return (up ? height >= near : height <= near) &&
         (!has_far || (up ? height <= far : height >= far));
}

/** Gathers places, and tells whether all of them lie beyond one side of a domain. */
class Beyond {
 public:
  explicit Beyond(Domain& of) : domain(of) {}
  template <typename Place>
  void add(const Place& place) {
    const int cell = std::max(domain.where(place) - 1, 0);
    rows &= 1 << cell / 3;
    columns &= 1 << cell % 3;
  }
  [[nodiscard]] bool isSo() const { return ((rows | columns) & 0b101) != 0; }

 private:
  Domain& domain;
  int rows = 0b111;  // of the cells of Domain::where, that all places lie in
  int columns = 0b111;
};

bool isBeyond(Domain& domain, const MapFileHeader& h) {
  Beyond corners(domain);
  corners.add(EarthPoint(h.minlat, h.minlon));
  corners.add(EarthPoint(h.maxlat, h.maxlon));
  if (!corners.isSo()) {
    return false;
  }
  corners.add(EarthPoint(h.minlat, h.maxlon));
  corners.add(EarthPoint(h.maxlat, h.minlon));
  return corners.isSo();
}

const char* indexColor(int index) {
  static constexpr const char* colors[] = {"lmagenta", "lblue",  "lgreen",
                                           "yellow",   "orange", "lred"};
  return colors[std::abs(index % 6)];
}

}  // namespace

MapPlot::MapPlot(const char* params) {
  MapPlot::init();
  MapPlot::setParam(params);
}

int MapPlot::init() {
  def = 1;
  type = 0;
  in_region = AHEAD;
  fill_cont = fill = map_in = index = 0;
  la = lo = Const::FMISS;
  setColorTable(Zqv::getResrc("color_table"));
  setColor(Zqv::getResrc("color_map"));
  setColorLatLon(Zqv::getResrc("color_line"));
  setMapFiles("");
  return MapPlot::setParam(Zqv::getResrc("parameter"));
}

int MapPlot::getDomain(Domain& domain) {
  DomainTool::decode(domain, "globe");
  return 0;
}

int MapPlot::setMapFiles(const char* text) {
  return filenames.copy(StrLib::valid(text, ""));
}

int MapPlot::setFillCont(int flag) {
  fill_cont = flag;
  return 1;
}

int MapPlot::setColorTable(const char* text) {
  return color_table.copy(StrLib::valid(text, ""));
}

int MapPlot::setColor(const char* text) {
  return color.copy(StrLib::valid(text, ""));
}

int MapPlot::setColorLatLon(const char* text) {
  return color_latlon.copy(StrLib::valid(text, ""));
}

const char* MapPlot::latLonColor() const {
  return color_latlon.valid() ? color_latlon.get() : latlon_color;
}

int MapPlot::setParam(const char* text) {
  const Strings items(text, ',');
  const auto take_pass = [this](int bit) {
    type = bit;
    def = def == 2 ? 2 : 0;
  };
  for (int i = 0; i < items.getNum(); i++) {
    if (items.equal(i, "ct", 2)) {
      setColorTable(items.getStringAfter(i, '='));
    } else if (items.equal(i, "co=", 3)) {
      setColor(items.getStringAfter(i, '='));
    } else if (items.equal(i, "coll", 4)) {
      setColorLatLon(items.getStringAfter(i, '='));
    } else if (items.equal(i, "mf", 2)) {
      setMapFiles(items.getStringAfter(i, '='));
    } else if (items.equal(i, "fill")) {
      fill = 1;
    } else if (items.equal(i, "fill_cont") || items.equal(i, "fc")) {
      fill_cont = 1;
    } else if (items.equal(i, "map_in")) {
      map_in = 1;
    } else if (items.equal(i, "index")) {
      index = 1;
    } else if (items.equal(i, "lalo", 4)) {
      la = default_spacing;
      if (items.scanf(i, 5, "%f:%f", &la, &lo) < 2) {
        lo = la;
      }
    } else if (items.equal(i, "default")) {
      def = 2;
    } else if (items.equal(i, "nodefault")) {
      def = type != 0 ? 0 : 1;
    } else if (items.equal(i, "over")) {
      take_pass(over_bit);
    } else if (items.equal(i, "under")) {
      take_pass(under_bit);
    }
  }
  return 1;
}

int MapPlot::print() {
  std::printf("MapPlot\n");
  return 1;
}

int MapPlot::draw(Plot& plot) {
  if (!plot.isDrawing(map_layer)) {
    return 0;
  }
  plot.setDropShadow(0);
  const char* list = filenames.valid() ? filenames.get() : Zqv::getResrc("map_file");
  const bool is_given = StrLib::valid(list);
  if (!is_given) {
    constexpr float most_height = 75.0F;
    const float lat = plot.getDomCLat();
    const float lon = plot.getDomCLon();
    const bool north_america = lat > 25.0F && lat < 80.0F && lon > -160.0F && lon < -65.0F &&
                               plot.getDomVert() < most_height;
    list = north_america ? list_name : "cont.map,country.map";
  }
  const Strings items(list, ',');
  for (int i = 0; i < items.getNum(); i++) {
    const char* item = items.getString(i);
    const int wanted = signBit(*item);
    const char* name = wanted != 0 ? item + 1 : item;
    const bool is_named = begins(name, "fi:");
    if (!is_named && !isList(name)) {
      process(plot, item, type);
    } else if (wanted == 0 || (type & wanted) != 0) {
      drawList(plot, is_named ? name + 3 : name, is_given);
    }
  }
  if (la != Const::FMISS) {
    const PlotAttr attr(latLonColor());
    setAttr(plot, attr);
    plot.setTextHeight(text_share * plot.getVert());
    drawLatLon(plot, la, lo);
  }
  // What comes behind the map doesn't look like its last item.
  plot.setLine();
  plot.setFill();
  plot.setText();
  plot.setMark();
  return 1;
}

/** Draws the items of a list file.
 *  @param is_given  somebody asked for it, and is told if it isn't there */
int MapPlot::drawList(Plot& plot, const char* name, bool is_given) {
  constexpr int most_items = 10000;
  String path;
  FileTool::addPath(Zqv::getDatabasePath(), name, path);
  File file;
  if (file.openPlain(path.get()) == 0) {
    if (is_given && warned_lists.insert(path.get()).second) {
      Zqv::outWarning("MapPlot_draw: Unable to open map list file: %s\n", path.get());
    }
    return 0;
  }
  char item[80];
  for (int i = 0; i < most_items && file.scanf("%79s\n", item) == 1; i++) {
    process(plot, item, type);
  }
  return 1;
}

/** A heading ends the section that is active; otherwise it says whether the next one is. */
void MapPlot::readHeading(Plot& plot, const char* text) {
  if (in_region == INSIDE) {
    in_region = ENDED;
    return;
  }
  float lat1 = 0;
  float lat2 = 0;
  float lon1 = 0;
  float lon2 = 0;
  float most_height = 1000.0F;
  if (std::sscanf(text, "%f,%f,%f,%f,%f", &lat1, &lat2, &lon1, &lon2, &most_height) < 4) {
    in_region = INSIDE;
    return;
  }
  const float lat = plot.getDomCLat();
  const float lon = plot.getDomCLon();
  if (lat >= std::min(lat1, lat2) && lat <= std::max(lat1, lat2) && lon >= std::min(lon1, lon2) &&
      lon <= std::max(lon1, lon2) && plot.getDomVert() <= most_height) {
    in_region = INSIDE;
  } else if (in_region == AHEAD) {
    in_region = OUTSIDE;
  }
}

int MapPlot::process(Plot& plot, const char* item, int pass) {
  if (!StrLib::valid(item)) {
    return 0;
  }
  const int wanted = signBit(*item);
  if (wanted != 0 ? (pass & wanted) == 0 : def == 0) {
    return 0;
  }
  item += wanted != 0 ? 1 : 0;
  if (*item == '[') {
    readHeading(plot, item + 1);
    return 0;
  }
  if (in_region < AHEAD) {
    return 0;
  }
  const float height = plot.getDomVert();
  if (!holdsScale(item, "s+", height) || !holdsRange(item, '>', '<', height) ||
      !holdsScale(item, "s-", height) || !holdsRange(item, '<', '>', height) ||
      !holdsScale(item, "s+", height) || !holdsScale(item, ">", height)) {
    return 0;
  }
  return processItem(plot, item);
}

/** Draws an item whose conditions hold, by its kind. */
int MapPlot::processItem(Plot& plot, const char* item) {
  if (begins(item, "if:")) {
    return drawImageItem(plot, item + 3, false);
  }
  if (begins(item, "im:")) {
    return drawImageItem(plot, item + 3, true);
  }
  if (StrLib::contains(item, ".gif") || StrLib::contains(item, ".png")) {
    return drawImageItem(plot, item, true);
  }
  if (begins(item, "rf:")) {
    return drawRawItem(plot, item + 3);
  }
  if (StrLib::contains(item, ".raw")) {
    return drawRawItem(plot, item);
  }
  if (begins(item, "mk:")) {
    return drawMark(plot, item + 3);
  }
  if (begins(item, "grid")) {
    return drawGrid(plot, item);
  }
  if (begins(item, "lalo:")) {
    return drawLatLonItem(plot, item + 5);
  }
  if (begins(item, "bg:")) {
    if (item[3] == '\0') {
      return 0;
    }
    Rect window;
    plot.getWindow(window);
    plot.setFill();
    plot.setFill(item + 3);
    return plot.drawFill(window);
  }
  return drawMapItem(plot, item);
}

namespace {

/** Makes the pixels of a named colour transparent. */
void makeTransparent(Plot& plot, Image& image, const char* name) {
  constexpr float half_step = 0.5F / 255.0F;
  RGB wanted;
  const int color = plot.getColorMap().getInd(name);
  if (!ColorMap::isColor(color) || plot.getColorMap().get(color, wanted) == 0) {
    return;
  }
  if (image.getColorType() == Image::TRUE_COLOR) {
    Image indexed;
    ImageMath::toIndex(image, indexed);
    image.copy(indexed);
  }
  for (int i = 0; i < image.getNumColors(); i++) {
    if (std::fabs(image.getRed(i) - wanted.red) < half_step &&
        std::fabs(image.getGrn(i) - wanted.grn) < half_step &&
        std::fabs(image.getBlu(i) - wanted.blu) < half_step) {
      image.setTransColor(i);
      return;  // entries that only fill a table up may have the same colour
    }
  }
}

}  // namespace

/** An image on the map or, for "if:", on the page. Its lower left corner comes to the position.
 *  @param item    name, and colour and position behind it */
int MapPlot::drawImageItem(Plot& plot, const char* item, bool on_map) {
  constexpr int level = 8;
  const std::string_view text(item);
  const size_t end = std::min(text.find(':'), text.size());
  const std::string name(text.substr(0, end));
  const char* rest = item + end;
  String path;
  FileTool::addPath(Zqv::getResrc("image_path"), name.c_str(), path);
  Image image;
  ImageFile file;
  if (file.readPlain(path.get(), image) <= 0) {
    if (on_map) {
      Zqv::outWarning("Map image not found: %s\n", path.get());
    }
    return 0;
  }
  plot.message("Map-image: %s", path.get());
  Zqv::outMessage(level, "Map-image: %s\n", path.get());
  const int tran = plot.getTran();
  if (!on_map) {
    plot.activateTran(0);
  }
  Rect window;
  plot.getWindow(window);
  char clear[40] = "";
  float x = window.xmin;
  float y = window.ymin;
  if (std::sscanf(rest, ":%39[^:]:%12f:%12f", clear, &x, &y) < 1) {
    std::sscanf(rest, "::%12f:%12f", &x, &y);
  }
  if (*clear != '\0') {
    makeTransparent(plot, image, clear);
  }
  int drawn = 0;
  if (on_map && image.getDomain().isSet()) {
    drawn = plot.drawImage(image);
  } else {
    plot.setImageAlign(Graph::HALIGN_LEFT, 1);
    drawn = plot.drawImage(image, x, y);
    plot.setImageAlign(Graph::HALIGN_LEFT, 3);
  }
  if (!on_map) {
    plot.activateTran(tran);
  }
  return drawn;
}

/** The one place for raw point files, which need the reader of gridded data. */
int MapPlot::drawRawItem(Plot& plot, const char* text) {
  plot.message("Map-rawfile: %s", text);
  if (!warned_raw) {
    Zqv::outWarning("MapPlot: raw point files are not available in this build: %s\n", text);
    warned_raw = true;
  }
  return 0;
}

int MapPlot::drawMark(Plot& plot, const char* text) const {
  constexpr int plus = 2;
  EarthPoint place;
  char attr[48] = "";
  if (std::sscanf(text, "%f:%f:%40s", &place.lat, &place.lon, attr) < 2) {
    return 0;
  }
  const float size = mark_share * plot.getVert();
  plot.setMark();
  plot.setMarkType(plus);
  plot.setMarkSize(size);
  plot.setMark(PlotAttr(attr), size);
  return plot.drawMark(place);
}

/** Draws "grid" or "grid:DOMAIN:ATTRIBUTES": the columns and rows of a domain's points. */
int MapPlot::drawGrid(Plot& plot, const char* item) const {
  constexpr int name_length = 5;
  constexpr long most_lines = 1998;  // and one more each way at the edges
  Domain grid = plot.getDomain();
  const std::string text = behind(item, name_length);
  plot.setLine();
  if (!text.empty()) {
    const size_t colon = text.find(':');
    Domain own;
    if (DomainTool::decode(own, text.substr(0, colon).c_str()) == 0) {
      return 0;
    }
    grid = own;
    if (colon != std::string::npos && colon + 1 < text.size()) {
      plot.setLine(text.c_str() + colon + 1);
    }
  }
  plot.message("Map-grid: %s", text.c_str());
  const int nx = grid.getNx();
  const int ny = grid.getNy();
  if (!grid.isSet() || nx < 1 || ny < 1) {
    return 0;
  }
  // Of a denser grid only so many lines are drawn, evenly, each through as few points.
  const long every = (static_cast<long>(nx) + ny + most_lines - 1) / most_lines;
  EarthPoints line(static_cast<int>(most_lines));
  const auto draw_lines = [&](int n, int length, auto point_at) {
    const long step = (length + most_lines - 1) / most_lines;
    for (long i = 0; i < n; i += every) {
      line.clear();
      for (long k = 0; k < length + step - 1; k += step) {
        EarthPoint e;
        const auto along = static_cast<float>(std::min(k, length - 1L));
        grid.tran(point_at(static_cast<float>(i), along), e);
        line.add(e);
      }
      plot.drawLine(line);
    }
  };
  draw_lines(nx, ny, [](float i, float k) { return GridPoint(i, k); });
  draw_lines(ny, nx, [](float i, float k) { return GridPoint(k, i); });
  return 1;
}

int MapPlot::drawLatLonItem(Plot& plot, const char* text) {
  float lat = default_spacing;
  float lon = 0;
  if (!hasNum(text, lat)) {
    lat = default_spacing;
  }
  lon = lat;
  if (*text == ':') {
    text++;
    float second = 0;
    if (hasNum(text, second)) {
      lon = second;
      text += *text == ':' ? 1 : 0;
    }
  }
  plot.message("Map-lalo: %.1f,%.1f", static_cast<double>(lat), static_cast<double>(lon));
  setAttr(plot, PlotAttr(text, latLonColor()));
  plot.setTextHeight(text_share * plot.getVert());
  return drawLatLon(plot, lat, lon);
}

/** Resets the line, fill and text attributes of the plot, then takes those given. */
void MapPlot::setAttr(Plot& plot, const PlotAttr& attr) const {
  plot.setLine();
  plot.setLine(attr);
  plot.setFill();
  plot.setFill(attr);
  plot.setText();
  plot.setText(attr);
}

/** Draws "NAME", "NAME:ATTRIBUTES" or "NAME[ATTRIBUTES]". */
int MapPlot::drawMapItem(Plot& plot, const char* item) {
  constexpr size_t max_name = 119;
  constexpr size_t max_attr = 99;
  const std::string text = item;
  const size_t bracket = text.find('[');
  const size_t split = bracket != std::string::npos ? bracket : text.find(':');
  const std::string name = text.substr(0, split).substr(0, max_name);
  if (name.empty()) {
    return 0;
  }
  std::string given;
  if (split != std::string::npos) {
    given = text.substr(split + 1);
    if (bracket != std::string::npos) {
      given.resize(std::min(given.find(']'), given.size()));
    }
    given.resize(std::min(given.size(), max_attr));
  }
  const int fill_before = fill;
  if (given.empty()) {
    given = color.valid() ? color.get()
                          : (fill_cont != 0 ? Zqv::getResrc("color_cmap", "black")
                                            : Zqv::getResrc("color_map", "red"));
  } else if (StrLib::contains(given.c_str(), "fill")) {
    fill = 1;
  }
  const PlotAttr attr(given.c_str());
  setAttr(plot, attr);
  if (attr.validFillPat()) {
    fill = 1;
  }
  int drawn = 0;
  if (attr.validColor()) {
    plot.message("Map: %s", name.c_str());
    String path;
    FileTool::addPath(Zqv::getResrc("file_path", Zqv::getDatabasePath()), name.c_str(), path);
    drawn = draw(plot, path.get());
  }
  fill = fill_before;
  return drawn;
}

int MapPlot::drawSegment(Plot& plot, Points& points) const {
  const int drawn = fill != 0 ? plot.drawFill(points) : plot.drawLine(points);
  points.clear();
  return drawn;
}

int MapPlot::draw(Plot& plot, const char* file) {
  if (!plot.isDrawing(map_layer) || !plot.getDomain().isMap()) {
    return 0;
  }
  MapFile map;
  if (map.open(file) == 0) {
    return 0;
  }
  if (index != 0) {
    std::printf("Mapfile: %s\n", file);
  }
  return drawSegments(plot, map, file);
}

int MapPlot::drawSegments(Plot& plot, MapFile& map, const char* name) {
  constexpr int debug_level = 6;
  Places places;
  MapFileHeader header;
  int num_drawn = 0;
  int num_seen = 0;
  while (map.readHeader(header) != 0) {
    num_seen++;
    if (map_in == 0 && header.hasBox() && isBeyond(plot.getDomain(), header)) {
      map.passData();
      continue;
    }
    num_drawn += drawSegment(plot, map, header, places);
  }
  Zqv::outDebug(debug_level, "MAP: %s %d %d\n", name, num_drawn, num_seen);
  return 1;
}

/** Reads the next points of a segment, as many as are held at once. @return how many */
int MapPlot::readPlaces(Plot& plot, MapFile& map, Places& places) {
  Domain& domain = plot.getDomain();
  EarthPoint e;
  Point p;
  places.held.clear();
  while (places.held.getNum() < most_places && map.readData(e) != 0) {
    domain.tran(e, p);
    if (places.held.getNum() == 0) {
      places.first = e;
    }
    places.held.add(p.x, p.y);
  }
  return places.held.getNum();
}

/** Draws one segment, if the file has all of it; of longer ones than are held at once, what is
 * there. @return 1 if it did */
int MapPlot::drawSegment(Plot& plot, MapFile& map, const MapFileHeader& header, Places& places) {
  int n = readPlaces(plot, map, places);
  if (n < std::min(header.num, most_places - 1)) {
    return 0;
  }
  Points& piece = places.piece;
  const EarthPoint first = places.first;
  const Point first_place = n > 0 ? Point(places.held.getX(0), places.held.getY(0)) : Point();
  const char* number_color = indexColor(header.index);
  if (index != 0) {
    plot.setLineColor(number_color);
    plot.setFillColor(number_color);
    plot.setTextColor(number_color);
    plot.setTextHeight(text_share * plot.getDomVert());
  }
  while (n > 0) {
    for (int i = 0; i < n; i++) {
      const float x = places.held.getX(i);
      if (x == Const::FMISS) {
        if (piece.getNum() > 1) {
          drawSegment(plot, piece);
        }
        continue;
      }
      if (piece.getNum() == most_places) {
        const Point joint(piece.getX(most_places - 1), piece.getY(most_places - 1));
        drawSegment(plot, piece);
        piece.add(joint);
      }
      piece.add(x, places.held.getY(i));
    }
    if (n < most_places) {
      break;
    }
    if (fill != 0) {
      map.passData();
      break;
    }
    n = readPlaces(plot, map, places);
  }
  if (piece.getNum() > 1) {
    drawSegment(plot, piece);
  } else if (piece.getNum() == 1) {
    plot.setTextHeight(text_share * plot.getDomVert());
    plot.setTextAlign(Graph::HALIGN_CENTER, Graph::VALIGN_HALF);
    plot.drawText(piece.getX(0), piece.getY(0), header.getLabel());
    piece.clear();
  }
  if (index != 0 && first_place.x != Const::FMISS && plot.getDomain().within(first_place)) {
    std::printf("%d %s %d %.4f %.4f\n", header.index, number_color, header.num,
                static_cast<double>(first.lat), static_cast<double>(first.lon));
    plot.drawFormText(first_place, "%d", header.index);
  }
  return 1;
}

namespace {

/** Draws one line of a lat/lon grid, point by point, and its label where it crosses the margin.
 *  @tparam upright  the line runs up the map, and its label stands at a height */
template <bool upright>
class GridLine {
 public:
  GridLine(Plot& on, float at_margin, const char* text)
      : plot(on), domain(on.getDomain()), margin(at_margin), label(text) {
    plot.getWindow(window);
  }

  void add(float lat, float lon) {
    EarthPoint e(lat, lon);
    Point p;
    domain.tran(e, p);
    if (p.x != Const::FMISS && before.x != Const::FMISS) {
      drawPiece(p);
    }
    before = p;
  }

 private:
  void drawPiece(const Point& p) {
    if (!isOutside(p)) {
      plot.drawLine(before, p);
    }
    const float from = upright ? before.y : before.x;
    const float to = upright ? p.y : p.x;
    const float t = to != from ? (margin - from) / (to - from) : -1.0F;
    if (!(t >= 0.0F && t < 1.0F)) {
      return;
    }
    Point place;
    place.interp(before, p, t);
    if (upright && place.x > window.xmin && place.x < window.xmax) {
      plot.drawText(place.x, margin, label);
    } else if (!upright && place.y > window.ymin && place.y < window.ymax) {
      plot.drawText(margin, place.y, label);
    }
  }
  /** Both ends lie beyond one side of the domain, and the piece has no other part on a map that
   * closes on itself. */
  bool isOutside(const Point& p) const {
    Beyond ends(domain);
    ends.add(before);
    ends.add(p);
    Point end = p;
    return ends.isSo() && domain.wrapLine(before, end) == 0;
  }

  Plot& plot;
  Domain& domain;
  Rect window;
  float margin;
  const char* label;
  Point before;
};

void nameLine(char* label, int size, float degrees, const char* zero, char negative,
              char positive) {
  constexpr float nothing = 1e-3F;
  if (std::fabs(degrees) < nothing) {
    StrLib::copy(label, size, zero);
  } else {
    StrLib::printf(label, size, "%.0f%c", static_cast<double>(std::fabs(degrees)),
                   degrees < 0 ? negative : positive);
  }
}

}  // namespace

int MapPlot::drawLatLon(Plot& plot, float lat_step, float lon_step) {
  const Domain& domain = plot.getDomain();
  if (!plot.isDrawing(map_layer) || lat_step == Const::FMISS || !domain.isMap() ||
      !(lat_step >= least_spacing) || !(lon_step >= least_spacing)) {
    return 0;
  }
  constexpr float margin_share = 0.01F;
  constexpr float pole = 90.0F;
  constexpr float date_line = 180.0F;
  Rect window;
  plot.getWindow(window);
  const float m = margin_share * window.getWidth();
  const bool in_middle = domain.isProj(DomainVal::SAT) || domain.isProj(DomainVal::MOLL);
  const auto dlat = static_cast<double>(lat_step);
  const auto dlon = static_cast<double>(lon_step);
  char label[20];

  plot.setTextAlign(Graph::HALIGN_LEFT, Graph::VALIGN_HALF);
  for (int i = 1; dlat * i - 90.0 <= 90.0; i++) {
    const auto lat = static_cast<float>(dlat * i - 90.0);
    nameLine(label, sizeof(label), lat, "EQ", 'S', 'N');
    GridLine<false> line(plot, in_middle ? 0.0F : window.xmin + m, label);
    for (int k = -180; k <= 180; k++) {
      line.add(lat, static_cast<float>(k));
    }
  }

  constexpr float step = 2.5F;
  const bool both_ends = domain.isProj(DomainVal::LATLON) || domain.isProj(DomainVal::MERC);
  const float top = pole - lat_step;
  plot.setTextAlign(Graph::HALIGN_CENTER, Graph::VALIGN_BOTTOM);
  for (int i = 0; dlon * i - 180.0 <= 180.0; i++) {
    const auto lon = static_cast<float>(dlon * i - 180.0);
    if (lon == date_line && !both_ends) {
      continue;
    }
    if (std::fabs(lon) == date_line) {
      StrLib::copy(label, sizeof(label), "DL");
    } else {
      nameLine(label, sizeof(label), lon, "PM", 'W', 'E');
    }
    GridLine<true> line(plot, in_middle ? 0.0F : window.ymin + m, label);
    for (int k = 0; lat_step - pole + step * static_cast<float>(k) <= top; k++) {
      line.add(lat_step - pole + step * static_cast<float>(k), lon);
    }
  }
  return 1;
}

}  // namespace ZQV
