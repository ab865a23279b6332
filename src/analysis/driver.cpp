// The driver: reads the model, then load steps, increments and iterations until the deck's work is done.
#include "analysis/driver.h"

#include <algorithm>
#include <numeric>
#include <string>

#include "analysis/algorithm.h"
#include "analysis/analysis.h"
#include "analysis/arc_length.h"
#include "analysis/convergence.h"
#include "analysis/field_swap.h"
#include "analysis/increment.h"
#include "analysis/renumbering.h"
#include "analysis/residual.h"
#include "analysis/restart.h"
#include "analysis/solving.h"
#include "analysis/update.h"
#include "dynamics/element_matrices.h"
#include "dynamics/inertia.h"
#include "input/fixity_cards.h"
#include "input/load_cards.h"
#include "input/mesh_cards.h"
#include "job/head.h"
#include "job/time_lines.h"
#include "results/frequency_records.h"
#include "results/listing.h"
#include "results/monitors.h"
#include "results/post_files.h"
#include "solver/band_numbers.h"

namespace zema {

namespace {

/// How an increment, a load step or the run goes on.
enum class Next { goOn, endOfDeck, endOfRun };

/// Runs a phase and adds the time that it took; a phase that a stop cuts short is not counted.
template <class Phase>
void timed(Job& job, double& total, Phase&& phase) {
  const double start = job.clock.TIMUSE();
  phase();
  const double end = job.clock.TIMUSE();
  job.clock.CPUTIM(start, end);
  total += end - start;
}

/// The words whose runs leave restart data and can be taken up from them.
bool canRestart(const Model& model) {
  return model.text.CPROB == "MEC3D" || model.text.CPROB == "MEC2D";
}

/// The frequency card: four values that are only handed on to the frequency records.
struct FrequencyCard {
  int first = 0;
  double second = 0.0;
  int third = 0;
  int fourth = 0;

  void read(CardReader& deck) {
    deck.begin("frequency");
    deck.read("value 1", first);
    deck.read("value 2", second);
    deck.read("value 3", third);
    deck.read("value 4", fourth);
  }
};

class Driver {
 public:
  Driver(Job& job, Kernel& kernel) : job_(job), analysis_{job, model_, kernel} {}

  void run() {
    readModel();
    prepare();
    for (LoopState& loop = model_.loop; loop.ILOAD <= loop.NLOAD; ++loop.ILOAD) {
      if (!restarts() || loop.INCRE == 1) {
        beginLoadStep();
      }
      if (runIncrements() == Next::endOfRun) {
        return;
      }
      model_.text.CSTART = "START1";
      job_.channels.flushAll();
    }
  }

 private:
  /// Until the first load step of a restart has ended.
  [[nodiscard]] bool restarts() const { return model_.text.CSTART == "START2"; }

  void readModel() {
    const KernelProfile& profile = analysis_.kernel.profile();
    model_.text = job_.CTEXT;
    model_.control = job_.KCONT;
    model_.NSTR1 = profile.NSTR1;
    model_.mesh.MDOFN = profile.MDOFN;
    model_.mesh.dimensions = profile.dimensions;
    analysis_.solver = makeSolver(job_);
    MAKINA(job_, ClockTask::timeLine);
    model_.loop.INCRE = job_.IRUN.IINCS;
    model_.loop.ILOAD = job_.IRUN.ILOAS;
    timed(job_, job_.times.input, [&] { INPU(job_, model_, analysis_.kernel); });
    CardReader& deck = job_.cards();
    if (model_.control.KFREC == 1) {
      frequencyCard_.read(deck);
    }
    deck.begin("number of load steps");
    model_.loop.NLOAD = deck.integer("NLOAD");
    job_.changeable.push_back(deck.lastItem());
  }

  void prepare() {
    if (restarts() && !canRestart(model_)) {
      refuseRestart(job_.listing(), model_.control);
    }
    if (code() != SolverCode::frontal) {
      timed(job_, job_.times.renumbering, [&] { RENUMN(job_, model_); });
    }
    timed(job_, job_.times.initial, [&] {
      allocate(analysis_);
      analysis_.kernel.prepare(model_);
    });
    if (!restarts() && !model_.text.CSTART.starts_with("START1")) {
      notify(job_, "the start word '" + model_.text.CSTART +
                       "' is neither START1 nor START2: the job runs from its beginning, without frequency records");
    }
    if (!analysis_.solver) {
      notify(job_, "NSOLV = " + std::to_string(model_.control.NSOLV) + " names no solver: nothing will be solved");
    }
    if (model_.control.KPATH != 1 && model_.control.KPATH != 2) {
      notify(job_, "KPATH is neither 1 nor 2: states are never committed, and reported as 0");
    }
    if (model_.loop.NLOAD < 1) {
      notify(job_, "the deck asks for no load step");
    }
    if (restarts()) {
      timed(job_, job_.times.restart, [&] { SAVE_START(analysis_, RestartTask::restore); });
    } else {
      timed(job_, job_.times.output, [&] { GEOPOST(job_, model_, analysis_.kernel); });
    }
  }

