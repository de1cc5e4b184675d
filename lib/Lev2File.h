#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "BZahead.h"
#include "BZlib.h"
#include "Date.h"
#include "File.h"

namespace ZQV {

class Lev2Data;
class Lev2Info;

/** Level II base data: an archive of radial messages, plain or as a chain of bzip2 records, read as
 * one stream through a window of decompressed bytes. Message 1 has fixed fields, message 31 data
 * blocks reached by pointers (the Interface Control Documents for the RDA/RPG and for the archive,
 * 2620002 and 2620010, describe both); any other message is stepped over.
 *
 * The order of use: open, getHeader, then for each message getBlock, setDataType, getNumData, the
 * gates by getData or getGates, and nextBlock. All numbers of the file are big-endian. */
class Lev2File {
 public:
  /** Data of a radial. */
  enum DataType { REFLECTIVITY = 0, VELOCITY = 1, SPECTRUM_WIDTH = 2 };

  static constexpr float below_threshold = -100.0F;
  static constexpr float range_folded = -90.0F;
  /** Values of all 256 levels. */
  using Values = std::array<float, 256>;

  Lev2File() { init(); }
  Lev2File(const char* name, int compressed);
  Lev2File(const Lev2File&) = delete;
  Lev2File& operator=(const Lev2File&) = delete;
  ~Lev2File() { close(); }

  int init();
  /** @param compressed  1 takes the file for a chain of bzip2 records; others leave what
   *  setCompress said. A file that begins its first record with the mark of bzip2 is always taken
   *  for one.
   *  @return 1; 0 if it can't be opened, or is a gzip file */
  int open(const char* name, int compressed);
  int close();
  [[nodiscard]] bool isOpen() const { return opened; }
  int setCompress(int flag);
  /** Threads that decompress a chain ahead of the reader, 0 (the default) for none; for plain files
   *  only, since a pipe may keep them waiting. What is read is the same. Takes effect with the next
   *  record; off while debug lines tell of the stream. */
  int setAhead(int num_threads);
  /** Identifier to use in place of the header's, at most 9 characters. */
  int setId(const char* text);

  /** Reads the volume header from the start of the file. The site's place is that of rad.cty; a
   *  site that isn't there gets a fixed one.
   *  @return 1; 0 if no file is open, the header is cut (the info then has no date), or a pipe has
   *  been read on */
  int getHeader(Lev2Info& info);
  /** Takes the next message: the radial's header for types 1 and 31, for others the message header
   *  alone. Fields that a message doesn't have keep their values.
   *  @return 1; 0 at the end of the data, or with a warning for a negative type */
  int getBlock(Lev2Data& data);
  /** Moves to the next message. @return 1 */
  int nextBlock();
  /** Chooses the data of the radial and goes to their first gate.
   *  @return 1; 0 if the radial has none */
  int setDataType(int wanted);
  /** Gates that the radial's header tells of the chosen data; Const::MISS if it tells none. */
  [[nodiscard]] int getNumData() const;
  /** Value of the next gate in dBZ or m/s: below_threshold for level 0 and behind the end of the
   *  data, range_folded for level 1. */
  float getData();
  /** Levels of the gates that are left, straight from the window, good until the next call.
   *  @param n  takes their number: what the header tells, less what lies outside of the message */
  const unsigned char* getGates(int& n);
  /** Value of each level of the chosen data, by the scale of the radial at hand; below_threshold
   *  for all where the scale is 0 or no number. */
  void getValues(Values& values) const;

  // The window.

  /** Refills it. @return 1; 0 after an error of the stream, -1 at the end of the file */
  int readData();
  /** @return n; 0 if they aren't there, and dest stays */
  int readBytes(void* dest, int n);
  /** Goes to an offset of the message, behind its transport header. @return 1; 0 if that lies
   *  outside, and nothing more can be read of the message */
  int bseek(int64_t off);
  /** Skips. @return 1 */
  int boffset(int n);
  /** 0 where nothing is left; getShort is unsigned, getLong the bit pattern. */
  int getByte();
  int getUByte();
  int getShort();
  int getLong();
  float getFloat();

 private:
  /** Gates of one kind of data: value = (level - off) / scl. */
  struct Scale {
    int size = 0;
    int bits = 0;
    float scl = 0;
    float off = 0;
  };

  void resetStream();
  int readFile(unsigned char* dest, int n);
  int readRecord();
  int readChained(std::vector<unsigned char>& bytes);
  void compact();
  int unpack(bool fresh);
  int take(int made, bool whole, bool fault);
  [[nodiscard]] bool isRecordDone();
  int dropPending(int made);
  static int cutTrailer(const std::vector<unsigned char>& bytes, int size, int left);
  int readHead();
  [[nodiscard]] int messageEnd() const;
  void stop();
  int readMessage1(Lev2Data& data);
  int readMessage31(Lev2Data& data);
  bool readMoment(int64_t ptr, std::array<char, 4>& name, Scale& scale, int& num, float& first,
                  float& spacing);

  static constexpr int head_size = 24;
  static constexpr int peek_size = 8;  ///< length and mark of the first record

  File file;
  bool opened = false;
  bool compress = false;
  bool chain = false;  ///< compress, or the file has told itself
  Date date;
  std::array<unsigned char, head_size + peek_size> head{};
  int head_num = 0;  ///< bytes held
  int head_ptr = 0;  ///< bytes used
  std::vector<unsigned char> in;
  int isize = 0;
  int iptr = 0;
  int iavail = 0;
  std::vector<unsigned char> out;
  int osize = 0;
  int optr = -1;
  int oavail = 0;
  int pending = 0;       ///< bytes to come that belong to a message left behind
  int64_t unpacked = 0;  ///< bytes that the records have given
  bool failed = false;   ///< no more input after an error
  BZlib bz;
  int ahead_threads = 0;
  BZahead ahead;  ///< in place of bz where it is started
  int blk_off = 0;
  int blk_size = 0;
  std::string id;
  float lat = 0;
  float lon = 0;
  int msg_type = 0;
  int scan_type = REFLECTIVITY;
  int refl_ptr = 0;
  int vel_ptr = 0;
  int spect_ptr = 0;
  int vol_ptr = 0;
  int elev_ptr = 0;
  int rad_ptr = 0;
  int num_refl = 0;
  int num_vel = 0;
  Scale refl;
  Scale vel;
  Scale spect;
};

}  // namespace ZQV
