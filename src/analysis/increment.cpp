// An increment adds its share of the load to the residual and to the total load of every element.
#include "analysis/increment.h"

#include <algorithm>
#include <cmath>

#include "analysis/analysis.h"
#include "dynamics/inertia.h"
#include "foundation/single_precision.h"
#include "input/increment_cards.h"
#include "job/time_lines.h"

namespace zema {

namespace {

void advanceTime(Model& model) {
  LoadStep& step = model.loadStep;
  const double DTIME = model.increment.DTIME;
  model.loop.TTIME += DTIME;
  if (step.TCYCL != 0.0 && DTIME != 0.0) {
    step.NCYCL += step.TEXPO / model.loop.TTIME * DTIME * std::pow(model.loop.TTIME / step.TCYCL, step.TEXPO);
  }
}

void addLoads(Model& model) {
  const double DFACT = model.increment.DFACT;
  const bool first = model.loop.ILOAD == 1 && model.loop.INCRE == 1;
  for (int e = 0; e < model.mesh.NELEM(); ++e) {
    const std::span<const double> RLOAD = model.vectors.RLOAD(e, 1);
    const std::span<double> ELOAD = model.vectors.ELOAD(e, 1);
    const std::span<double> TLOAD = model.vectors.TLOAD(e);
    const std::span<const double> initial = first ? model.vectors.initialLoad(e) : std::span<double>();
    for (std::size_t k = 0; k < RLOAD.size(); ++k) {
      const double load = DFACT * RLOAD[k] + (initial.empty() ? 0.0 : initial[k]);
      ELOAD[k] += load;
      TLOAD[k] += load;
    }
  }
}

void startDisplacements(Analysis& analysis) {
  const auto NTOTV = static_cast<std::ptrdiff_t>(analysis.model.mesh.NTOTV);
  std::vector<double>& DDISP = analysis.model.displacements.DDISP;
  std::fill(DDISP.begin(), DDISP.begin() + NTOTV, 0.0);
  std::transform(analysis.model.working.FIXEM.begin(), analysis.model.working.FIXEM.end(),
                 analysis.equations.FIXED.begin(),
                 [DFACT = analysis.model.increment.DFACT](double value) { return value * DFACT; });
}

}  // namespace

bool INCREM(Analysis& analysis) {
  constexpr double worstRatio = single(1.0e30F);
  Model& model = analysis.model;
  MAKINA(analysis.job, ClockTask::timeLine);
  model.loop.bestRatio = worstRatio;
  model.loop.bestIteration = 0;
  if (!readIncrementCard(analysis.job, model, analysis.kernel)) {
    return false;
  }
  advanceTime(model);
  if (model.loadStep.dynamic()) {
    model.increment.KARCL = 0;
    model.increment.DFACT = model.working.FACTD[static_cast<std::size_t>(model.loop.INCRE - 1)];
    if (model.dynamics.KACEL == 1) {
      FMASIC(model, analysis.kernel);
    }
  }
  model.working.FACTO += model.increment.DFACT;
  echoIncrement(analysis.job, model);
  addLoads(model);
  startDisplacements(analysis);
  return true;
}

}  // namespace zema
