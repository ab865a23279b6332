// One solve of the sparse path: pattern, assembly, factors, refinement.
#include "solver/sparse_solver.h"

#include <algorithm>
#include <functional>
#include <string>

#include "foundation/errors.h"
#include "foundation/parallel.h"
#include "solver/blas_threads.h"
#include "solver/multifrontal_factors.h"
#include "solver/nested_dissection.h"
#include "solver/phase_timer.h"
#include "solver/sparse_factors.h"

namespace zema {
namespace {

// Factors with more entries (512 MiB) give their memory back when they have served: the analysis, which must then be
// repeated, takes a few percent of the factorisation, while the states of the points want memory next.
constexpr long long keptEntries = 1LL << 26;

class SparseSolver final : public Solver {
 public:
  SparseSolver() : Solver(ResidualCheck::byBody) {}

  [[nodiscard]] std::span<const double> factors() const override { return matrix_.A_PARD(); }

  // The pattern has to wait for the elements.
  void restoreFactors(const EquationSystem& /*system*/, std::span<const double> values) override {
    restored_.assign(values.begin(), values.end());
    forget();
    IPERM_.clear();
  }

  void release() override {
    if (hasFactors() && entries() > keptEntries) forget();
  }

 protected:
  void solveFree(const Task& task) override {
    EquationSystem& system = task.system;
    STARTENDPARDISO(task);
    if (!task.newMatrix && !hasFactors()) refactorise(task);
    if (task.newMatrix) {
      restored_ = {};
      matrix_.reset(pattern_);
    }
    KGLOB(task.source, system, task.side, task.newMatrix ? &matrix_ : nullptr, task.pool, task.times);
    if (task.newMatrix) factorise(task);
    const std::span<double> x(system.ELOADG.data(), static_cast<std::size_t>(system.NEQNS));
    B_PARD_.assign(x.begin(), x.end());
    {
      const PhaseTimer timer(task.times.lower);
      solveWithFactors(task, x);
    }
    refine(task, x);
    const PhaseTimer timer(task.times.upper);
    spread(system, task.side);
  }

 private:
  // The pattern and the order of elimination for the present equation numbers.
  void STARTENDPARDISO(const Task& task) {
    if (IPERM_ == task.system.IPERM) return;
    const PhaseTimer timer(task.times.decomposition);
    forget();
    const EquationGroups groups(task.source, task.system);
    const IntegerLists NEIG_NODES = PARD_NEIGHBORNODES(groups);
    pattern_ = SparsePattern(task.source, task.system, groups, NEIG_NODES);
    order_ = nestedDissection(groups, NEIG_NODES);
    IPERM_ = task.system.IPERM;
  }

  void factorise(const Task& task) {
    const PhaseTimer timer(task.times.decomposition);
    const bool symmetric = matrix_.isSymmetric();
    const char* kind = "symmetric sparse factors";
    if (!symmetric || !factoriseWithoutExchanges(task)) {
      kind = symmetric ? "symmetric sparse factors with exchanges" : "unsymmetric sparse factors";
      factoriseWithExchanges(task, symmetric);
    }
    task.report.note = std::string(kind) + ", " + std::to_string(entries()) + " entries";
  }

  bool factoriseWithoutExchanges(const Task& task) {
    exchanging_.reset();
    if (!plain_) plain_ = std::make_unique<MultifrontalFactors>(pattern_, order_);
    plain_->factorise(matrix_, task.pool);
    return plain_->trustworthy();
  }

  void factoriseWithExchanges(const Task& task, bool symmetric) {
    plain_.reset();
    if (!exchanging_ || exchanging_->symmetric() != symmetric) {
      exchanging_.reset();
      exchanging_ = std::make_unique<SparseFactors>(pattern_, symmetric, order_);
    }
    exchanging_->factorise(matrix_, task.pool.size());
  }

  [[nodiscard]] bool hasFactors() const { return plain_ || exchanging_; }
  [[nodiscard]] long long entries() const { return plain_ ? plain_->entries() : exchanging_->entries(); }

  void forget() {
    plain_.reset();
    exchanging_.reset();
  }

  void solveWithFactors(const Task& task, std::span<double> x) {
    if (plain_) return plain_->solve(x);
    exchanging_->solve(x, task.pool.size());
  }

  // Factors of the matrix of before, which were released or belong to a restart.
  void refactorise(const Task& task) {
    if (!restored_.empty()) {
      matrix_.reset(pattern_);
      if (restored_.size() != matrix_.A_PARD().size())
        throw InputFault("the factors of the restart data do not fit the equations of the deck");
      std::ranges::copy(restored_, matrix_.A_PARD().begin());
      restored_ = {};
    }
    factorise(task);
    task.report.note.clear();
  }

  // Iterative refinement: x += A^-1 (b - A x), kept while the residual goes down.
  void refine(const Task& task, std::span<double> x) {
    constexpr double goodEnough = 1e-12;
    constexpr int mostSteps = 2;
    const PhaseTimer timer(task.times.check);
    double& ratio = task.report.residual.emplace(residual(task, x));
    for (int step = 0; step < mostSteps && ratio > goodEnough; ++step) {
      X_PARD_.assign(x.begin(), x.end());
      solveWithFactors(task, rest_);
      std::ranges::transform(x, rest_, x.begin(), std::plus<>());
      const double refined = residual(task, x);
      if (!(refined < ratio)) {
        std::ranges::copy(X_PARD_, x.begin());
        return;
      }
      ratio = refined;
    }
  }

  // ||b - A x|| / ||b||; leaves b - A x in rest_.
  double residual(const Task& task, std::span<const double> x) {
    rest_.resize(x.size());
    matrix_.residual(B_PARD_, x, rest_, task.pool);
    return ratioOfNorms(rest_, B_PARD_);
  }

  std::vector<int> IPERM_;  // equation numbers of the pattern
  SparsePattern pattern_;
  std::vector<int> order_;
  SparseMatrix matrix_;
  std::unique_ptr<MultifrontalFactors> plain_;  // of a symmetric matrix that needs no exchanges; or else
  std::unique_ptr<SparseFactors> exchanging_;
  std::vector<double> restored_;  // values of the matrix from a restart, until they can be factorised
  std::vector<double> B_PARD_;    // right-hand side
  std::vector<double> X_PARD_;    // solution before a step of refinement
  std::vector<double> rest_;      // b - A x
};

}  // namespace

std::unique_ptr<Solver> makeSparseSolver() {
  requireBlasMemory();
  return std::make_unique<SparseSolver>();
}

}  // namespace zema
