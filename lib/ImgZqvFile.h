#pragma once

#include <string>

#include "Date.h"
#include "File.h"

namespace ZQV {

class Domain;
class Image;

/** The package's own image format: a few lines of text, tables of physical values and level
 * classes, and one byte a pixel, raw, compressed, or in a file beside it. */
class ImgZqvFile {
 public:
  ImgZqvFile() = default;
  ImgZqvFile(const ImgZqvFile&) = delete;
  ImgZqvFile& operator=(const ImgZqvFile&) = delete;
  ~ImgZqvFile() = default;

  /** Version to write: 4, or 3, which has no tables and an older form of the domain. */
  void setVer(int v) { ver = v; }
  /** @param how  0 to read, 1 to write
   *  @param form  when writing, 1 = raw pixels, 2 = compressed
   *  @return 1; 0 if it can't be opened, or isn't such a file */
  int open(const char* name, int how, int form);
  int open(const char* name, int how) { return open(name, how, 1); }
  int open(const char* name) { return open(name, 0); }
  [[nodiscard]] bool isOpen() const { return opened; }
  int close();

  /** Header and pixels. @return 1; 0 if not open for reading; -1 as the two below */
  int read(Image& image);
  /** All but the pixels: the image has its size and no store. @return 1; 0 if not open for reading;
   *  -1 if the first line isn't right, with nothing else read */
  int readHeader(Image& image);
  /** The pixels; those missing in the file are 0. Closes the file. @return 1; 0 if not open for
   *  reading or too large; -1 if the file with the pixels is missing, or for wrong compressed data
   */
  int readData(Image& image);
  int read(const char* name, Image& image);
  /** Pixels are written only of an image of 8 bits without colours, of others the header alone.
   *  @return 1; 0 if not open for writing */
  int write(const Image& image);
  int write(const char* name, int form, const Image& image);

 private:
  /** Bits of dtype. */
  enum Flag { OTHER_FILE = 1, COMPRESSED = 2, VALUES = 4, CUTOFF = 8 };

  int readLine(char* buffer, int size);
  int readDomain(Domain& domain, int& width, int& height);
  int readOtherFile(Image& image);
  int readCompressed(Image& image);
  int writeDomain(const Image& image);
  int writePixels(const Image& image);
  int writeCompressed(const unsigned char* pixels, size_t size);

  int type = 1;
  int dtype = 0;
  int ver = 4;
  int access = 0;
  File file;
  Date date;
  bool opened = false;
  std::string path;  ///< name of the file, beside which one with the pixels is looked for
};

}  // namespace ZQV
