// The iteration that makes two components of a layer carry the same serial stresses.
#pragma once

#include <string_view>

#include "composite/layer_mixer.h"

namespace zema {

/// Two components under a serial-parallel rule, and what to say when no common stress is found.
template <int N>
struct SerialPair {
  const SerialParallelRule<N>& rule;
  const Matrix<N>& elasticShare;  ///< matrix share of the elastic matrices
  const ComponentPlan<N>& matrix;
  const ComponentPlan<N>& fibre;
  std::string_view failure;  ///< words of the stop
};

/// The tangent of a component in layer axes: its elastic matrix, or a copy of what stands in a record.
template <int N>
class ComponentTangent {
 public:
  explicit ComponentTangent(const ElasticMaterial<N>& elastic) : elastic_(elastic) {}

  void takeElastic() { isElastic_ = true; }
  void take(std::span<const double> internalRecord) {
    isElastic_ = false;
    own_ = OBCTAN(internalRecord, elastic_.axes);
  }
  [[nodiscard]] bool isElastic() const { return isElastic_; }
  [[nodiscard]] const Matrix<N>& operator()() const { return isElastic_ ? elastic_.inLayerAxes : own_; }
  [[nodiscard]] const Matrix<N>& elastic() const { return elastic_.inLayerAxes; }

 private:
  const ElasticMaterial<N>& elastic_;
  bool isElastic_ = true;
  Matrix<N> own_;
};

/// Where a component stands in the iteration. Layer axes.
template <int N>
struct SerialComponent {
  SerialComponent(const ComponentPlan<N>& plan, const LayerInput<N>& input);

  const ComponentPlan<N>& plan;
  Strain<N> start;            ///< strain of the last converged state
  Strain<N> strain;           ///< current strain
  Strain<N> rate;             ///< rate of strain
  ComponentTangent<N> C;      ///< current tangent, at a constant deformation gradient
  Matrix<N> ofGradient;       ///< KTANP 2: what the deformation gradient adds to it
  ComponentResult<N> result;  ///< of the current strain
};

/// Matrix and fibre with the same serial stress.
template <int N>
class SerialIteration {
 public:
  /// Starts from the strains, states and tangents of the last converged state.
  SerialIteration(const SerialPair<N>& pair, const LayerInput<N>& input);

  /// Finds the strains with which both components, each updated from its converged state, carry the same serial
  /// stresses (to 1e-4 of the smaller stress, and closer as long as corrections help). The trial records are those of
  /// the solution. Throws RunEnd with element and point when 160 iterations have not found it (four stress components:
  /// 298), or when the stresses are not finite.
  void solve();

  [[nodiscard]] const SerialComponent<N>& matrix() const { return matrix_; }
  [[nodiscard]] const SerialComponent<N>& fibre() const { return fibre_; }
  [[nodiscard]] bool elasticMatrix() const { return matrix_.C.isElastic() && fibre_.C.isElastic(); }
  /// Tangent of the pair, d stress / d strain of the layer; call it after `solve`.
  [[nodiscard]] Matrix<N> tangent() const;

 private:
  void iterate();
  void predict();
  void updateComponents();
  void updateComponent(SerialComponent<N>& component, const PassContext& pass);
  /// Whether tangents hold the part of the stress. The gradient is the layer's and stays when the components share the
  /// strain of the layer in another way: the iteration has no use for that part.
  [[nodiscard]] bool movesGradient() const { return input_.pass.KTANP == 2 && input_.pushed(); }
  /// Adds to a tangent what the deformation gradient of the layer does to the stresses and to the sharing of strain.
  void addGradientPart(Matrix<N>& C) const;
  /// Moves the matrix strain by a Newton correction or, when the one before made the difference larger for too long,
  /// back along it.
  void correct(const Stress<N>& difference, double size, int iteration);
  void restart(const Strain<N>& serialStrain);
  [[nodiscard]] double largestChange() const;
  [[nodiscard]] double floor() const;
  [[nodiscard]] double smallerStress() const;
  [[noreturn]] void giveUp(double difference, int iterations) const;

  const SerialPair<N>& pair_;
  const LayerInput<N>& input_;
  PassContext pass_;  // that of the input, with tangents at a constant deformation gradient
  SerialComponent<N> matrix_;
  SerialComponent<N> fibre_;
  Strain<N> base_;         // matrix strain from which the last correction started
  Strain<N> change_;       // the last correction, whole
  double baseSize_ = 0.0;  // size of the difference there
  double fraction_ = 1.0;  // how much of the correction was made
};

}  // namespace zema
