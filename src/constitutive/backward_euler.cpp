// The plastic laws 8 and 10.
#include "constitutive/backward_euler.h"

#include <algorithm>

#include "constitutive/plastic_answer.h"
#include "foundation/single_precision.h"

namespace zema {
namespace {

/// Product of the deviators of two stresses.
template <int N>
double deviatorProduct(const Stress<N>& a, const Stress<N>& b) {
  double sum = 0.0;
  for (int i = 0; i < N; ++i) sum += (isShear(i) ? 2.0 : 1.0) * a[i] * b[i];
  return sum - (a[0] + a[1] + a[3]) * (b[0] + b[1] + b[3]) / 3.0;
}

/// One return in progress.
template <int N>
class Return {
 public:
  Return(const LawInput<N>& input, const ReturnProblem<N>& problem, LawState& state)
      : input_(input),
        problem_(problem),
        state_(state),
        startingKappa_(state.INTVAR[internal::kappa]),
        stress_(problem.trial) {
    yield_.factor = problem.fatigueFactor;
    evaluateTrial();
  }

  [[nodiscard]] double f() const { return f_; }
  [[nodiscard]] double F() const { return yield_.yield.F; }
  [[nodiscard]] const YieldState<N>& yield() const { return yield_; }
  [[nodiscard]] double slope() const { return slope_; }
  [[nodiscard]] const Stress<N>& stress() const { return stress_; }
  [[nodiscard]] Strain<N> plasticIncrement() const { return lambda_ * yield_.g; }

  /// The first step, along the flow of the trial stress.
  void predict() { advance({}, multiplierOf(f_, yield_), yield_.Dg); }

  /// A step of Newton's method on s - trial + lambda D g = 0 and F - K = 0. Returns false when it cannot be formed.
  [[nodiscard]] bool correct() {
    Matrix<N> system = newtonMatrix();
    Matrix<N, 2> columns;  // residual | D g
    for (int i = 0; i < N; ++i) {
      columns(i, 0) = stress_[i] - problem_.trial[i] + lambda_ * yield_.Dg[i];
      columns(i, 1) = yield_.Dg[i];
    }
    if (!solveColumns(system, columns)) return false;
    Stress<N> Qr, Qb;
    for (int i = 0; i < N; ++i) {
      Qr[i] = columns(i, 0);
      Qb[i] = columns(i, 1);
    }
    advance(Qr, (f_ - dot(Qr, yield_.a)) / (slope_ + dot(Qb, yield_.a)), Qb);
    return std::isfinite(f_);
  }

  /// Derivative of F - K by the stress at a fixed multiplier: the yield normal less what the hardening variable owes to
  /// the stress. Its increment is stress . plastic increment, over F for the strain variables, so that this part is 0
  /// for a strain variable whose flow is the yield normal.
  [[nodiscard]] Strain<N> totalNormal() const {
    const double work = dot(stress_, yield_.g);
    if (slope_ == 0.0 || work == 0.0) return yield_.a;
    const Strain<N> plastic = plasticIncrement();
    Strain<N> owed = plastic;
    if (!input_.at.elastic.plainMap) owed.add(lambda_, turnOfFlow());
    const HardeningVariable variable = input_.at.material.NHARD;
    if (variable != HardeningVariable::work && variable != HardeningVariable::unlabelled)
      owed.add(-dot(stress_, plastic) / yield_.yield.F, yield_.a);
    Strain<N> normal = yield_.a;
    normal.add(-slope_ / work, owed);
    return normal;
  }

  /// `CALCQ` D: the algorithmic matrix (I + lambda D h)^-1 D. Returns false when it cannot be formed.
  [[nodiscard]] bool algorithmicMatrix(Matrix<N>& Dalg) const {
    Matrix<N> system = newtonMatrix();
    Dalg = problem_.D;
    return solveColumns(system, Dalg);
  }

 private:
  /// (dg/ds)^T s: what the turning of a mapped flow adds to the derivative of s . g; 0 for one that is not mapped.
  [[nodiscard]] Strain<N> turnOfFlow() const {
    const Matrix<N> derivative = flowDerivative();
    Strain<N> turn;
    for (int i = 0; i < N; ++i)
      for (int j = 0; j < N; ++j) turn[j] += derivative(i, j) * stress_[i];
    return turn;
  }

  void evaluateTrial() {
    MODAUX(input_, stress_, problem_.D, Normals::recomputed, {}, state_, yield_);
    f_ = yield_.yield.F - std::abs(state_.INTVAR[internal::yieldStress]);
  }

  /// Takes Qr and step Qb off the stress, with a step cut so that the multiplier stays above 0 and the deviator does
  /// not turn round, and evaluates there.
  void advance(const Stress<N>& Qr, double step, const Stress<N>& Qb) {
    constexpr int mostCuts = 60;
    const Stress<N> start = stress_ - Qr;
    for (int cut = 0; cut <= mostCuts; ++cut, step *= 0.5) {
      stress_ = start;
      stress_.add(-step, Qb);
      if (lambda_ + step > 0.0 && deviatorProduct(stress_, problem_.trial) >= 0.0) break;
    }
    lambda_ += step;
    const PlasticStep<N> whole{plasticIncrement(), startingKappa_, true};
    MODAUX(input_, stress_, problem_.D, flowOf(input_.at.material), whole, state_, yield_);
    updateYieldStress();
  }

