// The kernel of solids in space: linear tetrahedra and trilinear bricks.
#pragma once

#include <memory>

#include "model/kernel.h"

namespace zema {

/// The kernel of the words "MEC3D" and "ACOP3D": elements of NTYPE 6 with 4 or 8 nodes, three displacements a node,
/// small strain or total Lagrangian.
[[nodiscard]] std::unique_ptr<Kernel> makeSolid3D();

}  // namespace zema
