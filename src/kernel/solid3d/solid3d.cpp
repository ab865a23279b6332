// The kernel of solids: its profile, its preparation, and the way from the interface to the element in hand.
#include "kernel/solid3d/solid3d.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "element/jacobian.h"
#include "foundation/errors.h"
#include "foundation/layout.h"
#include "kernel/solid3d/post_profile.h"
#include "kernel/solid3d/solid_element.h"
#include "model/frequency_source.h"
#include "tensor/configuration.h"

namespace zema {

namespace {

constexpr int solidType = 6;
constexpr int nodesOfFace = 3;
constexpr int pointsAcross = 2;

// Types 20 and 21 pass the check of the element card; prepare refuses them.
constexpr std::array elementTypes{solidType, 20, 21};

constexpr KernelProfile solidProfile{
    .name = "V3D",
    .dimensions = 3,
    .MDOFN = 3,
    .NSTR1 = 6,
    .elementAngles = 3,
    .internalFlags = 16,
    .elementTypes = elementTypes,
    .mostNodes = 21,
    .mostGauss = pointsAcross,
    .fixityCheckBelow = 10,
    .thermalFrom = 20,
    .fixityEcho = "1X I9 5X I6 5X 5E10.6",
    .jacobianMessage = jacobian_stop::solid,
};

constexpr std::size_t at(int i) {
  return static_cast<std::size_t>(i);
}

std::string nameOf(int e) {
  return "element " + std::to_string(e + 1) + ": ";
}

/// Refuses an element that the kernel has no formulation or no rule for. Throws InputFault or PlainStop.
void checkElement(const ElementData& element, int e) {
  if (element.NTYPE != solidType)
    throw InputFault(nameOf(e) + "type " + std::to_string(element.NTYPE) +
                     " (NTYPE) has no meaning in this kernel; solids are of type 6");
  if (element.NNODE != 4 && element.NNODE != 8)
    throw PlainStop(FreeLine(" INCORRECT NNODE ...NNODE = ", element.NNODE, " SUBROUTINE : SFR3D").text() + '\n' +
                        FreeLine(" ELEMENT: ", e + 1).text() + '\n',
                    "");
  if (!hasRule(element.NINTE, element.NGAUS) || element.NGAUS > pointsAcross)
    throw InputFault(nameOf(e) + "no integration rule has NINTE = " + std::to_string(element.NINTE) +
                     " and NGAUS = " + std::to_string(element.NGAUS) + "; NINTE goes from 1 to 5, NGAUS from 1 to 2");
}

/// The elements that share an integration rule.
struct ElementKind {
  int NNODE;
  int NGAUS;
  int NINTE;
  std::variant<ReferencePoints<3, 4>, ReferencePoints<3, 8>> points;

  [[nodiscard]] bool holds(const ElementData& element) const {
    return element.NNODE == NNODE && element.NGAUS == NGAUS && element.NINTE == NINTE;
  }
};

class Solid3D final : public Kernel, private FrequencySource {
  /// Calls f with the element as a SolidElement of its number of nodes.
  template <class F>
  auto withElement(const Model& model, int e, const F& f) const {
    return std::visit(
        [&]<int NNODE>(const std::vector<ReferencePoint<3, NNODE>>& points) {
          return f(solid3d::SolidElement<NNODE>{model, *block_, e, points});
        },
        kinds_[at(kindOf_[at(e)])].points);
  }

 public:
  [[nodiscard]] const KernelProfile& profile() const override { return solidProfile; }
  [[nodiscard]] const ResultProfile& results() const override { return solid3d::resultProfile(); }

  [[nodiscard]] ElementSizes TYPE(int NTYPE, int NNODE, int NGAUS) const override {
    if (NTYPE != solidType) return {};
    const int across = NNODE == 4 ? 1 : NGAUS;  // a tetrahedron's rule is walked by one index
    return {.NSTRE = 6, .NDOFN = 3, .NGAU1 = NGAUS, .NGAU2 = across, .NGAU3 = across};
  }

