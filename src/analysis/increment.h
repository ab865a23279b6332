// Reads and applies one increment of a load step.
#pragma once

namespace zema {

struct Analysis;

/// `INCREM`: takes the next increment card or goes on with the last one, and puts the increment on the elements.
/// Returns false when the deck ends at the card.
[[nodiscard]] bool INCREM(Analysis& analysis);

}  // namespace zema
