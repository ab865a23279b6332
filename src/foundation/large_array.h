// A large array whose values are not set when it is made.
#pragma once

#include <sys/mman.h>

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>

namespace zema {

/// Doubles without values, for data that are written before they are read. Takes memory only where it is written, in
/// large pages where the system grants them: these cost a fraction of the time at the first touch.
class LargeArray {
 public:
  LargeArray() = default;
  /// Throws std::bad_alloc when the memory does not suffice.
  explicit LargeArray(std::size_t size) : size_(size) {
    constexpr std::size_t page = std::size_t{1} << 21;
    const std::size_t bytes = (size * sizeof(double) + page - 1) / page * page;
    if (bytes == 0) return;
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc): operator new promises no pages of its own
    values_.reset(static_cast<double*>(std::aligned_alloc(page, bytes)));
    if (!values_) throw std::bad_alloc();
    madvise(values_.get(), bytes, MADV_HUGEPAGE);  // a wish: without it the array works as well
  }

  [[nodiscard]] double* data() { return values_.get(); }
  [[nodiscard]] const double* data() const { return values_.get(); }
  [[nodiscard]] std::size_t size() const { return size_; }

 private:
  struct Free {
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory): the counterpart of aligned_alloc
    void operator()(double* memory) const { std::free(memory); }
  };

  std::size_t size_ = 0;
  std::unique_ptr<double[], Free> values_;
};

}  // namespace zema
