// Runs the decks of the examples and of the manual, and compares what they leave with the values that stand beside
// them.
#include <gtest/gtest.h>

#include <sstream>

#include "jobs/job_runner.h"

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

}  // namespace
}  // namespace zema::test
