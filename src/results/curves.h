// Curve files: one point of every curve per output, and the global history.
#pragma once

#include "job/job.h"
#include "model/kernel.h"

namespace zema {

/// `OUTCU`: counts the output in KCURV and appends one line to the file of each curve, with the head at the first
/// output of the job, and one to the global history (time, damage by energy, damage by force) behind them. Point
/// values are those of the slot. Throws RunEnd when a curve asks for what the model does not have.
void OUTCU(Job& job, const Model& model, const Kernel& kernel, StateSlot slot);

}  // namespace zema
