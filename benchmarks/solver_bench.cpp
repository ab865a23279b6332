// Whole solves of a block of bricks by the frontal solver and by GMRES, beside those of band LU, in one run.
#include <benchmark/benchmark.h>

#include <array>
#include <string>
#include <vector>

#include "element/element_stiffness.h"
#include "element/jacobian.h"
#include "element/reference_points.h"
#include "foundation/channel.h"
#include "foundation/parallel.h"
#include "solver/band_numbers.h"
#include "solver/frontal_solver.h"
#include "solver/gmres.h"

namespace {

using namespace zema;

// Stiffness of a cube of edge 1, E = 1, nu = 0.25.
std::vector<double> cubeStiffness() {
  ElementData element;
  element.NNODE = 8;
  element.NGAUS = 2;
  element.NINTE = 1;
  const Matrix<8, 3> ELCOD{{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 0, 0, 1, 1, 0, 1, 1, 1, 1, 0, 1, 1}};
  Matrix<6> D;
  for (const int i : {0, 1, 3}) {
    for (const int j : {0, 1, 3}) D(i, j) = i == j ? 1.2 : 0.4;
  }
  for (const int shear : {2, 4, 5}) D(shear, shear) = 0.4;
  StiffnessSum<Kinematics<3>, 8> sum;
  for (const auto& point :
       referencePoints<3, 8>(pointLoop(RuleTable::solid, element, {.NGAU1 = 2, .NGAU2 = 2, .NGAU3 = 2}))) {
    Matrix<3, 8> CARTD;
    const double dV = JACOB(point.shape.DERIV, ELCOD, 1, CARTD) * point.weight;
    sum.add(CARTD, D, dV);
  }
  std::vector<double> ESTIF(576);
  sum.writeTo(std::span<double, 576>(ESTIF));
  return ESTIF;
}

// n x n x length cubes with a load on every node; one end is held.
class Block final : public ElementSource {
 public:
  Block(int n, int length) : perLayer_((n + 1) * (n + 1)), layers_(length + 1) {
    const auto node = [&](int i, int j, int k) { return i + (n + 1) * j + perLayer_ * k; };
    for (int k = 0; k < length; ++k)
      for (int j = 0; j < n; ++j)
        for (int i = 0; i < n; ++i)
          for (const int m :
               {node(i, j, k), node(i + 1, j, k), node(i + 1, j + 1, k), node(i, j + 1, k), node(i, j, k + 1),
                node(i + 1, j, k + 1), node(i + 1, j + 1, k + 1), node(i, j + 1, k + 1)})
            for (int d = 0; d < 3; ++d) positions_.push_back(3 * m + d);
  }

  [[nodiscard]] EquationSystem system() const {
    EquationSystem equations(3 * perLayer_ * layers_);
    std::vector<int> IFFIX(equations.IPERM.size());
    std::fill_n(IFFIX.begin(), 3 * perLayer_, 1);
    PERMUT(equations, IFFIX);
    Channel nowhere = Channel::open("/dev/null", OpenMode::append);
    EVALMBANDA(*this, equations);
    CALC_NBA(*this, equations, {SolverCode::bandLU}, nowhere);
    equations.TOLER = 1e-8;
    return equations;
  }

  [[nodiscard]] int elements() const override { return static_cast<int>(positions_.size()) / 24; }
  [[nodiscard]] int largest() const override { return 24; }
  [[nodiscard]] std::span<const int> positions(int e) const override {
    return std::span(positions_).subspan(24 * static_cast<std::size_t>(e), 24);
  }
  [[nodiscard]] std::span<const int> deckPositions(int e) const override { return positions(e); }
  void form(int /*e*/, std::span<double> ESTIF) override { std::ranges::copy(cube_, ESTIF.begin()); }
  [[nodiscard]] std::span<const double> load(int /*e*/, RightHandSide /*side*/) const override { return load_; }

 private:
  int perLayer_;
  int layers_;
  std::vector<int> positions_;
  std::vector<double> cube_ = cubeStiffness();
  std::vector<double> load_ = std::vector<double>(24, 1.0);
};

void solveBlock(benchmark::State& state, std::unique_ptr<Solver> solver, bool newMatrix) {
  Block block(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  EquationSystem system = block.system();
  WorkerPool pool;
  SolverTimes times;
  SolveReport report = solver->solve(block, system, RightHandSide::outOfBalance, true, pool, times);
  for (auto _ : state) report = solver->solve(block, system, RightHandSide::outOfBalance, newMatrix, pool, times);
  state.counters["equations"] = system.NEQNS;
  state.counters["residual"] = report.residual.value_or(-1.0);
}

void bandLU(benchmark::State& state, bool newMatrix) {
  solveBlock(state, makeBandSolver(SolverCode::bandLU), newMatrix);
}

void frontal(benchmark::State& state, FrontForm form, bool newMatrix) {
  solveBlock(state, makeFrontalSolver(form, "/tmp/zema_bench"), newMatrix);
}

void gmres(benchmark::State& state, std::size_t mostBytes) {
  Channel nowhere = Channel::open("/dev/null", OpenMode::append);
  solveBlock(state,
             makeGmresSolver({.NKRYLO = 200, .NITER = 10000, .NGPRI = 0, .mostBytes = mostBytes}, nowhere, nowhere),
             true);
}

void blocks(benchmark::internal::Benchmark* bench) {
  bench->Args({4, 40})->Args({12, 12})->Unit(benchmark::kMillisecond)->UseRealTime();
}

BENCHMARK_CAPTURE(bandLU, newMatrix, true)->Apply(blocks);
BENCHMARK_CAPTURE(frontal, symmetric, FrontForm::symmetric, true)->Apply(blocks);
BENCHMARK_CAPTURE(frontal, unsymmetric, FrontForm::unsymmetric, true)->Apply(blocks);
BENCHMARK_CAPTURE(gmres, keptMatrices, std::size_t{1} << 40)->Apply(blocks);
BENCHMARK_CAPTURE(gmres, formedInEveryProduct, std::size_t{0})->Apply(blocks);
BENCHMARK_CAPTURE(bandLU, reused, false)->Apply(blocks);
BENCHMARK_CAPTURE(frontal, symmetricReused, FrontForm::symmetric, false)->Apply(blocks);

}  // namespace
