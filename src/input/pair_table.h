// What arc-length control takes from the deck and the .arc file beside it.
#pragma once

namespace zema {

struct Job;
struct Model;

/// Checks NODAR and IDOFA of the increment card in hand against KARCL, and for types 5 and 6 reads the next NODAR
/// pairs of nodes of the .arc file, none when it is below 1, into model.increment.pairs. Throws InputFault for a node
/// or a degree of freedom that the model does not have, RunEnd where the .arc file ends too early.
void readArcLengthData(Job& job, Model& model);

}  // namespace zema
