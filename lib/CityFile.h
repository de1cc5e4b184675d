#pragma once

#include "File.h"

namespace ZQV {

class CityData;

/** Reader of a city file: a text file with one station a line, in the columns
 *  "%15c %2s %2s %9s%*c%c%d%c %f %f %f %ld %d". Opened for reading it is a plain file only, as its
 * name may come out of a data file. */
class CityFile : public File {
 public:
  CityFile() = default;
  explicit CityFile(const char* name) { open(name); }
  CityFile(const char* name, int mode) { open(name, mode); }

  /** @param mode  0 reads, 1 writes. @return 1; 0 if it can't be opened, or for another mode */
  int open(const char* name, int mode);
  int open(const char* name) { return open(name, 0); }
  [[nodiscard]] bool isOpen() const { return opened; }
  int close();
  /** Records of the file, estimated from its size. */
  [[nodiscard]] int getNum() const { return num; }
  /** The next record: a line that has at least the ten values through the elevation.
   *  @return 1; 0 at the end, which is also the first line that has fewer */
  int read(CityData& data);

 private:
  int num = 0;
  bool opened = false;
};

}  // namespace ZQV
