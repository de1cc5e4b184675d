#include "Lev2File.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "CityTool.h"
#include "Const.h"
#include "EarthPoint.h"
#include "Lev2Data.h"
#include "Lev2Info.h"
#include "StrLib.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr int window = 200000;  ///< decompressed bytes held, above any message
/** Far above any record, of which those seen have up to 700000 bytes; a damaged length asks for
 * more. */
constexpr int64_t max_record = 32 << 20;
/** Far above any volume, of which the largest have some hundred million bytes; ends a small file
 * that would decompress without end. */
constexpr int64_t max_unpacked = 512 << 20;

constexpr const char* site_file = "rad.cty";
constexpr float default_lat = 38.98F;
constexpr float default_lon = -77.48F;
constexpr size_t max_id = 9;
constexpr int64_t day_secs = 86400;

constexpr int transport_head = 12;
constexpr int message_head = 16;
constexpr int fixed_size = 2420;  ///< of any message but 31, behind the transport header
constexpr int body1_size = 68;
constexpr int body31_size = 56;
constexpr int moment_size = 28;

/** Gates of message 1 from the pointer on, behind the transport header. Radars put them 12 bytes
 * earlier, right behind the message header: deliberate. */
constexpr int gates1 = 28;
/** The same of message 31: message header and head of the data block. */
constexpr int gates31 = message_head + moment_size;

constexpr float angle_unit = 0.0439453125F;  // degrees, in eighths
constexpr float thousandth = 1000.0F;

/** Numbers in a row of bytes. */
class Cursor {
 public:
  explicit Cursor(const unsigned char* bytes) : p(bytes) {}
  void skip(int n) { p += n; }
  int u1() { return *p++; }
  int u2() {
    const int v = p[0] << 8 | p[1];
    p += 2;
    return v;
  }
  int u4() {
    const auto high = static_cast<unsigned>(u2());
    return static_cast<int>(high << 16 | static_cast<unsigned>(u2()));
  }
  float f4() { return std::bit_cast<float>(u4()); }
  float scaled(float unit) { return static_cast<float>(u2()) / unit; }
  float angle() { return static_cast<float>(u2()) / 8.0F * angle_unit; }
  /** Up to n characters, those that aren't printable as blanks. */
  std::string text(int n) {
    std::string s;
    for (int i = 0; i < n && p[i] != '\0'; i++) {
      s += p[i] < ' ' || p[i] > '~' ? ' ' : static_cast<char>(p[i]);
    }
    skip(n);
    return s;
  }

 private:
  const unsigned char* p;
};

int signedByte(int v) {
  constexpr int half = 128;
  return v < half ? v : v - 2 * half;
}

bool isGzip(const unsigned char* bytes) {
  return bytes[0] == 0x1F && bytes[1] == 0x8B;
}

bool isBzip2(const unsigned char* bytes) {
  return std::memcmp(bytes, "BZh", 3) == 0 && bytes[3] >= '1' && bytes[3] <= '9';
}

/** Data blocks that aren't velocity, though the velocity pointer of a surveillance cut may lead to
 * one. */
bool isOtherMoment(const std::array<char, 4>& name) {
  constexpr const char* others[] = {"DREF", "DZDR", "DPHI", "DRHO", "DCFP"};
  const auto is = [&name](const char* other) {
    return std::equal(name.begin(), name.end(), other);
  };
  return std::any_of(std::begin(others), std::end(others), is) ||
         (std::memcmp(name.data(), "DSW", 3) == 0 && (name[3] == ' ' || name[3] == '\0'));
}

float valueOf(int level, float scl, float off) {
  if (level < 2) {
    return level == 1 ? Lev2File::range_folded : Lev2File::below_threshold;
  }
  const float v = scl == 0.0F ? NAN : (static_cast<float>(level) - off) / scl;
  return std::isfinite(v) ? v : Lev2File::below_threshold;
}

}  // namespace

Lev2File::Lev2File(const char* name, int compressed) {
  init();
  open(name, compressed);
}

int Lev2File::init() {
  close();
  compress = chain = false;
  id.clear();
  lat = lon = 0;
  refl = vel = spect = Scale();
  resetStream();
  return 1;
}

