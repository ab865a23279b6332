// The swap between the state set that an increment works on and that of the mechanical field.
#pragma once

namespace zema {

struct Model;

/// Direction of the swap.
enum class FieldSwap : int {
  load = 1,  ///< before an increment: the working set takes the mechanical one
  store = 2  ///< after it: the mechanical set takes the working one
};

/// `TERMEC`: swaps the state sets around an increment.
void TERMEC(Model& model, FieldSwap mode);

}  // namespace zema
