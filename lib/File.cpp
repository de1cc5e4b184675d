#include "File.h"

#include <algorithm>
#include <csignal>
#include <cstdarg>
#include <cstring>
#include <limits>
#include <string>

#include "Buffer.h"
#include "FileTool.h"
#include "StrLib.h"
#include "String.h"
#include "Zqv.h"

namespace ZQV {

File::~File() {
  close();
}

int File::attach(std::FILE* stream) {
  fp = stream;
  opened = fp != nullptr;
  if (!opened && access == 1) {
    Zqv::setError(Zqv::NOWRITE);
  }
  return opened ? 1 : 0;
}

int File::open(const char* name, const char* mode) {
  close();
  type = stype = 0;
  if (!StrLib::valid(name) || mode == nullptr) {
    return 0;
  }
  const bool as_pipe = *mode == 'p';
  const char way = as_pipe ? mode[1] : *mode;
  if (way != 'r' && way != 'w' && way != 'a') {
    return 0;
  }
  access = way == 'r' ? 0 : 1;
  if (FileTool::isStdio(name)) {
    stype = 1;
    return attach(access == 0 ? stdin : Zqv::getOutput());
  }
  if (as_pipe || *name == '|') {
    type = 1;
    // The command gets the usual way to end when nobody reads on, whatever this program does about
    // it.
    const auto own = std::signal(SIGPIPE, SIG_DFL);
    std::FILE* pipe = ::popen(*name == '|' ? name + 1 : name, access == 0 ? "r" : "w");
    std::signal(SIGPIPE, own);
    return attach(pipe);
  }
  String path;
  FileTool::addUserPath(name, path);
  if (access == 1) {
    FileTool::makeDir(path.get());
  }
  const char modes[2] = {way, '\0'};
  return attach(std::fopen(path.get(), modes));
}

int File::open(const char* name, int mode) {
  switch (mode) {
    case 0: return open(name, "r");
    case 1: return open(name, "w");
    case 2: return open(name, "a");
    default: return 0;
  }
}

int File::openPlain(const char* name) {
  close();
  type = stype = access = 0;
  if (!FileTool::isFile(name)) {
    return 0;
  }
  String path;
  FileTool::addUserPath(name, path);
  return attach(std::fopen(path.get(), "r"));
}

int File::close() {
  if (!opened) {
    return 0;
  }
  bool failed = access == 1 && std::ferror(fp) != 0;
  if (stype == 1) {
    failed |= access == 1 && std::fflush(fp) != 0;
  } else if (type == 1) {
    failed |= access == 1 && std::fflush(fp) != 0;
    failed |= ::pclose(fp) != 0 && access == 1;
  } else {
    failed |= std::fclose(fp) != 0 && access == 1;
  }
  if (failed) {
    Zqv::setError(Zqv::NOWRITE);
  }
  fp = nullptr;
  opened = false;
  return 1;
}

int File::rewind() {
  if (!opened || stype == 1 || type == 1) {
    return 0;
  }
  std::rewind(fp);
  return 1;
}

bool File::endFile() const {
  return !opened || std::feof(fp) != 0;
}

int File::getLine(char* buffer, int size) {
  if (buffer == nullptr || size < 1) {
    return 0;
  }
  int n = 0;
  while (opened && n < size - 1) {
    const int c = std::getc(fp);
    if (c == EOF) {
      break;
    }
    buffer[n++] = static_cast<char>(c);
    if (c == '\n') {
      break;
    }
  }
  buffer[n] = '\0';
  return n;
}

int File::getLine(String& buffer) {
  std::string line;
  const int room = buffer.getMax() - 1;
  while (opened && static_cast<int>(line.size()) < room) {
    const int c = std::getc(fp);
    if (c == EOF) {
      break;
    }
    line.push_back(static_cast<char>(c));
    if (c == '\n') {
      break;
    }
  }
  buffer.copy(line.c_str());
  return static_cast<int>(line.size());
}

int File::skipLine() {
  int c = EOF;
  while (opened && (c = std::getc(fp)) != EOF && c != '\n') {
  }
  return c == EOF ? 0 : 1;
}

int File::scanf(const char* format, ...) {
  if (!opened) {
    return EOF;
  }
  va_list args;
  va_start(args, format);
  const int n = std::vfscanf(fp, format, args);
  va_end(args);
  return n;
}

int File::printf(const char* format, ...) {
  if (!opened) {
    return 0;
  }
  va_list args;
  va_start(args, format);
  const int n = std::vfprintf(fp, format, args);
  va_end(args);
  return n;
}

int File::puts(const char* text) {
  return write(text, static_cast<size_t>(StrLib::length(text)));
}

int File::read(void* data, size_t size, size_t n) {
  if (!opened || data == nullptr || (type == 1 && access == 1)) {
    return -1;
  }
  constexpr size_t most = std::numeric_limits<int>::max();
  return static_cast<int>(std::fread(data, size, std::min(n, most), fp));
}

int File::read(void* data, size_t n) {
  return read(data, 1, n);
}

int File::read(Buffer& buffer, int n) {
  if (!opened || (type == 1 && access == 1)) {
    return -1;
  }
  buffer.check(n);
  const int have = buffer.getSize();
  if (n > have) {
    const int got = read(buffer.getData() + have, static_cast<size_t>(n - have));
    buffer.setSize(have + std::max(got, 0));
  }
  return buffer.getSize();
}

int File::read(Buffer& buffer) {
  return read(buffer, buffer.getMax());
}

int File::write(const void* data, size_t size, size_t n) {
  if (!opened || data == nullptr || access == 0) {
    return 0;
  }
  constexpr size_t most = std::numeric_limits<int>::max();
  return static_cast<int>(std::fwrite(data, size, std::min(n, most), fp));
}

int File::write(const void* data, size_t n) {
  return write(data, 1, n);
}

int File::seek(long off, int whence) {
  return opened && std::fseek(fp, off, whence) == 0 ? 1 : 0;
}

long File::tell() const {
  return opened ? std::ftell(fp) : -1;
}

int File::flush() {
  return opened && std::fflush(fp) == 0 ? 1 : 0;
}

}  // namespace ZQV
