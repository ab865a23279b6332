// The update of one material at one point: from the strain to stress, tangent and trial state.
#pragma once

#include <span>

#include "constitutive/law.h"

namespace zema {

/// A component's material, ready for the update.
template <int N>
struct ComponentMaterial {
  const Material& material;
  const ElasticMaterial<N>& elastic;
  LawFunction<N> law;
};

/// Strains of a component, in layer axes, reference measure.
template <int N>
struct ComponentStrain {
  Strain<N> STRAT;                           ///< total strain
  Strain<N> STRAN;                           ///< its increment since the committed state
  Strain<N> VSTRAT;                          ///< rate of strain; 0 in a static run
  Matrix<3> F = Matrix<3>::identity();       ///< deformation gradient
  const Strain<N>* initialStrain = nullptr;  ///< thermal or other stress-free strain, material axes; none: 0
};

/// The records of a component: committed to read, trial to write. Layout of PointStore, material axes.
struct ComponentRecords {
  std::span<const double> committed;
  std::span<const double> committedInternal;
  std::span<double> trial;
  std::span<double> trialInternal;
};

/// What the update of a component returns; its tangent stands behind the trial INTVAR.
template <int N>
struct ComponentResult {
  Stress<N> stress;           ///< layer axes
  bool elastic = true;        ///< elastic flag
  bool elasticMatrix = true;  ///< the tangent is the material's elastic matrix VDMANX
  EnergySums sums;
};

/// `MODUCO`: updates a material at a point. It reads the committed records only, writes all of the trial ones and
/// allocates nothing. Strains are turned into material axes (`DECOMP`), the law is driven (`MODULP`), the tangent is
/// formed by differences where the material asks for it (`CTANG`), the stress is turned back (`RECOMP`).
template <int N>
[[nodiscard]] ComponentResult<N> MODUCO(const PassContext& pass, const PointGeometry& geometry, const PointPlace& place,
                                        const ComponentMaterial<N>& component, const ComponentStrain<N>& strain,
                                        const ComponentRecords& records);

/// `OBCTAN`: the tangent behind a component's INTVAR, turned into layer axes.
template <int N>
[[nodiscard]] Matrix<N> OBCTAN(std::span<const double> internalRecord, const Rotation<N>& axes);

}  // namespace zema
