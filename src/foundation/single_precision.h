// Constants that are single-precision literals widened to double, with the rounding that this brings.
#pragma once

namespace zema {

/// The double that a single-precision literal stands for, e.g. single(1.0e-9F) = 9.999999717180685e-10.
[[nodiscard]] constexpr double single(float literal) {
  return static_cast<double>(literal);
}

/// Sum of squares of three angles (degrees^2) up to which they count as no rotation.
inline constexpr double noRotation = single(1.0e-9F);

}  // namespace zema
