// Cost of a material law with its tangent: one update of one component beyond its elastic range.
#include <benchmark/benchmark.h>

#include <vector>

#include "constitutive/elastic_moduli.h"
#include "constitutive/initial_state.h"
#include "constitutive/law_table.h"
#include "constitutive/material_point.h"

namespace zema {
namespace {

/// E 200e3, strength 200, linear hardening or the exponential softening of the damage laws.
Material sample(Law law, Criterion criterion) {
  Material material;
  material.given = true;
  for (const int place : {slot::youngX, slot::youngY, slot::youngZ}) material(place) = 200.0e3;
  for (const int place :
       {slot::poissonXY, slot::poissonYX, slot::poissonXZ, slot::poissonZX, slot::poissonYZ, slot::poissonZY}) {
    material(place) = 0.3;
  }
  for (const int place : {slot::mapXX, slot::mapYY, slot::mapXY, slot::mapZZ, slot::mapXZ, slot::mapYZ,
                          slot::tensionCurve, slot::tensionPeakDissipation, slot::tensionPeakStress,
                          slot::tensionSlopeFlag, slot::yieldRatio, slot::potentialRatio, slot::damageRatio}) {
    material(place) = 1.0;
  }
  material.NCRIT = material.NCRIP = criterion;
  material.NTINT = law;
  material.NFLUG = Flow::variable;
  material.NHARD = HardeningVariable::strain;
  material.NMATX = TangentChoice::algorithmic;
  material(slot::yieldStress) = material(slot::damageStress) = 200.0;
  material(slot::tensionSlope) = material(slot::initialHardening) = 20.0e3;
  material(slot::kinematicExponent) = 1.0e-6;
  material(slot::damageFractureEnergy) = 10.0;
  return material;
}

void runLaw(benchmark::State& state, Law law, Criterion criterion) {
  const Material material = sample(law, criterion);
  const ElasticMaterial<6> elastic = MODPS<6>(material, 1, std::nullopt);
  const ComponentMaterial<6> component{material, elastic, lawOf<6>(material, 1)};
  PassContext pass;
  pass.KALGO = 2;
  pass.TOLER = 1.0e-3;
  PointGeometry geometry;
  geometry.FRACL = geometry.dV = 1.0;
  geometry.NTYPE = 6;
  std::vector<double> committed(MechanicalPlaces{6}.size(), 0.0), trial = committed;
  std::vector<double> internal(internal::count + 36, 0.0), trialInternal = internal;
  const auto initial = initialInternalVariables(material);
  std::copy(initial.begin(), initial.end(), internal.begin());
  const auto update = [&](const Strain<6>& strain) {
    const Strain<6> increment = strain - Strain<6>::from(committed, MechanicalPlaces{6}.STRAT());
    return MODUCO<6>(pass, geometry, {1, 1, 1, 1}, component, {strain, increment, {}},
                     {committed, internal, trial, trialInternal});
  };
  (void)update({{1.0e-3, -2.0e-4, 5.0e-4, -3.0e-4, -1.0e-4, 2.0e-4}});
  committed = trial;
  internal = trialInternal;
  Strain<6> strain{{1.2e-3, -3.0e-4, 5.5e-4, -3.0e-4, -1.3e-4, 2.2e-4}};
  for (auto _ : state) {
    benchmark::DoNotOptimize(strain);
    benchmark::DoNotOptimize(update(strain));
  }
  state.SetItemsProcessed(state.iterations());
}

BENCHMARK_CAPTURE(runLaw, elastic, Law::elastic, Criterion::vonMises);
BENCHMARK_CAPTURE(runLaw, backwardEulerVonMises, Law::backwardEuler, Criterion::vonMises);
BENCHMARK_CAPTURE(runLaw, backwardEulerDruckerPrager, Law::backwardEuler, Criterion::druckerPrager);
BENCHMARK_CAPTURE(runLaw, backwardEulerByDifferences, Law::backwardEulerNumeric, Criterion::vonMises);
BENCHMARK_CAPTURE(runLaw, correctorVonMises, Law::eulerCorrector, Criterion::vonMises);
BENCHMARK_CAPTURE(runLaw, correctorMohrCoulomb, Law::eulerCorrector, Criterion::mohrCoulomb);
BENCHMARK_CAPTURE(runLaw, subincrements, Law::subincrementing, Criterion::vonMises);
BENCHMARK_CAPTURE(runLaw, generalisedPlasticity, Law::kinematicHardening, Criterion::vonMises);
BENCHMARK_CAPTURE(runLaw, exponentialDamage, Law::simpleDamage, Criterion::vonMises);

}  // namespace
}  // namespace zema
