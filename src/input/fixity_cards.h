// The fixity cards of a load step.
#pragma once

namespace zema {

class Kernel;
struct Job;
struct Model;

/// `INPU3`: reads supports, prescribed values and free codes of a load step into model.fixities, checks them, and reads
/// the thermal cards that follow. Accumulated reactions stay with the nodes that stay fixed; from the second load step
/// on, total loads are cleared where KLOAD says so. loop.ILOAD is the step in hand.
/// Throws InputFault for bad cards, RunEnd for a check that fails.
void INPU3(Job& job, Model& model, const Kernel& kernel);

}  // namespace zema
