// The evaluator that the plastic laws share.
#include "constitutive/yield_evaluator.h"

#include <cmath>

#include "constitutive/fatigue.h"
#include "foundation/single_precision.h"

namespace zema {
namespace {

/// Whether the potential has the same normal as the yield function.
bool associated(const CriterionData& yield, const CriterionData& potential) {
  constexpr double alike = single(1.0e-3F);
  return yield.code == potential.code && std::abs(yield.angle - potential.angle) <= alike &&
         std::abs(yield.R - potential.R) <= alike;
}

template <int N>
void formNormals(const LawInput<N>& input, const Stress<N>& SIGMA, const CriterionData& yield, const LawState& state,
                 YieldState<N>& out) {
  const CriterionData potential = potentialData(input.at.material, state.INTVAR[internal::dilatancyAngle]);
  const double overFactor = 1.0 / out.factor;
  Strain<N> normal;
  if (PLYIEL(SIGMA, out.invariants, yield, normal)) out.a = overFactor * normal;
  if (associated(yield, potential)) {
    out.g = mappedFlow(input.at, out.a);
  } else if (PLYIEL(SIGMA, out.invariants, potential, normal)) {
    out.g = mappedFlow(input.at, overFactor * normal);
  }
  const double scale = state.INTVAR[internal::flowScale];
  if (scale < 1.0) out.a *= 1.0 / scale;
}

template <int N>
Matrix<N> planeStressMatrix(Matrix<N> D) {
  for (int j = 0; j < N; ++j) D(3, j) = 0.0;
  return D;
}

}  // namespace

template <int N>
Matrix<N> plasticMatrix(const LawInput<N>& input) {
  constexpr int planeStress = 3;
  if (N == 4 && input.at.geometry.NTYPE == planeStress) return planeStressMatrix(input.DMANX());
  return input.DMANX();
}

template <int N>
Strain<N> mappedFlow(const MaterialPoint<N>& at, const Strain<N>& normal) {
  if (at.elastic.plainMap) return normal;
  Strain<N> flow = normal;
  if (at.pushed()) PFB_STR(flow, at.F, TensorMove::strainBack);
  for (int i = 0; i < N; ++i) flow[i] *= at.elastic.record.ASMT[static_cast<std::size_t>(i)];
  flow.values = CALTEN(at.elastic.record.AEMX, flow.values);
  if (at.pushed()) PFB_STR(flow, at.F, TensorMove::strainForward);
  return flow;
}

template <int N>
void MODAUX_R(const LawInput<N>& input, const Stress<N>& SIGMA, Normals normals, LawState& state, YieldState<N>& out) {
  const Material& material = input.at.material;
  const PassContext& pass = input.at.pass;
  const CriterionData criterion = yieldData(material, state.INTVAR[internal::frictionAngle]);
  out.invariants = invariantsOf(SIGMA);
  out.yield = PLINVA(out.invariants, criterion);
  if (out.factor == 0.0) {
    out.factor = pass.TCYCL == 0.0 ? 1.0
                                   : STRFAT(pass, state.fatigue, state.INTVAR[internal::yieldStress], out.yield.F,
                                            material(slot::damageStress), out.invariants.p);
  }
  out.yield.F /= out.factor;
  out.yield.dFdphi /= out.factor;
  if (normals == Normals::recomputed) formNormals(input, SIGMA, criterion, state, out);
}

template <int N>
void MODAUX(const LawInput<N>& input, const Stress<N>& SIGMA, const Matrix<N>& D, Normals normals,
            const PlasticStep<N>& step, LawState& state, YieldState<N>& out) {
  MODAUX_R(input, SIGMA, normals, state, out);
  PLVARI(input.at, {SIGMA, step.increment, out.g, out.yield, step.startingKappa, step.accumulates}, state);
  state.INTVAR[internal::reducedYieldStress] = out.factor * state.INTVAR[internal::yieldStress];
  out.Dg = CALTEN(D, out.g);
  out.A = 1.0 / (state.INTVAR[internal::hardening] / state.INTVAR[internal::flowScale] + dot(out.Dg, out.a));
}

template <int N>
Matrix<N> PLRIGI(const Matrix<N>& D, const Strain<N>& a, const Strain<N>& g, double H) {
  const Stress<N> Dg = CALTEN(D, g);
  const double A = 1.0 / (H + dot(Dg, a));
  Vector<N> aD{};
  for (int i = 0; i < N; ++i)
    for (int j = 0; j < N; ++j) aD[static_cast<std::size_t>(j)] += a[i] * D(i, j);
  Matrix<N> tangent = D;
  for (int i = 0; i < N; ++i)
    for (int j = 0; j < N; ++j) tangent(i, j) -= A * Dg[i] * aD[static_cast<std::size_t>(j)];
  return tangent;
}

template Matrix<4> plasticMatrix(const LawInput<4>&);
template Matrix<6> plasticMatrix(const LawInput<6>&);
template Strain<4> mappedFlow(const MaterialPoint<4>&, const Strain<4>&);
template Strain<6> mappedFlow(const MaterialPoint<6>&, const Strain<6>&);
template void MODAUX_R(const LawInput<4>&, const Stress<4>&, Normals, LawState&, YieldState<4>&);
template void MODAUX_R(const LawInput<6>&, const Stress<6>&, Normals, LawState&, YieldState<6>&);
template void MODAUX(const LawInput<4>&, const Stress<4>&, const Matrix<4>&, Normals, const PlasticStep<4>&, LawState&,
                     YieldState<4>&);
template void MODAUX(const LawInput<6>&, const Stress<6>&, const Matrix<6>&, Normals, const PlasticStep<6>&, LawState&,
                     YieldState<6>&);
template Matrix<4> PLRIGI(const Matrix<4>&, const Strain<4>&, const Strain<4>&, double);
template Matrix<6> PLRIGI(const Matrix<6>&, const Strain<6>&, const Strain<6>&, double);

}  // namespace zema
