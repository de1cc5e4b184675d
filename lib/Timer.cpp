#include "Timer.h"

#include <unistd.h>

#include "Tools.h"

namespace ZQV {

namespace {

constexpr int MICRO = 1000000;

}  // namespace

int Timer::init() {
  gettimeofday(&start, nullptr);
  elapse = 0.0F;
  return 1;
}

float Timer::elapsed() {
  gettimeofday(&current, nullptr);
  long seconds = current.tv_sec - start.tv_sec;
  long micros = current.tv_usec - start.tv_usec;
  if (micros < 0) {
    micros += MICRO;
    seconds--;
  }
  return static_cast<float>(seconds) + static_cast<float>(micros) / static_cast<float>(MICRO);
}

float Timer::sleep(float seconds) {
  if (!(seconds > 0.0F)) return 0.0F;
  elapse += seconds;
  usleep(static_cast<useconds_t>(Tools::cut(static_cast<double>(seconds) * MICRO)));
  return elapse;
}

}  // namespace ZQV
