// Pages of memory that cost less time at their first touch.
#pragma once

#include <cstddef>

namespace zema {

/// Asks the system for pages of 2 MiB where memory holds whole ones; without them the memory works as well.
void wishLargePages(void* memory, std::size_t bytes);

}  // namespace zema
