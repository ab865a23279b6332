// Elastic prediction of the stress, and the way of a tangent back to the real space.
#include "constitutive/elastic_tangent.h"

namespace zema {
namespace {

/// Lame's constants of the isotropic stand-in, from the stiffer of the directions x and y.
struct LameConstants {
  double G;
  double lambda;
};

LameConstants lameConstants(const Material& material) {
  const bool yIsStiffer = material(slot::youngX) < material(slot::youngY);
  const double E = material(yIsStiffer ? slot::youngY : slot::youngX);
  const double first = material(yIsStiffer ? slot::poissonYX : slot::poissonXY);
  const double nu = first != 0.0 ? first : material(yIsStiffer ? slot::poissonXY : slot::poissonYX);
  return {E / (2.0 * (1.0 + nu)), E * nu / ((1.0 + nu) * (1.0 - 2.0 * nu))};
}

}  // namespace

template <int N>
Stress<N> MODULI(const Matrix<N>& D, const Strain<N>& strain, const Matrix<3>& F, bool pushed, int KTANP) {
  if (!pushed || KTANP == 1) return CALTEN(D, strain);
  Strain<N> almansi = strain;
  PFB_STR(almansi, F, TensorMove::strainForward);
  Stress<N> stress = CALTEN(D, almansi);
  PFB_STR(stress, F, TensorMove::stressBack);
  return stress;
}

template <int N>
Matrix<N> ANISOT(const Matrix<N>& D, const ElasticMaterial<N>& elastic) {
  if (elastic.plainMap) return D;
  Matrix<N> real = PROMA1(D, elastic.record.AEMX);
  for (int i = 0; i < N; ++i)
    for (int j = 0; j < N; ++j) real(i, j) *= elastic.record.ASMTI[static_cast<std::size_t>(i)];
  return real;
}

template <int N>
Matrix<N> ELRIGI(const Matrix<N>& D, const MaterialPoint<N>& at) {
  if (!at.pushed()) return ANISOT(D, at.elastic);
  Matrix<N> reference = D;
  PFB_C(reference, at.F, MatrixMove::back);
  return ANISOT(reference, at.elastic);
}

template <int N>
Matrix<N> PLRIGIL(const Material& material, const Stress<N>& stress) {
  const auto [G, lambda] = lameConstants(material);
  const Matrix<3> tau = tensorOf(stress);
  // e = (tau - c I) / 2G
  const double c = lambda / (3.0 * lambda + 2.0 * G) * (tau(0, 0) + tau(1, 1) + tau(2, 2));
  Matrix<N> part;
  for (int j = 0; j < N; ++j) {
    Strain<N> rate;
    rate[j] = 1.0;
    const Matrix<3> d = tensorOf(rate);
    double traceOfDe = -c * (d(0, 0) + d(1, 1) + d(2, 2));
    for (int i = 0; i < N; ++i) traceOfDe += stress[i] * rate[i];
    traceOfDe /= 2.0 * G;
    const Matrix<3> dTau = PROMA1(d, tau);
    for (int i = 0; i < N; ++i) {
      const int k = KF[static_cast<std::size_t>(i)], l = LF[static_cast<std::size_t>(i)];
      // D:(d e + e d) = 2 lambda tr(d e) I + (d tau + tau d) - 2 c d
      part(i, j) = -2.0 * (dTau(k, l) + dTau(l, k)) + 2.0 * c * d(k, l);
      if (!isShear(i)) part(i, j) -= 2.0 * lambda * traceOfDe;
    }
  }
  return part;
}

template <int N>
Matrix<N> elasticTangent(const MaterialPoint<N>& at, const Stress<N>& trialStress) {
  const Matrix<N>& D = at.elastic.record.VDMANX;
  if (!at.pushed() || at.pass.KTANP == 1) return D;
  Matrix<N> tangent = D;
  PFB_C(tangent, at.F, MatrixMove::back);
  if (at.pass.KTANP == 2) {
    const Matrix<N> fromStress = ELRIGI(PLRIGIL(at.material, trialStress), at);
    for (int i = 0; i < N; ++i)
      for (int j = 0; j < N; ++j) tangent(i, j) += fromStress(i, j);
  }
  return tangent;
}

template Stress<4> MODULI(const Matrix<4>&, const Strain<4>&, const Matrix<3>&, bool, int);
template Stress<6> MODULI(const Matrix<6>&, const Strain<6>&, const Matrix<3>&, bool, int);
template Matrix<4> ANISOT(const Matrix<4>&, const ElasticMaterial<4>&);
template Matrix<6> ANISOT(const Matrix<6>&, const ElasticMaterial<6>&);
template Matrix<4> ELRIGI(const Matrix<4>&, const MaterialPoint<4>&);
template Matrix<6> ELRIGI(const Matrix<6>&, const MaterialPoint<6>&);
template Matrix<4> PLRIGIL(const Material&, const Stress<4>&);
template Matrix<6> PLRIGIL(const Material&, const Stress<6>&);
template Matrix<4> elasticTangent(const MaterialPoint<4>&, const Stress<4>&);
template Matrix<6> elasticTangent(const MaterialPoint<6>&, const Stress<6>&);

}  // namespace zema
