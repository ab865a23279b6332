// Blocks of the factorisation of a front: small ones by loops, large ones by the matrix library.
#include "solver/dense_ldl.h"

#include <cblas.h>

namespace zema {
namespace {

constexpr int narrow = 32;  // columns that are factorised by loops

std::size_t index(int i) {
  return static_cast<std::size_t>(i);
}

/// The first n columns of a lower triangle, by columns.
struct Triangle {
  double* A;
  int leading;
  double* D;

  [[nodiscard]] double* at(int row, int column) const { return A + index(column) * index(leading) + row; }
};

/// n columns of at most `narrow`, square.
void factoriseNarrow(const Triangle& t, int n) {
  for (int c = 0; c < n; ++c) {
    double* const column = t.at(0, c);
    const double pivot = column[c];
    t.D[c] = pivot;
    for (int j = c + 1; j < n; ++j) {
      const double share = column[j] / pivot;
      double* const other = t.at(0, j);
      for (int i = j; i < n; ++i) other[i] -= share * column[i];
    }
    for (int i = c + 1; i < n; ++i) column[i] /= pivot;
  }
}

/// L(rows, 0..n) of rows below the square that holds the factors: A L^-T D^-1.
void divideRows(const Triangle& t, int n, int row, int rows) {
  if (rows == 0) return;
  cblas_dtrsm(CblasColMajor, CblasRight, CblasLower, CblasTrans, CblasUnit, rows, n, 1.0, t.A, t.leading, t.at(row, 0),
              t.leading);
  for (int c = 0; c < n; ++c) {
    const double share = 1.0 / t.D[c];
    double* const column = t.at(row, c);
    for (int i = 0; i < rows; ++i) column[i] *= share;
  }
}

/// scaled = (L D)(row.., 0..n) of `rows` rows, by columns.
void scaleColumns(const Triangle& t, int n, int row, int rows, double* scaled) {
  for (int c = 0; c < n; ++c) {
    const double* const column = t.at(row, c);
    for (int i = 0; i < rows; ++i) *scaled++ = column[i] * t.D[c];
  }
}

void factoriseSquare(const Triangle& t, int n, double* scratch) {
  if (n <= narrow) return factoriseNarrow(t, n);
  const int left = (n / 2 + narrow - 1) / narrow * narrow, right = n - left;
  factoriseSquare(t, left, scratch);
  divideRows(t, left, left, right);
  scaleColumns(t, left, left, right, scratch);
  cblas_dgemm(CblasColMajor, CblasNoTrans, CblasTrans, right, right, left, -1.0, t.at(left, 0), t.leading, scratch,
              right, 1.0, t.at(left, left), t.leading);
  factoriseSquare({t.at(left, left), t.leading, t.D + left}, right, scratch);
}

/// The columns of a band as a triangle that starts on the diagonal.
Triangle bandOf(const FactorColumns& factor, int band) {
  return {factor.L + factor.layout.first(band), factor.layout.leading(band),
          factor.D + factor.layout.columns(band).first};
}

}  // namespace

void factoriseDiagonal(const FactorColumns& factor, int band, const LdlScratch& scratch) {
  factoriseSquare(bandOf(factor, band), factor.layout.columns(band).count(), scratch.values.data());
}

void factoriseRows(const FactorColumns& factor, int band, Lines rows) {
  const Lines columns = factor.layout.columns(band);
  divideRows(bandOf(factor, band), columns.count(), rows.first - columns.first, rows.count());
}

void subtractProduct(const FactorColumns& factor, int bands, Lines rows, Lines columns, double* C, int leading,
                     const LdlScratch& scratch) {
  constexpr int strip = 64;  // columns of a square on the diagonal that are taken at a time, to leave out what is above
  const bool onDiagonal = rows.first == columns.first;
  for (int band = 0; band < bands; ++band) {
    const Lines k = factor.layout.columns(band);
    const Triangle t = bandOf(factor, band);
    double* const scaled = scratch.values.data();
    scaleColumns(t, k.count(), columns.first - k.first, columns.count(), scaled);
    const int step = onDiagonal ? strip : columns.count();
    for (int column = 0; column < columns.count(); column += step) {
      const int first = onDiagonal ? column : 0;
      cblas_dgemm(CblasColMajor, CblasNoTrans, CblasTrans, rows.count() - first,
                  std::min(step, columns.count() - column), k.count(), -1.0, t.at(rows.first + first - k.first, 0),
                  t.leading, scaled + column, columns.count(), 1.0, C + index(column) * index(leading) + first,
                  leading);
    }
  }
}

void solveLower(const FactorColumns& factor, std::span<double> x) {
  for (int band = 0; band < factor.layout.bands(); ++band) {
    const Lines columns = factor.layout.columns(band);
    const Triangle t = bandOf(factor, band);
    const int n = columns.count(), below = factor.layout.leading(band) - n;
    double* const own = x.data() + columns.first;
    cblas_dtrsv(CblasColMajor, CblasLower, CblasNoTrans, CblasUnit, n, t.A, t.leading, own, 1);
    if (below > 0)
      cblas_dgemv(CblasColMajor, CblasNoTrans, below, n, -1.0, t.at(n, 0), t.leading, own, 1, 1.0, own + n, 1);
  }
}

void solveUpper(const FactorColumns& factor, std::span<double> x) {
  for (int band = factor.layout.bands(); band-- > 0;) {
    const Lines columns = factor.layout.columns(band);
    const Triangle t = bandOf(factor, band);
    const int n = columns.count(), below = factor.layout.leading(band) - n;
    double* const own = x.data() + columns.first;
    if (below > 0)
      cblas_dgemv(CblasColMajor, CblasTrans, below, n, -1.0, t.at(n, 0), t.leading, own + n, 1, 1.0, own, 1);
    cblas_dtrsv(CblasColMajor, CblasLower, CblasTrans, CblasUnit, n, t.A, t.leading, own, 1);
  }
}

}  // namespace zema
