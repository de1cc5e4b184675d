#pragma once

#include <string>

#include "File.h"

namespace ZQV {

/** Reads the lines of one of the package's small text files: colour tables, fills, the font list.
 * Only a plain file is opened, as names may come out of other files. */
class TextFile {
 public:
  /** Opens a file found along the data path. @return 1; 0 if it can't be opened */
  [[nodiscard]] int open(const char* name);
  /** Reads the next line without the white space at both ends. The rest of a line that is longer
   * than max characters is passed over. @return 1; 0 at the end of the file */
  int next(std::string& line, int max = 255);

  /** Reads a whole file by its own path, as far as 1 MB, which is far above what any of ours takes.
   *  @return 1; 0 if it can't be opened */
  static int readAll(const char* path, std::string& text);

 private:
  File file;
};

}  // namespace ZQV
