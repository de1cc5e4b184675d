#pragma once

#include "DomainVal.h"
#include "Rect.h"

namespace ZQV {

class EarthPoint;
class GridPoint;
class Point;
class Points;
class String;

/** Where a picture or a grid lies, and the transformations between earth, projected plane and grid.
 *  Everything that is plotted passes through here. The constants of a projection are computed on
 * its first use, so that a transformation isn't const; a Domain is cheap to copy.
 *
 *  Projected coordinates are in 100 km on map projections (the earth's radius is 63.7122) and in
 *  degrees on LATLON. What a projection can't show has a missing x and y and the result 0, as has
 * what isn't finite; missing coordinates travel through with the result 1. An unset domain is the
 * identity. */
class Domain : public DomainVal {
 public:
  static constexpr float OFFSET_LL = 360.0F;        ///< period of LATLON, degrees
  static constexpr float OFFSET_MERC = 400.31558F;  ///< period of MERC, 100 km
  static constexpr float earth_rad = 63.7122F;      ///< spherical radius, 100 km
  static constexpr float earth_maj = 63.78137F;     ///< semi-major axis
  static constexpr float earth_min = 63.56752F;     ///< semi-minor axis
  static constexpr float earth_ratio = 0.9966472F;  ///< earth_min / earth_maj
  static constexpr float earth_ratio2 = earth_ratio * earth_ratio;

  Domain() = default;
  explicit Domain(const DomainVal& val) { set(val); }

  void init() { *this = Domain(); }
  /** @return 1 */
  int set(const DomainVal& val);
  /** The strict text form, as toString writes it:
   * "proj[:e][:plat:plon:param...],clat,clon,nx,ny,dx,dy", or the projection field alone.
   * DomainTool::decode reads all that users may write. @return 1 or 0 */
  int set(const char* text);
  /** The grid of cols by rows points between two corners, in the projection set before. Needs at
   * least 2 points each way. @return 1; 0 with fewer, or if a corner can't be projected */
  int set(const EarthPoint& ul, const EarthPoint& lr, int cols, int rows);
  /** A plain plane (XY) of cols by rows points. @return 1 */
  int set(int cols, int rows);
  [[nodiscard]] DomainVal get() const { return static_cast<const DomainVal&>(*this); }

  /** Sets what follows from the value part, and forgets the first-use constants. To be called after
   *  fields were changed directly. @return 1 */
  int setParam();
  int setLimits();
  /** Extent of the grid in the projected plane. */
  int getLimits(Rect& rect) const;
  [[nodiscard]] const Rect& getLimits() const { return limits; }
  /** The viewport of the plot, which the turned diagrams need. */
  int setView(const Rect& rect);

  [[nodiscard]] bool isSet() const { return proj != Const::MISS; }
  [[nodiscard]] int getProj() const { return proj; }
  [[nodiscard]] float getPLat() const { return plat; }
  [[nodiscard]] float getPLon() const { return plon; }
  [[nodiscard]] float getCLat() const { return clat; }
  [[nodiscard]] float getCLon() const { return clon; }
  [[nodiscard]] int getNx() const { return nx; }
  [[nodiscard]] int getNy() const { return ny; }
  [[nodiscard]] float getDx() const { return dx; }
  [[nodiscard]] float getDy() const { return dy; }
  /** Const::FMISS out of range. */
  [[nodiscard]] float getParam(int i) const;
  /** Height of the grid in the projected plane. */
  [[nodiscard]] float getVert() const { return limits.ymax - limits.ymin; }
  [[nodiscard]] bool isProj(int code) const { return proj == code; }
  [[nodiscard]] bool isMap() const { return isMap(proj); }
  [[nodiscard]] bool isCoord() const { return isCoord(proj); }
  [[nodiscard]] bool isTherm() const { return isTherm(proj); }
  [[nodiscard]] bool isPolar() const { return isPolar(proj); }
  static bool isMap(int code) { return code >= PSTEREO && code <= SAT; }
  static bool isCoord(int code) { return code >= PIXEL && code <= CAT; }
  static bool isTherm(int code) { return code >= SKEWT && code <= RTEPH; }
  static bool isPolar(int code) { return code == POLAR; }
  /** Code of a projection's name; the beginning decides, case doesn't matter. "polar" is PSTEREO,
   * so that what toString writes for POLAR reads back as another projection: deliberate. @return -1
   * if unknown */
  static int getProj(const char* name);

