// The standard solid.
#include "constitutive/viscoelastic_law.h"

#include <cmath>

#include "foundation/errors.h"

namespace zema {

template <int N>
Stress<N> relaxedStress(const LawInput<N>& input, double oldShare, double share) {
  const Material& material = input.at.material;
  const double E = material(slot::youngX), Ep = material(slot::parallelSpring), t = material(slot::relaxationTime);
  if (!(t > 0.0)) {
    throw ConstitutiveStop("  >>>> VISCOUS LAW: THE RELAXATION TIME MUST BE ABOVE ZERO", t, input.at.pass.DTIME,
                           "The numbers are the relaxation time (slot 50) and the time step.");
  }
  const double dt = input.at.pass.DTIME;
  const double a = std::exp(-dt / t);
  const double b = Ep * dt / (2.0 * E * t);
  Strain<N> w = (1.0 - b) * input.STRAT();
  w.add(-(1.0 + b) * a, input.STRANT());
  Stress<N> stress = share * CALTEN(input.DMANX(), w);
  stress.add(a * oldShare, input.PRESG);
  return stress;
}

template <int N>
void VISCOE(const LawInput<N>& input, LawState& state, LawResult<N>& result) {
  result.SGTOT = relaxedStress(input, 1.0, 1.0);
  state.INTVAR[internal::elasticFlag] = 1.0;
}

template Stress<4> relaxedStress(const LawInput<4>&, double, double);
template Stress<6> relaxedStress(const LawInput<6>&, double, double);
template void VISCOE(const LawInput<4>&, LawState&, LawResult<4>&);
template void VISCOE(const LawInput<6>&, LawState&, LawResult<6>&);

}  // namespace zema
