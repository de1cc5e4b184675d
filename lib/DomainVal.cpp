#include "DomainVal.h"

#include <cstdio>

#include "String.h"

namespace ZQV {

namespace {

void appendNumber(String& out, const char* lead, float v) {
  char text[64];
  std::snprintf(text, sizeof(text), "%s%f", lead, static_cast<double>(v));
  out.append(text);
}

void appendNumber(String& out, const char* lead, int v) {
  char text[64];
  std::snprintf(text, sizeof(text), "%s%d", lead, v);
  out.append(text);
}

void appendOptional(String& out, float v) {
  if (v == Const::FMISS) {
    out.append(":");
  } else {
    appendNumber(out, ":", v);
  }
}

}  // namespace

bool DomainVal::compareProj(const DomainVal& a, const DomainVal& b) {
  return a.proj == b.proj && a.plat == b.plat && a.plon == b.plon && a.param == b.param &&
         a.ellipse == b.ellipse;
}

bool DomainVal::compare(const DomainVal& a, const DomainVal& b) {
  return compareProj(a, b) && a.clat == b.clat && a.clon == b.clon && a.dx == b.dx &&
         a.dy == b.dy && a.nx == b.nx && a.ny == b.ny;
}

const char* DomainVal::getProjText(int code) {
  switch (code) {
    case PSTEREO: return "pstereo";
    case LATLON: return "latlon";
    case MERC: return "merc";
    case LAMB: return "lamb";
    case ORTHO: return "ortho";
    case GNOM: return "gnom";
    case MOLL: return "moll";
    case LAMBAZ: return "lambaz";
    case SAT: return "sat";
    case PIXEL: return "pixel";
    case XY: return "xy";
    case XZ: return "xz";
    case XLOGP: return "xlogp";
    case POLAR: return "polar";
    case CAT: return "cat";
    case SKEWT: return "skewt";
    case STUVE: return "stuve";
    case EMA: return "ema";
    case TEPH: return "teph";
    case RTEPH: return "rteph";
    case ZOOM: return "zoom";
    default:  // XP and SIZE have none
      return "";
  }
}

void DomainVal::toText(const char* name, String& out) const {
  out.copy(name);
  if (ellipse) {
    out.append(":e");
  }
  appendOptional(out, plat);
  appendOptional(out, plon);
  appendOptional(out, param[0]);
  appendOptional(out, param[1]);
  appendOptional(out, param[2]);
  appendNumber(out, ",", clat);
  appendNumber(out, ",", clon);
  appendNumber(out, ",", nx);
  appendNumber(out, ",", ny);
  appendNumber(out, ",", dx);
  appendNumber(out, ",", dy);
}

void DomainVal::print() const {
  String text;
  toText(proj == TEPH || proj == RTEPH ? "" : getProjText(proj), text);
  std::printf("%s\n", text.get());
}

}  // namespace ZQV
