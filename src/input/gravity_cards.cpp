// The weight acts along the turned -z axis, on the elements of the construction steps that the card lists.
#include "input/gravity_cards.h"

#include <algorithm>

#include "input/count_field.h"
#include "job/job.h"
#include "model/kernel.h"
#include "tensor/rotation.h"

namespace zema {

namespace {

std::vector<int> readLoadedSteps(CardReader& cards, int NFASE) {
  cards.begin("loaded step");
  const int count = readCount(cards, "count of construction steps");
  std::vector<int> steps;
  for (int i = 0; i < count; ++i) {
    steps.push_back(cards.integer("construction step", 0, NFASE));
  }
  return steps;
}

double densityOf(const Model& model, const ElementData& element) {
  return PROCOM_V(model.composites(element.MATNO[0]), slot::density,
                  [&model](int material, int place) { return model.materials(material)(place); });
}

}  // namespace

void readGravity(Job& job, Model& model, const Kernel& kernel) {
  static constexpr Layout heading(R"(1X "* ---- FI ---- THETA ---- HI ----- GRAVY ---- *")");
  CardReader& cards = job.cards();
  cards.begin("gravity");
  std::array<double, 3> angles{};
  for (double& angle : angles) {
    angle = cards.real("angle");
  }
  const double GRAVY = cards.real("GRAVY");
  const std::vector<int> steps = readLoadedSteps(cards, model.control.NFASE);
  job.listing().write(heading);
  job.listing().line(FreeLine(angles, GRAVY));
  job.listing().line(FreeLine("Fases Cargadas: ", steps));

  const Matrix<3> R = CALRME(angles);
  for (int e = 0; e < model.mesh.NELEM(); ++e) {
    const ElementData& element = model.mesh.element(e);
    if (std::ranges::find(steps, element.IFASE) == steps.end()) {
      continue;
    }
    const double density = densityOf(model, element);
    if (density == 0.0) {
      throw PlainStop(" NO PUEDE RESOLVER CON DENSIDAD NULA \n", "");
    }
    if (!model.active(element)) {
      throw PlainStop(" ERROR: FASE NO ACTIVA CON PESO \n", "");
    }
    const Vector<3> force = CALTEN(R, Vector<3>{0.0, 0.0, -density * GRAVY});
    kernel.addBodyForce(model, e, force, model.vectors.RLOAD(e, 1));
  }
}

}  // namespace zema
