// What one solid element does: geometry, stiffness, internal forces, loads. Templates on the number of nodes, 4 or 8.
#pragma once

#include <span>

#include "composite/constitutive_block.h"
#include "element/reference_points.h"
#include "model/model.h"

namespace zema::solid3d {

/// An element of the model in hand, with what all elements of its kind share.
template <int NNODE>
struct SolidElement {
  const Model& model;
  const ConstitutiveBlock<6>& block;
  int e;  ///< from 0
  const ReferencePoints<3, NNODE>& points;

  [[nodiscard]] const ElementData& data() const { return model.mesh.element(e); }
};

/// Number of a point in the point store: its place in the NGAUS cube of the element.
[[nodiscard]] int placeInCube(const ElementData& element, PointIndex point);

/// Volume of an element, length^3. This and all that follows throw PlainStop at a Jacobian that is not positive.
template <int NNODE>
[[nodiscard]] double volume(const SolidElement<NNODE>& element);

/// Adds a force per volume to the NEVAB places of RLOAD: RLOAD(a, i) += g(i) N(a) dV.
template <int NNODE>
void addBodyForce(const SolidElement<NNODE>& element, std::span<const double> force, std::span<double> RLOAD);

/// Gradient of the stored displacements at a point (number in the point loop, from 0), or deformation gradient.
template <int NNODE>
[[nodiscard]] Matrix<3> gradientAt(const SolidElement<NNODE>& element, std::size_t point);

/// `RIGI`: tangent stiffness, NEVAB x NEVAB by rows.
template <int NNODE>
void RIGI(const SolidElement<NNODE>& element, std::span<double> ESTIF);

/// `MASMAT`: adds factor times the mass to a matrix like that of RIGI. density: mass / length^3; consistent: false for
/// a diagonal of row sums.
template <int NNODE>
void addMass(const SolidElement<NNODE>& element, double density, bool consistent, double factor,
             std::span<double> matrix);

/// `DMATRI`: adds factor times the viscous matrix to a matrix like that of RIGI.
template <int NNODE>
void addViscosity(const SolidElement<NNODE>& element, double factor, std::span<double> matrix);

/// `RESIDU`: internal forces and elastic prediction (columns 1 to 3 of ELOAD) from the stored displacements, and the
/// trial state of all points. The volume of a point is multiplied by `thickness` when that is not 0.
template <int NNODE>
[[nodiscard]] EnergySums RESIDU(const SolidElement<NNODE>& element, double thickness, Model& model);

}  // namespace zema::solid3d
