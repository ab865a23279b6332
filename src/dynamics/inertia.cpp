// Inertia and damping forces.
#include "dynamics/inertia.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "dynamics/element_matrices.h"
#include "dynamics/newmark.h"
#include "foundation/parallel.h"

namespace zema {

namespace {

constexpr std::size_t at(int i) {
  return static_cast<std::size_t>(i);
}

/// forces += factor A x
void addProduct(double factor, std::span<const double> A, std::span<const double> x, std::span<double> forces) {
  for (std::size_t i = 0; i < forces.size(); ++i) {
    const std::span<const double> row = A.subspan(i * x.size(), x.size());
    double sum = 0.0;
    for (std::size_t j = 0; j < x.size(); ++j) {
      sum += row[j] * x[j];
    }
    forces[i] += factor * sum;
  }
}

/// Calls force(e, ELOAD, matrices, motion) for every element, on the worker threads. ELOAD: column 1; motion: room for
/// values at its degrees of freedom.
template <class Force>
void forEachElement(Model& model, WorkerPool& workers, const Force& force) {
  constexpr int elementsOfABlock = 32;
  workers.forEachBlock(model.mesh.NELEM(), elementsOfABlock, [&](int first, int last, int) {
    TimeMatrices matrices(model);
    std::vector<double> motion(at(model.vectors.NEVAB()));
    for (int e = first; e < last; ++e) {
      const std::size_t NEVAB = model.positions.of(e).size();
      force(e, model.vectors.ELOAD(e, 1).first(NEVAB), matrices, std::span(motion).first(NEVAB));
    }
  });
}

/// motion = velocity v + acceleration a at the degrees of freedom of an element
void gather(const Model& model, int e, double velocity, double acceleration, std::span<double> motion) {
  const std::span<const int> positions = model.positions.of(e);
  const std::size_t NTOTV = at(model.mesh.NTOTV);
  const double* const v = model.working.TDISP.data() + NTOTV;
  const double* const a = v + NTOTV;
  for (std::size_t k = 0; k < motion.size(); ++k) {
    const std::size_t position = at(positions[k]);
    motion[k] = velocity * v[position] + acceleration * a[position];
  }
}

/// Increment of a column of the accelerogram in time step INCRE; rows behind its end are 0.
double incrementOf(const DynamicData& data, std::size_t column, int INCRE) {
  const auto row = [&](int number) {
    return number >= 1 && number <= data.NFLEC ? data.FLEC[column][at(number - 1)] : 0.0;
  };
  return row(INCRE) - row(INCRE - 1);
}

}  // namespace

void EQFOR0(Model& model, const Kernel& kernel, WorkerPool& workers) {
  const Newmark factors = Newmark::of(model);
  forEachElement(model, workers, [&](int e, std::span<double> ELOAD, TimeMatrices& matrices, std::span<double> motion) {
    const std::span<const double> internal = model.vectors.ELOAD(e, 2);
    const std::span<const double> total = model.vectors.TLOAD(e);
    for (std::size_t k = 0; k < ELOAD.size(); ++k) {
      ELOAD[k] = total[k] - internal[k];
    }
    if (!model.loadStep.secondOrder()) {
      return;
    }
    matrices.form(model, kernel, e);
    gather(model, e, factors.C0, factors.C1, motion);
    addProduct(1.0, matrices.EMASA, motion, ELOAD);
    gather(model, e, factors.C2, factors.C3, motion);
    addProduct(-1.0, matrices.EDAMP, motion, ELOAD);
  });
}

void EQFOR1(Model& model, const Kernel& kernel, WorkerPool& workers) {
  const bool secondOrder = model.loadStep.secondOrder();
  forEachElement(model, workers, [&](int e, std::span<double> ELOAD, TimeMatrices& matrices, std::span<double> motion) {
    matrices.form(model, kernel, e);
    if (secondOrder) {
      gather(model, e, 0.0, 1.0, motion);
      addProduct(1.0, matrices.EMASA, motion, ELOAD);
    }
    gather(model, e, 1.0, 0.0, motion);
    addProduct(1.0, matrices.EDAMP, motion, ELOAD);
  });
}

void FMASIC(Model& model, const Kernel& kernel) {
  const std::array<double, 2> base{incrementOf(model.dynamics, 0, model.loop.INCRE),
                                   incrementOf(model.dynamics, 1, model.loop.INCRE)};
  std::vector<double> EMASA(at(model.vectors.NEVAB()) * at(model.vectors.NEVAB()));
  for (int e = 0; e < model.mesh.NELEM(); ++e) {
    const std::span<double> RLOAD = model.vectors.RLOAD(e, 1);
    std::ranges::fill(RLOAD, 0.0);
    const ElementData& element = model.mesh.element(e);
    if (!model.active(element)) {
      continue;  // what is not there is not accelerated
    }
    const std::size_t NEVAB = model.positions.of(e).size();
    const std::size_t NDOFN = NEVAB / at(element.NNODE);
    std::ranges::fill(EMASA, 0.0);
    kernel.addMass(model, e, 1.0, std::span(EMASA).first(NEVAB * NEVAB));
    for (std::size_t k = 0; k < NEVAB; ++k) {
      if (k % NDOFN < base.size()) {
        const std::span<const double> row = std::span(EMASA).subspan(k * NEVAB, NEVAB);
        double sum = 0.0;
        for (const double value : row) {
          sum += value;
        }
        RLOAD[k] = base[k % NDOFN] * sum;
      }
    }
  }
}

}  // namespace zema
