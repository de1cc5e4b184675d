#include "NidsFile.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "Const.h"
#include "Convert.h"
#include "Domain.h"
#include "EarthPoint.h"
#include "NidsInfo.h"
#include "String.h"
#include "Tools.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr int buffer_size = 100000;
/** Far above any product, of which those with a byte a bin have some hundred thousand; ends a small
 *  file that would decompress without end. */
constexpr int64_t max_unpacked = 32 << 20;
/** Largest count of bins or rows that becomes the size of an image. */
constexpr int max_size = 8192;
/** Largest length of any item in bytes: 65535 halfwords. Counters of used bytes stop above it,
 * where no length can meet them any more. */
constexpr int max_len = 2 * 65535;
/** What the feeds put behind a product: CR CR LF ETX. */
constexpr char trailer[] = "\r\r\n\003";
constexpr int trailer_size = 4;

constexpr int mess_block = 18;
constexpr int desc_block = 102;
constexpr int divider = 65535;
constexpr int day_secs = 86400;

enum FileType { PLAIN = 0, ZLIB = 1, REFUSED = 2, BZIP2 = 3 };

int getU2(const unsigned char* p) {
  return p[0] << 8 | p[1];
}

int getS2(const unsigned char* p) {
  return static_cast<int16_t>(getU2(p));
}

unsigned getU4(const unsigned char* p) {
  return static_cast<unsigned>(getU2(p)) << 16 | static_cast<unsigned>(getU2(p + 2));
}

int getS4(const unsigned char* p) {
  return static_cast<int>(getU4(p));
}

/** Seconds since 1970 from a day, where 1 is 1 January 1970, and the seconds of the day. */
int getTime(const unsigned char* days, const unsigned char* secs) {
  const int64_t t = static_cast<int64_t>(getU2(days)) * day_secs + getS4(secs) - day_secs;
  constexpr int64_t least = std::numeric_limits<int>::min();
  constexpr int64_t most = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(t, least, most));
}

int capSize(int n) {
  return std::clamp(n, 0, max_size);
}

/** Number of bytes used of an item, which stops where no length can meet it any more. */
int addUsed(int num, int n) {
  return std::min(num + n, max_len + 1);
}

/** A data level word: the value in the low byte, and flags above it. */
float decodeLevel(int i, int word) {
  const int low = word & 0xFF;
  auto value = static_cast<float>(low);
  constexpr float blank = -100;
  const auto whole = [&value] { return Tools::cut(static_cast<double>(value)); };
  if ((word & 0x8000) != 0) {
    Zqv::outDebug(3, "THRES: %d MISS-%2X\n", i, static_cast<unsigned>(low));
    value = blank;
    if ((word & 0x2) != 0) {
      value = -95;
    }
    // Takes in the words that were given -95 just now: deliberate, 0x8002 means -90.
    if ((word & 0x3) != 0) {
      value = -90;
    }
  }
  if (value == blank) {
    return value;
  }
  // Markers other than -100 are scaled like values: deliberate, 0xA002 gives -4.5.
  if ((word & 0x2000) != 0) {
    Zqv::outDebug(3, "THRES: %d - %d/20\n", i, whole());
    value /= 20;
  }
  if ((word & 0x1000) != 0) {
    Zqv::outDebug(3, "THRES: %d - %d/10\n", i, whole());
    value /= 10;
  }
  if ((word & 0x800) != 0) {
    Zqv::outDebug(3, "THRES: %d - >%d\n", i, whole());
    value += 0.01F;
  }
  if ((word & 0x400) != 0) {
    Zqv::outDebug(3, "THRES: %d - <%d\n", i, whole());
    value -= 0.01F;
  }
  if ((word & 0x100) != 0) {
    value = -value;
  }
  return value;
}

/** Cells of a radar's own products, by product code. */
struct SiteCell {
  std::array<int, 6> codes;  ///< unused places are 0
  float res;                 ///< km; the plane's dx too
  float dy;
  float range;  ///< km
};

constexpr SiteCell site_cells[] = {
    {{22, 25, 28}, 0.25F, 1, 57},
    {{23, 26, 29}, 0.5F, 1, 115},
    {{16, 19, 24, 27, 30}, 1, 1, 230},
    {{94}, 1, 1, 460},
    {{99}, 0.25F, 1, 230},
    {{17, 20}, 2, 1, 460},
    {{18, 21}, 4, 1, 460},
    {{181, 182}, 0.15F, 1, 90},
    {{186}, 0.3F, 1, 420},
    {{32}, 1, 1, 230},
    {{134}, 1, 1, 460},
    {{135}, 1, 1, 345},
    {{55}, 0.5F, 1, 50},
    {{56}, 1, 1, 230},
    {{35, 37}, 1, 1, 230},
    {{36, 38, 67}, 4, 4, 460},
    {{41, 57, 65, 66, 90}, 4, 4, 230},
    {{78, 79, 80, 220, 221, 222}, 2, 2, 230},
    {{141}, 1, 2, 230},
    {{138}, 2, 1, 230},
    {{81}, 0.047596F, 0.047596F, 230},
};

/** Cells of mosaics, km. */
struct MosaicCell {
  std::array<int, 5> codes;  ///< unused places are 0
  float size;
};

constexpr MosaicCell mosaic_cells[] = {
    {{6}, 8},
    {{139}, 1},
    {{137, 138, 140}, 2},
    {{199}, 1},
    {{200}, 2},
    {{201}, 8},
    {{202}, 16},
    {{180}, 4},
    {{105, 106}, 2},
    {{141}, 4},
    {{142}, 8},
    {{30, 103}, 4},
    {{95, 148}, 4},
    {{90, 101, 102}, 4},
    {{96, 149}, 8},
    {{91, 107, 108}, 8},
    {{203, 209, 210, 211, 212}, 1},
};

