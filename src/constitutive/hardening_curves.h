// Hardening curves: the yield stress and its slope over the internal variable, as pure functions.
#pragma once

#include "model/materials.h"

namespace zema {

/// What a curve is made from. Tension and compression have one each.
struct HardeningCurve {
  int code = 0;
  double f = 0.0;           ///< initial stress
  double peak = 0.0;        ///< m: peak stress; power curves: the exponent
  double peakKappa = 0.0;   ///< variable at the peak; power curve of `PLEQS1`: factor of the variable
  double slope = 0.0;       ///< plastic slope, when it is given
  bool slopeGiven = false;  ///< false: the slope follows from the energy
  double energy = 0.0;      ///< fracture energy, energy / area
  double length = 1.0;      ///< characteristic length

  [[nodiscard]] double g() const { return energy / length; }  ///< energy / volume that the curve is to dissipate
};

/// Stress of a curve and its derivative by the variable.
struct CurveValue {
  double c = 0.0;
  double h = 0.0;
};

/// What is left of a curve once its energy is dissipated.
inline constexpr CurveValue spent{1.0e-11, 0.0};
/// Base of the exponential curves, with six decimals.
inline constexpr double curveBase = 2.718281;

/// The tension curve of a material (slots 8 to 13) or its compression curve (14 to 19). f: initial stress; l:
/// characteristic length.
[[nodiscard]] HardeningCurve tensionCurve(const Material& material, double f, double l);
[[nodiscard]] HardeningCurve compressionCurve(const Material& material, double f, double l);

/// `PLCURV`: curves over the normalised dissipation kappa, 0 to 1, beyond which a stress of magnitude 1e-11 is left. By
/// code: 1 `PLEQF4` straight over the plastic strain, 2 `PLEQF1` exponential over it, 3 `PLEQF2` exponential with a
/// peak, 4 `PLEQF3` polynomial. Throws ConstitutiveStop for other codes. Literature: Lubliner et al. (1989).
[[nodiscard]] CurveValue PLCURV(const HardeningCurve& curve, double kappa);
[[nodiscard]] CurveValue PLEQF1(const HardeningCurve& curve, double kappa);
[[nodiscard]] CurveValue PLEQF2(const HardeningCurve& curve, double kappa);
[[nodiscard]] CurveValue PLEQF3(const HardeningCurve& curve, double kappa);
/// Throws ConstitutiveStop when a given slope is steeper than the energy allows.
[[nodiscard]] CurveValue PLEQF4(const HardeningCurve& curve, double kappa);

/// `PLCURV_E`: curves over an equivalent plastic strain. By code: 1 `PLEQS1_E` power, 2 `PLEQS2_E` exponential, 3
/// `PLEQS3_E` parabola up to twice the strain of the peak, then exponential. Throws ConstitutiveStop for other codes
/// and for slopes that must follow from the energy.
[[nodiscard]] CurveValue PLCURV_E(const HardeningCurve& curve, double kappa);
[[nodiscard]] CurveValue PLEQS1_E(const HardeningCurve& curve, double kappa);
[[nodiscard]] CurveValue PLEQS2_E(const HardeningCurve& curve, double kappa);
[[nodiscard]] CurveValue PLEQS3_E(const HardeningCurve& curve, double kappa);

/// `PLEQS1`: f + slope (factor kappa)^q, q = peak / ratio, not below 0.02 f (slope 0 there). ratio: slot 20. Throws
/// ConstitutiveStop when q is 0.
[[nodiscard]] CurveValue PLEQS1(const HardeningCurve& curve, double ratio, double kappa);
/// `PLEQS2`: exponential. Throws ConstitutiveStop when the slope is given.
[[nodiscard]] CurveValue PLEQS2(const HardeningCurve& curve, double kappa);
/// `PLEQS3`: straight lines through the points of a table, constant outside it.
[[nodiscard]] CurveValue PLEQS3(const TemperatureCurve& table, double kappa);

}  // namespace zema
