// A model of single elements with one point each, to run the constitutive block on.
#pragma once

#include <utility>
#include <vector>

#include "composite/constitutive_block.h"

namespace zema {

inline Composite plainComposite(int material) {
  Layer layer;
  layer.TYLAY = "P";
  layer.kind = LayerKind::parallel;
  layer.PVLAY = 1.0;
  layer.components = {{material, 1.0, 1}};
  return {{layer}, 2, {}};
}

/// Elements of a given composite (number from 1) and given angles, one point each, in a static run.
template <int N>
Model pointModel(const std::vector<Material>& materials, const std::vector<Composite>& composites,
                 const std::vector<std::pair<int, std::array<double, 3>>>& elements) {
  Model model;
  model.NSTR1 = N;
  model.materials.all = materials;
  model.composites.all = composites;
  std::vector<int> points, components;
  for (const auto& [composite, angles] : elements) {
    ElementData element;
    element.MATNO[0] = composite;
    element.EAEULER = angles;
    element.NTYPE = N == 6 ? 6 : 4;
    element.IFASE = 1;
    model.mesh.elements.push_back(element);
    points.push_back(1);
    components.push_back(model.composites(composite).NUMAT);
  }
  model.loadStep.ACTIV = {1};
  model.increment.KALGO = 2;
  model.loop.ILOAD = model.loop.INCRE = model.loop.IITER = 1;
  model.loop.KRESL = 1;
  model.points = PointStore(N, points, components);
  return model;
}

}  // namespace zema
