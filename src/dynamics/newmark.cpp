// Coefficients of the time integration.
#include "dynamics/newmark.h"

#include "input/dynamic_cards.h"

namespace zema {

Newmark Newmark::of(const Model& model) {
  const double DTIME = model.increment.DTIME;
  requireTimeStep(DTIME);
  Newmark factors;
  factors.A2 = 1.0 / DTIME;
  if (!model.loadStep.secondOrder()) {
    return factors;
  }
  const double BETAN = model.dynamics.BETAN;
  const double GAMMN = model.dynamics.GAMMN;
  factors.A0 = 1.0 / (BETAN * DTIME * DTIME);
  factors.A1 = factors.A0 * GAMMN * DTIME;
  factors.C0 = 1.0 / (BETAN * DTIME);
  factors.C1 = 1.0 / (2.0 * BETAN) - 1.0;
  factors.C2 = 1.0 - GAMMN / BETAN;
  factors.C3 = (1.0 - GAMMN / (2.0 * BETAN)) * DTIME;
  return factors;
}

}  // namespace zema
