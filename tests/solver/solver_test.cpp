// All solvers against dense elimination, and what the door promises: reuse, prescribed values, residual, stops,
// restart.
#include "solver/solver.h"

#include <gmock/gmock.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <numeric>

#include "foundation/channel.h"
#include "foundation/ends.h"
#include "foundation/near.h"
#include "foundation/parallel.h"
#include "solver/band_numbers.h"
#include "solver/dense_reference.h"
#include "solver/frontal_solver.h"
#include "solver/gmres.h"
#include "solver/listed_elements.h"
#include "solver/multifrontal_factors.h"
#include "solver/nested_dissection.h"
#include "solver/sparse_solver.h"

namespace zema {
namespace {

using testing::AllOf;
using enum Character;
using enum RightHandSide;
using enum SolverCode;

// The equations of an element set with some positions fixed.
EquationSystem systemOf(const ListedElements& source, const std::vector<int>& IFFIX) {
  EquationSystem system(static_cast<int>(IFFIX.size()));
  PERMUT(system, IFFIX);
  system.TOLER = 1e-15;
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
  const std::vector<double> FIXED = system.FIXED, FIXWO = system.FIXWO;  // the frontal solver leaves reactions there
  EXPECT_LE(solver.solve(source, system, side, newMatrix, pool, times).residual.value(), 1e-12);
  system.FIXED = FIXED;
  system.FIXWO = FIXWO;
  return system.result(side);
}

enum class Forming { never, whereMotionIsPrescribed, always };

// A way of solving, the matrices that it is made for, and the elements that it forms when factors are reused.
struct Method {
  const char* name;
  std::unique_ptr<Solver> (*make)();
  Character character;
  Forming forming = Forming::whereMotionIsPrescribed;
};

std::unique_ptr<Solver> makeFront(FrontForm form) {
  return makeFrontalSolver(form, testing::TempDir() + "front");
}

std::unique_ptr<Solver> makeGmres(int NKRYLO, int NITER) {
  static Channel nowhere = Channel::open("/dev/null", OpenMode::append);
  return makeGmresSolver({NKRYLO, NITER}, nowhere, nowhere);
}

void PrintTo(const Method& method, std::ostream* out) {
  *out << method.name;
}

class Solvers : public testing::TestWithParam<Method> {
 protected:
  void solveAndCompare(RightHandSide side, bool newMatrix) {
    expectNear(solve(*solver, source, system, side, newMatrix), denseResult(source, system, side), 1e-12);
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
    expectNear(result, denseResult(chain, equations, outOfBalance), 1e-13);
  }
}

TEST_P(Solvers, FactorsServeOtherLoadsAndFormOnlyElementsWithPrescribedMotion) {
  solveAndCompare(outOfBalance, true);
  EXPECT_EQ(source.formed, source.elements());

  const Forming forming = GetParam().forming;
  source.formed = 0;
  solver->release();  // a hint only
  source.element(20).ELOAD[0] += 2.0;
  source.element(20).ELOAD[1] += 1e6;  // at a position where the next element takes it back
  source.element(21).ELOAD[0] -= 1e6;
  if (forming != Forming::never) system.FIXED[0] = 1.0;  // a free position, where the frontal solver looks at none
  solveAndCompare(outOfBalance, false);
  EXPECT_EQ(source.formed, forming == Forming::always ? source.elements() : 0);

  source.formed = 0;
  system.FIXED[3] = 1.0;  // a fixed one: of elements 0 to 3 at most, for the load and for its check
  solveAndCompare(outOfBalance, false);
  if (forming == Forming::whereMotionIsPrescribed) {
    EXPECT_THAT(source.formed.load(), AllOf(testing::Ge(1), testing::Le(8)));
  } else {
    EXPECT_EQ(source.formed, forming == Forming::always ? source.elements() : 0);
  }
}

TEST_P(Solvers, HoldEveryCombinationOfFixedPositions) {
  constexpr unsigned positions = 7;
  ListedElements small = randomChain(positions, 4, GetParam().character, 11);
  for (unsigned fixed = 0; fixed < 1U << positions; ++fixed) {
    std::vector<int> IFFIX(positions);
    for (unsigned p = 0; p < positions; ++p) IFFIX[p] = static_cast<int>(fixed >> p & 1U);
    system = systemOf(small, IFFIX);
    for (std::size_t p = 0; p < positions; ++p) system.FIXED[p] = IFFIX[p] * (0.1 + static_cast<double>(p));
    system.FIXWO[2] = IFFIX[2];
    SCOPED_TRACE(fixed);
    for (const RightHandSide side : {outOfBalance, referenceLoad})
      expectNear(solve(*solver, small, system, side, side == outOfBalance), denseResult(small, system, side), 1e-13);
  }
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

INSTANTIATE_TEST_SUITE_P(
    AllCodes, Solvers,
    testing::Values(Method{"Cholesky", [] { return makeBandSolver(bandCholesky); }, positiveDefinite},
                    Method{"LDL", [] { return makeBandSolver(bandLDL); }, indefinite},
                    Method{"LU", [] { return makeBandSolver(bandLU); }, unsymmetric},
                    Method{"sparse", makeSparseSolver, positiveDefinite},
                    Method{"sparseIndefinite", makeSparseSolver, indefinite},
                    Method{"sparseUnsymmetric", makeSparseSolver, unsymmetric},
                    Method{"front", [] { return makeFront(FrontForm::symmetric); }, indefinite, Forming::never},
                    Method{"frontUnsymmetric", [] { return makeFront(FrontForm::unsymmetric); }, unsymmetric,
                           Forming::never},
                    Method{"gmres", [] { return makeGmres(40, 1000); }, positiveDefinite, Forming::always},
                    Method{"gmresIndefinite", [] { return makeGmres(40, 1000); }, indefinite, Forming::always},
                    Method{"gmresRestarted", [] { return makeGmres(7, 1000); }, unsymmetric, Forming::always}));

TEST(MultifrontalFactors, LargeFrontsNeedNoRefinementAndGiveTheSameBitsOnAnyNumberOfThreads) {
  for (const Character character : {positiveDefinite, indefinite}) {
    ListedElements cube = randomCube(15, character);
    EquationSystem system = systemOf(cube, std::vector<int>(3 * 15 * 15 * 15));
    const EquationGroups groups(cube, system);
    const IntegerLists NEIG_NODES = PARD_NEIGHBORNODES(groups);
    const SparsePattern pattern(cube, system, groups, NEIG_NODES);
    SparseMatrix matrix;
    matrix.reset(pattern);
    std::vector<std::vector<double>> results;
    for (const int threads : {1, 3}) {
      WorkerPool pool(threads);
      SolverTimes times;
      KGLOB(cube, system, outOfBalance, threads == 1 ? &matrix : nullptr, pool, times);
      std::vector<double> b(system.ELOADG.begin(), system.ELOADG.begin() + system.NEQNS), rest(b.size());
      MultifrontalFactors factors(pattern, nestedDissection(groups, NEIG_NODES));
      factors.factorise(matrix, pool);
      factors.solve(results.emplace_back(b));
      matrix.residual(b, results.back(), rest, pool);
      expectNear(rest, std::vector<double>(b.size()), 1e-12);
    }
    EXPECT_EQ(results[0], results[1]);
  }
}

TEST(SparseSolver, ExchangesRowsWherePivotsAreSmall) {
  const std::string plain = "symmetric sparse factors, ", exchanging = "symmetric sparse factors with exchanges, ";
  const std::vector<std::pair<std::vector<double>, std::string>> cases{
      {{4, 1, 1, 3}, plain},
      {{-4, 1, 1, -3}, plain},
      {{0, 1, 1, 0}, exchanging},
      {{1e6, 1e6, 1e6, 1e6 + 1e-8}, exchanging},
      {{1e-9, 1, 1, 1e-9}, exchanging},
      {{1e-9, 2, 1, 1e-9}, "unsymmetric sparse factors, "}};
  const std::unique_ptr<Solver> solver = makeSparseSolver();
  for (const auto& [matrix, note] : cases) {
    ListedElements source({{{0, 1}, matrix, {1, 2}, {0, 0}}});
    EquationSystem system = systemOf(source, {0, 0});
    WorkerPool pool(2);
    SolverTimes times;
    const SolveReport report = solver->solve(source, system, outOfBalance, true, pool, times);
    EXPECT_THAT(report.note, testing::StartsWith(note));
    EXPECT_LE(report.residual.value(), 1e-12);
  }
}

// K u - f by position: 0 where nothing is fixed, the reaction elsewhere.
std::vector<double> restOf(const ListedElements& source, const std::vector<double>& u, RightHandSide side) {
  std::vector<double> rest;
  rest.reserve(u.size());
  for (const std::vector<double>& row : assembled(source, u.size(), side))
    rest.push_back(std::inner_product(u.begin(), u.end(), row.begin(), -row.back()));
  return rest;
}

TEST(FrontalSolver, BlocksOfEquationsStayInStepAndReactionsTakeThePlaceOfMotions) {
  const std::pair<FrontForm, Character> kinds[] = {{FrontForm::symmetric, indefinite},
                                                   {FrontForm::unsymmetric, unsymmetric}};
  // Blocks hold an equation more than there are elements: less than one, exactly one, 4 + 1/5, exactly 4.
  constexpr std::pair<int, int> positionsAndStride[] = {{5, 1}, {3, 2}, {21, 6}, {20, 5}, {24, 5}};
  WorkerPool pool(2);
  SolverTimes times;
  for (const auto& [form, character] : kinds)
    for (const auto& size : positionsAndStride) {
      const int positions = size.first, stride = size.second;  // bindings cannot be captured
      ListedElements source = randomChain(positions, 2 * stride, character, 3, stride);
      const std::unique_ptr<Solver> solver = makeFront(form);
      const auto solveAndCheck = [&](int fixedOfThree, RightHandSide side, bool newMatrix) {
        std::vector<int> IFFIX(static_cast<std::size_t>(positions));
        for (std::size_t p = 0; p < IFFIX.size(); ++p) IFFIX[p] = static_cast<int>(p) % 3 == fixedOfThree ? 1 : 0;
        EquationSystem system = systemOf(source, IFFIX);
        std::ranges::transform(IFFIX, (side == outOfBalance ? system.FIXED : system.FIXWO).begin(),
                               [](int fixed) { return 0.7 * fixed; });
        const std::vector<double> expected = denseResult(source, system, side);
        solver->solve(source, system, side, newMatrix, pool, times);
        SCOPED_TRACE(testing::Message() << positions << " " << stride);
        expectNear(system.result(side), expected, 1e-13);
        expectNear(restOf(source, system.result(side), side), system.prescribed(side), 1e-13);
      };
      solveAndCheck(1, outOfBalance, true);
      solveAndCheck(1, referenceLoad, false);
      solveAndCheck(1, outOfBalance, false);
      EXPECT_EQ(source.formed, source.elements());
      solveAndCheck(2, outOfBalance, false);  // other supports: the equations are made anew
    }
}

TEST(FrontalSolver, LeavesNoRowOutForAZeroInItsPlaceAndStopsAtAPivotOfZero) {
  ListedElements source({{{0, 1, 2}, {2, 0, 1, 1, 2, 0, 0, 0, 2}, {3, 3, 2}, {0, 0, 0}}});
  EquationSystem system = systemOf(source, {0, 0, 0});
  EXPECT_EQ(solve(*makeFront(FrontForm::unsymmetric), source, system), (std::vector{1.0, 1.0, 1.0}));

  ListedElements vanishing({{{0, 1}, {1, 1, 1, 1}, {0, 0}, {0, 0}}});
  system = systemOf(vanishing, {0, 0});
  EXPECT_EQ(endOf([&] { solve(*makeFront(FrontForm::symmetric), vanishing, system); }),
            "stop 0   PIVOTE CERO O NEGATIVO ENCONTRADO PARA LA VARIABLE.    2 DE VALOR          0.000000\n");
}

TEST(FrontalSolver, HasNoNameInTheFolderWhileItRuns) {
  const auto folder = std::filesystem::path(testing::TempDir()) / "front";
  std::filesystem::create_directory(folder);
  ListedElements source = randomChain(20, 3, positiveDefinite, 1);
  EquationSystem system = systemOf(source, std::vector<int>(20, 0));
  const std::unique_ptr<Solver> solver = makeFrontalSolver(FrontForm::symmetric, folder / "job");
  solve(*solver, source, system);

  EXPECT_TRUE(std::filesystem::is_empty(folder));
  std::filesystem::remove(folder);
  EXPECT_THROW(solve(*solver, source, system), FileFault);
}

// One solve of a chain by GMRES, with what it has said.
struct GmresRun {
  GmresRun(const GmresSettings& settings, ListedElements& source, double TOLER) {
    EquationSystem system = partlyFixed(source, 0.3);
    system.TOLER = TOLER;
    WorkerPool pool(2);
    SolverTimes times;
    end = endOf([&] {
      report = makeGmresSolver(settings, listing, log)->solve(source, system, outOfBalance, true, pool, times);
    });
    result = system.ASDIS;
  }

  Channel listing = Channel::open("/dev/null", OpenMode::append);
  Channel log = Channel::open("/dev/null", OpenMode::append);
  SolveReport report;
  std::string end;
  std::vector<double> result;
};

TEST(Gmres, FormsElementsOnceOrInEveryProductWithTheSameBits) {
  ListedElements source = randomChain(300, 20, unsymmetric, 8);
  const GmresRun kept({30, 100, 0}, source, 1e-10);
  EXPECT_EQ(source.formed.exchange(0), source.elements());

  EXPECT_EQ(GmresRun({30, 100, 0, 0}, source, 1e-10).result, kept.result);
  EXPECT_GT(source.formed, 5 * source.elements());
}

TEST(Gmres, ReportsItsCourseAndHasTheSolutionZeroWithoutLoad) {
  ListedElements one({{{0}, {4.0}, {2.0}, {0.0}}});
  GmresRun course({20, 5, 1}, one, 1e-6);
  EXPECT_EQ(course.log.buffer(), std::string(61, '=') +
                                     "\n WELCOME IN GMRES SUBROUTINE....\n EQUATIONS 1   KRYLOV DIM: 20\n"
                                     " INITIAL RESIDUAL :               0.5\n RELATIVE RESIDUAL NUMBER 1 = 0.0\n"
                                     " FINAL RELATIVE RESIDUAL = 0.0\n");
  EXPECT_EQ(course.result, std::vector{0.5});

  ListedElements unloaded({{{0}, {2}, {0}, {0}}});
  EXPECT_EQ(GmresRun({5, 5, 1}, unloaded, 1e-6).result, std::vector{0.0});
}

TEST(Gmres, ToleranceIsThatOfTheSystemAndTooFewIterationsStopTheRun) {
  ListedElements source = randomChain(80, 9, positiveDefinite, 5);
  const GmresRun loose({50, 100, 0}, source, 1e-3);
  EXPECT_EQ(loose.end, "goes on");
  EXPECT_THAT(loose.report.residual.value(), AllOf(testing::Ge(1e-8), testing::Le(loose.report.largestGood)));
  EXPECT_THAT(loose.report.note, testing::HasSubstr("iterations"));

  GmresRun stopped({2, 3, 0}, source, 1e-9);
  EXPECT_THAT(stopped.end, testing::StartsWith("run end   >>>> DETENIDO EN LA RUTINA GMRES"));
  EXPECT_THAT(stopped.listing.buffer(),
              testing::HasSubstr("*** MAXIMO NUMERO DE ITERACIONES ALCANZADO VER ARCHIVO .LOG "));
  EXPECT_THAT(stopped.log.buffer(),
              testing::ContainsRegex("=\n EXITED OF GMRES SOLVER. MAXIMUM ITERATION NUMBER REACHED\n"
                                     " LAST REL. ERROR OBTAINED WAS: .* ITER: 3 *\n MAXIMUM "
                                     "ITERATION NUMBER OR KRYLOV DIMENSION SHOULD BE INCREASED\n$"));
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
  EXPECT_EQ(
      endOf([&] { solve(*makeBandSolver(bandCholesky), source, system); }),
      "run end   >>>> MATRIZ DEFINIDA NEGATIVA O PIVOT NULO " + FreeLine(equation * 1.0, system.NBAND * 1.0).text());
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
