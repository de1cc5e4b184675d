// A radar picture to and from the formats of pictures, beside them plain libpng as it comes; and a
// mosaic onto other domains, by the pixel.

#include "Image.h"

#include <cstdio>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <png.h>
#include <unistd.h>

#include "Domain.h"
#include "ImageFile.h"
#include "ImageMath.h"

namespace {

using ZQV::Image;
using ZQV::ImageFile;

constexpr int WIDTH = 640;
constexpr int HEIGHT = 512;
constexpr int COLORS = 16;

/** Blocks of one to four pixels in 16 levels within a circle, nothing around. */
Image picture(int color_type) {
  Image image;
  image.set(WIDTH, HEIGHT, color_type == Image::INDEXED ? 8 : 24);
  image.setColorType(color_type);
  image.setMask(0xff0000, 0xff00, 0xff);
  image.allocColors(COLORS);
  image.allocData();
  unsigned random = 1;
  for (int y = 0; y < HEIGHT; y++) {
    int level = 0;
    for (int x = 0; x < WIDTH; x++) {
      random = random * 1664525U + 1013904223U;
      const int dx = x - WIDTH / 2;
      const int dy = y - HEIGHT / 2;
      const bool inside = dx * dx + dy * dy < 230 * 230;
      if (random >> 30 == 0) level = static_cast<int>(random >> 26 & 7U) + (dx / 32 & 7);
      const int shown = inside ? level : 0;
      image.setPixel(x, y, color_type == Image::INDEXED ? shown : 0x0f1103 * shown);
    }
  }
  return image;
}

std::string place(const char* end) {
  return "/tmp/zqv.bench." + std::to_string(::getpid()) + end;
}

void writePicture(benchmark::State& state, const char* end, int color_type) {
  const Image image = picture(color_type);
  const std::string name = place(end);
  for (auto _ : state) ImageFile().write(name.c_str(), image);
  std::remove(name.c_str());
}
BENCHMARK_CAPTURE(writePicture, png_indexed, ".png", Image::INDEXED)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(writePicture, png_colour, ".png", Image::TRUE_COLOR)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(writePicture, gif_indexed, ".gif", Image::INDEXED)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(writePicture, gif_colour, ".gif", Image::TRUE_COLOR)
    ->Unit(benchmark::kMicrosecond);

void readPicture(benchmark::State& state, const char* end, int color_type) {
  const std::string name = place(end);
  ImageFile().write(name.c_str(), picture(color_type));
  for (auto _ : state) {
    Image image;
    benchmark::DoNotOptimize(ImageFile().read(name.c_str(), image));
  }
  std::remove(name.c_str());
}
BENCHMARK_CAPTURE(readPicture, png_indexed, ".png", Image::INDEXED)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(readPicture, png_colour, ".png", Image::TRUE_COLOR)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(readPicture, gif, ".gif", Image::INDEXED)->Unit(benchmark::kMicrosecond);

void plainLibpng(benchmark::State& state, int color_type) {
  Image image = picture(color_type);
  const std::string name = place(".png");
  const bool indexed = color_type == Image::INDEXED;
  const std::vector<png_color> table(COLORS);
  for (auto _ : state) {
    std::FILE* file = std::fopen(name.c_str(), "wb");
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file);
    png_set_IHDR(png, info, WIDTH, HEIGHT, 8, indexed ? PNG_COLOR_TYPE_PALETTE : PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (indexed) png_set_PLTE(png, info, table.data(), COLORS);
    png_write_info(png, info);
    for (int y = 0; y < HEIGHT; y++) png_write_row(png, image.findRow(y));
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    std::fclose(file);
  }
  std::remove(name.c_str());
}
BENCHMARK_CAPTURE(plainLibpng, indexed, Image::INDEXED)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(plainLibpng, colour, Image::TRUE_COLOR)->Unit(benchmark::kMicrosecond);

/** A mosaic of the United States in blocks of echo, with values as a reader gives them. */
Image mosaic(const char* text, bool flat) {
  constexpr unsigned levels = 16;
  ZQV::Domain domain;
  domain.set(text);
  Image image;
  image.set(domain, 8);
  image.setColorType(Image::DATA);
  image.allocData();
  for (int y = 0; y < domain.ny && !flat; y++) {
    for (int x = 0; x < domain.nx; x++) {
      const unsigned block = static_cast<unsigned>(x / 4 + y / 4 * 977) * 2654435761U;
      image.setPixel(x, y, static_cast<int>((block >> 20) % levels));
    }
  }
  return image;
}

constexpr const char* lat_lon = "latlon,39,-96,2560,2880,0.0257812,0.0171874";
constexpr const char* lambert = "lamb:40:-97:33:45,38,-96,2560,2880,0.02,0.0151";

void remap(benchmark::State& state, const char* from, const char* text, bool flat) {
  const Image image = mosaic(from, flat);
  ZQV::Domain domain;
  domain.set(text);
  Image result;
  for (auto _ : state) benchmark::DoNotOptimize(ZQV::ImageMath::remap(image, domain, result));
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations()) * domain.nx * domain.ny);
}
BENCHMARK_CAPTURE(remap, matching, lat_lon, "latlon,39,-96,640,512,0.09,0.05", false)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(remap, matching_empty, lat_lon, "latlon,39,-96,640,512,0.09,0.05", true)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(remap, matching_lambert, lambert, "lamb:40:-97:33:45,38,-96,640,512,0.08,0.08",
                  false)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(remap, lambert, lat_lon, "lamb:40:-97:33:45,38,-96,640,512,0.08,0.08", false)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(remap, stereographic, lat_lon, "pstereo:90:-98,38,-96,640,512,0.08,0.08", false)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(remap, mercator, lat_lon, "merc:0:-96,38,-96,640,512,0.08,0.08", false)
    ->Unit(benchmark::kMillisecond);

}  // namespace
