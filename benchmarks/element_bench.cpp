// Stiffness and residual of solid elements, beside a stiffness by plain loops over the whole strain-displacement
// matrix.
#include <benchmark/benchmark.h>

#include <random>

#include "constitutive/sample_materials.h"
#include "element/element_stiffness.h"
#include "element/jacobian.h"
#include "element/reference_points.h"
#include "element/strain_measures.h"
#include "kernel/solid_model.h"

namespace {

using namespace zema;

/// A crooked brick with a general D and a general stress.
struct Brick {
  Matrix<8, 3> ELCOD{{0, 0, 0, 1.1, 0.05, -0.1, 1, 1, 0, 0, 1, 0.1, 0, 0, 1, 1, 0, 1, 0.9, 1.2, 1.1, -0.1, 0.9, 1.2}};
  Matrix<8, 3> positions = ELCOD;
  Matrix<6> D;
  Stress<6> S;
  ReferencePoints<3, 8> points;

  Brick() {
    ElementData element;
    element.NNODE = 8;
    element.NGAUS = 2;
    element.NINTE = 1;
    points = referencePoints<3, 8>(pointLoop(RuleTable::solid, element, {.NGAU1 = 2, .NGAU2 = 2, .NGAU3 = 2}));
    std::mt19937 generator(1);
    std::uniform_real_distribution<double> number(-1.0, 1.0);
    for (double& value : D.values) value = number(generator);
    for (double& value : S.values) value = number(generator);
    for (double& value : positions.values) value += 0.1 * number(generator);
  }
};

// Rows of B and of D B in full, no use of their zeros.
void plainLoops(const Brick& brick, std::span<double> ESTIF) {
  std::fill(ESTIF.begin(), ESTIF.end(), 0.0);
  for (const ReferencePoint<3, 8>& point : brick.points) {
    Matrix<3, 8> N;
    const double dV = JACOB(point.shape.DERIV, brick.ELCOD, 1, N) * point.weight;
    Matrix<6, 24> B;
    for (int a = 0; a < 8; ++a) {
      B(0, 3 * a) = B(2, 3 * a + 1) = B(4, 3 * a + 2) = N(0, a);
      B(2, 3 * a) = B(1, 3 * a + 1) = B(5, 3 * a + 2) = N(1, a);
      B(4, 3 * a) = B(5, 3 * a + 1) = B(3, 3 * a + 2) = N(2, a);
    }
    const Matrix<6, 24> DB = PROMA1(brick.D, B);
    for (std::size_t i = 0; i < 24; ++i)
      for (std::size_t k = 0; k < 6; ++k)
        for (std::size_t j = 0; j < 24; ++j) ESTIF[24 * i + j] += dV * B.values[24 * k + i] * DB.values[24 * k + j];
  }
}

void stiffnessByPlainLoops(benchmark::State& state) {
  Brick brick;
  std::array<double, 576> ESTIF{};
  for (auto _ : state) {
    benchmark::DoNotOptimize(brick);
    plainLoops(brick, ESTIF);
    benchmark::DoNotOptimize(ESTIF);
  }
}
BENCHMARK(stiffnessByPlainLoops);

void stiffness(benchmark::State& state) {
  Brick brick;
  std::array<double, 576> ESTIF{};
  for (auto _ : state) {
    benchmark::DoNotOptimize(brick);
    StiffnessSum<Kinematics<3>, 8> sum;
    for (const ReferencePoint<3, 8>& point : brick.points) {
      Matrix<3, 8> CARTD;
      const double dV = JACOB(point.shape.DERIV, brick.ELCOD, 1, CARTD) * point.weight;
      sum.add(CARTD, brick.D, dV);
    }
    sum.writeTo(ESTIF);
    benchmark::DoNotOptimize(ESTIF);
  }
}
BENCHMARK(stiffness);

void stiffnessWithGeometricTerm(benchmark::State& state) {
  Brick brick;
  std::array<double, 576> ESTIF{};
  for (auto _ : state) {
    benchmark::DoNotOptimize(brick);
    StiffnessSum<Kinematics<3>, 8> sum;
    for (const ReferencePoint<3, 8>& point : brick.points) {
      Matrix<3, 8> CARTD;
      const double dV = JACOB(point.shape.DERIV, brick.ELCOD, 1, CARTD) * point.weight;
      sum.add(CARTD, brick.D, GRADEF(brick.positions, CARTD), brick.S, dV);
    }
    sum.writeTo(ESTIF);
    benchmark::DoNotOptimize(ESTIF);
  }
}
BENCHMARK(stiffnessWithGeometricTerm);

/// Elements of the unit cube, all alike but each with its own records, with a small displacement.
struct Elements {
  Model model;
  std::unique_ptr<Kernel> kernel = makeSolid3D();
  int count;

  Elements(const std::vector<int>& nodes, int number, int LARGE) : count(number) {
    model = test::solidModel(test::cubeNodes, std::vector(static_cast<std::size_t>(number), nodes),
                             isotropicMaterial(1000.0, 0.25));
    model.control.LARGE = LARGE;
    kernel->prepare(model);
    kernel->IMPORTINFON1(model);
    test::setField(model, 0, [](const test::Point& x) {
      return test::Point{0.01 * x[0] + 0.02 * x[1] * x[2], 0.003 * x[1], 0.002 * x[0] * x[2]};
    });
    for (int e = 0; e < count; ++e) kernel->RESIDU(model, e);
    model.loop.IITER = 2;
  }
};

const std::vector<int> brickNodes{1, 2, 3, 4, 5, 6, 7, 8};
const std::vector<int> tetrahedronNodes{1, 2, 4, 5};

// Arguments: number of elements that are visited in turn, LARGE.
template <const std::vector<int>& nodes>
void kernelStiffness(benchmark::State& state) {
  Elements elements(nodes, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  std::vector<double> ESTIF(576);
  int e = 0;
  for (auto _ : state) {
    elements.kernel->RIGI(elements.model, e, ESTIF);
    benchmark::DoNotOptimize(ESTIF.data());
    if (++e == elements.count) e = 0;
  }
}
BENCHMARK(kernelStiffness<brickNodes>)->ArgsProduct({{1, 1000}, {0, 1}});
BENCHMARK(kernelStiffness<tetrahedronNodes>)->ArgsProduct({{1, 1000}, {0, 1}});

template <const std::vector<int>& nodes>
void kernelResidual(benchmark::State& state) {
  Elements elements(nodes, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  int e = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(elements.kernel->RESIDU(elements.model, e));
    if (++e == elements.count) e = 0;
  }
}
BENCHMARK(kernelResidual<brickNodes>)->ArgsProduct({{1, 1000}, {0, 1}});
BENCHMARK(kernelResidual<tetrahedronNodes>)->ArgsProduct({{1, 1000}, {0, 1}});

}  // namespace
