// The clock's lines on listing, log and console.
#pragma once

namespace zema {

struct Job;

/// What the clock is asked for.
enum class ClockTask : int {
  start = 3,     ///< banner and start of the clock
  timeLine = 4,  ///< a line on listing and log
  progress = 5   ///< the live line of the console
};

/// What the progress line shows besides the time.
struct Progress {
  int INCRE = 0;       ///< current increment
  int IITER = 0;       ///< current iteration
  double RATIO = 0.0;  ///< residual ratio, percent
  double REMAX = 0.0;  ///< largest residual
};

/// `MAKINA`: the clock and progress service.
void MAKINA(Job& job, ClockTask task, const Progress& progress = {});

}  // namespace zema
