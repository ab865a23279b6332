// The element cards.
#pragma once

namespace zema {

class Kernel;
struct Job;
struct Model;

/// Reads the NELEM element cards into model.mesh (elements, LNODS) and into the element lists of
/// model.composites, echoes and checks each. Node numbers stay as the deck gives them, any value included.
/// Returns whether the last two cards agree in NTYPE. Throws InputFault, RunEnd.
[[nodiscard]] bool readElements(Job& job, Model& model, const Kernel& kernel);

}  // namespace zema
