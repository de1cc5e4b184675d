#include "MapFile.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "EarthPoint.h"
#include "EarthRange.h"
#include "MapFileHeader.h"

namespace ZQV {

namespace {

constexpr size_t chunk_size = 1U << 16;
constexpr int binary_point = 8;  // bytes
constexpr int shape_point = 16;
constexpr int most_parts = 5000;
constexpr int further_count = 65535;  // as the first count announces a second one

/** Four bytes of the file. In line, as a map has hundreds of thousands of them. */
template <bool big_endian>
uint32_t word(const unsigned char* p) {
  return big_endian ? uint32_t{p[0]} << 24 | uint32_t{p[1]} << 16 | uint32_t{p[2]} << 8 | p[3]
                    : uint32_t{p[3]} << 24 | uint32_t{p[2]} << 16 | uint32_t{p[1]} << 8 | p[0];
}

float bigFloat(const unsigned char* p) {
  return std::bit_cast<float>(word<true>(p));
}

int bigInt(const unsigned char* p) {
  return static_cast<int>(word<true>(p));
}

int littleInt(const unsigned char* p) {
  return static_cast<int>(word<false>(p));
}

float littleDouble(const unsigned char* p) {
  const uint64_t bits = uint64_t{word<false>(p + 4)} << 32 | word<false>(p);
  return static_cast<float>(std::bit_cast<double>(bits));
}

bool beginsWith(const char* text, int length, const char* with, int n) {
  return length >= n && std::memcmp(text, with, static_cast<size_t>(n)) == 0;
}

}  // namespace

int MapFile::checkType(const char* name) {
  File file;
  if (file.openPlain(name) == 0) {
    return -1;
  }
  std::array<char, 101> head{};
  const int n = file.read(head.data(), head.size() - 1);
  MapFileHeader h;
  if (std::sscanf(head.data(), "%d %f %f %f %f %d\n", &h.num, &h.maxlat, &h.minlat, &h.maxlon,
                  &h.minlon, &h.index) == 6) {
    return TEXT;
  }
  if (beginsWith(head.data(), n, "\0\0\x27", 3)) {
    return SHAPE;
  }
  // A document, or one compressed by gzip: no binary map begins with those three bytes, which would
  // state 8075 points up to a latitude of 1e-34.
  if (beginsWith(head.data(), n, "<?xml", 5) || beginsWith(head.data(), n, "\x1F\x8B\x08", 3)) {
    return KML;
  }
  return BINARY;
}

int MapFile::open(const char* name, int how, int kind) {
  close();
  access = how;
  type = kind;
  cnt = num = seg = part = index = 0;
  npart = 1;
  parts.clear();
  dropChunk();
  if (access == 1) {
    opened = (type == BINARY || type == TEXT) && file.open(name, "w") != 0;
    return opened ? 1 : 0;
  }
  if (access != 0) {
    return 0;
  }
  if (type == DETECT) {
    type = checkType(name);
  }
  switch (type) {
    case KML: opened = kml.open(name) != 0; break;
    case BINARY:
    case TEXT:
    case SHAPE: opened = file.openPlain(name) != 0; break;
    default: break;
  }
  if (opened && (type == BINARY || type == SHAPE)) {
    chunk.resize(chunk_size);
  }
  return opened ? 1 : 0;
}

int MapFile::close() {
  if (!opened) {
    return 0;
  }
  opened = false;
  return type == KML ? kml.close() : file.close();
}

int MapFile::rewind() {
  if (!opened) {
    return 0;
  }
  cnt = num = seg = part = 0;
  npart = 1;
  dropChunk();
  return type == KML ? kml.rewind() : file.rewind();
}

int MapFile::seek(long off) {
  if (!opened || type == KML) {
    return 0;
  }
  cnt = num = part = 0;
  npart = 1;
  dropChunk();
  return file.seek(off);
}

long MapFile::tell() const {
  return opened && type != KML ? file.tell() - static_cast<long>(chunk_end - chunk_pos) : -1;
}

void MapFile::print() const {
  std::printf("MapFile - binary: %d\n", isBinary() ? 1 : 0);
}

void MapFile::dropChunk() {
  chunk_pos = chunk_end = 0;
}

/** The next n bytes, far fewer than a chunk; absent at the end of the file. */
const unsigned char* MapFile::take(size_t n) {
  if (chunk_end - chunk_pos < n) {
    std::copy(chunk.begin() + static_cast<long>(chunk_pos),
              chunk.begin() + static_cast<long>(chunk_end), chunk.begin());
    chunk_end -= chunk_pos;
    chunk_pos = 0;
    const int got = file.read(chunk.data() + chunk_end, chunk.size() - chunk_end);
    chunk_end += static_cast<size_t>(std::max(got, 0));
    if (chunk_end < n) {
      return nullptr;
    }
  }
  const unsigned char* bytes = chunk.data() + chunk_pos;
  chunk_pos += n;
  return bytes;
}

/** Whether there are so many is left to the next take(). @return 1 or 0 */
int MapFile::skipBytes(long n) {
  const auto at_hand = static_cast<long>(chunk_end - chunk_pos);
  if (n <= at_hand) {
    chunk_pos += static_cast<size_t>(n);
    return 1;
  }
  dropChunk();
  return file.seek(n - at_hand, SEEK_CUR);
}

int MapFile::readHeader(MapFileHeader& header) {
  header.init();
  if (!opened || access != 0) {
    return 0;
  }
  int got = 0;
  switch (type) {
    case BINARY: got = readBinaryHeader(header); break;
    case TEXT: got = readTextHeader(header); break;
    case KML: got = readKmlHeader(header); break;
    case SHAPE: got = readShapeHeader(header); break;
    default: break;
  }
  if (got == 0) {
    header.init();
    cnt = num = 0;
    return 0;
  }
  seg++;
  return 1;
}

int MapFile::readBinaryHeader(MapFileHeader& header) {
  npart = 1;
  cnt = num = 0;
  const unsigned char* p = take(2);
  if (p == nullptr) {
    return 0;
  }
  const int stated = p[0] << 8 | p[1];
  header.num = stated;
  if (stated == further_count) {
    p = take(2);
    if (p == nullptr) {
      return 0;
    }
    header.num += p[0] << 8 | p[1];
  }
  p = take(20);
  if (p == nullptr) {
    return 0;
  }
  header.maxlat = bigFloat(p);
  header.minlat = bigFloat(p + 4);
  header.maxlon = bigFloat(p + 8);
  header.minlon = bigFloat(p + 12);
  header.index = bigInt(p + 16);
  num = stated;
  return 1;
}

int MapFile::readTextHeader(MapFileHeader& header) {
  npart = 1;
  cnt = num = 0;
  long id = 0;
  // Widths keep a number of a million digits from being gathered; none has as many as these.
  const int n = file.scanf("%99d %99f %99f %99f %99f %99ld\n", &header.num, &header.maxlat,
                           &header.minlat, &header.maxlon, &header.minlon, &id);
  if (n != 6 || header.num < 0) {
    return 0;
  }
  header.index = static_cast<int>(id);
  num = header.num;
  return 1;
}

int MapFile::readKmlHeader(MapFileHeader& header) {
  npart = 1;
  cnt = num = 0;
  if (kml.read(kdata) == 0) {
    return 0;
  }
  const EarthRange range = kdata.getRange();
  header.num = num = kdata.getNum();
  header.minlat = range.min_lat;
  header.maxlat = range.max_lat;
  header.minlon = range.min_lon;
  header.maxlon = range.max_lon;
  header.setLabel(kdata.getName());
  header.index = 0;
  return 1;
}

/** Reads the head of the next record. @return 1; 0 at the end of the file, or at a fault */
int MapFile::readShapeRecord() {
  const unsigned char* p = take(8);
  if (p == nullptr) {
    return 0;
  }
  index = bigInt(p);
  len = bigInt(p + 4);
  p = take(44);
  if (p == nullptr) {
    return 0;
  }
  constexpr int polyline = 3;
  constexpr int polygon = 5;
  constexpr int box = 32;
  const int shape = littleInt(p);
  npart = littleInt(p + 4 + box);
  num = littleInt(p + 8 + box);
  if ((shape != polyline && shape != polygon) || npart < 1 || npart > most_parts || num < 0) {
    return 0;
  }
  p = take(static_cast<size_t>(npart) * 4);
  if (p == nullptr) {
    return 0;
  }
  parts.resize(static_cast<size_t>(npart));
  for (int& start : parts) {
    start = littleInt(p);
    p += 4;
  }
  return parts.front() >= 0 && parts.back() <= num && std::is_sorted(parts.begin(), parts.end())
             ? 1
             : 0;
}

/** Point of the record at which the current part ends. */
int MapFile::segmentEnd() const {
  return part + 1 < npart ? parts[static_cast<size_t>(part) + 1] : num;
}

int MapFile::readShapeHeader(MapFileHeader& header) {
  constexpr long file_header = 100;
  if (seg == 0) {
    dropChunk();
    if (file.seek(file_header) == 0) {
      return 0;
    }
    parts.clear();
  }
  const bool in_record = !parts.empty() && (cnt < num || part + 1 < npart);
  if (!in_record) {
    cnt = part = 0;
    if (readShapeRecord() == 0) {
      parts.clear();
      return 0;
    }
  } else {
    part++;
    if (part >= npart) {  // somebody didn't read the points of the last part
      return 0;
    }
  }
  header.minlat = header.maxlat = header.minlon = header.maxlon = 0.0F;
  header.index = index;
  header.num = segmentEnd() - parts[static_cast<size_t>(part)];
  return 1;
}

int MapFile::readData(EarthPoint& point) {
  if (!opened || access != 0 || cnt >= num) {
    return 0;
  }
  switch (type) {
    case BINARY: {
      const unsigned char* p = take(binary_point);
      if (p == nullptr) {
        num = cnt;
        return 0;
      }
      point.set(bigFloat(p), bigFloat(p + 4));
      break;
    }
    case TEXT:
      if (file.scanf("%99f %99f", &point.lat, &point.lon) != 2) {
        num = cnt;
        return 0;
      }
      break;
    case KML:
      if (kdata.getPoint(cnt, point) == 0) {
        return 0;
      }
      break;
    default: {
      if (cnt >= segmentEnd()) {
        return 0;
      }
      const unsigned char* p = take(shape_point);
      if (p == nullptr) {
        num = cnt;
        npart = part + 1;
        return 0;
      }
      point.set(littleDouble(p + 8), littleDouble(p));
      break;
    }
  }
  cnt++;
  return 1;
}

int MapFile::skipData() {
  if (!opened || access != 0) {
    return 0;
  }
  if (type == BINARY) {
    const int result = skipBytes(4L * (num - cnt));
    cnt = num;
    return result;
  }
  return passData();
}

int MapFile::passData() {
  if (!opened || access != 0) {
    return 0;
  }
  if (type == BINARY || type == SHAPE) {
    const int end = type == SHAPE ? segmentEnd() : num;
    const long size = type == SHAPE ? shape_point : binary_point;
    const int result = skipBytes(size * std::max(end - cnt, 0));
    cnt = std::max(end, cnt);
    return result;
  }
  EarthPoint point;
  while (readData(point) != 0) {
  }
  return 1;
}

int MapFile::writeHeader(const MapFileHeader& header) {
  if (!opened || access != 1) {
    return 0;
  }
  cnt = 0;
  num = header.num;
  if (type == TEXT) {
    return file.printf("%4d %9.4f %9.4f %9.4f %9.4f %5d\n", header.num,
                       static_cast<double>(header.maxlat), static_cast<double>(header.minlat),
                       static_cast<double>(header.maxlon), static_cast<double>(header.minlon),
                       header.index) > 0
               ? 1
               : 0;
  }
  return swap.writeInt2(file, static_cast<short>(header.num & 0xFFFF)) &
         swap.writeFloat(file, header.maxlat) & swap.writeFloat(file, header.minlat) &
         swap.writeFloat(file, header.maxlon) & swap.writeFloat(file, header.minlon) &
         swap.writeInt4(file, header.index);
}

int MapFile::writeData(const EarthPoint& point) {
  if (!opened || access != 1 || cnt >= num) {
    return 0;
  }
  cnt++;
  if (type == TEXT) {
    constexpr int per_line = 4;
    const bool ends_line = cnt % per_line == 0 || cnt == num;
    return file.printf("%8.4f %9.4f%s", static_cast<double>(point.lat),
                       static_cast<double>(point.lon), ends_line ? "\n" : "") > 0
               ? 1
               : 0;
  }
  return swap.writeFloat(file, point.lat) & swap.writeFloat(file, point.lon);
}

}  // namespace ZQV
