// Making of the plan of a composite, with the checks that need both its layers and its materials.
#include "composite/composite_plan.h"

#include <sstream>
#include <string>

#include "composite/short_fibre_share.h"
#include "foundation/errors.h"

namespace zema {
namespace {

std::string layerName(int c, std::size_t l) {
  return "composite " + std::to_string(c) + ", layer " + std::to_string(l + 1) + ": ";
}

/// N0 of a short-fibre layer.
double parallelShare(const Model& model, const Layer& layer, const std::string& where) {
  const int fibre = layer.components[1].LCPRO, matrix = layer.components[2].LCPRO;
  std::ostringstream text;
  text << where << "the fibre of material " << fibre;
  const double radius = model.materials(fibre)(slot::fibreRadius);
  if (!(radius > 0.0)) {
    text << " has the radius " << radius << " (slot 32), which is to be above 0";
    throw InputFault(text.str());
  }
  const double length = transferLengths(layer, model.materials(fibre), model.materials(matrix));
  const double N0 = NPARORI(length);
  if (N0 >= 0.0) return N0;  // not a number neither
  text << " (radius " << radius << ", length " << model.materials(fibre)(slot::fibreLength)
       << ", slots 32 and 33) is too short for matrix " << matrix
       << ": cosh(beta L) is to be 3 or more, beta L = " << length
       << ". Give a longer or thinner fibre, or a stiffer matrix";
  throw InputFault(text.str());
}

/// Ties matrix and fibre of a layer that is not parallel.
template <int N>
void planRule(const Model& model, const Layer& layer, const std::string& where, LayerPlan<N>& plan) {
  std::vector<ComponentPlan<N>>& part = plan.components;
  if (layer.kind == LayerKind::serialParallel)
    plan.rule = SerialParallelRule<N>(layer.SPDFLAG, part[0].VOLFMAT, part[1].VOLFMAT);
  if (layer.kind != LayerKind::shortFibre) return;
  const double f2 = part[1].VOLFMAT, f3 = part[2].VOLFMAT;
  part[3].VOLFMAT = f2;  // of the same fibre and matrix, the shares of which the deck gives once
  part[4].VOLFMAT = f3;
  plan.rule = SerialParallelRule<N>::serial(f3 / (f2 + f3), f2 / (f2 + f3));
  plan.parallelShare = parallelShare(model, layer, where);
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
    LayerPlan<N> layer;
    layer.kind = layers[l].kind;
    layer.VOLFLAY = layers[l].PVLAY;
    layer.LAYAEULER = Rotation<N>(layers[l].LAEULER);
    for (const Component& component : layers[l].components)
      layer.components.push_back(planOf<N>(model, component, layerName(c, l)));
    planRule(model, layers[l], layerName(c, l), layer);
    plan.layers.push_back(std::move(layer));
  }
  return plan;
}

template CompositePlan<4> planOf<4>(const Model&, int);
template CompositePlan<6> planOf<6>(const Model&, int);

}  // namespace zema
