// Elastic moduli of an orthotropic material at a temperature, and the maps to its isotropic stand-in.
#pragma once

#include <array>
#include <optional>

#include "constitutive/elastic_record.h"
#include "model/materials.h"

namespace zema {

/// Engineering constants of an orthotropic material. NUij: contraction in j by a stress in i.
struct OrthotropicConstants {
  double Ex, NUxy, NUyx, Ey, NUxz, NUzx, Ez, NUyz, NUzy;
  double Gxy, Gxz, Gyz;  ///< Gxz and Gyz do not count in the plane

  /// The constants of an isotropic material.
  [[nodiscard]] static OrthotropicConstants isotropic(double E, double nu);
};

/// `MODAN`: elastic matrix; it need not be symmetric. Four components: plane strain and axisymmetry.
template <int N>
[[nodiscard]] Matrix<N> MODAN(const OrthotropicConstants& constants);

/// Euler angles (degrees) of a material's axes: slots 72, 44, 73 in space, slot 44 about z in the plane.
template <int N>
[[nodiscard]] std::array<double, 3> materialAngles(const Material& material);

/// `MODPS`: elastic tables of material m (number from 1) at a temperature; without one, at its reference temperature.
/// The maps are made so that ASMT VDMANX e = VDMATX AEMX e for every strain e. Throws InputFault for a stress map with
/// a 0, for moduli whose matrix has no inverse, and for a Young modulus that is not above 0 at the temperature.
template <int N>
[[nodiscard]] ElasticMaterial<N> MODPS(const Material& material, int m, std::optional<double> temperature);

}  // namespace zema
