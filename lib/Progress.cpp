#include "Progress.h"

#include <cstdio>

#include <unistd.h>

#include "Zqv.h"

namespace ZQV {

namespace {
constexpr double first_after = 0.5;  // seconds
constexpr double every = 0.1;
}  // namespace

Progress::Progress(const char* name, int num)
    : what(name), total(num), wanted(Zqv::checkMessage(1) && ::isatty(STDERR_FILENO) == 1) {
  start = last = wanted ? Zqv::getTime() : 0;
}

Progress::~Progress() {
  if (shown) {
    std::fputs("\r\033[K", stderr);
    std::fflush(stderr);
  }
}

void Progress::step(int n) {
  if (!wanted) {
    return;
  }
  const double now = Zqv::getTime();
  if (now - start < first_after || now - last < every) {
    return;
  }
  last = now;
  shown = true;
  if (total > 0) {
    std::fprintf(stderr, "\r%s %d of %d, %.1f s\033[K\r", what, n, total, now - start);
  } else {
    std::fprintf(stderr, "\r%s %d, %.1f s\033[K\r", what, n, now - start);
  }
  std::fflush(stderr);
}

}  // namespace ZQV
