#pragma once

#include <array>
#include <cstdint>

#include "BZlib.h"
#include "Buffer.h"
#include "Date.h"
#include "DomainVal.h"
#include "File.h"
#include "NidsPacket.h"
#include "Zlib.h"

namespace ZQV {

class NidsInfo;

/** What a NidsFile knows of its product: the headers, and where it stands among the packets. Kept
 *  apart so that one assignment forgets a product. */
struct NidsState {
  int code = 0;
  bool described = false;  ///< the product description block was there
  int mess_date = 0;
  int mess_len = 0;
  int src = 0;
  int mess_blks = 0;
  float lat = 0;
  float lon = 0;
  float elev = 0;
  int mode = 0;
  int vol_scan = 0;
  int vol_date = 0;
  int vcp = 0;
  int seq = 0;
  int prod_date = 0;
  std::array<int, 10> param{};
  std::array<int, 16> ithres{};
  std::array<float, 16> thres{};
  int nmaps = 0;
  int off_symb = 0;
  int off_graph = 0;
  int off_tab = 0;
  int prodsym_len = 0;
  int prodsym_lyr = 0;
  int prodsym_lyr_len = 0;

  int pk_code = 0;
  int rad = 0;
  int bin = 0;
  int nrad = 0;
  int nbin = 0;
  int bin0 = 0;
  float ang0 = 0;
  float ang1 = 0;
  int row = 0;
  int col = 0;
  int nrow = 0;
  int ncol = 0;
  int row0 = 0;
  int col0 = 0;
  int len = 0;
  int num = 0;
  int val = 0;
  int64_t bytes = 0;
  int uncounted = 0;  ///< bytes of the message ahead of those counted
  int nbytes = 0;
  int pack = 0;
  bool lost =
      false;        ///< a code was met that isn't known: where the next packet starts is not known
  int pending = 0;  ///< bytes of a packet without a reader, still to be passed over

  float res = 0;
  int nx = 0;
  int ny = 0;
  int scan_num = 0;
  float scan_elev = 0;
  float range = 0;
  float max = 0;
  float nmax = 0;
  int num_graph = 0;
};

/** Reader of one NEXRAD Level III (NIDS) product. Strips the envelope of the feed, decompresses on
 *  the way, decodes the headers, and hands out the packets as a stream: nothing of the image is
 *  kept. The calls are open, readHeader, then readPacket and the reader that fits it, until
 *  readPacket gives 0; then graphic, graphicLayer and readPacket for the pages of text.
 *  readHeader has already read the head of the first packet. */
class NidsFile : private NidsState {
 public:
  /** Codes of packets, see readPacket. */
  enum Packet {
    TEXT = 1,
    WIND_BARB = 4,
    VECTOR_ARROW = 5,
    LINKED_VECTOR = 6,
    VECTOR = 7,
    VALUE_TEXT = 8,
    VALUE_LINKED_VECTOR = 9,
    VALUE_VECTOR = 10,
    DIGITAL_RADIAL = 16,
    PRECIP_ARRAY = 17,
    PRECIP_SUPPLEMENT = 18,
    RADIAL = 44831,
    RASTER_7 = 47623,
    RASTER = 47631,
    DIVIDER = 65535
  };
  /** Source identifiers above it are those of mosaics. */
  static constexpr int max_site = 9999;

  NidsFile() { init(); }
  NidsFile(const NidsFile&) = delete;
  NidsFile& operator=(const NidsFile&) = delete;
  ~NidsFile() = default;

  /** Forgets the stream and what was read from it. @return 1 */
  int init();
  /** Closes an open file first. @return 1; 0 if it can't be opened, and nothing is reported */
  [[nodiscard]] int open(const char* name);
  /** @return 1; 0 if not open */
  int close();
  [[nodiscard]] bool isOpen() const { return opened; }

  /** Rewinds and reads all headers and the head of the first packet. What can't be read of the
   *  blocks behind the message header stays zero. @return 1; 0 if not open, or without a message
   *  header (info is then empty) */
  int readHeader(NidsInfo& info);

  /** The four blocks of the header in their order. @return 1; 0 if cut short or wrong */
  int messHeader();
  int prodDesc();
  int prodSymb();
  int prodSymbLayer();

  /** Skips a line of the envelope, straight from the file. @return what the last read gave: 1; 0 at
   *  the end; -1 if not open */
  int skipLine();
  /** Takes bytes of the product, decompressed. They count towards the offset in the message only if
   *  all are there. @param dest  absent: they are dropped. @return 1; 0 at the end of the data or
   *  where it can't be decompressed (dest holds what came before); -1 if it is encrypted */
  [[nodiscard]] int readBytes(void* dest, int count);
  /** Big-endian numbers. @return as readBytes, with v left alone on failure */
  [[nodiscard]] int readShort(short& v);
  [[nodiscard]] int readUshort(unsigned short& v);
  [[nodiscard]] int readLong(int& v);
  [[nodiscard]] int readUlong(unsigned& v);
  /** The number itself, 0 on failure. */
  short readShort();
  int readLong();

