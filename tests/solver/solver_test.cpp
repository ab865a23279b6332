// All solvers against dense elimination, and what the door promises: reuse, prescribed values, residual, stops,
// restart.
#include "solver/solver.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "foundation/channel.h"
#include "foundation/errors.h"
#include "foundation/parallel.h"
#include "solver/band_numbers.h"
#include "solver/dense_reference.h"
#include "solver/listed_elements.h"
#include "solver/sparse_solver.h"

namespace zema {
namespace {

using testing::AllOf, testing::DoubleNear, testing::Pointwise, testing::Property, testing::StrEq, testing::Throws;
using enum Character;
using enum RightHandSide;
using enum SolverCode;

// The equations of an element set with some positions fixed.
EquationSystem systemOf(const ListedElements& source, const std::vector<int>& IFFIX) {
  EquationSystem system(static_cast<int>(IFFIX.size()));
  PERMUT(system, IFFIX);
  Channel nowhere = Channel::open("/dev/null", OpenMode::append);
  CALC_NBA(source, system, {gmres, false}, nowhere);
  return system;
}

// The equations of a chain: every seventh position fixed, every second of these with a prescribed value.
EquationSystem partlyFixed(const ListedElements& chain, double value) {
  std::vector<int> IFFIX(static_cast<std::size_t>(chain.elements()));
  for (std::size_t p = 3; p < IFFIX.size(); p += 7) IFFIX[p] = 1;
  EquationSystem system = systemOf(chain, IFFIX);
  for (std::size_t p = 3; p < IFFIX.size(); p += 14) system.FIXED[p] = value;
  return system;
}

// The result of one solve, which must leave no residual.
std::vector<double> solve(Solver& solver, ListedElements& source, EquationSystem& system,
                          RightHandSide side = outOfBalance, bool newMatrix = true, int threads = 2) {
  WorkerPool pool(threads);
  SolverTimes times;
  EXPECT_LE(solver.solve(source, system, side, newMatrix, pool, times).residual.value(), 1e-12);
  return system.result(side);
}

// A way of solving and the matrices that it is made for.
struct Method {
  const char* name;
  std::unique_ptr<Solver> (*make)();
  Character character;
};

void PrintTo(const Method& method, std::ostream* out) {
  *out << method.name;
}

class Solvers : public testing::TestWithParam<Method> {
 protected:
  void solveAndCompare(RightHandSide side, bool newMatrix) {
    EXPECT_THAT(solve(*solver, source, system, side, newMatrix),
                Pointwise(DoubleNear(1e-12), denseResult(source, system, side)));
  }

