// The plastic laws 8 and 10: backward Euler by Newton's method.
#pragma once

#include "constitutive/law.h"

namespace zema {

/// Where the derivatives of the flow vector come from.
enum class FlowDerivative { analytic, numerical };

/// The problem of a backward Euler step: a trial stress and the elastic matrix that it came by.
template <int N>
struct ReturnProblem {
  const Stress<N>& trial;
  const Matrix<N>& D;
  FlowDerivative derivative = FlowDerivative::analytic;
  const char* words = "";      ///< of the stop
  double fatigueFactor = 0.0;  ///< 0: formed from the trial stress
};

/// Returns a trial stress to the yield surface: s = trial - lambda D g(s), F(s) = K, by Newton's method on stress and
/// multiplier. The hardening variable is its value at the start of the call plus the increment of the whole step. The
/// tangent is by NMATX the continuous one (1) or the algorithmic one of the step. Literature: Simo & Hughes (1998),
/// Ortiz & Popov (1985).
template <int N>
void backwardEuler(const LawInput<N>& input, const ReturnProblem<N>& problem, LawState& state, LawResult<N>& result);

/// `ECUAD`: backward Euler with the second derivatives `PLY2DERI` of the potential.
template <int N>
void ECUAD(const LawInput<N>& input, LawState& state, LawResult<N>& result);
/// `ECUAF`: the same with derivatives by differences (`PLY2DENU`), for potentials with edges or curved meridians.
template <int N>
void ECUAF(const LawInput<N>& input, LawState& state, LawResult<N>& result);

}  // namespace zema
