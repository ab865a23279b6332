// Adds a correction to displacements, velocities and accelerations.
#pragma once

namespace zema {

struct Analysis;

/// `UPDAT`: adds the last correction to the displacements of the increment and to the total ones; in a dynamic load
/// step velocities and accelerations follow. Throws RunEnd for a time step of 0.
void UPDAT(Analysis& analysis);

}  // namespace zema
