#include "RcmFile.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>

#include "Convert.h"
#include "RcmData.h"
#include "Scanp.h"
#include "StrLib.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr int enough = 100;       ///< characters that make a message
constexpr int max_digits = 2000;  ///< of all echo groups

bool isLetter(char c) {
  return std::isalpha(static_cast<unsigned char>(c)) != 0;
}

bool isBlank(char c) {
  return c != '\0' && std::strchr(" \n\r\t", c) != nullptr;
}

/** To the next group, if there is one. */
void skipToSlash(Scanp& scanp) {
  if (scanp.search("/") != 0) {
    scanp.inc();
  }
}

/** To a part of the message that stands further on. */
void skipTo(Scanp& scanp, const char* part) {
  if (scanp.search(part) != 0) {
    scanp.inc();
  }
}

/** Behind the entry of a list that couldn't be read to its end. */
void skipToComma(Scanp& scanp) {
  scanp.take("%*[^,//]");
  scanp.take(", ");
}

/** Cell of a location code: two letters for a row and a column of blocks of 4 by 4 cells, and one
 *  for the cell within. */
struct Cell {
  explicit Cell(const char* code) {
    const int k = code[2] - 'A';
    x = 4 * (code[1] - 'A') + k / 4;
    y = 4 * (code[0] - 'A') + k % 4;
  }
  int x;
  int y;
};

/** Place of a location of three characters. */
template <class Item>
void setPlace(const char* code, Item& item) {
  const Cell cell(code);
  item.x = static_cast<float>(cell.x);
  item.y = static_cast<float>(cell.y);
}

/** Walks over the blocks of the binary framing, each with a head of two bytes, the lower 12 bits of
 *  which are its length in halfwords, and two bytes for its kind.
 *  @return true with the scanner at the text; false if it doesn't come to one */
bool decodeBlocks(const RcmRawData& raw, Scanp& scanp, RcmData& data) {
  for (int at = 0; at + 4 <= raw.len;) {
    std::array<unsigned char, 4> head{};
    std::memcpy(head.data(), raw.data + at, head.size());
    const int words = (head[0] & 0x0F) << 8 | head[1];
    const int kind = head[2] << 8 | head[3];
    Zqv::outDebug(5, "PKT: %X %X %d %X\n", static_cast<unsigned>(head[2]),
                  static_cast<unsigned>(head[3]), words, static_cast<unsigned>(head[0] >> 4));
    scanp.offset(at + 4);
    switch (kind) {
      case 0x0101: scanp.scan("%3d", data.num); break;
      case 0x0110: {
        if (scanp.take("%*2D%8F%10F%4F", data.lat, data.lon, data.elev) == 4) {
          data.elev = Convert::FTtoM(data.elev);
        }
        Zqv::outDebug(3, "LOC: %.3f %.3f %.0f \n", static_cast<double>(data.lat),
                      static_cast<double>(data.lon), static_cast<double>(data.elev));
        int year = 0;
        int month = 0;
        int day = 0;
        int hour = 0;
        int minute = 0;
        if (scanp.take("%4D%2D%2D%2D%2D", year, month, day, hour, minute) == 5) {
          data.date.set(year, month, day, hour, minute, Const::FMISS);
        }
        break;
      }
      case 0x0410:
      case 0x0104: break;
      case 0x0504: return true;
      default: return false;
    }
    if (words == 0) {
      return false;
    }
    at += 2 * words;
  }
  return false;
}

void decodeState(Scanp& scanp, RcmData& data) {
  data.status = RcmData::VALID;
  scanp.take("%*(EDITED|UNEDITED) ");
  if (scanp.take("%*(RADNE) ") > 0) {
    data.status = RcmData::NO_ECHO;
  }
  if (scanp.take("%*(RADOM) ") > 0) {
    data.status = RcmData::MAINTENANCE;
  }
  Zqv::outDebug(4, "PTR: %20.20s\n", scanp.string());
  char mode[5] = "";
  scanp.take("%*(/MD)%4s ", mode);
  if (StrLib::equal(mode, "PCPN")) {
    data.mode = RcmData::PRECIP;
  } else if (StrLib::equal(mode, "CLAR")) {
    data.mode = RcmData::CLEAR_AIR;
  }
  if (scanp.scan("%*(/SC)%*d ") < 2) {
    scanp.scan("%*(/SC) ");
  }
  scanp.inc();
}

