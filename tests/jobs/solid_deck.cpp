// Writes decks card by card.
#include "jobs/solid_deck.h"

#include <algorithm>
#include <concepts>
#include <ranges>
#include <sstream>

namespace zema::test {

namespace {

template <class Item>
void put(std::ostream& out, const Item& item) {
  if constexpr (std::ranges::range<Item> && !std::convertible_to<Item, std::string>)
    for (const auto& one : item) put(out, one);
  else
    out << item << ' ';
}

/// Writes a card: items and ranges of them, with blanks between them.
template <class... Items>
void card(std::ostream& out, const Items&... items) {
  (put(out, items), ...);
  out.seekp(-1, std::ios::cur);
  out << '\n';
}

void writeHead(std::ostream& out, const SolidDeck& deck) {
  int steps = 1;
  for (const ElementCard& element : deck.elements) steps = std::max(steps, element.step);
  std::size_t layers = 1;
  for (const auto& composite : deck.composites) layers = std::max(layers, composite.size());
  out << "MEC3D\n";
  card(out, deck.KPATH, deck.LARGE, deck.KTANP, deck.KPUSH, deck.ISIME);
  out << "START1\n'a test job'\n";
  card(out, deck.nodes.size(), deck.elements.size(), deck.composites.size(), layers, deck.materials.size(), steps,
       1000000, deck.KMASS, deck.NSOLV, deck.KRENU, "0 1 0 0");
  if (deck.NSOLV == 3) card(out, deck.gmres);
}

void writeElements(std::ostream& out, const SolidDeck& deck) {
  int number = 0;
  for (const ElementCard& element : deck.elements)
    card(out, ++number, element.composite, 0, element.FRACL, 6, element.step, element.nodes.size(),
         element.nodes.size() == 4 ? 1 : 2, element.NINTE, element.nodes, element.angles);
}

void writeComposites(std::ostream& out, const SolidDeck& deck) {
  int number = 0;
  for (const auto& composite : deck.composites) {
    card(out, ++number, composite.size());
    for (const LayerCards& layer : composite) {
      card(out, layer.word, layer.fraction, layer.angles);
      if (layer.word == "P") put(out, layer.components.size());
      for (const auto& [material, fraction] : layer.components) out << material << ' ' << fraction << ' ';
      card(out, layer.flags);
    }
  }
}

void writeNodes(std::ostream& out, const SolidDeck& deck) {
  int number = 0;
  for (const Vector3& node : deck.nodes) card(out, ++number, node);
}

void writePoints(std::ostream& out, const TemperatureCurve& curve) {
  for (std::size_t i = 0; i < curve.X.size(); ++i) card(out, curve.X[i], curve.Y[i]);
}

void writeMaterials(std::ostream& out, const SolidDeck& deck) {
  int number = 0;
  for (const Material& m : deck.materials) {
    out << "material\n" << ++number << '\n';
    card(out, static_cast<int>(m.NCRIT), static_cast<int>(m.NCRIP), static_cast<int>(m.NTINT),
         static_cast<int>(m.NFLUG), static_cast<int>(m.NHARD), static_cast<int>(m.NMATX));
    out << slotRecords(m);
    for (const TemperatureCurve* curve : {&m.young, &m.poisson, &m.yield}) {
      card(out, curve->X.size());
      writePoints(out, *curve);
    }
    writePoints(out, m.stressStrain);
  }
  out << "end of materials\n";
}

void writeLoads(std::ostream& out, const SolidDeck& deck, const LoadStepCards& step) {
  int increments = 0;
  for (const Increment& one : step.increments) increments += one.repeat;
  out << "load step\n";
  card(out, step.activeSteps.size(), step.activeSteps);
  card(out, step.KLOAD, increments, step.pointLoads.empty() ? 0 : 1, step.gravity == 0.0 ? 0 : 1,
       step.faces.empty() ? 0 : 1, step.IDINA, step.KNEWM, "0 0 0", step.temperature);
  auto loads = step.pointLoads;
  if (!loads.empty()) loads.try_emplace(static_cast<int>(deck.nodes.size()), Vector3{});
  for (const auto& [node, load] : loads) {
    card(out, node);
    card(out, load);
  }
  if (step.gravity != 0.0) {
    card(out, "0 0 0", step.gravity);
    card(out, step.gravitySteps.size(), step.gravitySteps);
  }
  if (!step.faces.empty()) card(out, step.faces.size());
  for (const FaceCard& face : step.faces) {
    card(out, face.element);
    card(out, face.nodes);
    card(out, face.load, face.load, face.load);
  }
  out << "end of loads\n";
}

void writeStep(std::ostream& out, const SolidDeck& deck, const LoadStepCards& step) {
  writeLoads(out, deck, step);
  card(out, step.fixities.size(), 0);
  for (const FixityCard& one : step.fixities) card(out, one.node, one.code, one.values);
  out << "0\n0\n";
  for (const Increment& one : step.increments)
    card(out, one.repeat, one.factor, one.time, one.tolerance, one.iterations, one.output, one.algorithm, one.arc, 0,
         one.post, "16*0");
}

}  // namespace

std::string slotRecords(const Material& material) {
  using Runs = std::vector<std::array<int, 2>>;  // of slots, first and last
  std::ostringstream out;
  out.precision(17);
  for (const Runs& record : {Runs{{1, 29}}, Runs{{30, 31}, {51, 54}, {93, 100}}, Runs{{32, 34}, {36, 43}, {68, 69}},
                             Runs{{44, 44}, {72, 79}, {45, 48}, {70, 71}}, Runs{{49, 50}}, Runs{{55, 64}}}) {
    for (const auto& [first, last] : record)
      for (int slot = first; slot <= last; ++slot) out << material(slot) << ' ';
    out << '\n';
  }
  return out.str();
}

Material MaterialCards::isotropic(double E, double nu, const Slots& more, const LawCodes& codes) {
  return with(isotropicMaterial(E, nu, {{slot::yieldRatio, 1.0}, {slot::potentialRatio, 1.0}}, codes), more);
}

Material MaterialCards::damaging(double E, double nu, double strength, double fractureEnergy, const Slots& more) {
  const Slots slots{{30, strength}, {31, 1.0}, {54, fractureEnergy}};
  return with(isotropic(E, nu, slots, {.NTINT = Law::simpleDamage}), more);
}

Material MaterialCards::plastic(double E, double nu, double yieldStress, double slope) {
  return isotropic(E, nu, {{7, yieldStress}, {8, 1}, {9, 1}, {10, 1}, {11, slope}, {12, 1}},
                   plasticCodes(Criterion::vonMises, Law::backwardEuler));
}

std::string SolidDeck::text() const {
  std::ostringstream out;
  out.precision(17);
  writeHead(out, *this);
  writeElements(out, *this);
  writeComposites(out, *this);
  writeNodes(out, *this);
  writeMaterials(out, *this);
  out << "CURV,";
  out.width(5);
  out << curveCount << '\n';
  for (const std::string& line : curves) out << line << '\n';
  out << steps.size() << '\n';
  for (const LoadStepCards& step : steps) writeStep(out, *this, step);
  return out.str();
}

std::vector<int> BrickGrid::cell(int i, int j, int k) const {
  return {at(i, j, k),     at(i + 1, j, k),     at(i + 1, j + 1, k),     at(i, j + 1, k),
          at(i, j, k + 1), at(i + 1, j, k + 1), at(i + 1, j + 1, k + 1), at(i, j + 1, k + 1)};
}

void splitIntoTetrahedra(SolidDeck& deck) {
  constexpr int corners[6][4] = {{0, 1, 2, 6}, {0, 2, 3, 6}, {0, 3, 7, 6}, {0, 7, 4, 6}, {0, 4, 5, 6}, {0, 5, 1, 6}};
  std::vector<ElementCard> tetrahedra;
  for (const ElementCard& brick : deck.elements) {
    for (const auto& corner : corners) {
      ElementCard tetrahedron = brick;
      tetrahedron.nodes.clear();
      for (const int c : corner) tetrahedron.nodes.push_back(brick.nodes[static_cast<std::size_t>(c)]);
      tetrahedra.push_back(tetrahedron);
    }
  }
  deck.elements = tetrahedra;
}

SolidDeck symmetricCube(const Material& material, double drive, int bricks) {
  SolidDeck deck = BrickGrid{bricks, 1, 1}.deck(material, [&](int i, int j, int k) {
    return Vector3{i / double(bricks), double(j), double(k)};
  });
  deck.support([drive](const Vector3& x) {
    return (x[0] == 0.0 || (drive != 0.0 && x[0] == 1.0) ? 100 : 0) + (x[1] == 0.0 ? 10 : 0) + (x[2] == 0.0 ? 1 : 0);
  });
  for (FixityCard& card : deck.steps[0].fixities)
    if (deck.node(card.node)[0] == 1.0) card.values[0] = drive;
  return deck;
}

}  // namespace zema::test
