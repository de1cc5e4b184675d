#include "ProjBatch.h"

#include <cmath>

#include "Const.h"

// Versions for processors with vectors of eight and of four, chosen when the program starts. Not in
// sanitized builds, where the choice would run ahead of the sanitizer's own start.
#if defined(__x86_64__) && defined(__OPTIMIZE__) && !defined(__clang__) && \
    !defined(__SANITIZE_ADDRESS__)
#define ZQV_BY_PROCESSOR \
  __attribute__((target_clones("arch=x86-64-v4", "arch=x86-64-v3", "default")))
#else
#define ZQV_BY_PROCESSOR
#endif

namespace ZQV {

namespace {

constexpr double DRC = Const::DRC;
constexpr double RDC = Const::RDC;

/** Polar coordinates to the plane; r lies in y. */
ZQV_BY_PROCESSOR void fromPolar(const double* angle, int n, double per_degree, double up, double* x,
                                double* y) {
  // One function a loop: a loop with both becomes a call for each place.
  for (int i = 0; i < n; i++) {
    x[i] = y[i] * std::sin(angle[i] * per_degree);
  }
  for (int i = 0; i < n; i++) {
    y[i] *= up * std::cos(angle[i] * per_degree);
  }
}

}  // namespace

ZQV_BY_PROCESSOR void ProjBatch::inversePstereo(const double* x, const double* y, int n,
                                                double scale, double xfactor, double* lat,
                                                double* lon) {
  for (int i = 0; i < n; i++) {
    lon[i] = RDC * std::atan2(x[i], scale * y[i]);
  }
  for (int i = 0; i < n; i++) {
    const double r = std::sqrt(x[i] * x[i] + y[i] * y[i]);
    lat[i] = (-90 + RDC * 2 * std::atan(r / xfactor)) * scale;
  }
}

ZQV_BY_PROCESSOR void ProjBatch::forwardPstereo(const double* lat, const double* angle, int n,
                                                double scale, double xfactor, double* x,
                                                double* y) {
  for (int i = 0; i < n; i++) {
    y[i] = xfactor * std::tan((scale * lat[i] + 90) * DRC / 2);
  }
  fromPolar(angle, n, DRC, scale, x, y);
}

ZQV_BY_PROCESSOR void ProjBatch::forwardLamb(const double* lat, const double* angle, int n,
                                             double scale, double xfactor, double radius, double* x,
                                             double* y) {
  for (int i = 0; i < n; i++) {
    x[i] = std::sin(scale * lat[i] * DRC);
  }
  for (int i = 0; i < n; i++) {
    y[i] = radius * std::pow((1 - x[i]) / (1 + x[i]), xfactor / 2);
  }
  fromPolar(angle, n, DRC * xfactor, -scale, x, y);
}

}  // namespace ZQV
