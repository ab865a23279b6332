// The values that curves show.
#pragma once

#include <span>
#include <string_view>

#include "job/job.h"
#include "model/kernel.h"
#include "results/nodal_values.h"
#include "results/point_values.h"

namespace zema {

/// Fetches quantities of curves from the state at one output.
class CurveSource {
 public:
  CurveSource(const Job& job, const Model& model, const Kernel& kernel, StateSlot slot)
      : job_(job), model_(model), kernel_(kernel), slot_(slot), reactions_(model) {}

  /// `BUSCUR`: value of an axis. KDATS: its five parameters, as `INPCU` has tested them. Throws RunEnd for a node
  /// without reactions or an element without a point walk.
  [[nodiscard]] double BUSCUR(std::string_view axisWord, std::span<const int> KDATS) const;

 private:
  [[nodiscard]] double displacement(std::span<const int> KDATS) const;
  [[nodiscard]] double reaction(std::span<const int> KDATS) const;
  [[nodiscard]] double reactionSum(int dof) const;
  [[nodiscard]] double elementForce(std::span<const int> KDATS) const;
  [[nodiscard]] double tensorComponent(std::span<const int> KDATS, TensorOutput output) const;
  [[nodiscard]] double internalVariable(std::span<const int> KDATS) const;
  [[nodiscard]] PointRecord pointRecord(std::span<const int> KDATS) const;
  [[nodiscard]] int component(const ElementData& element, int layer, int place) const;
  void requireShape(const ElementData& element) const;

  const Job& job_;
  const Model& model_;
  const Kernel& kernel_;
  StateSlot slot_;
  Reactions reactions_;
};

}  // namespace zema
