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
  YieldValue yield;     ///< value over the fatigue factor
  double factor = 1.0;  ///< fatigue factor
  Strain<N> a;          ///< yield normal
  Strain<N> unmapped;   ///< normal of the potential before it is mapped
  Strain<N> g;          ///< flow vector: the normal of the potential, mapped
  Stress<N> b;          ///< D a
  double A = 0.0;       ///< multiplier factor 1 / (H + g b)
};

/// A normal as a flow vector of the mapped space: AEMX ASMT^T g, with KPUSH 2 through the reference configuration.
template <int N>
[[nodiscard]] Strain<N> mappedFlow(const MaterialPoint<N>& at, const Strain<N>& normal);

/// `MODAUX_R`: yield value and normals without hardening.
template <int N>
void MODAUX_R(const LawInput<N>& input, const Stress<N>& SIGMA, Normals normals, LawState& state, YieldState<N>& out);

/// `MODAUX`: the same with hardening (`PLVARI`) and multiplier (`PLFLOW`). plasticIncrement, startingKappa,
/// accumulates: see HardeningInput.
template <int N>
void MODAUX(const LawInput<N>& input, const Stress<N>& SIGMA, const Matrix<N>& D, Normals normals,
            const Strain<N>& plasticIncrement, double startingKappa, bool accumulates, LawState& state,
            YieldState<N>& out);

}  // namespace zema
