#include "MdrFile.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "MdrData.h"
#include "Scanp.h"
#include "StrLib.h"
#include "Strings.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr int line_size = 201;  ///< longer lines come in pieces

bool isShape(const char* word) {
  constexpr const char* shapes[] = {"AREA", "CELL", "LINE", "LN", "LYR", "SPRL", "EYE"};
  return std::any_of(std::begin(shapes), std::end(shapes),
                     [word](const char* shape) { return StrLib::equal(word, shape); });
}

bool isLetter(char c) {
  return c >= 'A' && c <= 'Z';
}

/** Matches, and steps over what was used only if at least so many matched. */
template <class... T>
bool takeWhole(Scanp& scanp, int matches, const char* format, T&... targets) {
  if (scanp.scan(format, targets...) < matches) {
    return false;
  }
  scanp.inc();
  return true;
}

int intensityCode(const char* marks) {
  struct Mark {
    const char* text;
    int code;
  };
  constexpr Mark list[] = {{"-", 1}, {"", 2}, {"+", 3}, {"++", 4}, {"X", 5}, {"XX", 6}, {"U", 9}};
  for (const Mark& mark : list) {
    if (StrLib::equal(marks, mark.text)) {
      return mark.code;
    }
  }
  return 0;
}

void decodePrecip(Scanp& scanp, MdrRegion& reg) {
  while (reg.num_prec < MdrRegion::max_prec) {
    MdrPrecip prec;
    char marks[4] = "";
    if (!takeWhole(scanp, 2, "%!!d%[TRWSZLPAI]%[-+XU] ", prec.cover, prec.type, marks)) {
      return;
    }
    prec.cover = prec.cover == Const::MISS ? 10 : prec.cover;
    prec.intens = intensityCode(marks);
    Zqv::outDebug("  TYPE:%d %s %s\n", prec.cover, prec.type, marks);
    reg.prec[reg.num_prec++] = prec;
  }
}

void decodeLocs(Scanp& scanp, MdrRegion& reg) {
  while (reg.num_loc < MdrRegion::max_loc) {
    MdrLoc loc;
    int n = 0;
    if (takeWhole(scanp, 2, "%d/%d ", loc.dir, loc.rad)) {
      Zqv::outDebug("  REG LOC: %d DEGREES AT: %d MILES\n", loc.dir, loc.rad);
    } else if (takeWhole(scanp, 2, "%d%*(W) ", n)) {
      Zqv::outDebug("  REG WIDTH: %d MILES\n", n);
      loc = {Const::MISS, n};
    } else if (takeWhole(scanp, 2, "%*(D)%d ", n)) {
      Zqv::outDebug("  REG DIAMETER: %d MILES\n", n);
      loc = {Const::MISS, n};
    } else {
      return;
    }
    reg.loc[reg.num_loc++] = loc;
  }
}

/** Up to three movements; those that have no place any more are passed over. */
void decodeMoves(Scanp& scanp, MdrRegion& reg) {
  for (int i = 0; i < MdrRegion::max_move; i++) {
    char kind[8] = "";
    MdrMove move;
    if (!takeWhole(scanp, 3, "%[ALC]%2d%2d ", kind, move.dir, move.spd)) {
      return;
    }
    move.type = kind[0];
    move.dir *= 10;
    Zqv::outDebug("  %s MOVE: %d DEGREES AT: %d KNOTS\n",
                  move.type == 'A'   ? "AREA"
                  : move.type == 'C' ? "CELL"
                                     : "LINE",
                  move.dir, move.spd);
    if (reg.num_move < MdrRegion::max_move) {
      reg.move[reg.num_move++] = move;
    }
  }
}

void decodeTops(Scanp& scanp, MdrRegion& reg) {
  MdrTops tops;
  if (takeWhole(scanp, 4, "%*(MT) %d AT %d/%d ", tops.hgt, tops.dir, tops.rad) ||
      takeWhole(scanp, 4, "%*(MT) %d %d/%d ", tops.hgt, tops.dir, tops.rad)) {
    Zqv::outDebug("  MAX TOPS: %d00 FEET -- %d DEGREES AT: %d MILES\n", tops.hgt, tops.dir,
                  tops.rad);
    reg.tops = tops;
  } else if (takeWhole(scanp, 3, "%*(MT) %*(U)%d ", tops.hgt)) {
    Zqv::outDebug("  MAX TOPS: %d00 FEET\n", tops.hgt);
    reg.tops = {tops.hgt, Const::MISS, Const::MISS};
  }
}

}  // namespace

/** A heading's date group is its third word, or the fourth behind a mark. */
void MdrFile::readHeading(const char* line) {
  const Strings words(line);
  const char* group = words.getString(StrLib::equal(line, "** ", 3) ? 3 : 2);
  pdate = date;
  Scanp scanp;
  scanp.set(group);
  int day = 0;
  int hour = 0;
  int minute = 0;
  if (scanp.scan("%2d%2d%2d", day, hour, minute) == 3) {
    pdate.adjustMinute(day, hour, minute);
  }
}

