// The kernel of solids: what elements give to loads, stiffness and residual, checked by hand or against differences.
#include "kernel/solid3d/solid3d.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

#include "constitutive/sample_materials.h"
#include "foundation/ends.h"
#include "foundation/near.h"
#include "kernel/solid_model.h"
#include "tensor/voigt.h"

namespace zema {
namespace {

using test::Point;

const std::vector<std::vector<int>> oneBrick{{1, 2, 3, 4, 5, 6, 7, 8}};
const std::vector<std::vector<int>> oneTetrahedron{{1, 2, 4, 5}};  // of the corners of the unit cube

/// A brick without right angles.
std::vector<Point> crookedNodes() {
  std::vector<Point> nodes = test::cubeNodes;
  nodes[1] = {1.1, 0.05, -0.1};
  nodes[6] = {0.9, 1.2, 1.1};
  nodes[7] = {-0.1, 0.9, 1.2};
  return nodes;
}

class Solid3DTest : public testing::Test {
 protected:
  void use(const std::vector<Point>& nodes, const std::vector<std::vector<int>>& elements,
           const Material& material = isotropicMaterial(1000.0, 0.25)) {
    model = test::solidModel(nodes, elements, material);
  }
  void prepare() {
    kernel = makeSolid3D();
    kernel->prepare(model);
    kernel->IMPORTINFON1(model);
  }
  /// Displacements that are random, but the same in each run.
  void disturb(double size) {
    std::mt19937 generator(3);
    std::uniform_real_distribution<double> number(-size, size);
    for (int k = 0; k < model.mesh.NTOTV; ++k) displacement(k) = number(generator);
  }
  double& displacement(int k) { return model.working.TDISP[static_cast<std::size_t>(k)]; }
  std::vector<double> RIGI() {
    std::vector<double> ESTIF(24 * 24, -1.0);
    kernel->RIGI(model, 0, ESTIF);
    return ESTIF;
  }
  std::vector<double> internalForce(int column = 1) {
    kernel->RESIDU(model, 0);
    const std::span<double> force = model.vectors.ELOAD(0, column);
    return {force.begin(), force.end()};
  }
  [[nodiscard]] Strain<6> strain(int place, int component = 0) const {
    return Strain<6>::from(model.points.mechanical(StateSlot::trial, 0, 0, component), place);
  }

