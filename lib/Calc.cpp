#include "Calc.h"

#include <algorithm>
#include <cmath>

#include "Const.h"
#include "Convert.h"

namespace ZQV {

namespace {

constexpr double DRC = Const::DRC;
constexpr double RDC = Const::RDC;
constexpr double MISS = Const::FMISS;

constexpr double KAPPA = 0.286;           ///< R / cp of dry air
constexpr double HEAT_RATIO = 2.6518986;  ///< latent heat of vaporization over cp, for w in g/kg
constexpr double EPSILON = 622;           ///< of the molecular masses of water and air, for g/kg
constexpr double WARM = 306.15;           ///< no wind chill above; skin temperature, K
constexpr double STD_TEMP = 288.15;       ///< standard atmosphere at sea level, K
constexpr double LAPSE = 0.0065;          ///< its lapse rate, K/m

template <typename... Values>
bool missing(Values... v) {
  return ((static_cast<double>(v) == MISS) || ...);
}

/** A result that isn't finite is missing; a negative zero is a zero. */
float toFloat(double v) {
  return std::isfinite(v) ? static_cast<float>(v + 0.0) : Const::FMISS;
}

/** Vapor pressure of a dew point, or the value itself where it is too low for a temperature. */
double vapor(float T) {
  return T < 100 ? T : Calc::vaporPres(T);
}

double exner(double p) {
  return std::pow(1000 / p, KAPPA);
}

/** Factor from potential to equivalent potential temperature of saturated air. */
double moistFactor(float T, float p) {
  return std::exp(HEAT_RATIO * Calc::mixRatio(T, p) / T);
}

}  // namespace

float Calc::windSpd(float u, float v) {
  if (missing(u, v)) {
    return Const::FMISS;
  }
  return toFloat(std::hypot(static_cast<double>(u), static_cast<double>(v)));
}

float Calc::windDir(float u, float v) {
  if (missing(u, v)) {
    return Const::FMISS;
  }
  if (std::abs(u) + std::abs(v) < 0.01F) {
    return 0;
  }
  const double dir = RDC * std::atan2(-static_cast<double>(u), -static_cast<double>(v));
  return toFloat(dir < 0 ? dir + 360 : dir);
}

float Calc::windU(float dir, float spd) {
  return missing(dir, spd) ? Const::FMISS : toFloat(-spd * std::sin(dir * DRC));
}

float Calc::windV(float dir, float spd) {
  return missing(dir, spd) ? Const::FMISS : toFloat(-spd * std::cos(dir * DRC));
}

float Calc::vaporPres(float T) {
  if (missing(T)) {
    return Const::FMISS;
  }
  if (T <= 100) {
    return 0;
  }
  const double t = T;
  const double power = 23.832241 - 5.02808 * std::log10(t) -
                       1.3816e-7 * std::pow(10, 11.344 - 0.0303998 * t) +
                       0.008132801 * std::pow(10, 3.49149 - 1302.8844 / t) - 2949.076 / t;
  return toFloat(std::pow(10, power));
}

float Calc::tempVaporPres(float e) {
  if (missing(e) || !(e > 0)) {
    return Const::FMISS;
  }
  const double x = std::log10(static_cast<double>(e));
  const double bend = std::pow(10, 0.0915 * x) - 1.2035;
  return toFloat(std::pow(10, 0.049865 * x + 2.408297) - 7.08475 + 38.9114 * bend * bend);
}

float Calc::mixRatio(float T, float p) {
  if (missing(T, p)) {
    return Const::FMISS;
  }
  const double e = vapor(T);
  return toFloat(EPSILON * e / (p - e));
}

float Calc::specHum(float T, float p) {
  return missing(T, p) ? Const::FMISS : toFloat(EPSILON * vapor(T) / p);
}

float Calc::dewTemp(float T, float rh) {
  if (missing(T, rh)) {
    return Const::FMISS;
  }
  return tempVaporPres(
      toFloat(static_cast<double>(vaporPres(T)) * std::clamp(rh, 2.0F, 100.0F) / 100));
}

float Calc::relHum(float T, float Td) {
  if (missing(T, Td)) {
    return Const::FMISS;
  }
  return toFloat(100.0 * vaporPres(Td) / vaporPres(T));
}

float Calc::tempOnMixRat(float w, float p) {
  if (missing(w, p)) {
    return Const::FMISS;
  }
  return tempVaporPres(toFloat(static_cast<double>(w) * p / (EPSILON + w)));
}

float Calc::potTemp(float T, float p) {
  return missing(T, p) ? Const::FMISS : toFloat(T * exner(p));
}

float Calc::tempOnDryAd(float theta, float p) {
  return missing(theta, p) ? Const::FMISS : toFloat(theta / exner(p));
}

float Calc::tempOnSatAd(float thetae, float p) {
  if (missing(thetae, p) || p > 2000) {
    return thetae == Const::FMISS || p == Const::FMISS ? Const::FMISS : thetae;
  }
  double T = 253.15;
  double step = 120;
  for (int i = 0; i < 12; i++) {
    step /= 2;
    const double error = thetaeOnSatAd(toFloat(T), p) - static_cast<double>(thetae);
    if (error * error < 2e-5) {
      break;
    }
    T += error > 0 ? -step : step;
  }
  return toFloat(T);
}

float Calc::thetaeOnSatAd(float T, float p) {
  return missing(T, p) ? Const::FMISS : toFloat(T * exner(p) * moistFactor(T, p));
}

float Calc::convTemp(float T, float p, float sfc_p) {
  return missing(T, p, sfc_p) ? Const::FMISS : tempOnDryAd(potTemp(T, p), sfc_p);
}

int Calc::lcl(float T, float Td, float p, float& lcl_pres, float& lcl_temp) {
  lcl_temp = lclTemp(T, Td);
  lcl_pres = lclPres(T, Td, p);
  return missing(lcl_temp, lcl_pres) ? 0 : 1;
}

// Bolton (1980), equation 15.
float Calc::lclTemp(float T, float Td) {
  if (missing(T, Td)) {
    return Const::FMISS;
  }
  return toFloat(
      1 / (1 / (static_cast<double>(Td) - 56) + std::log(static_cast<double>(T) / Td) / 800) + 56);
}

float Calc::lclPres(float T, float Td, float p) {
  if (missing(T, Td, p)) {
    return Const::FMISS;
  }
  return toFloat(p * std::pow(static_cast<double>(lclTemp(T, Td)) / T, 1 / KAPPA));
}

float Calc::eqPotTemp(float T, float Td, float p) {
  return missing(T, Td, p) ? Const::FMISS : thetaeOnSatAd(lclTemp(T, Td), lclPres(T, Td, p));
}

float Calc::wetBulb(float T, float Td, float p) {
  return missing(T, Td, p) ? Const::FMISS : tempOnSatAd(eqPotTemp(T, Td, p), p);
}

float Calc::wetBulbPotTemp(float T, float Td, float p) {
  return missing(T, Td, p) ? Const::FMISS : tempOnSatAd(eqPotTemp(T, Td, p), 1000);
}

float Calc::virtTemp(float T, float Td, float p) {
  return missing(T, Td, p) ? Const::FMISS : toFloat(T * (1 + 0.00061 * mixRatio(Td, p)));
}

float Calc::virtPotTemp(float T, float Td, float p) {
  return missing(T, Td, p) ? Const::FMISS : potTemp(virtTemp(T, Td, p), p);
}

float Calc::windChillTemp(float T, float spd) {
  if (missing(T, spd)) {
    return Const::FMISS;
  }
  if (spd < 2 || T > WARM) {
    return T;
  }
  const double v = std::min(spd, 26.0F);
  return toFloat(WARM - (0.453843 * std::sqrt(v) + 0.474266 - 0.0453843 * v) * (WARM - T));
}

float Calc::windChillTemp2(float T, float spd) {
  if (missing(T, spd)) {
    return Const::FMISS;
  }
  if (spd < 1 || T > WARM) {
    return T;
  }
  const double felt =
      0.6215 * T + 116.514 + (0.4863 * T - 146.774) * std::pow(static_cast<double>(spd), 0.16);
  return felt > T ? T : toFloat(felt);
}

float Calc::windChill(float T, float spd) {
  if (missing(T, spd)) {
    return Const::FMISS;
  }
  const double v = std::clamp(spd, 0.0F, 26.0F);
  return T > WARM ? 0 : toFloat(1.1627 * (10 * std::sqrt(v) + 10.45 - v) * (WARM - T));
}

float Calc::humiture(float T, float Td) {
  if (missing(T, Td)) {
    return Const::FMISS;
  }
  const float added = vaporPres(Td) - 21;
  return added < 0 ? T : Convert::FtoK(Convert::KtoF(T) + added);
}

float Calc::tempHumIndex(float T, float Td) {
  return missing(T, Td) ? Const::FMISS : toFloat(0.55 * T + 0.2 * Td + 17.5);
}

// Rothfusz (1990), National Weather Service; below 80 F the simple form, as its regression doesn't
// hold there.
float Calc::heatIndex(float T, float rh) {
  if (missing(T, rh)) {
    return Const::FMISS;
  }
  const double t = Convert::KtoF(T);
  const double h = rh;
  double felt = 0.5 * (t + 61 + (t - 68) * 1.2 + h * 0.094);
  if ((felt + t) / 2 >= 80) {
    felt = -42.379 + 2.04901523 * t + 10.14333127 * h - 0.22475541 * t * h - 6.83783e-3 * t * t -
           5.481717e-2 * h * h + 1.22874e-3 * t * t * h + 8.5282e-4 * t * h * h -
           1.99e-6 * t * t * h * h;
  }
  return Convert::FtoK(toFloat(felt));
}

float Calc::sfcPrAlt(float p, float elev) {
  if (missing(p, elev)) {
    return Const::FMISS;
  }
  return toFloat(p * std::pow((STD_TEMP - LAPSE * elev) / STD_TEMP, 5.2558));
}

float Calc::presAlt(float p) {
  if (missing(p)) {
    return Const::FMISS;
  }
  constexpr double tropopause = 226.32;
  if (p > tropopause) {
    return toFloat((STD_TEMP - STD_TEMP * std::pow(p / 1013.25, 0.190263)) / LAPSE);
  }
  return toFloat(11000 + 6341.62 * std::log(tropopause / p));
}

float Calc::interpLinear(float x, float x1, float y1, float x2, float y2) {
  if (missing(x, x1, y1, x2, y2)) {
    return Const::FMISS;
  }
  return toFloat(y1 + (static_cast<double>(y2) - y1) * (static_cast<double>(x) - x1) /
                          (static_cast<double>(x2) - x1));
}

float Calc::earthDist(float lat1, float lon1, float lat2, float lon2) {
  const float angle = earthAngle(lat1, lon1, lat2, lon2);
  return missing(angle) ? angle : toFloat(angle * DRC * Const::EARTH);
}

float Calc::earthAngle(float lat1, float lon1, float lat2, float lon2) {
  if (missing(lat1, lon1, lat2, lon2)) {
    return Const::FMISS;
  }
  // Haversines keep short distances exact.
  const double s = std::sin((static_cast<double>(lat2) - lat1) * DRC / 2);
  const double t = std::sin((static_cast<double>(lon2) - lon1) * DRC / 2);
  const double h = s * s + std::cos(lat1 * DRC) * std::cos(lat2 * DRC) * t * t;
  return toFloat(2 * RDC * std::asin(std::sqrt(std::clamp(h, 0.0, 1.0))));
}

float Calc::dist(float x1, float y1, float x2, float y2) {
  if (missing(x1, y1, x2, y2)) {
    return Const::FMISS;
  }
  return toFloat(std::hypot(static_cast<double>(x2) - x1, static_cast<double>(y2) - y1));
}

}  // namespace ZQV
