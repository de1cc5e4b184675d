#pragma once

namespace ZQV {

/** The trigonometry of the projections that radar data come from and go to, for many places at
 * once: loops without branches, which the compiler turns into vector instructions and calls of the
 * C library's vector functions where a processor has them. Results are within a few units in the
 * last place of double precision of what one place at a time gives. Only for finite places that a
 * projection can show: the caller passes no others. Formulas: see Domain. */
class ProjBatch {
 public:
  /** Places taken at once, at most. */
  static constexpr int MAX = 128;

  /** Plane to latitude, and longitude from the vertical one, degrees. */
  static void inversePstereo(const double* x, const double* y, int n, double scale, double xfactor,
                             double* lat, double* lon);
  /** @param angle  degrees from the vertical longitude */
  static void forwardPstereo(const double* lat, const double* angle, int n, double scale,
                             double xfactor, double* x, double* y);
  /** @param radius  of the parallel at the equator, on the plane */
  static void forwardLamb(const double* lat, const double* angle, int n, double scale,
                          double xfactor, double radius, double* x, double* y);
};

}  // namespace ZQV
