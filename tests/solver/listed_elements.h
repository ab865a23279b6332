// Elements given as lists of numbers, for tests of the solvers.
#pragma once

#include <algorithm>
#include <atomic>
#include <random>
#include <span>
#include <utility>
#include <vector>

#include "foundation/errors.h"
#include "solver/element_source.h"

namespace zema {

struct ListedElement {
  std::vector<int> positions;
  std::vector<double> ESTIF;  // n x n by rows; an element without it cannot be formed
  std::vector<double> ELOAD;  // n
  std::vector<double> RLOAD;  // n
  std::vector<int> deckPositions = positions;

  [[nodiscard]] int size() const { return static_cast<int>(positions.size()); }
};

class ListedElements final : public ElementSource {
 public:
  explicit ListedElements(std::vector<ListedElement> list) : list_(std::move(list)) {}

  [[nodiscard]] int elements() const override { return static_cast<int>(list_.size()); }
  [[nodiscard]] int largest() const override { return std::ranges::max(list_, {}, &ListedElement::size).size(); }
  [[nodiscard]] std::span<const int> positions(int e) const override { return element(e).positions; }
  [[nodiscard]] std::span<const int> deckPositions(int e) const override { return element(e).deckPositions; }
  void form(int e, std::span<double> ESTIF) override {
    ++formed;
    if (element(e).ESTIF.empty()) throw RunEnd("no element", e, 0.0);
    std::ranges::copy(element(e).ESTIF, ESTIF.begin());
  }
  [[nodiscard]] std::span<const double> load(int e, RightHandSide side) const override {
    return side == RightHandSide::outOfBalance ? element(e).ELOAD : element(e).RLOAD;
  }

  [[nodiscard]] const ListedElement& element(int e) const { return list_[static_cast<std::size_t>(e)]; }
  [[nodiscard]] ListedElement& element(int e) { return list_[static_cast<std::size_t>(e)]; }

  std::atomic<int> formed = 0;  // calls of form

 private:
  std::vector<ListedElement> list_;
};

// What the assembled matrix of random elements is like.
enum class Character { positiveDefinite, indefinite, unsymmetric };

// Elements with random entries whose diagonal outweighs its row, so that no elimination needs row exchanges.
class RandomElements {
 public:
  RandomElements(Character character, unsigned seed) : character_(character), generator(seed) {}

  ListedElement over(std::vector<int> positions) {
    const std::size_t n = positions.size();
    std::vector<double> ESTIF = numbers(n * n);
    for (std::size_t i = 0; i < n; ++i) {
      for (std::size_t j = 0; j < i && character_ != Character::unsymmetric; ++j) ESTIF[j * n + i] = ESTIF[i * n + j];
      const bool negative = character_ == Character::indefinite && positions[i] % 3 == 1;
      ESTIF[i * n + i] = (negative ? -1.0 : 1.0) * (static_cast<double>(n) + 1.0);
    }
    return {std::move(positions), std::move(ESTIF), numbers(n), numbers(n)};
  }

 private:
  std::vector<double> numbers(std::size_t count) {
    std::uniform_real_distribution<double> number(-1.0, 1.0);
    std::vector<double> all(count);
    std::ranges::generate(all, [&] { return number(generator); });
    return all;
  }

  Character character_;

 public:
  std::mt19937 generator;
};

// A chain of elements over `positions` positions, one for every `stride` of them. Each holds its first position, the
// next `stride` and some of the `reach` behind.
inline ListedElements randomChain(int positions, int reach, Character character, unsigned seed, int stride = 1) {
  RandomElements random(character, seed);
  std::bernoulli_distribution chosen(0.4);
  std::vector<ListedElement> list;
  for (int first = 0; first < positions; first += stride) {
    std::vector<int> held;
    for (int p = first; p < std::min(positions, first + reach + 1); ++p)
      if (p <= first + stride || p == first + reach || chosen(random.generator)) held.push_back(p);
    list.push_back(random.over(std::move(held)));
  }
  return ListedElements(std::move(list));
}

// Cells between n x n x n nodes of three positions each.
inline ListedElements randomCube(int n, Character character) {
  RandomElements random(character, 7);
  std::vector<ListedElement> list;
  for (int cell = 0; cell < (n - 1) * (n - 1) * (n - 1); ++cell) {
    const int i = cell % (n - 1), j = cell / (n - 1) % (n - 1), k = cell / ((n - 1) * (n - 1));
    std::vector<int> held;
    for (int corner = 0; corner < 8; ++corner)
      for (int p = 0; p < 3; ++p)
        held.push_back(3 * (i + (corner & 1) + n * (j + (corner >> 1 & 1) + n * (k + (corner >> 2)))) + p);
    list.push_back(random.over(std::move(held)));
  }
  return ListedElements(std::move(list));
}

}  // namespace zema
