// The live line of the console.
#include "foundation/progress.h"

#include <unistd.h>

#include <cstdio>
#include <string>

namespace zema {

ProgressLine::ProgressLine() : onTerminal_(::isatty(STDOUT_FILENO) == 1) {}

void ProgressLine::show(std::string_view text) {
  if (!onTerminal_) return;
  std::string line = "\r";
  line += text;
  if (text.size() < shown_) line.append(shown_ - text.size(), ' ');  // wipe the rest of a longer line
  shown_ = text.size();
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fflush(stdout);
}

void ProgressLine::finish() {
  if (!onTerminal_ || shown_ == 0) return;
  shown_ = 0;
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

}  // namespace zema
