// The kinds of elements in a model: each is one mesh and one point rule of the post files.
#pragma once

#include <string>
#include <vector>

#include "model/kernel.h"
#include "results/result_profile.h"

namespace zema {

/// The elements that share node and point counts.
struct ElementKind {
  int NNODE = 0;                  ///< nodes of each element
  int NGAUS = 0;                  ///< integration points per direction
  std::string typeWord;           ///< padded to its columns; blank for an unknown node count
  std::string gaussWord;          ///< the same of the point rule, in double quotes
  std::vector<PointIndex> walk;   ///< points in the order of their lines
  std::vector<int> pointNumbers;  ///< their numbers in the point store
  std::vector<int> elements;      ///< numbers from 0, ascending

  [[nodiscard]] bool holds(const ElementData& element) const {
    return element.NNODE == NNODE && element.NGAUS == NGAUS;
  }
};

/// The shape of a node count, or nullptr.
[[nodiscard]] const ElementShape* findShape(const PostProfile& post, int NNODE);

/// Points of an element in the order of their lines.
[[nodiscard]] std::vector<PointIndex> pointWalk(const Kernel& kernel, const ElementData& element);

/// All kinds of a model: that of the last element first, the others as the elements bring them.
[[nodiscard]] std::vector<ElementKind> elementKinds(const Model& model, const Kernel& kernel);

}  // namespace zema