/** The row that lists the code, absent if there is none. Code 0 is no product's. */
template <class Row, size_t N>
const Row* findRow(const Row (&rows)[N], int code) {
  const auto* end = rows + N;
  const auto* row = std::find_if(rows, end, [code](const Row& r) {
    return std::find(r.codes.begin(), r.codes.end(), code) != r.codes.end();
  });
  return row == end || code == 0 ? nullptr : row;
}

/** Titles of mosaics, first match. */
struct MosaicTitle {
  int from;
  int to;
  const char* title;
};

constexpr MosaicTitle mosaic_titles[] = {
    {137, 144, "Base reflectivity [dBZ]"},
    {180, 180, "Base reflectivity [dBZ]"},
    {199, 200, "Winter reflectivity [dBZ]"},
    {203, 203, "Reflectivity at Lowest Alt [dBZ]"},
    {28, 65, "Composite reflectivity [dBZ]"},
    {103, 104, "Composite reflectivity [dBZ]"},
    {211, 211, "Composite reflectivity [dBZ]"},
    {6, 6, "WARP Comp reflectivity [dBZ]"},
    {90, 91, "Sfc 1 hr precipitation [in]"},
    {101, 101, "Sfc precipitation since 12Z [in]"},
    {105, 105, "Sfc precipitation since 12Z [in]"},
    {107, 107, "Sfc precipitation since 12Z [in]"},
    {102, 102, "Sfc 24 hr precipitation [in]"},
    {106, 106, "Sfc 24 hr precipitation [in]"},
    {108, 108, "Sfc 24 hr precipitation [in]"},
    {148, 149, "Vert int liquid [kg/m^3]"},
    {209, 209, "Vert int liquid [kg/m^3]"},
    {95, 96, "Echo tops [ft]"},
    {210, 210, "Echo tops-18dBZ [ft]"},
    {212, 212, "Echo tops-30dBZ [ft]"},
};

/** Packets that are known and have no reader. */
const char* unreadName(int code) {
  switch (code) {
    case NidsFile::PRECIP_SUPPLEMENT: return "Supplemental Precipitation Data\n";
    case NidsFile::LINKED_VECTOR:
    case NidsFile::VALUE_LINKED_VECTOR: return "Linked Vector Data\n";
    case NidsFile::VECTOR_ARROW: return "Vector Arrow Data\n";
    default: return "Special Symbolic Graphic Data\n";
  }
}

}  // namespace

int NidsFile::init() {
  close();
  file_type = comp_test = 0;
  unpacked = 0;
  in.init(buffer_size);
  buf.init(buffer_size);
  static_cast<NidsState&>(*this) = NidsState();
  date.init();
  dom.init();
  levels_made = false;
  return 1;
}

int NidsFile::open(const char* name) {
  init();
  if (file.open(name, "r") == 0) {
    return 0;
  }
  opened = true;
  comp_test = 1;
  return 1;
}

int NidsFile::close() {
  zs.finish();
  bz.finish();
  opened = false;
  return file.close();
}

/** Back to the state behind open(), so that a header can be read again. */
void NidsFile::rewind() {
  file.rewind();
  in.clear();
  buf.clear();
  file_type = PLAIN;
  comp_test = 1;
  unpacked = 0;
  static_cast<NidsState&>(*this) = NidsState();
  levels_made = false;
}

int NidsFile::skipLine() {
  char c = 0;
  int stat = 0;
  do {
    stat = file.read(&c, 1);
  } while (stat > 0 && c != '\n');
  return stat;
}

/** Fills in behind what is still unread. */
void NidsFile::fillIn() {
  in.clearUsed();
  const int before = in.getSize();
  const int after = file.read(in);
  Zqv::outDebug(4, "Read: %d isize: %d tell: %ld\n", after - before, in.getSize(), file.tell());
}

void NidsFile::cutTrailer() {
  if (in.equal(-trailer_size, trailer)) {
    in.trunc(-trailer_size);
  }
}

/** Within a compressed stream, whose bytes may look like anything. */
bool NidsFile::inStream() const {
  switch (file_type) {
    case ZLIB: return buf.getAvail() > 0 || zs.getStatus() != Z_STREAM_END;
    case BZIP2: return buf.getAvail() > 0 || bz.getStatus() != BZ_STREAM_END;
    default: return false;
  }
}

/** Looks for a signature where the file stands. @return 1; -1 if the data are encrypted */
int NidsFile::testCompression() {
  if (file_type == REFUSED) {
    return -1;
  }
  if (file_type == PLAIN && buf.equal(0, "R3")) {
    Zqv::outDebug(3, "Encrypted data\n");
    file_type = REFUSED;
    return -1;  // the test stays armed, so that every read ends here
  }
  comp_test = 0;
  if (inStream() || in.getAvail() < 2) {
    return 1;
  }
  const int first = in.get(0);
  if (first == 0x78 && getU2(in.get()) % 31 == 0) {
    Zqv::outDebug(3, "Zlib Compressed data\n");
    file_type = ZLIB;
    zs.init();
  } else if (first == 'B' && in.get(1) == 'Z') {
    Zqv::outDebug(3, "BZlib Compressed data\n");
    file_type = BZIP2;
    bz.init();
  }
  return 1;
}

void NidsFile::refillZlib() {
  // A step may eat a member's head or tail alone, where a fill of the file ends; then the next fill
  // goes on. Every turn eats something.
  for (;;) {
    const int unread = in.getAvail();
    zs.decomp(in, buf);
    if (Zqv::checkDebug(3)) {
      zs.print();
    }
    const bool stuck = in.getAvail() == unread;
    in.clearUsed();
    if (zs.isError() || stuck || buf.getAvail() > 0) {
      return;
    }
    if (in.getAvail() == 0) {
      fillIn();
      if (in.getSize() < in.getMax()) {
        cutTrailer();
      }
      if (in.getAvail() == 0) {
        return;
      }
    }
  }
}

