#include "Zlib.h"

#include <cstdio>

#include "Buffer.h"

namespace ZQV {

int Zlib::init() {
  finish();
  zs = z_stream{};
  stat = type == COMPRESS ? deflateInit(&zs, Z_DEFAULT_COMPRESSION) : inflateInit(&zs);
  setup = stat == Z_OK;
  return setup ? 1 : 0;
}

int Zlib::init(int kind) {
  finish();
  type = kind;
  return init();
}

void Zlib::set(const void* in, int in_size, void* out, int out_size) {
  // zlib declares its input pointer without const and only reads through it.
  zs.next_in = const_cast<Bytef*>(static_cast<const Bytef*>(in));
  zs.avail_in = in_size < 0 ? 0 : static_cast<uInt>(in_size);
  zs.next_out = static_cast<Bytef*>(out);
  zs.avail_out = out_size < 0 ? 0 : static_cast<uInt>(out_size);
}

int Zlib::decomp() {
  if (type != DECOMPRESS || !setup) {
    return -1;
  }
  stat = inflate(&zs, Z_SYNC_FLUSH);
  if (stat == Z_STREAM_END) {
    const z_stream place = zs;  // where input and output stand
    inflateEnd(&zs);
    zs = z_stream{};
    setup = inflateInit(&zs) == Z_OK;
    zs.next_in = place.next_in;
    zs.avail_in = place.avail_in;
    zs.next_out = place.next_out;
    zs.avail_out = place.avail_out;
    zs.total_out = place.total_out;
  }
  return stat;
}

int Zlib::decomp(Buffer& in, Buffer& out) {
  if (type != DECOMPRESS || !setup) {
    return -1;
  }
  const int avail = in.getAvail();
  set(in.get(), avail, out.getData() + out.getInd(), out.getMax() - out.getInd());
  decomp();
  in.inc(avail - getAvailIn());
  out.setSize(out.getMax() - getAvailOut());
  return stat;
}

int Zlib::comp(int flush) {
  if (type != COMPRESS || !setup) {
    return -1;
  }
  stat = deflate(&zs, flush);
  return stat;
}

int Zlib::comp(Buffer& in, Buffer& out, int flush) {
  if (type != COMPRESS || !setup) {
    return -1;
  }
  const int avail = in.getAvail();
  set(in.get(), avail, out.getData() + out.getInd(), out.getMax() - out.getInd());
  comp(flush);
  in.inc(avail - getAvailIn());
  out.setSize(out.getMax() - getAvailOut());
  return stat;
}

int Zlib::finish() {
  if (!setup) {
    return 0;
  }
  setup = false;
  type == COMPRESS ? deflateEnd(&zs) : inflateEnd(&zs);
  return 1;
}

bool Zlib::isError() const {
  return stat == Z_STREAM_ERROR || stat == Z_DATA_ERROR || stat == Z_MEM_ERROR ||
         stat == Z_VERSION_ERROR || stat == Z_NEED_DICT;
}

void Zlib::print() const {
  const char* name = "FIN";
  switch (stat) {
    case Z_OK: name = "OK"; break;
    case Z_STREAM_END: name = "END"; break;
    case Z_BUF_ERROR: name = "BUF ERR"; break;
    case Z_MEM_ERROR: name = "MEM ERR"; break;
    case Z_DATA_ERROR: name = "DATA ERR"; break;
    case Z_STREAM_ERROR: name = "STRM ERR"; break;
    default: break;
  }
  std::printf("%s%s\n", type == COMPRESS ? "Comp " : "Decomp ", name);
}

}  // namespace ZQV