/** Nothing read, nothing held. */
void Lev2File::resetStream() {
  ahead.stop();
  bz.finish();
  date.init();
  isize = iptr = iavail = 0;
  osize = oavail = 0;
  optr = -1;
  pending = 0;
  unpacked = 0;
  failed = false;
  blk_off = blk_size = 0;
  msg_type = 0;
  scan_type = REFLECTIVITY;
  refl_ptr = vel_ptr = spect_ptr = vol_ptr = elev_ptr = rad_ptr = 0;
  num_refl = num_vel = 0;
}

int Lev2File::open(const char* name, int compressed) {
  close();
  resetStream();
  if (compressed == 1) {
    compress = true;
  }
  if (file.open(name, "r") == 0) {
    return 0;
  }
  opened = true;
  readHead();
  if (head_num >= 2 && isGzip(head.data())) {
    close();
    return 0;
  }
  in.resize(window);
  out.resize(window);
  return 1;
}

int Lev2File::close() {
  ahead.stop();
  opened = false;
  head_num = head_ptr = 0;
  return file.close();
}

int Lev2File::setAhead(int num_threads) {
  ahead_threads = std::max(num_threads, 0);
  return 1;
}

int Lev2File::setCompress(int flag) {
  compress = flag != 0;
  return 1;
}

int Lev2File::setId(const char* text) {
  id = StrLib::acopy(text).substr(0, max_id);
  return 1;
}

/** Reads the volume header, and with it as much as tells a chain of records from plain messages. */
int Lev2File::readHead() {
  head_num = std::max(file.read(head.data(), head.size()), 0);
  head_ptr = std::min(head_num, head_size);
  chain = compress || (head_num == head_size + peek_size && isBzip2(&head[head_size + 4]));
  return head_num;
}

int Lev2File::getHeader(Lev2Info& info) {
  if (!opened) {
    return 0;
  }
  resetStream();
  if (file.rewind() != 0) {
    readHead();
  } else if (head_ptr > head_size) {
    stop();
    return 0;
  }
  const bool whole = head_num >= head_size;
  info.date.init();
  info.id = id;
  if (whole) {
    constexpr int name_size = 12;
    Cursor cursor(head.data() + name_size);
    const int64_t days = cursor.u4();
    const int64_t msecs = cursor.u4();
    date.set(static_cast<long>((days - 1) * day_secs + msecs / 1000));
    cursor.skip(1);
    const std::string site = cursor.text(3);
    if (id.empty()) {
      info.id = site;
    }
  }
  info.date = date;
  EarthPoint place;
  if (!StrLib::validData(info.getId()) || CityTool::locate(site_file, info.getId(), place) == 0) {
    place.set(default_lat, default_lon);
  }
  info.lat = lat = place.lat;
  info.lon = lon = place.lon;
  if (!whole) {
    stop();
  }
  return whole ? 1 : 0;
}

/** No more input. */
void Lev2File::stop() {
  failed = true;
}

/** Bytes of the file behind the volume header. @return bytes read */
int Lev2File::readFile(unsigned char* dest, int n) {
  const int held = std::clamp(head_num - head_ptr, 0, n);
  std::copy_n(head.begin() + head_ptr, held, dest);
  head_ptr += held;
  return held + std::max(file.read(dest + held, static_cast<size_t>(n - held)), 0);
}

/** Fills the input: one record of a chain, or what the window has room for. @return isize */
int Lev2File::readRecord() {
  iptr = isize = 0;
  if (chain) {
    isize = ahead.isStarted() ? ahead.next() : std::max(readChained(in), 0);
  } else {
    isize = readFile(in.data(), std::clamp(window - (osize - blk_off), 0, window));
  }
  return isize;
}

/** One record of a chain, into bytes that grow for it. @return bytes read, -1 behind the last */
int Lev2File::readChained(std::vector<unsigned char>& bytes) {
  std::array<unsigned char, 4> word{};
  if (readFile(word.data(), word.size()) < static_cast<int>(word.size())) {
    return -1;
  }
  // The last record of a volume has a negative length.
  const int64_t stated = std::abs(static_cast<int64_t>(Cursor(word.data()).u4()));
  const int length = static_cast<int>(std::min(stated, max_record));
  int size = 0;
  while (size < length) {
    // They grow by what the file holds, not by what the record states.
    if (size == static_cast<int>(bytes.size())) {
      bytes.resize(static_cast<size_t>(std::min<int64_t>(2 * static_cast<int64_t>(size), length)));
    }
    const int part = std::min(length, static_cast<int>(bytes.size())) - size;
    const int n = readFile(bytes.data() + size, part);
    size += n;
    if (n < part) {
      break;
    }
  }
  return size;
}

