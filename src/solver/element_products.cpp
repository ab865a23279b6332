// Element by element: every element multiplies its share of a vector, then every equation sums what belongs to it.
#include "solver/element_products.h"

#include <cblas.h>

#include <cstddef>
#include <numeric>

namespace zema {
namespace {

constexpr int elementsAtATime = 32;
constexpr int equationsAtATime = 2048;

std::size_t index(int i) {
  return static_cast<std::size_t>(i);
}

}  // namespace

ElementProducts::ElementProducts(ElementSource& source, const EquationSystem& system, const ElementMatrices* kept,
                                 std::span<const double> D, WorkerPool& pool)
    : source_(source),
      kept_(kept),
      D_(D),
      pool_(pool),
      first_(1, 0),
      firstShare_(index(system.NEQNS) + 1),
      XLOC_(index(pool.size()), std::vector<double>(index(source.largest()))),
      ESTIF_(index(pool.size())) {
  for (int e = 0; e < source.elements(); ++e) {
    for (const int p : source.positions(e)) equations_.push_back(system.IPERM[index(p)]);
    first_.push_back(static_cast<int>(equations_.size()));
  }
  YLOC_.resize(equations_.size());
  for (const int equation : equations_)
    if (equation > 0) ++firstShare_[index(equation)];
  std::partial_sum(firstShare_.begin(), firstShare_.end(), firstShare_.begin());
  places_.resize(index(firstShare_.back()));
  std::vector<int> next = firstShare_;
  for (std::size_t place = 0; place < equations_.size(); ++place)
    if (equations_[place] > 0) places_[index(next[index(equations_[place] - 1)]++)] = static_cast<int>(place);
}

void ElementProducts::AX(std::span<const double> X, std::span<double> Y, std::span<const double> B) {
  pool_.forEachBlock(source_.elements(), elementsAtATime, [&](int first, int last, int worker) {
    for (int e = first; e < last; ++e) multiply(e, X, worker);
  });
  pool_.forEachBlock(static_cast<int>(Y.size()), equationsAtATime, [&](int first, int last, int /*worker*/) {
    for (int i = first; i < last; ++i) {
      const double product = SCATTER(i) / D_[index(i)];
      Y[index(i)] = B.empty() ? product : B[index(i)] - product;
    }
  });
}

// YLOC = ESTIF XLOC
void ElementProducts::multiply(int e, std::span<const double> X, int worker) {
  const int n = first_[index(e) + 1] - first_[index(e)];
  std::vector<double>& XLOC = XLOC_[index(worker)];
  GATHER(e, X, XLOC);
  std::span<const double> ESTIF;
  if (kept_ != nullptr) {
    ESTIF = kept_->of(e);
  } else {
    std::vector<double>& formed = ESTIF_[index(worker)];
    formed.resize(index(n) * index(n));
    source_.form(e, formed);
    ESTIF = formed;
  }
  cblas_dgemv(CblasRowMajor, CblasNoTrans, n, n, 1.0, ESTIF.data(), n, XLOC.data(), 1, 0.0,
              &YLOC_[index(first_[index(e)])], 1);
}

// An element's share of X, 0 at its fixed positions.
void ElementProducts::GATHER(int e, std::span<const double> X, std::span<double> XLOC) const {
  const int first = first_[index(e)];
  for (int place = first; place < first_[index(e) + 1]; ++place) {
    const int equation = equations_[index(place)];
    XLOC[index(place - first)] = equation > 0 ? X[index(equation - 1)] : 0.0;
  }
}

// The sum of the shares of an equation, from 0, in element order.
double ElementProducts::SCATTER(int equation) const {
  double sum = 0.0;
  for (int share = firstShare_[index(equation)]; share < firstShare_[index(equation) + 1]; ++share)
    sum += YLOC_[index(places_[index(share)])];
  return sum;
}

}  // namespace zema
