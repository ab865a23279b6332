// Damage by two scalars with a measure each.
#include "constitutive/two_measure_damage.h"

#include <numbers>

#include "constitutive/characteristic_length.h"
#include "constitutive/damage_curves.h"
#include "constitutive/law_failure.h"
#include "constitutive/split_damage.h"

namespace zema {
namespace {

using std::numbers::sqrt3;

/// Measure of a part of the stress, and its derivative by the stress.
template <int N>
struct PartMeasure {
  double tau = 0.0;
  Strain<N> normal;
};

/// Energy norm sqrt(positive D^-1 positive); its derivative is D^-1 positive Q+ / tau.
template <int N>
PartMeasure<N> energyNorm(const MaterialPoint<N>& at, const Matrix<N>& D, const SpectralSplit<N>& split,
                          bool withNormal) {
  PartMeasure<N> measure;
  if (split.positive.isZero()) return measure;
  Matrix<N> inverse;
  if (!INVMTX(D, inverse))
    stopAtPoint(at, "  >>>> ELASTIC MATRIX WITHOUT INVERSE IN -DEGRAC- ", "Its moduli leave a strain without stress.");
  const Strain<N> strain{CALTEN(inverse, split.positive.values)};
  measure.tau = std::sqrt(dot(split.positive, strain));
  if (withNormal)
    measure.normal = (1.0 / measure.tau) * Strain<N>{CALTEN(transpose(split.positiveDerivative()), strain.values)};
  return measure;
}

/// sqrt(sqrt3 (0.4 I + sqrt(2 J / 3))) with the invariants I and J of the negative part, 0 when the bracket is not
/// positive.
template <int N>
PartMeasure<N> octahedralNorm(const SpectralSplit<N>& split, bool withNormal) {
  constexpr double onPressure = 1.2 / 3.0;
  Vector<3> negative{};
  for (std::size_t i = 0; i < 3; ++i) negative[i] = std::min(split.axes.values[i], 0.0);
  const auto [a, b, c] = negative;
  const double I = a + b + c;
  const double J = ((a - b) * (a - b) + (a - c) * (a - c) + (c - b) * (c - b)) * 0.16666666666666666;
  const double bracket = sqrt3 * (onPressure * I + std::sqrt(2.0 * J / 3.0));
  PartMeasure<N> measure;
  if (!(bracket > 0.0)) return measure;
  measure.tau = std::sqrt(bracket);
  if (!withNormal) return measure;
  for (int i = 0; i < 3; ++i) {
    const double value = negative[static_cast<std::size_t>(i)];
    if (value == 0.0) continue;
    // dJ / d value is the deviator of the negative part
    const double factor = sqrt3 * (onPressure + (value - I / 3.0) / std::sqrt(6.0 * J)) / (2.0 * measure.tau);
    const Stress<N> direction = directionProduct<N>(split.axes, i, i);
    for (int k = 0; k < N; ++k) measure.normal[k] += factor * (isShear(k) ? 2.0 * direction[k] : direction[k]);
  }
  return measure;
}

struct Thresholds {
  double tension;
  double compression;
};

/// Measures at which damage begins: energy norm of the strength in tension (slot 10), octahedral norm of that in
/// compression (slot 30).
Thresholds initialThresholds(const Material& material) {
  return {material(slot::tensionPeakStress) / std::sqrt(material(slot::youngX)),
          std::sqrt((material(slot::damageStress) / 3.0) * 0.37102877370052556)};
}

/// 2 E G / f^2, the greatest length at which the element can dissipate G.
double greatestLength(const Material& material, double G, double f) {
  return 2.0 * material(slot::youngX) * G / (f * f);
}

/// Damage of one scalar beyond its threshold. The upper limit is 1, a lower one is not set.
template <int N>
void grow(const DamageValue& value, double tau, double& threshold, DamageScalar<N>& scalar) {
  threshold = tau;
  const DamageValue limited = value.d > 1.0 ? DamageValue{1.0, 0.0} : value;
  scalar.increment = limited.d - scalar.d;
  scalar.d = limited.d;
  scalar.slope = limited.slope;
}

template <int N>
void growBoth(const MaterialPoint<N>& at, double tauTension, double tauCompression, LawState& state,
              DamageScalar<N>& tension, DamageScalar<N>& compression) {
  double& tensionThreshold = state.INTVAR[internal::threshold];
  double& compressionThreshold = state.INTVAR[internal::compressionThreshold];
  const bool inTension = tauTension > tensionThreshold, inCompression = tauCompression > compressionThreshold;
  if (!inTension && !inCompression) return;
  const Material& material = at.material;
  const double l = characteristicLength(at.geometry, LengthRule::pointCubeRoot, false);
  checkLength(l, greatestLength(material, material(slot::compressionFractureEnergy), material(slot::damageStress)),
              beyondLimit);
  const Thresholds initial = initialThresholds(material);
  if (inTension) {
    const double greatest =
        greatestLength(material, material(slot::damageFractureEnergy), material(slot::tensionPeakStress));
    checkLength(l, greatest, beyondLimit);
    const double A = exponentialParameter(greatest / l);
    grow(exponentialSoftening(tauTension, initial.tension, A), tauTension, tensionThreshold, tension);
  }
  if (inCompression)
    grow(compressionHump(tauCompression, initial.compression), tauCompression, compressionThreshold, compression);
}

}  // namespace

template <int N>
void DEGRAC(const LawInput<N>& input, LawState& state, LawResult<N>& result) {
  const bool withNormal = input.at.pass.wantsTangent();
  const Matrix<N> D = input.DMANX();
  const SpectralSplit<N> split(input.SIGMA);
  const PartMeasure<N> ofTension = energyNorm(input.at, D, split, withNormal);
  const PartMeasure<N> ofCompression = octahedralNorm(split, withNormal);
  DamageScalar<N> tension, compression;
  tension.d = state.INTVAR[internal::damage];
  compression.d = state.INTVAR[internal::compressionDamage];
  growBoth(input.at, ofTension.tau, ofCompression.tau, state, tension, compression);
  tension.gradient = tension.slope * CALTEN(D, ofTension.normal);
  compression.gradient = compression.slope * CALTEN(D, ofCompression.normal);
  const double measure = (1.0 - tension.d) * ofTension.tau + (1.0 - compression.d) * ofCompression.tau;
  state.INTVAR[internal::yieldStress] = state.INTVAR[internal::reducedYieldStress] = measure;
  returnSplitStress(input, split, tension, compression, state, result);
}

void checkTwoMeasureDamage(const Material& material, const std::string& who) {
  if (!(material(slot::tensionPeakStress) > 0.0))
    throw InputFault(who + ": the strength in tension (slot 10) must be above 0");
  if (!(material(slot::damageStress) > 0.0))
    throw InputFault(who + ": the strength in compression (slot 30) must be above 0");
}

template void DEGRAC(const LawInput<4>&, LawState&, LawResult<4>&);
template void DEGRAC(const LawInput<6>&, LawState&, LawResult<6>&);

}  // namespace zema