/** What the feeds put behind a file, where the last read was a short one.
 *  @param left  of the input before
 *  @return size, without it */
int Lev2File::cutTrailer(const std::vector<unsigned char>& bytes, int size, int left) {
  constexpr int short_read = 1000;
  constexpr unsigned char trailer[] = {'\r', '\r', '\n', '\003'};
  constexpr int trailer_size = sizeof(trailer);
  const bool cuts =
      size < short_read - left && size >= trailer_size &&
      std::equal(std::begin(trailer), std::end(trailer), bytes.begin() + size - trailer_size);
  return cuts ? size - trailer_size : size;
}

/** Moves the message at hand to the window's start. */
void Lev2File::compact() {
  if (blk_off <= 0) {
    return;
  }
  Zqv::outDebug(6, chain ? "XX %d %d %d %d\n" : "YX %d %d %d %d\n", blk_off, osize, optr, oavail);
  // The message may begin behind what is held, when the one before it ends there.
  const int held = std::max(osize - blk_off, 0);
  pending += std::max(blk_off - osize, 0);
  std::memmove(out.data(), out.data() + std::min(blk_off, osize), static_cast<size_t>(held));
  osize = held;
  optr -= blk_off;
  oavail = osize - optr;
  blk_off = 0;
  Zqv::outDebug(6, chain ? "XY %d %d %d %d\n" : "YY %d %d %d %d\n", blk_off, osize, optr, oavail);
}

/** Decompresses into the rest of the window. @return bytes made, -1 on an error */
int Lev2File::unpack(bool fresh) {
  const int room = window - osize;
  if (ahead.isStarted()) {
    const int made = ahead.read(out.data() + osize, room);
    const BZahead::End end = ahead.getEnd();
    return take(made, end == BZahead::WHOLE, end == BZahead::FAULT);
  }
  if (fresh) {
    bz.init();
    bz.setIn(in.data(), isize);
  }
  bz.setOut(out.data() + osize, room);
  bz.decomp();
  if (Zqv::checkDebug(3)) {
    bz.print();
  }
  iavail = bz.getAvailIn();
  iptr = isize - iavail;
  return take(room - bz.getAvailOut(), bz.getStatus() == BZ_STREAM_END, bz.isError());
}

/** Takes decompressed bytes into the window. @return made, -1 on an error */
int Lev2File::take(int made, bool whole, bool fault) {
  // What came out ahead of a fault is as good as the rest.
  if ((fault && made < 1) || unpacked > max_unpacked) {
    return -1;
  }
  Zqv::outDebug(6, "NSIZE: %d \n", made);
  unpacked += made;
  osize += made;
  oavail += made;
  Zqv::outDebug(6, "XZ %d %d %d %d\n", blk_off, osize, optr, oavail);
  if (fault) {
    stop();
    return made;
  }
  // A stream whose input has ended stands still.
  return made == 0 && !whole ? -1 : made;
}

/** Whether the record at hand has given all that it has. */
bool Lev2File::isRecordDone() {
  return ahead.isStarted() ? ahead.getEnd() == BZahead::WHOLE : bz.getStatus() == BZ_STREAM_END;
}

/** Drops bytes of a message that was left behind. @return bytes that are left of those made */
int Lev2File::dropPending(int made) {
  const int drop = std::min(pending, osize);
  if (drop > 0) {
    std::memmove(out.data(), out.data() + drop, static_cast<size_t>(osize - drop));
    osize -= drop;
    oavail -= drop;
    pending -= drop;
  }
  return made - drop;
}

