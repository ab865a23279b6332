// Properties that follow the temperature: curves with linear extrapolation, and the scaling of the yield values.
#pragma once

#include "model/materials.h"

namespace zema {

/// `PARAMCURLIN`: line through two points. When the two x are equal, slope and intercept are left as they are.
void PARAMCURLIN(double x1, double x2, double y1, double y2, double& slope, double& intercept);

/// `CAMBIOPORTEMP`: value of a curve at a temperature, by the line through the two neighbouring points and beyond the
/// ends by the first or last of these lines. A curve of one point is constant.
[[nodiscard]] double CAMBIOPORTEMP(double temperature, const TemperatureCurve& curve);

/// Puts the yield stress at a temperature into slot 7 and scales slots 9, 10, 15, 16 alike, when the temperature is not
/// the reference one and slot 67 is not 0. Must start from the values as read.
void scaleYieldValues(Material& material, double temperature);

}  // namespace zema
