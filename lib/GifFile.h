#pragma once

#include "File.h"

namespace ZQV {

class Image;

/** GIF pictures (GIF87a and GIF89a) of up to 256 colours, with the map section in a comment.
 *  Operations return 1, or 0 on failure. */
class GifFile {
 public:
  GifFile() = default;
  /** @param how  0 to read, 1 to write */
  GifFile(const char* name, int how) { open(name, how); }
  GifFile(const GifFile&) = delete;
  GifFile& operator=(const GifFile&) = delete;
  /** Completes an animation. */
  ~GifFile() { close(); }

  /** Closes, and forgets all settings. */
  void init();
  /** @param how  0 to read, 1 to write */
  int open(const char* name, int how);
  [[nodiscard]] bool isOpen() const { return opened; }
  /** Completes an animation and closes. @return 1; 0 if not open */
  int close();
  /** Write rows in the four passes of an interlaced picture. */
  void setInterlace(int v) { use_inter = v; }
  /** Transparent index for images that have none of their own; -1 for none. */
  void setTransColor(int v) { trans = v; }
  /** Delays of an animation in hundredths of a second: of its frames, and of the last one. */
  void setLoopDelay(int delay, int end_delay) { loop_delay = delay, loop_end_delay = end_delay; }

  /** The first picture of the file, indexed, 8 bits a pixel. A comment with "ti=" gives the
   *  information text and one with "pd=" or "proj=" the domain, while the size stays that of the
   *  picture. The colours are those of the global table, and the index of a graphic control is
   *  transparent whether its flag is set or not: deliberate.
   *  @return 1 with what could be decoded, even if the data ends early; 0 if it isn't a GIF file,
   *  too large, or if its codes don't fit the table */
  int read(Image& image);
  /** A picture of other than indexed colours is brought to 256 of them. */
  int write(const Image& image);
  /** Appends the pictures of another GIF file as frames of an animation, which close() completes.
   *  @param last  the last file, whose pictures stay for the end delay */
  int write(const char* name, bool last = false);
  /** Adds a picture as a frame of an animation, which close() completes. Information text, domain
   * and size are those of the first.
   *  @param last  it stays for the end delay */
  int writeFrame(const Image& image, bool last = false);

 private:
  int readHeader(Image& image);
  int readExtension(Image& image);
  int readComment(Image& image);
  int readPicture(Image& image);
  const Image* indexed(const Image& image, Image& copy, int& bits);
  int writeHead(const Image& image, int bits);
  int writeComments(const Image& image);
  int writeComment(const char* key, const char* text);
  int writeControl(const Image& image, int delay);
  int writePicture(const Image& image, int bits, bool own_colors);
  int copyFrames(File& from);
  int copyBlocks(File& from);

  File file;
  int access = 0;
  bool opened = false;
  int width = 0;
  int height = 0;
  int depth = 0;
  int use_inter = 0;
  int trans = -1;
  int glob_color_exist = 0;
  int glob_color_size = 0;
  int local_color_exist = 0;
  int local_color_size = 0;
  int code_size = 0;
  int num_pixel = 0;   ///< pixels decoded
  bool begun = false;  ///< an animation has its header
  int file_num = 0;    ///< frames of an animation written so far, -1 behind the last one
  int loop_end_delay = 0;
  int loop_delay = 0;
};

}  // namespace ZQV
