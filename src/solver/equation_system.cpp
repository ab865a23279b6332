// Sizes of the equation system and the numbering of its free positions.
#include "solver/equation_system.h"

#include <algorithm>
#include <cassert>

namespace zema {

EquationSystem::EquationSystem(int positions, int columns) : NTOTV(positions), MBAND(columns) {
  const auto size = static_cast<std::size_t>(positions);
  IPERM.resize(size);
  FIXED.resize(size);
  FIXWO.resize(size);
  ASDIS.resize(size);
  DISPM.resize(size);
  ELOADG.resize(size);
}

void PERMUT(EquationSystem& system, std::span<const int> IFFIX) {
  assert(IFFIX.size() >= system.IPERM.size() && "a fixity for every position");
  system.NEQNS = 0;
  std::ranges::transform(IFFIX.first(system.IPERM.size()), system.IPERM.begin(),
                         [&system](int fixity) { return fixity == 0 ? ++system.NEQNS : 0; });
}

}  // namespace zema
