#pragma once

#include <string>

namespace ZQV {

class Grid;
class GridSpec;

/** A file of fields. No format of these is known yet, so that nothing can be read from any file. */
class GridFile {
 public:
  /** Chooses the file. @return 1; 0 without a name */
  int open(const char* file_name);
  /** Domain and identity of the first field, without its values. @return 0, and the grid is left
   * alone */
  int readHdr(Grid& grid) const;
  /** A field by its name. @return 0 with a warning, and the grid is left alone */
  int read(const GridSpec& spec, Grid& grid) const;

 private:
  std::string name;
};

}  // namespace ZQV
