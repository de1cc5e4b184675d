#pragma once

namespace ZQV {

/** One line on a terminal that says how far a long job is: "frame 3 of 24, 1.2 s". It is written to
 * standard error, over itself, and wiped out at the end; nothing comes out where that is no
 * terminal, with messages switched off, or before the job has taken half a second. */
class Progress {
 public:
  /** @param what  the steps' name
   *  @param total  of them; 0 if that isn't known */
  explicit Progress(const char* what, int total = 0);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();
  /** The job is at step n, from 1 on. */
  void step(int n);

 private:
  const char* what;
  int total;
  bool wanted;
  bool shown = false;
  double start = 0;
  double last = 0;
};

}  // namespace ZQV
