// Ignores the signals that the system sends for writes it refuses; the failed write is reported where it is made.
#include "foundation/signals.h"

#include <csignal>

namespace zema {

void reportFailedWritesAsErrors() {
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace zema
