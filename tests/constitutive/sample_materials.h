// Materials that several tests of the constitutive block use.
#pragma once

#include "model/materials.h"

namespace zema {

/// An elastic isotropic material whose shear moduli are left to be computed.
inline Material isotropicMaterial(double E, double nu) {
  Material material;
  material.given = true;
  for (const int place : {slot::youngX, slot::youngY, slot::youngZ}) material(place) = E;
  for (const int place :
       {slot::poissonXY, slot::poissonYX, slot::poissonXZ, slot::poissonZX, slot::poissonYZ, slot::poissonZY}) {
    material(place) = nu;
  }
  for (const int place : {slot::mapXX, slot::mapYY, slot::mapXY, slot::mapZZ, slot::mapXZ, slot::mapYZ})
    material(place) = 1.0;
  material.NCRIT = material.NCRIP = Criterion::vonMises;
  material.NMATX = TangentChoice::continuous;
  return material;
}

/// An elastic orthotropic material with a symmetric elastic matrix and a map that differs by direction.
inline Material orthotropicMaterial() {
  Material material = isotropicMaterial(1.0, 0.0);
  const double Ex = 120.0, Ey = 30.0, Ez = 20.0, NUxy = 0.3, NUxz = 0.25, NUyz = 0.2;
  material(slot::youngX) = Ex;
  material(slot::youngY) = Ey;
  material(slot::youngZ) = Ez;
  material(slot::poissonXY) = NUxy;
  material(slot::poissonYX) = NUxy * Ey / Ex;
  material(slot::poissonXZ) = NUxz;
  material(slot::poissonZX) = NUxz * Ez / Ex;
  material(slot::poissonYZ) = NUyz;
  material(slot::poissonZY) = NUyz * Ez / Ey;
  material(slot::shearXY) = 15.0;
  material(slot::shearXZ) = 11.0;
  material(slot::shearYZ) = 8.0;
  material(slot::mapXX) = 1.0;
  material(slot::mapYY) = 2.5;
  material(slot::mapXY) = 1.5;
  material(slot::mapZZ) = 3.0;
  material(slot::mapXZ) = 1.25;
  material(slot::mapYZ) = 0.75;
  return material;
}

}  // namespace zema
