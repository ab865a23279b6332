// Serial-parallel and short-fibre layers: elastic constants, stops, and random histories of components of all laws.
#include <gmock/gmock.h>

#include <cmath>
#include <random>

#include "composite/composite_elasticity.h"
#include "composite/point_model.h"
#include "composite/serial_parallel_layer.h"
#include "composite/short_fibre_layer.h"
#include "composite/short_fibre_share.h"
#include "constitutive/elastic_moduli.h"
#include "constitutive/sample_materials.h"
#include "foundation/distance.h"
#include "foundation/ends.h"

namespace zema {
namespace {

const Strain<6> someStrain{{0.010, -0.004, 0.006, 0.003, -0.005, 0.008}};

/// Flags of a fibre along x in n components.
std::vector<int> alongX(int n) {
  std::vector<int> flags(static_cast<std::size_t>(n), 0);
  flags[0] = 1;
  return flags;
}

/// E1, E2, nu12, nu23, G12, G23 and density of composite 1, with the stress of a point checked against its matrix.
std::vector<double> constantsOf(const Composite& composite, const std::vector<Material>& materials) {
  Model model = pointModel<6>(materials, {composite});
  ConstitutiveBlock<6> block(model);
  block.ZERO(model);
  block.IMPORTINFON1(model);
  const Stress<6> stress = block.RESI2D(model, {.STRAT = someStrain, .STRAN = someStrain, .VSTRAT = {}}).STRSG;
  EXPECT_LT(distance(stress, CALTEN(block.elasticMatrix(0), someStrain)), 1.0e-11);
  const Matrix<6>& S = block.compositeRecord(1).VDMANXI;
  return {1.0 / S(0, 0), 1.0 / S(1, 1), -S(1, 0) / S(0, 0), -S(3, 1) / S(1, 1),
          1.0 / S(2, 2), 1.0 / S(5, 5), block.DENSV(1)};
}

TEST(SerialParallelLayer, ElasticConstants) {
  const std::vector<Material> materials{isotropicMaterial(3500.0, 0.35, {{slot::density, 1.0}}),
                                        isotropicMaterial(72000.0, 0.22, {{slot::density, 2.5}})};
  const std::vector<double> voigt{44710.7832, 44710.7832, 0.226739, 0.226739, 18223.4366, 18223.4366, 1.9};
  const std::vector<std::pair<Composite, std::vector<double>>> cases{
      {serialParallel(1, 2, 0.4, alongX(6)), {44600.0, 9101.2888, 0.272, 0.496729, 3040.3938, 3040.3938, 1.9}},
      {serialParallel(1, 2, 0.4, std::vector(6, 1)), voigt},
      {oneLayer(LayerKind::parallel, {{1, 0.4}, {2, 0.6}}), voigt},
      {serialParallel(1, 2, 0.4, std::vector(6, 0)),
       {8155.3398, 8155.3398, 0.341165, 0.341165, 3040.3938, 3040.3938, 1.9}}};
  for (const auto& [composite, expected] : cases) {
    const std::vector<double> found = constantsOf(composite, materials);
    for (std::size_t i = 0; i < 7; ++i) EXPECT_NEAR(found[i], expected[i], i == 2 || i == 3 ? 5.1e-7 : 5.1e-5) << i;
  }
}

TEST(ShortFibreLayer, ElasticConstants) {
  using Case = std::array<double, 5>;
  const Material matrix = isotropicMaterial(3000.0, 0.35);
  const Composite composite = shortFibre(1, 2, 0.5, 0.2, 0.3);
  const auto fibre = [](double length) {
    return isotropicMaterial(500.0e3, 0.2, {{slot::fibreRadius, 1.0}, {slot::fibreLength, length}});
  };
  for (const auto& [length, N, E, nu, G] :
       {Case{50.0, 0.7768307, 80725.2107, 0.2088828, 33388.353}, Case{1000.0, 0.9888458, 101559.7318, 0.0, 0.0}}) {
    const double transfers = transferLengths(composite.layers[0], fibre(length), matrix);
    const std::vector<double> found = constantsOf(composite, {matrix, fibre(length)});

    EXPECT_NEAR(transfers / length, 0.09849339, 5.0e-9);
    EXPECT_NEAR(NPARORI(transfers), N, 5.0e-8);
    EXPECT_NEAR(found[0], E, 5.0e-5);
    if (nu != 0.0) {
      EXPECT_NEAR(found[2], nu, 5.0e-8);
      EXPECT_NEAR(found[4], G, 5.0e-4);
    }
  }
  EXPECT_THROW(constantsOf(composite, {matrix, fibre(10.0)}), InputFault);
  EXPECT_NEAR(NPARORI(700.1), NPARORI(699.9), 1.0e-6);
  EXPECT_NEAR(NPARORI(800.0), 1.0 - std::log(3.0) / 800.0, 1.0e-15);
}

/// A law that always carries its yield stress, in all components: two of them never agree.
void stubbornLaw(const LawInput<6>& input, LawState& state, LawResult<6>& result) {
  result.SGTOT.values.fill(input.at.material(slot::yieldStress));
  state.INTVAR[internal::elasticFlag] = 1.0;
}

TEST(MixedLayers, StopWithTheirWordsAndBothComponentsWhenNoStressIsCommon) {
  const std::vector<Material> materials{isotropicMaterial(3000.0, 0.3, {{slot::yieldStress, 1.0}}),
                                        isotropicMaterial(70.0e3, 0.2, {{slot::yieldStress, 2.0}})};
  const std::vector<ElasticMaterial<6>> elastic{MODPS<6>(materials[0], 1, std::nullopt),
                                                MODPS<6>(materials[1], 2, std::nullopt)};
  PointStore points(6, std::vector{2, 2, 2}, std::vector{6, 6, 6});
  const PassContext pass;
  const PointGeometry geometry{.dV = 0.125, .NTYPE = 6};
  const LawFunction<6> law = stubbornLaw;
  CompositePlan<6> plan;
  plan.layers.resize(2);
  plan.layers[0].kind = LayerKind::serialParallel;
  plan.layers[0].components = {{1, 1, 0.4, law}, {2, 2, 0.6, law}};
  plan.layers[0].rule = SerialParallelRule<6>(alongX(6), 0.4, 0.6);
  plan.layers[1].kind = LayerKind::shortFibre;
  plan.layers[1].components = {
      {1, 1, 0.5, law}, {2, 2, 0.2, law}, {1, 3, 0.3, law}, {2, 4, 0.2, law}, {1, 5, 0.3, law}};
  plan.layers[1].rule = SerialParallelRule<6>::serial(0.6, 0.4);
  (void)elasticMeanOf<6>(plan, elastic, materials);
  const LayerInput<6> input{pass, geometry, points, 2, 1, 3, materials, elastic, {someStrain, someStrain, {}}};

  const std::array words{"NO CONVERGENCE REACHED IN SP RoM", "NO CONVERGENCE REACHED IN NT RoM"};
  const std::array ends{endOf([&] { return SP_MNGER(plan.layers[0], input); }),
                        endOf([&] { return NT_MNGER(plan.layers[1], input); })};
  for (const std::size_t i : {0U, 1U}) {
    const std::string place = " 3.0 2.0element 3, point 2, layer 4: after 160 iterations";
    EXPECT_THAT(ends[i], testing::StartsWith(std::string("run end ") + words[i] + place));
    EXPECT_THAT(ends[i], testing::HasSubstr("\n  matrix, material 1, law 0 \"ELASTIC\":"));
    EXPECT_THAT(ends[i], testing::HasSubstr("\n  fibre, material 2, law 0 \"ELASTIC\":"));
  }
}

/// A material of a law; E sets its strengths too: first yield or damage in compression comes at a strain of 0.01.
Material sampleOf(Law law, double E) {
  const double f = 0.01 * E, g = 0.1 * f, Ep = 0.4 * E, Hk = 0.1 * E;
  const double peak = law == Law::tensionCompressionDamageAlternative ? 0.3 * f : 1.0;
  const Slots slots{{7, f},    {30, f},   {8, 1.0},   {9, 1.0}, {10, peak}, {12, 1.0}, {14, 1.0},
                    {20, 1.0}, {26, 1.0}, {31, 1.0},  {11, f},  {17, f},    {13, g},   {19, g},
                    {54, g},   {49, Ep},  {50, 10.0}, {32, Hk}, {34, 1.0}};
  return isotropicMaterial(E, 0.3, slots, plasticCodes(Criterion::vonMises, law));
}

/// The upper triangle F with F^T F = I + 2 E: a deformation gradient that goes with a Green-Lagrange strain.
Matrix<3> gradientOf(const Strain<6>& E) {
  Matrix<3> F;
  F(0, 0) = std::sqrt(1.0 + 2.0 * E[0]);
  F(0, 1) = E[2] / F(0, 0);
  F(0, 2) = E[4] / F(0, 0);
  F(1, 1) = std::sqrt(1.0 + 2.0 * E[1] - F(0, 1) * F(0, 1));
  F(1, 2) = (E[5] - F(0, 1) * F(0, 2)) / F(1, 1);
  F(2, 2) = std::sqrt(1.0 + 2.0 * E[3] - F(0, 2) * F(0, 2) - F(1, 2) * F(1, 2));
  return F;
}

/// One element of each composite, updated along histories of strain.
template <int N>
struct History {
  History(const std::vector<Material>& materials, const std::vector<Composite>& composites)
      : model(pointModel<N>(materials, composites)), block(model) {
    model.increment.TOLER = 1.0e-6;
    model.increment.DTIME = 1.0;
    for (ElementData& element : model.mesh.elements) element.FRACL = 1.0;
    block.ZERO(model);
    block.IMPORTINFON1(model);
  }
  Stress<N> stress(int e, const Strain<N>& strain) {
    const auto before = Strain<N>::from(std::as_const(model.points).mechanical(StateSlot::committed, e, 0, 0), N);
    PointUpdate<N> update{.e = e, .STRAT = strain, .STRAN = strain - before, .VSTRAT = {}, .dV = 0.125};
    if constexpr (N == 6) update.F = gradientOf(strain);
    const auto result = block.RESI2D(model, update);
    sums = result.sums;
    return result.STRSG;
  }
  std::span<double> state(int e, int component = 0) { return model.points.internal(StateSlot::trial, e, 0, component); }
  Matrix<N> tangent(int e) { return OBCTAN<N>(state(e), {}); }
  Matrix<N> difference(int e, const Strain<N>& strain, double h) {
    return differences<N>([this, e](const Strain<N>& at) { return stress(e, at); }, strain, h);
  }

