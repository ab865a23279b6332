// Displacements and reactions of nodes.
#include "results/nodal_values.h"

namespace zema {

std::span<const double> nodalMotion(const Model& model, DeckNode node, int column) {
  const std::size_t first = static_cast<std::size_t>(column - 1) * static_cast<std::size_t>(model.mesh.NTOTV) +
                            static_cast<std::size_t>(model.mesh.firstPosition(node));
  return std::span(model.working.TDISP).subspan(first, static_cast<std::size_t>(model.mesh.dofsOf(node)));
}

Reactions::Reactions(const Model& model)
    : values_(model.fixities.TREACM),
      width_(static_cast<std::size_t>(model.mesh.MDOFN)),
      firstRow_(static_cast<std::size_t>(model.mesh.NPOIN()), -1) {
  const std::vector<int>& NOFIX = model.working.NOFIX;
  for (std::size_t row = NOFIX.size(); row-- > 0;)
    firstRow_[static_cast<std::size_t>(NOFIX[row] - 1)] = static_cast<int>(row);
}

std::span<const double> Reactions::of(DeckNode node) const {
  return values_.subspan(static_cast<std::size_t>(rowOf(node)) * width_, width_);
}

}  // namespace zema
