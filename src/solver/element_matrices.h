// The element matrices of the last assembly, kept so that any solve can be checked against the matrix it belongs to.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "solver/element_source.h"
#include "solver/equation_system.h"

namespace zema {

class WorkerPool;

/// Matrices of all elements, one behind the other: n x n by rows each, 8 n^2 bytes (4.6 kB for a brick).
class ElementMatrices {
 public:
  /// Makes room for every element of a source. Keeps the values when the sizes are those of before.
  void fit(const ElementSource& source);

  [[nodiscard]] std::span<double> of(int e) { return std::span(values_).subspan(first(e), first(e + 1) - first(e)); }
  [[nodiscard]] std::span<const double> of(int e) const {
    return std::span(values_).subspan(first(e), first(e + 1) - first(e));
  }
  [[nodiscard]] std::span<const double> values() const { return values_; }

  /// Takes back what values() gave. Throws InputFault if the number of values does not fit the source.
  void restore(const ElementSource& source, std::span<const double> values);

 private:
  [[nodiscard]] std::size_t first(int e) const { return first_[static_cast<std::size_t>(e)]; }

  std::vector<std::size_t> first_;  // first value of each element, and the end
  std::vector<double> values_;
};

/// Hands on the elements of a source and keeps each matrix that is formed.
class KeepingSource final : public ElementSource {
 public:
  /// kept: null to keep nothing.
  KeepingSource(ElementSource& source, ElementMatrices* kept) : source_(source), kept_(kept) {}

  [[nodiscard]] int elements() const override { return source_.elements(); }
  [[nodiscard]] int largest() const override { return source_.largest(); }
  [[nodiscard]] std::span<const int> positions(int e) const override { return source_.positions(e); }
  [[nodiscard]] std::span<const int> deckPositions(int e) const override { return source_.deckPositions(e); }
  void form(int e, std::span<double> ESTIF) override;
  [[nodiscard]] std::span<const double> load(int e, RightHandSide side) const override { return source_.load(e, side); }

 private:
  ElementSource& source_;
  ElementMatrices* kept_;
};

/// ||rest|| / ||b||, Euclidean norms; 0 when both are.
[[nodiscard]] double ratioOfNorms(std::span<const double> rest, std::span<const double> b);

/// ||b - K x|| / ||b|| over the free equations (see ratioOfNorms). x: the solution in ELOADG. K: the
/// kept matrices. b: the loads less the matrices times the prescribed values; with pullsByKept false these matrices
/// are formed anew, as the solve did. Does not depend on the number of threads.
[[nodiscard]] double relativeResidual(ElementSource& source, const ElementMatrices& kept, const EquationSystem& system,
                                      RightHandSide side, bool pullsByKept, WorkerPool& pool);

}  // namespace zema
