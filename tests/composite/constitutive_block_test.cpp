// The constitutive block: mixing of layers, axes, and what a point leaves in the point store.
#include "composite/constitutive_block.h"

#include <gtest/gtest.h>

#include <numeric>

#include "composite/point_model.h"
#include "constitutive/sample_materials.h"
#include "foundation/distance.h"
#include "foundation/ends.h"

namespace zema {
namespace {

const Strain<6> someStrain{{0.010, -0.004, 0.006, 0.003, -0.005, 0.008}};
constexpr std::array<double, 3> skewAngles{25.0, 40.0, -70.0};
constexpr MechanicalPlaces places{6};

PointUpdate<6> loading(int e, const Strain<6>& strain) {
  return {.e = e, .point = 0, .STRAT = strain, .STRAN = strain, .VSTRAT = {}, .dV = 0.125};
}

std::span<const double> trial(const Model& model, int e, int component) {
  return model.points.mechanical(StateSlot::trial, e, 0, component);
}

TEST(ConstitutiveBlock, PointThatReturnsToZeroStrainIsUpdatedAndOneWithoutStrainCarriesSlotOneOver) {
  Material material = isotropicMaterial(1000.0, 0.25, {{slot::referenceTemperature, 20.0}, {65, 2.0}});
  material.young = {{20.0, 120.0}, {1000.0, 500.0}};
  Model model = pointModel<6>({material}, {plainComposite(1)});
  ConstitutiveBlock<6> block(model);
  block.ZERO(model);
  (void)block.RESI2D(model, loading(0, someStrain));
  model.points.commit();
  PointUpdate<6> back = loading(0, {});
  back.STRAN = -1.0 * someStrain;
  EXPECT_TRUE(block.RESI2D(model, back).STRSG.isZero());
  EXPECT_EQ(Strain<6>::from(trial(model, 0, 1), places.STRATT()), someStrain);

  for (int component = 0; component < 2; ++component) {
    const auto committed = model.points.mechanical(StateSlot::committed, 0, 0, component);
    std::iota(committed.begin(), committed.end(), 1.0);
  }
  block.CALCIN(model, 120.0);
  EXPECT_EQ(block.RESI2D(model, loading(0, {})).STRSG, (Stress<6>{{1.0, 2.0, 3.0, 4.0, 5.0, 6.0}}));
  for (const int c : {0, 1})
    EXPECT_TRUE(std::ranges::equal(model.points.mechanical(StateSlot::committed, 0, 0, c), trial(model, 0, c)));
  EXPECT_NEAR(model.points.internal(StateSlot::trial, 0, 0, 0)[internal::count], 600.0, 1.0e-10);  // of half the E
}

TEST(ConstitutiveBlock, NewJobHasSeedsAndElasticTangents) {
  Model model = pointModel<6>({orthotropicMaterial({{slot::frictionAngle, 0.5}})}, {plainComposite(1)});
  model.mesh.elements[0].EAEULER = skewAngles;
  const ConstitutiveBlock<6> block(model);

  block.ZERO(model);

  for (const StateSlot slot : {StateSlot::committed, StateSlot::trial}) {
    for (const int component : {0, 1}) {
      const auto state = model.points.internal(slot, 0, 0, component);
      EXPECT_EQ(state[internal::frictionAngle], component == 1 ? 0.5 : 0.0);
      EXPECT_EQ(state[internal::elasticFlag], 1.0);
      const ElasticRecord<6>& elastic = component == 1 ? block.materialRecord(1) : block.compositeRecord(1);
      EXPECT_EQ(state[internal::count + 1], elastic.VDMANX(0, 1));
    }
  }
}

TEST(ConstitutiveBlock, StoredTangentServesWhenTheAnalysisHasMovedOn) {
  Model model = pointModel<6>({isotropicMaterial(1000.0, 0.25)}, {plainComposite(1)});
  model.mesh.elements[0].EAEULER = {90.0, 0.0, 0.0};
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

TEST(ConstitutiveBlock, RefusesWhatThisBuildDoesNotHave) {
  Material friction = isotropicMaterial(1000.0, 0.25), beyond = friction;
  friction.NTINT = Law::damageFriction;
  beyond.NTINT = static_cast<Law>(20);
  Composite unknown = plainComposite(1);  // a layer of an unknown word has no components
  unknown.layers[0].kind = LayerKind::none;
  unknown.layers[0].components.clear();
  unknown.layers.push_back(plainComposite(2).layers[0]);
  const std::vector<Material> materials{isotropicMaterial(1000.0, 0.25), friction, beyond};
  const std::vector<std::pair<Composite, std::string>> ends{
      {plainComposite(1), "goes on"},
      {plainComposite(2), "fault material 2 asks for law 16 \"DAMAG-FRICTION\", which has no routine"},
      {plainComposite(3), "fault material 3 asks for law 20, which does not exist; the laws are numbered from 0 to 19"},
      {plainComposite(4), "fault composite 2, layer 1: material 4 has no card"},
      {unknown, "fault material 2 asks for law 16 \"DAMAG-FRICTION\", which has no routine"},
      {Composite{}, "fault composite 2 has no layers, but elements that use it"}};
  for (const auto& [composite, expected] : ends) {
    Model model = pointModel<6>(materials, {plainComposite(1), composite});
    EXPECT_EQ(endOf([&] { ConstitutiveBlock<6>{model}; }), expected);
    model.mesh.elements[1].MATNO[0] = 1;  // no element uses it
    EXPECT_EQ(endOf([&] { ConstitutiveBlock<6>{model}; }), "goes on");
  }
}

}  // namespace
}  // namespace zema
