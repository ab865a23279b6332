// Writes decks card by card.
#include "jobs/solid_deck.h"

#include <sstream>

namespace zema::test {

namespace {

void writeHead(std::ostream& out, const SolidDeck& deck) {
  int steps = 1;
  for (const ElementCard& element : deck.elements) steps = std::max(steps, element.step);
  std::size_t layers = 1;
  for (const auto& composite : deck.composites) layers = std::max(layers, composite.size());
  out << "MEC3D\n"
      << deck.KPATH << ' ' << deck.LARGE << ' ' << deck.KTANP << ' ' << deck.KPUSH << ' ' << deck.ISIME
      << "\nSTART1\n'a test job'\n"
      << deck.nodes.size() << ' ' << deck.elements.size() << ' ' << deck.composites.size() << ' ' << layers << ' '
      << deck.materials.size() << ' ' << steps << " 1000000 " << deck.KMASS << ' ' << deck.NSOLV << ' ' << deck.KRENU
      << " 0 1 0 0\n"
      << (deck.NSOLV == 3 ? deck.gmres + "\n" : "");
}

void writeElements(std::ostream& out, const SolidDeck& deck) {
  int number = 0;
  for (const ElementCard& element : deck.elements) {
    out << ++number << ' ' << element.composite << " 0 " << element.FRACL << " 6 " << element.step << ' '
        << element.nodes.size() << ' ' << (element.nodes.size() == 4 ? 1 : 2) << ' ' << element.NINTE;
    for (const int node : element.nodes) out << ' ' << node;
    for (const double angle : element.angles) out << ' ' << angle;
    out << '\n';
  }
}

void writeComposites(std::ostream& out, const SolidDeck& deck) {
  int number = 0;
  for (const auto& composite : deck.composites) {
    out << ++number << ' ' << composite.size() << '\n';
    for (const LayerCards& layer : composite) {
      out << layer.word << ' ' << layer.fraction << ' ' << layer.angles[0] << ' ' << layer.angles[1] << ' '
          << layer.angles[2] << '\n';
      if (layer.word == "P") out << layer.components.size();
      for (const auto& [material, fraction] : layer.components) out << ' ' << material << ' ' << fraction;
      for (const int flag : layer.flags) out << ' ' << flag;
      out << '\n';
    }
  }
}

void writeNodes(std::ostream& out, const SolidDeck& deck) {
  int number = 0;
  for (const Vector3& node : deck.nodes) {
    out << ++number << ' ' << node[0] << ' ' << node[1] << ' ' << node[2] << '\n';
  }
}

void writeCurve(std::ostream& out, const std::vector<std::array<double, 2>>& curve) {
  out << curve.size() << '\n';
  for (const auto& [temperature, value] : curve) out << temperature << ' ' << value << '\n';
}

/// The slots of a material as its records give them.
std::map<int, double> slotsOf(const MaterialCards& m) {
  std::map<int, double> slots = m.slots;
  slots.insert({{1, m.E[0]}, {2, m.xy}, {4, m.density}, {20, 1}, {26, 1}, {36, m.yx}, {37, m.E[1]}, {38, m.xz}});
  slots.insert({{39, m.zx}, {40, m.E[2]}, {41, m.yz}, {42, m.zy}, {43, m.G[0]}, {68, m.G[1]}, {69, m.G[2]}});
  slots.insert({{44, m.angles[1]}, {72, m.angles[0]}, {73, m.angles[2]}, {64, m.referenceTemperature}});
  constexpr int map[6] = {45, 46, 47, 48, 70, 71};
  for (std::size_t i = 0; i < 6; ++i) slots.insert({map[i], m.stressMap[i]});
  return slots;
}

void writeMaterials(std::ostream& out, const SolidDeck& deck) {
  int number = 0;
  for (const MaterialCards& m : deck.materials) {
    out << "material\n" << ++number << '\n';
    for (const int code : m.codes) out << code << ' ';
    out << '\n' << slotRecords(slotsOf(m));
    writeCurve(out, m.youngCurve);
    writeCurve(out, m.poissonCurve);
    writeCurve(out, m.yieldCurve);
    for (const auto& [strain, stress] : m.stressStrain) out << strain << ' ' << stress << '\n';
  }
  out << "end of materials\n";
}

void writeIncrement(std::ostream& out, const Increment& card) {
  out << card.repeat << ' ' << card.factor << ' ' << card.time << ' ' << card.tolerance << ' ' << card.iterations;
  for (const int code : card.output) out << ' ' << code;
  out << ' ' << card.algorithm << ' ' << card.arc << " 0";
  for (const int code : card.post) out << ' ' << code;
  out << " 16*0\n";
}

void writeLoads(std::ostream& out, const SolidDeck& deck, const LoadStepCards& step) {
  int increments = 0;
  for (const Increment& card : step.increments) increments += card.repeat;
  out << "load step\n" << step.activeSteps.size();
  for (const int active : step.activeSteps) out << ' ' << active;
  out << '\n'
      << step.KLOAD << ' ' << increments << ' ' << (step.pointLoads.empty() ? 0 : 1) << ' '
      << (step.gravity == 0.0 ? 0 : 1) << ' ' << (step.faces.empty() ? 0 : 1) << ' ' << step.IDINA << ' ' << step.KNEWM
      << " 0 0 0 " << step.temperature << '\n';
  if (!step.pointLoads.empty()) {
    auto loads = step.pointLoads;
    loads.try_emplace(static_cast<int>(deck.nodes.size()), Vector3{});
    for (const auto& [node, load] : loads) out << node << '\n' << load[0] << ' ' << load[1] << ' ' << load[2] << '\n';
  }
  if (step.gravity != 0.0) {
    out << "0 0 0 " << step.gravity << '\n' << step.gravitySteps.size();
    for (const int loaded : step.gravitySteps) out << ' ' << loaded;
    out << '\n';
  }
  if (!step.faces.empty()) out << step.faces.size() << '\n';
  for (const FaceCard& face : step.faces) {
    out << face.element << '\n' << face.nodes[0] << ' ' << face.nodes[1] << ' ' << face.nodes[2] << '\n';
    for (int n = 0; n < 3; ++n) out << face.load[0] << ' ' << face.load[1] << ' ' << face.load[2] << ' ';
    out << '\n';
  }
  out << "end of loads\n";
}

void writeStep(std::ostream& out, const SolidDeck& deck, const LoadStepCards& step) {
  writeLoads(out, deck, step);
  out << step.fixities.size() << " 0\n";
  for (const FixityCard& card : step.fixities) {
    out << card.node << ' ' << card.code << ' ' << card.values[0] << ' ' << card.values[1] << ' ' << card.values[2]
        << '\n';
  }
  out << "0\n0\n";
  for (const Increment& card : step.increments) writeIncrement(out, card);
}

}  // namespace

std::string slotRecords(std::map<int, double> slots) {
  using Runs = std::vector<std::array<int, 2>>;  // of slots, first and last
  std::ostringstream out;
  out.precision(17);
  for (const Runs& record : {Runs{{1, 29}}, Runs{{30, 31}, {51, 54}, {93, 100}}, Runs{{32, 34}, {36, 43}, {68, 69}},
                             Runs{{44, 44}, {72, 79}, {45, 48}, {70, 71}}, Runs{{49, 50}}, Runs{{55, 64}}}) {
    for (const auto& [first, last] : record)
      for (int slot = first; slot <= last; ++slot) out << slots[slot] << ' ';
    out << '\n';
  }
  return out.str();
}

MaterialCards MaterialCards::isotropic(double modulus, double nu, double density) {
  MaterialCards m;
  m.E = {modulus, modulus, modulus};
  m.xy = m.yx = m.xz = m.zx = m.yz = m.zy = nu;
  m.density = density;
  return m;
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

SolidDeck symmetricCube(const MaterialCards& material, double drive) {
  SolidDeck deck;
  deck.materials = {material};
  BrickGrid{1, 1, 1}.addTo(deck, [](int i, int j, int k) { return Vector3{double(i), double(j), double(k)}; });
  int node = 0;
  for (const Vector3& x : deck.nodes) {
    const bool driven = drive != 0.0 && x[0] == 1.0;
    const int code = (x[0] == 0.0 || driven ? 100 : 0) + (x[1] == 0.0 ? 10 : 0) + (x[2] == 0.0 ? 1 : 0);
    ++node;
    if (code != 0) deck.steps[0].fixities.push_back({node, code, {driven ? drive : 0.0, 0.0, 0.0}});
  }
  return deck;
}

}  // namespace zema::test
