// The table of solution algorithms.
#include "analysis/algorithm.h"

#include <algorithm>

#include "analysis/analysis.h"

namespace zema {

namespace {

bool rebuilds(Algorithm algorithm, int INCRE, int IITER) {
  switch (algorithm) {
    case Algorithm::initialStiffness:
      return INCRE == 1 && IITER == 1;
    case Algorithm::newtonRaphson:
      return true;
    case Algorithm::modifiedNewton:
      return IITER == 1;
    case Algorithm::modifiedNewtonSecondIteration:
      return (INCRE == 1 && IITER == 1) || IITER == 2;
  }
  throw PlainStop("", " VARIABLE KRESL IS NOT WELL DEFINED.\n STOP IN SUBROUTINE :------ ALGORV3D\n");
}

}  // namespace

void ALGOR(Analysis& analysis) {
  LoopState& loop = analysis.model.loop;
  const auto algorithm = static_cast<Algorithm>(analysis.model.increment.KALGO);
  loop.KRESL = rebuilds(algorithm, loop.INCRE, loop.IITER) ? 1 : 2;
  if (loop.IITER > 1) {
    std::fill(analysis.equations.FIXED.begin(), analysis.equations.FIXED.end(), 0.0);
  }
}

}  // namespace zema
