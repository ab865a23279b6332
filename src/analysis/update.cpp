// Update of displacements, and in a dynamic load step of velocities and accelerations.
#include "analysis/update.h"

#include "analysis/analysis.h"
#include "dynamics/newmark.h"

namespace zema {

namespace {

/// One column of TDISP or DDISP.
double* column(std::vector<double>& all, int number) {
  return all.data() + static_cast<std::size_t>(number - 1) * (all.size() / 3);
}

/// First iteration: velocity and acceleration from those of the start of the step; DDISP keeps their changes.
void startNewmark(const Newmark& f, double DTIME, const std::vector<double>& d, Model& model) {
  double* const v = column(model.working.TDISP, 2);
  double* const a = column(model.working.TDISP, 3);
  double* const dv = column(model.displacements.DDISP, 2);
  double* const da = column(model.displacements.DDISP, 3);
  for (std::size_t i = 0; i < d.size(); ++i) {
    const double acceleration = f.A0 * (d[i] - DTIME * v[i]) - f.C1 * a[i];
    const double velocity = f.A1 * d[i] + f.C2 * v[i] + f.C3 * a[i];
    dv[i] = velocity - v[i];
    da[i] = acceleration - a[i];
    v[i] = velocity;
    a[i] = acceleration;
  }
}

/// A column takes the correction d times a factor, and so does its total.
void add(double factor, const std::vector<double>& d, double* change, double* total) {
  for (std::size_t i = 0; i < d.size(); ++i) {
    change[i] = factor * d[i];
    total[i] += change[i];
  }
}

void updateInTime(const std::vector<double>& d, Model& model) {
  const Newmark factors = Newmark::of(model);
  const bool first = model.loop.IITER == 1;
  double* const v = column(model.working.TDISP, 2);
  double* const dv = column(model.displacements.DDISP, 2);
  if (model.loadStep.secondOrder()) {
    if (first) {
      startNewmark(factors, model.increment.DTIME, d, model);
    } else {
      add(factors.A1, d, dv, v);
      add(factors.A0, d, column(model.displacements.DDISP, 3), column(model.working.TDISP, 3));
    }
  } else if (first) {
    for (std::size_t i = 0; i < d.size(); ++i) {
      dv[i] = 0.0;
      v[i] = factors.A2 * d[i];
    }
  } else {
    add(factors.A2, d, dv, v);
  }
}

}  // namespace

void UPDAT(Analysis& analysis) {
  const std::vector<double>& correction = analysis.equations.ASDIS;
  std::vector<double>& DDISP = analysis.model.displacements.DDISP;
  std::vector<double>& TDISP = analysis.model.working.TDISP;
  for (std::size_t i = 0; i < correction.size(); ++i) {
    DDISP[i] += correction[i];
    TDISP[i] += correction[i];
  }
  if (analysis.model.loadStep.dynamic()) {
    updateInTime(correction, analysis.model);
  }
}

}  // namespace zema