  /** Reads the head of the next packet, behind which its reader goes on. Packets that have no
   *  reader are passed over by the next call. @return the code, 47631 for any raster; 0 if not
   * open, at the end of a page, or for an unknown code, which getPacketCode() then tells; -1 at the
   * end of the data */
  int readPacket();
  [[nodiscard]] bool isPacketRadial() const {
    return pk_code == RADIAL || pk_code == DIGITAL_RADIAL;
  }
  [[nodiscard]] bool isPacketRastor() const { return pk_code == RASTER; }
  /** Not true of linked vectors and arrows, which nobody reads. */
  [[nodiscard]] bool isPacketVector() const { return pk_code == VECTOR || pk_code == VALUE_VECTOR; }
  [[nodiscard]] bool isPacketWindbarb() const { return pk_code == WIND_BARB; }
  [[nodiscard]] bool isPacketText() const { return pk_code == TEXT || pk_code == VALUE_TEXT; }
  [[nodiscard]] bool isPacketDpa() const { return pk_code == PRECIP_ARRAY; }

  /** Head of the next radial. @return 1; 0 after the last, or if not open; -1 if cut short */
  int readRadial(NidsRadial& radial);
  /** Head of the next row of a raster or a precipitation array. @return likewise */
  int readRastor();
  /** Next run of the radial or row. @return 1; 0 at its end; -1 if cut short */
  int readRun(NidsRun& run);
  /** Bytes of a digital radial that lie at hand, each a run of one bin; readRun() goes on behind
   * them. They stay until the next read.
   *  @return how many; 0 for other packets too */
  int readLevels(const unsigned char*& at);
  /** Physical value of a byte of a digital radial; Const::FMISS where there is none. */
  [[nodiscard]] float getLevel(unsigned char byte) const { return levels[byte]; }
  /** @return 1; 0 after the packet's last; -1 if cut short */
  int readVector(NidsVector& vect);
  int skipVector();
  /** As readVector. A packet whose length is no multiple of 10 runs on to the end of the data:
   *  deliberate, the length is taken at its word. */
  int readWind(NidsWind& wind);
  int skipWind();
  /** @return 1; 0 if not open */
  int readText(NidsText& text);
  int skipText();

  /** Drops what stands ahead of the graphic block, which ends the packets wherever they were. A
   *  stream that has come past its beginning stays. @return 1; 0 at the end of the data */
  int gotoGraphic();
  /** Head of the block of graphic pages. @return 1; 0 if there is none */
  int graphic();
  /** Head of the next page; readPacket then ends with the page. @return its number, from 1; 0 after
   *  the last */
  int graphicLayer();

  /** Product classes. */
  [[nodiscard]] bool isBRef() const {
    return (code >= 16 && code <= 21) || code == 94 || code == 181;
  }
  [[nodiscard]] bool isVel() const {
    return (code >= 22 && code <= 27) || code == 99 || code == 182;
  }
  [[nodiscard]] bool isBSW() const { return code >= 28 && code <= 30; }
  [[nodiscard]] bool isCRef() const { return code >= 35 && code <= 38; }
  [[nodiscard]] bool isTops() const { return code == 41; }
  [[nodiscard]] bool isEnhTops() const { return code == 135; }
  [[nodiscard]] bool isSRVel() const { return code == 55 || code == 56; }
  [[nodiscard]] bool isLRef() const { return code == 65 || code == 66 || code == 89 || code == 90; }
  [[nodiscard]] bool isVIL() const { return code == 57; }
  [[nodiscard]] bool isDigVIL() const { return code == 134; }
  [[nodiscard]] bool isVAD() const { return code == 48; }
  [[nodiscard]] bool isPrec() const { return code >= 78 && code <= 80; }
  [[nodiscard]] bool isDPA() const { return code == 81; }
  [[nodiscard]] bool isDSP() const { return code == 138; }
  [[nodiscard]] bool isDHR() const { return code == 32 || code == 186; }
  /** Of a national or regional mosaic, not of one radar. */
  [[nodiscard]] bool isMosaic() const { return src > max_site; }

