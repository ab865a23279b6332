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

/// The keyword of an axis word: its characters 3 to 7.
std::string_view keyword(std::string_view axis) {
  return axis.size() > 2 ? axis.substr(2, 5) : std::string_view();
}

/// Number of values on the card that follows an axis word.
int valuesOf(std::string_view keyword) {
  if (keyword == "IINCS") return 0;
  if (keyword == "RCTOT" || keyword == "TEMPE") return 1;
  if (keyword == "TREAC") return 2;
  if (keyword == "DISPL" || keyword == "FORCE") return 3;
  return 5;
}

/// Tests the numbers of a point of the mesh that a curve asks for.
void testSubscripts(const CardReader& cards, const Model& model, std::string_view keyword,
                    std::span<const int> values) {
  const auto test = [&](std::string_view field, std::size_t place, int low, int high) {
    const int value = values[place];
    if (value < low || value > high) {
      cards.fault(field, value, "an integer from " + std::to_string(low) + " to " + std::to_string(high));
    }
  };
  const Mesh& mesh = model.mesh;
  if (keyword == "DISPL") {
    test("node", 0, 1, mesh.NPOIN());
    test("degree of freedom", 1, 1, mesh.dofsOf({values[0]}));
    test("column", 2, 1, 3);
  } else if (keyword == "TREAC") {
    test("node", 0, 1, mesh.NPOIN());
    test("degree of freedom", 1, 1, mesh.MDOFN);
  } else if (keyword == "RCTOT") {
    test("degree of freedom", 0, 1, mesh.MDOFN);
  } else if (keyword == "TEMPE") {
    test("node", 0, 1, mesh.NPOIN());
  } else if (keyword == "FORCE") {
    test("element", 0, 1, mesh.NELEM());
    test("degree of freedom", 1, 1, mesh.MDOFN);
  }
}

std::string readAxis(CardReader& cards, const Model& model, std::string_view card, std::span<int, 5> values) {
  constexpr std::size_t longestWord = 64;
  cards.begin(card);
  std::string word = cards.word("axis word").substr(0, longestWord);
  const std::string_view key = keyword(word);
  const int count = valuesOf(key);
  if (count > 0) {
    cards.begin(card);
    for (int i = 0; i < count; ++i) {
      values[static_cast<std::size_t>(i)] = cards.integer("axis parameter");
    }
    testSubscripts(cards, model, key, values);
  }
  return word;
}

/// Turns the degree of freedom of a node (second parameter) into a place of the element's force vector, from 1.
void placeForce(const Model& model, const Kernel& kernel, std::string_view axis, std::span<int, 5> values) {
  if (keyword(axis) != "FORCE") {
    return;
  }
  const auto [element, dof, node] = std::array{values[0], values[1], values[2]};
  const std::span<const int> LNODS = model.mesh.nodesOf(element - 1);
  const auto place = std::find(LNODS.begin(), LNODS.end(), node);
  if (place == LNODS.end()) {
    throw RunEnd("** EL PUNTO NO PERTENECE AL ELEMENTO **", node, element);
  }
  const int NDOFN = sizesOf(kernel, model.mesh.element(element - 1)).NDOFN;
  values[1] = static_cast<int>(place - LNODS.begin()) * NDOFN + dof;
}

Curve readCurve(CardReader& cards, const Model& model, const Kernel& kernel) {
  constexpr int titleWidth = 16;
  Curve curve;
  curve.title = cards.line("curve title", titleWidth);
  const std::span<int, 10> KDATS(curve.KDATS);
  curve.xWord = readAxis(cards, model, "curve X axis", KDATS.first<5>());
  curve.yWord = readAxis(cards, model, "curve Y axis", KDATS.last<5>());
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
