// Increment cards: what each increment of a load step is told, and its head on the listing.
#pragma once

namespace zema {

class Kernel;
struct Job;
struct Model;

/// The reading half of `INCREM`: takes the next increment card into model.increment when the last one is used up, and
/// counts one increment off it. Returns false, with model.increment as it was, when the deck ends at the card.
/// Throws InputFault for a bad card, RunEnd for an algorithm that large strains do not bear and for a pair table that
/// ends too early.
[[nodiscard]] bool readIncrementCard(Job& job, Model& model, const Kernel& kernel);

/// Writes the head of the increment on the listing, and on the log with NOUTP(4) = 1. Reads TTIME and working.FACTO,
/// which must hold the values of this increment.
void echoIncrement(Job& job, const Model& model);

}  // namespace zema
