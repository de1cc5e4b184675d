#pragma once

#include <string>

#include <sys/types.h>

/** An Xvfb of a test's own, on a free display, gone when the test is over. */
class XServer {
 public:
  XServer();
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;
  ~XServer() { kill(); }

  /** ":N"; empty if no server could be started. */
  [[nodiscard]] const std::string& display() const { return name; }
  /** Ends the server at once. */
  void kill();

 private:
  pid_t pid = -1;
  std::string name;
};
