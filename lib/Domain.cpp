#include "Domain.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>

#include "Calc.h"
#include "Const.h"
#include "Convert.h"
#include "EarthPoint.h"
#include "GridPoint.h"
#include "Point.h"
#include "Points.h"
#include "ProjBatch.h"
#include "StrLib.h"
#include "String.h"
#include "Tools.h"

namespace ZQV {

namespace {

constexpr double DRC = Const::DRC;
constexpr double RDC = Const::RDC;
constexpr double PI = Const::PI;
constexpr double R = Domain::earth_rad;
constexpr double R_SQUARED = 4059.2444;        ///< R^2
constexpr double MAJOR_SQUARED = 4068.063;     ///< earth_maj^2
constexpr double KM_PER_DEGREE = 111.195;      ///< of a great circle
constexpr double ECC2 = 0.006694376468658447;  ///< eccentricity of the earth, squared
constexpr double KAPPA_INV = 3.5;              ///< cp / R of dry air

float toFloat(double v) {
  return static_cast<float>(v);
}

/** Can be stored as a float and drawn: not NaN, not infinite, not on the way there. */
bool isSane(double v) {
  return std::abs(v) < 1e30;
}

/** One step of 360 into -180 to 180. */
double wrapOnce(double lon) {
  if (lon > 180) {
    return lon - 360;
  }
  return lon < -180 ? lon + 360 : lon;
}

/** Longitude by steps of 360 into -180 to 180, whatever its size; exact, as fmod() is. A missing
 * one stays, and one that isn't finite is missing. */
float normalize(float lon) {
  if ((lon >= -180 && lon <= 180) || lon == Const::FMISS) {
    return lon;
  }
  if (!std::isfinite(lon)) {
    return Const::FMISS;
  }
  return toFloat(wrapOnce(std::fmod(static_cast<double>(lon), 360.0)));
}

/** asin() that takes what rounding has put just past 1, and gives NaN further out. */
double arcSine(double v) {
  constexpr double rounding = 1e-6;
  return std::abs(v) > 1 + rounding ? std::nan("") : std::asin(std::clamp(v, -1.0, 1.0));
}

/** Radius factor of the conformal latitude: ((1 - s) / (1 + s)) ^ (e / 2) with s = e sin(lat). */
double conformal(double ecc, double sin_lat) {
  const double s = ecc * sin_lat;
  return std::pow((1 - s) / (1 + s), ecc / 2);
}

double logTanHalf(double lat) {
  return std::log(std::tan((45 - lat / 2) * DRC));
}

double logCos(double lat) {
  return std::log(std::cos(lat * DRC));
}

struct ProjName {
  const char* name;
  int count;  ///< characters that are compared
  int code;
};

// First match wins: "lat" and "lambaz" stand above "la", their own prefix, and "polar" gives
// PSTEREO. "xp" is compared with the end of the text, so that it must stand alone.
constexpr ProjName PROJ_NAMES[] = {
    {"ll", 2, Domain::LATLON},   {"lat", 3, Domain::LATLON},  {"polar", 5, Domain::PSTEREO},
    {"ps", 2, Domain::PSTEREO},  {"sat", 3, Domain::SAT},     {"lambaz", 6, Domain::LAMBAZ},
    {"lamb", 4, Domain::LAMB},   {"lc", 2, Domain::LAMB},     {"la", 2, Domain::LAMBAZ},
    {"az", 2, Domain::LAMBAZ},   {"gn", 2, Domain::GNOM},     {"or", 2, Domain::ORTHO},
    {"mo", 2, Domain::MOLL},     {"me", 2, Domain::MERC},     {"pix", 3, Domain::PIXEL},
    {"xy", 2, Domain::XY},       {"xlogy", 5, Domain::XLOGP}, {"xlogp", 5, Domain::XLOGP},
    {"cat", 3, Domain::CAT},     {"skewt", 5, Domain::SKEWT}, {"ema", 3, Domain::EMA},
    {"teph", 4, Domain::TEPH},   {"rteph", 5, Domain::RTEPH}, {"therm", 5, Domain::SKEWT},
    {"stuve", 5, Domain::STUVE}, {"hodo", 4, Domain::POLAR},  {"vert", 4, Domain::XLOGP},
    {"xp", 4, Domain::XP},       {"zoom", 4, Domain::ZOOM},   {"size", 4, Domain::SIZE},
};

}  // namespace

int Domain::getProj(const char* name) {
  if (name == nullptr) {
    return -1;
  }
  for (const ProjName& row : PROJ_NAMES) {
    if (StrLib::iequal(name, row.name, row.count)) {
      return row.code;
    }
  }
  return StrLib::iequal(name, "miss") ? Const::MISS : -1;
}

int Domain::set(const DomainVal& val) {
  static_cast<DomainVal&>(*this) = val;
  return setParam();
}

int Domain::set(const char* text) {
  init();
  const std::string whole = StrLib::acopy(text);
  const std::string field = whole.substr(0, whole.find(','));
  if (field.empty()) {
    return 0;
  }
  if (field.size() < whole.size()) {
    DomainVal v;
    const int n = std::sscanf(whole.c_str() + field.size(), ",%f,%f,%d,%d,%f,%f", &v.clat, &v.clon,
                              &v.nx, &v.ny, &v.dx, &v.dy);
    if (n > 0 && n < 6) {
      return 0;
    }
    static_cast<DomainVal&>(*this) = v;
  }
  ellipse = field.find(":e") != std::string::npos;
  const size_t colon = field.find(':');
  if (colon != std::string::npos) {
    std::sscanf(field.c_str() + colon, ellipse ? ":e:%f:%f:%f:%f:%f" : ":%f:%f:%f:%f:%f", &plat,
                &plon, &param[0], &param[1], &param[2]);
  }
  proj = getProj(field.substr(0, colon).c_str());
  return setParam();
}

int Domain::set(const EarthPoint& ul, const EarthPoint& lr, int cols, int rows) {
  if (cols < 2 || rows < 2) {
    return 0;
  }
  nx = cols;
  ny = rows;
  setParam();
  EarthPoint e1 = ul;
  EarthPoint e2 = lr;
  Point p1;
  Point p2;
  tran(e1, p1);
  tran(e2, p2);
  if (!p1.isSet() || !p2.isSet()) {
    return 0;
  }
  dx = toFloat((static_cast<double>(p2.x) - p1.x) / (static_cast<double>(nx) - 1));
  dy = toFloat((static_cast<double>(p1.y) - p2.y) / (static_cast<double>(ny) - 1));
  Point middle;
  middle.interp(p1, p2, 0.5F);
  EarthPoint center;
  tran(middle, center);
  clat = center.lat;
  clon = center.lon;
  return setParam();
}

int Domain::set(int cols, int rows) {
  proj = XY;
  clat = clon = 0;
  dx = dy = 1;
  nx = cols;
  ny = rows;
  return setParam();
}

int Domain::setParam() {
  plat = plat == Const::FMISS ? clat : plat;
  plon = plon == Const::FMISS ? clon : plon;
  const bool given = param[0] != Const::FMISS;
  if (proj == PSTEREO) {
    tlat1 = given ? param[0] : (plat < 0 ? -60.0F : 60.0F);
  } else if (proj == LAMB) {
    tlat1 = given ? param[0] : 30.0F;
    tlat2 = given ? param[1] : 60.0F;
  } else if (proj == SAT) {
    sat_rad = given ? param[0] : 421.64F;
    sat_rad2 = sat_rad * sat_rad;
    sat_rad4 = sat_rad2 * sat_rad2;
    sat2_earth2 = toFloat(sat_rad2 - MAJOR_SQUARED);
  }
  xfactor = Const::FMISS;
  earth_sat_ratio = Const::FMISS;
  view.set(0, 0, 1, 1);
  return setLimits();
}

int Domain::setLimits() {
  Point p;
  tranCenter(p);
  const double w = (static_cast<double>(nx) - 1) / 2 * dx;
  const double h = (static_cast<double>(ny) - 1) / 2 * dy;
  // Not sorted: with a negative spacing the grid runs from the right or the bottom, and so do its
  // limits.
  limits.xmin = toFloat(p.x - w);
  limits.ymin = toFloat(p.y - h);
  limits.xmax = toFloat(p.x + w);
  limits.ymax = toFloat(p.y + h);
  return 1;
}

int Domain::getLimits(Rect& rect) const {
  rect = limits;
  return 1;
}

int Domain::setView(const Rect& rect) {
  view = rect;
  return 1;
}

float Domain::getParam(int i) const {
  return i >= 0 && i < static_cast<int>(param.size()) ? param[static_cast<size_t>(i)]
                                                      : Const::FMISS;
}

int Domain::tran(EarthPoint& e, Point& p) {
  if (isMap(proj)) {
    e.lon = normalize(e.lon);
    e.lat = std::isfinite(e.lat) ? e.lat : Const::FMISS;
  }
  if (!e.isSet()) {
    p.set(Const::FMISS, Const::FMISS);
    return 1;
  }
  if (proj == Const::MISS) {
    p.set(e.lat, e.lon);
    return 1;
  }
  double x = e.lat;
  double y = e.lon;
  if (project(e, x, y) == 0 || !isSane(x) || !isSane(y)) {
    p.set(Const::FMISS, Const::FMISS);
    return 0;
  }
  p.set(toFloat(x), toFloat(y));
  return 1;
}

int Domain::project(EarthPoint& e, double& x, double& y) {
  switch (proj) {
    case PSTEREO: return forwardPstereo(e, x, y);
    case LATLON: return forwardLatLon(e, x, y);
    case MERC: return ellipse ? forwardMercEllipse(e, x, y) : forwardMerc(e, x, y);
    case LAMB: return forwardLamb(e, x, y);
    case ORTHO: return forwardOrtho(e, x, y);
    case MOLL: return forwardMoll(e, x, y);
    case LAMBAZ: return forwardLambaz(e, x, y);
    case SAT: return forwardSat(e, x, y);
    default: return forwardDiagram(e, x, y);
  }
}

int Domain::tran(const Point& p, EarthPoint& e) {
  int result = 1;
  if (!p.isSet()) {
    e.set(Const::FMISS, Const::FMISS);
  } else if (proj == Const::MISS) {
    e.set(p.x, p.y);
  } else {
    double lat = p.x;
    double lon = p.y;
    result = unproject(p.x, p.y, lat, lon);
    if (result == 0 || !isSane(lat) || !isSane(lon)) {
      e.set(Const::FMISS, Const::FMISS);
      return 0;
    }
    e.set(toFloat(lat), toFloat(lon));
    if (result < 0) {  // the centre of LAMBAZ
      return 0;
    }
  }
  // A missing longitude is wrapped like any other, and becomes -9639: deliberate, callers test the
  // latitude.
  if (isMap(proj)) {
    e.lon = toFloat(wrapOnce(e.lon));
  }
  return 1;
}

int Domain::unproject(double x, double y, double& lat, double& lon) {
  switch (proj) {
    case PSTEREO: return inversePstereo(x, y, lat, lon);
    case LATLON:
      lat = y;
      lon = x + plon;
      return 1;
    case MERC: return ellipse ? inverseMercEllipse(x, y, lat, lon) : inverseMerc(x, y, lat, lon);
    case LAMB: return inverseLamb(x, y, lat, lon);
    case ORTHO: return inverseOrtho(x, y, lat, lon);
    case MOLL: return inverseMoll(x, y, lat, lon);
    case LAMBAZ: return inverseLambaz(x, y, lat, lon);
    case SAT: return ellipse ? inverseSatEllipse(x, y, lat, lon) : inverseSat(x, y, lat, lon);
    default: return inverseDiagram(x, y, lat, lon);
  }
}

// Polar stereographic, sphere. s = scale: -1 on the northern, 1 on the southern plane. D = lon -
// plon.
//   first use  xfactor = R (1 - s sin(tlat1))
//   forward    r = xfactor tan((s lat + 90) / 2)   x = r sin D   y = s r cos D
//   inverse    lat = s (2 atan(r / xfactor) - 90)  lon = plon + atan2(x, s y)
// A plane ends 75 degrees beyond the equator, where the scale gets out of hand.

void Domain::setupPstereo() {
  scale = plat >= 0 ? -1.0F : 1.0F;
  xfactor = toFloat(R * (1 - scale * std::sin(tlat1 * DRC)));
}

int Domain::forwardPstereo(EarthPoint& e, double& x, double& y) {
  if (xfactor == Const::FMISS) {
    setupPstereo();
  }
  if (scale * e.lat > 75) {
    e.lat = scale * 75;
  }
  const double r = xfactor * std::tan((static_cast<double>(scale) * e.lat + 90) * DRC / 2);
  const double a = (static_cast<double>(e.lon) - plon) * DRC;
  x = r * std::sin(a);
  y = scale * r * std::cos(a);
  return 1;
}

int Domain::inversePstereo(double x, double y, double& lat, double& lon) {
  if (xfactor == Const::FMISS) {
    setupPstereo();
  }
  const double theta = x == 0 && y == 0 ? 0 : RDC * std::atan2(x, scale * y);
  lat = (-90 + RDC * 2 * std::atan(std::sqrt(x * x + y * y) / xfactor)) * scale;
  lon = theta + plon;
  return 1;
}

// Latitude and longitude as they are, in degrees.

int Domain::forwardLatLon(const EarthPoint& e, double& x, double& y) const {
  x = wrapOnce(static_cast<double>(e.lon) - plon);
  y = e.lat;
  return 1;
}

// Mercator, sphere. D = lon - plon, H = half the period.
//   forward  x = R D, within -H to H   y = -R ln(tan(45 - lat / 2))
//   inverse  lon = plon + x / R        lat = 90 - 2 atan(exp(-y / R))
// The latitude is limited to 89.9 in the formula only: the caller's point keeps it.

int Domain::forwardMerc(const EarthPoint& e, double& x, double& y) {
  constexpr double half = DRC * 11468.196;
  x = (static_cast<double>(e.lon) - plon) * R * DRC;
  if (x > half) {
    x -= 2 * half;
  } else if (x < -half) {
    x += 2 * half;
  }
  const double lat = std::clamp(e.lat, -89.9F, 89.9F);
  y = -R * std::log(std::tan((45 - lat / 2) * DRC));
  return 1;
}

int Domain::inverseMerc(double x, double y, double& lat, double& lon) {
  lon = wrapOnce(x / (DRC * R) + plon);
  lat = 90 - 2 * RDC * std::atan(1 / std::exp(y / R));
  return 1;
}

// Mercator, ellipsoid with the semi-major axis a and eccentricity e = scale, true at plat.
//   first use  k = xfactor = cos(plat) / sqrt(1 - e^2 sin^2(plat))
//   forward    x = k a D   y = -k a ln(tan((90 - lat) / 2) / t)   t = conformal(e, sin(lat))
//   inverse    lon = plon + x / (k a)   lat by iteration

void Domain::setupMercEllipse() {
  scale = toFloat(std::sqrt(ECC2));
  const double s = std::sin(plat * DRC);
  xfactor = toFloat(std::cos(plat * DRC) / std::sqrt(1 - ECC2 * s * s));
}

int Domain::forwardMercEllipse(const EarthPoint& e, double& x, double& y) {
  if (xfactor == Const::FMISS) {
    setupMercEllipse();
  }
  const double half = xfactor * 11480.646 * DRC;
  x = (static_cast<double>(e.lon) - plon) * xfactor * earth_maj * DRC;
  if (x > half) {
    x -= 2 * half;
  } else if (x < -half) {
    x += 2 * half;
  }
  const double lat = std::clamp(e.lat, -89.9F, 89.9F);
  const double t = conformal(scale, std::sin(lat * DRC));
  y = -static_cast<double>(earth_maj) * xfactor * std::log(std::tan(DRC * (90 - lat) / 2) / t);
  return 1;
}

int Domain::inverseMercEllipse(double x, double y, double& lat, double& lon) {
  if (xfactor == Const::FMISS) {
    setupMercEllipse();
  }
  const double ka = static_cast<double>(xfactor) * earth_maj;
  lon = wrapOnce(x / (ka * DRC) + plon);
  const double t = std::exp(-y / ka);
  double psi = PI / 2 - 2 * std::atan(t);
  for (int i = 0; i < 15; i++) {
    const double delta = PI / 2 - 2 * std::atan(t * conformal(scale, std::sin(psi))) - psi;
    psi += delta;
    if (std::abs(delta) < 1e-6) {
      break;
    }
  }
  lat = psi * RDC;
  return 1;
}

// Lambert conformal conic, sphere. n = xfactor, F = mult, s = scale: 1 on the northern, -1 on the
// southern cone. D = lon - plon.
//   first use  n of one true latitude, or of two; F = cos(tlat1) / (n tan(45 - tlat1/2)^n)
//   forward    r = F R tan(45 - s lat / 2)^n   x = r sin(n D)   y = -s r cos(n D)
//   inverse    lat = s (90 - 2 atan((r / (F R))^(1/n)))   lon = plon + atan2(x, -s y) / n

void Domain::setupLamb() {
  scale = plat >= 0 ? 1.0F : -1.0F;
  double n = 0;
  if (tlat1 == tlat2) {
    n = std::cos((90 - static_cast<double>(scale) * tlat1) * DRC);
  } else {
    n = (logCos(tlat1) - logCos(tlat2)) / (logTanHalf(tlat1) - logTanHalf(tlat2));
  }
  xfactor = toFloat(n);
  mult = toFloat(std::cos(tlat1 * DRC) /
                 (std::pow(std::tan((45 - static_cast<double>(tlat1) / 2) * DRC), n) * n));
}

int Domain::forwardLamb(EarthPoint& e, double& x, double& y) {
  if (xfactor == Const::FMISS) {
    setupLamb();
  }
  if (plat >= 0 && e.lat < -89.99F) {
    e.lat = -89.99F;
  } else if (plat < 0 && e.lat > 89.99F) {
    e.lat = 89.99F;
  }
  if (e.lon - plon > 180) {
    e.lon -= 360;
  } else if (e.lon - plon < -180) {
    e.lon += 360;
  }
  // The square of the tangent of half the distance from the pole, from a single sine.
  const double s = std::sin(static_cast<double>(scale) * e.lat * DRC);
  const double r = mult * R * std::pow((1 - s) / (1 + s), xfactor / 2.0);
  const double a = (static_cast<double>(e.lon) - plon) * xfactor * DRC;
  x = r * std::sin(a);
  y = -scale * r * std::cos(a);
  return 1;
}

int Domain::inverseLamb(double x, double y, double& lat, double& lon) {
  if (xfactor == Const::FMISS) {
    setupLamb();
  }
  const double theta = x == 0 && y == 0 ? 0 : RDC * std::atan2(x, -scale * y);
  const double q = std::pow(std::sqrt(x * x + y * y) / (mult * R), 1.0 / xfactor);
  lat = scale * 90.0 - 2.0 * scale * RDC * std::atan(q);
  lon = theta / xfactor + plon;
  return 1;
}

// Lambert azimuthal equal-area, sphere. D = lon - plon.
//   forward  c = sin(plat) sin(lat) + cos(plat) cos(lat) cos D   m = R sqrt(2 / (1 + c))
//            x = m cos(lat) sin D   y = m (cos(plat) sin(lat) - sin(plat) cos(lat) cos D)
//   inverse  c = 2 asin(r / 2R), not shown beyond r = 2R
// Not shown: the antipode of the origin, where c is -1.

void Domain::setupOrigin() {
  origin_lat = plat;
  sin_origin = std::sin(plat * DRC);
  cos_origin = std::cos(plat * DRC);
}

int Domain::forwardLambaz(const EarthPoint& e, double& x, double& y) {
  if (origin_lat != plat) {
    setupOrigin();
  }
  constexpr double rounding = 1e-12;  // of c; ten metres on the earth
  const double d = (static_cast<double>(e.lon) - plon) * DRC;
  const double sin_lat = std::sin(e.lat * DRC);
  const double cos_lat = std::cos(e.lat * DRC);
  const double cos_d = std::cos(d);
  const double c = sin_origin * sin_lat + cos_origin * cos_lat * cos_d;
  if (c < -1 + rounding) {
    return 0;
  }
  const double m = R * std::sqrt(2 / (c + 1));
  x = m * cos_lat * std::sin(d);
  y = m * (cos_origin * sin_lat - sin_origin * cos_lat * cos_d);
  return 1;
}

int Domain::inverseLambaz(double x, double y, double& lat, double& lon) {
  if (origin_lat != plat) {
    setupOrigin();
  }
  const double r = std::hypot(x, y);
  const double m = r / 127.4244;
  if (m > 1) {
    return 0;
  }
  lon = plon;
  if (r < 1e-10) {
    lat = plat;
    return -1;  // valid, yet the result of tran() is 0: deliberate
  }
  const double c = 2 * std::asin(m);
  const double sin_c = std::sin(c);
  const double cos_c = std::cos(c);
  lat = RDC * arcSine(y * cos_origin * sin_c / r + sin_origin * cos_c);
  if (std::abs(std::abs(static_cast<double>(plat)) - 90) > 1e-10) {
    const double f = cos_c - std::sin(lat * DRC) * sin_origin;
    if (f != 0) {
      lon = RDC * std::atan2(x * sin_c * cos_origin, f * r) + plon;
    }
  } else if (plat < 0) {
    lon = plon - RDC * std::atan2(-x, y);
  } else {
    lon = plon + RDC * std::atan2(x, -y);
  }
  return 1;
}

// Geostationary satellite at the distance S = sat_rad above plon, sphere or ellipsoid. A = latitude
// (geocentric on the ellipsoid), B = lon - plon, rho = radius of the earth there.
//   forward  d = S - rho cos A cos B   x = S rho sin B cos A / d
//            y = S rho sin A / sqrt((rho sin B cos A)^2 + d^2)
//   With param[1] = 1 the plane has the scan angles atan(x / S) and atan(y / S), times S.
//   inverse  the ray is cut with the earth. That of the sphere takes (x, y) as a plane through the
//   earth's centre
//            and its radius as the equator's: away from the axes it isn't quite the forward
//            formula's.

int Domain::forwardSat(const EarthPoint& e, double& x, double& y) {
  if (earth_sat_ratio == Const::FMISS) {
    earth_sat_ratio = toFloat(R / sat_rad);
  }
  const double phi = e.lat * DRC;
  const double A = ellipse ? std::atan(earth_ratio2 * std::tan(phi)) : phi;
  const double B = (static_cast<double>(e.lon) - plon) * DRC;
  const double cos_a = std::cos(A);
  const double t = cos_a * std::cos(B);
  if (earth_sat_ratio > t) {
    return 0;  // behind the limb
  }
  const double rho = ellipse ? earth_min / std::sqrt(1 - (1 - earth_ratio2) * cos_a * cos_a) : R;
  const double d = sat_rad - rho * t;
  const double east = rho * std::sin(B) * cos_a;
  x = east / d;
  y = rho * std::sin(A) / std::sqrt(east * east + d * d);
  if (param[1] == 1.0F) {
    x = std::atan(x);
    y = std::atan(y);
  }
  x *= sat_rad;
  y *= sat_rad;
  return 1;
}

int Domain::inverseSat(double x, double y, double& lat, double& lon) const {
  const double S = sat_rad;
  double u = x;
  double v = y;
  if (param[1] == 1.0F) {
    u = S * std::tan(x / S);
    v = S * std::tan(y / S);
  }
  const double g = S * S + u * u + v * v;
  const double disc = sat_rad4 - g * sat2_earth2;
  if (disc < 0) {
    return 0;
  }
  const double k = (sat_rad2 - std::sqrt(disc)) / g;
  const double phi = arcSine(v * k / R);
  lon = plon + RDC * arcSine(u * k / (R * std::cos(phi)));
  lat = phi * RDC;
  return 1;
}

int Domain::inverseSatEllipse(double x, double y, double& lat, double& lon) const {
  const double S = sat_rad;
  const bool angles = param[1] == 1.0F;
  const double A = angles ? x / S : std::atan(x / S);
  const double B = angles ? y / S : std::atan(y / S);
  const double sin_b = std::sin(B);
  const double cos_b = std::cos(B);
  const double cos_ab = std::cos(A) * cos_b;
  const double Q = sin_b * sin_b / earth_ratio2 + cos_b * cos_b;
  const double b = S * cos_ab;
  const double disc = b * b - sat2_earth2 * Q;
  if (disc < 0) {
    return 0;
  }
  const double range = (b - std::sqrt(disc)) / Q;
  const double m = S - range * cos_ab;
  const double k = range * std::sin(A) * cos_b;
  lat = RDC * std::atan(range * sin_b / (std::hypot(k, m) * earth_ratio2));
  lon = plon + RDC * std::atan(k / m);
  return 1;
}

// Orthographic, sphere. D = lon - plon, xfactor = cos(plat), yfactor = sin(plat).
//   forward  x = R cos(lat) sin D   y = R (cos(plat) sin(lat) - sin(plat) cos(lat) cos D)
//   inverse  z = sqrt(R^2 - x^2 - y^2), the point (x, y, z) turned back to the earth's axes
// The far side isn't shown; the rim, 90 degrees from the tangent point, is.

void Domain::setupOrtho() {
  plat = plat == Const::FMISS ? 0 : plat;
  xfactor = toFloat(std::cos(plat * DRC));
  yfactor = toFloat(std::sin(plat * DRC));
}

int Domain::forwardOrtho(const EarthPoint& e, double& x, double& y) {
  if (xfactor == Const::FMISS) {
    setupOrtho();
  }
  constexpr double rounding = 1e-7;  // of c, where it is 0 on the rim; under a metre on the earth
  const double d = (static_cast<double>(e.lon) - plon) * DRC;
  const double sin_lat = std::sin(e.lat * DRC);
  const double cos_lat = std::cos(e.lat * DRC);
  const double cos_d = std::cos(d);
  if (yfactor * sin_lat + xfactor * cos_lat * cos_d < -rounding) {
    return 0;
  }
  x = R * std::sin(d) * cos_lat;
  y = R * (xfactor * sin_lat - yfactor * cos_lat * cos_d);
  return 1;
}

int Domain::inverseOrtho(double x, double y, double& lat, double& lon) {
  if (xfactor == Const::FMISS) {
    setupOrtho();
  }
  const double q = R_SQUARED - x * x - y * y;
  if (q < 0) {
    return 0;
  }
  const double z = std::sqrt(q);
  lat = RDC * arcSine((y * xfactor + z * yfactor) / R);
  lon = RDC * std::atan2(x, z * xfactor - y * yfactor) + plon;
  return 1;
}

// Mollweide, sphere, in a size with half axes of 2 R and R. D = lon - plon, within -180 to 180.
//   2T + sin 2T = PI sin(lat), by Newton's method   x = R D / 90 cos T   y = R sin T

int Domain::forwardMoll(const EarthPoint& e, double& x, double& y) const {
  double theta = e.lat * DRC;
  const double target = PI * std::sin(theta);
  for (int i = 0; i < 15; i++) {
    const double delta = -(theta + std::sin(theta) - target) / (1 + std::cos(theta));
    theta += delta;
    if (std::abs(delta) < 1e-10) {
      break;
    }
  }
  theta /= 2;
  x = std::cos(theta) * (wrapOnce(static_cast<double>(e.lon) - plon) * R / 90);
  if (e.lat > 89.99F || e.lat < -89.99F) {
    x = 0;
  }
  y = R * std::sin(theta);
  return 1;
}

int Domain::inverseMoll(double x, double y, double& lat, double& lon) const {
  const double s = y / R;
  if (s < -1 || s > 1) {
    return 0;
  }
  const double theta = std::asin(s);
  const double turn = x / (R * std::cos(theta));
  if (turn < -2 || turn > 2) {
    return 0;
  }
  lon = turn * 90 + plon;
  const double q = (2 * theta + std::sin(2 * theta)) / PI;
  if (q < -1 || q > 1) {
    return 0;
  }
  lat = RDC * std::asin(q);
  return 1;
}

// Plain planes and thermodynamic diagrams. lat is x, temperature in degrees Celsius or direction,
// lon is y, pressure or speed. Codes without a formula (GNOM, XZ, the requests) are the identity.

void Domain::setupSkewt() {
  scale = toFloat(-std::log(static_cast<double>(clon)));
  xfactor = dx / dy;
}

namespace {

/** Logarithm of the potential temperature of t, degrees Celsius, at p. */
double logTheta(float t, float p) {
  return std::log(static_cast<double>(Calc::potTemp(Convert::CtoK(t), p)));
}

/** Pressure at which the temperature t, degrees Celsius, has the potential temperature theta. */
double thetaPres(double t, double theta) {
  return 1000 * std::pow(Convert::CtoK(toFloat(t)) / theta, KAPPA_INV);
}

}  // namespace

// The width of the grid scales both axes.
void Domain::setupTeph() {
  const double cells = static_cast<double>(nx) - 1;
  xfactor = toFloat(1 / (cells * dx));
  yfactor = toFloat(1 / (cells * dy));
  scale = toFloat(logTheta(plat, plon));
}

int Domain::forwardDiagram(const EarthPoint& e, double& x, double& y) {
  const double lat = e.lat;
  const double lon = e.lon;
  x = lat;
  y = lon;
  switch (proj) {
    case PIXEL: y = -lon; break;
    case XP:
      x = (lat - limits.xmin) * xfactor + limits.xmin;
      y = (limits.ymin - lon) * yfactor + limits.ymin;
      break;
    case XLOGP:
    case EMA: y = -std::log(lon); break;
    case POLAR:
      x = lon * std::sin(lat * DRC);
      y = lon * std::cos(lat * DRC);
      break;
    case SKEWT:
      if (xfactor == Const::FMISS) {
        setupSkewt();
      }
      y = -std::log(lon);
      x = lat + (y - scale) * xfactor;
      break;
    case STUVE: y = -std::pow(lon, 0.285714); break;
    case TEPH: {
      y = logTheta(e.lat, e.lon);
      if (xfactor == 0) {
        break;
      }
      if (xfactor == Const::FMISS) {
        setupTeph();
      }
      // Into the viewport, there turned by 45 degrees, and back.
      const double x1 = view.xmin + (lat - plat) * xfactor;
      const double y1 = view.ymin + (y - scale) * yfactor;
      const double x2 = (y1 - view.ymin) * 0.5 + (x1 + view.xmin) * 0.5;
      const double y2 = y1 - (x2 - view.xmin);
      x = (x2 - view.xmin) / xfactor + plat;
      y = (y2 - view.ymin) / yfactor + scale;
      break;
    }
    case RTEPH: y = logTheta(e.lat, e.lon); break;
    default: break;
  }
  return 1;
}

int Domain::inverseDiagram(double x, double y, double& lat, double& lon) {
  lat = x;
  lon = y;
  switch (proj) {
    case PIXEL: lon = -y; break;
    case XP:
      lat = (x - limits.xmin) / xfactor + limits.xmin;
      lon = (limits.ymin - y) / yfactor + limits.ymin;
      break;
    case XLOGP:
    case EMA: lon = std::exp(-y); break;
    case POLAR:
      lat = x == 0 && y == 0 ? 0 : RDC * std::atan2(x, y);
      lat = lat < 0 ? lat + 360 : lat;
      lon = std::hypot(x, y);
      break;
    case SKEWT:
      if (xfactor == Const::FMISS) {
        setupSkewt();
      }
      lat = x - (y - scale) * xfactor;
      lon = std::exp(-y);
      break;
    case STUVE: lon = std::pow(-y, KAPPA_INV); break;
    case TEPH: {
      if (xfactor == Const::FMISS) {
        setupTeph();
      }
      const double a = view.xmin + (x - plat) * xfactor;
      const double b = view.ymin + (y - scale) * yfactor + (a - view.xmin);
      const double c = 2 * a - (b - view.ymin) - view.xmin;
      lat = (c - view.xmin) / xfactor + plat;
      lon = thetaPres(lat, std::exp((b - view.ymin) / yfactor + scale));
      break;
    }
    case RTEPH: lon = thetaPres(lat, std::exp(y)); break;
    default: break;
  }
  return 1;
}

// The grid.

int Domain::tran(const GridPoint& g, Point& p) const {
  if (!g.isSet()) {
    p.set(Const::FMISS, Const::FMISS);
    return 0;
  }
  const double x = static_cast<double>(g.gx) * dx + limits.xmin;
  const double y = limits.ymax - static_cast<double>(g.gy) * dy;
  if (!isSane(x) || !isSane(y)) {
    p.set(Const::FMISS, Const::FMISS);
    return 0;
  }
  p.set(toFloat(x), toFloat(y));
  return 1;
}

int Domain::tran(const Point& p, GridPoint& g) const {
  if (!p.isSet()) {
    g.init();
    return 0;
  }
  double d = static_cast<double>(p.x) - limits.xmin;
  if (proj == LATLON) {
    if (d < -OFFSET_LL) {
      d += OFFSET_LL;
    } else if (d > OFFSET_LL) {
      d -= OFFSET_LL;
    }
  }
  const double gx = d / dx;
  const double gy = (static_cast<double>(limits.ymax) - p.y) / dy;
  if (!isSane(gx) || !isSane(gy)) {
    g.init();
    return 0;
  }
  g.set(toFloat(gx), toFloat(gy));
  return 1;
}

int Domain::tran(EarthPoint& e, GridPoint& g) {
  Point p;
  tran(e, p);
  return tran(p, g);
}

int Domain::tran(const GridPoint& g, EarthPoint& e) {
  Point p;
  tran(g, p);
  return tran(p, e);
}

int Domain::tran(int corner, Point& p) {
  switch (corner) {
    case 0: p.set(limits.xmin, limits.ymax); return 1;
    case 1: p.set(limits.xmax, limits.ymax); return 1;
    case 2: p.set(limits.xmin, limits.ymin); return 1;
    case 3: p.set(limits.xmax, limits.ymin); return 1;
    case 4:
      p.interp(Point(limits.xmin, limits.ymin), Point(limits.xmax, limits.ymax), 0.5F);
      return 1;
    default: return 0;
  }
}

int Domain::tran(int corner, EarthPoint& e) {
  if (corner == 4) {
    e.set(clat, clon);
    return 1;
  }
  Point p;
  return tran(corner, p) == 0 ? 0 : tran(p, e);
}

int Domain::tran(int corner, GridPoint& g) {
  Point p;
  return tran(corner, p) == 0 ? 0 : tran(p, g);
}

int Domain::tranCenter(Point& p) {
  EarthPoint e(clat, clon);
  return tran(e, p);
}

int Domain::translate(Domain& from, Domain& to, const Point& in, Point& out) {
  if (compareProj(from, to)) {
    out = in;
    return 1;
  }
  EarthPoint e;
  const int found = from.tran(in, e);
  if (found == 0 && !e.isSet()) {
    out.set(Const::FMISS, Const::FMISS);
    return 0;
  }
  return to.tran(e, out);
}

namespace {

/** Room for the numbers of a batch. */
using Batch = std::array<double, ProjBatch::MAX>;

}  // namespace

void Domain::translate(Domain& from, Domain& to, float* x, float* y, int n) {
  std::array<float, ProjBatch::MAX> lat;
  std::array<float, ProjBatch::MAX> lon;
  for (int done = 0; done < n; done += ProjBatch::MAX) {
    const int num = std::min(n - done, ProjBatch::MAX);
    from.toEarth(x + done, y + done, num, lat.data(), lon.data());
    to.fromEarth(lat.data(), lon.data(), num, x + done, y + done);
  }
}

/** At most ProjBatch::MAX places. Those that need a look of their own go one at a time. */
void Domain::toEarth(const float* x, const float* y, int n, float* lat, float* lon) {
  const bool batches = proj == PSTEREO;
  if (batches) {
    if (xfactor == Const::FMISS) {
      setupPstereo();
    }
    Batch px;
    Batch py;
    Batch la;
    Batch lo;
    std::copy(x, x + n, px.begin());
    std::copy(y, y + n, py.begin());
    ProjBatch::inversePstereo(px.data(), py.data(), n, scale, xfactor, la.data(), lo.data());
    for (int i = 0; i < n; i++) {
      const double turned = toFloat(lo[i] + plon);
      const double turns = turned > 180 ? -360.0 : turned < -180 ? 360.0 : 0.0;
      lat[i] = toFloat(la[i]);
      lon[i] = toFloat(turned + turns);
    }
  }
  for (int i = 0; i < n; i++) {
    const float r = std::abs(x[i]) + std::abs(y[i]);
    if (!batches || !(r > 0 && r < -Const::FMISS)) {
      EarthPoint place;
      tran(Point(x[i], y[i]), place);
      lat[i] = place.lat;
      lon[i] = place.lon;
    }
  }
}

/** At most ProjBatch::MAX places. Those that need a look of their own go one at a time. */
void Domain::fromEarth(const float* lat, const float* lon, int n, float* x, float* y) {
  // Latitudes between which nothing is limited.
  float low = 0;
  float high = 0;
  if (proj == LAMB || proj == PSTEREO) {
    if (xfactor == Const::FMISS) {
      proj == LAMB ? setupLamb() : setupPstereo();
    }
    constexpr float near_pole = 89.98F;
    constexpr float plane_end = 75;
    low = proj == PSTEREO && scale < 0 ? -plane_end : -near_pole;
    high = proj == PSTEREO && scale > 0 ? plane_end : near_pole;
    Batch la;
    Batch angle;
    Batch px;
    Batch py;
    const float turn = proj == LAMB ? 360.0F : 0.0F;
    for (int i = 0; i < n; i++) {
      const float from_centre = lon[i] - plon;
      const float turns = from_centre > 180 ? -turn : from_centre < -180 ? turn : 0.0F;
      la[i] = lat[i];
      angle[i] = static_cast<double>(lon[i] + turns) - plon;
    }
    if (proj == LAMB) {
      ProjBatch::forwardLamb(la.data(), angle.data(), n, scale, xfactor, mult * R, px.data(),
                             py.data());
    } else {
      ProjBatch::forwardPstereo(la.data(), angle.data(), n, scale, xfactor, px.data(), py.data());
    }
    std::transform(px.begin(), px.begin() + n, x, toFloat);
    std::transform(py.begin(), py.begin() + n, y, toFloat);
  }
  for (int i = 0; i < n; i++) {
    if (!(lat[i] > low && lat[i] < high)) {
      EarthPoint place(lat[i], lon[i]);
      Point p;
      if (lat[i] == Const::FMISS || tran(place, p) == 0) {
        p.set(Const::FMISS, Const::FMISS);
      }
      x[i] = p.x;
      y[i] = p.y;
    }
  }
}

// Containment.

bool Domain::withinExt(const Point& p, int n) const {
  if (!isSet()) {
    return true;
  }
  const float w = n == 0 ? 0.0F : static_cast<float>(n) * dx;  // dx may be infinite
  const float h = n == 0 ? 0.0F : static_cast<float>(n) * dy;
  return p.x >= limits.xmin - w && p.x <= limits.xmax + w && p.y >= limits.ymin - h &&
         p.y <= limits.ymax + h;
}

bool Domain::withinExt(const EarthPoint& e, int n) {
  EarthPoint copy = e;
  Point p;
  tran(copy, p);
  return withinExt(p, n);
}

bool Domain::within(const Point& p) const {
  return withinExt(p, 0);
}

bool Domain::within(const EarthPoint& e) {
  return withinExt(e, 0);
}

int Domain::where(const Point& p) const {
  if (!isSet()) {
    return 0;
  }
  const int row = p.y > limits.ymax ? 0 : (p.y < limits.ymin ? 2 : 1);
  const int col = p.x < limits.xmin ? 0 : (p.x > limits.xmax ? 2 : 1);
  return row * 3 + col + 1;
}

int Domain::where(const EarthPoint& e) {
  EarthPoint copy = e;
  Point p;
  tran(copy, p);
  return where(p);
}

int Domain::adjust(Point& p) const {
  if (proj != LATLON && proj != MERC) {
    return 0;
  }
  const float half = proj == LATLON ? 180.0F : 200.15779F;
  const float period = proj == LATLON ? OFFSET_LL : OFFSET_MERC;
  if (p.x > half) {
    p.x -= period;
    return -1;
  }
  if (p.x < -half) {
    p.x += period;
    return 1;
  }
  return 0;
}

int Domain::adjust(Points& pts) const {
  int first = 0;
  for (int i = 0; i < pts.getNum(); i++) {
    Point p(pts.getX(i), pts.getY(i));
    if (!p.isSet()) {
      continue;
    }
    const int moved = adjust(p);
    if (moved != 0) {
      pts.set(i, p.x, p.y);
    }
    first = i == 0 ? moved : first;
  }
  return first;
}

// Directions.

/** The constant of the cone for directions alone. For two true latitudes the first logarithm stands
 * outside the division, and F isn't computed: deliberate. It shows only where no point was
 * projected before. */
void Domain::setupLambDir() {
  scale = plat >= 0 ? 1.0F : -1.0F;
  const double s = scale;
  if (tlat1 == tlat2) {
    xfactor = toFloat(std::cos((90 - s * tlat1) * DRC));
  } else {
    xfactor =
        toFloat(logCos(tlat1) - logCos(tlat2) / (logTanHalf(s * tlat1) - logTanHalf(s * tlat2)));
  }
}

/** What added to a bearing from true north at p makes it one from the plot's up direction, degrees.
 */
double Domain::convergence(const Point& p) {
  const double x = p.x;
  const double y = p.y;
  if (proj == PSTEREO) {
    if (x == 0 && y == 0) {
      return plat >= 0 ? -static_cast<double>(plon) : plon;
    }
    return plat < 0 ? RDC * std::atan2(x, y) : -RDC * std::atan2(x, -y);
  }
  if (proj == LAMB) {
    if (xfactor == Const::FMISS) {
      setupLambDir();
    }
    return -RDC * std::atan2(x, -scale * y);  // with the same sign on both cones: deliberate
  }
  return 0;
}

namespace {

/** One step of 360 into 0 to 360. */
float wrapBearing(double dir) {
  if (dir > 360) {
    return toFloat(dir - 360);
  }
  return toFloat(dir < 0 ? dir + 360 : dir);
}

}  // namespace

float Domain::adjustDir(float dir, const Point& p) {
  if (dir == Const::FMISS) {
    return dir;
  }
  if (proj != SAT) {
    return wrapBearing(dir + convergence(p));
  }
  // The bearing on the picture of a step of 1 km.
  EarthPoint e;
  tran(p, e);
  if (e.lat == Const::FMISS) {
    return Const::FMISS;
  }
  offsetLatLon(e, dir, 1, e);
  Point q;
  tran(e, q);
  if (!q.isSet()) {
    return Const::FMISS;
  }
  return wrapBearing(RDC *
                     std::atan2(static_cast<double>(q.x) - p.x, static_cast<double>(q.y) - p.y));
}

float Domain::adjustDir(float dir, const EarthPoint& e) {
  EarthPoint copy = e;
  Point p;
  tran(copy, p);
  return adjustDir(dir, p);
}

float Domain::unadjustDir(float dir, const Point& p) {
  return wrapBearing(dir - convergence(p));
}

float Domain::direct(const Point& p1, const Point& p2) const {
  const double x = p1.x;
  const double y = p1.y;
  double d = RDC * std::atan2(p2.x - x, p2.y - y);
  if (proj == PSTEREO) {
    d += plat < 0 ? -RDC * std::atan2(x, y) : RDC * std::atan2(x, -y);
  }
  return toFloat(d);
}

// Resizing.

int Domain::scaleSize(int cols, int rows) {
  if (cols < 1 || rows < 1) {
    return 0;
  }
  const double W = (static_cast<double>(nx) - 1) * dx;
  const double H = (static_cast<double>(ny) - 1) * dy;
  const double a = H / W;
  const double new_w = cols - 1.0;
  const double new_h = rows - 1.0;
  if (new_h / new_w < a) {
    dx = toFloat(W * a / new_h);
    dy = toFloat(H / new_h);
  } else {
    dx = toFloat(W / new_w);
    dy = toFloat(H / (new_w * a));
  }
  nx = cols;
  ny = rows;
  return 1;
}

int Domain::scaleGrid(float f) {
  if (!(f > 0)) {
    return 0;
  }
  const double cells_x = static_cast<double>(nx) - 1;
  const double cells_y = static_cast<double>(ny) - 1;
  const int cols = std::max(2, Tools::cut(cells_x * f + 1));
  const int rows = std::max(2, Tools::cut(cells_y * f + 1));
  dx = toFloat(cells_x * dx / (cols - 1.0));
  dy = toFloat(cells_y * dy / (rows - 1.0));
  nx = cols;
  ny = rows;
  return 1;
}

int Domain::zoom(const Point& p, float f) {
  EarthPoint e;
  tran(p, e);
  if (e.lat == Const::FMISS || !(f > 0)) {
    return 0;
  }
  clat = e.lat;
  clon = e.lon;
  dx /= f;
  dy /= f;
  return setLimits();
}

int Domain::pan(const Point& p) {
  return zoom(p, 1);
}

int Domain::offset(const Point& in, float dir, float dist, Point& out) {
  EarthPoint e;
  tran(in, e);
  offsetLatLon(e, dir, dist, e);
  return tran(e, out);
}

int Domain::offsetLatLon(const EarthPoint& in, float dir, float dist, EarthPoint& out) {
  if (in.lat == Const::FMISS || in.lon == Const::FMISS || dir == Const::FMISS ||
      dist == Const::FMISS) {
    out.set(Const::FMISS, Const::FMISS);
    return 1;
  }
  const double ex = std::sin(dir * DRC) * dist;
  const double ey = std::cos(dir * DRC) * dist;
  out.set(toFloat(in.lat + ey / KM_PER_DEGREE),
          toFloat(in.lon + ex / (std::cos(in.lat * DRC) * KM_PER_DEGREE)));
  return 1;
}

float Domain::getMapFactor(const EarthPoint& e) const {
  if (proj != PSTEREO || plat == 0 || e.lat == Const::FMISS) {
    return 1.0F;
  }
  return toFloat(1.866 / (1 + std::sin((plat > 0 ? e.lat : -e.lat) * DRC)));
}

float Domain::calcEarthDist(const EarthPoint& a, const EarthPoint& b) {
  return Calc::earthDist(a.lat, a.lon, b.lat, b.lon);
}

// Lines across the edge of a cylindrical or conic map.

/** Distance after which the map repeats at the height y, 0 where it doesn't. */
double Domain::getPeriod(double y) const {
  double w = 0;
  if (proj == LATLON) {
    w = OFFSET_LL;
  } else if (proj == MERC) {
    w = OFFSET_MERC;
  } else if (proj == MOLL) {
    w = 4 * std::sqrt(R_SQUARED - y * y);
  } else if (proj == LAMB && xfactor != Const::FMISS && xfactor <= 0.5F) {
    if (cone != xfactor) {
      cone = xfactor;
      cone_period = -2 * std::tan(PI * xfactor);
    }
    w = cone_period * y;
  }
  w = std::abs(w);  // on the southern cone y is above 0
  return isSane(w) ? w : 0;
}

namespace {

/** Moves p2 next to p1 on a map of period w. */
int wrapTo(double w, const Point& p1, Point& p2) {
  const double delta = static_cast<double>(p1.x) - p2.x;
  if (delta > w / 4) {
    p2.x = toFloat(p2.x + w);
    return 1;
  }
  if (delta < -w / 4) {
    p2.x = toFloat(p2.x - w);
    return -1;
  }
  return 0;
}

/** The first point that isn't missing. */
bool firstSet(const Points& pts, Point& p) {
  for (int i = 0; i < pts.getNum(); i++) {
    p.set(pts.getX(i), pts.getY(i));
    if (p.isSet()) {
      return true;
    }
  }
  return false;
}

}  // namespace

int Domain::wrapLine(const Point& p1, Point& p2) const {
  const double w = p1.isSet() && p2.isSet() ? getPeriod(p1.y) : 0;
  return w == 0 ? 0 : wrapTo(w, p1, p2);
}

bool Domain::wraps(const Points& pts) const {
  Point first;
  const double w = firstSet(pts, first) ? getPeriod(first.y) : 0;
  const float* x = pts.xs();
  for (int i = 1; w != 0 && i < pts.getNum(); i++) {
    if (std::abs(static_cast<double>(x[i]) - x[i - 1]) > w / 4) {
      return true;
    }
  }
  return false;
}

bool Domain::neverWraps(const float* x, const float* y, int n) const {
  const bool closes = proj == LATLON || proj == MERC || proj == MOLL ||
                      (proj == LAMB && xfactor != Const::FMISS && xfactor <= 0.5F);
  if (!closes || n < 1) {
    return true;
  }
  float least_x = x[0];
  float most_x = x[0];
  float least_y = y[0];
  float most_y = y[0];
  for (int i = 1; i < n; i++) {
    least_x = std::min(least_x, x[i]);
    most_x = std::max(most_x, x[i]);
    least_y = std::min(least_y, y[i]);
    most_y = std::max(most_y, y[i]);
  }
  // The period changes evenly up and down from the middle of a map.
  const double w = std::min(getPeriod(least_y), getPeriod(most_y));
  const bool one_side = (least_y > 0) == (most_y > 0);
  return one_side && w > 0 && static_cast<double>(most_x) - least_x <= w / 4;
}

int Domain::wrapLine(Points& pts) const {
  Point last;
  const double w = firstSet(pts, last) ? getPeriod(last.y) : 0;
  if (w == 0) {
    return 0;
  }
  int sign = 0;
  for (int i = 0; i < pts.getNum(); i++) {
    Point p(pts.getX(i), pts.getY(i));
    if (!p.isSet()) {
      continue;  // a gap in the line stays one
    }
    const int moved = wrapTo(w, last, p);
    if (moved != 0) {
      pts.set(i, p.x, p.y);
      sign = sign == 0 ? moved : sign;
    }
    last = p;
  }
  return sign;
}

int Domain::offsetLine(Point& p1, Point& p2, int sign) const {
  if (sign == 0) {
    return 0;
  }
  const double w = sign == 1 ? -getPeriod(p1.y) : getPeriod(p1.y);
  p1.x = p1.isSet() ? toFloat(p1.x + w) : p1.x;
  p2.x = p2.isSet() ? toFloat(p2.x + w) : p2.x;
  return 1;
}

int Domain::offsetLine(Points& pts, int sign) const {
  Point first;
  if (sign == 0) {
    return 0;
  }
  if (!firstSet(pts, first)) {
    return 1;
  }
  const double w = sign == 1 ? -getPeriod(first.y) : getPeriod(first.y);
  for (int i = 0; w != 0 && i < pts.getNum(); i++) {
    if (pts.getX(i) != Const::FMISS && pts.getY(i) != Const::FMISS) {
      pts.set(i, toFloat(pts.getX(i) + w), pts.getY(i));
    }
  }
  return 1;
}

int Domain::toString(String& out) const {
  toText(getProjText(proj), out);
  return 1;
}

void Domain::print() const {
  String text;
  toString(text);
  std::printf("%s\n", text.get());
}

void Domain::printLimits() const {
  std::printf("(%f,%f)-(%f,%f)\n", static_cast<double>(limits.xmin),
              static_cast<double>(limits.ymin), static_cast<double>(limits.xmax),
              static_cast<double>(limits.ymax));
}

}  // namespace ZQV
