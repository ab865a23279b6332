// The checks of elements, nodes and fixities, and the list of unread cards that follows an error in a table.
#include "input/checks.h"

#include <algorithm>
#include <cstdlib>
#include <span>

#include "input/element_sizes.h"
#include "job/job.h"
#include "job/run_end.h"

namespace zema {

namespace {

/// An error of a table: its code, and how often it was met.
struct CountedError {
  int code;
  int count;
};

/// The words of a check that counts errors.
struct CheckWords {
  std::string_view error;    ///< before the code
  std::string_view count;    ///< before the count
  int blankLines;            ///< ahead of each error
  std::string_view stopped;  ///< the "stopped in" line
};

/// Reports the errors that were met; with any of them the run ends after the rest of the deck has been shown.
void stopAtErrors(Job& job, const CheckWords& words, std::span<const CountedError> errors) {
  static constexpr Layout line(R"(A I3 6X "ASOCIADO" A I5)");
  bool any = false;
  for (const CountedError& error : errors) {
    if (error.count != 0) {
      job.listing().blank(words.blankLines);
      job.listing().write(line, words.error, error.code, words.count, error.count);
      any = true;
    }
  }
  if (any) {
    ECHO(job);
    throw RunEnd(std::string(words.stopped), 0.0, 0.0);
  }
}

void checkComposites(Job& job, const Model& model) {
  for (const ElementData& element : model.mesh.elements) {
    const int MATNO = element.MATNO[0];
    if (MATNO < 1 || MATNO > model.control.NMATC) {
      CHECK4(job.listing(), "*** NUMERO DE MATERIAL 0 O MAYOR A NMATC ", "  >>>> DETENIDO EN LA RUTINA CHECK2",
             model.control.NELEM, MATNO);
    }
  }
}

/// The positive node number that an entry of LNODS stands for; 0 when it is 0 or above NPOIN.
int usedNode(int entry, int NPOIN) {
  const long node = std::abs(static_cast<long>(entry));
  return node <= NPOIN ? static_cast<int>(node) : 0;
}

/// Counts node number 0 and node numbers above NPOIN.
std::array<CountedError, 2> checkNodeNumbers(const Mesh& mesh) {
  std::array<CountedError, 2> errors{{{15, 0}, {16, 0}}};
  for (int e = 0; e < mesh.NELEM(); ++e) {
    for (const int entry : mesh.nodesOf(e)) {
      if (entry == 0) {
        ++errors[0].count;
      } else if (usedNode(entry, mesh.NPOIN()) == 0) {
        ++errors[1].count;
      }
    }
  }
  return errors;
}

/// First and last element (from 0) of a node; -1 when no element has it.
struct NodeSpan {
  int first = -1;
  int last = -1;
};

/// Finds the first and last element of every node, and counts nodes that stand twice in one element.
std::vector<NodeSpan> findSpans(const Mesh& mesh, int& twice) {
  std::vector<NodeSpan> spans(static_cast<std::size_t>(mesh.NPOIN()));
  for (int e = 0; e < mesh.NELEM(); ++e) {
    for (const int entry : mesh.nodesOf(e)) {
      const int node = usedNode(entry, mesh.NPOIN());
      if (node == 0) {
        continue;
      }
      NodeSpan& span = spans[static_cast<std::size_t>(node - 1)];
      twice += span.last == e ? 1 : 0;
      span.first = span.first < 0 ? e : span.first;
      span.last = e;
    }
  }
  return spans;
}

/// Width of the front: the most degrees of freedom that are in use at one element.
int frontWidth(const Mesh& mesh, const std::vector<NodeSpan>& spans) {
  std::vector<int> change(static_cast<std::size_t>(mesh.NELEM()) + 1, 0);
  for (int n = 1; n <= mesh.NPOIN(); ++n) {
    const NodeSpan& span = spans[static_cast<std::size_t>(n - 1)];
    if (span.first >= 0) {
      change[static_cast<std::size_t>(span.first)] += mesh.dofsOf({n});
      change[static_cast<std::size_t>(span.last) + 1] -= mesh.dofsOf({n});
    }
  }
  int front = 0;
  int widest = 0;
  for (const int KFRON : change) {
    front += KFRON;
    widest = std::max(widest, front);
  }
  return widest;
}

/// What the frontal solver needs of the node lists: counts errors 17 to 20 and reports the front width.
std::array<CountedError, 4> checkFront(Job& job, const Mesh& mesh) {
  constexpr int MFRON = 100;
  static constexpr Layout unused(R"(" CONTROLE POR QUE EL NODO" I4 " NO APARECE NUNCA")");
  static constexpr Layout front(R"(" MAXIMO ANCHO DE FRENTE ENCONTRADO = " I5)");
  std::array<CountedError, 4> errors{{{17, 0}, {18, 0}, {19, 0}, {20, 0}}};
  const std::vector<NodeSpan> spans = findSpans(mesh, errors[0].count);
  for (int n = 1; n <= mesh.NPOIN(); ++n) {
    if (spans[static_cast<std::size_t>(n - 1)].first < 0) {
      job.listing().write(unused, n);
      const std::span<const double> place = mesh.coordinates({n});
      ++errors[1].count;
      errors[2].count += place[0] != 0.0 || place[1] != 0.0 ? 1 : 0;
    }
  }
  const int NFRMX = frontWidth(mesh, spans);
  job.listing().write(front, NFRMX);
  errors[3].count = NFRMX > MFRON ? 1 : 0;
  return errors;
}

void checkTriangles(Job& job, const Model& model) {
  constexpr int jointedBar = 2;
  if (model.text.CPROB == "VIGAS3D") {
    return;
  }
  for (int e = 0; e < model.mesh.NELEM(); ++e) {
    const ElementData& element = model.mesh.element(e);
    const bool triangle = (element.NNODE == 3 || element.NNODE == 6) && element.NTYPE != jointedBar;
    if (triangle && element.NINTE != 4 && element.NINTE != 5) {
      CHECK4(job.listing(), "*** DIAG. DE CHECK2, EL. TRIANGULARES: CUADRAT RADAU o COWPER",
             "  >>>> DETENIDO EN LA RUTINA CHECK2", e + 1, element.NINTE);
    }
  }
}

/// Pairs of cards that fix the same node.
int countPairs(std::vector<int> nodes) {
  std::sort(nodes.begin(), nodes.end());
  int pairs = 0;
  int alike = 0;
  for (std::size_t i = 1; i < nodes.size(); ++i) {
    alike = nodes[i] == nodes[i - 1] ? alike + 1 : 0;
    pairs += alike;
  }
  return pairs;
}

/// Checks a list of fixed nodes; `cards` is the number of cards that the deck announces.
void checkFixedNodes(Job& job, const Model& model, const CheckWords& words, const std::vector<int>& nodes, int cards,
                     int checkBelow) {
  const int NPOIN = model.mesh.NPOIN();
  const bool mustHold = lastElement(model.mesh).NTYPE < checkBelow;
  const auto outside = std::count_if(nodes.begin(), nodes.end(), [NPOIN](int n) { return n < 1 || n > NPOIN; });
  const std::array<CountedError, 3> errors{{{21, mustHold && (cards < 1 || cards > NPOIN) ? 1 : 0},
                                            {23, static_cast<int>(outside)},
                                            {25, countPairs(nodes)}}};
  stopAtErrors(job, words, errors);
}

}  // namespace

void CHECK1(Job& job, const Model& model, const KernelProfile& profile, int element) {
  const ElementData& data = model.mesh.element(element - 1);
  const auto types = profile.elementTypes;
  const long places = static_cast<long>(model.control.NELEM) * data.NNODE;
  const auto stop = [&job](std::string_view message, double A, double B) {
    CHECK4(job.listing(), message, "  >>>> DETENIDO EN LA RUTINA CHECK1 ", A, B);
  };
  if (places < model.control.NPOIN) {
    stop("*** DIAGNOSTICO DE CHECK1, SIN CONGRUENCIA ENTRE NPOIN Y NELEM", static_cast<double>(places),
         model.control.NPOIN);
  }
  if (std::find(types.begin(), types.end(), data.NTYPE) == types.end()) {
    stop("*** DIAGNOSTICO DE CHECK1, ERROR EN EL TIPO DE ELEMENTO", element, data.NTYPE);
  }
  if (data.NNODE > profile.mostNodes) {
    stop("*** DIAG. DE CHECK1, MAXIMO NUM. DE NODOS POR ELEMENTOS SUPERADO", element, data.NNODE);
  }
  if (data.NGAUS > profile.mostGauss) {
    stop("*** DIAG. DE CHECK1, MAXIMO CUADRATURA SUPERADA", element, data.NGAUS);
  }
}

void CHECK2(Job& job, const Model& model) {
  constexpr int frontal = 1;
  static constexpr CheckWords words{" *** DIAGNOSTICO DE CHECK2, ERROR", "  CON EL NUMERO", 2,
                                    "  >>>> DETENIDO EN LA RUTINA CHECK2"};
  checkComposites(job, model);
  std::vector<CountedError> errors;
  for (const CountedError& error : checkNodeNumbers(model.mesh)) {
    errors.push_back(error);
  }
  if (model.control.NSOLV == frontal) {
    for (const CountedError& error : checkFront(job, model.mesh)) {
      errors.push_back(error);
    }
  }
  checkTriangles(job, model);
  stopAtErrors(job, words, errors);
}

void CHECK3(Job& job, const Model& model, const KernelProfile& profile) {
  static constexpr CheckWords words{" *** DIAGNOSTIGO DE CHECK3, ERROR", " CON EL NUMERO", 0,
                                    "  >>>> DETENIDO EN LA RUTINA CHECK3"};
  checkFixedNodes(job, model, words, model.fixities.NOFIXM, model.fixities.NVFIX, profile.fixityCheckBelow);
}

void CHECKT(Job& job, const Model& model, const KernelProfile& profile) {
  static constexpr CheckWords words{" *** DIAGNOSTIGO DE CHECKT, ERROR", " CON EL NUMERO", 0,
                                    "  >>>> DETENIDO EN LA RUTINA CHECKT"};
  checkFixedNodes(job, model, words, model.fixities.NOFIXT, model.fixities.NVFIT, profile.fixityCheckBelow);
}

void ECHO(Job& job) {
  constexpr int mostLines = 1000;
  static constexpr Layout heading(R"(// " SIGUE LA LISTA DE TARJETAS POST-ERROR " /)");
  static constexpr Layout card("20X A80");
  constexpr std::size_t columns = 80;
  job.listing().write(heading);
  job.cards().unreadLines(mostLines, [&](std::string_view line) {
    std::string padded(line.substr(0, columns));
    padded.resize(columns, ' ');
    job.listing().write(card, padded);
  });
}

}  // namespace zema
