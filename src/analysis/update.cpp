// Static update: displacements only.
#include "analysis/update.h"

#include "analysis/analysis.h"

namespace zema {

void UPDAT(Analysis& analysis) {
  const std::vector<double>& correction = analysis.equations.ASDIS;
  std::vector<double>& DDISP = analysis.model.displacements.DDISP;
  std::vector<double>& TDISP = analysis.model.working.TDISP;
  for (std::size_t i = 0; i < correction.size(); ++i) {
    DDISP[i] += correction[i];
    TDISP[i] += correction[i];
  }
}

}  // namespace zema
