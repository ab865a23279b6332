// Simple materials: the property table, the six selection codes and the temperature curves.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace zema {

/// Places of a material's property row, 1 to 100; the names say what stands there.
namespace slot {
inline constexpr int youngX = 1;                  ///< Young modulus x, force / length^2
inline constexpr int poissonXY = 2;               ///< Poisson coefficient xy
inline constexpr int thickness = 3;               ///< thickness in plane stress
inline constexpr int density = 4;                 ///< mass / length^3
inline constexpr int dilatancyAngle = 5;          ///< radians (degrees on the card)
inline constexpr int frictionAngle = 6;           ///< radians (degrees on the card)
inline constexpr int yieldStress = 7;             ///< yield stress in compression
inline constexpr int tensionCurve = 8;            ///< code of the tension hardening curve
inline constexpr int tensionPeakDissipation = 9;  ///< normalised dissipation at the peak; curve 5: number of points
inline constexpr int tensionPeakStress = 10;      ///< peak yield stress, or exponent of the power curve
inline constexpr int tensionSlope = 11;           ///< slope of the softening branch
inline constexpr int tensionSlopeFlag = 12;       ///< 1 given, 0 automatic
inline constexpr int tensionFractureEnergy = 13;  ///< energy / area
inline constexpr int compressionCurve = 14;       ///< code of the compression hardening curve
inline constexpr int compressionPeakDissipation = 15;
inline constexpr int compressionPeakStress = 16;
inline constexpr int compressionSlope = 17;
inline constexpr int compressionSlopeFlag = 18;
inline constexpr int compressionFractureEnergy = 19;
inline constexpr int yieldRatio = 20;    ///< compression / tension yield stress of the criterion
inline constexpr int frictionLaw = 21;   ///< 0 constant, 1 variable
inline constexpr int dilatancyLaw = 22;  ///< 0 constant, 1 variable
inline constexpr int yieldAlpha = 23;    ///< three parameters of the fifth criterion: 23, 24, 25
inline constexpr int yieldGamma = 24;
inline constexpr int yieldDelta = 25;
inline constexpr int potentialRatio = 26;  ///< compression / tension ratio of the potential
inline constexpr int potentialAlpha = 27;  ///< three parameters of the fifth potential: 27, 28, 29
inline constexpr int potentialGamma = 28;
inline constexpr int potentialDelta = 29;
inline constexpr int damageStress = 30;  ///< initial damage threshold
inline constexpr int damageRatio = 31;   ///< tension / compression ratio of the damage criterion
inline constexpr int kinematicSlope =
    32;  ///< hardening slope of the kinematic law; fibre radius of a short-fibre layer
inline constexpr int initialHardening =
    33;  ///< first value of the hardening parameter; fibre length of a short-fibre layer
inline constexpr int fibreRadius = kinematicSlope;
inline constexpr int fibreLength = initialHardening;
inline constexpr int kinematicExponent = 34;  ///< parameter m of the kinematic law
inline constexpr int poissonYX = 36;
inline constexpr int youngY = 37;
inline constexpr int poissonXZ = 38;
inline constexpr int poissonZX = 39;
inline constexpr int youngZ = 40;
inline constexpr int poissonYZ = 41;
inline constexpr int poissonZY = 42;
inline constexpr int shearXY = 43;      ///< 0: computed
inline constexpr int angleAboutZ = 44;  ///< second of the three orthotropy angles, degrees
inline constexpr int mapXX = 45;        ///< stress map diagonal xx, yy, xy, zz: 45 to 48
inline constexpr int mapYY = 46;
inline constexpr int mapXY = 47;
inline constexpr int mapZZ = 48;
inline constexpr int parallelSpring = 49;  ///< Young modulus of the parallel spring of the viscous laws
inline constexpr int relaxationTime = 50;
inline constexpr int damageSoftening = 51;       ///< softening law: 1 linear, other exponential; law 18: of tension
inline constexpr int damageSlope = 52;           ///< given slope of the linear law, force / length^2
inline constexpr int damageSlopeFlag = 53;       ///< 0 automatic, other: given
inline constexpr int damageFractureEnergy = 54;  ///< energy / area
inline constexpr int convection = 57;            ///< convection factor of a side
inline constexpr int expansionX = 61;            ///< thermal expansion x, y, z: 61 to 63
inline constexpr int referenceTemperature = 64;
inline constexpr int youngCurvePoints = 65;  ///< points of the Young-temperature curve
inline constexpr int poissonCurvePoints = 66;
inline constexpr int yieldCurvePoints = 67;
inline constexpr int shearXZ = 68;  ///< 0: computed
inline constexpr int shearYZ = 69;  ///< 0: computed
inline constexpr int mapXZ = 70;
inline constexpr int mapYZ = 71;
inline constexpr int angleAboutY = 72;            ///< first of the three orthotropy angles, degrees
inline constexpr int angleAboutX = 73;            ///< third of the three orthotropy angles, degrees
inline constexpr int compressionSoftening = 94;   ///< law 18: softening law of compression
inline constexpr int tensionParameters = 95;      ///< law 18: parameters of its tension curve, 95 to 97
inline constexpr int compressionParameters = 98;  ///< law 18: parameters of its compression curve, 98 to 100
}  // namespace slot

