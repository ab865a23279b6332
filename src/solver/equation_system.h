// What every solver gets and gives back: equation numbers, prescribed values, right-hand side, result, band numbers.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "solver/element_source.h"

namespace zema {

/// The global system by degree-of-freedom positions (indexed from 0) and equations (numbered from 1).
struct EquationSystem {
  /// All vectors at `positions` entries, cleared; columns: MBAND before the first EVALMBANDA.
  explicit EquationSystem(int positions = 0, int columns = 0);

  int NTOTV;      ///< degree-of-freedom positions of the mesh
  int NEQNS = 0;  ///< free equations, the largest value in IPERM

  std::vector<int> IPERM;      ///< equation number of each position, 1..NEQNS, 0 for a fixed one; NTOTV
  std::vector<double> FIXED;   ///< prescribed motion of the iteration, by position; NTOTV
  std::vector<double> FIXWO;   ///< prescribed motion that goes with the reference load, by position; NTOTV
  std::vector<double> ASDIS;   ///< last correction, by position: result for the out-of-balance load; NTOTV
  std::vector<double> DISPM;   ///< solution for the reference load, by position; NTOTV
  std::vector<double> ELOADG;  ///< right-hand side, then solution, by equation number - 1; NTOTV, NEQNS used

  double TOLER = 0.0;  ///< relative residual that an iterative solver is to reach

  int NBAND = 0;  ///< band width of the equations: 1 + largest distance of two free equations of one element
  int NBAN0 = 0;  ///< 1 + largest distance of two positions of one element in the deck's numbering
  int NBAN1 = 0;  ///< 1 + largest distance of two positions of one element in the working numbering
  int MBAND;      ///< columns granted to the band store, against which the band is checked

  /// Prescribed values that belong to a right-hand side: FIXED or FIXWO.
  [[nodiscard]] const std::vector<double>& prescribed(RightHandSide side) const {
    return side == RightHandSide::outOfBalance ? FIXED : FIXWO;
  }

  /// Result vector that belongs to a right-hand side: ASDIS or DISPM.
  [[nodiscard]] std::vector<double>& result(RightHandSide side) {
    return side == RightHandSide::outOfBalance ? ASDIS : DISPM;
  }
  [[nodiscard]] const std::vector<double>& result(RightHandSide side) const {
    return side == RightHandSide::outOfBalance ? ASDIS : DISPM;
  }
};

/// Numbers the free positions in ascending order: fills IPERM and NEQNS.
/// IFFIX: at least NTOTV entries, not 0 for a fixed position.
void PERMUT(EquationSystem& system, std::span<const int> IFFIX);

}  // namespace zema
