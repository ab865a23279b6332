// The file of dynamic data: time integration, damping, and the load table or accelerogram of a dynamic load step.
#pragma once

#include <span>
#include <vector>

namespace zema {

struct Job;
struct Model;

/// Greatest number of rows of the table or accelerogram, and of time steps.
inline constexpr int mostTimeSteps = 5000;

/// Reads the data of the load step in hand, which is dynamic, from the job's file of dynamic data (entry 5 of CFILE)
/// into model.dynamics, loadStep (fatigue), increment.DTIME, loop.NINCS and the factors of the steps. The file is
/// opened at the first dynamic load step; later ones read on behind the data of the step before. Throws FileFault when
/// the file is missing, InputFault for bad data, RunEnd for a time step of 0.
void readDynamicData(Job& job, Model& model);

/// Throws RunEnd when the time step of the increment is 0.
void requireTimeStep(double DTIME);

/// `INTERP`: values given at ascending times, by linear interpolation at the first time and every DTIME from it on,
/// `rows` of them; 0 beyond the last time. DTIME must be above 0.
[[nodiscard]] std::vector<double> INTERP(std::span<const double> times, std::span<const double> values, double DTIME,
                                         int rows);

}  // namespace zema
