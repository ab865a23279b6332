// The solution of an element set by dense elimination: what every solver is compared with.
#pragma once

#include <cstddef>
#include <vector>

#include "solver/equation_system.h"
#include "solver/listed_elements.h"

namespace zema {

// The assembled matrix of n positions, with the load in a last column.
inline std::vector<std::vector<double>> assembled(const ListedElements& source, std::size_t n, RightHandSide side) {
  std::vector K(n, std::vector<double>(n + 1));
  for (int e = 0; e < source.elements(); ++e) {
    const std::span<const int> positions = source.positions(e);
    for (std::size_t r = 0; r < positions.size(); ++r) {
      std::vector<double>& row = K[static_cast<std::size_t>(positions[r])];
      row[n] += source.load(e, side)[r];
      for (std::size_t c = 0; c < positions.size(); ++c)
        row[static_cast<std::size_t>(positions[c])] += source.element(e).ESTIF[r * positions.size() + c];
    }
  }
  return K;
}

// Prescribed value of each position, plus the solution of the free ones. No row exchange: the diagonal must outweigh
// its row.
inline std::vector<double> denseResult(const ListedElements& source, const EquationSystem& system, RightHandSide side) {
  std::vector<double> result = system.prescribed(side);
  const std::size_t n = result.size();
  std::vector<std::vector<double>> K = assembled(source, n, side);
  for (std::size_t p = 0; p < n; ++p) {
    if (system.IPERM[p] != 0) continue;
    K[p].assign(n + 1, 0.0);  // the equation of a fixed position: x = prescribed
    K[p][p] = 1.0;
    K[p][n] = result[p];
  }
  for (std::size_t k = 0; k < n; ++k)
    for (std::size_t i = 0; i < n; ++i) {
      const double factor = i == k ? 0.0 : K[i][k] / K[k][k];
      for (std::size_t j = k; j <= n; ++j) K[i][j] -= factor * K[k][j];
    }
  for (std::size_t p = 0; p < n; ++p)
    if (system.IPERM[p] != 0) result[p] += K[p][n] / K[p][p];
  return result;
}

}  // namespace zema
