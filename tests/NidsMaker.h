#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "NidsFile.h"
#include "NidsInfo.h"

namespace ZQV {

/** Makes NIDS products for tests, byte by byte from the layout of the format. Fill the fields, add
 *  packets to layers and pages, and build. */
class NidsMaker {
 public:
  /** What the feed puts ahead of the message. */
  enum Envelope {
    BARE,        ///< nothing
    START_LINE,  ///< start-of-header line and bulletin heading, 4 lines
    STARS,       ///< "**" line and another
    HEADING,     ///< bulletin heading "SDUS..", 2 lines
    CONTROL      ///< 24-byte control header and bulletin heading
  };
  enum Packing {
    PLAIN,
    ZLIB,         ///< everything behind the envelope, with another heading inside
    BZIP2,        ///< likewise as one bzip2 stream, which has no heading inside
    BZIP2_BEHIND  ///< message header and description block plain, the rest bzip2
  };
  struct Radial {
    double ang0;              ///< start angle, degrees
    double ang1;              ///< width, degrees
    std::vector<int> levels;  ///< bin by bin
  };
  struct Vector {
    int x1, y1, x2, y2;
  };
  struct Wind {
    int value, x, y, dir, spd;
  };
  using Rows = std::vector<std::vector<int>>;  ///< levels row by row, from the upper left

  Envelope envelope = HEADING;
  Packing packing = PLAIN;
  size_t member_size = 0;  ///< bytes in a zlib member, 0 for all in one
  int zlib_level = 9;      ///< 0 stores the bytes as they are
  bool trailer = false;    ///< CR CR LF ETX at the end
  int code = 19;
  int mess_days = 18752;  ///< 4 May 2021, as day 1 is 1 January 1970
  int mess_secs = 60000;
  int src = 302;
  double lat = 35.333;
  double lon = -97.278;
  int height_ft = 1277;
  int mode = 2;
  int vcp = 212;
  int seq = 7;
  int vol_scan = 33;
  int vol_days = 18752;
  int vol_secs = 59970;
  int prod_days = 18752;
  int prod_secs = 59995;
  int scan_num = 1;
  std::array<int, 10> param{};
  /** Data level words; those of 16-level reflectivity in 5 dBZ steps unless set. */
  std::array<int, 16> level_words = {0x8002, 5,  10, 15, 20, 25, 30, 35,
                                     40,     45, 50, 55, 60, 65, 70, 75};
  int desc_divider = 0xFFFF;
  int symb_divider = 0xFFFF;
  int symb_id = 1;
  std::vector<std::string> layers;  ///< packets of each layer of the symbology
  std::vector<std::string> pages;   ///< packets of each page of the graphic block
  std::string tail;                 ///< whatever stands behind the blocks

  /** The message from its code on, not compressed. */
  [[nodiscard]] std::string message() const;
  /** The whole file. */
  [[nodiscard]] std::string build() const;

  static std::string u2(int v);
  static std::string u4(int64_t v);

  /** Packets. Levels up to 15 are packed by runs, filled up to a halfword by a run of none. */
  static std::string radials(const std::vector<Radial>& list);
  /** Levels up to 255, one byte a bin. @param nbin  as the head says it; the longest radial's if
   * negative */
  static std::string digital(const std::vector<Radial>& list, int nbin = -1);
  static std::string raster(const Rows& rows, int packet_code = 0xBA0F);
  /** Packed by pairs of run and level byte. */
  static std::string raster8(const Rows& rows);
  static std::string array(const Rows& rows);
  static std::string vectors(const std::vector<Vector>& list);
  static std::string vectors(int value, const std::vector<Vector>& list);
  static std::string winds(const std::vector<Wind>& list);
  static std::string text(int value, int x, int y, const std::string& chars, int packet_code = 8);
  /** A packet that is known and has no reader. */
  static std::string other(int packet_code, const std::string& payload);

  static std::string zlib(const std::string& data, int level = 9);
  static std::string bzip2(const std::string& data);
};

/** A file of the test's own, gone when the test is over. */
class TempFile {
 public:
  explicit TempFile(const std::string& data);
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;
  ~TempFile();

  void write(const std::string& data) const;
  [[nodiscard]] const char* name() const { return path.c_str(); }

 private:
  std::string path;
};

/** A product in a file of its own, open, its header read. */
class Opened {
 public:
  explicit Opened(const NidsMaker& maker) : Opened(maker.build()) {}
  explicit Opened(const std::string& data) : file(data) {
    EXPECT_EQ(nids.open(file.name()), 1);
    EXPECT_EQ(nids.readHeader(info), 1);
  }
  NidsFile nids;
  NidsInfo info;

 private:
  TempFile file;
};

/** All that a renderer would draw of a product, as lines of text: "radial", "row", "run", "vector",
 *  "wind", "text", "page" with their numbers. */
class NidsWalk {
 public:
  /** Walks the packets from the one that readHeader has begun, then the pages.
   *  @param lines  write the text, which takes its time on large products */
  explicit NidsWalk(NidsFile& nids, bool lines = true);

  struct Ray {
    float ang0, ang1;
  };
  struct Line {
    int page;  ///< from 1; 0 in the symbology
    float x, y;
    std::string data;
  };
  std::vector<int> packets;  ///< codes in the order met, symbology only
  std::vector<Ray> rays;
  std::vector<int> rows;             ///< cells of each row
  std::vector<unsigned char> cells;  ///< levels, runs expanded
  std::vector<Line> texts;
  int zero_runs = 0;
  int pages = 0;
  std::string text;  ///< the lines
};

}  // namespace ZQV
