// Node numbers that a card may give as reals.
#pragma once

#include <cmath>
#include <string>

#include "foundation/card_reader.h"
#include "model/mesh.h"

namespace zema {

/// The next item as a node (deck number) that may be written as a real, 3 or 3.0; throws InputFault when it is none of
/// the mesh.
[[nodiscard]] inline int readNodeAsReal(CardReader& cards, const Mesh& mesh) {
  const double number = cards.real("node number");
  if (number != std::floor(number) || number < 1.0 || number > mesh.NPOIN()) {
    cards.fault("node number", number, "a node from 1 to " + std::to_string(mesh.NPOIN()));
  }
  return static_cast<int>(number);
}

}  // namespace zema
