// A model of solids that is made in memory, without a deck.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "composite/point_model.h"
#include "kernel/solid3d/solid3d.h"
#include "model/model.h"

namespace zema::test {

using Point = std::array<double, 3>;

/// A corner of the unit cube, nodes 1 to 8 in the order of a brick.
inline const std::vector<Point> cubeNodes{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                                          {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};

/// A model of one composite of one material, all elements active, in the first iteration of the first increment.
/// elements: node numbers from 1, 4 or 8 of them.
inline Model solidModel(const std::vector<Point>& nodes, const std::vector<std::vector<int>>& elements,
                        const Material& material) {
  Model model;
  model.NSTR1 = 6;
  model.control.NFASE = 2;
  Mesh& mesh = model.mesh;
  mesh.dimensions = 3;
  mesh.NNODM = 8;
  mesh.MDOFN = 3;
  mesh.numbering = NodeNumbering(static_cast<int>(nodes.size()));
  for (const Point& node : nodes) {
    mesh.COORD.insert(mesh.COORD.end(), node.begin(), node.end());
    mesh.NDOFP.push_back(3);
    mesh.lastDof.push_back(mesh.NTOTV += 3);
  }
  for (const std::vector<int>& list : elements) {
    ElementData element;
    element.MATNO = {1, 0, 0};
    element.NTYPE = 6;
    element.IFASE = 1;
    element.NNODE = static_cast<int>(list.size());
    element.NGAUS = list.size() == 4 ? 1 : 2;
    element.NINTE = 1;
    mesh.elements.push_back(element);
    mesh.LNODS.insert(mesh.LNODS.end(), list.begin(), list.end());
    mesh.LNODS.resize(mesh.elements.size() * 8, 0);
  }
  model.positions = ElementPositions(mesh);
  model.vectors = ElementVectors(mesh.NELEM(), 24, false);
  model.composites.all = {plainComposite(1)};
  model.materials.all = {material};
  model.working.TDISP.assign(3 * static_cast<std::size_t>(mesh.NTOTV), 0.0);
  model.loadStep.ACTIV = {1, 1};
  model.increment.KALGO = 2;
  model.loop.ILOAD = model.loop.INCRE = model.loop.IITER = model.loop.KRESL = 1;
  return model;
}

/// Sets a column of TDISP (0 displacement, 1 velocity) to values(x) at all nodes, values in three directions.
template <class Field>
void setField(Model& model, int column, const Field& values) {
  const auto NTOTV = static_cast<std::size_t>(model.mesh.NTOTV);
  for (std::size_t k = 0; k < NTOTV; k += 3) {
    const Point value = values(Point{model.mesh.COORD[k], model.mesh.COORD[k + 1], model.mesh.COORD[k + 2]});
    for (std::size_t i = 0; i < 3; ++i)
      model.working.TDISP[static_cast<std::size_t>(column) * NTOTV + k + i] = value[i];
  }
}

}  // namespace zema::test
