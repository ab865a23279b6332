// The contract of the layer managers: from the strain of a layer to its stress, tangent and mean state.
#pragma once

#include <array>
#include <span>

#include "composite/composite_plan.h"

namespace zema {

/// The weighted means that a layer or a composite reports of its components.
template <int N>
struct MeanState {
  std::array<double, internal::count> INTVAR{};  ///< internal variables; the elastic flag is a product
  Strain<N> STRAP;                               ///< plastic strain
  double lastYield = 0.0;
  double lawScalar = 0.0;
  std::array<double, 7> fatigue{};
  bool elasticMatrix = true;  ///< all tangents are the elastic matrices; then `tangent` is not formed
  Matrix<N> tangent;
  EnergySums sums;

  /// Adds the places of a component's records that are scalars, with a weight.
  void add(double weight, std::span<const double> mechanical, std::span<const double> internalRecord);
};

/// What a layer manager works with. Strains in layer axes; records by component number from 0, the first being that of
/// the composite.
template <int N>
struct LayerInput {
  const PassContext& pass;
  const PointGeometry& geometry;
  PointPlace place;  ///< element and point
  std::span<const Material> materials;
  std::span<const ElasticMaterial<N>> elastic;
  ComponentStrain<N> strain;
  PointStore& points;
};

/// Stress and means of a layer, in layer axes.
template <int N>
struct LayerResult {
  Stress<N> stress;
  MeanState<N> mean;
};

/// The records of a component at the point of a layer.
template <int N>
[[nodiscard]] ComponentRecords recordsOf(const LayerInput<N>& input, int record);

/// `P_MNGER`: components that share the strain; stresses, states and tangents are added with VOLFMAT.
template <int N>
void P_MNGER(const LayerPlan<N>& layer, const LayerInput<N>& input, LayerResult<N>& result);

}  // namespace zema
