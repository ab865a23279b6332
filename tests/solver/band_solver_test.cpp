// The band solvers against dense elimination, and what the door promises: reuse, prescribed values, stops, restart.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <tuple>

#include "foundation/channel.h"
#include "foundation/errors.h"
#include "foundation/parallel.h"
#include "solver/band_numbers.h"
#include "solver/dense_reference.h"
#include "solver/listed_elements.h"
#include "solver/solver.h"

namespace zema {
namespace {

// The system of an element set with some positions fixed.
EquationSystem systemOf(const ListedElements& source, const std::vector<int>& IFFIX) {
  EquationSystem system(static_cast<int>(IFFIX.size()));
  PERMUT(system, IFFIX);
  EVALMBANDA(source, system);
  Channel nowhere = Channel::open("/dev/null", OpenMode::append);
  CALC_NBA(source, system, {SolverCode::bandLU, false}, nowhere);
  return system;
}

// One solve with solver-owned odds and ends.
void solve(Solver& solver, ListedElements& source, EquationSystem& system, RightHandSide side, bool newMatrix,
           int threads = 2) {
  WorkerPool pool(threads);
  SolverTimes times;
  solver.solve(source, system, side, newMatrix, pool, times);
}

void expectNear(const std::vector<double>& found, const std::vector<double>& expected, double tolerance) {
  ASSERT_EQ(found.size(), expected.size());
  for (std::size_t p = 0; p < found.size(); ++p) EXPECT_NEAR(found[p], expected[p], tolerance) << "position " << p;
}

// Every seventh position fixed, every second of these with a prescribed value.
std::vector<int> someFixed(int positions) {
  std::vector<int> IFFIX(static_cast<std::size_t>(positions));
  for (std::size_t p = 3; p < IFFIX.size(); p += 7) IFFIX[p] = 1;
  return IFFIX;
}

void prescribe(EquationSystem& system, double value) {
  for (std::size_t p = 3; p < system.FIXED.size(); p += 14) {
    system.FIXED[p] = value;
    system.FIXWO[p] = -2.0 * value;
  }
}

struct Case {
  SolverCode code;
  Character character;
};

// Sizes around the blocks of the factorisation, bands from diagonal to full.
class BandSolverSizes : public testing::TestWithParam<std::tuple<Case, std::tuple<int, int>>> {};

TEST_P(BandSolverSizes, AgreesWithDenseEliminationOnAnyNumberOfThreads) {
  const auto [kind, size] = GetParam();
  const auto [positions, reach] = size;
  ListedElements source = randomChain(positions, reach, kind.character, 17);
  EquationSystem system = systemOf(source, someFixed(positions));
  prescribe(system, 0.3);
  const auto solver = makeBandSolver(kind.code);

  solve(*solver, source, system, RightHandSide::outOfBalance, true, 1);
  const std::vector<double> onOneThread = system.ASDIS;
  solve(*solver, source, system, RightHandSide::outOfBalance, true, 3);

  EXPECT_EQ(system.ASDIS, onOneThread);
  expectNear(system.ASDIS, denseResult(source, system, RightHandSide::outOfBalance), 1e-13);
}

INSTANTIATE_TEST_SUITE_P(AllSizes, BandSolverSizes,
                         testing::Combine(testing::Values(Case{SolverCode::bandCholesky, Character::positiveDefinite},
                                                          Case{SolverCode::bandLDL, Character::positiveDefinite},
                                                          Case{SolverCode::bandLDL, Character::indefinite},
                                                          Case{SolverCode::bandLU, Character::indefinite},
                                                          Case{SolverCode::bandLU, Character::unsymmetric}),
                                          testing::Values(std::tuple(1, 0), std::tuple(2, 1), std::tuple(5, 0),
                                                          std::tuple(31, 2), std::tuple(32, 31), std::tuple(33, 32),
                                                          std::tuple(70, 33), std::tuple(100, 99), std::tuple(160, 1),
                                                          std::tuple(211, 40), std::tuple(300, 75))));

class BandSolvers : public testing::TestWithParam<Case> {
 protected:
  ListedElements source = randomChain(80, 9, GetParam().character, 5);
  EquationSystem system = systemOf(source, someFixed(80));
  std::unique_ptr<Solver> solver = makeBandSolver(GetParam().code);
};

TEST_P(BandSolvers, ReuseFactorsForANewRightHandSide) {
  solve(*solver, source, system, RightHandSide::outOfBalance, true);
  for (int e = 0; e < source.elements(); ++e) source.element(e).ELOAD[0] += 0.1 * e;
  prescribe(system, 0.7);

  solve(*solver, source, system, RightHandSide::outOfBalance, false);

  expectNear(system.ASDIS, denseResult(source, system, RightHandSide::outOfBalance), 1e-12);
}

TEST_P(BandSolvers, ReuseFormsOnlyElementsWithPrescribedMotion) {
  solve(*solver, source, system, RightHandSide::outOfBalance, true);
  EXPECT_EQ(source.formed, source.elements());
  source.formed = 0;
  system.FIXED[0] = 1.0;  // a free position

  solve(*solver, source, system, RightHandSide::outOfBalance, false);
  EXPECT_EQ(source.formed, 0);
  expectNear(system.ASDIS, denseResult(source, system, RightHandSide::outOfBalance), 1e-12);

  system.FIXED[3] = 1.0;  // a fixed one: of elements 0 to 3 at most
  solve(*solver, source, system, RightHandSide::outOfBalance, false);
  EXPECT_GE(source.formed, 1);
  EXPECT_LE(source.formed, 4);
  expectNear(system.ASDIS, denseResult(source, system, RightHandSide::outOfBalance), 1e-12);
}

TEST_P(BandSolvers, ReferenceLoadGoesWithItsOwnVectors) {
  prescribe(system, 0.4);
  solve(*solver, source, system, RightHandSide::outOfBalance, true);
  const std::vector<double> ASDIS = system.ASDIS;

  solve(*solver, source, system, RightHandSide::referenceLoad, false);

  EXPECT_EQ(system.ASDIS, ASDIS);
  expectNear(system.DISPM, denseResult(source, system, RightHandSide::referenceLoad), 1e-12);
}

TEST_P(BandSolvers, FactorsOutliveARestart) {
  solve(*solver, source, system, RightHandSide::outOfBalance, true);
  const std::vector<double> factors(solver->factors().begin(), solver->factors().end());
  solve(*solver, source, system, RightHandSide::referenceLoad, false);
  const std::vector<double> DISPM = system.DISPM;
  const auto restarted = makeBandSolver(GetParam().code);

  restarted->restoreFactors(system, factors);
  solve(*restarted, source, system, RightHandSide::referenceLoad, false);

  EXPECT_EQ(system.DISPM, DISPM);
  EXPECT_THROW(restarted->restoreFactors(system, std::span(factors).first(factors.size() - 1)), InputFault);
}

TEST_P(BandSolvers, FollowNewFixities) {
  solve(*solver, source, system, RightHandSide::outOfBalance, true);
  EquationSystem next = systemOf(source, std::vector<int>(80, 0));

  solve(*solver, source, next, RightHandSide::outOfBalance, true);

  expectNear(next.ASDIS, denseResult(source, next, RightHandSide::outOfBalance), 1e-12);
}

INSTANTIATE_TEST_SUITE_P(AllCodes, BandSolvers,
                         testing::Values(Case{SolverCode::bandCholesky, Character::positiveDefinite},
                                         Case{SolverCode::bandLDL, Character::indefinite},
                                         Case{SolverCode::bandLU, Character::unsymmetric}));

// Element by element that is added to entries 0.1, 0.2, ...: another order of the sums gives other bits.
TEST(Assembly, SumsInElementOrder) {
  std::vector<ListedElement> list;
  double stiffness = 0.0, load = 0.0;
  for (int e = 1; e <= 40000; ++e) {
    list.push_back({{0}, {0.1 * e}, {0.3 * e}, {0.0}});
    stiffness += 0.1 * e;
    load += 0.3 * e;
  }
  ListedElements source(std::move(list));
  EquationSystem system = systemOf(source, {0});

  for (const int threads : {1, 2, 4}) {
    solve(*makeBandSolver(SolverCode::bandLU), source, system, RightHandSide::outOfBalance, true, threads);
    EXPECT_EQ(system.ASDIS[0], load / stiffness) << threads << " threads";
  }
}

TEST(BandSolver, SymmetricCodesReadTheLowerHalfAlone) {
  ListedElements source({{{0, 1}, {4.0, 99.0, 2.0, 3.0}, {8.0, 8.0}, {0.0, 0.0}}});
  EquationSystem system = systemOf(source, {0, 0});

  for (const SolverCode code : {SolverCode::bandCholesky, SolverCode::bandLDL}) {
    solve(*makeBandSolver(code), source, system, RightHandSide::outOfBalance, true);
    expectNear(system.ASDIS, {1.0, 2.0}, 1e-14);  // of (4 2; 2 3)
  }
}

TEST(BandSolver, NoFreeEquationLeavesThePrescribedValues) {
  ListedElements source({{{0, 1}, {1.0, 2.0, 3.0, 4.0}, {5.0, 6.0}, {7.0, 8.0}}});
  EquationSystem system = systemOf(source, {1, 1});
  system.FIXED = {0.5, 0.0};
  system.ASDIS = {9.0, 9.0};

  solve(*makeBandSolver(SolverCode::bandCholesky), source, system, RightHandSide::outOfBalance, true);

  EXPECT_EQ(system.NEQNS, 0);
  EXPECT_EQ(system.ASDIS, (std::vector<double>{0.5, 0.0}));
  EXPECT_EQ(source.formed, 0);
}

// The equation at which Cholesky stops, 0 if it does not.
int stopOfCholesky(ListedElements& source, int positions) {
  EquationSystem system = systemOf(source, std::vector<int>(static_cast<std::size_t>(positions), 0));
  try {
    solve(*makeBandSolver(SolverCode::bandCholesky), source, system, RightHandSide::outOfBalance, true);
  } catch (const RunEnd& stop) {
    EXPECT_STREQ(stop.what(), "  >>>> MATRIZ DEFINIDA NEGATIVA O PIVOT NULO ");
    EXPECT_EQ(stop.B(), system.NBAND);
    return static_cast<int>(stop.A());
  }
  return 0;
}

TEST(BandCholesky, StopsAtTheFirstPivotThatIsNotPositive) {
  for (const double pivot : {-1000.0, std::numeric_limits<double>::quiet_NaN()})
    for (const int equation : {1, 2, 32, 33, 70, 150}) {
      ListedElements source = randomChain(150, 20, Character::positiveDefinite, 3);
      source.element(equation - 1).ESTIF[0] = pivot;
      EXPECT_EQ(stopOfCholesky(source, 150), equation) << "with " << pivot;
    }
}

TEST(BandCholesky, StopsAtAPivotThatVanishesInTheElimination) {
  // (1 1; 1 1): the second pivot is 1 - 1
  ListedElements source({{{0, 1}, {1.0, 1.0, 1.0, 1.0}, {0.0, 0.0}, {0.0, 0.0}}});
  EXPECT_EQ(stopOfCholesky(source, 2), 2);

  ListedElements withLoosePosition({{{0}, {1.0}, {1.0}, {0.0}}});
  EXPECT_EQ(stopOfCholesky(withLoosePosition, 2), 2);
}

TEST(BandSolver, SingularSystemsShowInTheSolution) {
  ListedElements source({{{0, 1}, {1.0, 1.0, 1.0, 1.0}, {1.0, 2.0}, {0.0, 0.0}}});
  EquationSystem system = systemOf(source, {0, 0});

  for (const SolverCode code : {SolverCode::bandLU, SolverCode::bandLDL}) {
    solve(*makeBandSolver(code), source, system, RightHandSide::outOfBalance, true);
    EXPECT_FALSE(std::isfinite(system.ASDIS[0]) && std::isfinite(system.ASDIS[1]));
  }
}

TEST(BandSolver, FaultOfAnElementReachesTheCaller) {
  class Failing final : public ElementSource {
   public:
    [[nodiscard]] int elements() const override { return 1; }
    [[nodiscard]] int largest() const override { return 1; }
    [[nodiscard]] std::span<const int> positions(int /*e*/) const override { return {&position_, 1}; }
    [[nodiscard]] std::span<const int> deckPositions(int /*e*/) const override { return {&position_, 1}; }
    void form(int /*e*/, std::span<double> /*ESTIF*/) override { throw RunEnd("no element", 1.0, 2.0); }
    [[nodiscard]] std::span<const double> load(int /*e*/, RightHandSide /*side*/) const override { return {}; }

   private:
    int position_ = 0;
  };
  Failing source;
  EquationSystem system(1);
  PERMUT(system, std::vector{0});
  WorkerPool pool(2);
  SolverTimes times;

  EXPECT_THROW(
      makeBandSolver(SolverCode::bandLU)->solve(source, system, RightHandSide::outOfBalance, true, pool, times),
      RunEnd);
}

}  // namespace
}  // namespace zema
