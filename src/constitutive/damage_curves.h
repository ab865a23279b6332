// Damage curves: damage over an equivalent stress, as pure functions.
#pragma once

#include <array>

namespace zema {

/// Damage at an equivalent stress.
struct DamageValue {
  double d = 0.0;
  double slope = 0.0;  ///< dd/dtau

  /// Between two limits; the slope is 0 at a limit that is reached from outside.
  [[nodiscard]] DamageValue limited(double lower, double upper) const {
    if (d < lower) return {lower, 0.0};
    if (d > upper) return {upper, 0.0};
    return *this;
  }
};

/// Exponential softening, for tau from f on: stress f exp((1 - tau/f) A). Literature: Oliver et al. (1990).
[[nodiscard]] DamageValue exponentialSoftening(double tau, double f, double A);
/// A of the exponential law that dissipates g: 1 / (E g n^2 / f^2 - 1/2), with ductility = 2 E g n^2 / f^2 above 1.
[[nodiscard]] double exponentialParameter(double ductility);

/// What stays of tau where a falling line would pass through 0 stress.
enum class LineEnd { cut, open };
/// Linear softening: stress (f + A tau) / (A + 1). A falling line (A below 0) that is cut keeps the damage of tau =
/// -0.99999 f/A.
[[nodiscard]] DamageValue linearSoftening(double tau, double f, double A, LineEnd end);
/// A of the falling line that dissipates g: -f^2 / (2 E g n^2).
[[nodiscard]] double linearParameter(double ductility);

/// A curve of the law with damage in tension and in compression.
struct SplitCurve {
  int code = 0;               ///< 1 linear, 2 two sigmoids, 3 exponential with a remainder, other: no damage
  std::array<double, 3> p{};  ///< parameters of codes 2 and 3
  double f = 0.0;             ///< initial threshold
  double ductility = 0.0;     ///< 2 E g / f^2, of code 1 alone
};
/// `DTEN`: damage in tension at a stress tau, 0 to 0.999999999.
[[nodiscard]] DamageValue DTEN(const SplitCurve& curve, double tau);
/// `DCOM`: damage in compression at a stress tau, 0 to 0.99999999.
[[nodiscard]] DamageValue DCOM(const SplitCurve& curve, double tau);

/// Damage of concrete in compression at a measure tau with the threshold r0: a hump, then an exponential decay. It is
/// slightly below 0 at the beginning. Literature: Faria & Oliver (1993).
[[nodiscard]] DamageValue compressionHump(double tau, double r0);

}  // namespace zema
