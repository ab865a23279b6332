// Bending and large deflection of whole meshes against published values and an independent textbook program.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <numbers>
#include <sstream>

#include "jobs/job_runner.h"
#include "jobs/solid_deck.h"

namespace zema::test {
namespace {

// ---- slender beam 6 x .2 x .1, six elements, E = 1e7, nu = .3 (MacNeal and Harder, 1985) ----

enum class BeamMesh { regular, trapezoid, parallelogram, tetrahedra };

constexpr std::array tip{7, 14, 21, 28};  // nodes of the end

SolidDeck slenderBeam(BeamMesh mesh) {
  SolidDeck deck = BrickGrid{6, 1, 1}.deck(MaterialCards::isotropic(1e7, 0.3), [&](int i, int j, int k) {
    const double y = 0.2 * j;
    const double slant = (y - 0.1) * (mesh == BeamMesh::trapezoid && i % 2 == 0 ? -1.0 : 1.0);
    const bool slanted = i > 0 && i < 6 && (mesh == BeamMesh::trapezoid || mesh == BeamMesh::parallelogram);
    return Vector3{i + (slanted ? slant : 0.0), y, 0.1 * k};
  });
  if (mesh == BeamMesh::tetrahedra) splitIntoTetrahedra(deck);
  deck.support([](const Vector3& x) { return x[0] == 0.0 ? 111 : 0; });
  return deck;
}

/// Work of the loads at the tip, over a reference value.
double workRatio(const SolidDeck& deck, double reference) {
  const auto results = solve(deck.text());
  double work = 0.0;
  for (const auto& [node, load] : deck.steps[0].pointLoads)
    for (std::size_t i = 0; i < 3; ++i) work += load[i] * atNode(block(results, "DISPLACEMENTS"), node)[i];
  return work / reference;
}

/// Mean tip displacement in the direction of a unit tip load, over the reference value.
double tipRatio(SolidDeck deck, std::size_t direction, double reference) {
  for (const int node : tip) deck.steps[0].pointLoads[node][direction] = 0.25;
  return workRatio(deck, reference);
}

/// Rotation of the tip about the axis under a unit torque by equal tangential forces, over the reference value.
double twistRatio(SolidDeck deck) {
  for (const int node : tip) {
    const Vector3& x = deck.node(node);
    const double y = x[1] - 0.1, z = x[2] - 0.05, share = 1.0 / (4.0 * (y * y + z * z));
    deck.steps[0].pointLoads[node] = {0.0, -z * share, y * share};
  }
  return workRatio(deck, 0.03208);
}

TEST(SlenderBeam, PlainElementsShowTheKnownRatios) {
  struct Row {
    BeamMesh mesh;
    std::vector<double> known;  ///< extension, bending in and out of the plane, twist
  };
  for (const auto& [mesh, known] : {Row{BeamMesh::regular, {.98561, .09291, .02518, .89191}},
                                    {BeamMesh::trapezoid, {.98586, .02557, .01045, .50386}},
                                    {BeamMesh::parallelogram, {.98582, .03154, .01424, .34372}},
                                    {BeamMesh::tetrahedra, {.97854, .03148, .00914}}}) {
    const SolidDeck deck = slenderBeam(mesh);

    const std::array found{tipRatio(deck, 0, 3e-5), tipRatio(deck, 1, .1081), tipRatio(deck, 2, .4321),
                           twistRatio(deck)};

    SCOPED_TRACE(static_cast<int>(mesh));
    for (std::size_t i = 0; i < known.size(); ++i) EXPECT_NEAR(found[i], known[i], 1e-5) << i;
  }
}

// ---- thick elliptic plate under pressure (NAFEMS LE10) ----

TEST(ThickPlate, StressAtTheInnerEdgeAgreesWithTheKnownMeshValues) {
  const BrickGrid grid{8, 12, 4};
  SolidDeck deck = grid.deck(MaterialCards::isotropic(210e9, 0.3), [](int i, int j, int k) {
    const double angle = std::numbers::pi / 2.0 * j / 12, r = i / 8.0;
    return Vector3{(2 + 1.25 * r) * std::cos(angle), (1 + 1.75 * r) * std::sin(angle), -0.3 + 0.6 * k / 4};
  });
  for (int k = 0; k <= 4; ++k)
    for (int j = 0; j <= 12; ++j)
      for (int i = 0; i <= 8; ++i) {
        const bool outer = i == 8;
        const int code = (outer || j == 12 ? 100 : 0) + (outer || j == 0 ? 10 : 0) + (outer && k == 2 ? 1 : 0);
        if (code != 0) deck.steps[0].fixities.push_back({grid.at(i, j, k), code, {}});
      }
  constexpr std::size_t topLayer = 8 * 12 * 3;
  for (std::size_t e = topLayer; e < deck.elements.size(); ++e) {
    const std::vector<int>& n = deck.elements[e].nodes;
    for (const auto& [p, q, r] :
         {std::array{4U, 5U, 6U}, {4, 6, 7}, {4, 5, 7}, {5, 6, 7}})  // both diagonals, half each
      deck.steps[0].faces.push_back({static_cast<int>(e) + 1, {n[p], n[q], n[r]}, {0, 0, -0.5e6}});
  }
  deck.steps[0].increments[0].tolerance = 1e-7;

  const auto results = solve(deck.text());

  const int corner = grid.at(0, 0, 4);
  const auto& nodes = deck.elements[topLayer].nodes;  // points stand in the file in the order of the nodes next to them
  const auto line = static_cast<std::size_t>(std::ranges::find(nodes, corner) - nodes.begin());
  EXPECT_NEAR(block(results, "STRESSES").rows[8 * topLayer + line][1] / 1e6, -4.694, 6e-4);
  EXPECT_NEAR(atNode(block(results, "DISPLACEMENTS"), corner)[2] * 1e6, -93.37, 6e-3);
}

// ---- an independent textbook program: tests/data/reference ----

using Table = std::vector<std::vector<double>>;

Table readTable(const std::string& problem, const std::string& file) {
  std::string text = dataFile("reference/" + problem + "/" + file);
  std::ranges::replace(text, ',', ' ');
  std::istringstream in(text);
  Table table;
  std::string line;
  std::getline(in, line);  // names of the columns
  while (std::getline(in, line)) {
    std::istringstream items(line);
    table.emplace_back(std::istream_iterator<double>(items), std::istream_iterator<double>());
  }
  return table;
}

SolidDeck referenceProblem(const std::string& problem) {
  SolidDeck deck{.materials = {MaterialCards::isotropic(200000.0, 0.3)}};
  for (const auto& row : readTable(problem, "nodes.csv")) deck.nodes.push_back({row[1], row[2], row[3]});
  for (const auto& row : readTable(problem, "elements.csv"))
    deck.elements.push_back({std::vector<int>(row.begin() + 1, row.end())});
  std::map<int, FixityCard> fixities;
  for (const auto& row : readTable(problem, "bc.csv")) {
    const int node = static_cast<int>(row[0]);
    const auto dof = static_cast<std::size_t>(row[1]) - 1;
    FixityCard& card = fixities.try_emplace(node, FixityCard{node, 0, {}}).first->second;
    card.code += std::array{100, 10, 1}[dof];
    card.values[dof] = row[2];
  }
  for (const auto& [node, card] : fixities) deck.steps[0].fixities.push_back(card);
  for (const auto& row : readTable(problem, "loads.csv"))
    deck.steps[0].pointLoads[static_cast<int>(row[0])][static_cast<std::size_t>(row[1]) - 1] += row[2];
  return deck;
}

/// `count` values behind the labels of each line of a table, found within 1e-6 of the largest.
template <class Found>
void expectAgreement(const Table& table, std::size_t labels, std::size_t count, Found found) {
  double largest = 0.0;
  for (const auto& row : table)
    for (std::size_t i = labels; i < labels + count; ++i) largest = std::max(largest, std::abs(row[i]));
  for (const auto& row : table) {
    const std::vector<double>& values = found(row);
    for (std::size_t i = 0; i < count; ++i) ASSERT_NEAR(values.at(i), row[labels + i], 1e-6 * largest);
  }
}

TEST(ReferenceProblem, DisplacementsAndStressesOfAllIncrements) {
  struct Row {
    std::string problem;
    int increments = 1;
    std::function<void(SolidDeck&)> change = [](SolidDeck&) {};
  };
  // yield stress 250 + 1000 kappa; the card gives the slope over strain, which reading turns into the plastic one
  const double slope = 1000.0 / (1.0 + 1000.0 / 200000.0);
  for (const auto& [problem, increments, change] :
       {Row{"r1_hex_single_nu03"}, Row{"r3_hex_beam_linear"},
        Row{"r5_hex_beam_j2", 5, [=](auto& deck) { deck.materials = {MaterialCards::plastic(2e5, 0.3, 250, slope)}; }},
        Row{"r7_hex_beam_large", 5, [](auto& deck) {
              deck.LARGE = deck.KTANP = 1;
              deck.KPUSH = 2;  // Cauchy stress
            }}}) {
    SCOPED_TRACE(problem);
    SolidDeck deck = referenceProblem(problem);
    deck.steps[0].increments[0].repeat = increments;
    deck.steps[0].increments[0].factor = 1.0 / increments;
    change(deck);

    const auto results = solve(deck.text());

    expectAgreement(readTable(problem, "u_plain.csv"), 2, 3, [&](const std::vector<double>& row) {
      return atNode(block(results, "DISPLACEMENTS", static_cast<int>(row[0]) - 1), static_cast<int>(row[1]));
    });
    expectAgreement(readTable(problem, "s_plain.csv"), 3, 6, [&](const std::vector<double>& row) {
      // the files walk a brick's points around its faces; the reference counts them with the first direction fastest
      constexpr std::size_t placeInFile[8] = {0, 1, 3, 2, 4, 5, 7, 6};
      const auto element = static_cast<std::size_t>(row[1]) - 1, point = static_cast<std::size_t>(row[2]) - 1;
      return block(results, "STRESSES", static_cast<int>(row[0]) - 1).rows.at(8 * element + placeInFile[point]);
    });
  }
}

}  // namespace
}  // namespace zema::test
