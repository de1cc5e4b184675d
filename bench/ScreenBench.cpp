// Small filled polygons on the devices that paint pixels, and the bare rate of Xlib beside the
// window. Those of the window need a display.

#include <cmath>
#include <cstdlib>
#include <memory>
#include <vector>

#include <benchmark/benchmark.h>

#include "Points.h"
#include "Raster.h"
#include "XLib.h"
#include "XWindow.h"
#include "Zqv.h"

namespace {

constexpr int WIDTH = 640;
constexpr int HEIGHT = 512;
constexpr int POLYGONS = 20000;

/** Quadrilaterals of about 10 pixels, slightly turned, all over the picture. */
const std::vector<ZQV::Points>& polygons() {
  static const std::vector<ZQV::Points> list = [] {
    std::vector<ZQV::Points> made;
    made.reserve(POLYGONS);
    for (int i = 0; i < POLYGONS; i++) {
      const float x = 1.0F + static_cast<float>(i * 7 % (WIDTH - 6));
      const float y = 1.0F + static_cast<float>(i * 11 % (HEIGHT - 6));
      const float turn = static_cast<float>(i % 3) * 0.6F - 0.6F;
      ZQV::Points p;
      p.add(x, y + turn);
      p.add(x + 3.2F, y);
      p.add(x + 3.2F + turn, y + 3.2F);
      p.add(x + turn, y + 3.2F);
      p.add(x, y + turn);
      made.push_back(p);
    }
    return made;
  }();
  return list;
}

void count(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * POLYGONS);
}

void fill(benchmark::State& state, ZQV::Device& device) {
  const std::vector<ZQV::Points>& list = polygons();
  for (auto _ : state) {
    int color = 0;
    for (const ZQV::Points& p : list) {
      if (color++ % 16 == 0) device.setColor(ZQV::Device::FILL, color);
      device.drawFill(ZQV::Device::FILL, p);
    }
    device.update();
  }
  count(state);
}

void raster(benchmark::State& state) {
  ZQV::Raster device;
  device.setSize(WIDTH, HEIGHT);
  if (device.open() == 0) return state.SkipWithError("no picture");
  fill(state, device);
}
BENCHMARK(raster)->Unit(benchmark::kMillisecond)->UseRealTime();

void window(benchmark::State& state) {
  ZQV::XWindow device;
  device.setSize(WIDTH, HEIGHT);
  if (std::getenv("DISPLAY") == nullptr || device.open() == 0) {
    return state.SkipWithError("no display");
  }
  fill(state, device);
}
BENCHMARK(window)->Unit(benchmark::kMillisecond)->UseRealTime();

/** Showing the next frame of a loop; growth is that of the program's memory over 1000 turns. */
void loopTurn(benchmark::State& state) {
  constexpr int frames = 24;
  ZQV::XWindow device;
  device.setSize(WIDTH, HEIGHT);
  if (std::getenv("DISPLAY") == nullptr || device.open() == 0) {
    return state.SkipWithError("no display");
  }
  for (int i = 0; i < frames; i++) device.newFrame();
  const auto turn = [&](int n) {
    for (int i = 0; i < n; i++) {
      device.incFrame(0);
      ZQV::XWindow::checkEvent();
    }
  };
  turn(frames * 10);
  const int before = ZQV::Zqv::getVirtMem();
  turn(frames * 1000);
  const int after = ZQV::Zqv::getVirtMem();
  for (auto _ : state) turn(1);
  state.counters["growth"] = static_cast<double>(after - before);
}
BENCHMARK(loopTurn)->Unit(benchmark::kMillisecond)->UseRealTime();

void bareXlib(benchmark::State& state) {
  const ZQV::XLib* xlib = ZQV::XLib::get();
  Display* d =
      std::getenv("DISPLAY") != nullptr && xlib != nullptr ? xlib->XOpenDisplay(nullptr) : nullptr;
  if (d == nullptr) return state.SkipWithError("no display");
  const Pixmap pixmap = xlib->XCreatePixmap(d, DefaultRootWindow(d), WIDTH, HEIGHT,
                                            static_cast<unsigned>(DefaultDepth(d, 0)));
  GC gc = xlib->XCreateGC(d, pixmap, 0, nullptr);
  std::vector<std::vector<XPoint>> list;
  for (const ZQV::Points& p : polygons()) {
    std::vector<XPoint>& points = list.emplace_back();
    for (int i = 0; i < p.getNum(); i++) {
      points.push_back(
          {static_cast<short>(std::lround(p.getX(i))), static_cast<short>(std::lround(p.getY(i)))});
    }
  }
  for (auto _ : state) {
    int color = 0;
    for (std::vector<XPoint>& p : list) {
      if (color++ % 16 == 0) xlib->XSetForeground(d, gc, static_cast<unsigned long>(color));
      xlib->XFillPolygon(d, pixmap, gc, p.data(), static_cast<int>(p.size()), Nonconvex,
                         CoordModeOrigin);
    }
    xlib->XSync(d, False);
  }
  count(state);
  xlib->XFreeGC(d, gc);
  xlib->XFreePixmap(d, pixmap);
  xlib->XCloseDisplay(d);
}
BENCHMARK(bareXlib)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
