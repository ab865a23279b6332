// What the file of dynamic data says of a load step in time.
#pragma once

#include <array>
#include <vector>

namespace zema {

/// Time integration, damping and excitation of a dynamic load step; stays in force until the next one.
struct DynamicData {
  int KACEL = 0;       ///< 1: the excitation is an accelerogram; 0: a table of load factors
  int NFLEC = 0;       ///< rows of the table or of the accelerogram
  int NSTEP = 0;       ///< time steps
  int KLUMP = 0;       ///< 1: consistent mass; other: lumped mass
  double ALFAD = 0.0;  ///< Rayleigh damping: factor of the mass, 1 / time
  double BETAD = 0.0;  ///< Rayleigh damping: factor of the stiffness, time
  double BETAN = 0.0;  ///< Newmark beta
  double GAMMN = 0.0;  ///< Newmark gamma
  int KSAVE = 0;       ///< above 0: results at step 1 and at every KSAVE-th step; 0: the table says at which steps
  /// Table by columns, row i from 0 for time step i + 1. Columns 1 and 2: total load factors of the mechanical and the
  /// thermal field, or base accelerations along x and y. Column 3: not 0 where results are written.
  std::array<std::vector<double>, 3> FLEC;
  /// With KMASS 1: damping of the elements at the start of the load step, a square of NEVAB for each; Rayleigh damping,
  /// and the matrix of viscous materials. Otherwise empty.
  std::vector<double> keptDamping;
  std::vector<double> keptViscosity;
};

}  // namespace zema
