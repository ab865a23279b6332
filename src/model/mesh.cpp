// Look-ups in the mesh and in the element vectors.
#include "model/mesh.h"

#include <algorithm>

namespace zema {

namespace {
constexpr std::size_t vectorsOfAnElement = 6;

std::size_t at(int i) {
  return static_cast<std::size_t>(i);
}
}  // namespace

std::span<const int> Mesh::nodesOf(int e) const {
  return std::span(LNODS).subspan(at(e) * at(NNODM), at(std::min(element(e).NNODE, NNODM)));
}

std::span<const double> Mesh::coordinates(DeckNode node) const {
  return std::span(COORD).subspan(at(node.number - 1) * at(dimensions), at(dimensions));
}

int Mesh::firstPosition(WorkNode node) const {
  return lastDof[at(node.index)] - NDOFP[at(node.index)];
}

int Mesh::dofsOf(DeckNode node) const {
  return NDOFP[at(numbering.LPNTN(node).index)];
}

std::string describePosition(const Mesh& mesh, std::size_t position) {
  const auto after = std::upper_bound(mesh.lastDof.begin(), mesh.lastDof.end(), static_cast<int>(position));
  const WorkNode node{static_cast<int>(after - mesh.lastDof.begin())};
  return "node " + std::to_string(mesh.numbering.LPNINV(node).number) + ", degree of freedom " +
         std::to_string(static_cast<int>(position) - mesh.firstPosition(node) + 1);
}

ElementPositions::ElementPositions(const Mesh& mesh) {
  std::vector<int> deckFirst(at(mesh.NPOIN()) + 1, 0);
  for (int n = 1; n <= mesh.NPOIN(); ++n) {
    deckFirst[at(n)] = deckFirst[at(n) - 1] + mesh.dofsOf({n});
  }
  first_.push_back(0);
  for (int e = 0; e < mesh.NELEM(); ++e) {
    for (const int number : mesh.nodesOf(e)) {
      const DeckNode node{number};
      for (int d = 0; d < mesh.dofsOf(node); ++d) {
        work_.push_back(mesh.firstPosition(node) + d);
        deck_.push_back(deckFirst[at(number) - 1] + d);
      }
    }
    first_.push_back(static_cast<int>(work_.size()));
  }
}

std::span<const int> ElementPositions::slice(const std::vector<int>& all, int e) const {
  const int begin = first_[at(e)];
  return std::span(all).subspan(at(begin), at(first_[at(e) + 1] - begin));
}

ElementVectors::ElementVectors(int NELEM, int NEVAB, bool keepInitialLoads)
    : NEVAB_(NEVAB),
      values_(at(NELEM) * at(NEVAB) * vectorsOfAnElement),
      initial_(keepInitialLoads ? at(NELEM) * at(NEVAB) : 0) {}

std::span<double> ElementVectors::part(int e, int which) {
  return std::span(values_).subspan((at(e) * vectorsOfAnElement + at(which)) * at(NEVAB_), at(NEVAB_));
}

std::span<const double> ElementVectors::part(int e, int which) const {
  return std::span(values_).subspan((at(e) * vectorsOfAnElement + at(which)) * at(NEVAB_), at(NEVAB_));
}

std::span<double> ElementVectors::initialLoad(int e) {
  if (initial_.empty()) {
    return {};
  }
  return std::span(initial_).subspan(at(e) * at(NEVAB_), at(NEVAB_));
}

void ElementVectors::clear() {
  std::fill(values_.begin(), values_.end(), 0.0);
  std::fill(initial_.begin(), initial_.end(), 0.0);
}

}  // namespace zema
