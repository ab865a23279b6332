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

/// One serial-parallel layer; a flag for each strain component, 1 for a parallel one.
inline Composite serialParallel(int matrix, int fibre, double km, const std::vector<int>& SPDFLAG) {
  Layer layer;
  layer.kind = LayerKind::serialParallel;
  layer.PVLAY = 1.0;
  layer.components = {{matrix, km, 1}, {fibre, 1.0 - km, 2}};
  layer.SPDFLAG = SPDFLAG;
  return {{layer}, 3, {}};
}

/// One short-fibre layer of shares f1 | f2 | f3, whose plain share is of the matrix.
inline Composite shortFibre(int matrix, int fibre, double f1, double f2, double f3) {
  Layer layer;
  layer.kind = LayerKind::shortFibre;
  layer.PVLAY = 1.0;
  layer.components = {{matrix, f1, 1}, {fibre, f2, 2}, {matrix, f3, 3}, {fibre, 0.0, 4}, {matrix, 0.0, 5}};
  return {{layer}, 6, {}};
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
