// The run's clock.
#include "foundation/clock.h"

namespace zema {

double Clock::TIMUSE() {
  const auto now = std::chrono::steady_clock::now();
  if (!first_) first_ = now;
  return std::chrono::duration<double>(now - *first_).count();
}

void Clock::CPUTIM(double T1, double T2) {
  TCPUT += T2 - T1;
  TCPUX += T2 - T1;
}

}  // namespace zema
