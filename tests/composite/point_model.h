// A model of single elements with one point each, to run the constitutive block on.
#pragma once

#include <utility>
#include <vector>

#include "composite/constitutive_block.h"

namespace zema {

/// A composite of one layer of these materials (numbers from 1) and shares; SPDFLAG: of a serial-parallel layer.
inline Composite oneLayer(LayerKind kind, const std::vector<std::pair<int, double>>& shares,
                          const std::vector<int>& SPDFLAG = {}) {
  Composite composite{.layers = {{"P", kind, 1.0, {}, {}, SPDFLAG}}, .NUMAT = 1, .ELECOM = {}};
  for (const auto& [material, share] : shares)
    composite.layers[0].components.push_back({material, share, composite.NUMAT++});
  return composite;
}
inline Composite plainComposite(int material) {
  return oneLayer(LayerKind::parallel, {{material, 1.0}});
}
/// One serial-parallel layer; a flag for each strain component, 1 for a parallel one.
inline Composite serialParallel(int matrix, int fibre, double km, const std::vector<int>& SPDFLAG) {
  return oneLayer(LayerKind::serialParallel, {{matrix, km}, {fibre, 1.0 - km}}, SPDFLAG);
}
/// One short-fibre layer of shares f1 | f2 | f3, whose plain share is of the matrix.
inline Composite shortFibre(int matrix, int fibre, double f1, double f2, double f3) {
  return oneLayer(LayerKind::shortFibre, {{matrix, f1}, {fibre, f2}, {matrix, f3}, {fibre, 0.0}, {matrix, 0.0}});
}

/// An element of each composite, one point each, in a static run.
template <int N>
Model pointModel(const std::vector<Material>& materials, const std::vector<Composite>& composites) {
  Model model;
  model.NSTR1 = N;
  model.materials.all = materials;
  model.composites.all = composites;
  std::vector<int> points, components;
  for (int composite = 1; composite <= static_cast<int>(composites.size()); ++composite) {
    ElementData element;
    element.MATNO[0] = composite;
    element.NTYPE = N == 6 ? 6 : 4;
    element.IFASE = 1;
    model.mesh.elements.push_back(element);
    points.push_back(1);
    components.push_back(model.composites(composite).NUMAT);
  }
  model.loadStep.ACTIV = {1};
  model.increment.KALGO = 2;
  model.loop.ILOAD = model.loop.INCRE = model.loop.IITER = model.loop.KRESL = 1;
  model.points = PointStore(N, points, components);
  return model;
}

}  // namespace zema
