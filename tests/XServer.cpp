#include "XServer.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <string>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

XServer::XServer() {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) return;
  pid = fork();
  if (pid == 0) {
    const int quiet = open("/dev/null", O_WRONLY);
    dup2(quiet, STDERR_FILENO);
    const std::string fd = std::to_string(ends[1]);
    execlp("Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", "1280x1024x24", "-nolisten",
           "tcp", "-noreset", nullptr);
    _exit(127);
  }
  close(ends[1]);
  // The server writes the number of its display once it listens.
  constexpr int patience = 20000;
  pollfd answer{ends[0], POLLIN, 0};
  std::string number;
  char c = 0;
  while (poll(&answer, 1, patience) > 0 && read(ends[0], &c, 1) == 1 && c != '\n') number += c;
  close(ends[0]);
  if (!number.empty()) name = ":" + number;
}

void XServer::kill() {
  if (pid <= 0) return;
  ::kill(pid, SIGKILL);
  waitpid(pid, nullptr, 0);
  pid = -1;
}
