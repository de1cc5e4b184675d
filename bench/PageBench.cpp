// Small filled polygons, as a radar picture has by the ten thousand, through the page to a file;
// beside them the bare loop that prints the same numbers.

#include <charconv>
#include <cstdio>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "Graph.h"
#include "Points.h"

namespace {

constexpr int POLYGONS = 20000;
constexpr int CORNERS = 5;

/** Quadrilaterals all over a page of 1.3125 by 1. */
std::vector<ZQV::Points> polygons() {
  std::vector<ZQV::Points> list;
  for (int i = 0; i < POLYGONS; i++) {
    const float x = 1.3F * static_cast<float>(i % 200) / 200.0F;
    const float y = static_cast<float>(i) / static_cast<float>(POLYGONS);
    ZQV::Points p;
    p.add(x, y);
    p.add(x + 0.0061F, y + 0.0003F);
    p.add(x + 0.0063F, y + 0.0047F);
    p.add(x - 0.0002F, y + 0.0051F);
    p.add(x, y);
    list.push_back(p);
  }
  return list;
}

void bareLoop(benchmark::State& state) {
  const int digits = static_cast<int>(state.range(0));
  const std::vector<ZQV::Points> list = polygons();
  std::vector<char> buffer(64);
  for (auto _ : state) {
    std::FILE* file = std::fopen("/dev/null", "w");
    for (const ZQV::Points& p : list) {
      for (int i = 0; i < CORNERS; i++) {
        for (const float v : {p.getX(i) * 576.0F, p.getY(i) * 576.0F}) {
          const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), v,
                                         std::chars_format::fixed, digits);
          std::fwrite(buffer.data(), 1, static_cast<size_t>(end.ptr - buffer.data()), file);
        }
      }
    }
    std::fclose(file);
  }
}
BENCHMARK(bareLoop)->Arg(2)->Arg(6)->Unit(benchmark::kMillisecond);

void fill(benchmark::State& state, const char* device) {
  const std::vector<ZQV::Points> list = polygons();
  for (auto _ : state) {
    ZQV::Graph graph;
    graph.open(device, "/dev/null,sz=10.5:8,color");
    for (const ZQV::Points& p : list) graph.drawFill(p);
    graph.close();
  }
}
BENCHMARK_CAPTURE(fill, postscript, "postscript")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fill, meta, "meta")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fill, hpgl, "hpgl")->Unit(benchmark::kMillisecond);

}  // namespace
