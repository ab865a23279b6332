// The elastic tables of a composite.
#include "composite/composite_elasticity.h"

namespace zema {

template <int N>
void ElasticMean<N>::add(double weight, const ElasticMean& part) {
  for (std::size_t i = 0; i < VDMANX.values.size(); ++i) {
    VDMANX.values[i] += weight * part.VDMANX.values[i];
    VCVISC.values[i] += weight * part.VCVISC.values[i];
  }
  DENSV += weight * part.DENSV;
}

template <int N>
ElasticMean<N> MODCO(const LayerPlan<N>& layer, std::span<const ElasticMaterial<N>> elastic,
                     std::span<const Material> materials) {
  ElasticMean<N> mean;
  for (const ComponentPlan<N>& component : layer.components) {
    const auto m = static_cast<std::size_t>(component.material - 1);
    ElasticMean<N> part{elastic[m].inLayerAxes, {}, materials[m](slot::density)};
    if (materials[m].NTINT == Law::viscoelasticDynamic) {
      part.VCVISC = part.VDMANX;
      for (double& value : part.VCVISC.values) value *= materials[m](slot::relaxationTime);
    }
    mean.add(component.VOLFMAT, part);
  }
  return mean;
}

template <int N>
ElasticMean<N> elasticMeanOf(CompositePlan<N>& plan, std::span<const ElasticMaterial<N>> elastic,
                             std::span<const Material> materials) {
  ElasticMean<N> mean;
  for (LayerPlan<N>& layer : plan.layers) {
    ElasticMean<N> part = MODCO(layer, elastic, materials);
    ROTM(part.VDMANX, layer.LAYAEULER, Direction::toGlobal);
    ROTM(part.VCVISC, layer.LAYAEULER, Direction::toGlobal);
    layer.elastic = part.VDMANX;
    mean.add(layer.VOLFLAY, part);
  }
  return mean;
}

template struct ElasticMean<4>;
template struct ElasticMean<6>;
template ElasticMean<4> MODCO(const LayerPlan<4>&, std::span<const ElasticMaterial<4>>, std::span<const Material>);
template ElasticMean<6> MODCO(const LayerPlan<6>&, std::span<const ElasticMaterial<6>>, std::span<const Material>);
template ElasticMean<4> elasticMeanOf(CompositePlan<4>&, std::span<const ElasticMaterial<4>>,
                                      std::span<const Material>);
template ElasticMean<6> elasticMeanOf(CompositePlan<6>&, std::span<const ElasticMaterial<6>>,
                                      std::span<const Material>);

}  // namespace zema
