// The dense matrix of the variables that are in the front.
#pragma once

#include <span>
#include <vector>

namespace zema {

/// Symmetric: the packed lower triangle alone is held and read. Unsymmetric: whole rows.
enum class FrontForm { symmetric, unsymmetric };

/// A variable's equation as it leaves the front: entries of the other variables by their slots, NFRMX each.
struct FrontEquation {
  std::span<double> EQUAT;  ///< row of the matrix
  std::span<double> EQCOL;  ///< column of the matrix; empty in the symmetric form, where it is the row

  /// What the other equations hold of the variable.
  [[nodiscard]] std::span<const double> column() const { return EQCOL.empty() ? EQUAT : EQCOL; }
};

/// The front matrix by slots, counted from 0.
class FrontMatrix {
 public:
  /// NFRMX: number of slots.
  FrontMatrix(int NFRMX, FrontForm form);

  /// Every entry 0.
  void clear();

  /// Adds an element: ESTIF n x n by rows, NDEST the slot of each of its n degrees of freedom. The symmetric form reads
  /// the lower half of ESTIF alone.
  void add(std::span<const int> NDEST, std::span<const double> ESTIF);

  /// Takes row and column of slot p out of the matrix and leaves zeros.
  void takeOut(int p, FrontEquation equation);

  /// Eliminates a variable from the first NFRON slots: row i -= (column i / pivot) EQUAT, where the entries of the
  /// variable itself in `equation` are 0. Rows with a zero in the column are left alone.
  void reduce(int NFRON, double pivot, const FrontEquation& equation);

 private:
  /// First entry of a row; the row goes on to the diagonal (symmetric) or to slot NFRMX - 1.
  [[nodiscard]] double* row(int i);

  int NFRMX_;
  FrontForm form_;
  std::vector<double> GSTIF_;
};

}  // namespace zema
