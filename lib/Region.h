#pragma once

namespace ZQV {

class String;

/** Named domain texts in a region file. */
class Region {
 public:
  /** The domain text of a name, ignoring case, in a file of the data path; a null file is
   * "zqv.reg", a null name the first region of the file. A line with a single word ends the search:
   * that word is the result, whatever the name. @return 1; 0 if there is none, with out empty */
  static int get(const char* file, const char* name, String& out);
};

}  // namespace ZQV