void NidsFile::refillBZlib() {
  constexpr int tail_size = 10000;  // in this last bit of a file a trailer is looked for
  // Also without input, where a file that is cut short ends: a block that is whole still comes out.
  while (buf.getAvail() == 0) {
    const int unread = in.getAvail();
    bz.decomp(in, buf);
    const bool stuck = in.getAvail() == unread;
    if (bz.isError()) {
      buf.clear();  // came out ahead of the check sum that didn't fit
      return;
    }
    if (stuck && buf.getAvail() == 0) {
      return;
    }
    if (Zqv::checkDebug(3)) {
      bz.print();
    }
    if (file.endFile()) {
      in.clearUsed();
    } else {
      fillIn();
    }
    if (in.getSize() < tail_size) {
      cutTrailer();
    }
  }
}

/** Decompresses into buf, which is empty. What zlib gives ahead of an error counts, as a product's
 *  header stands there; bzip2 finds an error in a block behind the whole of it.
 *  @return 1; 0 if there is nothing more */
int NidsFile::refill() {
  buf.clear();
  if (unpacked >= max_unpacked) {
    return 0;
  }
  // A stream that has met an error must not be asked again: bzip2 would run wild.
  if (file_type == ZLIB && !zs.isError()) {
    refillZlib();
  } else if (file_type == BZIP2 && !bz.isError()) {
    refillBZlib();
  }
  unpacked += buf.getSize();
  return buf.getSize() > 0 ? 1 : 0;
}

int NidsFile::readBytes(void* dest, int count) {
  auto* to = static_cast<unsigned char*>(dest);
  int want = count;
  while (want > 0) {
    if (in.getAvail() == 0 && !file.endFile()) {
      fillIn();
      if (in.getSize() < in.getMax()) {
        cutTrailer();
      }
    }
    if (comp_test != 0 && testCompression() < 0) {
      return -1;
    }
    const bool has_input = in.getAvail() > 0 || file_type == BZIP2;
    if (file_type != PLAIN && buf.getAvail() == 0 && has_input && refill() == 0) {
      return 0;
    }
    Buffer& from = file_type == PLAIN ? in : buf;
    const int n = std::min(want, from.getAvail());
    if (n == 0) {
      return 0;
    }
    if (to != nullptr) {
      std::memcpy(to, from.get(), static_cast<size_t>(n));
      to += n;
    }
    from.inc(n);
    want -= n;
  }
  bytes += std::max(count, 0);
  return 1;
}

/** One byte, of which there are many. @return as readBytes */
inline int NidsFile::takeByte(int& v) {
  Buffer& from = file_type == PLAIN ? in : buf;
  if (comp_test == 0 && from.getAvail() > 0) {
    v = *from.get();
    from.inc(1);
    ++bytes;
    return 1;
  }
  unsigned char c = 0;
  const int stat = readBytes(&c, 1);
  v = c;
  return stat;
}

int NidsFile::readShort(short& v) {
  unsigned short u = 0;
  const int stat = readUshort(u);
  if (stat == 1) {
    v = static_cast<short>(u);
  }
  return stat;
}

int NidsFile::readUshort(unsigned short& v) {
  unsigned char b[2];
  const int stat = readBytes(b, sizeof b);
  if (stat == 1) {
    v = static_cast<unsigned short>(getU2(b));
  }
  return stat;
}

int NidsFile::readLong(int& v) {
  unsigned u = 0;
  const int stat = readUlong(u);
  if (stat == 1) {
    v = static_cast<int>(u);
  }
  return stat;
}

int NidsFile::readUlong(unsigned& v) {
  unsigned char b[4];
  const int stat = readBytes(b, sizeof b);
  if (stat == 1) {
    v = getU4(b);
  }
  return stat;
}

short NidsFile::readShort() {
  short v = 0;
  return readShort(v) == 1 ? v : short{0};
}

int NidsFile::readLong() {
  int v = 0;
  return readLong(v) == 1 ? v : 0;
}

/** Finds the message behind its envelope, which the first two bytes tell. */
int NidsFile::messHeader() {
  struct Envelope {
    unsigned char first, second;
    int lines;
  };
  static constexpr Envelope envelopes[] = {
      {0x01, 0x0D, 4},  // a feed's start-of-header line
      {'*', '*', 2},
      {'S', 'D', 2},    // heading of a bulletin
      {0x40, 0x0C, 2},  // control header
  };
  constexpr int inner_heading = 52;  // what a compressed message has ahead, less its first short

  unsigned char block[mess_block];
  if (!opened || file.read(block, 2) != 2) {
    return 0;
  }
  const auto* envelope = std::find_if(
      std::begin(envelopes), std::end(envelopes),
      [&block](const Envelope& e) { return e.first == block[0] && e.second == block[1]; });
  comp_test = 1;
  bytes = 0;
  uncounted = 2;  // the code of a bare message
  if (envelope != std::end(envelopes)) {
    uncounted = 0;
    for (int i = 0; i < envelope->lines && skipLine() > 0; ++i) {
    }
    if (readBytes(block, 2) != 1) {
      return 0;
    }
    if (file_type == ZLIB) {
      if (readBytes(nullptr, inner_heading) != 1) {
        return 0;
      }
      bytes = 0;
      if (readBytes(block, 2) != 1) {
        return 0;
      }
    }
  }
  code = getS2(block);
  levels_made = false;
  if (readBytes(block + 2, mess_block - 2) != 1) {
    return 0;
  }
  mess_date = getTime(block + 2, block + 4);
  mess_len = getS4(block + 8);
  src = getU2(block + 12);
  mess_blks = getU2(block + 16);
  Zqv::outDebug(3, "Code: %d\n", code);
  Zqv::outDebug(3, "Date: %d\n", mess_date);
  Zqv::outDebug(3, "Length: %d\n", mess_len);
  Zqv::outDebug(3, "Source: %d\n", src);
  Zqv::outDebug(3, "Number of blocks : %d\n", mess_blks);
  return 1;
}

