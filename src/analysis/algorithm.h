// When the stiffness is rebuilt.
#pragma once

namespace zema {

struct Analysis;

/// `ALGOR`: decides KRESL for the iteration by KALGO, and clears the prescribed motion after the first iteration.
/// Throws PlainStop for an unknown KALGO.
void ALGOR(Analysis& analysis);

}  // namespace zema
