// Symmetric band factorisations: one tile method, with what Cholesky and LDL-transposed do differently as a parameter.
#include "solver/band_symmetric.h"

#include <cblas.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "foundation/errors.h"
#include "solver/blas_threads.h"
#include "solver/tile_schedule.h"

namespace zema {
namespace {

// A = L L^T.
class CholeskySteps {
 public:
  explicit CholeskySteps(const BandMatrix& A) : A_(A) {}

  // Right factor of a product of finished rows: L itself.
  void weigh(double* /*rows*/, int /*count*/, Lines /*columns*/) const {}

  // Factorises the lower triangle of a diagonal tile that is held transposed.
  void factorise(Tile& tile, Lines lines) const {
    for (int k = 0; k < lines.count(); ++k) {
      double* column = tile.row(k);
      if (!(column[k] > 0.0))
        throw RunEnd("  >>>> MATRIZ DEFINIDA NEGATIVA O PIVOT NULO ", lines.first + k + 1, A_.NBAND());
      const double scale = 1.0 / std::sqrt(column[k]);
      for (int i = k; i < lines.count(); ++i) column[i] *= scale;
      for (int j = k + 1; j < lines.count(); ++j)
        for (int i = j; i < lines.count(); ++i) tile.row(j)[i] -= column[j] * column[i];
    }
  }

  // Factors of the substitution with the diagonal tile.
  void scales(Lines lines, TileScales& factors) const {
    for (int k = 0; k < lines.count(); ++k)
      factors[static_cast<std::size_t>(k)] = 1.0 / *A_.at(lines.first + k, lines.first + k);
  }

  // From the substitution's result, held transposed, to L.
  void complete(Tile& /*tile*/, Lines /*columns*/) const {}

 private:
  const BandMatrix& A_;
};

// A = L D L^T: products of rows carry D, and the substitution gives L D.
class DiagonalSteps {
 public:
  explicit DiagonalSteps(const BandMatrix& A) : A_(A) {}

  void weigh(double* rows, int count, Lines columns) const {
    for (int i = 0; i < count; ++i)
      for (int k = columns.first; k < columns.end; ++k) *rows++ *= *A_.at(k, k);
  }

  void factorise(Tile& tile, Lines lines) const {
    for (int k = 0; k < lines.count(); ++k) {
      double* column = tile.row(k);
      for (int j = k + 1; j < lines.count(); ++j) {
        const double factor = column[j] / column[k];
        for (int i = j; i < lines.count(); ++i) tile.row(j)[i] -= factor * column[i];
      }
      for (int i = k + 1; i < lines.count(); ++i) column[i] /= column[k];
    }
  }

  void scales(Lines lines, TileScales& factors) const { std::fill_n(factors.begin(), lines.count(), 1.0); }

  void complete(Tile& tile, Lines columns) const {
    for (int k = 0; k < columns.count(); ++k) {
      const double pivot = *A_.at(columns.first + k, columns.first + k);
      for (int i = 0; i < tileSize; ++i) tile.row(k)[i] /= pivot;
    }
  }

 private:
  const BandMatrix& A_;
};

// Tiles are held transposed: a column of the band is then contiguous, and all rows of a tile are substituted at once.
template <class Steps>
class SymmetricTiles final : public TileMethod {
 public:
  explicit SymmetricTiles(BandMatrix& A) : A_(A), steps_(A) {}

  void update(int i, int j, TileScratch& scratch) override {
    const Lines rows = tileLines(i, A_.NEQNS());
    const Lines columns = tileLines(j, A_.NEQNS());
    copyTransposed(A_, rows, columns, scratch.tile);
    const Lines done{A_.firstColumn(rows.first), columns.first};
    if (done.count() <= 0) return;
    const double* right = i == j ? copyRows(rows, done, scratch.above) : A_.at(columns.first, done.first);
    const int rightStride = i == j ? done.count() : A_.stride();
    const double* left = copyRows(rows, done, scratch.left);
    steps_.weigh(scratch.left.data(), rows.count(), done);
    // tile^T -= L(j,:) (L(i,:) D)^T
    cblas_dgemm(CblasRowMajor, CblasNoTrans, CblasTrans, columns.count(), rows.count(), done.count(), -1.0, right,
                rightStride, left, done.count(), 1.0, scratch.tile.row(0), tileSize);
  }

  void finish(int i, int j, TileScratch& scratch) override {
    const Lines rows = tileLines(i, A_.NEQNS());
    const Lines columns = tileLines(j, A_.NEQNS());
    if (i == j) {
      steps_.factorise(scratch.tile, rows);
    } else {
      copyBlock(A_, columns, columns, scratch.triangle.row(0), tileSize);
      steps_.scales(columns, scratch.scales);
      eliminate(scratch.tile, columns.count(), scratch.triangle, scratch.scales);
      steps_.complete(scratch.tile, columns);
    }
    storeTransposed(scratch.tile, A_, rows, columns);
  }

 private:
  // Rows of finished factors, with zeros where they leave the band.
  const double* copyRows(Lines rows, Lines columns, std::vector<double>& out) const {
    out.resize(static_cast<std::size_t>(tileSize) * static_cast<std::size_t>(A_.NBAND()));
    copyBlock(A_, rows, columns, out.data(), columns.count());
    return out.data();
  }

  BandMatrix& A_;
  Steps steps_;
};

template <class Steps>
void factorise(BandMatrix& A, WorkerPool& pool) {
  const SingleThreadedBlas oneThread;
  SymmetricTiles<Steps> method(A);
  factoriseTiles(tileGrid(A), method, pool);
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