  /// A yield stress that is all but spent is replaced by 0.1, without hardening.
  void updateYieldStress() {
    constexpr double spent = single(1.0e-7F), rest = single(0.1F);
    double c = std::abs(state_.INTVAR[internal::yieldStress]);
    slope_ = state_.INTVAR[internal::hardening];
    if (c / 400.0 < spent) {
      c = rest;
      slope_ = 0.0;
    }
    f_ = yield_.yield.F - c;
  }

  [[nodiscard]] Matrix<N> flowDerivative() const {
    return problem_.derivative == FlowDerivative::analytic ? analyticDerivative() : PLY2DENU();
  }

  /// I + lambda D dg/ds.
  [[nodiscard]] Matrix<N> newtonMatrix() const {
    Matrix<N> system = PROMA1(problem_.D, flowDerivative());
    for (double& value : system.values) value *= lambda_;
    for (int i = 0; i < N; ++i) system(i, i) += 1.0;
    return system;
  }

  /// dg/ds by `PLY2DERI`, mapped like the flow vector itself.
  [[nodiscard]] Matrix<N> analyticDerivative() const {
    const CriterionData potential = potentialData(input_.at.material, state_.INTVAR[internal::dilatancyAngle]);
    Matrix<N> derivative = PLY2DERI(yield_.invariants, potential);
    if (yield_.factor != 1.0)
      for (double& value : derivative.values) value /= yield_.factor;
    if (input_.at.elastic.plainMap) return derivative;
    for (int j = 0; j < N; ++j) {
      Strain<N> column;
      for (int i = 0; i < N; ++i) column[i] = derivative(i, j);
      setColumn(derivative, j, mappedFlow(input_.at, column));
    }
    return derivative;
  }

  /// dg/ds by differences.
  [[nodiscard]] Matrix<N> PLY2DENU() const {
    Matrix<N> derivative;
    LawState state = state_;
    YieldState<N> here = yield_, moved = yield_;
    MODAUX_R(input_, stress_, Normals::recomputed, state, here);
    for (int j = 0; j < N; ++j) {
      Stress<N> stress = stress_;
      stress[j] += std::max(std::abs(stress[j]), 0.01) * 0.0002;
      const double delta = stress[j] - stress_[j];
      MODAUX_R(input_, stress, Normals::recomputed, state, moved);
      setColumn(derivative, j, (1.0 / delta) * (moved.g - here.g));
    }
    return derivative;
  }

  static void setColumn(Matrix<N>& A, int j, const Strain<N>& column) {
    for (int i = 0; i < N; ++i) A(i, j) = column[i];
  }

  const LawInput<N>& input_;
  const ReturnProblem<N>& problem_;
  LawState& state_;
  double startingKappa_;
  Stress<N> stress_;
  YieldState<N> yield_;
  double lambda_ = 0.0;
  double f_ = 0.0;      // yield value less yield stress
  double slope_ = 0.0;  // hardening slope
};

template <int N>
void answerTangent(const LawInput<N>& input, const ReturnProblem<N>& problem, const Return<N>& step,
                   const LawState& state, LawResult<N>& result) {
  if (input.at.material.NMATX == TangentChoice::continuous)
    return answerTangent(input.at.pass, problem.D, step.yield().a, step.yield().g, hardeningSlope(state), result);
  if (!input.at.pass.wantsTangent()) return;
  Matrix<N> Dalg;
  if (!step.algorithmicMatrix(Dalg)) stopReturn(input.at, problem.words);
  answerTangent(input.at.pass, Dalg, step.totalNormal(), step.yield().g, step.slope(), result);
}

}  // namespace

template <int N>
void backwardEuler(const LawInput<N>& input, const ReturnProblem<N>& problem, LawState& state, LawResult<N>& result) {
  constexpr int passes = N == 6 ? 59 : 499;
  Return<N> step(input, problem, state);
  const YieldTest test(input.at.pass, state.INTVAR[internal::yieldStress], step.F());
  if (test.elastic(step.f())) return answerElastic(input.at, problem.trial, state, result);

  step.predict();
  for (int pass = 1;; ++pass) {
    if (pass > passes || !step.correct()) stopReturn(input.at, problem.words);
    if (test.returned(step.f())) break;
  }
  answerPlastic(input.at, step.stress(), step.plasticIncrement(), state, result);
  answerTangent(input, problem, step, state, result);
}

template <int N>
void ECUAD(const LawInput<N>& input, LawState& state, LawResult<N>& result) {
  const Matrix<N> D = plasticMatrix(input);
  backwardEuler(input, {input.SIGMA, D, FlowDerivative::analytic, "  >>>>  >>>>  DETENIDO EN -ECUAD- "}, state, result);
}

template <int N>
void ECUAF(const LawInput<N>& input, LawState& state, LawResult<N>& result) {
  const Matrix<N> D = plasticMatrix(input);
  backwardEuler(input, {input.SIGMA, D, FlowDerivative::numerical, "  >>>>  >>>>  DETENIDO EN -ECUAF- "}, state,
                result);
}

template void backwardEuler(const LawInput<4>&, const ReturnProblem<4>&, LawState&, LawResult<4>&);
template void backwardEuler(const LawInput<6>&, const ReturnProblem<6>&, LawState&, LawResult<6>&);
template void ECUAD(const LawInput<4>&, LawState&, LawResult<4>&);
template void ECUAD(const LawInput<6>&, LawState&, LawResult<6>&);
template void ECUAF(const LawInput<4>&, LawState&, LawResult<4>&);
template void ECUAF(const LawInput<6>&, LawState&, LawResult<6>&);

}  // namespace zema
