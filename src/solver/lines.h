// Runs of rows or columns.
#pragma once

namespace zema {

/// Consecutive rows or columns, from 0.
struct Lines {
  int first;
  int end;

  [[nodiscard]] int count() const { return end - first; }
};

}  // namespace zema
