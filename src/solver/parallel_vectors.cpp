// Vector operations in blocks.
#include "solver/parallel_vectors.h"

#include <array>
#include <cstddef>
#include <numeric>

namespace zema {
namespace {

constexpr int blockSize = 8192;

// Eight running sums side by side, which the compiler can keep in vector registers.
double dot(const double* x, const double* y, int n) {
  constexpr int lanes = 8;
  std::array<double, lanes> sums{};
  int i = 0;
  for (; i + lanes <= n; i += lanes)
    for (int k = 0; k < lanes; ++k) sums[static_cast<std::size_t>(k)] += x[i + k] * y[i + k];
  double rest = 0.0;
  for (; i < n; ++i) rest += x[i] * y[i];
  return std::accumulate(sums.begin(), sums.end(), rest);
}

}  // namespace

ParallelVectors::ParallelVectors(int N, WorkerPool& pool)
    : N_(N), pool_(pool), sums_(static_cast<std::size_t>((N + blockSize - 1) / blockSize)) {}

double ParallelVectors::SCALPR(std::span<const double> X, std::span<const double> Y) {
  pool_.forEachBlock(N_, blockSize, [&](int first, int last, int /*worker*/) {
    sums_[static_cast<std::size_t>(first / blockSize)] = dot(X.data() + first, Y.data() + first, last - first);
  });
  return std::accumulate(sums_.begin(), sums_.end(), 0.0);
}

void ParallelVectors::ADVECT(double a, std::span<const double> X, double b, std::span<const double> Y,
                             std::span<double> Z) {
  pool_.forEachBlock(N_, blockSize, [&](int first, int last, int /*worker*/) {
    const double *x = X.data(), *y = Y.data();
    double* z = Z.data();
    for (int i = first; i < last; ++i) z[i] = a * x[i] + b * y[i];
  });
}

void ParallelVectors::SCTVEC(double a, std::span<const double> X, std::span<double> Y) {
  pool_.forEachBlock(N_, blockSize, [&](int first, int last, int /*worker*/) {
    for (std::size_t i = static_cast<std::size_t>(first); i < static_cast<std::size_t>(last); ++i) Y[i] = a * X[i];
  });
}

}  // namespace zema
