// Serial-parallel layers.
#include "composite/serial_parallel_layer.h"

#include "composite/serial_iteration.h"

namespace zema {

template <int N>
MixedPoint<N> SP_MNGER(const LayerPlan<N>& layer, const LayerInput<N>& input) {
  const SerialPair<N> pair{layer.rule, layer.elasticShare, layer.components[0], layer.components[1],
                           "NO CONVERGENCE REACHED IN SP RoM"};
  SerialIteration<N> iteration(pair, input);
  iteration.solve();
  const SerialComponent<N>&matrix = iteration.matrix(), &fibre = iteration.fibre();
  MixedPoint<N> mixed;
  mixed.stress = layer.rule.stress(matrix.result.stress, fibre.result.stress);
  mixed.addComponent(layer.rule.km(), matrix.plan, matrix.result, input);
  mixed.addComponent(layer.rule.kf(), fibre.plan, fibre.result, input);
  if (!mixed.elasticMatrix) mixed.tangent = iteration.tangent();
  return mixed;
}

template MixedPoint<4> SP_MNGER(const LayerPlan<4>&, const LayerInput<4>&);
template MixedPoint<6> SP_MNGER(const LayerPlan<6>&, const LayerInput<6>&);

}  // namespace zema
