// Short-fibre layers.
#include "composite/short_fibre_layer.h"

#include "composite/serial_iteration.h"
#include "composite/short_fibre_share.h"

namespace zema {

std::array<double, 5> shortFibreShares(double f1, double f2, double f3, double N) {
  return {f1, N * f2, N * f3, (1.0 - N) * f2, (1.0 - N) * f3};
}

template <int N>
Matrix<N> shortFibreMatrix(const std::array<double, 5>& shares, const std::array<const Matrix<N>*, 3>& parallel,
                           const Matrix<N>& series) {
  Matrix<N> C;
  const double seriesShare = shares[3] + shares[4];
  for (std::size_t i = 0; i < C.values.size(); ++i) {
    for (std::size_t k = 0; k < parallel.size(); ++k) C.values[i] += shares[k] * parallel[k]->values[i];
    C.values[i] += seriesShare * series.values[i];
  }
  return C;
}

template <int N>
MixedPoint<N> NT_MNGER(const LayerPlan<N>& layer, const LayerInput<N>& input) {
  const std::vector<ComponentPlan<N>>& part = layer.components;
  const double d = input.recordsOf(part[4]).committedInternal[internal::damage];
  const double parallelShare = CALNPAR(layer.parallelShare, d);
  const auto shares = shortFibreShares(part[0].VOLFMAT, part[1].VOLFMAT, part[2].VOLFMAT, parallelShare);
  MixedPoint<N> mixed;
  for (std::size_t k = 0; k < 3; ++k) {
    const ComponentResult<N> result = updateComponent(part[k], input, input.strain, input.pass);
    mixed.stress.add(shares[k], result.stress);
    mixed.addComponent(shares[k], part[k], result, input);
  }
  const SerialPair<N> pair{layer.rule, layer.elasticShare, part[4], part[3], "NO CONVERGENCE REACHED IN NT RoM"};
  SerialIteration<N> iteration(pair, input);
  iteration.solve();
  mixed.stress.add(shares[3] + shares[4], iteration.fibre().result.stress);
  mixed.addComponent(shares[3], part[3], iteration.fibre().result, input);
  mixed.addComponent(shares[4], part[4], iteration.matrix().result, input);
  if (mixed.elasticMatrix && parallelShare == layer.parallelShare) return mixed;
  mixed.elasticMatrix = false;
  std::array<Matrix<N>, 3> C;
  for (std::size_t k = 0; k < 3; ++k)
    C[k] = OBCTAN(input.recordsOf(part[k]).trialInternal, input.elasticOf(part[k]).axes);
  mixed.tangent = shortFibreMatrix<N>(shares, {&C[0], &C[1], &C[2]}, iteration.tangent());
  return mixed;
}

template Matrix<4> shortFibreMatrix(const std::array<double, 5>&, const std::array<const Matrix<4>*, 3>&,
                                    const Matrix<4>&);
template Matrix<6> shortFibreMatrix(const std::array<double, 5>&, const std::array<const Matrix<6>*, 3>&,
                                    const Matrix<6>&);
template MixedPoint<4> NT_MNGER(const LayerPlan<4>&, const LayerInput<4>&);
template MixedPoint<6> NT_MNGER(const LayerPlan<6>&, const LayerInput<6>&);

}  // namespace zema