/** One group of echoes: digits and their repetitions from a cell on along x. @return digits used */
int decodeRun(Scanp& scanp, Cell cell, int before, bool trace, RcmData& data) {
  int level = -1;
  int used = 0;
  const auto lay = [&](int n) {
    for (; n > 0; n--, cell.x++) {
      if (level >= 0 && cell.x >= 0 && cell.x < RcmData::size && cell.y >= 0 &&
          cell.y < RcmData::size) {
        data.echo[cell.x][cell.y] = static_cast<unsigned char>(level);
      }
    }
  };
  for (; before + used < max_digits; scanp.inc(1)) {
    const char c = scanp.getChar(0);
    if (c >= '0' && c <= '9') {
      level = c - '0';
      used++;
      if (trace) {
        Zqv::outDebug(5, "ECHO: %d %d %d = %d\n", before + used, cell.x, cell.y, level);
      }
      lay(1);
    } else if (c >= 'A' && c <= 'Z') {
      const int n = c - 'A' + 1;
      if (trace) {
        Zqv::outDebug(5, "ECHO-REP: %d %d %d = %d\n", n, cell.x, cell.y, level);
      }
      lay(n);
    } else if (!isBlank(c)) {
      break;
    }
  }
  return used;
}

void decodeEchoes(Scanp& scanp, RcmData& data) {
  int num = 0;
  Zqv::outDebug(4, "PTR1: %20.20s\n", scanp.string());
  scanp.take("%*(/NI)%d: ", num);
  Zqv::outDebug(4, "NI NUM: %d\n", num);
  Zqv::outDebug(4, "ECHO: %d %60.60s\n", num, scanp.string());
  const bool trace = Zqv::checkDebug(5);
  int digits = 0;
  while (digits < max_digits && isLetter(scanp.getChar(0))) {
    const char code[3] = {scanp.getChar(0), scanp.getChar(1), scanp.getChar(2)};
    const Cell cell(code);
    if (trace) {
      Zqv::outDebug(5, "LOC: %c %c %c\n", code[0], code[1], code[2]);
      Zqv::outDebug(5, "XY: %d %d\n", cell.x, cell.y);
    }
    scanp.inc(3);
    digits += decodeRun(scanp, cell, digits, trace, data);
    while (scanp.getChar(0) == ',' || isBlank(scanp.getChar(0))) {
      scanp.inc(1);
    }
  }
  if (digits >= max_digits) {
    skipToSlash(scanp);
  }
  Zqv::outDebug(4, "ECHO LEFT: %20.20s\n", scanp.string());
}

/** Storms of the first part. One without a movement stays, and the list goes on behind it. */
void decodeStorms(Scanp& scanp, RcmData& data) {
  int num = 0;
  Zqv::outDebug(4, "PTR CEN: %20.20s\n", scanp.string());
  scanp.take("%*(/NCEN)%d: ", num);
  while (data.num_storm < RcmData::max_storm) {
    RcmStorm storm;
    char code[4] = "";
    const int n = scanp.take("%*(C)%2s%3s %3d%3d, ", storm.id, code, storm.dir, storm.spd);
    if (n < 3) {
      break;
    }
    if (n < 5) {
      storm.dir = storm.spd = Const::MISS;
      skipToComma(scanp);
    }
    setPlace(code, storm);
    Zqv::outDebug(5, "%d %s\n", data.num_storm, storm.id);
    data.storm[data.num_storm++] = storm;
  }
}

void decodeWinds(Scanp& scanp, RcmData& data) {
  Zqv::outDebug(4, "PTR2: %20.20s\n", scanp.string());
  if (scanp.take("%*(/NEXRBB) %*d %*d ") < 1) {
    return;
  }
  constexpr int rms[] = {2, 4, 6, 8, 10, 12, 15};
  while (data.num_vad < RcmData::max_vad) {
    RcmWind wind;
    char error = ' ';
    Zqv::outDebug(5, "PTR VAD: %d %20.20s\n", data.num_vad, scanp.string());
    if (scanp.take("%d%c%3d%3d, ", wind.hgt, error, wind.dir, wind.spd) < 4) {
      break;
    }
    wind.rms = error >= 'A' && error <= 'G' ? rms[error - 'A'] : Const::MISS;
    data.vad[data.num_vad++] = wind;
  }
  Zqv::outDebug(4, "PTR -VAD: %20.20s\n", scanp.string());
  skipToSlash(scanp);
  scanp.take("%*(/ENDBB) ");
}

void decodeVortices(Scanp& scanp, const char* head, const char* format, RcmVortex* list, int max,
                    int& num) {
  int stated = 0;
  if (scanp.take(head, stated) < 1) {
    return;
  }
  while (num < max) {
    RcmVortex v;
    char code[4] = "";
    if (scanp.take(format, v.id, code) < 3) {
      break;
    }
    setPlace(code, v);
    list[num++] = v;
  }
  skipToSlash(scanp);
}

