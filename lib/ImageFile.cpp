#include "ImageFile.h"

#include <cstdio>

#include "File.h"
#include "FileTool.h"
#include "Image.h"
#include "StrLib.h"

namespace ZQV {

int ImageFile::getType(const char* type_name) {
  if (StrLib::equal(type_name, "img")) return IMG;
  if (StrLib::equal(type_name, "imgz")) return IMGZ;
  if (StrLib::equal(type_name, "gif")) return GIF;
  return StrLib::equal(type_name, "png") ? PNG : UNKNOWN;
}

int ImageFile::checkFilename(const char* name) {
  if (StrLib::iequal(name, "img", -3)) return IMG;
  if (StrLib::iequal(name, "imgz", -4)) return IMGZ;
  if (StrLib::iequal(name, "gif", -3)) return GIF;
  return StrLib::iequal(name, "png", -3) ? PNG : UNKNOWN;
}

int ImageFile::checkType(const char* name) {
  if (FileTool::isStdio(name)) {
    // What is read here would be gone, but for one character.
    const int first = std::getc(stdin);
    std::ungetc(first, stdin);
    constexpr int png_first = 0x89;
    return first == 'G' ? GIF : first == png_first ? PNG : first == 'Z' ? IMG : UNKNOWN;
  }
  File in;
  char start[11] = {};
  if (in.open(name, "r") == 0 || in.read(start, sizeof(start) - 1) < 1) return UNKNOWN;
  if (StrLib::equal(start, "GIF", 3)) return GIF;
  if (StrLib::equal(start + 1, "PNG", 3)) return PNG;
  return StrLib::equal(start, "ZQVIMG", 6) ? IMG : UNKNOWN;
}

int ImageFile::open(const char* name, int how, int kind) {
  close();
  access = how;
  type = kind;
  if (type == UNKNOWN && access == READ) type = checkType(name);
  if (type == UNKNOWN) type = checkFilename(name);
  switch (type) {
    case GIF: opened = gif.open(name, access) != 0; break;
    case PNG: opened = png.open(name, access) != 0; break;
    case IMG:
    case IMGZ: opened = img.open(name, access, type) != 0; break;
    default: break;
  }
  return opened ? 1 : 0;
}

int ImageFile::close() {
  if (!opened) return 0;
  gif.close();
  png.close();
  img.close();
  opened = false;
  return 1;
}

int ImageFile::read(Image& image) {
  if (!opened || access != READ) return 0;
  switch (type) {
    case GIF: return gif.read(image);
    case PNG: return png.read(image);
    default: return img.read(image);
  }
}

int ImageFile::read(const char* name, Image& image) {
  if (open(name) == 0) return 0;
  const int result = read(image);
  close();
  return result;
}

int ImageFile::readHeader(Image& image) {
  if (opened && access == READ && (type == IMG || type == IMGZ)) return img.readHeader(image);
  const int result = read(image);
  image.freeData();
  return result;
}

int ImageFile::readPlain(const char* name, Image& image) {
  return FileTool::isFile(name) ? read(name, image) : 0;
}

int ImageFile::write(const Image& image) {
  if (!opened || access != WRITE) return 0;
  switch (type) {
    case GIF: return gif.write(image);
    case PNG: return png.write(image);
    default: return img.write(image);
  }
}

int ImageFile::write(const char* name, int kind, const Image& image) {
  if (open(name, WRITE, kind) == 0) return 0;
  const int result = write(image);
  close();
  return result;
}

}  // namespace ZQV