  [[nodiscard]] int pointNumber(const ElementData& element, PointIndex point) const override {
    return solid3d::placeInCube(element, point);
  }

  void addBodyForce(const Model& model, int e, std::span<const double> force, std::span<double> RLOAD) const override {
    withElement(model, e, [&](const auto& element) { solid3d::addBodyForce(element, force, RLOAD); });
  }

  [[nodiscard]] int faceNodes(const ElementData& element) const override {
    return element.NTYPE == solidType ? nodesOfFace : 0;
  }

  void addFaceLoad(const Model& model, int e, std::span<const int> places, std::span<const double> values,
                   std::span<double> RLOAD) const override;

  void prepare(Model& model) override;

  void CALCIN(const Model& model, double temperature) override { block_->CALCIN(model, temperature); }
  void IMPORTINFON1(const Model& model) override { block_->IMPORTINFON1(model); }

  void RIGI(const Model& model, int e, std::span<double> ESTIF) const override {
    withElement(model, e, [&](const auto& element) { solid3d::RIGI(element, ESTIF); });
  }

  void addMass(const Model& model, int e, double factor, std::span<double> matrix) const override {
    constexpr int consistent = 1;
    const double density = density_[at(model.mesh.element(e).MATNO[0] - 1)];
    withElement(model, e, [&](const auto& element) {
      solid3d::addMass(element, density, model.dynamics.KLUMP == consistent, factor, matrix);
    });
  }

  void addViscosity(const Model& model, int e, double factor, std::span<double> matrix) const override {
    withElement(model, e, [&](const auto& element) { solid3d::addViscosity(element, factor, matrix); });
  }

  [[nodiscard]] double volume(const Model& model, int e) const override {
    return withElement(model, e, [](const auto& element) { return solid3d::volume(element); });
  }

  EnergySums RESIDU(Model& model, int e) const override {
    const double thickness = thickness_[at(model.mesh.element(e).MATNO[0] - 1)];
    return withElement(model, e, [&](const auto& element) { return solid3d::RESIDU(element, thickness, model); });
  }

  [[nodiscard]] const FrequencySource* frequencySource() const override { return this; }

  void CAUCHY(const Model& model, int e, PointIndex point, int component, std::span<double> stress) const override;
  void ALMANS(const Model& model, int e, PointIndex point, int component, std::span<double> strain) const override;

 private:
  [[nodiscard]] Stiffness elasticStiffness(int c) const override { return block_->compositeRecord(c).VDMANX.values; }
  [[nodiscard]] double density(int c) const override { return block_->DENSV(c); }
  [[nodiscard]] Stiffness secantStiffness(const Model& model, int e, int point) const override {
    return block_->CALCSEC(model, e, point).values;
  }
  [[nodiscard]] int kindNumber(const ElementData& element);
  [[nodiscard]] Matrix<3> gradientAt(const Model& model, int e, PointIndex point, int component) const;

