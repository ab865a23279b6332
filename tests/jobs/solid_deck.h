// Builds decks of 3D solids for whole-job tests.
#pragma once

#include <array>
#include <map>
#include <string>
#include <vector>

#include "constitutive/sample_materials.h"

namespace zema::test {

using Vector3 = std::array<double, 3>;

/// Materials of decks, in the units of the cards, whose criteria have ratios of 1; further slots.
struct MaterialCards {
  static Material isotropic(double E, double nu, const Slots& more = {}, const LawCodes& codes = {});
  /// Isotropic damage by von Mises, exponential with this fracture energy.
  static Material damaging(double E, double nu, double strength, double fractureEnergy, const Slots& more = {});
  /// Plastic by von Mises, with a straight hardening curve; its slope over the strain.
  static Material plastic(double E, double nu, double yieldStress, double slope = 0.0);
};

/// Records 4 to 9 of a material.
std::string slotRecords(const Material& material);

struct LayerCards {
  double fraction = 1.0;
  Vector3 angles{};
  std::vector<std::pair<int, double>> components{{1, 1.0}};
  std::string word = "P";
  std::vector<int> flags{};  ///< of a serial-parallel layer
};

struct ElementCard {
  std::vector<int> nodes;
  int composite = 1;
  int step = 1;
  Vector3 angles{};
  int NINTE = 1;
  double FRACL = 1.0;
};

struct FixityCard {
  int node;
  int code;
  Vector3 values{};
};

struct FaceCard {
  int element;
  std::array<int, 3> nodes;
  Vector3 load;  ///< the same at the three nodes
};

struct Increment {
  int repeat = 1;
  double factor = 1.0;
  double time = 1.0;
  double tolerance = 1e-9;
  int iterations = 30;
  std::array<int, 4> output{0, 3, 0, 0};
  int algorithm = 2;
  std::string arc = "0 0.0 0 0";  ///< KARCL ARCLN NODAR IDOFA
  std::array<int, 4> post{1, 1, 1, 0};
};

struct LoadStepCards {
  std::vector<int> activeSteps{1};
  int KLOAD = 0;
  int IDINA = 0;
  int KNEWM = 1;
  std::map<int, Vector3> pointLoads;
  double gravity = 0.0;  ///< g along -z of the loaded steps
  std::vector<int> gravitySteps{1};
  std::vector<FaceCard> faces;
  double temperature = 0.0;
  std::vector<FixityCard> fixities;
  std::vector<Increment> increments{Increment{}};
};

struct SolidDeck {
  int KPATH = 1;
  int LARGE = 0;
  int KTANP = 0;
  int KPUSH = 1;
  int ISIME = 0;
  int NSOLV = 4;
  int KMASS = 0;
  std::string gmres = "60 1000 1e-9 0";  ///< the card that follows with NSOLV 3
  int KRENU = 0;
  std::vector<Vector3> nodes{};
  std::vector<ElementCard> elements{};
  std::vector<std::vector<LayerCards>> composites{{LayerCards{}}};
  std::vector<Material> materials{};
  std::vector<std::string> curves{};  ///< lines after the "CURV," card, four or more a curve
  int curveCount = 0;
  std::vector<LoadStepCards> steps{LoadStepCards{}};

  [[nodiscard]] const Vector3& node(int number) const { return nodes[static_cast<std::size_t>(number - 1)]; }
  /// Gives the nodes x of the first load step the support codes codeOf(x); 0: free.
  template <class Code>
  void support(Code codeOf) {
    for (std::size_t n = 0; n < nodes.size(); ++n)
      if (const int code = codeOf(nodes[n]); code != 0)
        steps[0].fixities.push_back({static_cast<int>(n) + 1, code, {}});
  }
  /// The whole deck as text.
  [[nodiscard]] std::string text() const;
};

/// A block of bricks; at(i, j, k) gives the node number of a grid place.
struct BrickGrid {
  int nx, ny, nz;

  [[nodiscard]] int at(int i, int j, int k) const { return 1 + i + (nx + 1) * (j + (ny + 1) * k); }
  /// The eight nodes of cell (i, j, k), low face first.
  [[nodiscard]] std::vector<int> cell(int i, int j, int k) const;
  /// A deck of one material, its nodes placed by `place`.
  template <class Place>
  [[nodiscard]] SolidDeck deck(const Material& material, Place place) const {
    SolidDeck deck{.materials = {material}};
    for (int k = 0; k <= nz; ++k)
      for (int j = 0; j <= ny; ++j)
        for (int i = 0; i <= nx; ++i) deck.nodes.push_back(place(i, j, k));
    for (int k = 0; k < nz; ++k)
      for (int j = 0; j < ny; ++j)
        for (int i = 0; i < nx; ++i) deck.elements.push_back({cell(i, j, k)});
    return deck;
  }
};

/// Places the nodes of bricks of edge 1.
inline Vector3 unitGrid(int i, int j, int k) {
  return {double(i), double(j), double(k)};
}

/// Replaces every brick of a deck by six tetrahedra with the same corners.
void splitIntoTetrahedra(SolidDeck& deck);

/// A cube of edge 1, of bricks in a row along x, with its three faces at the origin on symmetry planes; the face x = 1
/// is driven (prescribed x displacement) when `drive` is not 0.
SolidDeck symmetricCube(const Material& material, double drive = 0.0, int bricks = 1);

}  // namespace zema::test
