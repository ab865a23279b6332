// Bending and large deflection of whole meshes against published values and an independent textbook program.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>

#include "jobs/job_runner.h"
#include "jobs/solid_deck.h"

namespace zema::test {
namespace {

// ---- slender beam 6 x .2 x .1, six elements, E = 1e7, nu = .3 (MacNeal and Harder, 1985) ----

enum class BeamMesh { regular, trapezoid, parallelogram };

constexpr std::array root{1, 8, 15, 22}, tip{7, 14, 21, 28};  // nodes of the ends

SolidDeck slenderBeam(BeamMesh mesh) {
  SolidDeck deck;
  deck.materials = {MaterialCards::isotropic(1e7, 0.3)};
  BrickGrid{6, 1, 1}.addTo(deck, [&](int i, int j, int k) {
    const double y = 0.2 * j;
    const double slant = (y - 0.1) * (mesh == BeamMesh::trapezoid && i % 2 == 0 ? -1.0 : 1.0);
    const bool inner = i > 0 && i < 6;
    return Vector3{i + (inner && mesh != BeamMesh::regular ? slant : 0.0), y, 0.1 * k};
  });
  for (const int node : root) deck.steps[0].fixities.push_back({node, 111, {}});
  return deck;
}

/// Work of the loads at the tip, over a reference value.
double workRatio(const SolidDeck& deck, double reference) {
  const JobFolder folder;
  const auto results = solve(folder, deck.text());
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
    const Vector3& x = deck.nodes[static_cast<std::size_t>(node - 1)];
    const double y = x[1] - 0.1, z = x[2] - 0.05, share = 1.0 / (4.0 * (y * y + z * z));
    deck.steps[0].pointLoads[node] = {0.0, -z * share, y * share};
  }
  return workRatio(deck, 0.03208);
}

struct BeamRow {
  BeamMesh mesh;
  double extension, inPlane, outOfPlane, twist;
};

TEST(SlenderBeam, PlainBricksShowTheKnownRatios) {
  for (const BeamRow& row : {BeamRow{BeamMesh::regular, .98561, .09291, .02518, .89191},
                             BeamRow{BeamMesh::trapezoid, .98586, .02557, .01045, .50386},
                             BeamRow{BeamMesh::parallelogram, .98582, .03154, .01424, .34372}}) {
    const SolidDeck deck = slenderBeam(row.mesh);

    SCOPED_TRACE(static_cast<int>(row.mesh));
    EXPECT_NEAR(tipRatio(deck, 0, 3e-5), row.extension, 1e-5);
    EXPECT_NEAR(tipRatio(deck, 1, .1081), row.inPlane, 1e-5);
    EXPECT_NEAR(tipRatio(deck, 2, .4321), row.outOfPlane, 1e-5);
    EXPECT_NEAR(twistRatio(deck), row.twist, 1e-5);
  }
}

TEST(SlenderBeam, TetrahedraShowTheKnownRatios) {
  SolidDeck deck = slenderBeam(BeamMesh::regular);
  splitIntoTetrahedra(deck);

  EXPECT_NEAR(tipRatio(deck, 0, 3e-5), .97854, 1e-5);
  EXPECT_NEAR(tipRatio(deck, 1, .1081), .03148, 1e-5);
  EXPECT_NEAR(tipRatio(deck, 2, .4321), .00914, 1e-5);
}

// ---- thick elliptic plate under pressure (NAFEMS LE10) ----

TEST(ThickPlate, StressAtTheInnerEdgeAgreesWithTheKnownMeshValues) {
  const BrickGrid grid{8, 12, 4};
  SolidDeck deck;
  deck.materials = {MaterialCards::isotropic(210e9, 0.3)};
  grid.addTo(deck, [](int i, int j, int k) {
    const double angle = std::acos(0.0) * (12 - j) / 12;
    const double r = i / 8.0;
    return Vector3{(2 + 1.25 * r) * std::cos(angle), (1 + 1.75 * r) * std::sin(angle), -0.3 + 0.6 * k / 4};
  });
  for (ElementCard& brick : deck.elements) {  // the angle falls with j: turn the bricks right side out
    brick.nodes = {brick.nodes[3], brick.nodes[2], brick.nodes[1], brick.nodes[0],
                   brick.nodes[7], brick.nodes[6], brick.nodes[5], brick.nodes[4]};
  }
  for (int k = 0; k <= 4; ++k) {
    for (int j = 0; j <= 12; ++j) {
      for (int i = 0; i <= 8; ++i) {
        const bool outer = i == 8;
        const int code = (outer || j == 0 ? 100 : 0) + (outer || j == 12 ? 10 : 0) + (outer && k == 2 ? 1 : 0);
        if (code != 0) deck.steps[0].fixities.push_back({grid.at(i, j, k), code, {}});
      }
    }
  }
  const int topLayer = 8 * 12 * 3;
  for (int cell = 0; cell < 8 * 12; ++cell) {
    const int element = topLayer + cell + 1;
    const auto& n = deck.elements[static_cast<std::size_t>(element - 1)].nodes;
    for (const auto& [p, q, r] : {std::array{4, 5, 6}, {4, 6, 7}, {4, 5, 7}, {5, 6, 7}}) {  // both diagonals, half each
      const auto at = [&](int place) { return n[static_cast<std::size_t>(place)]; };
      deck.steps[0].faces.push_back({element, {at(p), at(q), at(r)}, {0, 0, -0.5e6}});
    }
  }
  deck.steps[0].increments[0].tolerance = 1e-7;
  const JobFolder folder;

  const auto results = solve(folder, deck.text());

  const int corner = grid.at(0, 12, 4);
  const std::size_t element = 8 * 12 * 4 - 8;
  const auto& nodes = deck.elements[element].nodes;  // points stand in the file in the order of the nodes next to them
  const auto line = static_cast<std::size_t>(std::ranges::find(nodes, corner) - nodes.begin());
  EXPECT_NEAR(block(results, "STRESSES").rows[8 * element + line][1] / 1e6, -4.694, 6e-4);
  EXPECT_NEAR(atNode(block(results, "DISPLACEMENTS"), corner)[2] * 1e6, -93.37, 6e-3);
}

// ---- an independent textbook program: tests/data/reference ----

using Table = std::vector<std::vector<double>>;

Table readTable(const std::string& problem, const std::string& file) {
  std::ifstream in(std::string(ZEMA_SOURCE) + "/tests/data/reference/" + problem + "/" + file);
  EXPECT_TRUE(in.good()) << problem << "/" << file;
  Table table;
  std::string line;
  std::getline(in, line);
  while (std::getline(in, line)) {
    for (char& c : line) c = c == ',' ? ' ' : c;
    std::istringstream items(line);
    std::vector<double> row;
    for (double value = 0; items >> value;) row.push_back(value);
    table.push_back(row);
  }
  return table;
}

SolidDeck referenceProblem(const std::string& problem, int increments) {
  SolidDeck deck;
  deck.materials = {MaterialCards::isotropic(200000.0, 0.3)};
  for (const auto& row : readTable(problem, "nodes.csv")) deck.nodes.push_back({row[1], row[2], row[3]});
  for (const auto& row : readTable(problem, "elements.csv")) {
    deck.elements.push_back({std::vector<int>(row.begin() + 1, row.end())});
  }
  LoadStepCards& step = deck.steps[0];
  std::map<int, FixityCard> fixities;
  constexpr int digit[3] = {100, 10, 1};
  for (const auto& row : readTable(problem, "bc.csv")) {
    const int node = static_cast<int>(row[0]);
    const auto dof = static_cast<std::size_t>(row[1]) - 1;
    FixityCard& card = fixities.try_emplace(node, FixityCard{node, 0, {}}).first->second;
    card.code += digit[dof];
    card.values[dof] = row[2];
  }
  for (const auto& [node, card] : fixities) step.fixities.push_back(card);
  for (const auto& row : readTable(problem, "loads.csv")) {
    step.pointLoads[static_cast<int>(row[0])][static_cast<std::size_t>(row[1]) - 1] += row[2];
  }
  step.increments[0].repeat = increments;
  step.increments[0].factor = 1.0 / increments;
  return deck;
}

/// All displacements and stresses of all increments within 1e-6 of the largest value of each field.
void expectAgreement(const std::string& problem, const std::vector<ResultBlock>& results) {
  const Table u = readTable(problem, "u_plain.csv"), s = readTable(problem, "s_plain.csv");
  const auto largestOf = [](const Table& table, std::ptrdiff_t labels) {
    double most = 0.0;
    for (const auto& row : table)
      for (auto value = row.begin() + labels; value != row.end(); ++value) most = std::max(most, std::abs(*value));
    return most;
  };
  const double largestU = largestOf(u, 2), largestS = largestOf(s, 3);
  for (const auto& row : u) {
    const ResultBlock& found = block(results, "DISPLACEMENTS", static_cast<int>(row[0]) - 1);
    for (std::size_t d = 0; d < 3; ++d) {
      ASSERT_NEAR(atNode(found, static_cast<int>(row[1]))[d], row[d + 2], 1e-6 * largestU);
    }
  }
  // the files walk a brick's points around its faces; the reference counts them with the first direction fastest
  constexpr std::size_t placeInFile[8] = {0, 1, 3, 2, 4, 5, 7, 6};
  for (const auto& row : s) {
    const ResultBlock& found = block(results, "STRESSES", static_cast<int>(row[0]) - 1);
    const std::size_t line =
        8 * (static_cast<std::size_t>(row[1]) - 1) + placeInFile[static_cast<std::size_t>(row[2]) - 1];
    for (std::size_t c = 0; c < 6; ++c) ASSERT_NEAR(found.rows[line][c], row[c + 3], 1e-6 * largestS);
  }
}

TEST(ReferenceProblem, DistortedBrickAndLinearCantilever) {
  for (const std::string problem : {"r1_hex_single_nu03", "r3_hex_beam_linear"}) {
    const JobFolder folder;
    expectAgreement(problem, solve(folder, referenceProblem(problem, 1).text()));
  }
}

TEST(ReferenceProblem, CantileverOfAHardeningMetal) {
  SolidDeck deck = referenceProblem("r5_hex_beam_j2", 5);
  deck.materials[0].codes = {2, 2, 8, 2, 3, 2};
  // yield stress 250 + 1000 kappa; the card gives the slope over strain, which reading turns into the plastic one
  const double slope = 1000.0 / (1.0 + 1000.0 / 200000.0);
  deck.materials[0].slots = {{7, 250.0}, {8, 1}, {9, 1.0}, {10, 1.0}, {11, slope}, {12, 1}};
  deck.steps[0].increments[0].tolerance = 1e-9;
  const JobFolder folder;
  expectAgreement("r5_hex_beam_j2", solve(folder, deck.text()));
}

TEST(ReferenceProblem, LargeDeflectionOfACantileverWithReportedCauchyStress) {
  SolidDeck deck = referenceProblem("r7_hex_beam_large", 5);
  deck.LARGE = 1;
  deck.KPUSH = 2;
  deck.KTANP = 1;
  const JobFolder folder;
  expectAgreement("r7_hex_beam_large", solve(folder, deck.text()));
}

}  // namespace
}  // namespace zema::test