int NidsFile::prodDesc() {
  unsigned char block[desc_block] = {};
  if (readBytes(block, 2) != 1 || getU2(block) != divider) {
    return 0;
  }
  described = true;
  // Of a block that is cut short the fields count that are there.
  const bool whole = readBytes(block + 2, desc_block - 2) == 1;
  lat = static_cast<float>(getS4(block + 2)) / 1000;
  lon = static_cast<float>(getS4(block + 6)) / 1000;
  elev = static_cast<float>(getS2(block + 10)) * 0.3048F;  // from feet
  mode = getS2(block + 14);
  vcp = getS2(block + 16);
  seq = getS2(block + 18);
  vol_scan = getS2(block + 20);
  vol_date = getTime(block + 22, block + 24);
  prod_date = getTime(block + 28, block + 30);
  param[0] = getS2(block + 34);
  param[1] = getS2(block + 36);
  scan_num = getS2(block + 38);
  param[2] = getS2(block + 40);
  for (size_t i = 0; i < ithres.size(); ++i) {
    ithres[i] = getS2(block + 42 + 2 * i);
  }
  for (size_t i = 3; i < param.size(); ++i) {
    param[i] = getS2(block + 74 + 2 * (i - 3));
  }
  nmaps = getS2(block + 88);
  off_symb = getS4(block + 90);
  off_graph = getS4(block + 94);
  off_tab = getS4(block + 98);
  decodeLevels();
  if (Zqv::checkMessage(8)) {
    printDesc();
  }
  return whole ? 1 : 0;
}

float NidsFile::float16(int word) {
  const int E = word >> 10 & 0x1F;
  const auto F = static_cast<float>(word & 0x3FF);
  // The sign, bit 15, is passed over: deliberate, the result is a magnitude.
  return E == 0 ? 2 * F / 1024 : std::ldexp(1 + F / 1024, E - 16);
}

/** Data levels from their words: a scale and an offset for digital products, else flagged values.
 */
void NidsFile::decodeLevels() {
  const auto word = [this](size_t i) { return static_cast<float>(ithres[i]); };
  const auto debug = [this] {
    Zqv::outDebug(3, "THRES: %.1f %.1f %.0f\n", static_cast<double>(thres[0]),
                  static_cast<double>(thres[1]), static_cast<double>(thres[2]));
  };
  thres.fill(0);
  levels_made = false;
  if (Zqv::checkDebug(3)) {
    for (size_t i = 0; i < ithres.size(); ++i) {
      Zqv::outDebug(3, "THRES #%d: %2X\n", static_cast<int>(i),
                    static_cast<unsigned>(ithres[i] & 0xFFFF));
    }
  }
  switch (code) {
    case 32:
    case 94:
    case 182:  // metres per second, unlike 99, though the title says knots: deliberate
      thres[0] = word(0) / 10;
      thres[1] = word(1) / 10;
      thres[2] = word(2);
      debug();
      break;
    case 81:
      thres[0] = word(0) / 1000;
      thres[1] = word(1) / 1000;
      thres[2] = word(2);
      debug();
      break;
    case 99:
      thres[0] = Convert::MStoKT(word(0) / 10);
      thres[1] = Convert::MStoKT(word(1) / 10);
      thres[2] = word(2);
      debug();
      break;
    case 134:
      thres[0] = float16(ithres[0]);
      thres[1] = float16(ithres[1]);
      thres[2] = word(2);
      thres[3] = float16(ithres[3]);
      thres[4] = float16(ithres[4]);
      Zqv::outDebug(3, "THRES: %.1f %.1f - %.0f - %.1f %.1f \n", static_cast<double>(thres[0]),
                    static_cast<double>(thres[1]), static_cast<double>(thres[2]),
                    static_cast<double>(thres[3]), static_cast<double>(thres[4]));
      break;
    case 135:
      for (size_t i = 0; i < 4; ++i) {
        thres[i] = word(i);
      }
      Zqv::outDebug(3, "THRES: Mask: %X - %.0f %.0f - %X\n", static_cast<unsigned>(ithres[0]),
                    static_cast<double>(thres[1]), static_cast<double>(thres[2]),
                    static_cast<unsigned>(ithres[3]));
      break;
    case 138:
      thres[0] = word(0) / 100;
      thres[1] = word(1) / 100;
      thres[2] = word(2);
      debug();
      break;
    default:
      for (size_t i = 0; i < thres.size(); ++i) {
        thres[i] = decodeLevel(static_cast<int>(i), ithres[i]);
      }
      break;
  }
  if (code == 186) {  // whatever the file says
    thres[0] = -32;
    thres[1] = 0.5F;
    thres[2] = 256;
  }
}

void NidsFile::printDesc() const {
  const auto real = [](float v) { return static_cast<double>(v); };
  Zqv::outMessage(8, "Latitude: %.3f\n", real(lat));
  Zqv::outMessage(8, "Longitude: %.3f\n", real(lon));
  Zqv::outMessage(8, "Height: %.0f\n", real(elev));
  Zqv::outMessage(8, "Operational Mode: %d\n", mode);
  Zqv::outMessage(8, "Volume Scan Number: %d\n", vol_scan);
  Zqv::outMessage(8, "Volume Scan Date: %d\n", vol_date);
  Zqv::outMessage(8, "Volume Coverage Pattern: %d\n", vcp);
  Zqv::outMessage(8, "Volume Sequence Number: %d\n", seq);
  Zqv::outMessage(8, "Product Generation date: %d\n", prod_date);
  Zqv::outMessage(8, "Scan Number: %d\n", scan_num);
  for (int i = 0; i < static_cast<int>(thres.size()); ++i) {
    Zqv::outMessage(8, "Threshold[%d]: %d %f\n", i + 1, getIthres(i), real(getThres(i)));
  }
  for (int i = 0; i < static_cast<int>(param.size()); ++i) {
    Zqv::outMessage(8, "Param[%d]: %d\n", i, getParam(i));
  }
  Zqv::outMessage(8, "Number of Maps: %d\n", nmaps);
  Zqv::outMessage(8, "Offset to Symbolics: %d\n", off_symb);
  Zqv::outMessage(8, "Offset to Graphics: %d\n", off_graph);
  Zqv::outMessage(8, "Offset to Tabular: %d\n", off_tab);
  Zqv::outMessage(8, "Params: %d %d %d\n", param[0], param[1], param[2]);
}

