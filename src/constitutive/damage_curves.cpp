// Damage curves.
#include "constitutive/damage_curves.h"

#include <cmath>

namespace zema {
namespace {

constexpr double mostTensionDamage = 0.999999999;
constexpr double mostCompressionDamage = 0.99999999;
constexpr double leastCompressionDamage = 9.99999993922529e-09;

/// e^z / (e^-z + e^z), 0 beyond |z| = 20.
DamageValue sigmoid(double z, double dz) {
  if (std::abs(z) > 20.0) return {};
  const double S = 1.0 / (1.0 + std::exp(-2.0 * z));
  return {S, 2.0 * S * (1.0 - S) * dz};
}

/// Two sigmoids, one in tau/f and one in its square: weights 1 - p3 and p3.
DamageValue twoSigmoids(const SplitCurve& curve, double tau) {
  const auto& [p1, p2, p3] = curve.p;
  const double f = curve.f;
  const DamageValue x = sigmoid(5.0 + p1 - p1 * tau / f, -p1 / f);
  const DamageValue y = sigmoid((5.0 + p2) * f / tau - p2 * tau / f, -(5.0 + p2) * f / (tau * tau) - p2 / f);
  return {1.0 - (1.0 - p3) * x.d - p3 * y.d, -(1.0 - p3) * x.slope - p3 * y.slope};
}

DamageValue exponentialWithRemainder(const SplitCurve& curve, double tau) {
  const auto& [p1, p2, unused] = curve.p;
  const double f = curve.f;
  const double x = p1 * std::exp((1.0 - tau / f) * p2);
  const double y = (f / tau) * (1.0 - p1);
  return {1.0 - x - y, x * p2 / f + y / tau};
}

DamageValue splitDamage(const SplitCurve& curve, double tau, LineEnd end) {
  switch (curve.code) {
    case 1:
      return linearSoftening(tau, curve.f, linearParameter(curve.ductility), end);
    case 2:
      return twoSigmoids(curve, tau);
    case 3:
      return exponentialWithRemainder(curve, tau);
    default:
      return {};
  }
}

}  // namespace

DamageValue exponentialSoftening(double tau, double f, double A) {
  const double x = std::exp((1.0 - tau / f) * A);
  return {1.0 - f / tau * x, (A + f / tau) * x / tau};
}

double exponentialParameter(double ductility) {
  return 1.0 / (0.5 * ductility - 0.5);
}

DamageValue linearSoftening(double tau, double f, double A, LineEnd end) {
  constexpr double shareOfEnd = 0.99999;
  const double last = -shareOfEnd * f / A;
  if (end == LineEnd::cut && A < 0.0 && tau > -f / A) return {(1.0 - f / last) / (A + 1.0), 0.0};
  return {(1.0 - f / tau) / (A + 1.0), f / (tau * tau * (A + 1.0))};
}

double linearParameter(double ductility) {
  return -1.0 / ductility;
}

DamageValue DTEN(const SplitCurve& curve, double tau) {
  return splitDamage(curve, tau, LineEnd::cut).limited(0.0, mostTensionDamage);
}

DamageValue DCOM(const SplitCurve& curve, double tau) {
  const DamageValue value = splitDamage(curve, tau, LineEnd::open);
  if (value.d < leastCompressionDamage) return {};
  return value.limited(0.0, mostCompressionDamage);
}

DamageValue compressionHump(double tau, double r0) {
  const double x = 3.7627 * std::exp((1.0 - tau / r0) * 0.7097);
  const double y = 2.7627 * r0 / tau;
  return DamageValue{1.0 + y - x, x * 0.7097 / r0 - y / tau};
}

}  // namespace zema
