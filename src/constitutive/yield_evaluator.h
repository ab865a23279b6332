// The evaluator that the plastic laws share: yield value, normals, hardening and multiplier at a stress.
#pragma once

#include "constitutive/hardening.h"
#include "constitutive/law.h"
#include "constitutive/yield_function.h"

namespace zema {

/// Whether an evaluation forms the normals anew.
enum class Normals { recomputed, kept };

/// What an evaluation leaves; kept normals stay from the one before.
template <int N>
struct YieldState {
  StressInvariants<N> invariants;  ///< of the stress
  YieldValue yield;                ///< value over the fatigue factor
  double factor = 0.0;             ///< fatigue factor, formed by the first evaluation of a law call; 0: not yet
  Strain<N> a;                     ///< yield normal
  Strain<N> g;                     ///< flow vector: the normal of the potential, mapped
  Stress<N> Dg;                    ///< D g, `MODAUX` only
  double A = 0.0;                  ///< multiplier factor 1 / (H + a D g), `MODAUX` only
};

/// What the plastic strain of an evaluation is to the hardening, see HardeningInput.
template <int N>
struct PlasticStep {
  Strain<N> increment;
  double startingKappa = 0.0;
  bool accumulates = false;
};

/// The elastic matrix that a plastic law works with: DMANX, in plane stress (NTYPE 3) without the stress zz.
template <int N>
[[nodiscard]] Matrix<N> plasticMatrix(const LawInput<N>& input);

/// A normal as a flow vector of the mapped space: AEMX ASMT^T g, with KPUSH 2 through the reference configuration.
template <int N>
[[nodiscard]] Strain<N> mappedFlow(const MaterialPoint<N>& at, const Strain<N>& normal);

/// `MODAUX_R`: yield value and normals without hardening. The friction and dilatancy angles are those of INTVAR.
template <int N>
void MODAUX_R(const LawInput<N>& input, const Stress<N>& SIGMA, Normals normals, LawState& state, YieldState<N>& out);

/// `MODAUX`: the same with hardening (`PLVARI`) and multiplier (`PLFLOW`).
template <int N>
void MODAUX(const LawInput<N>& input, const Stress<N>& SIGMA, const Matrix<N>& D, Normals normals,
            const PlasticStep<N>& step, LawState& state, YieldState<N>& out);

/// `PLRIGI`: D - D g (a^T D) / (H + a D g). D: elastic matrix, or the algorithmic one of a step.
template <int N>
[[nodiscard]] Matrix<N> PLRIGI(const Matrix<N>& D, const Strain<N>& a, const Strain<N>& g, double H);

/// Whether the flow of a plastic law follows the stress of the evaluation (NFLUG 2) or stays that of the trial stress.
[[nodiscard]] inline Normals flowOf(const Material& material) {
  return material.NFLUG == Flow::constant ? Normals::kept : Normals::recomputed;
}

}  // namespace zema
