#include "RcmData.h"

#include <algorithm>
#include <cstdio>

#include "StrLib.h"
#include "String.h"

namespace ZQV {

namespace {

/** A field of entry i, or what stands for it out of range. */
template <class T, class V>
V get(const T* list, int num, int i, V T::*field, V missing) {
  return i >= 0 && i < num ? list[i].*field : missing;
}

const char* statusText(int status) {
  switch (status) {
    case RcmData::NO_ECHO: return "no echos";
    case RcmData::MAINTENANCE: return "out for maintenance";
    case RcmData::VALID: return "valid precip";
    default: return "not available";
  }
}

void printVortex(const char* kind, const RcmVortex& v) {
  std::printf("  %s: %s %6.2f,%7.2f\n", kind, v.id, static_cast<double>(v.x),
              static_cast<double>(v.y));
}

}  // namespace

const char* RcmData::getStormId(int i) const {
  return i >= 0 && i < num_storm ? storm[i].id : nullptr;
}

float RcmData::getStormX(int i) const {
  return get(storm, num_storm, i, &RcmStorm::x, Const::FMISS);
}

float RcmData::getStormY(int i) const {
  return get(storm, num_storm, i, &RcmStorm::y, Const::FMISS);
}

int RcmData::getStormHgt(int i) const {
  return get(storm, num_storm, i, &RcmStorm::hgt, Const::MISS);
}

int RcmData::getStormDir(int i) const {
  return get(storm, num_storm, i, &RcmStorm::dir, Const::MISS);
}

int RcmData::getStormSpd(int i) const {
  return get(storm, num_storm, i, &RcmStorm::spd, Const::MISS);
}

int RcmData::getStormHail(int i) const {
  return get(storm, num_storm, i, &RcmStorm::hail, Const::MISS);
}

float RcmData::getTvsX(int i) const {
  return get(tvs, num_tvs, i, &RcmVortex::x, Const::FMISS);
}

float RcmData::getTvsY(int i) const {
  return get(tvs, num_tvs, i, &RcmVortex::y, Const::FMISS);
}

float RcmData::getMesoX(int i) const {
  return get(meso, num_meso, i, &RcmVortex::x, Const::FMISS);
}

float RcmData::getMesoY(int i) const {
  return get(meso, num_meso, i, &RcmVortex::y, Const::FMISS);
}

RcmStorm* RcmData::takeStorm(const char* storm_id) {
  RcmStorm* end = storm + num_storm;
  RcmStorm* at = std::find_if(
      storm, end, [storm_id](const RcmStorm& s) { return StrLib::equal(s.id, storm_id); });
  if (at == end) {
    if (num_storm == max_storm) {
      return nullptr;
    }
    num_storm++;
    StrLib::copy(at->id, sizeof(at->id), storm_id);
  }
  return at;
}

void RcmData::print() const {
  String text;
  date.toString(text);
  std::printf("ID: %s\n  Num: %d\n  Loc: %.3f %.3f\n  Date: %s\n", id, num,
              static_cast<double>(lat), static_cast<double>(lon), text.get());
  if (mode == PRECIP || mode == CLEAR_AIR) {
    std::printf("  Mode: %s\n", mode == PRECIP ? "precip" : "clear air");
  }
  std::printf("  Status: %s\n", statusText(status));
  if (maxt != Const::MISS) {
    std::printf("  Max Top: %d %6.2f,%7.2f\n", maxt, static_cast<double>(maxt_x),
                static_cast<double>(maxt_y));
  }
  for (int i = 0; i < num_storm; i++) {
    printStorm(i);
  }
  for (int i = 0; i < num_tvs; i++) {
    printVortex("TVS", tvs[i]);
  }
  for (int i = 0; i < num_meso; i++) {
    printVortex("Meso", meso[i]);
  }
  for (int i = 0; i < num_vad; i++) {
    std::printf("  Wind: %d %d/%d %d\n", vad[i].hgt, vad[i].dir, vad[i].spd, vad[i].rms);
  }
}

void RcmData::printStorm(int i) const {
  if (i < 0 || i >= num_storm) {
    return;
  }
  const RcmStorm& s = storm[i];
  std::printf("  Storm: %s %6.2f,%7.2f Hgt: %d Move: %d/%d Hail: %d\n", s.id,
              static_cast<double>(s.x), static_cast<double>(s.y), s.hgt, s.dir, s.spd, s.hail);
}

void RcmData::printEchoes() const {
  for (int y = 0; y < size; y++) {
    for (const auto& column : echo) {
      std::printf("%c", column[y] <= 9 ? '0' + column[y] : ' ');
    }
    std::printf("\n");
  }
}

}  // namespace ZQV
