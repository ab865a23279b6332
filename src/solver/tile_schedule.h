// Order and dependencies of the tiles of a banded matrix in a factorisation, on any number of threads.
#pragma once

#include <vector>

#include "foundation/parallel.h"
#include "solver/tile.h"

namespace zema {

/// Working memory of one thread.
struct TileScratch {
  Tile tile;                  ///< the tile in work
  Tile triangle;              ///< a finished diagonal tile, as the method wants it
  TileScales scales{};        ///< factors of the rows or columns of the tile
  std::vector<double> left;   ///< rows of finished factors left of the tile
  std::vector<double> above;  ///< finished factors above the tile, or a second copy of those on the left
};

/// What a factorisation does with one tile (i, j). A lower tile needs the finished tiles left of it and those of line j
/// up to the diagonal; an upper tile those above it and those of line i. Which thread comes by must not matter.
class TileMethod {
 public:
  virtual ~TileMethod() = default;

  /// Takes the tile and subtracts the products of finished tiles; runs before the diagonal tile is known.
  virtual void update(int i, int j, TileScratch& scratch) = 0;

  /// Eliminates with the diagonal tile, or factorises it if i = j, and stores. May throw: the factorisation ends.
  virtual void finish(int i, int j, TileScratch& scratch) = 0;
};

/// The tiles of a band: `tiles` lines, `reach` tiles beside the diagonal one; the lower half alone or both halves.
struct TileGrid {
  int tiles;
  int reach;
  bool bothHalves;
};

/// The tiles of a band matrix: the half or the whole that it stores.
[[nodiscard]] TileGrid tileGrid(const BandMatrix& A);

/// Runs a method over all tiles of the band. Each tile is worked on by one thread, after everything that it needs.
void factoriseTiles(const TileGrid& grid, TileMethod& method, WorkerPool& pool);

}  // namespace zema
