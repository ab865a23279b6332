// The sparse solver beside public libraries, in one run: whole solves of a cube of bricks against
// ordering, analysis, factorisation and solution of the same matrix alone; and the parts of our own.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <vector>

#include "foundation/parallel.h"
#include "solver/nested_dissection.h"
#include "solver/sparse_factors.h"
#include "solver/sparse_solver.h"

namespace {

using namespace zema;

constexpr int dofs = 24;  // of a brick

// A cube of n x n x n bricks that share one matrix, symmetric or not, under a diagonal that outweighs its row.
class Cube final : public ElementSource {
 public:
  Cube(int n, bool symmetric) : n_(n), load_(dofs, 1.0) {
    const auto at = [n](int i, int j, int k) { return i + (n + 1) * (j + (n + 1) * k); };
    for (int k = 0; k < n; ++k)
      for (int j = 0; j < n; ++j)
        for (int i = 0; i < n; ++i)
          for (const int node : {at(i, j, k), at(i + 1, j, k), at(i + 1, j + 1, k), at(i, j + 1, k), at(i, j, k + 1),
                                 at(i + 1, j, k + 1), at(i + 1, j + 1, k + 1), at(i, j + 1, k + 1)})
            for (int d = 0; d < 3; ++d) positions_.push_back(3 * node + d);
    std::mt19937 generator(1);
    std::uniform_real_distribution<double> number(-0.3, 0.3);
    for (std::size_t i = 0; i < dofs; ++i)
      for (std::size_t j = 0; j <= i; ++j) {
        matrix_[i * dofs + j] = number(generator);
        matrix_[j * dofs + i] = i == j ? dofs * 0.3 : symmetric ? matrix_[i * dofs + j] : number(generator);
      }
  }

  [[nodiscard]] int elements() const override { return n_ * n_ * n_; }
  [[nodiscard]] int largest() const override { return dofs; }
  [[nodiscard]] std::span<const int> positions(int e) const override {
    return std::span(positions_).subspan(static_cast<std::size_t>(e) * dofs, dofs);
  }
  [[nodiscard]] std::span<const int> deckPositions(int e) const override { return positions(e); }
  void form(int /*e*/, std::span<double> ESTIF) override { std::ranges::copy(matrix_, ESTIF.begin()); }
  [[nodiscard]] std::span<const double> load(int /*e*/, RightHandSide /*side*/) const override { return load_; }

 private:
  int n_;
  std::vector<int> positions_;
  std::vector<double> matrix_ = std::vector<double>(dofs * dofs);
  std::vector<double> load_;
};

// A cube whose first layer of nodes is fixed, assembled.
struct Problem {
  explicit Problem(const benchmark::State& state)
      : n(static_cast<int>(state.range(0))), cube(n, state.range(1) != 0), system(3 * (n + 1) * (n + 1) * (n + 1)) {
    std::vector<int> IFFIX(static_cast<std::size_t>(system.NTOTV));
    std::fill_n(IFFIX.begin(), 3 * (n + 1) * (n + 1), 1);
    PERMUT(system, IFFIX);
  }

  int n;
  Cube cube;
  EquationSystem system;
  WorkerPool pool;
  SolverTimes times;
};

void sizes(benchmark::internal::Benchmark* bench) {
  bench->ArgNames({"edge", "symmetric"})->Args({16, 1})->Args({25, 1})->Args({16, 0})->Args({31, 1});
  bench->Unit(benchmark::kMillisecond)->UseRealTime();
}

void sparsePath(benchmark::State& state) {
  Problem problem(state);
  for (auto _ : state) {
    const auto solver = makeSparseSolver();
    benchmark::DoNotOptimize(
        solver->solve(problem.cube, problem.system, RightHandSide::outOfBalance, true, problem.pool, problem.times));
  }
  state.counters["check"] = problem.times.check / static_cast<double>(state.iterations());
  state.counters["assembly"] = problem.times.assembly / static_cast<double>(state.iterations());
}

void librariesAlone(benchmark::State& state) {
  Problem problem(state);
  const EquationGroups groups(problem.cube, problem.system);
  const IntegerLists NEIG_NODES = PARD_NEIGHBORNODES(groups);
  const SparsePattern pattern(problem.cube, problem.system, groups, NEIG_NODES);
  SparseMatrix matrix;
  matrix.reset(pattern);
  KGLOB(problem.cube, problem.system, RightHandSide::outOfBalance, &matrix, problem.pool, problem.times);
  for (auto _ : state) {
    SparseFactors factors(pattern, state.range(1) != 0, nestedDissection(groups, NEIG_NODES));
    factors.factorise(matrix, problem.pool.size());
    factors.solve({problem.system.ELOADG.data(), static_cast<std::size_t>(problem.system.NEQNS)}, problem.pool.size());
  }
}

void pattern(benchmark::State& state) {
  const Problem problem(state);
  for (auto _ : state) {
    const EquationGroups groups(problem.cube, problem.system);
    const SparsePattern made(problem.cube, problem.system, groups, PARD_NEIGHBORNODES(groups));
    benchmark::DoNotOptimize(made.NNZ_PARD());
  }
}

BENCHMARK(sparsePath)->Apply(sizes);
BENCHMARK(librariesAlone)->Apply(sizes);
BENCHMARK(pattern)->Args({16, 1})->Args({31, 1})->Unit(benchmark::kMillisecond);

}  // namespace