  ListedElements source = randomChain(80, 9, GetParam().character, 5);
  EquationSystem system = partlyFixed(source, 0.0);
  std::unique_ptr<Solver> solver = GetParam().make();
};

TEST_P(Solvers, AgreeWithDenseEliminationOnAnyNumberOfThreads) {
  // Sizes around the blocks of the factorisation, bands from diagonal to full.
  constexpr std::pair<int, int> sizes[] = {{1, 0},   {2, 1},    {5, 0},   {31, 2},   {32, 31}, {33, 32},
                                           {70, 33}, {100, 99}, {160, 1}, {211, 40}, {300, 75}};
  for (const auto& [positions, reach] : sizes) {
    ListedElements chain = randomChain(positions, reach, GetParam().character, 17);
    EquationSystem equations = partlyFixed(chain, 0.3);

    const std::vector<double> result = solve(*solver, chain, equations, outOfBalance, true, 1);

    EXPECT_EQ(solve(*solver, chain, equations, outOfBalance, true, 3), result);
    EXPECT_THAT(result, Pointwise(DoubleNear(1e-13), denseResult(chain, equations, outOfBalance)))
        << positions << " " << reach;
  }
}

TEST_P(Solvers, FactorsServeOtherLoadsAndFormOnlyElementsWithPrescribedMotion) {
  solveAndCompare(outOfBalance, true);
  EXPECT_EQ(source.formed, source.elements());

  source.formed = 0;
  source.element(20).ELOAD[0] += 2.0;
  system.FIXED[0] = 1.0;  // a free position
  solveAndCompare(outOfBalance, false);
  EXPECT_EQ(source.formed, 0);

  system.FIXED[3] = 1.0;  // a fixed one: of elements 0 to 3 at most, for the load and for its check
  solveAndCompare(outOfBalance, false);
  EXPECT_THAT(source.formed.load(), AllOf(testing::Ge(1), testing::Le(8)));
}

TEST_P(Solvers, TheReferenceLoadHasItsOwnVectorsAndFactorsOutliveARestart) {
  solveAndCompare(outOfBalance, true);
  const std::vector<double> ASDIS = system.ASDIS;
  system.FIXWO[10] = 0.4;  // a fixed position
  solveAndCompare(referenceLoad, false);
  EXPECT_EQ(system.ASDIS, ASDIS);

  const std::vector<double> DISPM = system.DISPM;
  const std::vector<double> factors(solver->factors().begin(), solver->factors().end());
  const std::vector<double> matrices(solver->matrices().begin(), solver->matrices().end());
  solver = GetParam().make();
  solver->restoreFactors(system, factors);
  solver->restoreMatrices(source, matrices);
  EXPECT_EQ(solve(*solver, source, system, referenceLoad, false), DISPM);
  const auto restoreTooFew = [&] {
    solver->restoreFactors(system, std::span(factors).first(factors.size() - 1));
    solve(*solver, source, system, referenceLoad, false);
  };
  EXPECT_THROW(restoreTooFew(), InputFault);
}

INSTANTIATE_TEST_SUITE_P(AllCodes, Solvers,
                         testing::Values(Method{"Cholesky", [] { return makeBandSolver(bandCholesky); },
                                                positiveDefinite},
                                         Method{"LDL", [] { return makeBandSolver(bandLDL); }, indefinite},
                                         Method{"LU", [] { return makeBandSolver(bandLU); }, unsymmetric},
                                         Method{"sparse", makeSparseSolver, positiveDefinite},
                                         Method{"sparseIndefinite", makeSparseSolver, indefinite},
                                         Method{"sparseUnsymmetric", makeSparseSolver, unsymmetric}));

TEST(BandSolver, SumsInElementOrder) {
  // 0.1 + 0.2 + 0.3 has other bits than 0.3 + 0.2 + 0.1.
  ListedElements source({{{0}, {0.1}, {1.0}, {0.0}}, {{0}, {0.2}, {0.0}, {0.0}}, {{0}, {0.3}, {0.0}, {0.0}}});
  EquationSystem system = systemOf(source, {0});

  EXPECT_EQ(solve(*makeBandSolver(bandLU), source, system)[0], 1.0 / (0.1 + 0.2 + 0.3));
}

TEST(BandSolver, SymmetricCodesReadTheLowerHalfAloneAndTheResidualSaysSo) {
  ListedElements source({{{0, 1}, {4.0, 5.0, 2.0, 2.0}, {8.0, 6.0}, {0.0, 0.0}}});
  EquationSystem system = systemOf(source, {0, 0});
  WorkerPool pool(1);
  SolverTimes times;

  for (const SolverCode code : {bandCholesky, bandLDL}) {
    const SolveReport report = makeBandSolver(code)->solve(source, system, outOfBalance, true, pool, times);
    EXPECT_EQ(system.ASDIS, (std::vector{1.0, 2.0}));                       // of (4 2; 2 2)
    EXPECT_DOUBLE_EQ(report.residual.value(), 6.0 / std::hypot(8.0, 6.0));  // 8 - (4 + 10)
  }
}

TEST(BandSolver, FormsNoElementWithoutAFreeEquationAndPassesOnTheFaultOfOne) {
  ListedElements cannotBeFormed({{{0, 1}, {}, {5.0, 6.0}, {7.0, 8.0}}});
  EquationSystem system = systemOf(cannotBeFormed, {1, 1});
  system.FIXED = {0.5, 0.0};
  system.ASDIS = {9.0, 9.0};
  EXPECT_EQ(solve(*makeBandSolver(bandCholesky), cannotBeFormed, system), (std::vector{0.5, 0.0}));

  system = systemOf(cannotBeFormed, {0, 1});
  EXPECT_THROW(solve(*makeBandSolver(bandLU), cannotBeFormed, system), RunEnd);
}

void expectStopOfCholesky(ListedElements& source, std::size_t positions, int equation) {
  EquationSystem system = systemOf(source, std::vector<int>(positions, 0));
  EXPECT_THAT([&] { solve(*makeBandSolver(bandCholesky), source, system); },
              Throws<RunEnd>(AllOf(Property(&RunEnd::what, StrEq("  >>>> MATRIZ DEFINIDA NEGATIVA O PIVOT NULO ")),
                                   Property(&RunEnd::A, equation), Property(&RunEnd::B, system.NBAND))));
}

TEST(BandCholesky, StopsAtTheFirstPivotThatIsNotPositive) {
  for (const double pivot : {-1000.0, std::numeric_limits<double>::quiet_NaN()})
    for (const int equation : {1, 2, 32, 33, 70, 150}) {
      ListedElements source = randomChain(150, 20, positiveDefinite, 3);
      source.element(equation - 1).ESTIF[0] = pivot;
      expectStopOfCholesky(source, 150, equation);
    }
  ListedElements vanishing({{{0, 1}, {1.0, 1.0, 1.0, 1.0}, {0.0, 0.0}, {0.0, 0.0}}});  // second pivot 1 - 1
  expectStopOfCholesky(vanishing, 2, 2);
}

}  // namespace
}  // namespace zema
