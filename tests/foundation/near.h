// Comparison of lists of numbers.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <span>
#include <vector>

namespace zema {

/// As many numbers as expected, each near its own.
inline void expectNear(const auto& actual, const auto& expected, double within = 1.0e-13) {
  ASSERT_EQ(actual.size(), expected.size());
  for (std::size_t i = 0; i < actual.size(); ++i) EXPECT_NEAR(actual[i], expected[i], within) << "place " << i;
}

inline void expectNear(const std::vector<double>& actual, const std::vector<double>& expected, double within) {
  expectNear(std::span(actual), std::span(expected), within);
}

}  // namespace zema
