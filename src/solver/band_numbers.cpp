// Band widths of a mesh: sweep over the elements, report, checks.
#include "solver/band_numbers.h"

#include <algorithm>
#include <limits>
#include <span>
#include <string>

#include "foundation/channel.h"
#include "foundation/errors.h"

namespace zema {
namespace {

// A band width and the last element (from 1) that reaches it.
struct Widest {
  int width = 0;
  int element = 0;

  void take(int candidate, int e) {
    if (candidate < width) return;
    width = candidate;
    element = e + 1;
  }
};

// Lowest and highest of some numbers; none leaves nothing in between.
struct Extent {
  int lowest = std::numeric_limits<int>::max();
  int highest = 0;

  void take(int number) {
    lowest = std::min(lowest, number);
    highest = std::max(highest, number);
  }
  [[nodiscard]] bool empty() const { return highest < lowest; }
  [[nodiscard]] int width() const { return highest - lowest + 1; }
};

Extent extent(std::span<const int> positions) {
  Extent reached;
  for (const int position : positions) reached.take(position);
  return reached;
}

Extent freeExtent(std::span<const int> positions, const EquationSystem& system) {
  Extent reached;
  for (const int position : positions)
    if (const int equation = system.IPERM[static_cast<std::size_t>(position)]; equation > 0) reached.take(equation);
  return reached;
}

struct BandNumbers {
  Widest NBAND, NBAN0, NBAN1;
};

// The largest distance of two numbers of an element is that of its highest and lowest.
BandNumbers sweep(const ElementSource& source, const EquationSystem& system) {
  BandNumbers found;
  for (int e = 0; e < source.elements(); ++e) {
    const std::span<const int> positions = source.positions(e);
    if (positions.empty()) continue;
    if (const Extent equations = freeExtent(positions, system); !equations.empty())
      found.NBAND.take(equations.width(), e);
    found.NBAN1.take(extent(positions).width(), e);
    found.NBAN0.take(extent(source.deckPositions(e)).width(), e);
  }
  return found;
}

void report(const BandNumbers& found, bool renumbered, Channel& listing) {
  static constexpr Layout heading("//10X A/10X A");
  static constexpr Layout before("//10X A I5 A I9");
  static constexpr Layout after("/10X A I5 A I9");
  static constexpr const char* element = "  ELEMENTO: ";
  listing.write(heading, "SOLVER INFORMATION :", std::string(18, '='));
  listing.write(before, "ANCHO DE BANDA SIN RENUMERACION: ", found.NBAN0.width, element, found.NBAN0.element);
  if (!renumbered) return;
  listing.write(after, "ANCHO DE BANDA CON RENUMERACION: ", found.NBAN1.width, element, found.NBAN1.element);
  listing.write(after, "ANCHO DE BANDA CON RENUMERACION (CON RESTRICCIONES):       ", found.NBAND.width, element,
                found.NBAND.element);
}

void check(const EquationSystem& system, const BandLimits& limits) {
  const int code = static_cast<int>(limits.NSOLV);
  const int bothHalves = 2 * system.NBAND;
  const long granted = static_cast<long>(limits.allowedGrants) * system.MBAND;
  if (limits.NSOLV == SolverCode::bandLU && granted < bothHalves)
    throw RunEnd(">>>> MAXIMO ANCHO DE BANDA SUPERADO SOLVER ASIMETRICO", bothHalves, system.MBAND);
  if (code > static_cast<int>(SolverCode::gmres) && system.MBAND < system.NBAND)
    throw RunEnd(">>>> MAXIMO ANCHO DE BANDA SUPERADO SOLVER SIMETRICO", system.NBAND, system.MBAND);
  if (limits.renumbered && code > static_cast<int>(SolverCode::bandLU) && system.NBAN1 > system.NBAN0)
    throw RunEnd("  >>>> RENUMERACION NO OPTIMIZA ANCHO DE BANDA ", 0.0, 0.0);
}

}  // namespace

void EVALMBANDA(const ElementSource& source, EquationSystem& system) {
  int widest = 0;
  for (int e = 0; e < source.elements(); ++e)
    if (const Extent equations = freeExtent(source.positions(e), system); !equations.empty())
      widest = std::max(widest, system.NBAND + equations.width() - 1);
  system.MBAND = 2 * widest + 5;
}

void CALC_NBA(const ElementSource& source, EquationSystem& system, const BandLimits& limits, Channel& listing) {
  const BandNumbers found = sweep(source, system);
  system.NBAND = found.NBAND.width;
  system.NBAN0 = found.NBAN0.width;
  system.NBAN1 = found.NBAN1.width;
  report(found, limits.renumbered, listing);
  check(system, limits);
}

}  // namespace zema
