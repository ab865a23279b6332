// The driver of the laws.
#include "constitutive/law_driver.h"

#include <cmath>

#include "constitutive/elastic_tangent.h"
#include "constitutive/law_failure.h"
#include "foundation/single_precision.h"

namespace zema {
namespace {

constexpr std::array<int, 3> normalPlaces{0, 1, 3};

template <int N>
Stress<N> scaled(const Vector<N>& diagonal, Stress<N> stress) {
  for (int i = 0; i < N; ++i) stress[i] *= diagonal[static_cast<std::size_t>(i)];
  return stress;
}

template <int N>
Stress<N> toLawSpace(const MaterialPoint<N>& at, const Stress<N>& real) {
  Stress<N> stress = at.elastic.plainMap ? real : scaled<N>(at.elastic.record.ASMT, real);
  if (at.pushed()) PFB_STR(stress, at.F, TensorMove::stressForward);
  return stress;
}

template <int N>
Stress<N> toRealSpace(const MaterialPoint<N>& at, Stress<N> stress) {
  if (at.pushed()) PFB_STR(stress, at.F, TensorMove::stressBack);
  return at.elastic.plainMap ? stress : scaled<N>(at.elastic.record.ASMTI, stress);
}

template <int N>
Strain<N> toRealSpace(const MaterialPoint<N>& at, Strain<N> strain) {
  if (at.pushed()) PFB_STR(strain, at.F, TensorMove::strainBack);
  if (!at.elastic.plainMap) strain.values = CALTEN(at.elastic.record.AEMXI, strain.values);
  return strain;
}

/// The law that acts on the shear stresses alone: the normal stresses stay the trial ones, with elastic rows in the
/// tangent, and the shear stresses, which the law finds without them, do not follow the normal strains.
template <int N>
void runOnShearAlone(LawFunction<N> law, LawInput<N> input, LawState& state, LawResult<N>& result) {
  const Stress<N> trial = input.SIGMA;
  for (const int i : normalPlaces) input.SIGMA[i] = input.STRES[i] = result.SGTOT[i] = 0.0;
  law(input, state, result);
  for (const int i : normalPlaces) result.SGTOT[i] = trial[i];
  if (!result.hasTangent) return;
  const Matrix<N> D = input.DMANX();
  for (const int i : normalPlaces) {
    for (int j = 0; j < N; ++j) {
      if (isShear(j)) result.tangent(j, i) = 0.0;
      result.tangent(i, j) = D(i, j);
    }
  }
}

/// The tangent of a law in the real space; with KTANP 2 together with the part that comes from the stress.
template <int N>
Matrix<N> realTangent(const LawInput<N>& input, const Strain<N>& elasticStrain, const LawResult<N>& answer) {
  if (!input.at.pushed() || input.at.pass.KTANP != 2) return ELRIGI(answer.tangent, input.at);
  Matrix<N> tangent = answer.tangent;
  const Matrix<N> fromStress = PLRIGIL(tangent, input.toLawSpace(elasticStrain), answer.SGTOT);
  for (std::size_t i = 0; i < tangent.values.size(); ++i) tangent.values[i] += fromStress.values[i];
  return ELRIGI(tangent, input.at);
}

/// How far a strain component is moved for a difference; strains: all components.
struct Perturbation {
  double scale;  // of a component that is 0
  double floor;

  template <int N>
  explicit Perturbation(const Strain<N>& strains) {
    double largest = strains[0], smallestPositive = 0.0, magnitude = 0.0;
    for (const double value : strains.values) {
      largest = std::max(largest, value);
      magnitude = std::max(magnitude, std::abs(value));
      if (value > 0.0 && (smallestPositive == 0.0 || value < smallestPositive)) smallestPositive = value;
    }
    scale = smallestPositive > 0.0 ? smallestPositive : magnitude;
    floor = (largest > 0.0 ? largest : magnitude) * single(1.0e-10F);
  }

  [[nodiscard]] double of(double strain) const {
    constexpr double relative = single(1.0e-5F);
    constexpr double least = single(1.0e-10F);  // for a point without any strain
    const double h = (strain != 0.0 ? strain : scale) * relative;
    if (std::abs(h) > floor) return h;
    return floor > 0.0 ? floor : least;
  }
};

}  // namespace

template <int N>
void MODULP(const MaterialPoint<N>& at, LawFunction<N> law, const CommittedPoint<N>& start, UpdatedPoint<N>& result) {
  const PointStrains<N>& strains = start.strains;
  const Strain<N> elasticStrain = strains.total - strains.plastic - strains.initial;
  const Stress<N> predictor = MODULI(at.elastic.record.VDMANX, elasticStrain, at.F, at.pushed(), at.pass.KTANP);
  LawInput<N> input{at, start.state, strains, toLawSpace(at, predictor), toLawSpace(at, start.STRSG), {}};
  input.STRES = input.SIGMA - input.PRESG;

  LawResult<N> answer;
  answer.SGTOT = input.SIGMA;
  result.state = start.state;
  try {
    if (at.material.NCRIP == Criterion::damageSimoJu) {
      runOnShearAlone(law, input, result.state, answer);
    } else {
      law(input, result.state, answer);
    }
  } catch (const ConstitutiveStop& stop) {
    throw located(stop, at, strains.total, start.state);
  }

  result.STRSG = toRealSpace(at, answer.SGTOT);
  result.STRAP = strains.plastic;
  if (!answer.plasticIncrement.isZero()) result.STRAP += toRealSpace(at, answer.plasticIncrement);
  result.sums = answer.sums;
  result.elasticMatrix = !answer.hasTangent && (!at.pushed() || at.pass.KTANP == 1);
  if (!result.elasticMatrix)
    result.tangent = answer.hasTangent ? realTangent(input, elasticStrain, answer) : elasticTangent(at, elasticStrain);
}

template <int N>
Matrix<N> CTANG(const MaterialPoint<N>& at, LawFunction<N> law, const CommittedPoint<N>& start,
                const Stress<N>& unperturbed) {
  const Perturbation perturbation(start.strains.total);
  Matrix<N> tangent;
  for (int j = 0; j < N; ++j) {
    CommittedPoint<N> moved = start;
    moved.strains.total[j] += perturbation.of(start.strains.total[j]);
    const double h = moved.strains.total[j] - start.strains.total[j];  // what rounding has left of the perturbation
    moved.strains.increment[j] += h;
    UpdatedPoint<N> answer;
    MODULP(at, law, moved, answer);
    for (int i = 0; i < N; ++i) tangent(i, j) = (answer.STRSG[i] - unperturbed[i]) * (1.0 / h);
  }
  return tangent;
}

template void MODULP(const MaterialPoint<4>&, LawFunction<4>, const CommittedPoint<4>&, UpdatedPoint<4>&);
template void MODULP(const MaterialPoint<6>&, LawFunction<6>, const CommittedPoint<6>&, UpdatedPoint<6>&);
template Matrix<4> CTANG(const MaterialPoint<4>&, LawFunction<4>, const CommittedPoint<4>&, const Stress<4>&);
template Matrix<6> CTANG(const MaterialPoint<6>&, LawFunction<6>, const CommittedPoint<6>&, const Stress<6>&);

}  // namespace zema