  /** Forward projection. On maps the longitude is brought into -180 to 180 in the caller's point,
   * and so is a latitude that the projection has to limit. @return 1; 0 if the point can't be shown
   */
  int tran(EarthPoint& e, Point& p);
  /** Inverse projection. A missing point comes back from a map as latitude -9999 and longitude
   * -9639 with the result 1: deliberate, callers test the latitude. The centre of LAMBAZ gives 0
   * with a valid point, deliberately too. @return 1; 0 if the plane has nothing there */
  int tran(const Point& p, EarthPoint& e);
  /** @return 1; 0 with a missing point */
  int tran(const GridPoint& g, Point& p) const;
  int tran(const Point& p, GridPoint& g) const;
  int tran(EarthPoint& e, GridPoint& g);
  int tran(const GridPoint& g, EarthPoint& e);
  /** Corner of the limits: 0 upper left, 1 upper right, 2 lower left, 3 lower right, 4 centre.
   *  @return 0 for any other */
  int tran(int corner, EarthPoint& e);
  int tran(int corner, GridPoint& g);
  int tran(int corner, Point& p);
  /** Projects the centre. */
  int tranCenter(Point& p);
  /** From one domain's plane to another's; within one plane z is copied too. @return 1; 0 if the
   * point can't be shown */
  static int translate(Domain& from, Domain& to, const Point& in, Point& out);
  /** Takes n places of a map's plane to another map's over the earth, as tran() to the earth and
   * tran() from it do. Places that can't be shown get a missing x. */
  static void translate(Domain& from, Domain& to, float* x, float* y, int n);

  /** Inside the limits, edges included; always true for an unset domain. */
  [[nodiscard]] bool within(const Point& p) const;
  [[nodiscard]] bool within(const EarthPoint& e);
  /** Inside the limits widened by n grid spacings on each side. */
  [[nodiscard]] bool withinExt(const Point& p, int n) const;
  [[nodiscard]] bool withinExt(const EarthPoint& e, int n);
  /** Cell of a 3 by 3 keypad around the limits: 1 2 3 above, 4 5 6 level, 7 8 9 below. 0 if unset.
   */
  [[nodiscard]] int where(const Point& p) const;
  [[nodiscard]] int where(const EarthPoint& e);

  /** Brings x of LATLON and MERC into one period. @return -1 moved left, 1 moved right, 0 */
  int adjust(Point& p) const;
  /** The same for all points. @return what point 0 gave */
  int adjust(Points& pts) const;
  /** From a bearing on the earth to one from the plot's up direction at p, degrees.
   *  @return Const::FMISS for a missing direction, or where SAT doesn't see the place */
  float adjustDir(float dir, const Point& p);
  float adjustDir(float dir, const EarthPoint& e);
  /** The other way, for PSTEREO and LAMB. */
  float unadjustDir(float dir, const Point& p);
  /** Bearing from p1 to p2, degrees; on PSTEREO from true north at p1. */
  [[nodiscard]] float direct(const Point& p1, const Point& p2) const;

  /** Fits the extent to a picture of cols by rows pixels with square cells. The limits stay: the
   * centre hasn't moved. @return 1; 0 if either is below 1 */
  int scaleSize(int cols, int rows);
  /** f times the points over the same extent. @return 1; 0 for an f of 0 or below */
  int scaleGrid(float f);
  /** p becomes the centre, seen f times as large. The projection stays. @return 1 */
  int zoom(const Point& p, float f);
  int pan(const Point& p);

  /** The place dist km from in along the bearing dir, degrees. */
  int offset(const Point& in, float dir, float dist, Point& out);
  static int offsetLatLon(const EarthPoint& in, float dir, float dist, EarthPoint& out);
  /** Distances in the plane against distances on the earth. */
  [[nodiscard]] float getMapFactor(const EarthPoint& e) const;
  /** Great-circle distance in 100 km. */
  static float calcEarthDist(const EarthPoint& a, const EarthPoint& b);

