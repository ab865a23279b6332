// The sizes of an element of the mesh, as its kernel gives them.
#pragma once

#include "model/kernel.h"

namespace zema {

/// `TYPE` of an element of the mesh.
[[nodiscard]] inline ElementSizes sizesOf(const Kernel& kernel, const ElementData& element) {
  return kernel.TYPE(element.NTYPE, element.NNODE, element.NGAUS);
}

/// The last element, which every loop over the elements leaves behind; some cards and texts go by it.
[[nodiscard]] inline const ElementData& lastElement(const Mesh& mesh) {
  return mesh.elements.back();
}

}  // namespace zema
