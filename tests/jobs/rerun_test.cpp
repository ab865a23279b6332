// A second run of the same job, the iteration blocks beside the log, and a deck as a user wrote it.
#include <gtest/gtest.h>

#include "jobs/job_runner.h"
#include "jobs/solid_deck.h"

namespace zema::test {
namespace {

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
  const auto results = solve(readFile(std::filesystem::path(ZEMA_SOURCE) / "tests/data/decks/cube.dts"));

  for (int increment = 0; increment < 2; ++increment) {
    const double strain = 5e-4 * (increment + 1);
    expectRows(block(results, "STRESSES", increment), std::array{200000 * strain}, 1e-9);
    EXPECT_NEAR(block(results, "STRAINS//TOTAL", increment).rows[7][2], -0.3 * strain, 1e-14);
  }
}

}  // namespace
}  // namespace zema::test
