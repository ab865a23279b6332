// Adds the wall time of a scope to a total.
#pragma once

#include <chrono>

namespace zema {

/// Adds the seconds from its making to its end to `total`.
class PhaseTimer {
 public:
  explicit PhaseTimer(double& total) : total_(total) {}
  ~PhaseTimer() { total_ += std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count(); }
  PhaseTimer(const PhaseTimer&) = delete;
  PhaseTimer& operator=(const PhaseTimer&) = delete;

 private:
  double& total_;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace zema
