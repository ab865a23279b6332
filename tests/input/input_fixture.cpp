// Kernels without mechanics and the cards that most tests need.
#include "input/input_fixture.h"

#include "input/mesh_cards.h"

namespace zema::test {

const KernelProfile& SizesOnly::profile() const {
  static constexpr std::array<int, 3> solids{6, 20, 21};
  static constexpr std::array<int, 6> planes{1, 2, 3, 4, 5, 6};
  static const KernelProfile solid{.name = "V3D",
                                   .dimensions = 3,
                                   .MDOFN = 3,
                                   .NSTR1 = 6,
                                   .elementAngles = 3,
                                   .internalFlags = 16,
                                   .elementTypes = solids,
                                   .mostNodes = 21,
                                   .mostGauss = 2,
                                   .fixityCheckBelow = 10,
                                   .thermalFrom = 20,
                                   .fixityEcho = "1X I9 5X I6 5X 5E10.6",
                                   .jacobianMessage = ""};
  static const KernelProfile plane{.name = "V2D",
                                   .dimensions = 2,
                                   .MDOFN = 2,
                                   .NSTR1 = 4,
                                   .elementAngles = 0,
                                   .internalFlags = 3,
                                   .elementTypes = planes,
                                   .mostNodes = 8,
                                   .mostGauss = 3,
                                   .fixityCheckBelow = 6,
                                   .thermalFrom = 5,
                                   .fixityEcho = "1X I9 5X I5 5X 5E10.6",
                                   .jacobianMessage = ""};
  return solid_ ? solid : plane;
}

ElementSizes SizesOnly::TYPE(int NTYPE, int NNODE, int NGAUS) const {
  if (NTYPE == 20) return dofsOfType20 ? ElementSizes{6, *dofsOfType20, NGAUS, 1, 1} : ElementSizes{};
  if (!solid_) return {3, 2, NGAUS, NNODE == 3 ? 1 : NGAUS, 1};
  if (NTYPE != 6) return {};
  return NNODE == 4 ? ElementSizes{6, 3, NGAUS, 1, 1} : ElementSizes{6, 3, NGAUS, NGAUS, NGAUS};
}

void SizesOnly::addBodyForce(const Model&, int, std::span<const double> force, std::span<double> RLOAD) const {
  for (std::size_t i = 0; i < force.size(); ++i) RLOAD[i] += force[i];
}

void SizesOnly::addFaceLoad(const Model&, int, std::span<const int> places, std::span<const double> values,
                            std::span<double> RLOAD) const {
  const std::size_t NDOFN = values.size() / places.size();
  for (std::size_t k = 0; k < values.size(); ++k)
    RLOAD[static_cast<std::size_t>(places[k / NDOFN]) * NDOFN + k % NDOFN] += values[k];
}

InputTest::InputTest() {
  job.channels.assign(channel::listing, folder.path() / "listing", OpenMode::fromStart);
  job.channels.assign(channel::log, folder.path() / "log", OpenMode::fromStart);
  job.channels.assign(channel::frequencies, folder.path() / "frequencies", OpenMode::fromStart);
  model.text = {"MEC3D", "START1", "title"};
  ControlRecord& control = model.control;
  control.NPOIN = 5;
  control.NELEM = control.NFASE = control.NMATS = control.NLAYM = 2;
  control.NMATC = 1;
  control.NSOLV = 4;
  control.NNODM = 8;
  model.loop.ILOAD = model.loop.INCRE = 1;
}

std::string InputTest::written(int channelNumber) {
  job.channels[channelNumber].flush();
  return folder.read(std::filesystem::path(job.channels[channelNumber].path()).filename());
}

testing::AssertionResult InputTest::listed(const std::string& lines) {
  const std::string all = "\n" + listing();
  if (all.find("\n" + lines + "\n") != std::string::npos) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "not on the listing:\n" << lines << "\nbut there stands:" << all;
}

const std::string fiveNodes = "1 0 0 0\n2 1 0 0\n3 0 1 0\n4 0 0 1\n5 1 1 1\n";

void InputTest::useTwoTetrahedra() {
  model.control.NMATS = 1;
  model.text.CSTART = "START2";  // nothing of this is to stand on the listing
  deck("1 1 0 1.5 6 1 4 1 1 1 2 3 4 0 0 0\n2 1 0 2.5 6 2 4 1 1 2 3 4 5 0 0 0\n1 1\nP 0.5 0 0 0\n1 1 1\n" + fiveNodes +
       materialCards(1, "2 2 0 2 1 1", {{4, 3.0}, {57, 8.0}}) + "end\nCURV,    0\n");
  INPU(job, model, kernel);
  model.text.CSTART = "START1";
  model.loadStep.ACTIV = {1, 1};
}

std::string materialCards(int number, const std::string& codes, std::map<int, double> slots,
                          const std::string& curves) {
  slots.try_emplace(1, 100.0);
  slots.try_emplace(37, 100.0);
  const auto record = [&slots](const std::vector<std::pair<int, int>>& ranges) {
    std::string text;
    for (const auto& [first, last] : ranges)
      for (int place = first; place <= last; ++place) text += std::to_string(slots[place]) + " ";
    return text + "\n";
  };
  return "material\n" + std::to_string(number) + "\n" + codes + "\n" + record({{1, 29}}) +
         record({{30, 31}, {51, 54}, {93, 100}}) + record({{32, 34}, {36, 43}, {68, 69}}) +
         record({{44, 44}, {72, 73}, {74, 79}, {45, 48}, {70, 71}}) + record({{49, 50}}) + record({{55, 64}}) + curves;
}

}  // namespace zema::test
