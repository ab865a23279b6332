// What a load step and its increments say: loads, fixities, increment card, and the state of the three loops.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace zema {

/// The head of a load step, read from its cards; the values of fatigue stay in force from the dynamic load step that
/// gave them on.
struct LoadStep {
  std::string title;
  std::vector<int> ACTIV;  ///< by construction step from 0: 1 when active in this load step
  int KLOAD = 0;           ///< 0: the total load of a degree of freedom is cleared when its load or fixity changes
  int NINCR = 0;           ///< number of increments on the card
  int IPLOD = 0;           ///< not 0: point loads
  int IGRAV = 0;           ///< not 0: gravity
  int IEDGE = 0;           ///< not 0: loaded faces
  int IDINA = 0;           ///< 0 static, 1 dynamic
  int KNEWM = 0;           ///< form of the time integration: 1 second order, Newmark; other: first order
  double TEMPL = 0.0;      ///< temperature of the load step
  int KFATI = 0;       ///< fatigue: 1 life from the stress of the point alone; other: by the stress ratio of the cycle
  double TCYCL = 0.0;  ///< time scale of the cycle count; 0: neither fatigue nor time-dependent data
  double NCYCL = 0.0;  ///< number of cycles so far
  double FATIM = 0.0;  ///< stress ratio of the cycles; 9999 or -9999: from the history of the point
  double TEXPO = 0.0;  ///< exponent of the cycle count

  [[nodiscard]] bool dynamic() const { return IDINA == 1; }
  /// Whether velocities and accelerations follow from Newmark's method.
  [[nodiscard]] bool secondOrder() const { return KNEWM == 1; }
};

/// The increment card; one card stands for NREPE equal increments.
struct IncrementCard {
  int NREPE = 0;                          ///< increments that the card still covers
  double DFACT = 0.0;                     ///< load factor of each of them
  double DTIME = 0.0;                     ///< time step
  double TOLER = 0.0;                     ///< tolerance on RATIO, percent
  int MITER = 0;                          ///< greatest number of iterations
  std::array<int, 4> NOUTP{};             ///< output codes 1 to 4
  int KALGO = 0;                          ///< solution algorithm
  int KARCL = 0;                          ///< arc-length type (ArcLength), 0 none
  double ARCLN = 0.0;                     ///< arc length
  int NODAR = 0;                          ///< node, or rows of the pair table
  int IDOFA = 0;                          ///< degree of freedom of arc-length types 4 to 6
  int KFRES = 0;                          ///< 1: feeds the frequency records
  std::array<int, 4> IPOST3D{};           ///< post selection: displacements, stresses, strains, plastic strains
  std::array<int, 16> IIFLAG{};           ///< post selection of internal variables
  std::vector<std::array<int, 2>> pairs;  ///< pair table of types 5 and 6: two nodes (deck numbers) a row
};

/// How often the stiffness is rebuilt, as the increment card says.
enum class Algorithm : int {
  initialStiffness = 1,
  newtonRaphson = 2,
  modifiedNewton = 3,
  modifiedNewtonSecondIteration = 4
};

/// KARCL: the constraint that decides the load factor of an increment; any other code leaves the factor of the card.
enum class ArcLength : int {
  updatedNormalPlane = 1,
  sumOfDisplacements = 2,
  spherical = 3,
  onePosition = 4,       ///< the displacement IDOFA of node NODAR
  relative = 5,          ///< the sum of relative displacements of the pair table
  sphericalRelative = 6  ///< the norm of relative displacements of the first half of the pair table
};

/// The types that go by the pair table.
[[nodiscard]] constexpr bool isRelative(ArcLength type) {
  return type == ArcLength::relative || type == ArcLength::sphericalRelative;
}

/// State of the three loops; a value of the last iteration unless told.
struct LoopState {
  int ILOAD = 0;           ///< current load step
  int INCRE = 0;           ///< current increment of the load step
  int IITER = 0;           ///< current iteration of the increment
  int NLOAD = 0;           ///< number of load steps
  int NINCS = 0;           ///< number of increments of this load step
  int NPASS = 0;           ///< passes since the load step began
  int KCONV = 0;           ///< 0 converged, 1 not yet, 999 worse than before, 2 at the start of an increment
  double RATIO = 0.0;      ///< residual ratio, percent
  double REMAX = 0.0;      ///< largest residual
  double bestRatio = 0.0;  ///< smallest ratio of the increment
  int bestIteration = 0;   ///< its iteration
  double lastRatio = 0.0;  ///< ratio of the iteration before
  int KRESL = 0;           ///< 1: the stiffness is formed and factorised; 2: the factors are reused
  double TTIME = 0.0;      ///< accumulated time
};

/// Supports of a load step, as its cards give them.
struct Fixities {
  int NVFIX = 0;                  ///< number of fixity cards
  int NFREE = 0;                  ///< number of free-code cards
  std::vector<int> NOFIXM;        ///< fixed nodes (deck numbers) in card order
  std::vector<int> IFFIXM;        ///< by position: 1 if fixed in this step
  std::vector<int> IFFIXMbefore;  ///< the same for the step before
  std::vector<double> FIXEMM;     ///< prescribed values by position
  std::vector<int> IFLIB;         ///< by position: 1 where a free code releases the direction
  std::vector<double> TREACM;     ///< accumulated reactions, MDOFN values for each card of the list
  std::vector<double> TREACT;     ///< the same of the thermal field
  int NVFIT = 0;                  ///< number of prescribed temperatures
  std::vector<int> NOFIXT;        ///< nodes of those cards
  std::vector<int> FIXEMT;        ///< prescribed temperature by place of the node, cut to an integer
  std::vector<int> IFFIXT;        ///< by place of the node: 1 where a temperature is prescribed
  std::vector<int> IFFIXTbefore;  ///< the same for the step before
  int NSIDE = 0;                  ///< number of loaded sides
};

/// The state set that an increment works on; `TERMEC` swaps it with the set of the mechanical field.
struct FieldState {
  std::vector<double> FACTD;     ///< load factors of the steps of a dynamic load step
  double FACTO = 0.0;            ///< load factor accumulated over the run
  std::vector<int> NOFIX;        ///< fixed nodes (deck numbers) in card order
  std::vector<double> FIXEM;     ///< prescribed values by position
  std::vector<int> IFFIX;        ///< by position: not 0 when fixed
  std::vector<int> IFFIXbefore;  ///< the same for the step before
  std::vector<double> TDISP;     ///< total displacement | velocity | acceleration, three columns of NTOTV
};

}  // namespace zema
