// Keeping element matrices, and the residual of a solve element by element.
#include "solver/element_matrices.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "foundation/errors.h"
#include "foundation/parallel.h"

namespace zema {
namespace {

constexpr int elementsAtATime = 64;

std::size_t index(int i) {
  return static_cast<std::size_t>(i);
}

// Shares of the elements in b and K x, element after element.
class Shares {
 public:
  Shares(ElementSource& source, const ElementMatrices& kept, const EquationSystem& system, RightHandSide side)
      : source_(source), kept_(kept), system_(system), prescribed_(system.result(side)), side_(side) {
    first_.push_back(0);
    for (int e = 0; e < source.elements(); ++e) first_.push_back(first_.back() + source.positions(e).size());
    right_.resize(first_.back());
    left_.resize(first_.back());
  }

  void find(bool pullsByKept, WorkerPool& pool) {
    pool.forEachBlock(source_.elements(), elementsAtATime, [&](int first, int last, int /*worker*/) {
      std::vector<double> ESTIF;
      for (int e = first; e < last; ++e) find(e, pullsByKept, ESTIF);
    });
  }

  // ||b - K x|| / ||b||, both summed in element order. Apart: the loads of elements nearly cancel at a node, and what a
  // small x adds would be lost among them.
  [[nodiscard]] double ratio() const {
    std::vector<double> b(index(system_.NEQNS)), product(index(system_.NEQNS));
    for (int e = 0; e < source_.elements(); ++e) {
      std::size_t k = first_[index(e)];
      for (const int p : source_.positions(e)) {
        if (const int equation = system_.IPERM[index(p)]; equation > 0) {
          b[index(equation - 1)] += right_[k];
          product[index(equation - 1)] += left_[k];
        }
        ++k;
      }
    }
    std::ranges::transform(b, product, product.begin(), std::minus<>());
    return ratioOfNorms(product, b);
  }

 private:
  void find(int e, bool pullsByKept, std::vector<double>& ESTIF) {
    const std::span<const int> positions = source_.positions(e);
    const auto pulls = [this](int p) { return system_.IPERM[index(p)] == 0 && prescribed_[index(p)] != 0.0; };
    std::span<const double> pulling = kept_.of(e);
    const bool pulled = std::ranges::any_of(positions, pulls);
    if (pulled && !pullsByKept) {
      ESTIF.resize(pulling.size());
      source_.form(e, ESTIF);
      pulling = ESTIF;
    }
    const std::span<const double> matrix = kept_.of(e), load = source_.load(e, side_);
    const std::size_t n = positions.size();
    for (std::size_t r = 0; r < n; ++r) {
      double right = load[r], left = 0.0;
      for (std::size_t c = 0; c < n; ++c) {
        const std::size_t p = index(positions[c]);
        if (const int equation = system_.IPERM[p]; equation > 0)
          left += matrix[r * n + c] * system_.ELOADG[index(equation - 1)];
        else if (pulled)
          right -= pulling[r * n + c] * prescribed_[p];
      }
      right_[first_[index(e)] + r] = right;
      left_[first_[index(e)] + r] = left;
    }
  }

  ElementSource& source_;
  const ElementMatrices& kept_;
  const EquationSystem& system_;
  const std::vector<double>& prescribed_;  // the result: a solver may have put reactions where it was prescribed
  RightHandSide side_;
  std::vector<std::size_t> first_;  // first place of each element, and the end
  std::vector<double> right_;       // element loads less matrices times prescribed values
  std::vector<double> left_;        // element matrices times the solution
};

}  // namespace

double ratioOfNorms(std::span<const double> rest, std::span<const double> b) {
  const auto norm = [](std::span<const double> v) {
    double sum = 0.0;
    for (const double value : v) sum += value * value;
    return std::sqrt(sum);
  };
  const double above = norm(rest), below = norm(b);
  return above == 0.0 && below == 0.0 ? 0.0 : above / below;
}

void ElementMatrices::fit(const ElementSource& source) {
  first_.assign(1, 0);
  for (int e = 0; e < source.elements(); ++e) {
    const std::size_t n = source.positions(e).size();
    first_.push_back(first_.back() + n * n);
  }
  values_.resize(first_.back());
}

void ElementMatrices::restore(const ElementSource& source, std::span<const double> values) {
  fit(source);
  if (values.size() != values_.size())
    throw InputFault("the element matrices of the restart data do not fit the elements of the deck");
  std::ranges::copy(values, values_.begin());
}

void KeepingSource::form(int e, std::span<double> ESTIF) {
  source_.form(e, ESTIF);
  if (kept_ != nullptr) std::ranges::copy(ESTIF, kept_->of(e).begin());
}

double relativeResidual(ElementSource& source, const ElementMatrices& kept, const EquationSystem& system,
                        RightHandSide side, bool pullsByKept, WorkerPool& pool) {
  Shares shares(source, kept, system, side);
  shares.find(pullsByKept, pool);
  return shares.ratio();
}

}  // namespace zema
