// The section of the deck that describes the model: elements, composites, coordinates, materials, curves.
#pragma once

namespace zema {

class Kernel;
struct Job;
struct Model;

/// `INPU`: reads the model section of the deck into model.mesh, composites, materials and curves, echoes it on the
/// listing (not with the start word "START2"), checks it, and makes the degree-of-freedom positions, the element
/// vectors and the point store. Needs model.control and model.text. Throws InputFault for bad cards, RunEnd for a check
/// that fails.
void INPU(Job& job, Model& model, const Kernel& kernel);

}  // namespace zema
