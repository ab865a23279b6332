// Elastic matrices, maps and their change with temperature.
#include "constitutive/elastic_moduli.h"

#include <gtest/gtest.h>

#include "constitutive/sample_materials.h"
#include "constitutive/temperature_curve.h"
#include "foundation/distance.h"
#include "foundation/ends.h"

namespace zema {
namespace {

TEST(ElasticMatrix, IsTheInverseOfTheComplianceEvenWithoutSymmetry) {
  const Material m = orthotropicMaterial({{slot::poissonYX, 0.1}, {slot::poissonZX, 0.05}, {slot::poissonZY, 0.15}});
  Matrix<6> compliance;  // the contraction in i by a stress in j is -NUji / Ej
  const std::array young{m(slot::youngX), m(slot::youngY), m(slot::youngZ)};
  const std::array ratios{-1.0, m(slot::poissonYX), m(slot::poissonZX), m(slot::poissonXY),
                          -1.0, m(slot::poissonZY), m(slot::poissonXZ), m(slot::poissonYZ),
                          -1.0};
  for (std::size_t k = 0; k < 9; ++k)
    compliance(std::array{0, 1, 3}[k / 3], std::array{0, 1, 3}[k % 3]) = -ratios[k] / young[k % 3];
  for (const auto& [place, shear] : {std::pair{2, slot::shearXY}, {4, slot::shearXZ}, {5, slot::shearYZ}})
    compliance(place, place) = 1.0 / m(shear);

  const Matrix<6> C = MODPS<6>(m, 1, std::nullopt).record.VDMANX;

  EXPECT_LT(distance(PROMA1(C, compliance), Matrix<6>::identity()), 1.0e-14);
  const Matrix<4> plane = MODPS<4>(m, 1, std::nullopt).record.VDMANX;
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j) EXPECT_EQ(plane(i, j), C(i, j));
}

TEST(ElasticTables, MappedStrainGivesTheMappedStress) {
  const ElasticMaterial<6> elastic = MODPS<6>(orthotropicMaterial(), 1, std::nullopt);
  const ElasticRecord<6>& record = elastic.record;

  const Matrix<6> viaIsotropicSpace = PROMA1(elastic.D, record.AEMX);

  Matrix<6> viaRealSpace = record.VDMANX;
  for (int i = 0; i < 6; ++i)
    for (int j = 0; j < 6; ++j) viaRealSpace(i, j) *= record.ASMT[static_cast<std::size_t>(i)];
  EXPECT_LT(distance(viaIsotropicSpace, viaRealSpace), 1.0e-12);
  EXPECT_LT(distance(PROMA1(record.AEMX, record.AEMXI), Matrix<6>::identity()), 1.0e-13);
  EXPECT_FALSE(elastic.plainMap);
  EXPECT_EQ(record.ASMT[1] * record.ASMTI[1], 1.0);
  // Isotropic stand-in: the stiffer of Ex and Ey, and NUxy.
  EXPECT_NEAR(elastic.D(2, 2), 120.0 / 2.6, 1.0e-13);
}

TEST(ElasticTables, PlacesOfTheRecord) {
  ElasticRecord<6> record = MODPS<6>(orthotropicMaterial(), 1, std::nullopt).record;
  record.VCVISC(5, 5) = 7.0;

  const auto values = valuesOf(record);

  ASSERT_EQ(values.size(), 213U);
  EXPECT_EQ(values[6], record.VDMATX[6]);  // second diagonal entry of the packed triangle
  EXPECT_EQ(values[6], unpackUpper<6>(record.VDMATX)(1, 1));
  EXPECT_EQ(values[21], record.AEMX(0, 0));
  EXPECT_EQ(values[58], record.VDMANX(0, 1));
  EXPECT_EQ(values[98], record.ASMT[5]);
  EXPECT_EQ(values[99], record.VDMANXI(0, 0));
  EXPECT_EQ(values[135], record.ASMTI[0]);
  EXPECT_EQ(values[141], record.AEMXI(0, 0));
  EXPECT_EQ(values[212], 7.0);
}

Material followingCurves(double nu) {
  Material material = isotropicMaterial(2000.0, nu, {{slot::referenceTemperature, 20.0}, {65, 2.0}, {66, 2.0}});
  material.young = {{20.0, 120.0}, {1000.0, 500.0}};
  material.poisson = {{20.0, 120.0}, {0.3, 0.2}};
  return material;
}

TEST(ElasticTables, FollowTheTemperatureButAtTheReferenceAndForANullPoissonCoefficient) {
  const Material material = followingCurves(0.3);

  const Matrix<6> warm = MODPS<6>(material, 1, 70.0).record.VDMANX;
  const ElasticMaterial<6> hot = MODPS<6>(material, 1, 170.0);  // beyond the end of the curves

  EXPECT_LT(distance(warm, MODAN<6>(OrthotropicConstants::isotropic(750.0, 0.25))), 1.0e-11);
  EXPECT_LT(distance(hot.record.VDMANX, MODAN<6>(OrthotropicConstants::isotropic(250.0, 0.15))), 1.0e-11);
  EXPECT_TRUE(hot.plainMap);
  EXPECT_DOUBLE_EQ(MODPS<6>(followingCurves(0.0), 1, 20.0).record.VDMANX(0, 0), 2000.0);
  EXPECT_DOUBLE_EQ(MODPS<6>(followingCurves(0.0), 1, 120.0).record.VDMANX(0, 0), 500.0);
}

TEST(ElasticTables, RefuseANegativeModulusAMapWithZeroAndIncompressibility) {
  EXPECT_EQ(endOf([] { return MODPS<6>(followingCurves(0.3), 3, 245.0); }),
            "fault material 3: at the temperature 245.0 the Young modulus of slot 1 is -125.0; it must be above 0");
  for (const Material& material :
       {with(followingCurves(0.3), {{slot::youngZ, 0.0}}), isotropicMaterial(1000.0, 0.3, {{slot::mapZZ, 0.0}}),
        isotropicMaterial(1000.0, 0.5)})
    EXPECT_THROW((void)MODPS<6>(material, 4, 20.0), InputFault);
}

TEST(TemperatureCurve, IsLinearBetweenAndBeyondItsPointsOrConstant) {
  const TemperatureCurve curve{{0.0, 100.0, 200.0}, {10.0, 20.0, 50.0}};
  for (const auto& [T, value] : {std::pair{50.0, 15.0}, {100.0, 20.0}, {150.0, 35.0}, {-100.0, 0.0}, {300.0, 80.0}})
    EXPECT_DOUBLE_EQ(CAMBIOPORTEMP(T, curve), value);
  EXPECT_DOUBLE_EQ(CAMBIOPORTEMP(50.0, {{20.0}, {7.0}}), 7.0);
  EXPECT_DOUBLE_EQ(CAMBIOPORTEMP(50.0, {{20.0, 20.0}, {7.0, 9.0}}), 7.0);
}

TEST(TemperatureCurve, ScalesTheYieldValues) {
  const Slots cold{
      {slot::yieldStress, 200.0}, {slot::tensionPeakStress, 30.0}, {slot::compressionPeakDissipation, 0.2}};
  for (const auto& [temperature, share] : {std::pair{20.0, 1.0}, {70.0, 0.75}}) {
    Material material = with(Material{}, cold);
    material(slot::referenceTemperature) = 20.0;
    material(slot::yieldCurvePoints) = 2.0;
    material.yield = {{20.0, 120.0}, {200.0, 100.0}};

    scaleYieldValues(material, temperature);

    for (const auto& [place, value] : cold) EXPECT_DOUBLE_EQ(material(place), share * value);
  }
}

}  // namespace
}  // namespace zema
