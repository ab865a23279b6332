// Tensors of the point records as the results show them.
#pragma once

#include <array>
#include <span>

#include "model/kernel.h"
#include "results/result_profile.h"

namespace zema {

/// A record of the point store and the point that it belongs to.
struct PointRecord {
  StateSlot slot = StateSlot::committed;
  int e = 0;          ///< element, from 0
  PointIndex point;   ///< its place in the point loops
  int number = 0;     ///< its number in the point store
  int component = 0;  ///< 0 the composite as a whole, else LOCMA of a simple material
};

/// Room for the components of a tensor in any kernel; `outputTensor` says how many count.
using TensorRoom = std::array<double, 12>;

/// The tensor of a record in the measure that the results show; the returned span lies in `room`.
[[nodiscard]] std::span<double> outputTensor(const Model& model, const Kernel& kernel, const PointRecord& record,
                                             TensorOutput output, TensorRoom& room);

/// The layers' components of a composite, each with its layer and its place in the layer (from 1).
struct LayerComponent {
  int layer;
  int place;
  int LOCMA;  ///< component number in the point store
};
[[nodiscard]] std::vector<LayerComponent> componentsOf(const Composite& composite);

}  // namespace zema
