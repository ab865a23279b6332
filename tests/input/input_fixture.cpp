// The job and the cards that the tests of the input need.
#include "input/input_fixture.h"

#include "foundation/ends.h"
#include "input/mesh_cards.h"
#include "jobs/solid_deck.h"

namespace zema::test {

InputTest::InputTest() {
  for (const int number : {channel::listing, channel::log, channel::frequencies})
    job.channels.assign(number, folder.path() / std::to_string(number), OpenMode::fromStart);
  ControlRecord& control = model.control;
  control.NPOIN = 5;
  control.NELEM = control.NFASE = control.NMATS = control.NLAYM = 2;
  control.NMATC = 1;
  control.NSOLV = 4;
  control.NNODM = 8;
  model.loop.ILOAD = 1;
  model.loop.INCRE = 12;
  model.loadStep.ACTIV = {1, 1};
  model.text = {"MEC3D", "START2", "title"};  // nothing of this is to stand on the listing
  deck(ModelCards());
  INPU(job, model, kernel);
  model.text.CSTART = "START1";
}

std::string InputTest::endOf(const std::string& cards) {
  return zema::endOf([&] { read(cards); });
}

std::string InputTest::written(int channelNumber) {
  job.channels[channelNumber].flush();
  return folder.read(std::to_string(channelNumber));
}

std::string materialCards(int number, const std::string& codes, const Slots& slots, const std::string& curves) {
  const Material material = with(with(Material{}, {{slot::youngX, 100.0}, {slot::youngY, 100.0}}), slots);
  return "material\n" + std::to_string(number) + "\n" + codes + "\n" + slotRecords(material) + curves;
}

}  // namespace zema::test
