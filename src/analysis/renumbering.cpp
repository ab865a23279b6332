// From the mesh to its graph, and from new numbers to the maps and positions of the model.
#include "analysis/renumbering.h"

#include <string>
#include <vector>

#include "job/job.h"
#include "model/model.h"
#include "solver/narrow_band.h"

namespace zema {
namespace {

constexpr int MCONE = 50;  // greatest number of neighbours of a node

IntegerLists nodesOfElements(const Mesh& mesh) {
  IntegerLists LNODS;
  for (int e = 0; e < mesh.NELEM(); ++e) {
    for (const int number : mesh.nodesOf(e)) LNODS.entries.push_back(number - 1);
    LNODS.close();
  }
  return LNODS;
}

void writeTable(Channel& listing, const NodeNumbering& numbering) {
  static constexpr Layout heading(R"(//10X A/10X 16("-")/7X A 7X A 17X A 7X A/)");
  static constexpr Layout row("2(5X I5) 10X 2(5X I5)");
  listing.write(heading, "RENUMBERED NODES :", "OLD", "NEW", "NEW", "OLD");
  for (int i = 1; i <= numbering.size(); ++i) {
    listing.write(row, i, numbering.LPNTN({i}).index + 1, i, numbering.LPNINV({i - 1}).number);
  }
}

NodeNumbering SETCON(Job& job, const Mesh& mesh) {
  NodeGraph graph(nodesOfElements(mesh), mesh.NPOIN(), MCONE);
  std::vector<DeckNode> LPNINV;
  for (const int node : OPTBAN(sortByDegree(graph.neighbours), graph.BAND, job.workers)) LPNINV.push_back({node + 1});
  return NodeNumbering(LPNINV);
}

/// Degrees of freedom and running totals by working number, from those by deck number.
void placeDofs(Mesh& mesh) {
  const std::vector<int> inDeckOrder = mesh.NDOFP;
  int total = 0;
  for (int n = 0; n < mesh.NPOIN(); ++n) {
    const auto place = static_cast<std::size_t>(n);
    mesh.NDOFP[place] = inDeckOrder[static_cast<std::size_t>(mesh.numbering.LPNINV({n}).number - 1)];
    total += mesh.NDOFP[place];
    mesh.lastDof[place] = total;
  }
}

}  // namespace

void RENUMN(Job& job, Model& model) {
  if (model.control.KRENU != 1) return;
  model.mesh.numbering = SETCON(job, model.mesh);
  placeDofs(model.mesh);
  model.positions = ElementPositions(model.mesh);
  if (model.text.CSTART != "START2") writeTable(job.listing(), model.mesh.numbering);
}

}  // namespace zema