/** Tops and hail of the storms, and those that the first part doesn't have. */
void decodeCentroids(Scanp& scanp, RcmData& data) {
  int num = 0;
  Zqv::outDebug(4, "CENTROID PTR: %20.20s\n", scanp.string());
  if (scanp.take("%*(/NCEN)%d: ", num) < 1) {
    return;
  }
  char name[3] = "";
  char code[4] = "";
  while (scanp.take("%*(C)%2s%3s ", name, code) == 3) {
    int height = Const::MISS;
    char hail = 'U';
    if (scanp.take("%*(S)%3d%*(H)%c, ", height, hail) < 4) {
      skipToComma(scanp);
    }
    const int before = data.num_storm;
    RcmStorm* storm = data.takeStorm(name);
    if (storm == nullptr) {
      continue;
    }
    if (data.num_storm > before) {
      setPlace(code, *storm);
    }
    storm->hgt = height;
    switch (hail) {
      case 'N': storm->hail = 0; break;
      case 'P': storm->hail = 1; break;
      case 'H': storm->hail = 2; break;
      default: storm->hail = -1; break;
    }
  }
}

}  // namespace

int RcmFile::read(RcmRawData& raw) {
  raw = RcmRawData();
  if (type != BULLETIN || !opened) {
    return 0;
  }
  char line[sizeof(raw.data)];
  // Lines may hold NUL characters.
  const auto next = [&](int& n) {
    n = file.getLine(line, sizeof(line));
    const bool found = n > 0;
    while (n > 0 && std::isspace(static_cast<unsigned char>(line[n - 1])) != 0) {
      n--;
    }
    line[n] = '\0';
    return found;
  };
  int n = 0;
  do {
    if (!next(n)) {
      return 0;
    }
  } while (!StrLib::iequal(line, "RCM", 3));
  StrLib::copy(raw.id, sizeof(raw.id), line + 3);
  constexpr int room = static_cast<int>(sizeof(raw.data)) - 1;
  while (raw.len < enough && next(n)) {
    if (raw.len > 0) {
      raw.data[raw.len++] = '\n';
    }
    n = std::min(n, room - raw.len);
    std::memcpy(raw.data + raw.len, line, static_cast<size_t>(n));
    raw.len += n;
  }
  raw.data[raw.len] = '\0';
  return raw.len > 0 ? 1 : 0;
}

int RcmFile::read(RcmData& data) {
  if (type == SUMMARY) {
    return zqv.read(data);
  }
  RcmRawData raw;
  if (read(raw) == 0) {
    data.init();
    return 0;
  }
  return decode(raw, data);
}

int RcmFile::decode(const RcmRawData& raw, RcmData& data) {
  data.init();
  StrLib::copy(data.id, sizeof(data.id), raw.id);
  Scanp scanp;
  scanp.set(raw.data, raw.len);
  if (raw.len >= 4 && raw.data[2] == 1 && raw.data[3] == 1) {
    if (!decodeBlocks(raw, scanp, data)) {
      return 1;
    }
  } else if (scanp.search("1234") != 0) {
    scanp.inc();
  }
  Zqv::outDebug(3, "OFF:%d\n", scanp.getOffset());

  // First part: echoes and storms.
  scanp.take("%*d %*s %*d ");
  if (scanp.take("%*(/NEXRAA) ") < 1) {
    return 0;
  }
  int year = 0;
  int month = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  if (scanp.take("%d %2D%2D%2D%2D%2D ", data.num, day, month, year, hour, minute) == 6) {
    data.date.set(year, month, day, hour, minute, Const::FMISS);
  }
  Zqv::outDebug(3, "ID: %d %s\n", data.num, data.id);
  decodeState(scanp, data);
  decodeEchoes(scanp, data);
  char code[4] = "";
  int top = Const::MISS;
  if (scanp.take("%*(/MT)%d:%3s ", top, code) == 3) {
    data.maxt = top;
    const Cell cell(code);
    data.maxt_x = static_cast<float>(cell.x);
    data.maxt_y = static_cast<float>(cell.y);
    Zqv::outDebug(3, "MAX: %d %d,%d\n", data.maxt, cell.x, cell.y);
  } else {
    skipToSlash(scanp);
  }
  decodeStorms(scanp, data);
  skipToSlash(scanp);
  scanp.take("%*(/ENDAA) ");

  // Second and third part, which may be absent: winds aloft; vortices and more of the storms.
  skipTo(scanp, "/NEXRBB");
  decodeWinds(scanp, data);
  skipTo(scanp, "/NEXRCC");
  Zqv::outDebug(4, "PTR: %60.60s\n", scanp.string());
  scanp.take("%*(/NEXRCC) %*d %*d ");
  decodeVortices(scanp, "%*(/NTVS)%d: ", "%*(TVS)%2s%3s, ", data.tvs, RcmData::max_tvs,
                 data.num_tvs);
  decodeVortices(scanp, "%*(/NMES)%d: ", "%*(M)%2s%3s, ", data.meso, RcmData::max_meso,
                 data.num_meso);
  decodeCentroids(scanp, data);
  scanp.take(" ");
  Zqv::outDebug(4, "END: %d\n", scanp.getOffset());
  Zqv::outDebug(4, "LEFT: %-20.20s\n", scanp.string());
  return 1;
}

}  // namespace ZQV
