#pragma once

#include <zlib.h>

namespace ZQV {

class Buffer;

/** One zlib stream. A decompressor that reaches the end of a member starts afresh, so that it goes
 *  straight on with the next member. */
class Zlib {
 public:
  enum Type { COMPRESS = 0, DECOMPRESS = 1 };

  explicit Zlib(int kind = DECOMPRESS) : type(kind) {}
  Zlib(const Zlib&) = delete;
  Zlib& operator=(const Zlib&) = delete;
  ~Zlib() { finish(); }

  /** Starts the stream, ending one under way. @return 1 or 0 */
  int init();
  int init(int kind);
  void set(const void* in, int in_size, void* out, int out_size);
  /** One step with Z_SYNC_FLUSH. @return the code of zlib, also kept as status */
  int decomp();
  /** From in's unread bytes to out's store at its read position; moves in past what was eaten and
   * sets out's size. @return as decomp(); -1 on a compressor */
  int decomp(Buffer& in, Buffer& out);
  int comp(int flush);
  int comp(Buffer& in, Buffer& out, int flush);
  /** Ends the stream. @return 1; 0 if it wasn't started */
  int finish();
  [[nodiscard]] int getAvailIn() const { return static_cast<int>(zs.avail_in); }
  [[nodiscard]] int getAvailOut() const { return static_cast<int>(zs.avail_out); }
  [[nodiscard]] long getTotalOut() const { return static_cast<long>(zs.total_out); }
  [[nodiscard]] int getStatus() const { return stat; }
  /** The last status is an error of the stream, the data or memory (not a full buffer). */
  [[nodiscard]] bool isError() const;
  /** Writes "Comp " or "Decomp " and the name of the status. */
  void print() const;

 private:
  int type;
  bool setup = false;
  z_stream zs{};
  int stat = Z_OK;
};

}  // namespace ZQV