  void beginLoadStep() {
    constexpr int uncoupled = 1;
    model_.increment.DFACT = 0.0;
    timed(job_, job_.times.input, [&] {
      LOADPS(job_, model_, analysis_.kernel);
      INPU3(job_, model_, analysis_.kernel);
    });
    if (model_.loop.ILOAD == 1 && job_.channels.isOpen(channel::frequencies)) {
      job_.channels[channel::frequencies].line(
          FreeLine(frequencyCard_.first, frequencyCard_.second, frequencyCard_.third, frequencyCard_.fourth));
      job_.channels.close(channel::frequencies);
    }
    balanceInactiveElements();
    model_.loop.NPASS = 1;
    model_.control.KACOP = uncoupled;
    model_.loop.INCRE = job_.IRUN.IINCS;
  }

  /// An element that is switched off has no internal force from now on: what is left of its total load is out of
  /// balance. Without this, rounding left by the last increment would drive the nodes that only such elements hold.
  void balanceInactiveElements() {
    for (int e = 0; e < model_.mesh.NELEM(); ++e) {
      if (!model_.active(model_.mesh.element(e))) {
        std::ranges::copy(model_.vectors.TLOAD(e), model_.vectors.ELOAD(e, 1).begin());
        std::ranges::fill(model_.vectors.ELOAD(e, 2), 0.0);
      }
    }
  }

  Next runIncrements() {
    LoopState& loop = model_.loop;
    while (loop.INCRE <= loop.NINCS) {
      if (loop.INCRE > model_.control.NINCM) {
        notify(job_,
               "the run ends because the increment number passes NINCM = " + std::to_string(model_.control.NINCM));
        return Next::endOfRun;
      }
      const Next next = runIncrement();
      if (next != Next::goOn) {
        return next;
      }
      ++loop.INCRE;
      job_.channels.flushAll();
    }
    return Next::goOn;
  }

  Next runIncrement() {
    constexpr double farFromConverged = 9.999e+98;
    constexpr int atStart = 2;
    LoopState& loop = model_.loop;
    TERMEC(model_, FieldSwap::load);
    numberEquations();
    if (!INCREM(analysis_)) {
      notify(job_, "the deck ends before increment " + std::to_string(loop.INCRE) + " of " +
                       std::to_string(loop.NINCS) + " of load step " + std::to_string(loop.ILOAD));
      return Next::endOfDeck;
    }
    startElastic();
    loop.RATIO = farFromConverged;
    loop.REMAX = farFromConverged;
    loop.lastRatio = farFromConverged;
    loop.KCONV = atStart;
    if (model_.increment.MITER < 0 || iterate() == Next::endOfRun) {
      notify(job_, "the run ends because MITER = " + std::to_string(model_.increment.MITER) + " allows no iteration");
      return Next::endOfRun;
    }
    writeResults();
    TERMEC(model_, FieldSwap::store);
    if (canRestart(model_)) {
      timed(job_, job_.times.restart, [&] { SAVE_START(analysis_, RestartTask::save); });
    }
    return Next::goOn;
  }

  [[nodiscard]] SolverCode code() const { return static_cast<SolverCode>(model_.control.NSOLV); }

  /// Equation numbers and band live as long as the load step, which alone may change the supports. The frontal and the
  /// sparse solver need no band.
  void numberEquations() {
    if (model_.loop.INCRE != 1) {
      return;
    }
    PERMUT(analysis_.equations, model_.working.IFFIX);
    notifyOfLooseNodes();
    if (code() == SolverCode::frontal || code() == SolverCode::sparse) {
      return;
    }
    EVALMBANDA(analysis_.elements, analysis_.equations);
    CALC_NBA(analysis_.elements, analysis_.equations, {code(), model_.control.KRENU == 1}, job_.listing());
  }

  /// A free degree of freedom that no element holds makes the system singular; its node is worth naming.
  void notifyOfLooseNodes() {
    const auto& holders = analysis_.firstHolder;
    for (std::size_t i = 0; i < holders.size(); ++i) {
      if (holders[i].element < 0 && analysis_.equations.IPERM[i] > 0) {
        notify(job_, "no element holds " + describePosition(model_.mesh, i) + ", which is free");
        return;
      }
    }
  }

