// Life curve and fatigue factor.
#include "constitutive/fatigue.h"

#include <gtest/gtest.h>

#include <cmath>

#include "foundation/errors.h"

namespace zema {
namespace {

constexpr double f = 30.0;

/// A point under cycles: given ratio R, or 9999 for its own history.
struct CycledPoint {
  CycledPoint(int KFATI, double R) {
    pass.TCYCL = 1.0;
    pass.KFATI = KFATI;
    pass.FATIM = R;
  }
  double factor(double N, double tau, double sign = 1.0) {
    pass.NCYCL = N;
    return STRFAT(pass, values, f, tau, f, sign);
  }
  PassContext pass;
  std::array<double, 7> values{};
};
double endurance(double R) {
  return R / 3.3 + 0.7936507936507936;
}

TEST(Fatigue, StrengthFallsToTheStressAtTheEndOfLifeAndTheConstantSettles) {
  for (const double R : {-1.0, 0.0, 0.5}) {
    for (const double k : {0.25, 0.5, 0.9}) {  // life 10^(7 k)
      const double life = std::pow(10.0, 7.0 * k), exponent = 8.0 * std::pow(2.0, 2.0 * R);
      const double S = f * std::pow(endurance(R), std::pow(k, exponent / 2.0));
      EXPECT_NEAR(WOHLERCM(f, S, R) / life, 1.0, 1.0e-9);
      for (const int KFATI : {0, 1}) {
        CycledPoint point(KFATI, R);
        EXPECT_EQ(point.factor(1.0, S), 1.0);
        for (const double share : {0.5, 0.999999}) {
          const double logarithms = std::log10(share * life) / std::log10(life);
          EXPECT_NEAR(point.factor(share * life, S), std::pow(S / f, std::pow(logarithms, exponent)), 1.0e-9);
          EXPECT_EQ(point.values[fatigue::settled], 0.0);
        }
        const std::array<double, 7> settled = (point.factor(1.000001 * life, S), point.values);
        EXPECT_EQ(settled[fatigue::settled], 1.0);
        EXPECT_LT(point.factor(2.0 * life, 0.9 * S), S / f);
        EXPECT_EQ(point.values, settled);
      }
    }
  }
}

TEST(Fatigue, EdgesAreFinite) {
  CycledPoint point(0, 0.0), off(0, 0.0);
  off.pass.TCYCL = 0.0;

  EXPECT_NEAR(point.factor(1.0e7, 0.5 * endurance(0.0) * f), 0.5 + 0.5 * endurance(0.0), 1.0e-12);  // below the curve
  const double beta = point.values[fatigue::beta];
  for (const double tau : {0.0, f, 2.0 * f}) {
    EXPECT_LT(point.factor(1.0e7, tau), 1.0);
    EXPECT_EQ(point.values[fatigue::beta], beta);
  }
  EXPECT_EQ(CycledPoint(1, 0.0).factor(1.0e7, 0.0), 1.0);
  EXPECT_EQ(CycledPoint(0, 0.9).factor(1.0e12, 0.9 * f), 1.0);  // never above 1
  EXPECT_EQ(CycledPoint(1, 0.0).factor(1.0e20, 0.999 * f), 1.0e-9);
  EXPECT_EQ(off.factor(1.0e7, 20.0), 1.0);
  EXPECT_THROW(CycledPoint(1, -2.7).factor(10.0, 20.0), ConstitutiveStop);
}

TEST(Fatigue, HistoryGivesPeakValleyAndRatio) {
  using Steps = std::vector<std::array<double, 4>>;
  const std::vector<Steps> histories{
      {{10, 0, 10, 0}, {12, 0, 10, 0}, {14, 0, 10, 0}},                                             // monotonic
      {{10, 0, 10, 0}, {20, 0, 10, 0}, {5, 0, 20, 0}, {15, 5, 20, 0.25}, {-20, 5, 15, 1.0 / 3.0}},  // pulsating
      {{10, 0, 10, 0}, {-10, 0, 10, 0}, {10, -10, 10, -1}, {-25, -10, 10, -1}, {8, -25, 10, -1}},   // reversed
      {{0, 0, 0, 0}, {20, 0, 20, 0}, {19, 0, 20, 0}, {20, 19, 20, 0.68}},                           // high mean
      {{-10, 0, -10, 0}, {-20, 0, -10, 0}, {-10, -20, -10, 0.68}, {-20, -20, -10, 0.68}}};
  for (const auto& history : histories) {
    CycledPoint point(0, -9999.0);
    for (const auto& [stress, smin, smax, R] : history) {
      const double factor = point.factor(100.0, std::abs(stress), stress);
      EXPECT_EQ(point.values[fatigue::valley], smin) << stress;
      EXPECT_EQ(point.values[fatigue::peak], smax) << stress;
      EXPECT_NEAR(point.values[fatigue::ratio], R, 1.0e-7) << stress;
      EXPECT_EQ(factor < 1.0, smax != 0.0);
    }
  }
}

}  // namespace
}  // namespace zema
