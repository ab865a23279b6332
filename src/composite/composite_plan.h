// A composite as the point update walks it: made once from the deck's description, nothing is looked up later.
#pragma once

#include <span>
#include <vector>

#include "composite/serial_parallel_rule.h"
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
  SerialParallelRule<N> rule;  ///< serial-parallel layer: of components 1 | 2; short fibres: all serial, of 5 | 4
  double parallelShare = 0.0;  ///< short fibres: N0, share of components 2 to 5 in parallel without damage
  Matrix<N> elastic;           ///< elastic matrix in element axes, of the temperature in force
  Matrix<N> elasticShare;      ///< matrix share of `rule` for the elastic matrices, layer axes
};

template <int N>
struct CompositePlan {
  std::vector<LayerPlan<N>> layers;
};

/// Makes the plan of composite c (number from 1). Throws InputFault when a material's law is not in this build, when a
/// component names a material that has no card, and when the fibres of a short-fibre layer are too short or have
/// no radius.
template <int N>
[[nodiscard]] CompositePlan<N> planOf(const Model& model, int c);

}  // namespace zema
