// The table of the laws: number in the deck, label, function.
#pragma once

#include <string_view>

#include "constitutive/law.h"

namespace zema {

template <int N>
struct LawRow {
  Law code{};                       ///< number in the deck
  std::string_view label;           ///< as the deck's echo prints it
  LawFunction<N> update = nullptr;  ///< null: not in this build
};

/// The label of a law in the deck's echo.
[[nodiscard]] std::string_view lawLabel(Law law);

/// The law of material m (number from 1). Throws InputFault when this build does not have it.
template <int N>
[[nodiscard]] LawFunction<N> lawOf(const Material& material, int m);

}  // namespace zema
