// Band widths of a mesh: how they are found, reported and checked.
#pragma once

#include "solver/element_source.h"
#include "solver/equation_system.h"
#include "solver/solver_code.h"

namespace zema {

class Channel;

/// What the band is checked against.
struct BandLimits {
  SolverCode NSOLV{};       ///< the solver in use
  bool renumbered = false;  ///< KRENU = 1: nodes were renumbered
  int allowedGrants = 1;    ///< with band LU, 2 NBAND may reach this many times MBAND (100 for plane solids and shells)
};

/// Sets MBAND = 2 m + 5, where m is the largest value of NBAND + IPERM(q) - IPERM(p) over the free positions p, q of
/// all elements, with the NBAND that the system holds at the call: 0 in the first load step when the band numbers
/// come after it, the band of the load step before in later ones.
void EVALMBANDA(const ElementSource& source, EquationSystem& system);

/// Finds NBAND, NBAN0 and NBAN1 anew from the current IPERM, writes them on the listing with the last element that
/// reaches each, and stops the run with RunEnd if a limit is passed.
void CALC_NBA(const ElementSource& source, EquationSystem& system, const BandLimits& limits, Channel& listing);

}  // namespace zema
