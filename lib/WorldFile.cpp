#include "WorldFile.h"

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string>

#include "Domain.h"
#include "File.h"
#include "FileTool.h"
#include "String.h"

namespace ZQV {

namespace {

// The radius is that of the domain, in metres.
constexpr const char* sphere =
    "GEOGCS[\"Sphere\",DATUM[\"Sphere\",SPHEROID[\"Sphere\",6371220,0]],"
    "PRIMEM[\"Greenwich\",0],UNIT[\"Degree\",0.0174532925199433]]";
constexpr const char* ellipsoid =
    "GEOGCS[\"Ellipsoid\",DATUM[\"Ellipsoid\",SPHEROID[\"Ellipsoid\",6378137,298.257373]],"
    "PRIMEM[\"Greenwich\",0],UNIT[\"Degree\",0.0174532925199433]]";

/** The projection, and how its units follow from those of the plane. */
struct Plane {
  std::string text;
  double scale = 1e5;  ///< units of the text to one of the plane
  double shift = 0;    ///< what x lacks, in those units
};

class Text {
 public:
  Text(const char* name, const char* earth)
      : text(std::string("PROJCS[\"scopeview\",") + earth + ",PROJECTION[\"" + name + "\"]") {}
  Text& add(const char* name, double v) {
    char item[80];
    std::snprintf(item, sizeof(item), ",PARAMETER[\"%s\",%.9g]", name, v);
    text += item;
    return *this;
  }
  [[nodiscard]] std::string get() const {
    return text +
           ",PARAMETER[\"false_easting\",0],PARAMETER[\"false_northing\",0],"
           "UNIT[\"metre\",1]]";
  }

 private:
  std::string text;
};

/** True latitude i of the domain, or what the projection takes without one. */
double trueLat(const Domain& d, int i, double fallback) {
  return d.getParam(i) == Const::FMISS ? fallback : static_cast<double>(d.getParam(i));
}

Plane describe(const Domain& d) {
  const auto lat = static_cast<double>(d.getPLat());
  const auto lon = static_cast<double>(d.getPLon());
  const double side = lat < 0 ? -1 : 1;
  Plane plane;
  switch (d.getProj()) {
    case DomainVal::LATLON: plane = {sphere, 1, lon}; break;
    case DomainVal::PSTEREO:
      plane.text = Text("Polar_Stereographic", sphere)
                       .add("latitude_of_origin", trueLat(d, 0, side * 60))
                       .add("central_meridian", lon)
                       .add("scale_factor", 1)
                       .get();
      break;
    case DomainVal::MERC:
      plane.text = Text("Mercator_2SP", d.ellipse ? ellipsoid : sphere)
                       .add("standard_parallel_1", d.ellipse ? lat : 0)
                       .add("central_meridian", lon)
                       .get();
      break;
    case DomainVal::LAMB: {
      const double first = std::abs(trueLat(d, 0, 30)) * side;
      plane.text = Text("Lambert_Conformal_Conic_2SP", sphere)
                       .add("standard_parallel_1", first)
                       .add("standard_parallel_2", std::abs(trueLat(d, 1, 60)) * side)
                       .add("latitude_of_origin", 90 * side)
                       .add("central_meridian", lon)
                       .get();
      break;
    }
    case DomainVal::ORTHO:
      plane.text = Text("Orthographic", sphere)
                       .add("latitude_of_origin", lat)
                       .add("central_meridian", lon)
                       .get();
      break;
    case DomainVal::MOLL:
      // In the size that has a half axis of the square root of 2 radii where the plane's has one.
      plane.text = Text("Mollweide", sphere).add("central_meridian", lon).get();
      plane.scale *= std::sqrt(2.0);
      break;
    case DomainVal::LAMBAZ:
      plane.text = Text("Lambert_Azimuthal_Equal_Area", sphere)
                       .add("latitude_of_center", lat)
                       .add("longitude_of_center", lon)
                       .get();
      break;
    default: break;
  }
  return plane;
}

int writeText(const std::filesystem::path& name, const std::string& text) {
  File file;
  return file.open(name.c_str(), 1) != 0 && file.write(text.data(), text.size()) > 0 ? 1 : 0;
}

}  // namespace

int WorldFile::write(const char* picture, const Domain& domain, const Place& place) {
  const Plane plane = describe(domain);
  if (plane.text.empty() || FileTool::isStdio(picture) || *picture == '|') {
    return 0;
  }
  const double numbers[] = {
      place.dx * plane.scale, 0, 0, place.dy * plane.scale, place.x0 * plane.scale + plane.shift,
      place.y0 * plane.scale};
  std::string text;
  for (const double v : numbers) {
    char line[40];
    std::snprintf(line, sizeof(line), "%.10f\n", v);
    text += line;
  }
  std::filesystem::path name(picture);
  const bool png = name.extension() != ".gif";
  return writeText(name.replace_extension(png ? ".pgw" : ".gfw"), text) != 0 &&
                 writeText(name.replace_extension(".prj"), plane.text + "\n") != 0
             ? 1
             : 0;
}

}  // namespace ZQV
