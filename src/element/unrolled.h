// Loops over compile-time counters.
#pragma once

#include <utility>

namespace zema {

/// Calls f(0), f(1), ... f(N - 1) with counters that are compile-time constants.
template <int N, class F>
constexpr void unrolled(F&& f) {
  [&]<int... counter>(std::integer_sequence<int, counter...>) {
    (f(std::integral_constant<int, counter>{}), ...);
  }
  (std::make_integer_sequence<int, N>{});
}

}  // namespace zema
