// The run's clock.
#pragma once

#include <chrono>
#include <optional>

namespace zema {

/// Wall time of a run, in seconds.
class Clock {
 public:
  double TSTAR = 0.0;  ///< time of the start of the run
  double TNOW = 0.0;   ///< time of the last time line or progress line
  double TCPUT = 0.0;  ///< total of the measured times
  double TCPUX = 0.0;  ///< a second total of the same times

  /// Seconds since the first call, which gives 0.
  [[nodiscard]] double TIMUSE();

  /// Adds the time from T1 to T2 to both totals.
  void CPUTIM(double T1, double T2);

 private:
  std::optional<std::chrono::steady_clock::time_point> first_;
};

}  // namespace zema
