// Weighted sums over components and layers, and the manager of parallel layers.
#include "composite/layer_mixer.h"

namespace zema {
namespace {

EnergySums weighted(double weight, const EnergySums& sums) {
  return {weight * sums.work, weight * sums.kappa, weight * sums.volume};
}

}  // namespace

template <int N>
void MixedPoint<N>::addComponent(double weight, const ComponentPlan<N>& component, const ComponentResult<N>& result,
                                 const LayerInput<N>& input) {
  constexpr MechanicalPlaces places{N};
  elastic = elastic && result.elastic;
  elasticMatrix = elasticMatrix && result.elasticMatrix;
  sums += weighted(weight, result.sums);
  const ComponentRecords records = input.recordsOf(component);
  auto plastic = Strain<N>::from(records.trial, places.STRAP());
  if (!plastic.isZero()) {
    ROTV(plastic, input.elasticOf(component).axes, Direction::toGlobal);
    STRAP.add(weight, plastic);
  }
  lastYield += weight * records.trial[places.lastYield()];
  lawScalar += weight * records.trial[places.lawScalar()];
  const double* const values = records.trial.data() + places.fatigue();
  for (std::size_t i = 0; i < fatigue.size(); ++i) fatigue[i] += weight * values[i];
  for (std::size_t i = 0; i < INTVAR.size(); ++i) INTVAR[i] += weight * records.trialInternal[i];
}

template <int N>
void MixedPoint<N>::addLayer(double weight, const MixedPoint& layer, const Rotation<N>& axes) {
  Stress<N> turned = layer.stress;
  ROTV(turned, axes, Direction::toGlobal);
  stress.add(weight, turned);
  if (!layer.STRAP.isZero()) {
    Strain<N> plastic = layer.STRAP;
    ROTV(plastic, axes, Direction::toGlobal);
    STRAP.add(weight, plastic);
  }
  lastYield += weight * layer.lastYield;
  lawScalar += weight * layer.lawScalar;
  for (std::size_t i = 0; i < fatigue.size(); ++i) fatigue[i] += weight * layer.fatigue[i];
  for (std::size_t i = 0; i < INTVAR.size(); ++i) INTVAR[i] += weight * layer.INTVAR[i];
  elastic = elastic && layer.elastic;
  elasticMatrix = elasticMatrix && layer.elasticMatrix;
  sums += weighted(weight, layer.sums);
}

template <int N>
void MixedPoint<N>::addTangent(double weight, const Matrix<N>& matrix) {
  for (std::size_t i = 0; i < tangent.values.size(); ++i) tangent.values[i] += weight * matrix.values[i];
}

template <int N>
ComponentRecords LayerInput<N>::recordsOf(const ComponentPlan<N>& component) const {
  const PointStore& stored = points;
  return {stored.mechanical(StateSlot::committed, e, point, component.record),
          stored.internal(StateSlot::committed, e, point, component.record),
          points.mechanical(StateSlot::trial, e, point, component.record),
          points.internal(StateSlot::trial, e, point, component.record)};
}

template <int N>
ComponentResult<N> updateComponent(const ComponentPlan<N>& component, const LayerInput<N>& input,
                                   const ComponentStrain<N>& strain, const PassContext& pass) {
  const Material& material = input.materials[static_cast<std::size_t>(component.material - 1)];
  const PointPlace place{input.e + 1, input.point + 1, input.layer + 1, component.record};
  return MODUCO<N>(pass, input.geometry, place, {material, input.elasticOf(component), component.law}, strain,
                   input.recordsOf(component));
}

template <int N>
MixedPoint<N> P_MNGER(const LayerPlan<N>& layer, const LayerInput<N>& input) {
  MixedPoint<N> mixed;
  for (const ComponentPlan<N>& component : layer.components) {
    const ComponentResult<N> result = updateComponent(component, input, input.strain, input.pass);
    mixed.stress.add(component.VOLFMAT, result.stress);
    mixed.addComponent(component.VOLFMAT, component, result, input);
  }
  if (mixed.elasticMatrix) return mixed;  // whoever mixes the layers has the elastic matrix of the whole at hand
  for (const ComponentPlan<N>& component : layer.components) {
    mixed.addTangent(component.VOLFMAT,
                     OBCTAN(input.recordsOf(component).trialInternal, input.elasticOf(component).axes));
  }
  return mixed;
}

template struct MixedPoint<4>;
template struct MixedPoint<6>;
template struct LayerInput<4>;
template struct LayerInput<6>;
template ComponentResult<4> updateComponent(const ComponentPlan<4>&, const LayerInput<4>&, const ComponentStrain<4>&,
                                            const PassContext&);
template ComponentResult<6> updateComponent(const ComponentPlan<6>&, const LayerInput<6>&, const ComponentStrain<6>&,
                                            const PassContext&);
template MixedPoint<4> P_MNGER(const LayerPlan<4>&, const LayerInput<4>&);
template MixedPoint<6> P_MNGER(const LayerPlan<6>&, const LayerInput<6>&);

}  // namespace zema
