// Nodes and elements as the deck gives them, and the element vectors of loads and forces.
#pragma once

#include <array>
#include <span>
#include <string>
#include <vector>

#include "model/node_numbers.h"

namespace zema {

/// What an element card says, and what follows from it alone.
struct ElementData {
  std::array<int, 3> MATNO{};       ///< composite material (1 to NMATC), second material number, unused
  double FRACL = 0.0;               ///< fracture length; 0: from the element's volume
  int NTYPE = 0;                    ///< element type
  int IFASE = 0;                    ///< construction step, 1 to NFASE
  int NNODE = 0;                    ///< number of nodes
  int NGAUS = 0;                    ///< integration points per direction
  int NINTE = 0;                    ///< integration rule code
  std::array<double, 3> EAEULER{};  ///< Euler angles, degrees
  double TVOLU = 0.0;               ///< volume, summed at the first stiffness pass of a load step
};

/// Nodal coordinates and their numbering. Coordinates never change during a run.
struct Mesh {
  int dimensions = 0;                 ///< coordinates per node
  int NNODM = 0;                      ///< greatest number of nodes of an element
  int MDOFN = 0;                      ///< greatest number of degrees of freedom of a node
  int NTOTV = 0;                      ///< degree-of-freedom positions of the mesh
  std::vector<double> COORD;          ///< coordinates by deck node number, `dimensions` values a node
  NodeNumbering numbering;            ///< deck numbers to places in the equations
  std::vector<int> NDOFP;             ///< degrees of freedom of a node, by place
  std::vector<int> lastDof;           ///< running total of degrees of freedom up to and with a node, by place
  std::vector<ElementData> elements;  ///< by element number, from 0
  std::vector<int> LNODS;             ///< deck node numbers, NNODM places an element, 0 where there is none

  /// Number of elements.
  [[nodiscard]] int NELEM() const { return static_cast<int>(elements.size()); }
  /// Number of nodes.
  [[nodiscard]] int NPOIN() const { return numbering.size(); }
  [[nodiscard]] const ElementData& element(int e) const { return elements[static_cast<std::size_t>(e)]; }
  /// The NNODE deck node numbers of element e.
  [[nodiscard]] std::span<const int> nodesOf(int e) const;
  /// Coordinates of a node.
  [[nodiscard]] std::span<const double> coordinates(DeckNode node) const;
  /// First degree-of-freedom position (from 0) of a node.
  [[nodiscard]] int firstPosition(WorkNode node) const;
  [[nodiscard]] int firstPosition(DeckNode node) const { return firstPosition(numbering.LPNTN(node)); }
  [[nodiscard]] int dofsOf(DeckNode node) const;
};

/// Names the node and the direction of a degree-of-freedom position (from 0): "node 7, degree of freedom 2".
[[nodiscard]] std::string describePosition(const Mesh& mesh, std::size_t position);

/// Degree-of-freedom positions (from 0) of every element, in both numberings; made once the nodes are counted.
class ElementPositions {
 public:
  ElementPositions() = default;
  explicit ElementPositions(const Mesh& mesh);

  /// Positions in the order of the equations, MDOFN for each of the NNODE nodes.
  [[nodiscard]] std::span<const int> of(int e) const { return slice(work_, e); }
  /// The same as if the deck's numbering were kept.
  [[nodiscard]] std::span<const int> inDeckOrder(int e) const { return slice(deck_, e); }

 private:
  [[nodiscard]] std::span<const int> slice(const std::vector<int>& all, int e) const;

  std::vector<int> first_;
  std::vector<int> work_;
  std::vector<int> deck_;
};

/// The vectors that belong to an element, each NEVAB long: forces, loads, by element number.
class ElementVectors {
 public:
  ElementVectors() = default;
  ElementVectors(int NELEM, int NEVAB, bool keepInitialLoads);

  /// ELOAD column (1 to 3): internal force then residual | internal force | elastic prediction.
  [[nodiscard]] std::span<double> ELOAD(int e, int column) { return part(e, column - 1); }
  [[nodiscard]] std::span<const double> ELOAD(int e, int column) const { return part(e, column - 1); }
  /// Total external load now acting, reactions included.
  [[nodiscard]] std::span<double> TLOAD(int e) { return part(e, 3); }
  [[nodiscard]] std::span<const double> TLOAD(int e) const { return part(e, 3); }
  /// RLOAD column (1, 2): load of this load step at factor 1 | of the load step before.
  [[nodiscard]] std::span<double> RLOAD(int e, int column) { return part(e, 3 + column); }
  [[nodiscard]] std::span<const double> RLOAD(int e, int column) const { return part(e, 3 + column); }
  /// RLOAD(:, 3): initial load of the first increment of the job; empty for words whose store has no such column.
  [[nodiscard]] std::span<double> initialLoad(int e);
  /// Length of each of these vectors: the greatest number of degrees of freedom of an element.
  [[nodiscard]] int NEVAB() const { return NEVAB_; }
  void clear();
  /// All vectors of all elements, and the initial loads, for the restart data.
  [[nodiscard]] std::array<std::span<double>, 2> all() { return {values_, initial_}; }

 private:
  [[nodiscard]] std::span<double> part(int e, int which);
  [[nodiscard]] std::span<const double> part(int e, int which) const;

  int NEVAB_ = 0;
  std::vector<double> values_;   // six vectors an element
  std::vector<double> initial_;  // one vector an element, or empty
};

}  // namespace zema
