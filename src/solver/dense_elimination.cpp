// Full systems: elimination with prescribed positions left in place, and a small LU by columns.
#include "solver/dense_elimination.h"

#include <cmath>
#include <cstddef>

#include "foundation/errors.h"
#include "foundation/layout.h"
#include "foundation/single_precision.h"
#include "job/console.h"

namespace zema {
namespace {

// Left-looking factors of A: unit lower factor below the diagonal, reciprocals of the upper one's diagonal on it.
void factorise(std::span<double> A, std::size_t n, const Console& console) {
  const auto at = [&](std::size_t row, std::size_t column) -> double& { return A[column * n + row]; };
  for (std::size_t i = 0; i < n; ++i) {
    if (at(i, i) == 0.0) {
      console.say(FreeLine("Termino", static_cast<int>(i) + 1, "de la Diagonal igual a cero").text() + '\n');
      return;
    }
    at(i, i) = 1.0 / at(i, i);
    for (std::size_t m = i + 1; m < n; ++m) at(m, i) *= at(i, i);
    if (i + 1 == n) return;
    for (std::size_t k = 0; k <= i; ++k)
      for (std::size_t m = k + 1; m < n; ++m) at(m, i + 1) -= at(k, i + 1) * at(m, k);
  }
}

}  // namespace

void GREDUC(DenseSystem& system) {
  constexpr double smallestPivot = single(1.0e-10F);
  static constexpr Layout message("5X 'INCORRECT PIVOT'");
  const std::size_t n = system.ASLOD.size();
  const auto row = [&](std::size_t i) { return &system.MATRIK[i * n]; };
  for (std::size_t i = 0; i < n; ++i) {
    if (system.IFFIX[i] == 1) {
      for (std::size_t k = i; k < n; ++k) system.ASLOD[k] -= system.FIXED[i] * row(k)[i];
      continue;
    }
    const double pivot = row(i)[i];
    if (std::abs(pivot) < smallestPivot) {
      std::string text;
      message.append(text);
      throw PlainStop(text + '\n', "");
    }
    for (std::size_t k = i + 1; k < n; ++k) {
      const double factor = row(k)[i] / pivot;
      if (factor == 0.0) continue;
      for (std::size_t j = i; j < n; ++j) row(k)[j] -= factor * row(i)[j];
      system.ASLOD[k] -= factor * system.ASLOD[i];
    }
  }
}

void BAKSUB(DenseSystem& system) {
  const std::size_t n = system.ASLOD.size();
  system.ASDIS.assign(n, 0.0);
  system.REACTM.assign(n, 0.0);
  for (std::size_t i = n; i-- > 0;) {
    const double* row = &system.MATRIK[i * n];
    double rest = system.ASLOD[i];
    for (std::size_t j = i + 1; j < n; ++j) rest -= row[j] * system.ASDIS[j];
    if (system.IFFIX[i] == 1) {
      system.ASDIS[i] = system.FIXED[i];
      system.REACTM[i] = -rest;
    } else {
      system.ASDIS[i] = rest / row[i];
    }
  }
}

void SOLSYS(std::span<double> A, std::span<double> b, const Console& console) {
  const std::size_t n = b.size();
  factorise(A, n, console);
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t j = 0; j < i; ++j) b[i] -= A[j * n + i] * b[j];
  for (std::size_t i = n; i-- > 0;) {
    for (std::size_t j = i + 1; j < n; ++j) b[i] -= A[j * n + i] * b[j];
    b[i] *= A[i * n + i];
  }
}

}  // namespace zema
