// Mixed layers of components that are not elastic, through random histories.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "composite/point_model.h"
#include "constitutive/sample_materials.h"
#include "foundation/distance.h"

namespace zema {
namespace {

/// A material of a law; E sets its strengths too: first yield or damage in compression comes at a strain of 0.01.
Material sampleOf(Law law, double E) {
  const double f = 0.01 * E, g = 0.1 * f, Ep = 0.4 * E, Hk = 0.1 * E;
  const double peak = law == Law::tensionCompressionDamageAlternative ? 0.3 * f : 1.0;
  const Slots slots{{7, f},    {30, f},   {8, 1.0},   {9, 1.0}, {10, peak}, {12, 1.0}, {14, 1.0},
                    {20, 1.0}, {26, 1.0}, {31, 1.0},  {11, f},  {17, f},    {13, g},   {19, g},
                    {54, g},   {49, Ep},  {50, 10.0}, {32, Hk}, {34, 1.0}};
  Material material = isotropicMaterial(E, 0.3, slots);
  material.NTINT = law;
  material.NFLUG = Flow::variable;
  material.NHARD = HardeningVariable::strain;
  material.NMATX = TangentChoice::algorithmic;
  return material;
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
      : model(pointModel<N>(materials, composites, elements(composites.size()))), block(model) {
    model.increment.TOLER = 1.0e-6;
    model.increment.DTIME = 1.0;
    for (ElementData& element : model.mesh.elements) element.FRACL = 1.0;
    block.ZERO(model);
    block.IMPORTINFON1(model);
  }
  static std::vector<std::pair<int, std::array<double, 3>>> elements(std::size_t count) {
    std::vector<std::pair<int, std::array<double, 3>>> all;
    for (std::size_t c = 1; c <= count; ++c) all.push_back({static_cast<int>(c), {}});
    return all;
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

template <int N>
std::vector<int> fibreAlongX() {
  std::vector<int> flags(N, 0);
  flags[0] = 1;
  return flags;
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
  Composite turned = serialParallel(1, 2, 0.4, fibreAlongX<N>());
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
  const auto twin = serialParallel(1, 2, 0.4, fibreAlongX<N>());
  Composite turned = twin, parallel = plainComposite(1);
  turned.layers[0].LAEULER = angles;
  parallel.layers[0].components = {{1, 0.4, 1}, {2, 0.6, 2}};
  parallel.NUMAT = 3;
  const Material fibre = orthotropicMaterial({{slot::angleAboutY, 20.0}});  // with axes of its own
  const Material matrix = sampleOf(law, 50.0);
  History<N> history({matrix, fibre}, {plainComposite(1), serialParallel(1, 1, 0.3, fibreAlongX<N>()), parallel,
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
    Composite turned = serialParallel(1, 2, 0.4, fibreAlongX<6>());
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
