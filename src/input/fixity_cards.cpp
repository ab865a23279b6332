// Reads the supports of a load step and carries over what the load step before left of them.
#include "input/fixity_cards.h"

#include <algorithm>
#include <string>

#include "input/checks.h"
#include "input/deck_echo.h"
#include "input/element_sizes.h"
#include "input/node_field.h"
#include "input/thermal_cards.h"
#include "job/job.h"
#include "job/run_end.h"

namespace zema {

namespace {

bool isNode(int number, const Mesh& mesh) {
  return number >= 1 && number <= mesh.NPOIN();
}

/// Goes through the decimal digits of a code from the left, one digit a direction (from 0), and visits each direction
/// that has one. A digit above 1 is taken once; what is left of it may mark the next direction too.
template <class Visit>
void forEachMarkedDirection(int code, int NDOFN, Visit visit) {
  int power = 1;
  for (int d = 1; d < NDOFN; ++d) {
    power *= 10;
  }
  for (int d = 0; d < NDOFN; ++d, power /= 10) {
    if (code >= power) {
      visit(d);
      code -= power;
    }
  }
}

/// The arrays of the load step, cleared; the flags of the load step before stay for the comparison.
void resize(Fixities& fixities, const Mesh& mesh) {
  const auto NTOTV = static_cast<std::size_t>(mesh.NTOTV);
  const std::size_t reactions =
      static_cast<std::size_t>(std::max(fixities.NVFIX, 0)) * static_cast<std::size_t>(mesh.MDOFN);
  fixities.NOFIXM.clear();
  fixities.IFFIXM.assign(NTOTV, 0);
  fixities.IFFIXMbefore.resize(NTOTV, 0);
  fixities.FIXEMM.assign(NTOTV, 0.0);
  fixities.IFLIB.assign(NTOTV, 0);
  fixities.TREACM.assign(reactions, 0.0);
  fixities.TREACT.assign(reactions, 0.0);
}

void readCounts(Job& job, Model& model) {
  CardReader& cards = job.cards();
  const long most = static_cast<long>(model.mesh.NPOIN()) * model.mesh.MDOFN;
  cards.begin("fixity count");
  model.fixities.NVFIX = cards.integer("NVFIX");
  model.fixities.NFREE = cards.integer("NFREE");
  if (model.fixities.NVFIX > most) {
    CHECK4(job.listing(), "*** DIAG. DE INPU2, NUMERO DE RESTRICCIONES > NPOIN*MDOFN",
           "  >>>> DETENIDO EN LA RUTINA INPU2 ", model.fixities.NVFIX, static_cast<double>(most));
  }
}

/// Marks and stores what one card says; a node out of its range is left to the check of the list.
void applyFixity(Model& model, int node, int code, std::span<const double> values) {
  Fixities& fixities = model.fixities;
  fixities.NOFIXM.push_back(node);
  if (!isNode(node, model.mesh)) {
    return;
  }
  const auto first = static_cast<std::size_t>(model.mesh.firstPosition(DeckNode{node}));
  const int dofs = std::min(model.mesh.dofsOf({node}), static_cast<int>(values.size()));
  forEachMarkedDirection(code, static_cast<int>(values.size()), [&](int d) {
    if (d < dofs) {
      fixities.IFFIXM[first + static_cast<std::size_t>(d)] = 1;
    }
  });
  std::copy_n(values.begin(), dofs, fixities.FIXEMM.begin() + static_cast<std::ptrdiff_t>(first));
}

void readFixities(Job& job, Model& model, const Kernel& kernel) {
  static constexpr Layout heading(
      R"(10X "ECHO OF FIXITY DATA FOLLOWS :" / 10X 27("=") / / 6X "NODE " 5X "CODE" 14X "FIXED VALUES")");
  const Layout row(kernel.profile().fixityEcho);
  const bool records = feedsFrequencyRecords(job) && model.loop.ILOAD == 1;
  CardReader& cards = job.cards();
  job.listing().write(heading);
  if (records) {
    job.channels[channel::frequencies].line(FreeLine(model.fixities.NVFIX));
  }
  std::vector<double> values(static_cast<std::size_t>(sizesOf(kernel, lastElement(model.mesh)).NDOFN));
  for (int i = 0; i < model.fixities.NVFIX; ++i) {
    cards.begin("fixity");
    const int node = cards.integer("node number");
    const int code = cards.integer("code");
    for (double& value : values) {
      value = cards.real("prescribed value");
    }
    job.listing().write(row, node, code, values);
    if (records) {
      job.channels[channel::frequencies].write(row, node, code, values);
    }
    applyFixity(model, node, code, values);
  }
}

/// Gives the directions that stay fixed the reactions that they had in the list before.
void takeOverReactions(Fixities& now, const Fixities& old, const Mesh& mesh) {
  const auto MDOFN = static_cast<std::size_t>(mesh.MDOFN);
  std::vector<std::ptrdiff_t> oldRow(static_cast<std::size_t>(mesh.NPOIN()), -1);
  for (std::size_t row = 0; row < old.NOFIXM.size(); ++row) {
    oldRow[static_cast<std::size_t>(old.NOFIXM[row] - 1)] = static_cast<std::ptrdiff_t>(row);
  }
  for (std::size_t row = 0; row < now.NOFIXM.size(); ++row) {
    const int node = now.NOFIXM[row];
    const std::ptrdiff_t from = isNode(node, mesh) ? oldRow[static_cast<std::size_t>(node - 1)] : -1;
    if (from >= 0) {
      const std::size_t oldFirst = static_cast<std::size_t>(from) * MDOFN;
      const auto position = static_cast<std::size_t>(mesh.firstPosition(DeckNode{node}));
      for (std::size_t d = 0; d < static_cast<std::size_t>(mesh.dofsOf({node})); ++d) {
        if (now.IFFIXM[position + d] == 1) {
          now.TREACM[row * MDOFN + d] = old.TREACM[oldFirst + d];
          now.TREACT[row * MDOFN + d] = old.TREACT[oldFirst + d];
        }
      }
    }
  }
}

/// Rows of the fixity list by node number; -1 for a node that is not in it.
std::vector<int> rowsOfNodes(const Fixities& fixities, const Mesh& mesh) {
  std::vector<int> rows(static_cast<std::size_t>(mesh.NPOIN()) + 1, -1);
  for (std::size_t row = 0; row < fixities.NOFIXM.size(); ++row) {
    if (isNode(fixities.NOFIXM[row], mesh)) {
      rows[static_cast<std::size_t>(fixities.NOFIXM[row])] = static_cast<int>(row);
    }
  }
  return rows;
}

/// With KLOAD = 0 clears the total load of an element's degree of freedom whose load has changed, and of one that has
/// been released, there in the first element that holds it; then the loads and flags of this load step become those to
/// compare the next one with. The first element's total load carries the reaction: when that is cleared, the support
/// starts again from 0 as well.
void compareWithStepBefore(Model& model) {
  Fixities& fixities = model.fixities;
  const auto MDOFN = static_cast<std::size_t>(model.mesh.MDOFN);
  const bool clears = model.loadStep.KLOAD == 0 && model.loop.ILOAD > 1;
  const std::vector<int> rows = rowsOfNodes(fixities, model.mesh);
  std::vector<char> met(static_cast<std::size_t>(model.mesh.NTOTV), 0);
  for (int e = 0; e < model.mesh.NELEM(); ++e) {
    const std::span<const int> positions = model.positions.of(e);
    const std::span<const double> load = model.vectors.RLOAD(e, 1);
    const std::span<double> loadBefore = model.vectors.RLOAD(e, 2);
    const std::span<double> TLOAD = model.vectors.TLOAD(e);
    const std::span<const int> nodes = model.mesh.nodesOf(e);
    const std::size_t dofs = nodes.empty() ? 1 : positions.size() / nodes.size();
    for (std::size_t k = 0; clears && k < positions.size(); ++k) {
      const auto i = static_cast<std::size_t>(positions[k]);
      const bool first = met[i] == 0;
      met[i] = 1;
      const bool released = first && fixities.IFFIXMbefore[i] == 1 && fixities.IFFIXM[i] == 0;
      if (released || load[k] != loadBefore[k]) {
        TLOAD[k] = 0.0;
        const DeckNode node{nodes[k / dofs]};
        const int row = rows[static_cast<std::size_t>(node.number)];
        if (first && row >= 0) {
          fixities.TREACM[static_cast<std::size_t>(row) * MDOFN + k % dofs] = 0.0;
        }
      }
    }
    std::ranges::copy(load, loadBefore.begin());
  }
  fixities.IFFIXMbefore = fixities.IFFIXM;
}

void readFreeCodes(Job& job, Model& model, const Kernel& kernel) {
  static constexpr Layout heading(R"(" NODE" 6X "COD. FREE ")");
  static constexpr Layout row("I5 6X I9");
  if (model.fixities.NFREE == 0) {
    return;
  }
  CardReader& cards = job.cards();
  const Mesh& mesh = model.mesh;
  const int NDOFN = sizesOf(kernel, lastElement(mesh)).NDOFN;
  job.listing().write(heading);
  for (int i = 0; i < model.fixities.NFREE; ++i) {
    cards.begin("free code");
    const int node = readNodeAsReal(cards, mesh);
    const int code = cards.integer("code");
    job.listing().write(row, node, code);
    forEachMarkedDirection(code, NDOFN, [&](int d) {
      if (d < mesh.dofsOf({node})) {
        model.fixities.IFLIB[static_cast<std::size_t>(mesh.firstPosition(DeckNode{node}) + d)] = 1;
      }
    });
  }
}

}  // namespace

void INPU3(Job& job, Model& model, const Kernel& kernel) {
  const Fixities old = model.fixities;
  readCounts(job, model);
  resize(model.fixities, model.mesh);
  readFixities(job, model, kernel);
  if (model.loop.ILOAD > 1) {
    takeOverReactions(model.fixities, old, model.mesh);
  }
  compareWithStepBefore(model);
  readFreeCodes(job, model, kernel);
  CHECK3(job, model, kernel.profile());
  INPU2T(job, model, kernel);
}

}  // namespace zema
