#include "BZlib.h"

#include <cstdio>

#include "Buffer.h"

namespace ZQV {

namespace {
constexpr int block_size = 9;  // in 100 kB, the format's largest
}

int BZlib::init() {
  finish();
  bz = bz_stream{};
  stat = type == COMPRESS ? BZ2_bzCompressInit(&bz, block_size, 0, 0)
                          : BZ2_bzDecompressInit(&bz, 0, 0);
  setup = stat == BZ_OK;
  return setup ? 1 : 0;
}

int BZlib::init(int kind) {
  finish();
  type = kind;
  return init();
}

void BZlib::setIn(const void* in, int in_size) {
  // bzip2 declares its input pointer without const and only reads through it.
  bz.next_in = const_cast<char*>(static_cast<const char*>(in));
  bz.avail_in = in_size < 0 ? 0 : static_cast<unsigned>(in_size);
}

void BZlib::setOut(void* out, int out_size) {
  bz.next_out = static_cast<char*>(out);
  bz.avail_out = out_size < 0 ? 0 : static_cast<unsigned>(out_size);
}

int BZlib::decomp() {
  if (type != DECOMPRESS || !setup) {
    return -1;
  }
  if (stat < 0) {
    return stat;  // bzip2 doesn't bear another call after an error
  }
  stat = BZ2_bzDecompress(&bz);
  if (stat == BZ_STREAM_END) {
    const bz_stream place = bz;  // where input and output stand
    BZ2_bzDecompressEnd(&bz);
    bz = bz_stream{};
    setup = BZ2_bzDecompressInit(&bz, 0, 0) == BZ_OK;
    bz.next_in = place.next_in;
    bz.avail_in = place.avail_in;
    bz.next_out = place.next_out;
    bz.avail_out = place.avail_out;
  }
  return stat;
}

int BZlib::decomp(Buffer& in, Buffer& out) {
  if (type != DECOMPRESS || !setup) {
    return -1;
  }
  const int avail = in.getAvail();
  setIn(in.get(), avail);
  setOut(out.getData() + out.getInd(), out.getMax() - out.getInd());
  decomp();
  in.inc(avail - getAvailIn());
  out.setSize(out.getMax() - getAvailOut());
  return stat;
}

int BZlib::comp(int action) {
  if (type != COMPRESS || !setup) {
    return -1;
  }
  stat = BZ2_bzCompress(&bz, action);
  return stat;
}

int BZlib::comp(Buffer& in, Buffer& out, int action) {
  if (type != COMPRESS || !setup) {
    return -1;
  }
  const int avail = in.getAvail();
  setIn(in.get(), avail);
  setOut(out.getData() + out.getInd(), out.getMax() - out.getInd());
  comp(action);
  in.inc(avail - getAvailIn());
  out.setSize(out.getMax() - getAvailOut());
  return stat;
}

int BZlib::finish() {
  if (!setup) {
    return 0;
  }
  setup = false;
  type == COMPRESS ? BZ2_bzCompressEnd(&bz) : BZ2_bzDecompressEnd(&bz);
  return 1;
}

long BZlib::getTotalOut() const {
  return static_cast<long>((static_cast<unsigned long>(bz.total_out_hi32) << 32U) |
                           bz.total_out_lo32);
}

void BZlib::print() const {
  const char* name = stat < 0 ? "DATA ERR" : "OK";
  switch (stat) {
    case BZ_STREAM_END: name = "END"; break;
    case BZ_DATA_ERROR: name = "DATA ERR"; break;
    case BZ_DATA_ERROR_MAGIC: name = "MAGIC ERR"; break;
    default: break;
  }
  std::printf("%s%s\n", type == COMPRESS ? "Comp " : "Decomp ", name);
}

}  // namespace ZQV
