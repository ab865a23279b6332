// The dense part of a front: columns of a lower triangle, their factors L D L^T, and what these take from other
// columns.
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

#include "solver/lines.h"

namespace zema {

/// The layout of the first columns of a lower triangle: bands of columns, each by columns without the rows above the
/// band. Inside a band the entries above the diagonal are stored as well, without meaning.
class BandedColumns {
 public:
  static constexpr int width = 256;  ///< columns of a band

  BandedColumns(std::size_t rows, std::size_t columns)
      : rows_(static_cast<int>(rows)), columns_(static_cast<int>(columns)) {}

  [[nodiscard]] int rows() const { return rows_; }
  [[nodiscard]] int bands() const { return (columns_ + width - 1) / width; }
  [[nodiscard]] Lines columns(int band) const { return {band * width, std::min(columns_, (band + 1) * width)}; }
  /// Distance of the columns of a band.
  [[nodiscard]] int leading(int band) const { return rows_ - band * width; }
  /// Place of the entry in the first row and column of a band.
  [[nodiscard]] std::size_t first(int band) const {
    const auto b = static_cast<std::size_t>(band), w = static_cast<std::size_t>(width);
    return w * (b * static_cast<std::size_t>(rows_) - w * (b * (b - std::min<std::size_t>(b, 1)) / 2));
  }
  /// Place of an entry; row not above the band of the column.
  [[nodiscard]] std::size_t at(int row, int column) const {
    const int band = column / width;
    return first(band) + static_cast<std::size_t>(column - band * width) * static_cast<std::size_t>(leading(band)) +
           static_cast<std::size_t>(row - band * width);
  }
  /// Reals in all.
  [[nodiscard]] std::size_t size() const {
    if (columns_ == 0) return 0;
    const int last = bands() - 1;
    return first(last) + static_cast<std::size_t>(columns(last).count()) * static_cast<std::size_t>(leading(last));
  }

 private:
  int rows_;
  int columns_;
};

/// Columns of a matrix that are factorised as L D L^T without exchanges: L with a unit diagonal below it, in place, D
/// in an array of its own (Golub and Van Loan, Matrix Computations, 4.1).
struct FactorColumns {
  BandedColumns layout;
  double* L;
  double* D;  ///< by column
};

/// Room for the work of one thread.
struct LdlScratch {
  std::span<double> values;
  static constexpr std::size_t size =
      static_cast<std::size_t>(BandedColumns::width) * static_cast<std::size_t>(BandedColumns::width);
};

/// Factorises the square on the diagonal of a band whose columns have taken what the bands before give them.
void factoriseDiagonal(const FactorColumns& factor, int band, const LdlScratch& scratch);

/// The entries of L in rows below that square.
void factoriseRows(const FactorColumns& factor, int band, Lines rows);

/// C(rows, columns) -= L(rows, k) D(k) L(columns, k)^T over the columns k of the first `bands` bands. Rows and columns
/// are counted in the matrix of L; at most BandedColumns::width columns. C: place of the entry (rows.first,
/// columns.first), by columns with the given distance; where columns.first = rows.first only the lower triangle is
/// right.
void subtractProduct(const FactorColumns& factor, int bands, Lines rows, Lines columns, double* C, int leading,
                     const LdlScratch& scratch);

/// x = L^-1 x for the columns of L, which hold the first entries of x: what they give to the entries below is taken
/// from these. x: one entry for each row.
void solveLower(const FactorColumns& factor, std::span<double> x);

/// x = L^-T x for the columns of L, with the entries of x below them known.
void solveUpper(const FactorColumns& factor, std::span<double> x);

}  // namespace zema
