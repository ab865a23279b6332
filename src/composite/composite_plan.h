// A composite as the point update walks it: made once from the deck's description, nothing is looked up later.
#pragma once

#include <span>
#include <vector>

#include "constitutive/law_table.h"
#include "constitutive/material_point.h"
#include "model/model.h"

namespace zema {

/// One component of a layer.
template <int N>
struct ComponentPlan {
  int material = 0;              ///< number from 1
  int record = 0;                ///< LOCMA: its component number in the point store
  double VOLFMAT = 0.0;          ///< share in the layer
  LawFunction<N> law = nullptr;  ///< law of its material
};

/// One layer.
template <int N>
struct LayerPlan {
  LayerKind kind = LayerKind::parallel;
  double VOLFLAY = 0.0;   ///< share in the composite
  Rotation<N> LAYAEULER;  ///< layer axes in element axes
  std::vector<ComponentPlan<N>> components;
  Matrix<N> elastic;  ///< elastic matrix in element axes, of the temperature in force
};

template <int N>
struct CompositePlan {
  std::vector<LayerPlan<N>> layers;
};

/// Makes the plan of composite c (number from 1). Throws InputFault when a layer's kind or a material's law is not in
/// this build, or when a component names a material that has no card.
template <int N>
[[nodiscard]] CompositePlan<N> planOf(const Model& model, int c);

}  // namespace zema
