// Hardening: the internal variable of the plastic laws, its curves, and what they make of the yield stress.
#pragma once

#include "constitutive/law.h"
#include "constitutive/yield_function.h"

namespace zema {

/// What the hardening of an evaluation is made from.
template <int N>
struct HardeningInput {
  const Stress<N>& SIGMA;             ///< stress of the evaluation
  const Strain<N>& plasticIncrement;  ///< plastic strain that the variable has not seen yet
  const Strain<N>& flow;              ///< flow vector g
  YieldValue yield;                   ///< at SIGMA, over the fatigue factor
  double startingKappa = 0.0;         ///< variable that the increment is added to
  bool accumulates = false;           ///< false: the variable stays as it is
};

/// `PLVARI`: advances the internal variable and writes places kappa, frictionAngle, dilatancyAngle, yieldStress,
/// hardening (the slope H) of INTVAR. By NHARD: 1, 4 plastic work (`PLCAPA`, `PLCAPA_B`), 2 strain by the shares of
/// tension and compression, 3 plastic strain. Throws ConstitutiveStop for curves that cannot be. Literature: Lubliner
/// et al. (1989).
template <int N>
void PLVARI(const MaterialPoint<N>& at, const HardeningInput<N>& input, LawState& state);

}  // namespace zema
