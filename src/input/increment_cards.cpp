// Reads increment cards and writes the head of an increment.
#include "input/increment_cards.h"

#include <algorithm>

#include "input/element_sizes.h"
#include "input/pair_table.h"
#include "job/job.h"

namespace zema {

namespace {

/// Reads a whole card; a null value keeps what the card before said.
IncrementCard readCard(CardReader& cards, IncrementCard card, int NINTV) {
  cards.begin("increment");
  card.NREPE = cards.integer("NREPE");
  cards.read("DFACT", card.DFACT);
  cards.read("DTIME", card.DTIME);
  cards.read("TOLER", card.TOLER);
  cards.read("MITER", card.MITER);
  for (int& code : card.NOUTP) {
    cards.read("NOUTP", code);
  }
  cards.read("KALGO", card.KALGO);
  cards.read("KARCL", card.KARCL);
  cards.read("ARCLN", card.ARCLN);
  cards.read("NODAR", card.NODAR);
  cards.read("IDOFA", card.IDOFA);
  cards.read("KFRES", card.KFRES);
  for (int& selection : card.IPOST3D) {
    cards.read("IPOST3D", selection);
  }
  for (int i = 0; i < NINTV; ++i) {
    cards.read("IIFLAG", card.IIFLAG[static_cast<std::size_t>(i)]);
  }
  return card;
}

void writeHead(Channel& channel, const Model& model) {
  static constexpr Layout times(
      R"(80("=") / "0" 1X " NUMERO DE CARGA " I4 1X " TIEMPO REAL  CALCULO " E6.2 1X " NUMERO DE INCREMENTO " I4)");
  static constexpr Layout settings(
      R"("0" 1X " FACTOR DE CARGA       =" E10.5)"
      R"( / "  TOLERANCIA            =" E10.5 2X "  MAX. Nr. ITERACIONES  =" I5)"
      R"( / "  COD. SALIDA INICIAL   =" I5 2X "  COD. DE SALIDA FINAL  =" I5)"
      R"( / "  ALGORITMO DE SOLUCION =" I5 2X "  TIPO DE ARC-LENGTH    =" I5)"
      R"( / "  LONGITUD DE ARCO      =" F14.6 2X "  NODO y GRAD. DE LIB   =" I4 "," 1X I4)"
      R"( / "  POST-PROC EN FEMVIEW  =" I5 2X "  LARGE =" I5 3X " ISIME =" I5 2X " IDINA =" I5)");
  static constexpr Layout rootOfVolume("'0' 1X ' CALCULO DE LA LONGITUD CARACTERISTICA COMO DSQRT(TVOLU)'");
  static constexpr Layout imposedLength(R"("0" 1X " LONGITUD CARACTERISTICA IMPUESTA= " E10.5)");
  static constexpr Layout pairHeading(R"("0" 1X " PARES DE PUNTOS ARC-LENGTH")");
  static constexpr Layout pairRow("2I6");
  constexpr int noPostLevel = 0;  // the card has no such field
  const IncrementCard& card = model.increment;
  channel.write(times, model.loop.ILOAD, model.loop.TTIME, model.loop.INCRE);
  channel.write(settings, model.working.FACTO, card.TOLER, card.MITER, card.NOUTP[0], card.NOUTP[1], card.KALGO,
                card.KARCL, card.ARCLN, card.NODAR, card.IDOFA, noPostLevel, model.control.LARGE, model.control.ISIME,
                model.loadStep.IDINA);
  if (isRelative(static_cast<ArcLength>(card.KARCL))) {
    channel.write(pairHeading);
    for (const auto& pair : card.pairs) {
      channel.write(pairRow, pair);
    }
  }
  const double FRACL = lastElement(model.mesh).FRACL;
  if (FRACL == 0.0) {
    channel.write(rootOfVolume);
  } else {
    channel.write(imposedLength, FRACL);
  }
}

}  // namespace

bool readIncrementCard(Job& job, Model& model, const Kernel& kernel) {
  IncrementCard& card = model.increment;
  if (model.loadStep.dynamic() && model.loop.INCRE > 1) {
    return true;
  }
  if (card.NREPE == 0) {
    CardReader& cards = job.cards();
    try {
      card = readCard(cards, card, std::min(kernel.profile().internalFlags, static_cast<int>(card.IIFLAG.size())));
    } catch (const EndOfDeck&) {
      return false;
    }
    if (model.control.LARGE != 0 && card.KALGO == static_cast<int>(Algorithm::initialStiffness)) {
      throw RunEnd(">>>> ERROR EN GRANDES DEF. UTILIZAR NEWTON-RAPHSON", model.control.LARGE, card.KALGO);
    }
    if (model.loadStep.dynamic() && card.DTIME < 0.0) {
      cards.fault("DTIME", card.DTIME, "a time step above 0");
    }
    if (!model.loadStep.dynamic()) {
      readArcLengthData(job, model);
    }
  }
  --card.NREPE;
  return true;
}

void echoIncrement(Job& job, const Model& model) {
  constexpr int headOnLog = 1;
  writeHead(job.listing(), model);
  if (model.increment.NOUTP[3] == headOnLog) {
    writeHead(job.log(), model);
  }
}

}  // namespace zema
