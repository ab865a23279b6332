// Elastic prediction of the stress, and the way of a tangent back to the real space.
#include "constitutive/elastic_tangent.h"

namespace zema {
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
Matrix<N> PLRIGIL(const Matrix<N>& D, const Strain<N>& almansi, const Stress<N>& kirchhoff) {
  const Matrix<3> e = tensorOf(almansi), tau = tensorOf(kirchhoff);
  Matrix<N> part;
  for (int j = 0; j < N; ++j) {
    Strain<N> rate;
    rate[j] = 1.0;
    const Matrix<3> d = tensorOf(rate);
    const Matrix<3> de = PROMA1(d, e), dTau = PROMA1(d, tau);
    Strain<N> convected;  // d e + e d
    for (int i = 0; i < N; ++i) {
      const int k = KF[static_cast<std::size_t>(i)], l = LF[static_cast<std::size_t>(i)];
      convected[i] = (isShear(i) ? 2.0 : 1.0) * (de(k, l) + de(l, k));
    }
    const Stress<N> fromStrain = CALTEN(D, convected);
    for (int i = 0; i < N; ++i) {
      const int k = KF[static_cast<std::size_t>(i)], l = LF[static_cast<std::size_t>(i)];
      part(i, j) = -(fromStrain[i] + dTau(k, l) + dTau(l, k));
    }
  }
  return part;
}

template <int N>
Matrix<N> elasticTangent(const MaterialPoint<N>& at, const Strain<N>& elasticStrain) {
  const Matrix<N>& D = at.elastic.record.VDMANX;
  if (!at.pushed() || at.pass.KTANP == 1) return D;
  Matrix<N> tangent = D;
  if (at.pass.KTANP == 2) {
    Strain<N> almansi = elasticStrain;
    PFB_STR(almansi, at.F, TensorMove::strainForward);
    const Matrix<N> fromStress = PLRIGIL(D, almansi, CALTEN(D, almansi));
    for (std::size_t i = 0; i < tangent.values.size(); ++i) tangent.values[i] += fromStress.values[i];
  }
  PFB_C(tangent, at.F, MatrixMove::back);
  return tangent;
}

template Stress<4> MODULI(const Matrix<4>&, const Strain<4>&, const Matrix<3>&, bool, int);
template Stress<6> MODULI(const Matrix<6>&, const Strain<6>&, const Matrix<3>&, bool, int);
template Matrix<4> ANISOT(const Matrix<4>&, const ElasticMaterial<4>&);
template Matrix<6> ANISOT(const Matrix<6>&, const ElasticMaterial<6>&);
template Matrix<4> ELRIGI(const Matrix<4>&, const MaterialPoint<4>&);
template Matrix<6> ELRIGI(const Matrix<6>&, const MaterialPoint<6>&);
template Matrix<4> PLRIGIL(const Matrix<4>&, const Strain<4>&, const Stress<4>&);
template Matrix<6> PLRIGIL(const Matrix<6>&, const Strain<6>&, const Stress<6>&);
template Matrix<4> elasticTangent(const MaterialPoint<4>&, const Strain<4>&);
template Matrix<6> elasticTangent(const MaterialPoint<6>&, const Strain<6>&);

}  // namespace zema
