#include "RadarPlot.h"

#include <array>

#include "ColorFile.h"
#include "ColorMap.h"
#include "Convert.h"
#include "Plot.h"
#include "StrLib.h"
#include "Strings.h"
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

void RadarPlot::readColorTable(Plot& plot) const {
  if (color_table.valid()) {
    ColorMap table;
    ColorFile::read(color_table.get(), table);
    plot.setColorMap(table);
  }
}

}  // namespace ZQV
