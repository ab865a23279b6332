// Values of the axes of curves.
#include "results/curve_values.h"

#include <cassert>
#include <string>

#include "foundation/errors.h"
#include "results/element_kinds.h"

namespace zema {
namespace {

/// A parameter as a subscript from 0; it counts from 1 to most.
std::size_t subscript(int value, [[maybe_unused]] int most) {
  assert(value >= 1 && value <= most);
  return static_cast<std::size_t>(value - 1);
}

constexpr TensorOutput stressOutput{Quantity::stress, CurrentMeasure::CAUCHY};
constexpr TensorOutput strainOutput{Quantity::strain, CurrentMeasure::ALMANS};
constexpr TensorOutput plasticOutput{Quantity::plasticStrain, CurrentMeasure::asStored};

}  // namespace

double CurveSource::BUSCUR(std::string_view axisWord, std::span<const int> KDATS) const {
  requireShape(model_.mesh.elements.back());
  switch (curveQuantity(axisWord)) {
    case CurveQuantity::time:
      return model_.loadStep.NCYCL != 0.0 ? model_.loadStep.NCYCL : model_.loop.TTIME;
    case CurveQuantity::displacement:
      return displacement(KDATS);
    case CurveQuantity::reaction:
      return reaction(KDATS);
    case CurveQuantity::reactionSum:
      return reactionSum(KDATS[0]);
    case CurveQuantity::elementForce:
      return elementForce(KDATS);
    case CurveQuantity::stress:
      return tensorComponent(KDATS, stressOutput);
    case CurveQuantity::strain:
      return tensorComponent(KDATS, strainOutput);
    case CurveQuantity::plasticStrain:
      return tensorComponent(KDATS, plasticOutput);
    case CurveQuantity::internalVariable:
      return internalVariable(KDATS);
    case CurveQuantity::principalDirection:  // the principal values in space leave no angle
    case CurveQuantity::temperature:
    case CurveQuantity::none:
      return 0.0;
  }
  return 0.0;
}

double CurveSource::displacement(std::span<const int> KDATS) const {
  const DeckNode node{KDATS[0]};
  const std::size_t dof = subscript(KDATS[1], model_.mesh.dofsOf(node));
  return nodalMotion(model_, node, KDATS[2])[dof];
}

double CurveSource::reaction(std::span<const int> KDATS) const {
  const DeckNode node{KDATS[0]};
  if (!reactions_.has(node)) throw RunEnd("ERROR EN BUSCUR: NO ENCUENTRO IPOIN = ", node.number, 0.0);
  return reactions_.of(node)[subscript(KDATS[1], model_.mesh.MDOFN)];
}

/// Over the supports that hold the direction at exactly 0.
double CurveSource::reactionSum(int dof) const {
  const std::size_t direction = subscript(dof, model_.mesh.MDOFN);
  double sum = 0.0;
  bool any = false;
  for (int number = 1; number <= model_.mesh.NPOIN(); ++number) {
    const DeckNode node{number};
    if (!reactions_.has(node) || dof > model_.mesh.dofsOf(node)) continue;
    const std::size_t position = static_cast<std::size_t>(model_.mesh.firstPosition(node)) + direction;
    if (model_.working.IFFIX[position] != 1 || model_.working.FIXEM[position] != 0.0) continue;
    sum += reactions_.of(node)[direction];
    any = true;
  }
  if (!any) throw RunEnd("ERROR EN BUSCUR: NO SE SUMAN REACC EN RCTOT ", dof, 0.0);
  return sum;
}

/// The internal force; the second parameter is a place in the vectors of the element.
double CurveSource::elementForce(std::span<const int> KDATS) const {
  const std::size_t e = subscript(KDATS[0], model_.mesh.NELEM());
  const std::span<const double> force = model_.vectors.ELOAD(static_cast<int>(e), 2);
  return force[subscript(KDATS[1], static_cast<int>(force.size()))];
}

double CurveSource::tensorComponent(std::span<const int> KDATS, TensorOutput output) const {
  const PointRecord record = pointRecord(KDATS);
  TensorRoom room;
  const std::span<const double> tensor = outputTensor(model_, kernel_, record, output, room);
  return tensor[subscript(KDATS[2], static_cast<int>(tensor.size()))];
}

double CurveSource::internalVariable(std::span<const int> KDATS) const {
  const PointRecord record = pointRecord(KDATS);
  return model_.points.internal(slot_, record.e, record.number, record.component)[subscript(KDATS[2], internal::count)];
}

/// The record that element, position in the walk, layer and simple material select.
PointRecord CurveSource::pointRecord(std::span<const int> KDATS) const {
  const int e = static_cast<int>(subscript(KDATS[0], model_.mesh.NELEM()));
  const ElementData& element = model_.mesh.element(e);
  requireShape(element);
  const std::vector<PointIndex> walk = pointWalk(kernel_, element);
  const PointIndex point = walk[subscript(KDATS[1], static_cast<int>(walk.size()))];
  return {slot_, e, point, kernel_.pointNumber(element, point), component(element, KDATS[3], KDATS[4])};
}

/// 0 for the whole element, else the running number of a layer's component.
int CurveSource::component(const ElementData& element, int layer, int place) const {
  if (layer == 0 || place == 0) return 0;
  const std::vector<Layer>& layers = model_.composites(element.MATNO[0]).layers;
  const std::vector<Component>& components = layers[subscript(layer, static_cast<int>(layers.size()))].components;
  return components[subscript(place, static_cast<int>(components.size()))].LOCMA;
}

void CurveSource::requireShape(const ElementData& element) const {
  const ResultProfile& results = kernel_.results();
  if (findShape(results.post, element.NNODE) != nullptr) return;
  job_.console.say(std::string(results.curves.noShapeOnConsole) + "\n");
  throw RunEnd(std::string(results.curves.noShapeStop), element.NNODE, 0.0);
}

}  // namespace zema
