// The history curves of the deck, and what their axes can show.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace zema {

/// One curve of the deck: what is plotted against what.
struct Curve {
  std::string title;  ///< at most 16 characters
  std::string xWord;  ///< axis words: axis letter in place 1, keyword in places 3 to 7
  std::string yWord;
  std::array<int, 10> KDATS{};  ///< parameters of X (0 to 4) and of Y (5 to 9)
};

/// The quantities that an axis can name.
enum class CurveQuantity {
  none,  ///< a word that is not in the table: always 0
  time,
  displacement,
  reaction,
  reactionSum,
  elementForce,
  stress,
  strain,
  plasticStrain,
  internalVariable,
  principalDirection,
  temperature
};

/// The quantity of an axis word, by the keyword in its characters 3 to 7.
[[nodiscard]] CurveQuantity curveQuantity(std::string_view axisWord);

}  // namespace zema
