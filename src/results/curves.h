// Curve files: one point of every curve per output, and the global history.
#pragma once

#include <string>

#include "job/job.h"
#include "model/kernel.h"

namespace zema {

/// `OUTCU`: counts the output in KCURV and appends one line to the file of each curve, with the head at the first
/// output of the job, and one to the global history (time, damage by energy, damage by force) behind them. Point
/// values are those of the slot. Throws RunEnd or InputFault when a curve asks for what the model does not have.
void OUTCU(Job& job, const Model& model, const Kernel& kernel, StateSlot slot);

/// Name of the file of curve i (from 1): the stem, a point, and AA, AB, ..., AY, BA and so on. Throws InputFault when
/// the letters run out.
[[nodiscard]] std::string curveFileName(const Job& job, int i);

}  // namespace zema
