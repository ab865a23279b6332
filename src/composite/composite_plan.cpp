// Making of the plan of a composite, with the checks of what this build can do.
#include "composite/composite_plan.h"

#include <string>

#include "foundation/errors.h"

namespace zema {
namespace {

std::string layerName(int c, std::size_t l) {
  return "composite " + std::to_string(c) + ", layer " + std::to_string(l + 1) + ": ";
}

void checkKind(const Layer& layer, int c, std::size_t l) {
  switch (layer.kind) {
    case LayerKind::none:  // no components: such a layer adds nothing
    case LayerKind::parallel:
      return;
    case LayerKind::serialParallel:
    case LayerKind::shortFibre:
      throw InputFault(layerName(c, l) + "layers of type \"" + layer.TYLAY + "\" are not in this build yet");
  }
}

template <int N>
ComponentPlan<N> planOf(const Model& model, const Component& component, const std::string& where) {
  const int m = component.LCPRO;
  if (m < 1 || m > static_cast<int>(model.materials.all.size()) || !model.materials(m).given)
    throw InputFault(where + "material " + std::to_string(m) + " has no card");
  return {m, component.LOCMA, component.PARTV, lawOf<N>(model.materials(m), m)};
}

}  // namespace

template <int N>
CompositePlan<N> planOf(const Model& model, int c) {
  CompositePlan<N> plan;
  const std::vector<Layer>& layers = model.composites(c).layers;
  if (layers.empty()) throw InputFault("composite " + std::to_string(c) + " has no layers, but elements that use it");
  for (std::size_t l = 0; l < layers.size(); ++l) {
    checkKind(layers[l], c, l);
    LayerPlan<N> layer;
    layer.kind = layers[l].kind;
    layer.VOLFLAY = layers[l].PVLAY;
    layer.LAYAEULER = Rotation<N>(layers[l].LAEULER);
    for (const Component& component : layers[l].components)
      layer.components.push_back(planOf<N>(model, component, layerName(c, l)));
    plan.layers.push_back(std::move(layer));
  }
  return plan;
}

template CompositePlan<4> planOf<4>(const Model&, int);
template CompositePlan<6> planOf<6>(const Model&, int);

}  // namespace zema
