// The job and the cards that the tests of the input need.
#include "input/input_fixture.h"

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
  try {
    read(cards);
  } catch (const RunEnd& end) {
    return "run end " + (end.what() + FreeLine(end.A(), end.B()).text());
  } catch (const InputFault& fault) {
    return std::string("fault ") + fault.what();
  } catch (const PlainStop& stop) {
    return std::string("stop ") + stop.what();
  }
  return "goes on";
}

std::string InputTest::written(int channelNumber) {
  job.channels[channelNumber].flush();
  return folder.read(std::to_string(channelNumber));
}

std::string materialCards(int number, const std::string& codes, std::map<int, double> slots,
                          const std::string& curves) {
  slots.try_emplace(1, 100.0);
  slots.try_emplace(37, 100.0);
  return "material\n" + std::to_string(number) + "\n" + codes + "\n" + slotRecords(slots) + curves;
}

}  // namespace zema::test
