// The elastic tables of a composite.
#include "composite/composite_elasticity.h"

#include <string>

#include "composite/short_fibre_layer.h"
#include "foundation/errors.h"

namespace zema {

template <int N>
void ElasticMean<N>::add(double weight, const ElasticMean& part) {
  for (std::size_t i = 0; i < VDMANX.values.size(); ++i) {
    VDMANX.values[i] += weight * part.VDMANX.values[i];
    VCVISC.values[i] += weight * part.VCVISC.values[i];
  }
  DENSV += weight * part.DENSV;
}

namespace {

/// Elastic and viscous matrix of a component, in layer axes, and its density.
template <int N>
ElasticMean<N> meanOf(const ComponentPlan<N>& component, std::span<const ElasticMaterial<N>> elastic,
                      std::span<const Material> materials) {
  const auto m = static_cast<std::size_t>(component.material - 1);
  ElasticMean<N> mean{elastic[m].inLayerAxes, {}, materials[m](slot::density)};
  if (materials[m].NTINT == Law::viscoelasticDynamic) {
    mean.VCVISC = mean.VDMANX;
    for (double& value : mean.VCVISC.values) value *= materials[m](slot::relaxationTime);
  }
  return mean;
}

/// Viscous matrix of two components under the rule of their layer; 0 where neither resists.
template <int N>
Matrix<N> viscousComposition(const LayerPlan<N>& layer, const Matrix<N>& matrix, const Matrix<N>& fibre) {
  Matrix<N> share;
  if (!layer.rule.matrixShare(matrix, fibre, share)) share = layer.elasticShare;
  return layer.rule.CCOMP(matrix, fibre, share);
}

/// The two components that a layer's rule ties: matrix | fibre.
template <int N>
std::array<const ComponentPlan<N>*, 2> tiedComponents(const LayerPlan<N>& layer) {
  const bool shortFibre = layer.kind == LayerKind::shortFibre;
  return {&layer.components[shortFibre ? 4 : 0], &layer.components[shortFibre ? 3 : 1]};
}

template <int N>
Matrix<N> elasticShareOf(const LayerPlan<N>& layer, std::span<const ElasticMaterial<N>> elastic) {
  const auto [matrix, fibre] = tiedComponents(layer);
  Matrix<N> share;
  const auto C = [&elastic](const ComponentPlan<N>& part) -> const Matrix<N>& {
    return elastic[static_cast<std::size_t>(part.material - 1)].inLayerAxes;
  };
  if (!layer.rule.matrixShare(C(*matrix), C(*fibre), share))
    throw InputFault("materials " + std::to_string(matrix->material) + " and " + std::to_string(fibre->material) +
                     " have no common stress in series; check their moduli");
  return share;
}

template <int N>
ElasticMean<N> meanOf(LayerPlan<N>& layer, std::span<const ElasticMaterial<N>> elastic,
                      std::span<const Material> materials) {
  switch (layer.kind) {
    case LayerKind::none:
    case LayerKind::parallel:
      break;
    case LayerKind::serialParallel:
      layer.elasticShare = elasticShareOf(layer, elastic);
      return CLAY_SP<N>(layer, elastic, materials);
    case LayerKind::shortFibre:
      layer.elasticShare = elasticShareOf(layer, elastic);
      return CLAY_NT<N>(layer, elastic, materials);
  }
  return MODCO<N>(layer, elastic, materials);
}

}  // namespace

template <int N>
ElasticMean<N> MODCO(const LayerPlan<N>& layer, std::span<const ElasticMaterial<N>> elastic,
                     std::span<const Material> materials) {
  ElasticMean<N> mean;
  for (const ComponentPlan<N>& component : layer.components)
    mean.add(component.VOLFMAT, meanOf(component, elastic, materials));
  return mean;
}

template <int N>
ElasticMean<N> CLAY_SP(const LayerPlan<N>& layer, std::span<const ElasticMaterial<N>> elastic,
                       std::span<const Material> materials) {
  const ElasticMean<N> matrix = meanOf(layer.components[0], elastic, materials);
  const ElasticMean<N> fibre = meanOf(layer.components[1], elastic, materials);
  return {layer.rule.CCOMP(matrix.VDMANX, fibre.VDMANX, layer.elasticShare),
          viscousComposition(layer, matrix.VCVISC, fibre.VCVISC),
          layer.rule.km() * matrix.DENSV + layer.rule.kf() * fibre.DENSV};
}

template <int N>
ElasticMean<N> CLAY_NT(const LayerPlan<N>& layer, std::span<const ElasticMaterial<N>> elastic,
                       std::span<const Material> materials) {
  const ElasticMean<N> plain = meanOf(layer.components[0], elastic, materials);
  const ElasticMean<N> fibre = meanOf(layer.components[1], elastic, materials);
  const ElasticMean<N> matrix = meanOf(layer.components[2], elastic, materials);
  const double f1 = layer.components[0].VOLFMAT, f2 = layer.components[1].VOLFMAT, f3 = layer.components[2].VOLFMAT;
  const auto shares = shortFibreShares(f1, f2, f3, layer.parallelShare);
  return {shortFibreMatrix<N>(shares, {&plain.VDMANX, &fibre.VDMANX, &matrix.VDMANX},
                              layer.rule.CCOMP(matrix.VDMANX, fibre.VDMANX, layer.elasticShare)),
          shortFibreMatrix<N>(shares, {&plain.VCVISC, &fibre.VCVISC, &matrix.VCVISC},
                              viscousComposition(layer, matrix.VCVISC, fibre.VCVISC)),
          f1 * plain.DENSV + f2 * fibre.DENSV + f3 * matrix.DENSV};
}

template <int N>
ElasticMean<N> elasticMeanOf(CompositePlan<N>& plan, std::span<const ElasticMaterial<N>> elastic,
                             std::span<const Material> materials) {
  ElasticMean<N> mean;
  for (LayerPlan<N>& layer : plan.layers) {
    ElasticMean<N> part = meanOf(layer, elastic, materials);
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
template ElasticMean<4> CLAY_SP(const LayerPlan<4>&, std::span<const ElasticMaterial<4>>, std::span<const Material>);
template ElasticMean<6> CLAY_SP(const LayerPlan<6>&, std::span<const ElasticMaterial<6>>, std::span<const Material>);
template ElasticMean<4> CLAY_NT(const LayerPlan<4>&, std::span<const ElasticMaterial<4>>, std::span<const Material>);
template ElasticMean<6> CLAY_NT(const LayerPlan<6>&, std::span<const ElasticMaterial<6>>, std::span<const Material>);
template ElasticMean<4> elasticMeanOf(CompositePlan<4>&, std::span<const ElasticMaterial<4>>,
                                      std::span<const Material>);
template ElasticMean<6> elasticMeanOf(CompositePlan<6>&, std::span<const ElasticMaterial<6>>,
                                      std::span<const Material>);

}  // namespace zema
