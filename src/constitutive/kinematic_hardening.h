// The plastic law 3: isotropic and kinematic hardening, with a smooth onset of yield.
#pragma once

#include <string>

#include "constitutive/law.h"

namespace zema {

/// `ECUAC`: generalised plasticity with a von Mises-like surface whose centre is (2/3) slot 32 times the plastic
/// strain. With x the equivalent plastic strain of the step, G the shear modulus, de the deviatoric strain of the step,
/// F = Ftrial - (3 G + slot 32) x, Hk = slot 32 + INTVAR(5), m = slot 34 and
/// phi = (F - slot 7 - INTVAR(5) (kappa + x)) / Hk, it solves x = phi t / (m Hk / (3 G) + phi), t = s . de / Ftrial.
/// The stress stays above the surface by up to m Hk; m near 0 is the classical law. Elastic below the surface and when
/// s . de is not above 0. Throws ConstitutiveStop when Hk is 0. Literature: Lubliner (1991), Lubliner, Taylor &
/// Auricchio (1993).
template <int N>
void ECUAC(const LawInput<N>& input, LawState& state, LawResult<N>& result);

/// Throws InputFault for a material that `ECUAC` cannot work with. who: what the fault is about.
void checkGeneralisedPlasticity(const Material& material, const std::string& who);

}  // namespace zema
