// Nested dissection by METIS.
#include "solver/nested_dissection.h"

#include <metis.h>

#include <algorithm>
#include <array>
#include <new>

namespace zema {
namespace {

std::size_t index(int i) {
  return static_cast<std::size_t>(i);
}

// The graph of the groups as METIS takes it: no group is its own neighbour.
struct Graph {
  Graph(const EquationGroups& groups, const IntegerLists& NEIG_NODES) {
    for (int group = 0; group < groups.size(); ++group) {
      std::ranges::copy_if(NEIG_NODES[group], std::back_inserter(neighbours.entries),
                           [group](int other) { return other != group; });
      neighbours.close();
      weights.push_back(groups.width(group));
    }
  }

  IntegerLists neighbours;
  std::vector<idx_t> weights;
};

// Place of each group in the order of elimination, from 0.
std::vector<idx_t> placesOf(Graph& graph) {
  idx_t size = graph.neighbours.size();
  std::array<idx_t, METIS_NOPTIONS> options{};
  METIS_SetDefaultOptions(options.data());
  std::vector<idx_t> inOrder(index(size)), place(index(size));
  const int outcome = METIS_NodeND(&size, graph.neighbours.first.data(), graph.neighbours.entries.data(),
                                   graph.weights.data(), options.data(), inOrder.data(), place.data());
  if (outcome != METIS_OK) throw std::bad_alloc();
  return place;
}

}  // namespace

std::vector<int> nestedDissection(const EquationGroups& groups, const IntegerLists& NEIG_NODES) {
  Graph graph(groups, NEIG_NODES);
  const std::vector<idx_t> place = placesOf(graph);
  std::vector<int> groupAt(place.size());
  for (std::size_t group = 0; group < place.size(); ++group) groupAt[index(place[group])] = static_cast<int>(group);
  std::vector<int> order(groups.of.size());
  int next = 0;
  for (const int group : groupAt)
    for (int equation = groups.first[index(group)]; equation < groups.first[index(group) + 1]; ++equation)
      order[index(equation)] = ++next;
  return order;
}

}  // namespace zema
