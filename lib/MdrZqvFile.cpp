#include "MdrZqvFile.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "Grid.h"
#include "Image.h"
#include "MdrData.h"
#include "Scanp.h"
#include "StrLib.h"

namespace ZQV {

namespace {

constexpr char mosaic_info[] = "MDR Reflectivity mosaic [dBZ]";
constexpr int num_levels = 7;
constexpr float lower_dbz[num_levels] = {0, 20, 30, 40, 45, 50, 55};
constexpr float middle_dbz[num_levels] = {0, 22, 32, 42, 47, 52, 57};

/** A part of the mosaic: the lines around it, and its rows and columns from 0, the last included.
 */
struct MosaicPanel {
  const char* head;
  int row0;
  int row1;
  int col0;
  int col1;
  const char* tail;
};

constexpr MosaicPanel panels[] = {
    {"+ 01 081\n", 0, 41, 80, 120, "+ 44 081\n"}, {"+ 43 081\n", 42, 87, 80, 120, "+ 90 081\n"},
    {"+ 01 041\n", 0, 51, 40, 79, "+ 54 041\n"},  {"+ 53 041\n", 52, 87, 40, 79, "+ 90 041\n"},
    {"+ 01 001\n", 0, 41, 0, 39, "+ 44 001\n"},   {"+ 43 001\n", 42, 87, 0, 39, "+ 90 001\n"},
};

const char* orStar(const char* text) {
  return StrLib::valid(text, "*");
}

/** A word of a line that isn't left out. */
bool isGiven(const char* word) {
  return *word != '\0' && !StrLib::equal(word, "*");
}

void readRegion(const char* prec, const char* tops, const char* move, MdrRegion& reg) {
  if (isGiven(prec)) {
    StrLib::copy(reg.prec[0].type, sizeof(reg.prec[0].type), prec);
    reg.num_prec = 1;
  }
  Scanp scanp;
  scanp.set(tops);
  MdrTops top;
  const int found = scanp.scan("%d,%3d%3d", top.hgt, top.dir, top.rad);
  if (found == 3) {
    reg.tops = top;
  } else if (found > 0) {
    reg.tops.hgt = top.hgt;
  }
  scanp.set(move);
  MdrMove m;
  if (isGiven(move) && scanp.scan("%c%2d%2d", m.type, m.dir, m.spd) == 3) {
    m.dir *= 10;
    reg.move[0] = m;
    reg.num_move = 1;
  }
}

}  // namespace

/** Walks over the lines of the mosaic.
 *  @param back  what row and column of a "+" line are taken down by
 *  @param step  rows that a "+" line takes up itself
 *  @param cell  gets column, row and character of each cell on the grid */
template <class Cell>
void MdrZqvFile::walk(int back, int step, const Cell& cell) {
  const int nx = domain.get().getNx();
  const int ny = domain.get().getNy();
  int x0 = 0;
  int y = 0;
  Scanp scanp;
  while (readMosaicLine() != 0) {
    if (line.starts_with('+')) {
      int row = 0;
      int col = 0;
      scanp.set(line.c_str());
      if (scanp.scan("+%D%d", row, col) == 2) {
        // No further off than a line is long, so that the sums stay small.
        y = std::clamp(row, -ny, 2 * ny) - back + step;
        x0 = std::clamp(col, -nx, 2 * nx) - back;
      }
      continue;
    }
    if (y >= 0 && y < ny) {
      const int length = static_cast<int>(line.size());
      for (int i = std::max(0, -x0); i < std::min(length, nx - x0); i++) {
        cell(x0 + i, y, line[static_cast<size_t>(i)]);
      }
    }
    y = std::min(y + 1, ny);
  }
}

int MdrZqvFile::read(Image& image) {
  if (!reads() || pastMosaic() || prepare(domain.get(), mosaic_info, image) == 0) {
    return 0;
  }
  for (int i = 0; i < num_levels; i++) {
    image.setValue(i, lower_dbz[i]);
  }
  walk(1, 0, [&image](int x, int y, char c) {
    if (c >= '1' && c <= '9') {
      image.setPixel(x, y, c - '0');
    }
  });
  return 1;
}

int MdrZqvFile::read(Grid& grid) {
  if (!reads() || pastMosaic() || prepare(domain.get(), mosaic_info, grid) == 0) {
    return 0;
  }
  walk(2, 1, [&grid](int x, int y, char c) {
    grid.setValue(x, y, c >= '1' && c < '0' + num_levels ? middle_dbz[c - '0'] : 0.0F);
  });
  return 1;
}

int MdrZqvFile::read(MdrData& data) {
  data.init();
  if (!reads()) {
    return 0;
  }
  while (readMosaicLine() != 0) {
  }
  char config[10] = "";
  char prec[16] = "";
  char tops[24] = "";
  char move[8] = "";
  Scanp scanp;
  do {
    if (readLine() == 0) {
      return 0;
    }
    scanp.set(line.c_str());
    scanp.scan(" ");
    scanp.inc();
  } while (scanp.scan("%s %s %s %*s %s %s", data.id, config, prec, tops, move) < 1);
  data.date = date;
  data.status = findStatus(config);
  if (data.status == MdrData::VALID) {
    data.num_reg = 1;
    StrLib::copy(data.reg[0].config, sizeof(data.reg[0].config), isGiven(config) ? config : "");
  }
  readRegion(prec, tops, move, data.reg[0]);
  return 1;
}

int MdrZqvFile::write(const Image& image) {
  if (!writes()) {
    return 0;
  }
  file.puts("SDUS SUMMARY\n");
  std::string row;
  for (const MosaicPanel& panel : panels) {
    file.puts(&panel == std::begin(panels) ? "" : "SDUS\n");
    file.puts(panel.head);
    for (int y = panel.row0; y <= panel.row1; y++) {
      row.clear();
      for (int x = panel.col0; x <= panel.col1; x++) {
        const int level = image.getVal(x, y);
        row += static_cast<char>(level > 0 && level < num_levels ? '0' + level : ' ');
      }
      row += '\n';
      file.puts(row.c_str());
    }
    file.puts(panel.tail);
  }
  return 1;
}

int MdrZqvFile::write(const MdrData& data) {
  if (!writes()) {
    return 0;
  }
  if (num == 0) {
    file.puts("SDXX STATIONS\n");
  }
  num++;
  const MdrRegion& reg = data.reg[0];
  const char* word = statusWord(data.status);
  const MdrPrecip& prec = reg.prec[0];
  const char* mark = reg.num_prec > 0 ? prec.getMark() : nullptr;
  file.printf("%s %s %s%s %s", data.id, word != nullptr ? word : orStar(reg.config),
              mark != nullptr ? prec.type : "*", mark != nullptr ? mark : "", orStar(reg.trend));
  const MdrTops& tops = reg.tops;
  if (tops.hgt == Const::MISS) {
    file.puts(" *");
  } else if (tops.dir == Const::MISS || tops.rad == Const::MISS) {
    file.printf(" %d,000000", tops.hgt);
  } else {
    file.printf(" %d,%3.3d%3.3d", tops.hgt, tops.dir, tops.rad);
  }
  for (int i = 0; i < MdrRegion::max_move; i++) {
    const MdrMove& move = reg.move[i];
    if (i < reg.num_move && move.type != ' ') {
      file.printf(" %c%2.2d%2.2d", move.type, move.dir / 10, move.spd);
    } else {
      file.puts(" *");
    }
  }
  file.puts("\n");
  return 1;
}

}  // namespace ZQV
