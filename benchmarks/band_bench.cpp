// Factorisation and solves of the band solvers beside those of LAPACK, in one run.
#include <benchmark/benchmark.h>
#include <cblas.h>

#include <algorithm>
#include <random>
#include <vector>

#include "foundation/parallel.h"
#include "solver/band_symmetric.h"
#include "solver/band_unsymmetric.h"

extern "C" {
void dpbtrf_(const char* uplo, const int* n, const int* kd, double* ab, const int* ldab, int* info);
void dgbtrf_(const int* m, const int* n, const int* kl, const int* ku, double* ab, const int* ldab, int* ipiv,
             int* info);
void dpbtrs_(const char* uplo, const int* n, const int* kd, const int* nrhs, const double* ab, const int* ldab,
             double* b, const int* ldb, int* info);
}

namespace {

using zema::BandMatrix;
using zema::BandPart;
using zema::WorkerPool;

// Arguments of a benchmark: equations and half-bandwidth, the diagonal not counted.
struct Size {
  explicit Size(const benchmark::State& state)
      : equations(static_cast<int>(state.range(0))), halfBandwidth(static_cast<int>(state.range(1))) {}

  int equations;
  int halfBandwidth;

  [[nodiscard]] double band() const { return static_cast<double>(equations) * halfBandwidth; }
};

void sizes(benchmark::internal::Benchmark* bench) {
  bench->Args({20000, 100})->Args({20000, 300})->Args({10000, 1000});
  bench->Unit(benchmark::kMillisecond)->UseRealTime();
}

void countFlops(benchmark::State& state, double each) {
  state.counters["FLOP"] = benchmark::Counter(each, benchmark::Counter::kIsIterationInvariantRate);
}

// Random numbers under a diagonal that outweighs them: positive definite, and no row exchange in LAPACK either.
void fill(BandMatrix& A) {
  std::mt19937 generator(1);
  std::uniform_real_distribution<double> number(-1.0, 1.0);
  for (double& value : A.STIFFG()) value = number(generator);
  for (int i = 0; i < A.NEQNS(); ++i) *A.at(i, i) = 4.0 * A.NBAND();
}

BandMatrix bandMatrix(Size size, BandPart part, WorkerPool& pool) {
  BandMatrix A;
  A.reset(size.equations, size.halfBandwidth + 1, part, pool);
  fill(A);
  return A;
}

void factorise(benchmark::State& state, BandPart part, void (*method)(BandMatrix&, WorkerPool&), double flopsPerEntry) {
  const Size size(state);
  WorkerPool pool;
  const BandMatrix A = bandMatrix(size, part, pool);
  BandMatrix factors = A;
  for (auto _ : state) {
    state.PauseTiming();
    std::ranges::copy(A.STIFFG(), factors.STIFFG().begin());
    state.ResumeTiming();
    method(factors, pool);
  }
  countFlops(state, flopsPerEntry * size.band() * size.halfBandwidth);
}

void cholesky(benchmark::State& state) {
  factorise(state, BandPart::lowerHalf, zema::COMP_CHO, 1.0);
}

void ldl(benchmark::State& state) {
  factorise(state, BandPart::lowerHalf, zema::COMP_LDL, 1.0);
}

void lu(benchmark::State& state) {
  factorise(state, BandPart::whole, zema::COMP_LU, 2.0);
}

// LAPACK's lower band by columns, A(i, j) at row i - j.
std::vector<double> lowerByColumns(const BandMatrix& A) {
  std::vector<double> columns(A.STIFFG().size());
  for (int i = 0; i < A.NEQNS(); ++i)
    for (int j = A.firstColumn(i); j <= i; ++j)
      columns[static_cast<std::size_t>(j) * static_cast<std::size_t>(A.columns()) + static_cast<std::size_t>(i - j)] =
          *A.at(i, j);
  return columns;
}

void lapackCholesky(benchmark::State& state, char half) {
  const Size size(state);
  WorkerPool pool;
  const BandMatrix A = bandMatrix(size, BandPart::lowerHalf, pool);
  // Our lower half by rows is LAPACK's upper half by columns.
  const std::vector<double> original = half == 'U' ? A.STIFFG() : lowerByColumns(A);
  std::vector<double> factors = original;
  const int leading = A.columns();
  int info = 0;
  for (auto _ : state) {
    state.PauseTiming();
    std::ranges::copy(original, factors.begin());
    state.ResumeTiming();
    dpbtrf_(&half, &size.equations, &size.halfBandwidth, factors.data(), &leading, &info);
  }
  if (info != 0) state.SkipWithError("dpbtrf failed");
  countFlops(state, size.band() * size.halfBandwidth);
}

void lapackLU(benchmark::State& state) {
  const Size size(state);
  WorkerPool pool;
  const BandMatrix A = bandMatrix(size, BandPart::whole, pool);
  const int kd = size.halfBandwidth;
  const int leading = 3 * kd + 1;  // kd more for the fill of row exchanges
  std::vector<double> original(static_cast<std::size_t>(size.equations) * static_cast<std::size_t>(leading));
  for (int i = 0; i < size.equations; ++i)
    for (int j = A.firstColumn(i); j < A.endColumn(i); ++j)
      original[static_cast<std::size_t>(j) * static_cast<std::size_t>(leading) +
               static_cast<std::size_t>(2 * kd + i - j)] = *A.at(i, j);
  std::vector<double> factors = original;
  std::vector<int> exchanges(static_cast<std::size_t>(size.equations));
  int info = 0;
  for (auto _ : state) {
    state.PauseTiming();
    std::ranges::copy(original, factors.begin());
    state.ResumeTiming();
    dgbtrf_(&size.equations, &size.equations, &kd, &kd, factors.data(), &leading, exchanges.data(), &info);
  }
  if (info != 0) state.SkipWithError("dgbtrf failed");
  countFlops(state, 2.0 * size.band() * kd);
}

void choleskySolve(benchmark::State& state) {
  const Size size(state);
  WorkerPool pool;
  BandMatrix A = bandMatrix(size, BandPart::lowerHalf, pool);
  zema::COMP_CHO(A, pool);
  std::vector<double> right(static_cast<std::size_t>(size.equations), 1.0);
  for (auto _ : state) {
    zema::S_LO_CHO(A, right);
    zema::S_UP_CHO(A, right);
  }
  countFlops(state, 4.0 * size.band());
}

void lapackCholeskySolve(benchmark::State& state) {
  const Size size(state);
  WorkerPool pool;
  BandMatrix A = bandMatrix(size, BandPart::lowerHalf, pool);
  zema::COMP_CHO(A, pool);
  std::vector<double> right(static_cast<std::size_t>(size.equations), 1.0);
  const int leading = A.columns(), one = 1;
  int info = 0;
  for (auto _ : state)
    dpbtrs_("U", &size.equations, &size.halfBandwidth, &one, A.STIFFG().data(), &leading, right.data(), &size.equations,
            &info);
  countFlops(state, 4.0 * size.band());
}

BENCHMARK(cholesky)->Apply(sizes);
BENCHMARK_CAPTURE(lapackCholesky, upper, 'U')->Apply(sizes);
BENCHMARK_CAPTURE(lapackCholesky, lower, 'L')->Apply(sizes);
BENCHMARK(ldl)->Apply(sizes);
BENCHMARK(lu)->Apply(sizes);
BENCHMARK(lapackLU)->Apply(sizes);
BENCHMARK(choleskySolve)->Apply(sizes);
BENCHMARK(lapackCholeskySolve)->Apply(sizes);

}  // namespace
