// Times the update of every point of a model of bricks.
#pragma once

#include <benchmark/benchmark.h>

#include "composite/constitutive_block.h"

namespace zema {

/// Updates the eight points of each element from one strain, again and again; an item is a point.
inline void timePoints(benchmark::State& state, Model& model) {
  const int elements = model.mesh.NELEM();
  ConstitutiveBlock<6> block(model);
  block.ZERO(model);
  block.IMPORTINFON1(model);
  const Strain<6> strain{{1.0e-3, -2.0e-4, 5.0e-4, 3.0e-4, -1.0e-4, 2.0e-4}};
  PointUpdate<6> update{.STRAT = strain, .STRAN = strain, .VSTRAT = {}, .dV = 0.125};
  for (auto _ : state) {
    for (update.e = 0; update.e < elements; ++update.e)
      for (update.point = 0; update.point < 8; ++update.point) benchmark::DoNotOptimize(block.RESI2D(model, update));
  }
  state.SetItemsProcessed(state.iterations() * elements * 8);
}

}  // namespace zema
