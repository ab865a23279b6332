// Matrices of an element in time: mass, Rayleigh damping, effective stiffness, and what an inactive element keeps.
#pragma once

#include <span>
#include <vector>

#include "model/kernel.h"

namespace zema {

class WorkerPool;

/// Mass and Rayleigh damping of one element, NEVAB x NEVAB by rows; room for the largest element of a model.
struct TimeMatrices {
  std::vector<double> EMASA;  ///< mass
  std::vector<double> EDAMP;  ///< Rayleigh damping, ALFAD mass + BETAD stiffness

  explicit TimeMatrices(const Model& model);
  /// Fills both for element e; an inactive element gets negligible ones.
  void form(const Model& model, const Kernel& kernel, int e);
};

/// `EQSTIF`: turns the stiffness of element e into the effective one of a time step: + A0 mass + A1 damping, in the
/// first-order form + damping / DTIME, with the damping of Rayleigh and of viscous materials.
void EQSTIF(const Model& model, const Kernel& kernel, int e, std::span<double> ESTIF);

/// With KMASS 1: evaluates the damping of all elements once, for the load step that begins.
void keepDamping(Model& model, const Kernel& kernel, WorkerPool& workers);

/// Multiplies a matrix by 1e-29 times its largest entry: what an inactive element keeps.
void soften(std::span<double> matrix);

}  // namespace zema
