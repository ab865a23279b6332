// What the frequency records take from a kernel.
#pragma once

#include <array>

namespace zema {

struct Model;

/// A kernel whose jobs can leave frequency records. Matrices have 6 x 6 values by rows, in element axes.
class FrequencySource {
 public:
  using Stiffness = std::array<double, 36>;

  virtual ~FrequencySource() = default;
  /// Elastic matrix of composite c (number from 1), force / length^2, for the temperature in force.
  [[nodiscard]] virtual Stiffness elasticStiffness(int c) const = 0;
  /// Its density, mass / length^3.
  [[nodiscard]] virtual double density(int c) const = 0;
  /// `CALCSEC`: secant matrix of a point of the point store, element and point from 0.
  [[nodiscard]] virtual Stiffness secantStiffness(const Model& model, int e, int point) const = 0;
};

}  // namespace zema
