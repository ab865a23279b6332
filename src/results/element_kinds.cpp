// Sorting of elements by node and point counts.
#include "results/element_kinds.h"

#include <algorithm>

#include "results/columns.h"

namespace zema {
namespace {

ElementKind makeKind(const Kernel& kernel, const ElementData& element) {
  ElementKind kind;
  kind.NNODE = element.NNODE;
  kind.NGAUS = element.NGAUS;
  kind.walk = pointWalk(kernel, element);
  for (const PointIndex point : kind.walk) kind.pointNumbers.push_back(kernel.pointNumber(element, point));
  const PostProfile& post = kernel.results().post;
  std::string typeWord;
  std::string gaussWord;
  if (const ElementShape* shape = findShape(post, element.NNODE)) {
    typeWord = shape->typeWord;
    gaussWord = '"' + std::string(shape->gaussStem) + std::to_string(kind.walk.size()) + '"';
  }
  kind.typeWord = leftInColumns(typeWord, post.wordColumns);
  kind.gaussWord = leftInColumns(gaussWord, post.wordColumns);
  return kind;
}

ElementKind& kindOf(std::vector<ElementKind>& kinds, const Kernel& kernel, const ElementData& element) {
  const auto found = std::ranges::find_if(kinds, [&element](const ElementKind& kind) { return kind.holds(element); });
  return found != kinds.end() ? *found : kinds.emplace_back(makeKind(kernel, element));
}

}  // namespace

const ElementShape* findShape(const PostProfile& post, int NNODE) {
  const auto found = std::ranges::find(post.shapes, NNODE, &ElementShape::NNODE);
  return found != post.shapes.end() ? &*found : nullptr;
}

std::vector<PointIndex> pointWalk(const Kernel& kernel, const ElementData& element) {
  const ElementSizes sizes = kernel.TYPE(element.NTYPE, element.NNODE, element.NGAUS);
  const ElementShape* shape = findShape(kernel.results().post, element.NNODE);
  if (shape != nullptr && static_cast<int>(shape->walk.size()) == sizes.points())
    return {shape->walk.begin(), shape->walk.end()};
  std::vector<PointIndex> walk;
  for (int i = 1; i <= sizes.NGAU1; ++i)
    for (int j = 1; j <= sizes.NGAU2; ++j)
      for (int k = 1; k <= sizes.NGAU3; ++k) walk.push_back({i, j, k});
  return walk;
}

std::vector<ElementKind> elementKinds(const Model& model, const Kernel& kernel) {
  std::vector<ElementKind> kinds;
  if (model.mesh.elements.empty()) return kinds;
  kinds.push_back(makeKind(kernel, model.mesh.elements.back()));
  for (int e = 0; e < model.mesh.NELEM(); ++e) kindOf(kinds, kernel, model.mesh.element(e)).elements.push_back(e);
  return kinds;
}

}  // namespace zema