  [[nodiscard]] int getCode() const { return code; }
  /** Code of the packet last read, also of one that isn't known. */
  [[nodiscard]] int getPacketCode() const { return pk_code; }
  [[nodiscard]] int getSrc() const { return src; }
  [[nodiscard]] int getMessDate() const { return mess_date; }
  [[nodiscard]] int getMessLen() const { return mess_len; }
  [[nodiscard]] float getLat() const { return lat; }
  [[nodiscard]] float getLon() const { return lon; }
  /** Height of the radar, metres. */
  [[nodiscard]] float getElev() const { return elev; }
  [[nodiscard]] int getMode() const { return mode; }
  [[nodiscard]] int getVcp() const { return vcp; }
  [[nodiscard]] int getSeq() const { return seq; }
  [[nodiscard]] int getVolScan() const { return vol_scan; }
  [[nodiscard]] int getVolDate() const { return vol_date; }
  [[nodiscard]] int getProdDate() const { return prod_date; }
  /** Volume scan date. */
  [[nodiscard]] const Date& getDate() const { return date; }
  /** Product-dependent value i, from 0; Const::MISS out of 0 to 9. */
  [[nodiscard]] int getParam(int i) const;
  /** Data level word i as it stands in the file, Const::MISS out of 0 to 15. */
  [[nodiscard]] int getIthres(int i) const;
  /** Data level i, Const::FMISS out of 0 to 15. */
  [[nodiscard]] float getThres(int i) const;
  [[nodiscard]] const std::array<float, 16>& getThres() const { return thres; }
  /** The header was read as far as the description of the product: there is something to draw. */
  [[nodiscard]] bool isDescribed() const { return described; }
  [[nodiscard]] int getOffSymb() const { return off_symb; }
  [[nodiscard]] int getOffGraph() const { return off_graph; }
  [[nodiscard]] int getOffTab() const { return off_tab; }
  [[nodiscard]] int getNumLayers() const { return prodsym_lyr; }
  [[nodiscard]] int getNrad() const { return nrad; }
  [[nodiscard]] int getNbin() const { return nbin; }
  [[nodiscard]] int getBin0() const { return bin0; }
  [[nodiscard]] int getNrow() const { return nrow; }
  [[nodiscard]] int getNcol() const { return ncol; }
  [[nodiscard]] int getRow0() const { return row0; }
  [[nodiscard]] int getCol0() const { return col0; }
  /** Byte length of the current item. */
  [[nodiscard]] int getLen() const { return len; }
  /** Pages of the graphic block, known after graphic(). */
  [[nodiscard]] int getNumGraph() const { return num_graph; }
  [[nodiscard]] int getNx() const { return nx; }
  [[nodiscard]] int getNy() const { return ny; }
  /** Resolution, km; 0 for an unknown product. */
  [[nodiscard]] float getRes() const { return res; }
  /** Nominal range, km; 0 for a mosaic. */
  [[nodiscard]] float getRange() const { return range; }
  [[nodiscard]] int getScanNum() const { return scan_num; }
  /** Elevation angle, degrees. */
  [[nodiscard]] float getScanElev() const { return scan_elev; }
  [[nodiscard]] float getMax() const { return max; }
  [[nodiscard]] float getNmax() const { return nmax; }
  /** 0 plain, 1 zlib, 2 refused, 3 bzip2. */
  [[nodiscard]] int getFileType() const { return file_type; }
  [[nodiscard]] DomainVal getDomainVal() const { return dom; }

  /** A data level word as a 16-bit float: 5 bits of exponent, 10 of fraction. Never negative, bit
   * 15 is passed over: deliberate. */
  static float float16(int word);

  /** Hex dump of n bytes of the decompressed data, or of the file's. */
  void dump(int n, int which) const;

 private:
  void rewind();
  void fillIn();
  void cutTrailer();
  [[nodiscard]] bool inStream() const;
  int testCompression();
  void refillZlib();
  void refillBZlib();
  int refill();
  int takeByte(int& v);

  void decodeLevels();
  void printDesc() const;
  void makeLevels();
  [[nodiscard]] float digitalLevel(int level) const;
  [[nodiscard]] float levelOf(int i) const;

  void setCellSize();
  void setSize();
  void settleDomain();
  void setExtremes();
  [[nodiscard]] const char* findTitle() const;
  void setMisc(NidsInfo& info);

  int readHead();
  int skipPending();
  void skipChars(int n);

  File file;
  bool opened = false;
  DomainVal dom;
  Date date;
  int file_type = 0;
  int comp_test = 0;
  Buffer in;
  Buffer buf;
  Zlib zs;
  BZlib bz;
  int64_t unpacked = 0;  ///< bytes decompressed so far

  bool levels_made = false;         ///< levels fit thres and code
  std::array<float, 256> levels{};  ///< values of the levels of a digital radial
};

}  // namespace ZQV
