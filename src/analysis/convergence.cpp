// The convergence test.
#include "analysis/convergence.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "analysis/analysis.h"
#include "foundation/single_precision.h"

namespace zema {

namespace {

constexpr Layout starLine(R"(5X 34("* "))");

/// A sum of squares in the numerator and the denominator of the ratio, and the largest entry.
struct Measure {
  double NUM = 0.0;
  double DEN = 0.0;
  double REMAX = 0.0;

  void add(double difference, double reference) {
    NUM += difference * difference;
    DEN += reference * reference;
    const double size = std::abs(difference);
    REMAX = size > REMAX || std::isnan(size) ? size : REMAX;
  }
};

/// Visits every degree of freedom of every element, in element order: position, internal force, total load.
template <class Visit>
void forEachForce(const Model& model, Visit visit) {
  for (int e = 0; e < model.mesh.NELEM(); ++e) {
    const std::span<const int> positions = model.positions.of(e);
    const std::span<const double> internalForce = model.vectors.ELOAD(e, 1);
    const std::span<const double> totalLoad = model.vectors.TLOAD(e);
    for (std::size_t k = 0; k < positions.size(); ++k) {
      visit(static_cast<std::size_t>(positions[k]), internalForce[k], totalLoad[k]);
    }
  }
}

void sumForces(Analysis& analysis) {
  std::fill(analysis.STFOR.begin(), analysis.STFOR.end(), 0.0);
  std::fill(analysis.TOFOR.begin(), analysis.TOFOR.end(), 0.0);
  forEachForce(analysis.model, [&](std::size_t i, double internalForce, double totalLoad) {
    analysis.STFOR[i] += internalForce;
    analysis.TOFOR[i] += totalLoad;
  });
}

Measure measureForces(const Analysis& analysis) {
  Measure measure;
  for (std::size_t i = 0; i < analysis.TOFOR.size(); ++i) {
    measure.add(analysis.TOFOR[i] - analysis.STFOR[i], analysis.TOFOR[i]);
  }
  return measure;
}

Measure measureDisplacements(const Analysis& analysis) {
  Measure measure;
  for (std::size_t i = 0; i < analysis.equations.ASDIS.size(); ++i) {
    measure.add(analysis.equations.ASDIS[i], analysis.model.working.TDISP[i]);
  }
  return measure;
}

void formNextRightHandSide(Model& model) {
  for (int e = 0; e < model.mesh.NELEM(); ++e) {
    const std::span<double> ELOAD = model.vectors.ELOAD(e, 1);
    const std::span<const double> TLOAD = model.vectors.TLOAD(e);
    std::transform(TLOAD.begin(), TLOAD.end(), ELOAD.begin(), ELOAD.begin(), std::minus<>());
  }
}

void warnOfZeroForces(Analysis& analysis) {
  Channel& listing = analysis.job.listing();
  listing.blank(2);
  listing.write(starLine);
  listing.blank(2);
  listing.line(std::string(25, ' ') + "WARNING: TOTAL FORCES EQUAL            CERO :");
  listing.blank();
  listing.blank(2);
  listing.write(starLine);
}

void setConvergenceCode(Analysis& analysis) {
  constexpr int notYet = 1;
  constexpr int worse = 999;
  LoopState& loop = analysis.model.loop;
  loop.KCONV = 0;
  if (!(loop.RATIO <= analysis.model.increment.TOLER)) {
    loop.KCONV = notYet;
  }
  if (loop.IITER != 1 && loop.RATIO > loop.lastRatio) {
    loop.KCONV = worse;
  }
  loop.lastRatio = loop.RATIO;
  if (loop.RATIO < loop.bestRatio) {
    loop.bestRatio = loop.RATIO;
    loop.bestIteration = loop.IITER;
  }
}

void writeIterationBlock(Channel& channel, const LoopState& loop) {
  static constexpr Layout block(
      R"(" ---------" / "0" 1X "IITER.=" I3 2X "COD. DE CONVERG.=" I4 4X "RELAC. DE NORM. RESIDUAL=" F14.6 / )"
      R"(25X "RESIDUO MAXIMO  =" F14.6)");
  channel.write(block, loop.IITER, loop.KCONV, loop.RATIO, loop.REMAX);
}

[[noreturn]] void stopWithoutConvergence(Channel& listing, const LoopState& loop) {
  static constexpr Layout bestLine(R"(" ---> NO HAY CONVERGENCIA <-- minima norma= " F14.6 2X "iteracion=" I5)");
  if (loop.bestIteration > 0) {
    listing.write(bestLine, loop.bestRatio, loop.bestIteration);
  }
  writeIterationBlock(listing, loop);
  throw RunEnd(" >>>>  DETENIDO en CONVER POR FALTA DE CONVERGENCIA ", 0.0, 0.0);
}

/// The first position at which a force or a displacement is not finite; NTOTV when all are.
std::size_t firstNotFinite(const Analysis& analysis) {
  const std::size_t NTOTV = analysis.TOFOR.size();
  for (std::size_t i = 0; i < NTOTV; ++i) {
    if (!std::isfinite(analysis.TOFOR[i] - analysis.STFOR[i]) || !std::isfinite(analysis.model.working.TDISP[i])) {
      return i;
    }
  }
  return NTOTV;
}

[[noreturn]] void stopNotFinite(Analysis& analysis) {
  const std::string text =
      "the solution is not finite " + describePosition(analysis.model.mesh, firstNotFinite(analysis));
  analysis.job.console.warn(text);
  analysis.job.listing().line(" ---> " + text);
  stopWithoutConvergence(analysis.job.listing(), analysis.model.loop);
}

void measure(Analysis& analysis) {
  constexpr double smallestDenominator = single(1.0e-12F);
  constexpr double ratioOfNothing = 1.0e-12;
  LoopState& loop = analysis.model.loop;
  sumForces(analysis);
  Measure result = measureForces(analysis);
  if (std::sqrt(result.DEN) <= analysis.model.increment.TOLER) {
    result = measureDisplacements(analysis);
  }
  formNextRightHandSide(analysis.model);
  loop.REMAX = result.REMAX;
  const double reference = std::sqrt(result.DEN);
  if (reference > smallestDenominator || !std::isfinite(result.NUM) || !std::isfinite(reference)) {
    loop.RATIO = 100.0 * std::sqrt(result.NUM) / reference;
  } else {
    loop.RATIO = ratioOfNothing;
    warnOfZeroForces(analysis);
  }
}

void addReaction(Analysis& analysis, std::size_t position, double reaction) {
  const FirstHolder& holder = analysis.firstHolder[position];
  if (holder.element >= 0) {
    analysis.model.vectors.TLOAD(holder.element)[static_cast<std::size_t>(holder.place)] += reaction;
  }
}

/// Adds the reactions of the iteration to the rows of the fixed nodes.
void accumulateReactions(Analysis& analysis) {
  const Mesh& mesh = analysis.model.mesh;
  const std::vector<int>& NOFIX = analysis.model.working.NOFIX;
  for (std::size_t row = 0; row < NOFIX.size(); ++row) {
    const DeckNode node{NOFIX[row]};
    for (int d = 0; d < mesh.dofsOf(node); ++d) {
      const auto position = static_cast<std::size_t>(mesh.firstPosition(node) + d);
      analysis.model.fixities.TREACM[row * static_cast<std::size_t>(mesh.MDOFN) + static_cast<std::size_t>(d)] +=
          analysis.equations.FIXED[position];
    }
  }
}

}  // namespace

void REACT(Analysis& analysis) {
  const Model& model = analysis.model;
  const std::vector<int>& IFFIX = model.working.IFFIX;
  std::vector<double>& FIXED = analysis.equations.FIXED;
  std::fill(FIXED.begin(), FIXED.end(), 0.0);
  forEachForce(model, [&](std::size_t i, double internalForce, double totalLoad) {
    if (IFFIX[i] > 0) {
      FIXED[i] += internalForce - totalLoad;
    }
  });
  accumulateReactions(analysis);
  for (std::size_t i = 0; i < FIXED.size(); ++i) {
    if (IFFIX[i] > 0) {
      addReaction(analysis, i, FIXED[i]);
    }
  }
}

void CONVER(Analysis& analysis) {
  static constexpr Layout convergedLine("2I5");
  Job& job = analysis.job;
  LoopState& loop = analysis.model.loop;
  REACT(analysis);
  measure(analysis);
  setConvergenceCode(analysis);
  if (analysis.model.increment.NOUTP[3] == 1) {
    writeIterationBlock(job.channels[channel::iterations], loop);
  }
  if (!std::isfinite(loop.RATIO) || !std::isfinite(loop.REMAX)) {
    stopNotFinite(analysis);
  }
  if (loop.KCONV == 0) {
    writeIterationBlock(job.listing(), loop);
    job.listing().write(convergedLine, loop.INCRE, loop.IITER);
  } else if (loop.IITER >= analysis.model.increment.MITER) {
    stopWithoutConvergence(job.listing(), loop);
  }
}

}  // namespace zema
