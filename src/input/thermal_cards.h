// The thermal cards that follow the fixities of a load step.
#pragma once

namespace zema {

class Kernel;
struct Job;
struct Model;

/// `INPU2T`: reads prescribed temperatures (FIXEMT, IFFIXT) and loaded sides (initialLoad) of a load step.
/// Throws InputFault for bad cards, RunEnd for a check that fails or for too many sides.
void INPU2T(Job& job, Model& model, const Kernel& kernel);

}  // namespace zema