  std::vector<ElementKind> kinds_;
  std::vector<int> kindOf_;        // by element
  std::vector<double> thickness_;  // property 3 of the composites, by number from 0
  std::vector<double> density_;    // property 4
  std::optional<ConstitutiveBlock<6>> block_;
};

int Solid3D::kindNumber(const ElementData& element) {
  const auto known = std::find_if(kinds_.begin(), kinds_.end(), [&](const auto& kind) { return kind.holds(element); });
  if (known != kinds_.end()) return static_cast<int>(known - kinds_.begin());
  const std::vector<RulePoint> rule =
      pointLoop(RuleTable::solid, element, TYPE(element.NTYPE, element.NNODE, element.NGAUS));
  ElementKind kind{element.NNODE, element.NGAUS, element.NINTE, {}};
  if (element.NNODE == 4)
    kind.points = referencePoints<3, 4>(rule);
  else
    kind.points = referencePoints<3, 8>(rule);
  kinds_.push_back(std::move(kind));
  return static_cast<int>(kinds_.size()) - 1;
}

void Solid3D::prepare(Model& model) {
  for (int e = 0; e < model.mesh.NELEM(); ++e) {
    checkElement(model.mesh.element(e), e);
    kindOf_.push_back(kindNumber(model.mesh.element(e)));
  }
  block_.emplace(model);
  std::vector<int> places;
  std::vector<int> records;
  for (int e = 0; e < model.mesh.NELEM(); ++e) {
    const ElementData& element = model.mesh.element(e);
    places.push_back(element.NGAUS * element.NGAUS * element.NGAUS);
    records.push_back(block_->isPlain(e) ? 1 : model.composites(element.MATNO[0]).NUMAT);
  }
  model.points = PointStore(solidProfile.NSTR1, places, records);
  const auto property = [&](int m, int place) { return model.materials(m)(place); };
  for (const Composite& composite : model.composites.all) {
    thickness_.push_back(PROCOM_V(composite, slot::thickness, property));
    density_.push_back(PROCOM_V(composite, slot::density, property));
  }
  block_->ZERO(model);
}

void Solid3D::addFaceLoad(const Model& model, int e, std::span<const int> places, std::span<const double> values,
                          std::span<double> RLOAD) const {
  assert(places.size() == nodesOfFace && values.size() == at(3 * nodesOfFace));
  const std::span<const int> nodes = model.mesh.nodesOf(e);
  Matrix<nodesOfFace, 3> ELCOD;
  for (int k = 0; k < nodesOfFace; ++k) {
    const std::span<const double> coordinates = model.mesh.coordinates(DeckNode{nodes[at(places[at(k)])]});
    for (int i = 0; i < 3; ++i) ELCOD(k, i) = coordinates[at(i)];
  }
  const double area = JACOB2D(SFR2D<nodesOfFace>(0.0, 0.0).DERIV, ELCOD, e + 1) / 2.0;
  // On a flat triangle the integral of N_k N_m is A / 6 for k = m and A / 12 otherwise.
  for (int k = 0; k < nodesOfFace; ++k)
    for (int m = 0; m < nodesOfFace; ++m)
      for (int i = 0; i < 3; ++i)
        RLOAD[at(3 * places[at(k)] + i)] += area / (k == m ? 6.0 : 12.0) * values[at(3 * m + i)];
}

/// In the axes of a component's record.
Matrix<3> Solid3D::gradientAt(const Model& model, int e, PointIndex point, int component) const {
  const ElementData& element = model.mesh.element(e);
  const ElementSizes sizes = TYPE(element.NTYPE, element.NNODE, element.NGAUS);
  const int number = ((point.i - 1) * sizes.NGAU2 + point.j - 1) * sizes.NGAU3 + point.k - 1;
  assert(number >= 0 && number < sizes.points());
  const Matrix<3> F = withElement(model, e, [&](const auto& solid) { return solid3d::gradientAt(solid, at(number)); });
  return block_->gradientInRecordAxes(e, component, F);
}

void Solid3D::CAUCHY(const Model& model, int e, PointIndex point, int component, std::span<double> stress) const {
  if (model.control.LARGE == 0) return;
  const Matrix<3> F = gradientAt(model, e, point, component);
  Stress<6> moved = Stress<6>::from(stress, 0);
  PFB_STR(moved, F, TensorMove::stressForward);
  moved *= 1.0 / DETERM3D(F);
  moved.copyTo(stress, 0);
}

void Solid3D::ALMANS(const Model& model, int e, PointIndex point, int component, std::span<double> strain) const {
  if (model.control.LARGE == 0) return;
  Strain<6> moved = Strain<6>::from(strain, 0);
  PFB_STR(moved, gradientAt(model, e, point, component), TensorMove::strainForward);
  moved.copyTo(strain, 0);
}

}  // namespace

std::unique_ptr<Kernel> makeSolid3D() {
  return std::make_unique<Solid3D>();
}

}  // namespace zema
