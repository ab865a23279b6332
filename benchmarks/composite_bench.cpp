// Cost of a point of a mixed layer: strain in, stress, tangent and trial records of all components out.
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "composite/constitutive_block.h"
#include "constitutive/sample_materials.h"
#include "point_loop.h"

namespace zema {
namespace {

Layer layerOf(LayerKind kind, const std::vector<Component>& components) {
  Layer layer;
  layer.kind = kind;
  layer.PVLAY = 1.0;
  layer.components = components;
  layer.SPDFLAG = {1, 0, 0, 0, 0, 0};
  return layer;
}

/// Elements of eight points, as of a mesh of bricks, of one layer of a soft matrix (material 1) and a stiff fibre (2).
Model bricks(int elements, const Layer& layer) {
  Model model;
  model.NSTR1 = 6;
  Material fibre = isotropicMaterial(72000.0, 0.22);
  fibre(slot::fibreRadius) = 1.0;
  fibre(slot::fibreLength) = 100.0;
  model.materials.all = {isotropicMaterial(3500.0, 0.35), fibre};
  const int NUMAT = static_cast<int>(layer.components.size()) + 1;
  model.composites.all = {{{layer}, NUMAT, {}}};
  ElementData element;
  element.MATNO[0] = 1;
  element.NTYPE = 6;
  model.mesh.elements.assign(static_cast<std::size_t>(elements), element);
  model.increment.KALGO = 2;
  model.points = PointStore(6, std::vector<int>(static_cast<std::size_t>(elements), 8),
                            std::vector<int>(static_cast<std::size_t>(elements), NUMAT));
  return model;
}

/// Damage by the norm of the principal stresses, which begins at a stress of 1.
void damageBeginsEarly(Material& material) {
  material.NCRIT = material.NCRIP = Criterion::damageSimoJu;
  material.NTINT = Law::simpleDamage;
  material(slot::damageStress) = 1.0 / std::sqrt(material(slot::youngX));  // of an energy norm
  material(slot::damageRatio) = 1.0;
  material(slot::damageFractureEnergy) = 0.01;
}

void runPoints(benchmark::State& state, const Layer& layer, bool damaged = false) {
  Model model = bricks(static_cast<int>(state.range(0)), layer);
  for (ElementData& element : model.mesh.elements) element.FRACL = 1.0;
  if (damaged) damageBeginsEarly(model.materials(1));
  timePoints(state, model);
}

BENCHMARK_CAPTURE(runPoints, parallelOfOne, layerOf(LayerKind::parallel, {{1, 1.0, 1}}))->Arg(1)->Arg(5000);
BENCHMARK_CAPTURE(runPoints, parallelOfTwo, layerOf(LayerKind::parallel, {{1, 0.4, 1}, {2, 0.6, 2}}))
    ->Arg(1)
    ->Arg(5000);
BENCHMARK_CAPTURE(runPoints, serialParallel, layerOf(LayerKind::serialParallel, {{1, 0.4, 1}, {2, 0.6, 2}}))
    ->Arg(1)
    ->Arg(5000);
BENCHMARK_CAPTURE(runPoints, serialParallelDamaged, layerOf(LayerKind::serialParallel, {{1, 0.4, 1}, {2, 0.6, 2}}),
                  true)
    ->Arg(1);
BENCHMARK_CAPTURE(runPoints, shortFibre,
                  layerOf(LayerKind::shortFibre, {{1, 0.5, 1}, {2, 0.2, 2}, {1, 0.3, 3}, {2, 0.0, 4}, {1, 0.0, 5}}))
    ->Arg(1);

}  // namespace
}  // namespace zema
