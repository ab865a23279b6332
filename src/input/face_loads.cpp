// The nodes of a face are found in the element's node list by their numbers.
#include "input/face_loads.h"

#include <algorithm>

#include "input/count_field.h"
#include "input/element_sizes.h"
#include "job/job.h"

namespace zema {

namespace {

/// Reads the nodes of a face and returns their places (from 0) in the element's node list.
std::vector<int> readFaceNodes(Job& job, const Mesh& mesh, int e, int NNOFA) {
  static constexpr Layout row("I10 5X 3I9");
  CardReader& cards = job.cards();
  const std::span<const int> LNODS = mesh.nodesOf(e);
  std::vector<int> nodes;
  std::vector<int> places;
  cards.begin("face node");
  for (int k = 0; k < NNOFA; ++k) {
    const int node = cards.integer("node number");
    const auto place = std::ranges::find(LNODS, node);
    if (place == LNODS.end()) {
      cards.fault("node number", node, "a node of element " + std::to_string(e + 1));
    }
    nodes.push_back(node);
    places.push_back(static_cast<int>(place - LNODS.begin()));
  }
  job.listing().write(row, e + 1, nodes);
  return places;
}

void readFace(Job& job, Model& model, const Kernel& kernel) {
  static constexpr Layout row("9E10.3");
  CardReader& cards = job.cards();
  cards.begin("loaded face");
  const int e = cards.integer("element number", 1, model.mesh.NELEM()) - 1;
  const ElementData& element = model.mesh.element(e);
  const std::vector<int> places = readFaceNodes(job, model.mesh, e, kernel.faceNodes(element));
  const int NDOFN = sizesOf(kernel, element).NDOFN;
  std::vector<double> values(places.size() * static_cast<std::size_t>(NDOFN));
  cards.begin("face load");
  for (double& value : values) {
    value = cards.real("load");
  }
  job.listing().write(row, values);
  kernel.addFaceLoad(model, e, places, values, model.vectors.RLOAD(e, 1));
}

}  // namespace

void readFaceLoads(Job& job, Model& model, const Kernel& kernel) {
  constexpr int jointedBar = 2;
  static constexpr Layout count(R"("0" 5X "NO. DE LADOS CARGAD =" I5)");
  static constexpr Layout heading(R"("0" 5X "LISTA DE LADOS CARGADOS Y CARGAS APLIC")");
  if (lastElement(model.mesh).NTYPE == jointedBar) {
    throw PlainStop("", "ELEM. DE RETICUL. CON CARGA DISTRIBUIDA ? -- !NO!\n");
  }
  CardReader& cards = job.cards();
  cards.begin("face count");
  const int faces = readCount(cards, "count of loaded faces");
  job.listing().write(count, faces);
  job.listing().write(heading);
  for (int i = 0; i < faces; ++i) {
    readFace(job, model, kernel);
  }
}

}  // namespace zema