  /// `ELASTICINICIO`: the elastic tensors for the temperature of the load step.
  void startElastic() {
    constexpr int coupled = 2;
    if (model_.control.KACOP == coupled || model_.loop.NPASS == 1) {
      timed(job_, job_.times.initial, [&] { analysis_.kernel.CALCIN(model_, model_.loadStep.TEMPL); });
      if (model_.loop.ILOAD == 1 && model_.loop.NPASS == 1 && model_.control.KFREC == 1) {
        writeElasticRecords(job_, model_, analysis_.kernel);
      }
      ++model_.loop.NPASS;
    }
  }

  Next iterate() {
    LoopState& loop = model_.loop;
    loop.IITER = 0;
    while (loop.KCONV != 0) {
      ++loop.IITER;
      ALGOR(analysis_);
      startTimeStep();
      solve();
      if (model_.increment.KARCL != 0) {
        ARCLE(analysis_);
      }
      releaseFactors();
      timed(job_, job_.times.updating, [&] { UPDAT(analysis_); });
      timed(job_, job_.times.residual, [&] { RESIDU(analysis_); });
      if (model_.loadStep.dynamic()) {
        EQFOR1(model_, analysis_.kernel, job_.workers);
      }
      timed(job_, job_.times.convergence, [&] { CONVER(analysis_); });
      endIteration();
      if (loop.IITER > model_.increment.MITER) {
        return Next::endOfRun;
      }
    }
    return Next::goOn;
  }

  /// In a dynamic load step: the effective load of a time step, and what is evaluated once for all time steps.
  void startTimeStep() {
    if (!model_.loadStep.dynamic() || model_.loop.IITER != 1) {
      return;
    }
    if (model_.loop.INCRE == 1) {
      keepDamping(model_, analysis_.kernel, job_.workers);
    }
    EQFOR0(model_, analysis_.kernel, job_.workers);
  }

  /// The correction for the out-of-balance forces.
  void solve() {
    if (!analysis_.solver) {
      return;
    }
    const bool newMatrix = model_.loop.KRESL < 2;
    if (newMatrix && model_.loop.INCRE == 1 && model_.loop.IITER == 1) {
      measureVolumes();
    }
    SOLVER(analysis_, RightHandSide::outOfBalance, newMatrix);
  }

  /// With the full Newton method every iteration makes factors of its own.
  void releaseFactors() {
    if (analysis_.solver && static_cast<Algorithm>(model_.increment.KALGO) == Algorithm::newtonRaphson) {
      analysis_.solver->release();
    }
  }

  /// TVOLU of every element, found in the first stiffness pass of a load step.
  void measureVolumes() {
    for (int e = 0; e < model_.mesh.NELEM(); ++e) {
      model_.mesh.elements[static_cast<std::size_t>(e)].TVOLU = analysis_.kernel.volume(model_, e);
    }
  }

  void endIteration() {
    const LoopState& loop = model_.loop;
    if (model_.control.KPATH == 2) {
      FINISH(analysis_);
    }
    if (model_.increment.NOUTP[0] > 0) {
      timed(job_, job_.times.output, [&] { OUTPUT(job_, model_, analysis_.kernel, OutputMoment::iteration); });
    }
    MAKINA(job_, ClockTask::progress, {loop.INCRE, loop.IITER, loop.RATIO, loop.REMAX});
  }

  void writeResults() {
    const IncrementCard& card = model_.increment;
    if (model_.control.KPATH == 1) {
      FINISH(analysis_);
    }
    MENERG(job_, model_, analysis_.kernel);
    DAMAGE(job_, model_, analysis_.kernel);
    timed(job_, job_.times.output, [&] {
      if (card.NOUTP[0] == 0) {
        OUTPUT(job_, model_, analysis_.kernel, OutputMoment::converged);
      }
      const long long blocks = std::accumulate(card.IPOST3D.begin(), card.IPOST3D.end(), 0LL);
      const long long variables = std::accumulate(card.IIFLAG.begin(), card.IIFLAG.end(), 0LL);
      if (blocks > 0 || variables > 0) {
        POSPRO(job_, model_, analysis_.kernel);
      }
    });
  }

  Job& job_;
  Model model_;
  Analysis analysis_;
  FrequencyCard frequencyCard_;
};

}  // namespace

void VER(Job& job, Kernel& kernel) {
  Driver(job, kernel).run();
}

}  // namespace zema
