// Elastic matrices, maps and their change with temperature.
#include "constitutive/elastic_moduli.h"

#include <gtest/gtest.h>

#include "constitutive/sample_materials.h"
#include "constitutive/temperature_curve.h"
#include "foundation/distance.h"
#include "foundation/errors.h"

namespace zema {
namespace {

TEST(ElasticMatrix, IsTheInverseOfTheComplianceEvenWithoutSymmetry) {
  const OrthotropicConstants c{.Ex = 120.0,
                               .NUxy = 0.3,
                               .NUyx = 0.1,
                               .Ey = 30.0,
                               .NUxz = 0.25,
                               .NUzx = 0.05,
                               .Ez = 20.0,
                               .NUyz = 0.2,
                               .NUzy = 0.15,
                               .Gxy = 15.0,
                               .Gxz = 11.0,
                               .Gyz = 8.0};
  const Matrix<6> compliance{{1.0 / c.Ex,
                              -c.NUyx / c.Ey,
                              0,
                              -c.NUzx / c.Ez,
                              0,
                              0,  // contraction in i by a stress in j
                              -c.NUxy / c.Ex,
                              1.0 / c.Ey,
                              0,
                              -c.NUzy / c.Ez,
                              0,
                              0,  // is -NUji / Ej
                              0,
                              0,
                              1.0 / c.Gxy,
                              0,
                              0,
                              0,  //
                              -c.NUxz / c.Ex,
                              -c.NUyz / c.Ey,
                              0,
                              1.0 / c.Ez,
                              0,
                              0,  //
                              0,
                              0,
                              0,
                              0,
                              1.0 / c.Gxz,
                              0,  //
                              0,
                              0,
                              0,
                              0,
                              0,
                              1.0 / c.Gyz}};

  const Matrix<6> C = MODAN<6>(c);

  EXPECT_LT(distance(PROMA1(C, compliance), Matrix<6>::identity()), 1.0e-14);
  const Matrix<4> plane = MODAN<4>(c);
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
  Material material = isotropicMaterial(2000.0, nu);
  material(slot::referenceTemperature) = 20.0;
  material(slot::youngCurvePoints) = material(slot::poissonCurvePoints) = 2.0;
  material.young = {{20.0, 120.0}, {1000.0, 500.0}};
  material.poisson = {{20.0, 120.0}, {0.3, 0.2}};
  return material;
}

TEST(ElasticTables, FollowTheTemperatureButAtTheReferenceAndForANullPoissonCoefficient) {
  Material material = followingCurves(0.3);

  const Matrix<6> warm = MODPS<6>(material, 1, 70.0).record.VDMANX;
  const ElasticMaterial<6> hot = MODPS<6>(material, 1, 170.0);  // beyond the end of the curves

  EXPECT_LT(distance(warm, MODAN<6>(OrthotropicConstants::isotropic(750.0, 0.25))), 1.0e-11);
  EXPECT_LT(distance(hot.record.VDMANX, MODAN<6>(OrthotropicConstants::isotropic(250.0, 0.15))), 1.0e-11);
  EXPECT_TRUE(hot.plainMap);
  EXPECT_DOUBLE_EQ(MODPS<6>(followingCurves(0.0), 1, 20.0).record.VDMANX(0, 0), 2000.0);
  EXPECT_DOUBLE_EQ(MODPS<6>(followingCurves(0.0), 1, 120.0).record.VDMANX(0, 0), 500.0);
  try {
    (void)MODPS<6>(material, 3, 245.0);
    FAIL() << "a modulus below 0 was accepted";
  } catch (const InputFault& fault) {
    EXPECT_STREQ(fault.what(),
                 "material 3: at the temperature 245.0 the Young modulus of slot 1 is -125.0; it must be above 0");
  }
  material(slot::youngZ) = 0.0;
  EXPECT_THROW((void)MODPS<6>(material, 3, 20.0), InputFault);
}

TEST(ElasticTables, RefuseAMapWithZeroAndIncompressibility) {
  Material noMap = isotropicMaterial(1000.0, 0.3);
  noMap(slot::mapZZ) = 0.0;

  EXPECT_THROW((void)MODPS<6>(noMap, 4, std::nullopt), InputFault);
  EXPECT_THROW((void)MODPS<6>(isotropicMaterial(1000.0, 0.5), 4, std::nullopt), InputFault);
}

TEST(TemperatureCurve, IsLinearBetweenAndBeyondItsPointsOrConstant) {
  const TemperatureCurve curve{{0.0, 100.0, 200.0}, {10.0, 20.0, 50.0}};
  for (const auto& [T, value] : {std::pair{50.0, 15.0}, {100.0, 20.0}, {150.0, 35.0}, {-100.0, 0.0}, {300.0, 80.0}})
    EXPECT_DOUBLE_EQ(CAMBIOPORTEMP(T, curve), value);
  EXPECT_DOUBLE_EQ(CAMBIOPORTEMP(50.0, {{20.0}, {7.0}}), 7.0);
  EXPECT_DOUBLE_EQ(CAMBIOPORTEMP(50.0, {{20.0, 20.0}, {7.0, 9.0}}), 7.0);
}

TEST(TemperatureCurve, ScalesTheYieldValues) {
  Material material;
  material(slot::referenceTemperature) = 20.0;
  material(slot::yieldStress) = 200.0;
  material(slot::tensionPeakStress) = 30.0;
  material(slot::compressionPeakDissipation) = 0.2;
  material(slot::yieldCurvePoints) = 2.0;
  material.yield = {{20.0, 120.0}, {200.0, 100.0}};
  Material atReference = material;

  scaleYieldValues(material, 70.0);
  scaleYieldValues(atReference, 20.0);

  EXPECT_DOUBLE_EQ(material(slot::yieldStress), 150.0);
  EXPECT_DOUBLE_EQ(material(slot::tensionPeakStress), 22.5);
  EXPECT_DOUBLE_EQ(material(slot::compressionPeakDissipation), 0.15);
  EXPECT_DOUBLE_EQ(atReference(slot::yieldStress), 200.0);
}

}  // namespace
}  // namespace zema
