// Predictor, test and correction of the serial stresses of two components.
#include "composite/serial_iteration.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

#include "constitutive/law_table.h"
#include "foundation/errors.h"
#include "foundation/single_precision.h"

namespace zema {
namespace {

template <class Tensor>
double norm(const Tensor& tensor) {
  double squares = 0.0;
  for (const double value : tensor.values) squares += value * value;
  return std::sqrt(squares);
}

/// The numbers of the test: those of three dimensions, and those of the plane.
template <int N>
constexpr double relativeTolerance = N == 6 ? 1.0e-4 : 1.0e-3;
template <int N>
constexpr int iterationLimit = N == 6 ? 160 : 298;

/// In the plane, where the first component is the fibre's direction, a stress that nearly vanishes in one component is
/// measured by the other's.
template <int N>
double raised(double smaller, const Stress<N>& MSTRSG, const Stress<N>& FSTRSG) {
  if constexpr (N == 4) {
    const double along = std::max(std::abs(MSTRSG[0]), std::abs(FSTRSG[0]));
    if (smaller < single(1.0e-8F) * along) return std::max(single(1.0e-7F) * along, smaller);
  }
  return smaller;
}

template <int N>
void describe(std::ostream& text, std::string_view name, const SerialComponent<N>& component,
              const LayerInput<N>& input) {
  const Material& material = input.materials[static_cast<std::size_t>(component.plan.material - 1)];
  const ComponentRecords records = input.recordsOf(component.plan);
  const auto list = [&text](std::string_view heading, const auto& values) {
    text << "\n    " << heading;
    for (const double value : values) text << ' ' << value;
  };
  text << "\n  " << name << ", material " << component.plan.material << ", law " << static_cast<int>(material.NTINT)
       << " \"" << lawLabel(material.NTINT) << "\":";
  list("strain in layer axes:", component.strain.values);
  list("stress in layer axes:", component.result.stress.values);
  list("internal variables at the start of the step:", records.committedInternal.first(internal::count));
  list("internal variables now:", std::span<const double>(records.trialInternal).first(internal::count));
}

}  // namespace

template <int N>
SerialComponent<N>::SerialComponent(const ComponentPlan<N>& plan_, const LayerInput<N>& input)
    : plan(plan_), C(input.elasticOf(plan_)) {
  const ComponentRecords records = input.recordsOf(plan);
  start = Strain<N>::from(records.committed, input.points.places().STRAT());
  ROTV(start, input.elasticOf(plan).axes, Direction::toGlobal);
  const bool wasElastic = records.committedInternal[internal::elasticFlag] != 0.0;
  if (input.pass.wantsTangent() && !wasElastic) C.take(records.committedInternal);
}

template <int N>
SerialIteration<N>::SerialIteration(const SerialPair<N>& pair, const LayerInput<N>& input)
    : pair_(pair), input_(input), pass_(input.pass), matrix_(pair.matrix, input), fibre_(pair.fibre, input) {
  if (movesGradient()) pass_.KTANP = 0;
  predict();
}

/// `STRAPRED`: the matrix strain that the tangents of the converged state foretell.
template <int N>
void SerialIteration<N>::predict() {
  const SerialParallelRule<N>& rule = pair_.rule;
  const ComponentStrain<N>& layer = input_.strain;
  const Strain<N> increment = layer.STRAT - rule.layerStrain(matrix_.start, fibre_.start);
  Strain<N> ofMatrix;
  if (elasticMatrix() || !rule.matrixIncrement(matrix_.C(), fibre_.C(), increment, ofMatrix) ||
      !(norm(ofMatrix) <= largestChange()))
    ofMatrix.values = CALTEN(pair_.elasticShare, increment.values);
  matrix_.strain = matrix_.start + ofMatrix;
  if (layer.VSTRAT.isZero()) return;
  matrix_.rate.values = CALTEN(pair_.elasticShare, layer.VSTRAT.values);
  fibre_.rate = rule.fibreStrain(layer.VSTRAT, matrix_.rate);
}

template <int N>
void SerialIteration<N>::updateComponents() {
  fibre_.strain = pair_.rule.fibreStrain(input_.strain.STRAT, matrix_.strain);
  for (SerialComponent<N>* const component : {&matrix_, &fibre_}) {
    updateComponent(*component, pass_);
    if (component->result.elasticMatrix) {
      component->C.takeElastic();
    } else {
      component->C.take(input_.recordsOf(component->plan).trialInternal);
    }
  }
}

template <int N>
void SerialIteration<N>::updateComponent(SerialComponent<N>& component, const PassContext& pass) {
  ComponentStrain<N> strain = input_.strain;
  strain.STRAT = component.strain;
  strain.STRAN = component.strain - component.start;
  strain.VSTRAT = component.rate;
  component.result = zema::updateComponent(component.plan, input_, strain, pass);
}

/// What the test compares the difference with: the smaller of the two stresses, or of the stresses that the tangents
/// give, when one component carries none.
template <int N>
double SerialIteration<N>::smallerStress() const {
  const Stress<N>&MSTRSG = matrix_.result.stress, &FSTRSG = fibre_.result.stress;
  double smaller = std::min(norm(MSTRSG), norm(FSTRSG));
  if (smaller == 0.0)
    smaller = std::min(norm(CALTEN(matrix_.C(), matrix_.strain)), norm(CALTEN(fibre_.C(), fibre_.strain)));
  return raised(smaller, MSTRSG, FSTRSG);
}

/// What rounding may leave of the difference.
template <int N>
double SerialIteration<N>::floor() const {
  constexpr double relative = 1.0e-12;
  return relative *
         std::max(norm(CALTEN(matrix_.C.elastic(), matrix_.strain)), norm(CALTEN(fibre_.C.elastic(), fibre_.strain)));
}

/// More than either component can reach when the other one takes all strain of the layer: what is beyond comes from
/// tangents that nearly cancel, not from a solution.
template <int N>
double SerialIteration<N>::largestChange() const {
  const double strains = norm(input_.strain.STRAT) + norm(matrix_.start) + norm(fibre_.start);
  return 2.0 * strains / std::min(pair_.rule.km(), pair_.rule.kf());
}

/// Where a component breaks, the solution may lie far from where the tangents point: begins anew from another strain.
template <int N>
void SerialIteration<N>::restart(const Strain<N>& serialStrain) {
  matrix_.strain = pair_.rule.joined(input_.strain.STRAT, serialStrain);
  fraction_ = 0.0;
}

template <int N>
void SerialIteration<N>::correct(const Stress<N>& difference, double size, int iteration) {
  constexpr int plainIterations = 10;  // Newton's method alone has then nearly always been enough
  constexpr double smallestFraction = 0.01;
  if (iteration > plainIterations && !(size < baseSize_) && fraction_ > smallestFraction) {
    fraction_ *= 0.5;
  } else {
    base_ = matrix_.strain;
    baseSize_ = size;
    fraction_ = 1.0;
    if (!pair_.rule.matrixCorrection(matrix_.C(), fibre_.C(), difference, change_) &&
        !pair_.rule.matrixCorrection(matrix_.C.elastic(), fibre_.C.elastic(), difference, change_))
      change_ = {};
    const double most = largestChange(), wanted = norm(change_);
    if (wanted > most) change_ *= most / wanted;
  }
  matrix_.strain = base_ + fraction_ * change_;
}

template <int N>
void SerialIteration<N>::solve() {
  iterate();
  if (!movesGradient()) return;
  for (SerialComponent<N>* const component : {&matrix_, &fibre_}) {
    updateComponent(*component, input_.pass);
    component->ofGradient =
        OBCTAN(input_.recordsOf(component->plan).trialInternal, input_.elasticOf(component->plan).axes);
    for (std::size_t i = 0; i < component->ofGradient.values.size(); ++i)
      component->ofGradient.values[i] -= component->C().values[i];
  }
}

template <int N>
void SerialIteration<N>::iterate() {
  // Once the test is met, corrections go on as long as they help: to where the tangent is the derivative of the stress.
  constexpr double negligible = 1.0e-10;
  constexpr double helps = 0.5;
  double acceptable = std::numeric_limits<double>::infinity();
  for (int iteration = 1;; ++iteration) {
    updateComponents();
    // A strain that is not finite is the business of whoever sums the forces.
    if (!pair_.rule.hasSerial() || !std::isfinite(norm(input_.strain.STRAT))) return;
    const Stress<N> difference = pair_.rule.difference(matrix_.result.stress, fibre_.result.stress);
    const double size = norm(difference), smaller = smallerStress();
    if (size <= negligible * smaller || size <= floor()) return;
    if (size <= relativeTolerance<N> * smaller) {
      if (!(size < helps * acceptable)) return;
      acceptable = size;
    }
    if (iteration == iterationLimit<N> || !std::isfinite(size)) giveUp(size, iteration);
    if (iteration == iterationLimit<N> / 3) {
      restart({});  // the fibre takes all serial strain
    } else if (iteration == 2 * iterationLimit<N> / 3) {
      restart((1.0 / pair_.rule.km()) * input_.strain.STRAT);  // the matrix does
    } else {
      correct(difference, size, iteration);
    }
  }
}

template <int N>
Matrix<N> SerialIteration<N>::tangent() const {
  Matrix<N> share;
  if (!pair_.rule.matrixShare(matrix_.C(), fibre_.C(), share)) share = pair_.elasticShare;
  Matrix<N> C = pair_.rule.CCOMP(matrix_.C(), fibre_.C(), share);
  if (movesGradient()) addGradientPart(C);
  return C;
}

template <int N>
void SerialIteration<N>::addGradientPart(Matrix<N>& C) const {
  const SerialParallelRule<N>& rule = pair_.rule;
  for (int j = 0; j < N; ++j) {
    Stress<N> ofMatrix, ofFibre;
    for (int i = 0; i < N; ++i) {
      ofMatrix[i] = matrix_.ofGradient(i, j);
      ofFibre[i] = fibre_.ofGradient(i, j);
    }
    Strain<N> shift;  // of the matrix strain, to keep the serial stresses equal
    if (rule.hasSerial() && rule.matrixCorrection(matrix_.C(), fibre_.C(), ofMatrix - ofFibre, shift)) {
      ofMatrix += CALTEN(matrix_.C(), shift);
      ofFibre += CALTEN(fibre_.C(), rule.fibreStrain({}, shift));
    }
    const Stress<N> ofLayer = rule.stress(ofMatrix, ofFibre);
    for (int i = 0; i < N; ++i) C(i, j) += ofLayer[i];
  }
}

template <int N>
void SerialIteration<N>::giveUp(double difference, int iterations) const {
  std::ostringstream text;
  text << "element " << input_.e + 1 << ", point " << input_.point + 1 << ", layer " << input_.layer + 1 << ": after "
       << iterations << " iterations the serial stresses of matrix and fibre differ by " << difference
       << ", the smaller stress being " << smallerStress();
  describe(text, "matrix", matrix_, input_);
  describe(text, "fibre", fibre_, input_);
  text << "\n  Try smaller increments; KALGO 2, which gives the iteration the tangents of the laws; a larger fracture "
          "energy or smaller elements, if a component softens; and check shares and flags of the layer.";
  throw RunEnd(std::string(pair_.failure), input_.e + 1, input_.point + 1, text.str());
}

template struct SerialComponent<4>;
template struct SerialComponent<6>;
template class SerialIteration<4>;
template class SerialIteration<6>;

}  // namespace zema
