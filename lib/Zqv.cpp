#include "Zqv.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <fcntl.h>
#include <sys/time.h>
#include <unistd.h>

#include "Const.h"
#include "File.h"
#include "FileTool.h"
#include "StrLib.h"
#include "String.h"
#include "Strings.h"
#include "Tools.h"

namespace ZQV {

namespace {

constexpr int max_level = 30;
constexpr int debug_bits = 12;  // outDebug(1) tests bit 12
constexpr int num_debug_bits = 8;
constexpr size_t max_progname = 19;

constexpr struct {
  const char* name;
  int level;
} levels[] = {{"none", 0},    {"print", 1},   {"error", 2},   {"warn", 3},    {"mess", 4},
              {"out1", 5},    {"out2", 6},    {"out3", 7},    {"out4", 8},    {"out5", 9},
              {"out6", 10},   {"out7", 11},   {"out8", 12},   {"debug1", 13}, {"debug2", 14},
              {"debug3", 15}, {"debug4", 16}, {"debug5", 17}, {"debug6", 18}, {"debug7", 19},
              {"debug8", 20}, {"debug", 20}};

std::string& dataPath() {
  static std::string path;
  return path;
}

std::string& programName() {
  static std::string name;
  return name;
}

/** Level of a name, -1 if it is none. */
int levelOf(const char* name) {
  for (const auto& entry : levels) {
    if (StrLib::iequal(name, entry.name)) {
      return entry.level;
    }
  }
  return -1;
}

/** What was standard output before messages were diverted. */
std::FILE* pictureStream = nullptr;

std::FILE* warningStream() {
  return std::getenv("zqverrtoout") != nullptr ? stdout : stderr;
}

}  // namespace

Zqv::Error Zqv::error = Zqv::NOERR;
Resrc Zqv::resrc;
int Zqv::message_mask = 0x3F;
int Zqv::init_time = Const::MISS;

int Zqv::setMessageLevel(int n) {
  message_mask = static_cast<int>((1U << static_cast<unsigned>(std::clamp(n, 0, max_level))) - 1U);
  return 1;
}

int Zqv::setMessageLevel(const char* text) {
  if (!StrLib::valid(text)) {
    return 0;
  }
  const Strings tokens(text, ',');
  for (int i = 0; i < tokens.getNum(); i++) {
    const char sign = tokens.getChar(i, 0);
    const bool one_bit = sign == '+' || sign == '-';
    const int level = levelOf(one_bit ? tokens.getString(i, 1) : tokens.getString(i));
    if (level < 0) {
      continue;
    }
    if (!one_bit) {
      setMessageLevel(level);
    } else if (level > 0) {
      const int bit = 1 << (level - 1);
      message_mask = sign == '+' ? message_mask | bit : message_mask ^ bit;
    }
  }
  return 1;
}

bool Zqv::checkMessage(int n) {
  return n >= 1 && n <= max_level && (message_mask >> (n - 1) & 1) != 0;
}

bool Zqv::isDebug() {
  return (message_mask >> debug_bits & ((1 << num_debug_bits) - 1)) != 0;
}

bool Zqv::checkDebug(int n) {
  return checkMessage(n + debug_bits);
}

bool Zqv::isDebug(int n) {
  return checkMessage(n + debug_bits + 1);
}

int Zqv::outMessage(const char* format, ...) {
  if (!checkMessage(1)) {
    return 0;
  }
  va_list args;
  va_start(args, format);
  std::vprintf(format, args);
  va_end(args);
  return 1;
}

int Zqv::outMessage(int n, const char* format, ...) {
  if (!checkMessage(n)) {
    return 0;
  }
  va_list args;
  va_start(args, format);
  std::vprintf(format, args);
  va_end(args);
  return 1;
}

int Zqv::outDebug(const char* format, ...) {
  if (!checkMessage(debug_bits + 1)) {
    return 0;
  }
  va_list args;
  va_start(args, format);
  std::vprintf(format, args);
  va_end(args);
  return 1;
}

int Zqv::outDebug(int n, const char* format, ...) {
  if (!checkDebug(n)) {
    return 0;
  }
  va_list args;
  va_start(args, format);
  std::vprintf(format, args);
  va_end(args);
  return 1;
}

int Zqv::outWarning(const char* format, ...) {
  va_list args;
  va_start(args, format);
  std::vfprintf(warningStream(), format, args);
  va_end(args);
  return 1;
}

int Zqv::outError(const char* format, ...) {
  va_list args;
  va_start(args, format);
  std::vfprintf(warningStream(), format, args);
  va_end(args);
  return 1;
}

int Zqv::print(const char* text) {
  return text != nullptr && std::fputs(text, stdout) >= 0 ? 1 : 0;
}

int Zqv::setProgramName(const char* text) {
  programName() = StrLib::acopy(text).substr(0, max_progname);
  return 1;
}

const char* Zqv::getProgramName() {
  return programName().empty() ? "ZQV" : programName().c_str();
}

int Zqv::setDatabasePath(const char* path) {
  dataPath() = StrLib::acopy(path);
  return 1;
}

const char* Zqv::getDatabasePath() {
  return dataPath().c_str();
}

int Zqv::setInitTime(int t) {
  init_time = t;
  return 1;
}

int Zqv::getInitTime() {
  return init_time;
}

int Zqv::pause() {
  std::fflush(stdout);
  std::getchar();
  return 1;
}

int Zqv::sleep(float seconds) {
  constexpr float longest = 4000.0F;  // what the wait takes in microseconds
  if (seconds > 0) {
    ::usleep(static_cast<useconds_t>(1.0e6 * static_cast<double>(std::min(seconds, longest))));
  }
  return 1;
}

double Zqv::getTime() {
  timeval now{};
  ::gettimeofday(&now, nullptr);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_usec) * 1.0e-6;
}

