// Counts on the cards of the deck.
#pragma once

#include <string>
#include <string_view>

#include "foundation/card_reader.h"

namespace zema {

/// The next item as a count of things that follow; throws InputFault when it is below 0 or above the deck's bytes.
[[nodiscard]] inline int readCount(CardReader& cards, std::string_view field) {
  const int count = cards.integer(field);
  if (count < 0) {
    cards.fault(field, count, "a count of 0 or more");
  }
  if (static_cast<std::size_t>(count) > cards.size()) {
    cards.fault(field, count, "at most as many items as a deck of " + std::to_string(cards.size()) + " bytes can hold");
  }
  return count;
}

}  // namespace zema
