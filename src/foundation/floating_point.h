// How the processor treats results below the smallest normal double.
#pragma once

namespace zema {

/// From now on the calling thread stores results that are too small for a normal double as 0, where the processor can
/// (SSE). Threads started later by this thread inherit it.
void flushSubnormals();

}  // namespace zema
