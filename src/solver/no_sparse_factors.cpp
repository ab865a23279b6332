// Takes the place of sparse_factors.cpp and nested_dissection.cpp where their libraries are missing: makeSolver has
// refused the deck before anything here is called.
#include <cassert>

#include "solver/nested_dissection.h"
#include "solver/sparse_factors.h"

namespace zema {

struct SparseFactors::Library {};

bool hasSparseLibrary() {
  return false;
}

std::vector<int> nestedDissection(const EquationGroups& /*groups*/, const IntegerLists& /*NEIG_NODES*/) {
  assert(false);
  return {};
}

SparseFactors::SparseFactors(const SparsePattern& /*pattern*/, bool /*symmetric*/, std::span<const int> /*order*/) {
  assert(false);
}

SparseFactors::~SparseFactors() = default;

bool SparseFactors::symmetric() const {
  return false;
}

void SparseFactors::factorise(const SparseMatrix& /*matrix*/, int /*threads*/) {}

long long SparseFactors::entries() const {
  return 0;
}

void SparseFactors::solve(std::span<double> /*x*/, int /*threads*/) {}

}  // namespace zema
