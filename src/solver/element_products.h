// Products of the global matrix with vectors, element by element, without the matrix.
#pragma once

#include <span>
#include <vector>

#include "foundation/parallel.h"
#include "solver/blas_threads.h"
#include "solver/element_matrices.h"
#include "solver/element_source.h"
#include "solver/equation_system.h"

namespace zema {

/// The matrix K of the free equations as the sum of its elements, behind a diagonal preconditioner D.
class ElementProducts {
 public:
  /// kept: the matrices of all elements; null: each is formed again in every product.
  /// D: diagonal, NEQNS entries. All must outlive the object.
  ElementProducts(ElementSource& source, const EquationSystem& system, const ElementMatrices* kept,
                  std::span<const double> D, WorkerPool& pool);

  /// Y = D^-1 K X; with B not empty Y = B - D^-1 K X. NEQNS entries each. Sums are formed in element order.
  void AX(std::span<const double> X, std::span<double> Y, std::span<const double> B = {});

 private:
  void multiply(int e, std::span<const double> X, int worker);
  void GATHER(int e, std::span<const double> X, std::span<double> XLOC) const;
  [[nodiscard]] double SCATTER(int equation) const;

  ElementSource& source_;
  const ElementMatrices* kept_;
  std::span<const double> D_;
  WorkerPool& pool_;
  BlasThreads perElement_{1};               // the library works on the thread that asks it
  std::vector<int> first_;                  // by element: its first place among the shares, and the end
  std::vector<int> equations_;              // by place: equation number, 0 for a fixed position
  std::vector<int> firstShare_;             // by equation from 0: its first entry in places_, and the end
  std::vector<int> places_;                 // places that an equation is the sum of, in element order
  std::vector<double> YLOC_;                // by place: element matrix times XLOC
  std::vector<std::vector<double>> XLOC_;   // scratch of each worker: an element's share of X
  std::vector<std::vector<double>> ESTIF_;  // scratch of each worker: a matrix formed again
};

}  // namespace zema
