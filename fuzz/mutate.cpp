// Damages a file in many ways and draws each: cut at places all over it, and with single bits
// flipped. For the sanitizer build, which ends the program at the first fault; a drawing that takes
// longer than the limit ends it too, and what it took of memory stands in the last line.
//
//   mutate TYPE FILE [CUTS [FLIPS [SEED]]]    TYPE as of -in, default 200 cuts and 500 flips

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include <sys/resource.h>
#include <unistd.h>

#include "Domain.h"
#include "DomainTool.h"
#include "Figure.h"
#include "ScopeView.h"
#include "Zqv.h"

using namespace ZQV;

/** What is freed goes back soon, so that the size of the process says something. */
extern "C" const char* __asan_default_options() {  // NOLINT(bugprone-reserved-identifier)
  return "quarantine_size_mb=8:thread_local_quarantine_size_kb=64";
}

namespace {

constexpr double slow = 2.0;  // seconds

char doing[200] = "";

void late(int /*signal*/) {
  const std::string text = std::string("mutate: hangs: ") + doing + "\n";
  static_cast<void>(::write(STDERR_FILENO, text.data(), text.size()));
  std::_Exit(1);
}

/** What the program does for one file. */
void draw(const char* type, const std::string& file) {
  Zqv::putResrc("filename", file.c_str());
  Zqv::putResrc("input", type);
  ScopeView view;
  view.setFilename();
  Domain domain;
  if (DomainTool::set(domain) == 0) {
    view.getDomain(domain);
  }
  Figure figure;
  figure.open();
  figure.startPlot(domain);
  figure.addDrawing(view);
  figure.endPlot();
  figure.manage();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: mutate TYPE FILE [CUTS [FLIPS [SEED]]]\n");
    return 2;
  }
  const int cuts = argc > 3 ? std::atoi(argv[3]) : 200;
  const int flips = argc > 4 ? std::atoi(argv[4]) : 500;
  std::mt19937 random(argc > 5 ? static_cast<unsigned>(std::atoi(argv[5])) : 1U);
  std::ifstream in(argv[2], std::ios::binary);
  const std::string whole{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  if (whole.empty()) {
    std::fprintf(stderr, "mutate: %s can't be read\n", argv[2]);
    return 2;
  }
  const char* shm = "/dev/shm";
  const std::string file = (std::filesystem::is_directory(shm) ? shm : "/tmp") +
                           std::string("/mutate.") + std::to_string(::getpid());
  Zqv::setMessageLevel("none");
  Zqv::setDatabasePath(ZQV_DATA_DIR);
  Zqv::putResrc("file_path", ZQV_DATA_DIR);
  Zqv::putResrc("device", "meta,/dev/null");
  Zqv::putResrc("map_file", "none");
  Zqv::putResrc("variable", "cid,ctop,track,comp");
  std::signal(SIGALRM, late);
  std::FILE* quiet = std::freopen("/dev/null", "w", stdout);
  double longest = 0;
  std::string longest_of;
  const size_t places = whole.size();
  for (int i = 0; quiet != nullptr && i < cuts + flips; i++) {
    std::string data = whole;
    if (i < cuts) {
      // At every place of a small file, the head densely.
      const size_t at = i < cuts / 4 ? static_cast<size_t>(i) * 3
                                     : static_cast<size_t>(i) * places / static_cast<size_t>(cuts);
      data.resize(std::min(at, places));
      std::snprintf(doing, sizeof(doing), "%s cut at %zu", argv[2], data.size());
    } else {
      // Half of the bits in the head, where a file says what it is.
      const size_t span = i % 2 == 0 ? std::min<size_t>(places, 400) : places;
      const size_t bit = std::uniform_int_distribution<size_t>(0, 8 * span - 1)(random);
      data[bit / 8] = static_cast<char>(data[bit / 8] ^ (1 << (bit % 8)));
      std::snprintf(doing, sizeof(doing), "%s with bit %zu flipped", argv[2], bit);
    }
    std::ofstream(file, std::ios::binary) << data;
    ::alarm(60);
    const auto start = std::chrono::steady_clock::now();
    draw(argv[1], file);
    const double took =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    if (took > longest) {
      longest = took;
      longest_of = doing;
    }
  }
  std::filesystem::remove(file);
  rusage use{};
  ::getrusage(RUSAGE_SELF, &use);
  std::fprintf(stderr, "%s: %d drawn, longest %.2f s (%s), %ld MB%s\n", argv[2], cuts + flips,
               longest, longest_of.c_str(), use.ru_maxrss / 1024, longest > slow ? " SLOW" : "");
  return longest > slow ? 1 : 0;
}
