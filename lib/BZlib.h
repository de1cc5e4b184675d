#pragma once

#include <bzlib.h>

namespace ZQV {

class Buffer;

/** One bzip2 stream; restarts at the end of a stream as Zlib does. */
class BZlib {
 public:
  enum Type { COMPRESS = 0, DECOMPRESS = 1 };

  explicit BZlib(int kind = DECOMPRESS) : type(kind) {}
  BZlib(const BZlib&) = delete;
  BZlib& operator=(const BZlib&) = delete;
  ~BZlib() { finish(); }

  /** Starts the stream, ending one under way. @return 1 or 0 */
  int init();
  int init(int kind);
  void setIn(const void* in, int in_size);
  void setOut(void* out, int out_size);
  /** One step. @return the code of bzip2, also kept as status */
  int decomp();
  /** As Zlib::decomp(Buffer&, Buffer&). */
  int decomp(Buffer& in, Buffer& out);
  /** @param action  BZ_RUN, BZ_FLUSH or BZ_FINISH */
  int comp(int action);
  int comp(Buffer& in, Buffer& out, int action);
  int finish();
  [[nodiscard]] int getAvailIn() const { return static_cast<int>(bz.avail_in); }
  [[nodiscard]] int getAvailOut() const { return static_cast<int>(bz.avail_out); }
  [[nodiscard]] long getTotalOut() const;
  [[nodiscard]] int getStatus() const { return stat; }
  [[nodiscard]] bool isError() const { return stat < 0; }
  void print() const;

 private:
  int type;
  bool setup = false;
  bz_stream bz{};
  int stat = BZ_OK;
};

}  // namespace ZQV
