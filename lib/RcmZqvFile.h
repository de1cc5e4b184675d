#pragma once

#include "RcmDomain.h"
#include "SummaryFile.h"

namespace ZQV {

class Grid;
class Image;
class RcmData;

/** The package's summary of coded messages: a mosaic of echo levels, of which 1 to 6, 7 to 12 and
 * 13 to 18 are those of three forms of precipitation, and lines for each station. The mosaic is
 * read and written ahead of the stations. */
class RcmZqvFile : public SummaryFile {
 public:
  RcmZqvFile() : SummaryFile("RCM SUMMAR", "*") {}

  /** The mosaic as a data image of levels on the grid of RcmDomain. @return 1; 0 if not open for
   * reading, or behind the mosaic */
  int read(Image& image);
  /** The mosaic as a field, with the middle of each level's band in dBZ, plus 100 or 200 by the
   * form of precipitation, and 0 elsewhere. @return likewise */
  int read(Grid& grid);
  /** The next station, with positions on the earth and without echoes. @return 1; 0 at the end of
   * the file or if not open for reading */
  int read(RcmData& data);
  /** Goes to the first line behind the mosaic, or stays at that of a station. @return 1; 0 if there
   *  is none */
  int skipMosaic();
  /** @return 1; 0 if not open for writing */
  int write(const Image& image);
  /** Positions are written as they are, and read as positions on the earth. @return likewise */
  int write(const RcmData& data);

 private:
  template <class Cell>
  void walk(const Cell& cell);
  void readHead(RcmData& data) const;
  void readEntry(RcmData& data) const;

  RcmDomain domain;
};

}  // namespace ZQV
