#pragma once

#include "Date.h"
#include "File.h"
#include "Filename.h"

namespace ZQV {

class Image;

/** What the readers of coded radar reports share: the file, which is either a bulletin or one of
 *  the package's summaries, and the date that places the reports in time.
 *  @tparam Summary  reader and writer of the summaries */
template <class Summary>
class ReportFile {
 public:
  enum Type { BULLETIN = 1, SUMMARY = 2 };

  ReportFile(const ReportFile&) = delete;
  ReportFile& operator=(const ReportFile&) = delete;

  /** Closes, and forgets the date. @return 1 */
  int init() {
    close();
    type = BULLETIN;
    setDate(Date());
    return 1;
  }
  /** @param access  0 to read, 1 to write, which only a summary allows
   *  @param form  a Type. @return 1; 0 if it can't be opened */
  int open(const char* name, int access, int form) {
    close();
    type = form;
    if (type == SUMMARY) {
      return zqv.open(name, access);
    }
    opened = access != 1 && file.open(name, "r") != 0;
    return opened ? 1 : 0;
  }
  /** Opens a bulletin. */
  int open(const char* name) { return open(name, 0, BULLETIN); }
  /** The same with the date of the file. */
  int open(const Filename& filename, int access, int form) {
    setDate(filename.getDate());
    return open(filename.getName(), access, form);
  }
  int open(const Filename& filename) { return open(filename, 0, BULLETIN); }
  [[nodiscard]] bool isOpen() const { return type == SUMMARY ? zqv.isOpen() : opened; }
  /** @return 1; 0 if not open */
  int close() {
    if (type == SUMMARY) {
      return zqv.close();
    }
    if (!opened) {
      return 0;
    }
    opened = false;
    return file.close();
  }

  /** @return 1 */
  int setDate(const Date& d) {
    date = d;
    return zqv.setDate(d);
  }
  /** That of a summary once it is open for reading, else what was set. */
  [[nodiscard]] const Date& getDate() const { return type == SUMMARY ? zqv.getDate() : date; }

 protected:
  ReportFile() = default;
  ~ReportFile() = default;

  int type = BULLETIN;
  File file;
  bool opened = false;  ///< a bulletin
  Date date;
  Summary zqv;
};

}  // namespace ZQV
