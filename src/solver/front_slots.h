// Which variable stands where in the front.
#pragma once

#include <span>
#include <vector>

#include "solver/element_source.h"

namespace zema {

/// The slots of the front, counted from 0. A variable, NIKNO, is a degree-of-freedom position counted from 1.
class FrontSlots {
 public:
  /// Variables of an element as the front sees them: position + 1, negative where `e` is the last element that has it.
  /// last: last element of each position.
  static void markVariables(std::span<const int> positions, int e, std::span<const int> last, std::span<int> LOCEL);

  /// Gives each variable |LOCEL| its slot, NDEST: the one it has, or the first free one.
  void enter(std::span<const int> LOCEL, std::span<int> NDEST);

  /// Slot of a variable; -1 when it is not in the front.
  [[nodiscard]] int find(int NIKNO) const;

  /// Takes the variable out of slot p.
  void leave(int p) { NACVA_[static_cast<std::size_t>(p)] = 0; }
  /// Lowers NFRON to the highest slot in use.
  void trim();

  /// Number of slots up to the highest one in use.
  [[nodiscard]] int NFRON() const { return NFRON_; }
  /// Number of slots that there are; grows as needed.
  [[nodiscard]] int NFRMX() const { return static_cast<int>(NACVA_.size()); }
  /// Variable of each slot, 0 for a free one.
  [[nodiscard]] const std::vector<int>& NACVA() const { return NACVA_; }

  /// Empties all slots.
  void clear();
  /// Takes back what NACVA() and NFRON() gave.
  void restore(std::span<const int> NACVA, int NFRON);

 private:
  std::vector<int> NACVA_;
  int NFRON_ = 0;
};

/// Last element of each position: -1 for a position that none holds. positions: number of positions.
[[nodiscard]] std::vector<int> lastElements(const ElementSource& source, int positions);

/// NFRMX: the most variables that are in the front at once, when the elements come in their order.
[[nodiscard]] int frontWidth(const ElementSource& source, std::span<const int> last);

}  // namespace zema
