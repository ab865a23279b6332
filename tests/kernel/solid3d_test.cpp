// The kernel of solids: what elements give to loads, stiffness and residual, checked by hand or against differences.
#include "kernel/solid3d/solid3d.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <random>

#include "constitutive/sample_materials.h"
#include "foundation/errors.h"
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
  std::vector<double> RIGI(int e = 0) {
    std::vector<double> ESTIF(24 * 24, -1.0);
    kernel->RIGI(model, e, ESTIF);
    return ESTIF;
  }
  std::vector<double> internalForce(int e = 0, int column = 1) {
    kernel->RESIDU(model, e);
    const std::span<double> force = model.vectors.ELOAD(e, column);
    return {force.begin(), force.end()};
  }
  [[nodiscard]] Stress<6> stress(int e = 0, int point = 0) const {
    return Stress<6>::from(model.points.mechanical(StateSlot::trial, e, point, 0), model.points.places().STRSG());
  }
  [[nodiscard]] Strain<6> strain(int place, int e = 0, int point = 0) const {
    return Strain<6>::from(model.points.mechanical(StateSlot::trial, e, point, 0), place);
  }
  /// K u.
  std::vector<double> product(const std::vector<double>& K, int NEVAB) {
    std::vector<double> force(24, 0.0);
    for (int r = 0; r < NEVAB; ++r)
      for (int c = 0; c < NEVAB; ++c)
        force[static_cast<std::size_t>(r)] += K[static_cast<std::size_t>(r * NEVAB + c)] *
                                              displacement(model.positions.of(0)[static_cast<std::size_t>(c)]);
    return force;
  }

  Model model;
  std::unique_ptr<Kernel> kernel = makeSolid3D();
};

void expectNear(std::span<const double> values, std::span<const double> expected, double tolerance) {
  ASSERT_EQ(values.size(), expected.size());
  for (std::size_t k = 0; k < values.size(); ++k) EXPECT_NEAR(values[k], expected[k], tolerance) << "place " << k;
}

TEST_F(Solid3DTest, SizesFollowFromTypeAndNodes) {
  const ElementSizes brick = kernel->TYPE(6, 8, 2);
  const ElementSizes tetrahedron = kernel->TYPE(6, 4, 2);

  EXPECT_EQ(brick.points(), 8);
  EXPECT_EQ(tetrahedron.points(), 2);
  EXPECT_EQ(tetrahedron.NGAU1, 2);
  EXPECT_EQ(kernel->TYPE(20, 8, 2).points(), 0);
  EXPECT_EQ(kernel->TYPE(20, 8, 2).NDOFN, 0);
}

TEST_F(Solid3DTest, PointsAreNumberedInTheCube) {
  ElementData element;
  element.NGAUS = 2;

  EXPECT_EQ(kernel->pointNumber(element, {1, 1, 2}), 1);
  EXPECT_EQ(kernel->pointNumber(element, {1, 2, 1}), 2);
  EXPECT_EQ(kernel->pointNumber(element, {2, 1, 1}), 4);
}

TEST_F(Solid3DTest, RefusesElementsThatItCannotForm) {
  use(test::cubeNodes, oneBrick);
  const auto messageOf = [this] {
    try {
      makeSolid3D()->prepare(model);
    } catch (const InputFault& fault) {
      return std::string(fault.what());
    }
    return std::string("accepted");
  };

  model.mesh.elements[0].NINTE = 7;
  EXPECT_EQ(messageOf(),
            "element 1: no integration rule has NINTE = 7 and NGAUS = 2; NINTE goes from 1 to 5, NGAUS from 1 to 2");
  model.mesh.elements[0].NTYPE = 20;
  EXPECT_EQ(messageOf(), "element 1: type 20 (NTYPE) has no meaning in this kernel; solids are of type 6");
  model.mesh.elements[0].NTYPE = 6;
  model.mesh.elements[0].NNODE = 6;
  try {
    kernel->prepare(model);
    FAIL() << "six nodes were accepted";
  } catch (const PlainStop& stop) {
    EXPECT_EQ(stop.console(), "  INCORRECT NNODE ...NNODE =  6  SUBROUTINE : SFR3D\n  ELEMENT:  1\n");
    EXPECT_EQ(stop.listing(), "");
  }
}