  Model model;
  std::unique_ptr<Kernel> kernel;
};

TEST_F(Solid3DTest, RefusesElementsThatItCannotForm) {
  use(test::cubeNodes, oneBrick);
  ElementData& element = model.mesh.elements[0];
  const auto end = [this] { return endOf([this] { makeSolid3D()->prepare(model); }); };

  element.NINTE = 7;
  EXPECT_EQ(
      end(),
      "fault element 1: no integration rule has NINTE = 7 and NGAUS = 2; NINTE goes from 1 to 5, NGAUS from 1 to 2");
  element.NTYPE = 20;
  EXPECT_EQ(end(), "fault element 1: type 20 (NTYPE) has no meaning in this kernel; solids are of type 6");
  EXPECT_EQ(makeSolid3D()->TYPE(20, 8, 2).points(), 0);
  element.NTYPE = 6;
  element.NNODE = 6;
  EXPECT_EQ(end(), "stop   INCORRECT NNODE ...NNODE =  6  SUBROUTINE : SFR3D\n  ELEMENT:  1\n");
}

TEST_F(Solid3DTest, VolumeBodyForceAndFaceLoadAddUp) {
  use(test::cubeNodes, {{1, 2, 3, 4, 5, 6, 7, 8}, {1, 2, 4, 5}});
  model.mesh.COORD[3 * 1] = 3.0;  // stretches along x: edges of 3 and 1 at y = 0, z = 0
  prepare();
  std::vector<double> brick(24, 0.0), tetrahedron(24, 0.0), face(24, 0.0);
  const std::array places{4, 5, 7};  // nodes 5, 6, 8 of the face z = 1, area 1/2

  kernel->addBodyForce(model, 1, std::array{1.0, -2.0, 4.0}, tetrahedron);
  kernel->addBodyForce(model, 0, std::array{0.0, 0.0, 5.0}, brick);
  kernel->addFaceLoad(model, 0, places, std::array{24.0, 0.0, 6.0, 0.0, 0.0, 6.0, 0.0, 0.0, 6.0}, face);

  EXPECT_NEAR(kernel->volume(model, 1), 3.0 / 6.0, 1e-14);
  EXPECT_NEAR(kernel->volume(model, 0), 1.5, 1e-14);  // 1 + 2 (1/2) (1/2)
  for (std::size_t a = 0; a < 4; ++a)
    expectNear(std::span(tetrahedron).subspan(3 * a, 3), std::array{0.125, -0.25, 0.5}, 1e-14);
  EXPECT_NEAR(std::accumulate(brick.begin(), brick.end(), 0.0), 7.5, 1e-13);
  EXPECT_EQ(kernel->faceNodes(model.mesh.element(0)), 3);
  for (const std::size_t a : {4U, 5U, 7U})  // 6 A / 3; 24 A / 6 at the loaded node and 24 A / 12 at the others
    expectNear(std::span(face).subspan(3 * a, 3), std::array{a == 4 ? 2.0 : 1.0, 0.0, 1.0}, 1e-14);
}

TEST_F(Solid3DTest, CurrentMeasuresOfAMaterialStayInItsAxes) {
  // Turns of 20 + 30 + 40 degrees about z: the stretch of 1.2 along x is one along the material's -y.
  use(test::cubeNodes, oneBrick, orthotropicMaterial({{slot::angleAboutY, 40.0}}));
  model.mesh.elements[0].EAEULER = {20.0, 0.0, 0.0};
  model.composites(1).layers[0].LAEULER = {30.0, 0.0, 0.0};
  model.control.LARGE = 1;
  prepare();
  test::setField(model, 0, [](const Point& x) { return Point{0.2 * x[0], 0.0, 0.0}; });
  kernel->RESIDU(model, 0);
  const MechanicalPlaces places = model.points.places();
  const std::span<const double> record = model.points.mechanical(StateSlot::trial, 0, 0, 1);
  Vector<6> CAUCHY = Stress<6>::from(record, places.STRSG()).values;
  Vector<6> ALMANS = Strain<6>::from(record, places.STRAT()).values;

  kernel->CAUCHY(model, 0, {1, 1, 1}, 1, CAUCHY);
  kernel->ALMANS(model, 0, {1, 1, 1}, 1, ALMANS);

  // global axes: S / 1.2 across the stretch, 1.2 S along it
  const std::span<const double> S = model.points.mechanical(StateSlot::trial, 0, 0, 0);
  expectNear(CAUCHY, Vector<6>{S[1] / 1.2, 1.2 * S[0], 0, S[3] / 1.2, 0, 0}, 1e-12);
  expectNear(ALMANS, Vector<6>{0, (1.0 - 1.0 / 1.44) / 2.0, 0, 0, 0, 0}, 1e-14);
}

TEST_F(Solid3DTest, StiffnessIsTheDerivativeOfTheInternalForceInTurnedAnisotropicAxes) {
  for (const int LARGE : {0, 1})
    for (const auto& elements : {oneBrick, oneTetrahedron}) {
      use(crookedNodes(), elements, orthotropicMaterial());
      model.mesh.elements[0].EAEULER = {30.0, 50.0, -20.0};
      model.control.LARGE = LARGE;
      prepare();
      disturb(0.1);
      const std::vector<double> force = internalForce(), ESTIF = RIGI();
      for (const int column : {2, 3}) expectNear(internalForce(column), force, 1e-12);  // of an elastic body
      const std::size_t NEVAB = 3 * elements[0].size();
      const double tolerance = 1e-6 * *std::ranges::max_element(ESTIF);
      constexpr double h = 1e-6;

      for (std::size_t c = 0; c < NEVAB; ++c) {
        double& u = displacement(model.positions.of(0)[c]);
        u += h;
        const std::vector<double> ahead = internalForce();
        u -= 2.0 * h;
        const std::vector<double> behind = internalForce();
        u += h;
        for (std::size_t r = 0; r < NEVAB; ++r)
          EXPECT_NEAR(ESTIF[NEVAB * r + c], (ahead[r] - behind[r]) / (2.0 * h), tolerance) << LARGE;
      }
      const std::span<const double> committed = model.points.mechanical(StateSlot::committed, 0, 0, 0);
      EXPECT_TRUE(std::ranges::all_of(committed, [](double value) { return value == 0.0; }));
    }
}

TEST_F(Solid3DTest, ElementSwitchedOnLateStartsFromZeroStrainAndRate) {
  use(test::cubeNodes, oneBrick, isotropicMaterial(1000.0, 0.0));
  model.mesh.elements[0].IFASE = 2;
  model.loadStep.ACTIV = {1, 0};
  model.loadStep.IDINA = 1;
  prepare();
  const auto stretch = [this](double displacement, double velocity) {
    test::setField(model, 0, [=](const Point& x) { return Point{displacement * x[0], 0.0, 0.0}; });
    test::setField(model, 1, [=](const Point& x) { return Point{velocity * x[0], 0.0, 0.0}; });
  };
  const MechanicalPlaces places = model.points.places();
  stretch(0.01, 2.0);
  model.points.internal(StateSlot::committed, 0, 0, 1)[internal::damage] = 0.5;
  for (const int component : {0, 1})
    for (const int place : {places.STRSG(), places.STRAT()})
      Strain<6>{{1.0, 2.0}}.copyTo(model.points.mechanical(StateSlot::committed, 0, 0, component), place);
  expectNear(internalForce(), std::vector<double>(24, 0.0), 0.0);
  for (const int component : {0, 1})
    for (const int place : {places.STRSG(), places.STRAT()}) EXPECT_TRUE(strain(place, component).isZero());
  EXPECT_EQ(model.points.internal(StateSlot::trial, 0, 0, 1)[internal::damage], 0.5);
  model.points.commit();

  model.loadStep.ACTIV = {1, 1};
  stretch(0.013, 5.0);
  const std::vector<double> awake = internalForce();

  EXPECT_NEAR(strain(places.STRFAS())[0], -0.01, 1e-16);
  EXPECT_NEAR(strain(places.STRAT())[0], 0.003, 1e-16);
  EXPECT_NEAR(strain(places.VSTRFAS())[0], -2.0, 1e-14);
  EXPECT_NEAR(strain(places.VSTRAT())[0], 3.0, 1e-14);
  EXPECT_NEAR(awake[3 * 1], 0.75, 1e-12);  // a quarter of the face's force at node 2
}

TEST_F(Solid3DTest, ThicknessMultipliesTheResidualAloneAndAReleasedDirectionHasNoStiffness) {
  std::array<std::vector<double>, 2> force, ESTIF;
  for (const std::size_t thick : {0U, 1U}) {
    use(crookedNodes(), oneBrick, isotropicMaterial(1000.0, 0.25, {{slot::thickness, thick == 1 ? 3.0 : 1.0}}));
    prepare();
    disturb(0.01);
    force[thick] = internalForce();
    ESTIF[thick] = RIGI();
  }
  for (double& value : force[0]) value *= 3.0;
  expectNear(force[1], force[0], 1e-12);
  EXPECT_EQ(ESTIF[1], ESTIF[0]);

  model.mesh.elements[0].MATNO[1] = 1;
  model.fixities.IFLIB.assign(24, 0);
  model.fixities.IFLIB[7] = 1;  // direction y of node 3
  const std::vector<double> released = RIGI(), rest = internalForce();
  for (std::size_t k = 0; k < released.size(); ++k)
    EXPECT_EQ(released[k], k / 24 == 7 || k % 24 == 7 ? 0.0 : ESTIF[0][k]);
  for (std::size_t k = 0; k < 24; ++k) EXPECT_EQ(rest[k] == 0.0, k == 7);
}

}  // namespace
}  // namespace zema
