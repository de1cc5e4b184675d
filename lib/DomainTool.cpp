#include "DomainTool.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <string>

#include "CityTool.h"
#include "Const.h"
#include "Domain.h"
#include "EarthPoint.h"
#include "Region.h"
#include "StrLib.h"
#include "String.h"
#include "Strings.h"
#include "Tools.h"
#include "Zqv.h"

namespace ZQV {

namespace {

// The plot that a text without size and spacing means: 2880 by 1920 km.
constexpr int DEF_NX = 25;
constexpr int DEF_NY = 17;
constexpr float DEF_DX = 1.2F;

constexpr int MAX_DEPTH = 16;         ///< regions that lead to regions
constexpr size_t MAX_FILE_NAME = 19;  ///< of a city file in a domain text

/** "name[:e][:plat[:plon[:param...]]]"; with two parts in all the second is plon. */
bool setProj(DomainVal& val, const char* field) {
  val.proj = Domain::getProj(field);
  if (val.proj == -1) {
    return false;
  }
  const Strings parts(field, ':');
  if (parts.getNum() == 2) {
    val.plon = parts.getFloat(1);
    return true;
  }
  int i = 1;
  if (parts.equal(i, "e")) {
    val.ellipse = true;
    i++;
  }
  float* const fields[] = {&val.plat,     &val.plon,     &val.param[0],
                           &val.param[1], &val.param[2], &val.param[3]};
  for (float* slot : fields) {
    if (i >= parts.getNum()) {
      break;
    }
    *slot = parts.getFloat(i++);
  }
  return true;
}

/** A station, as "id:NAME", "id:FILE:NAME" or four capitals and more. The centre takes the place
 * whether it was found or not. */
bool setStation(DomainVal& val, const char* text) {
  std::string file = "sao.cty";
  std::string name = StrLib::acopy(text);
  if (StrLib::iequal(name.c_str(), "id:", 3)) {
    name.erase(0, 3);
    const size_t colon = name.find(':');
    if (colon != std::string::npos && colon > 0 && colon <= MAX_FILE_NAME &&
        colon + 1 < name.size()) {
      file = name.substr(0, colon);
      name.erase(0, colon + 1);
    }
  } else if (!StrLib::check(name.c_str(), "uuuu")) {
    return false;
  }
  EarthPoint place;
  const int found = CityTool::locate(file.c_str(), name.c_str(), place);
  val.clat = place.lat;
  val.clon = place.lon;
  return found != 0;
}

bool setFloat(float& field, const Strings& values, int i) {
  const float v = values.getFloat(i);
  if (v == Const::FMISS) {
    return false;
  }
  field = v;
  return true;
}

bool setInt(int& field, const Strings& values, int i) {
  const int v = values.getInt(i);
  if (v == Const::MISS) {
    return false;
  }
  field = v;
  return true;
}

bool setKey(DomainVal& val, const char* key, const Strings& values, int i) {
  if (StrLib::equal(key, "proj")) {
    return setProj(val, values.getString(i));
  }
  if (StrLib::equal(key, "plon")) {
    return setFloat(val.plon, values, i);
  }
  if (StrLib::equal(key, "clat")) {
    return setFloat(val.clat, values, i);
  }
  if (StrLib::equal(key, "clon")) {
    return setFloat(val.clon, values, i);
  }
  if (StrLib::equal(key, "nx")) {
    return setInt(val.nx, values, i);
  }
  if (StrLib::equal(key, "ny")) {
    return setInt(val.ny, values, i);
  }
  if (StrLib::equal(key, "dx")) {
    return setFloat(val.dx, values, i);
  }
  if (StrLib::equal(key, "dy")) {
    return setFloat(val.dy, values, i);
  }
  return StrLib::equal(key, "id") && setStation(val, values.getString(i));
}

/** What a layout leaves open. */
enum Default : unsigned {
  NONE = 0,
  PS = 1,       ///< polar stereographic
  SIZE = 2,     ///< 25 by 17 points
  SPACING = 4,  ///< 1.2
  DY = 8,       ///< dy = dx
  REQUEST = 16  ///< by the projection, which may be a request
};

struct Layout {
  const char* format;
  unsigned defaults;
};

// First match wins. Texts of equal length are told apart by which values are numbers. The first
// row, which leaves nothing open, is also the one that "miss" and "none" match.
constexpr Layout LAYOUTS[] = {
    {"proj,clat,clon,nx,ny,dx,dy", NONE},
    {"proj,id,nx,ny,dx,dy", NONE},
    {"proj,clat,clon,dx,dy", SIZE},
    {"proj,clat,clon,nx,ny,dx", DY},
    {"clat,clon,nx,ny,dx,dy", PS},
    {"clat,clon,nx,ny,dx", PS | DY},
    {"proj,id,dx,dy", SIZE},
    {"proj,clat,clon,dx", SIZE | DY},
    {"clat,clon,nx,ny", PS | SPACING},
    {"clat,clon,dx", PS | SIZE | DY},
    {"proj,clat,clon", REQUEST},
    {"clat,clon", PS | SIZE | SPACING},
    {"id,dx", PS | SIZE | DY},
    {"id", PS | SIZE | SPACING},
};

void applyDefaults(DomainVal& val, unsigned defaults) {
  if ((defaults & REQUEST) != 0) {
    if (val.proj == DomainVal::SIZE) {  // the two numbers are a size
      val.nx = Tools::cut(val.clat);
      val.ny = Tools::cut(val.clon);
      val.clat = val.clon = Const::FMISS;
      return;
    }
    defaults |= SIZE;
    val.dx = val.dy = val.proj == DomainVal::ZOOM ? 1.0F : DEF_DX;
  }
  if ((defaults & PS) != 0) {
    val.proj = DomainVal::PSTEREO;
  }
  if ((defaults & SIZE) != 0) {
    val.nx = DEF_NX;
    val.ny = DEF_NY;
  }
  if ((defaults & SPACING) != 0) {
    val.dx = val.dy = DEF_DX;
  }
  if ((defaults & DY) != 0) {
    val.dy = val.dx;
  }
}

/** The domain text that a region reference leads to. @return 1; 0 if there is none */
int getRegion(const char* reference, String& out) {
  if (StrLib::equal(reference, "fi:", 3)) {
    return Region::get(reference + 3, nullptr, out);
  }
  if (StrLib::index(reference, ':') < 0) {
    return Region::get("zqv.reg", reference, out);
  }
  const Strings parts(reference, ':');
  if (parts.getNum() == 2) {
    return Region::get(parts.getString(0), parts.getString(1), out);
  }
  // A projection field alone ("ps:60:-100") is no error and gives the middle of the United States:
  // deliberate.
  out.copy("39,-97,2.3");
  return 1;
}

/** @return 1, 0, or -1 where regions lead to each other without end */
int decodeLayout(DomainVal& val, const Strings& values) {
  for (const Layout& layout : LAYOUTS) {
    if (DomainTool::setParams(val, values, layout.format) != 0) {
      applyDefaults(val, layout.defaults);
      return 1;
    }
  }
  return 0;
}

int decodeText(DomainVal& val, const char* text, int depth) {
  if (!StrLib::valid(text)) {
    return 0;
  }
  if (StrLib::iequal(text, "miss")) {
    return 1;
  }
  const Strings values(text, ',');
  if (decodeLayout(val, values) != 0) {
    return 1;
  }
  String region;
  if (depth < MAX_DEPTH && values.valid(0) && getRegion(values.getString(0), region) != 0) {
    return decodeText(val, region.get(), depth + 1) < 0 ? -1 : 1;
  }
  if (depth < MAX_DEPTH) {
    Zqv::outWarning("DomainTool::decode: Invalid plot domain: %s\n", text);
    return 0;
  }
  return -1;
}

}  // namespace

int DomainTool::proj(const char* name) {
  return Domain::getProj(name);
}

int DomainTool::setParams(DomainVal& val, const Strings& values, const char* format) {
  if (values.iequal(0, "miss") || values.iequal(0, "none")) {
    return 1;
  }
  const Strings keys(format, ',');
  if (keys.getNum() != values.getNum()) {
    return 0;
  }
  for (int i = 0; i < keys.getNum(); i++) {
    if (!setKey(val, keys.getString(i), values, i)) {
      return 0;
    }
  }
  return 1;
}

int DomainTool::decode(DomainVal& val, const char* text) {
  const int result = decodeText(val, text, 0);
  if (result < 0) {
    Zqv::outWarning("DomainTool::decode: Invalid plot domain: %s\n", text);
  }
  return std::max(result, 0);
}

int DomainTool::decodeStored(DomainVal& val, const char* text) {
  return StrLib::valid(text) ? decodeLayout(val, Strings(text, ',')) : 0;
}

int DomainTool::decodeStored(Domain& domain, const char* text) {
  DomainVal val;
  return decodeStored(val, text) == 0 ? 0 : domain.set(val);
}

int DomainTool::decode(Domain& domain, const char* text) {
  DomainVal val;
  return decode(val, text) == 0 ? 0 : domain.set(val);
}

int DomainTool::set(Domain& domain, const char* fallback) {
  const char* wanted = Zqv::getResrc("plot_domain");
  return decode(domain, wanted != nullptr ? wanted : fallback);
}

}  // namespace ZQV
