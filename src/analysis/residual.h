// Internal forces of all elements, and the commit of the state they were found with.
#pragma once

namespace zema {

struct Analysis;

/// `RESIDU`: trial state and internal forces of all elements for the present displacements, and the energy sums.
/// Elements are shared out to the workers; sums are formed in element order.
void RESIDU(Analysis& analysis);

/// `FINISH`: makes the trial state of all points the committed one and adds up the dissipation.
void FINISH(Analysis& analysis);

}  // namespace zema
