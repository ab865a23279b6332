// The supports come from the cards of the load step; factors and displacements come from the increment before.
#include "analysis/field_swap.h"

#include "model/model.h"

namespace zema {

void TERMEC(Model& model, FieldSwap mode) {
  FieldState& mechanical = model.mechanical;
  if (mode == FieldSwap::store) {
    mechanical = model.working;
    return;
  }
  mechanical.NOFIX = model.fixities.NOFIXM;
  mechanical.FIXEM = model.fixities.FIXEMM;
  mechanical.IFFIX = model.fixities.IFFIXM;
  mechanical.IFFIXbefore = model.fixities.IFFIXMbefore;
  model.working = mechanical;
}

}  // namespace zema
