// Curves over temperature.
#include "constitutive/temperature_curve.h"

#include <gtest/gtest.h>

namespace zema {
namespace {

TEST(TemperatureCurve, IsLinearBetweenAndBeyondItsPoints) {
  const TemperatureCurve curve{{0.0, 100.0, 200.0}, {10.0, 20.0, 50.0}};

  EXPECT_DOUBLE_EQ(CAMBIOPORTEMP(50.0, curve), 15.0);
  EXPECT_DOUBLE_EQ(CAMBIOPORTEMP(100.0, curve), 20.0);
  EXPECT_DOUBLE_EQ(CAMBIOPORTEMP(150.0, curve), 35.0);
  EXPECT_DOUBLE_EQ(CAMBIOPORTEMP(-100.0, curve), 0.0);
  EXPECT_DOUBLE_EQ(CAMBIOPORTEMP(300.0, curve), 80.0);
}

TEST(TemperatureCurve, DegenerateCurvesAreConstant) {
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
