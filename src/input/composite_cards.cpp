// Reads composites layer by layer; what follows the head of a layer depends on its type word.
#include "input/composite_cards.h"

#include <algorithm>

#include "input/count_field.h"
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

void readComponents(CardReader& cards, Layer& layer, int count, int NMATS) {
  for (int k = 0; k < count; ++k) {
    Component component;
    component.LCPRO = cards.integer("LCPRO", 1, NMATS);
    component.PARTV = cards.real("PARTV");
    layer.components.push_back(component);
  }
}

void readParallel(CardReader& cards, Layer& layer, int NMATS) {
  const int NUCOMF = cards.integer("NUCOMF", 0, NMATS);
  readComponents(cards, layer, NUCOMF, NMATS);
}

void readSerialParallel(CardReader& cards, Layer& layer, int NMATS, int NSTR1) {
  readComponents(cards, layer, 2, NMATS);
  for (int i = 0; i < NSTR1; ++i) {
    layer.SPDFLAG.push_back(cards.integer("SPDFLAG"));
  }
}

/// Matrix, fibre and interface; the last two enter the layer's rule twice, and their second stands without a share.
void readShortFibre(CardReader& cards, Layer& layer, int NMATS) {
  readComponents(cards, layer, 3, NMATS);
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
