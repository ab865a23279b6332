// Symmetric band factorisations: one tile method, with what Cholesky and LDL-transposed do differently as a parameter.
#include "solver/band_symmetric.h"

#include <cblas.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "foundation/errors.h"
#include "solver/line_schedule.h"

namespace zema {
namespace {

// What Cholesky and LDL-transposed do differently, on tiles that are held transposed: a row of a tile is then a column
// of the band. Products of finished rows take L D from one of them, with D = 1 in Cholesky.

// A = L L^T.
class CholeskySteps {
 public:
  explicit CholeskySteps(const BandMatrix& A) : A_(A) {}

  // Where the finished tiles of a line are kept as L; as L D they stand on the left.
  static std::vector<Tile>& plain(LineScratch& scratch) { return scratch.left; }

  // Makes row k of a diagonal tile, from which the rows before it are subtracted, a column of L.
  void pivot(Tile& tile, Tile& /*plain*/, int k, int equation) const {
    double* column = tile.row(k);
    if (!(column[k] > 0.0)) throw RunEnd("  >>>> MATRIZ DEFINIDA NEGATIVA O PIVOT NULO ", equation + 1, A_.NBAND());
    const double scale = 1.0 / std::sqrt(column[k]);
    for (int i = 0; i < tileSize; ++i) column[i] *= scale;
  }

  // Factors of the substitution with the diagonal tile of some columns.
  void scales(Lines columns, TileScales& factors) const {
    for (int k = 0; k < columns.count(); ++k)
      factors[static_cast<std::size_t>(k)] = 1.0 / *A_.at(columns.first + k, columns.first + k);
  }

  // Makes the plain form of a tile from L D.
  void unweigh(const Tile& /*tile*/, Tile& /*plain*/, Lines /*columns*/) const {}

 private:
  const BandMatrix& A_;
};

// A = L D L^T: the substitution gives L D.
class DiagonalSteps {
 public:
  explicit DiagonalSteps(const BandMatrix& A) : D_(static_cast<std::size_t>(A.NEQNS())) {}

  static std::vector<Tile>& plain(LineScratch& scratch) { return scratch.above; }

  void pivot(const Tile& tile, Tile& plain, int k, int equation) {
    const double* column = tile.row(k);
    D_[static_cast<std::size_t>(equation)] = column[k];
    for (int i = 0; i < tileSize; ++i) plain.row(k)[i] = column[i] / column[k];
    plain.row(k)[k] = column[k];
  }

  void scales(Lines columns, TileScales& factors) const { std::fill_n(factors.begin(), columns.count(), 1.0); }

  void unweigh(const Tile& tile, Tile& plain, Lines columns) const {
    for (int k = 0; k < columns.count(); ++k) {
      const double pivot = D_[static_cast<std::size_t>(columns.first + k)];
      for (int i = 0; i < tileSize; ++i) plain.row(k)[i] = tile.row(k)[i] / pivot;
    }
  }

 private:
  std::vector<double> D_;  // pivots so far, side by side
};

template <class Steps>
class SymmetricLines final : public LineMethod {
 public:
  explicit SymmetricLines(BandMatrix& A) : A_(A), steps_(A) {}

  bool finishLine(int i, LineScratch& scratch, const LineProgress& progress) override {
    const Lines rows = tileLines(i, A_.NEQNS());
    const int first = firstTile(A_, i);
    scratch.left.resize(static_cast<std::size_t>(i - first + 1));
    std::vector<Tile>& plain = Steps::plain(scratch);
    plain.resize(scratch.left.size());
    for (int j = first; j <= i; ++j) {
      if (j < i && !progress.waitFor(j)) return false;
      const Lines columns = tileLines(j, A_.NEQNS());
      const auto place = static_cast<std::size_t>(j - first);
      Tile& tile = scratch.left[place];
      copyTransposed(A_, rows, columns, tile);
      if (j < i) {
        subtractLeft(rows, columns, first, scratch.left, tile);
        substitute(columns, scratch, tile, plain[place]);
      } else {
        subtractOwn(rows, first, scratch.left, plain, tile);
        factoriseDiagonal(rows, tile, plain[place]);
      }
      storeTransposed(plain[place], A_, rows, columns);
    }
    return true;
  }

