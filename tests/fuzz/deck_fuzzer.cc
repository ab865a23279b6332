// Coverage-guided fuzzing of everything that reads the deck: head, model, load step, fixities, increment cards.
//
// Build: cmake --preset fuzz && cmake --build --preset fuzz. Run: build/fuzz/zema_fuzz CORPUS tests/data/decks.
#include <cstddef>
#include <cstdint>
#include <string>

#include "input/fixity_cards.h"
#include "input/increment_cards.h"
#include "input/load_cards.h"
#include "input/mesh_cards.h"
#include "job/head.h"
#include "job/job.h"
#include "kernel/solid3d/solid3d.h"
#include "model/model.h"

namespace {

using namespace zema;

void readLoadSteps(Job& job, Model& model, const Kernel& kernel) {
  constexpr int mostRead = 3;
  CardReader& deck = job.cards();
  deck.begin("number of load steps");
  const int NLOAD = deck.integer("NLOAD");
  for (model.loop.ILOAD = 1; model.loop.ILOAD <= NLOAD && model.loop.ILOAD <= mostRead; ++model.loop.ILOAD) {
    LOADPS(job, model, kernel);
    INPU3(job, model, kernel);
    for (model.loop.INCRE = 1; model.loop.INCRE <= mostRead; ++model.loop.INCRE) {
      if (!readIncrementCard(job, model, kernel)) {
        break;
      }
      echoIncrement(job, model);
    }
  }
}

void readDeck(std::string text) {
  Job job;
  job.deck.emplace(CardReader::fromText("fuzzed.dts", std::move(text)));
  for (const int number : {channel::listing, channel::log, channel::postMesh, channel::postResults, channel::pairs,
                           channel::iterations, channel::thermalListing, channel::thermalLog, channel::frequencies}) {
    job.channels.assign(number, "/dev/null", OpenMode::append);
  }
  INPU1(job);
  const auto kernel = makeSolid3D();
  Model model;
  model.text = job.CTEXT;
  model.control = job.KCONT;
  model.NSTR1 = kernel->profile().NSTR1;
  model.mesh.MDOFN = kernel->profile().MDOFN;
  model.mesh.dimensions = kernel->profile().dimensions;
  INPU(job, model, *kernel);
  kernel->prepare(model);
  readLoadSteps(job, model, *kernel);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    readDeck(std::string(reinterpret_cast<const char*>(data), size));
  } catch (const RunEnd&) {
  } catch (const PlainStop&) {
  } catch (const InputFault&) {
  }
  return 0;
}
