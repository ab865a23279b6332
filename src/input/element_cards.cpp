// Reads, echoes and checks one element card after the other.
#include "input/element_cards.h"

#include <algorithm>

#include "element/integration_rule.h"
#include "input/checks.h"
#include "input/deck_echo.h"
#include "input/element_sizes.h"
#include "job/job.h"

namespace zema {

namespace {

constexpr std::size_t nodesShown = 8;

void writeHeading(Channel& listing) {
  static constexpr Layout title(R"(/ 25X 30("=") / 35X "MESH DATA" / 25X 30("=") /)");
  static constexpr Layout section(R"(6X "ELEMENTS DEFINITION :" / 6X 21("-") /)");
  static constexpr Layout columns(
      R"(1X "ELEMENT " 1X "MATNO " 3X "FRACL " 2X "NTYPE," 1X "NFASE" 1X "NNODE" 1X "NGAUS" 1X "NINTE," 4X )"
      R"(" NODE   NUMBERS" 53X "ÁNGULOS")");
  listing.write(title);
  listing.write(section);
  listing.write(columns);
}

std::span<int> nodePlaces(Mesh& mesh, int e) {
  const auto NNODM = static_cast<std::size_t>(mesh.NNODM);
  return std::span(mesh.LNODS).subspan(static_cast<std::size_t>(e) * NNODM, NNODM);
}

/// Reads one card and returns the element's number from 0. More nodes than the element check admits are left unread.
int readElement(CardReader& cards, Model& model, const KernelProfile& profile) {
  cards.begin("element");
  const int e = cards.integer("NUMEL", 1, model.mesh.NELEM()) - 1;
  ElementData element;
  element.MATNO[0] = cards.integer("MATNO(1)");
  element.MATNO[1] = cards.integer("MATNO(2)");
  element.FRACL = cards.real("FRACL");
  element.NTYPE = cards.integer("NTYPE");
  element.IFASE = cards.integer("IFASE");
  element.NNODE = cards.integer("NNODE");
  element.NGAUS = cards.integer("NGAUS");
  element.NINTE = cards.integer("NINTE");
  const std::span<int> LNODS = nodePlaces(model.mesh, e);
  std::fill(LNODS.begin(), LNODS.end(), 0);
  for (int a = 0; a < std::min(element.NNODE, profile.mostNodes); ++a) {
    const int node = cards.integer("LNODS");
    if (a < model.mesh.NNODM) {
      LNODS[static_cast<std::size_t>(a)] = node;
    }
  }
  for (int i = 0; i < profile.elementAngles; ++i) {
    element.EAEULER[static_cast<std::size_t>(i)] = cards.real("EAEULER");
  }
  model.mesh.elements[static_cast<std::size_t>(e)] = element;
  return e;
}

/// The first node places of an element, as many as a line of the echo has; 0 where there is no node.
std::array<int, nodesShown> shownNodes(Mesh& mesh, int e) {
  std::array<int, nodesShown> shown{};
  const std::span<const int> LNODS = nodePlaces(mesh, e);
  std::copy_n(LNODS.begin(), std::min(LNODS.size(), nodesShown), shown.begin());
  return shown;
}

void echo(Channel& listing, const ElementData& element, int number, const std::array<int, nodesShown>& nodes,
          int angles) {
  static constexpr Layout row("I6 3X I5 1X E10.3 1X I5 1X 4I6 2X 8I8 3X 3E10.2");
  listing.write(row, number, element.MATNO[0], element.FRACL, element.NTYPE, element.IFASE, element.NNODE,
                element.NGAUS, element.NINTE, nodes,
                std::span(element.EAEULER).first(static_cast<std::size_t>(angles)));
}

void writeFrequencyRecord(Channel& records, const ElementData& element, int number,
                          const std::array<int, nodesShown>& nodes, bool first) {
  static constexpr Layout row("I6 3X I5 1X I5 1X 4I6 2X 8I8");
  if (first) {
    records.line(FreeLine(element.NNODE));
  }
  records.write(row, number, element.MATNO[0], element.NTYPE, element.IFASE, element.NNODE, element.NGAUS,
                element.NINTE, nodes);
}

/// Refuses what passes the element check but has no meaning in the kernel.
void refuseUnknown(const CardReader& cards, const Kernel& kernel, const ElementData& element,
                   const ControlRecord& control) {
  const int NNODM = control.NNODM;
  if (element.IFASE < 1 || element.IFASE > control.NFASE) {
    cards.fault("IFASE", element.IFASE, "an integer from 1 to " + std::to_string(control.NFASE));
  }
  if (element.NNODE > NNODM) {
    cards.fault("NNODE", element.NNODE, "at most " + std::to_string(NNODM) + " nodes");
  }
  if (sizesOf(kernel, element).NDOFN == 0) {
    cards.fault("NTYPE", element.NTYPE,
                "another type: element type " + std::to_string(element.NTYPE) + " has no formulation in this kernel");
  }
  if (element.NGAUS < 1) {
    cards.fault("NGAUS", element.NGAUS, "at least 1 point");
  }
  if (!hasRule(element.NINTE, element.NGAUS)) {
    cards.fault(
        "NINTE", element.NINTE,
        "a family of integration rules that has a rule of NGAUS = " + std::to_string(element.NGAUS) + " points");
  }
}

void addToComposite(Composites& composites, int number, int e) {
  if (number >= 1 && number <= static_cast<int>(composites.all.size())) {
    composites(number).ELECOM.push_back(e);
  }
}

}  // namespace

bool readElements(Job& job, Model& model, const Kernel& kernel) {
  const KernelProfile& profile = kernel.profile();
  const bool echoes = echoesModelCards(model);
  const bool records = feedsFrequencyRecords(job);
  if (echoes) {
    writeHeading(job.listing());
  }
  int typeBefore = 0;
  bool alike = false;
  for (int card = 1; card <= model.mesh.NELEM(); ++card) {
    const int e = readElement(job.cards(), model, profile);
    const ElementData& element = model.mesh.element(e);
    if (echoes) {
      echo(job.listing(), element, e + 1, shownNodes(model.mesh, e), profile.elementAngles);
    }
    if (records) {
      writeFrequencyRecord(job.channels[channel::frequencies], element, e + 1, shownNodes(model.mesh, e), card == 1);
    }
    CHECK1(job, model, profile, e + 1);
    refuseUnknown(job.cards(), kernel, element, model.control);
    addToComposite(model.composites, element.MATNO[0], e);
    alike = card > 1 && element.NTYPE == typeBefore;
    typeBefore = element.NTYPE;
  }
  return alike;
}

}  // namespace zema
