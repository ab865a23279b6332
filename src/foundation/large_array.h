// A large array whose values are not set when it is made.
#pragma once

#include <cstddef>
#include <memory>

#include "foundation/large_pages.h"

namespace zema {

/// Doubles without values, for data that are written before they are read. Takes memory only where it is written, in
/// large pages where the system grants them.
class LargeArray {
 public:
  LargeArray() = default;
  /// Throws std::bad_alloc when the memory does not suffice.
  explicit LargeArray(std::size_t size) : size_(size), values_(std::make_unique_for_overwrite<double[]>(size)) {
    wishLargePages(values_.get(), size * sizeof(double));
  }

  [[nodiscard]] double* data() { return values_.get(); }
  [[nodiscard]] const double* data() const { return values_.get(); }
  [[nodiscard]] std::size_t size() const { return size_; }

 private:
  std::size_t size_ = 0;
  std::unique_ptr<double[]> values_;
};

}  // namespace zema
