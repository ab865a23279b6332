// The contract of the laws: what a law is given at a point, the state that it may change, and what it returns.
#pragma once

#include <array>

#include "constitutive/elastic_record.h"
#include "database/point_store.h"
#include "model/materials.h"
#include "model/model.h"
#include "tensor/configuration.h"
#include "tensor/voigt.h"

namespace zema {

/// What is the same for all points of a residual pass.
struct PassContext {
  int LARGE = 0;       ///< 0: infinitesimal strain
  int KTANP = 0;       ///< 1: with KPUSH 2 the constitutive matrices are moved too; 2: tangents get the stress part
  int KPUSH = 0;       ///< 2: with LARGE the law runs in the current configuration
  int KALGO = 0;       ///< solution algorithm; a law builds a tangent only when it is above 1
  double TOLER = 0.0;  ///< tolerance of the increment, percent
  double DTIME = 0.0;  ///< time step
  bool dynamic = false;
  int ILOAD = 0;       ///< load step, from 1
  int INCRE = 0;       ///< increment, from 1
  int IITER = 0;       ///< iteration, from 1
  double TCYCL = 0.0;  ///< not 0: fatigue is on
  double NCYCL = 0.0;  ///< number of cycles
  int KFATI = 0;       ///< 1: the fatigue life follows from the stress of the point alone, else from the stress ratio
  double FATIM = 0.0;  ///< stress ratio of the cycles; 9999 or -9999: from the point's own history

  [[nodiscard]] bool wantsTangent() const { return KALGO > 1; }
  /// Whether the law of an element of this type runs in the current configuration.
  [[nodiscard]] bool pushes(int NTYPE) const { return LARGE != 0 && KPUSH == 2 && NTYPE > 2 && NTYPE < 7; }
};

/// What a law may ask about its point and element.
struct PointGeometry {
  double DETF = 1.0;   ///< determinant of the deformation gradient; 1 at small strains
  double dV = 0.0;     ///< volume of the point, length^3
  double TVOLU = 0.0;  ///< volume of the element
  double FRACL = 0.0;  ///< fracture length; 0: from the volumes
  int NTYPE = 0;       ///< element type
};

/// Where a point is, in numbers from 1, for messages.
struct PointPlace {
  int element = 0;
  int point = 0;
  int layer = 0;
  int component = 0;
};

/// The part of a component's records that belongs to its law. A law gets a copy of the committed one and changes it.
struct LawState {
  std::array<double, internal::count> INTVAR{};  ///< internal variables
  double lastYield = 0.0;                        ///< yield function at the last evaluation
  double lawScalar = 0.0;                        ///< second scalar of the law
  std::array<double, 7> fatigue{};               ///< fatigue values
};

/// Everything about a point that does not depend on its strain.
template <int N>
struct MaterialPoint {
  const PassContext& pass;
  const PointGeometry& geometry;
  const PointPlace& place;
  const Material& material;           ///< yield values scaled to the temperature
  const ElasticMaterial<N>& elastic;  ///< matrices and maps
  const Matrix<3>& F;                 ///< deformation gradient in material axes

  [[nodiscard]] bool pushed() const { return pass.pushes(geometry.NTYPE); }
};

/// Strains of a point in material axes, reference configuration, real space.
template <int N>
struct PointStrains {
  Strain<N> total;
  Strain<N> increment;  ///< of the step
  Strain<N> plastic;    ///< at the start of the step
  Strain<N> lastTotal;  ///< total strain at the start of the step
  Strain<N> rate;       ///< rate of strain; 0 in a static run
  Strain<N> lastRate;   ///< at the start of the step
  Strain<N> initial;    ///< stress-free strain, from temperature for example
};

/// Input of a law. Stresses and strains are those of the space in which laws run: the mapped isotropic space, with
/// KPUSH 2 in the current configuration. Strains and the matrix are formed when asked for.
template <int N>
struct LawInput {
  const MaterialPoint<N>& at;
  const LawState& committed;    ///< state at the start of the step
  const PointStrains<N>& real;  ///< what the functions below map
  Stress<N> SIGMA;              ///< trial stress
  Stress<N> PRESG;              ///< stress at the start of the step
  Stress<N> STRES;              ///< SIGMA less PRESG

  [[nodiscard]] Strain<N> STRAT() const { return toLawSpace(real.total); }       ///< strain
  [[nodiscard]] Strain<N> STRAN() const { return toLawSpace(real.increment); }   ///< strain increment of the step
  [[nodiscard]] Strain<N> STRAP() const { return toLawSpace(real.plastic); }     ///< plastic strain at its start
  [[nodiscard]] Strain<N> STRANT() const { return toLawSpace(real.lastTotal); }  ///< strain at its start
  [[nodiscard]] Strain<N> VSTRAT() const { return toLawSpace(real.rate); }       ///< rate of strain
  [[nodiscard]] Strain<N> VSTRATT() const { return toLawSpace(real.lastRate); }  ///< rate at the start of the step
  /// Strain that SIGMA comes from: total less plastic less stress-free strain.
  [[nodiscard]] Strain<N> elasticStrain() const { return toLawSpace(real.total - real.plastic - real.initial); }
  /// Isotropic elastic matrix; with KTANP 1 moved into the current configuration.
  [[nodiscard]] Matrix<N> DMANX() const {
    Matrix<N> D = at.elastic.D;
    if (at.pushed() && at.pass.KTANP == 1) PFB_C(D, at.F, MatrixMove::forward);
    return D;
  }
  /// A strain of the real space, reference configuration, in the space of the laws.
  [[nodiscard]] Strain<N> toLawSpace(const Strain<N>& strain) const {
    Strain<N> mapped = at.elastic.plainMap ? strain : Strain<N>{CALTEN(at.elastic.record.AEMX, strain.values)};
    if (at.pushed()) PFB_STR(mapped, at.F, TensorMove::strainForward);
    return mapped;
  }
};

/// What a law returns, in the space of its input. It starts as the elastic answer.
template <int N>
struct LawResult {
  Stress<N> SGTOT;             ///< stress; starts as SIGMA
  Strain<N> plasticIncrement;  ///< what the step adds to the plastic strain; starts at 0
  Matrix<N> tangent;           ///< d SGTOT / d strain, when hasTangent; with KTANP 2 the driver adds the stress part
  bool hasTangent = false;     ///< false: the elastic matrix is the tangent
  EnergySums sums;             ///< what the point adds to the energy sums
};

/// A law: from input and state to result. It sets `INTVAR(9)`, the elastic flag, and throws ConstitutiveStop when it
/// fails. It must not keep anything between calls: it may be called several times for a point of a pass.
template <int N>
using LawFunction = void (*)(const LawInput<N>& input, LawState& state, LawResult<N>& result);

}  // namespace zema
