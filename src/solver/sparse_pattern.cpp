// Compressed rows group by group, and the stored places of the element entries.
#include "solver/sparse_pattern.h"

#include <algorithm>
#include <cassert>
#include <limits>

namespace zema {
namespace {

std::size_t index(int i) {
  return static_cast<std::size_t>(i);
}

// Columns of the rows of each group.
IntegerLists columns(const EquationGroups& groups, const IntegerLists& NEIG_NODES) {
  IntegerLists JA_PARD;
  for (int group = 0; group < groups.size(); ++group) {
    for (const int other : NEIG_NODES[group])
      for (int column = groups.first[index(other)]; column < groups.first[index(other) + 1]; ++column)
        JA_PARD.entries.push_back(column);
    JA_PARD.close();
  }
  return JA_PARD;
}

}  // namespace

SparsePattern::SparsePattern(const ElementSource& source, const EquationSystem& system, const EquationGroups& groups,
                             const IntegerLists& NEIG_NODES)
    : JA_PARD_(columns(groups, NEIG_NODES)), groupOf_(groups.of) {
  IA_PARD_.reserve(groupOf_.size() + 1);
  for (const int group : groupOf_)
    IA_PARD_.push_back(IA_PARD_.back() + static_cast<std::int64_t>(JA_PARD_[group].size()));
  placeElements(source, system, groups, NEIG_NODES);
}

std::span<const int> SparsePattern::places(int e, int r) const {
  const std::size_t first = firstDof_[index(e)];
  const std::size_t n = firstDof_[index(e) + 1] - first;
  return std::span(places_).subspan(firstPlace_[index(e)] + localRow_[first + index(r)] * n, n);
}

void SparsePattern::placeElements(const ElementSource& source, const EquationSystem& system,
                                  const EquationGroups& groups, const IntegerLists& NEIG_NODES) {
  firstDof_.assign(1, 0);
  std::size_t size = 0;
  for (int e = 0; e < source.elements(); ++e) {
    const std::size_t n = source.positions(e).size();
    assert(n <= std::numeric_limits<std::uint16_t>::max());
    firstDof_.push_back(firstDof_.back() + n);
    firstPlace_.push_back(size);
    size += n * groups.ofElement[e].size();
  }
  places_.assign(size, -1);
  localRow_.assign(firstDof_.back(), 0);
  std::vector<int> placeOf(index(groups.size()));  // of a group's first column in the present row
  for (int group = 0; group < groups.size(); ++group) {
    int place = 0;
    for (const int other : NEIG_NODES[group]) {
      placeOf[index(other)] = place;
      place += groups.width(other);
    }
    for (const int e : groups.ofElements[group]) {
      const std::span<const int> mine = groups.ofElement[e], positions = source.positions(e);
      const auto local = static_cast<std::size_t>(std::ranges::find(mine, group) - mine.begin());
      for (std::size_t c = 0; c < positions.size(); ++c) {
        const int equation = system.IPERM[index(positions[c])] - 1;
        if (equation < 0) continue;
        const int other = groups.of[index(equation)];
        if (other == group) localRow_[firstDof_[index(e)] + c] = static_cast<std::uint16_t>(local);
        places_[firstPlace_[index(e)] + local * positions.size() + c] =
            placeOf[index(other)] + equation - groups.first[index(other)];
      }
    }
  }
}

}  // namespace zema
