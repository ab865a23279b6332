// The elastic tables of a composite: weighted sums over its layers and components.
#pragma once

#include <span>

#include "composite/composite_plan.h"

namespace zema {

/// Elastic and viscous matrix and density of a layer or a composite.
template <int N>
struct ElasticMean {
  Matrix<N> VDMANX;    ///< elastic matrix, force / length^2
  Matrix<N> VCVISC;    ///< viscous matrix, force time / length^2
  double DENSV = 0.0;  ///< density, mass / length^3

  void add(double weight, const ElasticMean& part);
};

/// `MODCO`: sums of a parallel layer over its components, in layer axes. elastic, materials: by material from 0.
template <int N>
[[nodiscard]] ElasticMean<N> MODCO(const LayerPlan<N>& layer, std::span<const ElasticMaterial<N>> elastic,
                                   std::span<const Material> materials);

/// `CLAY_SP`: matrix and fibre composed by the serial-parallel rule, in layer axes. Uses the layer's elastic share.
template <int N>
[[nodiscard]] ElasticMean<N> CLAY_SP(const LayerPlan<N>& layer, std::span<const ElasticMaterial<N>> elastic,
                                     std::span<const Material> materials);

/// `CLAY_NT`: plain share, fibre and matrix of a short-fibre layer without damage, in layer axes. Uses the layer's
/// elastic share.
template <int N>
[[nodiscard]] ElasticMean<N> CLAY_NT(const LayerPlan<N>& layer, std::span<const ElasticMaterial<N>> elastic,
                                     std::span<const Material> materials);

/// The sum of the layers in element axes. Leaves each layer's own matrix and elastic share in its plan. Throws
/// InputFault when the elastic matrices of two components in series fit no common stress.
template <int N>
[[nodiscard]] ElasticMean<N> elasticMeanOf(CompositePlan<N>& plan, std::span<const ElasticMaterial<N>> elastic,
                                           std::span<const Material> materials);

}  // namespace zema
