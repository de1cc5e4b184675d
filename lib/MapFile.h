#pragma once

#include <cstddef>
#include <vector>

#include "File.h"
#include "KmlData.h"
#include "KmlFile.h"
#include "Swap.h"

namespace ZQV {

class EarthPoint;
class MapFileHeader;

/** Reader and writer of map segments. A reader calls readHeader() until it gives 0, and after each
 * header readData() until it gives 0.
 *
 *  Binary, big-endian: number of points (2 bytes, and if that is 65535 a further count, 2 bytes),
 *  maxlat, minlat, maxlon, minlon (float), index (4 bytes), then latitude and longitude (float) of
 *  each point. Text: the same numbers on a line, without the further count, and the points behind
 *  it. KML: one segment a list of coordinates, with the name of its placemark as label. Shapefile
 *  (ESRI, July 1998): one segment a part of a polyline or polygon, without a box, under its record
 *  number. */
class MapFile {
 public:
  enum Type { DETECT = 0, BINARY = 1, TEXT = 2, KML = 3, SHAPE = 4 };

  MapFile() = default;
  explicit MapFile(const char* name) { open(name); }

  /** @param access  0 reads, a plain file only; 1 writes, BINARY and TEXT only
   *  @param type    DETECT looks into the file
   *  @return 1; 0 if it can't be opened */
  int open(const char* name, int access, int type);
  int open(const char* name) { return open(name, 0, DETECT); }
  [[nodiscard]] bool isOpen() const { return opened; }
  int close();
  int rewind();
  /** Byte position, at the head of a segment. @return 1; 0 for KML, or if there is no such place */
  int seek(long off);
  /** -1 for KML. */
  [[nodiscard]] long tell() const;
  [[nodiscard]] bool isBinary() const { return type == BINARY; }
  [[nodiscard]] int getType() const { return type; }

  /** The next segment. The further count of a long binary one counts in the header only, and its
   *  points aren't delivered: deliberate, the format ends at 65535 points.
   *  @return 1; 0 at the end of the file, or at a fault */
  int readHeader(MapFileHeader& header);
  /** The next point of the segment. @return 1; 0 at its end */
  int readData(EarthPoint& point);
  /** Moves on by four bytes for each point that is left of a binary segment, half of what they
   * take: deliberate. passData() is the one that gets to the next header. @return 1 or 0 */
  int skipData();
  /** Passes over the rest of the segment. @return 1 or 0 */
  int passData();
  /** Writes num as 16 bits. @return 1 or 0 */
  int writeHeader(const MapFileHeader& header);
  int writeData(const EarthPoint& point);
  /** Writes "MapFile - binary: %d\n". */
  void print() const;

  /** Looks into the file. @return a Type; -1 if it can't be opened */
  static int checkType(const char* name);

 private:
  const unsigned char* take(size_t n);
  int skipBytes(long n);
  void dropChunk();
  int readBinaryHeader(MapFileHeader& header);
  int readTextHeader(MapFileHeader& header);
  int readKmlHeader(MapFileHeader& header);
  int readShapeHeader(MapFileHeader& header);
  int readShapeRecord();
  [[nodiscard]] int segmentEnd() const;

  File file;
  KmlFile kml;
  KmlData kdata;
  int cnt = 0;  ///< points delivered of this segment, or of this record of a shapefile
  int num = 0;  ///< points of it
  int access = 0;
  int type = BINARY;
  bool opened = false;
  Swap swap;
  int seg = 0;  ///< headers read so far
  int len = 0;  ///< of the record, 16-bit words, as it states itself
  int npart = 1;
  int part = 0;
  std::vector<int> parts;  ///< first point of each part of the record
  int index = 0;
  // The bytes at hand of a binary map or shapefile.
  std::vector<unsigned char> chunk;
  size_t chunk_pos = 0;
  size_t chunk_end = 0;
};

}  // namespace ZQV
