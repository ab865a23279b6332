// Sizes and commit of the point store.
#include "database/point_store.h"

#include <cstring>

namespace zema {

PointStore::PointStore(int NSTR1, std::span<const int> points, std::span<const int> records)
    : NSTR1_(NSTR1),
      LVAR1_(static_cast<std::size_t>(MechanicalPlaces{NSTR1}.size())),
      LVAR2_(static_cast<std::size_t>(internal::count + NSTR1 * NSTR1)),
      points_(points.begin(), points.end()),
      records_(records.begin(), records.end()) {
  std::size_t rows = 0;
  for (std::size_t e = 0; e < points.size(); ++e) {
    first_.push_back(rows);
    rows += static_cast<std::size_t>(points[e]) * static_cast<std::size_t>(records[e]);
  }
  for (const std::size_t slot : {index(StateSlot::committed), index(StateSlot::trial)}) {
    mechanical_[slot] = ZeroedBlock(rows * LVAR1_);
    internal_[slot] = ZeroedBlock(rows * LVAR2_);
    for (std::size_t r = 0; r < rows; ++r) {
      internal_[slot].data()[r * LVAR2_ + internal::elasticFlag] = 1.0;
    }
  }
}

bool PointStore::committedIsTrial() const {
  const auto alike = [](const std::array<ZeroedBlock, 2>& blocks) {
    return std::memcmp(blocks[0].data(), blocks[1].data(), blocks[0].size() * sizeof(double)) == 0;
  };
  return alike(mechanical_) && alike(internal_);
}

void PointStore::commit() {
  mechanical_[index(StateSlot::committed)].copyFrom(mechanical_[index(StateSlot::trial)]);
  internal_[index(StateSlot::committed)].copyFrom(internal_[index(StateSlot::trial)]);
}

}  // namespace zema
