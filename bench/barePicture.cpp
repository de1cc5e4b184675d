// The floors of pictures for scripts/bench.sh: writing given pixels with libpng and giflib, in the
// way that the program writes them.
//
//   barePicture png FILE WIDTH HEIGHT   FILE has red, green, blue of each pixel
//   barePicture gif FILE WIDTH HEIGHT   FILE has an index below 256 of each pixel
//
// The picture goes to /dev/null.

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string_view>
#include <vector>

#include <gif_lib.h>
#include <png.h>

namespace {

constexpr int LEVEL = 4;  ///< as PngFile has it, with rows as they are

std::vector<unsigned char> slurp(const char* name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

int writePng(const unsigned char* pixels, int width, int height) {
  std::FILE* out = std::fopen("/dev/null", "wb");
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  if (setjmp(png_jmpbuf(png)) != 0) return 1;
  png_init_io(png, out);
  png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), 8,
               PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
               PNG_FILTER_TYPE_DEFAULT);
  png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
  png_set_compression_level(png, LEVEL);
  png_write_info(png, info);
  for (long y = 0; y < height; y++) png_write_row(png, pixels + y * width * 3);
  png_write_end(png, nullptr);
  png_destroy_write_struct(&png, &info);
  return std::fclose(out);
}

int writeGif(unsigned char* pixels, int width, int height) {
  constexpr int colors = 256;
  int error = 0;
  GifFileType* gif = EGifOpenFileName("/dev/null", false, &error);
  ColorMapObject* map = GifMakeMapObject(colors, nullptr);
  if (gif == nullptr || map == nullptr) return 1;
  EGifPutScreenDesc(gif, width, height, 8, 0, map);
  EGifPutImageDesc(gif, 0, 0, width, height, false, nullptr);
  for (long y = 0; y < height; y++) EGifPutLine(gif, pixels + y * width, width);
  GifFreeMapObject(map);
  return EGifCloseFile(gif, &error) == GIF_OK ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 5) return 2;
  const std::string_view type = argv[1];
  std::vector<unsigned char> pixels = slurp(argv[2]);
  const int width = std::atoi(argv[3]);
  const int height = std::atoi(argv[4]);
  const long bytes = static_cast<long>(width) * height * (type == "png" ? 3 : 1);
  if (bytes < 1 || static_cast<long>(pixels.size()) < bytes) return 1;
  return type == "png" ? writePng(pixels.data(), width, height)
                       : writeGif(pixels.data(), width, height);
}
