// The loops over load steps, increments and iterations.
#pragma once

namespace zema {

struct Job;
class Kernel;

/// `VER`: reads the rest of the deck and solves it with the given kernel. Returns when the run ends normally.
void VER(Job& job, Kernel& kernel);

}  // namespace zema
