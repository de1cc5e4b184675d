#pragma once

namespace ZQV {

class ColorMap;

/** Reads colour tables. One entry a line: a name and three numbers from 0 to 1, or a name and
 * "#rrggbb"; a number ahead of them is ignored. "#" begins a comment line, "END" ends the fill
 * colours. */
class ColorFile {
 public:
  /** Reads the comma-separated files, each found along the data path. @return 1; 0 if one of them
   *  can't be opened, with the others read */
  static int read(const char* names, ColorMap& map);
  /** Adds the entries of one file. Lines that are no entries are passed over. @return 1; 0 if it
   *  can't be opened, with the map left as it was */
  static int readFile(const char* name, ColorMap& map);
};

}  // namespace ZQV