int NidsFile::prodSymb() {
  static constexpr int digital[] = {32, 94, 99, 134, 135, 138, 182, 186};
  if (std::find(std::begin(digital), std::end(digital), code) != std::end(digital)) {
    comp_test = 1;  // behind a plain header this block may be compressed
  }
  unsigned short v = 0;
  if (readUshort(v) != 1) {
    return 0;
  }
  if (v < divider) {
    Zqv::outWarning("No divider in symbology block\n");
    return 0;
  }
  short id = 0;
  unsigned short layers = 0;
  if (readShort(id) != 1 || id != 1 || readLong(prodsym_len) != 1 || readUshort(layers) != 1) {
    return 0;
  }
  prodsym_lyr = layers;
  return 1;
}

int NidsFile::prodSymbLayer() {
  unsigned short v = 0;
  return readUshort(v) == 1 && v == divider && readLong(prodsym_lyr_len) == 1 ? 1 : 0;
}

int NidsFile::readHeader(NidsInfo& info) {
  info.init();
  if (!opened) {
    return 0;
  }
  rewind();
  if (messHeader() == 0) {
    return 0;
  }
  prodDesc();
  prodSymb();
  prodSymbLayer();
  readPacket();

  info.src = src;
  info.lat = lat;
  info.lon = lon;
  info.mode = mode;
  info.code = code;
  info.vcp = vcp;
  info.seq = seq;
  info.type = pk_code;
  info.alt = elev;

  dom.init();
  dom.proj = DomainVal::PSTEREO;
  dom.clat = lat;
  dom.clon = lon;
  setCellSize();
  setSize();
  settleDomain();
  if (Zqv::checkDebug(2)) {
    dom.print();
  }
  setExtremes();
  info.nx = nx;
  info.ny = ny;
  info.res = res;
  info.cres = dom.dx;
  info.elev = scan_elev;
  info.max = max;
  info.nmax = nmax;
  info.thres = thres;

  if (const char* title = findTitle(); title != nullptr) {
    info.setInfo(title);
  } else {
    String text;
    text.printf("Not supported - %d", code);
    info.setInfo(text.get());
  }
  setMisc(info);
  date.set(static_cast<long>(vol_date));
  info.date = date;
  info.vol_date = vol_date;
  info.prod_date = prod_date;
  info.mess_date = mess_date;
  return 1;
}

/** Resolution, cell size in km and range from the product code. */
void NidsFile::setCellSize() {
  res = 0;
  range = 0;
  dom.dx = dom.dy = 1;  // an unknown product still has a place on a map
  if (const SiteCell* cell = findRow(site_cells, code); cell != nullptr) {
    res = dom.dx = cell->res;
    dom.dy = cell->dy;
    range = cell->range;
  }
  if (isMosaic()) {
    range = 0;
    dom.proj = DomainVal::LAMB;
    if (const MosaicCell* cell = findRow(mosaic_cells, code); cell != nullptr) {
      res = dom.dx = dom.dy = cell->size;
    }
  }
  if (isVAD()) {
    res = dom.dx = dom.dy = range = 1;
  }
}

/** Size of the image from the head of the first packet. */
void NidsFile::setSize() {
  constexpr int wind_profile = 512;  // side of the page that the product is laid out for
  constexpr int plain = 460;
  if (pk_code == RASTER || pk_code == PRECIP_ARRAY) {
    nx = capSize(nrow);
  } else if (isPacketRadial()) {
    nx = 2 * capSize(nbin);
  } else {
    nx = isVAD() ? wind_profile : plain;
  }
  ny = dom.nx = dom.ny = nx;
  if (isMosaic()) {
    nx = dom.nx = capSize(param[9]);
  }
}

/** Projection and spacing by family of products. */
void NidsFile::settleDomain() {
  if (isVAD()) {
    dom.proj = DomainVal::PIXEL;
    const int row_mid = (dom.ny - 1) / 2;  // in whole pixels
    const int col_mid = (dom.nx - 1) / 2;
    dom.clat = static_cast<float>(row_mid);
    dom.clon = static_cast<float>(col_mid);
  } else if (isDPA()) {
    dom.proj = DomainVal::PSTEREO;
    dom.plat = 90;
    dom.plon = -105;
    dom.dx = dom.dy = 0.047596F;
  } else if (!isMosaic()) {
    dom.plat = dom.clat;
    dom.plon = dom.clon;
    dom.nx = dom.ny = dom.ny + 1;
    const Domain plane(dom);
    float factor = plane.getMapFactor(EarthPoint(lat, lon));
    if (!std::isfinite(factor) || factor <= 0) {
      factor = 1;  // no such place on the earth
    }
    dom.dx = dom.dy = factor * dom.dx / 100;
  } else {
    // The national mosaics' Lambert plane.
    constexpr float mosaic_scale = 1.00137F;
    dom.proj = DomainVal::LAMB;
    dom.plat = 90;
    dom.plon = -98;
    dom.dx = dom.dx * mosaic_scale / 100;
    dom.dy = dom.dy * mosaic_scale / 100;
    dom.param[0] = 33;
    dom.param[1] = 45;
  }
}

/** Elevation angle, largest and most negative value. */
void NidsFile::setExtremes() {
  const auto value = [this](size_t i) { return static_cast<float>(param[i]); };
  if (isBRef() || isBSW() || isVel() || isSRVel()) {
    scan_elev = value(2) / 10;
  }
  if (isVel() || isSRVel()) {
    nmax = value(3);
    max = value(4);
  } else if (isPrec() || isDPA() || (code >= 220 && code <= 222)) {
    max = value(3) / 10;
  } else if (isDSP()) {
    max = value(3) / 100;
  } else {
    max = value(3);
  }
}

