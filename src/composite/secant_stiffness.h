// Secant stiffness of a composite whose components have damage.
#pragma once

#include <functional>
#include <span>

#include "composite/composite_plan.h"

namespace zema {

/// `CALCSEC`: the elastic matrices of the components, each times 1 - damage, composed like the elastic matrix of the
/// composite; in element axes. damage(record): of the component with that record of the point store. elastic: by
/// material from 0. A short-fibre layer adds nothing.
template <int N>
[[nodiscard]] Matrix<N> CALCSEC(const CompositePlan<N>& plan, std::span<const ElasticMaterial<N>> elastic,
                                const std::function<double(int)>& damage);

}  // namespace zema
