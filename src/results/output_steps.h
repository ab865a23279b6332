// Which increments of a load step leave results.
#pragma once

#include "model/model.h"

namespace zema {

/// Whether the third column of the load table (`FLEC`) asks for results at the current increment.
[[nodiscard]] inline bool loadTableAsksForResults(const Model& model) {
  const std::size_t row = static_cast<std::size_t>(model.loop.INCRE - 1);
  const std::vector<double>& selection = model.dynamics.FLEC[2];
  return row < selection.size() && selection[row] != 0.0;
}

/// Whether the load step has time-dependent data: a reference time of cyclic loading was given.
[[nodiscard]] inline bool timeDependent(const Model& model) {
  return model.loadStep.TCYCL != 0.0;
}

}  // namespace zema
