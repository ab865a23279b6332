// Labels of echo lines, filled with dots so that their colons stand below each other.
#pragma once

#include <string>
#include <string_view>

namespace zema {

/// The label, then dots up to ".....:"; 45 characters in all, more only for a label above 39 characters.
[[nodiscard]] inline std::string dottedLabel(std::string_view label) {
  constexpr std::size_t width = 45;
  constexpr std::size_t fewestDots = 5;
  const std::size_t dots = label.size() + fewestDots + 1 < width ? width - label.size() - 1 : fewestDots;
  return std::string(label) + std::string(dots, '.') + ":";
}

}  // namespace zema
