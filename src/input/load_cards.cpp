// Reads the head of a load step, then each kind of load in turn.
#include "input/load_cards.h"

#include <algorithm>

#include "foundation/dotted_label.h"
#include "input/count_field.h"
#include "input/dynamic_cards.h"
#include "input/element_sizes.h"
#include "input/face_loads.h"
#include "input/gravity_cards.h"
#include "input/point_loads.h"
#include "job/job.h"
#include "model/kernel.h"

namespace zema {

namespace {

constexpr int textColumns = 72;

void readTitle(Job& job, Model& model) {
  static constexpr Layout heading(
      R"(/ "        ECHO OF THERMAL LOADS DATA FOLLOWS :" / 8X 36("=") / 30("-") " LOAD NUMBER:" I5 30("-"))");
  static constexpr Layout title(R"("0" A72)");
  job.listing().write(heading, model.loop.ILOAD);
  model.loadStep.title = job.cards().line("load title", textColumns);
  std::string padded = model.loadStep.title;
  padded.resize(textColumns, ' ');
  job.listing().write(title, padded);
}

void readActiveSteps(CardReader& cards, Model& model) {
  const int NFASE = model.control.NFASE;
  std::vector<int>& ACTIV = model.loadStep.ACTIV;
  ACTIV.assign(static_cast<std::size_t>(NFASE), 0);
  cards.begin("active step");
  const int NFACT = readCount(cards, "NFACT");
  for (int i = 0; i < NFACT; ++i) {
    const int IFASE = cards.integer("construction step", 0, NFASE);
    if (IFASE != 0) {
      ACTIV[static_cast<std::size_t>(IFASE - 1)] = 1;
    }
  }
}

void readStepCard(CardReader& cards, Model& model) {
  LoadStep& step = model.loadStep;
  cards.begin("load step");
  cards.read("KLOAD", step.KLOAD);
  step.NINCR = cards.integer("NINCR");  // repeated increment cards: the length of the deck sets no limit
  if (step.NINCR < 0) cards.fault("NINCR", step.NINCR, "a count of 0 or more");
  cards.read("IPLOD", step.IPLOD);
  cards.read("IGRAV", step.IGRAV);
  cards.read("IEDGE", step.IEDGE);
  step.IDINA = cards.integer("IDINA", 0, 1);
  cards.read("KNEWM", step.KNEWM);
  for (int unused = 8; unused <= 10; ++unused) {
    static_cast<void>(cards.real("value " + std::to_string(unused)));
  }
  cards.read("TEMPL", step.TEMPL);
  model.loop.NINCS = step.NINCR;
}

void echoStepCard(Channel& listing, const LoadStep& step) {
  static constexpr Layout integerLine("6X A 2X I7");
  static constexpr Layout textLine("6X A 2X A");
  const auto answer = [&listing](std::string_view label, int code) {
    listing.write(textLine, dottedLabel(label), code == 0 ? "NO " : "YES");
  };
  listing.write(integerLine, dottedLabel("NUMBER OF INCREMENTS"), step.NINCR);
  answer("POINTS LOADS", step.IPLOD);
  answer("GRAVITY LOADS", step.IGRAV);
  answer("FACE LOAD", step.IEDGE);
  listing.write(textLine, dottedLabel("TYPE OF LOAD"), step.dynamic() ? "DYNAMIC   " : "STATIC    ");
}

void clearLoads(Model& model) {
  for (int e = 0; e < model.mesh.NELEM(); ++e) {
    std::ranges::fill(model.vectors.RLOAD(e, 1), 0.0);
  }
}

/// The loads of every element, twelve values a line.
void writeElementLoads(Channel& listing, const Model& model, const Kernel& kernel) {
  static constexpr Layout heading(R"("0" 5X " NUMERO TOTAL DE CARGAS POR ELEMENTO")");
  static constexpr Layout firstLine("1X I9 5X 12F12.4");
  static constexpr Layout furtherLine("15X 12F12.4");
  constexpr std::size_t valuesOfLine = 12;
  listing.write(heading);
  for (int e = 0; e < model.mesh.NELEM(); ++e) {
    const ElementData& element = model.mesh.element(e);
    const int NDOFN = sizesOf(kernel, element).NDOFN;
    auto values = model.vectors.RLOAD(e, 1).first(static_cast<std::size_t>(NDOFN * element.NNODE));
    listing.write(firstLine, e + 1, values.first(std::min(values.size(), valuesOfLine)));
    while (values.size() > valuesOfLine) {
      values = values.subspan(valuesOfLine);
      listing.write(furtherLine, values.first(std::min(values.size(), valuesOfLine)));
    }
  }
}

}  // namespace

void LOADPS(Job& job, Model& model, const Kernel& kernel) {
  static constexpr Layout afterPointLoads(R"(80("-"))");
  job.IRUN.IINCS = 1;
  readTitle(job, model);
  readActiveSteps(job.cards(), model);
  readStepCard(job.cards(), model);
  echoStepCard(job.listing(), model.loadStep);
  clearLoads(model);
  if (model.loadStep.IPLOD != 0) {
    readPointLoads(job, model, kernel);
  }
  job.listing().write(afterPointLoads);
  if (model.loadStep.IGRAV != 0) {
    readGravity(job, model, kernel);
  }
  if (model.loadStep.IEDGE != 0) {
    readFaceLoads(job, model, kernel);
  }
  static_cast<void>(job.cards().line("end of loads", textColumns));
  if (model.loadStep.dynamic()) {
    readDynamicData(job, model);
  }
  writeElementLoads(job.listing(), model, kernel);
}

}  // namespace zema
