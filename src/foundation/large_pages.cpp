// Pages of memory that cost less time at their first touch.
#include "foundation/large_pages.h"

#include <sys/mman.h>

#include <memory>

namespace zema {

void wishLargePages(void* memory, std::size_t bytes) {
  constexpr std::size_t page = std::size_t{1} << 21;
  if (std::align(page, page, memory, bytes) != nullptr) madvise(memory, bytes / page * page, MADV_HUGEPAGE);
}

}  // namespace zema
