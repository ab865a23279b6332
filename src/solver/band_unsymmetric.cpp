// Unsymmetric band factorisation by tiles.
#include "solver/band_unsymmetric.h"

#include <cblas.h>

#include <cstddef>

#include "solver/line_schedule.h"

namespace zema {
namespace {

// Line i is row i of L, its tiles held transposed so that all their rows are substituted at once, and column i of U.
class UnsymmetricLines final : public LineMethod {
 public:
  explicit UnsymmetricLines(BandMatrix& A) : A_(A) {}

  bool finishLine(int i, LineScratch& scratch, const LineProgress& progress) override {
    const Lines own = tileLines(i, A_.NEQNS());
    const int first = firstTile(A_, i);
    const Begin begin{A_.firstColumn(own.first), A_.firstColumn(own.first) - first * tileSize};
    scratch.left.resize(static_cast<std::size_t>(i - first));
    scratch.above.resize(static_cast<std::size_t>(i - first));
    for (int j = first; j < i; ++j) {
      if (!progress.waitFor(j)) return false;
      const Lines other = tileLines(j, A_.NEQNS());
      finishLower(own, other, begin, scratch, scratch.left[static_cast<std::size_t>(j - first)]);
      finishUpper(own, other, begin, scratch, scratch.above[static_cast<std::size_t>(j - first)]);
    }
    finishDiagonal(own, own.first - first * tileSize, scratch);
    return true;
  }

 private:
  // Where the band of a line begins: column or row of A, and the row of the first tile in which that stands.
  struct Begin {
    int line;
    int row;
  };

  // L(i,j) = (A(i,j) - L(i,:) U(:,j)) U(j,j)^-1
  void finishLower(Lines own, Lines other, Begin begin, LineScratch& scratch, Tile& tile) const {
    copyTransposed(A_, own, other, tile);
    if (const int done = other.first - begin.line; done > 0)
      cblas_dgemm(CblasRowMajor, CblasTrans, CblasNoTrans, other.count(), own.count(), done, -1.0,
                  A_.at(begin.line, other.first), A_.stride(), scratch.left[0].row(begin.row), tileSize, 1.0,
                  tile.row(0), tileSize);
    copyTransposed(A_, other, other, scratch.triangle);
    for (int k = 0; k < other.count(); ++k)
      scratch.scales[static_cast<std::size_t>(k)] = 1.0 / scratch.triangle.row(k)[k];
    eliminate(tile, other.count(), scratch.triangle, scratch.scales);
    storeTransposed(tile, A_, own, other);
  }

  // U(j,i) = L(j,j)^-1 (A(j,i) - L(j,:) U(:,i))
  void finishUpper(Lines own, Lines other, Begin begin, LineScratch& scratch, Tile& tile) const {
    copyTile(A_, other, own, tile);
    if (const int done = other.first - begin.line; done > 0)
      cblas_dgemm(CblasRowMajor, CblasNoTrans, CblasNoTrans, other.count(), own.count(), done, -1.0,
                  A_.at(other.first, begin.line), A_.stride(), scratch.above[0].row(begin.row), tileSize, 1.0,
                  tile.row(0), tileSize);
    copyTile(A_, other, other, scratch.triangle);
    scratch.scales.fill(1.0);
    eliminate(tile, other.count(), scratch.triangle, scratch.scales);
    storeTile(tile, A_, other, own);
  }

  // L(i,i) U(i,i) = A(i,i) - L(i,:) U(:,i)
  void finishDiagonal(Lines own, int done, LineScratch& scratch) const {
    Tile& tile = scratch.triangle;
    copyTile(A_, own, own, tile);
    if (done > 0)
      cblas_dgemm(CblasRowMajor, CblasTrans, CblasNoTrans, own.count(), own.count(), done, -1.0, scratch.left[0].row(0),
                  tileSize, scratch.above[0].row(0), tileSize, 1.0, tile.row(0), tileSize);
    for (int k = 0; k < own.count(); ++k) {
      const double reciprocal = 1.0 / tile.row(k)[k];
      for (int i = k + 1; i < own.count(); ++i) {
        const double factor = tile.row(i)[k] *= reciprocal;
        for (int j = k + 1; j < own.count(); ++j) tile.row(i)[j] -= factor * tile.row(k)[j];
      }
    }
    storeTile(tile, A_, own, own);
  }

  BandMatrix& A_;
};

}  // namespace

void COMP_LU(BandMatrix& A, WorkerPool& pool) {
  UnsymmetricLines method(A);
  factoriseLines(A, method, pool);
}

// Row i of the store is column i of the transposed matrix in a band by columns: L^T is its upper part, U^T its lower.
void S_LOWER(const BandMatrix& A, std::span<double> y) {
  cblas_dtbsv(CblasColMajor, CblasUpper, CblasTrans, CblasUnit, A.NEQNS(), A.NBAND() - 1, A.STIFFG().data(),
              A.columns(), y.data(), 1);
}

void S_UPPER(const BandMatrix& A, std::span<double> x) {
  cblas_dtbsv(CblasColMajor, CblasLower, CblasTrans, CblasNonUnit, A.NEQNS(), A.NBAND() - 1, A.at(0, 0), A.columns(),
              x.data(), 1);
}

}  // namespace zema
