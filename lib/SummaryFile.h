#pragma once

#include <string>

#include "Date.h"
#include "File.h"

namespace ZQV {

class Domain;
class Grid;
class Image;

/** What the package's summaries of coded radar reports share: text lines, of which the first names
 *  the package, the second is the date and the third says what follows; then a national mosaic, and
 *  a part for each station. */
class SummaryFile {
 public:
  SummaryFile(const SummaryFile&) = delete;
  SummaryFile& operator=(const SummaryFile&) = delete;

  /** @param access  0 to read, 1 to write; the first two lines are then read, with the third, or
   * written. @return 1; 0 if it can't be opened, or isn't such a file */
  int open(const char* name, int access);
  [[nodiscard]] bool isOpen() const { return opened; }
  /** @return 1; 0 if not open */
  int close();
  /** To be set ahead of opening for writing. @return 1 */
  int setDate(const Date& d);
  /** That of the file, once it is open for reading. */
  [[nodiscard]] const Date& getDate() const { return date; }

  /** What stands for a status of 0 to 2: "NA", "NE", "OM"; absent for any other. */
  static const char* statusWord(int status);

 protected:
  /** @param title  what the third line begins with
   *  @param stop  what the line behind the mosaic begins with */
  SummaryFile(const char* title, const char* stop) : title_text(title), stop_text(stop) {}
  ~SummaryFile() = default;

  [[nodiscard]] bool reads() const { return opened && mode == 0; }
  [[nodiscard]] bool writes() const { return opened && mode == 1; }
  /** The next line, without its end, to line; what goes beyond 999 characters is dropped.
   *  @return 1; 0 at the end of the file */
  int readLine();
  /** The next line of the mosaic. @return 1; 0 at its end, with the line behind it in line */
  int readMosaicLine();
  /** Stays in front of a line behind the mosaic. */
  [[nodiscard]] bool pastMosaic() const { return past_mosaic; }
  /** An image or a field of the mosaic with its header, all 0. @return 1; 0 if there is no memory
   * for it */
  int prepare(const Domain& domain, const char* info, Image& image) const;
  int prepare(const Domain& domain, const char* info, Grid& grid) const;

  /** The status of a word, 3 if it is none of them. */
  static int findStatus(const char* word);

  File file;
  Date date;
  std::string line;
  int num = 0;  ///< stations written

 private:
  bool readHead();

  const char* title_text;
  const char* stop_text;
  bool opened = false;
  int mode = 0;
  bool past_mosaic = false;
};

}  // namespace ZQV
