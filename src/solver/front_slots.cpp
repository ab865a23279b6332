// Slots of the front: variables enter with their first element and leave with their last one.
#include "solver/front_slots.h"

#include <algorithm>
#include <cstdlib>

namespace zema {

void FrontSlots::markVariables(std::span<const int> positions, int e, std::span<const int> last, std::span<int> LOCEL) {
  std::ranges::transform(positions, LOCEL.begin(), [&](int p) {
    const int NIKNO = p + 1;
    return last[static_cast<std::size_t>(p)] == e ? -NIKNO : NIKNO;
  });
}

void FrontSlots::enter(std::span<const int> LOCEL, std::span<int> NDEST) {
  for (std::size_t k = 0; k < LOCEL.size(); ++k) {
    const int NIKNO = std::abs(LOCEL[k]);
    int slot = find(NIKNO);
    if (slot < 0) {
      slot = static_cast<int>(std::ranges::find(NACVA_, 0) - NACVA_.begin());
      if (slot == NFRMX()) NACVA_.push_back(0);
      NACVA_[static_cast<std::size_t>(slot)] = NIKNO;
      NFRON_ = std::max(NFRON_, slot + 1);
    }
    NDEST[k] = slot;
  }
}

int FrontSlots::find(int NIKNO) const {
  const auto end = NACVA_.begin() + NFRON_;
  const auto place = std::find(NACVA_.begin(), end, NIKNO);
  return place == end ? -1 : static_cast<int>(place - NACVA_.begin());
}

void FrontSlots::trim() {
  while (NFRON_ > 0 && NACVA_[static_cast<std::size_t>(NFRON_ - 1)] == 0) --NFRON_;
}

void FrontSlots::clear() {
  std::ranges::fill(NACVA_, 0);
  NFRON_ = 0;
}

void FrontSlots::restore(std::span<const int> NACVA, int NFRON) {
  NACVA_.assign(NACVA.begin(), NACVA.end());
  NFRON_ = NFRON;
}

std::vector<int> lastElements(const ElementSource& source, int positions) {
  std::vector<int> last(static_cast<std::size_t>(positions), -1);
  for (int e = 0; e < source.elements(); ++e)
    for (const int p : source.positions(e)) last[static_cast<std::size_t>(p)] = e;
  return last;
}

int frontWidth(const ElementSource& source, std::span<const int> last) {
  FrontSlots slots;
  std::vector<int> LOCEL(static_cast<std::size_t>(source.largest())), NDEST(LOCEL.size());
  for (int e = 0; e < source.elements(); ++e) {
    const std::size_t n = source.positions(e).size();
    FrontSlots::markVariables(source.positions(e), e, last, LOCEL);
    slots.enter(std::span(LOCEL).first(n), NDEST);
    for (std::size_t k = 0; k < n; ++k)
      if (LOCEL[k] < 0) slots.leave(NDEST[k]);
    slots.trim();
  }
  return slots.NFRMX();
}

}  // namespace zema
