// Materials that several tests of the constitutive block use.
#pragma once

#include <utility>
#include <vector>

#include "model/materials.h"

namespace zema {

using Slots = std::vector<std::pair<int, double>>;

/// A material with other values in some slots.
inline Material with(Material material, const Slots& slots) {
  for (const auto& [place, value] : slots) material(place) = value;
  return material;
}

/// The codes of a material; a law does not look at all of them.
struct LawCodes {
  Criterion NCRIT = Criterion::vonMises, NCRIP = NCRIT;
  Law NTINT = Law::elastic;
  Flow NFLUG{};
  HardeningVariable NHARD{};
  TangentChoice NMATX = TangentChoice::continuous;
};

/// Of a metal or soil that hardens with its plastic strain.
inline LawCodes plasticCodes(Criterion criterion, Law law) {
  return {criterion, criterion, law, Flow::variable, HardeningVariable::strain, TangentChoice::algorithmic};
}

/// An isotropic material whose shear moduli are left to be computed; further slots, and the codes of its law.
inline Material isotropicMaterial(double E, double nu, const Slots& more = {}, const LawCodes& codes = {}) {
  Material material;
  material.given = true;
  for (const int place : {slot::youngX, slot::youngY, slot::youngZ}) material(place) = E;
  for (const int place :
       {slot::poissonXY, slot::poissonYX, slot::poissonXZ, slot::poissonZX, slot::poissonYZ, slot::poissonZY}) {
    material(place) = nu;
  }
  for (const int place : {slot::mapXX, slot::mapYY, slot::mapXY, slot::mapZZ, slot::mapXZ, slot::mapYZ})
    material(place) = 1.0;
  material.NCRIT = codes.NCRIT;
  material.NCRIP = codes.NCRIP;
  material.NTINT = codes.NTINT;
  material.NFLUG = codes.NFLUG;
  material.NHARD = codes.NHARD;
  material.NMATX = codes.NMATX;
  return with(material, more);
}

/// An elastic orthotropic material with a symmetric elastic matrix and a map that differs by direction; further slots.
inline Material orthotropicMaterial(const Slots& more = {}) {
  const Slots slots{{1, 120.0}, {37, 30.0},  {40, 20.0},                                                // E x, y, z
                    {2, 0.3},   {36, 0.075}, {38, 0.25}, {39, 0.25 / 6.0}, {41, 0.2}, {42, 0.2 / 1.5},  // nu xy ... zy
                    {43, 15.0}, {68, 11.0},  {69, 8.0},                                                 // G xy, xz, yz
                    {46, 2.5},  {47, 1.5},   {48, 3.0},  {70, 1.25},       {71, 0.75}};                 // map yy ... yz
  return with(with(isotropicMaterial(1.0, 0.0), slots), more);
}

}  // namespace zema
