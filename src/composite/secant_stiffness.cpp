// Secant stiffness of a composite.
#include "composite/secant_stiffness.h"

namespace zema {

namespace {

template <int N>
void addScaled(double weight, const Matrix<N>& part, Matrix<N>& sum) {
  for (std::size_t i = 0; i < sum.values.size(); ++i) sum.values[i] += weight * part.values[i];
}

/// Matrix of a component with its damage, in layer axes.
template <int N>
Matrix<N> secantOf(const ComponentPlan<N>& component, std::span<const ElasticMaterial<N>> elastic,
                   const std::function<double(int)>& damage) {
  Matrix<N> secant;
  addScaled(1.0 - damage(component.record), elastic[static_cast<std::size_t>(component.material - 1)].inLayerAxes,
            secant);
  return secant;
}

/// `MODCSEC`, `CLAY_SP3DSEC`: in layer axes.
template <int N>
Matrix<N> secantOf(const LayerPlan<N>& layer, std::span<const ElasticMaterial<N>> elastic,
                   const std::function<double(int)>& damage) {
  Matrix<N> sum;
  if (layer.kind == LayerKind::parallel) {
    for (const ComponentPlan<N>& component : layer.components)
      addScaled(component.VOLFMAT, secantOf(component, elastic, damage), sum);
  } else if (layer.kind == LayerKind::serialParallel) {
    const Matrix<N> matrix = secantOf(layer.components[0], elastic, damage);
    const Matrix<N> fibre = secantOf(layer.components[1], elastic, damage);
    Matrix<N> share;
    if (!layer.rule.matrixShare(matrix, fibre, share)) share = layer.elasticShare;
    sum = layer.rule.CCOMP(matrix, fibre, share);
  }
  return sum;
}

}  // namespace

template <int N>
Matrix<N> CALCSEC(const CompositePlan<N>& plan, std::span<const ElasticMaterial<N>> elastic,
                  const std::function<double(int)>& damage) {
  Matrix<N> sum;
  for (const LayerPlan<N>& layer : plan.layers) {
    Matrix<N> part = secantOf(layer, elastic, damage);
    ROTM(part, layer.LAYAEULER, Direction::toGlobal);
    addScaled(layer.VOLFLAY, part, sum);
  }
  return sum;
}

template Matrix<4> CALCSEC(const CompositePlan<4>&, std::span<const ElasticMaterial<4>>,
                           const std::function<double(int)>&);
template Matrix<6> CALCSEC(const CompositePlan<6>&, std::span<const ElasticMaterial<6>>,
                           const std::function<double(int)>&);

}  // namespace zema
