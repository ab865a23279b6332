// The length that turns a fracture energy per area into one per volume, and the greatest length that a law allows.
#pragma once

#include <string_view>

#include "constitutive/law.h"

namespace zema {

/// How a length is made of a measure when the element has no fracture length of its own.
enum class LengthRule {
  /// Cube root of the point's volume; an element of the plane: square root of its measure; a bar: the volume itself.
  pointCubeRoot,
  /// Square root of the element's measure; a bar: the measure itself.
  elementSquareRoot
};

/// l: FRACL of the element; when that is 0 by the rule, with the determinant of the deformation gradient. Bar elements
/// (NTYPE 1, 2) always take their measure where barsTakeMeasure is set. Literature: Bazant & Oh (1983).
[[nodiscard]] double characteristicLength(const PointGeometry& geometry, LengthRule rule, bool barsTakeMeasure = true);

/// The words of the length test in most laws.
inline constexpr std::string_view beyondLimit = "  >>>> CHARACTERISTIC LENGTH OF THE ELEMENT BEYOND LIMIT";

/// Throws ConstitutiveStop with the words, l and the limit unless limit = 2 E G n^2 / f^2 is above l: beyond it the
/// descending branch would snap back.
void checkLength(double l, double limit, std::string_view words);

}  // namespace zema
