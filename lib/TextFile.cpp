#include "TextFile.h"

#include <algorithm>
#include <array>

#include "FileTool.h"
#include "StrLib.h"
#include "String.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr long MAX_FILE = 1L << 20;

}  // namespace

int TextFile::open(const char* name) {
  if (!StrLib::valid(name)) return 0;
  String path;
  FileTool::addPath(Zqv::getDatabasePath(), name, path);
  return file.openPlain(path.get());
}

int TextFile::next(std::string& line, int max) {
  std::array<char, 256> buffer{};
  const int size = std::clamp(max + 1, 2, static_cast<int>(buffer.size()));
  const int n = file.getLine(buffer.data(), size);
  if (n < 1) return 0;
  if (n == size - 1 && buffer[static_cast<size_t>(n) - 1] != '\n') file.skipLine();
  line = buffer.data();
  StrLib::trimWS(line);
  line.erase(0, line.find_first_not_of(" \t"));
  return 1;
}

int TextFile::readAll(const char* path, std::string& text) {
  File plain;
  if (!StrLib::valid(path) || plain.openPlain(path) == 0) return 0;
  text.resize(static_cast<size_t>(std::clamp(FileTool::getSize(path), 0L, MAX_FILE)));
  text.resize(static_cast<size_t>(std::max(plain.read(text.data(), text.size()), 0)));
  return 1;
}

}  // namespace ZQV
