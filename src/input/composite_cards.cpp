// Reads composites layer by layer; what follows the head of a layer depends on its type word.
#include "input/composite_cards.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "input/count_field.h"
#include "input/deck_echo.h"
#include "job/job.h"
#include "model/kernel.h"

namespace zema {

namespace {

LayerKind layerKind(std::string_view TYLAY) {
  if (TYLAY == "P") return LayerKind::parallel;
  if (TYLAY == "SP") return LayerKind::serialParallel;
  if (TYLAY == "NT") return LayerKind::shortFibre;
  return LayerKind::none;
}

/// Whether the rule of a layer divides by the share of a component.
enum class Share { any, positive };

void readComponents(CardReader& cards, Layer& layer, int count, int NMATS, Share share = Share::any) {
  for (int k = 0; k < count; ++k) {
    Component component;
    component.LCPRO = cards.integer("LCPRO", 1, NMATS);
    component.PARTV = cards.real("PARTV");
    if (share == Share::positive && !(component.PARTV > 0.0))
      cards.fault("PARTV", component.PARTV, "a share above 0: matrix and fibre of this layer need both");
    layer.components.push_back(component);
  }
}

void readParallel(CardReader& cards, Layer& layer, int NMATS) {
  const int NUCOMF = cards.integer("NUCOMF", 0, NMATS);
  readComponents(cards, layer, NUCOMF, NMATS);
}

void readSerialParallel(CardReader& cards, Layer& layer, int NMATS, int NSTR1) {
  readComponents(cards, layer, 2, NMATS, Share::positive);
  for (int i = 0; i < NSTR1; ++i) {
    layer.SPDFLAG.push_back(cards.integer("SPDFLAG"));
  }
}

/// Plain share, fibre and matrix; the last two enter the layer's rule twice, and their second stands without a share.
void readShortFibre(CardReader& cards, Layer& layer, int NMATS) {
  readComponents(cards, layer, 1, NMATS);
  readComponents(cards, layer, 2, NMATS, Share::positive);
  for (const std::size_t source : {1U, 2U}) {
    Component again;
    again.LCPRO = layer.components[source].LCPRO;
    layer.components.push_back(again);
  }
}

Layer readLayer(CardReader& cards, int NMATS, int NSTR1) {
  constexpr std::size_t longestWord = 64;
  Layer layer;
  cards.begin("layer");
  layer.TYLAY = cards.word("TYLAY").substr(0, longestWord);
  layer.TYLAY.erase(layer.TYLAY.find_last_not_of(' ') + 1);
  layer.kind = layerKind(layer.TYLAY);
  layer.PVLAY = cards.real("PVLAY");
  for (double& angle : layer.LAEULER) {
    angle = cards.real("LAEULER");
  }
  if (layer.kind != LayerKind::none) {
    cards.begin("layer component");
  }
  switch (layer.kind) {
    case LayerKind::parallel:
      readParallel(cards, layer, NMATS);
      break;
    case LayerKind::serialParallel:
      readSerialParallel(cards, layer, NMATS, NSTR1);
      break;
    case LayerKind::shortFibre:
      readShortFibre(cards, layer, NMATS);
      break;
    case LayerKind::none:
      break;
  }
  return layer;
}

/// Says so when shares do not add up to 1; single precision on the card is enough.
void checkSum(Job& job, const std::string& what, double sum) {
  constexpr double rounding = 1.0e-5;
  if (std::abs(sum - 1.0) <= rounding) return;
  std::ostringstream text;
  text << what << " add up to " << sum << ", not to 1";
  notify(job, text.str());
}

void checkShares(Job& job, int number, const std::vector<Layer>& layers) {
  const std::string composite = "composite " + std::to_string(number);
  double sum = 0.0;
  for (std::size_t l = 0; l < layers.size(); ++l) {
    sum += layers[l].PVLAY;
    if (layers[l].components.empty()) continue;
    double inLayer = 0.0;
    for (const Component& component : layers[l].components) inLayer += component.PARTV;
    checkSum(job, composite + ", layer " + std::to_string(l + 1) + ": the shares of its components", inLayer);
  }
  if (!layers.empty()) checkSum(job, composite + ": the shares of its layers", sum);
}

}  // namespace

void readComposites(Job& job, Model& model, const KernelProfile& profile) {
  CardReader& cards = job.cards();
  const ControlRecord& control = model.control;
  for (int block = 0; block < control.NMATC; ++block) {
    cards.begin("composite");
    const int number = cards.integer("composite number", 1, control.NMATC);
    const int NULAY = cards.integer("NULAY", 0, control.NLAYM);
    std::vector<Layer>& layers = model.composites(number).layers;
    layers.clear();
    for (int l = 0; l < NULAY; ++l) {
      layers.push_back(readLayer(cards, control.NMATS, profile.NSTR1));
    }
    if (echoesModelCards(model)) checkShares(job, number, layers);
  }
}

void OTABR02(Composites& composites) {
  for (Composite& composite : composites.all) {
    int count = 0;
    for (Layer& layer : composite.layers) {
      for (Component& component : layer.components) {
        component.LOCMA = ++count;
      }
    }
    composite.NUMAT = count + 1;
  }
}

}  // namespace zema
