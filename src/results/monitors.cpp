// Balance of power and energy, and the two global measures of damage.
#include "results/monitors.h"

#include <cmath>
#include <numeric>
#include <span>
#include <vector>

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
  formForcePowers(model, monitors);
  monitors.POTCIN = 0.0;  // without velocities neither mass nor damping has power
  monitors.POTDIS = 0.0;
  monitors.ENEINT += halfStep * (monitors.POTINT + POTINT);
  monitors.ENEDIS += halfStep * (monitors.POTDIS + POTDIS);
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
