// Console output without any state of its own.
#include "job/console.h"

#include <cstdio>
#include <string>

namespace zema {

void Console::say(std::string_view text) const {
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fflush(stdout);
}

void Console::warn(std::string_view text) const {
  const std::string line = "zema: " + std::string(text) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace zema
