#include "RcmZqvFile.h"

#include <algorithm>

#include "Grid.h"
#include "Image.h"
#include "RcmData.h"
#include "Scanp.h"
#include "StrLib.h"
#include "Strings.h"

namespace ZQV {

namespace {

constexpr char mosaic_info[] = "RCM Reflectivity mosaic [dBZ]";
constexpr int num_levels = 19;
constexpr float lower_dbz[num_levels] = {0,   20,  30,  40,  45,  50,  55,  120, 130, 140,
                                         145, 150, 155, 220, 230, 240, 245, 250, 255};
/** By the characters from '0' to 'B'. Those of '>' and '?' stand in each other's place: deliberate.
 */
constexpr float middle_dbz[num_levels] = {0,   22,  32,  42,  47,  52,  57,  100, 122, 132,
                                          142, 147, 152, 200, 232, 222, 242, 247, 252};
constexpr int num_rows = 360;     ///< looked at when writing
constexpr int num_cols = 452;     ///< of a row that is written
constexpr int line_cells = 78;    ///< of a line that is written
constexpr int last_column = 479;  ///< everything further on comes to lie there

int levelOf(char c) {
  return c >= '1' && c < '0' + num_levels ? c - '0' : 0;
}

void readVortex(Scanp& scanp, const char* format, RcmVortex* list, int max, int& num) {
  RcmVortex v;
  if (num < max && scanp.scan(format, v.id, v.x, v.y) == 3) {
    list[num++] = v;
  }
}

void writeVortices(File& file, const char* format_letter, const RcmVortex* list, int num) {
  for (int i = 0; i < num; i++) {
    file.printf("%s %3s %8.3f %8.3f\n", format_letter, list[i].id, static_cast<double>(list[i].x),
                static_cast<double>(list[i].y));
  }
}

}  // namespace

/** Walks over the lines of the mosaic; cell gets column, row and character of each cell on the
 *  grid. */
template <class Cell>
void RcmZqvFile::walk(const Cell& cell) {
  const int nx = domain.get().getNx();
  const int ny = domain.get().getNy();
  int x = 0;
  int y = 0;
  while (readMosaicLine() != 0) {
    if (line.starts_with('+')) {
      Scanp scanp;
      scanp.set(line.c_str());
      scanp.scan("+%D", y);
      x = 0;
      continue;
    }
    const int length = static_cast<int>(line.size());
    if (y >= 0 && y < ny) {
      for (int i = 0; i < length && x + i < nx; i++) {
        cell(x + i, y, line[static_cast<size_t>(i)]);
      }
    }
    x = std::min(x + length, last_column);
  }
}

int RcmZqvFile::read(Image& image) {
  if (!reads() || pastMosaic() || prepare(domain.get(), mosaic_info, image) == 0) {
    return 0;
  }
  for (int i = 0; i < num_levels; i++) {
    image.setValue(i, lower_dbz[i]);
  }
  walk([&image](int x, int y, char c) {
    if (levelOf(c) > 0) {
      image.setPixel(x, y, levelOf(c));
    }
  });
  return 1;
}

int RcmZqvFile::read(Grid& grid) {
  if (!reads() || pastMosaic() || prepare(domain.get(), mosaic_info, grid) == 0) {
    return 0;
  }
  walk([&grid](int x, int y, char c) {
    if (levelOf(c) > 0) {
      grid.setValue(x, y, middle_dbz[levelOf(c)]);
    }
  });
  return 1;
}

int RcmZqvFile::skipMosaic() {
  if (!reads()) {
    return 0;
  }
  while (readMosaicLine() != 0) {
  }
  while (!line.starts_with('*')) {
    if (readLine() == 0) {
      return 0;
    }
  }
  return 1;
}

/** Site, mode and status of a station's first line. */
void RcmZqvFile::readHead(RcmData& data) const {
  Scanp scanp;
  scanp.set(line.c_str());
  scanp.scan("** %s %d", data.id, data.num);
  data.status = RcmData::VALID;
  // Only whole words, for the letters may be those of a site.
  const Strings words(line.c_str());
  for (int i = 2; i < words.getNum(); i++) {
    if (words.equal(i, "PCPN")) {
      data.mode = RcmData::PRECIP;
    } else if (words.equal(i, "CLAR")) {
      data.mode = RcmData::CLEAR_AIR;
    } else {
      data.status = std::min(data.status, findStatus(words.getString(i)));
    }
  }
}

void RcmZqvFile::readEntry(RcmData& data) const {
  Scanp scanp;
  scanp.set(line.c_str());
  switch (scanp.getChar(0)) {
    case 'Z': scanp.scan("Z %d %f %f", data.maxt, data.maxt_x, data.maxt_y); break;
    case 'T': readVortex(scanp, "T %s %f %f", data.tvs, RcmData::max_tvs, data.num_tvs); break;
    case 'M': readVortex(scanp, "M %s %f %f", data.meso, RcmData::max_meso, data.num_meso); break;
    case 'S': {
      RcmStorm s;
      if (data.num_storm < RcmData::max_storm &&
          scanp.scan("S %s %f %f %d %d %d %d", s.id, s.x, s.y, s.dir, s.spd, s.hgt, s.hail) >= 3) {
        data.storm[data.num_storm++] = s;
      }
      break;
    }
    default: break;
  }
}

int RcmZqvFile::read(RcmData& data) {
  data.init();
  if (skipMosaic() == 0) {
    return 0;
  }
  readHead(data);
  data.setLocType(RcmData::EARTH);
  data.date = date;
  while (readLine() != 0 && !line.starts_with('*')) {
    readEntry(data);
  }
  return 1;
}

int RcmZqvFile::write(const Image& image) {
  if (!writes()) {
    return 0;
  }
  file.puts("RCM SUMMARY\n");
  std::string text;
  for (int y = 0; y < num_rows; y++) {
    bool used = false;
    text.clear();
    for (int x = 0; x < num_cols; x++) {
      const int level = image.getVal(x, y);
      used = used || (level > 0 && level <= num_levels);
      text += static_cast<char>(level > 0 && level < num_levels ? '0' + level : ' ');
      if ((x + 1) % line_cells == 0) {
        text += '\n';
      }
    }
    if (used) {
      text += '\n';
      file.printf("+%3d\n", y);
      file.puts(text.c_str());
    }
  }
  return 1;
}

int RcmZqvFile::write(const RcmData& data) {
  if (!writes()) {
    return 0;
  }
  num++;
  const char* word = statusWord(data.status);
  if (data.mode == RcmData::PRECIP) {
    word = "PCPN";
  } else if (data.mode == RcmData::CLEAR_AIR) {
    word = "CLAR";
  }
  file.printf("** %s %3.3d%s%s\n", data.id, data.num, word != nullptr ? " " : "",
              StrLib::valid(word, ""));
  if (data.maxt != Const::MISS) {
    file.printf("Z %3d %8.3f %8.3f\n", data.maxt, static_cast<double>(data.maxt_x),
                static_cast<double>(data.maxt_y));
  }
  writeVortices(file, "T", data.tvs, data.num_tvs);
  writeVortices(file, "M", data.meso, data.num_meso);
  for (int i = 0; i < data.num_storm; i++) {
    const RcmStorm& s = data.storm[i];
    file.printf("S %3s %8.3f %8.3f %3.3d %3.3d %3d %d\n", s.id, static_cast<double>(s.x),
                static_cast<double>(s.y), s.dir, s.spd, s.hgt, s.hail);
  }
  return 1;
}

}  // namespace ZQV
