// Hardening curves: the yield stress and its slope over the internal variable.
#include "constitutive/hardening_curves.h"

#include <algorithm>
#include <cmath>

#include "constitutive/characteristic_length.h"
#include "foundation/errors.h"
#include "foundation/single_precision.h"

namespace zema {
namespace {

constexpr CurveValue spentBelow{-1.0e-11, 0.0};

/// Slope of the straight line that dissipates g.
double straightSlope(const HardeningCurve& curve) {
  return -curve.f * curve.f / (2.0 * curve.g());
}

/// A stress that softening has used up does not change sign.
CurveValue cutAtZero(const CurveValue& value) {
  return value.c <= 0.0 ? spent : value;
}

/// f + s (factor kappa)^q. The infinite slope at the start of an exponent below 1 counts as 0.
CurveValue power(double f, double s, double factor, double q, double kappa) {
  const double term = s * std::pow(factor * kappa, q);
  const bool atStart = kappa <= 0.0;
  const double startSlope = q == 1.0 ? s * factor : 0.0;
  return {f + term, atStart ? startSlope : q * term / kappa};
}

/// Exponential that starts at f and dissipates g.
CurveValue exponential(double f, double g, double kappa) {
  const double A = f / g;
  const double c = f * std::pow(curveBase, -A * kappa);
  return cutAtZero({c, -A * c});
}

[[noreturn]] void wrongCurve(const char* words, int code, const char* advice) {
  throw ConstitutiveStop(words, code, 0.0, advice);
}

void refuseGivenSlope(const HardeningCurve& curve, const char* words) {
  if (!curve.slopeGiven) return;
  throw ConstitutiveStop(words, curve.code, curve.slope,
                         "This curve follows from the fracture energy: set the slope flag (slot 12 or 18) to 0.");
}

}  // namespace

HardeningCurve tensionCurve(const Material& material, double f, double l) {
  return {static_cast<int>(material(slot::tensionCurve)),
          f,
          material(slot::tensionPeakStress),
          material(slot::tensionPeakDissipation),
          material(slot::tensionSlope),
          material(slot::tensionSlopeFlag) != 0.0,
          material(slot::tensionFractureEnergy),
          l};
}

HardeningCurve compressionCurve(const Material& material, double f, double l) {
  return {static_cast<int>(material(slot::compressionCurve)),
          f,
          material(slot::compressionPeakStress),
          material(slot::compressionPeakDissipation),
          material(slot::compressionSlope),
          material(slot::compressionSlopeFlag) != 0.0,
          material(slot::compressionFractureEnergy),
          l};
}

CurveValue PLCURV(const HardeningCurve& curve, double kappa) {
  switch (curve.code) {
    case 1:
      return PLEQF4(curve, kappa);
    case 2:
      return PLEQF1(curve, kappa);
    case 3:
      return PLEQF2(curve, kappa);
    case 4:
      return PLEQF3(curve, kappa);
    default:
      wrongCurve("NINDI MUST HAVE VALUES FROM 1 TO 4, ERROR IN PLCURV", curve.code,
                 "The first number is the curve code, slot 8 for tension or 14 for compression: both must be given.");
  }
}

CurveValue PLEQF1(const HardeningCurve& curve, double kappa) {
  return kappa > 1.0 ? spent : CurveValue{(1.0 - kappa) * curve.f, -curve.f};
}

CurveValue PLEQF2(const HardeningCurve& curve, double kappa) {
  if (kappa > 1.0) return spentBelow;
  const double a = std::sqrt(1.0 - curve.f / curve.peak);
  const double span = (3.0 - a) * (1.0 + a);
  const double b = (1.0 - (1.0 - a) * (1.0 - a)) / (span * curve.peakKappa);
  const double lnD = std::log(b) / (1.0 - curve.peakKappa);
  const double rise = std::exp(lnD * (1.0 - kappa));  // d^(1 - kappa)
  const double X = (1.0 - a) * (1.0 - a) + span * kappa * rise;
  const double root = std::sqrt(X);
  // a = 0: no rise to a peak, the plateau m has no slope
  const double slope = rise == 0.0 ? 0.0 : (1.0 / root - 1.0) * curve.peak * span * rise * (1.0 - kappa * lnD);
  return {(2.0 * root - X) * curve.peak, slope};
}

CurveValue PLEQF3(const HardeningCurve& curve, double kappa) {
  if (kappa > 1.0) return spentBelow;
  const double beyond = kappa - curve.peakKappa;
  if (beyond > 0.0 || curve.peakKappa == 0.0) {
    const double rest = 1.0 - curve.peakKappa;
    const double t = beyond / rest;
    return {((2.0 * t - 3.0) * t * t + 1.0) * curve.peak, 6.0 * (t - 1.0) * t / rest * curve.peak};
  }
  const double B = (curve.f - curve.peak) / (curve.peakKappa * curve.peakKappa);
  return {B * beyond * beyond + curve.peak, 2.0 * B * beyond};
}

CurveValue PLEQF4(const HardeningCurve& curve, double kappa) {
  if (kappa > 1.0 || curve.g() <= 0.0) return spent;
  const double steepest = straightSlope(curve);
  if (curve.slopeGiven && curve.slope < steepest) {
    throw ConstitutiveStop(" >>>>  ERROR !!! -- pend. impuesta debe ser > ", steepest, curve.slope,
                           "The first number is the steepest plastic slope that the fracture energy allows, the second "
                           "the one given:\n  give a flatter slope, or set its flag (slot 12 or 18) to 0.");
  }
  const double s = curve.slopeGiven ? curve.slope : steepest;
  const double square = curve.f * curve.f + 2.0 * s * kappa * curve.g();
  if (square <= 0.0) return spent;
  const double c = std::sqrt(square);
  return {c, s * curve.g() / c};
}

CurveValue PLCURV_E(const HardeningCurve& curve, double kappa) {
  switch (curve.code) {
    case 1:
      return PLEQS1_E(curve, kappa);
    case 2:
      return PLEQS2_E(curve, kappa);
    case 3:
      return PLEQS3_E(curve, kappa);
    default:
      wrongCurve("NINDI MUST HAVE VALUES FROM 1 TO 4, ERROR IN PLCURV_E", curve.code,
                 "The first number is the curve code, slot 8 for tension or 14 for compression. Hardening by the "
                 "shares of\n  tension and compression has curves 1, 2 and 3, and both must be given.");
  }
}

CurveValue PLEQS1_E(const HardeningCurve& curve, double kappa) {
  if (curve.peak == 0.0) {
    throw ConstitutiveStop("  >>>> ERROR AT PLEQS1_E  *** Q RATIO MUST BE HIGHER THAN ZERO", curve.peak, kappa,
                           "Give the exponent of the power curve, slot 10 for tension and 16 for compression; 1 is a "
                           "straight line.");
  }
  const double s = curve.slopeGiven ? curve.slope : straightSlope(curve);
  return cutAtZero(power(curve.f, s, 1.0, curve.peak, kappa));
}

CurveValue PLEQS2_E(const HardeningCurve& curve, double kappa) {
  refuseGivenSlope(curve, "  >>>>  ERROR AT PLEQS2_E SLOPE MUST BE EVALUATED AUTOMATICALLY");
  return exponential(curve.f, curve.g(), kappa);
}

CurveValue PLEQS3_E(const HardeningCurve& curve, double kappa) {
  refuseGivenSlope(curve, "  >>>>  ERROR AT PLEQS3_E SLOPE MUST BE EVALUATED AUTOMATICALLY");
  const double f = curve.f, Q = curve.peak, peakKappa = curve.peakKappa;
  const double parabola = (2.0 * f / 3.0 + 4.0 * Q / 3.0) * peakKappa;  // energy / volume below it
  checkLength(curve.length, curve.energy / parabola, beyondLimit);
  if (kappa >= 2.0 * peakKappa) return exponential(f, curve.g() - parabola, kappa - 2.0 * peakKappa);
  const double B = (f - Q) / (peakKappa * peakKappa);
  return cutAtZero({(B * kappa - 2.0 * B * peakKappa) * kappa + f, 2.0 * B * (kappa - peakKappa)});
}

CurveValue PLEQS1(const HardeningCurve& curve, double ratio, double kappa) {
  const double q = curve.peak / ratio;
  if (q == 0.0 && kappa == 0.0) return {curve.f, 0.0};
  if (q == 0.0) {
    throw ConstitutiveStop(
        "  >>>> ERROR AT PLEQS1  *** Q RATIO MUST BE HIGHER THAN ZERO", curve.peak, ratio,
        "The exponent of the power curve is slot 10 over slot 20; equal values are a straight line.");
  }
  constexpr double floor = single(0.02F);
  const double s = curve.slopeGiven ? curve.slope : straightSlope(curve);
  const CurveValue value = power(curve.f, s, curve.peakKappa, q, kappa);
  return value.c < floor * curve.f ? CurveValue{floor * curve.f, 0.0} : value;
}

CurveValue PLEQS2(const HardeningCurve& curve, double kappa) {
  refuseGivenSlope(curve, "  >>>>  ERROR AT PLEQS2 SLOPE MUST BE EVALUATED AUTOMATICALLY");
  return exponential(curve.f, curve.g(), kappa);
}

CurveValue PLEQS3(const TemperatureCurve& table, double kappa) {
  const std::vector<double>& strain = table.X;
  const std::vector<double>& stress = table.Y;
  if (kappa < strain.front()) return {stress.front(), 0.0};
  if (kappa >= strain.back()) return {stress.back(), 0.0};
  const auto above = static_cast<std::size_t>(std::upper_bound(strain.begin(), strain.end(), kappa) - strain.begin());
  const double h = (stress[above] - stress[above - 1]) / (strain[above] - strain[above - 1]);
  return {stress[above - 1] + h * (kappa - strain[above - 1]), h};
}

}  // namespace zema
