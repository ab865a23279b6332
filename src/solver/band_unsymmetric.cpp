// Unsymmetric band factorisation by tiles.
#include "solver/band_unsymmetric.h"

#include <cblas.h>

#include <algorithm>
#include <cstddef>

#include "solver/blas_threads.h"
#include "solver/tile_schedule.h"

namespace zema {
namespace {

// Factorises a diagonal tile.
void factorise(Tile& tile, int count) {
  for (int k = 0; k < count; ++k) {
    const double reciprocal = 1.0 / tile.row(k)[k];
    for (int i = k + 1; i < count; ++i) {
      const double factor = tile.row(i)[k] *= reciprocal;
      for (int j = k + 1; j < count; ++j) tile.row(i)[j] -= factor * tile.row(k)[j];
    }
  }
}

// Tiles below the diagonal are held transposed, so that all their rows are substituted at once; the others as they are.
class UnsymmetricTiles final : public TileMethod {
 public:
  explicit UnsymmetricTiles(BandMatrix& A) : A_(A) {}

  void update(int i, int j, TileScratch& scratch) override {
    const Lines rows = tileLines(i, A_.NEQNS());
    const Lines columns = tileLines(j, A_.NEQNS());
    const int farther = std::max(rows.first, columns.first);
    const Lines done{A_.firstColumn(farther), std::min(rows.first, columns.first)};
    if (i > j)
      copyTransposed(A_, rows, columns, scratch.tile);
    else
      copyBlock(A_, rows, columns, scratch.tile.row(0), tileSize);
    if (done.count() <= 0) return;
    if (i > j)
      updateLower(rows, columns, done, scratch);
    else
      updateUpper(rows, columns, done, scratch, i == j);
  }

  void finish(int i, int j, TileScratch& scratch) override {
    const Lines rows = tileLines(i, A_.NEQNS());
    const Lines columns = tileLines(j, A_.NEQNS());
    if (i == j)
      factorise(scratch.tile, rows.count());
    else if (i > j)
      eliminateLower(columns, scratch);
    else
      eliminateUpper(rows, scratch);
    if (i > j)
      storeTransposed(scratch.tile, A_, rows, columns);
    else
      storeTile(scratch.tile, A_, rows, columns);
  }

 private:
  // tile^T -= U(:,j)^T L(i,:)^T
  void updateLower(Lines rows, Lines columns, Lines done, TileScratch& scratch) const {
    const double* left = copyLeft(rows, done, scratch.left);
    cblas_dgemm(CblasRowMajor, CblasTrans, CblasTrans, columns.count(), rows.count(), done.count(), -1.0,
                A_.at(done.first, columns.first), A_.stride(), left, done.count(), 1.0, scratch.tile.row(0), tileSize);
  }

  // tile -= L(i,:) U(:,j); on the diagonal L leaves the band as well
  void updateUpper(Lines rows, Lines columns, Lines done, TileScratch& scratch, bool diagonal) const {
    const double* left = diagonal ? copyLeft(rows, done, scratch.left) : A_.at(rows.first, done.first);
    const int leftStride = diagonal ? done.count() : A_.stride();
    scratch.above.resize(workSize());
    copyBlock(A_, done, columns, scratch.above.data(), tileSize);
    cblas_dgemm(CblasRowMajor, CblasNoTrans, CblasNoTrans, rows.count(), columns.count(), done.count(), -1.0, left,
                leftStride, scratch.above.data(), tileSize, 1.0, scratch.tile.row(0), tileSize);
  }

  // L(i,j) = tile U(j,j)^-1
  void eliminateLower(Lines columns, TileScratch& scratch) const {
    copyTransposed(A_, columns, columns, scratch.triangle);
    for (int k = 0; k < columns.count(); ++k)
      scratch.scales[static_cast<std::size_t>(k)] = 1.0 / scratch.triangle.row(k)[k];
    eliminate(scratch.tile, columns.count(), scratch.triangle, scratch.scales);
  }

  // U(i,j) = L(i,i)^-1 tile
  void eliminateUpper(Lines rows, TileScratch& scratch) const {
    copyBlock(A_, rows, rows, scratch.triangle.row(0), tileSize);
    std::fill_n(scratch.scales.begin(), rows.count(), 1.0);
    eliminate(scratch.tile, rows.count(), scratch.triangle, scratch.scales);
  }

  [[nodiscard]] std::size_t workSize() const {
    return static_cast<std::size_t>(tileSize) * static_cast<std::size_t>(A_.NBAND());
  }

  // Rows of L left of the tile, with zeros where they leave the band.
  const double* copyLeft(Lines rows, Lines columns, std::vector<double>& out) const {
    out.resize(workSize());
    copyBlock(A_, rows, columns, out.data(), columns.count());
    return out.data();
  }

  BandMatrix& A_;
};

}  // namespace

void COMP_LU(BandMatrix& A, WorkerPool& pool) {
  const SingleThreadedBlas oneThread;
  UnsymmetricTiles method(A);
  factoriseTiles(tileGrid(A), method, pool);
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