 private:
  // tile^T -= L(j,:) (L(i,:) D)^T over the finished columns of line i
  void subtractLeft(Lines rows, Lines columns, int first, const std::vector<Tile>& left, Tile& tile) const {
    const Lines done{A_.firstColumn(rows.first), columns.first};
    if (done.count() <= 0) return;
    cblas_dgemm(CblasRowMajor, CblasNoTrans, CblasNoTrans, columns.count(), rows.count(), done.count(), -1.0,
                A_.at(columns.first, done.first), A_.stride(), left[0].row(done.first - first * tileSize), tileSize,
                1.0, tile.row(0), tileSize);
  }

  // tile -= L(i,:) (L(i,:) D)^T
  static void subtractOwn(Lines rows, int first, const std::vector<Tile>& left, const std::vector<Tile>& plain,
                          Tile& tile) {
    const int done = rows.first - first * tileSize;
    if (done <= 0) return;
    cblas_dgemm(CblasRowMajor, CblasTrans, CblasNoTrans, rows.count(), rows.count(), done, -1.0, plain[0].row(0),
                tileSize, left[0].row(0), tileSize, 1.0, tile.row(0), tileSize);
  }

  void substitute(Lines columns, LineScratch& scratch, Tile& tile, Tile& plain) const {
    copyTile(A_, columns, columns, scratch.triangle);
    steps_.scales(columns, scratch.scales);
    eliminate(tile, columns.count(), scratch.triangle, scratch.scales);
    steps_.unweigh(tile, plain, columns);
  }

  // Column by column; rows of a tile before the diagonal take part for the sake of a fixed length, without effect.
  void factoriseDiagonal(Lines rows, Tile& tile, Tile& plain) {
    for (int k = 0; k < rows.count(); ++k) {
      double sum[tileSize];
      std::copy_n(tile.row(k), tileSize, sum);
      for (int m = 0; m < k; ++m) {
        const double factor = plain.row(m)[k];
        for (int i = 0; i < tileSize; ++i) sum[i] -= factor * tile.row(m)[i];
      }
      std::copy_n(sum, tileSize, tile.row(k));
      steps_.pivot(tile, plain, k, rows.first + k);
    }
  }

  BandMatrix& A_;
  Steps steps_;
};

template <class Steps>
void factorise(BandMatrix& A, WorkerPool& pool) {
  SymmetricLines<Steps> method(A);
  factoriseLines(A, method, pool);
}

// Row i of the lower half is column i of an upper band by columns, so L y = y is a solve with the transpose.
void solveLower(const BandMatrix& A, CBLAS_TRANSPOSE transpose, CBLAS_DIAG diagonal, std::span<double> y) {
  cblas_dtbsv(CblasColMajor, CblasUpper, transpose, diagonal, A.NEQNS(), A.NBAND() - 1, A.STIFFG().data(), A.columns(),
              y.data(), 1);
}

}  // namespace

void COMP_CHO(BandMatrix& A, WorkerPool& pool) {
  factorise<CholeskySteps>(A, pool);
}

void S_LO_CHO(const BandMatrix& A, std::span<double> y) {
  solveLower(A, CblasTrans, CblasNonUnit, y);
}

void S_UP_CHO(const BandMatrix& A, std::span<double> x) {
  solveLower(A, CblasNoTrans, CblasNonUnit, x);
}

void COMP_LDL(BandMatrix& A, WorkerPool& pool) {
  factorise<DiagonalSteps>(A, pool);
}

void S_LO_LDL(const BandMatrix& A, std::span<double> y) {
  solveLower(A, CblasTrans, CblasUnit, y);
}

void DIAGONAL(const BandMatrix& A, std::span<double> y) {
  for (int i = 0; i < A.NEQNS(); ++i) y[static_cast<std::size_t>(i)] /= *A.at(i, i);
}

void S_UP_LDL(const BandMatrix& A, std::span<double> x) {
  solveLower(A, CblasNoTrans, CblasUnit, x);
}

}  // namespace zema
