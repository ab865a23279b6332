// Balance of power and energy, and the two global measures of damage.
#include "results/monitors.h"

#include <array>
#include <cmath>
#include <numeric>
#include <span>
#include <vector>

#include "dynamics/element_matrices.h"
#include "foundation/parallel.h"
#include "results/result_profile.h"

namespace zema {
namespace {

/// Adds the vector of an element into a vector over all positions.
void scatter(const Model& model, int e, std::span<const double> ofElement, std::vector<double>& all) {
  const std::span<const int> positions = model.positions.of(e);
  for (std::size_t k = 0; k < positions.size(); ++k) all[static_cast<std::size_t>(positions[k])] += ofElement[k];
}

/// A vector over all positions.
std::vector<double> zeros(const Model& model) {
  std::vector<double> all(static_cast<std::size_t>(model.mesh.NTOTV), 0.0);
  return all;
}

double norm(const std::vector<double>& v) {
  return std::sqrt(std::inner_product(v.begin(), v.end(), v.begin(), 0.0));
}

/// A column of TDISP.
enum class Motion : int { velocity = 1, acceleration = 2 };

/// v^T A m over the degrees of freedom of an element, v the velocity, m the motion that A acts on.
double powerOf(const Model& model, int e, std::span<const double> A, Motion motion) {
  const std::span<const int> positions = model.positions.of(e);
  const std::size_t NTOTV = static_cast<std::size_t>(model.mesh.NTOTV);
  const double* const v = model.working.TDISP.data() + NTOTV;
  const double* const m = model.working.TDISP.data() + static_cast<std::size_t>(motion) * NTOTV;
  double power = 0.0;
  for (std::size_t i = 0; i < positions.size(); ++i) {
    double force = 0.0;
    for (std::size_t j = 0; j < positions.size(); ++j)
      force += A[i * positions.size() + j] * m[static_cast<std::size_t>(positions[j])];
    power += v[static_cast<std::size_t>(positions[i])] * force;
  }
  return power;
}

/// Power of the internal and the external forces on the velocities.
void formForcePowers(const Model& model, Monitors& monitors) {
  std::vector<double> external = zeros(model);
  std::vector<double> internal = zeros(model);
  for (int e = 0; e < model.mesh.NELEM(); ++e) {
    scatter(model, e, model.vectors.TLOAD(e), external);
    scatter(model, e, model.vectors.ELOAD(e, 2), internal);
  }
  const std::size_t NTOTV = static_cast<std::size_t>(model.mesh.NTOTV);
  const std::span<const double> velocity = std::span(model.working.TDISP).subspan(NTOTV, NTOTV);
  monitors.POTDEF = std::inner_product(velocity.begin(), velocity.end(), internal.begin(), 0.0);
  monitors.POTINT = std::inner_product(velocity.begin(), velocity.end(), external.begin(), 0.0);
}

/// Components of an element whose damping counts as dissipation: those of viscous laws have it in their stress.
int dissipatingComponents(const Model& model, const ElementData& element) {
  int count = 0;
  for (const Layer& layer : model.composites(element.MATNO[0]).layers) {
    for (const Component& component : layer.components)
      count += model.materials(component.LCPRO).NTINT != Law::viscoelasticDynamic ? 1 : 0;
  }
  return count;
}

/// Power of inertia, which the first-order form has none of, and of damping on the velocities.
void formTimePowers(const Model& model, const Kernel& kernel, WorkerPool& workers, Monitors& monitors) {
  constexpr int elementsOfABlock = 32;
  std::vector<std::array<double, 2>> powers(model.mesh.elements.size());
  workers.forEachBlock(model.mesh.NELEM(), elementsOfABlock, [&](int first, int last, int) {
    TimeMatrices matrices(model);
    for (int e = first; e < last; ++e) {
      matrices.form(model, kernel, e);
      powers[static_cast<std::size_t>(e)] = {powerOf(model, e, matrices.EMASA, Motion::acceleration),
                                             powerOf(model, e, matrices.EDAMP, Motion::velocity)};
    }
  });
  for (int e = 0; e < model.mesh.NELEM(); ++e) {
    const auto& [kinetic, damping] = powers[static_cast<std::size_t>(e)];
    monitors.POTCIN += model.loadStep.secondOrder() ? kinetic : 0.0;
    monitors.POTDIS += dissipatingComponents(model, model.mesh.element(e)) * damping;
  }
}

void writePowers(Channel& out, const Monitors& m) {
  static constexpr Layout lines{
      R"(72"-" / " Pot. deformativa           :" 2X F14.6 / " Pot. cinetica              :" 2X F14.6 /)"
      R"(" Pot. disipada              :" 2X F14.6 / " Pot. (def.)+(cin.)+(disip.):" 2X F14.6 /)"
      R"(" Pot. introducida           :" 2X F14.6 / " Energ. introducida         :" 2X F14.6 /)"
      R"(" Energ. disipada            :" 2X F14.6 / 72"-")"};
  out.write(lines, m.POTDEF, m.POTCIN, m.POTDIS, m.POTDEF + m.POTCIN + m.POTDIS, m.POTINT, m.ENEINT, m.ENEDIS);
}

}  // namespace

void MENERG(Job& job, Model& model, const Kernel& kernel) {
  Monitors& monitors = model.monitors;
  const double POTINT = monitors.POTINT;  // at the end of the increment before
  const double POTDIS = monitors.POTDIS;
  const double halfStep = model.increment.DTIME / 2.0;
  monitors.POTDEF = monitors.POTCIN = monitors.POTDIS = monitors.POTINT = 0.0;
  if (model.loadStep.dynamic()) {  // in a static one nothing moves, though velocities may be kept for a later step
    formForcePowers(model, monitors);
    formTimePowers(model, kernel, job.workers, monitors);
    monitors.ENEINT += halfStep * (monitors.POTINT + POTINT);
    monitors.ENEDIS += halfStep * (monitors.POTDIS + POTDIS);
  }
  if (model.mesh.elements.back().NTYPE < kernel.results().monitors.typesBelow) writePowers(job.listing(), monitors);
}

void DAMAGE(Job& job, Model& model, const Kernel& kernel) {
  std::vector<double> real = zeros(model);
  std::vector<double> predicted = zeros(model);
  for (int e = 0; e < model.mesh.NELEM(); ++e) {
    scatter(model, e, model.vectors.ELOAD(e, 2), real);
    scatter(model, e, model.vectors.ELOAD(e, 3), predicted);
  }
  Monitors& monitors = model.monitors;
  const double prediction = norm(predicted);
  monitors.DANFU = prediction != 0.0 ? 1.0 - norm(real) / prediction : 0.0;

  const MonitorProfile& profile = kernel.results().monitors;
  const bool listed = model.mesh.elements.back().NTYPE < profile.typesBelow;
  if (listed) {
    static constexpr Layout indices{
        R"("********  DANO GLOBAL -medida energetica--: " F15.6 / "********  DANO GLOBAL -medida en fuerza-- : " F15.6)"};
    job.listing().write(indices, monitors.DANEN, monitors.DANFU);
  }
  if (profile.damageForceFile && model.increment.KFRES == 1 && model.control.KFREC == 1 && monitors.DANFU > 0.0) {
    Channel file = Channel::open("Danyo.txt", OpenMode::append);
    file.line(FreeLine(monitors.DANFU));
    file.close();
  }
  if (listed) {
    static constexpr Layout dissipation{R"("********  DISIPACIÓN GLOBAL -medida energetica--:" F15.6)"};
    job.listing().write(dissipation, monitors.DISIG);
  }
}

}  // namespace zema