/** @return absent for an unknown product */
const char* NidsFile::findTitle() const {
  struct Title {
    bool fits;
    const char* title;
  };
  const Title titles[] = {
      {isBRef() || code == 186, "Base reflectivity [dBZ]"},
      {isVel(), "Base velocity [knt]"},
      {isBSW(), "Base spectrum width [knt]"},
      {isCRef(), "Comp reflectivity [dBZ]"},
      {isTops(), "Echo tops [1000 ft]"},
      {isEnhTops(), "Enh Echo tops [1000 ft]"},
      {isVAD(), "VAD wind profile [knt]"},
      {isSRVel(), "Stm rel mn rad velocity [knt]"},
      {isVIL(), "Vert int liquid [kg/m^3]"},
      {isDigVIL(), "Digital vert int liquid [kg/m^3]"},
      {isDHR(), "Digital hyb reflectivity [dBZ]"},
      {code == 65, "Layer 1 comp refl [max dBZ]"},
      {code == 66, "Layer 2 comp refl [max dBZ]"},
      {code == 67, "Comp refl APR [dBZ]"},
      {code == 90, "Layer 3 comp refl [max dBZ]"},
      {code == 78 || code == 220, "Sfc 1 hr rainfall acc. [in]"},
      {code == 79 || code == 221, "Sfc 3 hr rainfall acc. [in]"},
      {code == 80 || code == 222, "Sfc storm total rainfall acc. [in]"},
      {code == 81, "Digital precip array [in]"},
      {isDSP(), "Digital storm precip [in]"},
      {code == 141, "Mesocyclone detection [??]"},
  };
  const auto* title =
      std::find_if(std::begin(titles), std::end(titles), [](const Title& t) { return t.fits; });
  if (title != std::end(titles)) {
    return title->title;
  }
  if (!isMosaic()) {
    return nullptr;
  }
  const auto* mosaic =
      std::find_if(std::begin(mosaic_titles), std::end(mosaic_titles),
                   [this](const MosaicTitle& t) { return code >= t.from && code <= t.to; });
  return mosaic == std::end(mosaic_titles) ? nullptr : mosaic->title;
}

/** The label tail. */
void NidsFile::setMisc(NidsInfo& info) {
  const auto real = [](float v) { return static_cast<double>(v); };
  String text;
  switch (mode) {
    case 0: info.setMisc("Md=mt"); break;
    case 1: info.setMisc("Md=cl"); break;
    case 2: info.setMisc("Md=pr"); break;
    default: break;
  }
  if (isMosaic()) {
    text.printf(" Res=%3.1f", real(res));
    info.addMisc(text.get());
  } else if (!isVAD() && !isSRVel()) {
    text.printf(" Rng=%3.0f(%3.1f)", real(range), real(res));
    info.addMisc(text.get());
  }
  if (isBRef() || isVel() || isSRVel()) {
    text.printf(" El=%.1f", real(scan_elev));
    info.addMisc(text.get());
  }
  if (code == 80 || code == 138 || code == 222) {
    // Day 1 isn't taken for 1 January 1970 here, and param[5] counts as seconds: deliberate.
    date.set(static_cast<long>(param[4]) * day_secs + param[5]);
    text.printf(" B=%d/%.2d:%.2d", date.getDay(), date.getHour(), date.getMinute());
    info.addMisc(text.get());
  }
  if (isSRVel()) {
    text.printf(" Stm=%.0f-%.0f", real(static_cast<float>(param[8]) / 10),
                real(static_cast<float>(param[7]) / 10));
    info.addMisc(text.get());
  }
  if (isLRef()) {
    text.printf(" Lyr=%d-%d", param[4], param[5]);
    info.addMisc(text.get());
  }
  if (isVel() || isSRVel()) {
    text.printf(" Mn,Mx=%.0f,%.0f", real(nmax), real(max));
  } else if (isDSP()) {
    text.printf(" Mx=%.2f", real(max));
  } else if (isPrec() || isDPA() || (code >= 220 && code <= 222)) {
    text.printf(" Mx=%.1f", real(max));
  } else {
    text.printf(" Mx=%.0f", real(max));
  }
  info.addMisc(text.get());
}

int NidsFile::getParam(int i) const {
  return i < 0 || i >= static_cast<int>(param.size()) ? Const::MISS : param[static_cast<size_t>(i)];
}

int NidsFile::getIthres(int i) const {
  return i < 0 || i >= static_cast<int>(ithres.size()) ? Const::MISS
                                                       : ithres[static_cast<size_t>(i)];
}

float NidsFile::getThres(int i) const {
  return i < 0 || i >= static_cast<int>(thres.size()) ? Const::FMISS
                                                      : thres[static_cast<size_t>(i)];
}

void NidsFile::dump(int n, int which) const {
  (which != 0 ? buf : in).dump(0, n);
}

/** Drops what is left of a packet that has no reader. @return 1; 0 at the end of the data */
int NidsFile::skipPending() {
  const int n = pending;
  pending = 0;
  return readBytes(nullptr, n) == 1 ? 1 : 0;
}

int NidsFile::readPacket() {
  if (!opened || lost) {
    return 0;
  }
  if (skipPending() == 0) {
    return -1;
  }
  if (nbytes > 0 && bytes >= nbytes) {
    return 0;
  }
  unsigned short v = 0;
  if (readUshort(v) != 1) {
    return -1;
  }
  pk_code = v;
  Zqv::outDebug(3, "Packets\n");
  Zqv::outDebug(3, "Packet Code: %d %X\n", pk_code, static_cast<unsigned>(pk_code));
  return readHead();
}

/** The head behind the packet's code. Of a head that is cut short the rest reads as 0.
 *  @return as readPacket */
