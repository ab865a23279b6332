// Inertia and damping forces of a time step, and the load of a base acceleration.
#pragma once

#include "model/kernel.h"

namespace zema {

class WorkerPool;

/// `EQFOR0`: effective load at the start of a time step, into column 1 of ELOAD: TLOAD - internal forces (column 2),
/// and with the second-order form + mass (C0 v + C1 a) - damping (C2 v + C3 a). Viscous materials carry their damping
/// in the internal forces, so only that of Rayleigh counts. Throws RunEnd for a time step of 0.
void EQFOR0(Model& model, const Kernel& kernel, WorkerPool& workers);

/// `EQFOR1`: adds inertia and Rayleigh damping forces to the internal forces in column 1 of ELOAD.
void EQFOR1(Model& model, const Kernel& kernel, WorkerPool& workers);

/// `FMASIC`: makes the load of this increment, column 1 of RLOAD, from the accelerogram: mass times the increment of
/// the base acceleration along x and y.
void FMASIC(Model& model, const Kernel& kernel);

}  // namespace zema
