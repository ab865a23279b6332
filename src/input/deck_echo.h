// Which cards of the deck are repeated, on the listing and in the frequency records.
#pragma once

#include "model/model.h"

namespace zema {

/// The model cards are echoed on the listing, but not in a restart: its listing goes on from that of the first run.
[[nodiscard]] inline bool echoesModelCards(const Model& model) {
  return model.text.CSTART != "START2";
}

/// Mesh and first fixities are repeated on the channel of the frequency records, which only a new job opens.
[[nodiscard]] inline bool feedsFrequencyRecords(const Model& model) {
  return model.control.KFREC == 1 && model.text.CSTART == "START1";
}

}  // namespace zema
