// The GMRES solver: diagonal and right-hand side from the elements, the iteration, and what becomes of its result.
#include <unistd.h>

#include <algorithm>
#include <string>

#include "foundation/channel.h"
#include "foundation/errors.h"
#include "foundation/layout.h"
#include "job/run_end.h"
#include "solver/assembly.h"
#include "solver/element_matrices.h"
#include "solver/gmres.h"
#include "solver/phase_timer.h"

namespace zema {
namespace {

std::size_t index(int i) {
  return static_cast<std::size_t>(i);
}

// How far the residual of the equations may lie above the one of the preconditioned equations, which is the one that
// comes down to the tolerance.
constexpr double slack = 10.0;

// The diagonal of the matrix, and nothing else of it.
class DiagonalMatrix final : public GlobalMatrix {
 public:
  // Takes the size of a system, every entry 0.
  void reset(int NEQNS) { D_.assign(index(NEQNS), 0.0); }

  // Elements are added from now on, or only formed.
  void take(bool adds) { adds_ = adds; }

  void ENSAMB(const ElementRow& row) override {
    if (!adds_) return;
    for (std::size_t c = 0; c < row.equations.size(); ++c)
      if (row.equations[c] == row.equation) D_[index(row.equation - 1)] += row.values[c];
  }

  [[nodiscard]] std::span<const double> D() const { return D_; }
  void restore(std::span<const double> values) { D_.assign(values.begin(), values.end()); }

 private:
  std::vector<double> D_;
  bool adds_ = true;
};

std::size_t bytesOfMatrices(const ElementSource& source) {
  std::size_t values = 0;
  for (int e = 0; e < source.elements(); ++e) values += source.positions(e).size() * source.positions(e).size();
  return values * sizeof(double);
}

class GmresSolver final : public Solver {
 public:
  GmresSolver(const GmresSettings& settings, Channel& listing, Channel& log)
      : Solver(ResidualCheck::byBody), settings_(settings), listing_(listing), log_(log) {}

  [[nodiscard]] std::span<const double> factors() const override { return diagonal_.D(); }

  void restoreFactors(const EquationSystem& system, std::span<const double> values) override {
    if (!values.empty() && values.size() != index(system.NEQNS))
      throw InputFault("the factors of the restart data do not fit the equations of the deck");
    diagonal_.restore(values);
  }

 protected:
  void solveFree(const Task& task) override {
    EquationSystem& system = task.system;
    const bool keeps = bytesOfMatrices(task.source) <= settings_.mostBytes;
    if (keeps) kept_.fit(task.source);
    KeepingSource keeping(task.source, keeps ? &kept_ : nullptr);
    const bool newDiagonal = task.newMatrix || diagonal_.D().size() != index(system.NEQNS);
    if (newDiagonal) diagonal_.reset(system.NEQNS);
    diagonal_.take(newDiagonal);
    KGLOB(keeping, system, task.side, &diagonal_, task.pool, task.times);
    {
      const PhaseTimer timer(task.times.lower);
      ElementProducts products(task.source, system, keeps ? &kept_ : nullptr, diagonal_.D(), task.pool);
      iterate(task, products);
    }
    const PhaseTimer timer(task.times.upper);
    spread(system, task.side);
  }

 private:
  // ELOADG becomes the solution.
  void iterate(const Task& task, ElementProducts& products) {
    EquationSystem& system = task.system;
    const std::span<double> ELOADG = std::span(system.ELOADG).first(index(system.NEQNS));
    const std::span<const double> D = diagonal_.D();
    const std::vector<double> load(ELOADG.begin(), ELOADG.end());
    for (std::size_t i = 0; i < D.size(); ++i) ELOADG[i] /= D[i];
    XGMRES_.resize(D.size());
    GmresIteration iteration(products, system.NEQNS, settings_, system.TOLER, task.pool, log_);
    iteration.GMR_PRE(ELOADG, XGMRES_);
    if (iteration.failed()) GMERR(iteration);

    std::vector<double> rest(D.size());  // D^-1 (load - K x), then load - K x
    products.AX(XGMRES_, rest, ELOADG);
    for (std::size_t i = 0; i < D.size(); ++i) rest[i] *= D[i];
    task.report.residual = ratioOfNorms(rest, load);
    task.report.largestGood = std::max(task.report.largestGood, slack * system.TOLER);
    task.report.note = "GMRES" + FreeLine("iterations:", iteration.iterations()).text();
    std::ranges::copy(XGMRES_, ELOADG.begin());
  }

  [[noreturn]] void GMERR(const GmresIteration& iteration) {
    log_.line(FreeLine("EXITED OF GMRES SOLVER. MAXIMUM ITERATION NUMBER REACHED"));
    log_.line(
        FreeLine("LAST REL. ERROR OBTAINED WAS:", iteration.relativeResidual(), " ITER:", iteration.iterations()));
    log_.line(FreeLine("MAXIMUM ITERATION NUMBER OR KRYLOV DIMENSION SHOULD BE INCREASED"));
    CHECK4(listing_, "*** MAXIMO NUMERO DE ITERACIONES ALCANZADO VER ARCHIVO .LOG ",
           "  >>>> DETENIDO EN LA RUTINA GMRES");
  }

  GmresSettings settings_;
  Channel& listing_;
  Channel& log_;
  DiagonalMatrix diagonal_;
  ElementMatrices kept_;
  std::vector<double> XGMRES_;
};

}  // namespace

std::size_t memoryForElementMatrices() {
  const long pages = ::sysconf(_SC_PHYS_PAGES);
  const long pageSize = ::sysconf(_SC_PAGE_SIZE);
  return static_cast<std::size_t>(std::max(0L, pages)) * static_cast<std::size_t>(std::max(0L, pageSize)) / 4;
}

std::unique_ptr<Solver> makeGmresSolver(const GmresSettings& settings, Channel& listing, Channel& log) {
  return std::make_unique<GmresSolver>(settings, listing, log);
}

}  // namespace zema
