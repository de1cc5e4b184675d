#pragma once

#include "MdrZqvFile.h"
#include "ReportFile.h"

namespace ZQV {

class MdrData;
class Scanp;
struct MdrRawData;
struct MdrRegion;

/** MDR reports: finds them in a text bulletin and decodes them, or passes them on from and to a
 *  summary. */
class MdrFile : public ReportFile<MdrZqvFile> {
 public:
  MdrFile() = default;
  explicit MdrFile(const char* name) { open(name); }
  explicit MdrFile(const Filename& filename) { open(filename); }

  /** The next report of a bulletin: from a line with a site and a time to an empty line. @return 1;
   *  0 if there is none */
  int read(MdrRawData& raw);
  /** The next report, decoded, of a bulletin or a summary. @return likewise */
  int read(MdrData& data);
  /** Decodes a report, whose time is placed near the date of the heading that was read with it, or
   *  else of the file. What can't be read of a report is left out. @return 1 */
  int decode(const MdrRawData& raw, MdrData& data) const;
  /** The mosaic of a summary. @return 1; 0 if none is open */
  int read(Image& image) { return zqv.read(image); }
  int write(const Image& image) { return zqv.write(image); }
  int write(const MdrData& data) { return zqv.write(data); }

 private:
  void readHeading(const char* line);
  static void decodeRegions(Scanp& scanp, const char* word, MdrData& data);
  static void decodeRegion(Scanp& scanp, MdrRegion& reg);
  static void decodeEchoes(const char* text, MdrData& data);

  Date pdate;  ///< that the report read last is placed by
};

}  // namespace ZQV
