// A large array of zeros that takes memory only where it is written.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>

#include "foundation/large_pages.h"

namespace zema {

/// Doubles that start at 0. Pages come from the system already cleared, so that making the array costs no time.
class ZeroedBlock {
 public:
  ZeroedBlock() = default;
  /// Throws std::bad_alloc when the memory does not suffice.
  explicit ZeroedBlock(std::size_t size)
      : size_(size),
        // NOLINTNEXTLINE(cppcoreguidelines-no-malloc): only calloc gives pages that the system has cleared
        values_(static_cast<double*>(std::calloc(std::max<std::size_t>(size, 1), sizeof(double)))) {
    if (!values_) {
      throw std::bad_alloc();
    }
    wishLargePages(values_.get(), size * sizeof(double));
  }

  [[nodiscard]] double* data() { return values_.get(); }
  [[nodiscard]] const double* data() const { return values_.get(); }
  [[nodiscard]] std::size_t size() const { return size_; }

  /// Takes the values of a block of the same size.
  void copyFrom(const ZeroedBlock& other) { std::copy_n(other.data(), size_, data()); }

 private:
  struct Free {
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory): the counterpart of calloc
    void operator()(double* memory) const { std::free(memory); }
  };

  std::size_t size_ = 0;
  std::unique_ptr<double[], Free> values_;
};

}  // namespace zema
