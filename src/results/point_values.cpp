// Tensors of the point records.
#include "results/point_values.h"

#include <algorithm>

namespace zema {
namespace {

int placeOf(Quantity quantity, MechanicalPlaces places) {
  switch (quantity) {
    case Quantity::stress:
      return places.STRSG();
    case Quantity::strain:
      return places.STRAT();
    case Quantity::plasticStrain:
      return places.STRAP();
  }
  return 0;
}

}  // namespace

std::span<double> outputTensor(const Model& model, const Kernel& kernel, const PointRecord& record, TensorOutput output,
                               TensorRoom& room) {
  const std::size_t n = static_cast<std::size_t>(model.NSTR1);
  const std::size_t place = static_cast<std::size_t>(placeOf(output.quantity, model.points.places()));
  const std::span<const double> row = model.points.mechanical(record.slot, record.e, record.number, record.component);
  std::ranges::copy(row.subspan(place, n), room.begin());
  const std::span<double> tensor = std::span(room).first(n);
  if (model.currentConfiguration()) {
    if (output.measure == CurrentMeasure::CAUCHY)
      kernel.CAUCHY(model, record.e, record.point, record.component, tensor);
    if (output.measure == CurrentMeasure::ALMANS)
      kernel.ALMANS(model, record.e, record.point, record.component, tensor);
  }
  return tensor;
}

std::vector<LayerComponent> componentsOf(const Composite& composite) {
  std::vector<LayerComponent> all;
  for (std::size_t l = 0; l < composite.layers.size(); ++l)
    for (std::size_t k = 0; k < composite.layers[l].components.size(); ++k)
      all.push_back({static_cast<int>(l) + 1, static_cast<int>(k) + 1, composite.layers[l].components[k].LOCMA});
  return all;
}

}  // namespace zema
