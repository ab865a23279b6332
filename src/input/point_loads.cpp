// Each point load goes to one element: it is not shared.
#include "input/point_loads.h"

#include "input/element_sizes.h"
#include "job/job.h"

namespace zema {

namespace {

/// Where a node first appears among the elements.
struct FirstElement {
  int element = -1;  ///< from 0; -1 when no element holds the node
  int place = 0;     ///< place in the element's node list, from 0
};

/// By node number from 0.
std::vector<FirstElement> findFirstElements(const Mesh& mesh) {
  std::vector<FirstElement> first(static_cast<std::size_t>(mesh.NPOIN()));
  for (int e = mesh.NELEM() - 1; e >= 0; --e) {
    const std::span<const int> nodes = mesh.nodesOf(e);
    for (std::size_t a = nodes.size(); a-- > 0;) {
      first[static_cast<std::size_t>(nodes[a] - 1)] = {e, static_cast<int>(a)};
    }
  }
  return first;
}

}  // namespace

void readPointLoads(Job& job, Model& model, const Kernel& kernel) {
  static constexpr Layout heading(R"(30("-") "NODAL LOADS" 30("-") / 6X "ECHO OF NODAL POINT LOADS :")");
  static constexpr Layout row("8X I9 3(4X F12.6)");
  CardReader& cards = job.cards();
  const int NPOIN = model.mesh.NPOIN();
  const std::vector<FirstElement> firstElements = findFirstElements(model.mesh);
  job.listing().write(heading);
  std::vector<double> loads;
  for (int node = 0; node != NPOIN;) {
    cards.begin("loaded node");
    node = cards.integer("node number", 1, NPOIN);
    const FirstElement first = firstElements[static_cast<std::size_t>(node - 1)];
    if (first.element < 0) {
      cards.fault("node number", node, "a node that an element holds");
    }
    loads.resize(static_cast<std::size_t>(model.mesh.dofsOf({node})));
    cards.begin("point load");
    for (double& load : loads) {
      load = cards.real("load");
    }
    const ElementData& element = model.mesh.element(first.element);
    const int NDOFN = sizesOf(kernel, element).NDOFN;
    const std::span<double> RLOAD = model.vectors.RLOAD(first.element, 1);
    for (std::size_t d = 0; d < std::min(loads.size(), static_cast<std::size_t>(NDOFN)); ++d) {
      RLOAD[static_cast<std::size_t>(first.place * NDOFN) + d] += loads[d];
    }
    job.listing().write(row, node, loads);
  }
}

}  // namespace zema
