// The table of the laws: number in the deck, label, function.
#pragma once

#include <string>
#include <string_view>

#include "constitutive/law.h"

namespace zema {

/// Throws InputFault for a material that the law cannot work with. who: what the fault is about.
using LawCheck = void (*)(const Material& material, const std::string& who);

template <int N>
struct LawRow {
  Law code{};                                  ///< number in the deck
  std::string_view label;                      ///< as the deck's echo prints it
  LawFunction<N> update = nullptr;             ///< null: the number has no routine
  Criterion lastCriterion = Criterion::shear;  ///< yield functions from 1 to this one are admitted
  LawCheck check = nullptr;                    ///< what else the law demands of a material; null: nothing
};

/// The label of a law in the deck's echo.
[[nodiscard]] std::string_view lawLabel(Law law);

/// The law of material m (number from 1). Throws InputFault when this build does not have it or the
/// law does not admit the material.
template <int N>
[[nodiscard]] LawFunction<N> lawOf(const Material& material, int m);

}  // namespace zema
