// The restart file: sizes, positions of files, state of model, equations and solver.
#include "analysis/restart.h"

#include <array>
#include <string>

#include "analysis/analysis.h"
#include "job/file_set.h"
#include "restart/file_positions.h"
#include "restart/model_state.h"
#include "restart/restart_file.h"

namespace zema {

namespace {

constexpr double betweenSyncs = 5.0;  // seconds: waiting for the disk must not rule a run of short increments

using Sizes = std::array<int, 7>;

Sizes sizesOf(const Model& model) {
  return {model.control.NPOIN, model.control.NELEM, model.control.NMATC, model.control.NMATS,
          model.mesh.NTOTV,    model.NSTR1,         model.control.NSOLV};
}

void checkSizes(const Job& job, const Sizes& saved, const Sizes& now) {
  static constexpr std::array<const char*, 7> names = {"NPOIN", "NELEM", "NMATC", "NMATS", "NTOTV", "NSTR1", "NSOLV"};
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (saved[i] != now[i]) {
      throw InputFault(job.CFILE[entry::restart] + " belongs to another deck: it was written with " + names[i] + " = " +
                       std::to_string(saved[i]) + ", the deck has " + std::to_string(now[i]));
    }
  }
}

void transferCounters(Archive& archive, RunRecord& IRUN) {
  archive.section("counters");
  archive(IRUN.KCOUN, IRUN.KCURV);
}

/// Factors are needed only where the load step goes on: the next one forms its own.
bool factorsAreReused(const Model& model) {
  return model.loop.INCRE < model.loop.NINCS;
}

void save(Analysis& analysis) {
  RestartWriter file(analysis.job.CFILE[entry::restart]);
  Sizes sizes = sizesOf(analysis.model);
  FilePositions positions = filePositions(analysis.job, analysis.model);
  file(sizes);
  transfer(file, positions);
  transferCounters(file, analysis.job.IRUN);
  transfer(file, analysis.model);
  transfer(file, analysis.equations);
  file.section("factors");
  const bool kept = analysis.solver && factorsAreReused(analysis.model);
  file.put(kept ? analysis.solver->factors() : std::span<const double>());
  file.put(kept ? analysis.solver->matrices() : std::span<const double>());
  const double now = analysis.job.clock.TIMUSE();
  const bool toDisk = now - analysis.lastSync > betweenSyncs;
  if (toDisk) bringToDisk(analysis.job, analysis.model, positions);
  file.replace(toDisk);
  if (toDisk) {
    analysis.lastSync = analysis.job.clock.TIMUSE();
  }
}

void restoreFactors(RestartReader& file, Analysis& analysis) {
  std::vector<double> factors;
  std::vector<double> matrices;
  file.section("factors");
  file(factors, matrices);
  if (analysis.solver && factorsAreReused(analysis.model)) {
    analysis.solver->restoreFactors(analysis.equations, factors);
    analysis.solver->restoreMatrices(analysis.elements, matrices);
  }
}

/// The loops go on with the next increment, which may be the first of the next load step; the increment card that was
/// in force covers no more of them.
void stepOn(Analysis& analysis) {
  Model& model = analysis.model;
  LoopState& loop = model.loop;
  RunRecord& IRUN = analysis.job.IRUN;
  if (loop.INCRE >= loop.NINCS) {
    loop.INCRE = 0;
    ++loop.ILOAD;
  }
  IRUN.IINCS = ++loop.INCRE;
  IRUN.ILOAS = loop.ILOAD;
  if (model.increment.NREPE != 0 && !model.loadStep.dynamic()) {
    // Not on the log, which is to be that of a run that never stopped.
    analysis.job.console.warn(
        "the increment card in force when the state was saved covered more increments; a restart goes on with the card "
        "after it");
  }
  model.increment.NREPE = 0;
}

void restore(Analysis& analysis) {
  static constexpr Layout restartLine(R"(80("=") / "####---> RESTART   Nro.:" I5)");
  constexpr int uncoupled = 1;
  Job& job = analysis.job;
  Model& model = analysis.model;
  RestartReader file(job.CFILE[entry::restart]);
  Sizes sizes{};
  FilePositions positions;
  file(sizes);
  checkSizes(job, sizes, sizesOf(model));
  transfer(file, positions);
  checkPositions(job, model, positions);
  transferCounters(file, job.IRUN);
  transfer(file, model);
  transfer(file, analysis.equations);
  restoreFactors(file, analysis);
  file.finish();
  takeUp(job, model, positions);
  analysis.kernel.CALCIN(model, model.loadStep.TEMPL);
  model.control.KACOP = uncoupled;
  job.listing().write(restartLine, model.loop.NPASS + 1);
  stepOn(analysis);
}

}  // namespace

void SAVE_START(Analysis& analysis, RestartTask task) {
  if (task == RestartTask::save) {
    save(analysis);
  } else {
    restore(analysis);
  }
}

}  // namespace zema
