// The state of a material before anything has happened to it.
#pragma once

#include <array>

#include "database/point_store.h"
#include "model/materials.h"

namespace zema {

/// The 16 internal variables with which a point of the material starts.
[[nodiscard]] std::array<double, internal::count> initialInternalVariables(const Material& material);

}  // namespace zema