TEST_F(Solid3DTest, MirroredBrickStopsWithItsNumber) {
  use(test::cubeNodes, {{1, 2, 3, 4, 5, 6, 7, 8}, {5, 6, 7, 8, 1, 2, 3, 4}});
  prepare();

  EXPECT_NO_THROW(RIGI(0));
  try {
    RIGI(1);
    FAIL() << "a mirrored brick was accepted";
  } catch (const PlainStop& stop) {
    EXPECT_NE(stop.listing().find("ELEMENTO NUMER     2"), std::string::npos);
  }
}

TEST_F(Solid3DTest, VolumeAndBodyForceAddUp) {
  use(test::cubeNodes, {{1, 2, 3, 4, 5, 6, 7, 8}, {1, 2, 4, 5}});
  model.mesh.COORD[3 * 1] = 3.0;  // stretches along x: edges of 3 and 1 at y = 0, z = 0
  prepare();
  std::vector<double> brick(24, 0.0), tetrahedron(24, 0.0);

  kernel->addBodyForce(model, 1, std::array{1.0, -2.0, 4.0}, tetrahedron);
  kernel->addBodyForce(model, 0, std::array{0.0, 0.0, 5.0}, brick);

  EXPECT_NEAR(kernel->volume(model, 1), 3.0 / 6.0, 1e-14);
  for (std::size_t a = 0; a < 4; ++a) {
    EXPECT_NEAR(tetrahedron[3 * a], 0.125, 1e-14);
    EXPECT_NEAR(tetrahedron[3 * a + 1], -0.25, 1e-14);
    EXPECT_NEAR(tetrahedron[3 * a + 2], 0.5, 1e-14);
  }
  EXPECT_NEAR(kernel->volume(model, 0), 1.5, 1e-14);  // 1 + 2 (1/2) (1/2)
  EXPECT_NEAR(std::accumulate(brick.begin(), brick.end(), 0.0), 7.5, 1e-13);
}

TEST_F(Solid3DTest, FaceLoadIsIntegratedOnTheFace) {
  use(test::cubeNodes, oneBrick);
  prepare();
  std::vector<double> uniform(24, 0.0), linear(24, 0.0);
  const std::array places{4, 5, 7};  // nodes 5, 6, 8 of the face z = 1, area 1/2

  kernel->addFaceLoad(model, 0, places, std::array{0.0, 0.0, 6.0, 0.0, 0.0, 6.0, 0.0, 0.0, 6.0}, uniform);
  kernel->addFaceLoad(model, 0, places, std::array{24.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0}, linear);

  EXPECT_EQ(kernel->faceNodes(model.mesh.element(0)), 3);
  for (const std::size_t a : {4U, 5U, 7U}) EXPECT_NEAR(uniform[3 * a + 2], 1.0, 1e-15);
  EXPECT_NEAR(linear[3 * 4], 2.0, 1e-15);  // 24 A / 6
  EXPECT_NEAR(linear[3 * 5], 1.0, 1e-15);  // 24 A / 12
  EXPECT_NEAR(linear[3 * 7], 1.0, 1e-15);
  EXPECT_NEAR(std::accumulate(linear.begin(), linear.end(), 0.0), 4.0, 1e-14);
}

TEST_F(Solid3DTest, StiffnessTimesDisplacementIsTheInternalForceInTurnedAnisotropicAxes) {
  use(crookedNodes(), oneBrick, orthotropicMaterial());
  model.mesh.elements[0].EAEULER = {30.0, 50.0, -20.0};
  prepare();
  disturb(0.01);

  const std::vector<double> byStiffness = product(RIGI(), 24);

  expectNear(internalForce(0, 1), byStiffness, 1e-12);
  expectNear(internalForce(0, 2), byStiffness, 1e-12);
  expectNear(internalForce(0, 3), byStiffness, 1e-12);
}

TEST_F(Solid3DTest, StiffnessOfASymmetricMatrixIsSymmetricAndLetsRigidMotionsPass) {
  use(crookedNodes(), oneBrick);
  prepare();
  const std::vector<double> ESTIF = RIGI();
  for (std::size_t r = 0; r < 24; ++r)
    for (std::size_t c = 0; c < r; ++c) EXPECT_NEAR(ESTIF[24 * r + c], ESTIF[24 * c + r], 1e-11);

  test::setField(model, 0, [](const Point& x) {
    return Point{3.0 - x[1] + 2.0 * x[2], x[0] - x[2], x[1] - 2.0 * x[0]};
  });

  expectNear(product(ESTIF, 24), std::vector<double>(24, 0.0), 1e-11);
}

