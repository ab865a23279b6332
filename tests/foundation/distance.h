// How far two matrices or vectors lie from each other.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace zema {

/// Largest difference of the entries of two matrices, stresses or strains; not a number as soon as one entry is not, so
/// that no comparison passes on it.
template <class Values>
double distance(const Values& a, const Values& b) {
  double largest = 0.0;
  for (std::size_t i = 0; i < a.values.size(); ++i) {
    const double difference = std::abs(a.values[i] - b.values[i]);
    if (std::isnan(difference)) return difference;
    largest = std::max(largest, difference);
  }
  return largest;
}

}  // namespace zema
