#pragma once

#include "MdrDomain.h"
#include "SummaryFile.h"

namespace ZQV {

class Grid;
class Image;
class MdrData;

/** The package's summary of MDR reports: a mosaic of echo levels 1 to 6 in panels of text, and a
 *  line for each station. The mosaic is read and written ahead of the stations. */
class MdrZqvFile : public SummaryFile {
 public:
  MdrZqvFile() : SummaryFile("SDUS SUMMA", "SDXX") {}

  /** The mosaic as a data image of levels on the grid of MdrDomain. @return 1; 0 if not open for
   * reading, or behind the mosaic */
  int read(Image& image);
  /** The mosaic as a field, with the middle of each level's band in dBZ and 0 elsewhere. Columns
   *  come out one to the left of those of the image: deliberate. @return likewise */
  int read(Grid& grid);
  /** The next station; what is left of the mosaic is skipped. Of a precipitation the type keeps the
   *  mark of its intensity. @return 1; 0 at the end of the file or if not open for reading */
  int read(MdrData& data);
  /** @return 1; 0 if not open for writing */
  int write(const Image& image);
  /** A station's status and first region. @return likewise */
  int write(const MdrData& data);

 private:
  template <class Cell>
  void walk(int back, int step, const Cell& cell);

  MdrDomain domain;
};

}  // namespace ZQV
