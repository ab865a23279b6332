// Fatigue: life curve and reduction of the strength.
#include "constitutive/fatigue.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "foundation/errors.h"
#include "foundation/single_precision.h"

namespace zema {
namespace {

constexpr double fromHistory = 9999.0;  // FATIM, of either sign
constexpr double longestLife = 7.0;     // decimal logarithm of the cycles at the knee of the life curve
constexpr double leastFactor = 1.0e-9;  // an equivalent stress over the factor stays finite

/// Exponent of the reduction; that of the life curve is half of it.
double reductionExponent(double R) {
  return 8.0 * std::pow(2.0, 2.0 * R);
}

/// Stress, as a share of the strength, below which the life curve is not used.
double enduranceShare(double R) {
  const double share = R / 3.3 + 0.7936507936507936;
  if (share > 0.0) return share;
  throw ConstitutiveStop(
      "  >>>> FATIGUE: STRESS RATIO BELOW THE LIFE CURVE", R, share,
      "The first number is the stress ratio of the cycles (FATIM): the life curve starts at -2.619.");
}

/// Follows peaks and valleys of the signed stress t, and the stress ratio.
void followHistory(std::array<double, 7>& values, double t) {
  double &s1 = values[fatigue::last], &s2 = values[fatigue::beforeLast];
  double &smin = values[fatigue::valley], &smax = values[fatigue::peak];
  const bool starts = s1 == 0.0 && s2 == 0.0 && smin == 0.0 && smax == 0.0;
  if (starts) smax = t;
  const double now = t - s1, before = s1 - s2;
  if (now < 0.0 && before > 0.0) smax = s1;
  if (now > 0.0 && before < 0.0) smin = s1;
  double& R = values[fatigue::ratio];
  if (smax != 0.0) R = smin / smax;
  R = std::clamp(R, -1.0, single(0.68F));
  s2 = s1;
  s1 = t;
}

/// Sets the constant so that the strength has fallen to S at the end of the life; it settles once that is over. A
/// stress that the first cycle would not survive has no such constant.
void setFromLife(std::array<double, 7>& values, double f, double S, double N) {
  if (S >= f) return;
  const double R = values[fatigue::ratio];
  const double Nf = WOHLERCM(f, S, R);
  values[fatigue::beta] = -std::log(S / f) / std::pow(std::log10(Nf), reductionExponent(R));
  if (N >= Nf) values[fatigue::settled] = 1.0;
}

/// Sets the constant of a stress that is not 0 by the stress ratio; below the endurance stress it does not follow from
/// the life curve.
void setFromRatio(std::array<double, 7>& values, double f, double S, double N) {
  const double R = values[fatigue::ratio];
  const double share = enduranceShare(R);
  if (S > share * f) return setFromLife(values, f, S, N);
  const double strength = 1.0 - (1.0 - share) * S / (share * f);  // (f - (f - Se) S / Se) / f
  values[fatigue::beta] = -std::log(strength) / std::pow(longestLife, reductionExponent(R));
}

}  // namespace

double WOHLERCM(double f, double S, double R) {
  const double endurance = std::log(enduranceShare(R));
  if (endurance >= 0.0) return std::numeric_limits<double>::infinity();
  if (S >= f) return 1.0;
  return std::pow(10.0, longestLife * std::pow(std::log(S / f) / endurance, 2.0 / reductionExponent(R)));
}

double STRFAT(const PassContext& pass, std::array<double, 7>& values, double limit, double tau, double f, double sign) {
  if (pass.TCYCL == 0.0) return 1.0;
  const double N = pass.NCYCL;
  const bool given = std::abs(pass.FATIM) != fromHistory;
  const bool settled = values[fatigue::settled] == 1.0;
  const bool inside = std::abs(tau) < limit;
  if (given && (!inside || pass.KFATI == 1 || !settled)) values[fatigue::ratio] = pass.FATIM;
  if (inside && !settled) {
    if (pass.KFATI == 1) {
      if (tau != 0.0) setFromLife(values, f, std::abs(tau), N);
    } else {
      if (!given) followHistory(values, sign < 0.0 ? -tau : tau);
      const double S = given ? tau : std::abs(values[fatigue::peak]);
      if (S != 0.0) setFromRatio(values, f, S, N);
    }
  }
  if (N <= 1.0) return 1.0;
  const double exponent = reductionExponent(values[fatigue::ratio]);
  return std::clamp(std::exp(-values[fatigue::beta] * std::pow(std::log10(N), exponent)), leastFactor, 1.0);
}

}  // namespace zema
