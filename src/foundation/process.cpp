// Signals and standard streams of the process.
#include "foundation/process.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <initializer_list>

namespace zema {

void reportFailedWritesAsErrors() {
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
}

void secureStandardStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) == -1) {
      // the lowest free number is taken: the stream itself, as those below it are open
      open("/dev/null", stream == STDIN_FILENO ? O_RDONLY : O_WRONLY);
    }
  }
}

}  // namespace zema
