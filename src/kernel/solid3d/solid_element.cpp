// The element loops of solids.
#include "kernel/solid3d/solid_element.h"

#include <algorithm>
#include <cassert>

#include "element/element_stiffness.h"
#include "element/internal_force.h"
#include "element/jacobian.h"
#include "element/strain_measures.h"

namespace zema::solid3d {

namespace {

using Kin = Kinematics<3>;

constexpr std::size_t at(int i) {
  return static_cast<std::size_t>(i);
}

StrainMeasure measureOf(const Model& model) {
  return model.control.LARGE == 0 ? StrainMeasure::small : StrainMeasure::finite;
}

/// Values of three directions at the nodes of an element.
template <int NNODE>
using NodalVectors = Matrix<NNODE, 3>;

/// ELCOD: reference coordinates.
template <int NNODE>
NodalVectors<NNODE> referenceCoordinates(const SolidElement<NNODE>& element) {
  const Mesh& mesh = element.model.mesh;
  const std::span<const int> nodes = mesh.nodesOf(element.e);
  NodalVectors<NNODE> ELCOD;
  for (int a = 0; a < NNODE; ++a) {
    const std::span<const double> coordinates = mesh.coordinates(DeckNode{nodes[at(a)]});
    for (int i = 0; i < 3; ++i) ELCOD(a, i) = coordinates[at(i)];
  }
  return ELCOD;
}

/// A column of TDISP at the nodes of an element: 0 displacement, 1 velocity.
template <int NNODE>
NodalVectors<NNODE> nodalValues(const SolidElement<NNODE>& element, int column) {
  const std::span<const int> positions = element.model.positions.of(element.e);
  assert(positions.size() == at(3 * NNODE));
  const double* const values = element.model.working.TDISP.data() + at(column) * at(element.model.mesh.NTOTV);
  NodalVectors<NNODE> nodal;
  for (std::size_t k = 0; k < nodal.values.size(); ++k) nodal.values[k] = values[at(positions[k])];
  return nodal;
}

/// ELDIS: displacements, or with finite strain positions.
template <int NNODE>
NodalVectors<NNODE> displacementsOrPositions(const SolidElement<NNODE>& element, const NodalVectors<NNODE>& ELCOD) {
  NodalVectors<NNODE> ELDIS = nodalValues(element, 0);
  if (measureOf(element.model) == StrainMeasure::finite)
    for (std::size_t k = 0; k < ELDIS.values.size(); ++k) ELDIS.values[k] += ELCOD.values[k];
  return ELDIS;
}

/// Calls f(k) for the places of the element's directions that free codes release.
template <int NNODE, class F>
void forEachReleased(const SolidElement<NNODE>& element, const F& f) {
  if (element.data().MATNO[1] == 0) return;
  const std::span<const int> positions = element.model.positions.of(element.e);
  const std::vector<int>& IFLIB = element.model.fixities.IFLIB;
  for (int k = 0; k < 3 * NNODE; ++k) {
    const std::size_t position = at(positions[at(k)]);
    if (position < IFLIB.size() && IFLIB[position] == 1) f(at(k));
  }
}

/// Clears rows and columns of the released directions.
template <int NNODE>
void clearReleased(const SolidElement<NNODE>& element, std::span<double> matrix) {
  constexpr std::size_t NEVAB = at(3 * NNODE);
  forEachReleased(element, [matrix](std::size_t k) {
    for (std::size_t l = 0; l < NEVAB; ++l) matrix[k * NEVAB + l] = matrix[l * NEVAB + k] = 0.0;
  });
}

template <int NNODE>
void writeForces(const SolidElement<NNODE>& element, const NodalForces<Kin, NNODE>& forces, std::span<double> ELOAD) {
  for (int a = 0; a < NNODE; ++a)
    for (int i = 0; i < 3; ++i) ELOAD[at(3 * a + i)] = forces(i, a);
  forEachReleased(element, [ELOAD](std::size_t k) { ELOAD[k] = 0.0; });
}

/// A point of the residual: where it is, and its strain.
struct ResidualPoint {
  PointUpdate<6> update;
  Strain<6> STRFAS;
  Strain<6> VSTRFAS;
};

/// Strain and rate of strain from the gradients, against the committed record.
ResidualPoint strainAt(const Model& model, bool active, int e, int point, const Matrix<3>& FGRAD,
                       const Matrix<3>* velocityGradient) {
  const StrainMeasure measure = measureOf(model);
  const MechanicalPlaces places = model.points.places();
  const std::span<const double> record = model.points.mechanical(StateSlot::committed, e, point, 0);
  const PointStrain<6> strain = DEFO(strainOf<6>(FGRAD, measure), Strain<6>::from(record, places.STRAT()),
                                     Strain<6>::from(record, places.STRFAS()), active);
  PointStrain<6> rate{.STRAN = {},
                      .STRAT = Strain<6>::from(record, places.VSTRAT()),  // a static step keeps it
                      .STRFAS = Strain<6>::from(record, places.VSTRFAS())};
  if (velocityGradient != nullptr)
    rate = DEFO(strainRate<6>(FGRAD, *velocityGradient, measure), rate.STRAT, rate.STRFAS, active);
  ResidualPoint here;
  here.update.e = e;
  here.update.point = point;
  here.update.STRAT = strain.STRAT;
  here.update.STRAN = strain.STRAN;
  here.update.VSTRAT = rate.STRAT;
  here.update.F = FGRAD;
  here.update.DETF = measure == StrainMeasure::finite ? DETERM3D(FGRAD) : 1.0;
  here.STRFAS = strain.STRFAS;
  here.VSTRFAS = rate.STRFAS;
  return here;
}

}  // namespace

int placeInCube(const ElementData& element, PointIndex point) {
  return ((point.i - 1) * element.NGAUS + point.j - 1) * element.NGAUS + point.k - 1;
}

template <int NNODE>
double volume(const SolidElement<NNODE>& element) {
  const NodalVectors<NNODE> ELCOD = referenceCoordinates(element);
  double sum = 0.0;
  for (const ReferencePoint<3, NNODE>& point : element.points) {
    Matrix<3, NNODE> CARTD;
    sum += JACOB(point.shape.DERIV, ELCOD, element.e + 1, CARTD) * point.weight;
  }
  return sum;
}

template <int NNODE>
void addBodyForce(const SolidElement<NNODE>& element, std::span<const double> force, std::span<double> RLOAD) {
  const NodalVectors<NNODE> ELCOD = referenceCoordinates(element);
  for (const ReferencePoint<3, NNODE>& point : element.points) {
    Matrix<3, NNODE> CARTD;
    const double dV = JACOB(point.shape.DERIV, ELCOD, element.e + 1, CARTD) * point.weight;
    for (int a = 0; a < NNODE; ++a)
      for (int i = 0; i < 3; ++i) RLOAD[at(3 * a + i)] += force[at(i)] * point.shape.SHAPEN[at(a)] * dV;
  }
}

template <int NNODE>
Matrix<3> gradientAt(const SolidElement<NNODE>& element, std::size_t point) {
  const NodalVectors<NNODE> ELCOD = referenceCoordinates(element);
  Matrix<3, NNODE> CARTD;
  static_cast<void>(JACOB(element.points[point].shape.DERIV, ELCOD, element.e + 1, CARTD));
  return GRADEF(displacementsOrPositions(element, ELCOD), CARTD);
}

template <int NNODE>
void RIGI(const SolidElement<NNODE>& element, std::span<double> ESTIF) {
  const Model& model = element.model;
  const bool finite = measureOf(model) == StrainMeasure::finite;
  const NodalVectors<NNODE> ELCOD = referenceCoordinates(element);
  const NodalVectors<NNODE> ELDIS = finite ? displacementsOrPositions(element, ELCOD) : NodalVectors<NNODE>{};
  StiffnessSum<Kin, NNODE> sum;
  for (const ReferencePoint<3, NNODE>& point : element.points) {
    Matrix<3, NNODE> CARTD;
    const double dV = JACOB(point.shape.DERIV, ELCOD, element.e + 1, CARTD) * point.weight;
    const int place = placeInCube(element.data(), point.index);
    const Matrix<6> DMATX = element.block.CGLOBSO(model, element.e, place);
    if (finite) {
      const std::span<const double> record = model.points.mechanical(StateSlot::trial, element.e, place, 0);
      sum.add(CARTD, DMATX, GRADEF(ELDIS, CARTD), Stress<6>::from(record, model.points.places().STRSG()), dV);
    } else {
      sum.add(CARTD, DMATX, dV);
    }
  }
  sum.writeTo(ESTIF);
  clearReleased(element, ESTIF);
}

template <int NNODE>
void addMass(const SolidElement<NNODE>& element, double density, bool consistent, double factor,
             std::span<double> matrix) {
  const NodalVectors<NNODE> ELCOD = referenceCoordinates(element);
  Matrix<NNODE> mass;
  for (const ReferencePoint<3, NNODE>& point : element.points) {
    Matrix<3, NNODE> CARTD;
    const double w = JACOB(point.shape.DERIV, ELCOD, element.e + 1, CARTD) * point.weight * density;
    for (int a = 0; a < NNODE; ++a)
      for (int b = 0; b < NNODE; ++b)
        mass(a, consistent ? b : a) += w * point.shape.SHAPEN[at(a)] * point.shape.SHAPEN[at(b)];
  }
  for (int a = 0; a < NNODE; ++a)
    for (int b = 0; b < NNODE; ++b)
      for (int d = 0; d < 3; ++d) matrix[at((3 * a + d) * 3 * NNODE + 3 * b + d)] += factor * mass(a, b);
}

template <int NNODE>
void addViscosity(const SolidElement<NNODE>& element, double factor, std::span<double> matrix) {
  const Matrix<6>* const CVISC = element.block.viscousMatrix(element.e);
  if (CVISC == nullptr) return;
  const Model& model = element.model;
  const bool finite = measureOf(model) == StrainMeasure::finite;
  const NodalVectors<NNODE> ELCOD = referenceCoordinates(element);
  const NodalVectors<NNODE> ELDIS = displacementsOrPositions(element, ELCOD);
  StiffnessSum<Kin, NNODE> sum;
  for (const ReferencePoint<3, NNODE>& point : element.points) {
    Matrix<3, NNODE> CARTD;
    const double dV = JACOB(point.shape.DERIV, ELCOD, element.e + 1, CARTD) * point.weight;
    if (finite) {
      sum.add(CARTD, *CVISC, GRADEF(ELDIS, CARTD), Stress<6>{}, dV);
    } else {
      sum.add(CARTD, *CVISC, dV);
    }
  }
  std::array<double, at(9 * NNODE * NNODE)> EDAMP{};
  sum.writeTo(EDAMP);
  clearReleased(element, std::span(EDAMP));
  for (std::size_t i = 0; i < EDAMP.size(); ++i) matrix[i] += factor * EDAMP[i];
}

template <int NNODE>
EnergySums RESIDU(const SolidElement<NNODE>& element, double thickness, Model& model) {
  const StrainMeasure measure = measureOf(model);
  const bool active = model.active(element.data());
  const bool dynamic = model.loadStep.dynamic();
  const NodalVectors<NNODE> ELCOD = referenceCoordinates(element);
  const NodalVectors<NNODE> ELDIS = displacementsOrPositions(element, ELCOD);
  const NodalVectors<NNODE> velocities = dynamic ? nodalValues(element, 1) : NodalVectors<NNODE>{};
  NodalForces<Kin, NNODE> internal;
  NodalForces<Kin, NNODE> predicted;
  EnergySums sums;
  for (const ReferencePoint<3, NNODE>& point : element.points) {
    Matrix<3, NNODE> CARTD;
    double dV = JACOB(point.shape.DERIV, ELCOD, element.e + 1, CARTD) * point.weight;
    if (thickness != 0.0) dV *= thickness;
    const Matrix<3> FGRAD = GRADEF(ELDIS, CARTD);
    const Matrix<3> velocityGradient = dynamic ? GRADEF(velocities, CARTD) : Matrix<3>{};
    ResidualPoint here = strainAt(model, active, element.e, placeInCube(element.data(), point.index), FGRAD,
                                  dynamic ? &velocityGradient : nullptr);
    here.update.dV = dV;
    const Stress<6> prediction = element.block.MODULI(model, element.e, here.update.STRAT, FGRAD);
    addInternalForce<Kin>(CARTD, FGRAD, measure, prediction, dV, predicted);
    if (active) {
      const PointResult<6> result = element.block.RESI2D(model, here.update);
      addInternalForce<Kin>(CARTD, FGRAD, measure, result.STRSG, dV, internal);
      sums += result.sums;
    } else {
      element.block.carryInactive(model, element.e, here.update.point, here.STRFAS, here.VSTRFAS);
    }
  }
  writeForces(element, internal, model.vectors.ELOAD(element.e, 1));
  writeForces(element, internal, model.vectors.ELOAD(element.e, 2));
  writeForces(element, predicted, model.vectors.ELOAD(element.e, 3));
  return sums;
}

template double volume(const SolidElement<4>&);
template double volume(const SolidElement<8>&);
template void addBodyForce(const SolidElement<4>&, std::span<const double>, std::span<double>);
template void addBodyForce(const SolidElement<8>&, std::span<const double>, std::span<double>);
template Matrix<3> gradientAt(const SolidElement<4>&, std::size_t);
template Matrix<3> gradientAt(const SolidElement<8>&, std::size_t);
template void RIGI(const SolidElement<4>&, std::span<double>);
template void RIGI(const SolidElement<8>&, std::span<double>);
template void addMass(const SolidElement<4>&, double, bool, double, std::span<double>);
template void addMass(const SolidElement<8>&, double, bool, double, std::span<double>);
template void addViscosity(const SolidElement<4>&, double, std::span<double>);
template void addViscosity(const SolidElement<8>&, double, std::span<double>);
template EnergySums RESIDU(const SolidElement<4>&, double, Model&);
template EnergySums RESIDU(const SolidElement<8>&, double, Model&);

}  // namespace zema::solid3d
