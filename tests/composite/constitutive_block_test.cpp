// The constitutive block: mixing of layers, axes, and what a point leaves in the point store.
#include "composite/constitutive_block.h"

#include <gtest/gtest.h>

#include <cmath>

#include "composite/point_model.h"
#include "constitutive/sample_materials.h"
#include "foundation/distance.h"
#include "foundation/errors.h"

namespace zema {
namespace {

const Strain<6> someStrain{{0.010, -0.004, 0.006, 0.003, -0.005, 0.008}};
constexpr std::array<double, 3> skewAngles{25.0, 40.0, -70.0};
constexpr std::array<double, 3> noAngles{};
constexpr MechanicalPlaces places{6};

Material turned(Material material, const std::array<double, 3>& angles) {
  material(slot::angleAboutY) = angles[0];
  material(slot::angleAboutZ) = angles[1];
  material(slot::angleAboutX) = angles[2];
  return material;
}

PointUpdate<6> loading(int e, const Strain<6>& strain) {
  return {.e = e, .point = 0, .STRAT = strain, .STRAN = strain, .VSTRAT = {}, .dV = 0.125};
}

std::span<const double> trial(const Model& model, int e, int component) {
  return model.points.mechanical(StateSlot::trial, e, 0, component);
}

TEST(ConstitutiveBlock, ParallelMixtureOfTwoIsotropicMaterials) {
  Composite composite = plainComposite(1);
  composite.layers[0].components = {{1, 0.4, 1}, {2, 0.6, 2}};
  composite.NUMAT = 3;
  std::vector<Material> materials{isotropicMaterial(3500.0, 0.35), isotropicMaterial(72000.0, 0.22)};
  materials[0](slot::density) = 1.0;
  materials[1](slot::density) = 2.5;
  Model model = pointModel<6>(materials, {composite}, {{1, noAngles}});

  const ConstitutiveBlock<6> block(model);

  const Matrix<6>& compliance = block.compositeRecord(1).VDMANXI;
  EXPECT_NEAR(1.0 / compliance(0, 0), 44710.7832, 1.0e-4);
  EXPECT_NEAR(-compliance(1, 0) / compliance(0, 0), 0.226739, 1.0e-6);
  EXPECT_NEAR(1.0 / compliance(2, 2), 18223.4366, 1.0e-4);
  EXPECT_DOUBLE_EQ(block.DENSV(1), 1.9);
  const PointResult<6> result = block.RESI2D(model, loading(0, someStrain));
  EXPECT_LT(distance(result.STRSG, CALTEN(block.elasticMatrix(0), someStrain)), 1.0e-10);
}

TEST(ConstitutiveBlock, TheSameOrthotropyByMaterialLayerOrElementAngles) {
  Composite turnedLayer = plainComposite(1);
  turnedLayer.layers[0].LAEULER = skewAngles;
  const Material material = orthotropicMaterial();
  Model model =
      pointModel<6>({material, turned(material, skewAngles)}, {plainComposite(1), plainComposite(2), turnedLayer},
                    {{2, noAngles}, {3, noAngles}, {1, skewAngles}});
  ConstitutiveBlock<6> block(model);
  block.IMPORTINFON1(model);
  block.CALCIN(model, 0.0);
  model.control.LARGE = 1;  // stored tangents are read although the points are elastic
  model.loop.IITER = 2;

  std::vector<Stress<6>> stresses;
  for (int e = 0; e < 3; ++e) stresses.push_back(block.RESI2D(model, loading(e, someStrain)).STRSG);

  EXPECT_GT(distance(block.elasticMatrix(0), block.materialRecord(1).VDMANX), 1.0);
  for (int e = 0; e < 3; ++e) {
    EXPECT_LT(distance(block.elasticMatrix(e), block.elasticMatrix(0)), 1.0e-10);
    EXPECT_LT(distance(block.CGLOBSO(model, e, 0), block.elasticMatrix(0)), 1.0e-10);
    EXPECT_LT(distance(stresses[static_cast<std::size_t>(e)], CALTEN(block.elasticMatrix(0), someStrain)), 1.0e-10);
    EXPECT_LT(distance(block.MODULI(model, e, someStrain, Matrix<3>::identity()), stresses[0]), 1.0e-10);
    // Records of the whole are in global axes, those of the material in material axes.
    EXPECT_EQ(Strain<6>::from(trial(model, e, 0), places.STRAT()), someStrain);
    EXPECT_LT(distance(Stress<6>::from(trial(model, e, 1), places.STRSG()),
                       Stress<6>::from(trial(model, 0, 1), places.STRSG())),
              1.0e-12);
  }
}

TEST(ConstitutiveBlock, AxesTurnTheDeformationGradientToo) {
  constexpr Matrix<3> F{{1.1, 0.3, -0.1, 0.2, 0.9, 0.25, -0.15, 0.05, 1.2}};
  Composite turnedLayer = plainComposite(1);
  turnedLayer.layers[0].LAEULER = skewAngles;
  const Material material = orthotropicMaterial();
  Model model =
      pointModel<6>({material, turned(material, skewAngles)}, {plainComposite(1), plainComposite(2), turnedLayer},
                    {{2, noAngles}, {3, noAngles}, {1, skewAngles}});
  model.control.LARGE = 1;
  model.control.KPUSH = 2;
  ConstitutiveBlock<6> block(model);
  block.IMPORTINFON1(model);

  std::vector<Stress<6>> stresses;
  for (int e = 0; e < 3; ++e) {
    PointUpdate<6> update = loading(e, someStrain);
    update.F = F;
    update.DETF = DETERM3D(F);
    stresses.push_back(block.RESI2D(model, update).STRSG);
  }

  // The law in the current configuration, in global axes.
  Strain<6> almansi = someStrain;
  PFB_STR(almansi, F, TensorMove::strainForward);
  Stress<6> expected = CALTEN(block.elasticMatrix(0), almansi);
  PFB_STR(expected, F, TensorMove::stressBack);
  for (const Stress<6>& stress : stresses) EXPECT_LT(distance(stress, expected), 1.0e-12);
  EXPECT_LT(distance(block.MODULI(model, 2, someStrain, F), expected), 1.0e-12);
  model.loop.IITER = 2;
  const Matrix<6> tangent = block.CGLOBSO(model, 0, 0);
  EXPECT_GT(distance(tangent, block.elasticMatrix(0)), 1.0);
  for (const int e : {1, 2}) EXPECT_LT(distance(block.CGLOBSO(model, e, 0), tangent), 1.0e-10);
}

TEST(ConstitutiveBlock, YieldValuesAreScaledFromThoseOfTheDeck) {
  Material material = isotropicMaterial(1000.0, 0.3);
  material(slot::yieldStress) = 200.0;
  material(slot::yieldCurvePoints) = 2.0;
  material.yield = {{0.0, 100.0}, {200.0, 100.0}};
  Model model = pointModel<6>({material}, {plainComposite(1)}, {{1, noAngles}});
  ConstitutiveBlock<6> block(model);
  model.loadStep.TEMPL = 50.0;

  block.IMPORTINFON1(model);
  const double warm = block.materialInForce(1)(slot::yieldStress);
  model.loadStep.TEMPL = 0.0;
  block.IMPORTINFON1(model);

  EXPECT_DOUBLE_EQ(warm, 150.0);
  EXPECT_DOUBLE_EQ(block.materialInForce(1)(slot::yieldStress), 200.0);
}

TEST(ConstitutiveBlock, ElementLayerAndMaterialAnglesFollowOneAnother) {
  // Turns about the same axis add up: 10 + 20 + 30 degrees.
  Composite composite = plainComposite(1);
  composite.layers[0].LAEULER = {20.0, 0.0, 0.0};
  Model model =
      pointModel<6>({turned(orthotropicMaterial(), {30.0, 0.0, 0.0}), turned(orthotropicMaterial(), {60.0, 0.0, 0.0})},
                    {composite, plainComposite(2)}, {{1, {10.0, 0.0, 0.0}}, {2, noAngles}, {1, {10.0, 0.0, 0.0}}});
  ConstitutiveBlock<6> block(model);

  const Stress<6> inThreeTurns = block.RESI2D(model, loading(0, someStrain)).STRSG;
  const Stress<6> inOneTurn = block.RESI2D(model, loading(1, someStrain)).STRSG;

  EXPECT_LT(distance(inThreeTurns, inOneTurn), 1.0e-13);
  EXPECT_EQ(&block.elasticMatrix(2), &block.elasticMatrix(0));  // equal angles share their matrices
}

TEST(ConstitutiveBlock, LayersAddWithTheirShares) {
  Composite composite = plainComposite(1);
  composite.layers.push_back(composite.layers[0]);
  composite.layers[0].PVLAY = 0.25;
  composite.layers[1].PVLAY = 0.75;
  composite.layers[1].LAEULER = {90.0, 0.0, 0.0};
  composite.layers[1].components[0].LOCMA = 2;
  composite.NUMAT = 3;
  Model model = pointModel<6>({orthotropicMaterial()}, {composite}, {{1, noAngles}});
  const ConstitutiveBlock<6> block(model);
  const Matrix<6>& C = block.materialRecord(1).VDMANX;

  const Stress<6> stress = block.RESI2D(model, loading(0, Strain<6>{{0.01, 0.0, 0.0, 0.0, 0.0, 0.0}})).STRSG;

  EXPECT_NEAR(stress[0], 0.01 * (0.25 * C(0, 0) + 0.75 * C(1, 1)), 1.0e-14);
  EXPECT_NEAR(stress[1], 0.01 * C(0, 1), 1.0e-14);
  EXPECT_NEAR(stress[3], 0.01 * (0.25 * C(3, 0) + 0.75 * C(3, 1)), 1.0e-14);
  EXPECT_NEAR(trial(model, 0, 2)[0], 0.01 * C(1, 0), 1.0e-14);
}

TEST(ConstitutiveBlock, TemperatureReachesTheMatrices) {
  Material material = isotropicMaterial(1000.0, 0.3);
  material(slot::referenceTemperature) = 20.0;
  material(slot::youngCurvePoints) = 2.0;
  material.young = {{20.0, 120.0}, {1000.0, 500.0}};
  Model model = pointModel<6>({material}, {plainComposite(1)}, {{1, skewAngles}});
  ConstitutiveBlock<6> block(model);
  block.ZERO(model);
  const Matrix<6> cold = block.elasticMatrix(0);

  block.CALCIN(model, 120.0);

  EXPECT_NEAR(block.elasticMatrix(0)(0, 0), 0.5 * cold(0, 0), 1.0e-10);
  (void)block.RESI2D(model, loading(0, {}));  // a point without strain is given the new elastic tangent
  EXPECT_DOUBLE_EQ(model.points.internal(StateSlot::trial, 0, 0, 0)[internal::count],
                   block.compositeRecord(1).VDMANX(0, 0));
  const Stress<6> stress = block.RESI2D(model, loading(0, someStrain)).STRSG;
  EXPECT_LT(distance(stress, 0.5 * CALTEN(cold, someStrain)), 1.0e-12);
}

TEST(ConstitutiveBlock, PointWithoutStrainCarriesSlotOneOver) {
  Model model = pointModel<6>({isotropicMaterial(1000.0, 0.25)}, {plainComposite(1)}, {{1, noAngles}});
  const ConstitutiveBlock<6> block(model);
  block.ZERO(model);
  for (int component = 0; component < 2; ++component) {
    const auto committed = model.points.mechanical(StateSlot::committed, 0, 0, component);
    for (std::size_t i = 0; i < committed.size(); ++i) committed[i] = static_cast<double>(i + 1);
    std::ranges::fill(model.points.mechanical(StateSlot::trial, 0, 0, component), -1.0);
  }

  const PointResult<6> result = block.RESI2D(model, loading(0, {}));

  EXPECT_EQ(result.STRSG, (Stress<6>{{1.0, 2.0, 3.0, 4.0, 5.0, 6.0}}));
  for (int component = 0; component < 2; ++component)
    EXPECT_TRUE(std::ranges::equal(model.points.mechanical(StateSlot::committed, 0, 0, component),
                                   model.points.mechanical(StateSlot::trial, 0, 0, component)));
}

TEST(ConstitutiveBlock, PointThatReturnsToZeroStrainIsUpdated) {
  Model model = pointModel<6>({isotropicMaterial(1000.0, 0.25)}, {plainComposite(1)}, {{1, noAngles}});
  const ConstitutiveBlock<6> block(model);
  (void)block.RESI2D(model, loading(0, someStrain));
  model.points.commit();
  PointUpdate<6> back = loading(0, {});
  back.STRAN = -1.0 * someStrain;

  const PointResult<6> result = block.RESI2D(model, back);

  EXPECT_TRUE(result.STRSG.isZero());
  EXPECT_EQ(Strain<6>::from(trial(model, 0, 1), places.STRATT()), someStrain);
}

TEST(ConstitutiveBlock, NewJobHasSeedsAndElasticTangents) {
  Material material = orthotropicMaterial();
  material(slot::frictionAngle) = 0.5;
  material(slot::yieldStress) = 30.0;
  Model model = pointModel<6>({material}, {plainComposite(1)}, {{1, skewAngles}});
  const ConstitutiveBlock<6> block(model);

  block.ZERO(model);

  for (const StateSlot slot : {StateSlot::committed, StateSlot::trial}) {
    const auto component = model.points.internal(slot, 0, 0, 1);
    EXPECT_EQ(component[internal::frictionAngle], 0.5);
    EXPECT_EQ(component[internal::reducedYieldStress], 30.0);
    EXPECT_EQ(component[internal::count + 1], block.materialRecord(1).VDMANX(0, 1));
    const auto whole = model.points.internal(slot, 0, 0, 0);
    EXPECT_EQ(whole[internal::yieldStress], 0.0);
    EXPECT_EQ(whole[internal::elasticFlag], 1.0);
    EXPECT_EQ(whole[internal::count + 1], block.compositeRecord(1).VDMANX(0, 1));
  }
}

TEST(ConstitutiveBlock, InactiveStepKeepsTheStateWithoutStressAndStrain) {
  Model model = pointModel<6>({isotropicMaterial(1000.0, 0.25)}, {plainComposite(1)}, {{1, noAngles}});
  const ConstitutiveBlock<6> block(model);
  block.ZERO(model);
  (void)block.RESI2D(model, loading(0, someStrain));
  model.points.internal(StateSlot::trial, 0, 0, 1)[internal::damage] = 0.5;
  model.points.commit();

  block.carryInactive(model, 0, 0, -1.0 * someStrain, {});

  for (int component = 0; component < 2; ++component) {
    EXPECT_TRUE(Stress<6>::from(trial(model, 0, component), places.STRSG()).isZero());
    EXPECT_TRUE(Strain<6>::from(trial(model, 0, component), places.STRAT()).isZero());
  }
  EXPECT_EQ(Strain<6>::from(trial(model, 0, 0), places.STRFAS()), -1.0 * someStrain);
  EXPECT_EQ(model.points.internal(StateSlot::trial, 0, 0, 1)[internal::damage], 0.5);
}

TEST(ConstitutiveBlock, StoredTangentServesWhenTheAnalysisHasMovedOn) {
  Model model = pointModel<6>({isotropicMaterial(1000.0, 0.25)}, {plainComposite(1)}, {{1, {90.0, 0.0, 0.0}}});
  const ConstitutiveBlock<6> block(model);
  const auto record = model.points.internal(StateSlot::trial, 0, 0, 0);
  record[internal::count] = 7.0;  // xx, xx in element axes, which is yy, yy in global ones
  record[internal::elasticFlag] = 0.0;
  const auto entry = [&](int IITER, int KRESL, double flag, int LARGE) {
    model.loop.IITER = IITER;
    model.loop.KRESL = KRESL;
    model.control.LARGE = LARGE;
    record[internal::elasticFlag] = flag;
    return block.CGLOBSO(model, 0, 0)(1, 1);
  };

  EXPECT_NEAR(entry(2, 1, 0.0, 0), 7.0, 1.0e-12);
  EXPECT_NEAR(entry(2, 1, 1.0, 1), 7.0, 1.0e-12);
  EXPECT_NEAR(entry(1, 1, 0.0, 0), 1200.0, 1.0e-9);
  EXPECT_NEAR(entry(2, 2, 0.0, 0), 1200.0, 1.0e-9);
  EXPECT_NEAR(entry(2, 1, 1.0, 0), 1200.0, 1.0e-9);
}

TEST(ConstitutiveBlock, FourComponentsGiveThePlaneStrainOfSix) {
  Material material = orthotropicMaterial();
  Composite composite = plainComposite(1);
  composite.layers[0].LAEULER = {35.0, 0.0, 0.0};
  Model plane = pointModel<4>({material}, {composite}, {{1, noAngles}});
  Model space = pointModel<6>({material}, {composite}, {{1, noAngles}});
  const Strain<4> strain{{0.010, -0.004, 0.006, 0.003}};

  const Stress<4> inPlane =
      ConstitutiveBlock<4>(plane).RESI2D(plane, {.STRAT = strain, .STRAN = strain, .VSTRAT = {}}).STRSG;
  const Stress<6> inSpace =
      ConstitutiveBlock<6>(space).RESI2D(space, loading(0, Strain<6>{{0.010, -0.004, 0.006, 0.003, 0.0, 0.0}})).STRSG;

  for (int i = 0; i < 4; ++i) EXPECT_NEAR(inPlane[i], inSpace[i], 1.0e-14);
}

TEST(ConstitutiveBlock, RefusesWhatThisBuildDoesNotHave) {
  const Material elastic = isotropicMaterial(1000.0, 0.25);
  const auto faultOf = [&elastic](const Material& material, const Composite& composite, int used = 2) -> std::string {
    try {
      ConstitutiveBlock<6>(pointModel<6>({elastic, material}, {plainComposite(1), composite}, {{used, noAngles}}));
    } catch (const InputFault& fault) {
      return fault.what();
    }
    return "accepted";
  };
  Material friction = elastic;
  friction.NTINT = Law::damageFriction;
  Composite unknown = plainComposite(1);
  unknown.layers[0].TYLAY = "Q";
  unknown.layers[0].kind = LayerKind::none;
  unknown.layers[0].components.clear();
  unknown.layers.push_back(plainComposite(2).layers[0]);

  EXPECT_EQ(faultOf(elastic, plainComposite(2)), "accepted");
  EXPECT_EQ(faultOf(friction, plainComposite(2)),
            "material 2 asks for law 16 \"DAMAG-FRICTION\", which is not in this build yet");
  EXPECT_EQ(faultOf(elastic, plainComposite(3)), "composite 2, layer 1: material 3 has no card");
  EXPECT_EQ(faultOf(elastic, unknown), "accepted");  // a layer of an unknown word has no components
  EXPECT_EQ(faultOf(elastic, Composite{}), "composite 2 has no layers, but elements that use it");
  EXPECT_EQ(faultOf(friction, plainComposite(2), 1), "accepted");  // no element uses it
}

}  // namespace
}  // namespace zema
