#include "MdrData.h"

#include <cstdio>

#include "Convert.h"
#include "Domain.h"
#include "EarthPoint.h"
#include "String.h"

namespace ZQV {

namespace {

template <class T>
const T* entry(const T* list, int num, int i) {
  return i >= 0 && i < num ? &list[i] : nullptr;
}

const char* statusText(int status) {
  switch (status) {
    case MdrData::NO_ECHO: return "no echos";
    case MdrData::MAINTENANCE: return "out for maintenance";
    case MdrData::VALID: return "valid";
    default: return "not available";
  }
}

void printRegion(const MdrRegion& reg) {
  std::printf("  Region: %s\n", reg.config);
  for (int i = 0; i < reg.num_prec; i++) {
    const MdrPrecip& p = reg.prec[i];
    std::printf("    Precip: %d %s %d\n", p.cover, p.type, p.intens);
  }
  std::printf("    Trend: %s\n", reg.trend);
  for (int i = 0; i < reg.num_loc; i++) {
    std::printf("    Loc: %d/%d\n", reg.loc[i].dir, reg.loc[i].rad);
  }
  for (int i = 0; i < reg.num_move; i++) {
    std::printf("    Move: %c %d/%d\n", reg.move[i].type, reg.move[i].dir, reg.move[i].spd);
  }
  if (reg.tops.hgt != Const::MISS) {
    std::printf("    Max Top: %d %d/%d\n", reg.tops.hgt, reg.tops.dir, reg.tops.rad);
  }
}

}  // namespace

const char* MdrPrecip::getMark() const {
  switch (intens) {
    case 1: return "-";
    case 2: return "";
    case 3: return "+";
    case 4: return "++";
    case 5: return "x";
    case 6: return "xx";
    case 9: return "u";
    default: return nullptr;
  }
}

const MdrPrecip* MdrData::findPrecip(int r, int i) const {
  const MdrRegion* g = find(r);
  return g != nullptr ? entry(g->prec, g->num_prec, i) : nullptr;
}

const MdrLoc* MdrData::findLoc(int r, int i) const {
  const MdrRegion* g = find(r);
  return g != nullptr ? entry(g->loc, g->num_loc, i) : nullptr;
}

const MdrMove* MdrData::findMove(int r, int i) const {
  const MdrRegion* g = find(r);
  return g != nullptr ? entry(g->move, g->num_move, i) : nullptr;
}

int MdrData::getNumPrecip(int r) const {
  return find(r) != nullptr ? reg[r].num_prec : 0;
}

int MdrData::getPrecipCover(int r, int i) const {
  const MdrPrecip* p = findPrecip(r, i);
  return p != nullptr ? p->cover : Const::MISS;
}

const char* MdrData::getPrecipType(int r, int i) const {
  const MdrPrecip* p = findPrecip(r, i);
  return p != nullptr ? p->type : nullptr;
}

int MdrData::getPrecipIntensity(int r, int i) const {
  const MdrPrecip* p = findPrecip(r, i);
  return p != nullptr ? p->intens : Const::MISS;
}

int MdrData::getNumLoc(int r) const {
  return find(r) != nullptr ? reg[r].num_loc : 0;
}

int MdrData::getLocDir(int r, int i) const {
  const MdrLoc* p = findLoc(r, i);
  return p != nullptr ? p->dir : Const::MISS;
}

int MdrData::getLocRad(int r, int i) const {
  const MdrLoc* p = findLoc(r, i);
  return p != nullptr ? p->rad : Const::MISS;
}

int MdrData::getNumMove(int r) const {
  return find(r) != nullptr ? reg[r].num_move : 0;
}

char MdrData::getMoveType(int r, int i) const {
  const MdrMove* p = findMove(r, i);
  return p != nullptr ? p->type : ' ';
}

int MdrData::getMoveDir(int r, int i) const {
  const MdrMove* p = findMove(r, i);
  return p != nullptr ? p->dir : Const::MISS;
}

int MdrData::getMoveSpd(int r, int i) const {
  const MdrMove* p = findMove(r, i);
  return p != nullptr ? p->spd : Const::MISS;
}

int MdrData::getTopsHgt(int r) const {
  return find(r) != nullptr ? reg[r].tops.hgt : Const::MISS;
}

int MdrData::getTopsDir(int r) const {
  return find(r) != nullptr ? reg[r].tops.dir : Const::MISS;
}

int MdrData::getTopsRad(int r) const {
  return find(r) != nullptr ? reg[r].tops.rad : Const::MISS;
}

int MdrData::locate(int dir, int rad, EarthPoint& point) const {
  point.init();
  if (dir == Const::MISS || rad == Const::MISS) {
    return 0;
  }
  Domain::offsetLatLon(EarthPoint(lat, lon), static_cast<float>(dir),
                       Convert::NMtoKM(static_cast<float>(rad)), point);
  return point.isSet() ? 1 : 0;
}

int MdrData::getRegLoc(int r, EarthPoint& point) const {
  point.init();
  float sum_lat = 0;
  float sum_lon = 0;
  int n = 0;
  for (int i = 0; i < getNumLoc(r); i++) {
    EarthPoint corner;
    if (locate(reg[r].loc[i].dir, reg[r].loc[i].rad, corner) != 0) {
      sum_lat += corner.lat;
      sum_lon += corner.lon;
      n++;
    }
  }
  if (n == 0) {
    return 0;
  }
  point.set(sum_lat / static_cast<float>(n), sum_lon / static_cast<float>(n));
  return 1;
}

int MdrData::getTopsLoc(int r, EarthPoint& point) const {
  return locate(getTopsDir(r), getTopsRad(r), point);
}

void MdrData::print() const {
  String text;
  date.toString(text);
  std::printf("ID: %s\n  Loc: %.3f %.3f\n  Date: %s\n  Status: %s\n", id, static_cast<double>(lat),
              static_cast<double>(lon), text.get(), statusText(status));
  for (int r = 0; r < num_reg; r++) {
    printRegion(reg[r]);
  }
}

void MdrData::printEchoes() const {
  for (int y = 0; y < size; y++) {
    for (const auto& column : echo) {
      std::printf("%d", column[y]);
    }
    std::printf("\n");
  }
}

}  // namespace ZQV
