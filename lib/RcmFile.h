#pragma once

#include "RcmZqvFile.h"
#include "ReportFile.h"

namespace ZQV {

class RcmData;
struct RcmRawData;

/** Radar coded messages: finds them in a text bulletin and decodes them, or passes them on from and
 *  to a summary. */
class RcmFile : public ReportFile<RcmZqvFile> {
 public:
  RcmFile() = default;
  explicit RcmFile(const char* name) { open(name); }
  explicit RcmFile(const Filename& filename) { open(filename); }

  /** The next message of a bulletin: the line behind that of the site, or several as long as they
   * are less than 100 characters together. @return 1; 0 if there is none */
  int read(RcmRawData& raw);
  /** The next message, decoded, of a bulletin or a summary. @return 1; 0 if there is none, or it
   *  can't be decoded */
  int read(RcmData& data);
  /** Decodes the text of a message, or that in the blocks of its binary framing. Cells out of the
   * box and what a list has no room for are dropped. @return 1; 0 without the first part */
  static int decode(const RcmRawData& raw, RcmData& data);
  /** The mosaic of a summary. @return 1; 0 if none is open */
  int read(Image& image) { return zqv.read(image); }
  int write(const Image& image) { return zqv.write(image); }
  int write(const RcmData& data) { return zqv.write(data); }
};

}  // namespace ZQV
