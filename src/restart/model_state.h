// Everything of a run that survives an increment, in one list that saves and restores it.
#pragma once

namespace zema {

class Archive;
struct EquationSystem;
struct Model;

/// Saves or restores what the model holds beyond the deck's model section: loops, cards and loads of the load step in
/// force, supports, displacements, element vectors, states of the points, sums. The model has been read and prepared.
/// Throws InputFault where the sizes that were saved are not those of the model.
void transfer(Archive& archive, Model& model);

/// The equation numbers, band numbers and vectors of the load step in force.
void transfer(Archive& archive, EquationSystem& equations);

}  // namespace zema
