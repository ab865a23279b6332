// Point loads of a load step.
#pragma once

namespace zema {

class Kernel;
struct Job;
struct Model;

/// Reads pairs of cards, a node and its loads, up to the pair of node NPOIN, and adds each load to RLOAD(:, 1) of the
/// first element that holds the node. Throws InputFault for a node out of its range or one that no element holds.
void readPointLoads(Job& job, Model& model, const Kernel& kernel);

}  // namespace zema