int NidsFile::readHead() {
  unsigned char head[20] = {};
  const auto take = [this, &head](const char* name, int n) {
    Zqv::outDebug(3, "%s", name);
    return readBytes(head, n) == 1;
  };
  bool whole = false;
  switch (pk_code) {
    case RADIAL:
    case DIGITAL_RADIAL:
      whole = take(pk_code == RADIAL ? "Radial Data\n" : "Digital Radial Data Array\n", 12);
      bin0 = getS2(head);
      nbin = getU2(head + 2);
      nrad = getU2(head + 10);
      rad = 0;
      if (pk_code == DIGITAL_RADIAL && !levels_made) {
        makeLevels();
      }
      Zqv::outDebug(3, "Index of first range bin: %d\n", bin0);
      Zqv::outDebug(3, "Number of range bins: %d\n", nbin);
      Zqv::outDebug(3, "Number of radials: %d\n", nrad);
      break;
    case RASTER:
    case RASTER_7:
      whole = take("Rastor Data\n", 20);
      pk_code = RASTER;
      col0 = getS2(head + 4);
      row0 = getS2(head + 6);
      nrow = getU2(head + 16);
      pack = getS2(head + 18);
      row = 0;
      Zqv::outDebug(3, "I coordinate start: %d\n", col0);
      Zqv::outDebug(3, "J coordinate start: %d\n", row0);
      Zqv::outDebug(3, "Number of rows: %d\n", nrow);
      Zqv::outDebug(3, "Packing: %d\n", pack);
      break;
    case PRECIP_ARRAY:
      whole = take("Digital Precipitation Array Data\n", 8);
      ncol = getU2(head + 4);
      nrow = getU2(head + 6);
      col = row = 0;
      Zqv::outDebug(3, "Number of LFM boxes in row: %d\n", ncol);
      Zqv::outDebug(3, "Number of rows: %d\n", nrow);
      break;
    case TEXT:
    case VALUE_TEXT:
      // Both have a value word ahead of the position: deliberate, though other readers know
      // packets of code 1 without one.
      whole = take("Uniform Text Data\n", 8);
      len = getU2(head) - 6;
      val = getS2(head + 2);
      col = getS2(head + 4);
      row = getS2(head + 6);
      Zqv::outDebug(3, "Length: %d\n", len);
      Zqv::outDebug(3, "Value: %d\n", val);
      Zqv::outDebug(3, "I: %d\n", col);
      Zqv::outDebug(3, "J: %d\n", row);
      break;
    case VECTOR:
      whole = take("Unlinked Vector Data\n", 2);
      len = getU2(head);
      val = num = 0;
      Zqv::outDebug(3, "Length: %d\n", len);
      break;
    case VALUE_VECTOR:
      whole = take("Unlinked Vector Data\n", 4);
      len = getU2(head) - 2;
      val = getS2(head + 2);
      num = 0;
      Zqv::outDebug(3, "Length: %d\n", len);
      Zqv::outDebug(3, "Value: %d\n", val);
      break;
    case WIND_BARB:
      whole = take("Wind Barb Data\n", 2);
      len = getU2(head);
      num = 0;
      Zqv::outDebug(3, "Length: %d\n", len);
      break;
    case PRECIP_SUPPLEMENT:
    case LINKED_VECTOR:
    case VALUE_LINKED_VECTOR:
    case VECTOR_ARROW:
    case 3:
    case 11:
    case 12:
    case 13:
    case 14:
    case 15:
      whole = take(unreadName(pk_code), 2);
      len = pending = getU2(head);
      num = 0;
      Zqv::outDebug(3, "Length: %d\n", len);
      break;
    default: lost = true; return 0;
  }
  return whole ? pk_code : -1;
}

/** Value of a level of a digital radial. 32-bit arithmetic in this order: zero velocity lies on a
 *  class boundary. */
float NidsFile::digitalLevel(int level) const {
  if (level < 2) {
    return Const::FMISS;  // below threshold, range folded
  }
  const auto v = static_cast<float>(level);
  if (isDigVIL()) {  // logarithmic from the level thres[2] on
    return thres[2] <= v ? std::exp((v - thres[4]) / thres[3]) : (v - thres[1]) / thres[0];
  }
  if (isEnhTops()) {  // the mask takes off the bit of tops above the highest beam
    return static_cast<float>(level & ithres[0]) / thres[1] - thres[2];
  }
  return v * thres[1] + thres[0];
}

void NidsFile::makeLevels() {
  for (size_t i = 0; i < levels.size(); ++i) {
    const float v = digitalLevel(static_cast<int>(i));
    levels[i] = std::isfinite(v) ? v : Const::FMISS;  // scales of 0
  }
  levels_made = true;
}

/** The data level that a word of the file points to; level 0 for those that don't exist. */
float NidsFile::levelOf(int i) const {
  return thres[i < 0 || i >= static_cast<int>(thres.size()) ? 0 : static_cast<size_t>(i)];
}

int NidsFile::readRadial(NidsRadial& radial) {
  if (!opened || rad >= nrad) {
    return 0;
  }
  unsigned char head[6];
  if (readBytes(head, sizeof head) != 1) {
    return -1;
  }
  // The length counts halfwords where runs are packed.
  len = pk_code == DIGITAL_RADIAL ? getU2(head) : 2 * getU2(head);
  radial.ang0 = ang0 = static_cast<float>(getS2(head + 2)) / 10;
  radial.ang1 = ang1 = static_cast<float>(getS2(head + 4)) / 10;
  bin = num = 0;
  ++rad;
  Zqv::outDebug(3, "Number of bytes: %d\n", len);
  Zqv::outDebug(3, "Start angle: %.1f\n", static_cast<double>(ang0));
  Zqv::outDebug(3, "Angle delta: %.1f\n", static_cast<double>(ang1));
  return 1;
}

int NidsFile::readRastor() {
  if (!opened || row >= nrow) {
    return 0;
  }
  unsigned short n = 0;
  if (readUshort(n) != 1) {
    return -1;
  }
  len = n;
  col = num = 0;
  ++row;
  Zqv::outDebug(4, "Row: %d\n", row);
  Zqv::outDebug(3, "Number of bytes: %d\n", len);
  return 1;
}

int NidsFile::readLevels(const unsigned char*& at) {
  Buffer& from = file_type == PLAIN ? in : buf;
  if (pk_code != DIGITAL_RADIAL || !opened || comp_test != 0 || num >= len) {
    return 0;
  }
  const int n = std::min(len - num, from.getAvail());
  if (n <= 0) {
    return 0;
  }
  at = from.get();
  from.inc(n);
  bytes += n;
  num += n;
  return n;
}

