// Composite materials: layers, their components and the rules that mix them, as the deck gives them.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace zema {

/// How the components of a layer share strain and stress.
enum class LayerKind { none, parallel, serialParallel, shortFibre };

/// One component of a layer.
struct Component {
  int LCPRO = 0;       ///< material number, 1 to NMATS
  double PARTV = 0.0;  ///< volume fraction in the layer
  int LOCMA = 0;       ///< running number of the component within its composite, from 1; its place in the point store
};

/// One layer of a composite.
struct Layer {
  std::string TYLAY;                  ///< layer type word of the deck: "P", "SP" or "NT"
  LayerKind kind = LayerKind::none;   ///< what the word means; none for an unknown word
  double PVLAY = 0.0;                 ///< volume fraction of the layer in the composite
  std::array<double, 3> LAEULER{};    ///< Euler angles, degrees
  std::vector<Component> components;  ///< NUCOMF of them
  std::vector<int> SPDFLAG;           ///< serial-parallel: 1 where a strain component is parallel, NSTR1 values
};

/// One composite: a stack of layers.
struct Composite {
  std::vector<Layer> layers;  ///< NULAY of them
  int NUMAT = 1;              ///< components of the composite plus 1, the first record being the composite itself
  std::vector<int> ELECOM;    ///< its elements (numbers from 0), in the order of their cards
};

/// All composites, by number from 0.
struct Composites {
  std::vector<Composite> all;

  [[nodiscard]] Composite& operator()(int number) { return all[static_cast<std::size_t>(number - 1)]; }
  [[nodiscard]] const Composite& operator()(int number) const { return all[static_cast<std::size_t>(number - 1)]; }
};

/// `PROCOM_V`: a property slot mixed over the layers and components of a composite,
/// sum of PVLAY PARTV PROPS(slot). props(material, slot) fetches a value.
template <class Props>
[[nodiscard]] double PROCOM_V(const Composite& composite, int slot, const Props& props) {
  double sum = 0.0;
  for (const Layer& layer : composite.layers) {
    for (const Component& component : layer.components) {
      sum += layer.PVLAY * component.PARTV * props(component.LCPRO, slot);
    }
  }
  return sum;
}

}  // namespace zema
