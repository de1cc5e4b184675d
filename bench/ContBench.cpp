// Contouring of a field of 500 by 500 points with 20 levels to a metafile, and the part of it that
// neither writes nor fills: cells outside the range of the levels.

#include <cmath>
#include <cstdlib>

#include <benchmark/benchmark.h>

#include "ContPlot.h"
#include "Grid.h"
#include "Plot.h"
#include "Zqv.h"

namespace {

constexpr int POINTS = 500;
constexpr const char* own = "ll:0:0,0,0,500,500,.1,.1";
constexpr const char* stereo = "ps:90:0,0,0,500,500,.1,.1";
/** 20 levels of the field's range, and 20 above it. */
constexpr const char* inside =
    "-20:1,-18:2,-16:3,-14:4,-12:5,-10:6,-8:7,-6:8,-4:9,-2:10,0:11,2:12,4:1,6:2,8:3,10:4,12:5,14:6,"
    "16:7,18:8";
constexpr const char* outside =
    "30:1,31:2,32:3,33:4,34:5,35:6,36:7,37:8,38:9,39:10,40:11,41:12,42:1,43:2,44:3,45:4,46:5,47:6,"
    "48:7,49:8";

/** Hills and hollows between -20 and 20, about 25 points from one to the next. */
ZQV::Grid hills() {
  ZQV::Domain domain;
  domain.set(own);
  ZQV::Grid grid(POINTS, POINTS);
  grid.setDomain(domain);
  for (int j = 0; j < POINTS; j++) {
    for (int i = 0; i < POINTS; i++) {
      grid.setValue(i, j,
                    20 * std::sin(static_cast<float>(i) / 8) * std::cos(static_cast<float>(j) / 9));
    }
  }
  return grid;
}

void contour(benchmark::State& state, const char* params, const char* fill, const char* view) {
  ZQV::Zqv::setDatabasePath(ZQV_DATA_DIR);
  ZQV::Zqv::setMessageLevel("none");
  ZQV::Zqv::putResrc("device", "meta,/dev/null,sz=1x1");
  ZQV::Grid grid = hills();
  ZQV::Domain domain;
  domain.set(view);
  ZQV::Plot plot;
  plot.open();
  plot.setDomain(domain);
  ZQV::ContPlot cont;
  cont.setParam(params);
  cont.setColorFill(fill);
  for (auto _ : state) cont.draw(plot, grid);
  plot.close();
  state.SetItemsProcessed(state.iterations() * (POINTS - 1) * (POINTS - 1));
}
BENCHMARK_CAPTURE(contour, fill, "cf,lab=0:0", inside, own)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(contour, lines, "ln,lab=0:0", inside, own)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(contour, lines_fill_labels, "lcf,lab=2:2", inside, own)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(contour, fill_outside, "cf,lab=0:0", outside, own)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(contour, fill_outside_projected, "cf,lab=0:0", outside, stereo)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(contour, lines_outside, "ln,lab=0:0", outside, own)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(contour, highs_within_2, "ln,lab=0:2", outside, own)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(contour, highs_within_50, "ln,lab=0:50", outside, own)
    ->Unit(benchmark::kMillisecond);

}  // namespace