int Lev2File::readData() {
  Zqv::outDebug(4, "Data: %d %d - %d %d %d %d\n", isize, iptr, osize, optr, oavail, blk_off);
  if (failed || !opened) {
    return 0;
  }
  // A record may end just where the window was full before: then the next one gives the bytes.
  for (int made = 0; made == 0;) {
    compact();
    if (osize >= window) {
      return 0;  // no message is that long
    }
    const bool fresh = isize == 0 || !chain || isRecordDone();
    if (fresh) {
      // The lines about the stream tell of steps taken in turn.
      const bool told = Zqv::checkDebug(3) || Zqv::checkDebug(4) || Zqv::checkDebug(6);
      if (chain && ahead_threads > 0 && !told && !ahead.isStarted()) {
        ahead.start(ahead_threads, [this](std::vector<unsigned char>& bytes) {
          bytes.resize(window);
          const int size = readChained(bytes);
          bytes.resize(static_cast<size_t>(cutTrailer(bytes, std::max(size, 0), 0)));
          return size >= 0;
        });
      }
      readRecord();
      Zqv::outDebug(3, "Read: %d %d - %d\n", isize, iptr, iavail);
      if (!ahead.isStarted()) {
        isize = cutTrailer(in, isize, iavail);
      }
      if (isize < 1) {
        isize = 0;
        return -1;
      }
    }
    if (chain) {
      made = unpack(fresh);
    } else {
      made = std::min(isize, window - osize);
      unpacked += made;
      if (unpacked > max_unpacked) {
        made = -1;
      }
      std::copy_n(in.begin(), std::max(made, 0), out.begin() + osize);
      osize += std::max(made, 0);
      oavail += std::max(made, 0);
      Zqv::outDebug(6, "YZ %d %d %d %d\n", blk_off, osize, optr, oavail);
    }
    if (made < 0) {
      stop();
      return 0;
    }
    made = dropPending(made);
  }
  return 1;
}

int Lev2File::readBytes(void* dest, int n) {
  if (n < 0 || (n > oavail && readData() < 1) || n > oavail || optr < 0 || optr > osize - n) {
    return 0;
  }
  std::copy_n(out.begin() + optr, n, static_cast<unsigned char*>(dest));
  optr += n;
  oavail -= n;
  return n;
}

int Lev2File::boffset(int n) {
  Zqv::outDebug(6, "OF-OPTRa: %d - %d %d %d %d\n", n, blk_off, osize, optr, oavail);
  if (n > oavail) {
    readData();
  }
  optr = std::max(optr, 0) + n;
  oavail = osize - optr;
  Zqv::outDebug(6, "OF-OPTR: %d %d %d %d\n", blk_off, osize, optr, oavail);
  return 1;
}

/** Where the message at hand ends in the window. */
int Lev2File::messageEnd() const {
  return blk_off + transport_head + blk_size;
}

int Lev2File::bseek(int64_t off) {
  if (off < 0 || off > blk_size) {
    return 0;
  }
  const int step = static_cast<int>(off) + transport_head;
  if (blk_off + step > osize) {
    readData();
  }
  if (blk_off + step > osize) {
    return 0;
  }
  optr = blk_off + step;
  oavail = osize - optr;
  return 1;
}

int Lev2File::nextBlock() {
  Zqv::outDebug(6, "BK-OPTRa: %d - %d %d %d %d\n", blk_size, blk_off, osize, optr, oavail);
  if (blk_size >= osize - blk_off) {
    readData();
  }
  optr = messageEnd();
  oavail = osize - optr;
  Zqv::outDebug(6, "BK-OPTR: %d %d %d %d\n", blk_off, osize, optr, oavail);
  return 1;
}

int Lev2File::getByte() {
  return signedByte(getUByte());
}

int Lev2File::getUByte() {
  unsigned char v = 0;
  readBytes(&v, 1);
  return v;
}

int Lev2File::getShort() {
  std::array<unsigned char, 2> bytes{};
  readBytes(bytes.data(), bytes.size());
  return Cursor(bytes.data()).u2();
}

int Lev2File::getLong() {
  std::array<unsigned char, 4> bytes{};
  readBytes(bytes.data(), bytes.size());
  return Cursor(bytes.data()).u4();
}

float Lev2File::getFloat() {
  return std::bit_cast<float>(getLong());
}

int Lev2File::getBlock(Lev2Data& data) {
  if (!opened) {
    return 0;
  }
  blk_off = std::max(optr, 0);
  boffset(transport_head);
  std::array<unsigned char, message_head> bytes{};
  if (isize < 1 || readBytes(bytes.data(), message_head) == 0) {
    return 0;
  }
  Cursor cursor(bytes.data());
  blk_size = 2 * cursor.u2();
  cursor.skip(1);
  data.type = msg_type = signedByte(cursor.u1());
  data.seq = cursor.u2();
  data.date = cursor.u2();
  data.time = cursor.u4();
  data.num_seg = cursor.u2();
  data.seg_num = cursor.u2();
  if (msg_type < 0) {
    Zqv::outWarning("Invalid message type\n");
    return 0;
  }
  if (msg_type != 31) {
    blk_size = fixed_size;
  }
  Zqv::outDebug(2, "Block-type: %d size: %d seq: %d seg: %d nseg: %d\n", msg_type, blk_size,
                data.seq, data.seg_num, data.num_seg);
  switch (msg_type) {
    case 1: return readMessage1(data);
    case 31: return readMessage31(data);
    default: return 1;
  }
}