int NidsFile::readRun(NidsRun& run) {
  int a = 0;
  int b = 0;
  if (pk_code == DIGITAL_RADIAL) {
    if (!opened || num == len) {
      return 0;
    }
    if (takeByte(a) != 1) {
      return -1;
    }
    run.run = 1;
    run.ival = a;
    run.val = levels[static_cast<size_t>(a)];
    num = addUsed(num, 1);
    return 1;
  }
  if (pk_code == PRECIP_ARRAY) {
    // Ends by cells, not bytes; runs beyond the last cell go on to the end of the data.
    if (!opened || col == ncol) {
      return 0;
    }
    if (takeByte(a) != 1 || takeByte(b) != 1) {
      return -1;
    }
    constexpr int outside = 255;
    run.run = a;
    run.ival = b;
    run.val = b < outside ? static_cast<float>(b) * thres[1] + thres[0] : Const::FMISS;
    col = addUsed(col, a);
    return 1;
  }
  if (!opened || num == len) {
    return 0;
  }
  if (takeByte(a) != 1) {
    return -1;
  }
  if (pk_code == RASTER && pack == 1) {
    if (takeByte(b) != 1) {
      return -1;
    }
    run.run = a;
    run.ival = b;
    run.val = static_cast<float>(b >> 4) * 100 + thres[static_cast<size_t>(b & 15)];
    num = addUsed(num, 2);
    return 1;
  }
  run.run = a >> 4;
  run.ival = a & 15;
  run.val = thres[static_cast<size_t>(run.ival)];
  num = addUsed(num, 1);
  return 1;
}

int NidsFile::readVector(NidsVector& vect) {
  if (!opened || num == len || len < 0) {
    return 0;
  }
  unsigned char item[8];
  if (readBytes(item, sizeof item) != 1) {
    return -1;
  }
  vect.val = static_cast<float>(val);
  vect.x1 = static_cast<float>(getS2(item));
  vect.y1 = static_cast<float>(getS2(item + 2));
  vect.x2 = static_cast<float>(getS2(item + 4));
  vect.y2 = static_cast<float>(getS2(item + 6));
  num = addUsed(num, sizeof item);
  return 1;
}

int NidsFile::skipVector() {
  NidsVector vect;
  int stat = 0;
  while ((stat = readVector(vect)) > 0) {
  }
  return stat;
}

int NidsFile::readWind(NidsWind& wind) {
  if (!opened || num == len) {
    return 0;
  }
  unsigned char item[10];
  if (readBytes(item, sizeof item) != 1) {
    return -1;
  }
  wind.val = levelOf(getS2(item));
  wind.x = static_cast<float>(getS2(item + 2));
  wind.y = static_cast<float>(getS2(item + 4));
  wind.dir = static_cast<float>(getS2(item + 6));
  wind.spd = static_cast<float>(getS2(item + 8));
  num = addUsed(num, sizeof item);
  return 1;
}

int NidsFile::skipWind() {
  NidsWind wind;
  int stat = 0;
  while ((stat = readWind(wind)) > 0) {
  }
  return stat;
}

int NidsFile::readText(NidsText& text) {
  if (!opened) {
    return 0;
  }
  text.val = levelOf(val);
  text.x = static_cast<float>(col);
  text.y = static_cast<float>(row);
  text.data.fill('\0');
  const int kept = std::clamp(len, 0, static_cast<int>(text.data.size()) - 1);
  if (readBytes(text.data.data(), kept) == 1) {
    skipChars(len - kept);
  }
  return 1;
}

int NidsFile::skipText() {
  if (!opened) {
    return 0;
  }
  skipChars(len);
  return 1;
}

/** Drops n characters, of which a text's length may say fewer than none. */
void NidsFile::skipChars(int n) {
  // What isn't there can't be dropped; the next read finds the end of the data.
  static_cast<void>(readBytes(nullptr, std::max(n, 0)));
}

int NidsFile::gotoGraphic() {
  if (!opened) {
    return 0;
  }
  int64_t left = int64_t{2} * off_graph - bytes - uncounted;
  if (left < 0) {
    return 1;
  }
  pending = 0;
  pk_code = 0;  // a divider met on the way isn't that of the graphic block
  while (left > 0) {
    const int n = static_cast<int>(std::min<int64_t>(left, buffer_size));
    if (readBytes(nullptr, n) != 1) {
      return 0;
    }
    left -= n;
  }
  return 1;
}

int NidsFile::graphic() {
  if (!opened || off_symb == 0 || skipPending() == 0) {
    return 0;
  }
  Zqv::outDebug(1, "Graphic Alphanumeric\n");
  if (pk_code != DIVIDER) {  // else it ended the packets
    unsigned short v = 0;
    if (readUshort(v) != 1 || v < divider) {
      return 0;
    }
  }
  short id = 0;
  unsigned short pages = 0;
  if (readShort(id) != 1 || id != 2 || readLong(len) != 1 || readUshort(pages) != 1) {
    return 0;
  }
  num_graph = pages;
  Zqv::outDebug(3, "Length: %d\n", len);
  Zqv::outDebug(3, "Number of Pages: %d\n", num_graph);
  return 1;
}

int NidsFile::graphicLayer() {
  if (!opened || off_graph == 0 || skipPending() == 0) {
    return 0;
  }
  Zqv::outDebug(2, "Graphic Alphanumeric Layer\n");
  short page = 0;
  if (readShort(page) != 1 || page < 1 || page > num_graph) {
    return 0;
  }
  unsigned short n = 0;
  if (readUshort(n) != 1) {
    return 0;
  }
  nbytes = n;
  bytes = 0;
  lost = false;
  Zqv::outDebug(3, "Number: %d\n", page);
  Zqv::outDebug(3, "Number of bytes: %d\n", nbytes);
  return page;
}

}  // namespace ZQV