TEST_F(Solid3DTest, TurnAtFiniteStrainGivesNoForce) {
  use(crookedNodes(), oneBrick);
  model.control.LARGE = 1;
  prepare();
  const double c = std::cos(1.0), s = std::sin(1.0);
  test::setField(model, 0, [&](const Point& x) {
    return Point{c * x[0] - s * x[1] - x[0] + 5.0, s * x[0] + c * x[1] - x[1], -2.0};
  });

  expectNear(internalForce(), std::vector<double>(24, 0.0), 1e-12);
}

TEST_F(Solid3DTest, SimpleShearAtFiniteStrain) {
  use(test::cubeNodes, oneBrick);  // Lame constants 400, 400
  model.control.LARGE = 1;
  prepare();
  test::setField(model, 0, [](const Point& x) { return Point{0.5 * x[1], 0.0, 0.0}; });

  const std::vector<double> force = internalForce();

  for (int point = 0; point < 8; ++point) expectNear(stress(0, point).values, Vector<6>{50, 150, 200, 50, 0, 0}, 1e-11);
  double P12 = 0.0, P22 = 0.0;  // forces on the face y = 1, nodes 3, 4, 7, 8
  for (const std::size_t a : {2U, 3U, 6U, 7U}) {
    P12 += force[3 * a];
    P22 += force[3 * a + 1];
  }
  EXPECT_NEAR(P12, 275.0, 1e-11);
  EXPECT_NEAR(P22, 150.0, 1e-11);
  Vector<6> CAUCHY = stress().values;
  kernel->CAUCHY(model, 0, {1, 2, 1}, 0, CAUCHY);
  expectNear(CAUCHY, Vector<6>{287.5, 150, 275, 50, 0, 0}, 1e-11);
  Vector<6> ALMANS = strain(model.points.places().STRAT()).values;  // E = (0, .125, .5)
  kernel->ALMANS(model, 0, {1, 2, 1}, 0, ALMANS);
  expectNear(ALMANS, Vector<6>{0, -0.125, 0.5, 0, 0, 0}, 1e-15);
}

TEST_F(Solid3DTest, PushedLawWithPushedTangentGivesTheSameForces) {
  use(crookedNodes(), oneBrick);
  model.control.LARGE = 1;
  prepare();
  disturb(0.1);
  const std::vector<double> inReference = internalForce(0, 1);
  const std::vector<double> predicted = internalForce(0, 3);

  model.control.KPUSH = 2;
  model.control.KTANP = 1;
  kernel->IMPORTINFON1(model);

  expectNear(internalForce(0, 1), inReference, 1e-10);
  expectNear(internalForce(0, 3), predicted, 1e-10);
}

TEST_F(Solid3DTest, CurrentMeasuresBelongToTheirPoint) {
  use(test::cubeNodes, oneBrick);
  model.control.LARGE = 1;
  prepare();
  test::setField(model, 0, [](const Point& x) { return Point{0.2 * x[0] * x[1], 0.0, 0.0}; });
  Vector<6> stress{1.0, 0, 0, 0, 0, 0};

  kernel->CAUCHY(model, 0, {1, 2, 1}, 0, stress);

  // F11 = det F = 1 + 0.2 y, and the first index runs along y
  EXPECT_NEAR(stress[0], 1.0 + 0.2 * (1.0 - 0.5773502691896258) / 2.0, 1e-15);
}

TEST_F(Solid3DTest, CurrentMeasuresOfAMaterialStayInItsAxes) {
  // Turns of 20 + 30 + 40 degrees about z: the stretch of 1.2 along x is one along the material's -y.
  Material material = orthotropicMaterial();
  material(slot::angleAboutY) = 40.0;
  use(test::cubeNodes, oneBrick, material);
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

  const Vector<6> S = stress().values;  // global axes: S / 1.2 across the stretch, 1.2 S along it
  expectNear(CAUCHY, Vector<6>{S[1] / 1.2, 1.2 * S[0], 0, S[3] / 1.2, 0, 0}, 1e-12);
  expectNear(ALMANS, Vector<6>{0, (1.0 - 1.0 / 1.44) / 2.0, 0, 0, 0, 0}, 1e-14);
}

class FiniteStiffness : public Solid3DTest, public testing::WithParamInterface<bool> {};

