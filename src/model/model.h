// Everything that a run holds about its problem; passed down to whoever needs it, there is no global state.
#pragma once

#include <vector>

#include "database/point_store.h"
#include "job/run_records.h"
#include "model/composites.h"
#include "model/curves.h"
#include "model/dynamic_data.h"
#include "model/load_step.h"
#include "model/materials.h"
#include "model/mesh.h"

namespace zema {

/// Displacements by position, NTOTV values each.
struct Displacements {
  std::vector<double> DDISP;  ///< of the increment: displacement | velocity change | acceleration change, three columns
};

/// Global measures of energy and damage.
struct Monitors {
  double SDAMD = 0.0;   ///< dissipation of the last residual pass
  double SDAMV = 0.0;   ///< sum of damage times volume
  double SVOLD = 0.0;   ///< volume of the damaged points
  double DISIG = 0.0;   ///< running sum of SDAMD
  double DANEN = 0.0;   ///< damage by energy, SDAMV / SVOLD
  double DANFU = 0.0;   ///< damage by force
  double POTDEF = 0.0;  ///< deformation power at the end of the increment
  double POTCIN = 0.0;  ///< kinetic power
  double POTDIS = 0.0;  ///< dissipated power
  double POTINT = 0.0;  ///< input power
  double ENEINT = 0.0;  ///< input energy
  double ENEDIS = 0.0;  ///< dissipated energy
};

/// What the secant records of a frequency study have counted so far.
struct FrequencyState {
  int batch = 0;  ///< number of the last batch of records; 0: none yet
  int ILOAD = 0;  ///< its load step
  int INCRE = 0;  ///< its increment
};

/// One accumulator of energy for one element or a whole pass.
struct EnergySums {
  double work = 0.0;    ///< goes to SDAMD
  double kappa = 0.0;   ///< goes to SDAMV
  double volume = 0.0;  ///< goes to SVOLD
  EnergySums& operator+=(const EnergySums& other) {
    work += other.work;
    kappa += other.kappa;
    volume += other.volume;
    return *this;
  }
};

/// The problem in hand.
struct Model {
  TextRecord text;
  ControlRecord control;
  int NSTR1 = 0;  ///< stress components
  LoopState loop;
  IncrementCard increment;
  LoadStep loadStep;
  DynamicData dynamics;
  Fixities fixities;
  FieldState working;     ///< what the increment in hand works on
  FieldState mechanical;  ///< the copy kept for the mechanical field
  Mesh mesh;
  ElementPositions positions;
  ElementVectors vectors;
  Composites composites;
  Materials materials;
  PointStore points;
  Displacements displacements;
  std::vector<Curve> curves;
  Monitors monitors;
  FrequencyState frequencies;

  [[nodiscard]] bool active(const ElementData& element) const {
    return loadStep.ACTIV[static_cast<std::size_t>(element.IFASE - 1)] == 1;
  }
  /// Updated stress measure: the law runs in the current configuration and Cauchy stress is reported.
  [[nodiscard]] bool currentConfiguration() const { return control.LARGE != 0 && control.KPUSH == 2; }
};

}  // namespace zema
