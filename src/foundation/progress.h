// The live line of the console.
#pragma once

#include <cstddef>
#include <string_view>

namespace zema {

/// Rewrites one line of the standard output when that is a terminal, and is quiet when it is not. Never fails.
class ProgressLine {
 public:
  ProgressLine();

  /// Shows text in place of the line before.
  void show(std::string_view text);
  /// Leaves the line as it stands and goes to the next one.
  void finish();

 private:
  bool onTerminal_;
  std::size_t shown_ = 0;  // columns of the line that stands on the terminal
};

}  // namespace zema
