// Assembly of elements into a global system, in element order whatever the number of threads.
#pragma once

#include <span>

#include "foundation/parallel.h"
#include "solver/element_source.h"
#include "solver/equation_system.h"
#include "solver/solver.h"

namespace zema {

/// One row of an element's matrix on its way into the global matrix.
struct ElementRow {
  int element;                     ///< from 0
  int row;                         ///< row of ESTIF, from 0
  int equation;                    ///< the row's equation number, from 1
  std::span<const int> equations;  ///< equation number of each column, 0 for a fixed one
  const double* values;            ///< the row of ESTIF
};

/// A global matrix in the storage of some solver.
class GlobalMatrix {
 public:
  virtual ~GlobalMatrix() = default;

  /// Adds a row of an element. Rows of one equation come in element order; rows of different equations may come from
  /// different threads at once.
  virtual void ENSAMB(const ElementRow& row) = 0;
};

/// Forms ELOADG anew: loads of the elements of that side, less ESTIF times the prescribed values of fixed positions,
/// and adds the element matrices into `matrix` (cleared before by the caller) unless it is null: the factors are
/// reused. Elements are formed in parallel, and each global entry is summed in element order.
void KGLOB(ElementSource& source, EquationSystem& system, RightHandSide side, GlobalMatrix* matrix, WorkerPool& pool,
           SolverTimes& times);

}  // namespace zema
