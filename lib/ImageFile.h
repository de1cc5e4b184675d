#pragma once

#include "GifFile.h"
#include "ImgZqvFile.h"
#include "PngFile.h"

namespace ZQV {

class Image;

/** A file of any of the raster formats. Operations return 1, or 0 on failure. */
class ImageFile {
 public:
  enum Type { UNKNOWN = 0, IMG = 1, IMGZ = 2, GIF = 3, PNG = 4 };
  enum Access { READ = 0, WRITE = 1 };

  /** @param how  one of Access
   *  @param kind  one of Type. UNKNOWN is found by the content, failing that by the name, when
   *               reading, and by the name when writing. A standard stream needs to be told. */
  int open(const char* name, int how, int kind);
  int open(const char* name, int how, const char* type_name) {
    return open(name, how, getType(type_name));
  }
  int open(const char* name, int how) { return open(name, how, UNKNOWN); }
  int open(const char* name) { return open(name, READ); }
  /** Version of the native format to write. */
  void setVer(int v) { img.setVer(v); }
  [[nodiscard]] bool isOpen() const { return opened; }
  int close();
  /** Type of the word "img", "imgz", "gif" or "png", else UNKNOWN. */
  static int getType(const char* type_name);

  /** Fills the image with the file's. @return 1 or 0; -1 as ImgZqvFile::read() */
  int read(Image& image);
  int read(const char* name, Image& image);
  /** The same without the pixels: size, texts, domain and tables. Of the native format only the
   * first lines are read. */
  int readHeader(Image& image);
  /** For names that stand in a data file or a setting: a plain file only, never a command or a
   * standard stream. */
  int readPlain(const char* name, Image& image);
  int write(const Image& image);
  int write(const char* name, int kind, const Image& image);
  /** The type follows from the name. */
  int write(const char* name, const Image& image) { return write(name, UNKNOWN, image); }

  /** Type by the first bytes of the file. A standard stream is left unread and UNKNOWN. */
  static int checkType(const char* name);
  /** Type by the end of the name in any case. */
  static int checkFilename(const char* name);

 private:
  int type = UNKNOWN;
  int access = READ;
  GifFile gif;
  PngFile png;
  ImgZqvFile img;
  bool opened = false;
};

}  // namespace ZQV
