// Own weight in a load step.
#pragma once

namespace zema {

class Kernel;
struct Job;
struct Model;

/// Reads direction and size of gravity and the construction steps that it loads, and adds the weight of their elements
/// to RLOAD(:, 1). Throws InputFault for a construction step out of its range, PlainStop for an element without density
/// or of a construction step that is not active.
void readGravity(Job& job, Model& model, const Kernel& kernel);

}  // namespace zema
