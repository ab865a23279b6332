// How a law stops the run: its own words, and where and in which state it gave up.
#pragma once

#include <string>

#include "constitutive/law.h"
#include "foundation/errors.h"

namespace zema {

/// Stops with the words and the numbers of element and point; advice: what an engineer can try.
template <int N>
[[noreturn]] void stopAtPoint(const MaterialPoint<N>& at, const std::string& words, const std::string& advice) {
  throw ConstitutiveStop(words, at.place.element, at.place.point, advice);
}

/// The stop of a law with element, point, layer, component, law, strain (material axes) and committed state in its
/// explanation.
template <int N>
[[nodiscard]] ConstitutiveStop located(const ConstitutiveStop& stop, const MaterialPoint<N>& at,
                                       const Strain<N>& strain, const LawState& committed);

}  // namespace zema
