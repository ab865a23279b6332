// Curve files: names, heads, quantities and stops.
#include "results/curves.h"

#include <gtest/gtest.h>

#include "foundation/errors.h"
#include "job/file_set.h"
#include "results/curve_values.h"
#include "results/listing.h"
#include "results/result_fixture.h"

namespace zema {
namespace {

using test::linesOf;
using test::makeModel;
using test::setTensor;

class CurvesTest : public test::ResultTest {
 protected:
  CurvesTest() : model(makeModel(8, {{1, 2, 3, 4, 5, 6, 7, 8}}, 2)) { model.loop.TTIME = 2.0; }

  /// Value of a word with its parameters, from the committed state.
  [[nodiscard]] double value(const std::string& word, std::array<int, 5> KDATS = {}) {
    return CurveSource(job, model, kernel, StateSlot::committed).BUSCUR(word, KDATS);
  }

  Model model;
};

TEST_F(CurvesTest, FileNamesTakeTwentyFiveSecondLetters) {
  EXPECT_EQ(curveFileName(job, 1), "a.AA");
  EXPECT_EQ(curveFileName(job, 25), "a.AY");
  EXPECT_EQ(curveFileName(job, 26), "a.BA");
  EXPECT_EQ(curveFileName(job, 650), "a.ZY");
}

TEST_F(CurvesTest, HeadStandsAtTheFirstOutputOfTheJobOnly) {
  model.curves = {{"load and its path", "X-DISPL", "Y-IINCS", {2, 1, 1, 0, 0, 0, 0, 0, 0, 0}}};
  model.working.TDISP[3] = -0.5;
  model.monitors.DANEN = 0.25;
  model.monitors.DANFU = 0.125;

  OUTPUT(job, model, kernel, OutputMoment::converged);
  model.loop.TTIME = 3.0;
  OUTPUT(job, model, kernel, OutputMoment::converged);

  EXPECT_EQ(job.IRUN.KCURV, 2);
  EXPECT_EQ(content("a.AA"),
            "#    1 (2E20.8)\n"
            "#    1    0\n"
            "#load and its pat\n"
            "#X-DISPL            2   1   1   0   0\n"
            "#Y-IINCS            0   0   0   0   0\n"
            "          0.00000000          0.00000000\n"
            "         -0.50000000          2.00000000\n"
            "         -0.50000000          3.00000000\n");
  EXPECT_EQ(content("a.AB"),
            "          2.00000000          0.25000000          0.12500000\n"
            "          3.00000000          0.25000000          0.12500000\n");
}

TEST_F(CurvesTest, RestartGoesOnWithoutHead) {
  model.curves = {{"t", "X-IINCS", "Y-IINCS", {}}};
  job.IRUN.KCURV = 4;

  OUTCU(job, model, kernel, StateSlot::committed);

  EXPECT_EQ(content("a.AA"), "          2.00000000          2.00000000\n");
}

TEST_F(CurvesTest, FirstCharacterOfTheWordChoosesTheAxis) {
  model.curves = {{"swapped", "Y-IINCS", "X-DISPL", {0, 0, 0, 0, 0, 1, 3, 1, 0, 0}},
                  {"both feed y", "Y-IINCS", "Z-DISPL", {0, 0, 0, 0, 0, 1, 3, 1, 0, 0}}};
  model.working.TDISP[2] = 7.0;
  job.IRUN.KCURV = 1;

  OUTCU(job, model, kernel, StateSlot::committed);

  EXPECT_EQ(content("a.AA"), "          7.00000000          2.00000000\n");
  EXPECT_EQ(content("a.AB"), "          0.00000000          7.00000000\n");
}

TEST_F(CurvesTest, TemperatureCurvesHaveNoLines) {
  model.curves = {{"t", "X-IINCS", "Y-TEMPE", {0, 0, 0, 0, 0, 3, 0, 0, 0, 0}}};

  OUTCU(job, model, kernel, StateSlot::committed);

  EXPECT_TRUE(exists("a.AA"));
  EXPECT_EQ(content("a.AA"), "");
}

TEST_F(CurvesTest, NoCurvesNoFiles) {
  OUTPUT(job, model, kernel, OutputMoment::converged);

  EXPECT_FALSE(exists("a.AA"));
  EXPECT_EQ(job.IRUN.KCURV, 0);
}

TEST_F(CurvesTest, TimeIsTheAgedTimeWhereThereIsOne) {
  EXPECT_EQ(value("X-IINCS"), 2.0);
  model.loadStep.NCYCL = 9.0;
  EXPECT_EQ(value("X-IINCS"), 9.0);
  EXPECT_EQ(value("X-OTHER"), 0.0);
  EXPECT_EQ(value("X"), 0.0);
}

TEST_F(CurvesTest, MotionOfANodeByColumn) {
  model.working.TDISP[24 + 3 * 4 + 1] = 0.75;  // velocity of node 5 in y

  EXPECT_EQ(value("X-DISPL", {5, 2, 2, 0, 0}), 0.75);
  EXPECT_EQ(value("X-DISPL", {5, 2, 1, 0, 0}), 0.0);
}

TEST_F(CurvesTest, ReactionsOfOneNodeAndOfAllThatAreHeld) {
  model.working.NOFIX = {4, 2, 4, 7};
  model.fixities.TREACM = {1.0, 0.0, 0.0, 10.0, 0.0, 0.0, 0.0, 0.0, 0.0, 100.0, 0.0, 0.0};
  for (const std::size_t position : {3U, 9U, 18U}) model.working.IFFIX[position] = 1;
  model.working.FIXEM[18] = 0.1;  // node 7 is driven

  EXPECT_EQ(value("Y-TREAC", {4, 1, 0, 0, 0}), 1.0);
  EXPECT_EQ(value("Y-TREAC", {7, 1, 0, 0, 0}), 100.0);
  EXPECT_EQ(value("Y-RCTOT", {1, 0, 0, 0, 0}), 11.0);
}

/// Message and first number of the stop that a call ends with.
template <class Call>
std::pair<std::string, double> stopOf(Call call) {
  try {
    call();
  } catch (const RunEnd& stop) {
    return {stop.what(), stop.A()};
  }
  return {"no stop", 0.0};
}

TEST_F(CurvesTest, StopsNameTheNodeTheDirectionOrTheElementKind) {
  model.working.NOFIX = {4};
  model.fixities.TREACM = {0.0, 0.0, 0.0};
  const Model sixNodes = makeModel(6, {{1, 2, 3, 4, 5, 6}}, 1);
  testing::internal::CaptureStdout();

  EXPECT_EQ(stopOf([&] {
              static_cast<void>(value("Y-TREAC", {5, 1, 0, 0, 0}));
            }),
            std::pair(std::string("ERROR EN BUSCUR: NO ENCUENTRO IPOIN = "), 5.0));
  EXPECT_EQ(stopOf([&] {
              static_cast<void>(value("Y-RCTOT", {3, 0, 0, 0, 0}));
            }),
            std::pair(std::string("ERROR EN BUSCUR: NO SE SUMAN REACC EN RCTOT "), 3.0));
  EXPECT_EQ(stopOf([&] {
              const std::array<int, 5> none{};
              static_cast<void>(CurveSource(job, sixNodes, kernel, StateSlot::trial).BUSCUR("X-IINCS", none));
            }),
            std::pair(std::string("ERROR EN BUSCUR: NNODE NO CORRESPONDE A NINGUN ELEM "), 6.0));
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "ELEM TRIDIMIENSIONAL INEXISTENTE\n");
}

TEST_F(CurvesTest, ForceIsTheInternalForceOfTheElement) {
  model.vectors.ELOAD(0, 2)[5] = -3.5;

  EXPECT_EQ(value("Y-FORCE", {1, 6, 2, 0, 0}), -3.5);
}

TEST_F(CurvesTest, PointValuesByWalkLayerAndSimpleMaterial) {
  test::addLayer(model, 2);
  test::makeStores(model);
  const int third = 6;  // position 3 of the walk is the point (2, 2, 1)
  setTensor(model, StateSlot::committed, 0, third, 0, 0, {1.0, 2.0, 3.0, 4.0, 5.0, 6.0});
  setTensor(model, StateSlot::committed, 0, third, 3, 6, {0.0, 0.25});
  setTensor(model, StateSlot::committed, 0, third, 1, 12, {0.125});
  model.points.internal(StateSlot::committed, 0, third, 2)[internal::damage] = 0.5;

  EXPECT_EQ(value("Y-STRES", {1, 3, 4, 0, 0}), 4.0);
  EXPECT_EQ(value("Y-STRAI", {1, 3, 2, 2, 2}), 0.25);
  EXPECT_EQ(value("Y-STRAP", {1, 3, 1, 1, 1}), 0.125);
  EXPECT_EQ(value("Y-EHIST", {1, 3, 6, 2, 1}), 0.5);
  EXPECT_EQ(value("Y-EHIST", {1, 3, 6, 2, 0}), 0.0);
  EXPECT_EQ(value("Y-ANGLE", {1, 3, 0, 0, 0}), 0.0);  // no angle in space
}

TEST_F(CurvesTest, CurrentConfigurationShowsCauchyAndAlmansi) {
  for (const int place : {0, 6, 12}) setTensor(model, StateSlot::committed, 0, 0, 0, place, {4.0});
  model.control.LARGE = 1;
  model.control.KPUSH = 2;

  EXPECT_EQ(value("Y-STRES", {1, 1, 1, 0, 0}), 8.0);
  EXPECT_EQ(value("Y-STRAI", {1, 1, 1, 0, 0}), 2.0);
  EXPECT_EQ(value("Y-STRAP", {1, 1, 1, 0, 0}), 4.0);
}

}  // namespace
}  // namespace zema