int Lev2File::readMessage1(Lev2Data& data) {
  std::array<unsigned char, body1_size> bytes{};
  if (readBytes(bytes.data(), body1_size) == 0) {
    return 0;
  }
  Cursor cursor(bytes.data());
  data.coll_time = cursor.u4();
  data.mod_date = cursor.u2();
  data.range = cursor.scaled(10);
  data.rad_az = cursor.angle();
  data.rad_num = cursor.u2();
  data.rad_status = cursor.u2();
  data.elev_ang = cursor.angle();
  data.elev_num = cursor.u2();
  data.first_refl = cursor.scaled(thousandth);
  data.first_vel = cursor.scaled(thousandth);
  data.refl_size = cursor.scaled(thousandth);
  data.vel_size = cursor.scaled(thousandth);
  data.num_refl = num_refl = cursor.u2();
  data.num_vel = num_vel = cursor.u2();
  data.sector_num = cursor.u2();
  cursor.skip(4);
  data.refl_ptr = refl_ptr = cursor.u2();
  data.vel_ptr = vel_ptr = cursor.u2();
  data.spect_ptr = spect_ptr = cursor.u2();
  const int resolution = cursor.u2();
  data.vel_res = static_cast<float>(resolution);
  data.cov_patt = cursor.u2();
  cursor.skip(16);
  data.nyquist_vel = cursor.scaled(100);
  data.atmos_atten = cursor.scaled(thousandth);
  data.threshold_param = cursor.scaled(10);
  data.az_space = 1;
  constexpr int half_metre = 2;
  refl = {0, 8, 2.0F, 66.0F};
  vel = {0, 8, resolution == half_metre ? 2.0F : 1.0F, 129.0F};
  spect = {0, 8, 2.0F, 129.0F};
  return 1;
}

/** Head of a data block of gates. @return false if it lies outside of the message */
bool Lev2File::readMoment(int64_t ptr, std::array<char, 4>& name, Scale& scale, int& num,
                          float& first, float& spacing) {
  std::array<unsigned char, moment_size> bytes{};
  if (ptr == 0 || bseek(ptr + message_head) == 0 || readBytes(bytes.data(), moment_size) == 0) {
    return false;
  }
  std::copy_n(bytes.begin(), name.size(), name.begin());
  Cursor cursor(bytes.data() + 8);
  num = cursor.u2();
  first = cursor.scaled(thousandth);
  spacing = cursor.scaled(thousandth);
  cursor.skip(5);
  scale.bits = cursor.u1();
  scale.scl = cursor.f4();
  scale.off = cursor.f4();
  Zqv::outDebug(5, "bits: %d\n", scale.bits);
  Zqv::outDebug(5, "scale: %f\n", static_cast<double>(scale.scl));
  Zqv::outDebug(5, "offset: %f\n", static_cast<double>(scale.off));
  return true;
}

