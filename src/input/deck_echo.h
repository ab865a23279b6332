// Which cards of the deck are repeated, on the listing and in the frequency records.
#pragma once

#include "job/job.h"
#include "model/model.h"

namespace zema {

/// The model cards are echoed on the listing, but not in a restart: its listing goes on from that of the first run.
[[nodiscard]] inline bool echoesModelCards(const Model& model) {
  return model.text.CSTART != "START2";
}

/// Mesh and first fixities are repeated on the channel of the frequency records, which only a new job opens.
[[nodiscard]] inline bool feedsFrequencyRecords(const Job& job) {
  return job.channels.isOpen(channel::frequencies);
}

}  // namespace zema
