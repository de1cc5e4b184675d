// The floors that scripts/bench.sh measures the program against, in the same run:
//
//   bare empty                 starts and ends
//   bare read FILE             reads a product and decompresses what is compressed, nothing more
//   bare chain FILE N          decompresses the first N records of a Level II volume
//   bare mosaic FILE           decodes the runs of a Kavouras mosaic into its pixels
//   bare print N ps|meta|hpgl  prints N five-cornered polygons with std::to_chars, as the device
//   has them bare spawn COMMAND...      runs a command, its output dropped, and prints its seconds
//   and kilobytes; a small
//                              parent, so that the memory is the command's own

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include <bzlib.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zlib.h>

namespace {

std::vector<char> slurp(const char* name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/** Decompresses what begins like zlib or bzip2 in the first bytes. @return bytes that came out */
size_t inflateAll(std::vector<char>& bytes) {
  constexpr size_t head = 200;
  std::vector<char> out(100000);
  size_t total = 0;
  for (size_t at = 0; at + 2 < bytes.size() && at < head; at++) {
    if (std::memcmp(&bytes[at], "BZh", 3) == 0) {
      bz_stream bz{};
      BZ2_bzDecompressInit(&bz, 0, 0);
      bz.next_in = &bytes[at];
      bz.avail_in = static_cast<unsigned>(bytes.size() - at);
      int stat = BZ_OK;
      while (stat == BZ_OK) {
        bz.next_out = out.data();
        bz.avail_out = static_cast<unsigned>(out.size());
        stat = BZ2_bzDecompress(&bz);
        total += out.size() - bz.avail_out;
        if (bz.avail_in == 0 && bz.avail_out > 0) {
          break;
        }
      }
      BZ2_bzDecompressEnd(&bz);
      return total;
    }
  }
  return total;
}

/** Decompresses the first records of a Level II volume, read as far. @return bytes that came out */
size_t inflateChain(const char* name, int records) {
  constexpr int head = 24;
  std::ifstream file(name, std::ios::binary);
  file.seekg(head);
  std::vector<char> in;
  std::vector<char> out(200000);
  size_t total = 0;
  for (int i = 0; i < records; i++) {
    unsigned char word[4] = {};
    if (!file.read(reinterpret_cast<char*>(word), sizeof(word))) {
      break;
    }
    const int length = static_cast<int>(static_cast<unsigned>(word[0]) << 24U | word[1] << 16 |
                                        word[2] << 8 | word[3]);
    in.resize(static_cast<size_t>(std::abs(length)));
    file.read(in.data(), static_cast<std::streamsize>(in.size()));
    bz_stream bz{};
    BZ2_bzDecompressInit(&bz, 0, 0);
    bz.next_in = in.data();
    bz.avail_in = static_cast<unsigned>(in.size());
    int stat = BZ_OK;
    while (stat == BZ_OK) {
      bz.next_out = out.data();
      bz.avail_out = static_cast<unsigned>(out.size());
      stat = BZ2_bzDecompress(&bz);
      total += out.size() - bz.avail_out;
      if (bz.avail_in == 0 && bz.avail_out > 0) {
        break;
      }
    }
    BZ2_bzDecompressEnd(&bz);
  }
  return total;
}

/** Decodes the runs of a high-resolution mosaic of the plain kind. @return pixels that aren't 0 */
size_t decodeMosaic(const char* name) {
  constexpr size_t width = 5120;
  constexpr size_t height = 5760;
  constexpr size_t head = 2048;
  const std::vector<char> bytes = slurp(name);
  std::vector<unsigned char> pixels(width * height);
  size_t out = 0;
  unsigned char level = 0;
  for (size_t i = head; i < bytes.size() && out < pixels.size() && bytes[i] != '!'; i++) {
    const auto b = static_cast<unsigned char>(bytes[i]);
    size_t n = 0;
    if (b == '#') {
      n = width - out % width;
    } else if (b == '$') {
      n = ++i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0;
    } else if (b < ' ') {
      n = b;
    } else if (b != '"') {
      n = b >> 6U;
      level = b & 63U;
      level = level == 16 ? 0 : static_cast<unsigned char>(level + (level < 16 ? 1 : 0));
    }
    n = std::min(n, width - out % width);
    std::memset(&pixels[out], level, n);
    out += n;
  }
  return pixels.size() - static_cast<size_t>(std::count(pixels.begin(), pixels.end(), 0));
}

class Printer {
 public:
  Printer() : data(1 << 18) {}
  ~Printer() { std::fwrite(data.data(), 1, num, stdout); }
  Printer(const Printer&) = delete;
  Printer& operator=(const Printer&) = delete;
  void text(std::string_view s) {
    room();
    std::memcpy(&data[num], s.data(), s.size());
    num += s.size();
  }
  void number(double v, int digits) {
    room();
    const auto end =
        std::to_chars(&data[num], data.data() + data.size(), v, std::chars_format::fixed, digits);
    num = static_cast<size_t>(end.ptr - data.data());
  }
  void whole(int v) {
    room();
    const auto end = std::to_chars(&data[num], data.data() + data.size(), v);
    num = static_cast<size_t>(end.ptr - data.data());
  }

 private:
  void room() {
    if (data.size() - num < 128) {
      std::fwrite(data.data(), 1, num, stdout);
      num = 0;
    }
  }
  std::vector<char> data;
  size_t num = 0;
};

void print(int n, std::string_view device) {
  Printer out;
  for (int i = 0; i < n; i++) {
    const double x = 100 + i % 500 * 1.07;
    const double y = 50 + i % 400 * 1.13;
    const double xs[5] = {x, x + 1.31, x + 1.77, x + 0.4, x};
    const double ys[5] = {y, y + 0.3, y + 1.7, y + 1.1, y};
    if (device == "ps") {
      out.text("%%FA:5\n1.00 0.94 0.00 setrgbcolor\nnp\n");
      for (int k = 0; k < 5; k++) {
        out.number(xs[k], 2);
        out.text(" ");
        out.number(ys[k], 2);
        out.text(k == 0 ? " mv\n" : " ln\n");
      }
      out.text("cp\nfill\n");
    } else if (device == "hpgl") {
      for (int k = 0; k < 5; k++) {
        out.text(k == 0 ? "SV;\nPU" : "PD");
        out.number(xs[k], 0);
        out.text(",");
        out.number(ys[k], 0);
        out.text(k == 0 ? ";PM0;" : ";");
      }
      out.text("PM1;PM2;FP;\n");
    } else {
      out.text("F 5 ");
      for (int k = 0; k < 5; k++) {
        out.number(xs[k] / 1000, 6);
        out.text(",");
        out.number(ys[k] / 1000, 6);
        out.text(" ");
      }
      out.text("\n");
    }
  }
}

/** @return the command's status */
int spawn(char** command) {
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = ::fork();
  if (child == 0) {
    const int null = ::open("/dev/null", O_WRONLY);
    ::dup2(null, 1);
    ::dup2(null, 2);
    ::execv(command[0], command);
    ::_exit(127);
  }
  int status = 0;
  rusage usage{};
  ::wait4(child, &status, 0, &usage);
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
  std::printf("%.7f %ld\n", took.count(), usage.ru_maxrss);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view what = argc > 1 ? argv[1] : "";
  if (what == "read" && argc > 2) {
    std::vector<char> bytes = slurp(argv[2]);
    return bytes.size() + inflateAll(bytes) > 0 ? 0 : 1;
  }
  if (what == "chain" && argc > 3) {
    return inflateChain(argv[2], std::atoi(argv[3])) > 0 ? 0 : 1;
  }
  if (what == "mosaic" && argc > 2) {
    return decodeMosaic(argv[2]) > 0 ? 0 : 1;
  }
  if (what == "spawn" && argc > 2) {
    return spawn(argv + 2);
  }
  if (what == "print" && argc > 3) {
    print(std::atoi(argv[2]), argv[3]);
  }
  return 0;
}
