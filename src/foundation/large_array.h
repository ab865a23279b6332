// A large array whose values are not set when it is made.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace zema {

/// Doubles without values, for data that are written before they are read. Takes memory only where it is written, in
/// large pages where the system grants them: these cost a fraction of the time at the first touch.
class LargeArray {
 public:
  LargeArray() = default;
  /// Throws std::bad_alloc when the memory does not suffice.
  explicit LargeArray(std::size_t size);

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
