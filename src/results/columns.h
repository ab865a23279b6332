// Texts and numbers that keep their columns while they fit, and take more rather than lose anything.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "foundation/layout.h"

namespace zema {

/// A number at the right end of `columns` columns.
[[nodiscard]] std::string rightInColumns(int number, int columns);

/// A text at the left end of `columns` columns.
[[nodiscard]] std::string leftInColumns(std::string_view text, int columns);

/// A number with a leading zero below 10.
[[nodiscard]] std::string twoDigits(int number);

/// Appends a line: what stands in front, the values in their layout, the line end. When a value does not fit its field
/// all of them are written free, each after a blank.
void appendRow(std::string& out, std::string_view front, const Layout& layout, std::span<const double> values);

}  // namespace zema
