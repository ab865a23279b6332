// Residual pass and commit.
#include "analysis/residual.h"

#include "analysis/analysis.h"
#include "results/frequency_records.h"

namespace zema {

void RESIDU(Analysis& analysis) {
  constexpr int elementsOfABlock = 32;
  Model& model = analysis.model;
  analysis.kernel.IMPORTINFON1(model);
  analysis.job.workers.forEachBlock(model.mesh.NELEM(), elementsOfABlock, [&](int first, int last, int) {
    for (int e = first; e < last; ++e) {
      analysis.elementSums[static_cast<std::size_t>(e)] = analysis.kernel.RESIDU(model, e);
    }
  });
  EnergySums total;
  for (const EnergySums& sums : analysis.elementSums) {
    total += sums;
  }
  model.monitors.SDAMD = total.work;
  model.monitors.SDAMV = total.kappa;
  model.monitors.SVOLD = total.volume;
}

void FINISH(Analysis& analysis) {
  Model& model = analysis.model;
  Monitors& monitors = model.monitors;
  model.points.commit();
  if (model.increment.KFRES == 1 && model.control.KFREC == 1) {
    writeSecantRecords(analysis.job, model, analysis.kernel);
  }
  monitors.DISIG += monitors.SDAMD;
  if (monitors.SVOLD != 0.0) {
    monitors.DANEN = monitors.SDAMV / monitors.SVOLD;
  }
}

}  // namespace zema
