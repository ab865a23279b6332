// Runs the decks of the examples, of the manual and of a user, and compares what they leave with the values that stand
// beside them; a second run of the same job.
#include <gtest/gtest.h>

#include <sstream>

#include "jobs/job_runner.h"
#include "jobs/solid_deck.h"

namespace zema::test {
namespace {

class Example : public testing::TestWithParam<std::string> {};

TEST_P(Example, GivesTheValuesThatStandBesideItsDeck) {
  constexpr double tolerance = 1e-6;
  const auto file = [](const std::string& name) { return readFile(exampleFolder(GetParam()) / name); };
  const JobFolder folder;
  folder.write("job.din", file(GetParam() + ".din"));

  const auto results = solve(folder, file(GetParam() + ".dts"));

  std::istringstream lines(file("expected.csv"));
  std::string line;
  std::getline(lines, line);  // names of the columns
  int values = 0;
  for (; std::getline(lines, line); ++values) {
    SCOPED_TRACE(line);
    std::istringstream row(line);
    std::string quantity, name;  // in words that hold no comma; result text of the block
    std::getline(row, quantity, ',');
    std::getline(row, name, ',');
    int increment = 0, id = 0, component = 0;  // number among the blocks of this name, node or value line; from 1
    double value = 0.0;
    char comma = 0;
    row >> increment >> comma >> id >> comma >> component >> comma >> value;
    ASSERT_TRUE(row && row.peek() == EOF);
    const ResultBlock& found = block(results, name, increment - 1);
    EXPECT_NEAR(found.rows.at(static_cast<std::size_t>(id - 1)).at(static_cast<std::size_t>(component - 1)), value,
                tolerance * largest(found));
  }
  EXPECT_GE(values, 4);
}

INSTANTIATE_TEST_SUITE_P(All, Example, testing::ValuesIn(exampleNames()),
                         [](const auto& instance) { return instance.param; });

/// The text of the first code block that begins with a problem word.
std::string deckOfTheManual() {
  const std::string page = readFile(std::filesystem::path(ZEMA_SOURCE) / "docs/manual/deck.md");
  const std::size_t text = page.find("\nMEC3D", page.find("\n```\nMEC3D")) + 1;
  return page.substr(text, page.find("```", text) - text);
}

TEST(Manual, TheDeckWithCommentsGivesTheElongationThatThePageStates) {
  constexpr int endNode = 9;
  EXPECT_NEAR(atNode(lastBlock(solve(deckOfTheManual()), "DISPLACEMENTS"), endNode)[0], 0.008, 1e-10);
}

int count(const std::string& text, const std::string& word) {
  int found = 0;
  for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) ++found;
  return found;
}

TEST(Rerun, ListingLogResultsAndCurvesGoOnAndTheMeshStartsAnew) {
  SolidDeck deck = symmetricCube(MaterialCards::isotropic(1000.0, 0.3), 1e-3);
  deck.curveCount = 1;
  deck.curves = {"pull", "X-DISPL", "2 1 1", "Y-RCTOT", "1"};
  deck.steps[0].increments[0].output[3] = 1;
  const JobFolder folder;

  solve(folder, deck.text());
  const std::string mesh = folder.read("job.post.msh");
  solve(folder, deck.text());

  EXPECT_EQ(count(folder.read("job.mec.sal"), "Programa de ELEMENTOS FINITOS"), 2);
  EXPECT_EQ(count(folder.read("job.mec.log"), "Programa de ELEMENTOS FINITOS"), 2);
  EXPECT_EQ(count(folder.read("job.mec.log"), " NUMERO DE CARGA    1"), 2);
  EXPECT_EQ(count(folder.read("job.post.res"), "Qor Post Results File 1.0"), 2);
  EXPECT_EQ(folder.read("job.post.msh"), mesh);
  EXPECT_EQ(folder.read("job.mec.26").substr(0, 11), " ---------\n");
  EXPECT_EQ(count(folder.read("job.mec.26"), "0 IITER.=  1"), 2);
  // the cube is pulled to a stress of 1 by the supports at x = 1, whose prescribed value is not 0: they do not count
  EXPECT_EQ(count(folder.read("job.AA"), "          0.00100000         -1.00000000\n"), 2);
}

TEST(UserDeck, APulledCubeRunsAsItStands) {
  const auto results = solve(dataFile("decks/cube.dts"));

  for (int increment = 0; increment < 2; ++increment) {
    const double strain = 5e-4 * (increment + 1);
    expectRows(block(results, "STRESSES", increment), std::array{200000 * strain}, 1e-9);
    EXPECT_NEAR(block(results, "STRAINS//TOTAL", increment).rows[7][2], -0.3 * strain, 1e-14);
  }
}

}  // namespace
}  // namespace zema::test
