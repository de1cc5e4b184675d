#pragma once

#include "GridFile.h"

namespace ZQV {

/** Finds a field in a file and reads it. */
class GridRead {
 public:
  /** @return 1; 0 with one warning if it can't be read */
  int read(const char* file_name, const GridSpec& spec, Grid& grid) {
    file.open(file_name);
    return file.read(spec, grid);
  }

 private:
  GridFile file;
};

}  // namespace ZQV