TEST_P(FiniteStiffness, IsTheDerivativeOfTheInternalForce) {
  const bool brick = GetParam();
  use(crookedNodes(), brick ? oneBrick : oneTetrahedron);
  model.control.LARGE = 1;
  prepare();
  disturb(0.1);
  kernel->RESIDU(model, 0);
  const std::vector<double> ESTIF = RIGI();
  const std::size_t NEVAB = brick ? 24 : 12;
  constexpr double h = 1e-6;
  double largest = 0.0;
  for (std::size_t k = 0; k < NEVAB * NEVAB; ++k) largest = std::max(largest, std::abs(ESTIF[k]));

  for (std::size_t c = 0; c < NEVAB; ++c) {
    double& u = displacement(model.positions.of(0)[c]);
    u += h;
    const std::vector<double> ahead = internalForce();
    u -= 2.0 * h;
    const std::vector<double> behind = internalForce();
    u += h;
    for (std::size_t r = 0; r < NEVAB; ++r)
      EXPECT_NEAR(ESTIF[NEVAB * r + c], (ahead[r] - behind[r]) / (2.0 * h), 1e-6 * largest);
  }
}

INSTANTIATE_TEST_SUITE_P(BrickAndTetrahedron, FiniteStiffness, testing::Bool());

TEST_F(Solid3DTest, TetrahedraPassThePatchTest) {
  // Twelve tetrahedra from an inner node to two triangles on each face of the cube.
  std::vector<Point> nodes = test::cubeNodes;
  nodes.push_back({0.4, 0.45, 0.6});
  std::vector<std::vector<int>> elements;
  for (const std::array<int, 4>& face : {std::array{1, 2, 3, 4},
                                         {5, 8, 7, 6},
                                         {1, 5, 6, 2},
                                         {2, 6, 7, 3},  //
                                         {3, 7, 8, 4},
                                         {4, 8, 5, 1}}) {
    elements.push_back({face[0], face[1], face[2], 9});
    elements.push_back({face[0], face[2], face[3], 9});
  }
  use(nodes, elements, isotropicMaterial(1e6, 0.25));
  prepare();
  test::setField(model, 0, [](const Point& x) {
    return Point{5e-4 * (2 * x[0] + x[1] + x[2]), 5e-4 * (x[0] + 2 * x[1] + x[2]), 5e-4 * (x[0] + x[1] + 2 * x[2])};
  });

  Point innerForce{};
  double volume = 0.0;
  for (int e = 0; e < 12; ++e) {
    const std::vector<double> force = internalForce(e);
    for (std::size_t i = 0; i < 3; ++i) innerForce[i] += force[9 + i];
    expectNear(stress(e).values, Vector<6>{2000, 2000, 400, 2000, 400, 400}, 1e-9);
    volume += kernel->volume(model, e);
  }

  EXPECT_NEAR(volume, 1.0, 1e-14);
  expectNear(innerForce, Point{}, 1e-10);
}

TEST_F(Solid3DTest, ElementSwitchedOnLateStartsFromZeroStrain) {
  use(test::cubeNodes, oneBrick, isotropicMaterial(1000.0, 0.0));
  model.mesh.elements[0].IFASE = 2;
  model.loadStep.ACTIV = {1, 0};
  prepare();
  const MechanicalPlaces places = model.points.places();
  test::setField(model, 0, [](const Point& x) { return Point{0.01 * x[0], 0.0, 0.0}; });
  const std::vector<double> asleep = internalForce();
  const Strain<6> offset = strain(places.STRFAS());
  const Strain<6> asleepStrain = strain(places.STRAT());
  model.points.commit();

  model.loadStep.ACTIV = {1, 1};
  test::setField(model, 0, [](const Point& x) { return Point{0.013 * x[0], 0.0, 0.0}; });
  const std::vector<double> awake = internalForce();

  expectNear(asleep, std::vector<double>(24, 0.0), 0.0);
  EXPECT_NEAR(offset[0], -0.01, 1e-16);
  EXPECT_TRUE(asleepStrain.isZero());
  EXPECT_NEAR(strain(places.STRAT())[0], 0.003, 1e-16);
  EXPECT_NEAR(strain(places.STRFAS())[0], -0.01, 1e-16);
  EXPECT_NEAR(stress()[0], 3.0, 1e-12);
  EXPECT_NEAR(awake[3 * 1], 0.75, 1e-12);  // a quarter of the face's force at node 2
}

