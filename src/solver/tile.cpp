// Copies of tiles in and out of the band, and forward substitution on a tile.
#include "solver/tile.h"

#include <algorithm>

namespace zema {
namespace {

// The part of the columns that is stored in row i of A.
Lines stored(const BandMatrix& A, int i, Lines columns) {
  const int first = std::clamp(A.firstColumn(i), columns.first, columns.end);
  return {first, std::clamp(A.endColumn(i), first, columns.end)};
}

}  // namespace

Lines tileLines(int t, int n) {
  const int first = t * tileSize;
  return {first, std::min(n, first + tileSize)};
}

void copyTile(const BandMatrix& A, Lines rows, Lines columns, Tile& tile) {
  for (int i = rows.first; i < rows.end; ++i) {
    const Lines inside = stored(A, i, columns);
    double* row = tile.row(i - rows.first);
    std::fill(row, row + (inside.first - columns.first), 0.0);
    if (inside.count() > 0) std::copy_n(A.at(i, inside.first), inside.count(), row + (inside.first - columns.first));
    std::fill(row + (inside.end - columns.first), row + columns.count(), 0.0);
  }
}

void copyTransposed(const BandMatrix& A, Lines rows, Lines columns, Tile& tile) {
  for (int i = rows.first; i < rows.end; ++i) {
    const Lines inside = stored(A, i, columns);
    double* column = tile.row(0) + (i - rows.first);
    for (int j = columns.first; j < inside.first; ++j, column += tileSize) *column = 0.0;
    for (int j = inside.first; j < inside.end; ++j, column += tileSize) *column = *A.at(i, j);
    for (int j = inside.end; j < columns.end; ++j, column += tileSize) *column = 0.0;
  }
}

void storeTile(const Tile& tile, BandMatrix& A, Lines rows, Lines columns) {
  for (int i = rows.first; i < rows.end; ++i) {
    const Lines inside = stored(A, i, columns);
    const double* row = tile.row(i - rows.first) - columns.first;
    for (int j = inside.first; j < inside.end; ++j) *A.at(i, j) = row[j];
  }
}

void storeTransposed(const Tile& tile, BandMatrix& A, Lines rows, Lines columns) {
  for (int i = rows.first; i < rows.end; ++i) {
    const Lines inside = stored(A, i, columns);
    for (int j = inside.first; j < inside.end; ++j) *A.at(i, j) = tile.row(j - columns.first)[i - rows.first];
  }
}

void eliminate(Tile& W, int count, const Tile& triangle, const TileScales& scales) {
  for (int i = 0; i < count; ++i) {
    double sum[tileSize];  // fixed length: stays in registers
    std::copy_n(W.row(i), tileSize, sum);
    for (int k = 0; k < i; ++k) {
      const double factor = triangle.row(i)[k];
      const double* known = W.row(k);
      for (int j = 0; j < tileSize; ++j) sum[j] -= factor * known[j];
    }
    const double scale = scales[static_cast<std::size_t>(i)];
    double* row = W.row(i);
    for (int j = 0; j < tileSize; ++j) row[j] = sum[j] * scale;
  }
}

}  // namespace zema
