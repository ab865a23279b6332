// Small laws with known answers, and a point to run them at.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "constitutive/elastic_moduli.h"
#include "constitutive/initial_state.h"
#include "constitutive/material_point.h"
#include "foundation/distance.h"

namespace zema {

/// A smooth law without history: the trial stress divided by 1 + a (trial stress)^2. It counts as inelastic, adds 1 to
/// internal variable 1, and returns its exact tangent.
template <int N>
void softeningLaw(const LawInput<N>& input, LawState& state, LawResult<N>& result) {
  constexpr double a = 0.2;
  double squares = 0.0;
  for (const double value : input.SIGMA.values) squares += value * value;
  const double f = 1.0 / (1.0 + a * squares);
  result.SGTOT = f * input.SIGMA;
  // d(f s) = (f I - 2 a f^2 s s^T) D
  Matrix<N> factor;
  for (int i = 0; i < N; ++i)
    for (int j = 0; j < N; ++j) factor(i, j) = (i == j ? f : 0.0) - 2.0 * a * f * f * input.SIGMA[i] * input.SIGMA[j];
  result.tangent = PROMA1(factor, input.DMANX());
  result.hasTangent = input.at.pass.wantsTangent();
  state.INTVAR[internal::kappa] += 1.0;
  state.INTVAR[internal::elasticFlag] = 0.0;
  result.sums.work = input.at.geometry.dV;
}

/// A law that calls a tenth of the strain of the step plastic.
template <int N>
void creepingLaw(const LawInput<N>& input, LawState& state, LawResult<N>& result) {
  result.plasticIncrement = 0.1 * input.STRAN();
  result.SGTOT = input.SIGMA - CALTEN(input.DMANX(), result.plasticIncrement);
  state.INTVAR[internal::elasticFlag] = 0.0;
}

/// One component at one point, with its records.
template <int N>
struct SamplePoint {
  explicit SamplePoint(const Material& givenMaterial, LawFunction<N> givenLaw)
      : material(givenMaterial), elastic(MODPS<N>(material, 1, std::nullopt)), law(givenLaw) {
    geometry.dV = 0.125;
    geometry.NTYPE = N == 6 ? 6 : 4;
    pass.KALGO = 2;
    std::ranges::copy(initialInternalVariables(material), committedInternal.begin());
  }

  /// Updates from a total strain; the trial records hold no number before.
  ComponentResult<N> update(const ComponentStrain<N>& strain) {
    const double none = std::numeric_limits<double>::quiet_NaN();
    trial.assign(trial.size(), none);
    trialInternal.assign(trialInternal.size(), none);
    return MODUCO<N>(pass, geometry, {1, 1, 1, 1}, {material, elastic, law}, strain,
                     {committed, committedInternal, trial, trialInternal});
  }
  ComponentResult<N> update(const Strain<N>& total, const Matrix<3>& F = Matrix<3>::identity()) {
    return update({total, total - Strain<N>::from(committed, places.STRAT()), {}, F});
  }
  void commit() {
    committed = trial;
    committedInternal = trialInternal;
  }
  [[nodiscard]] Matrix<N> tangent() const { return OBCTAN(std::span<const double>(trialInternal), elastic.axes); }

  static constexpr MechanicalPlaces places{N};
  Material material;
  ElasticMaterial<N> elastic;
  LawFunction<N> law;
  PassContext pass;
  PointGeometry geometry;
  std::vector<double> committed = std::vector<double>(places.size(), 0.0);
  std::vector<double> committedInternal = std::vector<double>(internal::count + N * N, 0.0);
  std::vector<double> trial = committed;
  std::vector<double> trialInternal = committedInternal;
};

inline Strain<6> greenLagrange(const Matrix<3>& F) {
  const Matrix<3> C = transposeTimes(F, F);
  return {{(C(0, 0) - 1.0) / 2.0, (C(1, 1) - 1.0) / 2.0, C(0, 1), (C(2, 2) - 1.0) / 2.0, C(0, 2), C(1, 2)}};
}

/// How far the tangent at a motion F is from the differences of the stress along motions without spin, (1 + d) F with a
/// symmetric d: a turn would move an orthotropic solid away from its axes.
inline double errorAlongMotions(SamplePoint<6>& point, const Matrix<3>& F) {
  const auto moved = [&F](const Strain<6>& d) {
    Matrix<3> motion = tensorOf(d);
    for (int i = 0; i < 3; ++i) motion(i, i) += 1.0;
    return PROMA1(motion, F);
  };
  const auto strain = [&](const Strain<6>& d) { return greenLagrange(moved(d)); };
  const auto stress = [&](const Strain<6>& d) { return point.update(strain(d), moved(d)).stress; };
  constexpr double h = 1.0e-6;
  (void)point.update(greenLagrange(F), F);
  const Matrix<6> tangent = point.tangent();
  return distance(differences<6>(stress, Strain<6>{}, h), PROMA1(tangent, differences<6>(strain, Strain<6>{}, h)));
}

}  // namespace zema
