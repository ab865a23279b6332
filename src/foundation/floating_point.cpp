// How the processor treats results below the smallest normal double.
#include "foundation/floating_point.h"

#if defined(__SSE2__)
#include <xmmintrin.h>
#endif

namespace zema {

void flushSubnormals() {
#if defined(__SSE2__)
  _mm_setcsr(_mm_getcsr() | 0x8000U);  // flush to zero
#endif
}

}  // namespace zema
