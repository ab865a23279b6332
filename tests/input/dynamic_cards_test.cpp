// The file of dynamic data: what it sets, and data that make no sense.
#include "input/dynamic_cards.h"

#include "input/input_fixture.h"
#include "input/load_cards.h"

namespace zema::test {
namespace {

class DynamicCardsTest : public SectionTest<LOADPS> {
 protected:
  /// Reads a dynamic load step of second order whose data are the next of the file, or all of a file that is given.
  std::string endWith(const std::string& data) {
    if (!data.empty()) {
      folder.write("job.din", data);
      job.CFILE[5] = folder.path() / "job.din";
      job.dynamicData.reset();
    }
    const std::string end = endOf("t\n0\n0 7 0 0 0 1 1 4*0\nend\n");
    return end.substr(end.rfind('/') + 1);
  }
};

TEST_F(DynamicCardsTest, TablesComeInIncrementsAndOneFileServesAllSteps) {
  using testing::ElementsAre;
  const std::string record = " 1 2 .1 .25 .5 1 10 100 -1 2 ";
  const DynamicData& data = model.dynamics;
  ASSERT_EQ(endWith("0 .5 3 5" + record + "0\n1 9 0 3 9 1 2.5\n 9 0 / rest\n1 .5 3 4" + record +
                    "2\n2 10 1\ntitle\n0 1 -1 1 2 3\n1 .5 4 3" + record + "3\n3 10 0\n\n1 1 4 2 2 5 3 3 6\n"),
            "goes on");
  EXPECT_THAT(model.mechanical.FACTD, ElementsAre(1.0, 2.0, -0.5, 0.0, 0.0));
  EXPECT_THAT(data.FLEC[2], ElementsAre(0.0, 1.0, 0.0, 0.0, 0.0));
  EXPECT_EQ(model.loop.NINCS, 5);
  EXPECT_EQ(model.increment.DTIME, 0.5);
  EXPECT_THAT((std::array{data.ALFAD, data.BETAD, data.BETAN, data.GAMMN}), ElementsAre(2.0, 0.1, 0.25, 0.5));
  const LoadStep& step = model.loadStep;
  EXPECT_THAT((std::array{step.TCYCL, step.NCYCL, step.FATIM, step.TEXPO}), ElementsAre(10.0, 100.0, -1.0, 2.0));

  ASSERT_EQ(endWith(""), "goes on");
  EXPECT_THAT(model.mechanical.FACTD, ElementsAre(1.0, 1.0, 1.0, 0.0));
  EXPECT_THAT(data.FLEC[0], ElementsAre(10.0, 15.0, 20.0));  // points at 0 and 1, steps of 1/2
  EXPECT_THAT(data.FLEC[1], ElementsAre(-10.0, 10.0, 30.0));
  EXPECT_THAT(data.FLEC[2], ElementsAre(1.0, 1.0, 0.0, 1.0));
  EXPECT_EQ(step.NCYCL, 200.0);

  ASSERT_EQ(endWith(""), "goes on");
  EXPECT_THAT(data.FLEC[0], ElementsAre(10.0, 20.0, 30.0, 0.0));
  EXPECT_THAT(data.FLEC[2], ElementsAre(1.0, 0.0, 1.0));
  EXPECT_EQ(endOf("t\n0\n0 2 9*0\nend\n"), "goes on");  // a static step
  EXPECT_EQ(step.NCYCL, 300.0);
  EXPECT_EQ(step.TCYCL, 10.0);
}

TEST_F(DynamicCardsTest, PointsOfATableAreMetWhateverTheStep) {
  for (const double DTIME : {0.1, 0.01, 0.3, 1.0 / 3.0}) {
    std::vector<double> times, values;
    for (int i = 0; i < 9; ++i) {
      times.push_back(0.7 + 2 * i * DTIME);
      values.push_back(i % 2 == 0 ? i : -i);
    }
    const std::vector<double> rows = INTERP(times, values, DTIME, 19);
    for (std::size_t i = 0; i < 19; ++i) {
      const double expected = i > 16 ? 0.0 : i % 2 == 0 ? values[i / 2] : (values[i / 2] + values[i / 2 + 1]) / 2;
      EXPECT_NEAR(rows[i], expected, 1e-12) << i << " of " << DTIME;
    }
  }
}

TEST_F(DynamicCardsTest, BadDataNameTheirPlace) {
  job.CFILE[5] = "nowhere.din";
  EXPECT_THAT([&] { endWith(""); }, testing::ThrowsMessage<FileFault>(testing::HasSubstr("which is dynamic")));
  const std::string rest = " 1 1 1 0 0 .25 .5 0 0 0 0 0 0\n";
  const std::map<std::string, std::string> ends{
      {"2 .1" + rest, "line 1, dynamic data card, field KACEL: found 2, expected an integer from 0 to 1"},
      {"0 -.1" + rest, "field DTIME: found -0.1, expected a time step above 0"},
      {"0 0" + rest, "run end  >>>> REVISAR INCREMENTO DE TIEMPO DTIME=0.0 "},
      {"0 .1 5001", "field NFLEC: found 5001, expected an integer from 0 to 5000"},
      {"0 .1 1 5001", "field NSTEP: found 5001"},
      {"0 .1 1 1 1 0 0 0", "field BETAN: found 0.0, expected a Newmark beta above 0"},
      {"0 .1 1 1 1 0 0 .25 .5 0 -1", "field TCYCL: found -1"},
      {"0 .1 1 1 1 0 0 .25 .5 0 1 0 0 0 -1", "field KSAVE: found -1, expected 0 or an interval of time steps"},
      {"0 .1 2" + rest.substr(2) + "1 1 1",
       "line 2, load table card, field mechanical factor: found the end of the file"},
      {"1 .1" + rest + "1 1 2\n", "accelerogram card, field interpolation flag: found 2"},
      {"1 .1" + rest + "5001\n", "accelerogram card, field number of points: found 5001"},
      {"1 .1" + rest + "2 1 1\n\n1 0 0 1 0 0\n", "field time: found 1.0, expected a time after that"}};
  for (const auto& [data, end] : ends) EXPECT_THAT(endWith(data), testing::HasSubstr(end)) << data;
}

}  // namespace
}  // namespace zema::test
