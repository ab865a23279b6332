// The analysis in hand: the problem, its kernel, its equations and its solver, as the loops pass them on.
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "job/job.h"
#include "model/kernel.h"
#include "solver/element_source.h"
#include "solver/equation_system.h"
#include "solver/solver.h"

namespace zema {

/// The model's elements as the solvers pull them: the kernel's stiffness, effective in time when the load step is
/// dynamic, negligible when the element is not active; the element loads of the model.
class ModelElements final : public ElementSource {
 public:
  ModelElements(const Model& model, const Kernel& kernel) : model_(model), kernel_(kernel) {}

  [[nodiscard]] int elements() const override { return model_.mesh.NELEM(); }
  [[nodiscard]] int largest() const override { return model_.vectors.NEVAB(); }
  [[nodiscard]] std::span<const int> positions(int e) const override { return model_.positions.of(e); }
  [[nodiscard]] std::span<const int> deckPositions(int e) const override { return model_.positions.inDeckOrder(e); }
  void form(int e, std::span<double> ESTIF) override;
  [[nodiscard]] std::span<const double> load(int e, RightHandSide side) const override;

 private:
  const Model& model_;
  const Kernel& kernel_;
};

/// Where a degree-of-freedom position first appears among the elements.
struct FirstHolder {
  int element = -1;  ///< from 0; -1 when no element holds the position
  int place = 0;     ///< place in the element's vectors, from 0
};

/// What the three loops work on.
struct Analysis {
  Job& job;
  Model& model;
  Kernel& kernel;
  ModelElements elements{model, kernel};
  EquationSystem equations{};
  std::unique_ptr<Solver> solver{};        ///< empty for a solver code that solves nothing
  std::vector<FirstHolder> firstHolder{};  ///< by position
  std::vector<double> STFOR{};             ///< sum of the internal forces, by position
  std::vector<double> TOFOR{};             ///< sum of the total loads, by position
  std::vector<EnergySums> elementSums{};   ///< energy sums of the last residual pass, by element
  double lastSync = 0.0;                   ///< when the restart file was last brought to the disk, seconds of the run
};

/// Makes the vectors by position that an analysis needs, once the mesh has been read.
void allocate(Analysis& analysis);

}  // namespace zema
