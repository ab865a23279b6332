// Cost of a material point: strain in, stress, tangent and trial records out.
#include <benchmark/benchmark.h>

#include <array>
#include <vector>

#include "composite/constitutive_block.h"
#include "constitutive/elastic_moduli.h"
#include "point_loop.h"

namespace zema {
namespace {

Material orthotropic(double Ex, double Ey, double nu) {
  Material material;
  material.given = true;
  material(slot::youngX) = Ex;
  material(slot::youngY) = material(slot::youngZ) = Ey;
  material(slot::poissonXY) = material(slot::poissonXZ) = nu;
  material(slot::poissonYX) = material(slot::poissonZX) = nu * Ey / Ex;
  material(slot::poissonYZ) = material(slot::poissonZY) = nu;
  for (const int place : {slot::mapXX, slot::mapYY, slot::mapXY, slot::mapZZ, slot::mapXZ, slot::mapYZ})
    material(place) = 1.0;
  material.NCRIT = material.NCRIP = Criterion::vonMises;
  return material;
}

/// Elements of eight points, as of a mesh of bricks, of one composite.
Model bricks(int elements, const Material& material, const std::array<double, 3>& elementAngles) {
  Model model;
  model.NSTR1 = 6;
  model.materials.all = {material};
  Layer layer;
  layer.kind = LayerKind::parallel;
  layer.PVLAY = 1.0;
  layer.components = {{1, 1.0, 1}};
  model.composites.all = {{{layer}, 2, {}}};
  ElementData element;
  element.MATNO[0] = 1;
  element.NTYPE = 6;
  element.EAEULER = elementAngles;
  model.mesh.elements.assign(static_cast<std::size_t>(elements), element);
  model.increment.KALGO = 2;
  model.points = PointStore(6, std::vector<int>(static_cast<std::size_t>(elements), 8),
                            std::vector<int>(static_cast<std::size_t>(elements), 2));
  return model;
}

void runPoints(benchmark::State& state, const Material& material, const std::array<double, 3>& elementAngles,
               int LARGE = 0) {
  Model model = bricks(static_cast<int>(state.range(0)), material, elementAngles);
  model.control.LARGE = LARGE;
  model.control.KPUSH = 2;
  model.control.KTANP = 1;
  timePoints(state, model);
}

/// The floor: one product of a 6 x 6 matrix and a vector.
void matrixVector(benchmark::State& state) {
  const Matrix<6> D = MODAN<6>(OrthotropicConstants::isotropic(200.0, 0.3));
  Strain<6> strain{{1.0e-3, -2.0e-4, 5.0e-4, 3.0e-4, -1.0e-4, 2.0e-4}};
  for (auto _ : state) {
    benchmark::DoNotOptimize(strain);
    benchmark::DoNotOptimize(CALTEN(D, strain));
  }
  state.SetItemsProcessed(state.iterations());
}

Material turned(Material material) {
  material(slot::angleAboutY) = 30.0;
  return material;
}

/// Exponential damage, loading at each update; the third criterion is the dearest.
Material damaged(Criterion criterion) {
  Material material = orthotropic(200.0, 200.0, 0.3);
  material.NTINT = Law::simpleDamage;
  material.NCRIT = criterion;
  material(slot::damageStress) = 0.05;
  material(slot::damageRatio) = material(slot::yieldRatio) = 2.0;
  material(slot::frictionAngle) = 0.5;
  material(slot::damageFractureEnergy) = 1.0;
  return material;
}

BENCHMARK(matrixVector);
BENCHMARK_CAPTURE(runPoints, exponentialDamageVonMises, damaged(Criterion::vonMises), {})->Arg(1)->Arg(20000);
BENCHMARK_CAPTURE(runPoints, exponentialDamageMohrCoulomb, damaged(Criterion::mohrCoulomb), {})->Arg(1);
BENCHMARK_CAPTURE(runPoints, isotropic, orthotropic(200.0, 200.0, 0.3), {})->Arg(1)->Arg(20000);
BENCHMARK_CAPTURE(runPoints, orthotropicByMaterialAngles, turned(orthotropic(200.0, 50.0, 0.3)), {})
    ->Arg(1)
    ->Arg(20000);
BENCHMARK_CAPTURE(runPoints, orthotropicByElementAngles, orthotropic(200.0, 50.0, 0.3), {30.0, 20.0, 10.0})->Arg(1);
BENCHMARK_CAPTURE(runPoints, currentConfiguration, orthotropic(200.0, 200.0, 0.3), {}, 1)->Arg(1);

}  // namespace
}  // namespace zema
