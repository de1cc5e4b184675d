#include "Unit.h"

#include <cmath>

#include <gtest/gtest.h>

#include "Calc.h"
#include "Const.h"
#include "Convert.h"
#include "ScratchDir.h"
#include "String.h"

namespace ZQV {
namespace {

constexpr float MISSING = Const::FMISS;

// Every pair that the package asks for, against values worked out by hand.
TEST(Unit, ConvertsWithThePackagesFile) {
  const PackageData data;
  Unit unit;
  const struct {
    float value;
    const char* from;
    const char* to;
    double result;
  } rows[] = {{30, "100ft", "m", 914.4},
              {30, "100ft", "km", 0.9144},
              {914.4F, "m", "100ft", 30},
              {1, "in", "mm", 25.4},
              {10, "knt", "m/s", 5.144444},
              {10, "knt", "km/h", 18.52},
              {10, "knt", "mph", 11.50779},
              {10, "m/s", "knt", 19.43844},
              {180, "deg", "rad", 3.141593},
              {5, "kg/m^2", "g/m^2", 5000},
              {5, "kg/m^2", "in_water", 5 / 25.4},
              {50, "%", "fraction", 0.5},
              {20, "C", "K", 293.15},
              {20, "C", "F", 68},
              {32, "F", "C", 0},
              {1, "inHg", "mb", 33.86389},
              {1013.25F, "hPa", "mb", 1013.25},
              {3, "mm/h", "mm/s", 3 / 3600.0},
              {7, "KM", "M", 7000},
              {5, "mm water", "in_water", 5 / 25.4}};
  for (const auto& row : rows) {
    EXPECT_NEAR(unit.convert(row.value, row.from, row.to), row.result,
                1e-5 * std::max(1.0, std::abs(row.result)))
        << row.from << " to " << row.to;
    EXPECT_TRUE(unit.valid(row.from, row.to));
  }
  EXPECT_EQ(unit.convert(1, "knt", "K"), MISSING);
  EXPECT_FALSE(unit.valid("knt", "K"));
}

TEST(Unit, FactorsOfUnitTexts) {
  const ScratchDir files;
  files.write("units.lup",
              "# from to how\nm km *0.001\nC F *1.8+32 F C *0.5555556-17.777778\nx y\n");
  const struct {
    float value;
    const char* from;
    const char* to;
    double result;
  } rows[] = {
      {1, "m", "m", 1},
      {1, "M", "m", 1},
      {1, "a_b", "A B", 1},
      {1, "", "", 1},
      {1, nullptr, "", 1},
      {3, "10^-5 /s", "/s", 3e-5},
      {3, "/s", "10^-5 /s", 3e5},
      {3, "-m", "m", -3},
      {3, "1e3 m", "km", 3},
      {3, "m", "100km", 3e-5},
      {100, "C", "F", 212},
      {212, "F", "C", 100},
      {MISSING, "C", "F", MISSING},
      {MISSING, "", "", MISSING},
      {1, "m", "in", MISSING},
      {1, "km", "m", MISSING},  // a record holds for one direction
      {1, "0 m", "m", MISSING},
      {1, "m", "0 m", MISSING},
      {1, "1e99 m", "m", MISSING},
      {1, "inf", "nan", MISSING},  // no numbers
      {1, "x", "y", MISSING},      // a record that is cut short
  };
  Unit unit;
  for (const auto& row : rows) {
    EXPECT_NEAR(unit.convert(row.value, row.from, row.to), row.result, std::abs(row.result) * 1e-5)
        << (row.from == nullptr ? "" : row.from) << " to " << row.to;
  }
  EXPECT_TRUE(Unit::equal("dBZ", "DBZ"));
}

// The file is changed between the calls, so that what comes from the cache can be told apart.
TEST(Unit, KeepsTheTenLatestConversions) {
  const ScratchDir files;
  const auto write = [&](int factor) {
    std::string text;
    for (int i = 0; i <= 10; i++) {
      text += "u" + std::to_string(i) + " v *" + std::to_string(factor) + "\n";
    }
    files.write("units.lup", text);
  };
  Unit unit;
  write(2);
  for (int i = 0; i < 10; i++) {
    EXPECT_EQ(unit.convert(1, ("u" + std::to_string(i)).c_str(), "v"), 2);
  }
  write(3);
  EXPECT_EQ(unit.convert(1, "u0", "v"), 2);
  EXPECT_EQ(unit.convert(1, "u10", "v"), 3);  // takes the place of the oldest, u0
  EXPECT_EQ(unit.convert(1, "u1", "v"), 2);
  EXPECT_EQ(unit.convert(1, "u0", "v"), 3);
  EXPECT_EQ(unit.convert(1, "u1", "v"), 3);
}

TEST(Unit, Texts) {
  struct Scale {
    const char* unit;
    float factor;
    const char* name;
    const char* out;
  };
  for (const Scale& row :
       {Scale{"m", 1000, "", "10^3 m"}, Scale{"10^-5 /s", 1, "", "10^-5 /s"},
        Scale{"100ft", 10, " (agl)", "10^3 ft (agl)"}, Scale{"m", 250, "", "2e+02 m"},
        Scale{"m", -1, "", "-1e+00 m"}, Scale{nullptr, 10, nullptr, "10^1 "}}) {
    String out;
    Unit::scale(row.unit, row.factor, row.name, out);
    EXPECT_STREQ(out.get(), row.out);
  }
  struct Parse {
    const char* text;
    int result;
    const char* name;
    const char* unit;
  };
  for (const Parse& row :
       {Parse{"Height [m]", 1, "Height", "m"}, Parse{"Height  (m)", 1, "Height", "m"},
        Parse{"Wind (10 m) [m/s]", 1, "Wind (10 m)", "m/s"}, Parse{"Height ", 0, "Height", ""},
        Parse{"Height [m", 0, "Height [m", ""}, Parse{"Odd ]m[ (k)", 1, "Odd ]m[", "k"},
        Parse{nullptr, 0, "", ""}}) {
    String name;
    String unit;
    EXPECT_EQ(Unit::parse(row.text, name, unit), row.result);
    EXPECT_STREQ(name.get(), row.name);
    EXPECT_STREQ(unit.get(), row.unit);
  }
  String text("Height (m)");
  Unit::change(text, "ft");
  EXPECT_STREQ(text.get(), "Height [ft]");
  String rate("kg/kg/s");
  Unit::simplify(rate);
  EXPECT_STREQ(rate.get(), "/s");
}

TEST(Calc, KnownValues) {
  const struct {
    const char* what;
    float value;
    double expected, tolerance;
  } rows[] = {
      {"calm has no direction", Calc::windDir(0, 0), 0, 0},
      {"wind from the east", Calc::windDir(-1, 0), 90, 1e-4},
      {"wind from the west", Calc::windDir(1, 0), 270, 1e-4},
      {"speed", Calc::windSpd(3, -4), 5, 1e-5},
      // Vapor pressure over water by the tables: 6.11 mb at 0 C, 23.37 at 20 C, 42.43 at 30 C.
      {"vapor pressure at freezing", Calc::vaporPres(273.15F), 6.107, 0.005},
      {"no vapor at 100 K", Calc::vaporPres(100), 0, 0},
      {"inverse of vapor pressure", Calc::tempVaporPres(23.37F), 293.15, 0.05},
      {"mixing ratio at saturation", Calc::mixRatio(293.15F, 1000), 622 * 23.37 / (1000 - 23.37),
       0.02},
      {"mixing ratio of a vapor pressure", Calc::mixRatio(20, 1020), 12.44, 1e-3},
      {"specific humidity", Calc::specHum(20, 1000), 12.44, 1e-3},
      {"humidity held at 2 percent", Calc::dewTemp(293.15F, -5), Calc::dewTemp(293.15F, 2), 0},
      {"humidity back", Calc::relHum(293.15F, Calc::dewTemp(293.15F, 60)), 60, 0.2},
      {"potential temperature", Calc::potTemp(300, 500), 365.78, 0.02},
      {"dry adiabat back", Calc::tempOnDryAd(365.78F, 500), 300, 0.02},
      {"saturated adiabat back", Calc::tempOnSatAd(Calc::thetaeOnSatAd(283.15F, 700), 700), 283.15,
       0.03},
      {"saturated adiabat below ground", Calc::tempOnSatAd(330, 2001), 330, 0},
      {"no chill without wind", Calc::windChillTemp(250, 1), 250, 0},
      {"chill", Calc::windChillTemp(263.15F, 10),
       306.15 - (0.453843 * std::sqrt(10) + 0.020423) * 43, 0.01},
      {"chill ends at 26 m/s", Calc::windChillTemp(263.15F, 60), Calc::windChillTemp(263.15F, 26),
       0},
      // -10 C in a wind of 10 m/s is felt as -20 C by the chart of 2001.
      {"chill of 2001", Calc::windChillTemp2(263.15F, 10), 253.0, 0.5},
      {"heat loss", Calc::windChill(263.15F, 4), 1.1627 * 26.45 * 43, 0.5},
      {"humiture of 90 F with 30 mb", Calc::humiture(305.372F, Calc::tempVaporPres(30)),
       Convert::FtoK(99), 0.1},
      {"humiture in dry air", Calc::humiture(305, 270), 305, 0},
      // 90 F at 70 percent is felt as 106 F.
      {"heat index", Convert::KtoF(Calc::heatIndex(305.372F, 70)), 106, 0.5},
      {"station pressure", Calc::sfcPrAlt(1013.25F, 1000), 898.75, 0.2},
      {"standard height of 500 mb", Calc::presAlt(500), 5574, 5},
      {"standard height of 100 mb", Calc::presAlt(100), 16180, 10},
      // Bolton's example of 30 C and 21 C: about 291.8 K; 858 mb from 1000 mb by Poisson's
      // equation.
      {"temperature of condensation", Calc::lclTemp(303.15F, 294.15F), 291.98, 0.1},
      {"pressure of condensation", Calc::lclPres(303.15F, 294.15F, 1000), 877, 1},
      {"wet bulb of saturated air", Calc::wetBulb(283.15F, 283.15F, 850), 283.15, 0.1},
      {"virtual temperature", Calc::virtTemp(300, 290, 1000), 302.25, 0.1},
      {"interpolation", Calc::interpLinear(2.5F, 2, 10, 3, 20), 15, 1e-5},
      {"pole to pole", Calc::earthDist(90, 0, -90, 0), 63.7122 * 3.14159265, 1e-3},
      // Denver to Chicago, 1473 km by the great circle.
      {"a flight", Calc::earthDist(39.87F, -104.67F, 41.98F, -87.90F), 14.29, 0.05},
      {"a mile of feet", Convert::FTtoM(5280), 1609.344, 1e-3},
      {"missing stays", Convert::NMtoKM(MISSING), MISSING, 0}};
  for (const auto& row : rows) {
    EXPECT_NEAR(row.value, row.expected, row.tolerance) << row.what;
  }
}

}  // namespace
}  // namespace ZQV
