// Coefficients of the time integration.
#pragma once

#include "model/model.h"

namespace zema {

/// Newmark's method (Newmark, 1959): acceleration A0 (d - DTIME v) - C1 a and velocity A1 d + C2 v + C3 a at the end of
/// a step with the displacement d, from velocity v and acceleration a at its start. The first-order form takes the
/// velocity d A2.
struct Newmark {
  double A0 = 0.0;  ///< 1 / (BETAN DTIME^2)
  double A1 = 0.0;  ///< GAMMN / (BETAN DTIME)
  double A2 = 0.0;  ///< 1 / DTIME
  double C0 = 0.0;  ///< 1 / (BETAN DTIME)
  double C1 = 0.0;  ///< 1 / (2 BETAN) - 1
  double C2 = 0.0;  ///< 1 - GAMMN / BETAN
  double C3 = 0.0;  ///< (1 - GAMMN / (2 BETAN)) DTIME

  /// The coefficients of the increment in hand. Throws RunEnd when its time step is 0.
  [[nodiscard]] static Newmark of(const Model& model);
};

}  // namespace zema