int Zqv::getVirtMem() {
  constexpr int word = 23;
  String name;
  name.printf("/proc/%d/stat", static_cast<int>(::getpid()));
  File file;
  String line(2000);
  if (file.open(name.get(), "r") == 0 || file.getLine(line) == 0) {
    return 0;
  }
  const Strings words(line.get());
  const char* text = words.getString(word - 1);
  return text == nullptr ? 0 : Tools::cut(std::strtod(text, nullptr));
}

void Zqv::exit(Error status) {
  std::exit(status);
}

void Zqv::setError(Error e) {
  if (error == NOERR) {
    error = e;
  }
}

void Zqv::setFileError(const char* name) {
  setError(FileTool::isFile(name) && ::access(name, R_OK) == 0 ? NODATA : NOFILE);
}

int Zqv::divertOutput() {
  if (pictureStream != nullptr) {
    return 1;
  }
  std::fflush(stdout);
  const int picture = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  if (picture < 0 || ::dup2(STDERR_FILENO, STDOUT_FILENO) < 0) {
    return 0;
  }
  pictureStream = ::fdopen(picture, "w");
  return pictureStream != nullptr ? 1 : 0;
}

std::FILE* Zqv::getOutput() {
  return pictureStream != nullptr ? pictureStream : stdout;
}

const char* Zqv::getVersion() {
  return "6.65-LINUX-X11";
}

const char* Zqv::getComputerName() {
  static char name[40];
  char whole[256] = "";
  ::gethostname(whole, sizeof(whole) - 1);
  StrLib::copy(name, sizeof(name), whole);
  return name;
}

const char* Zqv::getResrc(const char* name) {
  return resrc.get(name);
}

const char* Zqv::getResrc(const char* name, const char* fallback) {
  return resrc.get(name, fallback);
}

int Zqv::getResrc(const char* name, int fallback) {
  return resrc.get(name, fallback);
}

float Zqv::getResrc(const char* name, float fallback) {
  return resrc.get(name, fallback);
}

int Zqv::addResrc(const char* name, const char* value, int type) {
  return resrc.add(name, value, type);
}

int Zqv::putResrc(const char* name, const char* value) {
  return resrc.put(name, value);
}

int Zqv::appendResrc(const char* name, const char* value) {
  return resrc.append(name, value, '\n');
}

int Zqv::getResrcType(const char* name) {
  return resrc.getType(name);
}

int Zqv::printAllResrc() {
  resrc.printAll();
  return 1;
}

}  // namespace ZQV
