#pragma once

#include <array>

#include "Const.h"

namespace ZQV {

class String;

/** The plain value of a domain: a projection, its parameters, and a regular grid of nx by ny points
 *  centred on (clat, clon). What readers and texts give, and Domain computes with. */
class DomainVal {
 public:
  /** Projection codes. 1 to 9 are maps, 20 to 26 plain coordinates, 40 to 44 thermodynamic
   * diagrams, from 50 on requests that a domain text may carry and that no transformation knows. */
  enum Proj {
    PSTEREO = 1,
    LATLON = 2,
    MERC = 3,
    LAMB = 4,
    ORTHO = 5,
    GNOM = 6,
    MOLL = 7,
    LAMBAZ = 8,
    SAT = 9,
    PIXEL = 20,
    XY = 21,
    XZ = 22,
    XP = 23,
    XLOGP = 24,
    POLAR = 25,
    CAT = 26,
    SKEWT = 40,
    STUVE = 41,
    EMA = 42,
    TEPH = 43,
    RTEPH = 44,
    ZOOM = 50,
    SIZE = 51
  };

  void init() { *this = DomainVal(); }
  /** (nx - 1) / (ny - 1); infinite for an ny of 1. */
  [[nodiscard]] float getAspect() const {
    return static_cast<float>((static_cast<double>(nx) - 1) / (static_cast<double>(ny) - 1));
  }
  /** Every field is equal. */
  static bool compare(const DomainVal& a, const DomainVal& b);
  /** Both share one projected plane: the same projection, origin, parameters and earth. */
  static bool compareProj(const DomainVal& a, const DomainVal& b);
  /** Writes the domain text and a newline; TEPH and RTEPH have no name here. */
  void print() const;

  int proj = Const::MISS;     ///< one of Proj, Const::MISS if unset, -1 for an unknown name
  float plat = Const::FMISS;  ///< origin of the projection (pole, tangent point), degrees;
  float plon = Const::FMISS;  ///< missing means the centre
  std::array<float, 5> param{ ///< parameters by projection: true latitudes, satellite distance, ...
                             Const::FMISS, Const::FMISS, Const::FMISS, Const::FMISS, Const::FMISS};
  float clat = Const::FMISS;  ///< centre of the grid, degrees
  float clon = Const::FMISS;
  float dx = Const::FMISS;  ///< grid spacing in units of the projected plane
  float dy = Const::FMISS;
  int nx = Const::MISS;  ///< points of the grid
  int ny = Const::MISS;
  bool ellipse = false;  ///< ellipsoidal earth (MERC and SAT only)

 protected:
  /** Name of a projection in a domain text; empty for those without. */
  static const char* getProjText(int code);
  /** The domain text with that name ahead. */
  void toText(const char* name, String& out) const;
};

}  // namespace ZQV
