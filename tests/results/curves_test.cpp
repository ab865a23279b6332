// Curve files: names, heads, quantities and stops.
#include "results/curves.h"

#include <gtest/gtest.h>

#include <sstream>

#include "foundation/ends.h"
#include "job/file_set.h"
#include "results/curve_values.h"
#include "results/listing.h"
#include "results/result_fixture.h"

namespace zema {
namespace {

/// A brick with one material in layer 1 and two in layer 2.
class CurvesTest : public test::ResultTest {
 protected:
  CurvesTest() {
    use(test::cubeNodes, {{1, 2, 3, 4, 5, 6, 7, 8}}, 2);
    model.loop.TTIME = 2.0;
  }
  double value(const std::string& word, const std::array<int, 5>& KDATS = {}) {
    return CurveSource(job, model, *kernel, StateSlot::committed).BUSCUR(word, KDATS);
  }
  std::string endWith(const std::string& word, const std::array<int, 5>& KDATS) {
    return endOf([&] { return value(word, KDATS); });
  }
};

TEST_F(CurvesTest, FilesHaveTheirHeadAtTheFirstOutputOfTheJobOnly) {
  OUTPUT(job, model, *kernel, OutputMoment::converged);
  EXPECT_FALSE(folder.has("a.AA"));  // without curves no files, not even the history
  model.curves = {{"load and its path", "X-DISPL", "Y-IINCS", {2, 1, 1, 0, 0, 0, 0, 0, 0, 0}},
                  {"first letter is the axis", "Y-IINCS", "X-DISPL", {0, 0, 0, 0, 0, 2, 1, 1, 0, 0}},
                  {"others feed y", "Y-IINCS", "Z-DISPL", {0, 0, 0, 0, 0, 2, 1, 1, 0, 0}},
                  {"of heat, no lines", "X-IINCS", "Y-TEMPE", {0, 0, 0, 0, 0, 3, 0, 0, 0, 0}}};
  model.working.TDISP[3] = -0.5;
  model.monitors.DANEN = 0.25;
  model.monitors.DANFU = 0.125;

  OUTPUT(job, model, *kernel, OutputMoment::converged);
  model.loop.TTIME = 3.0;
  OUTCU(job, model, *kernel, StateSlot::committed);

  const auto lastLine = [this](const char* name) { return folder.read(name).substr(204); };
  EXPECT_EQ(job.IRUN.KCURV, 2);
  EXPECT_EQ(folder.read("a.AA"), test::dataFile("results/curve.AA"));
  EXPECT_EQ(lastLine("a.AB"), "         -0.50000000          3.00000000\n");
  EXPECT_EQ(lastLine("a.AC"), "          0.00000000         -0.50000000\n");
  EXPECT_TRUE(folder.has("a.AD") && folder.read("a.AD").empty());
  EXPECT_EQ(folder.read("a.AE"), R"(          2.00000000          0.25000000          0.12500000
          3.00000000          0.25000000          0.12500000
)");
  EXPECT_EQ(curveFileName(job, 25) + curveFileName(job, 26) + curveFileName(job, 650), "a.AYa.BAa.ZY");
}

TEST_F(CurvesTest, WordsAndParametersChooseTheValue) {
  model.working.TDISP[24 + 3 * 4 + 1] = 0.75;  // velocity of node 5 in y
  model.vectors.ELOAD(0, 2)[5] = -3.5;
  model.working.NOFIX = {4, 2, 4, 7};  // each counts once in a sum, and node 7 not: it is driven
  model.fixities.TREACM = {1.0, 0.0, 0.0, 10.0, 0.0, 0.0, 0.0, 0.0, 0.0, 100.0, 0.0, 0.0};
  for (const std::size_t position : {3U, 9U, 18U}) model.working.IFFIX[position] = 1;
  model.working.FIXEM[18] = 0.1;
  const int third = 6;  // position 3 of the walk is the point (2, 2, 1)
  set(StateSlot::committed, third, 0, test::stressPlace, {1.0, 2.0, 3.0, 4.0, 5.0, 6.0});
  set(StateSlot::committed, third, 3, test::strainPlace, {0.0, 0.25});
  set(StateSlot::committed, third, 1, test::plasticPlace, {0.0, 0.125});
  model.points.internal(StateSlot::committed, 0, third, 2)[internal::damage] = 0.5;
  std::istringstream rows(test::dataFile("results/curve_values.txt"));

  std::string word;
  for (std::array<int, 5> p{}; rows >> word >> p[0] >> p[1] >> p[2] >> p[3] >> p[4];) {
    double expected = -1.0;
    rows >> expected;
    EXPECT_EQ(value(word, p), expected) << word;
  }
  model.loadStep.NCYCL = 9.0;
  EXPECT_EQ(value("X-IINCS"), 9.0);
  stretchTwofold(1);
  EXPECT_NEAR(value("Y-STRES", {1, 3, 2}), 2.0 * 2.0, 1e-14);
  EXPECT_NEAR(value("Y-STRAI", {1, 3, 2, 2, 2}), 0.25 / 4.0, 1e-15);
  EXPECT_EQ(value("Y-STRAP", {1, 3, 2, 1, 1}), 0.125);
}

TEST_F(CurvesTest, StopsNameTheNodeTheDirectionOrTheElementKind) {
  model.working.NOFIX = {4};
  model.fixities.TREACM = {0.0, 0.0, 0.0};
  EXPECT_EQ(endWith("Y-TREAC", {5, 1}), "run end ERROR EN BUSCUR: NO ENCUENTRO IPOIN =  5.0 0.0");
  EXPECT_EQ(endWith("Y-RCTOT", {3}), "run end ERROR EN BUSCUR: NO SE SUMAN REACC EN RCTOT  3.0 0.0");

  model.mesh.elements[0].NNODE = 6;
  testing::internal::CaptureStdout();
  EXPECT_EQ(endWith("X-IINCS", {}), "run end ERROR EN BUSCUR: NNODE NO CORRESPONDE A NINGUN ELEM  6.0 0.0");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "ELEM TRIDIMIENSIONAL INEXISTENTE\n");
}

}  // namespace
}  // namespace zema