  Model model;
  ConstitutiveBlock<N> block;
  EnergySums sums;  // of the last update
};

/// Strains that wander, and turn back from time to time.
template <int N>
class Wanderer {
 public:
  Strain<N> next() {
    std::uniform_real_distribution<double> part(-0.004, 0.004);
    for (double& value : strain_.values) value += part(numbers_);
    if (++steps_ % 8 == 0) strain_ *= 0.4;
    return strain_;
  }

 private:
  std::mt19937 numbers_{7};
  Strain<N> strain_;
  int steps_ = 0;
};

// All but the law of dynamic load steps and those that are other names of elasticity.
constexpr std::array<int, 15> laws{0, 1, 2, 3, 4, 5, 6, 8, 9, 10, 11, 12, 13, 18, 19};

/// Whether the tangent of a law is the derivative of its stress: that of the viscous laws is elastic, that of a return
/// in several steps is the one of an infinitely small step, and the Hessian of law 10 comes from differences.
bool derives(Law law) {
  return law == Law::elastic || law == Law::backwardEuler || law == Law::simpleDamage || law == Law::generalDamage ||
         law == Law::tensionCompressionDamage || law == Law::tensionCompressionDamageAlternative;
}

/// Components in series carry one stress, along the fibre one strain; together they have the strain of their layer.
template <int N>
void expectShares(const Model& model, Strain<N> strain, const Rotation<N>& axes) {
  const auto record = [&model](int component) { return model.points.mechanical(StateSlot::trial, 0, 0, component); };
  const MechanicalPlaces at{N};
  const auto ofMatrix = Strain<N>::from(record(1), at.STRAT()), ofFibre = Strain<N>::from(record(2), at.STRAT());
  auto stress = Stress<N>::from(record(1), at.STRSG()), ofBoth = Stress<N>::from(record(2), at.STRSG());
  stress[0] = ofBoth[0] = 0.0;
  ROTV(strain, axes, Direction::toLocal);
  EXPECT_LT(distance(stress, ofBoth), 1.0e-6);
  EXPECT_NEAR(ofMatrix[0], ofFibre[0], 1.0e-15);
  EXPECT_LT(distance(0.4 * ofMatrix + 0.6 * ofFibre, strain), 1.0e-15);
}

template <int N>
void checkPair(Law ofMatrix, Law ofFibre) {
  SCOPED_TRACE(testing::Message() << "laws " << static_cast<int>(ofMatrix) << " and " << static_cast<int>(ofFibre));
  Composite turned = serialParallel(1, 2, 0.4, alongX(N));
  turned.layers[0].LAEULER = {30.0, 0.0, 0.0};
  const Material fibre = with(sampleOf(ofFibre, 40.0e3), {{slot::fibreRadius, 1.0}, {slot::fibreLength, 50.0}});
  History<N> history({sampleOf(ofMatrix, 3.0e3), fibre}, {turned, shortFibre(1, 2, 0.5, 0.2, 0.3)});
  Wanderer<N> wanderer;
  for (int step = 0; step < 24; ++step) {
    const Strain<N> strain = wanderer.next();
    for (const int e : {0, 1}) {
      for (const double value : history.stress(e, strain).values) EXPECT_TRUE(std::isfinite(value));
      for (const double value : history.state(e)) EXPECT_TRUE(std::isfinite(value));
      for (std::size_t i = 0; e == 0 && i < internal::elasticFlag; ++i)
        EXPECT_DOUBLE_EQ(history.state(0)[i], 0.4 * history.state(0, 1)[i] + 0.6 * history.state(0, 2)[i]);
      if (history.state(e)[internal::elasticFlag] == 0.0 && derives(ofMatrix) && derives(ofFibre)) {
        const Matrix<N> C = history.tangent(e);
        EXPECT_LT(distance(C, history.difference(e, strain, 1.0e-7)), 1.0e-6 * history.block.elasticMatrix(e)(0, 0));
      }
      (void)history.stress(e, strain);
    }
    expectShares<N>(history.model, strain, Rotation<N>(turned.layers[0].LAEULER));
    history.model.points.commit();
  }
}

TEST(MixedHistory, AllPairsOfLawsStayFiniteWithTangentsThatAreDerivatives) {
  for (const int ofMatrix : laws) {
    for (const int ofFibre : laws) {
      checkPair<6>(Law{ofMatrix}, Law{ofFibre});
      checkPair<4>(Law{ofMatrix}, Law{ofFibre});
    }
  }
}

template <int N>
void checkReductions(Law law) {
  SCOPED_TRACE(testing::Message() << "law " << static_cast<int>(law) << ", components " << N);
  const std::array<double, 3> angles = N == 6 ? std::array{25.0, 40.0, -70.0} : std::array{25.0, 0.0, 0.0};
  const auto twin = serialParallel(1, 2, 0.4, alongX(N));
  Composite turned = twin;
  turned.layers[0].LAEULER = angles;
  const Material fibre = orthotropicMaterial({{slot::angleAboutY, 20.0}});  // with axes of its own
  const Material matrix = sampleOf(law, 50.0);
  History<N> history({matrix, fibre}, {plainComposite(1), serialParallel(1, 1, 0.3, alongX(N)),
                                       oneLayer(LayerKind::parallel, {{1, 0.4}, {2, 0.6}}),
                                       serialParallel(1, 2, 0.4, std::vector<int>(N, 1)), twin, turned});
  const Rotation<N> axes(angles);
  Wanderer<N> wanderer;
  for (int step = 0; step < 24; ++step) {
    const Strain<N> strain = wanderer.next();
    Strain<N> local = strain;
    ROTV(local, axes, Direction::toLocal);
    const Stress<N> shared = history.stress(2, strain), plain = history.stress(0, strain);
    const double work = history.sums.work;
    Stress<N> ofTwin = history.stress(4, local);
    ROTV(ofTwin, axes, Direction::toGlobal);

    EXPECT_LT(distance(history.stress(1, strain), plain), 1.0e-12);  // equal components
    EXPECT_NEAR(history.sums.work, work, 1.0e-12);
    EXPECT_LT(distance(history.stress(3, strain), shared), 1.0e-12);  // all strains parallel
    EXPECT_LT(distance(history.stress(5, strain), ofTwin), 1.0e-10);
    Matrix<N> C = history.tangent(4);
    ROTM(C, axes, Direction::toGlobal);
    EXPECT_LT(distance(history.tangent(1), history.tangent(0)), 1.0e-9);
    EXPECT_LT(distance(history.tangent(3), history.tangent(2)), 1.0e-9);
    EXPECT_LT(distance(history.tangent(5), C), 1.0e-8);
    history.model.points.commit();
  }
}

TEST(MixedHistory, EqualComponentsParallelFlagsAndTurnedAxes) {
  for (const int law : laws) {
    checkReductions<6>(Law{law});
    checkReductions<4>(Law{law});
  }
}

TEST(MixedHistory, TangentOfLargeStrainInTheCurrentConfigurationIsTheDerivative) {
  for (const Law law : {Law::elastic, Law::backwardEuler, Law::generalDamage}) {
    const Material fibre = isotropicMaterial(40.0e3, 0.2, {{slot::fibreRadius, 1.0}, {slot::fibreLength, 50.0}});
    Composite turned = serialParallel(1, 2, 0.4, alongX(6));
    turned.layers[0].LAEULER = {30.0, 20.0, 10.0};
    History<6> history({sampleOf(law, 3.0e3), fibre}, {turned, shortFibre(1, 2, 0.5, 0.2, 0.3)});
    history.model.control.LARGE = 1;
    history.model.control.KPUSH = history.model.control.KTANP = 2;
    history.block.IMPORTINFON1(history.model);
    const Strain<6> strain{{0.01, 0.03, 0.02, -0.01, 0.015, -0.02}};
    for (const int e : {0, 1}) {
      (void)history.stress(e, strain);
      const Matrix<6> C = history.tangent(e);
      EXPECT_LT(distance(C, history.difference(e, strain, 1.0e-7)), 1.0e-6 * C(0, 0)) << static_cast<int>(law) << e;
    }
  }
}

}  // namespace
}  // namespace zema
