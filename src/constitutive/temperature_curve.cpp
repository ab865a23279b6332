// Interpolation of property curves over temperature.
#include "constitutive/temperature_curve.h"

#include <cassert>

namespace zema {

void PARAMCURLIN(double x1, double x2, double y1, double y2, double& slope, double& intercept) {
  if (x1 == x2) return;
  slope = (y2 - y1) / (x2 - x1);
  intercept = y1 - slope * x1;
}

double CAMBIOPORTEMP(double temperature, const TemperatureCurve& curve) {
  const std::size_t points = curve.X.size();
  assert(points > 0 && curve.Y.size() == points);
  std::size_t i = 0;
  while (i + 2 < points && temperature > curve.X[i + 1]) ++i;
  double slope = 0.0, intercept = curve.Y[i];
  if (points > 1) PARAMCURLIN(curve.X[i], curve.X[i + 1], curve.Y[i], curve.Y[i + 1], slope, intercept);
  return slope * temperature + intercept;
}

void scaleYieldValues(Material& material, double temperature) {
  if (temperature == material(slot::referenceTemperature) || material(slot::yieldCurvePoints) == 0.0) return;
  const double yieldStress = CAMBIOPORTEMP(temperature, material.yield);
  const double ratio = material(slot::yieldStress) == 0.0 ? 1.0 : yieldStress / material(slot::yieldStress);
  for (const int place : {slot::tensionPeakDissipation, slot::tensionPeakStress, slot::compressionPeakDissipation,
                          slot::compressionPeakStress}) {
    material(place) *= ratio;
  }
  material(slot::yieldStress) = yieldStress;
}

}  // namespace zema
