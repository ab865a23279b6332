// The weight acts along the turned -z axis, on the elements of the construction steps that the card lists.
#include "input/gravity_cards.h"

#include <array>

#include "input/count_field.h"
#include "job/job.h"
#include "model/kernel.h"
#include "tensor/rotation.h"

namespace zema {

namespace {

/// Reads and echoes which construction steps weigh: 1 at the place of each of them, place 0 unused.
std::vector<int> readLoadedSteps(Job& job, int NFASE) {
  CardReader& cards = job.cards();
  std::vector<int> loaded(static_cast<std::size_t>(NFASE) + 1, 0);
  FreeLine echo("Fases Cargadas: ");
  cards.begin("loaded step");
  const int count = readCount(cards, "count of construction steps");
  for (int i = 0; i < count; ++i) {
    const int IFASE = cards.integer("construction step", 0, NFASE);
    loaded[static_cast<std::size_t>(IFASE)] = 1;
    echo.add(IFASE);
  }
  job.listing().line(echo);
  return loaded;
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
  const double FI = cards.real("FI");
  const double THETA = cards.real("THETA");
  const std::array<double, 3> angles = {FI, THETA, cards.real("HI")};
  const double GRAVY = cards.real("GRAVY");
  job.listing().write(heading);
  job.listing().line(FreeLine(angles, GRAVY));
  const std::vector<int> loaded = readLoadedSteps(job, model.control.NFASE);

  const Matrix<3> R = CALRME(angles);
  for (int e = 0; e < model.mesh.NELEM(); ++e) {
    const ElementData& element = model.mesh.element(e);
    if (loaded[static_cast<std::size_t>(element.IFASE)] == 0) {
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
