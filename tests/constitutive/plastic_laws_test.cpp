// The plastic laws at one point.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "constitutive/law_samples.h"
#include "constitutive/law_table.h"
#include "constitutive/sample_materials.h"
#include "foundation/distance.h"

namespace zema {
namespace {

constexpr double degree = std::numbers::pi / 180.0;
constexpr double slope = 200.0e3 / 9.0;  // plastic slope of a tangent modulus of 20e3
constexpr auto allLaws = {Law::eulerCorrector, Law::subincrementing,        Law::kinematicHardening,
                          Law::backwardEuler,  Law::backwardEulerCorrector, Law::backwardEulerNumeric};

/// Steel: E 200e3, f 200, plastic slope H; criteria 3 to 5 are 3 times weaker in tension.
Material steel(Law law, Criterion criterion, double H) {
  const double R = criterion < Criterion::mohrCoulomb ? 1.0 : 3.0;
  const double phi = 30.0 * degree;
  const Slots slots{{6, phi},  {5, phi},   {20, R},    {26, R},    {10, R},      {8, 1.0}, {9, 1.0},
                    {12, 1.0}, {23, 0.12}, {27, 0.12}, {7, 200.0}, {34, 1.0e-9}, {11, H},  {33, H}};
  return isotropicMaterial(200.0e3, 0.3, slots, plasticCodes(criterion, law));
}

/// Law 3 is made for von Mises.
bool admits(Law law, int criterion) {
  return law != Law::kinematicHardening || criterion == 2;
}

template <int N>
struct LawPoint : SamplePoint<N> {
  explicit LawPoint(const Material& given) : SamplePoint<N>(given, lawOf<N>(given, 1)) { this->pass.TOLER = 1.0e-6; }
  [[nodiscard]] double operator[](int place) const { return this->trialInternal[static_cast<std::size_t>(place)]; }
};

/// Drives a point to an axial strain with no stress in the other places, and commits. Returns the axial stress.
template <int N>
double pull(LawPoint<N>& point, double axial) {
  auto strain = Strain<N>::from(point.committed, point.places.STRAT());
  strain[0] = axial;
  for (int iteration = 0; iteration < 60; ++iteration) {
    const Stress<N> stress = point.update(strain).stress;
    const Matrix<N> tangent = point.tangent();
    Matrix<N - 1> lateral;
    Matrix<N - 1, 1> correction;
    for (int i = 1; i < N; ++i) {
      correction(i - 1, 0) = -stress[i];
      for (int j = 1; j < N; ++j) lateral(i - 1, j - 1) = tangent(i, j);
    }
    if (distance(Matrix<N - 1, 1>{}, correction) < 1.0e-7) {
      point.commit();
      return stress[0];
    }
    if (!solveColumns(lateral, correction)) break;
    for (int i = 1; i < N; ++i) strain[i] += correction(i - 1, 0);
  }
  ADD_FAILURE() << "no uniaxial state at strain " << axial;
  return std::nan("");
}

TEST(PlasticLaws, UniaxialBar) {
  const auto check = [](Law law, Criterion criterion, double sign) {
    SCOPED_TRACE(testing::Message() << "law " << static_cast<int>(law) << " criterion " << static_cast<int>(criterion));
    const bool edge = criterion == Criterion::lublinerOller;  // uniaxial compression is an edge of its surface
    Material material = steel(law, criterion, slope);
    if (edge) material.NMATX = TangentChoice::perturbed;
    LawPoint<6> bar(material);
    for (const auto& [strain, stress] : {std::pair{0.0009, 180.0}, {0.0015, 210.0}, {0.0021, 222.0}, {0.003, 240.0}})
      EXPECT_NEAR(pull(bar, sign * strain), sign * stress, 3.0e-5);
    EXPECT_NEAR(bar.trial[12], sign * 0.0018, 1.0e-9);
    if (edge) return;
    EXPECT_NEAR(pull(bar, sign * 0.0018), 0.0, 3.0e-5);
    EXPECT_NEAR(pull(bar, sign * 0.00301), sign * 240.2, 3.0e-5);
    LawPoint<4> perfect(steel(law, criterion, 1.0e-3));
    for (const double strain : {0.0011, 0.002}) EXPECT_NEAR(pull(perfect, sign * strain), sign * 200.0, 3.0e-6);
  };
  for (const Law law : allLaws) {
    for (int code = 1; code <= 4; ++code)
      if (admits(law, code)) check(law, static_cast<Criterion>(code), -1.0);
    for (int code = 1; code <= 2; ++code)
      if (admits(law, code)) check(law, static_cast<Criterion>(code), 1.0);
  }
  check(Law::eulerCorrector, Criterion::lublinerOller, -1.0);
}

TEST(PlasticLaws, DilatancyOfThePotential) {
  for (const Law law : {Law::eulerCorrector, Law::subincrementing, Law::backwardEuler, Law::backwardEulerNumeric}) {
    for (const Criterion criterion : {Criterion::mohrCoulomb, Criterion::druckerPrager}) {
      for (const double psi : {0.0, 10.0, 30.0}) {
        Material material = steel(law, criterion, 1.0e-3);
        material(slot::dilatancyAngle) = psi * degree;
        material(slot::potentialRatio) = std::pow(std::tan((45.0 + psi / 2.0) * degree), 2);
        LawPoint<6> column(material);
        for (const double strain : {-0.002, -0.004}) (void)pull(column, strain);

        const auto plastic = Strain<6>::from(column.committed, column.places.STRAP());
        const double s = std::sin(psi * degree), lateral = -0.5 - s / (1.0 - s);
        EXPECT_NEAR(plastic[1] / plastic[0], lateral, 1.0e-7);
      }
    }
  }
}

TEST(PlasticLaws, FiniteStrainTangentWithTheStressPartIsConsistentAndSoIsTheElasticOneOfAnyMap) {
  const Material plain = isotropicMaterial(10.0, 0.25);
  const Material doubled = with(plain, {{45, 2.0}, {46, 2.0}, {47, 2.0}, {48, 2.0}, {70, 2.0}, {71, 2.0}});
  for (const Material& material : {steel(Law::kinematicHardening, Criterion::vonMises, slope),
                                   steel(Law::backwardEuler, Criterion::vonMises, slope), plain, doubled,
                                   with(doubled, {{slot::mapYY, 0.5}, {slot::mapXZ, 1.25}}),
                                   orthotropicMaterial({{72, 25.0}, {44, 40.0}, {73, -70.0}})}) {
    LawPoint<6> point(material);
    point.pass.LARGE = 1;
    point.pass.KPUSH = point.pass.KTANP = 2;
    const double error = errorAlongMotions(point, {{1.1, 0.3, -0.1, 0.2, 0.9, 0.25, -0.15, 0.05, 1.2}});
    EXPECT_LT(error / point.elastic.D(0, 0), 1.0e-8);
    EXPECT_EQ(point[internal::elasticFlag] == 0.0, material.NTINT != Law::elastic);
  }
}

TEST(PlasticLaws, DamageIsLaidOverAnUndamagedPlasticBar) {
  Material material = steel(Law::damagePlastic, Criterion::vonMises, slope);
  material(slot::damageStress) = 150.0;
  material(slot::damageRatio) = 1.0;
  material(slot::damageFractureEnergy) = 20.0;
  LawPoint<6> bar(material);
  bar.geometry.FRACL = 1.0;
  for (const auto& [strain, undamaged] : {std::pair{0.001, 200.0}, {0.0015, 210.0}, {0.003, 240.0}, {0.0028, 200.0}}) {
    const double stress = pull(bar, strain);
    EXPECT_NEAR(stress, (1.0 - bar[internal::damage]) * undamaged, 1.0e-6);
  }
  EXPECT_GT(bar[internal::damage], 0.5);
  EXPECT_EQ(bar[internal::elasticFlag], 0.0);  // unloading of a damaged point is not elastic
  EXPECT_NEAR(bar[internal::yieldStress], 240.0, 1.0e-6);
}

TEST(PlasticLaws, TheSmoothedSurfaceIsPassedByTheShareOfItsExponent) {
  Material smooth = steel(Law::kinematicHardening, Criterion::vonMises, 2000.0);
  smooth(slot::kinematicExponent) = 0.01;
  LawPoint<6> bar(smooth);
  double stress = 0.0;
  for (int step = 1; step <= 400; ++step) stress = pull(bar, 1.0e-4 * step);
  EXPECT_NEAR(stress - bar[internal::yieldStress], 0.01 * 2000.0, 0.2);  // m Hk above the surface
}

TEST(PlasticLaws, FatigueLowersTheYieldStress) {
  for (const Law law : allLaws) {
    LawPoint<6> bar(steel(law, Criterion::vonMises, 1.0e-3));
    bar.material(slot::damageStress) = 200.0;
    bar.pass.TCYCL = 1.0;
    bar.pass.NCYCL = 1.0e4;
    bar.pass.FATIM = 0.0;  // exponent 8 of log10 N
    const int values = bar.places.fatigue();
    bar.committed[static_cast<std::size_t>(values + 4)] = 1.0;  // settled
    bar.committed[static_cast<std::size_t>(values + 5)] = 1.0e-5;
    const double factor = std::exp(-1.0e-5 * std::pow(4.0, 8));
    EXPECT_NEAR(pull(bar, 0.0012), factor * 200.0, 1.0e-4) << static_cast<int>(law);
    EXPECT_NEAR(bar[internal::reducedYieldStress], factor * bar[internal::yieldStress], 1.0e-9);
  }
}

TEST(PlasticLaws, WhatIsNotANumberOrHasNoSlopeStops) {
  for (const Law law : allLaws) {
    LawPoint<6> point(steel(law, Criterion::vonMises, slope));
    EXPECT_THROW((void)point.update(Strain<6>{{std::nan("")}}), ConstitutiveStop);
  }
  LawPoint<6> flat(steel(Law::kinematicHardening, Criterion::vonMises, slope));
  flat.committedInternal[internal::hardening] = 0.0;
  EXPECT_THROW((void)flat.update(Strain<6>{{0.01}}), ConstitutiveStop);
}

TEST(PlasticLaws, MaterialsThatALawIsNotMadeForAreRefused) {
  for (const Law law : allLaws) {
    EXPECT_THROW((void)lawOf<6>(steel(law, Criterion::damageSimoJu, slope), 1), InputFault);
    Material flowless = steel(law, Criterion::vonMises, slope);
    flowless.NCRIP = Criterion::shear;
    if (law != Law::kinematicHardening) {
      EXPECT_THROW((void)lawOf<6>(flowless, 1), InputFault);
    }
  }
  EXPECT_THROW((void)lawOf<6>(steel(Law::kinematicHardening, Criterion::tresca, slope), 1), InputFault);
  EXPECT_THROW((void)lawOf<6>(steel(Law::kinematicHardening, Criterion::vonMises, 0.0), 1), InputFault);
}

}  // namespace
}  // namespace zema