int MdrFile::read(MdrRawData& raw) {
  raw = MdrRawData();
  pdate = date;
  if (type != BULLETIN || !opened) {
    return 0;
  }
  bool found = false;
  bool goes_on = false;  // this is the rest of a line
  char line[line_size];
  for (int n = 0; (n = file.getLine(line, sizeof(line))) > 0;) {
    const bool is_rest = goes_on;
    goes_on = line[n - 1] != '\n';
    StrLib::clean(line);
    if (StrLib::contains(line, "SDUS")) {
      readHeading(line);
    }
    if (found) {
      if (*line == '\0') {
        if (is_rest) {
          continue;
        }
        break;
      }
      StrLib::append(raw.data, sizeof(raw.data), "\n");
      StrLib::append(raw.data, sizeof(raw.data), line);
      continue;
    }
    const Strings words(line);
    if (words.getLength(0) > 2 && words.getLength(0) < 6 && words.getLength(1) == 4 &&
        StrLib::isNum(words.getString(1), 4)) {
      found = true;
      StrLib::copy(raw.data, sizeof(raw.data), line);
      StrLib::copy(raw.id, sizeof(raw.id), words.getString(0));
    }
  }
  raw.len = StrLib::length(raw.data);
  return found ? 1 : 0;
}

int MdrFile::read(MdrData& data) {
  if (type == SUMMARY) {
    return zqv.read(data);
  }
  MdrRawData raw;
  if (read(raw) == 0) {
    data.init();
    return 0;
  }
  return decode(raw, data);
}

int MdrFile::decode(const MdrRawData& raw, MdrData& data) const {
  constexpr char marks[] = "%*(RTD|SPL|COR) ";
  data.init();
  data.date = pdate;
  Zqv::outDebug("LINE:%s:\n", raw.data);
  Scanp scanp;
  scanp.set(raw.data);
  scanp.take(" ");
  scanp.take("%<5s ", data.id);
  scanp.take(marks);
  int time = Const::MISS;
  if (scanp.take("%4d ", time) > 0) {
    data.date.adjustMinute(time / 100, time % 100);
  }
  scanp.take(marks);
  char word[20] = "";
  scanp.take("%s ", word);
  if (StrLib::equal(word, "PPINE")) {
    data.status = MdrData::NO_ECHO;
    Zqv::outDebug("ID: %s TIME: %d NO ECHO\n", data.id, time);
  } else if (StrLib::equal(word, "DLAD") || StrLib::equal(word, "PPINA")) {
    data.status = MdrData::NOT_AVAILABLE;
    Zqv::outDebug("ID: %s TIME: %d NOT AVAILABLE\n", data.id, time);
  } else if (StrLib::equal(word, "PPIOM")) {
    data.status = MdrData::MAINTENANCE;
    Zqv::outDebug("ID: %s TIME: %d OUT FOR MAINTAINANCE\n", data.id, time);
  } else {
    data.status = MdrData::VALID;
    Zqv::outDebug("ID: %s TIME: %d STATUS: %s\n", data.id, time, word);
    decodeRegions(scanp, word, data);
  }
  decodeEchoes(raw.data, data);
  return 1;
}

/** Regions from the word of a shape on. */
void MdrFile::decodeRegions(Scanp& scanp, const char* first, MdrData& data) {
  char word[20] = "";
  StrLib::copy(word, sizeof(word), first);
  while (data.num_reg < MdrData::max_reg && isShape(word)) {
    MdrRegion& reg = data.reg[data.num_reg++];
    StrLib::copy(reg.config, sizeof(reg.config), word);
    Zqv::outDebug("  CONFIG: %s\n", reg.config);
    decodeRegion(scanp, reg);
    *word = '\0';
    scanp.take("%s ", word);
  }
}

void MdrFile::decodeRegion(Scanp& scanp, MdrRegion& reg) {
  decodePrecip(scanp, reg);
  scanp.take(" ");
  if (takeWhole(scanp, 2, "%*(/)%s ", reg.trend)) {
    Zqv::outDebug("  TREND:%s\n", reg.trend);
  } else {
    scanp.take("%*(/) ");  // the mark alone
  }
  decodeLocs(scanp, reg);
  decodeMoves(scanp, reg);
  decodeTops(scanp, reg);
  decodeMoves(scanp, reg);
}

/** The echo groups, wherever in the report they begin. */
void MdrFile::decodeEchoes(const char* text, MdrData& data) {
  const char* mark = std::strchr(text, '^');
  if (mark == nullptr) {
    mark = std::strchr(text, '#');
  }
  Scanp scanp;
  scanp.set(mark != nullptr ? mark + 1 : "");
  scanp.take(" ");
  char row = ' ';
  char col = ' ';
  char run[81] = "";
  while (takeWhole(scanp, 3, "%c%c%s ", row, col, run)) {
    if (!isLetter(row) || !isLetter(col)) {
      Zqv::outWarning("MdrFile::decode: Invalid row/col for %s: %c %c\n", data.id, row, col);
      continue;
    }
    // Letters beyond the box, and the end of a run that leaves it, have no cell.
    const int y = row - 'A';
    int x = col - 'A';
    for (const char* c = run; *c != '\0' && x < MdrData::size; c++, x++) {
      data.echo[x][y] = static_cast<unsigned char>(*c >= '0' && *c <= '9' ? *c - '0' : 0);
    }
  }
  if (Zqv::checkDebug(1)) {
    Zqv::outDebug("ECHOS\n");
    data.printEchoes();
  }
}

}  // namespace ZQV
