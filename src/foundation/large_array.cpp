// Pages for large arrays.
#include "foundation/large_array.h"

#include <sys/mman.h>

#include <new>

namespace zema {

LargeArray::LargeArray(std::size_t size) : size_(size) {
  constexpr std::size_t page = std::size_t{1} << 21;
  const std::size_t bytes = (size * sizeof(double) + page - 1) / page * page;
  if (bytes == 0) return;
  // NOLINTNEXTLINE(cppcoreguidelines-no-malloc): operator new promises no pages of its own
  values_.reset(static_cast<double*>(std::aligned_alloc(page, bytes)));
  if (!values_) throw std::bad_alloc();
  madvise(values_.get(), bytes, MADV_HUGEPAGE);  // a wish: without it the array works as well
}

}  // namespace zema
