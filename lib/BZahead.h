#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace ZQV {

class BZlib;

/** Records of bzip2, each a stream of its own, decompressed by threads ahead of the one that reads
 * them: in their order, and as much ahead as a few records hold. */
class BZahead {
 public:
  /** Reads the next record, to whose size it sets its argument; called by one thread at a time.
   *  @return false behind the last */
  using Source = std::function<bool(std::vector<unsigned char>& bytes)>;
  /** How a record ends: not yet, at the end of its stream, before that, or in a fault. */
  enum End { OPEN, WHOLE, CUT, FAULT };

  BZahead() = default;
  BZahead(const BZahead&) = delete;
  BZahead& operator=(const BZahead&) = delete;
  ~BZahead() { stop(); }

  /** Threads that there are cores for; 0 where only one is at hand, or all have had work through
   * the last minute, as when an archive is drawn by many runs at once. */
  static int coreThreads();

  /** @return false if no thread can be had */
  bool start(int num_threads, Source next_record);
  /** Ends the threads; what they hold is dropped. */
  void stop();
  [[nodiscard]] bool isStarted() const { return !threads.empty(); }

  /** Goes on to the next record, whatever is left of the one at hand.
   *  @return its size before decompression, which may be 0; 0 behind the last */
  int next();
  /** Copies what follows in the record at hand, waiting for it.
   *  @return bytes: fewer than room only where the record ends */
  int read(unsigned char* dest, int room);
  /** How the record at hand ended; OPEN while there may be more of it to read. */
  [[nodiscard]] End getEnd();

 private:
  /** A record with its decompressed bytes, a ring. */
  struct Record {
    std::vector<unsigned char> in;
    std::unique_ptr<unsigned char[]> ring;
    int64_t made = 0;
    int64_t used = 0;
    End end = OPEN;
  };

  void work();
  std::shared_ptr<Record> fetch();
  bool unpack(Record& record, BZlib& bz);

  Source source;
  std::vector<std::thread> threads;
  std::mutex reading;  ///< held while a record is read
  std::mutex state;    ///< of all that follows and of the counts of a record
  std::condition_variable progress;
  std::deque<std::shared_ptr<Record>> records;  ///< the first is at hand if begun
  std::shared_ptr<Record> spare;
  size_t most_records = 1;
  size_t held = 0;  ///< bytes of records before decompression
  bool begun = false;
  bool ended = false;
  bool stopping = false;
};

}  // namespace ZQV
