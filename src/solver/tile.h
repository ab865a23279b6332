// Square tiles of the band: copies in and out, and the small dense steps that a blocked factorisation makes on them.
#pragma once

#include <array>

#include "solver/band_matrix.h"
#include "solver/lines.h"

namespace zema {

/// Rows and columns of a tile. Small enough for the first cache together with its triangle, and for the steps on the
/// diagonal to stay a small share of the work; large enough for matrix products at full speed.
inline constexpr int tileSize = 32;

/// The lines of tile number t of a matrix with n lines.
[[nodiscard]] Lines tileLines(int t, int n);

/// A dense tile by rows; what lies beyond the lines in use is of no meaning. Tiles side by side in memory make one
/// matrix by rows with the leading dimension tileSize.
struct alignas(64) Tile {
  std::array<double, static_cast<std::size_t>(tileSize* tileSize)> values{};

  [[nodiscard]] double* row(int i) { return &values[static_cast<std::size_t>(i * tileSize)]; }
  [[nodiscard]] const double* row(int i) const { return &values[static_cast<std::size_t>(i * tileSize)]; }
};

/// One factor for each line of a tile.
using TileScales = std::array<double, tileSize>;

/// Copies rows x columns of A to a tile; 0 outside the stored band. Transposed: with rows and columns exchanged.
void copyTile(const BandMatrix& A, Lines rows, Lines columns, Tile& tile);
void copyTransposed(const BandMatrix& A, Lines rows, Lines columns, Tile& tile);

/// Copies a tile back to rows x columns of A; what lies outside the stored band is dropped.
void storeTile(const Tile& tile, BandMatrix& A, Lines rows, Lines columns);
void storeTransposed(const Tile& tile, BandMatrix& A, Lines rows, Lines columns);

/// Forward substitution on all columns of a tile at once:
/// W(i,:) = (W(i,:) - sum of triangle(i,k) W(k,:) over k < i) scales(i), for the rows i below `count` in ascending
/// order.
void eliminate(Tile& W, int count, const Tile& triangle, const TileScales& scales);

}  // namespace zema
