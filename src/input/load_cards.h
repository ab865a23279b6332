// The block of cards that opens a load step: active construction steps, number of increments, loads.
#pragma once

namespace zema {

class Kernel;
struct Job;
struct Model;

/// `LOADPS`: reads the load block of a load step into model.loadStep, sets loop.NINCS and the first increment, turns
/// every load into RLOAD(:, 1) of the elements and echoes all on the listing. loop.ILOAD is the step in hand.
/// A dynamic step reads its file of dynamic data too. Throws InputFault for bad cards, PlainStop for a load that makes
/// no sense.
void LOADPS(Job& job, Model& model, const Kernel& kernel);

}  // namespace zema
