#include "GridCont.h"

#include <cstdio>

#include "DomainTool.h"
#include "EarthPoint.h"
#include "GridFile.h"
#include "GridSpec.h"
#include "MapPlot.h"
#include "Plot.h"
#include "StrLib.h"
#include "Strings.h"
#include "Zqv.h"

namespace ZQV {

int GridCont::init() {
  model.clear();
  label = 1;
  map = 0;
  map_fill = BY_TYPE;
  model_spec.set("");
  grid.init();
  grid_spec.copy("");
  sync = 0;
  cont.init();
  setFile();
  return GridCont::setParam(Zqv::getResrc("parameter"));
}

int GridCont::setFile() {
  if (const char* conv = Zqv::getResrc("in_file"); conv != nullptr) setNameConv(conv);
  if (const char* hour = Zqv::getResrc("hour"); hour != nullptr) filename.setFixDate(hour);
  if (const char* num = Zqv::getResrc("num_hour"); num != nullptr) filename.setNumFiles(num);
  return 1;
}

int GridCont::getDomain(Domain& domain) {
  if (!filename.isSet()) filename.setFile("la");
  GridFile file;
  Grid header;
  if (file.open(filename.getName()) != 0 && file.readHdr(header) != 0) {
    domain = header.getDomain();
    return 1;
  }
  return DomainTool::set(domain, "us");
}

int GridCont::getInitDate(Date& date) {
  if (!filename.isSet()) filename.setFile("la");
  return filename.getDate(date);
}

int GridCont::setParam(const char* text) {
  const Strings items(text, ',');
  for (int i = 0; i < items.getNum(); i++) {
    const char* behind = StrLib::valid(items.getStringAfter(i, '='), "");
    if (items.equal(i, "gs", 2)) {
      grid_spec.copy(behind);
    } else if (items.equal(i, "map_fill")) {
      map_fill = FOR_FILL;
    } else if (items.equal(i, "map_line")) {
      map_fill = FOR_LINES;
    } else if (items.equal(i, "mo", 2)) {
      setModel(behind);
    } else if (items.equal(i, "nolabel")) {
      label = 0;
    }
  }
  return cont.setParam(text);
}

int GridCont::setModel(const char* name) {
  constexpr size_t max_model = 19;
  model = StrLib::acopy(name).substr(0, max_model);
  return model_spec.set(model.c_str());
}

int GridCont::setMap(int flag) {
  map = flag;
  return 1;
}

int GridCont::draw(Plot& plot) {
  if (!filename.isSet()) filename.setFile("la");
  GridSpec spec;
  spec.set(grid_spec.get());
  Grid field;
  return gread.read(filename.getName(), spec, field) != 0 ? draw(plot, field) : 0;
}

int GridCont::draw(Plot& plot, const Grid& field) {
  grid = field;
  plot.addCallback("AnyEvent", this, &grid);
  MapPlot under("nodefault");
  MapPlot over("over");
  if (map != 0) {
    if (map_fill == FOR_FILL || (map_fill == BY_TYPE && cont.isTypeFill())) {
      under.setFillCont(1);
      under.setParam("default,under");
      over.setFillCont(1);
      over.setParam("default");
    }
    under.draw(plot);
  }
  const int drawn = cont.draw(plot, grid);
  if (label != 0) cont.drawLabels(plot, grid);
  over.draw(plot);
  if (label != 0) plot.done();
  return drawn;
}

void GridCont::callback(const char* name, const char* data, const void* /*source*/) {
  EarthPoint e;
  if (!StrLib::equal(name, "QueryLoc") || data == nullptr || !grid.isData() ||
      std::sscanf(data, "%f,%f", &e.lat, &e.lon) != 2) {
    return;
  }
  std::printf("GridCont value [%.2f,%.2f]: %f", static_cast<double>(e.lat),
              static_cast<double>(e.lon), static_cast<double>(grid.getValue(e)));
  std::fflush(stdout);
}

int GridCont::print() {
  std::printf("GridCont\n");
  return 1;
}

}  // namespace ZQV
