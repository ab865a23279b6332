// Yield functions and potentials.
#include "constitutive/yield_function.h"

#include <numbers>

#include "foundation/single_precision.h"

namespace zema {
namespace {

using std::numbers::sqrt3;

/// Criteria 1 to 5 in one form: F = sqrt(J2) (constant + cosine cos theta + sine sin theta) + mean p.
struct Surface {
  double constant = 0.0;
  double cosine = 0.0;
  double sine = 0.0;
  double mean = 0.0;

  [[nodiscard]] bool dependsOnAngle() const { return cosine != 0.0 || sine != 0.0; }
};

/// The ratio R~ = R / tan^2(pi/4 + phi/2) takes the angle out of the third criterion: F = R s1 - s3 for a friction
/// angle other than 0. At exactly 0 the sine term is absent whatever R.
Surface mohrCoulomb(const CriterionData& criterion) {
  const double R = criterion.R;
  return {0.0, R + 1.0, criterion.angle == 0.0 ? 0.0 : -(R - 1.0) / sqrt3, R - 1.0};
}

Surface druckerPrager(const CriterionData& criterion) {
  const double s = std::sin(criterion.angle);
  const double e = (3.0 - s) * sqrt3 / (3.0 - 3.0 * s);
  return {e, 0.0, 0.0, 6.0 * e * s / ((3.0 - s) * sqrt3)};
}

/// beta: factor of the largest principal stress.
Surface lublinerOller(const CriterionData& criterion, double beta) {
  const double u = 1.0 / (1.0 - criterion.alpha);
  return {u * sqrt3, u * beta, -u * beta / sqrt3, u * (beta + 3.0 * criterion.alpha)};
}

double betaOf(const CriterionData& criterion, double SGMAX, double atZero) {
  if (SGMAX == 0.0) return atZero;
  return SGMAX < 0.0 ? criterion.gamma : (1.0 - criterion.alpha) * criterion.R - 1.0 - criterion.alpha;
}

/// beta of a normal: between the two sides a share delta of the compressive one.
double blendedBeta(const CriterionData& criterion, double SGMAX) {
  const double blend = criterion.delta * criterion.gamma + (1.0 - criterion.delta) * betaOf(criterion, 1.0, 0.0);
  return betaOf(criterion, SGMAX, blend);
}

/// Coefficients of the normal C1 a1 + C2 a2 + C3 a3 with a1 = dp 3, a2 = d sqrt(J2), a3 = dJ3 + J2 / 3.
struct NormalFactors {
  double C1 = 0.0;
  double C2 = 0.0;
  double C3 = 0.0;
};

template <int N>
NormalFactors factorsOf(const Surface& surface, const StressInvariants<N>& invariants) {
  NormalFactors factors{surface.mean / 3.0, surface.constant, 0.0};
  if (!surface.dependsOnAngle()) return factors;
  if (invariants.atCorner()) {
    factors.C2 += surface.cosine * sqrt3 / 2.0 + surface.sine * invariants.sin3theta / 2.0;
    return factors;
  }
  const double theta = invariants.theta();
  const double c = std::cos(theta), s = std::sin(theta);
  const double cos3 = std::cos(3.0 * theta), tan3 = invariants.sin3theta / cos3;
  factors.C2 += surface.cosine * (c + tan3 * s) + surface.sine * (s - tan3 * c);
  factors.C3 = sqrt3 * (surface.cosine * s - surface.sine * c) / (2.0 * invariants.J2 * cos3);
  return factors;
}

/// The fifth criterion is smooth at theta = -pi/6, where its factors are limits; those of the other corner are chosen
/// alike.
template <int N>
NormalFactors lublinerOllerFactors(const CriterionData& criterion, const StressInvariants<N>& invariants) {
  const double beta = blendedBeta(criterion, invariants.SGMAX());
  const Surface surface = lublinerOller(criterion, beta);
  NormalFactors factors = factorsOf(surface, invariants);
  if (!invariants.atCorner()) return factors;
  const double u = 1.0 / (1.0 - criterion.alpha);
  const bool upper = invariants.sin3theta > 0.0;
  factors.C2 = u * (sqrt3 + (upper ? 2.0 : 4.0) * beta / (3.0 * sqrt3));
  factors.C3 = u * beta / ((upper ? -6.0 : 3.0) * invariants.J2);
  return factors;
}

template <int N>
NormalFactors factorsOf(const CriterionData& criterion, const StressInvariants<N>& invariants) {
  switch (criterion.code) {
    case Criterion::tresca:
      return factorsOf(Surface{.cosine = 2.0}, invariants);
    case Criterion::vonMises:
    case Criterion::damageSimoJu:
      return factorsOf(Surface{.constant = sqrt3}, invariants);
    case Criterion::mohrCoulomb:
      return factorsOf(mohrCoulomb(criterion), invariants);
    case Criterion::druckerPrager:
      return factorsOf(druckerPrager(criterion), invariants);
    case Criterion::lublinerOller:
      return lublinerOllerFactors(criterion, invariants);
    case Criterion::damagePlaneStress:
    case Criterion::shear:
      break;
  }
  return {};
}

template <int N>
Strain<N> combine(const NormalFactors& factors, const StressInvariants<N>& invariants) {
  const Stress<N>& s = invariants.s;
  const double onDeviator = factors.C2 / (2.0 * invariants.rootJ2);
  Strain<N> normal;
  for (int i = 0; i < N; ++i) normal[i] = isShear(i) ? 2.0 * onDeviator * s[i] : factors.C1 + onDeviator * s[i];
  if (factors.C3 == 0.0) return normal;
  double s5 = 0.0, s6 = 0.0;
  if constexpr (N == 6) {
    s5 = s[4];
    s6 = s[5];
    normal[4] += 2.0 * factors.C3 * (s[2] * s6 - s[1] * s5);
    normal[5] += 2.0 * factors.C3 * (s5 * s[2] - s[0] * s6);
  }
  const double third = invariants.J2 / 3.0;
  normal[0] += factors.C3 * (s[1] * s[3] - s6 * s6 + third);
  normal[1] += factors.C3 * (s[0] * s[3] - s5 * s5 + third);
  normal[2] += 2.0 * factors.C3 * (s6 * s5 - s[2] * s[3]);
  normal[3] += factors.C3 * (s[0] * s[1] - s[2] * s[2] + third);
  return normal;
}

template <int N>
Strain<N> largerNormalPlace(const Stress<N>& SIGMA) {
  Strain<N> normal;
  const int place = std::abs(SIGMA[0]) >= std::abs(SIGMA[1]) ? 0 : 1;
  normal[place] = SIGMA[place] < 0.0 ? -1.0 : 1.0;
  return normal;
}

}  // namespace

CriterionData yieldData(const Material& material, double frictionAngle) {
  return {material.NCRIT,
          frictionAngle,
          material(slot::yieldRatio),
          material(slot::yieldAlpha),
          material(slot::yieldGamma),
          material(slot::yieldDelta)};
}

CriterionData potentialData(const Material& material, double dilatancyAngle) {
  return {material.NCRIP,
          dilatancyAngle,
          material(slot::potentialRatio),
          material(slot::potentialAlpha),
          material(slot::potentialGamma),
          material(slot::potentialDelta)};
}

template <int N>
double StressInvariants<N>::SGMAX() const {
  const double largest = 2.0 * rootJ2 / sqrt3 * std::sin(theta() + 2.0 * std::numbers::pi / 3.0) + p;
  return std::abs(largest) <= 1.0e-8 * rootJ2 ? 0.0 : largest;
}

template <int N>
StressInvariants<N> invariantsOf(const Stress<N>& SIGMA, const Stress<N>& backStress) {
  constexpr double corner = single(0.95F);
  StressInvariants<N> invariants;
  invariants.p = (SIGMA[0] + SIGMA[1] + SIGMA[3]) / 3.0;
  Stress<N>& s = invariants.s;
  s = SIGMA - backStress;
  for (const int i : {0, 1, 3}) s[i] -= invariants.p;
  double& J2 = invariants.J2;
  J2 = s[2] * s[2] + (s[0] * s[0] + s[1] * s[1] + s[3] * s[3]) / 2.0;
  if constexpr (N == 6) {
    J2 += s[4] * s[4] + s[5] * s[5];
    invariants.J3 = DETERM3D(tensorOf(s));
  } else {
    invariants.J3 = (s[3] * s[3] - J2) * s[3];
  }
  invariants.rootJ2 = std::sqrt(J2);
  const double cube = J2 * invariants.rootJ2;
  double& sine = invariants.sin3theta;
  sine = cube == 0.0 ? 1.0 : -3.0 * sqrt3 * invariants.J3 / (2.0 * cube);
  if (sine > corner) sine = 1.0;
  if (sine < -corner) sine = -1.0;
  return invariants;
}

template <int N>
YieldValue PLINVA(const StressInvariants<N>& invariants, const CriterionData& criterion) {
  Surface surface;
  YieldValue yield;
  switch (criterion.code) {
    case Criterion::tresca:
      surface.cosine = 2.0;
      break;
    case Criterion::vonMises:
      surface.constant = sqrt3;
      break;
    case Criterion::mohrCoulomb:
      surface = mohrCoulomb(criterion);
      break;
    case Criterion::druckerPrager: {
      surface = druckerPrager(criterion);
      const double s = std::sin(criterion.angle), c = std::cos(criterion.angle);
      const double X = 6.0 * s * invariants.p / ((3.0 - s) * sqrt3) + invariants.rootJ2;
      yield.dFdphi = c * 6.0 * sqrt3 * X / ((3.0 * s - 3.0) * (3.0 * s - 3.0)) +
                     surface.constant * 3.0 * c * 2.0 * sqrt3 * invariants.p / ((3.0 - s) * (3.0 - s));
      break;
    }
    case Criterion::lublinerOller:
      surface = lublinerOller(criterion, betaOf(criterion, invariants.SGMAX(), 0.0));
      break;
    case Criterion::damagePlaneStress:
    case Criterion::damageSimoJu:
    case Criterion::shear:
      return yield;
  }
  double onRoot = surface.constant;
  if (surface.dependsOnAngle()) {
    const double theta = invariants.theta();
    onRoot += surface.cosine * std::cos(theta) + surface.sine * std::sin(theta);
  }
  yield.F = invariants.rootJ2 * onRoot + surface.mean * invariants.p;
  return yield;
}

template <int N>
bool PLYIEL(const Stress<N>& SIGMA, const StressInvariants<N>& invariants, const CriterionData& criterion,
            Strain<N>& normal) {
  if (invariants.J2 == 0.0) return false;
  if (criterion.code == Criterion::damagePlaneStress) {
    normal = largerNormalPlace(SIGMA);
  } else {
    normal = combine(factorsOf(criterion, invariants), invariants);
  }
  return true;
}

template <int N>
Matrix<N> PLY2DERI(const StressInvariants<N>& invariants, const CriterionData& criterion) {
  if (invariants.J2 == 0.0) return {};
  const double q = sqrt3 * invariants.rootJ2;
  const double scale = factorsOf(criterion, invariants).C2 / (sqrt3 * q);
  const Strain<N> n = combine({.C2 = sqrt3}, invariants);
  Matrix<N> hessian;
  for (int i = 0; i < N; ++i) {
    for (int j = 0; j < N; ++j) {
      double P = 0.0;
      if (i == j) P = isShear(i) ? 3.0 : 1.0;
      if (i != j && !isShear(i) && !isShear(j)) P = -0.5;
      hessian(i, j) = scale * (P - n[i] * n[j]);
    }
  }
  return hessian;
}

template struct StressInvariants<4>;
template struct StressInvariants<6>;
template StressInvariants<4> invariantsOf(const Stress<4>&, const Stress<4>&);
template StressInvariants<6> invariantsOf(const Stress<6>&, const Stress<6>&);
template YieldValue PLINVA(const StressInvariants<4>&, const CriterionData&);
template YieldValue PLINVA(const StressInvariants<6>&, const CriterionData&);
template bool PLYIEL(const Stress<4>&, const StressInvariants<4>&, const CriterionData&, Strain<4>&);
template bool PLYIEL(const Stress<6>&, const StressInvariants<6>&, const CriterionData&, Strain<6>&);
template Matrix<4> PLY2DERI(const StressInvariants<4>&, const CriterionData&);
template Matrix<6> PLY2DERI(const StressInvariants<6>&, const CriterionData&);

}  // namespace zema
