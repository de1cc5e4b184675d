#pragma once

namespace ZQV {

/** Formulas of meteorology and of the sphere. Temperatures are in kelvin, pressures in mb, humidity
 * in percent, mixing ratios in g/kg, wind speeds in m/s unless stated, directions and places in
 * degrees. A missing input gives Const::FMISS. */
class Calc {
 public:
  static float windSpd(float u, float v);
  /** Where the wind comes from, 0 to 360; 0 for calm (|u| + |v| below 0.01). */
  static float windDir(float u, float v);
  static float windU(float dir, float spd);
  static float windV(float dir, float spd);

  /** Saturation vapor pressure over water, mb (Goff and Gratch's formula); 0 up to 100 K. */
  static float vaporPres(float T);
  /** Its inverse, K (Stipanuk 1973). @param e  mb, above 0 */
  static float tempVaporPres(float e);
  /** g/kg. @param T  dew point, or below 100 the vapor pressure itself */
  static float mixRatio(float T, float p);
  static float specHum(float T, float p);
  /** Dew point of temperature and humidity, the latter held within 2 and 100. */
  static float dewTemp(float T, float rh);
  /** Humidity of temperature and dew point. */
  static float relHum(float T, float Td);
  /** Dew point at which air at p has the mixing ratio w. */
  static float tempOnMixRat(float w, float p);

  static float potTemp(float T, float p);
  /** Temperature at p on the dry adiabat theta. */
  static float tempOnDryAd(float theta, float p);
  /** Temperature at p on the saturated adiabat thetae, the inverse of thetaeOnSatAd to about 0.02
   * K. For p above 2000 thetae itself. */
  static float tempOnSatAd(float thetae, float p);
  static float thetaeOnSatAd(float T, float p);

  /** Convective temperature: surface temperature from which a parcel rises dry to T at p. */
  static float convTemp(float T, float p, float sfc_p);
  /** Lifted condensation level. @return 1; 0 with an input missing, out values are then missing too
   */
  static int lcl(float T, float Td, float p, float& lcl_pres, float& lcl_temp);
  static float lclPres(float T, float Td, float p);
  static float lclTemp(float T, float Td);
  static float eqPotTemp(float T, float Td, float p);
  static float wetBulb(float T, float Td, float p);
  static float wetBulbPotTemp(float T, float Td, float p);
  static float virtTemp(float T, float Td, float p);
  static float virtPotTemp(float T, float Td, float p);

  /** Wind chill by Siple and Passel, K. */
  static float windChillTemp(float T, float spd);
  /** Wind chill in the form of 2001, K. */
  static float windChillTemp2(float T, float spd);
  /** Heat loss, kcal/(m^2 h) times 1.1627 (W/m^2). */
  static float windChill(float T, float spd);
  /** K; T itself where the dew point adds nothing. */
  static float humiture(float T, float Td);
  /** 0.55 T + 0.2 Td + 17.5: defined for degrees Fahrenheit, and its inputs aren't converted. */
  static float tempHumIndex(float T, float Td);
  /** Apparent temperature, K (Rothfusz 1990). @param rh  percent */
  static float heatIndex(float T, float rh);

  /** Station pressure of an altimeter setting at elev, m. */
  static float sfcPrAlt(float p, float elev);
  /** Height of a pressure in the standard atmosphere, m. */
  static float presAlt(float p);

  /** y at x on the line through (x1, y1) and (x2, y2). */
  static float interpLinear(float x, float x1, float y1, float x2, float y2);
  /** Great-circle distance, 100 km. */
  static float earthDist(float lat1, float lon1, float lat2, float lon2);
  /** Central angle, degrees. */
  static float earthAngle(float lat1, float lon1, float lat2, float lon2);
  static float dist(float x1, float y1, float x2, float y2);
};

}  // namespace ZQV
