// The band store: size, clearing, assembly of element rows.
#include "solver/band_matrix.h"

#include <algorithm>
#include <cassert>

namespace zema {
namespace {

constexpr int rowsCleared = 512;  // rows that a thread clears at a time

}  // namespace

void BandMatrix::reset(int equations, int halfWidth, BandPart part, WorkerPool& pool) {
  assert(equations > 0 && halfWidth > 0 && halfWidth <= equations && "the band numbers belong to the equations");
  part_ = part;
  NEQNS_ = equations;
  NBAND_ = halfWidth;
  columns_ = part == BandPart::lowerHalf ? halfWidth : 2 * halfWidth - 1;
  const std::size_t size = static_cast<std::size_t>(equations) * static_cast<std::size_t>(columns_);
  if (STIFFG_.size() != size) {
    STIFFG_ = {};
    STIFFG_.resize(size);
    return;
  }
  pool.forEachBlock(equations, rowsCleared, [this](int first, int last, int /*worker*/) {
    const auto row = [this](int i) { return STIFFG_.begin() + static_cast<std::ptrdiff_t>(i) * columns_; };
    std::fill(row(first), row(last), 0.0);
  });
}

void BandMatrix::ENSAMB(const ElementRow& row) {
  const int last = part_ == BandPart::lowerHalf ? row.equation : NEQNS_;
  double* diagonal = at(row.equation - 1, row.equation - 1);
  for (std::size_t c = 0; c < row.equations.size(); ++c)
    if (const int column = row.equations[c]; column > 0 && column <= last)
      diagonal[column - row.equation] += row.values[c];
}

}  // namespace zema
