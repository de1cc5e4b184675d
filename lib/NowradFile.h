#pragma once

#include <array>
#include <string>

#include "Date.h"
#include "Domain.h"
#include "File.h"

namespace ZQV {

class Image;

/** A run of equal pixels in a NOWrad line. */
struct NowradPacket {
  int run = 0;   ///< pixels, 0 for a mask
  int val = 0;   ///< level
  int mask = 0;  ///< mask in force
};

/** NOWrad mosaics: a header and run-length coded lines, each behind a marker of three bytes. */
class NowradFile {
 public:
  NowradFile() = default;
  NowradFile(const NowradFile&) = delete;
  NowradFile& operator=(const NowradFile&) = delete;
  ~NowradFile() = default;

  /** @return 1 or 0 */
  int open(const char* name);
  [[nodiscard]] bool isOpen() const { return opened; }
  int rewind();
  int close();

  /** Size, label, date and domain. @return 1; 0 at the first thing that isn't as it should be */
  int readHeader();
  /** The marker and number of the next line. @return 1; 0 if there is none */
  int readLine();
  /** The next run of the line. @return 1; 0 at the end of the line */
  int readPacket(NowradPacket& packet);
  /** A data image with values in dBZ, -100 for level 0; a wrong header gives an empty one. @return
   * 1; 0 if not open or too large */
  int read(Image& image);

  [[nodiscard]] const Domain& getDomain() const { return domain; }
  [[nodiscard]] const Date& getDate() const { return date; }
  [[nodiscard]] const char* getLabel() const { return label.c_str(); }

 private:
  void start();
  int readMark(int code);
  int readLabel();
  int readProjection();
  bool isMark(int code) const { return data[0] == 0 && data[1] == 0xf0 && data[2] == code; }

  File file;
  bool opened = false;
  std::array<unsigned char, 10> data{};  ///< bytes read last
  unsigned char pre = 0;  ///< the byte before, as far as it matters: 0 after a short run of 0
  unsigned int num = 0;   ///< number that the line states
  unsigned int run = 0;
  unsigned int col = 0;  ///< level of the run
  unsigned int col_mask = 0;
  int held = -1;    ///< byte read ahead, -1 for none
  int tot_run = 0;  ///< pixels of the line so far
  std::string label;
  Date date;
  int height = 0;
  int width = 0;
  Domain domain;
};

}  // namespace ZQV