int Lev2File::readMessage31(Lev2Data& data) {
  std::array<unsigned char, body31_size> bytes{};
  if (readBytes(bytes.data(), body31_size) == 0) {
    return 0;
  }
  Cursor cursor(bytes.data());
  data.id = cursor.text(4);
  data.coll_time = cursor.u4();
  data.mod_date = cursor.u2();
  data.rad_num = cursor.u2();
  data.rad_az = cursor.f4();
  data.comp = cursor.u1();
  cursor.skip(1);
  data.rad_len = cursor.u2();
  data.az_space = cursor.u1() == 1 ? 0.5F : 1.0F;
  data.rad_status = cursor.u1();
  data.elev_num = cursor.u1();
  data.sector_num = cursor.u1();
  data.elev_ang = cursor.f4();
  data.rad_blank = cursor.u1();
  data.az_index = cursor.u1();
  data.blk_count = cursor.u2();
  data.vol_ptr = vol_ptr = cursor.u4();
  data.elev_ptr = elev_ptr = cursor.u4();
  data.rad_ptr = rad_ptr = cursor.u4();
  data.refl_ptr = refl_ptr = cursor.u4();
  data.vel_ptr = vel_ptr = cursor.u4();
  data.spect_ptr = spect_ptr = cursor.u4();

  const auto reach = [this](int ptr, void* dest, int n) {
    return ptr != 0 && bseek(static_cast<int64_t>(ptr) + message_head) != 0 &&
           readBytes(dest, n) != 0;
  };
  constexpr int volume_size = 42;
  constexpr int elevation_size = 8;
  constexpr int radial_size = 18;
  std::array<unsigned char, volume_size> block{};
  if (reach(vol_ptr, block.data(), volume_size)) {
    Cursor volume(block.data());
    volume.skip(8);
    data.lat = volume.f4();
    data.lon = volume.f4();
    data.elev = volume.u2();
    volume.skip(22);
    data.cov_patt = volume.u2();
  }
  if (reach(elev_ptr, block.data(), elevation_size)) {
    data.atmos_atten = Cursor(block.data() + 6).scaled(thousandth);
  }
  if (reach(rad_ptr, block.data(), radial_size)) {
    data.nyquist_vel = Cursor(block.data() + 16).scaled(100);
  }
  num_refl = num_vel = Const::MISS;
  data.first_refl = data.first_vel = data.refl_size = data.vel_size = Const::FMISS;
  std::array<char, 4> name{};
  if (!readMoment(refl_ptr, name, refl, num_refl, data.first_refl, data.refl_size)) {
    refl_ptr = 0;
  }
  Scale scale;
  int num = Const::MISS;
  float first = Const::FMISS;
  float spacing = Const::FMISS;
  if (readMoment(vel_ptr, name, scale, num, first, spacing) && !isOtherMoment(name)) {
    vel = scale;
    num_vel = num;
    data.first_vel = first;
    data.vel_size = spacing;
  } else {
    vel_ptr = 0;
  }
  data.num_refl = num_refl;
  data.num_vel = num_vel;
  return 1;
}

int Lev2File::setDataType(int wanted) {
  scan_type = wanted;
  const int gates = msg_type == 1 ? gates1 : gates31;
  switch (wanted) {
    case REFLECTIVITY: return refl_ptr != 0 ? bseek(static_cast<int64_t>(refl_ptr) + gates) : 0;
    case VELOCITY: return vel_ptr != 0 ? bseek(static_cast<int64_t>(vel_ptr) + gates) : 0;
    case SPECTRUM_WIDTH:
      // By the pointer to reflectivity, counted from the window's start, with nothing else moved:
      // deliberate.
      if (refl_ptr <= 0 || refl_ptr > osize - gates1) {
        return 0;
      }
      optr = refl_ptr + gates1;
      return 1;
    default: return 0;
  }
}

int Lev2File::getNumData() const {
  switch (scan_type) {
    case REFLECTIVITY: return num_refl;
    case VELOCITY:
    case SPECTRUM_WIDTH: return num_vel;
    default: return 0;
  }
}

void Lev2File::getValues(Values& values) const {
  const Scale none;
  const Scale& scale = scan_type == REFLECTIVITY     ? refl
                       : scan_type == VELOCITY       ? vel
                       : scan_type == SPECTRUM_WIDTH ? spect
                                                     : none;
  for (int i = 0; i < static_cast<int>(values.size()); i++) {
    values[static_cast<size_t>(i)] = valueOf(i, scale.scl, scale.off);
  }
}

float Lev2File::getData() {
  int n = 0;
  const unsigned char* level = getGates(n);
  if (n < 1) {
    return below_threshold;
  }
  optr++;
  oavail--;
  switch (scan_type) {
    case REFLECTIVITY: return valueOf(*level, refl.scl, refl.off);
    case VELOCITY: return valueOf(*level, vel.scl, vel.off);
    default: return valueOf(*level, spect.scl, spect.off);
  }
}

const unsigned char* Lev2File::getGates(int& n) {
  int end = osize;
  if (scan_type == SPECTRUM_WIDTH) {
    // A refill would move the window under the place.
    end = std::min(osize, optr + std::max(oavail, 0));
  } else {
    while (messageEnd() > osize && readData() > 0) {
    }
    end = std::min(messageEnd(), osize);
  }
  n = std::clamp(end - optr, 0, std::max(getNumData(), 0));
  return out.data() + std::max(std::min(optr, osize), 0);
}

}  // namespace ZQV
