// Prescribed temperatures and sides with a heat flow.
#include "input/thermal_cards.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "element/integration_rule.h"
#include "element/shape_functions.h"
#include "foundation/single_precision.h"
#include "input/checks.h"
#include "input/count_field.h"
#include "input/element_sizes.h"
#include "job/job.h"
#include "job/run_end.h"

namespace zema {

namespace {

constexpr int axisymmetricThermal = 21;

/// A temperature as it is held: cut to an integer.
int cutToInteger(const CardReader& cards, double value) {
  if (std::abs(value) > std::numeric_limits<int>::max()) {
    cards.fault("temperature", value, "a temperature up to 2147483647");
  }
  return static_cast<int>(value);
}

void readTemperatures(Job& job, Model& model) {
  static constexpr Layout row("1X I4 5X 5E10.6");
  CardReader& cards = job.cards();
  Fixities& fixities = model.fixities;
  const Mesh& mesh = model.mesh;
  const auto NPOIN = static_cast<std::size_t>(mesh.NPOIN());
  fixities.NOFIXT.clear();
  fixities.FIXEMT.assign(NPOIN, 0);
  fixities.IFFIXT.assign(NPOIN, 0);
  cards.begin("thermal fixity count");
  fixities.NVFIT = cards.integer("NVFIT");
  for (int i = 0; i < fixities.NVFIT; ++i) {
    cards.begin("thermal fixity");
    const int node = cards.integer("node number");
    const double value = cards.real("temperature");
    job.listing().write(row, node, value);
    fixities.NOFIXT.push_back(node);
    if (node >= 1 && node <= mesh.NPOIN()) {
      const auto place = static_cast<std::size_t>(mesh.numbering.LPNTN({node}).index);
      fixities.FIXEMT[place] = cutToInteger(cards, value);
      fixities.IFFIXT[place] = 1;
    }
  }
  // Elements of the thermal field have no formulation yet, so no total load hangs on a change of these flags.
  fixities.IFFIXTbefore = fixities.IFFIXT;
}

/// One loaded side, as its cards give it.
struct Side {
  int element = 0;         ///< from 0
  std::vector<int> nodes;  ///< deck numbers
  int firstPlace = 0;      ///< place of the first node in the element's node list, from 0
  double P = 0.0;          ///< value at every node
};

/// Adds the load of a side of N nodes: its terms -P dy/dt and P dx/dt both go to the first degree of freedom of a node.
template <int N>
void addSideLoad(Model& model, const Kernel& kernel, const Side& side) {
  const std::span<double> load = model.vectors.initialLoad(side.element);
  if (load.empty()) {
    return;
  }
  constexpr double twoPi = single(6.2831855F);
  const ElementData& element = model.mesh.element(side.element);
  const RuleTable table = model.mesh.dimensions == 3 ? RuleTable::solid : RuleTable::plane;
  const IntegrationRule& rule = INTEGR(table, element.NINTE, element.NGAUS);
  const int NDOFN = sizesOf(kernel, element).NDOFN;
  for (std::size_t g = 0; g < static_cast<std::size_t>(element.NGAUS); ++g) {
    const ShapeFunctions<1, N> shape = SFR1D<N>(rule.POSGP[g]);
    double P = 0.0;
    double r = 0.0;
    double dx = 0.0;
    double dy = 0.0;
    for (int k = 0; k < N; ++k) {
      const auto n = static_cast<std::size_t>(k);
      const std::span<const double> place = model.mesh.coordinates({side.nodes[n]});
      P += shape.SHAPEN[n] * side.P;
      r += shape.SHAPEN[n] * place[0];
      dx += shape.DERIV(0, k) * place[0];
      dy += shape.DERIV(0, k) * place[1];
    }
    const double weight = rule.WEIGP[g] * (element.NTYPE == axisymmetricThermal ? twoPi * r : 1.0);
    for (int k = 0; k < N; ++k) {
      const int place = (side.firstPlace + k) % element.NNODE;
      load[static_cast<std::size_t>(place * NDOFN)] +=
          (-P * dy + P * dx) * weight * shape.SHAPEN[static_cast<std::size_t>(k)];
    }
  }
}

Side readSide(Job& job, const Model& model, const Kernel& kernel) {
  static constexpr Layout row("2E10.3");
  CardReader& cards = job.cards();
  const Mesh& mesh = model.mesh;
  Side side;
  cards.begin("loaded side");
  side.element = cards.integer("element number", 1, mesh.NELEM()) - 1;
  const ElementData& element = mesh.element(side.element);
  cards.begin("side node");
  for (int k = 0; k < kernel.faceNodes(element); ++k) {
    side.nodes.push_back(cards.integer("node number", 1, mesh.NPOIN()));
  }
  const std::span<const int> LNODS = mesh.nodesOf(side.element);
  const auto first = std::ranges::find(LNODS, side.nodes.front());
  if (first == LNODS.end()) {
    cards.fault("node number", side.nodes.front(), "a node of element " + std::to_string(side.element + 1));
  }
  side.firstPlace = static_cast<int>(first - LNODS.begin());
  cards.begin("side load");
  const double Q = cards.real("Q");
  const double factor = PROCOM_V(model.composites(element.MATNO[0]), slot::convection,
                                 [&model](int material, int place) { return model.materials(material)(place); });
  side.P = -Q * factor;
  job.listing().write(row, std::vector<double>(side.nodes.size(), side.P));
  return side;
}

void readSides(Job& job, Model& model, const Kernel& kernel) {
  CardReader& cards = job.cards();
  const long most = static_cast<long>(model.mesh.NPOIN()) * model.mesh.MDOFN;
  cards.begin("loaded side count");
  const int NSIDE = readCount(cards, "NSIDE");
  model.fixities.NSIDE = NSIDE;
  if (NSIDE > most) {
    CHECK4(job.listing(), "*** DIAG. DE INPU2T, MAXIMO NUMERO DE RESTR. CONV/RAD SUPERADO",
           "  >>>> DETENIDO EN LA RUTINA INPU2T ", NSIDE, static_cast<double>(most));
  }
  for (int i = 0; i < NSIDE; ++i) {
    const Side side = readSide(job, model, kernel);
    if (side.nodes.size() == 2) {
      addSideLoad<2>(model, kernel, side);
    } else {
      addSideLoad<3>(model, kernel, side);
    }
  }
}

}  // namespace

void INPU2T(Job& job, Model& model, const Kernel& kernel) {
  readTemperatures(job, model);
  if (model.fixities.NVFIT != 0) {
    CHECKT(job, model, kernel.profile());
  }
  readSides(job, model, kernel);
}

}  // namespace zema
