// Lists of integers of different lengths, one behind the other.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace zema {

/// Grows at its end: push entries, then close the list. Lists count from 0.
struct IntegerLists {
  std::vector<int> first{0};  ///< first place of each list, and the end
  std::vector<int> entries;   ///< all lists, one behind the other

  [[nodiscard]] int size() const { return static_cast<int>(first.size()) - 1; }
  [[nodiscard]] std::span<const int> operator[](int list) const {
    const auto i = static_cast<std::size_t>(list);
    return std::span(entries).subspan(static_cast<std::size_t>(first[i]),
                                      static_cast<std::size_t>(first[i + 1] - first[i]));
  }
  void close() { first.push_back(static_cast<int>(entries.size())); }
};

/// The lists turned round: for each of the numbers 0 to entries - 1 the lists that hold it, ascending.
[[nodiscard]] inline IntegerLists transposed(const IntegerLists& lists, int entries) {
  const auto index = [](int i) { return static_cast<std::size_t>(i); };
  IntegerLists turned;
  turned.first.assign(index(entries) + 1, 0);
  for (const int entry : lists.entries) ++turned.first[index(entry) + 1];
  for (std::size_t i = 1; i < turned.first.size(); ++i) turned.first[i] += turned.first[i - 1];
  turned.entries.resize(lists.entries.size());
  std::vector<int> next(turned.first.begin(), turned.first.end() - 1);
  for (int list = 0; list < lists.size(); ++list)
    for (const int entry : lists[list]) turned.entries[index(next[index(entry)]++)] = list;
  return turned;
}

}  // namespace zema
