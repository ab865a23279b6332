// The console: the system's own lines go to standard output, faults and warnings to standard error.
#pragma once

#include <string_view>

namespace zema {

/// Writes whole lines to the console; a console that is closed is never a reason to fail.
class Console {
 public:
  /// Text as it stands, on standard output.
  void say(std::string_view text) const;
  /// One line that starts with "zema: ", on standard error.
  void warn(std::string_view text) const;
};

}  // namespace zema
