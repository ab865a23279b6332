// Hardening of the plastic laws: `PLVARI` and what it is made of.
#include "constitutive/hardening.h"

#include <cmath>

#include "constitutive/characteristic_length.h"
#include "constitutive/hardening_curves.h"
#include "constitutive/principal_stresses.h"
#include "foundation/single_precision.h"

namespace zema {
namespace {

/// What an evaluation of the hardening is made from, whatever the number of stress components.
struct Evaluation {
  const Material& material;
  const PointGeometry& geometry;
  TensionShare share;
  double r = 0.0;                ///< share of tension
  double workOfIncrement = 0.0;  ///< stress times plastic increment
  double workOfFlow = 0.0;       ///< stress times flow vector
  YieldValue yield;
  double startingKappa = 0.0;
  bool accumulates = false;
};

/// Yield stress and its derivative by the variable.
struct YieldStress {
  double K = 0.0;
  double dKdkappa = 0.0;
};

/// part / energy; an energy that is next to nothing takes no part.
double partOver(double part, double energy) {
  constexpr double least = single(1.0e-6F);
  return energy > least ? part / energy : 0.0;
}

double ratioOrZero(double numerator, double denominator) {
  return denominator == 0.0 ? 0.0 : numerator / denominator;
}

/// The characteristic length, after the test that softening in compression does not snap back.
double testedLength(const Evaluation& at, LengthRule rule, std::string_view words) {
  const double l = characteristicLength(at.geometry, rule);
  const double strength = at.material(slot::yieldStress);
  const double energy = at.material(slot::compressionFractureEnergy);
  checkLength(l, 2.0 * at.material(slot::youngX) * energy / (strength * strength), words);
  return l;
}

double gf(const Evaluation& at, double l) {
  return at.material(slot::tensionFractureEnergy) / l;
}
double gc(const Evaluation& at, double l) {
  return at.material(slot::compressionFractureEnergy) / l;
}

/// `PLCAPA`: w of d kappa = w stress . d(plastic strain): the work over the energy that there is to dissipate.
double PLCAPA(const Evaluation& at, double l) {
  return partOver(at.r, gf(at, l)) + partOver(1.0 - at.r, gc(at, l));
}

/// `PLCAPA_B`: the same, with the parts scaled by the equivalent stress over the sum of the principal ones.
double PLCAPA_B(const Evaluation& at, double l) {
  if (at.share.S == 0.0) return 0.0;
  const double scale = std::abs(at.yield.F) / at.share.S;
  const double tensionScale = at.r == 0.0 ? 0.0 : scale / at.material(slot::yieldRatio);
  return partOver(at.r * tensionScale * tensionScale, gf(at, l)) + partOver((1.0 - at.r) * scale * scale, gc(at, l));
}

/// `PLCAPA_E`: w of the strain variable, weights of tension and compression.
double PLCAPA_E(const Evaluation& at, double l, double flowScale) {
  const double R = at.material(slot::yieldRatio), F = std::abs(at.yield.F);
  double gt = gf(at, l), gk = gc(at, l);
  if (F != 0.0) {
    gt = at.share.St / F * R;
    gk = at.share.Sc / F;
    if (flowScale < 1.0) {
      gt /= flowScale;
      gk /= flowScale;
    }
  }
  return partOver(R * at.r, gt) + partOver(1.0 - at.r, gk);
}

/// `PLEPSI`, `PLEPSI_E`: w of a strain variable: d kappa = (stress / F) . d(plastic strain) w.
double PLEPSI(const Evaluation& at, double w, double flowScale) {
  return ratioOrZero(w, at.yield.F * flowScale);
}

/// `PLEQUI`: yield stress over the normalised dissipation.
YieldStress PLEQUI(const Evaluation& at, double l, double kappa) {
  const double f = at.material(slot::yieldStress), r = at.r;
  const CurveValue tension = PLCURV(tensionCurve(at.material, f, l), kappa);
  const CurveValue compression = PLCURV(compressionCurve(at.material, f, l), kappa);
  const double K = r * tension.c + (1.0 - r) * compression.c;
  return {K, (ratioOrZero(tension.h * r, tension.c) + ratioOrZero(compression.h * (1.0 - r), compression.c)) * K};
}

/// `PLEQUI_E`: yield stress over the strain variable.
YieldStress PLEQUI_E(const Evaluation& at, double l, double kappa) {
  const double f = at.material(slot::yieldStress), R = at.material(slot::yieldRatio), r = at.r;
  const CurveValue tension = PLCURV_E(tensionCurve(at.material, f / R, l), kappa);
  const CurveValue compression = PLCURV_E(compressionCurve(at.material, f, l), kappa);
  return {compression.c * (1.0 - r) + tension.c * r * R, compression.h * (1.0 - r) + tension.h * r * R};
}

/// Yield stress over the plastic strain, by the code of the tension curve.
YieldStress strainCurve(const Evaluation& at, double kappa) {
  const Material& material = at.material;
  const double l = characteristicLength(at.geometry, LengthRule::elementSquareRoot, false);
  const HardeningCurve curve = tensionCurve(material, material(slot::yieldStress), l);
  const auto valueOf = [](const CurveValue& value) { return YieldStress{value.c, value.h}; };
  if (curve.code == 1) return valueOf(PLEQS1(curve, material(slot::yieldRatio), kappa));
  if (curve.code == 2) return valueOf(PLEQS2(curve, kappa));
  if (curve.code == 5 && !material.stressStrain.X.empty()) return valueOf(PLEQS3(material.stressStrain, kappa));
  throw ConstitutiveStop("  >>>> CURVE OF STRAIN HARDENING MUST BE 1, 2 OR 5", curve.code, 0.0,
                         "The first number is the curve code, slot 8; code 5 needs its table of points.");
}

/// An angle that follows the variable, and its derivative.
struct MobilisedAngle {
  double angle = 0.0;
  double slope = 0.0;
};

/// `PLANFI`: friction angle over kappa; S: sine of the full angle, reached at kappa 0.8.
MobilisedAngle PLANFI(double S, double kappa) {
  constexpr double peak = 0.8;
  const double root = std::sqrt(peak * kappa), sum = kappa + peak;
  const double x = 2.0 * S * root / sum;
  const double numerator = 2.0 * S * (sum / 2.0 - kappa) * peak;
  return {std::asin(x), ratioOrZero(numerator, root * sum * sum * std::sqrt(1.0 - x * x))};
}

/// `PLANSI`: dilatancy angle of a friction angle; S, Sd: sines of the full friction and dilatancy angles. None below
/// the friction angle of constant volume.
double PLANSI(double S, double Sd, double phi) {
  const double constantVolume = std::asin((S - Sd) / (1.0 - S * Sd));
  return phi > constantVolume ? phi - constantVolume : 0.0;
}

/// Writes the angles that follow the variable. Returns d phi / d kappa.
double mobiliseAngles(const Evaluation& at, LawState& state) {
  const double S = std::sin(at.material(slot::frictionAngle));
  double slope = 0.0;
  if (at.material(slot::frictionLaw) == 1.0) {
    const MobilisedAngle friction = PLANFI(S, state.INTVAR[internal::kappa]);
    state.INTVAR[internal::frictionAngle] = friction.angle;
    slope = friction.slope;
  }
  if (at.material(slot::dilatancyLaw) == 1.0) {
    const double Sd = std::sin(at.material(slot::dilatancyAngle));
    state.INTVAR[internal::dilatancyAngle] = PLANSI(S, Sd, state.INTVAR[internal::frictionAngle]);
  }
  return slope;
}

/// `PLHARD`: H = -(dF/dphi dphi/dkappa + dF/dK dK/dkappa), dF/dK = -1, times the variable's rate along the flow unless
/// that is 0.
double PLHARD(double dFdphi, double dphidkappa, double dKdkappa, double rate) {
  const double H = dKdkappa - dFdphi * dphidkappa;
  return rate != 0.0 ? rate * H : H;
}

/// Writes the variable, yield stress and slope; w: d kappa = w stress . d(plastic strain).
void store(const Evaluation& at, double w, YieldStress yieldStress, LawState& state, double dphidkappa = 0.0) {
  state.INTVAR[internal::yieldStress] = yieldStress.K;
  state.INTVAR[internal::hardening] = PLHARD(at.yield.dFdphi, dphidkappa, yieldStress.dKdkappa, w * at.workOfFlow);
}

/// A strain variable never goes back.
double grown(double increment) {
  return increment < 0.0 ? 0.0 : increment;
}

void advance(const Evaluation& at, double increment, LawState& state) {
  if (at.accumulates) state.INTVAR[internal::kappa] = at.startingKappa + increment;
}

void hardenByWork(const Evaluation& at, LawState& state) {
  const bool byYield = at.material.NHARD == HardeningVariable::unlabelled;
  const double l = byYield ? testedLength(at, LengthRule::elementSquareRoot,
                                          "  >>>> LONG. CARACTERISTICA DEL ELEMENTO MAYOR QUE EL LIMITE")
                           : testedLength(at, LengthRule::pointCubeRoot, beyondLimit);
  const double w = byYield ? PLCAPA_B(at, l) : PLCAPA(at, l);
  advance(at, w * at.workOfIncrement, state);
  const YieldStress yieldStress = PLEQUI(at, l, state.INTVAR[internal::kappa]);
  store(at, w, yieldStress, state, mobiliseAngles(at, state));
}

void hardenByShares(const Evaluation& at, LawState& state) {
  const double flowScale = state.INTVAR[internal::flowScale];
  const double l = testedLength(at, LengthRule::elementSquareRoot, beyondLimit);
  const double w = PLEPSI(at, PLCAPA_E(at, l, flowScale), flowScale);
  advance(at, grown(w * at.workOfIncrement), state);
  const double curveLength = characteristicLength(at.geometry, LengthRule::elementSquareRoot, false);
  store(at, w, PLEQUI_E(at, curveLength, state.INTVAR[internal::kappa]), state);
}

void hardenByStrain(const Evaluation& at, LawState& state) {
  const double w = PLEPSI(at, 1.0, state.INTVAR[internal::flowScale]);
  advance(at, grown(w * at.workOfIncrement), state);
  store(at, w, strainCurve(at, state.INTVAR[internal::kappa]), state);
}

void harden(const Evaluation& at, LawState& state) {
  switch (at.material.NHARD) {
    case HardeningVariable::work:
    case HardeningVariable::unlabelled:
      return hardenByWork(at, state);
    case HardeningVariable::equivalentStrain:
      return hardenByShares(at, state);
    default:
      return hardenByStrain(at, state);
  }
}

}  // namespace

template <int N>
void PLVARI(const MaterialPoint<N>& at, const HardeningInput<N>& input, LawState& state) {
  const bool byShares = at.material.NHARD != HardeningVariable::strain;
  const TensionShare share = byShares ? tensionShare(PRINSI(input.SIGMA)) : TensionShare{};
  harden({at.material, at.geometry, share, share.r(), dot(input.SIGMA, input.plasticIncrement),
          dot(input.SIGMA, input.flow), input.yield, input.startingKappa, input.accumulates},
         state);
  const double sum = state.INTVAR[internal::kappa] + state.INTVAR[internal::yieldStress] +
                     state.INTVAR[internal::hardening] + state.INTVAR[internal::frictionAngle] +
                     state.INTVAR[internal::dilatancyAngle];
  if (std::isfinite(sum)) return;
  throw ConstitutiveStop("  >>>> HARDENING IS NOT FINITE", state.INTVAR[internal::kappa],
                         state.INTVAR[internal::yieldStress],
                         "The numbers are the internal variable and the yield stress. The data of a curve do not fit "
                         "together: a peak below\n  the yield stress (slots 10, 16), no ratio of yield stresses (slot "
                         "20) or no fracture energy (slots 13, 19).");
}

template void PLVARI(const MaterialPoint<4>&, const HardeningInput<4>&, LawState&);
template void PLVARI(const MaterialPoint<6>&, const HardeningInput<6>&, LawState&);

}  // namespace zema
