// Looks for the curve card and reads what each curve plots against what.
#include "input/curve_cards.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "input/element_sizes.h"
#include "job/job.h"

namespace zema {

namespace {

/// The value of an integer field of fixed columns: blanks count for nothing, an empty field is 0.
std::optional<int> fixedInteger(std::string columns) {
  std::erase(columns, ' ');
  if (columns.empty()) {
    return 0;
  }
  if (columns.front() == '+') {
    columns.erase(0, 1);
  }
  int value = 0;
  const char* end = columns.data() + columns.size();
  const auto [stop, error] = std::from_chars(columns.data(), end, value);
  if (stop != end || error != std::errc()) {
    return std::nullopt;
  }
  return value;
}

/// Looks for the card "CURV," among the next lines and returns its count of curves.
int findCurves(CardReader& cards) {
  constexpr int mostLines = 101;
  constexpr std::string_view word = "CURV,";
  constexpr int width = 10;
  try {
    for (int read = 1;; ++read) {
      const std::string line = cards.line("curve", width);
      if (!line.starts_with(word) || read > mostLines) {
        continue;
      }
      const std::string columns = line.substr(word.size());
      const std::optional<int> NCURV = fixedInteger(columns);
      if (!NCURV || *NCURV < 0) {
        cards.fault("NCURV", columns, "a count of curves in columns 6 to 10");
      }
      return *NCURV;
    }
  } catch (const EndOfDeck&) {
    throw RunEnd(" >>>>  ERROR !!!. No encuentro: CURV", 0.0, 0.0);
  }
}

/// Number of values on the card that follows an axis word.
int valuesOf(CurveQuantity quantity) {
  switch (quantity) {
    case CurveQuantity::time:
      return 0;
    case CurveQuantity::reactionSum:
    case CurveQuantity::temperature:
      return 1;
    case CurveQuantity::reaction:
      return 2;
    case CurveQuantity::displacement:
    case CurveQuantity::elementForce:
      return 3;
    default:
      return 5;
  }
}

/// The parameters of an axis as its card gives them.
struct AxisParameters {
  const CardReader& cards;
  std::span<const int> values;

  void test(std::string_view field, std::size_t place, int low, int high) const {
    const int value = values[place];
    if (value < low || value > high) {
      cards.fault(field, value, "an integer from " + std::to_string(low) + " to " + std::to_string(high));
    }
  }
};

/// Ends the run: a node or an integration point is not one of the element's.
[[noreturn]] void refusePoint(int point, int element) {
  throw RunEnd("** EL PUNTO NO PERTENECE AL ELEMENTO **", point, element);
}

/// Tests element, Gauss position, component, layer and simple material.
void testPointValue(const AxisParameters& axis, const Model& model, const Kernel& kernel, CurveQuantity quantity) {
  axis.test("element", 0, 1, model.mesh.NELEM());
  const ElementData& element = model.mesh.element(axis.values[0] - 1);
  if (axis.values[1] < 1 || axis.values[1] > sizesOf(kernel, element).points()) {
    refusePoint(axis.values[1], axis.values[0]);
  }
  if (quantity == CurveQuantity::internalVariable) {
    axis.test("internal variable", 2, 1, internal::count);
  } else if (quantity != CurveQuantity::principalDirection) {
    axis.test("component", 2, 1, kernel.profile().NSTR1);
  }
  const std::vector<Layer>& layers = model.composites(element.MATNO[0]).layers;
  axis.test("layer", 3, 0, static_cast<int>(layers.size()));
  if (axis.values[3] > 0) {
    const Layer& layer = layers[static_cast<std::size_t>(axis.values[3] - 1)];
    axis.test("simple material", 4, 0, static_cast<int>(layer.components.size()));
  }
}

/// Tests what a curve asks for against the model.
void testParameters(const AxisParameters& axis, const Model& model, const Kernel& kernel, CurveQuantity quantity) {
  const Mesh& mesh = model.mesh;
  switch (quantity) {
    case CurveQuantity::none:
    case CurveQuantity::time:
      return;
    case CurveQuantity::displacement:
      axis.test("node", 0, 1, mesh.NPOIN());
      axis.test("degree of freedom", 1, 1, mesh.dofsOf({axis.values[0]}));
      axis.test("column", 2, 1, 3);
      return;
    case CurveQuantity::reaction:
      axis.test("node", 0, 1, mesh.NPOIN());
      axis.test("degree of freedom", 1, 1, mesh.MDOFN);
      return;
    case CurveQuantity::reactionSum:
      axis.test("degree of freedom", 0, 1, mesh.MDOFN);
      return;
    case CurveQuantity::temperature:
      axis.test("node", 0, 1, mesh.NPOIN());
      return;
    case CurveQuantity::elementForce:
      axis.test("element", 0, 1, mesh.NELEM());
      axis.test("degree of freedom", 1, 1, mesh.MDOFN);
      return;
    default:
      testPointValue(axis, model, kernel, quantity);
  }
}

std::string readAxis(CardReader& cards, const Model& model, const Kernel& kernel, std::string_view card,
                     std::span<int, 5> values) {
  constexpr std::size_t longestWord = 64;
  cards.begin(card);
  std::string word = cards.word("axis word").substr(0, longestWord);
  const CurveQuantity quantity = curveQuantity(word);
  const int count = valuesOf(quantity);
  if (count > 0) {
    cards.begin(card);
    for (int i = 0; i < count; ++i) {
      values[static_cast<std::size_t>(i)] = cards.integer("axis parameter");
    }
  }
  testParameters({cards, values}, model, kernel, quantity);
  return word;
}

/// Turns the degree of freedom of a node (second parameter) into a place of the element's force vector, from 1.
void placeForce(const Model& model, const Kernel& kernel, std::string_view axis, std::span<int, 5> values) {
  if (curveQuantity(axis) != CurveQuantity::elementForce) {
    return;
  }
  const auto [element, dof, node] = std::array{values[0], values[1], values[2]};
  const std::span<const int> LNODS = model.mesh.nodesOf(element - 1);
  const auto place = std::find(LNODS.begin(), LNODS.end(), node);
  if (place == LNODS.end()) {
    refusePoint(node, element);
  }
  const int NDOFN = sizesOf(kernel, model.mesh.element(element - 1)).NDOFN;
  values[1] = static_cast<int>(place - LNODS.begin()) * NDOFN + dof;
}

Curve readCurve(CardReader& cards, const Model& model, const Kernel& kernel) {
  constexpr int titleWidth = 16;
  Curve curve;
  curve.title = cards.line("curve title", titleWidth);
  const std::span<int, 10> KDATS(curve.KDATS);
  curve.xWord = readAxis(cards, model, kernel, "curve X axis", KDATS.first<5>());
  curve.yWord = readAxis(cards, model, kernel, "curve Y axis", KDATS.last<5>());
  placeForce(model, kernel, curve.yWord, KDATS.last<5>());
  placeForce(model, kernel, curve.xWord, KDATS.first<5>());
  return curve;
}

}  // namespace

void INPCU(Job& job, Model& model, const Kernel& kernel) {
  CardReader& cards = job.cards();
  const int NCURV = findCurves(cards);
  model.curves.clear();
  for (int i = 0; i < NCURV; ++i) {
    model.curves.push_back(readCurve(cards, model, kernel));
  }
}

}  // namespace zema
