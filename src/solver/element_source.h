// The door through which a solver pulls elements: it knows neither kernel nor element type, dimension or node count.
#pragma once

#include <span>

namespace zema {

/// Which load vector of the elements a solve takes, and with it which prescribed values and which result vector.
enum class RightHandSide : int {
  outOfBalance = 1,  ///< ELOAD(:,1) with FIXED, result in ASDIS
  referenceLoad = 2  ///< RLOAD(:,1) with FIXWO, result in DISPM
};

/// The elements of a model as a solver sees them. Elements and degree-of-freedom positions count from 0.
class ElementSource {
 public:
  virtual ~ElementSource() = default;

  /// Number of elements.
  [[nodiscard]] virtual int elements() const = 0;

  /// NEVAB: the largest number of degrees of freedom of an element.
  [[nodiscard]] virtual int largest() const = 0;

  /// Global position of each degree of freedom of element e, in the working numbering of the nodes.
  [[nodiscard]] virtual std::span<const int> positions(int e) const = 0;

  /// The same positions in the deck's numbering of the nodes (equal to `positions` without renumbering).
  [[nodiscard]] virtual std::span<const int> deckPositions(int e) const = 0;

  /// Writes ESTIF, the tangent matrix of element e: n x n by rows with n = positions(e).size(), every entry.
  /// Called from several threads at once for different e. When factors are reused it is called for the
  /// elements with a prescribed value that is not zero, and for those only.
  virtual void form(int e, std::span<double> ESTIF) = 0;

  /// Load vector of element e, n entries: ELOAD(:,1), the out-of-balance load, or RLOAD(:,1), the reference load.
  [[nodiscard]] virtual std::span<const double> load(int e, RightHandSide side) const = 0;
};

}  // namespace zema
