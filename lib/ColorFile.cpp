#include "ColorFile.h"

#include <array>
#include <cstdio>
#include <cstdlib>

#include "ColorMap.h"
#include "StrLib.h"
#include "Strings.h"
#include "TextFile.h"

namespace ZQV {

namespace {

constexpr int DEFAULT_MAX = 256;

/** Adds the entry of one line, if it is one. */
void addEntry(const char* line, ColorMap& map) {
  std::array<char, 20> name{};
  std::array<char, 7> hex{};
  float r = 0.0F;
  float g = 0.0F;
  float b = 0.0F;
  int skip = 0;
  // A sequence number ahead of the name means nothing.
  if (std::sscanf(line, "%*d%n", &skip) >= 0 && skip > 0) line += skip;
  if (std::sscanf(line, "%19s %f %f %f", name.data(), &r, &g, &b) == 4) {
    map.add(name.data(), r, g, b);
  } else if (std::sscanf(line, "%19s #%6[0-9a-fA-F]", name.data(), hex.data()) == 2 &&
             StrLib::length(hex.data()) == 6) {
    const unsigned long v = std::strtoul(hex.data(), nullptr, 16);
    map.add(name.data(), static_cast<float>(v >> 16) / 255.0F,
            static_cast<float>(v >> 8 & 0xff) / 255.0F, static_cast<float>(v & 0xff) / 255.0F);
  }
}

}  // namespace

int ColorFile::read(const char* names, ColorMap& map) {
  const Strings list(names, ',');
  int result = list.getNum() > 0 ? 1 : 0;
  for (int i = 0; i < list.getNum(); i++) {
    if (readFile(list.getString(i), map) == 0) result = 0;
    if (map.getNumFill() == 0) map.setNumFill(map.getNum());
  }
  return result;
}

int ColorFile::readFile(const char* name, ColorMap& map) {
  TextFile file;
  if (file.open(name) == 0) return 0;
  if (map.getMax() == 0) map.init(DEFAULT_MAX);
  std::string line;
  while (file.next(line) != 0) {
    if (line.empty() || line[0] == '#') continue;
    if (!StrLib::iequal(line.c_str(), "END")) {
      addEntry(line.c_str(), map);
    } else if (map.getNumFill() == 0) {
      map.setNumFill(map.getNum());
    }
  }
  if (map.getNumFill() == 0) map.setNumFill(map.getNum());
  return 1;
}

}  // namespace ZQV
