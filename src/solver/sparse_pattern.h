// Where the entries of the global matrix stand in compressed rows, and where those of each element go.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "solver/equation_groups.h"

namespace zema {

/// Pattern of a matrix in compressed rows: an entry for every pair of free equations whose groups share an element, in
/// both triangles. Lives as long as the equation numbers.
class SparsePattern {
 public:
  SparsePattern() = default;
  /// `PARD_POSVECTORS`. groups and NEIG_NODES: of these elements and this system.
  SparsePattern(const ElementSource& source, const EquationSystem& system, const EquationGroups& groups,
                const IntegerLists& NEIG_NODES);

  /// Number of equations.
  [[nodiscard]] int N_PARD() const { return static_cast<int>(IA_PARD_.size()) - 1; }
  /// Number of entries.
  [[nodiscard]] std::int64_t NNZ_PARD() const { return IA_PARD_.back(); }
  /// Place of the first entry of a row, from 0; that of row N_PARD is NNZ_PARD.
  [[nodiscard]] std::int64_t IA_PARD(int row) const { return IA_PARD_[static_cast<std::size_t>(row)]; }
  /// Columns of a row, from 0, ascending. Rows of a group share their list.
  [[nodiscard]] std::span<const int> JA_PARD(int row) const {
    return JA_PARD_[groupOf_[static_cast<std::size_t>(row)]];
  }

  /// Group of a row, from 0: rows of a group have the same columns.
  [[nodiscard]] int group(int row) const { return groupOf_[static_cast<std::size_t>(row)]; }

  /// Where the columns of element e go in the row of its degree of freedom r: places behind IA_PARD of that row, -1
  /// for a fixed column. r must be free.
  [[nodiscard]] std::span<const int> places(int e, int r) const;

 private:
  void placeElements(const ElementSource& source, const EquationSystem& system, const EquationGroups& groups,
                     const IntegerLists& NEIG_NODES);

  std::vector<std::int64_t> IA_PARD_{0};
  IntegerLists JA_PARD_;      // by group
  std::vector<int> groupOf_;  // by row
  // By element: n x m places, n the degrees of freedom of the element, m the groups among its rows.
  std::vector<int> places_;
  std::vector<std::size_t> firstPlace_;  // by element
  std::vector<std::size_t> firstDof_;    // by element, and the end
  std::vector<std::uint16_t> localRow_;  // by degree of freedom of each element: which of the m rows of places
};

}  // namespace zema
