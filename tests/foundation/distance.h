// How far two matrices or vectors lie from each other, and the differences of functions of them.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "foundation/dense.h"

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

/// Central differences of a function of N values around a stress or strain x: column j is for place j.
template <int N, class Tensor, class Function>
Matrix<N> differences(const Function& function, const Tensor& x, double h) {
  Matrix<N> D;
  for (int j = 0; j < N; ++j) {
    Tensor above = x, below = x;
    above[j] += h;
    below[j] -= h;
    const auto change = function(above) - function(below);
    for (int i = 0; i < N; ++i) D(i, j) = change[i] / (2.0 * h);
  }
  return D;
}

}  // namespace zema
