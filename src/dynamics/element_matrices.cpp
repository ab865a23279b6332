// Matrices of an element in time.
#include "dynamics/element_matrices.h"

#include <algorithm>

#include "dynamics/newmark.h"
#include "foundation/parallel.h"
#include "foundation/single_precision.h"

namespace zema {

namespace {

constexpr int keptOnce = 1;  // KMASS

std::size_t entries(const Model& model, int e) {
  const std::size_t NEVAB = model.positions.of(e).size();
  return NEVAB * NEVAB;
}

/// The part of element e in a store with room for the largest matrix for each element.
std::span<const double> keptPart(const Model& model, const std::vector<double>& kept, int e) {
  const std::size_t room = kept.size() / model.mesh.elements.size();
  return std::span(kept).subspan(static_cast<std::size_t>(e) * room, entries(model, e));
}

void addProduct(double factor, std::span<const double> part, std::span<double> sum) {
  for (std::size_t i = 0; i < part.size(); ++i) {
    sum[i] += factor * part[i];
  }
}

void scale(double factor, std::span<double> values) {
  for (double& value : values) {
    value *= factor;
  }
}

/// Rayleigh damping of element e, ALFAD mass + BETAD stiffness.
void DAMPM(const Model& model, const Kernel& kernel, int e, std::span<double> EDAMP) {
  const DynamicData& data = model.dynamics;
  if (data.BETAD != 0.0) {
    kernel.RIGI(model, e, EDAMP);
    scale(data.BETAD, EDAMP);
  } else {
    std::ranges::fill(EDAMP, 0.0);
  }
  if (data.ALFAD != 0.0) {
    kernel.addMass(model, e, data.ALFAD, EDAMP);
  }
}

}  // namespace

TimeMatrices::TimeMatrices(const Model& model) {
  const auto NEVAB = static_cast<std::size_t>(model.vectors.NEVAB());
  EMASA.resize(NEVAB * NEVAB);
  EDAMP.resize(NEVAB * NEVAB);
}

void TimeMatrices::form(const Model& model, const Kernel& kernel, int e) {
  const auto mass = std::span(EMASA).first(entries(model, e));
  const auto damping = std::span(EDAMP).first(entries(model, e));
  std::ranges::fill(mass, 0.0);
  kernel.addMass(model, e, 1.0, mass);
  if (model.dynamics.keptDamping.empty()) {
    DAMPM(model, kernel, e, damping);
  } else {
    std::ranges::copy(keptPart(model, model.dynamics.keptDamping, e), damping.begin());
  }
  if (!model.active(model.mesh.element(e))) {
    soften(mass);
    soften(damping);
  }
}

void EQSTIF(const Model& model, const Kernel& kernel, int e, std::span<double> ESTIF) {
  const DynamicData& data = model.dynamics;
  const Newmark factors = Newmark::of(model);
  const bool secondOrder = model.loadStep.secondOrder();
  const double damping = secondOrder ? factors.A1 : factors.A2;
  const double mass = secondOrder ? factors.A0 : 0.0;
  if (!data.keptDamping.empty()) {
    addProduct(damping, keptPart(model, data.keptDamping, e), ESTIF);
    addProduct(damping, keptPart(model, data.keptViscosity, e), ESTIF);
    kernel.addMass(model, e, mass, ESTIF);
    return;
  }
  // K + m M + c (ALFAD M + BETAD K + viscous matrix)
  scale(1.0 + damping * data.BETAD, ESTIF);
  kernel.addMass(model, e, mass + damping * data.ALFAD, ESTIF);
  kernel.addViscosity(model, e, damping, ESTIF);
}

void keepDamping(Model& model, const Kernel& kernel, WorkerPool& workers) {
  constexpr int elementsOfABlock = 32;
  DynamicData& data = model.dynamics;
  data.keptDamping.clear();
  data.keptViscosity.clear();
  if (model.control.KMASS != keptOnce) {
    return;
  }
  const auto NEVAB = static_cast<std::size_t>(model.vectors.NEVAB());
  const std::size_t room = NEVAB * NEVAB;
  std::vector<double> damping(model.mesh.elements.size() * room, 0.0);
  std::vector<double> viscosity = damping;
  workers.forEachBlock(model.mesh.NELEM(), elementsOfABlock, [&](int first, int last, int) {
    for (int e = first; e < last; ++e) {
      const std::size_t start = static_cast<std::size_t>(e) * room;
      DAMPM(model, kernel, e, std::span(damping).subspan(start, entries(model, e)));
      kernel.addViscosity(model, e, 1.0, std::span(viscosity).subspan(start, entries(model, e)));
    }
  });
  data.keptDamping = std::move(damping);
  data.keptViscosity = std::move(viscosity);
}

void soften(std::span<double> matrix) {
  constexpr double softness = single(1.0e-29F);
  scale(softness * *std::ranges::max_element(matrix), matrix);
}

}  // namespace zema
