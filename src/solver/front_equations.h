// The equations that have left the front: a block of them in memory, the others on work files.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "foundation/work_file.h"
#include "solver/front_matrix.h"

namespace zema {

/// Equations in the order of their elimination, in blocks of NBUFA. The block in hand is in memory; the equation file
/// holds one record a block, with the right-hand sides of the solve that made the equations, and the right-hand-side
/// file holds those of a later solve. Walk forward with `next`, close with `finish`, then backward with `previous`.
class FrontEquations {
 public:
  /// NFRMX: entries of an equation; NBUFA: equations of a block; path: beginning of the names of the work files.
  FrontEquations(int NFRMX, int NBUFA, FrontForm form, const std::string& path);

  /// How the equations are walked over.
  enum class Walk {
    make,  ///< they are formed anew
    reuse  ///< they are read again, with new right-hand sides
  };

  /// Goes to the start of the equations.
  void begin(Walk walk);
  /// Goes to the next equation: writes the block in hand when it is full; with reuse reads the next one.
  void next();
  /// Ends the forward walk; with make the last block goes to its file too.
  void finish();
  /// Goes to the last equation, then to the one before each time, reading blocks as needed; false when none is left.
  [[nodiscard]] bool previous();

  /// The blocks of the last walk that made equations, for a restart.
  [[nodiscard]] std::vector<double> save() const;
  /// Takes back what save() gave. Throws InputFault when the number of values does not fit.
  void restore(std::span<const double> values);

  /// The equation in hand.
  [[nodiscard]] FrontEquation equation();
  [[nodiscard]] double& EQRHS() { return EQRHS_[at()]; }          ///< its right-hand side
  [[nodiscard]] int& NAMEV() { return numbers_[at()]; }           ///< its variable, from 1
  [[nodiscard]] int& NPIVO() { return numbers_[NBUFA_ + at()]; }  ///< slot of its pivot

 private:
  [[nodiscard]] std::size_t at() const { return NBUFF_ - 1; }
  [[nodiscard]] std::size_t valuesOfABlock() const { return EQUAT_.size() + EQCOL_.size() + 3 * NBUFA_; }
  void writeBlock();
  void readBlock();

  std::size_t NFRMX_;
  std::size_t NBUFA_;
  Walk walk_ = Walk::make;
  std::size_t NBUFF_ = 0;      // number of the equation in hand within its block, from 1
  int block_ = 0;              // number of the block in hand, from 0
  int blocks_ = 0;             // blocks on the equation file
  std::vector<double> EQUAT_;  // NBUFA equations of NFRMX entries
  std::vector<double> EQCOL_;  // the same, empty in the symmetric form
  std::vector<double> EQRHS_;  // NBUFA
  std::vector<int> numbers_;   // NAMEV, then NPIVO, NBUFA each
  WorkFile equations_;
  WorkFile rightHandSides_;
};

}  // namespace zema
