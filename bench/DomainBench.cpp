// One point through each projection and back; one radial of 230 bins classified and carried from a
// product's plane to a map; one polygon through GTran.

#include "Domain.h"

#include <array>
#include <cmath>
#include <vector>

#include <benchmark/benchmark.h>

#include "ColorFill.h"
#include "ColorMap.h"
#include "EarthPoint.h"
#include "GTran.h"
#include "Point.h"
#include "Points.h"

using namespace ZQV;

namespace {

constexpr std::array<const char*, 9> domains = {"pstereo:90:-97,35,-97,61,41,1,1",
                                                "latlon,35,-97,61,41,1,1",
                                                "merc,35,-97,61,41,1,1",
                                                "merc:e:35:-97,35,-97,61,41,1,1",
                                                "lamb:40:-97:33:45,35,-97,61,41,1,1",
                                                "ortho:35:-97,35,-97,61,41,1,1",
                                                "moll,35,-97,61,41,1,1",
                                                "lambaz:35:-97,35,-97,61,41,1,1",
                                                "sat:0:-75,35,-97,61,41,1,1"};

constexpr int num_points = 256;

void forward(benchmark::State& state) {
  const char* text = domains[static_cast<size_t>(state.range(0))];
  Domain domain;
  domain.set(text);
  std::vector<EarthPoint> places;
  places.reserve(num_points);
  for (int i = 0; i < num_points; i++) {
    places.emplace_back(30.0F + 0.05F * static_cast<float>(i % 100),
                        -100.0F + 0.03F * static_cast<float>(i));
  }
  Point p;
  for (auto _ : state) {
    for (EarthPoint& e : places) {
      domain.tran(e, p);
      benchmark::DoNotOptimize(p);
    }
  }
  state.SetItemsProcessed(state.iterations() * num_points);
  state.SetLabel(text);
}
BENCHMARK(forward)->DenseRange(0, static_cast<int>(domains.size()) - 1);

void inverse(benchmark::State& state) {
  const char* text = domains[static_cast<size_t>(state.range(0))];
  Domain domain;
  domain.set(text);
  Point centre;
  domain.tranCenter(centre);
  std::vector<Point> places;
  places.reserve(num_points);
  for (int i = 0; i < num_points; i++) {
    places.emplace_back(centre.x + 0.01F * (static_cast<float>(i) - 0.5F * num_points),
                        centre.y + 0.02F * static_cast<float>(i % 50));
  }
  EarthPoint e;
  for (auto _ : state) {
    for (const Point& p : places) {
      domain.tran(p, e);
      benchmark::DoNotOptimize(e);
    }
  }
  state.SetItemsProcessed(state.iterations() * num_points);
  state.SetLabel(text);
}
BENCHMARK(inverse)->DenseRange(0, static_cast<int>(domains.size()) - 1);

void radial(benchmark::State& state) {
  constexpr int bins = 230;
  constexpr float cell = 0.0118F;
  Domain product;
  product.set("pstereo:35:-97,35,-97,461,461,.0118,.0118");
  Domain map;
  map.set("lamb:40:-97:33:45,35,-97,61,41,1,1");
  ColorMap colors;
  ColorFill fill;
  fill.set(colors,
           "-100:#000000,5:#0f3cf0,10:#3c96ff,15:#00bed2,20:#78fafa,25:#008c00,30:#00e600,"
           "35:#b4781e,40:#fff000,45:#d20000,50:#ff5a46");
  Point centre;
  product.tranCenter(centre);
  for (auto _ : state) {
    for (int bin = 0; bin < bins; bin++) {
      const PlotAttr& attr = fill.get(static_cast<float>(bin % 60) - 5.0F);
      benchmark::DoNotOptimize(&attr);
      for (const float side : {0.70F, 0.71F}) {
        EarthPoint e;
        Point p;
        const float at = cell * static_cast<float>(bin + 1);
        product.tran(Point(centre.x + at * side, centre.y + at * (1 - side)), e);
        map.tran(e, p);
        benchmark::DoNotOptimize(p);
      }
    }
  }
  state.SetItemsProcessed(state.iterations() * bins);
}
BENCHMARK(radial);

void transformation(benchmark::State& state) {
  GTran tran;
  tran.set(Rect(0, 0, 756, 576));
  tran.setWindow(Rect(-3, -2, 3, 2));
  Points bin(5);
  for (int i = 0; i < 5; i++) {
    bin.add(0.1F * static_cast<float>(i), 0.2F * static_cast<float>(i % 3));
  }
  Points plot(5);
  for (auto _ : state) {
    if (tran.isPointsInWindow(bin)) {
      plot.transform(
          bin, [&](float x) { return tran.tranWindowPlotX(x); },
          [&](float y) { return tran.tranWindowPlotY(y); });
    }
    benchmark::DoNotOptimize(plot.xs());
  }
  state.SetItemsProcessed(state.iterations() * 5);
}
BENCHMARK(transformation);

}  // namespace
