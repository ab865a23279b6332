// The contract of the layer managers: from the strain of a layer to its stress, tangent and mean state.
#pragma once

#include <array>
#include <span>

#include "composite/composite_plan.h"

namespace zema {

template <int N>
struct LayerInput;

/// What a layer or a composite reports of its components: weighted sums.
template <int N>
struct MixedPoint {
  Stress<N> stress;
  Strain<N> STRAP;  ///< plastic strain
  double lastYield = 0.0;
  double lawScalar = 0.0;
  std::array<double, 7> fatigue{};
  std::array<double, internal::count> INTVAR{};  ///< internal variables but for the elastic flag
  bool elastic = true;                           ///< elastic flag: the product of all flags
  bool elasticMatrix = true;                     ///< all tangents are elastic matrices; then `tangent` stays 0
  Matrix<N> tangent;
  EnergySums sums;

  /// Adds an updated component but for its stress and tangent: its state, from the trial records, and its energy.
  void addComponent(double weight, const ComponentPlan<N>& component, const ComponentResult<N>& result,
                    const LayerInput<N>& input);
  /// Adds a layer but for its tangent; axes: layer axes, out of which it is turned.
  void addLayer(double weight, const MixedPoint& layer, const Rotation<N>& axes);
  void addTangent(double weight, const Matrix<N>& matrix);
};

/// What a layer manager works with.
template <int N>
struct LayerInput {
  const PassContext& pass;
  const PointGeometry& geometry;
  PointStore& points;
  int e = 0;      ///< element, from 0
  int point = 0;  ///< point of the point store, from 0
  int layer = 0;  ///< layer of the composite, from 0
  std::span<const Material> materials;
  std::span<const ElasticMaterial<N>> elastic;  ///< by material from 0
  ComponentStrain<N> strain;                    ///< of the layer, in its axes

  [[nodiscard]] const ElasticMaterial<N>& elasticOf(const ComponentPlan<N>& component) const {
    return elastic[static_cast<std::size_t>(component.material - 1)];
  }
  [[nodiscard]] ComponentRecords recordsOf(const ComponentPlan<N>& component) const;
  /// Whether the laws run in the current configuration.
  [[nodiscard]] bool pushed() const { return pass.pushes(geometry.NTYPE); }
};

/// `MODUCO` of a component of a layer, with a strain in layer axes. pass: stands for that of the input.
template <int N>
[[nodiscard]] ComponentResult<N> updateComponent(const ComponentPlan<N>& component, const LayerInput<N>& input,
                                                 const ComponentStrain<N>& strain, const PassContext& pass);

/// `P_MNGER`: components that share the strain; stresses, states and tangents are added with VOLFMAT. All in layer
/// axes.
template <int N>
[[nodiscard]] MixedPoint<N> P_MNGER(const LayerPlan<N>& layer, const LayerInput<N>& input);

}  // namespace zema