TEST_F(Solid3DTest, InactiveElementKeepsANegligibleStiffness) {
  use(crookedNodes(), oneBrick);
  prepare();
  const std::vector<double> whole = RIGI();
  const double largest = *std::max_element(whole.begin(), whole.end());

  model.loadStep.ACTIV = {0, 1};
  const std::vector<double> soft = RIGI();

  for (std::size_t k = 0; k < whole.size(); ++k)
    EXPECT_NEAR(soft[k], largest * 1.0000000031710769e-29 * whole[k], 1e-15 * std::abs(soft[k]));
}

TEST_F(Solid3DTest, ReleasedDirectionGetsNeitherStiffnessNorForce) {
  use(crookedNodes(), oneBrick);
  model.mesh.elements[0].MATNO[1] = 1;
  model.fixities.IFLIB.assign(24, 0);
  model.fixities.IFLIB[7] = 1;  // direction y of node 3
  prepare();
  disturb(0.01);

  const std::vector<double> ESTIF = RIGI();
  const std::vector<double> force = internalForce();

  for (std::size_t k = 0; k < 24; ++k) {
    EXPECT_EQ(ESTIF[24 * 7 + k], 0.0);
    EXPECT_EQ(ESTIF[24 * k + 7], 0.0);
    EXPECT_EQ(force[k] == 0.0, k == 7);
  }
}

TEST_F(Solid3DTest, ThicknessMultipliesTheResidualAlone) {
  Material material = isotropicMaterial(1000.0, 0.25);
  use(crookedNodes(), oneBrick, material);
  prepare();
  disturb(0.01);
  std::vector<double> expected = internalForce();
  for (double& value : expected) value *= 3.0;
  const std::vector<double> ESTIF = RIGI();

  material(slot::thickness) = 3.0;
  use(crookedNodes(), oneBrick, material);
  kernel = makeSolid3D();
  prepare();
  disturb(0.01);

  expectNear(internalForce(), expected, 1e-12);
  EXPECT_EQ(RIGI(), ESTIF);
}

TEST_F(Solid3DTest, DynamicStepRecordsTheRateOfStrain) {
  use(test::cubeNodes, oneBrick);
  model.control.LARGE = 1;
  model.loadStep.IDINA = 1;
  prepare();
  test::setField(model, 0, [](const Point& x) { return Point{0.5 * x[1], 0.0, 0.0}; });
  test::setField(model, 1, [](const Point& x) { return Point{2.0 * x[1], 0.0, 0.0}; });

  kernel->RESIDU(model, 0);

  // E = (0, g^2 / 2, g) with g = 0.5 and its rate 2: (0, g g', g')
  expectNear(strain(model.points.places().VSTRAT()).values, Vector<6>{0, 1, 2, 0, 0, 0}, 1e-15);
}

TEST_F(Solid3DTest, RateOfStrainOfALateElementStartsFromZeroToo) {
  use(test::cubeNodes, oneBrick);
  model.loadStep.IDINA = 1;
  model.loadStep.ACTIV = {0, 0};
  prepare();
  const MechanicalPlaces places = model.points.places();
  test::setField(model, 1, [](const Point& x) { return Point{2.0 * x[0], 0.0, 0.0}; });
  kernel->RESIDU(model, 0);
  model.points.commit();

  model.loadStep.ACTIV = {1, 1};
  test::setField(model, 0, [](const Point& x) { return Point{0.01 * x[0], 0.0, 0.0}; });
  test::setField(model, 1, [](const Point& x) { return Point{5.0 * x[0], 0.0, 0.0}; });
  kernel->RESIDU(model, 0);

  EXPECT_NEAR(strain(places.VSTRFAS())[0], -2.0, 1e-14);
  EXPECT_NEAR(strain(places.VSTRAT())[0], 3.0, 1e-14);
  EXPECT_NEAR(strain(places.STRAT())[0], 0.01, 1e-16);
}

TEST_F(Solid3DTest, CommittedStateIsReadAndTheTrialStateWritten) {
  use(test::cubeNodes, oneBrick);
  prepare();
  disturb(0.01);

  const std::vector<double> once = internalForce();
  const std::vector<double> again = internalForce();

  EXPECT_EQ(once, again);
  const std::span<const double> committed = model.points.mechanical(StateSlot::committed, 0, 0, 0);
  EXPECT_TRUE(std::all_of(committed.begin(), committed.end(), [](double value) { return value == 0.0; }));
  EXPECT_FALSE(stress().isZero());
}

}  // namespace
}  // namespace zema
