// The model's elements as solvers see them, and the vectors of an analysis.
#include "analysis/analysis.h"

#include "dynamics/element_matrices.h"

namespace zema {

namespace {

std::vector<FirstHolder> findFirstHolders(const Model& model) {
  std::vector<FirstHolder> holders(static_cast<std::size_t>(model.mesh.NTOTV));
  for (int e = model.mesh.NELEM() - 1; e >= 0; --e) {
    const std::span<const int> positions = model.positions.of(e);
    for (std::size_t k = positions.size(); k-- > 0;) {
      holders[static_cast<std::size_t>(positions[k])] = {e, static_cast<int>(k)};
    }
  }
  return holders;
}

}  // namespace

void ModelElements::form(int e, std::span<double> ESTIF) {
  ESTIF = ESTIF.first(positions(e).size() * positions(e).size());
  kernel_.RIGI(model_, e, ESTIF);
  if (model_.loadStep.dynamic()) {
    EQSTIF(model_, kernel_, e, ESTIF);
  }
  if (!model_.active(model_.mesh.element(e))) {
    soften(ESTIF);
  }
}

std::span<const double> ModelElements::load(int e, RightHandSide side) const {
  const std::span<const double> all =
      side == RightHandSide::outOfBalance ? model_.vectors.ELOAD(e, 1) : model_.vectors.RLOAD(e, 1);
  return all.first(positions(e).size());
}

void allocate(Analysis& analysis) {
  const auto NTOTV = static_cast<std::size_t>(analysis.model.mesh.NTOTV);
  analysis.equations = EquationSystem(analysis.model.mesh.NTOTV);
  analysis.firstHolder = findFirstHolders(analysis.model);
  analysis.STFOR.assign(NTOTV, 0.0);
  analysis.TOFOR.assign(NTOTV, 0.0);
  analysis.elementSums.assign(static_cast<std::size_t>(analysis.model.mesh.NELEM()), {});
  analysis.model.displacements.DDISP.assign(3 * NTOTV, 0.0);
  for (FieldState* state : {&analysis.model.working, &analysis.model.mechanical}) {
    state->FIXEM.assign(NTOTV, 0.0);
    state->IFFIX.assign(NTOTV, 1);
    state->IFFIXbefore.assign(NTOTV, 1);
    state->TDISP.assign(3 * NTOTV, 0.0);
    state->FACTO = 0.0;
  }
}

}  // namespace zema
