// Runs the decks of the examples and of the manual, and compares what they leave with the values that stand beside
// them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "jobs/job_runner.h"

namespace zema::test {
namespace {

/// One line of an expected.csv.
struct ExpectedValue {
  std::string quantity;  ///< in words; may hold no comma
  std::string block;     ///< result text of the block
  int increment = 0;     ///< number of the block among those of its name, from 1
  int id = 0;            ///< node, or number of the value line, from 1
  int component = 0;     ///< column, from 1
  double value = 0.0;
};

std::vector<ExpectedValue> readExpected(const std::string& name) {
  std::istringstream in(readFile(exampleFolder(name) / "expected.csv"));
  std::vector<ExpectedValue> all;
  std::string line;
  std::getline(in, line);  // names of the columns
  while (std::getline(in, line)) {
    std::istringstream row(line);
    ExpectedValue expected;
    char comma = 0;
    std::getline(row, expected.quantity, ',');
    std::getline(row, expected.block, ',');
    row >> expected.increment >> comma >> expected.id >> comma >> expected.component >> comma >> expected.value;
    EXPECT_TRUE(row && row.peek() == EOF) << line;
    all.push_back(expected);
  }
  return all;
}

/// The increment-th block (from 1) of exactly this name.
const ResultBlock* findBlock(const std::vector<ResultBlock>& all, const std::string& name, int increment) {
  for (const ResultBlock& block : all)
    if (block.name == name && --increment == 0) return &block;
  return nullptr;
}

/// A value of a block as an ExpectedValue names it. Nodes stand in their own order, so both kinds of id are line
/// numbers.
double valueOf(const ResultBlock& block, const ExpectedValue& expected) {
  return block.rows.at(static_cast<std::size_t>(expected.id - 1)).at(static_cast<std::size_t>(expected.component - 1));
}

class Example : public testing::TestWithParam<std::string> {};

TEST_P(Example, GivesTheValuesThatStandBesideItsDeck) {
  constexpr double tolerance = 1e-6;
  const std::vector<ExpectedValue> all = readExpected(GetParam());
  ASSERT_GE(all.size(), 4U);
  const JobFolder folder;
  const std::string data = GetParam() + ".din";
  if (std::filesystem::exists(exampleFolder(GetParam()) / data))
    folder.write("job.din", readFile(exampleFolder(GetParam()) / data));

  const auto results = solve(folder, readFile(exampleFolder(GetParam()) / (GetParam() + ".dts")));

  for (const ExpectedValue& expected : all) {
    SCOPED_TRACE(expected.quantity);
    const ResultBlock* block = findBlock(results, expected.block, expected.increment);
    ASSERT_NE(block, nullptr) << expected.block << ", number " << expected.increment;
    EXPECT_NEAR(valueOf(*block, expected), expected.value, tolerance * largest(*block));
  }
}

INSTANTIATE_TEST_SUITE_P(All, Example, testing::ValuesIn(exampleNames()),
                         [](const auto& instance) { return instance.param; });

/// The text of the first code block that begins with a problem word.
std::string deckOfTheManual() {
  constexpr std::string_view fence = "\n```\n";
  const std::string page = readFile(std::filesystem::path(ZEMA_SOURCE) / "docs/manual/deck.md");
  const std::size_t start = page.find("\n```\nMEC3D");
  if (start == std::string::npos) return "";
  const std::size_t text = start + fence.size();
  return page.substr(text, page.find("```", text) - text);
}

TEST(Manual, TheDeckWithCommentsGivesTheElongationThatThePageStates) {
  const JobFolder folder;

  const auto results = solve(folder, deckOfTheManual());

  constexpr int endNode = 9;
  EXPECT_NEAR(atNode(lastBlock(results, "DISPLACEMENTS"), endNode)[0], 0.008, 1e-10);
}

}  // namespace
}  // namespace zema::test
