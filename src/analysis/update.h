// Adds a correction to the displacements.
#pragma once

namespace zema {

struct Analysis;

/// `UPDAT`: adds the last correction to the displacements of the increment and to the total ones.
void UPDAT(Analysis& analysis);

}  // namespace zema
