// Sums and products of long vectors on all threads, with the same bits for any number of them.
#pragma once

#include <span>
#include <vector>

#include "foundation/parallel.h"

namespace zema {

/// Operations on vectors of N entries; each sum is formed in blocks of a fixed size, then over the blocks in order.
class ParallelVectors {
 public:
  ParallelVectors(int N, WorkerPool& pool);

  /// X . Y
  [[nodiscard]] double SCALPR(std::span<const double> X, std::span<const double> Y);
  /// Z = a X + b Y; Z may be X or Y.
  void ADVECT(double a, std::span<const double> X, double b, std::span<const double> Y, std::span<double> Z);
  /// Y = a X; Y may be X.
  void SCTVEC(double a, std::span<const double> X, std::span<double> Y);

 private:
  int N_;
  WorkerPool& pool_;
  std::vector<double> sums_;  // of the blocks
};

}  // namespace zema