  /** Moves p2 by a period if the line would cross the map the long way. @return 1 moved right, -1
   * moved left, 0 */
  int wrapLine(const Point& p1, Point& p2) const;
  /** wrapLine may have to move a point of this line. */
  [[nodiscard]] bool wraps(const Points& pts) const;
  /** No line between any of these places has to be moved; false also where that isn't sure. */
  [[nodiscard]] bool neverWraps(const float* x, const float* y, int n) const;
  /** The same along a line. @return the sign of the first move */
  int wrapLine(Points& pts) const;
  /** Moves a wrapped line to where its other part shows. @param sign  what wrapLine gave
   *  @return 1; 0 for a sign of 0 */
  int offsetLine(Point& p1, Point& p2, int sign) const;
  int offsetLine(Points& pts, int sign) const;

  /** The text form that set and DomainTool::decode read, six decimals a number. @return 1 */
  int toString(String& out) const;
  /** Writes the same and a newline. */
  void print() const;
  /** Writes "(%f,%f)-(%f,%f)\n". */
  void printLimits() const;

 private:
  // One block a projection in the source: formula, first-use constants, forward, inverse. Forward
  // and inverse give 1, or 0 where there is nothing to show.
  int forwardPstereo(EarthPoint& e, double& x, double& y);
  int inversePstereo(double x, double y, double& lat, double& lon);
  int forwardLatLon(const EarthPoint& e, double& x, double& y) const;
  int forwardMerc(const EarthPoint& e, double& x, double& y);
  int inverseMerc(double x, double y, double& lat, double& lon);
  int forwardMercEllipse(const EarthPoint& e, double& x, double& y);
  int inverseMercEllipse(double x, double y, double& lat, double& lon);
  int forwardLamb(EarthPoint& e, double& x, double& y);
  int inverseLamb(double x, double y, double& lat, double& lon);
  int forwardLambaz(const EarthPoint& e, double& x, double& y);
  int inverseLambaz(double x, double y, double& lat, double& lon);
  int forwardSat(const EarthPoint& e, double& x, double& y);
  int inverseSat(double x, double y, double& lat, double& lon) const;
  int inverseSatEllipse(double x, double y, double& lat, double& lon) const;
  int forwardOrtho(const EarthPoint& e, double& x, double& y);
  int inverseOrtho(double x, double y, double& lat, double& lon);
  int forwardMoll(const EarthPoint& e, double& x, double& y) const;
  int inverseMoll(double x, double y, double& lat, double& lon) const;
  int forwardDiagram(const EarthPoint& e, double& x, double& y);
  int inverseDiagram(double x, double y, double& lat, double& lon);

  void setupPstereo();
  void setupMercEllipse();
  void setupLamb();
  void setupLambDir();
  void setupOrigin();
  void setupOrtho();
  void setupSkewt();
  void setupTeph();
  void toEarth(const float* x, const float* y, int n, float* lat, float* lon);
  void fromEarth(const float* lat, const float* lon, int n, float* x, float* y);
  int project(EarthPoint& e, double& x, double& y);
  int unproject(double x, double y, double& lat, double& lon);
  double convergence(const Point& p);
  [[nodiscard]] double getPeriod(double y) const;

  Rect limits;
  Rect view;
  float sat_rad = 421.64F;  ///< distance of the satellite from the earth's centre, 100 km
  float sat_rad2 = 177780.3F;
  float sat_rad4 = 31605831680.0F;
  float sat2_earth2 = 173720.94F;  ///< sat_rad2 less the earth's radius squared
  float earth_sat_ratio = Const::FMISS;
  float tlat1 = 30.0F;  ///< true latitudes, degrees
  float tlat2 = 60.0F;
  /** First-use constants of the projection at hand. A missing xfactor says that they aren't
   * computed. */
  float xfactor = Const::FMISS;
  float mult = Const::FMISS;
  float yfactor = Const::FMISS;
  float scale = Const::FMISS;
  /** Sine and cosine of the origin's latitude origin_lat, for LAMBAZ. */
  float origin_lat = Const::FMISS;
  double sin_origin = 0;
  double cos_origin = 0;
  /** Period of LAMB over its y, for the cone that xfactor states. */
  mutable float cone = Const::FMISS;
  mutable double cone_period = 0;
};

}  // namespace ZQV
