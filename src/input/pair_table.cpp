// The .arc file is read on from where the table before it ended.
#include "input/pair_table.h"

#include <string>

#include "input/node_field.h"
#include "job/file_set.h"
#include "job/job.h"
#include "model/model.h"

namespace zema {

namespace {

void checkDirection(const CardReader& cards, const Model& model, int node) {
  const int most = model.mesh.dofsOf({node});
  if (model.increment.IDOFA < 1 || model.increment.IDOFA > most) {
    cards.fault("IDOFA", model.increment.IDOFA,
                "a degree of freedom of node " + std::to_string(node) + ", from 1 to " + std::to_string(most));
  }
}

/// The reader of the .arc file. A heading that this run wrote to the file has taken the place of any table.
CardReader& pairCards(Job& job) {
  if (job.channels.isOpen(channel::pairs)) {
    throw EndOfDeck(job.CFILE[entry::pairs] + " holds the heading of a coupled problem");
  }
  if (!job.pairs) {
    job.pairs.emplace(job.CFILE[entry::pairs]);
  }
  return *job.pairs;
}

void readPairs(Job& job, Model& model) {
  std::vector<std::array<int, 2>>& pairs = model.increment.pairs;
  pairs.clear();
  try {
    for (int row = 0; row < model.increment.NODAR; ++row) {
      CardReader& cards = pairCards(job);
      cards.begin("node pair");
      for (int& node : pairs.emplace_back()) {
        node = readNodeAsReal(cards, model.mesh);
        checkDirection(cards, model, node);
      }
    }
  } catch (const EndOfDeck& fault) {
    job.console.warn(fault.what());
    throw RunEnd("  >>>> ERROR EN LA LECTURA DE PARES DE PUNTOS", 0.0, 0.0);
  }
}

}  // namespace

void readArcLengthData(Job& job, Model& model) {
  const IncrementCard& card = model.increment;
  const CardReader& cards = job.cards();
  const auto type = static_cast<ArcLength>(card.KARCL);
  if (type == ArcLength::onePosition) {
    if (card.NODAR < 1 || card.NODAR > model.mesh.NPOIN()) {
      cards.fault("NODAR", card.NODAR, "a node from 1 to " + std::to_string(model.mesh.NPOIN()));
    }
    checkDirection(cards, model, card.NODAR);
  } else if (isRelative(type)) {
    readPairs(job, model);
  }
}

}  // namespace zema
