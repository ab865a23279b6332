// The Kelvin-Voigt solid.
#include "constitutive/kelvin_voigt_law.h"

#include "constitutive/law_failure.h"

namespace zema {

template <int N>
void VISCOK(const LawInput<N>& input, LawState& state, LawResult<N>& result) {
  if (!input.at.pass.dynamic) {
    stopAtPoint(input.at, " >>> ERROR at VISCOK!! not for Static Cases",
                "Law 7 needs rates of strain: run a dynamic analysis, or take law 6.");
  }
  const double t = input.at.material(slot::relaxationTime);
  const Matrix<N> D = input.DMANX();
  const Strain<N> rate = input.VSTRAT();
  const Strain<N> change = rate - input.VSTRATT();
  const Stress<N> viscous = t * CALTEN(D, rate);
  result.SGTOT = CALTEN(D, input.STRAT()) + viscous;
  const double power = dot(t * CALTEN(D, change), change) + dot(viscous, rate);
  result.sums.work = input.at.pass.DTIME * 0.5 * input.at.geometry.dV * input.at.geometry.DETF * power;
  state.INTVAR[internal::elasticFlag] = 1.0;
}

template void VISCOK(const LawInput<4>&, LawState&, LawResult<4>&);
template void VISCOK(const LawInput<6>&, LawState&, LawResult<6>&);

}  // namespace zema
