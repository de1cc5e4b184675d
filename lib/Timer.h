#pragma once

#include <sys/time.h>

namespace ZQV {

/** Wall clock of the event loop. */
class Timer {
 public:
  Timer() { init(); }
  /** Starts anew. @return 1 */
  int init();
  /** Seconds since init(). */
  float elapsed();
  /** Sleeps, in seconds. @return the sum of the times slept; 0 for a time of 0 or below, at once */
  float sleep(float seconds);

 private:
  timeval start{};
  timeval current{};
  float elapse = 0.0F;
};

}  // namespace ZQV
