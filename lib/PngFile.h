#pragma once

#include <string>

#include "File.h"

namespace ZQV {

class Image;

/** PNG pictures through libpng, with map section and date in text chunks. Operations return 1, or 0
 * on failure; a read or write closes the file. */
class PngFile {
 public:
  PngFile() = default;
  /** @param how  0 to read, 1 to write */
  PngFile(const char* name, int how) { open(name, how); }
  PngFile(const PngFile&) = delete;
  PngFile& operator=(const PngFile&) = delete;
  ~PngFile() = default;

  /** Closes, and forgets all settings. */
  void init();
  /** @param how  0 to read, 1 to write */
  int open(const char* name, int how);
  [[nodiscard]] bool isOpen() const { return opened; }
  int close();
  /** Kept only: pictures are written without interlace. */
  void setInterlace(int v) { use_inter = v; }
  /** Bring true colour to a table of 256 colours before writing. */
  void setIndex(int v) { index = v; }
  /** Cut at 39 characters. */
  void setTitle(const char* text);
  /** Cut at 999 characters; an empty one isn't written. */
  void setComment(const char* text);

  /** Palette pictures become indexed images of 8 bits a pixel, in which entry 0 is transparent if
   *  the file has any transparency; RGB of 8 bits a channel becomes true colour. Gray pictures,
   *  those with alpha and those of 16 bits a channel have their size, and all pixels 0. The domain
   *  comes from the texts, while the size stays that of the picture.
   *  @return 1; 0 if it isn't a PNG file, too large or damaged, with the rows read so far */
  int read(Image& image);
  int read(const char* name, Image& image);
  int write(const Image& image);
  int write(const char* name, const Image& image);

 private:
  File file;
  bool opened = false;
  int access = 0;
  int width = 0;
  int height = 0;
  int depth = 0;
  int index = 0;
  int use_inter = 0;
  std::string title = "ZQV Graphic";
  std::string comment;
};

}  // namespace ZQV
