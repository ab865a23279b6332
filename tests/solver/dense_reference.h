// The solution of an element set by dense elimination with row exchange: what every solver is compared with.
#pragma once

#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "solver/equation_system.h"
#include "solver/listed_elements.h"

namespace zema {

// Solves A x = b, A n x n by rows.
inline std::vector<double> solveDense(std::vector<double> A, std::vector<double> b) {
  const std::size_t n = b.size();
  for (std::size_t k = 0; k < n; ++k) {
    std::size_t best = k;
    for (std::size_t i = k + 1; i < n; ++i)
      if (std::abs(A[i * n + k]) > std::abs(A[best * n + k])) best = i;
    for (std::size_t j = k; j < n; ++j) std::swap(A[k * n + j], A[best * n + j]);
    std::swap(b[k], b[best]);
    for (std::size_t i = k + 1; i < n; ++i) {
      const double factor = A[i * n + k] / A[k * n + k];
      for (std::size_t j = k; j < n; ++j) A[i * n + j] -= factor * A[k * n + j];
      b[i] -= factor * b[k];
    }
  }
  for (std::size_t k = n; k-- > 0;) {
    for (std::size_t j = k + 1; j < n; ++j) b[k] -= A[k * n + j] * b[j];
    b[k] /= A[k * n + k];
  }
  return b;
}

// Prescribed value of each position, plus the solution of the free ones: K_ff x = f - K_fc prescribed.
inline std::vector<double> denseResult(const ListedElements& source, const EquationSystem& system, RightHandSide side) {
  const std::vector<double>& prescribed = system.prescribed(side);
  const auto n = static_cast<std::size_t>(system.NTOTV);
  std::vector<double> K(n * n), f(n);
  for (int e = 0; e < source.elements(); ++e) {
    const std::span<const int> positions = source.positions(e);
    for (std::size_t r = 0; r < positions.size(); ++r) {
      const auto p = static_cast<std::size_t>(positions[r]);
      f[p] += source.load(e, side)[r];
      for (std::size_t c = 0; c < positions.size(); ++c)
        K[p * n + static_cast<std::size_t>(positions[c])] += source.element(e).ESTIF[r * positions.size() + c];
    }
  }
  std::vector<std::size_t> freePositions;
  for (std::size_t p = 0; p < n; ++p)
    if (system.IPERM[p] != 0) freePositions.push_back(p);
  std::vector<double> A, b;
  for (const std::size_t p : freePositions) {
    b.push_back(f[p]);
    for (std::size_t q = 0; q < n; ++q)
      if (system.IPERM[q] == 0)
        b.back() -= K[p * n + q] * prescribed[q];
      else
        A.push_back(K[p * n + q]);
  }
  const std::vector<double> x = solveDense(A, b);
  std::vector<double> result = prescribed;
  for (std::size_t i = 0; i < freePositions.size(); ++i) result[freePositions[i]] += x[i];
  return result;
}

}  // namespace zema