/// Yield functions and potentials of the deck.
enum class Criterion : int {
  tresca = 1,
  vonMises,
  mohrCoulomb,
  druckerPrager,
  lublinerOller,
  damagePlaneStress,
  damageSimoJu,
  shear
};

/// Integration codes of the deck: which law updates the stress.
enum class Law : int {
  elastic = 0,
  eulerCorrector,
  subincrementing,
  kinematicHardening,
  simpleDamage,
  generalDamage,
  viscoelastic,
  viscoelasticDynamic,
  backwardEuler,
  backwardEulerCorrector,
  backwardEulerNumeric,
  viscoDamage,
  damagePlastic,
  generalDamagePlastic,
  unnamed14,
  userDefined,
  damageFriction,
  unnamed17,
  tensionCompressionDamage,
  tensionCompressionDamageAlternative
};

enum class Flow : int { constant = 1, variable = 2 };
enum class HardeningVariable : int { work = 1, equivalentStrain = 2, strain = 3, unlabelled = 4 };
enum class TangentChoice : int { continuous = 1, algorithmic = 2, perturbed = 3 };

/// A curve of a property over temperature: (temperature, value) points, temperatures ascending.
struct TemperatureCurve {
  std::vector<double> X;
  std::vector<double> Y;
};

/// One simple material.
struct Material {
  bool given = false;  ///< a card has been read for this number
  std::string title;
  std::array<double, 101> PROPS{};  ///< property row, places 1 to 100; place 0 unused
  Criterion NCRIT{};                ///< yield function
  Criterion NCRIP{};                ///< potential function
  Law NTINT{};                      ///< law
  Flow NFLUG{};                     ///< flow type
  HardeningVariable NHARD{};        ///< variable that drives hardening
  TangentChoice NMATX{};            ///< tangent choice
  TemperatureCurve young;           ///< XTEMPE, YDATAE
  TemperatureCurve poisson;         ///< XTEMPV, YDATAV
  TemperatureCurve yield;           ///< XTEMPS, YDATAS
  TemperatureCurve stressStrain;    ///< XEPS, YSIG: points (strain, stress) of hardening curve 5

  [[nodiscard]] double operator()(int place) const { return PROPS[static_cast<std::size_t>(place)]; }
  [[nodiscard]] double& operator()(int place) { return PROPS[static_cast<std::size_t>(place)]; }
  /// MAEULER: the three Euler angles in the order of `CALRME` (about Y, Z, X as the echo prints them), degrees.
  [[nodiscard]] std::array<double, 3> MAEULER() const {
    return {(*this)(slot::angleAboutY), (*this)(slot::angleAboutZ), (*this)(slot::angleAboutX)};
  }
};

/// All simple materials, by number from 1.
struct Materials {
  std::vector<Material> all;

  [[nodiscard]] Material& operator()(int number) { return all[static_cast<std::size_t>(number - 1)]; }
  [[nodiscard]] const Material& operator()(int number) const { return all[static_cast<std::size_t>(number - 1)]; }
};

}  // namespace zema
