#include "CityTool.h"

#include <array>
#include <cstdio>
#include <cstring>

#include "CityData.h"
#include "CityFile.h"
#include "EarthPoint.h"
#include "FileTool.h"
#include "StrLib.h"
#include "String.h"
#include "Strings.h"
#include "Zqv.h"

namespace ZQV {

namespace {

using WmoText = std::array<char, 32>;

WmoText wmoText(const CityData& data) {
  WmoText text{};
  std::snprintf(text.data(), text.size(), "%5.5ld", data.wmo);
  return text;
}

struct Block {
  const char* prefix;
  long first, last;
};

// Blocks of WMO station numbers by country prefix (WMO No. 9, volume A). A code's three digits are
// the last three of the number, so a block lies within one thousand; a country with more has
// several rows.
constexpr Block BLOCKS[] = {
    {"EN", 1000, 1499},   {"ES", 2000, 2699},   {"EF", 2700, 2999},   {"EG", 3000, 3899},
    {"EI", 3900, 3999},   {"BI", 4000, 4199},   {"BG", 4200, 4499},   {"EK", 6000, 6199},
    {"EH", 6200, 6399},   {"EB", 6400, 6499},   {"EL", 6590, 6599},   {"LS", 6600, 6999},
    {"LF", 7000, 7999},   {"LE", 8000, 8499},   {"LP", 8500, 8599},   {"ED", 10000, 10999},
    {"LO", 11000, 11399}, {"LK", 11400, 11799}, {"LZ", 11800, 11999}, {"EP", 12000, 12699},
    {"LH", 12700, 12999}, {"LJ", 14000, 14199}, {"LD", 14200, 14499}, {"LQ", 14500, 14699},
    {"LR", 15000, 15499}, {"LB", 15500, 15999}, {"LI", 16000, 16589}, {"LM", 16590, 16599},
    {"LG", 16600, 16799}, {"LT", 17000, 17599}, {"LC", 17600, 17699},
};

}  // namespace

int CityTool::getFilename(const char* name, String& out) {
  const char* wanted = name;
  if (!StrLib::valid(wanted)) {
    wanted = StrLib::valid(Zqv::getResrc("city_file"), "sao.cty");
  }
  if (StrLib::iequal(wanted, "none")) {
    out.clear();
    return 0;
  }
  FileTool::addPath(Zqv::getDatabasePath(), wanted, out);
  return 1;
}

int CityTool::search(const char* name, const char* key, CityData& data) {
  data.init();
  String path;
  if (key == nullptr || getFilename(name, path) == 0) {
    return 0;
  }
  CityFile file(path.get());
  if (!file.isOpen()) {
    return 0;
  }
  Zqv::outMessage(8, "Searching the city database file for: %s ...\n", key);
  while (file.read(data) != 0) {
    if (StrLib::iequal(data.id, key) || StrLib::iequal(data.name, key) ||
        StrLib::iequal(wmoText(data).data(), key)) {
      return 1;
    }
  }
  data.init();
  return 0;
}

int CityTool::locate(const char* name, const char* key, EarthPoint& point) {
  point.init();
  CityData data;
  if (search(name, key, data) == 0) {
    return 0;
  }
  point.set(data.lat, data.lon);
  return 1;
}

int CityTool::compareData(const Strings& keys, const CityData& data) {
  const WmoText wmo = wmoText(data);
  for (int i = 0; i < keys.getNum(); i++) {
    const char* key = keys.getString(i);
    const int length = keys.getLength(i);
    if ((length == 5 && StrLib::iequal(key, wmo.data())) || StrLib::iequal(key, data.id) ||
        (length >= 5 && StrLib::iequal(data.name, key, length))) {
      return i;
    }
  }
  return -1;
}

int CityTool::toWmo(const char* id, long& wmo) {
  if (StrLib::length(id) != 5 || !StrLib::isNum(id + 2, 3)) {
    return 0;
  }
  for (const Block& block : BLOCKS) {
    if (StrLib::iequal(id, block.prefix, 2)) {
      const long found = block.first / 1000 * 1000 + StrLib::toInt(id + 2);
      if (found >= block.first && found <= block.last) {
        wmo = found;
        return 1;
      }
    }
  }
  return 0;
}

int CityTool::toId(long wmo, String& id) {
  for (const Block& block : BLOCKS) {
    if (wmo >= block.first && wmo <= block.last) {
      char text[32];
      std::snprintf(text, sizeof(text), "%s%3.3ld", block.prefix, wmo % 1000);
      id.copy(text);
      return 1;
    }
  }
  id.clear();
  return 0;
}

}  // namespace ZQV
